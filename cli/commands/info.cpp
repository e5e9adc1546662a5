#include "commands/commands.h"
#include "document_times.h"
#include "json_output.h"
#include "progress.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

struct Counts {
    std::uint64_t groups = 0;
    std::uint64_t staticNodes = 0;
    std::uint64_t dynamicNodes = 0;
    std::uint64_t samples = 0;
    TimeSpan timeSpan;
};

void CountSamples(const Leaf& node, const std::optional<zentor::TimeForm>& form, Counts& counts) {
    ++counts.dynamicNodes;
    counts.samples += node.sampleCount;
    if (form) Widen(counts.timeSpan, node.timeSpan, *form);
}

// Groups of a document do not stand deeper in each other than the library allows.
void Count(const Document& document, const std::string& path, const std::optional<zentor::TimeForm>& form,
           Counts& counts) {
    const Children children = document.ChildrenOf(path);
    for (std::uint64_t i = 0; i < children.count; ++i) {
        const std::string child = children.PathOf(i);
        switch (document.Names(child).kind) {
            case NodeKind::kGroup:
                ++counts.groups;
                Count(document, child, form, counts);
                break;
            case NodeKind::kDynamic:
                CountSamples(document.DynamicNode(child), form, counts);
                break;
            case NodeKind::kStatic:
                ++counts.staticNodes;
                break;
        }
    }
}

const char* NameOf(ZT_TimeMode mode) {
    switch (mode) {
        case ZT_TIME_MODE_UTC:
            return "utc";
        case ZT_TIME_MODE_TIMECODE:
            return "timecode";
        default:
            return "none";
    }
}

std::string Describe(const FileInfo& info) {
    std::string text = NameOf(info.timeMode);
    if (info.timeMode == ZT_TIME_MODE_TIMECODE) {
        text += ", " + NumberText(info.framesPerSecond) + " frames per second";
        if (info.frameRateValue != 0) {
            text += " (" + std::to_string(info.frameRateValue) + "/" + std::to_string(info.frameRateScale) + ")";
        }
        if (info.dropFrame) text += ", drop frame";
    } else if (info.timeMode == ZT_TIME_MODE_UTC) {
        text += ", " + std::to_string(info.precisionLength) + " decimals of a second";
        text += info.isGmt ? ", GMT" : ", with offsets";
    }
    return text;
}

void Print(const FileInfo& info, const Counts& counts, const std::vector<VideoSync>& videoSync) {
    PrintField("version", Printable(info.version));
    PrintTextField("creator", info.creator);
    PrintField("time mode", Describe(info));
    PrintField("groups", std::to_string(counts.groups));
    PrintField("static nodes", std::to_string(counts.staticNodes));
    PrintField("dynamic nodes", std::to_string(counts.dynamicNodes));
    PrintField("samples", std::to_string(counts.samples));
    if (!counts.timeSpan.first.empty()) PrintField("time span", Describe(counts.timeSpan));
    for (const VideoSync& entry : videoSync) {
        const auto* const time = std::get_if<std::string>(&entry.at);
        const std::string at =
            time != nullptr ? "at " + Printable(*time) : "frame " + std::to_string(std::get<std::uint64_t>(entry.at));
        PrintField("video", Printable(entry.fileName) + " " + at);
    }
}

void WriteTimeMode(JsonOutput& json, const FileInfo& info) {
    json.Member("timeMode", NameOf(info.timeMode));
    if (info.timeMode == ZT_TIME_MODE_TIMECODE) {
        if (info.frameRateValue != 0) {
            json.Key("frameRate");
            json.BeginObject();
            json.Member("value", info.frameRateValue);
            json.Member("scale", info.frameRateScale);
            json.EndObject();
        }
        json.Member("framesPerSecond", info.framesPerSecond);
        json.Member("dropFrame", info.dropFrame);
    } else if (info.timeMode == ZT_TIME_MODE_UTC) {
        json.Member("precisionLength", info.precisionLength);
        json.Member("isGMT", info.isGmt);
    }
}

void WriteJson(const FileInfo& info, const Counts& counts, const std::vector<VideoSync>& videoSync) {
    JsonOutput json;
    json.BeginObject();
    json.Member("version", info.version);
    json.Member("creator", info.creator);
    WriteTimeMode(json, info);
    json.Member("groups", counts.groups);
    json.Member("staticNodes", counts.staticNodes);
    json.Member("dynamicNodes", counts.dynamicNodes);
    json.Member("samples", counts.samples);
    WriteMembers(json, counts.timeSpan);
    json.Key("videoSync");
    json.BeginArray();
    for (const VideoSync& entry : videoSync) {
        json.BeginObject();
        json.Member("fileName", entry.fileName);
        if (const auto* const time = std::get_if<std::string>(&entry.at)) {
            json.Member("timeString", *time);
        } else {
            json.Member("frameNumber", std::get<std::uint64_t>(entry.at));
        }
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    json.Finish();
}

}  // namespace

void RunInfo(Library& library, const CommonOptions& common, const std::string& path) {
    FileInfo info;
    Counts counts;
    std::vector<VideoSync> videoSync;
    {
        const Progress progress("reading " + path, common.quiet);
        const Document document(library, path);
        info = document.Info();
        videoSync = document.VideoSyncTimes();
        Count(document, {}, TimeFormOf(info), counts);
    }
    if (common.json) {
        WriteJson(info, counts, videoSync);
    } else {
        Print(info, counts, videoSync);
    }
}

}  // namespace zentor_cli
