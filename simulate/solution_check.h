// The self-check of a solution: whatever method balanced the flows, the flows standing in the
// store must keep continuity at every node, and node pressures taken from them along a
// spanning tree must close on every other airway. It works from the node identities and the
// stored results alone, not from the solver's meshes, so that it checks the solver.
#pragma once

#include <string>

#include "core/workspace.h"

namespace galeris {

// Checks the flows and pressures in the store (node identities from RebuildNodes). Fixed
// quantities and blockages carry whatever pressure their loop needs: they count for
// continuity but close no loop.
SolutionCheck CheckSolution(const Workspace& ws);

// "continuity X m3/s loop Y Pa", as the command line and the windows show it.
std::string SolutionCheckText(const SolutionCheck& check);

}  // namespace galeris
