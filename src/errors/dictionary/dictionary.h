// The texts of message keys in the locale of the library.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zentor {

// The texts of one locale.
class MessageDictionary {
public:
    // From the stored form; without entries when it cannot be read.
    explicit MessageDictionary(std::string_view bytes);

    // Null when there is none for the key path.
    const std::u16string* Find(std::string_view keyPath) const;
    std::size_t Size() const { return texts_.size(); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };

    std::unordered_map<std::string, std::u16string, Hash, std::equal_to<>> texts_;
};

// The text of a key, which is a key path, "=" and an English text: that of the active dictionary for the path, or else
// the English one; empty when it has none. The dictionary is that of Locale(), loaded when it is first needed and kept
// until it is released. Thread-safe.
std::u16string LookUpMessage(std::string_view key);

// The next message loads the dictionary anew.
void ReleaseDictionary() noexcept;

}  // namespace zentor
