// Dynamic nodes of numbers and of number arrays.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "model/dynamic_data.h"
#include "model/number_track.h"

namespace ZT_PLUGIN {

// A number of a sample, with its text as FormatPlainNumber or FormatPlainShortest gives it. Borrowed.
struct NumberSample {
    double value;
    std::string_view text;
    std::size_t integers;  // digits before the point
};

// The sample of a number that can be written. `room`: zentor::kPlainNumberRoom bytes for its text.
NumberSample MakeNumberSample(double value, char* room, zentor::NumberForm form);

// The same of a number that is a text; false for any other text.
bool ReadNumberSample(std::string_view text, char* room, zentor::NumberForm form, NumberSample& sample);

class VkjsonDynamicDataNumImpl final : public DynamicDataSlots<IVkjsonDynamicDataNum_v1>, public IVkjsonNumberTexts_v1 {
public:
    explicit VkjsonDynamicDataNumImpl(std::uint64_t streamId) : DynamicDataSlots(streamId) {}

    std::uint32_t AddSample(std::int32_t timeValue, std::uint32_t timeScale, double value,
                            ZT_ErrorRecord* error) noexcept override;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, std::uint8_t isSigned,
                    ZT_ErrorRecord* error) noexcept override;
    void SetRange(double legalMinimum, double legalMaximum, double value, ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, double value,
                                   ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTimeString(const char* timeString, double value, ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, const char* text,
                                   std::uint64_t size, ZT_ErrorRecord* error) noexcept override;

    DynamicNodeView View() const override;

private:
    void Add(const SampleTime& time, double value);
    void Append(const SampleTime& time, const NumberSample& sample);

    WidestPattern pattern_;
    ElementRange range_;
};

class VkjsonDynamicDataNumArrImpl final : public DynamicDataSlots<IVkjsonDynamicDataNumArr_v1> {
public:
    explicit VkjsonDynamicDataNumArrImpl(std::uint64_t streamId) : DynamicDataSlots(streamId) {}

    std::uint32_t AddSample(std::int32_t timeValue, std::uint32_t timeScale, const double* values, std::uint64_t count,
                            ZT_ErrorRecord* error) noexcept override;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, std::uint8_t isSigned,
                    ZT_ErrorRecord* error) noexcept override;
    void SetArraySize(std::uint64_t size, ZT_ErrorRecord* error) noexcept override;
    void AddRange(double legalMinimum, double legalMaximum, ZT_ErrorRecord* error) noexcept override;
    void AddDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept override;
    void SetIsPoint(std::uint8_t isPoint, ZT_ErrorRecord* error) noexcept override;
    void SetIsSigned(std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, const double* values,
                                   std::uint64_t count, ZT_ErrorRecord* error) noexcept override;
    std::uint32_t AddSampleAtTimeString(const char* timeString, const double* values, std::uint64_t count,
                                        ZT_ErrorRecord* error) noexcept override;

    DynamicNodeView View() const override;

    // For converters of the library that have the texts already, of numbers that can be written: one for each element.
    // Throws as the adders fail.
    void AddTexts(const SampleTime& time, std::span<const NumberSample> elements);

private:
    void Add(const SampleTime& time, const double* values, std::uint64_t count);
    void Append(const SampleTime& time, std::span<const NumberSample> elements);
    void CheckNoSamples() const;

    WidestPattern pattern_;
    std::vector<ElementRange> ranges_;  // one for each element
    std::size_t rangesGiven_ = 0;
    std::vector<std::string> displayNames_;
    bool isPoint_ = false;
    std::string texts_;  // of the elements of one sample
    std::vector<NumberSample> elements_;
};

}  // namespace ZT_PLUGIN
