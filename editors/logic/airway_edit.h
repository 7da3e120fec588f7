// The rules of the airway editor that need no screen: the section of an airway in all three
// shapes, the texts its fields show, the preset and fan lists, the checks on what the user
// typed, and the commit that writes the fields back to one airway or to every selected one,
// recomputes the resistance and records the change for undo as one action.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

// How the editor was opened: one airway, one airway whose section, wall and shock then become
// the defaults of new airways, or every airway of the selection.
namespace AirEditMode {
inline constexpr int Single = 1, ToDefaults = 2, Multiple = 3;
}

// ShapeType: 0 rectangular, 1 round, 2 irregular.
inline constexpr int kShapeTypes = 3;
int ShapeTypeOf(std::int32_t branchCode);
std::int32_t ShapeBitOf(int shapeType);

// The section expressed in every shape, in SI. Made from the shape's own two values
// (Dim[1] height or perimeter, Dim[2] width, diameter or area).
struct SectionEquivalents {
  double Width = 0, Height = 0, Diameter = 0, Area = 0, Perimeter = 0;
};
SectionEquivalents EquivalentsOf(int shapeType, double dim1, double dim2);

// A number box: the text in the box, and the SI value and text it was filled with, so that a
// box the user left alone commits the stored value exactly rather than its rounded text.
struct NumberField {
  std::string text;
  std::string shownText;
  double shown = 0;
};
NumberField MakeNumberField(double si, std::string text);

// The text of a stored value with every significant decimal of a single ("0.0########").
std::string FullText(const UnitTable& units, double value, int row);

// What the two section boxes show for a shape (unit 1 for sizes, 3 for an area).
struct ShapeFields {
  const char* widthLabel;
  const char* heightLabel;  // empty: the height box and its unit label are hidden
  int widthUnit;
  NumberField width, height;
};
ShapeFields ShowShape(const UnitTable& units, int shapeType, const SectionEquivalents& equiv);

// Fields whose touch marks count in multiple mode (single mode applies all).
enum class AirField {
  Name,
  Width,
  Height,
  Flow,
  Pres,
  Length,
  FixRes,
  Wall,
  Shock,
  MultiAir,
  FanN,
  CPart,
  Direction,
  Primary,
  Second,
  AirType,
  ShowData,
  Count
};
inline constexpr int kAirFieldCount = static_cast<int>(AirField::Count);

// The controls of frmAirEdit as plain values; number boxes hold display text.
struct AirEditFields {
  std::string Unique, Name, EntryName, ExitName, Comment;
  int ShapeType = 0;
  SectionEquivalents Equiv;
  NumberField Width, Height, Flow, Pres, Length, FixRes, Wall, Shock;
  std::string MultiAir = "1", FanN = "0", CPart = "0";
  bool CheckFix = false, ChkPress = false, CheckLength = false, CheckDirection = false;
  bool CheckService = false, ChkFixRes = false, ChkFixK = false, ChkShock = false;
  int ResIndex = 0, WallIndex = 0, ShockIndex = 0;  // preset index of each combo's row
  bool Fresh = false, Exhaust = false, ShowData = false;
  bool SurfaceEntry = false, SurfaceExit = false;
  int Fan = 0;           // fan number of the FanCombo2 row, 0 for "None"
  bool FanFound = true;  // false when the airway's fan is not in the list
  bool Series = false;
  int CurveType = 0;  // OptCurve: 0 static, 1 total, 2 combo
  int RemoteStation = 0;
  int PrimaryLayer = 1, SecondLayer = 1;       // 1-based rows of CmbPrimary, CmbSecond
  std::string PrimaryText, SecondText;         // the combos' edit text
  int PrimaryEdited = 0, SecondEdited = 0;     // row whose name is being typed, 0 none
  std::array<bool, kAirFieldCount> Touched{};  // multiple mode: the fields to apply

  bool IsTouched(AirField f) const { return Touched[static_cast<int>(f)]; }
  void Touch(AirField f) { Touched[static_cast<int>(f)] = true; }
};

// The controls as LoadFields fills them from one airway.
AirEditFields LoadAirEdit(const Workspace& ws, int airway);

// Cycles CmdShape: the section typed so far is carried into the next shape as an equal one.
void NextShape(const UnitTable& units, AirEditFields& fields);

// The OptCurve choice of a CurveFraction, and the fraction an option fills in.
int CurveTypeOf(int curveFraction);
int CurvePartFor(int curveType, std::int32_t defaultCurveFraction);

// Combo rows.
struct PresetRow {
  std::string name;
  int index;  // preset index, the row's item data
};
std::vector<PresetRow> ResRows(const Defaults& defaults);  // without "UNDEFINED" rows
std::vector<PresetRow> WallRows(const Defaults& defaults);
std::vector<PresetRow> ShockRows(const Defaults& defaults);
// The value a preset row stands for.
float ResPresetValue(const Defaults& defaults, int index);
float WallPresetValue(const Defaults& defaults, int index);
float ShockPresetValue(const Defaults& defaults, int index);

// FanCombo2: "None", then "  n: name" for each named fan; the first three characters are the
// fan number.
struct FanRow {
  int number;
  std::string text;
};
std::vector<FanRow> FanRows(const Network& net);
// The fan number a row's text starts with; 0 for "None" or anything unreadable.
int FanNumberOfRow(const std::string& rowText);
// Layer rows 1..16 (primary) or 1..48: the name, or the row number when it is empty.
std::vector<std::string> LayerRows(const Network& net, bool primary);

inline constexpr const char* kMsgDataEntry = "An error has occured - probably in data entry";
inline constexpr const char* kMsgFanNotDetected = "Fan not detected in fan database";
inline constexpr const char* kMsgFansInParallelAirways = "Fans not allowed in multiple airways";
inline constexpr const char* kMsgBlockedOrifice = "No orifice available on blocked ariways";
inline constexpr const char* kMsgCommaInName = "Commas are not allowed in names or comments";

// A field the user must correct: its message; nothing has been written.
struct FieldError {
  AirField field;
  std::string message;
};

// The checks run before anything is written: every applied number readable and within the
// store's limits, sizes and counts not negative, no commas in names.
std::optional<FieldError> ValidateAirEdit(const Workspace& ws, const AirEditFields& fields,
                                          bool multiple);

// OK: checks the fields, then writes them to the airway (or to every selected airway in
// multiple mode, only the touched fields), recomputes the resistance, and journals each
// touched airway before and after under one action. On a bad field nothing is written.
std::optional<FieldError> CommitAirEdit(Workspace& ws, int mode, int airway,
                                        const AirEditFields& fields);

// Mode 2: the airway's section, wall and shock become the defaults of new airways.
void CopyAirwayToDefaults(Workspace& ws, int airway);

// CmdOriface: asks for an orifice area and returns the new TxtFixRes text (the typed
// resistance plus the orifice's), or nothing when refused or cancelled.
std::optional<std::string> OrificeWizard(Workspace& ws, int airway, const std::string& fixResText);

// The unit text of a row in the current system ("m", "ft", ...).
std::string UnitCaption(const UnitTable& units, int row);

// Reads a number typed in a box: "." or the machine separator, blanks around; nothing when
// the text is empty or not a number.
std::optional<double> ReadNumber(const std::string& text);

}  // namespace galeris
