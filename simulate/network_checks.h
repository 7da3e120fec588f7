// The checks before meshing: node numbers, exits, entries, surface flags, duplicates.
#pragma once

#include "core/workspace.h"

namespace galeris {

void CheckNetwork(Workspace& ws);

}  // namespace galeris
