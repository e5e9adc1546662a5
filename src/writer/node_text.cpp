#include "writer/node_text.h"

#include <algorithm>
#include <utility>

namespace zentor {

using ZT_PLUGIN::kUnsetCount;
using ZT_PLUGIN::MinMax;
using ZT_PLUGIN::NumberArray;
using ZT_PLUGIN::NumberPattern;
using ZT_PLUGIN::StaticKind;
using ZT_PLUGIN::StaticNodeView;
using ZT_PLUGIN::StringProperties;

namespace {

void AppendCount(TextBuffer& text, std::uint64_t count) { text.AppendNumber(static_cast<double>(count)); }

void AppendPattern(TextBuffer& text, const NumberPattern& pattern) {
    text.Append("\"pattern\":{\"isSigned\":");
    text.AppendBoolean(pattern.isSigned);
    if (pattern.digitsDecimal != kUnsetCount) {
        text.Append(",\"digitsDecimal\":");
        AppendCount(text, pattern.digitsDecimal);
    }
    if (pattern.digitsInteger != kUnsetCount) {
        text.Append(",\"digitsInteger\":");
        AppendCount(text, pattern.digitsInteger);
    }
    text.Append('}');
}

void AppendMinMax(TextBuffer& text, std::string_view minimum, std::string_view maximum) {
    text.Append("{\"min\":");
    text.Append(minimum);
    text.Append(",\"max\":");
    text.Append(maximum);
    text.Append('}');
}

// The range of a fixed value: it occupies just that value; what is legal when nothing is known, too.
void AppendRange(TextBuffer& text, std::string_view value, const MinMax& legal) {
    text.Append("{\"occurring\":");
    AppendMinMax(text, value, value);
    text.Append(",\"legal\":");
    if (legal.IsKnown()) {
        AppendMinMax(text, FormatNumber(legal.minimum).view(), FormatNumber(legal.maximum).view());
    } else {
        AppendMinMax(text, value, value);
    }
    text.Append('}');
}

NumberPattern PatternOf(std::string_view number) {
    const DigitCounts digits = CountDigits(number);
    return {digits.integer, digits.decimal, digits.isNegative};
}

// Wide enough for every element.
NumberPattern PatternOf(const NumberArray& array) {
    NumberPattern widest{0, 0, false};
    for (const double value : array.values) {
        const NumberPattern one = PatternOf(FormatNumber(value).view());
        widest.digitsInteger = std::max(widest.digitsInteger, one.digitsInteger);
        widest.digitsDecimal = std::max(widest.digitsDecimal, one.digitsDecimal);
        widest.isSigned = widest.isSigned || one.isSigned;
    }
    return widest;
}

void AppendNumber(TextBuffer& text, const StaticNodeView& node) {
    const NumberText number = FormatNumber(node.number);
    text.Append("\"number\",\"numberStringProperties\":{");
    AppendPattern(text, node.pattern.IsKnown() ? node.pattern : PatternOf(number.view()));
    text.Append(",\"range\":");
    AppendRange(text, number.view(), node.legalRange);
    text.Append("}},\"value\":");
    text.Append(number);
}

void AppendString(TextBuffer& text, const StaticNodeView& node) {
    const StringProperties& properties = node.stringProperties;
    text.Append("\"string\",\"paddedStringProperties\":{");
    if (properties.maxDigitsInLength != kUnsetCount) {
        text.Append("\"maxDigitsInStrLength\":");
        AppendCount(text, properties.maxDigitsInLength);
        text.Append(',');
    }
    if (properties.maxLength != kUnsetCount) {
        text.Append("\"maxLen\":");
        AppendCount(text, properties.maxLength);
        text.Append(',');
    }
    text.Append("\"eventMarkerB\":");
    text.AppendBoolean(properties.isEventMarker);
    text.Append("}},\"value\":");
    text.AppendQuoted(node.text);
}

void AppendBoolean(TextBuffer& text, const StaticNodeView& node) {
    text.Append("\"boolean\"},\"value\":");
    text.AppendBoolean(node.boolean);
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

void AppendNumberArray(TextBuffer& text, const StaticNodeView& node) {
    const NumberArray& array = *node.array;
    const std::size_t size = array.values.size();
    text.Append("\"numberArray\",\"numberArrayProperties\":{");
    AppendPattern(text, array.pattern.IsKnown() ? array.pattern : PatternOf(array));
    text.Append(",\"arrayRanges\":{\"ranges\":");
    AppendList(text, size, [&](std::size_t k) {
        const MinMax legal = array.legalRanges.empty() ? MinMax() : array.legalRanges[k];
        AppendRange(text, FormatNumber(array.values[k]).view(), legal);
    });
    text.Append("},\"arraySize\":");
    AppendCount(text, size);
    text.Append(",\"arrayDisplayNames\":");
    AppendList(text, array.displayNames.size(), [&](std::size_t k) { text.AppendQuoted(array.displayNames[k]); });
    if (array.isPoint) text.Append(",\"isPoint\":true");
    text.Append("}},\"value\":");
    AppendList(text, size, [&](std::size_t k) { text.AppendNumber(array.values[k]); });
}

}  // namespace

void AppendNodeStart(TextBuffer& text, std::string_view objectType, std::string_view matchName,
                     std::string_view displayName) {
    text.Append("{\"objectType\":\"");
    text.Append(objectType);
    text.Append("\",\"matchName\":\"");
    text.Append(matchName);
    text.Append("\",\"displayName\":\"");
    text.Append(displayName);
    text.Append('"');
}

void AppendStaticNode(TextBuffer& text, const StaticNodeView& node) {
    AppendNodeStart(text, "dataStatic", node.matchName, node.displayName);
    text.Append(",\"dataType\":{\"type\":");
    switch (node.kind) {
        case StaticKind::kNumber:
            AppendNumber(text, node);
            break;
        case StaticKind::kString:
            AppendString(text, node);
            break;
        case StaticKind::kNumberArray:
            AppendNumberArray(text, node);
            break;
        case StaticKind::kBoolean:
            AppendBoolean(text, node);
            break;
    }
    text.Append('}');
}

}  // namespace zentor
