// Editing a generated 30 000-airway mine: one airway drawn with its node rebuild and the redraw
// of its window, the undo and redo of that action, and an attribute paste over 5 000 airways,
// each journalled in the scratch file as the desktop program does.
#include <benchmark/benchmark.h>

#include "bench/bench_mine.h"
#include "files/undo_journal.h"
#include "view/construction.h"
#include "view/drawing.h"
#include "view/fence_tools.h"
#include "view/raster_canvas.h"
#include "view/view_state.h"

namespace galeris {
namespace {

constexpr int kPasted = 5000;
constexpr int kWidth = 1920, kHeight = 1080;

struct Mine : bench::GeneratedMine {
  UndoFile journal{ws};
  ViewState view = FittedView(kWidth, kHeight, true);  // declutter, as the program draws
  RasterCanvas canvas{kWidth, kHeight};
  EditState edit;

  Mine() : GeneratedMine(30000 - 100, HeadlessUi::Policy::AlwaysYes) {
    ws.journal = &journal;
    journal.ResetUndoFile();
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

// The undo (argument 0) or the redo (1) of one drawn airway.
void BM_UndoRedoOneAirway(benchmark::State& state) {
  Mine& mine = TheMine();
  const bool redo = state.range(0) == 1;
  mine.Draw();
  if (redo) mine.journal.Undo();
  for (auto _ : state) {
    redo ? mine.journal.Redo() : mine.journal.Undo();
    state.PauseTiming();
    redo ? mine.journal.Undo() : mine.journal.Redo();
    state.ResumeTiming();
  }
  if (!redo) mine.journal.Undo();
}
BENCHMARK(BM_UndoRedoOneAirway)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

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
