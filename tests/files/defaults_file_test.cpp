// Defaults.dat and the defaults block: built-in values, the write and read round trip, the
// reader's defaults for short lines, every older version, and damaged files.
#include "files/defaults_file.h"

#include <cmath>
#include <functional>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/number_format.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

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

using test::Lines;

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

TEST(BuiltInDefaults, EmptySlotsAndMirroredViews) {
  Program p;
  const Defaults& d = p.ws.defaults;
  EXPECT_EQ(d.WallName[10], "");
  EXPECT_EQ(d.ResName[49], "undefined");
  EXPECT_EQ(d.ResName[kUserGiven], "Fix Res");
  Network& net = p.ws.net;
  EXPECT_FLOAT_EQ(net.ViewValue[5][2], -0.391f);
  net.AxisSignY = -1;
  SetInitialViews(net);
  EXPECT_FLOAT_EQ(net.ViewValue[3][1], -3.141592654f / 2);
  EXPECT_FLOAT_EQ(net.ViewValue[5][1], -1.0f);
  EXPECT_FLOAT_EQ(net.ViewValue[4][2], -3.141592654f / 2);  // only the tilt is mirrored
}

TEST(DefaultsFile, MissingFileKeepsTheBuiltInValues) {
  Program p;
  p.ws.defaults.MaxIter = 1;
  InitDefaults(p.ws);
  EXPECT_EQ(p.ws.defaults.MaxIter, 50);
  EXPECT_TRUE(p.ui.Records().empty());
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
  d.ExportLayers = {1, 0, -1, 0, 1};
  d.Fonts[3] = {"Courier New", -1, 9};
  d.UnitSystem = 2;
  d.GridCentreY = -250;
  p.ws.net.FanMax = 300;
  p.ws.net.NextAirwayNo = 4567;
  SaveDefaults(p.ws);
  const std::string saved = test::ReadFile(p.DefaultsPath());

  Program q;
  q.Init(saved);
  EXPECT_TRUE(q.ui.Records().empty());
  EXPECT_EQ(FormatDefaultsBlock(q.ws), FormatDefaultsBlock(p.ws));
  EXPECT_EQ(q.ws.net.MaxAirways, 12000);
  EXPECT_EQ(q.ws.units.UnitSystem, 2);
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

TEST(DefaultsFile, CurveFractionDoesNotSurviveAReload) {
  Program p;
  p.ws.defaults.DefaultCurveFraction = 60;
  SaveDefaults(p.ws);
  EXPECT_EQ(Tabs(Lines(test::ReadFile(p.DefaultsPath()))[7])[77], " 60 ");
  Program q;
  q.Load(test::ReadFile(p.DefaultsPath()));
  EXPECT_EQ(q.ws.defaults.DefaultCurveFraction, 0);
  EXPECT_EQ(q.ws.defaults.UnusedCurveFraction, 60);
}

TEST(DefaultsFile, OldValuesLineTakesTheReaderDefaults) {
  Program p;
  Defaults& d = p.ws.defaults;
  d.ViewDepth = 9;
  d.GridWidth = 9;
  d.GridCentreX = d.GridCentreY = 9;
  d.DefaultArea = 9;
  d.DefaultPerimeter = 9;
  d.ViewFar = 9;
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
  EXPECT_EQ((std::vector<float>{r.ViewDepth, r.GridWidth, r.GridCentreX, r.GridCentreY,
                                r.DefaultArea, r.DefaultPerimeter, r.ViewFar}),
            (std::vector<float>{1500, 500, 1000, 1000, 25, 20, 1000}));
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

  for (auto [position, check] : std::vector<std::pair<int, std::function<bool(Program&)>>>{
           {17, [](Program& r) { return r.ws.defaults.SpinSpeed == 2; }},
           {18, [](Program& r) { return r.ws.defaults.TiltSpeed == 2; }},
           {22, [](Program& r) { return r.ws.defaults.ViewDetail == 0x1FF; }},
           {69, [](Program& r) { return r.ws.net.FanMax == 250; }},
           {72, [](Program& r) { return r.ws.defaults.UnitSystem == 1; }},
       }) {
    Program r;
    r.ws.defaults.ViewDetail = 5;
    r.ws.net.FanMax = 100;
    r.Load(WithValueAt(p.ws, position, position == 22 ? "" : " 0 "));
    EXPECT_TRUE(check(r)) << "position " << position;
  }
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

TEST(DefaultsFile, EmptyResistanceNamesReadAsUndefined) {
  Program p;
  p.ws.defaults.ResName[3] = "";
  p.ws.defaults.WallName[3] = "";
  p.WriteDefaults(DefaultsHeadLine() + "\r\n" + FormatDefaultsBlock(p.ws));
  SetBuiltInDefaults(p.ws);
  LoadDefaults(p.ws);
  EXPECT_EQ(p.ws.defaults.ResName[3], "undefined");
  EXPECT_EQ(p.ws.defaults.WallName[3], "");
}

TEST(DefaultsFile, CommaSeparatedFileWithGaleris2Head) {
  Program p;
  p.CopyFixture("v22_galeris2.dat");
  InitDefaults(p.ws);
  EXPECT_TRUE(p.ui.Records().empty());
  const Defaults& d = p.ws.defaults;
  EXPECT_FLOAT_EQ(d.WallFactorPreset[1], 0.003f);  // 0.0036 at the mine's density
  EXPECT_EQ(d.ResPreset[1], 1e9f);
  EXPECT_EQ(d.ResName[48], "Reg 48");
  EXPECT_EQ(d.ResName[49], "undefined");
  EXPECT_EQ(d.ShockPreset[6], 500.0f);
  EXPECT_EQ(d.AirDensity, 1.2f);         // 0 in the file
  EXPECT_EQ(d.SurfacePressure, 101.0f);  // 0 in the file
  EXPECT_EQ(d.MaxIter, 80);
  EXPECT_EQ(d.Fonts[4].Name, "Script");
  EXPECT_EQ(p.ws.net.MaxAirways, 5000);
  EXPECT_EQ(d.ColourTable[2], 65280);
  EXPECT_EQ(d.EditNoRightClick, 1);
}

TEST(DefaultsFile, CommaSeparatedFileWithOlderHeadHasTenResistances) {
  Program p;
  p.CopyFixture("v15_galeris.dat");
  LoadDefaults(p.ws);
  EXPECT_TRUE(p.ui.Records().empty());
  EXPECT_EQ(p.ws.defaults.ResName[9], "Curtain");
  EXPECT_EQ(p.ws.defaults.ResName[10], "undefined");
  EXPECT_EQ(p.ws.defaults.EditNoRightClick, 1);
}

TEST(DefaultsFile, LegacyLineFormKeepsValuesForZeroOrEmptyEntries) {
  Program p;
  p.ws.defaults.SurfacePressure = 99;
  p.CopyFixture("v26_legacy_b.dat");
  LoadDefaults(p.ws);
  EXPECT_TRUE(p.ui.Records().empty());
  const Defaults& d = p.ws.defaults;
  EXPECT_EQ(d.WallName[10], "Old Workings");
  EXPECT_FLOAT_EQ(d.WallFactorPreset[1], 0.0036f);  // 2.6 wall values stand as written
  EXPECT_EQ(d.ResName[49], "undefined");
  EXPECT_EQ(d.ViewDetail, 0x1FF);       // empty display flags
  EXPECT_EQ(d.Fonts[2].Name, "Arial");  // empty: kept
  EXPECT_EQ(d.SpinSpeed, 2.0f);         // zero: kept
  EXPECT_EQ(d.SurfacePressure, 99.0f);  // not read from the line form
  EXPECT_EQ(d.ColourTable[2], 0);       // zero: kept (built-in zero)
  EXPECT_EQ(d.ColourTable[3], 16711680);
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

  Program r;
  r.Load(WithValueAt(p.ws, 15, " 1E+300 "));  // no single holds it
  EXPECT_EQ(r.ui.MessageTexts(), std::vector<std::string>{kLoadFailed});
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

TEST(DefaultsFile, WrittenOnACommaMachine) {
  Program p;
  p.ws.defaults.MaxError = 0.025f;
  p.ws.defaults.WallFactorPreset[20] = 1.5f;
  SetMachineDecimalSeparator(',');
  SaveDefaults(p.ws);
  const std::string text = test::ReadFile(p.DefaultsPath());
  LoadDefaults(p.ws);  // read back there
  SetMachineDecimalSeparator('.');
  EXPECT_NE(text.find(" 0,025 "), std::string::npos);
  EXPECT_EQ(p.ws.defaults.MaxError, 0.025f);
  Program q;
  q.Load(text);  // and on a machine with a point
  EXPECT_TRUE(q.ui.Records().empty());
  EXPECT_EQ(q.ws.defaults.MaxError, 0.025f);
  EXPECT_EQ(q.ws.defaults.WallFactorPreset[20], 1.5f);
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

TEST(NetworkDefaults, BlockFollowsTheHeadLine) {
  Program p;
  p.ws.defaults.MaxIter = 77;
  const std::string path = p.folder + "block.txt";
  test::WriteFile(path, "Defaults List for Network\r\n" + DefaultsHeadLine() + "\r\n" +
                            FormatDefaultsBlock(p.ws) + "Saved Views\r\n");
  Program q;
  LineReader in(path);
  std::string line;
  ASSERT_TRUE(in.ReadLine(line) && in.ReadLine(line));
  ASSERT_TRUE(ReadDefaultsBlock(q.ws, in, 3.1f));
  EXPECT_EQ(q.ws.defaults.MaxIter, 77);
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(line, "Saved Views");

  LineReader cut(path);
  ASSERT_TRUE(cut.ReadLine(line) && cut.ReadLine(line) && cut.ReadLine(line));
  EXPECT_FALSE(ReadDefaultsBlock(q.ws, cut, 3.1f) && ReadDefaultsBlock(q.ws, cut, 3.1f));
}

TEST(NetworkDefaults, LegacyPresetsOfVersionTwo) {
  Program p;
  LineReader in(Fixture("v20_network_legacy_a.txt"));
  ASSERT_TRUE(ReadLegacyDefaultsA(p.ws, in, 2.0f));
  const Defaults& d = p.ws.defaults;
  EXPECT_EQ(d.WallName[9], "Shaft Sets");
  EXPECT_FLOAT_EQ(d.WallFactorPreset[9], 0.05f);
  EXPECT_EQ(d.ResPreset[1], 1e9f);
  EXPECT_EQ(d.ResName[10], "undefined");
  EXPECT_EQ(d.ShockName[6], "Extreme");
  std::string line;
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(line, "Saved Views");
}

TEST(NetworkDefaults, LegacyLineFormOfVersionTwoThree) {
  Program p;
  p.ws.defaults.ViewDetail = 3;
  LineReader in(Fixture("v23_network_legacy_b.txt"));
  ASSERT_TRUE(ReadLegacyDefaultsB(p.ws, in, 2.3f));
  const Defaults& d = p.ws.defaults;
  EXPECT_FLOAT_EQ(d.WallFactorPreset[1], 0.003f);  // divided by 1.2 below 2.4
  EXPECT_EQ(d.WallName[10], "Old Workings");
  EXPECT_EQ(d.ResName[49], "undefined");
  EXPECT_EQ(d.ViewDetail, 0x1FF);
  std::string line;
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(line, "Saved Views");  // the end line was skipped
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

}  // namespace
}  // namespace galeris
