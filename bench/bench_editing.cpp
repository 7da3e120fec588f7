// Editing a generated 30 000-airway mine: one airway drawn with its node rebuild and the redraw
// of its window, the undo and redo of that action, and an attribute paste over 5 000 airways,
// each journalled in the scratch file as the desktop program does.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "core/headless_ui.h"
#include "files/undo_journal.h"
#include "tools/mine_generator.h"
#include "view/construction.h"
#include "view/drawing.h"
#include "view/fence_tools.h"
#include "view/raster_canvas.h"
#include "view/view_state.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;
constexpr int kPasted = 5000;
constexpr int kWidth = 1920, kHeight = 1080;

struct Mine {
  HeadlessUi ui{HeadlessUi::Policy::AlwaysYes};
  Workspace ws{ui};
  UndoFile journal{ws};
  ViewState view;
  RasterCanvas canvas{kWidth, kHeight};
  EditState edit;

  Mine() {
    GenerateMine(ws, kAirways - 100);
    ws.paths.TempFolder = std::filesystem::temp_directory_path().string() + "/";
    ws.journal = &journal;
    journal.ResetUndoFile();
    RebuildNodes(ws.net, ws.defaults, ws.ui);
    for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
    for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
    view = MakeViewState(ws);
    view.PixelWidth = kWidth;
    view.PixelHeight = kHeight;
    view.Declutter = true;  // as the desktop program draws by default
    BuildVisibleList(ws, view);
    FitNetwork(ws, view);
    RedrawNetwork(ws, view, canvas);
  }

  // A new airway from the first airway's entry, sideways on its level.
  int Draw() {
    ConstructionPoint start, end;
    start.At = ws.net.Coord1[1];
    start.EndOf = 1;
    end.At = start.At;
    end.At[1] += 37;
    end.At[2] += 23;
    return BuildAirway(ws, view, edit, start, end);
  }
};

Mine& TheMine() {
  static Mine mine;
  return mine;
}

void BM_AddAirwayAndRedraw(benchmark::State& state) {
  Mine& mine = TheMine();
  for (auto _ : state) {
    mine.Draw();
    RefreshAfterEdit(mine.ws, mine.view);
    RedrawNetwork(mine.ws, mine.view, mine.canvas);
    state.PauseTiming();
    mine.journal.Undo();
    state.ResumeTiming();
  }
  state.counters["airways"] = mine.ws.net.BranchCount;
}
BENCHMARK(BM_AddAirwayAndRedraw)->Unit(benchmark::kMillisecond);

void BM_UndoOneAirway(benchmark::State& state) {
  Mine& mine = TheMine();
  mine.Draw();
  for (auto _ : state) {
    mine.journal.Undo();
    state.PauseTiming();
    mine.journal.Redo();
    state.ResumeTiming();
  }
  mine.journal.Undo();
}
BENCHMARK(BM_UndoOneAirway)->Unit(benchmark::kMillisecond);

void BM_RedoOneAirway(benchmark::State& state) {
  Mine& mine = TheMine();
  mine.Draw();
  mine.journal.Undo();
  for (auto _ : state) {
    mine.journal.Redo();
    state.PauseTiming();
    mine.journal.Undo();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_RedoOneAirway)->Unit(benchmark::kMillisecond);

// The paste of the fence tool on 5 000 airways: each journalled before and after, one action,
// then the nodes and the window's lists rebuilt.
void BM_FencePaste5000(benchmark::State& state) {
  Mine& mine = TheMine();
  mine.edit.AttributeChosen[AttributeOf::Dimensions] = true;
  mine.edit.AttributeChosen[AttributeOf::WallType] = true;
  CopyAttributesFrom(mine.ws, mine.edit, 1, false);
  for (auto _ : state) {
    for (int i = 1; i <= kPasted; ++i) {
      JournalBefore(mine.ws.journal, i);
      PasteAttributesTo(mine.ws, mine.edit, i);
      JournalAfter(mine.ws.journal, i);
    }
    CloseUndoAction(mine.ws.journal);
    RefreshAfterEdit(mine.ws, mine.view);
  }
}
BENCHMARK(BM_FencePaste5000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
