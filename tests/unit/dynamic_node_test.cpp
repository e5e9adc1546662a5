// Dynamic nodes: their samples on the way into a document, and what converters may and may not do with them.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "failure.h"
#include "model/dynamic_string.h"
#include "model/node_factories.h"
#include "model_call.h"
#include "open_text.h"
#include "written_document.h"

namespace zentor_test {

namespace {

using Numbers = VkjsonDynamicDataNumImpl;
using Arrays = VkjsonDynamicDataNumArrImpl;
using Texts = VkjsonDynamicDataStringImpl;

// A dynamic node of the document, initialised and attached.
template <class Node>
class Dynamic {
public:
    explicit Dynamic(Document& document, const std::string& name = "d", bool isAttached = true)
        : node_(MakeOwner(new Node(document.StreamId()))) {
        EXPECT_EQ(Initialize(name.c_str(), name.c_str(), 1), 0U);
        if (isAttached) document.Add(node_);
    }
    Node* operator->() const { return node_.get(); }
    const Owner<Node>& operator*() const { return node_; }

    std::uint32_t Initialize(const char* matchName, const char* id, std::uint32_t interpolation) const {
        return CodeOf([&](auto* error) { node_->Initialize(matchName, "D", id, 9, interpolation, 0, nullptr, error); });
    }
    // In seconds.
    template <class... Value>
    std::uint32_t Add(std::int32_t value, std::uint32_t scale, Value... sample) const {
        std::uint32_t added = 2;
        const std::uint32_t code =
            CodeOf([&](auto* error) { added = node_->AddSample(value, scale, sample..., error); });
        EXPECT_EQ(added, code == 0 ? 1U : 0U);
        return code;
    }
    template <class... Value>
    std::uint32_t AddAt(const char* time, Value... sample) const {
        return CodeOf([&](auto* error) { node_->AddSampleAtTimeString(time, sample..., error); });
    }
    template <class... Value>
    std::uint32_t AddTicks(std::int64_t ticks, std::uint32_t perSecond, Value... sample) const {
        return CodeOf([&](auto* error) { node_->AddSampleAtTicks(ticks, perSecond, sample..., error); });
    }
    std::uint32_t Write(std::uint32_t expected = 1) const {
        std::uint32_t written = 2;
        const std::uint32_t code = CodeOf([&](auto* error) { written = node_->WriteSamples(error); });
        EXPECT_EQ(written, code == 0 ? expected : 0U);
        return code;
    }

private:
    Owner<Node> node_;
};

std::uint32_t SetTimecode(const Document& document, std::uint32_t value = 25, std::uint32_t scale = 1) {
    return CodeOf([&](auto* error) { document.root->SetTimecodeInfo(0, value, scale, error); });
}

std::uint32_t SetUtc(const Document& document, std::uint32_t precision, std::uint8_t isGmt) {
    return CodeOf([&](auto* error) { document.root->SetUtcInfo(precision, isGmt, error); });
}

// The text of the document from the first set of samples on.
std::string SetsAndOutline(const Document& document) {
    const std::string text = document.Text();
    const std::size_t at = text.find("\"dataDynamicSamples\"");
    return at == std::string::npos ? text : text.substr(at);
}

std::string SetText(const std::string& id, const std::vector<std::string>& values) {
    std::string text = "{'sampleSetID':'" + id + "','samples':[";
    for (std::size_t k = 0; k < values.size(); ++k) {
        text +=
            std::string(k == 0 ? "" : ",") + "{'time':'00:00:00:0" + std::to_string(k) + "','value':" + values[k] + "}";
    }
    return text + "]}";
}

std::string NodeText(const std::string& name, std::size_t count, const std::string& dataType) {
    return "{'objectType':'dataDynamic','matchName':'" + name + "','displayName':'D','sampleSetID':'" + name +
           "','interpolation':'linear','hasExpectedFrequencyB':false,'sampleCount':" + std::to_string(count) +
           ",'dataType':{'type':" + dataType + "}}";
}

std::string RangeText(const std::string& minimum, const std::string& maximum) {
    const std::string both = "{'min':" + minimum + ",'max':" + maximum + "}";
    return "{'occurring':" + both + ",'legal':" + both + "}";
}

std::string PatternText(bool isSigned, int decimal, int integer) {
    return std::string("'pattern':{'isSigned':") + (isSigned ? "true" : "false") +
           ",'digitsDecimal':" + std::to_string(decimal) + ",'digitsInteger':" + std::to_string(integer) + "}";
}

std::string NumberType(const std::string& pattern, const std::string& range) {
    return "'numberString','numberStringProperties':{" + pattern + ",'range':" + range + "}";
}

std::unique_ptr<VkjsonDocument> Parsed(const std::string& text) { return ParseDocument(text, ParserChoice::kVersion2); }

}  // namespace

TEST(DynamicNode, NumbersArePaddedToTheWidest) {
    const struct {
        std::vector<double> numbers;
        std::vector<std::string> texts;
        std::string pattern;
        std::string range;
        std::uint64_t integer = kUnsetCount;
        std::uint64_t decimal = kUnsetCount;
        bool isSigned = false;
    } cases[] = {
        {{4.5, -4.5, 1234.567},
         {"+0004.500", "-0004.500", "+1234.567"},
         PatternText(true, 3, 4),
         RangeText("-4.5", "1234.567"),
         3,
         2,
         true},
        {{4, 12}, {"04", "12"}, PatternText(false, 0, 2), RangeText("4", "12")},
        {{4, 12}, {"+04.0", "+12.0"}, PatternText(true, 1, 2), RangeText("4", "12"), 0, 1, true},
        {{-0.0, 0}, {"-0", "+0"}, PatternText(true, 0, 1), RangeText("0", "0")},
        {{1e-5, 0.1}, {"0.00001", "0.10000"}, PatternText(false, 5, 1), RangeText("1e-05", "0.1")},
        // At most 17 decimals, and what is left of the number is what it was.
        {{-1e-20, 1.23456789e-13},
         {"-0.00000000000000000", "+0.00000000000012346"},
         PatternText(true, 17, 1),
         RangeText("0", "1.2346e-13")},
        {{1e16, 1}, {"10000000000000000", "00000000000000001"}, PatternText(false, 0, 17), RangeText("1", "1e+16")},
        {{1.5e20}, {"150000000000000000000"}, PatternText(false, 0, 21), RangeText("1.5e+2", "1.5e+2")},
    };
    for (const auto& c : cases) {
        Document document;
        SetTimecode(document);
        const Dynamic<Numbers> node(document);
        node->SetPattern(c.integer, c.decimal, c.isSigned, nullptr);
        std::vector<std::string> quoted;
        for (std::size_t k = 0; k < c.numbers.size(); ++k) {
            EXPECT_EQ(node.Add(static_cast<std::int32_t>(k), 25, c.numbers[k]), 0U);
            quoted.push_back("'" + c.texts[k] + "'");
        }
        EXPECT_EQ(document.Write(), 1U);
        const std::string text = document.Text();
        EXPECT_EQ(SetsAndOutline(document),
                  Json("'dataDynamicSamples':[" + SetText("d", quoted) + "],'dataOutline':[" +
                       NodeText("d", c.numbers.size(), NumberType(c.pattern, c.range)) + "]}"));
        EXPECT_EQ(FailureOf([&] { Parsed(text); }), "") << text;
    }
}

TEST(DynamicNode, ArraysAndTexts) {
    Document document;
    SetTimecode(document);
    const Dynamic<Arrays> array(document, "a");
    const Dynamic<Texts> text(document, "t");
    array->SetArraySize(2, nullptr);
    array->AddRange(-10, 10, nullptr);
    array->AddDisplayName("x", nullptr);
    array->AddDisplayName("y", nullptr);
    array->SetIsPoint(1, nullptr);
    array->SetIsSigned(1, nullptr);
    const double values[] = {1.5, 20, 3, 4};
    EXPECT_EQ(array.Add(0, 1, values, 2), 0U);
    EXPECT_EQ(array.Add(1, 25, values + 2, 2), 0U);
    text->SetStringProperties(2, kUnsetCount, 1, nullptr);
    for (const char* value : {"", "abc", "[x]"}) EXPECT_EQ(text.Add(0, 1, value), 0U);
    EXPECT_EQ(text.Add(0, 1, nullptr), 0U) << "null counts as empty";
    EXPECT_EQ(text.Write(), 0U);  // in the order in which they are told to
    EXPECT_EQ(array.Write(), 0U);
    EXPECT_EQ(array.Write(0), 0U) << "once";
    EXPECT_EQ(document.Write(), 1U);
    const auto padded = [](const char* length, const char* str) {
        return std::string("{'time':'00:00:00:00','value':{'length':'") + length + "','str':'" + str + "'}}";
    };
    const std::string range = "{'occurring':{'min':1.5,'max':3},'legal':{'min':-10,'max':10}}," + RangeText("4", "20");
    EXPECT_EQ(SetsAndOutline(document),
              Json("'dataDynamicSamples':[{'sampleSetID':'t','samples':[" + padded("0", "   ") + "," +
                   padded("3", "abc") + "," + padded("3", "[x]") + "," + padded("0", "   ") + "]}," +
                   SetText("a", {"['+01.5','+20.0']", "['+03.0','+04.0']"}) + "],'dataOutline':[" +
                   NodeText("a", 2,
                            "'numberStringArray','numberArrayProperties':{" + PatternText(true, 1, 2) +
                                ",'arrayRanges':{'ranges':[" + range +
                                "]},'arraySize':2,'arrayDisplayNames':['x','y'],'isPoint':true}") +
                   "," +
                   NodeText("t", 4,
                            "'paddedString','paddedStringProperties':{'maxDigitsInStrLength':1,'maxLen':3,"
                            "'eventMarkerB':true}") +
                   "]}"));
    const std::string written = document.Text();
    EXPECT_EQ(FailureOf([&] { Parsed(written); }), "");
}

TEST(DynamicNode, DocumentsWithoutSamplesSaySo) {
    for (const bool withHeader : {false, true}) {
        Document document;
        SetTimecode(document);
        if (withHeader) document.root->WriteHeader(nullptr);
        const Dynamic<Numbers> node(document);
        EXPECT_EQ(node->GetSampleCount(), 9U) << "as expected";
        EXPECT_EQ(node.Write(), 0U);
        EXPECT_EQ(node->GetSampleCount(), 0U);
        EXPECT_EQ(node.Add(0, 1, 1.0), 2001U) << "after it was written";
        EXPECT_EQ(document.Write(), 1U);
        EXPECT_EQ(document.Text(),
                  Json("{'version':'vkjson2.0.0','dynamicSamplesPresentB':false,'dataOutline':[" +
                       NodeText("d", 0, NumberType(PatternText(false, 0, 1), RangeText("0", "0"))) + "]}"));
    }
}

TEST(DynamicNode, TimesInEveryForm) {
    const struct {
        std::uint32_t precision;
        std::uint8_t isGmt;
        std::int64_t ticks;
        std::uint32_t perSecond;
        const char* time;
    } cases[] = {
        {0, 1, 0, 1, "1970-01-01T00:00:00Z"},
        {3, 1, 1709210096789, 1000, "2024-02-29T12:34:56.789Z"},
        {3, 0, -1, 3, "1969-12-31T23:59:59.666+00:00"},
        {9, 1, 253402300799999999, 1000000, "9999-12-31T23:59:59.999999000Z"},
    };
    for (const auto& c : cases) {
        Document document;
        EXPECT_EQ(SetUtc(document, c.precision, c.isGmt), 0U);
        const Dynamic<Numbers> node(document);
        EXPECT_EQ(node.AddTicks(c.ticks, c.perSecond, 1.0), 0U);
        EXPECT_EQ(node.AddAt(c.time, 2.0), 0U);
        EXPECT_EQ(document.Write(), 1U);
        const std::string time = std::string("\"time\":\"") + c.time + "\",\"value\":";
        EXPECT_NE(document.Text().find("[{" + time + "\"1\"},{" + time + "\"2\"}]"), std::string::npos) << c.time;
    }
    Document document;
    EXPECT_EQ(SetTimecode(document, 30000, 1001), 0U);
    const Dynamic<Numbers> node(document);
    for (std::int32_t frame = 0; frame < 2000; ++frame) EXPECT_EQ(node.Add(frame * 1001, 30000, 1.0), 0U);
    EXPECT_EQ(document.Write(), 1U);
    EXPECT_NE(document.Text().find("\"00:01:06:19\",\"value\":\"1\"}]}]"), std::string::npos) << "no frame was lost";
}

TEST(DynamicNode, MisuseIsRefused) {
    Document document;
    const Dynamic<Numbers> loose(document, "loose", false);
    EXPECT_EQ(loose.Add(0, 1, 1.0), 2021U) << "no time mode yet";
    SetTimecode(document);
    EXPECT_EQ(loose.Write(), 2001U) << "not attached";
    const Dynamic<Numbers> node(document);
    const Dynamic<Arrays> array(document, "a");
    const Dynamic<Texts> text(document, "t");
    const Owner<Numbers> raw = MakeOwner(new Numbers(document.StreamId()));
    const auto initialize = [&](const char* name, const char* id, std::uint32_t interpolation) {
        return CodeOf([&](auto* error) { raw->Initialize(name, "", id, 0, interpolation, 0, "", error); });
    };
    const auto attach = [&](ISharedObject* child) {
        return CodeOf([&](auto* error) { document.root->AddDynamicDataShared(child, error); });
    };
    EXPECT_EQ(attach(raw.get()), 2001U) << "not initialised";
    EXPECT_EQ(CodeOf([&](auto* error) { raw->AddSample(0, 1, 1, error); }), 2001U);
    EXPECT_EQ(initialize("", "id", 1), 2022U);
    EXPECT_EQ(initialize(nullptr, "id", 1), 2022U);
    EXPECT_EQ(initialize("n", "", 1), 2022U);
    EXPECT_EQ(initialize("1n", "id", 0), 2022U) << "before anything else";
    for (const std::uint32_t interpolation : {0U, 3U}) EXPECT_EQ(initialize("n", "id", interpolation), 53U);
    EXPECT_EQ(initialize("n", "i]d[", 1), 2023U);
    EXPECT_EQ(initialize("d", "id", 2), 0U);
    EXPECT_EQ(initialize("n", "id", 2), 2001U) << "again";
    EXPECT_EQ(attach(raw.get()), 2001U) << "the match name is taken";
    const Owner<Numbers> same = MakeOwner(new Numbers(document.StreamId()));
    same->Initialize("same", "", "d", 0, 1, 0, nullptr, nullptr);
    EXPECT_EQ(attach(same.get()), 2001U) << "the identifier is taken";
    EXPECT_EQ(attach((*node).get()), 2001U) << "attached already";
    EXPECT_EQ(attach(nullptr), 2001U);
    EXPECT_EQ(attach(reinterpret_cast<ISharedObject*>(&document)), 2016U);
    EXPECT_EQ(CodeOf([&](auto* error) { document.root->AddStaticDataShared((*loose).get(), error); }), 2016U);
    const Document other;
    EXPECT_EQ(CodeOf([&](auto* error) { other.root->AddDynamicDataShared((*loose).get(), error); }), 2001U);

    EXPECT_EQ(node.Add(1, 0, 1.0), 2015U);
    EXPECT_EQ(node.Add(-1, 25, 1.0), 2015U);
    EXPECT_EQ(node.Add(86400, 1, 1.0), 2015U) << "a day later";
    for (const char* time : {"", "00:00:00:25", "00:00:00:0", "00:00:60:00", "24:00:00:00", "00:00:00:001",
                             "00[00:00:00", "00:00]00:00", "00:00:00\"00", "00;00:00:00"}) {
        EXPECT_EQ(node.AddAt(time, 1.0), 2015U) << time;
    }
    EXPECT_EQ(node.AddAt(nullptr, 1.0), 2015U);
    for (const double value : {kInfinity, -kInfinity, kNan, kLargest}) EXPECT_EQ(node.Add(0, 1, value), 2008U);
    EXPECT_EQ(SetTimecode(document), 0U) << "nothing was added yet";
    EXPECT_EQ(node.Add(1, 1, 1.0), 0U);
    EXPECT_EQ(SetTimecode(document), 2020U);
    EXPECT_EQ(SetUtc(document, 0, 1), 2020U);
    EXPECT_EQ(CodeOf([&](auto* error) { document.root->AddVideoSyncFrame("v", 1, error); }), 2020U);
    EXPECT_EQ(node.Add(24, 25, 1.0), 2015U) << "before the last one";
    EXPECT_EQ(node.AddAt("00:00:01:00", 1.0), 0U) << "at the same time";

    const auto setRange = [&](double minimum, double maximum, double value) {
        return CodeOf([&](auto* error) { node->SetRange(minimum, maximum, value, error); });
    };
    EXPECT_EQ(setRange(2, 1, 1), 2007U);
    EXPECT_EQ(setRange(2, 3, 2), 2008U) << "there is a sample outside";
    EXPECT_EQ(setRange(0, 3, 4), 2008U);
    EXPECT_EQ(setRange(0, kInfinity, 1), 2008U);
    EXPECT_EQ(setRange(kLargest, -kLargest, 5), 0U) << "not known";
    EXPECT_EQ(setRange(0, 3, 1), 0U);
    EXPECT_EQ(node.Add(1, 1, 3.5), 2008U);
    EXPECT_EQ(node.Add(1, 1, 3.0), 0U);
    const auto setPattern = [&](std::uint64_t integer, std::uint64_t decimal) {
        return CodeOf([&](auto* error) { node->SetPattern(integer, decimal, 0, error); });
    };
    EXPECT_EQ(setPattern(2, kUnsetCount), 2006U);
    EXPECT_EQ(setPattern(kUnsetCount, 0), 2006U);
    EXPECT_EQ(setPattern(1001, 0), 2008U);
    EXPECT_EQ(setPattern(kUnsetCount, kUnsetCount), 0U);

    const double values[] = {1, 2, kNan};
    const auto setSize = [&](std::uint64_t size) {
        return CodeOf([&](auto* error) { array->SetArraySize(size, error); });
    };
    EXPECT_EQ(array.Add(1, 1, values, 0), 2004U) << "no size yet";
    EXPECT_EQ(setSize(0), 2004U);
    EXPECT_EQ(setSize(0x10001), 2004U);
    EXPECT_EQ(setSize(2), 0U);
    EXPECT_EQ(array.Add(1, 1, values, 1), 2004U);
    EXPECT_EQ(array.Add(1, 1, values, 3), 2004U);
    EXPECT_EQ(array.Add(1, 1, values + 1, 2), 2008U);
    EXPECT_EQ(array.Add(1, 1, nullptr, 2), 1001U);
    const auto addRange = [&](double minimum, double maximum) {
        return CodeOf([&](auto* error) { array->AddRange(minimum, maximum, error); });
    };
    EXPECT_EQ(addRange(1, 0), 2007U);
    EXPECT_EQ(addRange(0, 1) + addRange(0, 1), 0U);
    EXPECT_EQ(addRange(0, 1), 2005U);
    EXPECT_EQ(array.Add(1, 1, values, 2), 2008U) << "2 is outside";
    EXPECT_EQ(setSize(2), 0U);
    EXPECT_EQ(array.Add(1, 1, values, 2), 0U);
    EXPECT_EQ(setSize(2), 2001U);
    EXPECT_EQ(addRange(0, 1), 2001U);
    for (const std::uint32_t code : {0U, 0U, 2019U}) {
        EXPECT_EQ(CodeOf([&](auto* error) { array->AddDisplayName("x", error); }), code);
    }
    for (const char* value : {"[", "]", "][", "[[]", "a]b["}) EXPECT_EQ(text.Add(1, 1, value), 2023U) << value;
    EXPECT_EQ(CodeOf([&](auto* error) { text->SetStringProperties((1 << 24) + 1, 0, 0, error); }), 2008U);
    EXPECT_EQ(CodeOf([&](auto* error) { text->SetStringProperties(0, 21, 0, error); }), 2008U);

    // What was refused has left nothing behind.
    EXPECT_EQ(document.Write(), 1U);
    EXPECT_EQ(node.Add(2, 1, 1.0), 2001U);
    EXPECT_EQ(node.Write(0), 0U);
    EXPECT_EQ(loose.Write(), 2001U);
    const std::string written = document.Text();
    EXPECT_EQ(FailureOf([&] { Parsed(written); }), "") << written;
    document.Close();
    EXPECT_EQ(node.Write(), 2014U);
    EXPECT_EQ(node.Add(3, 1, 1.0), 2014U);
}

TEST(DynamicNode, WhatTheWidthsDependOnStaysOnceSamplesAreWritten) {
    Document document;
    SetTimecode(document);
    const Dynamic<Numbers> number(document, "n");
    const Dynamic<Arrays> array(document, "a");
    const Dynamic<Texts> text(document, "t");
    array->SetArraySize(1, nullptr);
    const double value = 1;
    EXPECT_EQ(number.Add(0, 1, value) + array.Add(0, 1, &value, 1) + text.Add(0, 1, "x"), 0U);
    EXPECT_EQ(number.Write() + array.Write() + text.Write(), 0U);
    EXPECT_EQ(CodeOf([&](auto* error) { number->SetPattern(5, 3, 0, error); }), 2001U);
    EXPECT_EQ(CodeOf([&](auto* error) { array->SetPattern(5, 3, 0, error); }), 2001U);
    EXPECT_EQ(CodeOf([&](auto* error) { array->SetIsSigned(1, error); }), 2001U);
    EXPECT_EQ(CodeOf([&](auto* error) { text->SetStringProperties(50, 3, 0, error); }), 2001U);
    EXPECT_EQ(document.Write(), 1U);
    const std::string written = document.Text();
    EXPECT_EQ(FailureOf([&] { Parsed(written); }), "") << written;
}

TEST(DynamicNode, ASetIsWrittenOnlyForANodeOfTheOutline) {
    Document document;
    SetTimecode(document);
    const auto group = NativeCreateGroup(*document, "g", "G");
    const Dynamic<Numbers> node(document, "d", false);
    Document::Attach(group, *node);
    EXPECT_EQ(node.Add(0, 1, 1.0), 0U);
    EXPECT_EQ(node.Write(), 2001U) << "the group stands nowhere";
    document.Add(group);
    EXPECT_EQ(node.Write(), 0U);
    EXPECT_EQ(document.Write(), 1U);
}

TEST(DynamicNode, WhatWouldMakeADocumentUnreadableIsRefused) {
    Document document;
    SetTimecode(document);
    const Dynamic<Arrays> array(document);
    EXPECT_EQ(array.Write(), 2001U) << "no size was set";
    EXPECT_EQ(document.Write(2001), 0U);
    EXPECT_EQ(document.Write(), 0U) << "given up";
}

// What nobody has attached, in all the ways in which that happens.
TEST(DynamicNode, SamplesAreNeverLeftOut) {
    using Group = Owner<VkjsonGroupImpl>;
    // A node with a sample, in a group if there is one.
    const auto addNode = [](const Document& document, const Group& group) {
        const auto node = MakeOwner(new Numbers(document.StreamId()));
        node->Initialize("d", "D", "d", 0, 1, 0, nullptr, nullptr);
        if (group) Document::Attach(group, node);
        EXPECT_EQ(node->AddSample(0, 1, 1.0, nullptr), 1U);
        return node;
    };
    enum class Place { kNowhere, kGroup, kGoneGroup };
    const struct {
        const char* what;
        Place place;
        bool isGone;
        bool isGroupAttached;
        std::uint32_t code;
    } cases[] = {{"not attached", Place::kNowhere, false, true, 2001},
                 {"gone without having been attached", Place::kNowhere, true, true, 2001},
                 {"in a group that is not attached", Place::kGroup, true, false, 2001},
                 {"in a group that is gone", Place::kGoneGroup, true, true, 2001},
                 {"the same, the node still there", Place::kGoneGroup, false, true, 2001},
                 {"in a group that is attached in the end", Place::kGroup, true, true, 0}};
    for (const auto& [what, place, isGone, isGroupAttached, code] : cases) {
        Document document;
        SetTimecode(document);
        const Dynamic<Numbers> written(document, "w");  // one that is as it should be changes nothing
        EXPECT_EQ(written.Add(0, 1, 1.0) + written.Write(), 0U);
        const Group group = NativeCreateGroup(*document, "g", "G");
        Group other = NativeCreateGroup(*document, "h", "H");
        auto node = addNode(document, place == Place::kNowhere ? nullptr : place == Place::kGroup ? group : other);
        if (isGone) node = nullptr;
        other = nullptr;
        if (isGroupAttached) document.Add(group);
        EXPECT_EQ(document.Write(code), code == 0 ? 1U : 0U) << what;
        EXPECT_EQ(document.FileCount(), code == 0 ? 1U : 0U) << what;
        if (code != 0) continue;
        const std::string text = document.Text();
        EXPECT_EQ(FailureOf([&] { Parsed(text); }), "") << what;
    }
    // What has no samples is missed by nobody.
    Document document;
    SetTimecode(document);
    const Dynamic<Numbers> loose(document, "loose", false);
    EXPECT_EQ(loose.Add(0, 1, kNan), 2008U);
    EXPECT_EQ(document.Write(), 1U);
}

// Many samples, of which most are in the temporary file for a while.
TEST(DynamicNode, LongSetsAreWrittenAsShortOnes) {
    constexpr int kSamples = 60000;
    const auto numberOf = [](int k) { return std::ldexp(k % 1000 - 500, -(k % 7)); };
    Document document;
    SetTimecode(document, 1000);
    const Dynamic<Numbers> node(document);
    const Dynamic<Texts> text(document, "t");
    for (int k = 0; k < kSamples; ++k) ASSERT_EQ(node.Add(k, 1000, numberOf(k)), 0U);
    const std::string longText(3000000, 'x');
    for (const char* value : {"first", longText.c_str(), "last"}) ASSERT_EQ(text.Add(0, 1, value), 0U);
    EXPECT_EQ(document.Write(), 1U);
    const std::string written = document.Text();
    const OpenText parsed(written, ParserChoice::kVersion2);
    const auto read = [&](const char* id) { return parsed.Samples(id); };
    const std::vector<ZT_Sample> numbers = read("d");
    ASSERT_EQ(numbers.size(), std::size_t{kSamples});
    for (int k = 0; k < kSamples; ++k) {
        ASSERT_EQ(boost::get<double>(numbers[static_cast<std::size_t>(k)].value), numberOf(k)) << k;
    }
    const std::vector<ZT_Sample> texts = read("t");
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(boost::get<std::string>(texts[0].value) + boost::get<std::string>(texts[2].value), "firstlast");
    EXPECT_TRUE(boost::get<std::string>(texts[1].value) == longText);
}

// Every operation on the temporary file fails in turn; the node is of no use then, nor is the document.
TEST(DynamicNode, FaultsOfTheTemporaryFile) {
    const std::string text(600000, 'x');
    const struct {
        const char* operation;
        std::uint32_t code;
    } cases[] = {
        {"File_IO::GetTempFile", 1014}, {"File_IO::Write", 1055}, {"File_IO::Seek", 1010}, {"File_IO::Read", 1011}};
    const std::size_t before = TemporaryFiles();
    for (const auto& c : cases) {
        std::uint32_t adding = 0;
        for (int n = 1; adding == 0; ++n) {
            Document document;
            SetTimecode(document);
            const Dynamic<Texts> node(document);
            std::uint32_t writing = 0;
            {
                const FileFault fault(c.operation, n, os::Status::kFailed);
                for (int k = 0; k < 3 && adding == 0; ++k) adding = node.Add(0, 1, text.c_str());
                ZT_ErrorRecord error{0, 0, -1, -1};
                const std::uint32_t written = document.root->WriteDocument(&error);
                writing = error.code;
                if (fault.Struck().empty()) break;
                EXPECT_EQ(written, 0U);
            }
            EXPECT_TRUE(adding == 0 || adding == c.code) << c.operation << adding;
            EXPECT_EQ(writing, adding == 0 ? c.code : 2001U) << c.operation;
            EXPECT_EQ(node.Add(0, 1, "x"), 2001U);
            EXPECT_EQ(document.Write(), 0U) << "given up";
            EXPECT_EQ(document.FileCount(), 0U) << c.operation;
        }
    }
    EXPECT_EQ(TemporaryFiles(), before);
}

// Slot by slot, as a client of another compiler would call.
TEST(DynamicNode, TablesBeginWithTheCommonSlots) {
    Document document;
    SetTimecode(document);
    IVkjsonDynamicDataNum_v1* number = nullptr;
    IVkjsonDynamicDataNumArr_v1* array = nullptr;
    IVkjsonDynamicDataString_v1* text = nullptr;
    CreateDynamicNum(document.StreamId(), &number, 1, nullptr);
    CreateDynamicNumArr(document.StreamId(), &array, 1, nullptr);
    CreateDynamicString(document.StreamId(), &text, 1, nullptr);
    EXPECT_EQ(CodeOf([&](auto* error) { CreateDynamicNum(document.StreamId(), &number, 2, error); }), 2029U);
    const auto slot = [](void* object, std::size_t k) { return (*static_cast<void***>(object))[k]; };
    const double values[] = {1, 2};
    int nodes = 0;
    for (void* node : {static_cast<void*>(number), static_cast<void*>(array), static_cast<void*>(text)}) {
        const std::string name = "n" + std::to_string(nodes++);
        ZT_ErrorRecord error{0, 77, -1, -1};
        using InitializeSlot = void (*)(void*, const char*, const char*, const char*, std::uint64_t, std::uint32_t,
                                        std::uint8_t, const char*, ZT_ErrorRecord*);
        reinterpret_cast<InitializeSlot>(slot(node, 7))(node, name.c_str(), "N", name.c_str(), 0, 2, 1, "00:00:00:01",
                                                        &error);
        EXPECT_EQ(error.code, 0U);
        const char* id = nullptr;
        using NamesSlot = std::uint32_t (*)(void*, const char**, const char**, const char**);
        EXPECT_EQ(reinterpret_cast<NamesSlot>(slot(node, 6))(node, nullptr, nullptr, &id), 1U);
        EXPECT_EQ(id, name);
        using SharedSlot = ISharedObject* (*)(void*);
        ISharedObject* const shared = reinterpret_cast<SharedSlot>(slot(node, 4))(node);
        EXPECT_EQ(CodeOf([&](auto* record) {
                      document.root->AddDynamicData(static_cast<IVkjsonDynamicData_v1*>(node), record);
                  }),
                  0U);
        using SetCountSlot = void (*)(void*, std::uint64_t, ZT_ErrorRecord*);
        reinterpret_cast<SetCountSlot>(slot(node, 2))(node, 12, nullptr);
        using CountSlot = std::uint64_t (*)(void*);
        EXPECT_EQ(reinterpret_cast<CountSlot>(slot(node, 3))(node), 12U);
        if (node == number) {
            using Add = std::uint32_t (*)(void*, std::int32_t, std::uint32_t, double, ZT_ErrorRecord*);
            EXPECT_EQ(reinterpret_cast<Add>(slot(node, 8))(node, 1, 25, 1.5, nullptr), 1U);
        } else if (node == array) {
            using SetSize = void (*)(void*, std::uint64_t, ZT_ErrorRecord*);
            reinterpret_cast<SetSize>(slot(node, 10))(node, 2, nullptr);
            using Add = std::uint32_t (*)(void*, const char*, const double*, std::uint64_t, ZT_ErrorRecord*);
            EXPECT_EQ(reinterpret_cast<Add>(slot(node, 16))(node, "00:00:00:01", values, 2, nullptr), 1U);
        } else {
            using Add = std::uint32_t (*)(void*, std::int64_t, std::uint32_t, const char*, ZT_ErrorRecord*);
            EXPECT_EQ(reinterpret_cast<Add>(slot(node, 10))(node, 1, 25, "hey", nullptr), 1U);
        }
        using WriteSlot = std::uint32_t (*)(void*, ZT_ErrorRecord*);
        EXPECT_EQ(reinterpret_cast<WriteSlot>(slot(node, 1))(node, nullptr), 1U);
        shared->Release();
    }
    EXPECT_EQ(document.Write(), 1U);
    const std::string written = document.Text();
    EXPECT_NE(written.find(Json("'hold','hasExpectedFrequencyB':true,'sampleCount':1,'expectedMaxInterSampleDuration':"
                                "'00:00:00:01','dataType'")),
              std::string::npos);
    EXPECT_EQ(FailureOf([&] { Parsed(written); }), "");
}

TEST(NativeFrame, DynamicArrays) {
    Document document;
    SetTimecode(document);
    DynamicArrayDescription description{"n", "N", "n", 2, Interpolation::kLinear, {}};
    const auto create = [&] {
        try {
            return FailureOf([&] { NativeCreateDynamicNumArr(*document, description); });
        } catch (const ZT_PluginException& failure) {
            return "plain " + std::to_string(failure.code());
        }
    };
    EXPECT_EQ(FailureOf([&] { NativeCreateDynamicNumArr(nullptr, description); }),
              "1: Invalid pointer to \"Native converter\".");
    EXPECT_EQ(create(), "");
    description.properties.legalRanges = {{0, 1}};
    for (const std::uint64_t dimensions : {0U, 4U}) {
        description.dimensions = dimensions;
        EXPECT_EQ(create(), "2017: Writer failure.");
    }
    description.dimensions = 2;
    EXPECT_EQ(create(), "2018: Writer failure.");
    description.properties.legalRanges = {};
    description.properties.displayNames = {"x"};
    EXPECT_EQ(create(), "plain 2019");
    description.properties.displayNames = {};
    description.properties.pattern = {1, kUnsetCount, false};
    EXPECT_EQ(create(), "2006: Internal converter failure");
}

}  // namespace zentor_test
