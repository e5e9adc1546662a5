#include "model/static_data.h"

#include "format/limits.h"
#include "model/client_boundary.h"
#include "util/number_text.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint64_t kMostDigits = 1000;  // every number of a set of samples takes as many

void CheckLength(std::uint64_t length) {
    if (length != kUnsetCount && length > zentor::kLargestCount) throw ZT_PluginException(ZT_RANGE_VALUE);
}

}  // namespace

StaticNodeView VkjsonStaticDataImpl::NamedView(StaticKind kind) const {
    StaticNodeView view;
    view.kind = kind;
    view.matchName = MatchNameText();
    view.displayName = DisplayNameText();
    return view;
}

NumberPattern CheckedPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
    if ((digitsInteger == kUnsetCount) != (digitsDecimal == kUnsetCount)) {
        throw ZT_PluginException(ZT_INCOMPLETE_PATTERN);
    }
    const bool isTooWide = digitsInteger > kMostDigits || digitsDecimal > kMostDigits;
    if (digitsInteger != kUnsetCount && isTooWide) throw ZT_PluginException(ZT_RANGE_VALUE);
    return {digitsInteger, digitsDecimal, isSigned};
}

void CheckNumber(double value, zentor::NumberForm form) {
    if (!zentor::IsWritable(value, form)) throw ZT_PluginException(ZT_RANGE_VALUE);
}

MinMax CheckedRange(double minimum, double maximum, double value, zentor::NumberForm form) {
    const MinMax range{minimum, maximum};
    if (!range.IsKnown()) return range;
    CheckNumber(minimum, form);
    CheckNumber(maximum, form);
    if (minimum > maximum) throw ZT_PluginException(ZT_RANGE_ORDER);
    if (!(value >= minimum && value <= maximum)) throw ZT_PluginException(ZT_RANGE_VALUE);
    return range;
}

VkjsonStaticDataNumImpl::VkjsonStaticDataNumImpl(std::uint64_t streamId, std::string_view matchName,
                                                 std::string_view displayName, double value)
    : StaticDataSlots(streamId, matchName, displayName), value_(value) {
    CheckNumber(value, Stream().form.numbers);
}

void VkjsonStaticDataNumImpl::SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal,
                                         std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { pattern_ = CheckedPattern(digitsInteger, digitsDecimal, isSigned != 0); });
}

void VkjsonStaticDataNumImpl::SetRange(double legalMinimum, double legalMaximum, double value,
                                       ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckedRange(legalMinimum, legalMaximum, value, Stream().form.numbers);
        legalRange_ = CheckedRange(legalMinimum, legalMaximum, value_, Stream().form.numbers);
    });
}

StaticNodeView VkjsonStaticDataNumImpl::View() const {
    StaticNodeView view = NamedView(StaticKind::kNumber);
    view.number = value_;
    view.pattern = pattern_;
    view.legalRange = legalRange_;
    return view;
}

VkjsonStaticDataStringImpl::VkjsonStaticDataStringImpl(std::uint64_t streamId, std::string_view matchName,
                                                       std::string_view displayName, std::string_view value)
    : StaticDataSlots(streamId, matchName, displayName), value_(value) {}

void VkjsonStaticDataStringImpl::SetStringProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength,
                                                     std::uint8_t isEventMarker, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckLength(maxLength);
        CheckLength(maxDigitsInLength);
        properties_ = {maxLength, maxDigitsInLength, isEventMarker != 0};
    });
}

StaticNodeView VkjsonStaticDataStringImpl::View() const {
    StaticNodeView view = NamedView(StaticKind::kString);
    view.text = value_;
    view.stringProperties = properties_;
    return view;
}

VkjsonStaticDataBoolImpl::VkjsonStaticDataBoolImpl(std::uint64_t streamId, std::string_view matchName,
                                                   std::string_view displayName, bool value)
    : StaticDataSlots(streamId, matchName, displayName), value_(value) {}

StaticNodeView VkjsonStaticDataBoolImpl::View() const {
    StaticNodeView view = NamedView(StaticKind::kBoolean);
    view.boolean = value_;
    return view;
}

VkjsonStaticDataNumArrImpl::VkjsonStaticDataNumArrImpl(std::uint64_t streamId, std::string_view matchName,
                                                       std::string_view displayName)
    : StaticDataSlots(streamId, matchName, displayName) {}

void VkjsonStaticDataNumArrImpl::SetValues(const double* values, std::uint64_t count, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (count == 0) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
        if (values == nullptr) throw ZT_PluginException(ZT_NULL_ARGUMENT);
        for (std::uint64_t k = 0; k < count; ++k) CheckNumber(values[k], Stream().form.numbers);
        array_.values.assign(values, values + count);
        if (array_.legalRanges.size() != count) array_.legalRanges.clear();
        if (array_.displayNames.size() != count) array_.displayNames.clear();
        for (std::size_t k = 0; k < array_.legalRanges.size(); ++k) {
            const MinMax& range = array_.legalRanges[k];
            if (range.IsKnown() && (values[k] < range.minimum || values[k] > range.maximum)) {
                array_.legalRanges.clear();
            }
        }
    });
}

void VkjsonStaticDataNumArrImpl::SetDisplayNames(const char* const* names, std::uint64_t count,
                                                 ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (count != 0 && count != array_.values.size()) throw ZT_PluginException(ZT_DISPLAY_NAME_COUNT);
        if (names == nullptr && count != 0) throw ZT_PluginException(ZT_NULL_ARGUMENT);
        std::vector<std::string> copies;
        for (std::uint64_t k = 0; k < count; ++k) copies.emplace_back(TextOrEmpty(names[k]));
        array_.displayNames = std::move(copies);
    });
}

void VkjsonStaticDataNumArrImpl::SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal,
                                            std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { array_.pattern = CheckedPattern(digitsInteger, digitsDecimal, isSigned != 0); });
}

void VkjsonStaticDataNumArrImpl::SetRanges(const double* minima, const double* maxima, std::uint64_t count,
                                           ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (count != array_.values.size()) throw ZT_PluginException(ZT_RANGE_COUNT);
        if ((minima == nullptr || maxima == nullptr) && count != 0) throw ZT_PluginException(ZT_NULL_ARGUMENT);
        std::vector<MinMax> ranges;
        for (std::uint64_t k = 0; k < count; ++k) {
            ranges.push_back(CheckedRange(minima[k], maxima[k], array_.values[k], Stream().form.numbers));
        }
        array_.legalRanges = std::move(ranges);
    });
}

void VkjsonStaticDataNumArrImpl::SetIsPoint(std::uint8_t isPoint, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { array_.isPoint = isPoint != 0; });
}

StaticNodeView VkjsonStaticDataNumArrImpl::View() const {
    StaticNodeView view = NamedView(StaticKind::kNumberArray);
    view.array = &array_;
    return view;
}

}  // namespace ZT_PLUGIN
