#include "model/root.h"

#include "format/frame_rate.h"
#include "model/client_boundary.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint32_t kLargestPrecision = 9;

}  // namespace

VkjsonRootImpl::VkjsonRootImpl(std::uint64_t streamId, std::string_view creator)
    : VkjsonGroupImpl(streamId, "root", "root"), stream_(FindStream(streamId)), creator_(creator) {
    Publish(static_cast<IVkjsonRoot_v1*>(this));
    // A document that has been begun belongs to the root it was begun with, even when that is gone.
    const bool isBegun = stream_ && (stream_->hasSamples || (stream_->writer && stream_->writer->HasHeader()));
    if (stream_ && stream_->root == nullptr && !isBegun) stream_->root = this;
}

VkjsonRootImpl::~VkjsonRootImpl() {
    if (stream_ && stream_->root == this) stream_->root = nullptr;
}

StreamState& VkjsonRootImpl::Stream() const {
    if (!stream_) throw ZT_PluginException(ZT_STREAM_NOT_OPEN);
    stream_->Writer();
    return *stream_;
}

std::uint32_t VkjsonRootImpl::WriteDocument(ZT_ErrorRecord* error) noexcept {
    bool written = false;
    RunForClient(error, [&] {
        StreamState& stream = Stream();
        if (documentWritten_ || !stream.writer->IsOpen()) return;
        if (stream.root != this) throw ZT_PluginException(ZT_INVALID_GROUP);  // the document has another root
        try {
            WriteSamplesBelow();
        } catch (...) {
            stream.writer->GiveUp();
            throw;
        }
        written = stream.writer->Finish(*this);
        documentWritten_ = written;
    });
    return written ? 1 : 0;
}

void VkjsonRootImpl::WriteHeader(ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { Stream().writer->WriteHeader(*this); });
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
    if (stream.writer->HasHeader() || stream.hasSamples) throw ZT_PluginException(ZT_TIME_MODE_FIXED);
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
