// The airway editor's commit, the fan dialog's commit and coordinate entry: shapes and presets
// against the square law, multiple mode, the journal, and bad input that writes nothing.
#include "editors/logic/airway_edit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "core/airway_values.h"
#include "editors/logic/coord_entry.h"
#include "editors/logic/fan_edit.h"
#include "core/headless_ui.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

constexpr double kPi = 3.1415926;

// Three 100 m airways in a row with their own friction factor (0.012) and shock length (20 m).
struct Editor : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  test::JournalSpy journal{3, [this](int i) { return ws.net.Dim[i][2]; }};  // the width then

  void SetUp() override {
    ws.net.MaxAirways = 20;
    ClearStore(ws.net);
    ws.net.BranchCount = 0;
    ws.units = BuiltInUnits();
    for (int k = 0; k < 3; ++k) {
      const int i = test::AddAirway(ws.net, 1000 + 100 * k, 1000, 500, 1100 + 100 * k, 1000, 500);
      ws.net.EntryNodeId[i] = NodeKey(1000 + 100 * k, 1000, 500);
      ws.net.ExitNodeId[i] = NodeKey(1100 + 100 * k, 1000, 500);
      ws.net.WallType[i] = ws.net.ShockType[i] = kUserGiven;
      ws.net.ResType[i] = 0;
      ws.net.WallFactor[i] = 0.012f;
      ws.net.ShockFactor[i] = 20;
      ws.net.AirwayNo[i] = 10 + i;
      ws.net.BranchName[i] = "Drive " + std::to_string(i);
      CalcResistance(ws, i);
    }
    ws.defaults.ResName[2] = "Door";
    ws.defaults.ResPreset[2] = 10;
    ws.defaults.WallName[3] = "Smooth";
    ws.defaults.WallFactorPreset[3] = 0.004f;
    ws.defaults.ShockName[2] = "Bend";
    ws.defaults.ShockPreset[2] = 30;
    ws.net.FanName[4] = "Axial 2000";
    ws.journal = &journal;
  }

  // Atkinson at 1.2 kg/m3 for a 100 m airway.
  static double Law(double k, double area, double perimeter, double shock) {
    return k * perimeter * (100 + shock) / (area * area * area);
  }
};

TEST_F(Editor, EachShapeCommitsItsSectionAndResistance) {
  struct Case {
    const char* name;
    int cycles;  // CmdShape presses from rectangular
    const char* width;
    const char* height;
    std::int32_t bit;
    float dim1, dim2;
    double area, perimeter;
  };
  const Case cases[] = {
      {"rectangular", 0, "5", "4", Bit::Rectangular, 4, 5, 20, 18},
      {"round", 1, "3", "", Bit::Round, 0, 3, 9 * kPi / 4, 3 * kPi},
      {"irregular", 2, "20", "18", Bit::Custom, 18, 20, 20, 18},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    AirEditFields f = LoadAirEdit(ws, 1);
    for (int n = 0; n < c.cycles; ++n) NextShape(ws.units, f);
    f.Width.text = c.width;
    if (*c.height) f.Height.text = c.height;
    ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, f));
    EXPECT_EQ(ws.net.BranchCode[1] & (Bit::Rectangular | Bit::Round | Bit::Custom), c.bit);
    EXPECT_FLOAT_EQ(ws.net.Dim[1][1], c.dim1);
    EXPECT_FLOAT_EQ(ws.net.Dim[1][2], c.dim2);
    EXPECT_NEAR(ws.net.Resistance[1], Law(0.012, c.area, c.perimeter, 20), 1e-6);
  }
}

TEST_F(Editor, CyclingTheShapeCarriesAnEqualSection) {
  AirEditFields f = LoadAirEdit(ws, 1);  // 4 x 4
  NextShape(ws.units, f);
  EXPECT_EQ(f.Width.text, "4.0");  // the width becomes the diameter
  NextShape(ws.units, f);
  EXPECT_EQ(f.Width.text, "12.56637");  // the round area
  f.Width.text = "25";
  NextShape(ws.units, f);
  EXPECT_EQ(f.Width.text, "5.0");  // a square of the same area
  EXPECT_EQ(f.Height.text, "5.0");
}

