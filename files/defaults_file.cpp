// The defaults list on disk. Defaults.dat and the block at the head of every network file
// share one text: a head line, six preset rows, the values line and an end line. Older
// versions kept the presets as name and value pairs and the settings in another order; their
// readers live here too, as the network loader needs them for old files.
#include "files/defaults_file.h"

#include <cfloat>
#include <cmath>
#include <deque>
#include <fstream>
#include <limits>
#include <type_traits>

#include "core/number_format.h"
#include "files/conversion_file.h"
#include "files/whole_file.h"

namespace galeris {
namespace {

constexpr const char* kDefaultsFileName = "Defaults.dat";
constexpr const char* kConversionFileName = "Conversion.dat";
constexpr const char* kEndOfDefaults = "**End of Network Defaults**";
constexpr const char* kLoadFailed = "Error re-loading defaults";
constexpr const char* kSaveFailed = "Error saving defaults";
constexpr const char* kUndefinedPreset = "undefined";
constexpr double kViewPi = 3.141592654;

constexpr int kStoredPresets = 50;  // slots 0..49 are written; slot 50 stays built in
constexpr int kValuesLineFields = 90;
constexpr float kBulkheadThreshold = 100000;
constexpr int kBulkheadSlot = 1;

// Capacities the reader accepts for the airway arrays.
constexpr std::int32_t kFewestAirways = 50;
constexpr std::int32_t kMostAirways = 30000;

// View items of the permanent views.
constexpr int kTiltItem = 1, kSpinItem = 2, kThreeDItem = 14;

// ---- Numbers from text -------------------------------------------------------------------

// Whole numbers from a field: as the reader of old did, a value that does not fit its 16 or
// 32 bits is a fault of the file, not something to wrap round.
template <class Whole>
bool WholeFrom(double value, Whole& out) {
  if (!std::isfinite(value) || std::fabs(value) > 4e18) return false;
  const long long rounded = RoundHalfEven(value);
  if (rounded < std::numeric_limits<Whole>::min() || rounded > std::numeric_limits<Whole>::max())
    return false;
  out = static_cast<Whole>(rounded);
  return true;
}

bool SingleFrom(double value, float& out) {
  if (!std::isfinite(value) || std::fabs(value) > FLT_MAX) return false;
  out = static_cast<float>(value);
  return true;
}

bool AssignField(const std::string& text, std::string& out) {
  out = text;
  return true;
}
bool AssignField(const std::string& text, double& out) {
  out = Val(text);
  return std::isfinite(out);
}
bool AssignField(const std::string& text, float& out) {
  return SingleFrom(Val(text), out);
}
template <class Whole>
requires std::is_integral_v<Whole>
bool AssignField(const std::string& text, Whole& out) {
  return WholeFrom(Val(text), out);
}

bool IsBlankText(const std::string& text) {
  return text.find_first_not_of(' ') == std::string::npos;
}

// ---- Printing ----------------------------------------------------------------------------

// A name holding a tab or a line end would shift every later field of the file.
std::string FieldText(const std::string& value) {
  std::string text = value;
  for (char& c : text)
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  return text;
}
std::string FieldText(double value) {
  return PrintNumber(value);
}
std::string FieldText(float value) {
  return PrintSingle(value);
}
template <class Whole>
requires std::is_integral_v<Whole> std::string FieldText(Whole value) {
  return PrintNumber(static_cast<double>(value));
}

// ---- The values line ---------------------------------------------------------------------

// The two values of the line that belong to the store rather than to the settings.
template <class Count, class Serial>
struct StoreValues {
  Count& fanMax;
  Serial& nextAirwayNo;
};

// Calls visit(position, field) for positions 1 to 90 in order. The same walk writes and
// reads the line, so the two cannot drift apart. Position 78 is written from the setting but
// read into a variable of its own, so the setting never survives a reload.
template <class D, class S, class Visit>
void ForEachValue(D& d, S store, Visit&& visit) {
  visit(1, d.MinNodeSpacing);
  visit(2, d.GridSpacing);
  visit(3, d.ProximityDivisions);
  visit(4, d.DefaultWallDrive);
  visit(5, d.DefaultShock);
  visit(6, d.DefaultHeight);
  visit(7, d.DefaultWidth);
  visit(8, d.DefaultDiameter);
  visit(9, d.SurfaceName);
  visit(10, d.MaxIter);
  visit(11, d.MaxError);
  visit(12, d.RequestedAirways);
  visit(13, d.PowerCost);
  visit(14, d.FanEffDefault);
  visit(15, d.AirDensity);
  visit(16, d.ViewZoom);
  visit(17, d.SpinSpeed);
  visit(18, d.TiltSpeed);
  visit(19, d.FullRotation);
  visit(20, d.ColourScheme);
  visit(21, d.DataDecimals);
  visit(22, d.ViewDetail);
  visit(23, d.SurfaceRL);
  for (int k = 0; k < 5; ++k) visit(24 + k, d.ExportLayers[k]);
  visit(29, d.DataDisplay);
  visit(30, d.ExportOption);
  visit(31, d.ScreenBuffer);
  visit(32, d.ColourMode);
  visit(33, d.NoPropertyInherit);
  for (int font = 1; font <= 4; ++font) {
    const int at = 34 + (font - 1) * 3;
    visit(at, d.Fonts[font].Name);
    visit(at + 1, d.Fonts[font].Bold);
    visit(at + 2, d.Fonts[font].Size);
  }
  for (int row = 1; row <= 7; ++row) {
    const int at = 46 + (row - 1) * 2;
    visit(at, d.DataRowType[row]);
    visit(at + 1, d.DataRowSize[row]);
  }
  for (int colour = 1; colour <= 8; ++colour) visit(59 + colour, d.ColourTable[colour]);
  visit(68, d.PowerZoomSpeed);
  visit(69, store.fanMax);
  visit(70, d.PresetOverrides);
  visit(71, d.UnlimitedSpeed);
  visit(72, d.UnitSystem);
  visit(73, d.ViewDepth);
  visit(74, d.LayerInherit);
  visit(75, d.DefaultPerimeter);
  visit(76, d.DefaultArea);
  visit(77, d.UseAreaForNew);
  if constexpr (std::is_const_v<D>)
    visit(78, d.DefaultCurveFraction);
  else
    visit(78, d.UnusedCurveFraction);
  visit(79, d.RemoteEnabled);
  visit(80, store.nextAirwayNo);
  visit(81, d.AutoInfo);
  visit(82, d.ScrollZoomOff);
  visit(83, d.AutoSaveMinutes);
  visit(84, d.SmokeAddSource);
  visit(85, d.EditNoRightClick);
  visit(86, d.GridWidth);
  visit(87, d.GridCentreX);
  visit(88, d.GridCentreY);
  visit(89, d.ViewNear);
  visit(90, d.ViewFar);
}

std::string FormatValuesLine(const Workspace& ws) {
  std::string line;
  StoreValues<const std::int16_t, const std::int32_t> store{ws.net.FanMax, ws.net.NextAirwayNo};
  ForEachValue(ws.defaults, store, [&](int position, const auto& field) {
    line += FieldText(field);
    line += position < kValuesLineFields ? "\t" : "\r\n";
  });
  return line;
}

// Fields missing from an older line read as empty and zero; zero then takes the reader's
// default where the field has one.
void ApplyReaderDefaults(Defaults& d, const FieldTable& fields, std::int16_t& fanMax) {
  if (d.SpinSpeed == 0) d.SpinSpeed = 2;
  if (d.TiltSpeed == 0) d.TiltSpeed = 2;
  if (IsBlankText(fields[22])) d.ViewDetail = 0x1FF;
  if (fanMax < 1) fanMax = 250;  // a store without fan slots is no setting
  if (d.UnitSystem == 0) d.UnitSystem = 1;
  if (d.ViewDepth == 0) d.ViewDepth = 1500;
  if (d.DefaultArea == 0) {
    d.DefaultArea = 25;
    d.DefaultPerimeter = 20;
  }
  if (d.GridWidth == 0) d.GridWidth = 500;
  if (d.GridCentreX == 0) d.GridCentreX = 1000;
  if (d.GridCentreY == 0) d.GridCentreY = 1000;
  if (d.ViewFar == 0) d.ViewFar = 1000;
}

std::int32_t ClampedAirways(std::int32_t requested) {
  if (requested < kFewestAirways) return kFewestAirways;
  if (requested > kMostAirways) return kMostAirways;
  return requested;
}

// A block may ask for more airways or fan slots than the store holds: the arrays grow, and
// never shrink under a network already in memory.
void ApplyCapacities(Workspace& ws, std::int16_t fanMax) {
  bool grow = false;
  if (ws.defaults.RequestedAirways > ws.net.MaxAirways) {
    ws.net.MaxAirways = ws.defaults.RequestedAirways;
    grow = true;
  }
  if (fanMax > ws.net.FanMax) grow = true;
  ws.net.FanMax = fanMax;
  if (grow) ResizeStore(ws.net);
}

bool ReadValuesLine(Workspace& ws, const FieldTable& fields) {
  std::int16_t fanMax = ws.net.FanMax;
  std::int32_t nextAirwayNo = ws.net.NextAirwayNo;
  bool ok = true;
  ForEachValue(ws.defaults, StoreValues<std::int16_t, std::int32_t>{fanMax, nextAirwayNo},
               [&](int position, auto& field) {
                 if (ok) ok = AssignField(fields[position], field);
               });
  ws.net.NextAirwayNo = nextAirwayNo;
  if (ok) {
    ApplyReaderDefaults(ws.defaults, fields, fanMax);
    ws.defaults.RequestedAirways = ClampedAirways(ws.defaults.RequestedAirways);
  }
  ws.units.UnitSystem = ws.defaults.UnitSystem;
  ApplyCapacities(ws, fanMax);
  return ok;
}

// ---- Preset rows -------------------------------------------------------------------------

template <class T>
std::string FormatRow(const std::array<T, kPresetSlots>& row) {
  std::string line;
  for (int slot = 0; slot < kStoredPresets; ++slot) line += FieldText(row[slot]) + "\t";
  return line + "\r\n";
}

// Wall factors were once stored at the density of the mine; they are now standard-density
// values, four decimals.
float StandardWallFactor(float stored) {
  return static_cast<float>(Val(FormatNumber(stored / 1.2, "0.0000")));
}

bool OlderWallFactors(float version) {
  return version < 2.4f;
}

// The bulkhead slot holds a huge stand-in for "no flow"; any such value means the solver's
// own blockage resistance.
void ApplyBulkhead(Defaults& d) {
  if (d.ResPreset[kBulkheadSlot] >= kBulkheadThreshold)
    d.ResPreset[kBulkheadSlot] = static_cast<float>(d.HighResistance);
}

std::string ResistanceName(const std::string& text) {
  return text.empty() ? kUndefinedPreset : text;
}

// A network file keeps the decimal mark of the machine that wrote it; Defaults.dat is always
// read with the machine's own.
struct BlockSource {
  LineReader& in;
  float version;
  const SplitLocale& locale;
};

bool ReadFields(const BlockSource& src, FieldTable& fields) {
  std::string line;
  if (!src.in.ReadLine(line)) return false;
  SplitLine(src.version, line, fields, src.locale);
  return true;
}

// The wall names and factors, `count` slots from field 1 on.
bool ReadWallRows(Workspace& ws, const BlockSource& src, int count) {
  Defaults& d = ws.defaults;
  FieldTable f;
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < count; ++s) d.WallName[s] = f[s + 1];
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < count; ++s) {
    if (!AssignField(f[s + 1], d.WallFactorPreset[s])) return false;
    if (OlderWallFactors(src.version))
      d.WallFactorPreset[s] = StandardWallFactor(d.WallFactorPreset[s]);
  }
  return true;
}

