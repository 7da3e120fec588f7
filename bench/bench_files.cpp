// The network file on a large mine: loading and saving 30 000 airways, each well under the
// 150 ms a user would notice on Open or Save.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/defaults_file.h"
#include "files/network_file.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;

std::string ScratchFile(const std::string& name) {
  return (std::filesystem::temp_directory_path() / name).string();
}

// One generated mine, saved once, shared by both benchmarks.
struct LargeMine {
  LargeMine() : ws(ui) {
    ws.paths.ProgramFolder = ScratchFile("") + "/";
    ws.paths.TempFolder = ws.paths.ProgramFolder;
    SetBuiltInDefaults(ws);
    GenerateMine(ws, kAirways);
    RebuildNodes(ws.net, ws.defaults, ui);
    path = ScratchFile("galeris_bench_files.sim");
    std::ofstream(path, std::ios::binary) << FormatNetworkFile(ws);
  }
  ~LargeMine() { std::remove(path.c_str()); }
  HeadlessUi ui;
  Workspace ws;
  std::string path;
};

LargeMine& Mine() {
  static LargeMine mine;
  return mine;
}

void BM_LoadNetwork(benchmark::State& state) {
  LargeMine& mine = Mine();
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths = mine.ws.paths;
  SetBuiltInDefaults(ws);
  for (auto _ : state) {
    ws.net.FileName = mine.path;
    ws.MergeBase = 1;
    if (!LoadNetwork(ws)) state.SkipWithError("load failed");
  }
  state.counters["airways"] = ws.net.BranchCount;
}
BENCHMARK(BM_LoadNetwork)->Unit(benchmark::kMillisecond);

void BM_SaveNetwork(benchmark::State& state) {
  LargeMine& mine = Mine();
  mine.ws.net.FileName = ScratchFile("galeris_bench_save.sim");
  for (auto _ : state) {
    mine.ws.net.FileNote.clear();  // every save adds a line to the note
    if (!SaveNetwork(mine.ws)) state.SkipWithError("save failed");
  }
  state.counters["airways"] = mine.ws.net.BranchCount;
  std::remove(mine.ws.net.FileName.c_str());
}
BENCHMARK(BM_SaveNetwork)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
