// Simplifying a generated 30 000-airway mine: every pass-through chain that the filter allows
// folded into its first airway, with the run's undo records (no journal file here).
#include <benchmark/benchmark.h>

#include "core/headless_ui.h"
#include "tools/mine_generator.h"
#include "tools/simplify.h"

namespace galeris {
namespace {

void BM_SimplifyNetwork(benchmark::State& state) {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  Workspace ws(ui);
  GenerateMine(ws, 30000);
  const Network original = ws.net;
  SimplifyFilter filter;
  filter.MaxLength = 1000;
  filter.MaxAngle = 45;
  filter.CombineLengths = true;
  int removed = 0;
  for (auto _ : state) {
    state.PauseTiming();
    ws.net = original;
    state.ResumeTiming();
    removed = SimplifyNetwork(ws, filter);
  }
  state.counters["airways"] = original.BranchCount;
  state.counters["removed"] = removed;
}
BENCHMARK(BM_SimplifyNetwork)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace galeris
