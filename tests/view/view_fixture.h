// A workspace for the view's tests: built-in units, every layer shown, a window of 800 by 600
// pixels, and airways added with their node keys already made.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"
#include "view/drawing.h"
#include "view/raster_canvas.h"
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

  // The view's width, height and pan against the expected ones, to float precision.
  bool ScaleIs(float width, float height, float panX, float panY) const {
    const float got[] = {view.ScaleWidth, view.ScaleHeight, view.PanX, view.PanY};
    const float want[] = {width, height, panX, panY};
    for (int k = 0; k < 4; ++k)
      if (std::fabs(got[k] - want[k]) > 1e-5f * std::max(1.0f, std::fabs(want[k]))) return false;
    return true;
  }

  HeadlessUi ui;
  Workspace ws;
  ViewState view;
};

// A raster canvas of the fixture's window that also keeps the texts, their colours and the
// pictures a pass sends.
struct RecordingCanvas : RasterCanvas {
  RecordingCanvas() : RasterCanvas(800, 600) {}
  void Text(float x, float y, std::string_view text, Colour colour, float size) override {
    texts.emplace_back(text);
    textColours.push_back(colour);
    textFonts.push_back(font);
    RasterCanvas::Text(x, y, text, colour, size);
  }
  void Bitmap(int picture, float left, float top, float width, float height) override {
    pictures.push_back(picture);
    RasterCanvas::Bitmap(picture, left, top, width, height);
  }
  void SetFont(std::string_view family, bool bold) override {
    font = std::string(family) + (bold ? " bold" : "");
  }
  std::vector<std::string> texts;
  std::vector<Colour> textColours;
  std::vector<std::string> textFonts;  // the font each text was written in
  std::string font;
  std::vector<int> pictures;
};

}  // namespace galeris::test
