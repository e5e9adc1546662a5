// Finds the end of the samples of a document without reading them.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace zentor {

// The array of sample sets begins with the "[" at `begin`. Where it has the form that writers give it, the offset after
// its "]": records of one set are equally long, so that after the first one the last one is found by looking at few
// others. Nothing where it has another form; and the outline has to confirm what was found, because what looks like
// records may be something else.
std::optional<std::size_t> GallopOverSamples(std::string_view bytes, std::size_t begin);

}  // namespace zentor
