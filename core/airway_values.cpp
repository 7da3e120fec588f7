// Airway resistance by Atkinson's equation, and the shock calculator's table.
#include "core/airway_values.h"

#include <cmath>

#include "core/workspace.h"

namespace galeris {
namespace {

// This calculation keeps its own pi; other formulas of the system use longer ones.
constexpr double kPi = 3.1415926;
constexpr double kStandardDensity = 1.2;  // friction factors are quoted at this density
constexpr double kSmallestArea = 0.05;
constexpr double kServicesArea = 0.8;
constexpr float kSmallestResistance = 0.00001f;
constexpr int kShockPresetCount = 6;  // the shock table stops at 5, unlike walls at 49

struct Section {
  double area = 0;
  double perimeter = 0;
};

// The section tests run one after the other, so a later shape bit overrides an earlier one.
Section SectionOf(Network& net, int i) {
  Section s;
  const std::int32_t code = net.BranchCode[i];
  if (code & Bit::Round) {
    const double d = net.Dim[i][2];
    s.area = d * d * kPi / 4;
    s.perimeter = d * kPi;
    net.Dim[i][1] = 0;
  }
  if (code & Bit::Rectangular) {
    s.area = double{net.Dim[i][1]} * net.Dim[i][2];
    s.perimeter = 2.0 * net.Dim[i][2] + 2.0 * net.Dim[i][1];
  }
  if (code & Bit::Custom) {
    s.area = net.Dim[i][2];
    s.perimeter = net.Dim[i][1];
  }
  return s;
}

void ApplyWallAndShockPresets(Network& net, const Defaults& defaults, int i) {
  const int wall = net.WallType[i];
  if (wall >= 0 && wall < kUserGiven) net.WallFactor[i] = defaults.WallFactorPreset[wall];
  const int shock = net.ShockType[i];
  if (shock >= 0 && shock < kShockPresetCount) net.ShockFactor[i] = defaults.ShockPreset[shock];
}

// The length the resistance works with: the straight distance between the ends, whose whole
// part becomes Length, unless the user fixed the length.
double WorkingLength(Network& net, int i) {
  if (net.BranchCode[i] & Bit::FixedLength) return net.Length[i];
  const double dx = static_cast<double>(net.Coord2[i][1]) - net.Coord1[i][1];
  const double dy = static_cast<double>(net.Coord2[i][2]) - net.Coord1[i][2];
  const double dz = static_cast<double>(net.Coord2[i][3]) - net.Coord1[i][3];
  const double l = std::sqrt(dx * dx + dy * dy + dz * dz);
  net.Length[i] = static_cast<float>(std::floor(l));
  return l;
}

double Atkinson(double k, double perimeter, double length, double area, double density) {
  return k * perimeter * length * density / (area * area * area * kStandardDensity);
}

float PresetOf(const Defaults& defaults, int resType) {
  if (resType <= 0 || resType >= kPresetSlots) return 0;
  return defaults.ResPreset[resType];
}

}  // namespace

void CalcResistance(Network& net, const Defaults& defaults, int i) {
  if (net.ParallelCount[i] == 0) net.ParallelCount[i] = 1;
  const float preset = PresetOf(defaults, net.ResType[i]);
  Section s = SectionOf(net, i);
  if (net.BranchCode[i] & Bit::Services) s.area -= kServicesArea;
  if (s.area <= 0) s.area = kSmallestArea;
  ApplyWallAndShockPresets(net, defaults, i);
  const double length = WorkingLength(net, i);
  if (net.ResType[i] == kUserGiven) return;

  const double le = length + net.ShockFactor[i];
  float r =
      static_cast<float>(Atkinson(net.WallFactor[i], s.perimeter, le, s.area, defaults.AirDensity));
  if (r == 0) r = kSmallestResistance;
  r = defaults.PresetOverrides != 1 ? static_cast<float>(double{r} + preset) : preset;
  const int parallel = net.ParallelCount[i];
  if (parallel > 1) r = static_cast<float>(double{r} / (static_cast<double>(parallel) * parallel));
  net.Resistance[i] = r;
}

void CalcResistance(Workspace& ws, int i) {
  CalcResistance(ws.net, ws.defaults, i);
}

double FrictionResistance(Network& net, const Defaults& defaults, int i) {
  Section s = SectionOf(net, i);
  if (s.area <= 0) s.area = kSmallestArea;
  ApplyWallAndShockPresets(net, defaults, i);
  const double length = WorkingLength(net, i);
  return Atkinson(net.WallFactor[i], s.perimeter, length + net.ShockFactor[i], s.area,
                  defaults.AirDensity);
}

double FrictionResistance(Workspace& ws, int i) {
  return FrictionResistance(ws.net, ws.defaults, i);
}

void RecalcAllResistances(Network& net, const Defaults& defaults) {
  for (int i = 1; i <= net.BranchCount; ++i) CalcResistance(net, defaults, i);
}

void RecalcAllResistances(Workspace& ws) {
  RecalcAllResistances(ws.net, ws.defaults);
}

const std::array<ShockLoss, kShockLossCount> kShockLosses = {{
    {"Bend, acute, round", 1},
    {"Bend, acute, sharp", 45},
    {"Bend, right, round", 1},
    {"Bend, right, sharp", 20},
    {"Bend, obtuse, round", 1},
    {"Bend, obtuse, sharp", 5},
    {"Contraction, gradual", 1},
    {"Contraction, abrupt", 3},
    {"Expansion, gradual", 1},
    {"Expansion, abrupt", 6},
    {"Splitting, straight branch", 10},
    {"Splitting, deflected branch", 60},
    {"Junction, straight branch", 20},
    {"Junction, deflected branch", 10},
    {"Obstruction 20% area", 30},
    {"Obstruction 40% area", 150},
    {"Doorway, open", 20},
    {"Overcast airway", 20},
    {"Inlet", 6},
    {"Discharge", 20},
}};

double ShockTotal(const std::array<ShockRow, kShockLossCount>& rows, const UnitTable& units) {
  double total = 0;
  for (int k = 0; k < kShockLossCount; ++k) {
    const double checkValue = rows[k].checked ? 1 : 0;
    total += checkValue * rows[k].count *
             ToDisplay(units, kShockLosses[k].equivalentLength, Unit::Length);
  }
  return total;
}

double ShockCountAfterClick(bool nowChecked, double count) {
  if (!nowChecked) return 0;
  return count == 0 ? 1 : count;
}

}  // namespace galeris
