// Choosing the spanning forest and building one mesh per chord.
#pragma once

#include "core/workspace.h"

namespace galeris {

void WeighAirways(Workspace& ws);
void BuildMeshes(Workspace& ws);

}  // namespace galeris
