// Dynamic nodes of texts.
#pragma once

#include "model/dynamic_data.h"

namespace ZT_PLUGIN {

class VkjsonDynamicDataStringImpl final : public DynamicDataSlots<IVkjsonDynamicDataString_v1> {
public:
    explicit VkjsonDynamicDataStringImpl(std::uint64_t streamId) : DynamicDataSlots(streamId) {}

    std::uint32_t AddSample(std::int32_t timeValue, std::uint32_t timeScale, const char* text,
                            ZT_ErrorRecord* error) noexcept override;
    void SetStringProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength, std::uint8_t isEventMarker,
                             ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, const char* text,
                                   ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTimeString(const char* timeString, const char* text,
                                        ZT_ErrorRecord* error) noexcept override;

    DynamicNodeView View() const override;

private:
    void Add(const SampleTime& time, std::string_view text);

    StringProperties asked_;
    std::uint64_t longest_ = 0;
};

}  // namespace ZT_PLUGIN
