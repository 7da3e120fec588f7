// The store: node keys, the surface rule, blanking and compaction, numbering, capacities.
#include <gtest/gtest.h>

#include "core/defaults.h"
#include "core/headless_ui.h"
#include "core/network_store.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

using test::AddAirway;

constexpr const char* kSurfaceTitle =
    "Galeris has detected that one or more of your airways has both ends on or above the surface";

TEST(NodeKey, TermsAreExactFixedPoint) {
  EXPECT_EQ(NodeKey(0, 0, 0), 0);
  EXPECT_EQ(NodeKey(1, 0, 0), 100);              // X over 100, four decimals
  EXPECT_EQ(NodeKey(0, 1, 0), 100000000);        // Y times 10^4
  EXPECT_EQ(NodeKey(0, 0, 1), 100000000000000);  // Z times 10^10
  EXPECT_EQ(NodeKey(123456, 654321, 4321),
            4321 * 100000000000000LL + 654321 * 100000000LL + 123456 * 100LL);
}

TEST(NodeKey, NegativeCoordinatesUseTheirOwnOffsets) {
  // X and Z are offset by 9999, Y by 99999.
  EXPECT_EQ(NodeKey(-1, 0, 0), NodeKey(9998, 0, 0));
  EXPECT_EQ(NodeKey(0, -1, 0), NodeKey(0, 99998, 0));
  EXPECT_EQ(NodeKey(0, 0, -1), NodeKey(0, 0, 9998));
  EXPECT_NE(NodeKey(0, -1, 0), NodeKey(0, 9998, 0));
  // Below the offset the absolute value is taken: -10000 becomes Mod(-1) = 1.
  EXPECT_EQ(NodeKey(-10000, 0, 0), NodeKey(1, 0, 0));
}

TEST(NodeKey, CoordinatesAMultipleOfTheModulusApartCollide) {
  EXPECT_EQ(NodeKey(5, 7, 3), NodeKey(1000005, 1000007, 10003));
  EXPECT_EQ(NodeKey(0, 0, 10000), 0);  // a key of 0 reads as blank
}

class RebuildNodesTest : public ::testing::Test {
 protected:
  RebuildNodesTest() {
    net.RLBound[1] = {0, 1200, 1000};  // surface level: RL Max 1200, RL Min 1000
    net.RLCount = 1;
  }
  Network net;
  Defaults defaults;
  HeadlessUi ui;
};

TEST_F(RebuildNodesTest, ForceBitsPutAnEndOnTheSurface) {
  int a = AddAirway(net, 10, 10, 500, 20, 10, 500);
  int b = AddAirway(net, 30, 10, 500, 40, 10, 500);
  net.BranchCode[a] |= Bit::ForceEntrySurface;
  net.BranchCode[b] |= Bit::ForceExitSurface;
  RebuildNodes(net, defaults, ui);
  EXPECT_EQ((std::vector<Key>{net.EntryNodeId[a], net.ExitNodeId[a], net.EntryNodeId[b],
                              net.ExitNodeId[b]}),
            (std::vector<Key>{SurfaceKey, NodeKey(20, 10, 500), NodeKey(30, 10, 500), SurfaceKey}));
}

TEST_F(RebuildNodesTest, ManyAirwaysOnTheSurfaceGiveOneWarning) {
  for (int k = 0; k < 5; ++k) AddAirway(net, k, 1, 1100, k, 2, 1050);
  AddAirway(net, 1, 1, 500, 2, 2, 500);
  net.AirwayNo[1] = 17;  // a new airway is numbered after the check, so its line says 0
  RebuildNodes(net, defaults, ui);
  ASSERT_EQ(ui.Records().size(), 1u);
  EXPECT_EQ(ui.Records()[0].title, kSurfaceTitle);
  EXPECT_EQ(ui.Records()[0].text,
            "Please check your surface RL values or the airway data as the network will not "
            "simulate properly with the current settings.");
  EXPECT_EQ(net.BranchCount, 6);  // marked, not removed
  std::vector<std::string> listed(5, "0\tboth ends on surface");
  listed[0] = "17\tboth ends on surface";
  EXPECT_EQ(net.Errorlist, listed);
  EXPECT_EQ(net.Comment[1].Trimmed(), "ends on surf");  // cut to 12 characters
  EXPECT_TRUE(net.BranchCode[1] & Bit::ErrorMark);
  EXPECT_FALSE(net.BranchCode[6] & Bit::ErrorMark);
}

TEST_F(RebuildNodesTest, AnEndAtTheOriginIsBlankAndCompactedAway) {
  AddAirway(net, 1, 1, 1, 2, 2, 2);
  AddAirway(net, 0, 0, 0, 5, 5, 5);
  AddAirway(net, 3, 3, 3, 4, 4, 4);
  net.BranchName[3] = "third";
  RebuildNodes(net, defaults, ui);
  EXPECT_EQ(net.BranchCount, 2);
  EXPECT_EQ(net.BranchName[2].Trimmed(), "third");
  EXPECT_EQ(net.BranchCode[3], 0);
  EXPECT_TRUE(net.BranchName[3].IsBlank());
}

