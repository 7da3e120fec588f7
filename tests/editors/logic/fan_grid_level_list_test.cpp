// The rules of two list editors. The fan list: the stored grid (order, repeats, clamps, an
// unreadable cell, a stall hump), the curve estimates against Int(Pt - VP) and Int(Ps + VP), and the
// zero-efficiency check. The Level List: clipping with its asymmetry, exchange, the end of the
// table, the "SURFACE" rule, the surface warning, the sort, refused input, ranges and the
// six-level choice.
#include <gtest/gtest.h>

#include <cmath>

#include "editors/logic/fan_grid.h"
#include "core/headless_ui.h"
#include "editors/logic/level_list.h"
#include "core/units.h"

namespace galeris {
namespace {

struct FanGrid : ::testing::Test {
  FanGrid() : ws(ui) { ws.units = BuiltInUnits(); }
  // A grid of rows {Ps, Pt, Q, Eff}; later rows stay empty.
  static FanGridText Grid(std::vector<std::array<std::string, 4>> rows) {
    FanGridText grid{};
    for (std::size_t k = 0; k < rows.size(); ++k) grid[k + 1] = rows[k];
    return grid;
  }
  void SetCurve(int fan, float diameter) {
    ws.net.FanDiameter[fan] = diameter;
    for (int k = 1; k <= kFanPoints; ++k) {
      ws.net.CurveQ[fan][k] = 10.0f * k;
      ws.net.CurveP[fan][k][1] = 3000.0f - 250 * k;
      ws.net.CurveP[fan][k][2] = 3200.0f - 250 * k;
    }
  }
  HeadlessUi ui;
  Workspace ws;
};

TEST_F(FanGrid, StoresSortedRepeatedAndClamped) {
  std::string name = "-none-";
  // Rising pressure is stored reversed; row 3's empty Pt keeps row 2's; the zero rows 4..10
  // repeat the last real point.
  FanGridText grid =
      Grid({{"500", "600", "40", "120"}, {"1000", "1100", "20", "-5"}, {"2000", "", "0", "70.5"}});
  for (int k = 4; k <= kFanPoints; ++k) grid[k] = {"0", "0", "0", "0"};
  const auto scale = StoreFanGrid(ws, 3, grid, false, name);
  ASSERT_TRUE(scale);
  EXPECT_EQ(name, "Fan #3");
  const Network& n = ws.net;
  const float expectQ[] = {0, 20, 40, 40};
  const float expectPs[] = {2000, 1000, 500, 500};
  const float expectPt[] = {1100, 1100, 600, 600};
  const int expectEff[] = {70, 0, 100, 100};  // 70.5 rounds half to even
  for (int k = 1; k <= 4; ++k) {
    EXPECT_EQ(n.CurveQ[3][k], expectQ[k - 1]) << k;
    EXPECT_EQ(n.CurveP[3][k][1], expectPs[k - 1]) << k;
    EXPECT_EQ(n.CurveP[3][k][2], expectPt[k - 1]) << k;
    EXPECT_EQ(n.CurveEff[3][k], expectEff[k - 1]) << k;
  }
  EXPECT_EQ(n.CurveQ[3][10], 40);
  EXPECT_EQ(std::pair(scale->MaxQ, scale->MaxP), std::pair(40.0, 2000.0));
}

TEST_F(FanGrid, AnUnreadableCellLeavesTheSlotAlone) {
  SetCurve(2, 1.5f);
  const Network before = ws.net;
  const FanGridText grid = Grid({{"1000", "1100", "10", "50"}, {"900", "1000", "ten", "50"}});
  const std::optional<FanGridCell> bad = UnreadableFanCell(grid);
  ASSERT_TRUE(bad);
  EXPECT_EQ(std::pair(bad->row, bad->column), std::pair(2, int(FanColumn::Quantity)));
  std::string name = "Main";
  EXPECT_FALSE(StoreFanGrid(ws, 2, grid, false, name));
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgNumberFormat});
  EXPECT_EQ(ws.net.CurveQ[2], before.CurveQ[2]);
  EXPECT_EQ(ws.net.CurveP[2], before.CurveP[2]);
  EXPECT_EQ(ws.net.FanName[2], before.FanName[2]);
}

