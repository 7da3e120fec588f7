// Turns the projected network into a picture: the visible list (layers, levels, flow limits),
// the flat draw list with each airway's colour and width, and the passes that paint the bare
// lines, the grid, and the symbols and text over them.
#pragma once

#include <array>

#include "core/workspace.h"
#include "view/canvas.h"
#include "view/view_state.h"

namespace galeris {

// The view's palette positions.
namespace Palette {
inline constexpr int OnLevel = 0, Below = 1, Above = 2, DimText = 3, Symbols = 4, DataText = 5,
                     GridLines = 6, GridText = 7;
}

inline constexpr Colour kBackground = RGBColour(0, 0, 0);
inline constexpr Colour kWhite = RGBColour(255, 255, 255);
inline constexpr Colour kHighlightColour = RGBColour(255, 160, 0);  // the airway being edited

// The fixed contaminant list: dark grey, green, light blue, light magenta, light red, yellow,
// white, light cyan. Position 0 is the dim colour, position 6 the highlight.
inline constexpr std::array<Colour, 8> kContaminantColours = {
    RGBColour(128, 128, 128), RGBColour(0, 128, 0),  RGBColour(0, 0, 255),
    RGBColour(255, 0, 255),   RGBColour(255, 0, 0),  RGBColour(255, 255, 0),
    RGBColour(255, 255, 255), RGBColour(0, 255, 255)};

// Colour of palette position 0..7: the network's table, or a built-in one when it is all zero.
Colour PaletteColour(const Defaults& defaults, int position);
// The Options' "Background" colour; black until one is chosen.
Colour BackgroundColour(const Defaults& defaults);

// The view's layer masks from the network's shown-layer flags.
void ReadLayerMasks(const Network& net, ViewState& view);
// Applies layers and levels: fills net.SmokeQueue and the floating text list. A view that does
// not follow the shown-layer flags (a window not current) keeps its own masks.
void BuildVisibleList(Workspace& ws, ViewState& view);
// Culls the visible list against the window and colours each survivor into net.AirwayLine.
void BuildAirwayLines(Workspace& ws, ViewState& view);
// The bare lines of the draw list.
void DrawWireframe(Workspace& ws, ViewState& view, Canvas& canvas);
// The grid, and in an edge-on view the level scale.
void DrawGrid(Workspace& ws, ViewState& view, Canvas& canvas);
// Arrows, node symbols, names and values, the airway symbols, data text and floating text.
void DrawSymbols(Workspace& ws, ViewState& view, Canvas& canvas);
// The whole sequence for one window.
void RedrawNetwork(Workspace& ws, ViewState& view, Canvas& canvas);
// The fast picture of a moving view: draw list and wireframe only.
void RedrawWireframe(Workspace& ws, ViewState& view, Canvas& canvas);

}  // namespace galeris
