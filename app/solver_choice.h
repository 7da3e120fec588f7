// The solver choice of the Simulate menu and the self-check shown at the end of a run. The
// choice is the user's, kept in the per-user settings: network and defaults files don't hold it.
#pragma once

#include "core/sim_run.h"

class QMenu;
class QWidget;

namespace galeris {

// Adds "Solver" with "Hardy Cross" (mnuSolverHardyCross) and "Newton" (mnuSolverNewton) to the
// menu, puts the saved choice into run.Method and keeps every change in the settings.
void AddSolverMenu(QMenu* simulate, SimRun& run);

// After a run that left a solution, frmSimForm (a child of frame) stays open with the
// self-check of the flows; nothing happens when the progress form isn't a Qt window.
void ShowSolutionCheck(QWidget* frame, const SimRun& run);

}  // namespace galeris
