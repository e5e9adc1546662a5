// Which column has the times.
#pragma once

#include <vector>

#include "dialect.h"
#include "header.h"
#include "options.h"
#include "time_column.h"

namespace series {

// By names and by values that rise; the options decide where they say something. Two readings when the head cannot tell
// days and months apart. Throws Refusal when there is no such column, or when two are equally good.
std::vector<TimeReading> ChooseTime(const Dialect& dialect, const Header& header, const Options& options);

}  // namespace series