TEST_F(Editor, PresetAndUserGivenPaths) {
  const double base = Law(0.012, 16, 16, 20);
  struct Case {
    const char* name;
    std::function<void(AirEditFields&)> set;
    int resType, wallType, shockType;
    double resistance;
  };
  const Case cases[] = {
      {"resistance preset", [](AirEditFields& f) { f.ResIndex = 2; }, 2, 50, 50, base + 10},
      {"fixed resistance", [](AirEditFields& f) { f.ChkFixRes = true, f.FixRes.text = "2.5"; }, 50,
       50, 50, 2.5},
      {"fixed but empty keeps the old",
       [](AirEditFields& f) { f.ChkFixRes = true, f.FixRes.text = ""; }, 50, 50, 50, base},
      {"wall preset", [](AirEditFields& f) { f.ChkFixK = false, f.WallIndex = 3; }, 0, 3, 50,
       Law(0.004, 16, 16, 20)},
      {"own wall factor", [](AirEditFields& f) { f.Wall.text = "0.024"; }, 0, 50, 50,
       Law(0.024, 16, 16, 20)},
      {"shock preset", [](AirEditFields& f) { f.ChkShock = false, f.ShockIndex = 2; }, 0, 50, 2,
       Law(0.012, 16, 16, 30)},
      {"pressure and quantity fix the resistance",
       [](AirEditFields& f) {
         f.ChkPress = f.CheckFix = true, f.Pres.text = "200", f.Flow.text = "10";
       },
       50, 50, 50, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    AirEditFields f = LoadAirEdit(ws, 1);
    c.set(f);
    ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, f));
    EXPECT_EQ(ws.net.ResType[1], c.resType);
    EXPECT_EQ(ws.net.WallType[1], c.wallType);
    EXPECT_EQ(ws.net.ShockType[1], c.shockType);
    EXPECT_NEAR(ws.net.Resistance[1], c.resistance, 1e-5);
  }
}

TEST_F(Editor, OkWithoutChangesKeepsTheStoredValuesExactly) {
  ws.net.Quantity[1] = 12.3456f;
  ws.net.Dim[1][2] = 4.123457f;
  const float before = ws.net.Resistance[1];
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, LoadAirEdit(ws, 1)));
  EXPECT_EQ(ws.net.Quantity[1], 12.3456f);
  EXPECT_EQ(ws.net.Dim[1][2], 4.123457f);
  EXPECT_NE(ws.net.Resistance[1], before);
}

TEST_F(Editor, ZeroSizesBecomeOneCentimetre) {
  AirEditFields f = LoadAirEdit(ws, 1);
  f.Width.text = "0";
  f.Height.text = "0";
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, f));
  EXPECT_FLOAT_EQ(ws.net.Dim[1][1], 0.01f);
  EXPECT_FLOAT_EQ(ws.net.Dim[1][2], 0.01f);
}

TEST_F(Editor, MultipleModeWritesOnlyTouchedFieldsToTheSelection) {
  ws.net.BranchCode[1] |= Bit::Selected;
  ws.net.BranchCode[3] |= Bit::Selected | Bit::Services;
  ws.net.WallType[3] = 3;
  AirEditFields f = LoadAirEdit(ws, 1);
  f.Width.text = "6";
  f.Touch(AirField::Width);
  f.Wall.text = "0.5";  // typed but not touched
  f.Name = "Renamed";   // not applied in multiple mode
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Multiple, 1, f));
  for (int i : {1, 3}) {
    EXPECT_FLOAT_EQ(ws.net.Dim[i][2], 6);
    EXPECT_FLOAT_EQ(ws.net.Dim[i][1], 4);
    EXPECT_EQ(ws.net.BranchCode[i] & Bit::Services, 0);  // written untouched, as it stands
    EXPECT_EQ(ws.net.BranchName[i].Trimmed(), "Drive " + std::to_string(i));
  }
  EXPECT_EQ(ws.net.WallType[3], 3);
  EXPECT_FLOAT_EQ(ws.net.Dim[2][2], 4);
  ASSERT_EQ(journal.entries.size(), 4u);
  EXPECT_EQ(journal.entries[0].value, 4);
  EXPECT_EQ(journal.entries[3].value, 6);
}

