// An open document as the command uses it, and what the library hands over of it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "library.h"

namespace zentor_cli {

enum class NodeKind : std::uint32_t { kGroup = 0, kDynamic = 1, kStatic = 2 };

// "group", "dynamic" or "static".
const char* NameOf(NodeKind kind);

// The children of a group, without a list of them, which would grow with the document.
struct Children {
    std::string parent;  // [0]; empty for the root
    std::uint64_t count = 0;

    // [0][2]
    std::string PathOf(std::uint64_t index) const { return parent + '[' + std::to_string(index) + ']'; }
};

struct NodeNames {
    NodeKind kind = NodeKind::kGroup;
    std::string displayName;
    std::string matchName;
};

struct Range {
    double occurringMin, occurringMax, legalMin, legalMax;
};

// Counts and lengths are -1 when the document has none.
struct DataType {
    std::string type;
    bool isSigned = false;
    std::int64_t digitsInteger = -1;
    std::int64_t digitsDecimal = -1;
    std::vector<Range> ranges;  // of a number one, of an array one for each element, else none
    bool isString = false;
    std::int64_t maxLen = -1;
    std::int64_t maxDigitsInStrLength = -1;
    bool isEventMarker = false;
    bool isArray = false;
    std::int64_t arraySize = -1;
    bool isPoint = false;
    std::vector<std::string> arrayDisplayNames;
};

// Two time strings of the document's form; both are empty without samples.
struct TimeSpan {
    std::string first;
    std::string last;
};

// A static or dynamic node.
struct Leaf {
    DataType dataType;
    std::variant<double, std::string, bool, std::vector<double>> value;  // static nodes
    std::string sampleSetId;                                             // the rest: dynamic nodes
    bool isLinear = false;
    bool hasExpectedFrequency = false;
    std::uint64_t sampleCount = 0;
    std::string maxInterSampleDuration;
    TimeSpan timeSpan;
};

// Lives until it has been taken.
struct Sample {
    std::string_view time;
    std::variant<double, std::string_view, std::span<const double>> value;
};

// What takes samples, one by one. Once it has thrown, it gets no more of them, and the query throws the same.
using SampleTaker = std::function<void(const Sample&)>;

struct VideoSync {
    std::string fileName;
    std::variant<std::uint64_t, std::string> at;  // a frame number or a time string
};

struct FileInfo {
    std::string version;
    std::string creator;
    std::uint32_t frameRateValue = 0;
    std::uint32_t frameRateScale = 1;
    ZT_TimeMode timeMode = ZT_TIME_MODE_NONE;
    double framesPerSecond = 0;
    bool dropFrame = false;
    std::uint64_t precisionLength = 0;
    bool isGmt = false;
};

// Each throws what the library reports.
class Document {
public:
    Document(Library& library, const std::string& path);
    ~Document() { library_.manager().CloseFile(&handler_); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    FileInfo Info() const;
    std::vector<VideoSync> VideoSyncTimes() const;
    // The children of a group; of the root for an empty path.
    Children ChildrenOf(const std::string& path) const;
    NodeNames Names(const std::string& path) const;
    Leaf StaticNode(const std::string& path) const;
    Leaf DynamicNode(const std::string& path) const;
    // The samples of a dynamic node from `start` to `end`; from the latest to the earliest when `start` is after `end`.
    void SamplesBetween(const std::string& path, ZT_Time start, ZT_Time end, const SampleTaker& take) const;
    // The latest sample at or before `time`.
    void SampleAt(const std::string& path, ZT_Time time, const SampleTaker& take) const;

private:
    Library& library_;
    ISensorFileHandler* handler_ = nullptr;
};

// Fills in the callbacks that take the results of queries.
void TakeResults(ZT_HostSuite& suite);

}  // namespace zentor_cli
