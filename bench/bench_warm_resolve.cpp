// A study's unit of work: the generated 15 000-airway mine, solved once, re-solved in memory
// after one resistance change, from the flows that stand (Hardy Cross and Newton). The
// resistance goes back and forth between two values, so every run has something to balance.
// Run from a Release build; the median is the figure to read: its wall time, and its CPU time
// (every thread of the process) on a machine shared with other work.
#include <benchmark/benchmark.h>

#include "core/headless_ui.h"
#include "simulate/repeated_runs.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

constexpr int kMineAirways = 15000;
constexpr std::int16_t kFixedPreset = 50;

void Solve(Workspace& ws, SolverMethod method) {
  ws.sim = SimRun{};
  ws.sim.ShowProgress = 0;
  ws.sim.Method = method;
  RunSimulation(ws);
}

// The store position of an airway: a run sorts the store, so positions move.
int PositionOf(const Network& net, std::int32_t airwayNo) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.AirwayNo[i] == airwayNo) return i;
  return 0;
}

void BM_WarmResolve(benchmark::State& state) {
  const auto method = state.range(0) ? SolverMethod::Newton : SolverMethod::HardyCross;
  KeepMemoryBetweenRuns();  // as a study worker does
  HeadlessUi ui;
  Workspace ws(ui);
  GenerateMine(ws, kMineAirways, 1);
  Solve(ws, method);
  const std::int32_t airwayNo = ws.net.AirwayNo[ws.net.BranchCount / 2];
  const float resistance = ws.net.Resistance[PositionOf(ws.net, airwayNo)];
  bool raised = false;
  for (auto _ : state) {
    raised = !raised;
    const int airway = PositionOf(ws.net, airwayNo);
    ws.net.ResType[airway] = kFixedPreset;
    ws.net.Resistance[airway] = raised ? resistance * 1.5f : resistance;
    MarkNetworkChanged(ws);
    Solve(ws, method);
  }
  state.counters["sweeps"] = ws.sim.Sweeps;
  state.counters["status"] = ws.sim.SimStatus;
}
BENCHMARK(BM_WarmResolve)
    ->ArgName("newton")
    ->Arg(0)
    ->Arg(1)
    ->MeasureProcessCPUTime()
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
