// The airway info report: what kind of airway it is, its section, flow, resistance, node
// pressures, losses, and for a fan, a fixed pressure or a fixed quantity the pressures, power
// and yearly cost, every number through the unit table. Computed from the store on demand.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

struct AirInfoRow {
  std::string name;  // LblDName
  std::string text;  // LblData
};

struct AirInfoReport {
  std::string heading;  // LblAirName
  std::vector<AirInfoRow> rows;
  std::string entryCoordinates, exitCoordinates;  // LblCoord, LblCoord2
  bool fanChart = false;  // a fan airway: the chart and the fan title are shown
  std::string fanTitle;   // LblFanName
  std::string fanPower;   // the power and cost line under the chart
  // The duty point in SI: flow, static pressure and the total pressure Pt.
  double dutyQuantity = 0, dutyPressure = 0, dutyTotal = 0;
};

inline constexpr int kAirInfoRows = 20;

AirInfoReport BuildAirInfo(Workspace& ws, int airway);

}  // namespace galeris
