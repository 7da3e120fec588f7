// galeris-sim solve: runs the simulation (or one of its diagnostic commands) on a network file,
// prints the error list and a summary line, and can write the solved network.
#include <charconv>
#include <memory>
#include <ostream>

#include "cli/cli_command.h"
#include "files/network_file.h"
#include "simulate/simulate.h"

namespace galeris::cli {
namespace {

constexpr int kDefaultMaxRounds = 10;

bool ParseMode(const std::string& text, std::int16_t& mode) {
  static const struct {
    const char* name;
    std::int16_t mode;
  } kModes[] = {{"simulate", kModeSimulate},
                {"converge", kModeNonConverging},
                {"find-bulkheads", kModeFindBulkheads},
                {"remove-bulkheads", kModeRemoveBulkheads},
                {"restrictive-fans", kModeRestrictiveFans},
                {"duplicates", kModeDuplicates}};
  if (text.empty()) {
    mode = kModeSimulate;
    return true;
  }
  for (const auto& m : kModes) {
    if (text == m.name) {
      mode = m.mode;
      return true;
    }
  }
  return false;
}

bool ParseMethod(const std::string& text, SolverMethod& method) {
  if (text.empty() || text == "hardy-cross") {
    method = SolverMethod::HardyCross;
    return true;
  }
  if (text == "newton") {
    method = SolverMethod::Newton;
    return true;
  }
  return false;
}

bool ParseCount(const std::string& text, int& value) {
  if (text.empty()) return true;
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && p == end && value >= 0;
}

// A balancing left short of convergence (the last question answered No) still stands as a
// result, but a script must hear of it: it counts as a warning.
bool Warned(const SimRun& run) {
  return run.SimStatus == 2 || (run.Sweeps > 0 && !run.Converged);
}

const char* StatusWord(const SimOutcome& outcome, const SimRun& run) {
  if (!outcome.Ran || run.SimStatus == 1) return "failed";
  return Warned(run) ? "warnings" : "clean";
}

int ExitCode(const SimOutcome& outcome, const SimRun& run) {
  if (!outcome.Ran || run.SimStatus == 1) return kExitFailed;
  return Warned(run) ? kExitWarnings : kExitOk;
}

// A "yes" on the command line keeps balancing only so many times, so a script never hangs on
// a network that does not converge.
void BoundConvergenceAnswers(CliContext& c, int maxRounds) {
  auto asked = std::make_shared<int>(0);
  std::ostream& err = c.err;
  HeadlessUi& ui = c.ui;
  c.ui.OnMessage([&err, &ui, asked, maxRounds](const UiRecord& r) {
    err << r.title << ": " << r.text << "\n";
    if (r.title == "Convergence Warning" && ++*asked > maxRounds) ui.QueueAnswer(MsgAnswer::No);
  });
}

int RunSolve(CliContext& c) {
  const std::string out = TakeOption(c.args, "-o");
  const std::string modeText = TakeOption(c.args, "--mode");
  const std::string roundsText = TakeOption(c.args, "--max-rounds");
  const std::string methodText = TakeOption(c.args, "--method");
  std::int16_t mode = kModeSimulate;
  int maxRounds = kDefaultMaxRounds;
  SolverMethod method = SolverMethod::HardyCross;
  if (c.args.size() != 1 || !ParseMode(modeText, mode) || !ParseCount(roundsText, maxRounds) ||
      !ParseMethod(methodText, method)) {
    c.err << "usage: galeris-sim solve IN [-o OUT] [--mode simulate|converge|find-bulkheads|"
             "remove-bulkheads|restrictive-fans|duplicates] [--max-rounds N] "
             "[--method hardy-cross|newton]\n";
    return kExitBadInput;
  }
  Workspace& ws = c.ws;
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  BoundConvergenceAnswers(c, maxRounds);
  ws.sim.ShowProgress = 0;
  ws.sim.SimMode = mode;
  ws.sim.Method = method;
  const SimOutcome outcome = RunSimulation(ws);
  for (const auto& line : ws.net.Errorlist) c.out << line << "\n";
  c.out << "airways " << ws.net.BranchCount << " meshes " << ws.sim.MeshCount << " sweeps "
        << ws.sim.Sweeps << " status " << StatusWord(outcome, ws.sim);
  if (ws.sim.Check.Done) c.out << " " << SolutionCheckText(ws.sim.Check);
  c.out << "\n";
  if (!out.empty()) {
    ws.net.FileName = out;
    if (!SaveNetwork(ws)) {
      c.err << "solve: could not write " << out << "\n";
      return kExitFailed;
    }
  }
  return ExitCode(outcome, ws.sim);
}

const RegisterCommand kSolve({"solve",
                              "solve IN [-o OUT] [--mode simulate|converge|find-bulkheads|"
                              "remove-bulkheads|restrictive-fans|duplicates] [--max-rounds N] "
                              "[--method hardy-cross|newton]",
                              "Simulates the airflow of IN (or runs a diagnostic), prints the "
                              "error list and a summary with the self-check of the flows; -o "
                              "writes the solved network.\n"
                              "      --method newton balances by Newton's method instead of "
                              "Hardy Cross (diagnostics keep Hardy Cross).\n"
                              "      --max-rounds N bounds the \"yes\" answers to \"Convergence "
                              "Warning\" (default 10).",
                              RunSolve});

}  // namespace
}  // namespace galeris::cli
