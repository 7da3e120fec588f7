// The checks before meshing: node numbers, exits, entries, surface flags, duplicates.
#pragma once

#include "core/workspace.h"

namespace galeris {

// Needs the store sorted. Leaves EntryNodeNo, ExitNodeNo and NodeCount, clears NodeGroup,
// NodeParent and SmokeQueue, lists every fault, and returns CheckErrors; SmokeQueue[1..] then
// holds the positions of the duplicated airways.
int CheckNetwork(Workspace& ws);

// The exit-end search on the store's downward-running entry keys: the position whose
// EntryNodeId is `key`, or 0 when none is.
int FindEntryPosition(const Network& net, Key key);

}  // namespace galeris
