// Conversion.dat: the round trip of the unit table, the decimal mark undone in pictures, and
// damaged files that must leave the table whole.
#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/number_format.h"
#include "core/units.h"
#include "files/conversion_file.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

constexpr const char* kLoadFailed = "Error loading conversion values";

struct ConversionFile {
  HeadlessUi ui;
  std::string path = test::ScratchDir() + "Conversion.dat";

  std::string Saved(const UnitTable& units) {
    SaveConversion(units, path, ui);
    return test::ReadFile(path);
  }
};

using test::Lines;

void ExpectSameTable(const UnitTable& a, const UnitTable& b) {
  EXPECT_EQ(a.UnitName, b.UnitName);
  EXPECT_EQ(a.UnitFactor, b.UnitFactor);
  EXPECT_EQ(a.UnitText, b.UnitText);
  EXPECT_EQ(a.UnitFormat, b.UnitFormat);
  EXPECT_EQ(a.Heads, b.Heads);
}

TEST(ConversionFile, RoundTrip) {
  ConversionFile file;
  UnitTable written = BuiltInUnits();
  written.UnitFactor[Unit::Pressure][2] = 0.004014;
  written.UnitText[Unit::Pressure][2] = "in.wg";
  written.UnitFormat[Unit::Pressure][2] = "0.000";
  written.Heads[3] = "Metric";
  file.Saved(written);

  UnitTable read = BuiltInUnits();
  read.UnitSystem = 2;
  LoadConversion(read, file.path, file.ui);
  EXPECT_TRUE(file.ui.Records().empty());
  EXPECT_EQ(read.UnitSystem, 2);  // the system is a setting of the defaults, not of this file
  // The cost picture has a comma in second place, which a load takes for a decimal mark.
  written.UnitFormat[Unit::Cost] = {"", "0.000", "0.000"};
  ExpectSameTable(read, written);
  EXPECT_EQ(FormatValue(read, 2, Unit::Pressure, true), "0.008 in.wg");
  EXPECT_EQ(file.Saved(read), file.Saved(written));
}

TEST(ConversionFile, SecondPlaceOfADigitPictureIsTheDecimalPoint) {
  ConversionFile file;
  UnitTable units = BuiltInUnits();
  units.UnitFormat[Unit::Length] = {"", "  0;00  ", "0"};
  units.UnitFormat[Unit::Area] = {"", "#,##", "0"};
  std::string text = file.Saved(units);
  LoadConversion(units, file.path, file.ui);
  EXPECT_EQ(units.UnitFormat[Unit::Length][1], "0.00");  // trimmed, then the mark forced
  EXPECT_EQ(units.UnitFormat[Unit::Length][2], "0");     // a single place is left alone
  EXPECT_EQ(units.UnitFormat[Unit::Area][1], "#.##");
  EXPECT_EQ(units.UnitFormat[Unit::Time][1], "hh:mm:ss");  // not a digit picture
}

TEST(ConversionFile, DamagedFileSaysSoAndKeepsTheTableWhole) {
  ConversionFile file;
  const std::vector<std::string> lines = Lines(file.Saved(BuiltInUnits()));
  std::string changedThenCut;
  for (int i = 0; i < 10; ++i)
    changedThenCut += (i == 2 ? "length\t 9 \tm\tyd\t0\t0" : lines[i]) + "\r\n";
  std::string binary;
  for (int i = 0; i < 3000; ++i) binary.push_back(static_cast<char>((i * 131) % 256));
  std::string badFactor = lines[0] + "\r\n" + lines[1] + "\r\nlength\tthree\tm\tft\t0\t0\r\n";
  std::string zeroFactor = lines[0] + "\r\n" + lines[1] + "\r\nlength\t 0 \tm\tft\t0\t0\r\n";

  for (const std::string& bytes : {changedThenCut, binary, badFactor, zeroFactor, std::string()}) {
    HeadlessUi ui;
    test::WriteFile(file.path, bytes);
    UnitTable units = BuiltInUnits();
    LoadConversion(units, file.path, ui);
    EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
    ExpectSameTable(units, BuiltInUnits());
  }
  HeadlessUi ui;
  UnitTable units = BuiltInUnits();
  LoadConversion(units, file.path + ".missing", ui);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
}

TEST(ConversionFile, SaveFailureSaysSo) {
  HeadlessUi ui;
  SaveConversion(BuiltInUnits(), test::ScratchDir() + "no/such/Conversion.dat", ui);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{"Error savings conversion values"});
}

}  // namespace
}  // namespace galeris
