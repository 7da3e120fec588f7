// Sorting the store by location keys so that node matching can use binary search; the
// duplicate and zero-length clean-up runs between its two sorts.
#pragma once

#include "core/workspace.h"

namespace galeris {

void SortAirways(Workspace& ws);
void DeleteRedundantAirways(Workspace& ws);

// The order of the sort alone: airways by (EntryNodeId, ExitNodeId) downward, equal pairs in
// the order they stood. FromNodeP, ToNodeP and SmokeTime stay where they are, since every
// caller rebuilds them after sorting.
void SortByNodeKeys(Network& net);

}  // namespace galeris
