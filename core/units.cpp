// The unit table: the built-in rows, and the conversions between stored SI values and the
// numbers a user sees and types.
#include "core/units.h"

#include "core/number_format.h"

namespace galeris {
namespace {

// A table read from a damaged file may hold any system number; the screen then shows SI.
int SystemOf(const UnitTable& units) {
  return units.UnitSystem == 2 ? 2 : 1;
}

bool IsRow(int row) {
  return row >= 1 && row <= kUnitRows;
}

double FactorOf(const UnitTable& units, int row) {
  return IsRow(row) ? units.UnitFactor[row][SystemOf(units)] : 1.0;
}

}  // namespace

UnitTable BuiltInUnits() {
  struct Row {
    const char* name;
    double factor;
    const char *si, *british, *siFormat, *britishFormat;
  };
  static constexpr Row rows[kUnitRows + 1] = {
      {"", 1, "", "", "", ""},
      {"length", 3.2808399, "m", "ft", "0.0", "0.0"},
      {"velocity", 196.85, "m/s", "ft/min", "0.0", "0"},
      {"area", 10.764, "m2", "ft2", "0.0", "0.0"},
      {"quantity", 2.1189, "m3/s", "kcf/m", "0.0", "0.0"},
      {"resistance", 0.8953, "Ns2/m8", "Rx1e9", "0.00000", "0.00000"},
      {"density", 0.015, "kg/m3", "lb/ft3", "0.0", "0.0"},
      {"power", 1.341, "kW", "hp", "0", "0"},
      {"pressure", 4.0186, "Pa", "m.in.wg", "0.0", "0.0"},
      {"mass", 2.204, "kg", "lb", "0", "0"},
      {"friction factor", 5391, "kg/m3", "Kx1e10", "0.00000", "0.0"},
      {"cost", 1, "$", "$", "0,000", "0,000"},
      {"time", 1, "h:m:s", "h:m:s", "hh:mm:ss", "hh:mm:ss"},
      {"barometric pressure", 0.2961, "kPa", "in.Hg", "0.00", "0.00"},
      {"coordinates", 3.2808399, "m", "ft", "0", "0"},
      {"percentage", 1, "%", "%", "0", "0"},
  };
  UnitTable t;
  for (int r = 1; r <= kUnitRows; ++r) {
    t.UnitName[r] = rows[r].name;
    t.UnitFactor[r] = {0.0, 1.0, rows[r].factor};
    t.UnitText[r] = {"", rows[r].si, rows[r].british};
    t.UnitFormat[r] = {"", rows[r].siFormat, rows[r].britishFormat};
  }
  t.Heads = {kConversionTitle, "Unit",      "Factor",        "SI Unit",
             "British Unit",   "SI Format", "British Format"};
  return t;
}

std::string FormatValue(const UnitTable& units, double value, int row, bool showUnit, bool plain) {
  const int system = SystemOf(units);
  const std::string_view picture = plain || !IsRow(row)
                                       ? std::string_view(kPlainPicture)
                                       : std::string_view(units.UnitFormat[row][system]);
  const std::string number = FormatNumber(ToDisplay(units, value, row), picture);
  if (!showUnit || !IsRow(row)) return number;
  const std::string& unit = units.UnitText[row][system];
  return row == Unit::Cost ? unit + " " + number : number + " " + unit;
}

double ToDisplay(const UnitTable& units, double value, int row) {
  return value * FactorOf(units, row);
}

double FromDisplay(const UnitTable& units, double value, int row) {
  const double factor = FactorOf(units, row);
  if (value == 0 || factor == 0) return 0;
  return value / factor;
}

}  // namespace galeris
