// Defaults.dat and the Options dialog. The file: the write and read round trip, the reader's
// defaults for short lines, every older version, and damaged files. The dialog's fields
// against the defaults: a round trip through the form and Defaults.dat changes nothing, every
// limit keeps the old value with its message, and the mappings with a rule of their own
// (divisions, efficiency, inversions, presets, auto save).
#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>

#include "core/headless_ui.h"
#include "core/number_format.h"
#include "core/units.h"
#include "files/defaults_file.h"
#include "files/options_form.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

using test::Lines;

constexpr const char* kLoadFailed = "Error re-loading defaults";

std::string Fixture(const std::string& name) {
  return test::SourcePath("tests/files/fixtures/defaults/" + name);
}

// A workspace whose program folder is a fresh scratch folder.
struct Program : test::FileFixture {
  std::string folder = dir;
  std::string DefaultsPath() const { return folder + "Defaults.dat"; }
  void WriteDefaults(const std::string& bytes) { test::WriteFile(DefaultsPath(), bytes); }
  void CopyFixture(const std::string& name) { WriteDefaults(test::ReadFile(Fixture(name))); }
  void Load(const std::string& bytes) { WriteDefaults(bytes), LoadDefaults(ws); }
  void Init(const std::string& bytes) { WriteDefaults(bytes), InitDefaults(ws); }
};

std::vector<std::string> Tabs(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t end; (end = line.find('\t', start)) != std::string::npos; start = end + 1)
    fields.push_back(line.substr(start, end - start));
  fields.push_back(line.substr(start));
  return fields;
}

// Defaults.dat with one field of line `line` set to `value`, or that line cut after `keep` fields.
std::string Edited(const Workspace& ws, std::size_t line, int position, const std::string& value,
                   std::size_t keep = 0) {
  std::vector<std::string> lines = Lines(DefaultsHeadLine() + "\r\n" + FormatDefaultsBlock(ws));
  std::vector<std::string> fields = Tabs(lines[line]);
  if (position > 0) fields[position - 1] = value;
  if (keep > 0) fields.resize(keep);
  lines[line].clear();
  for (std::size_t i = 0; i < fields.size(); ++i) lines[line] += (i ? "\t" : "") + fields[i];
  std::string text;
  for (const std::string& l : lines) text += l + "\r\n";
  return text;
}
std::string WithValueAt(const Workspace& ws, int position, const std::string& value) {
  return Edited(ws, 7, position, value);
}

TEST(DefaultsFile, WrittenThenReadBackIdentical) {
  Program p;
  Defaults& d = p.ws.defaults;
  d.WallName[20] = "Lined Drive";
  d.WallFactorPreset[20] = 0.0123f;
  d.ResPreset[12] = 42.5f;
  d.ShockName[7] = "Collar";
  d.GridSpacing = 12.5;
  d.RequestedAirways = 12000;
  d.ViewDetail = 0;
  d.Fonts[3] = {"Courier New", -1, 9};
  d.UnitSystem = 2;
  SaveDefaults(p.ws);
  const std::string saved = test::ReadFile(p.DefaultsPath());

  Program q;
  q.Init(saved);
  EXPECT_TRUE(q.ui.Records().empty());
  EXPECT_EQ(FormatDefaultsBlock(q.ws), FormatDefaultsBlock(p.ws));
  EXPECT_EQ(q.ws.defaults.ViewDetail, 0);  // a written zero is not an empty field
  SaveDefaults(q.ws);
  EXPECT_EQ(test::ReadFile(q.DefaultsPath()), saved);
}

TEST(DefaultsFile, NamesCannotBreakTheLines) {
  Program p;
  p.ws.defaults.WallName[2] = "Lined\tDrive\r\n";
  p.ws.defaults.SurfaceName = "TOP\tRL";
  p.ws.defaults.MaxIter = 66;
  SaveDefaults(p.ws);
  Program q;
  q.Load(test::ReadFile(p.DefaultsPath()));
  EXPECT_TRUE(q.ui.Records().empty());
  EXPECT_EQ(q.ws.defaults.WallName[2], "Lined Drive  ");
  EXPECT_EQ(q.ws.defaults.WallName[3], "Raisebored Airway");
  EXPECT_EQ(q.ws.defaults.SurfaceName, "TOP RL");
  EXPECT_EQ(q.ws.defaults.MaxIter, 66);
}

