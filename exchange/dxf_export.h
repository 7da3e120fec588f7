// The DXF export (File, DXF Export): an ENTITIES section of lines, circles and texts on fixed
// layers, in true coordinates or as the view shows the network. The view's level and layer
// filters apply in both.
#pragma once

#include <string>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

// The check boxes of frmExport (A to E) and its text size.
struct DxfExportChoices {
  bool Arrows = false;       // A: two short lines on "Arrow" at each airway's middle
  bool BranchNames = false;  // B: "BNAMES"
  bool NodeNames = false;    // C: "NNAMES" at the exit end
  bool DataValues = false;   // D: "DATA", the view's data type
  bool NodeCircles = false;  // E: "NODES", one circle per node
  int TextSize = 0;          // 0 small, 1 medium, 2 large
};

// The choices as the defaults block keeps them: ExportLayers in the order B, D, A, C, E, and
// ExportOption the text size.
DxfExportChoices ExportChoicesOf(const Defaults& defaults);
void StoreExportChoices(Defaults& defaults, const DxfExportChoices& choices);

// The whole file. screen writes the projected view (Y upwards, Z 0); otherwise true
// coordinates in display units. stamp is the date and time of the second comment line.
std::string FormatDxf(Workspace& ws, ViewState& view, bool screen, const DxfExportChoices& choices,
                      const std::string& stamp);
// Writes the file whole with today's stamp; false when it could not be written.
bool ExportDxf(Workspace& ws, ViewState& view, bool screen, const std::string& path);

inline constexpr const char* kDxfBanner =
    "GALERIS******************************************GALERIS";

}  // namespace galeris
