#include "writer/document_writer.h"

#include <vector>

#include "format/limits.h"
#include "format/words.h"
#include "model/client_boundary.h"
#include "writer/node_text.h"
#include "writer/sample_text.h"

namespace zentor {

using ZT_PLUGIN::Child;
using ZT_PLUGIN::ChildSource;
using ZT_PLUGIN::DynamicNodeView;
using ZT_PLUGIN::IVkjsonGroup_I;
using ZT_PLUGIN::IVkjsonRoot_I;
using ZT_PLUGIN::NoTimeInfo;
using ZT_PLUGIN::Owner;
using ZT_PLUGIN::SampleBuffer;
using ZT_PLUGIN::TimecodeInfo;
using ZT_PLUGIN::UtcInfo;
using ZT_PLUGIN::VideoSyncEntry;

namespace {

constexpr std::string_view kVersionMember = kJoined<"{", kKey<words::kVersion>, kQuoted<words::kVersion2>>;

bool HasTimeInfo(const IVkjsonRoot_I& root) { return boost::get<NoTimeInfo>(&root.Time()) == nullptr; }

class TimeInfoText : public boost::static_visitor<> {
public:
    explicit TimeInfoText(TextBuffer& text) : text_(text) {}

    void operator()(const NoTimeInfo&) const {}
    void operator()(const TimecodeInfo& info) const {
        text_.Append(kJoined<kKey<words::kUseTimecode>, "true,", kKey<words::kTimecodeInfo>, "{",
                             kKey<words::kFrameRate>, "{", kKey<words::kValue>>);
        text_.AppendNumber(info.frameRateValue);
        text_.Append(kNextKey<words::kScale>);
        text_.AppendNumber(info.frameRateScale);
        text_.Append(kJoined<"},", kKey<words::kDropFrame>>);
        text_.Append(info.dropFrame ? "true}" : "false}");
    }
    void operator()(const UtcInfo& info) const {
        text_.Append(
            kJoined<kKey<words::kUseTimecode>, "false,", kKey<words::kUtcInfo>, "{", kKey<words::kPrecisionLength>>);
        text_.AppendNumber(info.precisionLength);
        text_.Append(kNextKey<words::kIsGmt>);
        text_.Append(info.isGmt ? "true}" : "false}");
    }

private:
    TextBuffer& text_;
};

// A time string has to be one of the document's time mode.
void CheckVideoSyncEntry(const IVkjsonRoot_I& root, const VideoSyncEntry& entry) {
    const auto* const time = boost::get<std::string>(&entry.at);
    if (time == nullptr || root.Form() == nullptr || root.Form()->IsTimeOfMode(*time)) return;
    throw ZT_PLUGIN::ZT_PluginException(ZT_WRITER_SYNC_TIME);
}

void AppendVideoSyncEntry(TextBuffer& text, const VideoSyncEntry& entry) {
    text.Append(kJoined<"{", kKey<words::kFileName>>);
    text.AppendQuoted(entry.fileName);
    if (const auto* frame = boost::get<std::uint32_t>(&entry.at)) {
        text.Append(kNextKey<words::kFrameNumber>);
        text.AppendNumber(*frame);
    } else {
        text.Append(kNextKey<words::kTimeString>);
        text.AppendQuoted(boost::get<std::string>(entry.at));
    }
    text.Append('}');
}

// Writes a tree of nodes, in which groups of child sources stand, too. Code ZT_INVALID_GROUP past the limit of groups.
class OutlineWalk {
public:
    explicit OutlineWalk(TextBuffer& text) : text_(text) {}

    void Write(IVkjsonGroup_I& top) {
        Open(top, nullptr);
        Child child;
        while (!levels_.empty()) {
            if (levels_.back().children->Next(child)) {
                WriteChild(child);
            } else {
                levels_.pop_back();
                if (!levels_.empty()) text_.Append("]}");
            }
        }
    }

private:
    struct Level {
        Owner<IVkjsonGroup_I> group;          // keeps the group of `source`, where there is one
        std::unique_ptr<ChildSource> source;  // none when the children come from the source of the level above
        ChildSource* children;
        bool first;
    };

    void Open(IVkjsonGroup_I& group, Owner<IVkjsonGroup_I> owner) {
        auto source = group.TakeChildren();
        ChildSource* const children = source.get();
        GoDown({std::move(owner), std::move(source), children, true});
    }

    void GoDown(Level level) {
        const bool isFull = levels_.size() == kGroupLimit + 1;  // the root is one
        if (isFull) throw ZT_PLUGIN::ZT_PluginException(ZT_INVALID_GROUP);
        levels_.push_back(std::move(level));
    }

