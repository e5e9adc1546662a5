// Good documents of both versions, ways to damage them, and a walk over all that has been read.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "failure.h"
#include "open_text.h"

namespace zentor_test {

using zentor::ParserChoice;

inline const std::string kTimecodes =
    R"("useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":30000,"scale":1001},"dropFrame":true})";
inline const std::string kUtcTimes = R"("useTimecodeB":false,"utcInfo":{"precisionLength":3,"isGMT":true})";

inline const std::string kVideoSync =
    R"("videoSyncTimeList":[{"fileName":"a.mov","frameNumber":7},{"fileName":"b.mov","timeString":"12:30:00:00"}])";

inline const std::string kNumberProperties =
    R"("numberStringProperties":{"pattern":{"isSigned":true,"digitsInteger":3,"digitsDecimal":2},)"
    R"("range":{"occurring":{"min":-4.5,"max":4.25},"legal":{"min":-100,"max":1e2}}})";
inline const std::string kStringProperties =
    R"("paddedStringProperties":{"maxDigitsInStrLength":1,"maxLen":4,"eventMarkerB":false})";
inline const std::string kArrayProperties =
    R"("numberArrayProperties":{"pattern":{"isSigned":false,"digitsInteger":1,"digitsDecimal":0},"arrayRanges":{"ranges":[)"
    R"({"occurring":{"min":1,"max":5},"legal":{"min":0,"max":8}},{"occurring":{"min":2,"max":6},"legal":{"min":0,"max":9}}]},)"
    R"("arraySize":2,"arrayDisplayNames":["x","y"],"isPoint":true})";

// The nodes [0] to [2] of the outlines: alike in both versions but for the type word of arrays.
inline std::string DynamicNodes(const std::string& arrayType) {
    return R"({"matchName":"d1","objectType":"dataDynamic","displayName":"Speed","sampleSetID":"s1",)"
           R"("interpolation":"linear","hasExpectedFrequencyB":true,"sampleCount":2,)"
           R"("expectedMaxInterSampleDuration":"00:00:00:01","dataType":{"type":"numberString",)" +
           kNumberProperties +
           R"(}},{"matchName":"d2","objectType":"dataDynamic","displayName":"Note","sampleSetID":"s2",)"
           R"("interpolation":"hold","hasExpectedFrequencyB":false,"sampleCount":1,"dataType":{"type":"paddedString",)" +
           kStringProperties +
           R"(}},{"matchName":"d3","objectType":"dataDynamic","displayName":"Place","sampleSetID":"s3",)"
           R"("interpolation":"linear","hasExpectedFrequencyB":false,"sampleCount":1,"dataType":{"type":")" +
           arrayType + "\"," + kArrayProperties + "}}";
}

// `type`: the type word in its quotes, and the properties after a comma.
inline std::string StaticNode(const std::string& name, const std::string& type, const std::string& value) {
    return R"({"matchName":")" + name + R"(","objectType":"dataStatic","displayName":"Static )" + name +
           R"(","dataType":{"type":)" + type + "},\"value\":" + value + "}";
}

inline std::string GroupNode(const std::string& name, const std::string& children) {
    return R"({"matchName":")" + name + R"(","objectType":"dataGroup","displayName":"Group )" + name +
           R"(","children":[)" + children + "]}";
}

inline std::string Samples(const std::string& timeInfo) {
    const std::string sample = R"({"time":")" +
                               std::string(timeInfo == kUtcTimes ? "2020-02-29T12:30:00.000Z" : "12:30:00:00") +
                               R"(","value":)";
    return R"("dataDynamicSamples":[{"sampleSetID":"s1","samples":[)" + sample + R"("+004.25"},)" + sample +
           R"("-004.50"}]},{"sampleSetID":"s2","samples":[)" + sample +
           R"({"length":"3","str":"[a] "}}]},{"sampleSetID":"s3","samples":[)" + sample + R"(["1","2"]}]}])";
}

