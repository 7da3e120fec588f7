// The whole-network commands, the name lists and the network summary on small hand networks.
#include "tools/network_commands.h"

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "simulate/contaminants.h"
#include "simulate/pressures.h"
#include "tests/support/test_support.h"
#include "tools/network_summary.h"

namespace galeris {
namespace {

using Names = std::vector<std::string>;

struct Commands : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;
  test::JournalSpy journal;

  // A chain of four airways eastwards from (0,0,500), 100 m each, below the surface.
  void SetUp() override {
    net.RLBound[1] = {0, 2000, 1000};
    ws.journal = &journal;
    for (int k = 0; k < 4; ++k)
      net.AirwayNo[test::AddAirway(net, 100 * k, 0, 500, 100 * k + 100, 0, 500)] = k + 1;
  }
  Names BranchNames() const {
    Names names;
    for (int i = 1; i <= net.BranchCount; ++i) names.push_back(net.BranchName[i].Trimmed());
    return names;
  }
  void SetNames(const Names& names) {
    for (std::size_t k = 0; k < names.size(); ++k) net.BranchName[k + 1] = names[k];
  }
};

TEST_F(Commands, AutoNames) {
  struct Case {
    Names before;
    std::optional<std::string> prefix;
    Names after;
  } cases[] = {
      {{"", " X ", "", "(5)"}, "B", {"B1", "X", "B2", "(5)"}},
      {{"a", "b", "c", "d"}, "B", {"a", "b", "c", "d"}},        // every airway has a name
      {{"", "", "q", ""}, std::nullopt, {"1", "2", "q", "3"}},  // a cancelled prefix box
  };
  for (const Case& c : cases) {
    SetNames(c.before);
    ui.QueueAnswer(MsgAnswer::OK);
    ui.QueueInput(c.prefix);
    AutoNameAirways(ws);
    EXPECT_EQ(BranchNames(), c.after);
  }
  EXPECT_EQ(journal.entries.size(), 12u);  // before and after of each named airway
  EXPECT_EQ(journal.action, 3);            // one action for each command that named something
  ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(AutoNameAirways(ws));

  net.ExitNodeName[3] = net.EntryNodeName[4] = "Dn";
  ui.QueueAnswer(MsgAnswer::OK);
  ui.QueueInput("N");
  ASSERT_TRUE(AutoNameNodes(ws));
  const Names entries = {"N2", "N1", "N3", "Dn"}, exits = {"N1", "N3", "Dn", "N4"};
  for (int i = 1; i <= 4; ++i) {
    EXPECT_EQ(net.EntryNodeName[i].Trimmed(), entries[i - 1]) << i;
    EXPECT_EQ(net.ExitNodeName[i].Trimmed(), exits[i - 1]) << i;
  }
}

TEST_F(Commands, LengthsNumbersLabelsAndLists) {
  net.Length[2] = 5;
  ui.QueueAnswer(MsgAnswer::Yes);
  FixAllLengths(ws);
  EXPECT_TRUE(net.BranchCode[4] & Bit::FixedLength);
  ui.QueueAnswer(MsgAnswer::Yes);
  UnfixAllLengths(ws);
  EXPECT_FALSE(net.BranchCode[2] & Bit::FixedLength);
  EXPECT_EQ(net.Length[2], 100);
  EXPECT_TRUE(ui.Said("All lengths are now fixed") && ui.Said("All lengths are now unfixed"));

  net.AirwayNo[1] = net.AirwayNo[2] = 7;
  ui.QueueAnswer(MsgAnswer::Yes);
  ASSERT_TRUE(CheckNumbering(ws));
  EXPECT_EQ(std::vector<int>(&net.AirwayNo[1], &net.AirwayNo[5]), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(net.NextAirwayNo, 5);
  EXPECT_TRUE(ui.Said("Airways renumbered !"));
  EXPECT_FALSE(CheckNumbering(ws));
  EXPECT_TRUE(ui.Said("All airways have unqiue numbers"));

  SetNames({"(12.5)", " (typed) ", "(a", "Adit"});
  RemoveFlowLabels(ws);
  EXPECT_EQ(BranchNames(), (Names{"", "", "(a", "Adit"}));
  net.BranchName[1] = "adit";
  net.EntryNodeName[2] = net.ExitNodeName[1] = "n1";
  EXPECT_EQ(AirwayNameList(net), (Names{"(a", "adit", "Adit"}));
  EXPECT_EQ(NodeNameList(net), (Names{"n1"}));
  EXPECT_EQ(FindAirwayByName(net, "ADIT"), 1);
  EXPECT_EQ(FindAirwayByNodeName(net, "N1"), 1);
}

TEST_F(Commands, CoordinatesSmokeAndTitle) {
  net.Coord1[1] = {0, 5, 1, 9};  // equal X: the Y pass turns it
  net.Coord2[1] = {0, 5, 0, 2};
  net.Coord1[2] = {0, 3, 0, 0};  // turned by X, back by Y: the Z pass decides
  net.Coord2[2] = {0, 1, 5, 9};
  ASSERT_TRUE(NormaliseDirections(ws));
  EXPECT_EQ(net.Coord1[1], (Coord3{0, 5, 0, 2}));
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 3, 0, 0}));
  net.AxisSignY = -1;
  ui.QueueAnswer(MsgAnswer::Yes);
  ReverseCoordinateAxis(ws);
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 0, 3, 0}));
  EXPECT_EQ(net.AxisSignY, -1);
  ui.QueueAnswer(MsgAnswer::OK);
  SwapXYAxis(ws);
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 3, 0, 0}));
  EXPECT_TRUE(net.AxisSignX == -1 && net.AxisSignY == 1);

  net.BranchCode[1] |= Bit::ContaminantSource;
  net.Contaminant[1] = 100;
  net.SmokeData[2] = {0, 1, 60};
  ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(ClearSmokeTracking(ws));
  EXPECT_EQ(net.SmokeData[2], (SmokePair{0, 1, 0}));  // the report pin stays
  EXPECT_EQ(net.Contaminant[1], 0);

  const std::pair<const char*, const char*> titles[] = {
      {"Main decline", "Main decline"}, {"a,b", ""}, {"say \"hi\"", ""}};
  for (auto [answer, title] : titles) {
    ui.QueueInput(answer);
    EditTitleNote(ws);
    EXPECT_EQ(net.NetworkTitle, title);
  }
  EXPECT_TRUE(ui.Said("Commas not allowed in comment !") && ui.Said("Invalid comment text"));
}