TEST_F(FanGrid, AStallHumpIsStoredAsItSorts) {
  // Pressure rises to a peak at 20 m3/s before it falls: the catalogue curve of an axial fan.
  const FanGridText grid = Grid({{"1500", "1600", "10", "40"},
                                 {"1800", "1900", "20", "60"},
                                 {"1600", "1700", "30", "75"},
                                 {"1000", "1100", "40", "70"}});
  std::string name = "Axial";
  ASSERT_TRUE(StoreFanGrid(ws, 2, grid, false, name));
  EXPECT_TRUE(ui.MessageTexts().empty());
  const float expectQ[] = {20, 30, 10, 40, 40};
  for (int k = 1; k <= 5; ++k) EXPECT_EQ(ws.net.CurveQ[2][k], expectQ[k - 1]) << k;
  EXPECT_EQ(ws.net.CurveP[2][1][1], 1800);
}

TEST_F(FanGrid, EstimatesFollowTheVelocityPressure) {
  ws.defaults.AirDensity = 1.2f;
  for (const float diameter : {0.0f, 2.0f}) {
    SetCurve(1, diameter);
    const double area = diameter * diameter * 3.141592654 / 4;
    auto vp = [&](double q) { return area == 0 ? 0 : (q / area) * (q / area) * 1.2 / 2; };
    EstimateStaticCurve(ws, 1);
    for (int k = 1; k <= kFanPoints; ++k)
      EXPECT_EQ(ws.net.CurveP[1][k][1],
                static_cast<float>(std::floor(ws.net.CurveP[1][k][2] - vp(10.0 * k))));
    ui.ClearRecords();
    const float totalBefore = ws.net.CurveP[1][5][2];
    EXPECT_EQ(EstimateTotalCurve(ws, 1), diameter != 0);
    if (diameter == 0) {
      EXPECT_EQ(ws.net.CurveP[1][5][2], totalBefore);
      ASSERT_EQ(ui.MessageTexts().size(), 1u);
      EXPECT_EQ(ui.MessageTexts()[0].rfind("No fan diameter has been entered for Fan 1.", 0), 0u);
    } else {
      for (int k = 1; k <= kFanPoints; ++k)
        EXPECT_EQ(ws.net.CurveP[1][k][2],
                  static_cast<float>(std::floor(ws.net.CurveP[1][k][1] + vp(10.0 * k))));
    }
  }
  ui.ClearRecords();
  EXPECT_FALSE(EstimateTotalCurve(ws, 7));  // an empty fan: nothing, silently
  EXPECT_TRUE(ui.MessageTexts().empty());
}

TEST_F(FanGrid, ZeroEfficienciesReplacedUnlessAllZero) {
  ws.defaults.FanEffDefault = 0.8f;
  for (const int zeros : {10, 9, 0}) {
    ui.ClearRecords();
    for (int k = 1; k <= kFanPoints; ++k)
      ws.net.CurveEff[4][k] = static_cast<std::int16_t>(k <= zeros ? 0 : 65);
    FixZeroEfficiency(ws, 4);
    const bool replaced = zeros > 0 && zeros < kFanPoints;
    EXPECT_EQ(ws.net.CurveEff[4][1], replaced ? 80 : (zeros ? 0 : 65)) << zeros;
    EXPECT_EQ(ui.MessageTexts().size(), replaced ? 1u : 0u) << zeros;
  }
  EXPECT_EQ(FanListRow(ws.net, 4), " 4 -none-");
  EXPECT_EQ(FanDiameterText(ws.units, 0), "n/a");
  EXPECT_EQ(ReadFanDiameter(ws.units, "n/a"), 0.0f);
}

struct Levels : ::testing::Test {
  Levels() : ws(ui) {
    ws.units = BuiltInUnits();
    ResizeStore(ws.net);
  }
  // Validates the grid made of these rows (from row 1).
  void Validate(const std::vector<LevelRow>& rows) {
    LevelGrid grid(kLevelGridRows + 1);
    std::copy(rows.begin(), rows.end(), grid.begin() + 1);
    ValidateLevels(ws, grid);
  }
  std::array<std::int32_t, 2> Bound(int row) const {
    return {ws.net.RLBound[row][1], ws.net.RLBound[row][2]};
  }
  std::array<std::int32_t, 2> Bound(const std::string& name) const {
    for (int row = 1; row <= kLevelGridRows; ++row)
      if (ws.net.RLName[row] == name) return Bound(row);
    return {-1, -1};
  }
  HeadlessUi ui;
  Workspace ws;
};

