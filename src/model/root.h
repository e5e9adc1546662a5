// The root of a document.
#pragma once

#include <boost/variant.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "model/group.h"

namespace ZT_PLUGIN {

struct TimecodeInfo {
    std::uint32_t frameRateValue;
    std::uint32_t frameRateScale;
    bool dropFrame;
};

struct UtcInfo {
    std::uint16_t precisionLength;
    bool isGmt;
};

struct NoTimeInfo {};

using TimeInfo = boost::variant<NoTimeInfo, TimecodeInfo, UtcInfo>;

// An entry of the video-sync list: a frame number or a time string.
struct VideoSyncEntry {
    std::string fileName;
    boost::variant<std::uint32_t, std::string> at;
};

// The library's view of a root.
class IVkjsonRoot_I : public virtual IVkjsonGroup_I {
public:
    virtual const std::string& Creator() const = 0;
    virtual const TimeInfo& Time() const = 0;
    // The form of the document's time strings; null without a time mode.
    virtual const zentor::TimeForm* Form() const = 0;
    // Their length, in bytes; 0 without a time mode.
    virtual std::uint16_t TimeStringLength() const = 0;
    virtual const std::vector<VideoSyncEntry>& VideoSync() const = 0;
};

class VkjsonRootImpl final : public virtual IVkjsonRoot_I, public IVkjsonRoot_v1, public VkjsonGroupImpl {
public:
    // Code ZT_INVALID_GROUP when the document has a root, or had one.
    explicit VkjsonRootImpl(std::uint64_t streamId, std::string_view creator = {});

    std::uint32_t WriteDocument(ZT_ErrorRecord* error) noexcept override;
    void SetCreator(const char* creator, ZT_ErrorRecord* error) noexcept override;
    IVkjsonGroup_v1* GetGroup() noexcept override { return this; }
    ISharedObject* GetSharedObject() noexcept override { return this; }
    void SetDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept override;
    void SetTimecodeInfo(std::uint8_t dropFrame, std::uint32_t frameRateValue, std::uint32_t frameRateScale,
                         ZT_ErrorRecord* error) noexcept override;
    void SetUtcInfo(std::uint32_t precisionLength, std::uint8_t isGmt, ZT_ErrorRecord* error) noexcept override;
    void AddVideoSyncFrame(const char* fileName, std::uint32_t frameNumber, ZT_ErrorRecord* error) noexcept override;
    void AddVideoSyncTime(const char* fileName, const char* timeString, ZT_ErrorRecord* error) noexcept override;
    void WriteHeader(ZT_ErrorRecord* error) noexcept override;

    const std::string& Creator() const override { return creator_; }
    const TimeInfo& Time() const override { return timeInfo_; }
    const zentor::TimeForm* Form() const override { return form_ ? &*form_ : nullptr; }
    std::uint16_t TimeStringLength() const override;
    const std::vector<VideoSyncEntry>& VideoSync() const override { return videoSync_; }

private:
    ~VkjsonRootImpl() override;
    void CheckTimeModeOpen() const;

    std::string creator_;
    TimeInfo timeInfo_;
    std::optional<zentor::TimeForm> form_;
    std::vector<VideoSyncEntry> videoSync_;
};

}  // namespace ZT_PLUGIN
