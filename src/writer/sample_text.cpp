#include "writer/sample_text.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "util/decimal_field.h"
#include "util/short_copy.h"

namespace zentor {

using ZT_PLUGIN::DynamicKind;
using ZT_PLUGIN::DynamicNodeView;
using ZT_PLUGIN::NumberPattern;
using ZT_PLUGIN::SampleBuffer;
using ZT_PLUGIN::SampleRecord;

namespace {

// Copies a literal: with a length that the compiler knows.
template <std::size_t N>
char* PutLiteral(char* out, const char (&literal)[N]) {
    std::memcpy(out, literal, N - 1);
    return out + N - 1;
}

char* PutZeros(char* out, std::size_t count) {
    for (std::size_t k = 0; k < count; ++k) out[k] = '0';
    return out + count;
}

// A number in quotes, with zeros before and after it as the pattern wants.
char* PutPadded(char* out, std::string_view number, const NumberPattern& pattern) {
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

std::size_t PaddedWidth(const NumberPattern& pattern) {
    return 2 + (pattern.isSigned ? 1 : 0) + pattern.digitsInteger +
           (pattern.digitsDecimal == 0 ? 0 : pattern.digitsDecimal + 1);
}

// Puts the records of one set.
class RecordText {
public:
    RecordText(const DynamicNodeView& node, std::size_t timeLength) : node_(node), timeLength_(timeLength) {}

    // Of every record, with a comma before it.
    std::size_t Width() const {
        constexpr std::size_t kFixed = 21;  // ,{"time":"","value":}
        return kFixed + timeLength_ + ValueWidth();
    }

    char* Put(char* out, const SampleRecord& record, bool isFirst) const {
        out = isFirst ? PutLiteral(out, "{\"time\":\"") : PutLiteral(out, ",{\"time\":\"");
        out = CopyShort(out, record.time);
        out = PutLiteral(out, "\",\"value\":");
        switch (node_.kind) {
            case DynamicKind::kNumber:
                out = PutPadded(out, record.value, node_.pattern);
                break;
            case DynamicKind::kNumberArray:
                out = PutArray(out, record.value);
                break;
            case DynamicKind::kString:
                out = PutString(out, record.value);
                break;
        }
        *out++ = '}';
        return out;
    }

private:
    std::size_t ValueWidth() const {
        switch (node_.kind) {
            case DynamicKind::kNumber:
                return PaddedWidth(node_.pattern);
            case DynamicKind::kNumberArray:
                return (PaddedWidth(node_.pattern) + 1) * node_.ranges.size() + 1;
            default:
                constexpr std::size_t kAround = 22;  // {"length":"","str":""}
                return kAround + node_.stringProperties.maxDigitsInLength + node_.stringProperties.maxLength;
        }
    }

    char* PutArray(char* out, std::string_view elements) const {
        char before = '[';
        for (std::size_t k = 0; k < node_.ranges.size(); ++k) {
            const std::size_t end = std::min(elements.find(','), elements.size());
            *out++ = before;
            before = ',';
            out = PutPadded(out, elements.substr(0, end), node_.pattern);
            elements.remove_prefix(std::min(end + 1, elements.size()));
        }
        *out++ = ']';
        return out;
    }

    char* PutString(char* out, std::string_view value) const {
        out = PutLiteral(out, "{\"length\":\"");
        out = PutDecimal(out, value.size(), node_.stringProperties.maxDigitsInLength);
        out = PutLiteral(out, "\",\"str\":\"");
        out = CopyShort(out, value);
        const std::size_t padding = node_.stringProperties.maxLength - value.size();
        std::memset(out, ' ', padding);
        return PutLiteral(out + padding, "\"}");
    }

    const DynamicNodeView& node_;
    std::size_t timeLength_;
};

}  // namespace

void AppendSampleSet(TextBuffer& text, const DynamicNodeView& node, std::size_t timeLength, SampleBuffer& samples) {
    text.Append("{\"sampleSetID\":");
    text.AppendQuoted(node.sampleSetId);
    text.Append(",\"samples\":[");
    const RecordText records(node, timeLength);
    std::string wide;  // a record that is too long for a run
    if (records.Width() > TextRun::kMost) wide.resize(records.Width());
    bool isFirst = true;
    samples.Drain([&](std::string_view block) {
        SampleRecord record;
        while (SampleBuffer::TakeRecord(block, timeLength, record)) {
            if (wide.empty()) {
                text.AppendRun([&](TextRun& run) { run.MoveTo(records.Put(run.end(), record, isFirst)); });
            } else {
                const char* const end = records.Put(wide.data(), record, isFirst);
                text.Append({wide.data(), static_cast<std::size_t>(end - wide.data())});
            }
            isFirst = false;
        }
    });
    text.Append("]}");
}

}  // namespace zentor
