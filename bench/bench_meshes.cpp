// The stages before balancing on a generated 30 000-airway mine: the sort (with its clean-up),
// the meshes alone, and all four stages (with the checks and the weighing) as one run does them.
#include <benchmark/benchmark.h>

#include "bench/bench_mine.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/sort_airways.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;

// One generated mine with its node keys, as the stages find it at the start of a run.
struct Mine : bench::GeneratedMine {
  Network fresh = ws.net;
  Network sorted;
  Mine() : GeneratedMine(kAirways) {
    SortAirways(ws);
    sorted = ws.net;
  }
};

Mine& TheMine() {
  static Mine mine;
  return mine;
}

void Restart(Mine& mine, const Network& from, benchmark::State& state) {
  state.PauseTiming();
  mine.ws.net = from;
  mine.ws.sim = SimRun{};
  state.ResumeTiming();
}

// The sort from the generated order (argument 0) or of a store already sorted (1).
void BM_SortAirways(benchmark::State& state) {
  Mine& mine = TheMine();
  for (auto _ : state) {
    Restart(mine, state.range(0) == 0 ? mine.fresh : mine.sorted, state);
    SortAirways(mine.ws);
  }
}
BENCHMARK(BM_SortAirways)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_BuildMeshes(benchmark::State& state) {
  Mine& mine = TheMine();
  mine.ws.net = mine.sorted;
  CheckNetwork(mine.ws);
  WeighAirways(mine.ws);
  const Network checked = mine.ws.net;
  for (auto _ : state) {
    Restart(mine, checked, state);
    BuildMeshes(mine.ws);
  }
  state.counters["meshes"] = mine.ws.sim.MeshCount;
}
BENCHMARK(BM_BuildMeshes)->Unit(benchmark::kMillisecond);

// What a run spends before balancing, on a store left sorted by the previous run (argument 1)
// or in the generated order (0).
void BM_SortCheckWeighMesh(benchmark::State& state) {
  Mine& mine = TheMine();
  for (auto _ : state) {
    Restart(mine, state.range(0) == 0 ? mine.fresh : mine.sorted, state);
    SortAirways(mine.ws);
    CheckNetwork(mine.ws);
    WeighAirways(mine.ws);
    BuildMeshes(mine.ws);
  }
  state.counters["meshes"] = mine.ws.sim.MeshCount;
}
BENCHMARK(BM_SortCheckWeighMesh)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
