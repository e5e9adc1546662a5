// Records of samples: what is written is taken apart again, at every width, and what is damaged has its fault.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "format/sample_record.h"
#include "util/number_text.h"

namespace zentor {
namespace {

std::string Written(const RecordLayout& layout, std::string_view time, std::string_view value) {
    std::string room(layout.Width() + 32, '#');
    const char* const end = layout.Put(room.data(), time, value);
    const auto size = static_cast<std::size_t>(end - room.data());
    EXPECT_EQ(size, layout.Width()) << room;
    EXPECT_EQ(room.substr(size), std::string(room.size() - size, '#')) << "more than the record was written";
    return room.substr(0, size);
}

RecordParts TakenApart(const RecordLayout& layout, std::string_view record) {
    RecordParts parts;
    EXPECT_EQ(layout.TakeApart(record, parts), RecordFault::kNone) << record;
    EXPECT_EQ(layout.TimeIn(record), parts.time);
    EXPECT_EQ(parts.value.size(), layout.ValueWidth());
    return parts;
}

// Times of dates and of frames.
const std::vector<std::string> kTimes = {"00:00:00:00", "00:00:00:000", "2026-01-02T03:04:05Z",
                                         "2026-01-02T03:04:05.123456789+00:00"};

TEST(SampleRecord, GivesNumbersBackAtEveryWidth) {
    for (const std::string& time : kTimes) {
        for (std::uint64_t integers = 1; integers <= 12; ++integers) {
            for (std::uint64_t decimals = 0; decimals <= 8; ++decimals) {
                for (const bool isSigned : {false, true}) {
                    RecordLayout layout;
                    layout.timeWidth = time.size();
                    layout.pattern = {isSigned, integers, decimals};
                    const std::string largest =
                        std::string(integers, '9') + (decimals == 0 ? "" : ".") + std::string(decimals, '9');
                    for (const std::string& text : {std::string("0"), std::string("7"), largest}) {
                        for (const std::string& number : {text, "-" + text}) {
                            if (number.front() == '-' && !isSigned) continue;
                            const std::string record = Written(layout, time, number);
                            const RecordParts parts = TakenApart(layout, record);
                            double value = 1;
                            EXPECT_EQ(parts.time, time);
                            EXPECT_TRUE(ReadPaddedNumber(parts.value, value)) << record;
                            EXPECT_EQ(value, std::stod(number)) << record;
                            EXPECT_EQ(std::signbit(value), number.front() == '-') << record;
                        }
                    }
                }
            }
        }
    }
}

TEST(SampleRecord, GivesArraysBackAtEverySize) {
    for (std::uint64_t size = 1; size <= 40; ++size) {
        RecordLayout layout;
        layout.kind = SampleKind::kNumberArray;
        layout.timeWidth = kTimes[0].size();
        layout.pattern = {true, 3, 2};
        layout.arraySize = size;
        std::string elements;
        for (std::uint64_t k = 0; k < size; ++k) {
            elements += (k == 0 ? "" : ",") + std::string(k % 2 == 0 ? "" : "-") + std::to_string(k * 7) + ".5";
        }
        const std::string record = Written(layout, kTimes[0], elements);
        const RecordParts parts = TakenApart(layout, record);
        std::vector<double> values;
        const auto take = [&values](std::string_view element) {
            double value = 0;
            if (!ReadPaddedNumber(element, value)) return false;
            values.push_back(value);
            return true;
        };
        EXPECT_EQ(TakeElements(parts.value, size, take), ValueFault::kNone) << record;
        ASSERT_EQ(values.size(), size);
        for (std::uint64_t k = 0; k < size; ++k) {
            EXPECT_EQ(values[k], (k % 2 == 0 ? 1 : -1) * (static_cast<double>(k * 7) + 0.5));
        }
        EXPECT_EQ(TakeElements(parts.value, size + 1, take), ValueFault::kCount);
        EXPECT_EQ(TakeElements(parts.value, size - 1, take), ValueFault::kForm);
        EXPECT_EQ(TakeElements(parts.value.substr(0, parts.value.size() - 1), size, take), ValueFault::kForm);
    }
}

TEST(SampleRecord, GivesTextsBackAtEveryLength) {
    for (std::uint64_t most : {0, 1, 3, 7, 8, 16, 17, 300, 5000}) {
        for (const bool isQuoted : {true, false}) {
            for (const std::uint64_t length : {std::uint64_t{0}, most / 2, most}) {
                RecordLayout layout;
                layout.kind = SampleKind::kPaddedString;
                layout.hasQuotedLength = isQuoted;
                layout.timeWidth = kTimes[0].size();
                layout.maxLength = most;
                layout.lengthDigits = 4;
                const std::string text(length, 'x');
                const std::string record = Written(layout, kTimes[0], text);
                EXPECT_EQ(layout.SeesQuotedLength(record), isQuoted);
                std::string_view padded;
                double stated = -1;
                const RecordParts parts = TakenApart(layout, record);
                EXPECT_EQ(TakePaddedString(parts.value, layout, padded, stated), ValueFault::kNone) << record;
                EXPECT_EQ(padded, text + std::string(most - length, ' '));
                EXPECT_EQ(stated, static_cast<double>(length));
            }
        }
    }
}

TEST(SampleRecord, NamesTheFirstFaultOfARecord) {
    RecordLayout layout;
    layout.timeWidth = 11;
    layout.pattern = {false, 1, 0};
    struct Case {
        const char* record;
        RecordFault fault;
        const char* time;
    };
    const std::vector<Case> cases = {
        {R"({"time":"00:00:00:00","value":"1"})", RecordFault::kNone, "00:00:00:00"},
        {R"({"time":"00:00:00:00","value":"1"])", RecordFault::kForm, ""},
        {R"(["time":"00:00:00:00","value":"1"})", RecordFault::kForm, ""},
        {R"({"tine":"00:00:00:00","value":"1"})", RecordFault::kNoTimeKey, ""},
        {R"({"tine":"00:00:00:00","valve":"1"})", RecordFault::kNoTimeKey, ""},
        {R"({"time":'00:00:00:00","value":"1"})", RecordFault::kTime, ""},
        {R"({"time":"00:00:00:00';value":"1"})", RecordFault::kForm, "00:00:00:00"},
        {R"({"time":"00:00:00:00","valve":"1"})", RecordFault::kNoValueKey, "00:00:00:00"},
    };
    for (const Case& c : cases) {
        RecordParts parts;
        EXPECT_EQ(layout.TakeApart(c.record, parts), c.fault) << c.record;
        EXPECT_EQ(parts.time, c.time) << c.record;
    }
    for (const char* const value : {"1", "\"1", "1\"", "\"\"", "\"", "\"+\"", "\"--1\"", "\"1 \"", "\"1,\"", "\".\""}) {
        double number = 0;
        EXPECT_FALSE(ReadPaddedNumber(value, number)) << value;
    }
}

TEST(SampleRecord, WidthsBeyondAllFilesStayHuge) {
    constexpr std::uint64_t kMost = std::uint64_t{1} << 53;
    RecordLayout layout;
    layout.kind = SampleKind::kNumberArray;
    layout.pattern = {true, kMost, kMost};
    layout.arraySize = kMost;
    EXPECT_GT(layout.Width(), kMost);
    EXPECT_GT(layout.Size(kMost), kMost);
    EXPECT_EQ(layout.Size(0), 0u);
}

}  // namespace
}  // namespace zentor
