# Documents written by hand, in the current folder: timecode.vkjson has a node of every kind and type, utc.vkjson the
# other form of times; shapes.vkjson has samples of every type, and the others down from codes.vkjson number theirs from
# 1 on.

pattern='"pattern":{"isSigned":true,"digitsDecimal":2,"digitsInteger":3}'
range='{"occurring":{"min":-1.5,"max":2.25},"legal":{"min":-100,"max":1e+21}}'
number='"numberStringProperties":{'$pattern',"range":'$range'}'
text='"paddedStringProperties":{"maxDigitsInStrLength":1,"maxLen":4,"eventMarkerB":true}'
array='"numberArrayProperties":{"pattern":{"isSigned":false},"arrayRanges":{"ranges":['$range,$range']},"arraySize":2,"arrayDisplayNames":["x","y"],"isPoint":true}'
control=$'\033[31m\n\xff'  # what a terminal must not get, and a byte that is not UTF-8

# node OBJECT-TYPE MATCH-NAME DISPLAY-NAME REST
node() { printf '%s' '{"objectType":"' "$1" '","matchName":"' "$2" '","displayName":"' "$3" '",' "$4" '}'; }

# list ELEMENT...
list() {
  local IFS=,
  printf '[%s]' "$*"
}

# document TIME-INFORMATION VIDEO-SYNC-LIST OUTLINE [SAMPLE-SETS]
document() {
  printf '%s' '{"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{' "$1" ',"videoSyncTimeList":' \
    "$2" '},' "${4:+\"dataDynamicSamples\":$4,}" '"creator":"by hand","dataOutline":' "$3" '}'
}

# sampled MATCH-NAME COUNT DATA-TYPE: a dynamic node; its set of samples has the same name.
sampled() {
  node dataDynamic "$1" '' '"sampleSetID":"'"$1"'","interpolation":"linear","hasExpectedFrequencyB":false,"sampleCount":'"$2"',"dataType":'"$3"
}

# samples NAME TIME=VALUE...: a set of samples.
samples() {
  local name=$1 records=() record
  shift
  for record; do records+=('{"time":"'"${record%%=*}"'","value":'"${record#*=}"'}'); done
  printf '{"sampleSetID":"%s","samples":%s}' "$name" "$(list "${records[@]}")"
}

# numbered NAME TIME...: a set of samples with the values "1", "2" and so on.
numbered() {
  local name=$1 records=() time
  shift
  for time; do records+=("$time=\"$((${#records[@]} + 1))\""); done
  samples "$name" "${records[@]}"
}

digit='{"type":"numberString","numberStringProperties":{"pattern":{"isSigned":false,"digitsDecimal":0,"digitsInteger":1},"range":'$range'}}'
rate25='"useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":25,"scale":1},"dropFrame":false}'

# utc PRECISION IS-GMT
utc() { printf '"useTimecodeB":false,"utcInfo":{"precisionLength":%s,"isGMT":%s}' "$1" "$2"; }

# numbers TIME-INFORMATION TIME...: a document with one node.
numbers() {
  local information=$1
  shift
  document "$information" '[]' "$(list "$(sampled n $# "$digit")")" "$(list "$(numbered n "$@")")"
}

statics=$(list \
  "$(node dataStatic n Number '"dataType":{"type":"number",'"$number"'},"value":2.25')" \
  "$(node dataStatic s "$control" '"dataType":{"type":"string",'"$text"'},"value":"'"$control"'"')" \
  "$(node dataStatic b '' '"dataType":{"type":"boolean"},"value":true')" \
  "$(node dataStatic a Array '"dataType":{"type":"numberArray",'"$array"'},"value":[-0.1,1e+21]')" \
  "$(node dataGroup e '' '"children":[]')")
dynamics=$(list \
  "$(node dataGroup g 'A group' '"children":'"$statics")" \
  "$(node dataDynamic dn '' '"sampleSetID":"sn","interpolation":"linear","hasExpectedFrequencyB":true,"sampleCount":5,"expectedMaxInterSampleDuration":"00:00:00;02","dataType":{"type":"numberString",'"$number"'}')" \
  "$(node dataDynamic ds 'No samples' '"sampleSetID":"ss","interpolation":"hold","hasExpectedFrequencyB":false,"sampleCount":0,"dataType":{"type":"paddedString",'"$text"'}')" \
  "$(node dataDynamic da '' '"sampleSetID":"sa","interpolation":"linear","hasExpectedFrequencyB":false,"sampleCount":12,"dataType":{"type":"numberStringArray",'"$array"'}')")

document '"useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":30000,"scale":1001},"dropFrame":true}' \
  '[{"fileName":"a.mov","frameNumber":3},{"fileName":"b.mov","timeString":"00:00:01;00"}]' "$dynamics" >timecode.vkjson
document '"useTimecodeB":false,"utcInfo":{"precisionLength":3,"isGMT":true}' \
  '[{"fileName":"c.mov","timeString":"2024-02-29T12:00:00.500Z"}]' '[]' >utc.vkjson

# Numbers, arrays with names and without, and texts of which each needs something else; the second set begins first.
signed='"pattern":{"isSigned":true,"digitsDecimal":2,"digitsInteger":1}'
arrayOf='"arraySize":2,"isPoint":false,"arrayRanges":{"ranges":['$range,$range']}'
outline=$(list \
  "$(sampled n 3 '{"type":"numberString","numberStringProperties":{'"$signed"',"range":'"$range"'}}')" \
  "$(sampled a 2 '{"type":"numberStringArray","numberArrayProperties":{'"$signed,$arrayOf"',"arrayDisplayNames":["x","left, \"up\""]}}')" \
  "$(sampled b 1 '{"type":"numberStringArray","numberArrayProperties":{'"$signed,$arrayOf"'}}')" \
  "$(sampled s 6 '{"type":"paddedString","paddedStringProperties":{"maxDigitsInStrLength":2,"maxLen":8,"eventMarkerB":false}}')" \
  "$(sampled e 0 "$digit")" \
  "$(node dataGroup g '' '"children":[]')" \
  "$(sampled w 2 "$digit")")
