// The fan chart: a fan type's static, total and efficiency curves scaled to the number of fans
// on an airway and their arrangement, with the duty point, drawn on any canvas over a
// 1000 x 1000 plot (y downwards) with margins for the axis marks. The airway info report shows
// it; the fan database editor and printing use the same drawing.
#pragma once

#include "core/network_store.h"
#include "core/units.h"
#include "view/canvas.h"

namespace galeris {

// The world rectangle the chart is drawn in: the plot from 0 to 1000 in both directions and
// room for the marks around it.
inline constexpr float kFanChartLeft = -300, kFanChartTop = -80;
inline constexpr float kFanChartWidth = 1470, kFanChartHeight = 1180;

// The largest flow and pressure of the fan after scaling, in SI.
struct FanChartScale {
  double MaxQ = 0, MaxP = 0;
};
FanChartScale FanChartScaleOf(const Network& net, int fan, int fans, bool series);

// The airway's operating point in SI: flow, static pressure and total pressure.
struct FanChartDuty {
  double Quantity = 0, Pressure = 0, Total = 0;
};

// Clears the canvas and draws the chart; duty may be null. A fan with no curve leaves the
// axes alone.
void DrawFanChart(Canvas& canvas, const Network& net, const UnitTable& units, int fan, int fans,
                  bool series, const FanChartDuty* duty);

// The flow and pressure under a point of the plot, in SI.
struct FanChartReading {
  double Quantity = 0, Pressure = 0;
};
FanChartReading FanChartReadout(const FanChartScale& scale, float x, float y);

}  // namespace galeris
