// Airway labels: one switch over the data types, each value passed through the unit table.
#include "view/labels.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

#include "core/number_format.h"
#include "core/units.h"

namespace galeris {
namespace {

constexpr double kLabelPi = 3.141592654;
constexpr double kGravity = 9.81;
constexpr double kHoursPerYear = 8760;
constexpr float kStallMarker = -9999.0f;
constexpr float kNegateMarker = 9999.0f;
constexpr float kNeverReached = 9999999.0f;
constexpr double kSecondsPerDay = 86404;  // the system's own divisor for spread times

bool HasFan(const Network& net, int i) {
  return net.FanNumber[i] > 0;
}
bool IsFixedPressure(const Network& net, int i) {
  return net.FanNumber[i] == -1;
}
bool IsFixedQuantity(const Network& net, int i) {
  return (net.BranchCode[i] & Bit::FixedQuantity) != 0;
}

// The fan's operating pressure: the solver leaves it in FanSlot.
double FanPressure(const Network& net, int i) {
  return net.FanSlot[i];
}

// Pressure loss across the airway; a fan airway adds back what its fan gives.
double PressureLoss(const Network& net, int i) {
  if (HasFan(net, i)) return (net.FromNodeP[i] - net.ToNodeP[i]) + FanPressure(net, i);
  const double q = net.Quantity[i];
  return net.Resistance[i] * q * q;
}

// Fan efficiency at the airway's flow, from the curve's per cent points; the default when the
// curve holds none.
double FanEfficiency(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const int fan = net.FanNumber[i];
  double fallback = ws.defaults.FanEffDefault > 0 ? ws.defaults.FanEffDefault : 0.8;
  if (fan < 1 || fan >= static_cast<int>(net.CurveQ.size())) return fallback;
  const double q = std::fabs(net.Quantity[i]) / std::max<int>(1, net.NoOfFans[i]);
  const auto& cq = net.CurveQ[fan];
  const auto& ce = net.CurveEff[fan];
  int lastPoint = 0;
  for (int p = 1; p <= 10 && cq[p] > 0; ++p) lastPoint = p;
  if (lastPoint == 0 || ce[1] <= 0) return fallback;
  double eff = ce[lastPoint];
  if (q <= cq[1]) {
    eff = ce[1];
  } else {
    for (int p = 1; p < lastPoint; ++p) {
      if (q >= cq[p] && q <= cq[p + 1] && cq[p + 1] > cq[p]) {
        eff = ce[p] + (ce[p + 1] - ce[p]) * (q - cq[p]) / (cq[p + 1] - cq[p]);
        break;
      }
    }
  }
  return eff > 0 ? eff / 100 : fallback;
}

// Friction power in kW: the square law's cube of the flow, or for a fan airway what its fan
// takes to move the air.
double FrictionPower(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const double q = std::fabs(net.Quantity[i]);
  if (HasFan(net, i)) return q * FanPressure(net, i) / FanEfficiency(ws, i) / 1000;
  return q * q * q * net.Resistance[i] / 1000;
}

// Power in kW of the fan or the fixing on the airway: pressure plus velocity head, times flow,
// over the efficiency.
double FanPower(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const double q = std::fabs(net.Quantity[i]);
  if (HasFan(net, i)) {
    const int fan = net.FanNumber[i];
    const double diameter =
        fan < static_cast<int>(net.FanDiameter.size()) ? net.FanDiameter[fan] : 0;
    const double fanArea = kLabelPi / 4 * diameter * diameter * std::max<int>(1, net.NoOfFans[i]);
    double velocityHead = 0;
    if (fanArea > 0) {
      const double v = q / fanArea;
      velocityHead = ws.defaults.AirDensity * v * v / 2;
    }
    return (FanPressure(net, i) + velocityHead) * q / FanEfficiency(ws, i) / 1000;
  }
  if (IsFixedPressure(net, i) || IsFixedQuantity(net, i)) {
    const double eff = ws.defaults.FanEffDefault > 0 ? ws.defaults.FanEffDefault : 0.8;
    return std::fabs(net.Pressure[i]) * q / eff / 1000;
  }
  return 0;
}

double YearlyCost(const Workspace& ws, double kilowatts) {
  return kilowatts * kHoursPerYear * ws.defaults.PowerCost;
}

// The perimeter, for a custom section the stored one.
double LabelPerimeter(const Network& net, int i) {
  const std::int32_t code = net.BranchCode[i];
  const Dim2& d = net.Dim[i];
  if (code & Bit::Custom) return d[1];
  if (code & Bit::Round) return kLabelPi * d[2];
  return 2.0 * (d[1] + d[2]);
}

// Concatenation by appending: the chained operator+ trips a false overlap warning of GCC 12.
std::string Join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (std::string_view part : parts) text.append(part);
  return text;
}

std::string Format(const Workspace& ws, double value, int row) {
  return FormatValue(ws.units, value, row);
}

// The boost text: a stalled or negated fan shows the end of its curve, not the marker.
std::string BoostText(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const float p = net.Pressure[i];
  const int fan = net.FanNumber[i];
  if (HasFan(net, i) && fan < static_cast<int>(net.CurveP.size()) &&
      (p == kStallMarker || p == kNegateMarker)) {
    const auto& curve = net.CurveP[fan];
    const int fans = std::max<int>(1, net.NoOfFans[i]);
    if (p == kStallMarker)
      return Join({"Stall @ ", Format(ws, curve[1][1] * fans, Unit::Pressure)});
    int last = 1;
    for (int point = 1; point <= 10 && net.CurveQ[fan][point] > 0; ++point) last = point;
    return Join({"Negate @ ", Format(ws, curve[last][1] * fans, Unit::Pressure)});
  }
  return Format(ws, p, Unit::Pressure);
}

std::string ValueText(const Workspace& ws, int dataType, int i, const LabelSettings& settings) {
  const Network& net = ws.net;
  switch (dataType) {
    case DataType::Quantity:
      return Format(ws, net.Quantity[i], Unit::Quantity);
    case DataType::Velocity: {
      if (net.ResType[i] != 0 && settings.ResistanceSymbols) return "N/A";
      const double area = LabelArea(net, i);
      const int parallel = std::max<int>(1, net.ParallelCount[i]);
      if (area <= 0) return "N/A";
      return Format(ws, net.Quantity[i] / area / parallel, Unit::Velocity);
    }
    case DataType::TotalLoss:
      return Format(ws, PressureLoss(net, i), Unit::Pressure);
    case DataType::FrictionLoss:
      return Format(ws, net.FromNodeP[i] - net.ToNodeP[i], Unit::Pressure);
    case DataType::Boost:
      return BoostText(ws, i);
    case DataType::RegulatorLoad: {
      const bool fixed = IsFixedQuantity(net, i) || IsFixedPressure(net, i);
      const double loss = fixed ? net.Pressure[i] : PressureLoss(net, i);
      return Format(ws, LabelArea(net, i) * loss / kGravity, Unit::Mass);
    }
    case DataType::Resistance:
      if (net.ResType[i] == 0) return "N/A";
      return Format(ws, net.Resistance[i], Unit::Resistance);
    case DataType::ShockLength:
      return Format(ws, net.ShockFactor[i], Unit::Length);
    case DataType::FrictionFactor:
      return Format(ws, net.WallFactor[i], Unit::FrictionFactor);
    case DataType::Dimensions: {
      const std::int32_t code = net.BranchCode[i];
      const Dim2& d = net.Dim[i];
      if (code & Bit::Custom) {
        return Join({"Area ", Format(ws, d[2], Unit::Area), "  P ",
                     Format(ws, LabelPerimeter(net, i), Unit::Length)});
      }
      if (code & Bit::Rectangular) {
        return Join({Format(ws, d[2], Unit::Length), " x ", Format(ws, d[1], Unit::Length)});
      }
      if (code & Bit::Round) return Join({"Diam ", Format(ws, d[2], Unit::Length)});
      return "";
    }
    case DataType::AirwayLength:
      return Format(ws, net.Length[i], Unit::Coordinates);
    case DataType::FrictionPower:
      return Format(ws, FrictionPower(ws, i), Unit::Power);
    case DataType::FanPower:
      return Format(ws, FanPower(ws, i), Unit::Power);
    case DataType::FrictionCost:
      return FormatNumber(RoundHalfEven(YearlyCost(ws, FrictionPower(ws, i))), "0");
    case DataType::FanCost:
      return FormatNumber(RoundHalfEven(YearlyCost(ws, FanPower(ws, i))), "0");
    case DataType::AirwayNumber:
      return std::to_string(net.AirwayNo[i]);
    case DataType::LayerNumber:
      return Join({std::to_string(net.PrimaryLayer[i]), ",", std::to_string(net.SecondLayer[i])});
    case DataType::LayerName: {
      const int p = net.PrimaryLayer[i], s = net.SecondLayer[i];
      const std::string primary = p >= 0 && p < static_cast<int>(net.PrimaryLayerName.size())
                                      ? net.PrimaryLayerName[p]
                                      : "";
      const std::string second =
          s >= 0 && s < static_cast<int>(net.SecondLayerName.size()) ? net.SecondLayerName[s] : "";
      return Join({primary, ",", second});
    }
    case DataType::Contaminant: {
      const int band = net.SmokeData[i][2];
      if (settings.SmokeState == 1 && band != 0) return FormatNumber(band + 0.2, "0");
      return FormatNumber(net.Contaminant[i] + 0.2, "0");
    }
    case DataType::SpreadTime:
      if (net.SmokeTime[i] == kNeverReached) return "";
      // The days of the system's own divisor, shown as the time picture's seconds.
      return Format(ws, net.SmokeTime[i] / kSecondsPerDay * 86400.0, Unit::Time);
    default:
      return "";
  }
}

}  // namespace