# text TIME LENGTH TEXT: a padded string.
text() { printf '%s={"length":"%02d","str":"%s"}' "$1" "$2" "$3"; }
sets=$(list \
  "$(samples n '00:00:01:00="+1.50"' '00:00:01:01="-2.25"' '00:00:02:00="+0.10"')" \
  "$(samples a '00:00:00:05=["+1.00","-2.50"]' '00:00:01:10=["+0.00","+3.25"]')" \
  "$(samples b '00:00:03:00=["-0.50","+9.99"]')" \
  "$(samples s "$(text 00:00:01:00 5 'plain   ')" "$(text 00:00:01:01 4 'a, b    ')" "$(text 00:00:01:02 4 'a\"b    ')" \
    "$(text 00:00:01:03 4 'c\nd    ')" "$(text 00:00:01:04 0 '        ')" "$(text 00:00:01:05 8 "é"$'\033\xff'"four")")" \
  "$(samples w '00:00:04:00="1"' '00:00:04:01="x"')")
document "$rate25" '[]' "$outline" "$sets" >shapes.vkjson

numbers "$rate25" 00:00:00:00 00:00:00:10 00:00:00:10 00:00:01:00 00:00:02:24 >codes.vkjson
numbers '"useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":120000,"scale":1001},"dropFrame":false}' \
  00:00:00:000 00:00:00:001 00:00:00:119 00:00:01:000 >fast.vkjson
numbers '"useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":29.97,"scale":1},"dropFrame":true}' \
  '00:00:59;29' '00:01:00;02' >dropping.vkjson
numbers "$(utc 3 true)" 2024-05-01T11:59:59.900Z 2024-05-01T12:00:00.000Z 2024-05-01T12:00:00.250Z \
  2024-05-01T12:00:00.750Z 2024-05-01T12:00:01.000Z 2024-05-01T12:00:03.500Z >moments.vkjson
numbers "$(utc 3 true)" 1969-12-31T23:59:58.250Z 1969-12-31T23:59:58.500Z 1969-12-31T23:59:58.750Z \
  1970-01-01T00:00:00.000Z >early.vkjson
numbers "$(utc 12 true)" 2024-05-01T12:00:00.000000000001Z 2024-05-01T12:00:00.000000000002Z \
  2024-05-01T12:00:00.333333333333Z >fine.vkjson
numbers "$(utc 1 true)" 2030-01-01T00:00:00.0Z 2040-01-01T00:00:00.0Z 2040-01-01T00:00:01.0Z >far.vkjson
numbers "$(utc 1 true)" 1899-12-31T00:00:00.0Z 1899-12-31T00:00:01.0Z 1970-01-01T00:00:00.0Z >old.vkjson
# Noon in three zones; the second set is later, though the texts of its times are less.
document "$(utc 0 false)" '[]' "$(list "$(sampled n 3 "$digit")" "$(sampled m 2 "$digit")")" "$(list \
  "$(numbered n 2024-05-01T14:00:00+02:00 2024-05-01T08:00:10-04:00 2024-05-01T15:00:20+03:00)" \
  "$(numbered m 2024-05-01T13:00:00+00:00 2024-05-01T13:00:05+00:00)")" >offsets.vkjson
