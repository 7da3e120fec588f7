// The network's totals as "Network Summary" shows them: airflow from the surface, air power,
// the power put in by fans and fixed quantities, efficiency, mine resistance, yearly power
// cost, the counts and length of the airways, and the self-check of the last run. The dialog
// and the command line share it.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

// The sums of one pass over the airways, SI.
struct NetworkSums {
  double TotalAirflow = 0;  // m3/s entering from the surface
  double AirPower = 0;      // W, sum of R Q^3
  double InputPower = 0;    // W, fans and fixed quantities
  double TotalLength = 0;   // m
  int FanCount = 0;
};

NetworkSums SumNetwork(const Workspace& ws);

// One line of the summary: the control that shows it, its label, the value as shown and the
// unit's text (empty for plain numbers). A value that is not shown is empty.
struct SummaryRow {
  std::string Control;
  std::string Label;
  std::string Value;
  std::string Unit;
};

std::vector<SummaryRow> SummaryRows(const Workspace& ws, const NetworkSums& sums);

// Above the figures while the network is not balanced (NetworkBalanced 0).
inline constexpr const char* kUnsolvedSummaryNote =
    "Not simulated since the network was opened or changed: these figures come from the flows "
    "as they stand, not from a balanced network.";

}  // namespace galeris
