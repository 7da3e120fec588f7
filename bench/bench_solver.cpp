// The solver on generated mines of 1 000, 10 000 and 30 000 airways: the pipeline of one run
// without its sweeps, the rate of the balancing sweep in member updates per second, and the
// sweeps a run needs from seeded flows at MaxError 0.05 and 0.001. Run from a Release build.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>

#include "core/headless_ui.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

struct SolvedMine {
  HeadlessUi ui;
  Workspace ws{ui};
};

// One solved mine per size, shared by the benchmarks: generating and first solving it is not
// what is measured.
Workspace& Mine(int airways) {
  static std::map<int, std::unique_ptr<SolvedMine>> mines;
  auto& mine = mines[airways];
  if (!mine) {
    mine = std::make_unique<SolvedMine>();
    GenerateMine(mine->ws, airways, 1);
    mine->ws.sim.ShowProgress = 0;
    mine->ws.sim.SimMode = 0;
    mine->ws.defaults.MaxIter = 5000;
    RunSimulation(mine->ws);
  }
  return mine->ws;
}

// The stages up to meshing and the fan slots, as SimulateNetwork runs them.
void MeshStages(Workspace& ws) {
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

void BM_PipelineWithoutSweeps(benchmark::State& state) {
  Workspace& ws = Mine(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    MeshStages(ws);
    ResolveFanLoads(ws);
    StoreAirwayPressures(ws);
    FinishRun(ws);
    ResolveNodePressures(ws);
    ApplyFixedDirections(ws);
    BuildNodeLinks(ws);
  }
  state.counters["airways"] = ws.net.BranchCount;
  state.counters["meshes"] = ws.sim.MeshCount;
  state.counters["status"] = ws.sim.SimStatus;
}
BENCHMARK(BM_PipelineWithoutSweeps)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(30000)
    ->Unit(benchmark::kMillisecond);

// The same on a freshly generated store, in the order the generator left it: the first run
// after a load, when the sort has the most to do.
void BM_FirstPipelineWithoutSweeps(benchmark::State& state) {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.sim.ShowProgress = 0;
  for (auto _ : state) {
    state.PauseTiming();
    GenerateMine(ws, static_cast<int>(state.range(0)), 2);
    state.ResumeTiming();
    MeshStages(ws);
    ResolveFanLoads(ws);
    StoreAirwayPressures(ws);
    FinishRun(ws);
    ResolveNodePressures(ws);
    ApplyFixedDirections(ws);
    BuildNodeLinks(ws);
  }
  state.counters["status"] = ws.sim.SimStatus;
}
BENCHMARK(BM_FirstPipelineWithoutSweeps)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(30000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void BM_BalanceSweep(benchmark::State& state) {
  Workspace& ws = Mine(static_cast<int>(state.range(0)));
  MeshStages(ws);
  const Network& net = ws.net;
  long members = 0;
  for (int m = 1; m <= ws.sim.MeshCount; ++m)
    if (net.MeshMember[net.MeshStart[m]] > 0) members += net.MeshStart[m + 1] - net.MeshStart[m];
  for (auto _ : state) {
    const SweepResult r = BalanceSweep(ws, false);
    benchmark::DoNotOptimize(r);
  }
  state.SetItemsProcessed(state.iterations() * members);
  state.counters["members"] = static_cast<double>(members);
}
BENCHMARK(BM_BalanceSweep)->Arg(1000)->Arg(10000)->Arg(30000)->Unit(benchmark::kMicrosecond);

// A whole balancing from flows re-seeded to 10 m3/s, at the MaxError given in thousandths.
void BM_SweepsToConverge(benchmark::State& state) {
  Workspace& ws = Mine(static_cast<int>(state.range(0)));
  const float maxError = static_cast<float>(state.range(1)) / 1000.0f;
  MeshStages(ws);
  for (auto _ : state) {
    state.PauseTiming();
    for (int i = 1; i <= ws.net.BranchCount; ++i)
      if (!(ws.net.BranchCode[i] & Bit::FixedQuantity)) ws.net.Quantity[i] = 10;
    ws.defaults.MaxError = maxError;
    ws.sim.SimCancel = 0;
    state.ResumeTiming();
    BalanceFlows(ws);
  }
  state.counters["sweeps"] = ws.sim.Sweeps;
  ws.defaults.MaxError = 0.05f;
}
BENCHMARK(BM_SweepsToConverge)
    ->Args({1000, 50})
    ->Args({1000, 1})
    ->Args({10000, 50})
    ->Args({10000, 1})
    ->Args({30000, 50})
    ->Args({30000, 1})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace
}  // namespace galeris
