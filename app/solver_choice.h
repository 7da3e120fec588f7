// The solver choice of the Simulate menu and the self-check line of a finished run. The
// choice is the user's, kept in the per-user settings: network and defaults files don't hold it.
#pragma once

#include <QString>

#include "core/sim_run.h"

class QMenu;

namespace galeris {

// Adds "Solver" with "Hardy Cross" (mnuSolverHardyCross) and "Newton" (mnuSolverNewton) to the
// menu, puts the saved choice into run.Method and keeps every change in the settings.
void AddSolverMenu(QMenu* simulate, SimRun& run);

// The self-check of the flows a run left, as one line; empty when the run left no solution.
QString SolutionCheckLine(const SimRun& run);

}  // namespace galeris
