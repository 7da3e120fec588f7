// The fields of the Options dialog, as the user sees and types them, loaded from the defaults
// block (and the few settings beside it) and applied back with every limit and its message.
// What is shown is what a defaults file or a network file will carry.
#pragma once

#include <array>
#include <map>
#include <string>

#include "core/defaults.h"
#include "core/workspace.h"

namespace galeris {

inline constexpr int kPresetRows = 50;  // preset rows 0..49 of the three tables
inline constexpr int kOptionColours = 8;

struct OptionsForm {
  // Every number box by control name ("TxtCd", "txtIt", "TxtDensity", "txtHeight", ...).
  std::map<std::string, std::string> Text;
  std::array<bool, 10> Viewer{};  // ChkViewer(0..9)
  std::int16_t DataDisplay = 0;   // OptType
  int SimSource = 0;              // OptSimSource: 0 "Fixed Injection", 1 "Cummulative"
  bool Remote = false, Buffer = false, Info = false, ScrollOff = false, LayerInherit = false,
       PropertyInherit = true, EditNoRightClick = false, FullRotation = false,
       UnlimitedSpeed = false, ReverseX = false, ReverseY = false, UseArea = false,
       UnderlyingResistance = false, SaveTime = false;
  int ColourMode = 0;  // OptColour index: 0 "Levels", 1 "Fresh / Exhaust"
  int WallDrive = 0, WallRaise = 0, ShockDefault = 0;  // WallCombo, WallCombo2, ShockCombo
  std::array<std::int32_t, 9> ColourTable{};  // what Col(0..7) edit, each at its ColourPlace
  // Working copies of the preset tables, in SI.
  std::array<std::string, kPresetRows> WallName{}, ResName{}, ShockName{};
  std::array<float, kPresetRows> Wall{}, Res{}, Shock{};
  std::array<LabelFont, 5> Fonts{};  // 1..4: data values, branch names, node names, floating text
  // The data format grid: rows 1..15 of the unit table.
  std::array<std::string, 16> MetricFormat{}, ImperialFormat{};
  std::array<double, 16> ImperialFactor{};
};

// The place in ColourTable of the colour that box Col(0..7) names: the background at 0 (the
// file's palette has none, so it lasts the session), the others at their palette position + 1.
// Fresh air airways draw in the below-level colour and exhaust air airways in the above-level.
int ColourPlace(int box, bool freshExhaust);

// What an apply changed that the program must follow.
struct OptionsApplied {
  bool GridChanged = false;      // grid group, coordinates or axis signs: reset and redraw
  bool AutosaveChanged = false;  // restart the Autosave timer with AutoSaveMinutes
};

// The form filled from the settings; a value that does not apply shows "???".
OptionsForm LoadOptionsForm(const Workspace& ws);
// cmdOK: each field in turn; a value out of limits (or not a number) shows its warning and
// leaves the old setting, the other fields are still applied.
OptionsApplied ApplyOptionsForm(Workspace& ws, const OptionsForm& form);
// OptUnitType: applies the form as it stands, switches the unit system (1 SI, 2 British) and
// reloads the form in the new units.
OptionsApplied SwitchOptionUnits(Workspace& ws, OptionsForm& form, int unitSystem);
// A number format of the data format grid: formatting 1.1 with it must give a number back.
bool IsValidUnitFormat(const std::string& format);
inline constexpr const char* kMsgInvalidFormat =
    "Invalid format code - formats should look like 0 or 0.00 etc";
// A setting as a box shows it: through the unit (0 for none), in the shortest text that reads
// back as the same value (as a single when it is one).
std::string ShownValue(const UnitTable& units, double value, int unit);
// A preset name as a combo shows it: the name, or "undefined" when it is empty.
std::string PresetListName(const std::string& name);

}  // namespace galeris
