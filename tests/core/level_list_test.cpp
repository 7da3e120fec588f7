// The Level List rules: clipping with its asymmetry, exchange, the end of the table, the
// "SURFACE" rule, the surface warning, the sort, refused input, ranges and the six-level choice.
#include "core/level_list.h"

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/units.h"

namespace galeris {
namespace {

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
