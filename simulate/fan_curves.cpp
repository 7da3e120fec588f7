// Fan curves for the solver: validation with the free-delivery point, the working slots, and
// curve evaluation with stall and negate sides.
#include "simulate/fan_curves.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace galeris {
namespace {

bool IsNamed(const std::string& name) {
  return name.find_first_not_of(' ') != std::string::npos;
}

// A number as the system prints it into a message: a leading blank when not negative.
std::string SignedNumber(int value) {
  std::string text = std::to_string(value);
  if (value >= 0) text.insert(text.begin(), ' ');
  return text;
}

// Extends a fan type's curve with point 11; false when the curve is invalid.
bool ExtendToFreeDelivery(CurveFlows& q, CurvePressures& p) {
  p[11][1] = 0;
  p[11][2] = 0;
  int k = 0;
  for (int j = 9; j >= 1; --j) {
    if (q[j] != q[10]) {
      k = j;
      break;
    }
  }
  if (k == 0) return false;
  int c = 0;
  for (int j = 1; j <= 9 && c == 0; ++j)
    if (p[j][1] != p[10][1]) c = 1;
  for (int j = 1; j <= 9 && c == 0; ++j)
    if (p[j][2] != p[10][2]) c = 2;
  if (c == 0) return false;
  const float s = -(p[10][c] - p[k][c]) / (q[10] - q[k]);
  if (s != 0) q[11] = p[10][c] / s + q[10];
  // Static pressure falls below zero at free delivery by about the velocity pressure, which
  // the total pressure of the last point stands for.
  p[11][1] = -p[10][2];
  return true;
}

// Scales a fan type's curve by the arrangement a key records: flows by the fans in parallel,
// pressures by the fans in series.
void ScaleCurve(const CurveFlows& typeQ, const CurvePressures& typeP, int key, CurveFlows& q,
                CurvePressures& p) {
  int parallel = key / 100;
  int series = key - parallel * 100;
  if (series == 0) series = 1;
  if (parallel == 0) parallel = 1;
  for (int j = 1; j <= kCurvePoints; ++j) {
    p[j][1] = static_cast<float>(series) * typeP[j][1];
    p[j][2] = static_cast<float>(series) * typeP[j][2];
    q[j] = static_cast<float>(parallel) * typeQ[j];
  }
}

// Scales a slot's curve from its fan type by the arrangement recorded in its key.
void ScaleSlot(Network& net, int slot) {
  const int f = static_cast<int>(net.SimCurveP[slot][1][1]);
  const int key = static_cast<int>(net.SimCurveQ[slot][1]);
  ScaleCurve(net.CurveQ[f], net.CurveP[f], key, net.SimCurveQ[slot], net.SimCurveP[slot]);
}

int UncheckedArrangementKey(const Network& net, int airway) {
  int n = net.NoOfFans[airway];
  if (n == 0) n = 101;  // deliberately not mended: the key reads 10101 or 201
  return (net.BranchCode[airway] & Bit::FansInSeries) ? n + 100 : n * 100 + 1;
}

float BlendedPressure(const CurvePressures& p, int point, std::int16_t fraction) {
  return static_cast<float>(fraction) * (p[point][2] - p[point][1]) / 100.0f + p[point][1];
}

}  // namespace

void ValidateFanCurves(Workspace& ws) {
  Network& net = ws.net;
  const int last = std::min<int>(net.FanMax, static_cast<int>(net.FanName.size()) - 1);
  for (int f = 1; f <= last; ++f) {
    if (!IsNamed(net.FanName[f])) continue;
    if (!ExtendToFreeDelivery(net.CurveQ[f], net.CurveP[f])) {
      ws.ui.Message("Invalid Fan Curve : Fan curve #" + SignedNumber(f));
      return;
    }
  }
}

int FanArrangementKey(const Network& net, int airway) {
  const int key = UncheckedArrangementKey(net, airway);
  if (key > 32767 || key < -32768)
    throw std::overflow_error("The number of fans on airway " +
                              std::to_string(net.AirwayNo[airway]) + " is too large to simulate");
  return key;
}

