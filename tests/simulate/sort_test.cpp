// The sort of the store and the clean-up of duplicate and zero-length airways between its two
// passes, with their questions and listings.
#include "simulate/sort_airways.h"

#include <gtest/gtest.h>

#include "tests/simulate/mesh_fixture.h"

namespace galeris {
namespace {

using test::kSurface;
using test::MeshFixture;
using Lines = std::vector<std::string>;

std::vector<int> Numbers(const Network& net) {
  std::vector<int> numbers;
  for (int i = 1; i <= net.BranchCount; ++i) numbers.push_back(net.AirwayNo[i]);
  return numbers;
}

void Sort(MeshFixture& f) {
  RebuildNodes(f.net, f.ws.defaults, f.ui);
  SortAirways(f.ws);
}

TEST(SortAirways, SurfaceEntriesFirstThenKeysDownwardEqualPairsInTheirOrder) {
  MeshFixture f;
  f.Add(10, 10, 500, 20, 10, 500);       // 1: A -> B
  f.Add(20, 10, 500, 20, 10, kSurface);  // 2: B -> S
  f.Add(10, 10, kSurface, 10, 10, 500);  // 3: S -> A
  f.Add(10, 10, 500, 20, 10, 500);       // 4: A -> B again
  f.Add(10, 10, kSurface, 20, 10, 500);  // 5: S -> B
  f.net.FromNodeP[1] = 11;
  f.net.SmokeTime[1] = 12;
  f.net.BranchCode[3] |= Bit::Selected;
  RebuildNodes(f.net, f.ws.defaults, f.ui);
  SortByNodeKeys(f.net);
  EXPECT_EQ(Numbers(f.net), (std::vector<int>{5, 3, 2, 1, 4}));
  // Node pressures and smoke times are rebuilt after a sort, so they stay where they were.
  EXPECT_EQ(f.net.FromNodeP[1], 11);
  EXPECT_EQ(f.net.SmokeTime[1], 12);
  SortAirways(f.ws);
  for (int i = 1; i <= f.net.BranchCount; ++i) EXPECT_FALSE(f.net.BranchCode[i] & Bit::Selected);
}

TEST(SortAirways, NothingToSortSaysSo) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500);
  SortAirways(f.ws);
  EXPECT_EQ(f.ui.MessageTexts(), Lines{"No Data to sort"});
}

struct WithDuplicates : MeshFixture {
  WithDuplicates() {
    AddSurfaceLoop();                    // 1, 2
    Add(10, 10, 500, 10, 10, kSurface);  // 3, same ends as 2
    Add(10, 10, 500, 10, 10, kSurface);  // 4, and again
  }
};

TEST(DeleteRedundantAirways, DuplicatesDeletedOnYesKeepingTheLast) {
  WithDuplicates f;
  f.ui.QueueAnswer(MsgAnswer::Yes);
  Sort(f);
  EXPECT_EQ(f.ui.MessageTexts(), Lines{"Duplicate branches exist - delete them ?"});
  EXPECT_EQ(f.ui.Records()[0].buttons, MsgButtons::YesNo);
  EXPECT_EQ(Numbers(f.net), (std::vector<int>{1, 4}));
  EXPECT_EQ(f.ws.sim.SimStatus, 0);
}

TEST(DeleteRedundantAirways, DuplicatesListedOnNo) {
  WithDuplicates f;
  f.ui.QueueAnswer(MsgAnswer::No);
  Sort(f);
  EXPECT_EQ(f.ui.Records().size(), 1u);
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
  EXPECT_EQ(f.Errors(), (Lines{"2\tDuplicate airway", "3\tDuplicate airway"}));
  EXPECT_EQ(f.net.Comment[2].Trimmed(), "Duplicate br");  // twelve characters
  EXPECT_TRUE(f.net.BranchCode[2] & Bit::ErrorMark);
  EXPECT_FALSE(f.net.BranchCode[4] & Bit::ErrorMark);
}

TEST(DeleteRedundantAirways, DuplicateSearchListsWithoutAsking) {
  WithDuplicates f;
  f.ws.sim.SimMode = 4;
  f.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
  Sort(f);
  EXPECT_TRUE(f.ui.Records().empty());
  EXPECT_EQ(f.net.BranchCount, 4);
  EXPECT_EQ(f.Errors().size(), 2u);
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
}

struct WithZeroLength : MeshFixture {
  WithZeroLength() {
    AddSurfaceLoop();
    Add(30, 10, 500, 30, 10, 500);                // 3: both ends at one point
    Add(40, 10, kSurface, 50, 10, kSurface + 3);  // 4: both on the surface: not this check
  }
};

TEST(DeleteRedundantAirways, ZeroLengthAskedEvenInTheDuplicateSearch) {
  WithZeroLength f;
  f.ws.sim.SimMode = 4;
  f.ui.QueueAnswer(MsgAnswer::OK);  // the "both ends on surface" warning
  f.ui.QueueAnswer(MsgAnswer::No);
  Sort(f);
  ASSERT_EQ(f.ui.Records().size(), 2u);
  EXPECT_EQ(f.ui.Records()[1].text,
            "Branches with identical start/end points detected - delete them ?");
  EXPECT_EQ(f.Errors(), (Lines{"4\tboth ends on surface", "3\tSame start/end"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "Same start/e");  // twelve characters
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
}

TEST(DeleteRedundantAirways, ZeroLengthDeletedOnYesAndResistancesRecalculated) {
  WithZeroLength f;
  f.net.ResType[1] = 0;  // computed from its section, length and walls
  f.net.WallType[1] = kUserGiven;
  f.net.WallFactor[1] = 0.012f;
  f.ui.QueueAnswer(MsgAnswer::OK);
  f.ui.QueueAnswer(MsgAnswer::Yes);
  Sort(f);
  EXPECT_EQ(f.net.BranchCount, 3);
  EXPECT_EQ(f.At(3), 0);
  EXPECT_NE(f.net.Resistance[f.At(1)], 1);
  EXPECT_EQ(f.net.Length[f.At(1)], 500);
}

}  // namespace
}  // namespace galeris
