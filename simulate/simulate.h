// The simulation: one run of the stage pipeline from node identities to results in the store,
// for the airflow simulation and the five diagnostic commands that SimMode selects. The only
// way into the solver.
#pragma once

#include "core/workspace.h"
#include "simulate/balance_flows.h"
#include "simulate/fan_curves.h"
#include "simulate/mesh_builder.h"
#include "simulate/newton_flows.h"
#include "simulate/network_checks.h"
#include "simulate/pressures.h"
#include "simulate/solution_check.h"
#include "simulate/sort_airways.h"

namespace galeris {

// SimMode values, set by the caller before RunSimulation.
inline constexpr std::int16_t kModeSimulate = 0;
inline constexpr std::int16_t kModeNonConverging = -1;
inline constexpr std::int16_t kModeFindBulkheads = 1;
inline constexpr std::int16_t kModeRemoveBulkheads = 2;
inline constexpr std::int16_t kModeRestrictiveFans = 3;
inline constexpr std::int16_t kModeDuplicates = 4;

// What the desktop program does with its windows after a run.
struct SimOutcome {
  bool Ran = false;            // false when the run was refused (no data, or a run under way)
  bool ShowErrorList = false;  // frmError opens; otherwise it is unloaded
  const char* ErrorListCaption = "Sim Fail Error List";  // "Warning-reversals" for warnings
};

// Runs the pipeline as far as ws.sim.SimMode needs, with the progress form when
// ws.sim.ShowProgress is 1. Results stand in the store; faults are in ws.net.Errorlist.
SimOutcome RunSimulation(Workspace& ws);
// The stage sequence; called by RunSimulation only.
void SimulateNetwork(Workspace& ws);

// Paints the progress bar (when the form is shown) and yields once, where a Cancel arrives.
void ShowSimProgress(Workspace& ws, int percent);
// The progress form's caption, kept in ws.sim.FormCaption also in a quiet run.
void SetSimCaption(Workspace& ws, const char* caption);

// "Re-seed Airflows": asks for a seed and writes its whole part into every airway without a
// fixed quantity. True when the flows changed (the view is then redrawn).
bool ReseedAirflows(Workspace& ws);

}  // namespace galeris
