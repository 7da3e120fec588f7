// The mesh builder: weights, the forest (ties, merges, parts), chords and locked chords, the
// two paths of a mesh, and the bound of the member list.
#include "simulate/mesh_builder.h"

#include <gtest/gtest.h>

#include "tests/simulate/mesh_fixture.h"

namespace galeris {
namespace {

using test::kSurface;
using test::MeshFixture;
using Members = std::vector<int>;

// Surface S -> A -> B -> S: one loop through the atmosphere.
struct SurfaceLoop : MeshFixture {
  SurfaceLoop(float down = 1, float across = 2, float up = 3) {
    Add(10, 10, kSurface, 10, 10, 500, down);  // 1: intake
    Add(10, 10, 500, 90, 10, 500, across);     // 2: drive
    Add(90, 10, 500, 90, 10, kSurface, up);    // 3: return
  }
};

TEST(WeighAirways, HeavyAirwaysAndTheOrderOfEqualWeights) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500, 2);
  f.Add(10, 10, 500, 90, 10, 500, 2);
  f.Add(90, 10, 500, 90, 10, kSurface, 5);
  f.Add(10, 10, 500, 10, 90, 500, 2);
  f.net.BranchCode[2] |= Bit::FixedQuantity;
  f.net.FanNumber[3] = -1;
  f.net.Resistance[4] = 2e9f;
  f.net.Quantity[4] = 7;
  WeighAirways(f.ws);
  EXPECT_EQ(std::vector<float>(f.net.ChordWeight.begin() + 1, f.net.ChordWeight.begin() + 5),
            (std::vector<float>{2, kChordWeight, kChordWeight, kChordWeight}));
  EXPECT_EQ(f.net.Quantity[4], 0);  // a blockage carries nothing
  // Heaviest first, and among equals the later airway first.
  EXPECT_EQ((Members{f.net.WeightOrder[1], f.net.WeightOrder[2], f.net.WeightOrder[3],
                     f.net.WeightOrder[4]}),
            (Members{4, 3, 2, 1}));
}

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

TEST(BuildMeshes, OfTwoEqualAirwaysTheLowerPositionEntersTheTree) {
  SurfaceLoop f(1, 2, 2);
  f.Mesh();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  // The sort puts the return (entry B) before the drive (entry A): the drive is the chord.
  ASSERT_EQ(std::pair(f.At(3), f.At(2)), std::pair(2, 3));
  EXPECT_GT(f.net.EntryNodeNo[2], 0);
  EXPECT_LT(f.net.EntryNodeNo[3], 0);
  EXPECT_EQ(f.Members(1).front(), 2);
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

TEST(BuildMeshes, MergingTreesTurnsTheJoinedTreeTowardsTheRoot) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500, 5);  // 1: S -> A, joins the two trees
  f.Add(10, 10, 500, 90, 10, 500, 1);       // 2: A -> B, the lightest: a tree of its own
  f.Add(90, 10, 500, 90, 10, kSurface, 9);  // 3: B -> S, closes the loop
  f.Mesh();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  const int a = std::abs(f.net.ExitNodeNo[f.At(1)]);
  const int b = std::abs(f.net.ExitNodeNo[f.At(2)]);
  // A now hangs from the surface through airway 1 (A is its exit end), B from A through 2.
  EXPECT_EQ(std::tuple(f.net.NodeParent[a], f.net.NodeParent[b], f.net.NodeParent[1]),
            std::tuple(-f.At(1), -f.At(2), 0));
  EXPECT_EQ(std::tuple(f.net.NodeGroup[a], f.net.NodeGroup[b]), std::tuple(1, 1));
  EXPECT_EQ(f.Members(1), (Members{3, 1, 2}));
}

TEST(BuildMeshes, PathsThatMeetOnlyAtTheRootAreBothKeptWhole) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500, 1);  // 1: S -> A
  f.Add(10, 10, 500, 10, 10, 400, 1);       // 2: A -> C
  f.Add(50, 50, kSurface, 50, 50, 500, 1);  // 3: S -> B
  f.Add(50, 50, 500, 50, 50, 400, 1);       // 4: B -> D
  f.Add(10, 10, 400, 50, 50, 400, 9);       // 5: C -> D, the chord
  f.Add(50, 50, 400, 90, 90, kSurface, 1);  // 6: D -> S
  f.Mesh();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  ASSERT_EQ(f.ws.sim.MeshCount, 2);
  bool found = false;
  for (int m = 1; m <= 2; ++m) {
    const Members mesh = f.Members(m);
    if (mesh.front() != 5) continue;
    found = true;
    // From the chord's exit D up to the surface, then from the surface down to its entry C.
    EXPECT_EQ(mesh.size(), 5u);
    EXPECT_EQ(mesh[mesh.size() - 2], 1);
    EXPECT_EQ(mesh.back(), 2);
  }
  EXPECT_TRUE(found);
}

TEST(BuildMeshes, TwoUnconnectedPartsGetTwoGroupsAndTheSurfaceJoinsItsOwn) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500, 1);  // a part through the surface
  f.Add(10, 10, 500, 10, 10, kSurface, 2);
  f.Add(300, 300, 500, 400, 300, 500, 1);  // a closed circuit underground
  f.Add(400, 300, 500, 400, 400, 500, 1);
  f.Add(400, 400, 500, 300, 300, 500, 2);
  f.Mesh();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  EXPECT_EQ(f.ws.sim.MeshCount, 2);  // airways 5 - nodes 5 + parts 2
  EXPECT_EQ(f.net.NodeGroup[1], 1);
  std::vector<int> groups;
  for (int node = 1; node <= f.net.NodeCount; ++node) groups.push_back(f.net.NodeGroup[node]);
  std::sort(groups.begin(), groups.end());
  groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
  EXPECT_EQ(groups.size(), 2u);
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

}  // namespace
}  // namespace galeris
