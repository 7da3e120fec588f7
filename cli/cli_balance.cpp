// Quiet balancing for the commands that need a solution.
#include "cli/cli_balance.h"

#include <memory>
#include <ostream>

#include "simulate/simulate.h"

namespace galeris::cli {
namespace {

constexpr int kMaxRounds = 10;

}  // namespace

int BalanceIfNeeded(CliContext& c) {
  Workspace& ws = c.ws;
  auto asked = std::make_shared<int>(0);
  std::ostream& err = c.err;
  HeadlessUi& ui = c.ui;
  ui.OnMessage([&err, &ui, asked](const UiRecord& r) {
    err << r.title << ": " << r.text << "\n";
    const bool bounded = r.title == "Convergence Warning" || r.title == "Convergence problem";
    // Balancing stops on No; the smoke mixing accepts its best guess on Yes.
    if (bounded && ++*asked > kMaxRounds)
      ui.QueueAnswer(r.title == "Convergence problem" ? MsgAnswer::Yes : MsgAnswer::No);
  });
  if (ws.net.NetworkBalanced != 0) return kExitOk;
  ws.sim.ShowProgress = 0;
  ws.sim.SimMode = kModeSimulate;
  const SimOutcome outcome = RunSimulation(ws);
  if (!outcome.Ran || ws.sim.SimStatus == 1 || ws.net.NetworkBalanced == 0) {
    for (const auto& line : ws.net.Errorlist) err << line << "\n";
    err << "galeris-sim: the network could not be balanced\n";
    return kExitFailed;
  }
  const bool warned = ws.sim.SimStatus == 2 || (ws.sim.Sweeps > 0 && !ws.sim.Converged);
  return warned ? kExitWarnings : kExitOk;
}

}  // namespace galeris::cli
