#include "units.h"

#include <algorithm>

#include "words.h"

namespace series {

namespace {

struct KnownTimeUnit {
    std::string_view words;  // with a blank before and behind each
    TimeUnit unit;
};

constexpr KnownTimeUnit kTimeUnits[] = {
    {" s sec secs second seconds sekunde sekunden seg segundos secondes secondi ", {0, 1}},
    {" ms msec msecs milli millis millisecond milliseconds millisekunden ", {3, 1}},
    {" us usec usecs \xC2\xB5s \xCE\xBCs micro micros microsecond microseconds mikrosekunden ", {6, 1}},
    {" ns nsec nsecs nano nanos nanosecond nanoseconds nanosekunden ", {9, 1}},
    {" min mins minute minutes minuten ", {0, 60}},
    {" h hr hrs hour hours stunde stunden ", {0, 3600}},
    {" d day days tage ", {0, 86400}},
};

constexpr std::string_view kUnits =
    " m mm cm km um nm in ft g kg mg lb n kn nm pa kpa mpa hpa bar mbar psi v mv kv a ma ka w kw mw wh kwh ohm k c f "
    "hz "
    "khz mhz ghz db dba dbm rpm deg rad degrees l ml ppm ppb lux lx j kj t mt gauss bpm counts count % \xC2\xB0 "
    "\xC2\xB0"
    "c \xC2\xB0"
    "f ";

bool IsAmong(std::string_view word, std::string_view words) {
    return !word.empty() && word.find(' ') == std::string_view::npos &&
           words.find(' ' + Lower(word) + ' ') != std::string_view::npos;
}

bool AreBrackets(char first, char last) {
    return (first == '(' && last == ')') || (first == '[' && last == ']') || (first == '{' && last == '}') ||
           (first == '<' && last == '>');
}

}  // namespace

std::optional<TimeUnit> TimeUnitOf(std::string_view word) {
    for (const KnownTimeUnit& known : kTimeUnits) {
        if (IsAmong(word, known.words)) return known.unit;
    }
    return std::nullopt;
}

std::string_view WithoutBrackets(std::string_view unit) {
    unit = Trimmed(unit);
    if (unit.size() > 1 && AreBrackets(unit.front(), unit.back())) return Trimmed(unit.substr(1, unit.size() - 2));
    return unit;
}

bool LooksLikeUnit(std::string_view cell) {
    const std::string_view text = Trimmed(cell);
    const std::string_view unit = WithoutBrackets(text);
    if (unit.empty() || unit.size() != text.size()) return true;
    if (TimeUnitOf(unit) || IsAmong(unit, kUnits)) return true;
    constexpr std::size_t kLongest = 12;
    constexpr std::string_view kMarks[] = {"/", "\xC2\xB0", "\xC2\xB2", "\xC2\xB3", "^", "%", "\xC2\xB5"};
    return unit.size() <= kLongest && unit.find(' ') == std::string_view::npos &&
           std::any_of(std::begin(kMarks), std::end(kMarks),
                       [unit](std::string_view mark) { return unit.find(mark) != std::string_view::npos; });
}

std::string_view BracketedUnit(std::string_view name) {
    const std::string_view text = Trimmed(name);
    if (text.empty()) return {};
    const std::size_t open = text.find_last_of("([{<");
    if (open == std::string_view::npos || !AreBrackets(text[open], text.back())) return {};
    return Trimmed(text.substr(open + 1, text.size() - open - 2));
}

}  // namespace series
