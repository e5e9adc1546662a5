#include "document.h"

#include <exception>

namespace zentor_cli {

namespace {

std::string Text(const char* text, std::uint64_t length) { return std::string(text, length); }

// Paths are handed over item by item, in the order of the children, so that the first says it all.
struct ChildrenTaker {
    Children children;
    bool isAtRoot = true;
    bool isDone = false;
};

void AddPathItem(void* handle, const char* matchName, std::int64_t index, std::uint64_t childCount, std::uint8_t last) {
    auto& taker = *static_cast<ChildrenTaker*>(handle);
    if (taker.isDone) return;
    taker.isDone = last != 0;
    if (taker.isDone) {
        taker.children.count = childCount;
    } else if (index >= 0) {
        taker.children.parent += '[' + std::to_string(index) + ']';
    } else if (!taker.isAtRoot) {  // an item that the caller gave by its name
        taker.children.parent += "[\"" + std::string(matchName) + "\"]";
    }
    taker.isAtRoot = false;
}

constexpr ZT_DataPathCallbacks kDataPaths = {sizeof(ZT_DataPathCallbacks), &AddPathItem};

constexpr ZT_NodeInfoCallbacks kNodeInfo = {
    sizeof(ZT_NodeInfoCallbacks),
    [](void* handle, std::uint32_t nodeType, const char* displayName, std::uint64_t displayNameLength,
       const char* matchName, std::uint64_t matchNameLength) {
        *static_cast<NodeNames*>(handle) = {static_cast<NodeKind>(nodeType), Text(displayName, displayNameLength),
                                            Text(matchName, matchNameLength)};
    }};

// The names of leaves come with Names already.
constexpr ZT_StaticDataCallbacks kStaticData = {
    sizeof(ZT_StaticDataCallbacks),
    nullptr,
    [](void* handle, double value) { static_cast<Leaf*>(handle)->value = value; },
    [](void* handle, const char* text, std::uint64_t length) {
        static_cast<Leaf*>(handle)->value = Text(text, length);
    },
    [](void* handle, std::uint8_t value) { static_cast<Leaf*>(handle)->value = value != 0; },
    [](void* handle, const double* values, std::uint64_t count) {
        static_cast<Leaf*>(handle)->value = std::vector<double>(values, values + count);
    },
};

constexpr ZT_DynamicDataCallbacks kDynamicData = {
    sizeof(ZT_DynamicDataCallbacks),
    nullptr,
    [](void* handle, const char* sampleSetId, std::uint64_t sampleSetIdLength, std::uint32_t interpolation,
       std::uint8_t hasExpectedFrequency, std::uint64_t sampleCount, const char* duration,
       std::uint64_t durationLength) {
        auto& leaf = *static_cast<Leaf*>(handle);
        leaf.sampleSetId = Text(sampleSetId, sampleSetIdLength);
        leaf.isLinear = interpolation == 1;
        leaf.hasExpectedFrequency = hasExpectedFrequency != 0;
        leaf.sampleCount = sampleCount;
        leaf.maxInterSampleDuration = Text(duration, durationLength);
    },
    [](void* handle, const char* firstTime, std::uint64_t firstTimeLength, const char* lastTime,
       std::uint64_t lastTimeLength) {
        static_cast<Leaf*>(handle)->timeSpan = {Text(firstTime, firstTimeLength), Text(lastTime, lastTimeLength)};
    },
};

DataType& TypeOf(void* handle) { return static_cast<Leaf*>(handle)->dataType; }

constexpr ZT_DataTypeCallbacks kDataTypes = {
    sizeof(ZT_DataTypeCallbacks),
    [](void* handle, const char* type, std::uint64_t length) { TypeOf(handle).type = Text(type, length); },
    [](void* handle, std::uint8_t isSigned, std::int64_t digitsInteger, std::int64_t digitsDecimal) {
        TypeOf(handle).isSigned = isSigned != 0;
        TypeOf(handle).digitsInteger = digitsInteger;
        TypeOf(handle).digitsDecimal = digitsDecimal;
    },
    [](void* handle, std::uint64_t, double occurringMin, double occurringMax, double legalMin, double legalMax) {
        TypeOf(handle).ranges.push_back({occurringMin, occurringMax, legalMin, legalMax});
    },
    [](void* handle, std::int64_t maxLength, std::int64_t maxDigitsInLength, std::uint8_t isEventMarker) {
        TypeOf(handle).isString = true;
        TypeOf(handle).maxLen = maxLength;
        TypeOf(handle).maxDigitsInStrLength = maxDigitsInLength;
        TypeOf(handle).isEventMarker = isEventMarker != 0;
    },
    [](void* handle, std::int64_t arraySize, std::uint8_t isPoint) {
        TypeOf(handle).isArray = true;
        TypeOf(handle).arraySize = arraySize;
        TypeOf(handle).isPoint = isPoint != 0;
    },
    [](void* handle, std::uint64_t, const char* text, std::uint64_t length) {
        TypeOf(handle).arrayDisplayNames.push_back(Text(text, length));
    },
};

// Nothing may be thrown through the library; what the taker throws waits here for the end of the query.
class SampleHandOver {
public:
    explicit SampleHandOver(const SampleTaker& take) : take_(take) {}

