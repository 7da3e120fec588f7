// What the Viewing Layers dialog edits: which primary (1..16) and secondary (1..48) layers
// are shown, how airways of hidden layers are drawn (LineOpt and the details still shown on
// them), and the layer names. Read from the store and the view, changed, written back.
#pragma once

#include <array>
#include <string>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

struct LayerChoice {
  std::array<bool, kPrimaryLayers + 1> Primary{};  // 1..16
  std::array<bool, kSecondLayers + 1> Second{};    // 1..48
  std::int16_t LineState = LineOpt::Dim;           // LineOpt: Invisible, Dim, Solid
  std::int16_t OffLayerDetails = 0;                // OffLayer bits
  int PrimaryCurrent = 1, SecondCurrent = 1;       // the label rows being edited
};

LayerChoice ReadLayerChoice(const Network& net, const ViewState& view);
// cmdSet "Show All" and CmdReset "Hide All"; Hide All leaves the current pair shown.
void ShowAllLayers(LayerChoice& choice);
void HideAllLayers(LayerChoice& choice);
// Closing: LayerDisplay (the view's DisplayFlags) rebuilt from the line state and the five
// flags, the show arrays from the boxes, and the current label rows kept for the next opening.
void ApplyLayerChoice(Network& net, ViewState& view, const LayerChoice& choice);
// ShowAllLayers of the store: every layer shown (the Reset path and whole-network commands).
void ShowAllLayers(Network& net);

// A layer's label: its name, or its number when it has none.
std::string LayerLabel(const std::string& name, int number);

}  // namespace galeris
