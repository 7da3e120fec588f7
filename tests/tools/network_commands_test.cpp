// The whole-network commands and the network summary on small hand networks.
#include "tools/network_commands.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/headless_ui.h"
#include "simulate/contaminants.h"
#include "simulate/pressures.h"
#include "tests/support/test_support.h"
#include "tools/network_summary.h"

namespace galeris {
namespace {

// Records the journal's entries as (position, kind, action).
struct RecordingJournal : UndoJournal {
  std::vector<std::array<int, 3>> entries;
  int action = 1;
  void RecordUndo(int position, int kind, int a) override {
    entries.push_back({position, kind, a});
  }
  int UndoAction() const override { return action; }
  void SetUndoAction(int a) override { action = a; }
};

struct Commands : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;
  RecordingJournal journal;

  void SetUp() override {
    net.RLCount = 1;
    net.RLBound[1] = {0, 2000, 1000};
    ws.journal = &journal;
  }
  // A chain of airways from (0,0,500) eastwards, 100 m each.
  void Chain(int airways) {
    for (int k = 0; k < airways; ++k) {
      const int i = test::AddAirway(net, 100 * k, 0, 500, 100 * (k + 1), 0, 500);
      net.AirwayNo[i] = i;
    }
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (int i = 1; i <= net.BranchCount; ++i) names.push_back(net.BranchName[i].Trimmed());
    return names;
  }
  void SetNames(const std::vector<std::string>& names) {
    for (std::size_t k = 0; k < names.size(); ++k) net.BranchName[k + 1] = names[k];
  }
};

TEST_F(Commands, AutoNameAirways) {
  struct Case {
    std::vector<std::string> before;
    std::optional<std::string> prefix;
    std::vector<std::string> after;
  } cases[] = {
      {{"", " X ", "", "(5)"}, "B", {"B1", "X", "B2", "(5)"}},
      {{"a", "b", "c", "d"}, "B", {"a", "b", "c", "d"}},        // every airway has a name
      {{"", "", "q", ""}, std::nullopt, {"1", "2", "q", "3"}},  // a cancelled prefix box
  };
  Chain(4);
  for (const Case& c : cases) {
    SetNames(c.before);
    journal.entries.clear();
    ui.QueueAnswer(MsgAnswer::OK);
    ui.QueueInput(c.prefix);
    AutoNameAirways(ws);
    EXPECT_EQ(Names(), c.after);
  }
  EXPECT_TRUE(journal.entries.size() == 6u && journal.entries[0][1] == UndoJournal::kBefore &&
              journal.entries[1][1] == UndoJournal::kAfter);
  ui.QueueAnswer(MsgAnswer::Cancel);
  SetNames({"", "", "", ""});
  EXPECT_FALSE(AutoNameAirways(ws));
  EXPECT_EQ(Names(), (std::vector<std::string>{"", "", "", ""}));
}

TEST_F(Commands, AutoNameNodesGivesOneNumberPerNode) {
  Chain(3);
  net.ExitNodeName[3] = "Dn";
  ui.QueueAnswer(MsgAnswer::OK);
  ui.QueueInput("N");
  ASSERT_TRUE(AutoNameNodes(ws));
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"N2", "N1"}, {"N1", "N3"}, {"N3", "Dn"}};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(net.EntryNodeName[i].Trimmed(), expected[i - 1].first);
    EXPECT_EQ(net.ExitNodeName[i].Trimmed(), expected[i - 1].second);
  }
  EXPECT_EQ(journal.action, 2);  // one action for the whole command
}

TEST_F(Commands, LengthsNumbersAndLabels) {
  Chain(3);
  net.Length[2] = 5;
  ui.QueueAnswer(MsgAnswer::Yes);
  FixAllLengths(ws);
  for (int i = 1; i <= 3; ++i) EXPECT_TRUE(net.BranchCode[i] & Bit::FixedLength);
  ui.QueueAnswer(MsgAnswer::Yes);
  UnfixAllLengths(ws);
  EXPECT_FALSE(net.BranchCode[2] & Bit::FixedLength);
  EXPECT_EQ(net.Length[2], 100);
  EXPECT_TRUE(ui.Said("All lengths are now fixed") && ui.Said("All lengths are now unfixed"));

  net.AirwayNo[1] = 7;
  net.AirwayNo[2] = 7;
  ui.QueueAnswer(MsgAnswer::Yes);
  ASSERT_TRUE(CheckNumbering(ws));
  EXPECT_EQ(std::vector<int>(net.AirwayNo.begin() + 1, net.AirwayNo.begin() + 4),
            (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(net.NextAirwayNo, 4);
  EXPECT_TRUE(ui.Said("Airways renumbered !"));
  EXPECT_FALSE(CheckNumbering(ws));
  EXPECT_TRUE(ui.Said("All airways have unqiue numbers"));

  SetNames({"(12.5)", " (typed) ", "(a"});
  RemoveFlowLabels(ws);
  EXPECT_EQ(Names(), (std::vector<std::string>{"", "", "(a"}));
}

TEST_F(Commands, CoordinateCommands) {
  test::AddAirway(net, 5, 1, 9, 5, 0, 2);  // equal X: the Y pass turns it
  test::AddAirway(net, 3, 0, 0, 1, 5, 9);  // turned by X, back by Y: the Z pass decides
  ASSERT_TRUE(NormaliseDirections(ws));
  EXPECT_EQ(net.Coord1[1], (Coord3{0, 5, 0, 2}));
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 3, 0, 0}));

  net.AxisSignX = 1;
  net.AxisSignY = -1;
  ui.QueueAnswer(MsgAnswer::Yes);
  ReverseCoordinateAxis(ws);
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 0, 3, 0}));
  EXPECT_EQ(net.AxisSignY, -1);
  ui.QueueAnswer(MsgAnswer::OK);
  SwapXYAxis(ws);
  EXPECT_EQ(net.Coord2[2], (Coord3{0, 1, 5, 9}));
  EXPECT_EQ(net.AxisSignX, -1);
  EXPECT_EQ(net.AxisSignY, 1);
  ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(SwapXYAxis(ws));
}