// [3] of both outlines is a group of static nodes of every type and, last, of another group.
inline std::string Document1(const std::string& timeInfo = kUtcTimes, bool withSamples = true) {
    const std::string number = R"("numberString",)" + kNumberProperties;
    const std::string nodes =
        StaticNode("n1", number, "\"+002.50\"") + "," +
        StaticNode("t1", R"("paddedString",)" + kStringProperties, R"({"length":"2","str":"ab  "})") + "," +
        StaticNode("a1", R"("numberArray",)" + kArrayProperties, R"(["3",4])") + "," +
        GroupNode("g2", StaticNode("n2", number, "7"));
    return R"({"version":"vkjson1.0.0",)" + timeInfo + "," + kVideoSync + "," +
           (withSamples ? Samples(timeInfo) + "," : "") + R"("creator":"me","dataOutline":[)" +
           DynamicNodes("numberArray") + "," + GroupNode("g1", nodes) + "]}";
}

inline std::string Document2(const std::string& timeInfo = kTimecodes, bool withSamples = true) {
    const std::string nodes = StaticNode("n1", R"("number",)" + kNumberProperties, "2.5") + "," +
                              StaticNode("t1", R"("string",)" + kStringProperties, "\"ab\"") + "," +
                              StaticNode("a1", R"("numberArray",)" + kArrayProperties, "[3,4]") + "," +
                              StaticNode("b1", "\"boolean\"", "true") + "," + GroupNode("g2", "");
    return R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{)" + timeInfo + "," +
           kVideoSync + "}," + (withSamples ? Samples(timeInfo) + "," : "") + R"("creator":"me","dataOutline":[)" +
           DynamicNodes("numberStringArray") + "," + GroupNode("g1", nodes) + "]}";
}

// A document of version 2 with nothing but these nodes.
inline std::string Outline2(const std::string& nodes) {
    return R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":false,"dataOutline":[)" + nodes + "]}";
}

// `text` with `from`, where it stands first at or after `begin`, replaced.
inline std::string Replaced(std::string text, const std::string& from, const std::string& to, std::size_t begin = 0) {
    const std::size_t at = text.find(from, begin);
    if (at == std::string::npos) throw std::logic_error("not in the document: " + from);
    return text.replace(at, from.size(), to);
}

// Expects that reading `text` ends in `failure` ("code: message", empty for none), with the offset of the "@" that
// marks it in the text and is no part of it.
inline void ExpectFailure(std::string text, ParserChoice choice, const std::string& failure) {
    const std::size_t mark = text.find('@');
    if (mark != std::string::npos) text.erase(mark, 1);
    const std::string detail = mark == std::string::npos ? "" : " [" + std::to_string(mark) + "]";
    EXPECT_EQ(FailureOf([&] { zentor::ParseDocument(text, choice); }), failure + detail) << text;
}

// Asks for everything about the nodes below the path and compares the ways to each; returns how many there are.
inline std::size_t WalkNodes(const OpenText& document,
                             const ZT_DataPath& path = zentor::ParseDataPath("[\"dataOutline\"]")) {
    const zentor::DocumentQueries& queries = document.queries();
    const zentor::OutlineIndex::Children nodes = document.index().ChildrenOf(queries.FindNode(path));
    std::size_t count = nodes.count;
    for (std::uint64_t i = 0; i < nodes.count; ++i) {
        const zentor::NodeNumber node = nodes.first + i;
        const ZT_GroupChildInfo info = document.Child(node);
        ZT_DataPath child = path;
        child.items.push_back({info.matchName, -1});
        EXPECT_TRUE(info.matchName.empty() || queries.FindNode(child) == node);
        child.items.back().index = static_cast<std::int64_t>(i);
        EXPECT_EQ(queries.FindNode(child), node);
        if (info.nodeType == ZT_NODE_GROUP) {
            count += WalkNodes(document, child);
        } else {
            const bool isStatic = info.nodeType == ZT_NODE_STATIC;
            EXPECT_EQ(isStatic ? document.Static(node).matchName : document.Dynamic(node).matchName, info.matchName);
        }
    }
    return count;
}

}  // namespace zentor_test
