// The airway editor's rules: loading the fields from the store, checking and committing them.
#include "editors/logic/airway_edit.h"

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "core/airway_values.h"
#include "core/number_format.h"

namespace galeris {
namespace {

// The editor's own pi for the section conversions and the orifice area.
constexpr double kPi = 3.1415926;
constexpr float kSmallestDimension = 0.01f;  // no section is ever stored as zero
constexpr int kFixedPressureFan = -1;        // FanNumber of a fixed-pressure airway
constexpr int kMaxFansOnAirway = 10;         // the ceiling of the VSF spin control
constexpr int kStations = 50;
constexpr const char* kTableOneDecimal = "0.0";

std::string Trim(const std::string& s) {
  const auto first = s.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string Upper(std::string s) {
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

// A display value with the precision of a single, so that the text reads back to the same
// stored value without a tail of binary noise.
double SinglePrecision(double v) {
  if (v == 0 || !std::isfinite(v)) return v;
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.7g", v);
  return std::strtod(buffer, nullptr);
}

NumberField TableField(const UnitTable& units, double si, int row) {
  return MakeNumberField(si, FormatValue(units, si, row));
}

NumberField FullField(const UnitTable& units, double si, int row) {
  return MakeNumberField(si, FullText(units, si, row));
}

// The SI value of a box: the stored value when the box was left as filled.
double ValueOf(const UnitTable& units, const NumberField& f, int row) {
  if (f.text == f.shownText) return f.shown;
  return FromDisplay(units, ReadNumber(f.text).value_or(0), row);
}

int WidthUnitOf(int shapeType) {
  return shapeType == 2 ? Unit::Area : Unit::Length;
}

void SetBit(std::int32_t& code, std::int32_t bit, bool on) {
  code = on ? (code | bit) : (code & ~bit);
}

int ClampedIndex(int index) {
  return std::clamp(index, 0, kUserGiven);
}

// One check of a number box.
struct NumberRule {
  AirField field;
  const char* label;
  bool negativeAllowed;
};

std::optional<FieldError> CheckNumber(const UnitTable& units, const NumberField& f, int row,
                                      const NumberRule& rule, bool emptyAllowed) {
  if (f.text == f.shownText) return std::nullopt;
  if (Trim(f.text).empty()) {
    if (emptyAllowed) return std::nullopt;
    return FieldError{rule.field, kMsgDataEntry};
  }
  const std::optional<double> v = ReadNumber(f.text);
  if (!v) return FieldError{rule.field, kMsgDataEntry};
  const double si = FromDisplay(units, *v, row);
  if ((*v < 0 && !rule.negativeAllowed) || !std::isfinite(si) || std::fabs(si) > FLT_MAX)
    return FieldError{rule.field, std::string(rule.label) + " is out of range"};
  return std::nullopt;
}

std::optional<FieldError> CheckWhole(const std::string& text, AirField field, const char* label,
                                     int most) {
  const std::optional<double> v = ReadNumber(text);
  if (!v) return FieldError{field, kMsgDataEntry};
  const long long n = RoundHalfEven(*v);
  if (n < 0 || n > most) return FieldError{field, std::string(label) + " is out of range"};
  return std::nullopt;
}

int WholeOf(const std::string& text) {
  return static_cast<int>(RoundHalfEven(ReadNumber(text).value_or(0)));
}

// The values of the boxes in SI, read once for all airways of a commit.
struct Values {
  double width = 0, height = 0, flow = 0, pres = 0, length = 0;
  double fixRes = 0, wall = 0, shock = 0;
  bool fixResGiven = false, wallGiven = false, shockGiven = false;
  int parallel = 1, fans = 0, curvePart = 0;
};

Values ReadValues(const UnitTable& units, const AirEditFields& f) {
  Values v;
  v.width = ValueOf(units, f.Width, WidthUnitOf(f.ShapeType));
  v.height = ValueOf(units, f.Height, Unit::Length);
  v.flow = ValueOf(units, f.Flow, Unit::Quantity);
  v.pres = ValueOf(units, f.Pres, Unit::Pressure);
  v.length = ValueOf(units, f.Length, Unit::Coordinates);
  v.fixRes = ValueOf(units, f.FixRes, Unit::Resistance);
  v.wall = ValueOf(units, f.Wall, Unit::FrictionFactor);
  v.shock = ValueOf(units, f.Shock, Unit::Length);
  v.fixResGiven = !Trim(f.FixRes.text).empty();
  v.wallGiven = !Trim(f.Wall.text).empty();
  v.shockGiven = !Trim(f.Shock.text).empty();
  v.parallel = WholeOf(f.MultiAir);
  v.fans = WholeOf(f.FanN);
  v.curvePart = WholeOf(f.CPart);
  return v;
}

// A node keeps one name on all its airways.
void RenameNode(Network& net, Key node, const Text40& name) {
  if (node == SurfaceKey || node == 0) return;
  for (int k = 1; k <= net.BranchCount; ++k) {
    if (net.EntryNodeId[k] == node) net.EntryNodeName[k] = name;
    if (net.ExitNodeId[k] == node) net.ExitNodeName[k] = name;
  }
}

void ApplyLayer(Network& net, std::int16_t& layer, bool primary, int row, int edited,
                const std::string& text) {
  std::vector<std::string>& names = primary ? net.PrimaryLayerName : net.SecondLayerName;
  if (edited > 0 && edited < static_cast<int>(names.size()) && !Trim(text).empty()) {
    names[edited] = Trim(text);
    layer = static_cast<std::int16_t>(edited);
  } else {
    layer = static_cast<std::int16_t>(std::max(row, 1));
  }
}

// ApplyFields for one airway. Single mode writes everything; multiple mode the touched fields.
void ApplyToAirway(Workspace& ws, int i, AirEditFields f, const Values& v, bool single) {
  Network& net = ws.net;
  const Defaults& d = ws.defaults;
  std::int32_t& code = net.BranchCode[i];
  auto applies = [&](AirField field) { return single || f.IsTouched(field); };
  double fixRes = v.fixRes;
  bool fixResGiven = v.fixResGiven;

  // A pressure and a quantity given together fix the resistance that joins them.
  if (single && f.ChkPress && f.CheckFix) {
    f.ChkFixRes = true;
    if (v.pres != 0 && v.flow != 0) {
      fixRes = std::fabs(v.pres / (v.flow * v.flow));
      fixResGiven = true;
    }
    f.ChkPress = f.CheckFix = false;
    net.Pressure[i] = static_cast<float>(v.pres);
    net.FanNumber[i] = 0;
  }
  if (applies(AirField::Direction)) SetBit(code, Bit::FixedDirection, f.CheckDirection);
  if (applies(AirField::Primary))
    ApplyLayer(net, net.PrimaryLayer[i], true, f.PrimaryLayer, f.PrimaryEdited, f.PrimaryText);
  if (applies(AirField::Second))
    ApplyLayer(net, net.SecondLayer[i], false, f.SecondLayer, f.SecondEdited, f.SecondText);
  if (applies(AirField::MultiAir)) {
    code &= ~(Bit::Rectangular | Bit::Round | Bit::Custom);
    code |= ShapeBitOf(f.ShapeType);
  }
  if (single) {
    net.BranchName[i] = Trim(f.Name);
    net.EntryNodeName[i] = Trim(f.EntryName);
    net.ExitNodeName[i] = Trim(f.ExitName);
    net.Comment[i] = Trim(f.Comment);
    RenameNode(net, net.EntryNodeId[i], net.EntryNodeName[i]);
    RenameNode(net, net.ExitNodeId[i], net.ExitNodeName[i]);
    net.Quantity[i] = static_cast<float>(v.flow);
    net.RemoteStation[i] = static_cast<std::int16_t>(f.RemoteStation);
    SetBit(code, Bit::FixedDirection, f.CheckDirection);
    if (f.ChkPress) {
      net.FanNumber[i] = kFixedPressureFan;
      net.Pressure[i] = static_cast<float>(v.pres);
    } else if (net.FanNumber[i] == kFixedPressureFan) {
      net.FanNumber[i] = 0;
    }
    SetBit(code, Bit::FixedQuantity, f.CheckFix);
    SetBit(code, Bit::ForceEntrySurface, f.SurfaceEntry);
    SetBit(code, Bit::ForceExitSurface, f.SurfaceExit);
  }
  // The services box is written in both modes without a touch mark.
  SetBit(code, Bit::Services, f.CheckService);
  if (applies(AirField::Length)) SetBit(code, Bit::FixedLength, f.CheckLength);
  if (applies(AirField::AirType)) {
    SetBit(code, Bit::Fresh, f.Fresh);
    SetBit(code, Bit::Exhaust, f.Exhaust);
  }
  if (applies(AirField::ShowData)) SetBit(code, Bit::ShowData, f.ShowData);
  const bool ownShape = (code & ShapeBitOf(f.ShapeType)) != 0;
  if (applies(AirField::Width) && ownShape) net.Dim[i][2] = static_cast<float>(v.width);
  if (applies(AirField::Height) && ownShape)
    net.Dim[i][1] = f.ShapeType == 1 ? 0.0f : static_cast<float>(v.height);
  if (applies(AirField::Width) || applies(AirField::Height)) {
    for (int k = 1; k <= 2; ++k)
      if (net.Dim[i][k] == 0) net.Dim[i][k] = kSmallestDimension;
  }
  if (applies(AirField::MultiAir)) net.ParallelCount[i] = static_cast<std::int16_t>(v.parallel);
  if (applies(AirField::Length)) net.Length[i] = static_cast<float>(v.length);
  if (applies(AirField::FixRes)) {
    if (f.ChkFixRes) {
      net.ResType[i] = kUserGiven;
      if (fixResGiven && fixRes > 0) net.Resistance[i] = static_cast<float>(fixRes);
    } else {
      net.ResType[i] = static_cast<std::int16_t>(ClampedIndex(f.ResIndex));
      net.Resistance[i] = ResPresetValue(d, net.ResType[i]);
    }
  }
  if (applies(AirField::Wall)) {
    if (f.ChkFixK) {
      net.WallType[i] = kUserGiven;
      if (v.wallGiven && v.wall > 0) net.WallFactor[i] = static_cast<float>(v.wall);
    } else {
      net.WallType[i] = static_cast<std::int16_t>(ClampedIndex(f.WallIndex));
      net.WallFactor[i] = WallPresetValue(d, net.WallType[i]);
    }
  }
  if (applies(AirField::Shock)) {
    if (f.ChkShock) {
      net.ShockType[i] = kUserGiven;
      if (v.shockGiven) net.ShockFactor[i] = static_cast<float>(v.shock);
    } else {
      net.ShockType[i] = static_cast<std::int16_t>(ClampedIndex(f.ShockIndex));
      net.ShockFactor[i] = ShockPresetValue(d, net.ShockType[i]);
    }
  }
  CalcResistance(ws, i);
  if (!single) return;

  // Fans. An airway whose fan is missing from the list keeps it.
  int fans = v.fans;
  if (fans > 0 && net.ParallelCount[i] >= 2) {
    ws.ui.Inform(kMsgFansInParallelAirways);
    fans = 0;
  }
  if (fans != 0) {
    if (f.FanFound || f.Fan != 0) net.FanNumber[i] = static_cast<std::int16_t>(f.Fan);
    code |= Bit::FixedDirection;
  } else {
    if (net.FanNumber[i] != kFixedPressureFan) net.FanNumber[i] = 0;
    if (!f.CheckDirection) code &= ~Bit::FixedDirection;
  }
  if (net.FanNumber[i] < 1) {
    net.NoOfFans[i] = 0;
  } else {
    net.NoOfFans[i] = static_cast<std::int16_t>(std::max(fans, 1));
    code &= ~Bit::FixedQuantity;  // a fan and a fixed quantity exclude each other
  }
  SetBit(code, Bit::FansInSeries, f.Series);
  net.CurveFraction[i] = static_cast<std::int16_t>(std::min(v.curvePart, 100));
}

// The airways a commit changes, each once: the selection, or the airway and, when its node
// names change, every airway of those nodes.
std::vector<int> CommitTargets(const Network& net, int mode, int airway) {
  std::set<int> targets;
  if (mode == AirEditMode::Multiple) {
    for (int k = 1; k <= net.BranchCount; ++k)
      if (net.BranchCode[k] & Bit::Selected) targets.insert(k);
    return {targets.begin(), targets.end()};
  }
  targets.insert(airway);
  for (const Key node : {net.EntryNodeId[airway], net.ExitNodeId[airway]}) {
    if (node == SurfaceKey || node == 0) continue;
    for (int k = 1; k <= net.BranchCount; ++k)
      if (net.EntryNodeId[k] == node || net.ExitNodeId[k] == node) targets.insert(k);
  }
  return {targets.begin(), targets.end()};
}

std::vector<PresetRow> Rows(const std::array<std::string, kPresetSlots>& names,
                            bool skipUndefined) {
  std::vector<PresetRow> rows;
  for (int k = 0; k < kUserGiven; ++k) {
    if (names[k].empty()) continue;
    if (skipUndefined && Upper(Trim(names[k])) == "UNDEFINED") continue;
    rows.push_back({names[k], k});
  }
  return rows;
}

}  // namespace

std::string UnitCaption(const UnitTable& units, int row) {
  if (row < 1 || row > kUnitRows) return "";
  const int system = units.UnitSystem == 2 ? 2 : 1;
  return units.UnitText[row][system];
}

std::optional<double> ReadNumber(const std::string& text) {
  std::string s = Trim(text);
  if (s.empty()) return std::nullopt;
  const char separator = MachineDecimalSeparator();
  for (char& c : s)
    if (c == separator) c = '.';
  for (const char c : s) {
    if (!(std::isdigit(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == '+' ||
          c == 'e' || c == 'E'))
      return std::nullopt;
  }
  char* end = nullptr;
  const double v = std::strtod(s.c_str(), &end);
  if (end != s.c_str() + s.size() || !std::isfinite(v)) return std::nullopt;
  return v;
}

int ShapeTypeOf(std::int32_t branchCode) {
  if (branchCode & Bit::Custom) return 2;
  if (branchCode & Bit::Round) return 1;
  return 0;
}

std::int32_t ShapeBitOf(int shapeType) {
  return shapeType == 1 ? Bit::Round : shapeType == 2 ? Bit::Custom : Bit::Rectangular;
}

SectionEquivalents EquivalentsOf(int shapeType, double dim1, double dim2) {
  SectionEquivalents e;
  if (shapeType == 1) {
    e.Diameter = e.Width = e.Height = dim2;
    e.Area = (dim2 / 2) * (dim2 / 2) * kPi;
    e.Perimeter = dim2 * kPi;
  } else if (shapeType == 2) {
    e.Area = dim2;
    e.Perimeter = dim1;
    e.Width = e.Height = e.Diameter = std::sqrt(std::max(dim2, 0.0));
  } else {
    e.Height = dim1;
    e.Width = e.Diameter = dim2;
    e.Area = dim1 * dim2;
    e.Perimeter = 2 * dim2 + 2 * dim1;
  }
  return e;
}

NumberField MakeNumberField(double si, std::string text) {
  NumberField f;
  f.text = text;
  f.shownText = std::move(text);
  f.shown = si;
  return f;
}

std::string FullText(const UnitTable& units, double value, int row) {
  return FormatNumber(SinglePrecision(ToDisplay(units, value, row)), kPlainPicture);
}

ShapeFields ShowShape(const UnitTable& units, int shapeType, const SectionEquivalents& e) {
  if (shapeType == 1)
    return {"Diam", "", Unit::Length, FullField(units, e.Diameter, Unit::Length),
            MakeNumberField(0, "0")};
  if (shapeType == 2)
    return {"Area", "Perim", Unit::Area, FullField(units, e.Area, Unit::Area),
            FullField(units, e.Perimeter, Unit::Length)};
  return {"Width", "Height", Unit::Length, FullField(units, e.Width, Unit::Length),
          FullField(units, e.Height, Unit::Length)};
}

int CurveTypeOf(int curveFraction) {
  if (curveFraction == 0) return 0;
  if (curveFraction == 100) return 1;
  return 2;
}

int CurvePartFor(int curveType, std::int32_t defaultCurveFraction) {
  if (curveType == 0) return 0;
  if (curveType == 1) return 100;
  return defaultCurveFraction >= 1 && defaultCurveFraction < 100 ? defaultCurveFraction : 50;
}

AirEditFields LoadAirEdit(const Workspace& ws, int airway) {
  const Network& net = ws.net;
  const UnitTable& u = ws.units;
  const int i = std::clamp(airway, 1, std::max<int>(net.BranchCount, 1));
  const std::int32_t code = net.BranchCode[i];
  AirEditFields f;
  f.Unique = std::to_string(net.AirwayNo[i]);
  f.Name = Trim(net.BranchName[i].Trimmed());
  f.EntryName = Trim(net.EntryNodeName[i].Trimmed());
  f.ExitName = Trim(net.ExitNodeName[i].Trimmed());
  f.Comment = Trim(net.Comment[i].Trimmed());
  f.ShapeType = ShapeTypeOf(code);
  f.Equiv = EquivalentsOf(f.ShapeType, net.Dim[i][1], net.Dim[i][2]);
  const ShapeFields shape = ShowShape(u, f.ShapeType, f.Equiv);
  f.Width = shape.width;
  f.Height = shape.height;
  f.PrimaryLayer = std::clamp<int>(net.PrimaryLayer[i], 1, kPrimaryLayers);
  f.SecondLayer = std::clamp<int>(net.SecondLayer[i], 1, kSecondLayers);
  f.MultiAir = net.ParallelCount[i] <= 1 ? "1" : std::to_string(net.ParallelCount[i]);
  f.CheckFix = code & Bit::FixedQuantity;
  f.CheckLength = code & Bit::FixedLength;
  f.CheckDirection = code & Bit::FixedDirection;
  f.CheckService = code & Bit::Services;
  f.ChkFixRes = net.ResType[i] == kUserGiven;
  f.ChkFixK = net.WallType[i] == kUserGiven;
  f.ChkShock = net.ShockType[i] == kUserGiven;
  f.ChkPress = net.FanNumber[i] == kFixedPressureFan;
  if (f.CheckFix && f.ChkFixRes) {
    const double p = -double{net.Resistance[i]} * net.Quantity[i] * net.Quantity[i];
    f.Pres = MakeNumberField(p, FormatNumber(ToDisplay(u, p, Unit::Pressure), kTableOneDecimal));
  } else {
    f.Pres = TableField(u, net.Pressure[i], Unit::Pressure);
  }
  f.Fresh = code & Bit::Fresh;
  f.Exhaust = code & Bit::Exhaust;
  f.ShowData = code & Bit::ShowData;
  f.SurfaceEntry = code & Bit::ForceEntrySurface;
  f.SurfaceExit = code & Bit::ForceExitSurface;
  f.Flow = TableField(u, net.Quantity[i], Unit::Quantity);
  f.Length = FullField(u, net.Length[i], Unit::Coordinates);
  f.FixRes = TableField(u, net.Resistance[i], Unit::Resistance);
  f.Wall = TableField(u, net.WallFactor[i], Unit::FrictionFactor);
  f.Shock = FullField(u, net.ShockFactor[i], Unit::Coordinates);
  f.ResIndex = f.ChkFixRes ? 0 : ClampedIndex(net.ResType[i]);
  f.WallIndex = f.ChkFixK ? 0 : ClampedIndex(net.WallType[i]);
  f.ShockIndex = f.ChkShock ? 0 : ClampedIndex(net.ShockType[i]);

  const int fan = net.FanNumber[i];
  if (fan > 0) {
    f.FanFound = fan <= net.FanMax && fan < static_cast<int>(net.FanName.size()) &&
                 !net.FanName[fan].empty();
    f.Fan = f.FanFound ? fan : 0;
  }
  f.FanN = std::to_string(net.NoOfFans[i]);
  f.Series = f.Fan > 0 && (code & Bit::FansInSeries);
  f.CurveType = CurveTypeOf(net.CurveFraction[i]);
  f.CPart = std::to_string(net.CurveFraction[i]);
  f.RemoteStation = std::clamp<int>(net.RemoteStation[i], 0, kStations);
  return f;
}

void NextShape(const UnitTable& units, AirEditFields& f) {
  // The section as typed so far, so that a size changed before the cycle is carried along.
  const double width = ValueOf(units, f.Width, WidthUnitOf(f.ShapeType));
  const double height = ValueOf(units, f.Height, Unit::Length);
  f.Equiv = EquivalentsOf(f.ShapeType, height, width);
  f.ShapeType = (f.ShapeType + 1) % kShapeTypes;
  const ShapeFields shape = ShowShape(units, f.ShapeType, f.Equiv);
  f.Width = shape.width;
  f.Height = shape.height;
  f.Touch(AirField::MultiAir);
}

std::vector<PresetRow> ResRows(const Defaults& d) {
  return Rows(d.ResName, true);
}
std::vector<PresetRow> WallRows(const Defaults& d) {
  return Rows(d.WallName, false);
}
std::vector<PresetRow> ShockRows(const Defaults& d) {
  return Rows(d.ShockName, false);
}
float ResPresetValue(const Defaults& d, int index) {
  return d.ResPreset[ClampedIndex(index)];
}
float WallPresetValue(const Defaults& d, int index) {
  return d.WallFactorPreset[ClampedIndex(index)];
}
float ShockPresetValue(const Defaults& d, int index) {
  return d.ShockPreset[ClampedIndex(index)];
}

std::vector<FanRow> FanRows(const Network& net) {
  std::vector<FanRow> rows{{0, "None"}};
  const int last = std::min<int>(net.FanMax, static_cast<int>(net.FanName.size()) - 1);
  for (int k = 1; k <= last; ++k) {
    if (net.FanName[k].empty()) continue;
    rows.push_back({k, FormatNumber(k, "@@@") + ": " + net.FanName[k]});
  }
  return rows;
}

int FanNumberOfRow(const std::string& rowText) {
  return static_cast<int>(ReadNumber(rowText.substr(0, 3)).value_or(0));
}

std::vector<std::string> LayerRows(const Network& net, bool primary) {
  const std::vector<std::string>& names = primary ? net.PrimaryLayerName : net.SecondLayerName;
  const int count = primary ? kPrimaryLayers : kSecondLayers;
  std::vector<std::string> rows;
  for (int k = 1; k <= count; ++k) {
    const std::string name = k < static_cast<int>(names.size()) ? Trim(names[k]) : "";
    rows.push_back(name.empty() ? std::to_string(k) : name);
  }
  return rows;
}

std::optional<FieldError> ValidateAirEdit(const Workspace& ws, const AirEditFields& f,
                                          bool multiple) {
  const UnitTable& u = ws.units;
  auto applies = [&](AirField field) { return !multiple || f.IsTouched(field); };
  if (!multiple) {
    for (const std::string* name : {&f.Name, &f.EntryName, &f.ExitName, &f.Comment})
      if (name->find(',') != std::string::npos) return FieldError{AirField::Name, kMsgCommaInName};
  }
  for (const std::string* name : {&f.PrimaryText, &f.SecondText})
    if (name->find(',') != std::string::npos)
      return FieldError{name == &f.PrimaryText ? AirField::Primary : AirField::Second,
                        kMsgCommaInName};

  struct Check {
    bool wanted;
    const NumberField* field;
    int row;
    NumberRule rule;
    bool emptyAllowed;
  };
  const Check checks[] = {
      {applies(AirField::Width),
       &f.Width,
       WidthUnitOf(f.ShapeType),
       {AirField::Width, "Airway width", false},
       false},
      {applies(AirField::Height) && f.ShapeType != 1,
       &f.Height,
       Unit::Length,
       {AirField::Height, "Airway height", false},
       false},
      {!multiple, &f.Flow, Unit::Quantity, {AirField::Flow, "Quantity", true}, false},
      {!multiple && (f.ChkPress || f.CheckFix),
       &f.Pres,
       Unit::Pressure,
       {AirField::Pres, "Pressure", true},
       false},
      {applies(AirField::Length),
       &f.Length,
       Unit::Coordinates,
       {AirField::Length, "Length", false},
       false},
      {applies(AirField::FixRes) && f.ChkFixRes,
       &f.FixRes,
       Unit::Resistance,
       {AirField::FixRes, "Resist", false},
       true},
      {applies(AirField::Wall) && f.ChkFixK,
       &f.Wall,
       Unit::FrictionFactor,
       {AirField::Wall, "K Factor", false},
       true},
      {applies(AirField::Shock) && f.ChkShock,
       &f.Shock,
       Unit::Length,
       {AirField::Shock, "Shock", true},
       true},
  };
  for (const Check& c : checks) {
    if (!c.wanted) continue;
    if (auto error = CheckNumber(u, *c.field, c.row, c.rule, c.emptyAllowed)) return error;
  }
  if (applies(AirField::MultiAir)) {
    if (auto e = CheckWhole(f.MultiAir, AirField::MultiAir, "Number of parallel airways",
                            kAirwayLoopLimit))
      return e;
  }
  if (!multiple) {
    if (auto e = CheckWhole(f.FanN, AirField::FanN, "Number of fans", kMaxFansOnAirway)) return e;
    if (auto e =
            CheckWhole(f.CPart, AirField::CPart, "% of useful velocity pressure", kAirwayLoopLimit))
      return e;
  }
  return std::nullopt;
}

std::optional<FieldError> CommitAirEdit(Workspace& ws, int mode, int airway,
                                        const AirEditFields& fields) {
  const bool multiple = mode == AirEditMode::Multiple;
  if (auto error = ValidateAirEdit(ws, fields, multiple)) return error;
  airway = std::clamp(airway, 1, std::max<int>(ws.net.BranchCount, 1));
  const std::vector<int> targets = CommitTargets(ws.net, mode, airway);
  const Values values = ReadValues(ws.units, fields);
  for (const int k : targets) JournalBefore(ws.journal, k);
  if (multiple) {
    for (const int k : targets) ApplyToAirway(ws, k, fields, values, false);
  } else {
    ApplyToAirway(ws, airway, fields, values, true);
  }
  for (const int k : targets) JournalAfter(ws.journal, k);
  CloseUndoAction(ws.journal);
  if (mode == AirEditMode::ToDefaults) CopyAirwayToDefaults(ws, airway);
  return std::nullopt;
}

void CopyAirwayToDefaults(Workspace& ws, int airway) {
  const Network& net = ws.net;
  const SavedSettings before = SettingsOf(ws);
  Defaults& d = ws.defaults;
  const int shape = ShapeTypeOf(net.BranchCode[airway]);
  const int wall = net.WallType[airway];
  if (shape == 1) {
    d.DefaultDiameter = net.Dim[airway][2];
    if (wall < kUserGiven) d.DefaultWallRaise = static_cast<std::int16_t>(wall);
  } else if (shape == 2) {
    d.DefaultPerimeter = net.Dim[airway][1];
    d.DefaultArea = net.Dim[airway][2];
    if (wall < kUserGiven) d.DefaultWallDrive = static_cast<std::int16_t>(wall);
  } else {
    d.DefaultHeight = net.Dim[airway][1];
    d.DefaultWidth = net.Dim[airway][2];
    if (wall < kUserGiven) d.DefaultWallDrive = static_cast<std::int16_t>(wall);
  }
  if (net.ShockType[airway] < kUserGiven)
    d.DefaultShock = static_cast<float>(net.ShockType[airway]);
  MarkDefaultsChanged(ws, before);
}

std::optional<std::string> OrificeWizard(Workspace& ws, int airway, const std::string& fixResText) {
  const Network& net = ws.net;
  if (net.ResType[airway] == 1) {
    ws.ui.Inform(kMsgBlockedOrifice);
    return std::nullopt;
  }
  const std::optional<std::string> answer =
      ws.ui.Input("Orifice resistance wizard",
                  "Enter the orifice area in " + UnitCaption(ws.units, Unit::Area), "");
  const double typed = answer ? ReadNumber(*answer).value_or(0) : 0;
  if (typed == 0) return std::nullopt;
  const double area = FromDisplay(ws.units, typed, Unit::Area);
  const std::int32_t code = net.BranchCode[airway];
  const double h = net.Dim[airway][1], w = net.Dim[airway][2];
  const double airwayArea = (code & Bit::Custom)  ? w
                            : (code & Bit::Round) ? w * w * kPi / 4
                                                  : w * h;
  const double term = 1 / (0.65 * area) - 1 / airwayArea;
  const double added = 0.6 * term * term;
  const std::string addedText = FormatValue(ws.units, added, Unit::Resistance);
  const float shownAdded = static_cast<float>(ReadNumber(addedText).value_or(0));
  const double total = ReadNumber(fixResText).value_or(0) + shownAdded;
  const std::string totalText = FormatNumber(total, "0.00000");
  const std::string label = UnitCaption(ws.units, Unit::Resistance);
  const MsgAnswer ok =
      ws.ui.Message("A resistance of " + addedText + " " + label +
                        " will now be added to the airway.\nThe total "
                        "resistance will be fixed to " +
                        totalText + " " + label,
                    MsgButtons::OKCancel, MsgIcon::None, "Fix resistance for oriface");
  if (ok != MsgAnswer::OK) return std::nullopt;
  return totalText;
}

}  // namespace galeris