bool ReadResistanceAndShockRows(Workspace& ws, const BlockSource& src, int resCount,
                                int shockCount) {
  Defaults& d = ws.defaults;
  FieldTable f;
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < resCount; ++s) d.ResName[s] = ResistanceName(f[s + 1]);
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < resCount; ++s)
    if (!AssignField(f[s + 1], d.ResPreset[s])) return false;
  ApplyBulkhead(d);
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < shockCount; ++s) d.ShockName[s] = f[s + 1];
  if (!ReadFields(src, f)) return false;
  for (int s = 0; s < shockCount; ++s)
    if (!AssignField(f[s + 1], d.ShockPreset[s])) return false;
  return true;
}

// ---- The settings of older files ---------------------------------------------------------

// Calls visit(position, field) for the 48 settings of files before version 2.8, in their old
// order. Position 23, the surface pressure, is read only from the comma-separated form.
template <class Visit>
void ForEachOldSetting(Defaults& d, Visit&& visit) {
  visit(1, d.MinNodeSpacing);
  visit(2, d.AirDensity);
  visit(3, d.GridSpacing);
  visit(4, d.FanEffDefault);
  visit(5, d.ProximityDivisions);
  visit(6, d.PowerCost);
  visit(7, d.DefaultWallDrive);
  visit(8, d.DefaultShock);
  visit(9, d.DefaultHeight);
  visit(10, d.DefaultWidth);
  visit(11, d.DefaultDiameter);
  visit(12, d.MaxIter);
  visit(13, d.ViewDetail);
  for (int font = 1; font <= 3; ++font) visit(13 + font, d.Fonts[font].Name);
  for (int font = 1; font <= 3; ++font) {
    visit(15 + font * 2, d.Fonts[font].Bold);
    visit(16 + font * 2, d.Fonts[font].Size);
  }
  visit(23, d.SurfacePressure);
  visit(24, d.MaxError);
  visit(25, d.RequestedAirways);
  visit(26, d.SpinSpeed);
  visit(27, d.TiltSpeed);
  visit(28, d.ViewZoom);
  visit(29, d.SurfaceRL);
  visit(30, d.Fonts[4].Name);
  visit(31, d.Fonts[4].Size);
  visit(32, d.FullRotation);
  visit(33, d.ScreenBuffer);
  visit(34, d.NoPropertyInherit);
  visit(35, d.LayerInherit);
  visit(36, d.ColourScheme);
  visit(37, d.DataDecimals);
  visit(38, d.DataDisplay);
  visit(39, d.ColourMode);
  for (int colour = 1; colour <= 7; ++colour) visit(39 + colour, d.ColourTable[colour]);
  visit(47, d.AutoInfo);
  visit(48, d.EditNoRightClick);
}

