#include "model/root.h"

#include "format/frame_rate.h"
#include "model/client_boundary.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint32_t kLargestPrecision = 9;

}  // namespace

VkjsonRootImpl::VkjsonRootImpl(std::uint64_t streamId, std::string_view creator)
    : VkjsonGroupImpl(streamId, "root", "root"), creator_(creator) {
    // What hangs from one root would be missing from the document of the other.
    if (Stream().hasRoot) throw ZT_PluginException(ZT_INVALID_GROUP);
    Publish(static_cast<IVkjsonRoot_v1*>(this));
    Stream().hasRoot = true;
    Stream().root = this;
}

VkjsonRootImpl::~VkjsonRootImpl() { Stream().root = nullptr; }

std::uint32_t VkjsonRootImpl::WriteDocument(ZT_ErrorRecord* error) noexcept {
    bool written = false;
    RunForClient(error, [&] {
        IDocumentWriter& writer = Stream().Writer();
        if (!writer.IsOpen()) return;
        try {
            WriteSamplesBelow();
            // Those of a node that is not in the outline are left, which nobody could read.
            if (Stream().unwrittenSets != 0) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
        } catch (...) {
            writer.GiveUp();
            throw;
        }
        written = writer.Finish(*this);
    });
    return written ? 1 : 0;
}

void VkjsonRootImpl::WriteHeader(ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        IDocumentWriter& writer = Stream().Writer();
        if (!writer.IsOpen() && !writer.IsFinished()) throw ZT_PluginException(ZT_INVALID_GROUP);
        writer.WriteHeader(*this);
    });
}

void VkjsonRootImpl::SetCreator(const char* creator, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (creator == nullptr) throw ZT_PluginException(ZT_EMPTY_CREATOR);
        creator_ = creator;
    });
}

void VkjsonRootImpl::SetDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { SetDisplayNameText(TextOrEmpty(displayName)); });
}

// The header holds the time mode and the sync list: once it is written, a change would be lost. Samples hold their time
// strings.
void VkjsonRootImpl::CheckTimeModeOpen() const {
    const StreamState& stream = Stream();
    if (stream.Writer().HasHeader() || stream.hasSamples) throw ZT_PluginException(ZT_TIME_MODE_FIXED);
}

std::uint16_t VkjsonRootImpl::TimeStringLength() const {
    return form_ ? static_cast<std::uint16_t>(form_->Width()) : std::uint16_t{0};
}

void VkjsonRootImpl::SetTimecodeInfo(std::uint8_t dropFrame, std::uint32_t frameRateValue, std::uint32_t frameRateScale,
                                     ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        const zentor::FrameRate rate{frameRateValue, frameRateScale, dropFrame != 0};
        const bool possible =
            frameRateValue != 0 && frameRateScale != 0 && zentor::NominalRate(rate) <= zentor::kHighestNominalRate &&
            (dropFrame == 0 || zentor::AllowsDropFrame(double{1.0} * frameRateValue / frameRateScale));
        if (!possible) throw ZT_PluginException(ZT_TIME_MODE_INVALID);
        timeInfo_ = TimecodeInfo{frameRateValue, frameRateScale, dropFrame != 0};
        form_ = zentor::TimeForm(rate);
    });
}

void VkjsonRootImpl::SetUtcInfo(std::uint32_t precisionLength, std::uint8_t isGmt, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        if (precisionLength > kLargestPrecision) throw ZT_PluginException(ZT_TIME_MODE_INVALID);
        timeInfo_ = UtcInfo{static_cast<std::uint16_t>(precisionLength), isGmt != 0};
        form_ = zentor::TimeForm(zentor::TimeForm::Utc{precisionLength, isGmt != 0});
    });
}

void VkjsonRootImpl::AddVideoSyncFrame(const char* fileName, std::uint32_t frameNumber,
                                       ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        videoSync_.push_back({std::string(TextOrEmpty(fileName)), frameNumber});
    });
}

void VkjsonRootImpl::AddVideoSyncTime(const char* fileName, const char* timeString, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        videoSync_.push_back({std::string(TextOrEmpty(fileName)), std::string(TextOrEmpty(timeString))});
    });
}

}  // namespace ZT_PLUGIN
