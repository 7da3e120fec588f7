// A PDF page of a generated 30 000-airway mine, A1 landscape at the fitted scale, with grid,
// symbols, names and data text: the whole PrintNetwork through QPrinter into a file.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QGuiApplication>
#include <memory>

#include "bench/bench_mine.h"
#include "editors/print_network.h"
#include "view/drawing.h"

namespace galeris {
namespace {

void BM_PrintPdfPage(benchmark::State& state) {
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QGuiApplication app(argc, argv);
  bench::GeneratedMine mine(30000);
  Workspace& ws = mine.ws;
  ViewState view = mine.FittedView(3000, 2100, true);
  view.GridOn = true;
  PrintSettings settings;
  settings.Paper = "A1";
  settings.OutputFile = (QDir::tempPath() + "/bench_print.pdf").toStdString();
  bool printed = true;
  for (auto _ : state) printed = PrintNetwork(ws, view, settings) && printed;
  state.counters["printed"] = printed;
  state.counters["airways"] = ws.net.BranchCount;
}
BENCHMARK(BM_PrintPdfPage)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace galeris
