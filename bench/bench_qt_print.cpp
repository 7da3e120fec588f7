// A PDF page of a generated 30 000-airway mine, A1 landscape at the fitted scale, with grid,
// symbols, names and data text: the whole PrintNetwork through QPrinter into a file.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QGuiApplication>
#include <memory>

#include "core/headless_ui.h"
#include "editors/print_network.h"
#include "tools/mine_generator.h"
#include "view/drawing.h"

namespace galeris {
namespace {

void BM_PrintPdfPage(benchmark::State& state) {
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QGuiApplication app(argc, argv);
  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  Workspace ws(ui);
  GenerateMine(ws, 30000);
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
  for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
  ViewState view = MakeViewState(ws);
  view.PixelWidth = 3000;
  view.PixelHeight = 2100;
  view.Declutter = true;
  view.GridOn = true;
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
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
