// Recordings converted, opened and walked give the values of their files back.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <set>
#include <sstream>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

// The files of this project, and those of the folder ZENTOR_SAMPLES if it is set.
std::vector<std::string> Recordings(const std::set<std::string>& extensions) {
    std::vector<std::string> folders = {ZENTOR_RECORDINGS};
    if (const char* const samples = std::getenv("ZENTOR_SAMPLES")) folders.emplace_back(samples);
    std::vector<std::string> recordings;
    for (const std::string& folder : folders) {
        for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder))) {
            if (extensions.contains(Utf8Of(entry.path().extension()))) recordings.push_back(Utf8Of(entry.path()));
        }
    }
    return recordings;
}

using Row = std::vector<std::string>;

// The rows of a table that has no empty lines.
std::vector<Row> RowsOf(const std::string& path) {
    const char delimiter = path.ends_with(".tsv") ? '\t' : ',';
    std::vector<Row> rows;
    std::istringstream lines(ReadWhole(path));
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        rows.emplace_back();
        std::istringstream cells(line + delimiter);
        for (std::string cell; std::getline(cells, cell, delimiter);) rows.back().push_back(cell);
    }
    return rows;
}

// A decimal number that is the whole text.
bool ReadNumber(const std::string& text, double& number) {
    const char* const end = text.data() + text.size();
    return std::from_chars(text.data(), end, number).ptr == end && !text.empty();
}

bool IsValueOf(const ZT_StaticDataInfo& node, const std::string& cell) {
    if (const auto* const text = boost::get<std::string>(&node.value)) return *text == cell;
    double expected = 0;
    if (!ReadNumber(cell, expected) && !cell.empty()) return false;
    return boost::get<double>(node.value) == expected;
}

bool IsNumberColumn(const std::vector<Row>& rows, std::size_t column) {
    double ignored = 0;
    for (std::size_t row = 1; row < rows.size(); ++row) {
        if (!rows[row][column].empty() && !ReadNumber(rows[row][column], ignored)) return false;
    }
    return true;
}

void ExpectColumn(ISensorFileHandler* handler, const std::vector<Row>& rows, std::size_t column) {
    const std::string group = "[" + std::to_string(column) + "]";
    ZT_GroupChildInfo info;
    ASSERT_EQ(handler->GetGroupChildInfo(group.c_str(), &info), 0U);
    EXPECT_EQ(info.displayName, rows[0][column]);
    ZT_GroupChildren cells;
    ASSERT_EQ(handler->GetGroupChildren(group.c_str(), &cells), 0U);
    ASSERT_EQ(cells.paths.size(), rows.size() - 1);
    const bool isNumber = IsNumberColumn(rows, column);
    std::size_t wrong = 0;
    for (std::size_t row = 1; row < rows.size(); ++row) {
        ZT_StaticDataInfo node;
        ASSERT_EQ(handler->GetStaticDataInfo(cells.paths[row - 1].ToString().c_str(), &node), 0U);
        if (node.dataType.type != (isNumber ? "number" : "string") || !IsValueOf(node, rows[row][column])) ++wrong;
    }
    EXPECT_EQ(wrong, 0U) << group;
}

}  // namespace

TEST(RoundTrip, TablesGiveTheirValuesBack) {
    const std::vector<std::string> tables = Recordings({".csv", ".tsv"});
    ASSERT_GE(tables.size(), 2U);
    Manager manager;
    for (const std::string& table : tables) {
        SCOPED_TRACE(table);
        const std::vector<Row> rows = RowsOf(table);
        ASSERT_GT(rows.size(), 10U);
        ISensorFileHandler* handler = nullptr;
        ASSERT_EQ(manager->OpenFile(&handler, table.c_str(), nullptr), 0U) << OnlyReport();
        ZT_GroupChildren columns;
        ASSERT_EQ(handler->GetRootChildren(&columns), 0U);
        ASSERT_EQ(columns.paths.size(), rows[0].size());
        for (std::size_t column = 0; column < rows[0].size(); ++column) ExpectColumn(handler, rows, column);
        manager->CloseFile(&handler);
    }
}

