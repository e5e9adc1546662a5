#include "writer/sample_text.h"

#include <string>

#include "format/sample_record.h"
#include "format/words.h"

namespace zentor {

using ZT_PLUGIN::ByteRange;
using ZT_PLUGIN::DynamicKind;
using ZT_PLUGIN::DynamicNodeView;
using ZT_PLUGIN::SampleBuffer;
using ZT_PLUGIN::SampleRecord;

namespace {

RecordLayout LayoutOf(const DynamicNodeView& node, std::size_t timeLength) {
    RecordLayout layout;
    layout.timeWidth = timeLength;
    switch (node.kind) {
        case DynamicKind::kNumber:
            layout.kind = SampleKind::kNumber;
            break;
        case DynamicKind::kNumberArray:
            layout.kind = SampleKind::kNumberArray;
            layout.arraySize = node.ranges.size();
            break;
        case DynamicKind::kString:
            layout.kind = SampleKind::kPaddedString;
            layout.maxLength = node.stringProperties.maxLength;
            layout.lengthDigits = node.stringProperties.maxDigitsInLength;
            return layout;
    }
    layout.pattern = {node.pattern.isSigned, node.pattern.digitsInteger, node.pattern.digitsDecimal};
    return layout;
}

}  // namespace

ByteRange AppendSampleSet(TextBuffer& text, const DynamicNodeView& node, std::size_t timeLength,
                          SampleBuffer& samples) {
    text.Append(kJoined<"{", kKey<words::kSampleSetId>>);
    text.AppendQuoted(node.sampleSetId, Brackets::kEscaped);
    text.Append(kJoined<kNextKey<words::kSamples>, "[">);
    const std::uint64_t begin = text.Position();
    const RecordLayout layout = LayoutOf(node, timeLength);
    std::string wide;  // a record that is too long for a run
    if (layout.Width() >= TextRun::kMost) wide.resize(layout.Width());
    bool isFirst = true;
    ZT_PLUGIN::RecordReader records(timeLength);
    samples.Drain([&](std::string_view block) {
        SampleRecord record;
        while (records.Take(block, record)) {
            if (wide.empty()) {
                text.AppendRun([&](TextRun& run) {
                    if (!isFirst) run.Put(',');
                    run.MoveTo(layout.Put(run.end(), record.time, record.value));
                });
            } else {
                if (!isFirst) text.Append(',');
                const char* const end = layout.Put(wide.data(), record.time, record.value);
                text.Append({wide.data(), static_cast<std::size_t>(end - wide.data())});
            }
            isFirst = false;
        }
    });
    const std::uint64_t end = text.Position();
    text.Append("]}");
    return {begin, end};
}

}  // namespace zentor
