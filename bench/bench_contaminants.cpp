// The contaminant spread and mixing on a solved 30 000-airway generated mine with ten sources:
// one SimulateContaminant as the Smoke Simulation runs it (node keys, the sort check, node
// links, release, rounds and mixing passes). Run from a Release build.
#include <benchmark/benchmark.h>

#include "core/headless_ui.h"
#include "simulate/contaminants.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

struct SmokeMine {
  HeadlessUi ui{HeadlessUi::Policy::AlwaysYes};
  Workspace ws{ui};
  SmokeMine() {
    GenerateMine(ws, 30000, 1);
    ws.sim.ShowProgress = 0;
    ws.defaults.MaxIter = 5000;
    RunSimulation(ws);
    Network& net = ws.net;
    for (int k = 1; k <= 10; ++k) {
      const int i = k * net.BranchCount / 11;
      net.BranchCode[i] |= Bit::ContaminantSource;
      net.Contaminant[i] = 1000;
    }
  }
};

void BM_SpreadAndMixing(benchmark::State& state) {
  static SmokeMine mine;
  SpreadResult result;
  for (auto _ : state) {
    result = SimulateContaminant(mine.ws);
    benchmark::DoNotOptimize(result);
  }
  state.counters["reached"] = result.Reached;
  state.counters["passes"] = result.MixingPasses;
  state.counters["sources"] = result.Sources;
}
BENCHMARK(BM_SpreadAndMixing)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
