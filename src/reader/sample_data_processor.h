// The samples of a document, which are not parsed when it is opened but found by arithmetic when they are asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "reader/outline_contents.h"
#include "zentor/time_form.h"

namespace zentor {

class ZT_SampleDataProcessor {
public:
    // Takes the array that begins with the "[" at `begin`; returns where it ends, after the "]". `gallop`: looks at few
    // of the records where they have the usual form, and what follows has to confirm the end; else every square bracket
    // counts, also in strings. Code ZT_INVALID_JSON at the end of the bytes without it.
    std::size_t TakeSamples(std::string_view bytes, std::size_t begin, bool gallop);
    bool HasGalloped() const { return hasGalloped_; }

    // When the outline and the time information are known: finds the sets in the array, if there is one. Codes of
    // IndexSampleSets.
    void IndexSamples(std::string_view bytes, const TimeForm& form, OutlineContents& outline);

    // Where the samples of a dynamic node are, by its number.
    SamplePlace PlaceOf(std::uint64_t number) const {
        return number < places_.size() ? places_[number] : SamplePlace();
    }

private:
    bool hasGalloped_ = false;
    std::size_t begin_ = 0;  // of the array, in the document
    std::size_t end_ = 0;
    std::vector<SamplePlace> places_;  // by the numbers of the dynamic nodes; empty without samples
};

}  // namespace zentor
