// The simulation driver: the stages in their one order, with SimCancel and SimStatus tested
// between them, progress on the form, and the ends of a run.
#include "simulate/simulate.h"

#include <cmath>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "core/in_parts.h"

namespace galeris {
namespace {

constexpr std::uint8_t kCancel = 255;
// From this many airways on, work that can run beside other work gets a thread of its own.
constexpr int kBesideAirways = 2000;

bool Cancelled(const Workspace& ws) {
  return ws.sim.SimCancel == kCancel;
}

// The plain answer of a diagnostic command that found nothing.
void ReportCleanDiagnostic(Workspace& ws) {
  switch (ws.sim.SimMode) {
    case kModeFindBulkheads:
      ws.ui.Inform("There are NO unnecessary bulkheads.");
      break;
    case kModeRemoveBulkheads:
      ws.ui.Inform("There were NO unnecessary bulkheads removed.");
      break;
    case kModeRestrictiveFans:
      ws.ui.Inform("There are NO fans that are being restricted by other fans.");
      break;
    default:
      break;
  }
}

bool NewtonBalances(const Workspace& ws) {
  return ws.sim.Method == SolverMethod::Newton && ws.sim.SimMode == kModeSimulate;
}

// Checks, meshing and the diagnostic answers; false when the run ends here. On a large network
// balanced by Newton, its system is planned on another core while the forest is grown and the
// meshes listed, from the chords the forest locks as a rule; NewtonFlows plans again in the
// rare case that it locked others.
bool PrepareMeshes(Workspace& ws, std::shared_ptr<NewtonPlan>& plan) {
  SimRun& run = ws.sim;
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  ShowSimProgress(ws, 10);
  SortAirways(ws);
  ShowSimProgress(ws, 20);
  ws.ui.Yield();
  CheckNetwork(ws);
  ShowSimProgress(ws, 30);
  ws.ui.Yield();
  if (Cancelled(ws)) return false;
  if (run.SimStatus == 1) {
    run.SimMode = kModeFindBulkheads;  // no later stage runs, and the error list stays
    return false;
  }
  std::optional<BesideJob> planning;
  if (NewtonBalances(ws) && ws.net.BranchCount >= kBesideAirways) {
    planning.emplace([&plan, ends = ExpectedNewtonEnds(ws.net, ws.defaults)]() mutable {
      plan = PlanNewton(std::move(ends));
    });
  }
  WeighAirways(ws);
  ShowSimProgress(ws, 40);
  if (Cancelled(ws)) return false;
  SetSimCaption(ws, "Meshing airways");
  BuildMeshes(ws);
  planning.reset();
  ShowSimProgress(ws, 50);
  ws.ui.Yield();
  if (Cancelled(ws)) return false;
  if (run.SimStatus == 0) ReportCleanDiagnostic(ws);
  return run.SimStatus != 1 && run.SimMode <= 0;
}

// Balancing and the results; false when a Cancel ended the run before the results.
bool SolveFlows(Workspace& ws, std::shared_ptr<NewtonPlan> plan) {
  BuildSimCurves(ws);
  ShowSimProgress(ws, 60);
  SetSimCaption(ws, "Balancing airflows");
  if (ws.sim.ShowProgress == 1) ws.ui.SetProgressLabels("", "");  // shown from here on
  // A run that ended balancing with SimStatus 1 goes on, so the user sees the best flows.
  // The diagnostic listing of non-converging airways is a Hardy Cross question.
  if (NewtonBalances(ws))
    NewtonFlows(ws, std::move(plan));
  else
    BalanceFlows(ws);
  ShowSimProgress(ws, 70);
  if (Cancelled(ws)) return false;
  ResolveFanLoads(ws);
  ShowSimProgress(ws, 80);
  if (Cancelled(ws)) return false;
  StoreAirwayPressures(ws);
  return true;
}

void ResolveResults(Workspace& ws) {
  SetSimCaption(ws, "Resolving Pressures");
  ws.ui.Yield();
  FinishRun(ws);
  ShowSimProgress(ws, 87);
  ResolveNodePressures(ws);
  ApplyFixedDirections(ws);
  // The self-check reads nothing the node links write, so on a large network it runs beside them.
  const bool beside = ws.net.BranchCount >= kBesideAirways;
  SolutionCheck check;
  RunInParts(beside ? 2 : 1, [&](int k) {
    if (k == 0) BuildNodeLinks(ws);
    if (k == 1 || !beside) check = CheckSolution(ws);
  });
  ShowSimProgress(ws, 100);
  ws.sim.Check = check;
  if (ws.sim.SimStatus == 0 && ws.sim.SimMode == kModeNonConverging)
    ws.ui.Inform("There are NO major convergence problems");
  ws.net.NetworkBalanced = -1;
}

}  // namespace

void ShowSimProgress(Workspace& ws, int percent) {
  if (ws.sim.ShowProgress == 1) ws.ui.SetProgress(percent);
  ws.ui.Yield();
}

void SetSimCaption(Workspace& ws, const char* caption) {
  ws.sim.FormCaption = caption;
  if (ws.sim.ShowProgress == 1) ws.ui.SetProgressCaption(caption);
}

void SimulateNetwork(Workspace& ws) {
  ShowSimProgress(ws, 0);
  SetSimCaption(ws, "Checking airways");
  ws.ui.Yield();
  std::shared_ptr<NewtonPlan> plan;
  if (!PrepareMeshes(ws, plan) || !SolveFlows(ws, std::move(plan))) {
    FinishRun(ws);
    return;
  }
  ResolveResults(ws);
}

SimOutcome RunSimulation(Workspace& ws) {
  SimRun& run = ws.sim;
  Network& net = ws.net;
  SimOutcome outcome;
  if (run.Running) return outcome;
  run.RestrictionFound = false;
  run.AirwayReversed = false;
  run.SimCancel = 0;
  if (net.BranchCount == 0) {
    ws.ui.Message("No data to simulate", MsgButtons::OK, MsgIcon::Exclamation);
    return outcome;
  }
  if (net.BranchCount == 1) {
    ws.ui.Message("Not enough data to simulate", MsgButtons::OK, MsgIcon::Exclamation);
    return outcome;
  }
  run.Running = true;
  ws.ui.SetBusy(true);
  ValidateFanCurves(ws);
  run.SimStatus = 0;
  run.MeshCount = 0;
  run.Sweeps = 0;
  run.Check = SolutionCheck{};
  net.Errorlist.clear();
  run.FormCaption = "Simulate";
  if (run.ShowProgress == 1) ws.ui.ShowProgress("Simulate");
  try {
    SimulateNetwork(ws);
  } catch (const std::exception& e) {
    // A stage ran past its arrays: the run ends with the store as it stands.
    run.SimStatus = 1;
    SetSimCaption(ws, "Simulation Failed !");
    ws.ui.Message(e.what(), MsgButtons::OK, MsgIcon::Critical, "Simulation stopped");
  }
  run.SimCancel = kCancel;  // loops that test it after the run stop at once
  if (run.ShowProgress == 1) ws.ui.HideProgress();
  outcome.Ran = true;
  outcome.ShowErrorList = !(run.SimStatus == 0 || run.SimMode == kModeRemoveBulkheads);
  if (run.SimStatus == 2) outcome.ErrorListCaption = "Warning-reversals";
  ws.ui.SetBusy(false);
  net.NetworkSaved = 0;
  run.Running = false;
  return outcome;
}

bool ReseedAirflows(Workspace& ws) {
  const auto answer = ws.ui.Input(
      "Re-seed airflows",
      "Warning !  This will re-seed all airways (except fixed airways) to a specified value.  "
      "Subsequent resimulation will allow Galeris to attempt to rebalance the network.\n"
      "Please enter your seed value",
      "10");
  if (!answer || answer->find_first_not_of(" \t") == std::string::npos) return false;
  const char* text = answer->c_str();
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (end == text || !std::isfinite(value) || std::fabs(value) > 1e30) {
    ws.ui.Message("The seed value must be a number", MsgButtons::OK, MsgIcon::Exclamation,
                  "Re-seed airflows");
    return false;
  }
  const float seed = static_cast<float>(std::trunc(value));
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (!(net.BranchCode[i] & Bit::FixedQuantity)) net.Quantity[i] = seed;
  return true;
}

}  // namespace galeris
