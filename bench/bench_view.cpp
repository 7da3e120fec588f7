// The view's passes on a generated 30 000-airway mine drawn into a 1920 x 1080 picture: the
// draw list with the wireframe (what every mouse move of a rotation costs), the projection of a
// 3-D view, and the full redraw with grid, symbols and text, with and without declutter.
#include <benchmark/benchmark.h>

#include "bench/bench_mine.h"
#include "view/drawing.h"
#include "view/labels.h"
#include "view/raster_canvas.h"
#include "view/view_state.h"

namespace galeris {
namespace {

constexpr int kWidth = 1920, kHeight = 1080;

struct Mine : bench::GeneratedMine {
  ViewState view = FittedView(kWidth, kHeight);
  RasterCanvas canvas{kWidth, kHeight};
  Mine() : GeneratedMine(30000) {}

  void UseThreeD() {
    view.Is3D = 1;
    view.TiltAngle = 0.8f;
    view.SpinAngle = 0.5f;
    view.PivotState = 0;
    BuildVisibleList(ws, view);
    ProjectNetwork(ws, view);
    FitNetwork(ws, view);
  }
};

Mine& PlanMine() {
  static Mine mine;
  return mine;
}

Mine& ThreeDMine() {
  static Mine* mine = [] {
    auto* m = new Mine;
    m->UseThreeD();
    return m;
  }();
  return *mine;
}

void BM_LinesAndWireframePlan(benchmark::State& state) {
  Mine& mine = PlanMine();
  for (auto _ : state) {
    RedrawWireframe(mine.ws, mine.view, mine.canvas);
  }
  state.counters["lines"] = mine.view.AirwayLineCount;
}
BENCHMARK(BM_LinesAndWireframePlan)->Unit(benchmark::kMillisecond);

// A rotation step: a new projection, the draw list and the wireframe.
void BM_RotationStep3D(benchmark::State& state) {
  Mine& mine = ThreeDMine();
  for (auto _ : state) {
    mine.view.SpinStep = 0.01f;
    ProjectNetwork(mine.ws, mine.view);
    mine.view.SpinStep = 0;
    RedrawWireframe(mine.ws, mine.view, mine.canvas);
  }
  state.counters["lines"] = mine.view.AirwayLineCount;
}
BENCHMARK(BM_RotationStep3D)->Unit(benchmark::kMillisecond);

// The full redraw: plan or 3-D, a data type, and declutter on or off; declutter at fit scale
// is how the desktop program draws by default, measuring and painting only what has a place.
void BM_FullRedraw(benchmark::State& state) {
  Mine& mine = state.range(0) == 0 ? PlanMine() : ThreeDMine();
  mine.view.GridOn = true;
  mine.view.DisplayBits = 0x1FF;
  mine.view.DataTypeCode = static_cast<std::int16_t>(state.range(1));
  mine.view.Declutter = state.range(2) != 0;
  for (auto _ : state) {
    RedrawNetwork(mine.ws, mine.view, mine.canvas);
  }
  mine.view.Declutter = false;
  state.counters["texts"] = mine.canvas.Texts();
  state.counters["pictures"] = mine.canvas.Bitmaps();
}
BENCHMARK(BM_FullRedraw)
    ->Args({0, DataType::Quantity, 0})
    ->Args({1, DataType::Quantity, 0})
    ->Args({0, DataType::Coordinates, 0})
    ->Args({0, DataType::Quantity, 1})
    ->Args({1, DataType::Quantity, 1})
    ->Unit(benchmark::kMillisecond);

void BM_VisibleList(benchmark::State& state) {
  Mine& mine = PlanMine();
  for (auto _ : state) {
    BuildVisibleList(mine.ws, mine.view);
  }
}
BENCHMARK(BM_VisibleList)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