TEST(DefaultsFile, OldValuesLineTakesTheReaderDefaults) {
  Program p;
  Defaults& d = p.ws.defaults;
  d.ViewDepth = d.GridWidth = d.DefaultArea = d.ViewFar = 9;
  d.LayerInherit = -1;
  d.AutoSaveMinutes = 10;
  p.ws.net.NextAirwayNo = 77;
  const std::string text = Edited(p.ws, 7, 0, "", 72);

  Program q;
  q.WriteDefaults(text);
  q.ws.defaults.LayerInherit = -1;
  LoadDefaults(q.ws);
  EXPECT_TRUE(q.ui.Records().empty());
  const Defaults& r = q.ws.defaults;
  EXPECT_EQ((std::vector<float>{r.ViewDepth, r.GridWidth, r.DefaultArea, r.ViewFar}),
            (std::vector<float>{1500, 500, 25, 1000}));
  EXPECT_EQ(r.LayerInherit, 0);  // missing reads as zero
  EXPECT_EQ(r.AutoSaveMinutes, 0);
  EXPECT_EQ(q.ws.net.NextAirwayNo, 0);
}

TEST(DefaultsFile, ZeroFieldsTakeTheReaderDefaults) {
  Program p;
  p.ws.defaults.DefaultPerimeter = 14;
  std::string text = WithValueAt(p.ws, 76, " 0 ");
  Program q;
  q.Load(text);
  EXPECT_EQ(q.ws.defaults.DefaultArea, 25.0f);
  EXPECT_EQ(q.ws.defaults.DefaultPerimeter, 20.0f);  // even though 14 was written
  Program r;
  r.ws.defaults.ViewDetail = 5;
  r.Load(WithValueAt(p.ws, 22, ""));
  EXPECT_EQ(r.ws.defaults.ViewDetail, 0x1FF);
}

TEST(DefaultsFile, CapacitiesAreClampedAndGrowTheStore) {
  Program p;
  p.Init(WithValueAt(p.ws, 12, " 99999 "));
  EXPECT_EQ(p.ws.defaults.RequestedAirways, 30000);

  Program q;
  q.Init(WithValueAt(q.ws, 12, " 10 "));
  EXPECT_EQ(q.ws.net.MaxAirways, 50);
  EXPECT_EQ(q.ws.net.Coord1.size(), 51u);

  // A network's block asking for more fan slots than the store has grows the fan arrays.
  Program r;
  r.Load(WithValueAt(r.ws, 69, " 400 "));
  EXPECT_EQ(r.ws.net.FanMax, 400);
  EXPECT_GE(r.ws.net.FanName.size(), 401u);
}

TEST(DefaultsFile, BulkheadPresetBecomesTheBlockageResistance) {
  for (auto [written, expected] : std::vector<std::pair<const char*, float>>{
           {" 100000 ", 1e9f}, {" 5E+08 ", 1e9f}, {" 99999 ", 99999.0f}, {" 500 ", 500.0f}}) {
    Program p;
    p.Load(Edited(p.ws, 4, 2, written));
    EXPECT_EQ(p.ws.defaults.ResPreset[1], expected) << written;
  }
}

TEST(DefaultsFile, CommaSeparatedFileWithGaleris2Head) {
  Program p;
  p.CopyFixture("v22_galeris2.dat");
  InitDefaults(p.ws);
  EXPECT_TRUE(p.ui.Records().empty());
  const Defaults& d = p.ws.defaults;
  EXPECT_FLOAT_EQ(d.WallFactorPreset[1], 0.003f);  // 0.0036 at the mine's density
  EXPECT_EQ(d.ResPreset[1], 1e9f);
  EXPECT_EQ(d.ResName[49], "undefined");
  EXPECT_EQ(d.AirDensity, 1.2f);         // 0 in the file
  EXPECT_EQ(d.SurfacePressure, 101.0f);  // 0 in the file
  EXPECT_EQ(d.MaxIter, 80);
  EXPECT_EQ(p.ws.net.MaxAirways, 5000);
}

