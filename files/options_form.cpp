#include "files/options_form.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <functional>

#include "core/airway_values.h"
#include "core/number_format.h"
#include "core/typed_number.h"
#include "core/units.h"

namespace galeris {
namespace {

constexpr float kSurfaceRLUnset = 99999;
constexpr const char* kNotApplicable = "???";

// A number box with its limits, its message, and how it maps onto the settings (in SI; the
// unit row converts what is shown and typed, 0 for none).
struct LimitedBox {
  const char* control;
  double low;
  bool lowIncluded;
  double high;
  bool highIncluded;
  int unit;
  const char* message;
  std::function<double(const Workspace&)> read;
  std::function<void(Workspace&, double)> store;
};

const std::vector<LimitedBox>& LimitedBoxes() {
  using W = Workspace;
  static const std::vector<LimitedBox> boxes = {
      {"TxtCd", 1, true, 100, true, 0, "Limits of Allowable Divisions Exceeded",
       [](const W& w) { return w.defaults.MinNodeSpacing; },
       [](W& w, double v) {
         w.defaults.MinNodeSpacing = static_cast<std::int16_t>(RoundHalfEven(v));
       }},
      {"TxtTol", 0.25, true, 20, true, 0, "Limits Exceeded.  Keep values between .25% and 20%",
       [](const W& w) { return 100.0 / std::max<int>(1, w.defaults.ProximityDivisions); },
       [](W& w, double v) {
         w.defaults.ProximityDivisions = static_cast<std::int16_t>(RoundHalfEven(100 / v));
       }},
      {"TxtPowerZoom", 0, false, 200, true, 0, "Power Zoom exceeds limits",
       [](const W& w) { return w.defaults.PowerZoomSpeed; },
       [](W& w, double v) { w.defaults.PowerZoomSpeed = static_cast<float>(v); }},
      {"TxtTilt", 0, false, 45, true, 0, "Tilt rotation exceeds limits",
       [](const W& w) { return w.defaults.TiltSpeed; },
       [](W& w, double v) { w.defaults.TiltSpeed = static_cast<float>(v); }},
      {"TxtSpin", 0, false, 45, true, 0, "Spin rotation exceeds limits",
       [](const W& w) { return w.defaults.SpinSpeed; },
       [](W& w, double v) { w.defaults.SpinSpeed = static_cast<float>(v); }},
      {"TxtMj", 5, true, 1000, true, 0, "Limits of Allowable Major Grid Size Exceeded",
       [](const W& w) { return w.defaults.GridSpacing; },
       [](W& w, double v) { w.defaults.GridSpacing = v; }},
      {"Txtgwidth", 5, true, 10000, true, 0, "Limits of Allowable Major Grid Width Exceeded",
       [](const W& w) { return w.defaults.GridWidth; },
       [](W& w, double v) { w.defaults.GridWidth = static_cast<float>(v); }},
      {"Txtgx", 0, true, 1e9, true, 0, "Limits of Allowable Grid Exceeded",
       [](const W& w) { return w.defaults.GridCentreX; },
       [](W& w, double v) { w.defaults.GridCentreX = static_cast<float>(v); }},
      {"Txtgy", 0, true, 1e9, true, 0, "Limits of Allowable Grid Exceeded",
       [](const W& w) { return w.defaults.GridCentreY; },
       [](W& w, double v) { w.defaults.GridCentreY = static_cast<float>(v); }},
      {"txtIt", 1, true, 5000, true, 0, "Limits of Itterations Exceeded",
       [](const W& w) { return w.defaults.MaxIter; },
       [](W& w, double v) { w.defaults.MaxIter = static_cast<std::int16_t>(RoundHalfEven(v)); }},
      {"txtMe", 0.0001, true, 5, true, 0, "Limits of Allowable Errors Exceeded",
       [](const W& w) { return w.defaults.MaxError; },
       [](W& w, double v) { w.defaults.MaxError = static_cast<float>(v); }},
      {"TxtDensity", 0.001, true, 2000, true, Unit::Density, "Limits of Allowable Density Exceeded",
       [](const W& w) { return w.defaults.AirDensity; },
       [](W& w, double v) { w.defaults.AirDensity = static_cast<float>(v); }},
      {"TxtAirP", 0, true, 10000, true, Unit::BarometricPressure,
       "Limits of Allowable Air Pressure Exceeded",
       [](const W& w) { return w.defaults.SurfacePressure; },
       [](W& w, double v) { w.defaults.SurfacePressure = static_cast<float>(v); }},
      {"TxtCost", 0, false, 1000, true, 0, "Limits of Allowable Cost Exceeded",
       [](const W& w) { return w.defaults.PowerCost; },
       [](W& w, double v) { w.defaults.PowerCost = static_cast<float>(v); }},
      {"TxtEff", 0, false, 100, true, 0, "Limits of Allowable Efficiency Exceeded",
       [](const W& w) { return static_cast<double>(w.defaults.FanEffDefault * 100.0f); },
       [](W& w, double v) { w.defaults.FanEffDefault = static_cast<float>(v / 100); }},
      {"TxtFanMax", 10, false, 1000, true, 0, "Limits of Allowable Fan Types Exceeded",
       [](const W& w) { return w.net.FanMax; },
       [](W& w, double v) {
         const auto fans = static_cast<std::int16_t>(RoundHalfEven(v));
         if (fans == w.net.FanMax) return;
         w.net.FanMax = fans;
         ResizeStore(w.net);
       }},
      {"TxtAirRL", -1e7, false, 1e7, true, Unit::Length, "Limits of Allowable RL's Exceeded",
       [](const W& w) { return w.defaults.SurfaceRL; },
       [](W& w, double v) {
         if (static_cast<float>(v) != w.defaults.SurfaceRL)
           w.defaults.SurfaceRL = static_cast<float>(v);
       }},
  };
  return boxes;
}

// The boxes without limits: a number, or a clear message and the old value.
struct PlainBox {
  const char* control;
  const char* label;
  int unit;
  std::function<double(const Workspace&)> read;
  std::function<void(Workspace&, double)> store;
};

const std::vector<PlainBox>& PlainBoxes() {
  using W = Workspace;
  static const std::vector<PlainBox> boxes = {
      {"TxtVPart", "% of useful velocity pressure", 0,
       [](const W& w) { return w.defaults.DefaultCurveFraction; },
       [](W& w, double v) {
         w.defaults.DefaultCurveFraction = static_cast<std::int32_t>(RoundHalfEven(v));
       }},
      {"txtHeight", "Drive Height", Unit::Length,
       [](const W& w) { return w.defaults.DefaultHeight; },
       [](W& w, double v) { w.defaults.DefaultHeight = static_cast<float>(v); }},
      {"TxtWidth", "Drive Width", Unit::Length, [](const W& w) { return w.defaults.DefaultWidth; },
       [](W& w, double v) { w.defaults.DefaultWidth = static_cast<float>(v); }},
      {"TxtDiam", "Raise Diameter", Unit::Length,
       [](const W& w) { return w.defaults.DefaultDiameter; },
       [](W& w, double v) { w.defaults.DefaultDiameter = static_cast<float>(v); }},
      {"TxtArea", "Airway Area", Unit::Area, [](const W& w) { return w.defaults.DefaultArea; },
       [](W& w, double v) { w.defaults.DefaultArea = static_cast<float>(v); }},
      {"TxtPerim", "Airway Perimeter", Unit::Length,
       [](const W& w) { return w.defaults.DefaultPerimeter; },
       [](W& w, double v) { w.defaults.DefaultPerimeter = static_cast<float>(v); }},
  };
  return boxes;
}

}  // namespace

std::string ShownValue(const UnitTable& units, double value, int unit) {
  if (unit != 0) value = ToDisplay(units, value, unit);
  char buffer[64];
  const auto single = static_cast<float>(value);
  const auto [end, error] = static_cast<double>(single) == value
                                ? std::to_chars(buffer, buffer + sizeof buffer, single)
                                : std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, error == std::errc() ? end : buffer);
  std::replace(text.begin(), text.end(), '.', MachineDecimalSeparator());
  return text;
}

