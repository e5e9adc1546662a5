#!/bin/bash
# A plug-in that calls everything that converter.h wraps: the document that comes of it. Arguments: build folder, what
# runs programs before them.
set -u
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$@"
mkdir wrappers
cp "$project"/tests/plugins/{wrappers,old_tables}.cpp wrappers/
cat >wrappers/wrappers.json <<'END'
{"converter": [{"identifier": "org.test.wrappers", "name": [{"localeID": "en_US", "value": "Wrappers"}], "version": 1,
                "extensions": ["wrappers"]}]}
END
cat >wrappers/CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(wrappers LANGUAGES CXX)
find_package(zentor 0.1 REQUIRED)
zentor_add_plugin(wrappers SOURCES wrappers.cpp MANIFEST wrappers.json)
zentor_add_plugin(old_tables SOURCES old_tables.cpp MANIFEST old_tables.json)
target_compile_options(old_tables PRIVATE -Wno-non-virtual-dtor)
END
cat >wrappers/old_tables.json <<'END'
{"converter": [{"identifier": "org.test.old", "name": [{"localeID": "en_US", "value": "Old"}], "version": 1,
                "extensions": ["old"]}]}
END
make_plugin wrappers wrappers/build
: >a.wrappers
expect 0 'a.vkjson \([0-9]* bytes\)' convert a.wrappers
# What the document should be, but for line breaks.
cat >expected <<'END'
{"version":"vkjson2.0.0","dynamicSamplesPresentB":true,
"dynamicDataInfo":{"useTimecodeB":false,"utcInfo":{"precisionLength":3,"isGMT":true},"videoSyncTimeList":[
{"fileName":"front.mp4","frameNumber":25},{"fileName":"side.mp4","timeString":"1970-01-01T00:00:01.000Z"}]},
"dataDynamicSamples":[
{"sampleSetID":"set","samples":[
{"time":"1970-01-01T00:00:00.000Z","value":"01.0"},
{"time":"1970-01-01T00:00:01.000Z","value":"02.0"},
{"time":"1970-01-01T00:00:02.000Z","value":"03.0"},
{"time":"1970-01-01T00:00:02.500Z","value":"04.0"},
{"time":"1970-01-01T00:00:03.000Z","value":"05.0"}]},
{"sampleSetID":"e","samples":[
{"time":"1970-01-01T00:00:00.000Z","value":["+1","+2"]},
{"time":"1970-01-01T00:00:01.000Z","value":["+3","+4"]},
{"time":"1970-01-01T00:00:02.000Z","value":["+5","-6"]}]},
{"sampleSetID":"f","samples":[
{"time":"1970-01-01T00:00:00.000Z","value":{"length":"1","str":"a  "}},
{"time":"1970-01-01T00:00:01.000Z","value":{"length":"1","str":"b  "}},
{"time":"1970-01-01T00:00:02.000Z","value":{"length":"1","str":"c  "}}]},
{"sampleSetID":"t","samples":[
{"time":"1970-01-01T00:00:00.000Z","value":"+007.50"},
{"time":"1970-01-01T00:00:01.000Z","value":"+100.00"},
{"time":"1970-01-01T00:00:02.000Z","value":"-000.25"}]}],
"creator":"org.test.wrappers","dataOutline":[
{"objectType":"dataGroup","matchName":"g","displayName":"Group","children":[
{"objectType":"dataStatic","matchName":"number","displayName":"Number","dataType":{"type":"number",
"numberStringProperties":{"pattern":{"isSigned":true,"digitsDecimal":1,"digitsInteger":2},
"range":{"occurring":{"min":1.5,"max":1.5},"legal":{"min":0,"max":9}}}},"value":1.5},
{"objectType":"dataStatic","matchName":"text","displayName":"Text","dataType":{"type":"string",
"paddedStringProperties":{"maxDigitsInStrLength":1,"maxLen":4,"eventMarkerB":true}},"value":"on"},
{"objectType":"dataStatic","matchName":"truth","displayName":"Truth","dataType":{"type":"boolean"},"value":true},
{"objectType":"dataStatic","matchName":"array","displayName":"Array","dataType":{"type":"numberArray",
"numberArrayProperties":{"pattern":{"isSigned":true,"digitsDecimal":2,"digitsInteger":1},"arrayRanges":{"ranges":[
{"occurring":{"min":1,"max":1},"legal":{"min":0,"max":1}},
{"occurring":{"min":-2,"max":-2},"legal":{"min":-3,"max":3}}]},"arraySize":2,"arrayDisplayNames":["x","y"],
"isPoint":true}},"value":[1,-2]}]},
{"objectType":"dataDynamic","matchName":"d","displayName":"D","sampleSetID":"set","interpolation":"linear",
"hasExpectedFrequencyB":true,"sampleCount":5,"expectedMaxInterSampleDuration":"1970-01-01T00:00:01.000Z",
"dataType":{"type":"numberString","numberStringProperties":{
"pattern":{"isSigned":false,"digitsDecimal":1,"digitsInteger":2},
"range":{"occurring":{"min":1,"max":5},"legal":{"min":0,"max":10}}}}},
{"objectType":"dataDynamic","matchName":"e","displayName":"E","sampleSetID":"e","interpolation":"hold",
"hasExpectedFrequencyB":false,"sampleCount":3,"dataType":{"type":"numberStringArray","numberArrayProperties":{
"pattern":{"isSigned":true,"digitsDecimal":0,"digitsInteger":1},"arrayRanges":{"ranges":[
{"occurring":{"min":1,"max":5},"legal":{"min":0,"max":10}},
{"occurring":{"min":-6,"max":4},"legal":{"min":-10,"max":10}}]},"arraySize":2,"arrayDisplayNames":["x","y"],
"isPoint":true}}},
{"objectType":"dataDynamic","matchName":"f","displayName":"F","sampleSetID":"f","interpolation":"hold",
"hasExpectedFrequencyB":false,"sampleCount":3,"dataType":{"type":"paddedString",
"paddedStringProperties":{"maxDigitsInStrLength":1,"maxLen":3,"eventMarkerB":true}}},
{"objectType":"dataDynamic","matchName":"t","displayName":"T","sampleSetID":"t","interpolation":"linear",
"hasExpectedFrequencyB":false,"sampleCount":3,"dataType":{"type":"numberString","numberStringProperties":{
"pattern":{"isSigned":true,"digitsDecimal":2,"digitsInteger":3},
"range":{"occurring":{"min":-0.25,"max":100},"legal":{"min":-1,"max":100}}}}}]}
END
tr -d '\n' <expected | cmp - a.vkjson || fail "another document: $(<a.vkjson)"
: >a.old
expect 0 '1970-01-01T00:00:01Z  4.5' samples a.old n
exit $((failures != 0))
