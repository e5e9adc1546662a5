#include "writer/node_text.h"

#include <algorithm>
#include <utility>

#include "format/words.h"

namespace zentor {

using ZT_PLUGIN::DynamicKind;
using ZT_PLUGIN::DynamicNodeView;
using ZT_PLUGIN::ElementRange;
using ZT_PLUGIN::Interpolation;
using ZT_PLUGIN::kUnsetCount;
using ZT_PLUGIN::MinMax;
using ZT_PLUGIN::NumberArray;
using ZT_PLUGIN::NumberPattern;
using ZT_PLUGIN::StaticKind;
using ZT_PLUGIN::StaticNodeView;
using ZT_PLUGIN::StringProperties;

namespace {

// What a node of a kind begins with, up to the text of its match name.
template <FixedText objectType>
constexpr auto kNodeStart =
    kJoined<"{", kKey<words::kObjectType>, kQuoted<objectType>, kNextKey<words::kMatchName>, "\"">;

// What every node begins with: `start` up to the match name, then the names, without the last quote.
template <std::size_t N>
void AppendNames(TextBuffer& text, const FixedText<N>& start, std::string_view matchName,
                 std::string_view displayName) {
    constexpr auto kBetween = kJoined<"\"", kNextKey<words::kDisplayName>, "\"">;
    std::string rooms[2];  // which allocate nothing unless they are needed
    matchName = EscapeText(matchName, text.form().texts, Brackets::kPlain, rooms[0]);
    displayName = EscapeText(displayName, text.form().texts, Brackets::kPlain, rooms[1]);
    if (N + matchName.size() + kBetween.size() + displayName.size() > TextRun::kMost) {
        text.Append(start);
        text.Append(matchName);
        text.Append(kBetween);
        text.Append(displayName);
        return;
    }
    text.AppendRun([&](TextRun& run) {
        run.Put(start);
        run.Put(matchName);
        run.Put(kBetween);
        run.Put(displayName);
    });
}

void PutPattern(TextRun& run, const NumberPattern& pattern) {
    run.Put(kJoined<kKey<words::kPattern>, "{", kKey<words::kIsSigned>>);
    run.PutBoolean(pattern.isSigned);
    if (pattern.digitsDecimal != kUnsetCount) {
        run.Put(kNextKey<words::kDigitsDecimal>);
        run.PutCount(pattern.digitsDecimal);
    }
    if (pattern.digitsInteger != kUnsetCount) {
        run.Put(kNextKey<words::kDigitsInteger>);
        run.PutCount(pattern.digitsInteger);
    }
    run.Put('}');
}

void PutMinMax(TextRun& run, const NumberText& minimum, const NumberText& maximum) {
    run.Put(kJoined<"{", kKey<words::kMin>>);
    run.Put(minimum);
    run.Put(kNextKey<words::kMax>);
    run.Put(maximum);
    run.Put('}');
}

// Without samples a number occupies nothing but zero; without a legal range it may occupy what it does.
void PutRange(TextRun& run, const ElementRange& range) {
    const MinMax occurring = range.occurring.IsKnown() ? range.occurring : MinMax{0, 0};
    const MinMax& legal = range.legal.IsKnown() ? range.legal : occurring;
    run.Put(kJoined<"{", kKey<words::kOccurring>>);
    PutMinMax(run, run.Format(occurring.minimum), run.Format(occurring.maximum));
    run.Put(kNextKey<words::kLegal>);
    PutMinMax(run, run.Format(legal.minimum), run.Format(legal.maximum));
    run.Put('}');
}

// The range of a fixed value: it occupies just that value; what is legal when nothing is known, too.
void PutRange(TextRun& run, const NumberText& value, const MinMax& legal) {
    run.Put(kJoined<"{", kKey<words::kOccurring>>);
    PutMinMax(run, value, value);
    run.Put(kNextKey<words::kLegal>);
    if (legal.IsKnown()) {
        PutMinMax(run, run.Format(legal.minimum), run.Format(legal.maximum));
    } else {
        PutMinMax(run, value, value);
    }
    run.Put('}');
}

NumberPattern PatternOf(std::string_view number) {
    const DigitCounts digits = CountDigits(number);
    return {digits.integer, digits.decimal, digits.isNegative};
}

// Wide enough for every element.
NumberPattern PatternOf(const NumberArray& array, NumberForm form) {
    NumberPattern widest{0, 0, false};
    for (const double value : array.values) {
        const NumberPattern one = PatternOf(FormatNumber(value, form).view());
        widest.digitsInteger = std::max(widest.digitsInteger, one.digitsInteger);
        widest.digitsDecimal = std::max(widest.digitsDecimal, one.digitsDecimal);
        widest.isSigned = widest.isSigned || one.isSigned;
    }
    return widest;
}

void PutNumber(TextRun& run, const StaticNodeView& node) {
    const NumberText number = node.numberText.length != 0 ? node.numberText : run.Format(node.number);
    run.Put(kJoined<kQuoted<words::kNumber>, ",", kKey<words::kNumberStringProperties>, "{">);
    PutPattern(run, node.pattern.IsKnown() ? node.pattern : PatternOf(number.view()));
    run.Put(kNextKey<words::kRange>);
    PutRange(run, number, node.legalRange);
    run.Put(kJoined<"}},", kKey<words::kValue>>);
    run.Put(number);
}

void PutStringProperties(TextRun& run, const StringProperties& properties) {
    run.Put(kJoined<kNextKey<words::kPaddedStringProperties>, "{">);
    if (properties.maxDigitsInLength != kUnsetCount) {
        run.Put(kKey<words::kMaxDigitsInStrLength>);
        run.PutCount(properties.maxDigitsInLength);
        run.Put(',');
    }
    if (properties.maxLength != kUnsetCount) {
        run.Put(kKey<words::kMaxLen>);
        run.PutCount(properties.maxLength);
        run.Put(',');
    }
    run.Put(kKey<words::kEventMarker>);
    run.PutBoolean(properties.isEventMarker);
    run.Put("}}");
}

void PutBoolean(TextRun& run, bool value) {
    run.Put(kJoined<kQuoted<words::kBoolean>, "},", kKey<words::kValue>>);
    run.PutBoolean(value);
}

// Calls `append` for 0 to count - 1, with a comma before every one but the first.
template <class AppendOne>
void AppendList(TextBuffer& text, std::size_t count, AppendOne&& append) {
    text.Append('[');
    for (std::size_t k = 0; k < count; ++k) {
        if (k != 0) text.Append(',');
        append(k);
    }
    text.Append(']');
}

// The properties of an array after the type word, up to the end of the data type; `putRange` puts that of one element.
template <class PutRangeOf>
void AppendArrayProperties(TextBuffer& text, const NumberPattern& pattern, std::size_t size,
                           std::span<const std::string> displayNames, bool isPoint, PutRangeOf&& putRange) {
    text.Append(kJoined<kNextKey<words::kNumberArrayProperties>, "{">);
    text.AppendRun([&](TextRun& run) { PutPattern(run, pattern); });
    text.Append(kJoined<kNextKey<words::kArrayRanges>, "{", kKey<words::kRanges>>);
    AppendList(text, size, [&](std::size_t k) { text.AppendRun([&](TextRun& run) { putRange(run, k); }); });
    text.Append(kJoined<"},", kKey<words::kArraySize>>);
    text.AppendRun([size](TextRun& run) { run.PutCount(size); });
    text.Append(kNextKey<words::kArrayDisplayNames>);
    AppendList(text, displayNames.size(), [&](std::size_t k) { text.AppendQuoted(displayNames[k]); });
    if (isPoint) text.Append(kJoined<kNextKey<words::kIsPoint>, "true">);
    text.Append("}}");
}

void AppendNumberArray(TextBuffer& text, const NumberArray& array) {
    const std::size_t size = array.values.size();
    text.Append(kQuoted<words::kNumberArray>);
    AppendArrayProperties(text, array.pattern.IsKnown() ? array.pattern : PatternOf(array, text.form().numbers), size,
                          array.displayNames, array.isPoint, [&](TextRun& run, std::size_t k) {
                              PutRange(run, run.Format(array.values[k]),
                                       array.legalRanges.empty() ? MinMax() : array.legalRanges[k]);
                          });
    text.Append(kNextKey<words::kValue>);
    AppendList(text, size, [&](std::size_t k) { text.AppendNumber(array.values[k]); });
}

}  // namespace

void AppendGroupStart(TextBuffer& text, std::string_view matchName, std::string_view displayName) {
    AppendNames(text, kNodeStart<words::kDataGroup>, matchName, displayName);
    text.Append(kJoined<"\"", kNextKey<words::kChildren>, "[">);
}

void AppendStaticNode(TextBuffer& text, const StaticNodeView& node) {
    AppendNames(text, kNodeStart<words::kDataStatic>, node.matchName, node.displayName);
    constexpr auto kType = [](TextRun& run) {
        run.Put(kJoined<"\"", kNextKey<words::kDataType>, "{", kKey<words::kType>>);
    };
    switch (node.kind) {
        case StaticKind::kNumber:
            text.AppendRun([&](TextRun& run) {
                kType(run);
                PutNumber(run, node);
            });
            break;
        case StaticKind::kString:
            text.AppendRun([&](TextRun& run) {
                kType(run);
                run.Put(kQuoted<words::kString>);
                PutStringProperties(run, node.stringProperties);
                run.Put(kNextKey<words::kValue>);
            });
            text.AppendQuoted(node.text);
            break;
        case StaticKind::kNumberArray:
            text.AppendRun(kType);
            AppendNumberArray(text, *node.array);
            break;
        case StaticKind::kBoolean:
            text.AppendRun([&](TextRun& run) {
                kType(run);
                PutBoolean(run, node.boolean);
            });
            break;
    }
    text.Append('}');
}

void AppendDynamicNode(TextBuffer& text, const DynamicNodeView& node) {
    AppendNames(text, kNodeStart<words::kDataDynamic>, node.matchName, node.displayName);
    text.Append(kJoined<"\"", kNextKey<words::kSampleSetId>>);
    text.AppendQuoted(node.sampleSetId, Brackets::kEscaped);
    text.AppendRun([&](TextRun& run) {
        run.Put(kJoined<kNextKey<words::kInterpolation>, "\"">);
        run.Put(node.interpolation == Interpolation::kLinear ? std::string_view(words::kLinear)
                                                             : std::string_view(words::kHold));
        run.Put(kJoined<"\"", kNextKey<words::kHasExpectedFrequency>>);
        run.PutBoolean(node.hasExpectedFrequency);
        run.Put(kNextKey<words::kSampleCount>);
        run.PutCount(node.sampleCount);
    });
    if (node.hasExpectedFrequency) {
        text.Append(kNextKey<words::kMaxInterSampleDuration>);
        text.AppendQuoted(node.maxInterSampleDuration);
    }
    text.Append(kJoined<kNextKey<words::kDataType>, "{", kKey<words::kType>>);
    switch (node.kind) {
        case DynamicKind::kNumber:
            text.AppendRun([&](TextRun& run) {
                run.Put(kJoined<kQuoted<words::kNumberString>, ",", kKey<words::kNumberStringProperties>, "{">);
                PutPattern(run, node.pattern);
                run.Put(kNextKey<words::kRange>);
                PutRange(run, node.ranges.front());
                run.Put("}}");
            });
            break;
        case DynamicKind::kString:
            text.Append(kQuoted<words::kPaddedString>);
            text.AppendRun([&](TextRun& run) { PutStringProperties(run, node.stringProperties); });
            break;
        case DynamicKind::kNumberArray:
            text.Append(kQuoted<words::kNumberStringArray>);
            AppendArrayProperties(text, node.pattern, node.ranges.size(), node.displayNames, node.isPoint,
                                  [&](TextRun& run, std::size_t k) { PutRange(run, node.ranges[k]); });
            break;
    }
    text.Append('}');
}

}  // namespace zentor