// An intake of R 0.5, a fixed quantity of 200 Pa, R 1, and a stalled fan, R 0.1, at 10 m3/s.
TEST_F(Commands, SummarySumsAgainstAHandCalculation) {
  ws.units = BuiltInUnits();
  net.BranchCount = 3;
  net.Coord1[1][3] = 1000;  // the intake starts at the surface
  net.Coord2[3][3] = 1000;
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[1][j] = 10.0f * j;
    net.CurveP[1][j] = {0, 3200.0f - 200.0f * j, 0};
    net.CurveEff[1][j] = static_cast<std::int16_t>(50 + 3 * j);
  }
  const float resistance[] = {0, 0.5f, 1, 0.1f};
  for (int i = 1; i <= 3; ++i) {
    net.Quantity[i] = 10;
    net.Resistance[i] = resistance[i];
    net.Length[i] = 100;
  }
  net.BranchCode[2] |= Bit::FixedQuantity;
  net.Pressure[2] = 200;
  net.FanNumber[3] = net.NoOfFans[3] = 1;
  net.Pressure[3] = kStallMark;  // the first curve point's static pressure counts
  RebuildNodes(net, ws.defaults, ui);
  const NetworkSums sums = SumNetwork(ws);
  EXPECT_DOUBLE_EQ(sums.TotalAirflow, 10);
  EXPECT_NEAR(sums.AirPower, 1600, 1e-3);
  EXPECT_NEAR(sums.InputPower, 200 * 10 / 0.8 + 10 * 3000 / 0.53, 1e-2);
  EXPECT_DOUBLE_EQ(sums.TotalLength, 300);
  EXPECT_EQ(sums.FanCount, 1);
  Names values;
  for (const SummaryRow& row : SummaryRows(ws, sums)) values.push_back(row.Value);
  EXPECT_EQ(values, (Names{"10.0", "1", "59", "3 %", "1.60000", "$41,419", "3", "300", "1"}));
  net.EntryNodeId[1] = 1;  // no surface entry: no airflow and no mine resistance
  EXPECT_EQ(SummaryRows(ws, SumNetwork(ws))[4].Value, "");
}

}  // namespace
}  // namespace galeris
