// Client forms written down: a suite whose callbacks turn what they get into lines, and the same lines from records.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "zentor/records.h"

namespace zentor_test {

using Log = std::vector<std::string>;

template <class... Parts>
void AddLine(void* log, const Parts&... parts) {
    std::ostringstream line;
    line.precision(17);
    ((line << parts << '|'), ...);
    static_cast<Log*>(log)->push_back(line.str());
}

inline std::string Text(const char* text, std::uint64_t length) { return {text, length}; }

inline std::string Join(const double* values, std::uint64_t count) {
    std::ostringstream text;
    text.precision(17);
    for (std::uint64_t i = 0; i < count; ++i) text << values[i] << ' ';
    return text.str();
}

inline const ZT_DataPathCallbacks kLogPaths = {sizeof(ZT_DataPathCallbacks),
                                               [](void* log, const char* name, std::int64_t index, std::uint64_t count,
                                                  std::uint8_t last) { AddLine(log, name, index, count, int{last}); }};
inline const ZT_NodeInfoCallbacks kLogNode = {
    sizeof(ZT_NodeInfoCallbacks),
    [](void* log, std::uint32_t type, const char* display, std::uint64_t d, const char* match, std::uint64_t m) {
        AddLine(log, "node", type, Text(display, d), Text(match, m));
    }};
inline const ZT_StaticDataCallbacks kLogStatic = {
    sizeof(ZT_StaticDataCallbacks),
    [](void* log, const char* display, std::uint64_t d, const char* match, std::uint64_t m) {
        AddLine(log, "names", Text(display, d), Text(match, m));
    },
    [](void* log, double value) { AddLine(log, "number", value); },
    [](void* log, const char* text, std::uint64_t length) { AddLine(log, "string", Text(text, length)); },
    [](void* log, std::uint8_t value) { AddLine(log, "boolean", int{value}); },
    [](void* log, const double* values, std::uint64_t count) { AddLine(log, "array", Join(values, count)); },
};
inline const ZT_DynamicDataCallbacks kLogDynamic = {
    sizeof(ZT_DynamicDataCallbacks),
    kLogStatic.setNames,
    [](void* log, const char* id, std::uint64_t i, std::uint32_t interpolation, std::uint8_t frequency,
       std::uint64_t count, const char* duration, std::uint64_t d) {
        AddLine(log, "samples", Text(id, i), interpolation, int{frequency}, count, Text(duration, d));
    },
    [](void* log, const char* first, std::uint64_t f, const char* last, std::uint64_t l) {
        AddLine(log, "span", Text(first, f), Text(last, l));
    },
};
inline const ZT_SampleCallbacks kLogSamples = {
    sizeof(ZT_SampleCallbacks),
    [](void* log, const char* time, std::uint64_t t, double value) { AddLine(log, Text(time, t), value); },
    [](void* log, const char* time, std::uint64_t t, const double* values, std::uint64_t count) {
        AddLine(log, Text(time, t), Join(values, count));
    },
    [](void* log, const char* time, std::uint64_t t, const char* text, std::uint64_t length) {
        AddLine(log, Text(time, t), Text(text, length));
    },
};
inline const ZT_FileInfoCallbacks kLogFile = {
    sizeof(ZT_FileInfoCallbacks),
    [](void* log, std::uint32_t value, std::uint32_t scale, const char* version, std::uint64_t v, const char* creator,
       std::uint64_t c) { AddLine(log, "file", value, scale, Text(version, v), Text(creator, c)); },
    [](void* log, std::uint32_t mode, double rate, std::uint8_t drop, std::uint64_t precision, std::uint8_t gmt) {
        AddLine(log, "time", mode, rate, int{drop}, precision, int{gmt});
    },
};
inline const ZT_VideoSyncCallbacks kLogSync = {
    sizeof(ZT_VideoSyncCallbacks),
    [](void* log, const char* file, std::uint64_t f, std::uint64_t frame) {
        AddLine(log, "frame", Text(file, f), frame);
    },
    [](void* log, const char* file, std::uint64_t f, const char* time, std::uint64_t t) {
        AddLine(log, "moment", Text(file, f), Text(time, t));
    },
};
inline const ZT_DataTypeCallbacks kLogType = {
    sizeof(ZT_DataTypeCallbacks),
    [](void* log, const char* type, std::uint64_t length) { AddLine(log, "type", Text(type, length)); },
    [](void* log, std::uint8_t isSigned, std::int64_t integer, std::int64_t decimal) {
        AddLine(log, "pattern", int{isSigned}, integer, decimal);
    },
    [](void* log, std::uint64_t index, double a, double b, double c, double d) {
        AddLine(log, "range", index, a, b, c, d);
    },
    [](void* log, std::int64_t length, std::int64_t digits, std::uint8_t marker) {
        AddLine(log, "padded", length, digits, int{marker});
    },
    [](void* log, std::int64_t size, std::uint8_t isPoint) { AddLine(log, "elements", size, int{isPoint}); },
    [](void* log, std::uint64_t index, const char* text, std::uint64_t length) {
        AddLine(log, "dimension", index, Text(text, length));
    },
};

inline void FillClientForms(ZT_HostSuite& suite) {
    suite.dataPaths = &kLogPaths;
    suite.nodeInfo = &kLogNode;
    suite.staticData = &kLogStatic;
    suite.dynamicData = &kLogDynamic;
    suite.samples = &kLogSamples;
    suite.fileInfo = &kLogFile;
    suite.videoSync = &kLogSync;
    suite.dataTypes = &kLogType;
}

inline Log LogOf(const ZT_GroupChildren& children) {
    Log log;
    for (const ZT_DataPath& path : children.paths) {
        for (const ZT_DataPathItem& item : path.items) {
            AddLine(&log, item.matchName, item.index, children.paths.size(), &item == &path.items.back() ? 1 : 0);
        }
    }
    return log;
}

inline Log LogOf(const ZT_GroupChildInfo& info) {
    Log log;
    AddLine(&log, "node", info.nodeType, info.displayName, info.matchName);
    return log;
}

inline void AddType(Log& log, const ZT_DataType& type) {
    AddLine(&log, "type", type.type);
    if (type.type == "string" || type.type == "paddedString") {
        AddLine(&log, "padded", type.maxLen, type.maxDigitsInStrLength, type.eventMarkerB ? 1 : 0);
    }
    if (type.ranges.empty()) return;
    AddLine(&log, "pattern", type.pattern.isSigned ? 1 : 0, type.pattern.digitsInteger, type.pattern.digitsDecimal);
    for (std::size_t i = 0; i < type.ranges.size(); ++i) {
        const ZT_NumberRange& range = type.ranges[i];
        AddLine(&log, "range", i, range.occurringMin, range.occurringMax, range.legalMin, range.legalMax);
    }
    if (type.type.find("Array") == std::string::npos) return;
    AddLine(&log, "elements", type.arraySize, type.isPoint ? 1 : 0);
    for (std::size_t i = 0; i < type.arrayDisplayNames.size(); ++i) {
        AddLine(&log, "dimension", i, type.arrayDisplayNames[i]);
    }
}

inline Log LogOf(const ZT_StaticDataInfo& info) {
    Log log;
    AddLine(&log, "names", info.displayName, info.matchName);
    AddType(log, info.dataType);
    if (const auto* number = boost::get<double>(&info.value)) AddLine(&log, "number", *number);
    if (const auto* text = boost::get<std::string>(&info.value)) AddLine(&log, "string", *text);
    if (const auto* flag = boost::get<bool>(&info.value)) AddLine(&log, "boolean", *flag ? 1 : 0);
    if (const auto* array = boost::get<std::vector<double>>(&info.value)) {
        AddLine(&log, "array", Join(array->data(), array->size()));
    }
    return log;
}

inline Log LogOf(const ZT_DynamicDataInfo& info) {
    Log log;
    AddLine(&log, "names", info.displayName, info.matchName);
    AddLine(&log, "samples", info.sampleSetID, info.interpolation == "linear" ? 1 : 2,
            info.hasExpectedFrequencyB ? 1 : 0, info.sampleCount, info.expectedMaxInterSampleDuration);
    AddType(log, info.dataType);
    if (!info.firstSampleTime.empty()) AddLine(&log, "span", info.firstSampleTime, info.lastSampleTime);
    return log;
}

inline Log LogOf(const DynamicDataSampleSet& set) {
    Log log;
    for (const ZT_Sample& sample : set.samples) {
        if (const auto* number = boost::get<double>(&sample.value)) AddLine(&log, sample.time, *number);
        if (const auto* text = boost::get<std::string>(&sample.value)) AddLine(&log, sample.time, *text);
        if (const auto* array = boost::get<std::vector<double>>(&sample.value)) {
            AddLine(&log, sample.time, Join(array->data(), array->size()));
        }
    }
    return log;
}

inline Log LogOf(const ZT_FileInfo& info) {
    Log log;
    AddLine(&log, "file", info.frameRateValue, info.frameRateScale, info.version, info.creator);
    AddLine(&log, "time", static_cast<std::uint32_t>(info.timeMode), info.framesPerSecond, info.dropFrame ? 1 : 0,
            info.precisionLength, info.isGmt ? 1 : 0);
    return log;
}

inline Log LogOf(const ZT_VideoSyncTimeList& list) {
    Log log;
    for (const ZT_VideoSyncTime& entry : list.entries) {
        if (const auto* frame = boost::get<std::uint64_t>(&entry.at)) AddLine(&log, "frame", entry.fileName, *frame);
        if (const auto* time = boost::get<std::string>(&entry.at)) AddLine(&log, "moment", entry.fileName, *time);
    }
    return log;
}

}  // namespace zentor_test