namespace {

std::string Shown(const Workspace& ws, double value, int unit) {
  return ShownValue(ws.units, value, unit);
}

// A switch kept as the settings keep it: any non-zero value is on, and an unchanged switch
// keeps the value it had.
void SetSwitch(std::int16_t& target, bool on, std::int16_t onValue = -1) {
  if (on != (target != 0)) target = on ? onValue : 0;
}

bool WithinLimits(const LimitedBox& box, double v) {
  const bool aboveLow = box.lowIncluded ? v >= box.low : v > box.low;
  const bool belowHigh = box.highIncluded ? v <= box.high : v < box.high;
  return aboveLow && belowHigh;
}

std::string TextOf(const OptionsForm& form, const char* control) {
  const auto found = form.Text.find(control);
  return found == form.Text.end() ? std::string() : found->second;
}

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// A preset name as stored: commas taken out, "undefined" in any casing stored empty.
std::string StoredPresetName(std::string name) {
  name.erase(std::remove(name.begin(), name.end(), ','), name.end());
  return Upper(name) == "UNDEFINED" ? std::string() : name;
}

void ApplyLimitedBoxes(Workspace& ws, const OptionsForm& form, OptionsApplied& applied) {
  const float density = ws.defaults.AirDensity;
  const Defaults before = ws.defaults;
  for (const LimitedBox& box : LimitedBoxes()) {
    const std::string text = TextOf(form, box.control);
    if (std::string(box.control) == "TxtAirRL" && text == kNotApplicable) continue;
    const std::optional<double> typed = ReadTypedNumber(text);
    if (!typed || !WithinLimits(box, *typed)) {
      ws.ui.Message(box.message, MsgButtons::OK, MsgIcon::Exclamation);
      continue;
    }
    box.store(ws, box.unit != 0 ? FromDisplay(ws.units, *typed, box.unit) : *typed);
  }
  applied.GridChanged = before.GridSpacing != ws.defaults.GridSpacing ||
                        before.GridWidth != ws.defaults.GridWidth ||
                        before.GridCentreX != ws.defaults.GridCentreX ||
                        before.GridCentreY != ws.defaults.GridCentreY;
  if (density != ws.defaults.AirDensity) RecalcAllResistances(ws);
}

void ApplyPlainBoxes(Workspace& ws, const OptionsForm& form) {
  for (const PlainBox& box : PlainBoxes()) {
    const std::optional<double> typed = ReadTypedNumber(TextOf(form, box.control));
    if (!typed) {
      ws.ui.Message(std::string(box.label) + ": not a number, the old value stays", MsgButtons::OK,
                    MsgIcon::Exclamation);
      continue;
    }
    box.store(ws, box.unit != 0 ? FromDisplay(ws.units, *typed, box.unit) : *typed);
  }
}

void ApplyAutoSave(Workspace& ws, const OptionsForm& form, OptionsApplied& applied) {
  const std::int32_t before = ws.defaults.AutoSaveMinutes;
  if (!form.SaveTime) {
    ws.defaults.AutoSaveMinutes = 0;
  } else if (const std::optional<double> typed = ReadTypedNumber(TextOf(form, "txtsavetime"))) {
    ws.defaults.AutoSaveMinutes =
        static_cast<std::int32_t>(std::clamp<long long>(RoundHalfEven(*typed), 0, 10));
  } else {
    ws.ui.Message("Auto Save simulations: not a number, the old value stays", MsgButtons::OK,
                  MsgIcon::Exclamation);
  }
  applied.AutosaveChanged = before != ws.defaults.AutoSaveMinutes || form.SaveTime;
}

void ApplySwitches(Workspace& ws, const OptionsForm& form, OptionsApplied& applied) {
  Defaults& d = ws.defaults;
  std::int16_t detail = 0;
  for (int i = 0; i < 10; ++i)
    if (form.Viewer[i]) detail = static_cast<std::int16_t>(detail | (1 << i));
  d.ViewDetail = detail;
  d.DataDisplay = form.DataDisplay;
  d.SmokeAddSource = form.SimSource == 0 ? 1 : 0;
  SetSwitch(d.RemoteEnabled, form.Remote);
  SetSwitch(d.ScreenBuffer, form.Buffer);
  SetSwitch(d.AutoInfo, form.Info);
  SetSwitch(d.ScrollZoomOff, form.ScrollOff);
  SetSwitch(d.LayerInherit, form.LayerInherit);
  SetSwitch(d.NoPropertyInherit, !form.PropertyInherit);
  SetSwitch(d.EditNoRightClick, form.EditNoRightClick);
  SetSwitch(d.FullRotation, form.FullRotation);
  SetSwitch(d.UnlimitedSpeed, form.UnlimitedSpeed);
  SetSwitch(d.UseAreaForNew, form.UseArea, 1);
  if (form.ColourMode != (d.ColourMode == 1 ? 1 : 0))
    d.ColourMode = static_cast<std::int16_t>(form.ColourMode);
  d.DefaultWallDrive = static_cast<std::int16_t>(form.WallDrive);
  d.DefaultWallRaise = static_cast<std::int16_t>(form.WallRaise);
  if (form.ShockDefault != static_cast<int>(d.DefaultShock))
    d.DefaultShock = static_cast<float>(form.ShockDefault);
  const std::int16_t signX = form.ReverseX ? -1 : 1, signY = form.ReverseY ? -1 : 1;
  if (signX != ws.net.AxisSignX || signY != ws.net.AxisSignY) applied.GridChanged = true;
  ws.net.AxisSignX = signX;
  ws.net.AxisSignY = signY;
  d.ColourTable = form.ColourTable;
  for (int k = 1; k <= 4; ++k) d.Fonts[k] = form.Fonts[k];
}

void ApplyPresets(Workspace& ws, const OptionsForm& form) {
  Defaults& d = ws.defaults;
  for (int row = 0; row < kPresetRows; ++row) {
    d.WallFactorPreset[row] = std::fabs(form.Wall[row]);
    d.ShockPreset[row] = std::fabs(form.Shock[row]);
    d.ResPreset[row] = std::fabs(form.Res[row]);
    // A name the user did not touch stays as stored ("undefined" is how a file reads empty).
    for (auto [name, stored] : {std::pair{&form.WallName[row], &d.WallName[row]},
                                {&form.ShockName[row], &d.ShockName[row]},
                                {&form.ResName[row], &d.ResName[row]}}) {
      if (*name != *stored) *stored = StoredPresetName(*name);
    }
  }
}

void ApplyFormats(Workspace& ws, const OptionsForm& form) {
  for (int row = 1; row <= kUnitRows; ++row) {
    if (IsValidUnitFormat(form.MetricFormat[row]))
      ws.units.UnitFormat[row][1] = form.MetricFormat[row];
    if (IsValidUnitFormat(form.ImperialFormat[row]))
      ws.units.UnitFormat[row][2] = form.ImperialFormat[row];
    if (form.ImperialFactor[row] > 0) ws.units.UnitFactor[row][2] = form.ImperialFactor[row];
  }
}

}  // namespace