    void WriteChild(Child& child) {
        if (!levels_.back().first) text_.Append(',');
        levels_.back().first = false;
        if (child.dynamic) {
            AppendDynamicNode(text_, *child.dynamic);
        } else if (child.group) {
            AppendGroupStart(text_, child.group->MatchName(), child.group->DisplayName());
            IVkjsonGroup_I& group = *child.group;
            Open(group, std::move(child.group));
        } else if (child.opensGroup) {
            AppendGroupStart(text_, child.node.matchName, child.node.displayName);
            GoDown({nullptr, nullptr, levels_.back().children, true});
        } else {
            AppendStaticNode(text_, child.node);
        }
    }

    TextBuffer& text_;
    std::vector<Level> levels_;
};

}  // namespace

// Runs one phase; whatever goes wrong, the document is given up for good.
template <class Step>
void DocumentWriter::Guarded(Step&& step) {
    try {
        ZT_PLUGIN::TranslateFailures(step);
    } catch (...) {
        GiveUp();
        throw;
    }
}

void DocumentWriter::WriteHeader(const IVkjsonRoot_I& root) {
    if (headerWritten_ || state_ != State::kOpen) return;
    Guarded([&] {
        AppendHeader(root);
        text_.Flush();
    });
}

void DocumentWriter::WriteSampleSet(const IVkjsonRoot_I& root, const DynamicNodeView& node, SampleBuffer& samples) {
    if (state_ != State::kOpen) throw ZT_PLUGIN::ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
    if (samples.Count() == 0) return;
    Guarded([&] {
        if (!headerWritten_) AppendHeader(root);
        if (samplesOpened_) {
            text_.Append(',');
        } else {
            text_.Append(kJoined<kNextKey<words::kDataDynamicSamples>, "[">);
        }
        samplesOpened_ = true;
        const ZT_PLUGIN::ByteRange written = AppendSampleSet(text_, node, root.TimeStringLength(), samples);
        if (node.kind != ZT_PLUGIN::DynamicKind::kString) numberSamples_.push_back(written);
    });
}

void DocumentWriter::GiveUp() noexcept {
    state_ = State::kFailed;
    file_.Abandon();
}

bool DocumentWriter::Finish(IVkjsonRoot_I& root) {
    if (state_ != State::kOpen) return false;
    Guarded([&] {
        if (samplesOpened_) {
            text_.Append(']');
        } else if (headerWritten_ && HasTimeInfo(root)) {
            // The header promises samples, and none came.
            file_.CutTo(kVersionMember.size());
            text_.Append(kJoined<kNextKey<words::kDynamicSamplesPresent>, "false">);
        } else if (!headerWritten_) {
            text_.Append(kVersionMember);
            text_.Append(kJoined<kNextKey<words::kDynamicSamplesPresent>, "false">);
            headerWritten_ = true;
        }
        if (!root.Creator().empty()) {
            text_.Append(kNextKey<words::kCreator>);
            text_.AppendQuoted(root.Creator());
        }
        AppendOutline(root);
        text_.Append('}');
        text_.Flush();
        file_.Close();
    });
    state_ = State::kFinished;
    return true;
}

void DocumentWriter::AppendHeader(const IVkjsonRoot_I& root) {
    for (const VideoSyncEntry& entry : root.VideoSync()) CheckVideoSyncEntry(root, entry);
    text_.Append(kVersionMember);
    if (HasTimeInfo(root)) {
        text_.Append(kJoined<kNextKey<words::kDynamicSamplesPresent>, "true">);
        AppendTimeInfo(root);
    } else {
        text_.Append(kJoined<kNextKey<words::kDynamicSamplesPresent>, "false">);
    }
    headerWritten_ = true;
}

void DocumentWriter::AppendTimeInfo(const IVkjsonRoot_I& root) {
    text_.Append(kJoined<kNextKey<words::kDynamicDataInfo>, "{">);
    boost::apply_visitor(TimeInfoText(text_), root.Time());
    if (!root.VideoSync().empty()) {
        text_.Append(kJoined<kNextKey<words::kVideoSyncTimeList>, "[">);
        for (const VideoSyncEntry& entry : root.VideoSync()) {
            if (&entry != &root.VideoSync().front()) text_.Append(',');
            AppendVideoSyncEntry(text_, entry);
        }
        text_.Append(']');
    }
    text_.Append('}');
}

void DocumentWriter::AppendOutline(IVkjsonRoot_I& root) {
    text_.Append(kJoined<kNextKey<words::kDataOutline>, "[">);
    OutlineWalk(text_).Write(root);
    text_.Append(']');
}

}  // namespace zentor
