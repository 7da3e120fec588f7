// Network simplification: each pair of consecutive airways that meet at a plain pass-through node
// is merged into the first of them when the pair passes the filter of bend, length and likeness;
// airways with no flow can be removed as well. The whole run is one undo action.
#pragma once

#include <optional>
#include <string>

#include "core/workspace.h"

namespace galeris {

// The choices of the "Simplify Network Filter" form, in store units.
struct SimplifyFilter {
  double MaxLength = 100;            // TxtL, metres: a longer airway does not grow further
  double MaxAngle = 10;              // TxtA, degrees: a sharper bend is not merged through
  bool RemoveZeroFlow = false;       // ChkZero
  bool SameWallType = false;         // CheckK
  bool SameDimensions = false;       // CheckS
  bool NoResistancePresets = false;  // CheckR
  bool SelectedOnly = false;         // CheckSel
  bool CombineLengths = false;       // ChkCombine
};

// The ranges the form's scroll bars offer: lengths in the user's length unit, angles in degrees.
inline constexpr int kSimplifyLengthLimit = 10000;
inline constexpr int kSimplifyAngleLimit = 180;

// TxtL (a whole number in the display length unit, 0 to kSimplifyLengthLimit) and TxtA (degrees,
// 0 to 180) read into the filter; the message of the first refusal otherwise.
struct SimplifyLimits {
  std::optional<double> MaxLength, MaxAngle;
  std::string Refusal;
};
SimplifyLimits ReadSimplifyLimits(const UnitTable& units, const std::string& lengthText,
                                  const std::string& angleText);

// The bend between two airways in degrees: 0 for a straight run (and for one doubling straight
// back), 90 when either has no length.
double BendAngle(const Network& net, int i, int j);

// Runs the filter over the store, removes what it merged and, when asked, the airways without
// flow, journals the run as one action and says "The network size was reduced by N airways".
// Returns the number of airways removed.
int SimplifyNetwork(Workspace& ws, const SimplifyFilter& filter);

}  // namespace galeris