constexpr int kOldDisplayPosition = 13, kOldPressurePosition = 23;

bool IsZeroOrEmpty(const std::string& text) {
  return IsBlankText(text) || Val(text) == 0;
}

// The settings line of versions 2.1 to 2.7: a zero or empty entry keeps the value in force.
bool ReadOldSettingsLine(Defaults& d, const FieldTable& f) {
  bool ok = true;
  ForEachOldSetting(d, [&](int position, auto& field) {
    if (!ok || position == kOldPressurePosition) return;
    if (position == kOldDisplayPosition && IsBlankText(f[position])) {
      d.ViewDetail = 0x1FF;
      return;
    }
    if constexpr (std::is_same_v<std::remove_reference_t<decltype(field)>, std::string>) {
      if (!IsBlankText(f[position])) field = f[position];
    } else {
      if (!IsZeroOrEmpty(f[position])) ok = AssignField(f[position], field);
    }
  });
  return ok;
}

// ---- The comma-separated Defaults.dat of versions 1 to 2.4 -------------------------------

// Items of a comma-separated file as the old input statement took them: separated by commas
// or line ends, quotes removed, blanks around trimmed, one item after another across lines.
class CommaItems {
 public:
  explicit CommaItems(LineReader& in) : in_(in) {}

  bool Next(std::string& item) {
    std::string line;
    while (pending_.empty()) {
      if (!in_.ReadLine(line)) return false;
      Split(line);
    }
    item = pending_.front();
    pending_.pop_front();
    return true;
  }

