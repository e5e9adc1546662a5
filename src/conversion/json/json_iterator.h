// Walks the values of a parsed JSON text: one iterator for each object and each array, the same for both.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "conversion/counting_name.h"
#include "util/json_cursor.h"

namespace zentor {

class JsonText;

enum class JsonKind { kNull = 0, kString = 1, kNumber = 2, kBoolean = 3, kArray = 4, kObject = 5 };

// The members of an object or the elements of an array, in the order of the text; members whose names are the same are
// all there. What asks for the current value needs one: HasNext. A value of another type than asked for is
// ZT_ASSERTION.
class JsonIterator {
public:
    virtual ~JsonIterator() = default;

    // Whether there is a current value.
    virtual bool HasNext() const = 0;
    // Goes on to the next value. Code ZT_CONVERSION when the text has been changed since it was parsed.
    virtual void Next() = 0;
    // The member's name, or the element's index in decimal; lives until Next.
    virtual std::string_view GetKey() const = 0;
    virtual JsonKind GetType() const = 0;
    // Replaces `text` by the current string, escapes decoded.
    virtual void GetString(std::string& text) const = 0;
    // Whether the member's name or the current string has escapes: without them neither has a character that JSON
    // escapes.
    virtual bool HasEscapes() const = 0;
    // The nearest double.
    virtual double GetNumber() const = 0;
    virtual bool GetBool() const = 0;
    // Over the current value, which is an object or an array. Next of this iterator is fast when they have come to
    // their end by then.
    virtual std::shared_ptr<JsonIterator> GetObjectIterator() const = 0;
    virtual std::shared_ptr<JsonIterator> GetArrayIterator() const = 0;
    // The number of members or elements of the current value, which is an object or an array. Reads it through.
    virtual std::uint32_t GetSize() const = 0;
    // The current number as it stands in the text.
    virtual std::string_view GetNumberText() const = 0;
    // How far the text has been read.
    virtual std::size_t Offset() const = 0;
};

// What both iterators do. They refer into the text and do not own it.
class JsonElements : public JsonIterator {
public:
    bool HasNext() const override { return hasNext_; }
    JsonKind GetType() const override { return type_; }
    void GetString(std::string& text) const override;
    bool HasEscapes() const override { return type_ == JsonKind::kString && value_.hasBackslash; }
    double GetNumber() const override;
    bool GetBool() const override;
    std::shared_ptr<JsonIterator> GetObjectIterator() const override;
    std::shared_ptr<JsonIterator> GetArrayIterator() const override;
    std::uint32_t GetSize() const override;
    std::string_view GetNumberText() const override;
    std::size_t Offset() const override { return cursor_.Offset(); }

protected:
    // At the bracket at `begin`.
    JsonElements(JsonText& text, std::size_t begin, char closing);

    // Goes to the first value, or from the current value to the next; false at the end.
    bool GoToFirst();
    bool GoToNext();
    RawString ReadKey();
    void ReadValue();

private:
    bool End();
    void SkipCurrent();
    void Require(JsonKind type) const;
    [[noreturn]] void Refuse() const;

    JsonText& text_;
    JsonCursor cursor_;  // after the current value; of an object or an array, at it
    std::size_t begin_;
    char closing_;
    bool hasNext_ = false;
    JsonKind type_ = JsonKind::kNull;
    RawString value_;  // of a string between its quotes; of a number or a word, whole
};

class JsonObjectIterator final : public JsonElements {
public:
    // Over the members of the object at `begin`.
    JsonObjectIterator(JsonText& text, std::size_t begin);
    void Next() override;
    std::string_view GetKey() const override { return key_; }
    bool HasEscapes() const override { return isKeyDecoded_ || JsonElements::HasEscapes(); }

private:
    void ReadMember();

    std::string_view key_;
    bool isKeyDecoded_ = false;
    std::string decodedKey_;
};

class JsonArrayIterator final : public JsonElements {
public:
    // Over the elements of the array at `begin`.
    JsonArrayIterator(JsonText& text, std::size_t begin);
    void Next() override;
    std::string_view GetKey() const override { return key_; }

private:
    void ReadElement();

    CountingName<20> index_{""};
    std::string_view key_;
};

}  // namespace zentor
