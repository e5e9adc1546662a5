#include "model/dynamic_string.h"

#include <algorithm>

namespace ZT_PLUGIN {

namespace {

// Every sample takes as much as the longest may.
constexpr std::uint64_t kLongestAskedFor = std::uint64_t{1} << 24;
constexpr std::uint64_t kMostDigitsOfLength = 20;

std::uint64_t CountDecimalDigits(std::uint64_t number) {
    std::uint64_t digits = 1;
    for (; number >= 10; number /= 10) ++digits;
    return digits;
}

}  // namespace

std::uint32_t VkjsonDynamicDataStringImpl::AddSample(std::int32_t timeValue, std::uint32_t timeScale, const char* text,
                                                     ZT_ErrorRecord* error) noexcept {
    return AddSampleAtTicks(timeValue, timeScale, text, error);
}

std::uint32_t VkjsonDynamicDataStringImpl::AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond,
                                                            const char* text, ZT_ErrorRecord* error) noexcept {
    return Added(
        error, [&] { AtTicks(ticks, ticksPerSecond, [&](const SampleTime& time) { Add(time, TextOrEmpty(text)); }); });
}

std::uint32_t VkjsonDynamicDataStringImpl::AddSampleAtTimeString(const char* timeString, const char* text,
                                                                 ZT_ErrorRecord* error) noexcept {
    return Added(error,
                 [&] { AtTimeString(timeString, [&](const SampleTime& time) { Add(time, TextOrEmpty(text)); }); });
}

void VkjsonDynamicDataStringImpl::SetStringProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength,
                                                      std::uint8_t isEventMarker, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckNotWritten();
        const std::uint64_t length = maxLength == kUnsetCount ? 0 : maxLength;
        const std::uint64_t digits = maxDigitsInLength == kUnsetCount ? 0 : maxDigitsInLength;
        if (length > kLongestAskedFor || digits > kMostDigitsOfLength) throw ZT_PluginException(ZT_RANGE_VALUE);
        asked_ = {length, digits, isEventMarker != 0};
    });
}

void VkjsonDynamicDataStringImpl::Add(const SampleTime& time, std::string_view text) {
    CheckOrder(time);
    std::string escaped;
    text = zentor::EscapeText(text, Stream().form.texts, zentor::Brackets::kEscaped, escaped);
    if (!HasBalancedBrackets(text)) throw ZT_PluginException(ZT_UNBALANCED_TEXT);
    text.copy(AddText(time, text.size()), text.size());  // a text may be null
    longest_ = std::max<std::uint64_t>(longest_, text.size());
}

DynamicNodeView VkjsonDynamicDataStringImpl::View() const {
    DynamicNodeView view = CommonView(DynamicKind::kString);
    view.stringProperties = asked_;
    StringProperties& properties = view.stringProperties;
    properties.maxLength = std::max(properties.maxLength, longest_);
    properties.maxDigitsInLength = std::max(properties.maxDigitsInLength, CountDecimalDigits(properties.maxLength));
    return view;
}

}  // namespace ZT_PLUGIN