namespace {

// A capture read by its words alone: which channel each column is, by joint, and the numbers of all complete frames.
struct PlainCapture {
    std::vector<std::vector<std::string>> channels;  // of each joint, in order
    std::size_t columns = 0;
    std::vector<double> numbers;
};

std::string Lower(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

// The number in a file as the document has it: with 16 digits, no exponent and at most 17 decimals.
double AsWritten(const std::string& word) {
    const std::string digits = word.starts_with('+') ? word.substr(1) : word;
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    char text[400];
    const bool isSmall = std::abs(number) < 1e-4;
    const auto end = isSmall ? std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 17).ptr
                             : std::to_chars(text, text + sizeof text, number, std::chars_format::scientific, 15).ptr;
    std::from_chars(text, end, number);
    return number;
}

PlainCapture ReadCapture(const std::string& path) {
    PlainCapture capture;
    std::istringstream words(ReadWhole(path));
    std::string word;
    const auto next = [&] { return static_cast<bool>(words >> word); };
    while (next() && !Lower(word).starts_with("frames")) {
        if (Lower(word) == "root" || Lower(word) == "joint") capture.channels.emplace_back();
        if (Lower(word) != "channels") continue;
        next();
        const std::size_t count = std::stoul(word);
        capture.columns += count;
        for (std::size_t k = 0; k < count; ++k) {
            next();
            capture.channels.back().push_back(Lower(word));
        }
    }
    while (next() && Lower(word).find("time:") == std::string::npos) {
    }
    if (word.ends_with(':')) next();
    while (next()) capture.numbers.push_back(AsWritten(word));
    capture.numbers.resize(capture.numbers.size() / capture.columns * capture.columns);
    return capture;
}

// The columns of a joint that a dynamic array with these display names holds.
std::vector<std::size_t> ColumnsOf(const PlainCapture& capture, std::size_t joint,
                                   const std::vector<std::string>& names) {
    std::size_t column = 0;
    for (std::size_t k = 0; k < joint; ++k) column += capture.channels[k].size();
    std::vector<std::size_t> columns;
    const auto& channels = capture.channels[joint];
    for (const std::string& name : names) {
        const auto found = std::find(channels.begin(), channels.end(), Lower(name));
        EXPECT_NE(found, channels.end()) << name;
        columns.push_back(column + static_cast<std::size_t>(found - channels.begin()));
    }
    EXPECT_TRUE(std::is_sorted(columns.begin(), columns.end())) << "in the order of their declaration";
    return columns;
}

// Every record of a set begins where arithmetic says, in the bytes of the document.
void ExpectFixedWidth(const std::string& text, const ZT_DynamicDataInfo& info) {
    const ZT_NumberPattern& pattern = info.dataType.pattern;
    const auto number = 2 + (pattern.isSigned ? 1 : 0) + pattern.digitsInteger +
                        (pattern.digitsDecimal == 0 ? 0 : pattern.digitsDecimal + 1);
    const auto value = (number + 1) * info.dataType.arraySize + 1;
    const std::size_t width = info.firstSampleTime.size() + 20 + static_cast<std::size_t>(value);
    const std::string start = "{\"sampleSetID\":\"" + info.sampleSetID + "\",\"samples\":[";
    std::size_t at = text.find(start);
    ASSERT_NE(at, std::string::npos);
    at += start.size();
    std::size_t wrong = 0;
    for (std::uint64_t k = 0; k < info.sampleCount; ++k, at += width + 1) {
        const char after = text.at(at + width);
        if (text.compare(at, 9, "{\"time\":\"") != 0 || text[at + width - 1] != '}' ||
            after != (k + 1 == info.sampleCount ? ']' : ',')) {
            ++wrong;
        }
    }
    EXPECT_EQ(wrong, 0U) << info.sampleSetID;
}

bool IsSame(const std::vector<double>& values, const PlainCapture& capture, std::size_t frame,
            const std::vector<std::size_t>& columns) {
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const double expected = capture.numbers[frame * capture.columns + columns[k]];
        if (values[k] != expected || std::signbit(values[k]) != std::signbit(expected)) return false;
    }
    return values.size() == columns.size();
}

// Compares the arrays of the joints below a group; returns how many joints there are.
void CompareJoints(ISensorFileHandler* handler, const std::string& text, const PlainCapture& capture,
                   const ZT_GroupChildren& nodes, std::size_t& joint) {
    for (const ZT_DataPath& path : nodes.paths) {
        const std::string node = path.ToString();
        ZT_GroupChildInfo info;
        ASSERT_EQ(handler->GetGroupChildInfo(node.c_str(), &info), 0U);
        if (info.nodeType == ZT_NODE_GROUP) {
            ZT_GroupChildren children;
            ASSERT_EQ(handler->GetGroupChildren(node.c_str(), &children), 0U);
            ++joint;
            CompareJoints(handler, text, capture, children, joint);
        }
        if (info.nodeType != ZT_NODE_DYNAMIC) continue;
        ZT_DynamicDataInfo dynamic;
        ASSERT_EQ(handler->GetDynamicDataInfo(node.c_str(), &dynamic), 0U);
        const auto columns = ColumnsOf(capture, joint - 1, dynamic.dataType.arrayDisplayNames);
        const std::size_t frames = capture.numbers.size() / capture.columns;
        ASSERT_EQ(dynamic.sampleCount, frames);
        ExpectFixedWidth(text, dynamic);
        ZT_FileInfo file;
        ASSERT_EQ(handler->GetFileInfo(&file), 0U);
        DynamicDataSampleSet all;
        ASSERT_EQ(handler->GetDynamicSamples(node.c_str(), {0, 1}, {86400, 1}, &all), 0U);
        ASSERT_EQ(all.samples.size(), frames);
        std::size_t wrong = 0;
        for (std::size_t frame = 0; frame < frames; ++frame) {
            DynamicDataSampleSet one;
            const ZT_Time time{static_cast<std::int32_t>(frame * file.frameRateScale), file.frameRateValue};
            ASSERT_EQ(handler->GetDynamicSample(node.c_str(), time, &one), 0U);
            if (one.samples.at(0).time != all.samples[frame].time) ++wrong;
            for (const ZT_Sample& sample : {one.samples[0], all.samples[frame]}) {
                if (!IsSame(boost::get<std::vector<double>>(sample.value), capture, frame, columns)) ++wrong;
            }
        }
        EXPECT_EQ(wrong, 0U) << node;
    }
}

}  // namespace

