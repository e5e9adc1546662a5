#include "model/dynamic_numbers.h"

#include "errors/notices.h"
#include "model/static_data.h"
#include "util/short_copy.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint64_t kLargestArray = 0x10000;

// A range that holds what there is already.
MinMax CheckedLegalRange(double minimum, double maximum, const MinMax& occurring, zentor::NumberForm form) {
    const MinMax legal{minimum, maximum};
    if (!legal.IsKnown()) return legal;
    CheckedRange(minimum, maximum, minimum, form);
    if (occurring.IsKnown()) {
        CheckWithin(legal, occurring.minimum, form);
        CheckWithin(legal, occurring.maximum, form);
    }
    return legal;
}

}  // namespace

NumberSample MakeNumberSample(double value, char* room, zentor::NumberForm form) {
    const char* const end = form == zentor::NumberForm::kShortest ? zentor::FormatPlainShortest(value, room)
                                                                  : zentor::FormatPlainNumber(value, room);
    const std::string_view text(room, static_cast<std::size_t>(end - room));
    return {value, text, static_cast<std::size_t>(zentor::CountDigits(text).integer)};
}

bool ReadNumberSample(std::string_view text, char* room, zentor::NumberForm form, NumberSample& sample) {
    const char* const end = text.data() + text.size();
    const zentor::PlainDecimal plain = zentor::ScanPlainDecimal(text.data(), end, form);
    if (plain.canonicalEnd != nullptr) {
        const auto size = static_cast<std::size_t>(plain.canonicalEnd - text.data());
        sample = {plain.Value(), text.substr(0, size), plain.integers};
        return plain.end == end;
    }
    double value = 0;
    if (text.starts_with('+') || zentor::ParseNumber(text.data(), end, value) != end) return false;
    if (!zentor::IsWritable(value, form)) return false;
    sample = MakeNumberSample(value, room, form);
    double written = 0;
    const char* const writtenEnd = sample.text.data() + sample.text.size();
    if (zentor::ParseNumber(sample.text.data(), writtenEnd, written) == writtenEnd && written != value) {
        zentor::AddNotice(ZT_NOTICE_ROUNDED, {});
    }
    return true;
}

std::uint32_t VkjsonDynamicDataNumImpl::AddSample(std::int32_t timeValue, std::uint32_t timeScale, double value,
                                                  ZT_ErrorRecord* error) noexcept {
    return AddSampleAtTicks(timeValue, timeScale, value, error);
}

std::uint32_t VkjsonDynamicDataNumImpl::AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond, double value,
                                                         ZT_ErrorRecord* error) noexcept {
    return Added(error, [&] { AtTicks(ticks, ticksPerSecond, [&](const SampleTime& time) { Add(time, value); }); });
}

std::uint32_t VkjsonDynamicDataNumImpl::AddSampleAtTimeString(const char* timeString, double value,
                                                              ZT_ErrorRecord* error) noexcept {
    return Added(error, [&] { AtTimeString(timeString, [&](const SampleTime& time) { Add(time, value); }); });
}

std::uint32_t VkjsonDynamicDataNumImpl::AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond,
                                                         const char* text, std::uint64_t size,
                                                         ZT_ErrorRecord* error) noexcept {
    return Added(error, [&] {
        char room[zentor::kPlainNumberRoom];
        NumberSample sample{};
        const bool isNumber = text != nullptr && ReadNumberSample({text, size}, room, Stream().form.numbers, sample);
        if (!isNumber) throw ZT_PluginException(ZT_RANGE_VALUE);
        AtTicks(ticks, ticksPerSecond, [&](const SampleTime& time) {
            CheckOrder(time);
            CheckWithin(range_.legal, sample.value, Stream().form.numbers);
            Append(time, sample);
        });
    });
}

void VkjsonDynamicDataNumImpl::SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal,
                                          std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckNotWritten();
        pattern_.Ask(digitsInteger, digitsDecimal, isSigned != 0);
    });
}

void VkjsonDynamicDataNumImpl::SetRange(double legalMinimum, double legalMaximum, double value,
                                        ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckedRange(legalMinimum, legalMaximum, value, Stream().form.numbers);
        range_.legal = CheckedLegalRange(legalMinimum, legalMaximum, range_.occurring, Stream().form.numbers);
    });
}

void VkjsonDynamicDataNumImpl::Add(const SampleTime& time, double value) {
    CheckOrder(time);
    CheckWithin(range_.legal, value, Stream().form.numbers);
    char room[zentor::kPlainNumberRoom];
    Append(time, MakeNumberSample(value, room, Stream().form.numbers));
}

void VkjsonDynamicDataNumImpl::Append(const SampleTime& time, const NumberSample& sample) {
    zentor::CopyShort(AddText(time, sample.text.size()), sample.text);
    pattern_.Widen(sample.text, sample.integers);
    Widen(range_.occurring, sample.value);
}

DynamicNodeView VkjsonDynamicDataNumImpl::View() const {
    DynamicNodeView view = CommonView(DynamicKind::kNumber);
    view.pattern = pattern_.Get();
    view.ranges = {&range_, 1};
    return view;
}