TEST_F(Editor, OneActionRecordsEveryAirwayOfARenamedNode) {
  ws.net.EntryNodeId[2] = ws.net.ExitNodeId[1];
  AirEditFields f = LoadAirEdit(ws, 1);
  f.ExitName = "Shaft bottom";
  f.Width.text = "5";
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, f));
  EXPECT_EQ(ws.net.EntryNodeName[2].Trimmed(), "Shaft bottom");
  // Both airways before the change, then both after it, under one action.
  EXPECT_EQ(journal.entries,
            (std::vector<test::JournalSpy::Entry>{{1, UndoJournal::kBefore, 3, 4},
                                                  {2, UndoJournal::kBefore, 3, 4},
                                                  {1, UndoJournal::kAfter, 3, 5},
                                                  {2, UndoJournal::kAfter, 3, 4}}));
  EXPECT_EQ(journal.action, 4);
}

TEST_F(Editor, BadInputWritesNothing) {
  struct Case {
    std::function<void(AirEditFields&)> set;
    AirField field;
    const char* message;
  };
  const Case cases[] = {
      {[](AirEditFields& f) { f.Width.text = "abc"; }, AirField::Width, kMsgDataEntry},
      {[](AirEditFields& f) { f.Width.text = "-3"; }, AirField::Width,
       "Airway width is out of range"},
      {[](AirEditFields& f) { f.Length.text = "1e40"; }, AirField::Length,
       "Length is out of range"},
      {[](AirEditFields& f) { f.MultiAir = "-2"; }, AirField::MultiAir,
       "Number of parallel airways is out of range"},
      {[](AirEditFields& f) { f.FanN = "11"; }, AirField::FanN, "Number of fans is out of range"},
      {[](AirEditFields& f) { f.Name = "a,b"; }, AirField::Name, kMsgCommaInName},
  };
  const Network before = ws.net;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    AirEditFields f = LoadAirEdit(ws, 1);
    f.Width.text = "7";  // a good change that must not be written either
    c.set(f);
    const std::optional<FieldError> error = CommitAirEdit(ws, AirEditMode::Single, 1, f);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->field, c.field);
    EXPECT_EQ(error->message, c.message);
    EXPECT_EQ(ws.net.Dim[1], before.Dim[1]);
    EXPECT_EQ(ws.net.BranchName[1], before.BranchName[1]);
  }
  EXPECT_TRUE(journal.entries.empty());
}

TEST_F(Editor, FansOnTheAirway) {
  ws.net.BranchCode[1] |= Bit::FixedQuantity;
  AirEditFields f = LoadAirEdit(ws, 1);
  f.Fan = 4;
  f.FanN = "2";
  f.Series = true;
  f.CPart = "150";
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 1, f));
  EXPECT_EQ(ws.net.FanNumber[1], 4);
  EXPECT_EQ(ws.net.NoOfFans[1], 2);
  EXPECT_EQ(ws.net.CurveFraction[1], 100);
  EXPECT_EQ(ws.net.BranchCode[1] & (Bit::FixedQuantity | Bit::FansInSeries | Bit::FixedDirection),
            Bit::FansInSeries | Bit::FixedDirection);

  f = LoadAirEdit(ws, 2);
  f.MultiAir = "2";
  f.Fan = 4;
  f.FanN = "1";
  ASSERT_FALSE(CommitAirEdit(ws, AirEditMode::Single, 2, f));
  EXPECT_TRUE(ui.Said(kMsgFansInParallelAirways));
  EXPECT_EQ(ws.net.FanNumber[2], 0);

  ws.net.FanNumber[3] = 7;  // not in the fan database
  f = LoadAirEdit(ws, 3);
  EXPECT_FALSE(f.FanFound);
  EXPECT_EQ(FanRows(ws.net).back().text, "  4: Axial 2000");
}

