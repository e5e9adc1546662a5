// Recordings converted, opened and walked give the values of their files back.
#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <sstream>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

// The files of this project, and those of the folder ZENTOR_SAMPLES if it is set.
std::vector<std::string> Tables() {
    std::vector<std::string> folders = {ZENTOR_RECORDINGS};
    if (const char* const samples = std::getenv("ZENTOR_SAMPLES")) folders.emplace_back(samples);
    std::vector<std::string> tables;
    for (const std::string& folder : folders) {
        for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder))) {
            const std::string extension = Utf8Of(entry.path().extension());
            if (extension == ".csv" || extension == ".tsv") tables.push_back(Utf8Of(entry.path()));
        }
    }
    return tables;
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
    const std::vector<std::string> tables = Tables();
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

}  // namespace zentor_test
