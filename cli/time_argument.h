// Times that a person asks for: seconds, or time strings of a document.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "zentor/time_form.h"
#include "zentor/zentor.h"

namespace zentor_cli {

// A time as the document's time strings can say it.
struct Moment {
    std::int64_t whole = 0;  // frames, or seconds since 1970
    std::string decimals;    // of the second, as many as the time strings have

    zentor::Instant Get() const { return {whole, decimals}; }
    // Between two whole seconds.
    bool IsBroken() const { return decimals.find_first_not_of('0') != std::string::npos; }
};

class TimeArguments {
public:
    // `sampleTime`: one of the document's, which shows how many decimals they have; empty when there is none.
    TimeArguments(const zentor::TimeForm& form, std::string sampleTime);

    // Seconds such as 1.5, 3/2 or -2, from midnight or from 1970 on, or a time string of the document's form. What the
    // document cannot say is cut off, as the library does it. Throws WrongUsage, which names the option.
    Moment Parse(const std::string& option, const std::string& text) const;
    zentor::Instant ParseSampleTime(std::string_view time) const;
    // Dates, rather than time codes.
    bool AreDates() const { return form_.Rate() == nullptr; }

    // Times for the library, which takes 32 bits. They say frames, but only whole seconds of dates, and of those what
    // is nearest within 32 bits.
    ZT_Time AtOrBefore(const Moment& moment) const { return QueryTime(moment.whole); }
    ZT_Time AtOrAfter(const Moment& moment) const { return QueryTime(moment.whole + (moment.IsBroken() ? 1 : 0)); }

private:
    Moment CutDown(std::int64_t seconds, std::string digits) const;
    Moment CutDown(std::int64_t value, std::uint32_t scale) const;
    ZT_Time QueryTime(std::int64_t whole) const;

    zentor::TimeForm form_;
    std::string sampleTime_;
    std::size_t decimals_;
};

}  // namespace zentor_cli