TEST_F(Editor, FanDialogCommit) {
  struct Case {
    int fan;
    const char* count;
    bool series;
    int type;
    int fanThen, fansThen, fractionThen;
  };
  ws.defaults.DefaultCurveFraction = 30;
  const Case cases[] = {
      {4, "0", false, 1, 0, 0, 30}, {4, "3", true, 2, 4, 3, 40}, {0, "2", false, 1, 0, 0, 100}};
  for (const Case& c : cases) {
    FanEditFields f = LoadFanEdit(ws, 1);
    f.Fan = c.fan;
    f.FanN = c.count;
    f.Series = c.series;
    f.CurveType = c.type;
    f.VPart = c.type == 2 ? "40" : std::to_string(CurvePartFor(c.type, 0));
    ASSERT_FALSE(CommitFanEdit(ws, 1, f));
    EXPECT_EQ(ws.net.FanNumber[1], c.fanThen);
    EXPECT_EQ(ws.net.NoOfFans[1], c.fansThen);
    EXPECT_EQ(ws.net.CurveFraction[1], c.fractionThen);
    EXPECT_EQ((ws.net.BranchCode[1] & Bit::FansInSeries) != 0, c.series);
  }
  FanEditFields bad = LoadFanEdit(ws, 1);
  bad.FanN = "x";
  EXPECT_EQ(CommitFanEdit(ws, 1, bad), std::string(kMsgDataEntry));
  EXPECT_EQ(journal.entries.size(), 6u);
  EXPECT_EQ(journal.action, 6);
}

TEST_F(Editor, OrificeWizard) {
  ui.QueueInput("2");
  ui.QueueAnswer(MsgAnswer::OK);
  // 0.6 x (1 / 1.3 - 1 / 16)^2 = 0.29968
  EXPECT_EQ(OrificeWizard(ws, 1, "1.00000"), "1.29968");
  EXPECT_TRUE(
      ui.Said("A resistance of 0.29968 Ns2/m8 will now be added to the airway.\n"
              "The total resistance will be fixed to 1.29968 Ns2/m8"));
  ws.net.ResType[1] = 1;
  EXPECT_FALSE(OrificeWizard(ws, 1, "1"));
  EXPECT_TRUE(ui.Said(kMsgBlockedOrifice));
}

TEST(CoordEntry, PointsAndLimits) {
  HeadlessUi ui;
  UnitTable units = BuiltInUnits();
  struct Case {
    std::array<std::string, 3> absolute, relative;
    std::optional<std::array<double, 3>> point;
    const char* message;
  };
  const Case cases[] = {
      {{"100.4", "200.5", "-30"}, {"", "", ""}, std::array<double, 3>{100, 200, -30}, ""},
      {{"10", "20", "30"}, {"1", "2", "3.6"}, std::array<double, 3>{11, 22, 34}, ""},
      {{"10000000", "0", "0"}, {"", "", ""}, std::array<double, 3>{1e7, 0, 0}, ""},
      {{"0", "0", "10000000"}, {"", "", ""}, std::nullopt, kMsgCoordinatesExceeded},
      {{"1a", "0", "0"}, {"", "", ""}, std::nullopt, kMsgCoordinateEntry},
  };
  for (const Case& c : cases) {
    ui.ClearRecords();
    const CoordEntryFields f{true, c.absolute, true, c.relative};
    EXPECT_EQ(ReadCoordEntry(units, f, ui), c.point);
    if (*c.message) {
      EXPECT_TRUE(ui.Said(c.message));
    }
  }
  units.UnitSystem = 2;
  const CoordEntryFields feet{false, {}, true, {"328.08399", "0", "0"}};
  EXPECT_EQ(ReadCoordEntry(units, feet, ui, std::array<double, 3>{5, 5, 5}),
            (std::array<double, 3>{105, 5, 5}));
}

}  // namespace
}  // namespace galeris