TEST(RoundTrip, CapturesGiveTheirNumbersBack) {
    const TestFolder folder;
    const std::vector<std::string> captures = Recordings({".bvh"});
    ASSERT_GE(captures.size(), 2U);
    Manager manager;
    for (const std::string& path : captures) {
        SCOPED_TRACE(path);
        const PlainCapture capture = ReadCapture(path);
        ASSERT_GE(capture.numbers.size() / capture.columns, 10U);
        ISensorFileHandler* handler = nullptr;
        const std::string output = folder / "d.vkjson";
        ASSERT_EQ(manager->OpenFile(&handler, path.c_str(), output.c_str()), 0U) << OnlyReport();
        ZT_GroupChildren roots;
        ASSERT_EQ(handler->GetRootChildren(&roots), 0U);
        std::size_t joint = 0;
        CompareJoints(handler, ReadWhole(output), capture, roots, joint);
        EXPECT_EQ(joint, capture.channels.size());
        manager->CloseFile(&handler);
    }
}

namespace {

// Compares the nodes at `path`, of the top level when it is empty, with the values of a JSON object or array.
void CompareValues(ISensorFileHandler* handler, const std::string& path, const rapidjson::Value& values) {
    std::vector<std::pair<std::string, const rapidjson::Value*>> expected;
    if (values.IsObject()) {
        for (const auto& member : values.GetObject()) expected.emplace_back(member.name.GetString(), &member.value);
    } else {
        for (const auto& element : values.GetArray()) expected.emplace_back(std::to_string(expected.size()), &element);
    }
    std::erase_if(expected, [](const auto& value) { return value.second->IsNull(); });
    ZT_GroupChildren children;
    ASSERT_EQ(path.empty() ? handler->GetRootChildren(&children) : handler->GetGroupChildren(path.c_str(), &children),
              0U);
    ASSERT_EQ(children.paths.size(), expected.size()) << path;
    for (std::size_t k = 0; k < expected.size(); ++k) {
        const auto& [name, value] = expected[k];
        const std::string child = children.paths[k].ToString();
        ZT_GroupChildInfo info;
        ASSERT_EQ(handler->GetGroupChildInfo(child.c_str(), &info), 0U);
        EXPECT_EQ(info.displayName, name);
        ASSERT_EQ(info.nodeType, value->IsObject() || value->IsArray() ? ZT_NODE_GROUP : ZT_NODE_STATIC);
        if (info.nodeType == ZT_NODE_GROUP) {
            CompareValues(handler, child, *value);
            continue;
        }
        ZT_StaticDataInfo node;
        ASSERT_EQ(handler->GetStaticDataInfo(child.c_str(), &node), 0U);
        if (value->IsBool()) {
            EXPECT_EQ(boost::get<bool>(node.value), value->GetBool());
        } else if (value->IsNumber()) {
            EXPECT_EQ(boost::get<double>(node.value), value->GetDouble());
        } else {
            EXPECT_EQ(boost::get<std::string>(node.value), value->GetString());
        }
    }
}

}  // namespace

TEST(RoundTrip, JsonGivesItsValuesBack) {
    const std::vector<std::string> texts = Recordings({".json"});
    ASSERT_GE(texts.size(), 1U);
    Manager manager;
    for (const std::string& path : texts) {
        SCOPED_TRACE(path);
        rapidjson::Document values;
        values.Parse<rapidjson::kParseFullPrecisionFlag>(ReadWhole(path).c_str());
        ASSERT_FALSE(values.HasParseError());
        ASSERT_FALSE(values.IsObject() ? values.ObjectEmpty() : values.Empty());
        ISensorFileHandler* handler = nullptr;
        ASSERT_EQ(manager->OpenFile(&handler, path.c_str(), nullptr), 0U) << OnlyReport();
        CompareValues(handler, "", values);
        manager->CloseFile(&handler);
    }
}

}  // namespace zentor_test