 private:
  void Split(const std::string& line) {
    std::string item;
    bool quoted = false;
    for (char c : line) {
      if (c == '"') {
        quoted = !quoted;
      } else if (c == ',' && !quoted) {
        pending_.push_back(Trim(item));
        item.clear();
      } else {
        item.push_back(c);
      }
    }
    pending_.push_back(Trim(item));
  }

  static std::string Trim(const std::string& text) {
    const std::size_t a = text.find_first_not_of(" \t");
    if (a == std::string::npos) return "";
    return text.substr(a, text.find_last_not_of(" \t") - a + 1);
  }

  LineReader& in_;
  std::deque<std::string> pending_;
};

template <class T>
bool ReadPairs(CommaItems& items, std::array<std::string, kPresetSlots>& names,
               std::array<T, kPresetSlots>& values, int count, bool resistance) {
  std::string name, value;
  for (int s = 0; s < count; ++s) {
    if (!items.Next(name) || !items.Next(value)) return false;
    names[s] = resistance ? ResistanceName(name) : name;
    if (!AssignField(value, values[s])) return false;
  }
  return true;
}

void ClearResistancePresets(Defaults& d, int from) {
  for (int s = from; s < kStoredPresets; ++s) {
    d.ResName[s] = kUndefinedPreset;
    d.ResPreset[s] = 0;
  }
}

