// Units and number pictures. The unit table: values shown in SI and British units, and numbers
// typed back into SI. Number pictures: every picture the system shows numbers with, the
// rounding of the last digit, the machine's decimal mark, and values no picture can show.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "core/number_format.h"
#include "core/units.h"

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
  EXPECT_EQ(FormatValue(british, 1.2, Unit::Density), "0.0");
  EXPECT_EQ(FormatValue(si, 0.0123456, Unit::Resistance, false, true), "0.0123456");
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

// Restores the decimal mark even when a check fails half way.
class CommaMachine {
 public:
  CommaMachine() { SetMachineDecimalSeparator(','); }
  ~CommaMachine() { SetMachineDecimalSeparator('.'); }
};

TEST(RoundHalfEven, TiesGoToTheEvenNeighbourAndValuesBeyondRangeSaturate) {
  const std::pair<double, long long> cases[] = {
      {0.5, 0},   {1.5, 2},         {2.5, 2},
      {-2.5, -2}, {-3.5, -4},       {2.4999999, 2},
      {-0.7, -1}, {32767.5, 32768}, {4503599627370497.0, 4503599627370497}};
  for (const auto& [v, whole] : cases) EXPECT_EQ(RoundHalfEven(v), whole) << v;
  EXPECT_EQ(RoundHalfEven(std::nan("")), 0);
  EXPECT_EQ(RoundHalfEven(1e300), std::numeric_limits<long long>::max());
  EXPECT_EQ(RoundHalfEven(-INFINITY), std::numeric_limits<long long>::min());
}

// The whole-number picture and the whole-number conversion must agree everywhere, ties
// included, and both must match the hardware's own rounding to nearest even.
TEST(RoundHalfEven, AgreesWithThePictureAndTheHardware) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    const double scale = std::ldexp(1.0, static_cast<int>(random() % 60) - 8);
    double v = (static_cast<double>(random() % 2000001) / 1000000.0 - 1.0) * scale;
    if (i % 4 == 0) v = std::floor(v) + 0.5;  // ties
    const long long whole = RoundHalfEven(v);
    ASSERT_EQ(whole, static_cast<long long>(std::nearbyint(v))) << v;
    ASSERT_EQ(FormatNumber(v, "0"), std::to_string(whole)) << v;
  }
}

struct Case {
  double value;
  const char* picture;
  const char* expected;
};

// Every picture the system shows numbers with; the comments name the odd rules.
TEST(FormatNumber, Pictures) {
  const Case cases[] = {
      // Decimal pictures.
      {3.14159, "0.0000", "3.1416"},
      {0.000123456, "0.00000", "0.00012"},
      {-12.25, "0.0", "-12.2"},
      // The last digit rounds correctly.
      {2.5, "0", "2"},
      {3.5, "0", "4"},
      {0.125, "0.00", "0.12"},  // an exact tie in binary
      {0.375, "0.00", "0.38"},
      {-0.05, "0.0", "-0.1"},   // -0.05 lies just beyond the tie
      {1.005, "0.00", "1.00"},  // 1.005 lies just below it
      {9.96, "0.0", "10.0"},
      {999.5, "0,000", "1,000"},
      {1e9, "0", "1000000000"},
      // No minus sign on a zero.
      {-0.04, "0.0", "0.0"},
      {-0.0, "0", "0"},
      {-0.4, "0 %", "-40 %"},
      // Optional decimals.
      {2, "0.0########", "2.0"},
      {1.0 / 3, "0.0########", "0.333333333"},
      {0.00001234, "0.0########", "0.00001234"},
      {-2.00000000004, "0.0########", "-2.0"},
      // Thousands.
      {1000, "0,000", "1,000"},
      {5, "0,000", "0,005"},
      {1234567.8, "0,000", "1,234,568"},
      {-1234567, "0,000", "-1,234,567"},
      {1000, "$#,##0", "$1,000"},
      {0, "$#,##0", "$0"},
      {-25000, "$#,##0", "-$25,000"},
      // Per cent and unit text.
      {0.5, "0 %", "50 %"},
      {0.1234, "0.0 %", "12.3 %"},
      {12.345, "0.00 m3/s", "12.35 m3/s"},  // the 3 of m3/s is text
      // Time pictures take seconds.
      {0, "hh:mm:ss", "00:00:00"},
      {3725, "h:mm:ss", "1:02:05"},
      {59.5, "h:mm:ss", "0:01:00"},
      {10800, "h:mm:ss", "3:00:00"},
      {30 * 3600.0, "hh:mm:ss", "30:00:00"},
      {-90, "h:mm:ss", "-0:01:30"},
      // Text pictures right-align.
      {5, "@@@", "  5"},
      {42, "@@@:", " 42:"},
      {-7, "@@@", " -7"},
      {2.5, "@@@@", " 2.5"},
      // Pictures without digits show the general form.
      {2.5, "", "2.5"},
      {1e20, "", "1E+20"},
      {0.1, " m", "0.1 m"},
      // Quoted text is kept as it stands.
      {3, "0\" %\"", "3 %"},
      {3, "0\\#", "3#"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormatNumber(c.value, c.picture), c.expected) << c.value << " as " << c.picture;
  }
}

TEST(FormatNumber, MachineDecimalSeparator) {
  EXPECT_EQ(MachineDecimalSeparator(), '.');
  CommaMachine comma;
  EXPECT_EQ(MachineDecimalSeparator(), ',');
  EXPECT_EQ(FormatNumber(3.25, "0.00"), "3,25");
  EXPECT_EQ(FormatNumber(1234.5, "0,000"), "1.234");  // grouping takes the other mark
  EXPECT_EQ(FormatNumber(1.5, "0.0########"), "1,5");
  EXPECT_EQ(FormatNumber(2.5, "@@@@"), " 2,5");
}

TEST(FormatNumber, ValuesNoPictureCanShowDoNotBreakIt) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (const char* picture : {"0", "0.0########", "0,000", "$#,##0", "0 %", "hh:mm:ss", "@@@"}) {
    EXPECT_EQ(FormatNumber(nan, picture), "NaN") << picture;
    EXPECT_EQ(FormatNumber(inf, picture), "Inf") << picture;
    EXPECT_EQ(FormatNumber(-inf, picture), "-Inf") << picture;
  }
  const std::string huge = FormatNumber(1.7e308, "0,000.00000");
  EXPECT_EQ(huge.substr(0, 8), "169,999,");  // the exact binary value
  EXPECT_EQ(huge.substr(huge.size() - 6), ".00000");
  EXPECT_EQ(FormatNumber(-1.7e308, "0").size(), 310u);
  EXPECT_EQ(FormatNumber(1e300, "hh:mm:ss").substr(0, 7), "2562047");  // hours saturate
  EXPECT_EQ(FormatNumber(std::numeric_limits<double>::denorm_min(), "0.00000"), "0.00000");
}

}  // namespace
}  // namespace galeris
