// The real-time station box that the drawing pass hangs below an airway's midpoint while
// monitoring runs: the station's name, then one line per channel with its value, in white,
// red below the low alarm and blue above the high one. Drawing it applies the station's
// first channel to the airway, as every read does.
#pragma once

#include "core/workspace.h"
#include "view/canvas.h"

namespace galeris {

inline constexpr Colour kLowAlarmColour = RGBColour(255, 0, 0);
inline constexpr Colour kHighAlarmColour = RGBColour(0, 0, 255);

// Nothing when monitoring is off or the airway has no station.
void ShowStations(Workspace& ws, Canvas& canvas, int airway, float midX, float midY, float size,
                  float lineStep);

}  // namespace galeris
