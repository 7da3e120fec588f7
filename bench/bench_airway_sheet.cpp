// The airway spreadsheet on a 30 000-airway mine: opening the working copy, sorting a column
// and saving every row back to the store with the undo journal recording each airway.
#include <benchmark/benchmark.h>

#include "bench/bench_mine.h"
#include "editors/logic/airway_sheet.h"
#include "files/undo_journal.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;

struct Mine : bench::GeneratedMine {
  UndoFile journal{ws};
  Mine() : GeneratedMine(kAirways, HeadlessUi::Policy::AlwaysYes) {
    ws.journal = &journal;
    journal.ResetUndoFile();
  }
};

Mine& TheMine() {
  static Mine mine;
  return mine;
}

void BM_OpenSheet(benchmark::State& state) {
  Mine& mine = TheMine();
  for (auto _ : state) benchmark::DoNotOptimize(FillSheet(mine.ws));
  state.counters["airways"] = mine.ws.net.BranchCount;
}
BENCHMARK(BM_OpenSheet)->Unit(benchmark::kMillisecond);

void BM_SortColumn(benchmark::State& state) {
  Mine& mine = TheMine();
  AirwaySheet sheet = FillSheet(mine.ws);
  const int column = static_cast<int>(state.range(0));
  bool ascending = true;
  for (auto _ : state) {
    SortSheet(sheet, column, ascending);
    ascending = !ascending;
  }
}
BENCHMARK(BM_SortColumn)
    ->Arg(SheetColumn::Name)
    ->Arg(SheetColumn::Resistance)
    ->Arg(SheetColumn::FPres)
    ->Unit(benchmark::kMillisecond);

// Every row changed (its width), saved as one action: journal, store, resistances, nodes.
void BM_SaveAllRows(benchmark::State& state) {
  Mine& mine = TheMine();
  for (auto _ : state) {
    state.PauseTiming();
    AirwaySheet sheet = FillSheet(mine.ws);
    for (SheetRow& row : sheet.rows) row.cell[SheetColumn::Width] += "1";
    mine.journal.ResetUndoFile();
    state.ResumeTiming();
    benchmark::DoNotOptimize(SaveSheet(mine.ws, sheet));
  }
}
BENCHMARK(BM_SaveAllRows)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace galeris
