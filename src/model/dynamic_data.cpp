#include "model/dynamic_data.h"

#include "model/group.h"
#include "model/root.h"

namespace ZT_PLUGIN {

bool HasBalancedBrackets(std::string_view text) {
    std::size_t depth = 0;
    for (const char c : text) {
        if (c == '[') ++depth;
        if (c == ']' && depth-- == 0) return false;
    }
    return depth == 0;
}

VkjsonDynamicDataImpl::VkjsonDynamicDataImpl(std::uint64_t streamId)
    : VkjsonNodeImpl(streamId), samples_(Stream().spill) {
    Stream().CountDynamicNodes(true);
}

VkjsonDynamicDataImpl::~VkjsonDynamicDataImpl() { Stream().CountDynamicNodes(false); }

void VkjsonDynamicDataImpl::InitializeWith(std::string_view matchName, std::string_view displayName,
                                           std::string_view sampleSetId, std::uint64_t sampleCount,
                                           std::uint32_t interpolation, bool hasExpectedFrequency,
                                           std::string_view maxInterSampleDuration) {
    if (isInitialized_) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
    CheckMatchName(matchName);
    if (sampleSetId.empty()) throw ZT_PluginException(ZT_INVALID_NAME);
    if (interpolation != 1 && interpolation != 2) throw ZT_PluginException(ZT_INTERPOLATION);
    if (!Stream().form.IsFaithful() && !HasBalancedBrackets(sampleSetId)) throw ZT_PluginException(ZT_UNBALANCED_TEXT);
    SetMatchNameText(matchName);
    SetDisplayNameText(displayName);
    sampleSetId_ = sampleSetId;
    maxInterSampleDuration_ = maxInterSampleDuration;
    expectedCount_ = sampleCount;
    interpolation_ = static_cast<Interpolation>(interpolation);
    hasExpectedFrequency_ = hasExpectedFrequency;
    isInitialized_ = true;
}

std::uint64_t VkjsonDynamicDataImpl::SampleCount() const {
    if (isWritten_) return writtenCount_;
    return expectedCount_ != 0 ? expectedCount_ : samples_.Count();
}

void VkjsonDynamicDataImpl::SetExpectedSampleCount(std::uint64_t count) {
    if (!isWritten_) expectedCount_ = count;
}

void VkjsonDynamicDataImpl::CheckNotWritten() const {
    if (isWritten_) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
}

std::uint32_t VkjsonDynamicDataImpl::Names(const char** matchName, const char** displayName,
                                           const char** sampleSetId) const {
    if (matchName != nullptr) *matchName = MatchNameText().c_str();
    if (displayName != nullptr) *displayName = DisplayNameText().c_str();
    if (sampleSetId != nullptr) *sampleSetId = sampleSetId_.c_str();
    return isInitialized_ ? 1 : 0;
}

DynamicNodeView VkjsonDynamicDataImpl::CommonView(DynamicKind kind) const {
    DynamicNodeView view;
    view.kind = kind;
    view.matchName = MatchNameText();
    view.displayName = DisplayNameText();
    view.sampleSetId = sampleSetId_;
    view.interpolation = interpolation_;
    view.hasExpectedFrequency = hasExpectedFrequency_;
    view.sampleCount = isWritten_ ? writtenCount_ : samples_.Count();
    view.maxInterSampleDuration = maxInterSampleDuration_;
    return view;
}

void VkjsonDynamicDataImpl::CheckOpen() const {
    const IDocumentWriter& writer = Stream().Writer();
    if (!isInitialized_ || isUnusable_ || isWritten_ || !writer.IsOpen()) {
        throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
    }
}

const zentor::TimeForm& VkjsonDynamicDataImpl::RequireTimeForm() const {
    CheckOpen();
    const zentor::TimeForm* const form = Stream().root == nullptr ? nullptr : Stream().root->Form();
    if (form == nullptr) throw ZT_PluginException(ZT_TIME_MODE_INVALID);
    return *form;
}

SampleTime VkjsonDynamicDataImpl::FormatTime(std::int64_t ticks, std::uint32_t ticksPerSecond) const {
    LatestTime& latest = Stream().latestTime;
    const bool isKnown = latest.ticks == ticks && latest.ticksPerSecond == ticksPerSecond && ticksPerSecond != 0;
    if (isKnown && Stream().hasSamples) {  // so that the form is what it was
        CheckOpen();
    } else {
        SetLatestTime(ticks, ticksPerSecond);
    }
    return {{latest.text, latest.size}, latest.instant};
}

void VkjsonDynamicDataImpl::SetLatestTime(std::int64_t ticks, std::uint32_t ticksPerSecond) const {
    const zentor::TimeForm& form = RequireTimeForm();
    LatestTime& latest = Stream().latestTime;
    latest.ticksPerSecond = 0;
    const char* const end = form.Format(ticks, ticksPerSecond, latest.text, latest.instant);
    if (end == nullptr) throw ZT_PluginException(ZT_SAMPLE_TIME);
    latest.size = static_cast<std::size_t>(end - latest.text);
    latest.ticks = ticks;
    latest.ticksPerSecond = ticksPerSecond;
}

SampleTime VkjsonDynamicDataImpl::ReadTime(std::string_view text) const {
    SampleTime time;
    if (!RequireTimeForm().ParseForDocument(text, time.instant)) throw ZT_PluginException(ZT_SAMPLE_TIME);
    time.text = text;
    return time;
}

char* VkjsonDynamicDataImpl::AddText(const SampleTime& time, std::size_t size) {
    char* room = nullptr;
    try {
        TranslateFailures([&] { room = samples_.Add(time.text, size, Stream().sampleBufferLimit); });
    } catch (...) {
        isUnusable_ = true;
        throw;
    }
    if (samples_.Count() == 1) ++Stream().unwrittenSets;
    Stream().hasSamples = true;
    lastTime_ = time.instant;
    if (!lastTime_.decimals.empty()) {
        const auto at = static_cast<std::size_t>(time.instant.decimals.data() - time.text.data());
        lastTime_.decimals = samples_.LatestTime().substr(at, time.instant.decimals.size());
    }
    return room;
}

// A set whose node is not in the outline would make the document unreadable.
bool VkjsonDynamicDataImpl::IsInDocument() const {
    const VkjsonGroupImpl* at = parent_;
    while (at != nullptr && at->Parent() != nullptr) at = at->Parent();
    return at != nullptr && static_cast<const IVkjsonGroup_I*>(at) == Stream().root;
}

bool VkjsonDynamicDataImpl::WriteAllSamples() {
    IDocumentWriter& writer = Stream().Writer();
    if (isWritten_) return false;
    if (!isInitialized_ || isUnusable_ || !writer.IsOpen() || !IsInDocument()) {
        throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
    }
    const DynamicNodeView view = View();
    // No document holds an array without elements.
    const bool isEmptyArray = view.kind == DynamicKind::kNumberArray && view.ranges.empty();
    if (isEmptyArray) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
    isUnusable_ = true;  // whatever happens to the samples on their way
    writer.WriteSampleSet(*Stream().root, view, samples_);
    isUnusable_ = false;
    if (HasSamples()) --Stream().unwrittenSets;
    writtenCount_ = samples_.Count();
    isWritten_ = true;
    return true;
}

}  // namespace ZT_PLUGIN