TEST_F(RebuildNodesTest, NumbersNewAirwaysAndStopsBlockedFlow) {
  net.NextAirwayNo = 40;
  int a = AddAirway(net, 1, 1, 1, 2, 2, 2);
  int b = AddAirway(net, 2, 2, 2, 3, 3, 3);
  net.AirwayNo[b] = 7;
  net.Resistance[a] = static_cast<float>(defaults.HighResistance);
  net.Quantity[a] = 12;
  net.Quantity[b] = 12;
  RebuildNodes(net, defaults, ui);
  EXPECT_EQ(std::tuple(net.AirwayNo[a], net.AirwayNo[b], net.NextAirwayNo), std::tuple(41, 7, 41));
  EXPECT_EQ(std::pair(net.Quantity[a], net.Quantity[b]), std::pair(0.0f, 12.0f));
}

TEST(Store, CheckNumberingRenumbersAsOneUndoableChange) {
  HeadlessUi ui;
  Workspace ws(ui);
  test::JournalSpy journal(3);
  ws.journal = &journal;
  ws.net.MaxAirways = 10;
  ClearStore(ws.net);
  for (int i = 1; i <= 3; ++i) AddAirway(ws.net, i, 1, 1, i, 9, 1);
  ws.net.AirwayNo[1] = ws.net.AirwayNo[3] = 5;
  ws.net.NextAirwayNo = 8;
  ws.net.NetworkSaved = 0xFF;
  ui.QueueAnswer(MsgAnswer::Yes);
  CheckDuplicateAirwayNumbers(ws);
  EXPECT_EQ(ws.net.AirwayNo[3], 9);
  EXPECT_EQ(ws.net.NetworkSaved, 0);
  EXPECT_EQ(journal.entries, (std::vector<test::JournalSpy::Entry>{
                                 {3, UndoJournal::kBefore, 3, 0}, {3, UndoJournal::kAfter, 3, 0}}));
  EXPECT_EQ(journal.action, 4);
  ui.ClearRecords();
  CheckDuplicateAirwayNumbers(ws);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{"All airways have unqiue numbers"});
}

TEST(Store, CapacityMessages) {
  Network net;
  net.MaxAirways = 2;
  ClearStore(net);
  HeadlessUi ui;
  AddAirway(net, 1, 1, 1, 2, 2, 2);
  EXPECT_TRUE(RoomForAirway(net, ui));
  EXPECT_FALSE(RoomForAirways(net, 2, ui));
  EXPECT_EQ(ui.MessageTexts().back(),
            "Network size has exceeded maximum airways - increase airways in default settings");
  AddAirway(net, 2, 2, 2, 3, 3, 3);
  EXPECT_FALSE(RoomForAirway(net, ui));
  EXPECT_EQ(ui.MessageTexts().back(),
            "Maximum Number of Airways Exceeded\nIncrease allowable number of branches in "
            "Defaults !");
}

// The big arrays take zeroed memory and never write their zeros: a shrunk and regrown or cleared
// store must still read as zero, under the capacity where pages are mapped and below it.
TEST(Store, ResizedAndClearedArraysReadAsZero) {
  Network net;
  for (int capacity : {30000, 100}) {
    net.MaxAirways = capacity;
    ResizeStore(net);
    net.Quantity[capacity] = 5;
    net.Coord1[capacity][3] = 7;
    net.Quantity[3] = 4;
    net.MaxAirways = capacity / 2;
    ResizeStore(net);
    net.MaxAirways = capacity;
    ResizeStore(net);
    EXPECT_EQ(std::tuple(net.Quantity[3], net.Quantity[capacity], net.Coord1[capacity][3]),
              std::tuple(4.0f, 0.0f, 0));
    EXPECT_EQ(net.SmokeTime[capacity], 9999999.0f);  // a slot the store gained: never reached
    ClearStore(net);
    EXPECT_EQ(net.Quantity[3], 0.0f);
    EXPECT_EQ(net.SmokeTime[3], 9999999.0f);
    EXPECT_EQ(net.AirwayLine[3].Colour, 0);
  }
}

// A large store is reordered on every core: every array that holds something moves whole, and
// one that holds nothing stays untouched.
TEST(Store, ReorderMovesEveryArrayOfALargeStore) {
  Network net;
  const int n = 9000;
  std::vector<int> order(n + 1, 0);
  for (int i = 1; i <= n; ++i) {
    AddAirway(net, i, 0, 0, i + 1, 0, 0);
    net.AirwayNo[i] = i;
    net.ChordWeight[i] = static_cast<float>(i);
    order[i] = n + 1 - i;
  }
  ReorderAirways(net, order);
  for (int k : {1, 2, n / 2, n}) {
    const int i = n + 1 - k;
    EXPECT_EQ(std::tuple(net.AirwayNo[k], net.Coord1[k][1], net.ChordWeight[k], net.TreeMark[k]),
              std::tuple(i, i, static_cast<float>(i), 0));
  }
}

}  // namespace
}  // namespace galeris
