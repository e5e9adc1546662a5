#include "format/sample_record.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "util/number_text.h"
#include "util/short_copy.h"

namespace zentor {

namespace {

constexpr auto kRecordStart = kJoined<"{", kKey<words::kTime>, "\"">;
constexpr auto kRecordMiddle = kJoined<"\",", kKey<words::kValue>>;
constexpr auto kPaddedStart = kJoined<"{", kKey<words::kLength>>;
constexpr auto kPaddedMiddle = kJoined<",", kKey<words::kStr>, "\"">;
constexpr FixedText kPaddedEnd = "\"}";
static_assert(kRecordStart.size() == RecordLayout::kTimeOffset);

// Every width is below 2^56 as a sum of counts; only products can be out of all bounds, and are held there.
constexpr std::uint64_t kHuge = std::numeric_limits<std::uint64_t>::max() / 4;

std::uint64_t Product(std::uint64_t a, std::uint64_t b) { return a != 0 && b > kHuge / a ? kHuge : a * b; }

// With a length that the compiler knows.
template <std::size_t N>
char* PutFixed(char* out, const FixedText<N>& text) {
    std::memcpy(out, text.bytes, text.size());
    return out + text.size();
}
template <std::size_t N>
bool IsAt(std::string_view text, const FixedText<N>& expected) {
    return text.size() >= expected.size() && std::memcmp(text.data(), expected.bytes, expected.size()) == 0;
}
bool Take(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

char* PutZeros(char* out, std::size_t count) {
    for (std::size_t k = 0; k < count; ++k) out[k] = '0';
    return out + count;
}

// With so many digits, zeros in front.
char* PutCount(char* out, std::uint64_t count, std::uint64_t digits) {
    for (std::uint64_t at = digits; at-- > 0; count /= 10) out[at] = static_cast<char>('0' + count % 10);
    return out + digits;
}

// A number in quotes, with zeros before and after it as the pattern wants.
char* PutPadded(char* out, std::string_view number, const PaddedPattern& pattern) {
    *out++ = '"';
    const bool isNegative = number.starts_with('-');
    if (isNegative) number.remove_prefix(1);
    if (pattern.isSigned) *out++ = isNegative ? '-' : '+';
    std::size_t integers = 0;
    while (integers != number.size() && number[integers] != '.') ++integers;
    out = PutZeros(out, pattern.digitsInteger - integers);
    out = CopyShort(out, number);
    if (pattern.digitsDecimal != 0) {
        if (integers == number.size()) *out++ = '.';
        const std::size_t decimals = integers == number.size() ? 0 : number.size() - integers - 1;
        out = PutZeros(out, pattern.digitsDecimal - decimals);
    }
    *out++ = '"';
    return out;
}

char* PutArray(char* out, std::string_view elements, const RecordLayout& layout) {
    char before = '[';
    for (std::uint64_t k = 0; k < layout.arraySize; ++k) {
        const std::size_t end = std::min(elements.find(','), elements.size());
        *out++ = before;
        before = ',';
        out = PutPadded(out, elements.substr(0, end), layout.pattern);
        elements.remove_prefix(std::min(end + 1, elements.size()));
    }
    *out++ = ']';
    return out;
}

char* PutString(char* out, std::string_view value, const RecordLayout& layout) {
    out = PutFixed(out, kPaddedStart);
    if (layout.hasQuotedLength) *out++ = '"';
    out = PutCount(out, value.size(), layout.lengthDigits);
    if (layout.hasQuotedLength) *out++ = '"';
    out = PutFixed(out, kPaddedMiddle);
    out = CopyShort(out, value);
    const std::size_t padding = layout.maxLength - value.size();
    std::memset(out, ' ', padding);
    return PutFixed(out + padding, kPaddedEnd);
}

// Which part of a record that is not as it should be comes first.
RecordFault FirstFault(std::string_view record, std::uint64_t timeWidth, RecordParts& parts) {
    if (!record.ends_with('}') || !Take(record, "{")) return RecordFault::kForm;
    if (!Take(record, kKey<words::kTime>)) return RecordFault::kNoTimeKey;
    if (!Take(record, "\"")) return RecordFault::kTime;
    parts.time = record.substr(0, timeWidth);
    record.remove_prefix(parts.time.size());
    if (!Take(record, "\",")) return RecordFault::kForm;
    return Take(record, kKey<words::kValue>) ? RecordFault::kNone : RecordFault::kNoValueKey;
}

}  // namespace

std::uint64_t RecordLayout::ValueWidth() const {
    switch (kind) {
        case SampleKind::kNumber:
            return pattern.Width();
        case SampleKind::kNumberArray:
            return Product(pattern.Width() + 1, arraySize) + 1;
        default:
            return kPaddedStart.size() + lengthDigits + (hasQuotedLength ? 2 : 0) + kPaddedMiddle.size() + maxLength +
                   kPaddedEnd.size();
    }
}

std::uint64_t RecordLayout::Width() const { return TimeEnd() + kRecordMiddle.size() + ValueWidth() + 1; }

std::uint64_t RecordLayout::Size(std::uint64_t count) const { return count == 0 ? 0 : Product(Width() + 1, count) - 1; }

bool RecordLayout::IsAtRecord(std::string_view text) { return IsAt(text, kRecordStart); }

bool RecordLayout::SeesQuotedLength(std::string_view record) const {
    const std::uint64_t before = TimeEnd() + kRecordMiddle.size() + kPaddedStart.size();
    return before < record.size() && record[before] == '"';
}

char* RecordLayout::Put(char* out, std::string_view time, std::string_view value) const {
    out = PutFixed(out, kRecordStart);
    out = CopyShort(out, time);
    out = PutFixed(out, kRecordMiddle);
    switch (kind) {
        case SampleKind::kNumber:
            out = PutPadded(out, value, pattern);
            break;
        case SampleKind::kNumberArray:
            out = PutArray(out, value, *this);
            break;
        case SampleKind::kPaddedString:
            out = PutString(out, value, *this);
            break;
    }
    *out++ = '}';
    return out;
}

std::string_view RecordLayout::TimeIn(std::string_view record) const {
    const bool isTime = IsAt(record, kRecordStart) && record.size() > TimeEnd() && record[TimeEnd()] == '"';
    return isTime ? record.substr(kTimeOffset, timeWidth) : std::string_view();
}

RecordFault RecordLayout::TakeApart(std::string_view record, RecordParts& parts) const {
    const std::size_t valueBegin = TimeEnd() + kRecordMiddle.size();
    if (!IsAt(record, kRecordStart) || !IsAt(record.substr(TimeEnd()), kRecordMiddle) || record.back() != '}') {
        return FirstFault(record, timeWidth, parts);
    }
    parts = {record.substr(kTimeOffset, timeWidth), record.substr(valueBegin, record.size() - valueBegin - 1)};
    return RecordFault::kNone;
}

bool ReadPaddedNumber(std::string_view quoted, double& number) {
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') return false;
    const char* next = quoted.data() + 1;
    const char* const end = quoted.data() + quoted.size() - 1;
    const bool isNegative = next != end && *next == '-';
    if (next != end && (*next == '-' || *next == '+')) ++next;
    if (next == end || !(IsDigit(*next) || *next == '.')) return false;
    while (end - next > 1 && *next == '0' && IsDigit(next[1])) ++next;  // the padding, which would take long
    if (ParseNumber(next, end, number) != end) return false;
    if (isNegative) number = -number;
    return true;
}

ValueFault TakePaddedString(std::string_view value, const RecordLayout& layout, std::string_view& text,
                            double& length) {
    if (!Take(value, kPaddedStart)) return ValueFault::kForm;
    if (layout.hasQuotedLength && !Take(value, "\"")) return ValueFault::kForm;
    const std::string_view digits = value.substr(0, layout.lengthDigits);
    value.remove_prefix(digits.size());
    if (layout.hasQuotedLength && !Take(value, "\"")) return ValueFault::kForm;
    const bool isLength = !digits.empty() && std::all_of(digits.begin(), digits.end(), IsDigit) &&
                          ParseNumber(digits.data(), digits.data() + digits.size(), length) != nullptr;
    if (!isLength || !Take(value, kPaddedMiddle) || !value.ends_with(kPaddedEnd)) return ValueFault::kForm;
    if (length > static_cast<double>(layout.maxLength)) return ValueFault::kLength;
    text = value.substr(0, layout.maxLength);
    return ValueFault::kNone;
}

}  // namespace zentor