    void Add(const Sample& sample) noexcept {
        if (failure_) return;
        try {
            take_(sample);
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    void Rethrow() const {
        if (failure_) std::rethrow_exception(failure_);
    }

private:
    const SampleTaker& take_;
    std::exception_ptr failure_;
};

constexpr ZT_SampleCallbacks kSamples = {
    sizeof(ZT_SampleCallbacks),
    [](void* handle, const char* time, std::uint64_t timeLength, double value) {
        static_cast<SampleHandOver*>(handle)->Add({{time, timeLength}, value});
    },
    [](void* handle, const char* time, std::uint64_t timeLength, const double* values, std::uint64_t count) {
        static_cast<SampleHandOver*>(handle)->Add({{time, timeLength}, std::span(values, count)});
    },
    [](void* handle, const char* time, std::uint64_t timeLength, const char* text, std::uint64_t length) {
        static_cast<SampleHandOver*>(handle)->Add({{time, timeLength}, std::string_view(text, length)});
    },
};

constexpr ZT_FileInfoCallbacks kFileInfo = {
    sizeof(ZT_FileInfoCallbacks),
    [](void* handle, std::uint32_t frameRateValue, std::uint32_t frameRateScale, const char* version,
       std::uint64_t versionLength, const char* creator, std::uint64_t creatorLength) {
        auto& info = *static_cast<FileInfo*>(handle);
        info.frameRateValue = frameRateValue;
        info.frameRateScale = frameRateScale;
        info.version = Text(version, versionLength);
        info.creator = Text(creator, creatorLength);
    },
    [](void* handle, std::uint32_t timeMode, double framesPerSecond, std::uint8_t dropFrame,
       std::uint64_t precisionLength, std::uint8_t isGmt) {
        auto& info = *static_cast<FileInfo*>(handle);
        info.timeMode = static_cast<ZT_TimeMode>(timeMode);
        info.framesPerSecond = framesPerSecond;
        info.dropFrame = dropFrame != 0;
        info.precisionLength = precisionLength;
        info.isGmt = isGmt != 0;
    },
};

using VideoSyncList = std::vector<VideoSync>;

constexpr ZT_VideoSyncCallbacks kVideoSync = {
    sizeof(ZT_VideoSyncCallbacks),
    [](void* handle, const char* fileName, std::uint64_t fileNameLength, std::uint64_t frameNumber) {
        static_cast<VideoSyncList*>(handle)->push_back({Text(fileName, fileNameLength), frameNumber});
    },
    [](void* handle, const char* fileName, std::uint64_t fileNameLength, const char* time, std::uint64_t timeLength) {
        static_cast<VideoSyncList*>(handle)->push_back({Text(fileName, fileNameLength), Text(time, timeLength)});
    },
};

}  // namespace

const char* NameOf(NodeKind kind) {
    switch (kind) {
        case NodeKind::kGroup:
            return "group";
        case NodeKind::kDynamic:
            return "dynamic";
        default:
            return "static";
    }
}

void TakeResults(ZT_HostSuite& suite) {
    suite.dataPaths = &kDataPaths;
    suite.nodeInfo = &kNodeInfo;
    suite.staticData = &kStaticData;
    suite.dynamicData = &kDynamicData;
    suite.samples = &kSamples;
    suite.dataTypes = &kDataTypes;
    suite.fileInfo = &kFileInfo;
    suite.videoSync = &kVideoSync;
}

Document::Document(Library& library, const std::string& path) : library_(library) {
    library.Take([&] { return library.manager().OpenFile(&handler_, path.c_str(), nullptr); });
}

FileInfo Document::Info() const {
    FileInfo info;
    library_.Check(handler_->GetFileInfoClient(&info));
    return info;
}

std::vector<VideoSync> Document::VideoSyncTimes() const {
    VideoSyncList list;
    library_.Check(handler_->GetVideoSyncTimeListClient(&list));
    return list;
}

Children Document::ChildrenOf(const std::string& path) const {
    ChildrenTaker taker;
    library_.Check(path.empty() ? handler_->GetRootChildrenClient(&taker)
                                : handler_->GetGroupChildrenClient(path.c_str(), &taker));
    return std::move(taker.children);
}

NodeNames Document::Names(const std::string& path) const {
    NodeNames names;
    library_.Check(handler_->GetGroupChildInfoClient(path.c_str(), &names));
    return names;
}

Leaf Document::StaticNode(const std::string& path) const {
    Leaf leaf;
    library_.Check(handler_->GetStaticDataInfoClient(path.c_str(), &leaf));
    return leaf;
}

Leaf Document::DynamicNode(const std::string& path) const {
    Leaf leaf;
    library_.Check(handler_->GetDynamicDataInfoClient(path.c_str(), &leaf));
    return leaf;
}

void Document::SamplesBetween(const std::string& path, ZT_Time start, ZT_Time end, const SampleTaker& take) const {
    SampleHandOver handOver(take);
    const ZT_Result result = handler_->GetDynamicSamplesClient(path.c_str(), start, end, &handOver);
    handOver.Rethrow();
    library_.Check(result);
}

void Document::SampleAt(const std::string& path, ZT_Time time, const SampleTaker& take) const {
    SampleHandOver handOver(take);
    const ZT_Result result = handler_->GetDynamicSampleClient(path.c_str(), time, &handOver);
    handOver.Rethrow();
    library_.Check(result);
}

}  // namespace zentor_cli
