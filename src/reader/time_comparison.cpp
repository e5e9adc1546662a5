#include "reader/time_comparison.h"

#include "errors/raise.h"
#include "zentor/utc_time.h"

namespace zentor {

namespace {

int Sign(std::strong_ordering order) {
    if (std::is_lt(order)) return -1;
    return std::is_gt(order) ? 1 : 0;
}

std::string_view WithoutTrailingZeros(std::string_view decimals) {
    return decimals.substr(0, decimals.find_last_not_of('0') + 1);
}

}  // namespace

int CompareUTCTime(std::string_view left, std::string_view right) {
    UtcTime a;
    UtcTime b;
    if (!ParseUtc(left, a) || !ParseUtc(right, b)) Raise(kInvalidInputTime, Quoted("CompareUTCTime"));
    if (a.seconds != b.seconds) return Sign(a.seconds <=> b.seconds);
    return Sign(WithoutTrailingZeros(a.decimals) <=> WithoutTrailingZeros(b.decimals));
}

int CompareSMPTETime(std::string_view left, std::string_view right, const FrameRate& rate) {
    std::int64_t a = 0;
    std::int64_t b = 0;
    if (!ParseTimeCode(left, rate, a) || !ParseTimeCode(right, rate, b)) {
        Raise(kInvalidInputTime, Quoted("CompareSMPTETime"));
    }
    return Sign(a <=> b);
}

}  // namespace zentor
