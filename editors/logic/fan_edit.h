// The rules of the short fan dialog that puts a fan on an airway from the view: what it shows
// on opening and what its OK writes, journalled as one undo action.
#pragma once

#include <optional>
#include <string>

#include "core/workspace.h"

namespace galeris {

// The controls of frmFanEdit as plain values.
struct FanEditFields {
  int Fan = 0;              // fan number of the FanCombo2 row, 0 for "None"
  bool FanFound = true;     // false: the airway's fan is not in the list
  bool Series = false;      // OptSer2 (clear: OptPar2)
  std::string FanN = "0";   // TxtFanN
  int CurveType = 0;        // OptCurveType: 0 static, 1 total, 2 combo
  std::string VPart = "0";  // TxtVPart
};

FanEditFields LoadFanEdit(const Workspace& ws, int airway);

// The message of a count or a fraction that cannot be read or is out of range; nothing then
// is written.
std::optional<std::string> ValidateFanEdit(const FanEditFields& fields);

// Command1: writes the fan, count, arrangement and curve fraction to the airway, journalled
// before and after under one action. Returns the message of a bad field instead.
std::optional<std::string> CommitFanEdit(Workspace& ws, int airway, const FanEditFields& fields);

}  // namespace galeris
