#include "model/root.h"

#include "model/client_boundary.h"
#include "model/document_writer.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint32_t kLargestTwoDigitRate = 99;
constexpr std::uint32_t kLargestPrecision = 9;

// Drop frame is counting for 29.97 and 59.94 frames a second, in any spelling of these fractions.
bool AllowsDropFrame(std::uint64_t value, std::uint64_t scale) {
    return value * 1001 == scale * 30000 || value * 1001 == scale * 60000;
}

}  // namespace

VkjsonRootImpl::VkjsonRootImpl(std::uint64_t streamId, std::string_view creator)
    : VkjsonGroupImpl(streamId, "root", "root"), creator_(creator) {
    Publish(static_cast<IVkjsonRoot_v1*>(this));
}

std::uint32_t VkjsonRootImpl::WriteDocument(ZT_ErrorRecord* error) noexcept {
    bool written = false;
    RunForClient(error, [&] {
        if (documentWritten_) return;
        written = WriterOfStream(StreamId()).Finish(*this);
        documentWritten_ = written;
    });
    return written ? 1 : 0;
}

void VkjsonRootImpl::WriteHeader(ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { WriterOfStream(StreamId()).WriteHeader(*this); });
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

// The header holds the time mode and the sync list: once it is written, a change would be lost.
void VkjsonRootImpl::CheckTimeModeOpen() const {
    if (WriterOfStream(StreamId()).HasHeader()) throw ZT_PluginException(ZT_TIME_MODE_FIXED);
}

void VkjsonRootImpl::SetTimecodeInfo(std::uint8_t dropFrame, std::uint32_t frameRateValue, std::uint32_t frameRateScale,
                                     ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        const bool possible = frameRateValue != 0 && frameRateScale != 0;
        if (!possible || (dropFrame != 0 && !AllowsDropFrame(frameRateValue, frameRateScale))) {
            throw ZT_PluginException(ZT_TIME_MODE_INVALID);
        }
        timeInfo_ = TimecodeInfo{frameRateValue, frameRateScale, dropFrame != 0};
        timeStringLength_ = frameRateValue / frameRateScale <= kLargestTwoDigitRate ? 11 : 12;
    });
}

void VkjsonRootImpl::SetUtcInfo(std::uint32_t precisionLength, std::uint8_t isGmt, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckTimeModeOpen();
        if (precisionLength > kLargestPrecision) throw ZT_PluginException(ZT_TIME_MODE_INVALID);
        timeInfo_ = UtcInfo{static_cast<std::uint16_t>(precisionLength), isGmt != 0};
        // yyyy-mm-ddThh:mm:ss, a fraction with its point, then "Z" or a six-character offset.
        const std::uint32_t fraction = precisionLength == 0 ? 0 : precisionLength + 1;
        timeStringLength_ = static_cast<std::uint16_t>(19 + fraction + (isGmt != 0 ? 1 : 6));
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