bool ReadCommaDefaults(Workspace& ws, LineReader& in, float version, bool fiftyResistances) {
  Defaults& d = ws.defaults;
  CommaItems items(in);
  if (!ReadPairs(items, d.WallName, d.WallFactorPreset, 10, false)) return false;
  if (OlderWallFactors(version))
    for (int s = 0; s < 10; ++s) d.WallFactorPreset[s] = StandardWallFactor(d.WallFactorPreset[s]);
  const int resCount = fiftyResistances ? kStoredPresets : 10;
  if (!ReadPairs(items, d.ResName, d.ResPreset, resCount, true)) return false;
  ClearResistancePresets(d, resCount);
  ApplyBulkhead(d);
  if (!ReadPairs(items, d.ShockName, d.ShockPreset, 7, false)) return false;

  bool ok = true;
  ForEachOldSetting(d, [&](int, auto& field) {
    std::string item;
    if (ok) ok = items.Next(item) && AssignField(item, field);
  });
  if (d.AirDensity == 0) d.AirDensity = 1.2f;
  if (d.SurfacePressure == 0) d.SurfacePressure = 101;
  d.RequestedAirways = ClampedAirways(d.RequestedAirways);
  ApplyCapacities(ws, ws.net.FanMax);
  return ok;
}

// ---- Views -------------------------------------------------------------------------------

void SetView(Network& net, int slot, const char* name, float tilt, float spin, bool threeD) {
  net.ViewName[slot] = name;
  net.ViewValue[slot] = {};
  net.ViewCode[slot] = {};
  net.ViewValue[slot][kTiltItem] = tilt;
  net.ViewValue[slot][kSpinItem] = spin;
  net.ViewValue[slot][kThreeDItem] = threeD ? 1.0f : 0.0f;
}

// ---- Built-in presets --------------------------------------------------------------------

