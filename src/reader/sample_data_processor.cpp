#include "reader/sample_data_processor.h"

#include "errors/raise.h"
#include "format/words.h"
#include "reader/bracket_search.h"
#include "reader/sample_gallop.h"
#include "reader/sample_index.h"

namespace zentor {

std::size_t ZT_SampleDataProcessor::TakeSamples(std::string_view bytes, std::size_t begin, bool gallop) {
    begin_ = begin;
    if (gallop) {
        if (const auto end = GallopOverSamples(bytes, begin)) {
            hasGalloped_ = true;
            return end_ = *end;
        }
    }
    std::size_t depth = 0;
    end_ = begin + FindClosingBracket(bytes.substr(begin), depth);
    if (depth != 0) {
        Raise({kInvalidJson, static_cast<std::int64_t>(bytes.size())}, Quoted(words::kDataDynamicSamples));
    }
    return end_;
}

void ZT_SampleDataProcessor::IndexSamples(std::string_view bytes, const TimeForm& form, OutlineContents& outline) {
    if (end_ == 0) return;
    for (SampleSet& set : outline.sets) set.layout.timeWidth = form.Width();
    IndexSampleSets(bytes, begin_, end_, outline);
    places_.reserve(outline.sets.size());
    for (const SampleSet& set : outline.sets) places_.push_back(set.place);
}

}  // namespace zentor
