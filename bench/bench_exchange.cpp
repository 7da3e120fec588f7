// Import and export on a large mine: a 30 000-line DXF imported (under 1 s), and a 30 000-airway
// mine exported as DXF and as text (under 300 ms each).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "bench/bench_mine.h"
#include "exchange/dxf_export.h"
#include "exchange/import_file.h"
#include "exchange/text_exchange.h"
#include "files/defaults_file.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;

// One generated mine and its DXF drawing, shared by the benchmarks.
struct LargeMine : bench::GeneratedMine {
  LargeMine() : GeneratedMine(kAirways) {
    ws.paths.ProgramFolder = ws.paths.TempFolder;
    ws.units = BuiltInUnits();
    std::ofstream(drawing, std::ios::binary) << FormatDxf(ws, view, false, {}, "bench");
  }
  ~LargeMine() { std::remove(drawing.c_str()); }
  ViewState view = MakeViewState(ws);
  std::string drawing = bench::Scratch("galeris_bench_exchange.dxf");
};

LargeMine& Mine() {
  static LargeMine mine;
  return mine;
}

void BM_ImportDxf(benchmark::State& state) {
  LargeMine& mine = Mine();
  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  Workspace ws(ui);
  ws.paths = mine.ws.paths;
  ws.units = mine.ws.units;
  SetBuiltInDefaults(ws);
  for (auto _ : state) {
    if (ImportFile(ws, mine.drawing, {}) != ImportOutcome::Done) state.SkipWithError("failed");
  }
  state.counters["airways"] = ws.net.BranchCount;
}
BENCHMARK(BM_ImportDxf)->Unit(benchmark::kMillisecond);

void BM_ExportDxf(benchmark::State& state) {
  LargeMine& mine = Mine();
  const std::string path = bench::Scratch("galeris_bench_export.dxf");
  for (auto _ : state) {
    if (!ExportDxf(mine.ws, mine.view, false, path)) state.SkipWithError("failed");
  }
  state.counters["airways"] = mine.ws.net.BranchCount;
  std::remove(path.c_str());
}
BENCHMARK(BM_ExportDxf)->Unit(benchmark::kMillisecond);

// Everything on: arrows, both names, data values and node circles, as the view shows them.
void BM_ExportDxfScreenWithLabels(benchmark::State& state) {
  LargeMine& mine = Mine();
  const DxfExportChoices all{true, true, true, true, true, 1};
  std::size_t bytes = 0;
  for (auto _ : state) bytes = FormatDxf(mine.ws, mine.view, true, all, "bench").size();
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(BM_ExportDxfScreenWithLabels)->Unit(benchmark::kMillisecond);

void BM_ExportText(benchmark::State& state) {
  LargeMine& mine = Mine();
  const std::string path = bench::Scratch("galeris_bench_export.txt");
  for (auto _ : state) {
    if (!ExportText(mine.ws, path)) state.SkipWithError("failed");
  }
  state.counters["airways"] = mine.ws.net.BranchCount;
  std::remove(path.c_str());
}
BENCHMARK(BM_ExportText)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
