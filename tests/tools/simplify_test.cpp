// Network simplification on hand networks: which chains fold, the flows of the simplified mine,
// and the undo of the whole run.
#include "tools/simplify.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "core/airway_values.h"
#include "core/headless_ui.h"
#include "files/undo_journal.h"
#include "simulate/simulate.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

struct Simplify : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  void SetUp() override {
    net.RLBound[1] = {0, 2000, 1000};  // the surface from RL 1000 up
    ws.defaults.WallFactorPreset[1] = 0.012f;
    ws.defaults.WallFactorPreset[2] = 0.02f;
  }
  int Airway(int x1, int y1, int z1, int x2, int y2, int z2, int wall = 1) {
    const int i = test::AddAirway(net, x1, y1, z1, x2, y2, z2);
    net.AirwayNo[i] = ++net.NextAirwayNo;
    net.WallType[i] = static_cast<std::int16_t>(wall);
    net.LabelPos[i] = 0.5f;
    CalcResistance(ws, i);
    return i;
  }
  // Five airways of 100 m running west from x = 500: the sort takes them first to last.
  void WestwardChain() {
    for (int k = 0; k < 5; ++k) Airway(500 - 100 * k, 0, 500, 400 - 100 * k, 0, 500);
  }
  std::map<int, float> FlowsByNumber() const {
    std::map<int, float> flows;
    for (int i = 1; i <= net.BranchCount; ++i) flows[net.AirwayNo[i]] = net.Quantity[i];
    return flows;
  }
  void Solve() {
    ws.sim.SimMode = 0;
    ws.sim.ShowProgress = 0;
    RunSimulation(ws);
    ASSERT_EQ(ws.sim.SimStatus, 0);
  }
};

TEST_F(Simplify, ChainsFoldUnlessTheFilterOrTheNodeForbids) {
  const SimplifyFilter plain{1000, 10};
  struct Case {
    const char* name;
    std::function<void(Network&, SimplifyFilter&)> change;
    int removed;
  } cases[] = {
      {"straight chain", [](Network&, SimplifyFilter&) {}, 4},
      {"length limit on the growing first airway",
       [](Network&, SimplifyFilter& f) { f.MaxLength = 250; }, 3},
      {"a fan in the middle", [](Network& n, SimplifyFilter&) { n.FanNumber[3] = 1; }, 2},
      {"a junction",
       [](Network& n, SimplifyFilter&) { test::AddAirway(n, 300, 0, 500, 300, 100, 500); }, 3},
      {"a surface end",
       [](Network& n, SimplifyFilter&) {
         n.Coord2[5] = {0, 0, 0, 1000};
       },
       3},
      {"a zero length", [](Network& n, SimplifyFilter&) { n.Length[3] = 0; }, 2},
      {"unlike walls",
       [](Network& n, SimplifyFilter& f) { n.WallType[3] = 2, f.SameWallType = true; }, 2},
      {"unlike sections",
       [](Network& n, SimplifyFilter& f) { n.Dim[3][2] = 5, f.SameDimensions = true; }, 2},
      {"only the first of a pair selected",
       [](Network& n, SimplifyFilter& f) {
         n.BranchCode[1] |= Bit::Selected, f.SelectedOnly = true;
       },
       4},
      {"none selected", [](Network&, SimplifyFilter& f) { f.SelectedOnly = true; }, 0},
      {"bends above the angle on both sides",
       [](Network& n, SimplifyFilter&) {
         n.Coord2[3] = {0, 200, 50, 500}, n.Coord1[4] = {0, 200, 50, 500};
       },
       1},
      {"no flow removed as well",
       [](Network& n, SimplifyFilter& f) {
         test::AddAirway(n, 900, 0, 500, 900, 100, 500), f.RemoveZeroFlow = true;
       },
       6},
  };
  for (const Case& c : cases) {
    net = Network();
    net.RLBound[1] = {0, 2000, 1000};
    WestwardChain();
    SimplifyFilter filter = plain;
    c.change(net, filter);
    const int before = net.BranchCount;
    EXPECT_EQ(SimplifyNetwork(ws, filter), c.removed) << c.name;
    EXPECT_EQ(net.BranchCount, before - c.removed) << c.name;
    EXPECT_EQ(ui.Records().back().text,
              "The network size was reduced by " + std::to_string(c.removed) + " airways")
        << c.name;
  }
}

TEST_F(Simplify, CombinedChainsKeepTheFlowsAndUndoRestoresEveryAirway) {
  // Intake shaft, a chain of three, a split into a straight chain (the last of unlike wall) and a
  // bent one, and the return shaft holding 50 m3/s.
  Airway(0, 0, 1000, 0, 0, 500);
  for (int k = 0; k < 3; ++k) Airway(100 * k, 0, 500, 100 * k + 100, 0, 500);
  Airway(300, 0, 500, 400, 0, 500);
  Airway(400, 0, 500, 500, 0, 500);
  Airway(500, 0, 500, 600, 0, 500, 2);
  Airway(300, 0, 500, 300, 100, 500);
  Airway(300, 100, 500, 450, 150, 500);
  Airway(450, 150, 500, 600, 100, 500);
  Airway(600, 100, 500, 600, 0, 500);
  const int shaft = Airway(600, 0, 500, 600, 0, 1000);
  net.BranchCode[shaft] |= Bit::FixedQuantity;
  net.Quantity[shaft] = 50;
  Solve();
  const std::map<int, float> original = FlowsByNumber();
  std::map<int, std::string> records;
  for (int i = 1; i <= net.BranchCount; ++i)
    records[net.AirwayNo[i]] = std::to_string(net.Coord1[i][1]) + "," +
                               std::to_string(net.Coord2[i][1]) + "," +
                               std::to_string(net.Length[i]);

  ws.paths.TempFolder = test::ScratchDir();
  UndoFile journal(ws);
  journal.ResetUndoFile();
  ws.journal = &journal;
  SimplifyFilter filter{1000, 30};
  filter.SameWallType = filter.SameDimensions = filter.CombineLengths = true;
  EXPECT_EQ(SimplifyNetwork(ws, filter), 3);  // two of the first chain, one of the straight one
  EXPECT_EQ(net.NetworkBalanced, 0);
  Solve();
  for (const auto& [number, flow] : FlowsByNumber())
    EXPECT_NEAR(flow, original.at(number), 0.01) << number;

  ASSERT_TRUE(journal.Undo());
  ASSERT_EQ(net.BranchCount, static_cast<int>(records.size()));
  for (int i = 1; i <= net.BranchCount; ++i)
    EXPECT_EQ(std::to_string(net.Coord1[i][1]) + "," + std::to_string(net.Coord2[i][1]) + "," +
                  std::to_string(net.Length[i]),
              records.at(net.AirwayNo[i]));
}

TEST(SimplifyLimitsTest, LettersAndOutOfRangeValuesAreRefused) {
  const UnitTable units;
  for (const auto& [length, angle, refused] : {std::tuple{"100", "10", false},
                                               {"abc", "10", true},
                                               {"-5", "10", true},
                                               {"10.5", "10", true},
                                               {"100", "181", true},
                                               {"100", "x", true},
                                               {"0", "180", false}}) {
    const SimplifyLimits limits = ReadSimplifyLimits(units, length, angle);
    EXPECT_EQ(!limits.Refusal.empty(), refused) << length << " " << angle;
    EXPECT_EQ(limits.MaxLength.has_value(), !refused);
  }
}

}  // namespace
}  // namespace galeris
