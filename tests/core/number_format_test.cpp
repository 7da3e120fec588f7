// Number pictures: every picture the system shows numbers with, the rounding of the last
// digit, the machine's decimal mark, and values no picture can show.
#include "core/number_format.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace galeris {
namespace {

// Restores the decimal mark even when a check fails half way.
class CommaMachine {
 public:
  CommaMachine() { SetMachineDecimalSeparator(','); }
  ~CommaMachine() { SetMachineDecimalSeparator('.'); }
};

TEST(RoundHalfEven, TiesGoToTheEvenNeighbour) {
  EXPECT_EQ(RoundHalfEven(0.5), 0);
  EXPECT_EQ(RoundHalfEven(1.5), 2);
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(RoundHalfEven(-3.5), -4);
  EXPECT_EQ(RoundHalfEven(2.4999999), 2);
  EXPECT_EQ(RoundHalfEven(-0.7), -1);
  EXPECT_EQ(RoundHalfEven(32767.5), 32768);
  EXPECT_EQ(RoundHalfEven(4503599627370497.0), 4503599627370497);
}

TEST(RoundHalfEven, ValuesBeyondRangeSaturate) {
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

TEST(FormatNumber, DecimalPictures) {
  EXPECT_EQ(FormatNumber(3.14159, "0"), "3");
  EXPECT_EQ(FormatNumber(3.14159, "0.0"), "3.1");
  EXPECT_EQ(FormatNumber(3.14159, "0.00"), "3.14");
  EXPECT_EQ(FormatNumber(3.14159, "0.0000"), "3.1416");
  EXPECT_EQ(FormatNumber(0.000123456, "0.00000"), "0.00012");
  EXPECT_EQ(FormatNumber(7, "0.00"), "7.00");
  EXPECT_EQ(FormatNumber(-12.25, "0.0"), "-12.2");
  EXPECT_EQ(FormatNumber(0.4, "0"), "0");
}

TEST(FormatNumber, LastDigitRoundsCorrectly) {
  EXPECT_EQ(FormatNumber(2.5, "0"), "2");
  EXPECT_EQ(FormatNumber(3.5, "0"), "4");
  EXPECT_EQ(FormatNumber(0.125, "0.00"), "0.12");  // an exact tie in binary
  EXPECT_EQ(FormatNumber(0.375, "0.00"), "0.38");
  EXPECT_EQ(FormatNumber(-0.05, "0.0"), "-0.1");   // -0.05 lies just beyond the tie
  EXPECT_EQ(FormatNumber(1.005, "0.00"), "1.00");  // 1.005 lies just below it
  EXPECT_EQ(FormatNumber(9.96, "0.0"), "10.0");
  EXPECT_EQ(FormatNumber(999.5, "0,000"), "1,000");
  EXPECT_EQ(FormatNumber(1e9, "0"), "1000000000");
  EXPECT_EQ(FormatNumber(1e9, "0.0"), "1000000000.0");
}

TEST(FormatNumber, NoMinusSignOnAZero) {
  EXPECT_EQ(FormatNumber(-0.04, "0.0"), "0.0");
  EXPECT_EQ(FormatNumber(-0.0, "0"), "0");
  EXPECT_EQ(FormatNumber(-0.4, "0 %"), "-40 %");
}

TEST(FormatNumber, OptionalDecimals) {
  EXPECT_EQ(FormatNumber(2, "0.0########"), "2.0");
  EXPECT_EQ(FormatNumber(1.5, "0.0########"), "1.5");
  EXPECT_EQ(FormatNumber(1.0 / 3, "0.0########"), "0.333333333");
  EXPECT_EQ(FormatNumber(0.00001234, "0.0########"), "0.00001234");
  EXPECT_EQ(FormatNumber(-2.00000000004, "0.0########"), "-2.0");
}

TEST(FormatNumber, ThousandsPictures) {
  EXPECT_EQ(FormatNumber(1000, "0,000"), "1,000");
  EXPECT_EQ(FormatNumber(5, "0,000"), "0,005");
  EXPECT_EQ(FormatNumber(1234567.8, "0,000"), "1,234,568");
  EXPECT_EQ(FormatNumber(-1234567, "0,000"), "-1,234,567");
  EXPECT_EQ(FormatNumber(1000, "$#,##0"), "$1,000");
  EXPECT_EQ(FormatNumber(0, "$#,##0"), "$0");
  EXPECT_EQ(FormatNumber(999, "$#,##0"), "$999");
  EXPECT_EQ(FormatNumber(-25000, "$#,##0"), "-$25,000");
}

TEST(FormatNumber, PerCentAndUnitText) {
  EXPECT_EQ(FormatNumber(0.5, "0 %"), "50 %");
  EXPECT_EQ(FormatNumber(0.1234, "0.0 %"), "12.3 %");
  EXPECT_EQ(FormatNumber(1.25, "0 %"), "125 %");
  EXPECT_EQ(FormatNumber(12.345, "0.00 m3/s"), "12.35 m3/s");  // the 3 of m3/s is text
  EXPECT_EQ(FormatNumber(0, "0.00 m3/s"), "0.00 m3/s");
}

TEST(FormatNumber, TimePicturesTakeSeconds) {
  EXPECT_EQ(FormatNumber(0, "hh:mm:ss"), "00:00:00");
  EXPECT_EQ(FormatNumber(3725, "hh:mm:ss"), "01:02:05");
  EXPECT_EQ(FormatNumber(3725, "h:mm:ss"), "1:02:05");
  EXPECT_EQ(FormatNumber(59.5, "h:mm:ss"), "0:01:00");
  EXPECT_EQ(FormatNumber(10800, "h:mm:ss"), "3:00:00");
  EXPECT_EQ(FormatNumber(30 * 3600.0, "hh:mm:ss"), "30:00:00");
  EXPECT_EQ(FormatNumber(-90, "h:mm:ss"), "-0:01:30");
}

TEST(FormatNumber, TextPicturesRightAlign) {
  EXPECT_EQ(FormatNumber(5, "@@@"), "  5");
  EXPECT_EQ(FormatNumber(42, "@@@:"), " 42:");
  EXPECT_EQ(FormatNumber(12345, "@@@"), "12345");
  EXPECT_EQ(FormatNumber(-7, "@@@"), " -7");
  EXPECT_EQ(FormatNumber(2.5, "@@@@"), " 2.5");
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

TEST(FormatNumber, PicturesWithoutDigitsShowTheGeneralForm) {
  EXPECT_EQ(FormatNumber(2.5, ""), "2.5");
  EXPECT_EQ(FormatNumber(1e20, ""), "1E+20");
  EXPECT_EQ(FormatNumber(0.1, " m"), "0.1 m");
}

TEST(FormatNumber, QuotedTextIsKeptAsItStands) {
  EXPECT_EQ(FormatNumber(3, "0\" %\""), "3 %");
  EXPECT_EQ(FormatNumber(3, "0\\#"), "3#");
}

}  // namespace
}  // namespace galeris
