// Values derived from an airway's geometry: its resistance by Atkinson's square law at the
// network's air density, the friction-only resistance shown to the user, and the table of
// standard shock losses that the shock calculator adds up into one equivalent length.
#pragma once

#include <array>

#include "core/defaults.h"
#include "core/network_store.h"
#include "core/units.h"

namespace galeris {

struct Workspace;

// Recomputes Resistance[i]; on the way refreshes WallFactor, ShockFactor and Length from the
// presets and coordinates, zeroes Dim[1] of a round airway and mends a ParallelCount of 0.
void CalcResistance(Network& net, const Defaults& defaults, int i);
void CalcResistance(Workspace& ws, int i);

// The resistance of friction and shock alone, for display: no services, presets or parallel
// airways. Stores the same side values as CalcResistance but not Resistance.
double FrictionResistance(Network& net, const Defaults& defaults, int i);
double FrictionResistance(Workspace& ws, int i);

// CalcResistance for every airway, after a change of air density or removed bulkheads.
void RecalcAllResistances(Network& net, const Defaults& defaults);
void RecalcAllResistances(Workspace& ws);

// The shock calculator's table of standard losses.
inline constexpr int kShockLossCount = 20;

struct ShockLoss {
  const char* caption;
  float equivalentLength;  // metres
};

extern const std::array<ShockLoss, kShockLossCount> kShockLosses;

// One row of the calculator as the user left it: ticked or not, and the count typed beside it.
struct ShockRow {
  bool checked = false;
  double count = 0;
};

// The calculator's total in the display's length unit: only ticked rows count, each as often
// as its count says.
double ShockTotal(const std::array<ShockRow, kShockLossCount>& rows, const UnitTable& units);

// The count a row's box gets when it is clicked: a newly ticked row with no count counts once,
// a cleared row counts nothing.
double ShockCountAfterClick(bool nowChecked, double count);

}  // namespace galeris
