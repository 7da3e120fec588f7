// The stages of a run up to the meshes, on small networks, for what the comparison with the
// plain forms on random networks cannot tell: the clean-up of duplicate and zero-length
// airways with its questions; the network checks' findings (exits and entries, surface ends
// and flags, duplicates); the mesh builder (a loop through the surface, locked chords, the
// bound of the member list, cancel); and the restriction diagnostics by mode.
#include <gtest/gtest.h>

#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/restrictions.h"
#include "simulate/sort_airways.h"
#include "tests/simulate/mesh_fixture.h"

namespace galeris {
namespace {

using test::kSurface;
using test::MeshFixture;
using Lines = std::vector<std::string>;
using Members = std::vector<int>;

std::vector<int> Numbers(const Network& net) {
  std::vector<int> numbers;
  for (int i = 1; i <= net.BranchCount; ++i) numbers.push_back(net.AirwayNo[i]);
  return numbers;
}

void Sort(MeshFixture& f) {
  RebuildNodes(f.net, f.ws.defaults, f.ui);
  SortAirways(f.ws);
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
  test::JournalSpy journal(6, [&f](int i) { return f.net.AirwayNo[i]; });
  f.ws.journal = &journal;
  f.ui.QueueAnswer(MsgAnswer::Yes);
  Sort(f);
  EXPECT_EQ(f.ui.MessageTexts(), Lines{"Duplicate branches exist - delete them ?"});
  EXPECT_EQ(f.ui.Records()[0].buttons, MsgButtons::YesNo);
  EXPECT_EQ(Numbers(f.net), (std::vector<int>{1, 4}));
  EXPECT_EQ(f.ws.sim.SimStatus, 0);
  // The deleted airways are journalled as one action, so Undo brings them back.
  ASSERT_EQ(journal.entries.size(), 2u);
  for (const auto& entry : journal.entries) {
    EXPECT_EQ(std::pair(entry.kind, entry.action), std::pair(int{UndoJournal::kBefore}, 6));
    EXPECT_TRUE(entry.value == 2 || entry.value == 3) << entry.value;
  }
  EXPECT_EQ(journal.closes, 1);
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

TEST(CheckNetwork, LoneAirwayHasNeitherExitNorEntry) {
  MeshFixture f;
  f.AddSurfaceLoop();
  f.Add(300, 300, 400, 400, 300, 400);  // no neighbours
  f.net.AirwayNo[3] = 77;
  f.Check();
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
  EXPECT_EQ(f.Errors(), (Lines{"77\tNo exit from branch", "77\tNo entry into branch"}));
  const int lone = f.At(77);
  EXPECT_EQ(f.net.Comment[lone].Trimmed(), "No Entry");  // the later finding writes last
  EXPECT_TRUE(f.net.BranchCode[lone] & Bit::ErrorMark);
}

TEST(CheckNetwork, ForcedSurfaceEndMustBeFree) {
  MeshFixture f;
  f.Add(10, 10, 500, 50, 10, 500);  // forced to the surface at its entry...
  f.Add(50, 10, 500, 50, 10, kSurface);
  f.net.BranchCode[1] |= Bit::ForceEntrySurface;
  f.Check();
  EXPECT_EQ(f.ws.sim.SimStatus, 0);
  EXPECT_TRUE(f.Errors().empty());

  MeshFixture g;
  g.Add(10, 10, 500, 50, 10, 500);
  g.Add(50, 10, 500, 50, 10, kSurface);
  g.Add(10, 10, kSurface, 10, 10, 500);  // ...but here another airway reaches that end
  g.net.BranchCode[1] |= Bit::ForceEntrySurface;
  g.Add(10, 10, kSurface + 1, 10, 20, 400);
  g.Add(10, 20, 400, 10, 10, 500);
  g.net.BranchCode[5] |= Bit::ForceExitSurface;
  g.Add(10, 10, 500, 10, 10, kSurface);
  g.Check();
  EXPECT_EQ(g.ws.sim.SimStatus, 1);
  EXPECT_EQ(g.Errors(), (Lines{"1\tAirway into surface entry", "5\tAirway into surface exit"}));
  EXPECT_EQ(g.net.Comment[g.At(1)].Trimmed(), "Bad Entry");
  EXPECT_EQ(g.net.Comment[g.At(5)].Trimmed(), "Bad Exit");
}

TEST(CheckNetwork, DuplicateBranchIsListedAndQueued) {
  MeshFixture f;
  f.AddSurfaceLoop();
  f.Add(10, 10, 500, 10, 10, kSurface);
  RebuildNodes(f.net, f.ws.defaults, f.ui);
  SortByNodeKeys(f.net);  // the check alone, without the clean-up's question
  EXPECT_EQ(CheckNetwork(f.ws), 1);
  EXPECT_EQ(f.Errors(), (Lines{"3\tDuplicate branch"}));
  EXPECT_EQ(f.net.Comment[3].Trimmed(), "Error-Duplic");  // twelve characters
  EXPECT_EQ(f.net.SmokeQueue[1], 3);
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
}

// Surface S -> A -> B -> S: one loop through the atmosphere.
struct SurfaceLoop : MeshFixture {
  SurfaceLoop(float down = 1, float across = 2, float up = 3) {
    Add(10, 10, kSurface, 10, 10, 500, down);  // 1: intake
    Add(10, 10, 500, 90, 10, 500, across);     // 2: drive
    Add(90, 10, 500, 90, 10, kSurface, up);    // 3: return
  }
};

TEST(BuildMeshes, OneLoopThroughTheSurfaceGivesOneMeshStartingAtItsChord) {
  SurfaceLoop f;
  f.Mesh();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  ASSERT_EQ(f.ws.sim.MeshCount, 1);
  // The heaviest airway closes the loop; the mesh runs with it, then back to the surface.
  EXPECT_EQ(f.Members(1), (Members{3, 1, 2}));
  EXPECT_LT(f.net.EntryNodeNo[f.At(3)], 0);
  EXPECT_GT(f.net.ExitNodeNo[f.At(3)], 0);
}

TEST(BuildMeshes, FixedQuantityOrBulkheadClosingALoopIsALockedChord) {
  for (bool bulkhead : {false, true}) {
    SCOPED_TRACE(bulkhead ? "bulkhead" : "fixed quantity");
    SurfaceLoop f;
    if (bulkhead) {
      f.net.ResType[2] = 1;
    } else {
      f.net.BranchCode[2] |= Bit::FixedQuantity;
    }
    f.net.Quantity[2] = bulkhead ? 30 : 12;
    f.Mesh();
    ASSERT_EQ(f.ws.sim.SimStatus, 0);
    ASSERT_EQ(f.ws.sim.MeshCount, 1);
    const int at = f.At(2);
    EXPECT_EQ(f.Members(1).front(), -2);
    EXPECT_LT(f.net.ExitNodeNo[at], 0);
    EXPECT_EQ(f.net.Quantity[at], bulkhead ? 0 : 12);  // a bulkhead carries no flow
    if (bulkhead) {
      EXPECT_GE(f.net.Resistance[at], 1e9f);
      EXPECT_LT(f.net.EntryNodeNo[at], 0);
    }
  }
}

// A chain of light airways down from the surface, and from its foot heavy returns, each
// through a node of its own: every return's mesh climbs the whole chain. With as many returns
// as chain airways, each mesh has chain + 2 members.
void ChainWithReturns(MeshFixture& f, int chain, int returns) {
  for (int k = 0; k < chain; ++k) f.Add(10, 10, k == 0 ? kSurface : 900 - k, 10, 10, 899 - k, 1);
  const int foot = 899 - chain + 1;
  for (int k = 0; k < returns; ++k) {
    f.Add(10, 10, foot, 20 + k, 10, foot, 5);
    f.Add(20 + k, 10, foot, 20 + k, 10, kSurface, 5);
  }
  f.net.MaxAirways = f.net.BranchCount;
  ResizeStore(f.net);
}

TEST(BuildMeshes, MemberListMayFillExactlyAndStopsWithItsMessageWhenFull) {
  MeshFixture fits;
  ChainWithReturns(fits, 58, 58);  // 58 x 60 members = 20 x 174
  fits.Mesh();
  ASSERT_EQ(fits.ws.sim.SimStatus, 0);
  ASSERT_EQ(fits.ws.sim.MeshCount, 58);
  EXPECT_EQ(fits.net.MeshStart[59], 20 * 174 + 1);
  EXPECT_TRUE(fits.ui.Records().empty());
  MeshFixture f;
  ChainWithReturns(f, 60, 60);  // 60 x 62 members, room for 20 x 180
  f.Mesh();
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
  ASSERT_EQ(f.ui.Records().size(), 1u);
  EXPECT_EQ(f.ui.Records()[0].title, "meshes Error");
  EXPECT_EQ(f.ui.Records()[0].text, kMsgMeshesFull);
}

TEST(BuildMeshes, CancelStopsTheForestPass) {
  SurfaceLoop f;
  f.Check();
  WeighAirways(f.ws);
  f.ws.sim.SimCancel = 255;
  BuildMeshes(f.ws);
  EXPECT_EQ(f.ws.sim.MeshCount, 0);
  for (int i = 1; i <= f.net.BranchCount; ++i) EXPECT_GT(f.net.EntryNodeNo[i], 0);
}

TEST(BuildMeshes, RefusesAnUncheckedNetwork) {
  SurfaceLoop f;
  BuildMeshes(f.ws);  // no node numbers yet
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
  EXPECT_EQ(f.ws.sim.MeshCount, 0);
}

// A loop through the surface, and an airway from it into a closed circuit underground: that
// airway is the only way in, a bridge that must stay in the tree.
struct WithBridge : MeshFixture {
  int bridge = 0;
  explicit WithBridge(std::int16_t mode) {
    ws.sim.SimMode = mode;
    AddSurfaceLoop();                        // 1, 2
    bridge = Add(10, 10, 500, 50, 10, 500);  // 3
    Add(50, 10, 500, 60, 10, 500);           // 4
    Add(60, 10, 500, 50, 10, 500);           // 5
  }
  // Fixes the bridge's flow, and makes it a bulkhead or gives it a fan.
  void FixBridge(std::int16_t resType = 0, std::int16_t fan = 0) {
    net.BranchCode[bridge] |= Bit::FixedQuantity;
    if (resType) net.ResType[bridge] = resType;
    if (fan) net.FanNumber[bridge] = fan;
  }
};

TEST(Restrictions, FixedQuantityInTheTreeStopsEveryRun) {
  for (std::int16_t mode : {0, -1, 1, 2, 3}) {
    WithBridge f(mode);
    f.FixBridge();
    f.Mesh();
    EXPECT_EQ(f.ws.sim.SimStatus, 1) << mode;
    EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow"})) << mode;
    const int at = f.At(3);
    EXPECT_EQ(f.net.Comment[at].Trimmed(), "Bad Fix");
    EXPECT_FALSE(f.net.BranchCode[at] & Bit::ErrorMark);
    EXPECT_TRUE(f.ui.Records().empty());
  }
}

TEST(Restrictions, BulkheadOrFanAloneIsNeverReported) {
  for (std::int16_t mode : {1, 2, 3}) {
    WithBridge f(mode);
    f.net.ResType[f.bridge] = 1;
    f.net.FanNumber[4] = 1;
    f.Mesh();
    EXPECT_EQ(f.ws.sim.SimStatus, 0) << mode;
    EXPECT_TRUE(f.Errors().empty());
    EXPECT_TRUE(f.ui.Records().empty());
  }
}

TEST(Restrictions, FixedBulkheadInTheTreeCautionsTheBulkheadSearch) {
  WithBridge f(1);
  f.FixBridge(1);
  f.Mesh();
  EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow", "3\tBBH not required"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "Bad BBH");
  EXPECT_TRUE(f.net.BranchCode[f.At(3)] & Bit::ErrorMark);
  EXPECT_EQ(f.ui.MessageTexts(),
            Lines{"CAUTION - Bulkheads are present which MAY restrict meshes formation."});
  EXPECT_FALSE(f.ws.sim.RestrictionFound);
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
}

TEST(Restrictions, FixedFanInTheTreeWarnsTheFanSearch) {
  WithBridge f(3);
  f.FixBridge(0, 2);
  f.Mesh();
  EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow", "3\tFan restricted"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "Bad Fan");
  EXPECT_EQ(f.ui.MessageTexts(), Lines{"WARNING - Fans are present which restrict other fans."});
}

TEST(Restrictions, RemovalAskedFirstNoKeepsTheBulkheadsYesClearsThePreset) {
  for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    WithBridge f(2);
    f.FixBridge(1);
    f.ui.QueueAnswer(answer);
    f.Mesh();
    const int at = f.At(3);
    ASSERT_EQ(f.ui.Records().size(), answer == MsgAnswer::Yes ? 2u : 1u);
    EXPECT_EQ(f.ui.Records()[0].text,
              "WARNING - This will remove redundant bulkheads from the network.  Continue ?");
    if (answer == MsgAnswer::No) {
      EXPECT_EQ(f.net.ResType[at], 1);
      EXPECT_EQ(f.net.Comment[at].Trimmed(), "Bad BBH");
      EXPECT_EQ(f.ws.sim.SimStatus, 1);
      continue;
    }
    EXPECT_EQ(f.net.ResType[at], 0);
    EXPECT_LT(f.net.Resistance[at], 1);  // the bulkhead's preset is gone
    EXPECT_EQ(f.ui.Records()[1].text,
              "There were 1 unnecessary bulkheads removed from the network");
  }
}

}  // namespace
}  // namespace galeris
