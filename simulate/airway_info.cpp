// The rows of the airway info report.
#include "simulate/airway_info.h"

#include <cmath>

#include "core/airway_values.h"
#include "core/number_format.h"
#include "simulate/fan_curves.h"

namespace galeris {
namespace {

constexpr double kSectionPi = 3.1415927;
constexpr double kFanPi = 3.141592654;
constexpr double kGravity = 9.81;
constexpr float kStalled = -9999.0f;
constexpr float kNegated = 9999.0f;
constexpr float kNoSurfaceRL = 99999;
constexpr int kFixedPressureFan = -1;
constexpr double kHoursPerYear = 24 * 365;

std::string Trim(const std::string& s) {
  const auto first = s.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string NameOrUnnamed(const std::string& name) {
  const std::string t = Trim(name);
  return t.empty() ? "unnamed" : t;
}

std::string LayerName(const std::vector<std::string>& names, int layer) {
  if (layer < 1 || layer >= static_cast<int>(names.size())) return "";
  return Trim(names[layer]);
}

// Power in watts and its yearly cost as the report shows them.
std::string PowerText(const Workspace& ws, double pressure, double quantity, double efficiency) {
  const double kilowatts = quantity * pressure / 1000 / efficiency;
  const double cost =
      pressure / 1000 * quantity * ws.defaults.PowerCost * kHoursPerYear / efficiency;
  return FormatValue(ws.units, kilowatts, Unit::Power, true) + " @ " +
         FormatNumber(cost, "$#,##0") + "/yr";
}

struct Section {
  double area = 0;
  std::string text;
};

Section SectionOf(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const UnitTable& u = ws.units;
  const double h = net.Dim[i][1], w = net.Dim[i][2];
  const std::int32_t code = net.BranchCode[i];
  Section s;
  if (code & Bit::Custom) {
    s.area = w;
    s.text = "Area " + FormatValue(u, w, Unit::Area, true) + " Per " +
             FormatValue(u, h, Unit::Length, true);
  } else if (code & Bit::Round) {
    s.area = w * w / 4 * kSectionPi;
    s.text = FormatValue(u, s.area, Unit::Area, true) + " : Diam " +
             FormatValue(u, w, Unit::Length, true);
  } else {
    s.area = h * w;
    s.text = FormatValue(u, s.area, Unit::Area, true) + " : " +
             FormatValue(u, h, Unit::Length, true) + " x " + FormatValue(u, w, Unit::Length, true);
  }
  return s;
}

std::string Coordinates(const Workspace& ws, const Coord3& c) {
  return FormatValue(ws.units, c[1], Unit::Coordinates) + ", " +
         FormatValue(ws.units, c[2], Unit::Coordinates) + ", " +
         FormatValue(ws.units, c[3], Unit::Coordinates);
}

}  // namespace

AirInfoReport BuildAirInfo(Workspace& ws, int i) {
  Network& net = ws.net;
  const UnitTable& u = ws.units;
  const Defaults& d = ws.defaults;
  AirInfoReport r;
  const std::int32_t code = net.BranchCode[i];
  const int fan = net.FanNumber[i];
  const bool fixedQuantity = code & Bit::FixedQuantity;
  const bool realFan = fan > 0 && fan <= net.FanMax;
  const bool fixedPressure = fan == kFixedPressureFan;
  const std::string number = std::to_string(net.AirwayNo[i]);

  if (fixedQuantity) r.heading = "Fixed Quantity Airway " + number;
  if (fan > 0) r.heading = "Fan Airway " + number;
  if (fixedPressure) r.heading = "Fixed Pressure Airway " + number;
  if (r.heading.empty()) r.heading = "Passive Airway " + number;
  if (net.ParallelCount[i] > 1) r.heading += " x " + std::to_string(net.ParallelCount[i]);

  auto add = [&r](std::string name, std::string text) {
    r.rows.push_back({std::move(name), std::move(text)});
  };
  const double q = net.Quantity[i];
  const Section section = SectionOf(ws, i);
  const double velocity = section.area != 0 ? q / section.area : 0;
  add("Branch name", Trim(net.BranchName[i].Trimmed()));
  add("Node names", NameOrUnnamed(net.EntryNodeName[i].Trimmed()) + " to " +
                        NameOrUnnamed(net.ExitNodeName[i].Trimmed()));
  add("Dimensions", section.text);
  add("Airflow", FormatValue(u, q, Unit::Quantity, true) + " @ " +
                     FormatValue(u, velocity, Unit::Velocity, true));
  std::string resistance = FormatValue(u, net.Resistance[i], Unit::Resistance, true);
  const int resType = net.ResType[i];
  if (resType == kUserGiven) resistance = "Fixed " + resistance;
  if (resType > 0 && resType < kUserGiven) resistance += " " + Trim(d.ResName[resType]);
  add("Resistance", resistance);
  add("Length", FormatValue(u, net.Length[i], Unit::Coordinates, true));
  add("Layer Names", LayerName(net.PrimaryLayerName, net.PrimaryLayer[i]) + ";" +
                         LayerName(net.SecondLayerName, net.SecondLayer[i]));
  const double from = net.FromNodeP[i], to = net.ToNodeP[i];
  add("Node Rel Pres", FormatValue(u, from, Unit::Pressure, true) + " to " +
                           FormatValue(u, to, Unit::Pressure, true));
  const double absFrom = from / 1000 + d.SurfacePressure, absTo = to / 1000 + d.SurfacePressure;
  add("Node Abs Pres", FormatValue(u, absFrom, Unit::BarometricPressure, true) + " to " +
                           FormatValue(u, absTo, Unit::BarometricPressure, true));
  const double baseRL =
      d.SurfaceRL == kNoSurfaceRL && net.BranchCount >= 1 ? net.Coord1[1][3] : d.SurfaceRL;
  auto barometric = [&](double absolute, double z) {
    return absolute + (baseRL - z) * d.AirDensity * kGravity / 1000;
  };
  add("Node Bar Pres",
      FormatValue(u, barometric(absFrom, net.Coord1[i][3]), Unit::BarometricPressure, true) +
          " to " +
          FormatValue(u, barometric(absTo, net.Coord2[i][3]), Unit::BarometricPressure, true));
  const double friction = FrictionResistance(ws, i) * q * q;
  add("Friction Loss", FormatValue(u, friction, Unit::Pressure, true));
  add("Total Press Loss", FormatValue(u, from - to, Unit::Pressure, true));
  const double load = std::fabs((from - to) - friction);
  add("Pressure Load", FormatValue(u, load, Unit::Pressure, true) + "  @  " +
                           FormatValue(u, load * section.area / kGravity, Unit::Mass, true));

  r.entryCoordinates = Coordinates(ws, net.Coord1[i]);
  r.exitCoordinates = Coordinates(ws, net.Coord2[i]);
  if (!realFan && !fixedPressure && !fixedQuantity) return r;

  const double p = net.Pressure[i];
  double vp = 0;
  if (realFan) {
    const double a =
        double{net.FanDiameter[fan]} * net.FanDiameter[fan] * kFanPi / 4 * net.NoOfFans[i];
    if (a != 0) vp = (q / a) * (q / a) * d.AirDensity / 2;
  }
  const double pt = p + (1 - net.CurveFraction[i] / 100.0) * vp;
  r.dutyQuantity = q;
  r.dutyPressure = std::fabs(p);
  r.dutyTotal = std::fabs(pt);
  if (realFan || fixedPressure) {
    std::string text;
    if (net.Pressure[i] == kStalled && realFan)
      text = "Static " + FormatValue(u, net.CurveP[fan][1][1], Unit::Pressure, true) + " Stalled +";
    else if (net.Pressure[i] == kNegated)
      text = "Negated";
    else
      text = "Static " + FormatValue(u, std::fabs(p), Unit::Pressure, true) + "  Total " +
             FormatValue(u, std::fabs(pt), Unit::Pressure, true);
    add(realFan ? "Fan Pressures" : "Fix Pressure", text);
  }
  if (fixedQuantity) {
    add("Fixed Q Pres", FormatValue(u, p, Unit::Pressure, true));
    add("Fixed Q Power", p != 0 ? PowerText(ws, p, q, d.FanEffDefault) : "n/a");
  }
  if (fixedPressure) add("Fixed P Power", p != 0 ? PowerText(ws, p, q, d.FanEffDefault) : "n/a");
  if (realFan) {
    const double efficiency = EvaluateFanEfficiency(ws, i);
    const bool offCurve = q <= 0 || net.Pressure[i] == kStalled || net.Pressure[i] == kNegated;
    r.fanPower = offCurve || efficiency <= 0 ? "n/a" : PowerText(ws, pt, q, efficiency / 100);
    add("Fan Power", r.fanPower);
    add("Fan Efficiency", FormatNumber(efficiency / 100, "0 %"));
    r.fanChart = true;
    r.fanTitle = net.FanName[fan];
    if (net.NoOfFans[i] > 1) r.fanTitle += " x " + std::to_string(net.NoOfFans[i]);
    r.fanTitle += (code & Bit::FansInSeries) ? " in series" : " in parallel";
  }
  if (fixedQuantity && resType != kUserGiven) {
    add("Required Res", q != 0 && p < 0
                            ? FormatValue(u, std::fabs(p) / (q * q), Unit::Resistance, true)
                            : "Infinite");
  }
  return r;
}

}  // namespace galeris
