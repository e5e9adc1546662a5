#include "document_times.h"

#include "text_output.h"

namespace zentor_cli {

namespace {

bool IsBefore(const std::string& left, const std::string& right, const zentor::TimeForm& form) {
    zentor::Instant leftTime;
    zentor::Instant rightTime;
    return form.Parse(left, leftTime) && form.Parse(right, rightTime) && leftTime < rightTime;
}

}  // namespace

std::optional<zentor::TimeForm> TimeFormOf(const FileInfo& info) {
    switch (info.timeMode) {
        case ZT_TIME_MODE_UTC:
            return zentor::TimeForm(zentor::TimeForm::Utc{info.precisionLength, info.isGmt});
        case ZT_TIME_MODE_TIMECODE:
            if (info.frameRateValue == 0) {
                return zentor::TimeForm(zentor::FrameRateNear(info.framesPerSecond, info.dropFrame));
            }
            return zentor::TimeForm(zentor::FrameRate{info.frameRateValue, info.frameRateScale, info.dropFrame});
        default:
            return std::nullopt;
    }
}

void Widen(TimeSpan& span, const TimeSpan& other, const zentor::TimeForm& form) {
    if (other.first.empty()) return;
    if (span.first.empty() || IsBefore(other.first, span.first, form)) span.first = other.first;
    if (span.last.empty() || IsBefore(span.last, other.last, form)) span.last = other.last;
}

std::string Describe(const TimeSpan& span) { return Printable(span.first) + " to " + Printable(span.last); }

void WriteMembers(JsonOutput& json, const TimeSpan& span) {
    if (span.first.empty()) return;
    json.Member("firstTime", span.first);
    json.Member("lastTime", span.last);
}

}  // namespace zentor_cli