bool IsNodeDataType(int dataType) {
  return dataType == DataType::NodeRelative || dataType == DataType::NodeAbsolute ||
         dataType == DataType::NodeBarometric || dataType == DataType::Coordinates;
}

double LabelArea(const Network& net, int i) {
  const std::int32_t code = net.BranchCode[i];
  const Dim2& d = net.Dim[i];
  if (code & Bit::Custom) return d[2];
  if (code & Bit::Round) return kLabelPi / 4 * d[2] * d[2];
  return static_cast<double>(d[2]) * d[1];
}

std::string AirwayLabel(const Workspace& ws, int dataType, int airway, int option,
                        const LabelSettings& settings) {
  const Network& net = ws.net;
  if (airway < 1 || airway > net.BranchCount) return "";
  std::string text = ValueText(ws, dataType, airway, settings);
  if (option != 0) return text;
  if (HasFan(net, airway)) {
    text = Join({"Fan", std::to_string(net.FanNumber[airway]), ":", text});
    if (net.NoOfFans[airway] > 1) text = Join({std::to_string(net.NoOfFans[airway]), "x", text});
  } else if (IsFixedPressure(net, airway)) {
    text = Join({"FixP ", text});
  } else if (IsFixedQuantity(net, airway)) {
    text = Join({"FixQ ", text});
  }
  if (net.ParallelCount[airway] > 1) {
    text = Join({"[", std::to_string(net.ParallelCount[airway]), "] ", text});
  }
  return text;
}

}  // namespace galeris