void BuildSimCurves(Workspace& ws) {
  Network& net = ws.net;
  SimRun& run = ws.sim;
  run.SimCurveCount = 0;
  run.SimFanCount = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int fan = net.FanNumber[i];
    net.FanSlot[i] = static_cast<float>(fan);
    if (fan < 1) continue;
    if (fan > net.FanMax)
      throw std::out_of_range("Airway " + std::to_string(net.AirwayNo[i]) + " has fan number " +
                              std::to_string(fan) + ", which is not in the fan database");
    ++run.SimFanCount;
    const int key = FanArrangementKey(net, i);
    // Until the curves are scaled, point 1 of a slot records its fan type and key.
    int slot = 0;
    for (int s = 1; s <= run.SimCurveCount; ++s) {
      if (net.SimCurveP[s][1][1] == static_cast<float>(fan) &&
          net.SimCurveQ[s][1] == static_cast<float>(key)) {
        slot = s;
        break;
      }
    }
    if (slot == 0) {
      if (run.SimCurveCount >= net.FanMax)
        throw std::length_error(
            "There are more combinations of fan type and arrangement than fan slots - increase "
            "the number of fans in the defaults");
      slot = ++run.SimCurveCount;
      net.SimCurveP[slot][1][1] = static_cast<float>(fan);
      net.SimCurveQ[slot][1] = static_cast<float>(key);
    }
    net.FanSlot[i] = static_cast<float>(slot);
  }
  for (int s = 1; s <= run.SimCurveCount; ++s) ScaleSlot(net, s);
}

float CurvePressure(const Network& net, int point, int slot, int airway) {
  return BlendedPressure(net.SimCurveP[slot], point, net.CurveFraction[airway]);
}

FanPoint EvaluateFanCurve(const Network& net, int slot, float flow, int airway,
                          float fixedPressure) {
  if (slot == kFixedPressureSlot) {
    FanPoint r;
    r.FanP = fixedPressure;
    r.Slope = kFixedPressureSlope;
    return r;
  }
  return EvaluateFanCurve({net.SimCurveQ[slot], net.SimCurveP[slot]}, flow,
                          net.CurveFraction[airway]);
}

FanPoint EvaluateFanCurve(const WorkingCurve& curve, float flow, std::int16_t fraction) {
  FanPoint r;
  const CurveFlows& q = curve.Q;
  if (flow < q[1]) {
    r.State = FanStalled;
    r.FanP = BlendedPressure(curve.P, 1, fraction);
    r.Slope = kOffCurveSlope;
    return r;
  }
  if (flow >= q[11]) {
    r.State = FanNegated;
    r.FanP = 0;
    r.Slope = kOffCurveSlope;
    return r;
  }
  int k = 2;
  while (k <= 10 && !(flow < q[k])) ++k;
  const float pk = BlendedPressure(curve.P, k, fraction);
  r.Slope = (BlendedPressure(curve.P, k - 1, fraction) - pk) / (q[k - 1] - q[k]);
  r.FanP = pk + (flow - q[k]) * r.Slope;
  return r;
}

FanPoint EvaluateAirwayFan(const Network& net, int airway) {
  const int f = net.FanNumber[airway];
  if (f < 1 || f > net.FanMax || f >= static_cast<int>(net.CurveQ.size())) return {};
  CurveFlows typeQ = net.CurveQ[f];
  CurvePressures typeP = net.CurveP[f];
  if (typeQ[11] <= typeQ[10] && !ExtendToFreeDelivery(typeQ, typeP)) return {};
  CurveFlows q{};
  CurvePressures p{};
  ScaleCurve(typeQ, typeP, UncheckedArrangementKey(net, airway), q, p);
  return EvaluateFanCurve({q, p}, net.Quantity[airway], net.CurveFraction[airway]);
}

float EvaluateFanEfficiency(const Workspace& ws, int airway) {
  const Network& net = ws.net;
  float eff = ws.defaults.FanEffDefault * 100.0f;
  const int f = net.FanNumber[airway];
  if (f < 1 || f > net.FanMax) return eff;
  const auto& e = net.CurveEff[f];
  const auto& q = net.CurveQ[f];
  int sum = 0;
  for (int j = 1; j <= 10; ++j) sum += e[j];
  if (sum == 0) return eff;
  int n = net.NoOfFans[airway];
  if (net.BranchCode[airway] & Bit::FansInSeries) n = 1;
  if (n < 1) n = 1;  // a count of 0 would divide by zero: the curve of one fan stands
  const float flow = net.Quantity[airway] / static_cast<float>(n);
  if (flow > q[10]) return e[10];
  if (flow < q[1]) return e[1];
  int k = 2;
  while (k <= 10 && !(flow < q[k])) ++k;
  if (k == 11) k = 10;
  if (q[k] == q[k - 1]) return e[k];
  const double share = (flow - q[k - 1]) / (q[k] - q[k - 1]);
  return static_cast<float>(e[k - 1] + share * (e[k] - e[k - 1]));
}

}  // namespace galeris
