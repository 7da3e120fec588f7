// Sorting the store by location keys so that node matching can use binary search; the
// duplicate and zero-length clean-up runs between its two sorts.
#pragma once

#include "core/workspace.h"

namespace galeris {

void SortAirways(Workspace& ws);
void DeleteRedundantAirways(Workspace& ws);

}  // namespace galeris
