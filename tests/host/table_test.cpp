// What tables become: conversion through the exports, documents read with a parser that is not ours.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstring>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

// The document that a file becomes; empty after a failure.
std::string Convert(const std::string& path) {
    Manager manager;
    IVkjsonStream* stream = nullptr;
    if (manager->ConvertFile(&stream, path.c_str(), 0) != 0) return {};
    const std::uint32_t size = stream->Size();
    std::string document(size, '?');
    EXPECT_EQ(stream->Read(document.data(), &size), size);
    manager->ReleaseStream(&stream);
    return document;
}

// One outline in short: "t: 1 2; x: 'a' 'b'". Checks the names of all nodes on the way.
std::string Outline(const std::string& document) {
    rapidjson::Document parsed;
    parsed.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseNumbersAsStringsFlag>(document.data(),
                                                                                             document.size());
    if (parsed.HasParseError()) return "not JSON";
    std::string outline;
    int counter = 0;
    const auto nextName = [&counter] { return "data" + std::to_string(counter++); };
    for (const auto& group : parsed["dataOutline"].GetArray()) {
        EXPECT_EQ(group["objectType"], "dataGroup");
        EXPECT_EQ(group["matchName"].GetString(), nextName());
        const std::string header(group["displayName"].GetString(), group["displayName"].GetStringLength());
        outline += (outline.empty() ? "" : "; ") + header + ":";
        int row = 0;
        for (const auto& cell : group["children"].GetArray()) {
            EXPECT_EQ(cell["matchName"].GetString(), nextName());
            const std::string name(cell["displayName"].GetString(), cell["displayName"].GetStringLength());
            EXPECT_EQ(name, (header + " " + std::to_string(row++)).substr(0, 1023));
            const bool isText = cell["dataType"]["type"] == "string";
            const std::string value(cell["value"].GetString(), cell["value"].GetStringLength());
            outline += isText ? " '" + value + "'" : " " + value;
        }
    }
    return outline;
}