TEST(DefaultsFile, LegacyLineFormKeepsValuesForZeroOrEmptyEntries) {
  Program p;
  p.ws.defaults.SurfacePressure = 99;
  p.CopyFixture("v26_legacy_b.dat");
  LoadDefaults(p.ws);
  EXPECT_TRUE(p.ui.Records().empty());
  const Defaults& d = p.ws.defaults;
  EXPECT_FLOAT_EQ(d.WallFactorPreset[1], 0.0036f);  // 2.6 wall values stand as written
  EXPECT_EQ(d.ViewDetail, 0x1FF);                   // empty display flags
  EXPECT_EQ(d.Fonts[2].Name, "Arial");              // empty: kept
  EXPECT_EQ(d.SpinSpeed, 2.0f);                     // zero: kept
  EXPECT_EQ(d.SurfacePressure, 99.0f);              // not read from the line form
}

TEST(DefaultsFile, VersionBelowOneReadsNothing) {
  Program p;
  p.Load("0.9\tGALERIS3\r\nrubbish\r\n");
  EXPECT_TRUE(p.ui.Records().empty());
  EXPECT_EQ(p.ws.defaults.WallName[1], "Flexible Ducting");
}

TEST(DefaultsFile, TruncatedFileSaysSoAndKeepsWhatWasRead) {
  Program p;
  p.ws.defaults.WallName[0] = "Glass";
  p.ws.defaults.ResName[0] = "Nothing";
  const std::vector<std::string> lines =
      Lines(DefaultsHeadLine() + "\r\n" + FormatDefaultsBlock(p.ws));
  Program q;
  q.Load(lines[0] + "\r\n" + lines[1] + "\r\n" + lines[2] + "\r\n" + lines[3]);
  EXPECT_EQ(q.ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
  EXPECT_EQ(q.ws.defaults.WallName[0], "Glass");
  EXPECT_EQ(q.ws.defaults.ResName[0], "Nothing");  // the last line, without its line end
  EXPECT_EQ(q.ws.defaults.ResPreset[1], 1e9f);     // not reached: built in
}

TEST(DefaultsFile, UnreadableNumberStopsTheLineAndKeepsWhatCameBefore) {
  Program p;
  p.ws.defaults.MinNodeSpacing = 9;
  p.ws.defaults.AirDensity = 1.1f;
  Program q;
  q.Load(WithValueAt(p.ws, 10, " 99999 "));  // MaxIter is 16-bit
  EXPECT_EQ(q.ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
  EXPECT_EQ(q.ws.defaults.MinNodeSpacing, 9);
  EXPECT_EQ(q.ws.defaults.MaxIter, 50);
  EXPECT_EQ(q.ws.defaults.AirDensity, 1.2f);
}

TEST(DefaultsFile, ShippedFilesHoldTheBuiltInValues) {
  Program p;
  p.ws.units = BuiltInUnits();
  SaveDefaults(p.ws);
  EXPECT_EQ(test::ReadFile(test::SourcePath("data/Defaults.dat")),
            test::ReadFile(p.DefaultsPath()));
  EXPECT_EQ(test::ReadFile(test::SourcePath("data/Conversion.dat")),
            test::ReadFile(p.folder + "Conversion.dat"));
}

// Damage of every kind, fixed and at random places of a good file: the reader may refuse it,
// but the settings that come out must still size a store.
TEST(DefaultsFile, DamagedFilesLeaveUsableSettings) {
  Program p;
  const std::string good = DefaultsHeadLine() + "\r\n" + FormatDefaultsBlock(p.ws);
  std::string binary;
  for (int i = 0; i < 5000; ++i) binary.push_back(static_cast<char>((i * 7919) % 256));
  std::vector<std::string> cases = {
      "",
      "\r\n\r\n",
      "GALERIS",
      binary,
      "2.2,GALERIS2\r\n\"a\",1\r\n",
      "2.6\tGALERIS2\r\nx\r\n",
      "3.1\tGALERIS3\r\n" + binary,
      "3.1\tGALERIS3\r\n" + std::string(3000000, '\t') + "\r\n",
      "3.1\tGALERIS3\r\n\r\n\r\n\r\n\r\n\r\n\r\n" + std::string(200, '9') + "\r\n"};
  std::mt19937 random(20261123);
  const std::string pieces[] = {"\t", "\r\n", "-",      "9999999999",         "1E+40",
                                ",",  "\"",   "-32768", std::string(1, '\0'), "\xff",
                                " ",  "0"};
  for (int round = 0; round < 300; ++round) {
    std::string bytes = good;
    const int edits = 1 + static_cast<int>(random() % 6);
    for (int e = 0; e < edits && !bytes.empty(); ++e) {
      const std::size_t at = random() % bytes.size();
      const int kind = static_cast<int>(random() % 3);
      if (kind == 0) bytes.erase(at, 1 + random() % 40);
      if (kind == 1) bytes.insert(at, pieces[random() % std::size(pieces)]);
      if (kind == 2) bytes.resize(at);
    }
    cases.push_back(bytes);
  }
  for (std::size_t round = 0; round < cases.size(); ++round) {
    p.WriteDefaults(cases[round]);
    SetBuiltInDefaults(p.ws);
    p.ws.net.MaxAirways = 50;
    InitDefaults(p.ws);
    ASSERT_GE(p.ws.net.FanMax, 1) << round;
    ASSERT_NE(p.ws.defaults.SpinSpeed, 0.0f) << round;
    ASSERT_GE(p.ws.net.MaxAirways, 50) << round;
    ASSERT_LE(p.ws.net.MaxAirways, 30000) << round;
    ASSERT_EQ(p.ws.net.Coord1.size(), static_cast<std::size_t>(p.ws.net.MaxAirways) + 1);
  }
  Program q;
  q.Load(binary);
  EXPECT_EQ(q.ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
}

TEST(DefaultsFile, SaveFailureSaysSo) {
  Program p;
  p.ws.paths.ProgramFolder = p.folder + "missing/";
  p.ws.DefaultsSaved = 0;
  SaveDefaults(p.ws);
  EXPECT_EQ(p.ui.MessageTexts(), std::vector<std::string>{"Error saving defaults"});
  EXPECT_EQ(p.ws.DefaultsSaved, 0);
}

TEST(NetworkDefaults, LegacyReadersStopAtTheEndOfTheFile) {
  Program p;
  const std::string path = p.folder + "short.txt";
  test::WriteFile(path, "\"Smooth\",0\r\n\"Pipes\",0.0036\r\n");
  LineReader a(path);
  EXPECT_FALSE(ReadLegacyDefaultsA(p.ws, a, 2.0f));
  EXPECT_EQ(p.ws.defaults.WallName[1], "Pipes");
  LineReader b(path);
  EXPECT_FALSE(ReadLegacyDefaultsB(p.ws, b, 2.3f));
}

struct Options : ::testing::Test, test::FileFixture {
  Options() { ws.units = BuiltInUnits(); }
  // Applies the form with one box typed in.
  OptionsApplied Type(const std::string& control, const std::string& text) {
    OptionsForm form = LoadOptionsForm(ws);
    form.Text[control] = text;
    ui.ClearRecords();
    return ApplyOptionsForm(ws, form);
  }
};

TEST_F(Options, RoundTripThroughTheFormAndTheFileChangesNothing) {
  SaveDefaults(ws);
  const std::string before = test::ReadFile(ws.paths.InProgram("Defaults.dat"));
  ApplyOptionsForm(ws, LoadOptionsForm(ws));
  EXPECT_TRUE(ui.Records().empty()) << ui.MessageTexts().front();
  EXPECT_EQ(ws.DefaultsSaved, 0xFF);  // nothing changed, so the exit has nothing to ask
  SaveDefaults(ws);
  EXPECT_EQ(test::ReadFile(ws.paths.InProgram("Defaults.dat")), before);
}

TEST_F(Options, DefaultsAreUnsavedOnceASettingChanges) {
  Type("txtIt", "5001");  // refused: the old value stays
  EXPECT_EQ(ws.DefaultsSaved, 0xFF);
  Type("txtIt", "200");
  EXPECT_EQ(ws.DefaultsSaved, 0);
  SaveDefaults(ws);
  OptionsForm form = LoadOptionsForm(ws);
  SwitchOptionUnits(ws, form, 1);
  EXPECT_EQ(ws.DefaultsSaved, 0xFF);
  SwitchOptionUnits(ws, form, 2);
  EXPECT_EQ(ws.DefaultsSaved, 0);
}

TEST_F(Options, LimitsKeepTheOldValueWithTheirMessage) {
  struct Case {
    const char *control, *typed;
    bool accepted;
    const char* message;
  } cases[] = {
      {"TxtCd", "0", false, "Limits of Allowable Divisions Exceeded"},
      {"TxtTol", "0.2", false, "Limits Exceeded.  Keep values between .25% and 20%"},
      {"TxtPowerZoom", "0", false, "Power Zoom exceeds limits"},
      {"TxtTilt", "45.1", false, "Tilt rotation exceeds limits"},
      {"TxtMj", "4", false, "Limits of Allowable Major Grid Size Exceeded"},
      {"Txtgx", "-1", false, "Limits of Allowable Grid Exceeded"},
      {"txtIt", "5001", false, "Limits of Itterations Exceeded"},
      {"txtMe", "0.00009", false, "Limits of Allowable Errors Exceeded"},
      {"TxtDensity", "2001", false, "Limits of Allowable Density Exceeded"},
      {"TxtAirP", "0", true, "Limits of Allowable Air Pressure Exceeded"},
      {"TxtCost", "0", false, "Limits of Allowable Cost Exceeded"},
      {"TxtEff", "0", false, "Limits of Allowable Efficiency Exceeded"},
      {"TxtFanMax", "10", false, "Limits of Allowable Fan Types Exceeded"},
      {"TxtFanMax", "11", true, "Limits of Allowable Fan Types Exceeded"},
      {"TxtAirRL", "-10000000", false, "Limits of Allowable RL's Exceeded"},
      {"TxtAirRL", "10000000", true, "Limits of Allowable RL's Exceeded"},
      {"txtIt", "12a", false, "Limits of Itterations Exceeded"},
      {"txtHeight", "tall", false, "Drive Height: not a number, the old value stays"},
  };
  for (const Case& c : cases) {
    const std::string old = LoadOptionsForm(ws).Text.at(c.control);
    Type(c.control, c.typed);
    EXPECT_EQ(ui.Said(c.message), !c.accepted) << c.control << " " << c.typed;
    EXPECT_EQ(ui.MessageTexts().size(), c.accepted ? 0u : 1u) << c.control << " " << c.typed;
    const std::string now = LoadOptionsForm(ws).Text.at(c.control);
    if (c.accepted) {
      EXPECT_EQ(std::stod(now), std::stod(c.typed)) << c.control;
    } else {
      EXPECT_EQ(now, old) << c.control << " " << c.typed;
    }
  }
  EXPECT_EQ(ws.net.FanMax, 11);
  EXPECT_EQ(ws.net.FanName.size(), 12u);
}

TEST_F(Options, MappingsWithRulesOfTheirOwn) {
  Type("TxtTol", "0.25");
  EXPECT_EQ(ws.defaults.ProximityDivisions, 400);
  Type("TxtTol", "20");
  EXPECT_EQ(ws.defaults.ProximityDivisions, 5);
  Type("TxtAirRL", "???");
  EXPECT_FLOAT_EQ(ws.defaults.SurfaceRL, 99999);

  OptionsForm form = LoadOptionsForm(ws);
  form.SaveTime = true;
  form.Text["txtsavetime"] = "25";
  form.PropertyInherit = false;
  form.ReverseY = true;
  form.SimSource = 1;
  form.Wall[3] = -0.02f;
  form.ShockName[4] = "UnDeFiNeD";
  const OptionsApplied applied = ApplyOptionsForm(ws, form);
  EXPECT_EQ(ws.defaults.AutoSaveMinutes, 10);
  EXPECT_TRUE(applied.AutosaveChanged);
  EXPECT_TRUE(applied.GridChanged);
  EXPECT_NE(ws.defaults.NoPropertyInherit, 0);
  EXPECT_EQ(ws.net.AxisSignY, -1);
  EXPECT_EQ(ws.defaults.SmokeAddSource, 0);
  EXPECT_FLOAT_EQ(ws.defaults.WallFactorPreset[3], 0.02f);
  EXPECT_EQ(ws.defaults.ShockName[4], "");

  SwitchOptionUnits(ws, form, 2);
  EXPECT_EQ(ws.defaults.UnitSystem, 2);
}

}  // namespace
}  // namespace galeris
