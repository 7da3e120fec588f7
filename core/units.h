// The unit table: for SI (system 1) and British (system 2), a factor, a unit text and a number
// format for each of the 15 kinds of quantity. Values are SI in the store; every number a user
// sees or types passes this table.
#pragma once

#include <array>
#include <string>

namespace galeris {

class UiPort;

inline constexpr int kUnitRows = 15;

// Line 1 of Conversion.dat.
inline constexpr const char* kConversionTitle = "Conversion Table : SI Units to British Units";
// The picture of a plain value: every significant decimal, at least one.
inline constexpr const char* kPlainPicture = "0.0########";

// Rows of the table.
namespace Unit {
inline constexpr int Length = 1, Velocity = 2, Area = 3, Quantity = 4, Resistance = 5, Density = 6,
                     Power = 7, Pressure = 8, Mass = 9, FrictionFactor = 10, Cost = 11, Time = 12,
                     BarometricPressure = 13, Coordinates = 14, Percentage = 15;
}

struct UnitTable {
  int UnitSystem = 1;  // 1 SI, 2 British
  std::array<std::string, kUnitRows + 1> UnitName{};
  std::array<std::array<double, 3>, kUnitRows + 1> UnitFactor{};       // [row][system]
  std::array<std::array<std::string, 3>, kUnitRows + 1> UnitText{};    // [row][system]
  std::array<std::array<std::string, 3>, kUnitRows + 1> UnitFormat{};  // [row][system]
  // The head lines of Conversion.dat as read: [0] the title, [1..6] the column heads.
  std::array<std::string, 7> Heads{};
  bool operator==(const UnitTable&) const = default;
};

// The built-in table.
UnitTable BuiltInUnits();

// Text of a stored value: times the factor of the current system, in the row's format (or
// "0.0########" when plain); with showUnit a blank and the unit follow (row 11: unit first).
std::string FormatValue(const UnitTable& units, double value, int row, bool showUnit = false,
                        bool plain = false);
double ToDisplay(const UnitTable& units, double value, int row);
double FromDisplay(const UnitTable& units, double value, int row);

}  // namespace galeris