std::string Utf16Le(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace

TEST(Table, WholeDocument) {
    const TestFolder folder;
    const std::string document = Convert(folder.Write("t.csv", "t,x\n1,\n-2.50,abc\n"));
    const auto number = [](const char* names, const char* pattern, const std::string& value) {
        const std::string range = "{\"min\":" + value + ",\"max\":" + value + "}";
        return "{\"objectType\":\"dataStatic\"," + std::string(names) +
               ",\"dataType\":{\"type\":\"number\",\"numberStringProperties\":{\"pattern\":{" + pattern +
               "},\"range\":{\"occurring\":" + range + ",\"legal\":" + range + "}}},\"value\":" + value + "}";
    };
    const auto text = [](const char* names, const char* value) {
        return "{\"objectType\":\"dataStatic\"," + std::string(names) +
               ",\"dataType\":{\"type\":\"string\",\"paddedStringProperties\":{\"maxDigitsInStrLength\":0,\"maxLen\":0,"
               "\"eventMarkerB\":false}},\"value\":\"" +
               value + "\"}";
    };
    EXPECT_EQ(document,
              "{\"version\":\"vkjson2.0.0\",\"dynamicSamplesPresentB\":false,\"creator\":\"com.orvane.sensor.csv\","
              "\"dataOutline\":[{\"objectType\":\"dataGroup\",\"matchName\":\"data0\",\"displayName\":\"t\","
              "\"children\":[" +
                  number("\"matchName\":\"data1\",\"displayName\":\"t 0\"",
                         "\"isSigned\":false,\"digitsDecimal\":0,\"digitsInteger\":1", "1") +
                  "," +
                  number("\"matchName\":\"data2\",\"displayName\":\"t 1\"",
                         "\"isSigned\":true,\"digitsDecimal\":1,\"digitsInteger\":1", "-2.5") +
                  "]},{\"objectType\":\"dataGroup\",\"matchName\":\"data3\",\"displayName\":\"x\",\"children\":[" +
                  text("\"matchName\":\"data4\",\"displayName\":\"x 0\"", "") + "," +
                  text("\"matchName\":\"data5\",\"displayName\":\"x 1\"", "abc") + "]}]}");
}

TEST(Table, Rules) {
    const struct {
        const char* why;
        std::string text;
        const char* outline;
    } cases[] = {
        {"numbers and text", "t,x\n1,2\n2,abc\n", "t: 1 2; x: '2' 'abc'"},
        {"header only", "a,b\n", "a:; b:"},
        {"header without a line end", "a,b", "a:; b:"},
        {"empty file", "", ""},
        {"empty first line", "\na,b\n1,2\n", ""},
        {"no line end after the last row", "a\n1", "a: 1"},
        {"missing cells are empty", "a,b\n5\n", "a: 5; b: 0"},
        {"missing cells of a text column", "a,b\n5,x\n6\n", "a: 5 6; b: 'x' ''"},
        {"an empty column is numeric", "a,b\n,\n,\n", "a: 0 0; b: 0 0"},
        {"cells beyond the header are dropped", "a\n1,2,3\n4\n", "a: 1 4"},
        {"a delimiter at the end is an empty cell", "a,\n1,\n", "a: 1; : 0"},
        {"empty lines are no rows", "a\n\n1\n\n\n2\n\n", "a: 1 2"},
        {"carriage return and line feed", "a,b\r\n1,x\r\n2,y\r\n", "a: 1 2; b: 'x' 'y'"},
        {"carriage returns", "a\r1\r2\r", "a: 1 2"},
        {"line feed and carriage return", "a\n\r1\n\r2\n\r", "a: 1 2"},
        {"quotation marks do not protect", "a,b\n'x,y'\n", "a: ''x'; b: 'y''"},
        {"blanks before a number", "a\n 12\n\t13\n", "a: 12 13"},
        {"a blank after a number", "a\n12 \n13\n", "a: '12 ' '13'"},
        {"a cell of blanks is text", "a\n  \n", "a: '  '"},
        {"number forms", "a\n+1\n-.5\n5.\n1e3\n1E-2\n00012\n", "a: 1 -0.5 5 1000 0.01 12"},
        {"sixteen digits", "a\n0.1\n9.2\n3.141592653589793238\n1e16\n-0\n",
         "a: 0.1 9.199999999999999 3.141592653589793 1e+16 -0"},
        {"zeros of an exponent are stripped too", "a\n1.5e20\n", "a: 1.5e+2"},
        {"the largest number that can be written", "a\n1.797693134862315e308\n", "a: 1.797693134862315e+308"},
        {"a number that rounds beyond a double", "a\n1.7976931348623157e308\n", "a: '1.7976931348623157e308'"},
        {"overflow", "a\n1e400\n", "a: '1e400'"},
        {"underflow", "a\n1e-400\n", "a: '1e-400'"},
        {"no number", "a\nnan\n", "a: 'nan'"},
        {"infinity", "a\n-inf\n", "a: '-inf'"},
        {"hexadecimal", "a\n0x10\n", "a: '0x10'"},
        {"a unit", "a\n5kg\n", "a: '5kg'"},
        {"signs", "a\n+-1\n", "a: '+-1'"},
        {"a lone point", "a\n.\n", "a: '.'"},
        {"an unfinished exponent", "a\n1e\n", "a: '1e'"},
        {"text in the last row only", "a\n1\n2\nx\n", "a: '1' '2' 'x'"},
        {"UTF-8 mark",
         "\xEF\xBB\xBF"
         "a\n1\n",
         "a: 1"},
        {"accents",
         "gr\xC3\xB6\xC3\x9F"
         "e\n\xE6\xB8\xA9\n",
         "gr\xC3\xB6\xC3\x9F"
         "e: '\xE6\xB8\xA9'"},
        {"UTF-16", Utf16Le(u"\uFEFFa,\u00E9\r\n1,\U0001F600\r\n2,\uFEFFx"), "a: 1 2; \xC3\xA9: '\xF0\x9F\x98\x80' 'x'"},
        {"UTF-16 lone surrogate", Utf16Le(u"\uFEFFa\n\xD800x\n\xDC00"), "a: '\xEF\xBF\xBDx' '\xEF\xBF\xBD'"},
        {"UTF-16 odd byte", Utf16Le(u"\uFEFFa\n1\n") + "7", "a: 1"},
        {"big-endian text is read as little-endian", std::string("\xFE\xFF\0a\0,\0b", 8),
         "\xE6\x84\x80\xE2\xB0\x80\xE6\x88\x80:"},
        {"a mark after a part of another",
         "\xEF\xFF\xFE"
         "a\n",
         "\xEF\xBF\xAF\xE6\x87\xBE:"},
    };
    const TestFolder folder;
    for (const auto& c : cases) EXPECT_EQ(Outline(Convert(folder.Write("case.csv", c.text))), c.outline) << c.why;
}

TEST(Table, TabSeparated) {
    const TestFolder folder;
    const std::string text = "a,b\tc\n1\t2,5\n \t7\n";
    for (const char* name : {"t.tsv", "t.txt", "T.TXT"}) {
        const std::string document = Convert(folder.Write(name, text));
        EXPECT_EQ(Outline(document), "a,b: '1' ' '; c: '2,5' '7'");
        EXPECT_NE(document.find("\"creator\":\"com.orvane.sensor.tsv\""), std::string::npos);
    }
    // A tab is no blank that could be skipped over into the next cell.
    EXPECT_EQ(Outline(Convert(folder.Write("u.tsv", "a\tb\n\t1\n"))), "a: 0; b: 1");
}

TEST(Table, LongNamesAreCut) {
    const TestFolder folder;
    const std::string header(2000, 'h');
    const std::string document = Convert(folder.Write("long.csv", header + ",b\n1,2\n3,4\n"));
    EXPECT_EQ(Outline(document), header + ": 1 3; b: 2 4");
}

// Every cell arrives, across many buffers and with names of growing length.
TEST(Table, ManyRows) {
    const TestFolder folder;
    std::string text = "n,square,word\n";
    std::string expected[3] = {"n:", "square:", "word:"};
    for (int row = 0; row < 20000; ++row) {
        const std::string cells[] = {std::to_string(row), std::to_string(row * 0.25).substr(0, 6),
                                     "w" + std::to_string(row % 7)};
        text += cells[0] + "," + cells[1] + "," + cells[2] + "\n";
        expected[0] += " " + cells[0];
        char number[32];
        std::snprintf(number, sizeof number, "%.16g", std::stod(cells[1]));
        expected[1] += std::string(" ") + number;
        expected[2] += " '" + cells[2] + "'";
    }
    EXPECT_EQ(Outline(Convert(folder.Write("many.csv", text))), expected[0] + "; " + expected[1] + "; " + expected[2]);
}

TEST(Table, WideTable) {
    const TestFolder folder;
    std::string header;
    std::string row;
    std::string expected;
    for (int column = 0; column < 5000; ++column) {
        header += (column ? ",c" : "c") + std::to_string(column);
        row += (column ? "," : "") + std::to_string(column);
        expected += (column ? "; c" : "c") + std::to_string(column) + ": " + std::to_string(column);
    }
    EXPECT_EQ(Outline(Convert(folder.Write("wide.csv", header + "\n" + row + "\n"))), expected);
}

}  // namespace zentor_test
