// The summary's sums and their display.
#include "tools/network_summary.h"

#include <cmath>
#include <cstdlib>

#include "core/number_format.h"
#include "simulate/fan_curves.h"
#include "simulate/pressures.h"
#include "simulate/solution_check.h"

namespace galeris {
namespace {

constexpr double kPi = 3.141592654;

// The power one airway's fan or fixed quantity puts into the air, W.
double AirwayInputPower(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const int fan = net.FanNumber[i];
  const bool fixedQuantity = net.BranchCode[i] & Bit::FixedQuantity;
  if (fan == 0 && !fixedQuantity) return 0;
  const double q = net.Quantity[i];
  double p = net.Pressure[i];
  if (p == kStallMark)
    p = fan > 0 && fan <= net.FanMax ? net.CurveP[fan][1][1] : 0;
  else if (p == kNegateMark)
    p = 0;
  if (fan == 0) return p > 0 ? p * q / ws.defaults.FanEffDefault : 0;
  const double efficiency = EvaluateFanEfficiency(ws, i);
  if (efficiency == 0) return 0;
  double velocityPressure = 0;
  if (std::fabs(net.Pressure[i]) != kNegateMark && fan > 0 && fan <= net.FanMax) {
    const double d = net.FanDiameter[fan];
    const double area = d * d * kPi / 4.0 * net.NoOfFans[i];
    if (area != 0) velocityPressure = (q / area) * (q / area) * ws.defaults.AirDensity / 2.0;
  }
  return q * (p + (1.0 - net.CurveFraction[i] / 100.0) * velocityPressure) / (efficiency / 100.0);
}

SummaryRow InUnits(const Workspace& ws, const char* control, const char* label, double value,
                   int row) {
  return {control, label, FormatValue(ws.units, value, row),
          ws.units.UnitText[row][ws.units.UnitSystem]};
}

}  // namespace

NetworkSums SumNetwork(const Workspace& ws) {
  const Network& net = ws.net;
  NetworkSums sums;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const double q = net.Quantity[i];
    if (net.EntryNodeId[i] == SurfaceKey) sums.TotalAirflow += q;
    sums.AirPower += net.Resistance[i] * q * q * q;
    sums.InputPower += AirwayInputPower(ws, i);
    sums.TotalLength += net.Length[i];
    if (net.FanNumber[i] > 0) sums.FanCount += net.NoOfFans[i];
  }
  return sums;
}

std::vector<SummaryRow> SummaryRows(const Workspace& ws, const NetworkSums& sums) {
  std::vector<SummaryRow> rows;
  rows.push_back(
      InUnits(ws, "LblAF", "Total Airflow", std::floor(sums.TotalAirflow), Unit::Quantity));
  rows.push_back(
      InUnits(ws, "LblAP", "Total Air Power", std::floor(sums.AirPower / 1000), Unit::Power));
  rows.push_back(
      InUnits(ws, "LblIP", "Network Input Power", std::floor(sums.InputPower / 1000), Unit::Power));
  rows.push_back({"LblEff", "Network Efficiency",
                  sums.InputPower != 0 ? FormatNumber(sums.AirPower / sums.InputPower, "0 %") : "",
                  ""});
  SummaryRow resistance{"LblResist", "Mine Resistance", "", ""};
  if (sums.TotalAirflow != 0)
    resistance = InUnits(ws, "LblResist", "Mine Resistance",
                         sums.AirPower / std::pow(sums.TotalAirflow, 3), Unit::Resistance);
  rows.push_back(resistance);
  const double cost = std::floor(sums.InputPower / 1000 * ws.defaults.PowerCost * 24 * 365);
  rows.push_back({"LblCost", "Annual Power Cost", FormatNumber(cost, "$#,##0"), ""});
  rows.push_back({"LblNA", "Number of Airways", std::to_string(ws.net.BranchCount), ""});
  rows.push_back(InUnits(ws, "LblLA", "Length of Airways", sums.TotalLength, Unit::Coordinates));
  rows.push_back({"LblNF", "Number of Fans", std::to_string(sums.FanCount), ""});
  // The self-check of the run that produced the flows shown, while they stand.
  if (ws.sim.Check.Done && ws.net.NetworkBalanced != 0)
    rows.push_back({"LblCheck", "Solution Check", SolutionCheckText(ws.sim.Check), ""});
  return rows;
}

}  // namespace galeris