TEST_F(Levels, EdgesOfTheLimits) {
  struct Case {
    const char *high, *low;
    std::array<std::int32_t, 2> stored;
    const char* message;
  } cases[] = {
      {"10000000", "5", {9999999, 5}, "Exceeds Maximum RL Limits"},
      {"9999999", "-10000000", {9999999, -10000000}, nullptr},  // Low at the limit stays
      {"-10000000", "-5", {-5, -9999999}, "Exceeds Minimum RL Limits"},
      {"5", "-10000001", {5, -9999999}, "Exceeds Minimum RL Limits"},
      {"50", "10000000", {10000000, 50}, nullptr},  // exchanged, not refused
      {"12.5", "-3.5", {12, -4}, nullptr},          // whole metres, half to even
  };
  for (const Case& c : cases) {
    ui.ClearRecords();
    Validate({{"SURFACE", "", ""}, {"L", c.high, c.low}});
    EXPECT_EQ(Bound("L"), c.stored) << c.high << " " << c.low;
    std::vector<std::string> limits;
    for (const std::string& text : ui.MessageTexts())
      if (text.rfind("Exceeds", 0) == 0) limits.push_back(text);
    EXPECT_EQ(limits, c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{})
        << c.high << " " << c.low;
  }
}

TEST_F(Levels, SortEndOfTableAndSurfaceRule) {
  Validate({{"Top", "1000", "900"},
            {"Deep", "100", "50"},
            {"Highest", "2000", "1500"},
            {"", "", ""},
            {"Beyond", "10", "0"}});
  // The walk reaches row 1.
  EXPECT_EQ((std::vector<std::string>{ws.net.RLName[1], ws.net.RLName[2], ws.net.RLName[3]}),
            (std::vector<std::string>{"Highest", "Top", "Deep"}));
  EXPECT_EQ(Bound(3), (std::array<std::int32_t, 2>{100, 50}));
  EXPECT_EQ(ws.net.RLCount, 3);  // the empty row ends the table
  EXPECT_EQ(ws.net.RLName[5], "Beyond");

  Validate({{"Mine", "100", "0"}});
  EXPECT_EQ(ws.net.RLName[1], "SURFACE");
  EXPECT_EQ(ws.net.RLCount, 1);
}

TEST_F(Levels, SurfaceRangeWarnsAndKeepsTheRow) {
  Validate({{"SURFACE", "1100", "1000"}, {"Collar", "1000", "950"}});
  EXPECT_TRUE(ui.Said(
      "Warning : The level Collar is within the NO.1 (surface) RL range.  Change the RL ranges "
      "to LESS THAN these values to prevent possible problems."));
  EXPECT_EQ(ui.Records().back().title, "RL Range Problem");
  EXPECT_EQ(ws.net.RLName[2], "Collar");
}

TEST_F(Levels, RefusedInputKeepsTheOldRow) {
  Validate({{"SURFACE", "1100", "1000"}, {"Old", "900", "800"}});
  for (const LevelRow& bad : {LevelRow{"A,B", "900", "800"}, LevelRow{"Say \"x\"", "9", "8"},
                              LevelRow{"New", "nine", "800"}}) {
    ui.ClearRecords();
    Validate({{"SURFACE", "1100", "1000"}, bad});
    EXPECT_EQ(ws.net.RLName[2], "Old") << bad.Name;
    EXPECT_EQ(Bound(2), (std::array<std::int32_t, 2>{900, 800}));
    EXPECT_EQ(ui.MessageTexts().size(), 1u);
  }
}

TEST_F(Levels, RangesAndPastedCells) {
  ws.net.RLBound[1] = {0, 40000, 39000};
  ws.net.RLBound[2] = {0, 900, 800};
  ws.net.RLBound[3] = {0, 500, 400};
  EXPECT_EQ(RangeBand(ws.net, 2, 3), (std::pair<float, float>{400, 900}));
  EXPECT_EQ(RangeBand(ws.net, 3, 2), (std::pair<float, float>{500, 800}));
  EXPECT_EQ(RangeBand(ws.net, 1, 2).first, -25536);  // the High is read as 16 bits and wraps

  std::vector<std::int16_t> chosen(6, 1);
  EXPECT_FALSE(AddSelectedLevel(ws, chosen, 2));
  EXPECT_TRUE(ui.Said("Maximum of only 6 selected levels allowed!"));

  LevelGrid grid(kLevelGridRows + 1);
  PasteLevelCells(grid, kLevelGridRows, 2, "1\t2\t3\r\n4\t5\r\n");
  EXPECT_EQ(CopyLevelCells(grid, kLevelGridRows, 2, kLevelGridRows, 3), "1\t2\r\n");
}

}  // namespace
}  // namespace galeris