std::uint32_t VkjsonDynamicDataNumArrImpl::AddSample(std::int32_t timeValue, std::uint32_t timeScale,
                                                     const double* values, std::uint64_t count,
                                                     ZT_ErrorRecord* error) noexcept {
    return AddSampleAtTicks(timeValue, timeScale, values, count, error);
}

std::uint32_t VkjsonDynamicDataNumArrImpl::AddSampleAtTicks(std::int64_t ticks, std::uint32_t ticksPerSecond,
                                                            const double* values, std::uint64_t count,
                                                            ZT_ErrorRecord* error) noexcept {
    return Added(error,
                 [&] { AtTicks(ticks, ticksPerSecond, [&](const SampleTime& time) { Add(time, values, count); }); });
}

std::uint32_t VkjsonDynamicDataNumArrImpl::AddSampleAtTimeString(const char* timeString, const double* values,
                                                                 std::uint64_t count, ZT_ErrorRecord* error) noexcept {
    return Added(error, [&] { AtTimeString(timeString, [&](const SampleTime& time) { Add(time, values, count); }); });
}

void VkjsonDynamicDataNumArrImpl::SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal,
                                             std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckNotWritten();
        pattern_.Ask(digitsInteger, digitsDecimal, isSigned != 0);
    });
}

void VkjsonDynamicDataNumArrImpl::CheckNoSamples() const {
    if (HasSamples()) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
}

void VkjsonDynamicDataNumArrImpl::SetArraySize(std::uint64_t size, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (size == 0 || size > kLargestArray) throw ZT_PluginException(ZT_DIMENSION_COUNT);
        CheckNoSamples();
        ranges_.assign(size, {});
        rangesGiven_ = 0;
        displayNames_.clear();
    });
}

void VkjsonDynamicDataNumArrImpl::AddRange(double legalMinimum, double legalMaximum, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (rangesGiven_ == ranges_.size()) throw ZT_PluginException(ZT_RANGE_COUNT);
        CheckNoSamples();
        ranges_[rangesGiven_].legal = CheckedLegalRange(legalMinimum, legalMaximum, {}, Stream().form.numbers);
        ++rangesGiven_;
    });
}

void VkjsonDynamicDataNumArrImpl::AddDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (displayNames_.size() == ranges_.size()) throw ZT_PluginException(ZT_DISPLAY_NAME_COUNT);
        displayNames_.emplace_back(TextOrEmpty(displayName));
    });
}

void VkjsonDynamicDataNumArrImpl::SetIsPoint(std::uint8_t isPoint, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] { isPoint_ = isPoint != 0; });
}

void VkjsonDynamicDataNumArrImpl::SetIsSigned(std::uint8_t isSigned, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        CheckNotWritten();
        pattern_.AskForSign(isSigned != 0);
    });
}

void VkjsonDynamicDataNumArrImpl::Add(const SampleTime& time, const double* values, std::uint64_t count) {
    if (values == nullptr) throw ZT_PluginException(ZT_NULL_ARGUMENT);
    if (count != ranges_.size()) throw ZT_PluginException(ZT_DIMENSION_COUNT);
    texts_.clear();
    elements_.clear();
    char room[zentor::kPlainNumberRoom];
    const zentor::NumberForm form = Stream().form.numbers;
    for (std::uint64_t k = 0; k < count; ++k) {
        CheckWithin(ranges_[k].legal, values[k], form);
        elements_.push_back(MakeNumberSample(values[k], room, form));
        texts_ += elements_.back().text;
    }
    const char* text = texts_.data();  // which stays where it is only now
    for (NumberSample& element : elements_) {
        element.text = {text, element.text.size()};
        text += element.text.size();
    }
    Append(time, elements_);
}

void VkjsonDynamicDataNumArrImpl::AddTexts(const SampleTime& time, std::span<const NumberSample> elements) {
    if (elements.size() != ranges_.size()) throw ZT_PluginException(ZT_DIMENSION_COUNT);
    CheckAdding();
    for (std::size_t k = 0; k < rangesGiven_; ++k) {
        CheckWithin(ranges_[k].legal, elements[k].value, Stream().form.numbers);
    }
    Append(time, elements);
}

void VkjsonDynamicDataNumArrImpl::Append(const SampleTime& time, std::span<const NumberSample> elements) {
    if (elements.empty()) throw ZT_PluginException(ZT_DIMENSION_COUNT);
    CheckOrder(time);
    std::size_t size = elements.size() - 1;
    for (const NumberSample& element : elements) size += element.text.size();
    char* out = AddText(time, size);
    for (std::size_t k = 0; k < elements.size(); ++k) {
        const std::string_view text = elements[k].text;
        if (k != 0) *out++ = ',';
        out = zentor::CopyShort(out, text);
        pattern_.Widen(text, elements[k].integers);
        Widen(ranges_[k].occurring, elements[k].value);
    }
}

DynamicNodeView VkjsonDynamicDataNumArrImpl::View() const {
    DynamicNodeView view = CommonView(DynamicKind::kNumberArray);
    view.pattern = pattern_.Get();
    view.ranges = ranges_;
    if (displayNames_.size() == ranges_.size()) view.displayNames = displayNames_;
    view.isPoint = isPoint_;
    return view;
}

}  // namespace ZT_PLUGIN
