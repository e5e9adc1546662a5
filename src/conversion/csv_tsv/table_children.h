// The outline of a table: a group for each column, a static node for each cell, made while the document is written.
#pragma once

#include <cstdint>
#include <memory>

#include "conversion/converter_base.h"
#include "conversion/csv_tsv/table_index.h"
#include "conversion/loss_watch.h"
#include "model/child_source.h"

namespace zentor {

// The groups of the columns in header order. What it is given must outlive the source. The row positions of the
// table move along with the columns, so that a table is walked once.
std::unique_ptr<ZT_PLUGIN::ChildSource> MakeTableChildren(const ZT_ConverterHandlerBase& converter, TableIndex& table,
                                                          LossWatch& watch);

}  // namespace zentor
