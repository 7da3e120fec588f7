// The fan list editor's rules.
#include "editors/logic/fan_grid.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "editors/logic/airway_edit.h"

namespace galeris {
namespace {

constexpr double kPi = 3.141592654;

bool ValidFan(const Network& net, int fan) {
  return fan >= 1 && fan <= net.FanMax && fan < static_cast<int>(net.FanName.size());
}

// One point in SI as the grid gives it.
struct FanPoint {
  double ps = 0, pt = 0, q = 0, eff = 0;
};

std::string PlainNumber(int n) {
  std::string text = std::to_string(n);
  if (n >= 0) text.insert(text.begin(), ' ');
  return text;
}

}  // namespace

std::array<std::string, FanColumn::Count> FanGridTitles(const UnitTable& units) {
  const std::string pressure = UnitCaption(units, Unit::Pressure);
  return {"Ps " + pressure, "Pt " + pressure, "Q " + UnitCaption(units, Unit::Quantity), "Efc%"};
}

std::string FanListRow(const Network& net, int fan) {
  const std::string name = ValidFan(net, fan) ? net.FanName[fan] : std::string();
  return PlainNumber(fan) + " " + (name.empty() ? "-none-" : name);
}

FanCurveChecks CurveChecksOf(const Network& net, int fan) {
  FanCurveChecks checks;
  if (!ValidFan(net, fan)) return {true, true, true};
  checks.staticEmpty = net.CurveP[fan][1][1] == net.CurveP[fan][kFanPoints][1];
  checks.totalEmpty = net.CurveP[fan][1][2] == net.CurveP[fan][kFanPoints][2];
  checks.efficiencyEmpty = net.CurveEff[fan][1] == 0 && net.CurveEff[fan][kFanPoints] == 0;
  return checks;
}

FanGridText FanGridOf(const Workspace& ws, int fan) {
  FanGridText grid;
  if (!ValidFan(ws.net, fan)) return grid;
  for (int k = 1; k <= kFanPoints; ++k) {
    grid[k][FanColumn::Static] = FullText(ws.units, ws.net.CurveP[fan][k][1], Unit::Pressure);
    grid[k][FanColumn::Total] = FullText(ws.units, ws.net.CurveP[fan][k][2], Unit::Pressure);
    grid[k][FanColumn::Quantity] = FullText(ws.units, ws.net.CurveQ[fan][k], Unit::Quantity);
    grid[k][FanColumn::Efficiency] = std::to_string(ws.net.CurveEff[fan][k]);
  }
  return grid;
}

std::optional<FanGridCell> UnreadableFanCell(const FanGridText& grid) {
  for (int k = 1; k <= kFanPoints; ++k)
    for (int c = 0; c < FanColumn::Count; ++c) {
      const std::string& text = grid[k][c];
      if (text.find_first_not_of(' ') == std::string::npos) continue;
      const std::optional<double> v = ReadNumber(text);
      if (!v || !std::isfinite(*v)) return FanGridCell{k, c};
    }
  return std::nullopt;
}

std::optional<FanGridScale> StoreFanGrid(Workspace& ws, int fan, const FanGridText& grid,
                                         bool staticEmpty, std::string& name) {
  if (!ValidFan(ws.net, fan)) return std::nullopt;
  // Every cell is read before anything is stored, so that a bad one leaves the slot alone.
  if (UnreadableFanCell(grid)) {
    ws.ui.Inform(kMsgNumberFormat);
    return std::nullopt;
  }
  std::vector<FanPoint> points(kFanPoints);
  std::array<double, FanColumn::Count> last{};
  for (int k = 1; k <= kFanPoints; ++k) {
    for (int c = 0; c < FanColumn::Count; ++c) {
      const std::string& text = grid[k][c];
      if (text.find_first_not_of(' ') == std::string::npos) continue;  // keeps the previous
      last[c] = *ReadNumber(text);
    }
    FanPoint& p = points[k - 1];
    p.ps = FromDisplay(ws.units, last[FanColumn::Static], Unit::Pressure);
    p.pt = FromDisplay(ws.units, last[FanColumn::Total], Unit::Pressure);
    p.q = std::max(0.0, FromDisplay(ws.units, last[FanColumn::Quantity], Unit::Quantity));
    p.eff = std::nearbyint(std::clamp(last[FanColumn::Efficiency], 0.0, 100.0));
  }

  // The insertion of the original is a stable sort on falling pressure.
  auto key = [staticEmpty](const FanPoint& p) { return staticEmpty ? p.pt : p.ps; };
  std::stable_sort(points.begin(), points.end(),
                   [&](const FanPoint& a, const FanPoint& b) { return key(a) > key(b); });
  for (int k = 1; k < kFanPoints; ++k)
    if (points[k].q == 0 && key(points[k]) == 0) points[k] = points[k - 1];

  FanGridScale scale;
  Network& net = ws.net;
  for (int k = 1; k <= kFanPoints; ++k) {
    const FanPoint& p = points[k - 1];
    net.CurveP[fan][k][1] = static_cast<float>(p.ps);
    net.CurveP[fan][k][2] = static_cast<float>(p.pt);
    net.CurveQ[fan][k] = static_cast<float>(p.q);
    net.CurveEff[fan][k] = static_cast<std::int16_t>(p.eff);
    scale.MaxQ = std::max(scale.MaxQ, ToDisplay(ws.units, p.q, Unit::Quantity));
    scale.MaxP = std::max({scale.MaxP, ToDisplay(ws.units, p.ps, Unit::Pressure),
                           ToDisplay(ws.units, p.pt, Unit::Pressure)});
  }
  if (scale.MaxQ > 0 && scale.MaxP > 0 && (name.empty() || name == "-none-"))
    name = "Fan #" + std::to_string(fan);
  if (name != "-none-") net.FanName[fan] = name;
  return scale;
}

double VelocityPressure(const Workspace& ws, int fan, double quantity) {
  const double d = ws.net.FanDiameter[fan];
  const double area = d * d * kPi / 4;
  if (area == 0) return 0;
  const double v = quantity / area;
  return v * v * ws.defaults.AirDensity / 2;
}

void EstimateStaticCurve(Workspace& ws, int fan) {
  if (!ValidFan(ws.net, fan)) return;
  Network& net = ws.net;
  for (int k = 1; k <= kFanPoints; ++k)
    net.CurveP[fan][k][1] = static_cast<float>(
        std::floor(net.CurveP[fan][k][2] - VelocityPressure(ws, fan, net.CurveQ[fan][k])));
}

bool EstimateTotalCurve(Workspace& ws, int fan) {
  if (!ValidFan(ws.net, fan)) return false;
  Network& net = ws.net;
  if (net.CurveQ[fan][1] == 0 && net.CurveQ[fan][kFanPoints] == 0) return false;
  if (net.FanDiameter[fan] == 0) {
    ws.ui.Inform("No fan diameter has been entered for Fan " + std::to_string(fan) +
                 ".  Cannot estimate Total Pressure unless the velocity pressure can be "
                 "calculated from the fan diameter!!");
    return false;
  }
  for (int k = 1; k <= kFanPoints; ++k)
    net.CurveP[fan][k][2] = static_cast<float>(
        std::floor(net.CurveP[fan][k][1] + VelocityPressure(ws, fan, net.CurveQ[fan][k])));
  return true;
}

void FixZeroEfficiency(Workspace& ws, int fan) {
  if (!ValidFan(ws.net, fan)) return;
  auto& eff = ws.net.CurveEff[fan];
  const int zeros = static_cast<int>(std::count(eff.begin() + 1, eff.begin() + 1 + kFanPoints, 0));
  if (zeros < 1 || zeros >= kFanPoints) return;
  ws.ui.Inform("Your fan curve contains " + std::to_string(zeros) +
               " zero efficiency value(s)\nReplacing these with the default efficiency value!");
  const auto replacement =
      static_cast<std::int16_t>(std::nearbyint(ws.defaults.FanEffDefault * 100.0));
  for (int k = 1; k <= kFanPoints; ++k)
    if (eff[k] == 0) eff[k] = replacement;
}

std::string FanDiameterText(const UnitTable& units, float diameter) {
  return diameter == 0 ? "n/a" : FullText(units, diameter, Unit::Length);
}

std::optional<float> ReadFanDiameter(const UnitTable& units, const std::string& text) {
  if (text.find_first_not_of(' ') == std::string::npos || text == "n/a") return 0.0f;
  const std::optional<double> v = ReadNumber(text);
  if (!v || !std::isfinite(*v) || *v < 0) return std::nullopt;
  return static_cast<float>(FromDisplay(units, *v, Unit::Length));
}

}  // namespace galeris
