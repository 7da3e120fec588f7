// Newton balancing beside Hardy Cross on generated mines of 15 000 and 29 998 airways (the most a
// file holds): the balancing stage alone from the generator's start flows, and the whole
// galeris-sim solve process (load, solve, save) as a user runs it. Run from a Release build; the
// process benchmark needs galeris-sim built beside this program.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/headless_ui.h"
#include "files/network_file.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

extern char** environ;

namespace galeris {
namespace {

namespace fs = std::filesystem;

const char* MethodName(int method) {
  return method == 1 ? "newton" : "hardy-cross";
}

// The stages before balancing, as SimulateNetwork runs them.
void PrepareBalancing(Workspace& ws) {
  ws.sim.SimCancel = 0;
  ws.sim.SimStatus = 0;
  ws.net.Errorlist.clear();
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  SortAirways(ws);
  CheckNetwork(ws);
  WeighAirways(ws);
  BuildMeshes(ws);
  BuildSimCurves(ws);
}

// Balancing a freshly generated mine at the default MaxError; generation and meshing are not
// timed.
void BM_Balancing(benchmark::State& state) {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.sim.ShowProgress = 0;
  for (auto _ : state) {
    state.PauseTiming();
    GenerateMine(ws, static_cast<int>(state.range(0)), 1);
    PrepareBalancing(ws);
    state.ResumeTiming();
    if (state.range(1) == 1)
      NewtonFlows(ws);
    else
      BalanceFlows(ws);
  }
  state.SetLabel(MethodName(static_cast<int>(state.range(1))));
  state.counters["sweeps"] = ws.sim.Sweeps;
  state.counters["converged"] = ws.sim.Converged;
}
BENCHMARK(BM_Balancing)
    ->ArgsProduct({{15000, 29998}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

// A generated mine written once to the scratch folder, unsolved.
const std::string& MineFile(int airways) {
  static std::map<int, std::string> files;
  std::string& path = files[airways];
  if (path.empty()) {
    const char* tmp = std::getenv("TMPDIR");
    path = (fs::path(tmp ? tmp : "/tmp") / ("bench_newton_" + std::to_string(airways) + ".sim"))
               .string();
    HeadlessUi ui;
    Workspace ws(ui);
    GenerateMine(ws, airways, 1);
    ws.net.FileName = path;
    SaveNetwork(ws);
  }
  return path;
}

// Runs galeris-sim from this program's folder with its output thrown away; false on failure.
bool RunSolve(const std::vector<std::string>& args) {
  const std::string program =
      (fs::canonical("/proc/self/exe").parent_path() / "galeris-sim").string();
  std::vector<char*> argv{const_cast<char*>(program.c_str())};
  for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  pid_t pid = 0;
  const int failed = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failed || waitpid(pid, &status, 0) != pid) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) <= 2;
}

void BM_SolveProcess(benchmark::State& state) {
  const std::string& in = MineFile(static_cast<int>(state.range(0)));
  const std::string out = in + ".solved.sim";
  const std::vector<std::string> args{
      "solve", in, "-o", out, "--method", MethodName(static_cast<int>(state.range(1)))};
  for (auto _ : state)
    if (!RunSolve(args)) state.SkipWithError("galeris-sim solve failed");
  state.SetLabel(MethodName(static_cast<int>(state.range(1))));
  fs::remove(out);
}
BENCHMARK(BM_SolveProcess)
    ->ArgsProduct({{15000, 29998}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

}  // namespace
}  // namespace galeris