void SetBuiltInPresets(Defaults& d) {
  // Names and factors were entered a slot apart; the pairs below are those in force.
  static const char* const wallNames[] = {"Smooth Pipes",          "Flexible Ducting",
                                          "Concrete Lined Airway", "Raisebored Airway",
                                          "Smooth Blasted Airway", "Average Blasted Airway",
                                          "Rough Blasted Airway",  "Very Rough Blasted",
                                          "Timbered Airway",       "Concrete Shaft Sets"};
  static const float wallFactors[] = {0,     0.003f, 0.0035f, 0.004f, 0.007f,
                                      0.01f, 0.012f, 0.018f,  0.04f,  0.05f};
  static const char* const resNames[] = {
      "Automatic",      "Bulkhead",       "Steel Door",    "Wood Door",     "meshes Brattice",
      "Parachute Stop", "High Muck Pile", "Med Muck Pile", "Low Muck Pile", "Air Curtain"};
  static const float resValues[] = {0, 0, 10, 5, 3, 2, 1.5f, 1, 0.5f, 0.1f};
  static const char* const shockNames[] = {"None",     "Slight", "Low",
                                           "Moderate", "High",   "Very High"};
  static const float shockValues[] = {0, 5, 20, 50, 100, 250};

  for (int s = 0; s < 10; ++s) {
    d.WallName[s] = wallNames[s];
    d.WallFactorPreset[s] = wallFactors[s];
    d.ResName[s] = resNames[s];
    d.ResPreset[s] = resValues[s];
  }
  d.ResPreset[kBulkheadSlot] = static_cast<float>(d.HighResistance);
  ClearResistancePresets(d, 10);
  d.ResName[kUserGiven] = "Fix Res";
  for (int s = 0; s < 6; ++s) {
    d.ShockName[s] = shockNames[s];
    d.ShockPreset[s] = shockValues[s];
  }
}

}  // namespace

void SetInitialViews(Network& net) {
  const float sign = net.AxisSignY;
  const float quarter = static_cast<float>(kViewPi / 2);
  SetView(net, 1, " 1. Default View", 0, 0, false);
  SetView(net, 2, " 2. Plan View 3D", 0, 0, true);
  SetView(net, 3, " 3. Long Section", sign * quarter, 0, true);
  SetView(net, 4, " 4. Cross Section", sign * quarter, -quarter, true);
  SetView(net, 5, " 5. Iso View", sign * 1.0f, -0.391f, true);
}

void SetBuiltInDefaults(Workspace& ws) {
  ws.defaults = Defaults{};
  SetBuiltInPresets(ws.defaults);
  ws.net.FanMax = 250;
  ws.net.UndoMax = 30000;
  ws.net.MaxTexts = 100;
  ws.units.UnitSystem = ws.defaults.UnitSystem;
  SetInitialViews(ws.net);
}

void InitDefaults(Workspace& ws) {
  SetBuiltInDefaults(ws);
  LoadDefaults(ws);
  Defaults& d = ws.defaults;
  if (d.SpinSpeed == 0) d.SpinSpeed = 2;
  if (d.TiltSpeed == 0) d.TiltSpeed = 2;
  d.RequestedAirways = ClampedAirways(d.RequestedAirways);
  ws.net.MaxAirways = d.RequestedAirways;
  ResizeStore(ws.net);
  ws.units.UnitSystem = d.UnitSystem;
}

void LoadDefaults(Workspace& ws) {
  LineReader in(ws.paths.InProgram(kDefaultsFileName));
  if (!in.IsOpen()) return;  // the built-in values stand
  std::string head;
  if (!in.ReadLine(head) || head.find("GALERIS") == std::string::npos) {
    ws.ui.Inform(kLoadFailed);
    return;
  }
  const float version = VersionOf(head);
  if (version < 1) return;
  bool ok = true;
  if (version <= 2.4f)
    ok = ReadCommaDefaults(ws, in, version, head.find("GALERIS2") != std::string::npos);
  else if (version <= 2.7f)
    ok = ReadLegacyDefaultsB(ws, in, version);
  else
    ok = ReadDefaultsBlock(ws, in, version);
  ws.units.UnitSystem = ws.defaults.UnitSystem;
  if (!ok) ws.ui.Inform(kLoadFailed);
}