TEST_F(Commands, ClearingSmoke) {
  Chain(2);
  for (bool sources : {false, true}) {
    net.BranchCode[1] |= Bit::ContaminantSource;
    net.Contaminant[1] = 100;
    net.SmokeData[2] = {0, 1, 60};
    net.SmokeTime[2] = 12;
    ui.QueueAnswer(sources ? MsgAnswer::Yes : MsgAnswer::No);
    EXPECT_EQ(ClearSmokeTracking(ws), sources);
    EXPECT_EQ(net.SmokeData[2][2], 0);
    EXPECT_EQ(net.SmokeData[2][1], 1);  // the report pin stays
    EXPECT_EQ(net.SmokeTime[2], kNeverReached);
    EXPECT_EQ(net.Contaminant[1], sources ? 0 : 100);
  }
}

TEST_F(Commands, TitleNote) {
  struct Case {
    const char* answer;
    const char* title;
    const char* message;
  } cases[] = {{"Main decline", "Main decline", nullptr},
               {"a,b", "", "Commas not allowed in comment !"},
               {"say \"hi\"", "", "Invalid comment text"}};
  for (const Case& c : cases) {
    ui.ClearRecords();
    ui.QueueInput(c.answer);
    EditTitleNote(ws);
    EXPECT_EQ(net.NetworkTitle, c.title);
    EXPECT_TRUE(c.message == nullptr || ui.Said(c.message));
  }
}

TEST_F(Commands, NameListsHoldEachNameOnceAndFindIt) {
  Chain(4);
  SetNames({"drive", "Adit", "drive", ""});
  net.EntryNodeName[2] = "n1";
  net.ExitNodeName[1] = "n1";
  net.ExitNodeName[4] = "Top";
  EXPECT_EQ(AirwayNameList(net), (std::vector<std::string>{"Adit", "drive"}));
  EXPECT_EQ(NodeNameList(net), (std::vector<std::string>{"n1", "Top"}));
  EXPECT_EQ(FindAirwayByName(net, "ADIT"), 2);
  EXPECT_EQ(FindAirwayByNodeName(net, "TOP"), 4);
  EXPECT_EQ(FindAirwayByName(net, "NONE"), 0);
}

// The summary: an intake of R 0.5, a fixed quantity of 200 Pa and a stalled fan, 10 m3/s.
TEST_F(Commands, SummarySumsAgainstAHandCalculation) {
  ws.journal = nullptr;
  ws.units = BuiltInUnits();
  net.FanName[1] = "Main fan";
  net.FanDiameter[1] = 2.5f;
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[1][j] = 10.0f * j;
    net.CurveP[1][j] = {0, 3200.0f - 200.0f * j, 3350.0f - 200.0f * j};
    net.CurveEff[1][j] = static_cast<std::int16_t>(50 + 3 * j);
  }
  test::AddAirway(net, 0, 0, 1000, 0, 0, 500);
  test::AddAirway(net, 0, 0, 500, 100, 0, 500);
  test::AddAirway(net, 100, 0, 500, 100, 0, 1000);
  const float resistance[] = {0, 0.5f, 1, 0.1f};
  for (int i = 1; i <= 3; ++i) {
    net.Quantity[i] = 10;
    net.Resistance[i] = resistance[i];
    net.Length[i] = 100 * i;
  }
  net.BranchCode[2] |= Bit::FixedQuantity;
  net.Pressure[2] = 200;
  net.FanNumber[3] = 1;
  net.NoOfFans[3] = 1;
  net.Pressure[3] = kStallMark;  // the first curve point's static pressure counts
  RebuildNodes(net, ws.defaults, ui);
  const NetworkSums sums = SumNetwork(ws);
  EXPECT_DOUBLE_EQ(sums.TotalAirflow, 10);
  EXPECT_NEAR(sums.AirPower, 1600, 1e-3);
  EXPECT_NEAR(sums.InputPower, 200 * 10 / 0.8 + 10 * 3000 / 0.53, 1e-2);
  EXPECT_DOUBLE_EQ(sums.TotalLength, 600);
  EXPECT_EQ(sums.FanCount, 1);
  const std::vector<SummaryRow> rows = SummaryRows(ws, sums);
  ASSERT_EQ(rows.size(), 9u);
  const std::pair<const char*, const char*> shown[] = {
      {"Total Air Power", "1"},      {"Network Input Power", "59"},
      {"Network Efficiency", "3 %"}, {"Annual Power Cost", "$41,419"},
      {"Number of Airways", "3"},    {"Number of Fans", "1"}};
  for (auto [label, value] : shown) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [label](const SummaryRow& r) { return r.Label == label; });
    ASSERT_NE(row, rows.end());
    EXPECT_EQ(row->Value.substr(0, std::string(value).size()), value) << label;
  }
  // With no surface entry there is no airflow and no mine resistance.
  net.EntryNodeId[1] = 1;
  EXPECT_EQ(SumNetwork(ws).TotalAirflow, 0);
  EXPECT_EQ(SummaryRows(ws, SumNetwork(ws))[4].Value, "");
}

}  // namespace
}  // namespace galeris
