// The outline of a JSON text: a group for each object and array, a static node for each string, number and truth value,
// made while the document is written.
#pragma once

#include <memory>

#include "conversion/json/json_iterator.h"
#include "conversion/loss_watch.h"
#include "model/child_source.h"
#include "util/number_text.h"

namespace zentor {

// The nodes of the values of `top`. Nulls make none. `watch` must outlive the source.
std::unique_ptr<ZT_PLUGIN::ChildSource> MakeJsonChildren(std::shared_ptr<JsonIterator> top, NumberForm form,
                                                         LossWatch& watch);

}  // namespace zentor
