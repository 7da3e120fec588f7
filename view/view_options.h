// What the View Options dialog edits: the detail mask, the data display mode, the flow band
// and how airways outside it are drawn, the colour scheme, and the declutter choice. Read from
// the view, changed, and applied with the limits of the flow fields.
#pragma once

#include <array>
#include <string>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

inline constexpr int kViewerBoxes = 10;  // ChkViewer(0..9); 9 is "Off Level Raises"

struct ViewOptions {
  std::array<bool, kViewerBoxes> Detail{};     // bit i of the detail mask
  std::int16_t DataDisplay = 0;                // OptType: all, vertical, horizontal, selected
  std::string SignificantMax, SignificantMin;  // TxtSig, TxtSigMin in the display unit
  std::int16_t FlowDimMode = 0;                // OptDimmer: all, dim, invisible
  std::int16_t ColourMode = 0;                 // ColOpt: 0 levels, 1 fresh / exhaust
  bool Declutter = true;                       // ChkDeclutter
};

ViewOptions ReadViewOptions(const Workspace& ws, const ViewState& view);
// Show All and Hide All: boxes 0..8; "Off Level Raises" is not touched.
void ShowAllDetails(ViewOptions& options);
void HideAllDetails(ViewOptions& options);
// OK: the mask, the data mode, the flow limits (0 to 10000 in the display unit, else
// "Limits of Allowable Significant Flows" and the old value stays), the dim mode and the colour
// scheme go to the view and to the defaults that a file keeps; the visible list is rebuilt.
void ApplyViewOptions(Workspace& ws, ViewState& view, const ViewOptions& options);
// The display settings of the Options dialog (detail mask, data display, colour scheme) to an
// open view, whose visible list is rebuilt.
void ApplyDisplayDefaults(Workspace& ws, ViewState& view);

}  // namespace galeris