void SaveDefaults(Workspace& ws) {
  if (!WriteWholeFile(ws.paths.InProgram(kDefaultsFileName),
                      DefaultsHeadLine() + "\r\n" + FormatDefaultsBlock(ws))) {
    ws.ui.Inform(kSaveFailed);
    return;
  }
  SaveConversion(ws.units, ws.paths.InProgram(kConversionFileName), ws.ui);
  ws.DefaultsSaved = 0xFF;
}

std::string DefaultsHeadLine() {
  return "3.1\tGALERIS3";
}

std::string FormatDefaultsBlock(const Workspace& ws) {
  const Defaults& d = ws.defaults;
  return FormatRow(d.WallName) + FormatRow(d.WallFactorPreset) + FormatRow(d.ResName) +
         FormatRow(d.ResPreset) + FormatRow(d.ShockName) + FormatRow(d.ShockPreset) +
         FormatValuesLine(ws) + kEndOfDefaults + "\r\n";
}

bool ReadDefaultsBlock(Workspace& ws, LineReader& in, float version, const SplitLocale& locale) {
  const BlockSource src{in, version, locale};
  if (!ReadWallRows(ws, src, kStoredPresets)) return false;
  if (!ReadResistanceAndShockRows(ws, src, kStoredPresets, kStoredPresets)) return false;
  FieldTable fields;
  if (!ReadFields(src, fields)) return false;
  if (!ReadValuesLine(ws, fields)) return false;
  std::string end;
  return in.ReadLine(end);
}

bool ReadLegacyDefaultsA(Workspace& ws, LineReader& in, float version, const SplitLocale& locale) {
  const BlockSource src{in, version, locale};
  Defaults& d = ws.defaults;
  FieldTable f;
  for (int s = 0; s < 10; ++s) {
    if (!ReadFields(src, f)) return false;
    d.WallName[s] = f[1];
    if (!AssignField(f[2], d.WallFactorPreset[s])) return false;
    if (OlderWallFactors(version))
      d.WallFactorPreset[s] = StandardWallFactor(d.WallFactorPreset[s]);
  }
  for (int s = 0; s < 10; ++s) {
    if (!ReadFields(src, f)) return false;
    d.ResName[s] = ResistanceName(f[1]);
    if (!AssignField(f[2], d.ResPreset[s])) return false;
  }
  ClearResistancePresets(d, 10);
  ApplyBulkhead(d);
  for (int s = 0; s < 7; ++s) {
    if (!ReadFields(src, f)) return false;
    d.ShockName[s] = f[1];
    if (!AssignField(f[2], d.ShockPreset[s])) return false;
  }
  return true;
}

bool ReadLegacyDefaultsB(Workspace& ws, LineReader& in, float version, const SplitLocale& locale) {
  const BlockSource src{in, version, locale};
  if (!ReadWallRows(ws, src, 11)) return false;
  if (!ReadResistanceAndShockRows(ws, src, kStoredPresets, 7)) return false;
  FieldTable f;
  if (!ReadFields(src, f)) return false;
  const std::int32_t requested = ws.defaults.RequestedAirways;
  const bool ok = ReadOldSettingsLine(ws.defaults, f);
  if (ws.defaults.RequestedAirways != requested)
    ws.defaults.RequestedAirways = ClampedAirways(ws.defaults.RequestedAirways);
  ApplyCapacities(ws, ws.net.FanMax);
  if (!ok) return false;
  std::string skipped;
  return in.ReadLine(skipped);
}

}  // namespace galeris
