// A workspace for the view's tests: built-in units, every layer shown, a window of 800 by 600
// pixels, and airways added with their node keys already made.
#pragma once

#include <cmath>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"
#include "view/drawing.h"
#include "view/view_state.h"

namespace galeris::test {

struct ViewFixture {
  ViewFixture() : ws(ui), view(MakeViewState(ws)) {
    ws.net.MaxAirways = 200;
    ResizeStore(ws.net);
    view = MakeViewState(ws);
    ws.units = BuiltInUnits();
    for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
    for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
    view.PixelWidth = 800;
    view.PixelHeight = 600;
    view.AspectRatio = 0.75f;
    SetScale(view, 1000, 750, 0, 0);
  }

  int Add(int x1, int y1, int z1, int x2, int y2, int z2) {
    const int i = AddAirway(ws.net, x1, y1, z1, x2, y2, z2);
    ws.net.EntryNodeId[i] = NodeKey(x1, y1, z1);
    ws.net.ExitNodeId[i] = NodeKey(x2, y2, z2);
    const double dx = x2 - x1, dy = y2 - y1, dz = z2 - z1;
    ws.net.Length[i] = static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
    ws.net.PrimaryLayer[i] = 1;
    ws.net.SecondLayer[i] = 1;
    ws.net.AirwayNo[i] = i;
    return i;
  }

  // Visible list, projection and draw list, as a redraw makes them.
  void Build() {
    BuildVisibleList(ws, view);
    ProjectNetwork(ws, view);
    BuildAirwayLines(ws, view);
  }

  HeadlessUi ui;
  Workspace ws;
  ViewState view;
};

}  // namespace galeris::test
