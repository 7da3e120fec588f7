// Simplifying a 30 000-airway mine: a generated mine of 15 000 airways with each plain airway cut
// in two at its middle, so that the run folds some 15 000 pairs back (no journal file here).
#include <benchmark/benchmark.h>

#include "core/headless_ui.h"
#include "tools/mine_generator.h"
#include "tools/simplify.h"

namespace galeris {
namespace {

// Cuts every airway without a fan in two, until the store holds `airways`.
void CutAirways(Network& net, int airways) {
  const int count = net.BranchCount;
  for (int i = 1; i <= count && net.BranchCount < airways; ++i) {
    if (net.FanNumber[i] != 0) continue;
    const int j = ++net.BranchCount;
    CopyAirway(net, i, j);
    net.AirwayNo[j] = ++net.NextAirwayNo;
    for (int axis = 1; axis <= 3; ++axis)
      net.Coord1[j][axis] = (net.Coord1[i][axis] + net.Coord2[i][axis]) / 2;
    net.Coord2[i] = net.Coord1[j];
    net.Length[i] /= 2;
    net.Length[j] /= 2;
  }
}

void BM_SimplifyNetwork(benchmark::State& state) {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  Workspace ws(ui);
  GenerateMine(ws, 15000);
  CutAirways(ws.net, 30000);
  const Network original = ws.net;
  SimplifyFilter filter;
  filter.MaxLength = 1000;
  filter.MaxAngle = 10;
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
