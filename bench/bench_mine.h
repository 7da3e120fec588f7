// Shared by the benchmarks: a generated mine with its node keys and every layer shown, a view
// of it fitted to a picture, and scratch paths in the system temporary folder.
#pragma once

#include <filesystem>
#include <string>

#include "core/headless_ui.h"
#include "tools/mine_generator.h"
#include "view/drawing.h"
#include "view/view_state.h"

namespace galeris::bench {

inline std::string Scratch(const std::string& name) {
  return (std::filesystem::temp_directory_path() / name).string();
}

struct GeneratedMine {
  HeadlessUi ui;
  Workspace ws{ui};
  explicit GeneratedMine(int airways, HeadlessUi::Policy policy = HeadlessUi::Policy::AlwaysNo)
      : ui(policy) {
    ws.paths.TempFolder = Scratch("") + "/";
    GenerateMine(ws, airways);
    RebuildNodes(ws.net, ws.defaults, ws.ui);
    for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
    for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
  }
  // The plan view fitted to a picture of this size.
  ViewState FittedView(int width, int height, bool declutter = false) {
    ViewState view = MakeViewState(ws);
    view.PixelWidth = width;
    view.PixelHeight = height;
    view.Declutter = declutter;
    BuildVisibleList(ws, view);
    FitNetwork(ws, view);
    return view;
  }
};

}  // namespace galeris::bench
