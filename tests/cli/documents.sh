# Documents written by hand, in the current folder: timecode.vkjson has a node of every kind and type, utc.vkjson the
# other form of times.

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

# document TIME-INFORMATION VIDEO-SYNC-LIST OUTLINE
document() {
  printf '%s' '{"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{' "$1" ',"videoSyncTimeList":' \
    "$2" '},"creator":"by hand","dataOutline":' "$3" '}'
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
