// Every stage of `galeris-sim solve` on its own, on generated mines of 15 000 and 29 998
// airways, Hardy Cross beside Newton: start-up (units, conversions, defaults, fan database from
// the program folder), load, node build, sort and checks, weighing and meshes, fan curves,
// balancing, the stages after it, the self-check, and save. Each stage starts from the store
// the stages before it left, prepared untimed. Run from a Release build; with
// scripts/time-solve for the whole process.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>

#include "core/headless_ui.h"
#include "files/conversion_file.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/network_file.h"
#include "simulate/simulate.h"
#include "simulate/solution_check.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

namespace fs = std::filesystem;

enum Stage {
  kStartup,
  kLoad,
  kNodes,
  kSortCheck,
  kMeshes,
  kCurves,
  kBalance,
  kFanLoads,
  kPressures,
  kSelfCheck,
  kSave,
};
const char* const kStageNames[] = {"startup",   "load",       "nodes",     "sort+check",
                                   "meshes",    "curves",     "balancing", "fan loads",
                                   "pressures", "self-check", "save"};

// The program folder: the build copies the shipped settings files beside the programs.
std::string ProgramFolder() {
  return fs::canonical("/proc/self/exe").parent_path().string() + "/";
}

void Startup(Workspace& ws) {
  ws.paths.ProgramFolder = ProgramFolder();
  ws.paths.TempFolder = fs::temp_directory_path().string() + "/";
  ws.units = BuiltInUnits();
  LoadConversion(ws.units, ws.paths.InProgram("Conversion.dat"), ws.ui);
  InitDefaults(ws);
  LoadFanDatabase(ws);
}

// A generated mine saved once per size into the scratch folder, and a workspace started up.
struct MineFile {
  HeadlessUi ui;
  Workspace ws{ui};
  std::string path;
  explicit MineFile(int airways) {
    Startup(ws);
    GenerateMine(ws, airways, 1);
    path = ws.paths.InTemp("bench_stages_" + std::to_string(airways) + ".sim");
    ws.net.FileName = path;
    SaveNetwork(ws);
  }
  ~MineFile() { fs::remove(path); }
};

MineFile& Mine(int airways) {
  static std::map<int, std::unique_ptr<MineFile>> mines;
  auto& mine = mines[airways];
  if (!mine) mine = std::make_unique<MineFile>(airways);
  return *mine;
}

void Load(Workspace& ws, const std::string& path) {
  ws.net.FileName = path;
  ws.MergeBase = 1;
  LoadNetwork(ws);
}

// Runs one stage as SimulateNetwork and galeris-sim solve run it.
void RunStage(Workspace& ws, Stage stage, const std::string& path) {
  switch (stage) {
    case kStartup:
      Startup(ws);
      break;
    case kLoad:
      Load(ws, path);
      break;
    case kNodes:
      ws.sim.SimCancel = 0;
      ws.sim.SimStatus = 0;
      ws.net.Errorlist.clear();
      ValidateFanCurves(ws);
      RebuildNodes(ws.net, ws.defaults, ws.ui);
      break;
    case kSortCheck:
      SortAirways(ws);
      CheckNetwork(ws);
      break;
    case kMeshes:
      WeighAirways(ws);
      BuildMeshes(ws);
      break;
    case kCurves:
      BuildSimCurves(ws);
      break;
    case kBalance:
      if (ws.sim.Method == SolverMethod::Newton)
        NewtonFlows(ws);
      else
        BalanceFlows(ws);
      break;
    case kFanLoads:
      ResolveFanLoads(ws);
      StoreAirwayPressures(ws);
      break;
    case kPressures:
      FinishRun(ws);
      ResolveNodePressures(ws);
      ApplyFixedDirections(ws);
      BuildNodeLinks(ws);
      break;
    case kSelfCheck:
      ws.sim.Check = CheckSolution(ws);
      break;
    case kSave:
      ws.net.FileName = path + ".saved.sim";
      SaveNetwork(ws);
      break;
  }
}

// range(0): airways; range(1): 0 Hardy Cross, 1 Newton; range(2): the stage.
void BM_Stage(benchmark::State& state) {
  MineFile& mine = Mine(static_cast<int>(state.range(0)));
  const auto method = state.range(1) == 1 ? SolverMethod::Newton : SolverMethod::HardyCross;
  const auto stage = static_cast<Stage>(state.range(2));
  for (auto _ : state) {
    state.PauseTiming();
    auto ui = std::make_unique<HeadlessUi>();
    auto ws = std::make_unique<Workspace>(*ui);
    ws->sim.ShowProgress = 0;
    ws->sim.Method = method;
    if (stage != kStartup) {
      Startup(*ws);
      for (int before = kLoad; before < stage; ++before)
        RunStage(*ws, static_cast<Stage>(before), mine.path);
    }
    state.ResumeTiming();
    RunStage(*ws, stage, mine.path);
    state.PauseTiming();
    ws.reset();  // freeing the store is not the stage's
    state.ResumeTiming();
  }
  std::error_code ec;
  fs::remove(mine.path + ".saved.sim", ec);
  state.SetLabel(std::string(kStageNames[stage]) +
                 (method == SolverMethod::Newton ? " newton" : " hardy-cross"));
}
BENCHMARK(BM_Stage)
    ->ArgsProduct({{15000, 29998}, {0, 1}, benchmark::CreateDenseRange(kStartup, kSave, 1)})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(7)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

}  // namespace
}  // namespace galeris
