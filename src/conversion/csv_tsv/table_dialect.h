// Signs that a table was written in another way than it is read.
#pragma once

#include "conversion/csv_tsv/table_index.h"
#include "conversion/loss_watch.h"

namespace zentor {

// Looks at the beginning of a table for other delimiters, quoted cells, decimal commas, title lines, numbers where
// names should be and files of other formats, and makes a notice of each.
void TellDialect(const TableIndex& table, const LossWatch& watch);

}  // namespace zentor