int ColourPlace(int box, bool freshExhaust) {
  // Background, grid lines, node text, data text, grid text, then the three airway colours.
  constexpr std::array<int, kOptionColours> kLevels = {0, 7, 5, 6, 8, 1, 3, 2};
  constexpr std::array<int, kOptionColours> kAir = {0, 7, 5, 6, 8, 1, 2, 3};
  const int b = std::clamp(box, 0, kOptionColours - 1);
  return freshExhaust ? kAir[b] : kLevels[b];
}

std::string PresetListName(const std::string& name) {
  return name.empty() ? "undefined" : name;
}

bool IsValidUnitFormat(const std::string& format) {
  if (format.empty()) return false;
  std::string shown = FormatNumber(1.1, format);
  shown.erase(std::remove(shown.begin(), shown.end(), ','), shown.end());
  return ReadTypedNumber(shown).has_value();
}

OptionsForm LoadOptionsForm(const Workspace& ws) {
  const Defaults& d = ws.defaults;
  OptionsForm form;
  for (const LimitedBox& box : LimitedBoxes())
    form.Text[box.control] = Shown(ws, box.read(ws), box.unit);
  if (d.SurfaceRL == kSurfaceRLUnset) form.Text["TxtAirRL"] = kNotApplicable;
  for (const PlainBox& box : PlainBoxes())
    form.Text[box.control] = Shown(ws, box.read(ws), box.unit);
  form.Text["txtsavetime"] = std::to_string(d.AutoSaveMinutes);
  form.SaveTime = d.AutoSaveMinutes != 0;
  for (int i = 0; i < 10; ++i) form.Viewer[i] = (d.ViewDetail >> i) & 1;
  form.DataDisplay = d.DataDisplay;
  form.SimSource = d.SmokeAddSource != 0 ? 0 : 1;
  form.Remote = d.RemoteEnabled != 0;
  form.Buffer = d.ScreenBuffer != 0;
  form.Info = d.AutoInfo != 0;
  form.ScrollOff = d.ScrollZoomOff != 0;
  form.LayerInherit = d.LayerInherit != 0;
  form.PropertyInherit = d.NoPropertyInherit == 0;
  form.EditNoRightClick = d.EditNoRightClick != 0;
  form.FullRotation = d.FullRotation != 0;
  form.UnlimitedSpeed = d.UnlimitedSpeed != 0;
  form.UseArea = d.UseAreaForNew != 0;
  form.ReverseX = ws.net.AxisSignX < 0;
  form.ReverseY = ws.net.AxisSignY < 0;
  form.ColourMode = d.ColourMode == 1 ? 1 : 0;
  form.WallDrive = d.DefaultWallDrive;
  form.WallRaise = d.DefaultWallRaise;
  form.ShockDefault = static_cast<int>(d.DefaultShock);
  form.ColourTable = d.ColourTable;
  for (int row = 0; row < kPresetRows; ++row) {
    form.Wall[row] = d.WallFactorPreset[row];
    form.Shock[row] = d.ShockPreset[row];
    form.Res[row] = d.ResPreset[row];
    form.WallName[row] = d.WallName[row];
    form.ShockName[row] = d.ShockName[row];
    form.ResName[row] = d.ResName[row];
  }
  form.Fonts = d.Fonts;
  for (int row = 1; row <= kUnitRows; ++row) {
    form.MetricFormat[row] = ws.units.UnitFormat[row][1];
    form.ImperialFormat[row] = ws.units.UnitFormat[row][2];
    form.ImperialFactor[row] = ws.units.UnitFactor[row][2];
  }
  return form;
}

OptionsApplied ApplyOptionsForm(Workspace& ws, const OptionsForm& form) {
  const SavedSettings before = SettingsOf(ws);
  OptionsApplied applied;
  ApplyLimitedBoxes(ws, form, applied);
  ApplyPlainBoxes(ws, form);
  ApplySwitches(ws, form, applied);
  ApplyPresets(ws, form);
  ApplyFormats(ws, form);
  ApplyAutoSave(ws, form, applied);
  MarkDefaultsChanged(ws, before);
  return applied;
}

OptionsApplied SwitchOptionUnits(Workspace& ws, OptionsForm& form, int unitSystem) {
  const OptionsApplied applied = ApplyOptionsForm(ws, form);
  const SavedSettings before = SettingsOf(ws);
  ws.units.UnitSystem = unitSystem == 2 ? 2 : 1;
  ws.defaults.UnitSystem = static_cast<std::int16_t>(ws.units.UnitSystem);
  MarkDefaultsChanged(ws, before);
  form = LoadOptionsForm(ws);
  return applied;
}

}  // namespace galeris
