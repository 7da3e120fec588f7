// The unit table: the built-in rows, values shown in SI and British units, and numbers typed
// back into SI.
#include "core/units.h"

#include <gtest/gtest.h>

namespace galeris {
namespace {

UnitTable British() {
  UnitTable units = BuiltInUnits();
  units.UnitSystem = 2;
  return units;
}

// Cost shows its unit before the number, the other rows after it; British values pass the
// factor; plain uses every significant decimal.
TEST(Units, FormatValueInSiAndBritishUnits) {
  const UnitTable si = BuiltInUnits(), british = British();
  EXPECT_EQ(FormatValue(si, 1000, Unit::Cost, true), "$ 1,000");
  EXPECT_EQ(FormatValue(si, 1000, Unit::Cost), "1,000");
  EXPECT_EQ(FormatValue(si, 12.345, Unit::Quantity, true), "12.3 m3/s");
  EXPECT_EQ(FormatValue(si, 0.0123456, Unit::Resistance, true), "0.01235 Ns2/m8");
  EXPECT_EQ(FormatValue(si, 1500.4, Unit::Coordinates), "1500");
  EXPECT_EQ(FormatValue(si, 3725, Unit::Time, true), "01:02:05 h:m:s");
  EXPECT_EQ(FormatValue(british, 100, Unit::Length, true), "328.1 ft");
  EXPECT_EQ(FormatValue(british, 100, Unit::Quantity, true), "211.9 kcf/m");
  EXPECT_EQ(FormatValue(british, 0.01, Unit::FrictionFactor, true), "53.9 Kx1e10");
  EXPECT_EQ(FormatValue(british, 1.2, Unit::Density), "0.0");
  EXPECT_EQ(FormatValue(si, 0.0123456, Unit::Resistance, false, true), "0.0123456");
  EXPECT_EQ(FormatValue(si, 5, Unit::Power, true, true), "5.0 kW");
  EXPECT_EQ(FormatValue(british, 1, Unit::Length, false, true), "3.2808399");
}

TEST(Units, DisplayConversionsRoundTripAndZeroStaysZero) {
  const UnitTable british = British();
  for (int row = 1; row <= kUnitRows; ++row) {
    const double shown = ToDisplay(british, 12.5, row);
    EXPECT_DOUBLE_EQ(shown, 12.5 * british.UnitFactor[row][2]) << row;
    EXPECT_DOUBLE_EQ(FromDisplay(british, shown, row), 12.5) << row;
  }
  EXPECT_EQ(ToDisplay(BuiltInUnits(), 12.5, Unit::Velocity), 12.5);
  UnitTable units = British();
  EXPECT_EQ(FromDisplay(units, 0, Unit::Pressure), 0);
  units.UnitFactor[Unit::Pressure][2] = 0;
  EXPECT_EQ(FromDisplay(units, 5, Unit::Pressure), 0);
}

TEST(Units, BadRowOrSystemNeverReadsOutsideTheTable) {
  UnitTable units = BuiltInUnits();
  EXPECT_EQ(FormatValue(units, 2.5, 0, true), "2.5");
  EXPECT_EQ(FormatValue(units, 2.5, 99), "2.5");
  EXPECT_EQ(ToDisplay(units, 3, -1), 3);
  units.UnitSystem = 7;  // read from a damaged file: shown as SI
  EXPECT_EQ(FormatValue(units, 100, Unit::Length, true), "100.0 m");
}

}  // namespace
}  // namespace galeris
