// The network checks: node numbers, exits and entries, surface ends and flags, duplicates,
// leftover flows, and the exit search on the downward-running keys.
#include "simulate/network_checks.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/simulate/mesh_fixture.h"

namespace galeris {
namespace {

using test::kSurface;
using test::MeshFixture;
using Lines = std::vector<std::string>;

TEST(CheckNetwork, TwoSurfaceAirwaysCloseTheNetwork) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500);      // in, from exactly "RL Min"
  f.Add(10, 10, 500, 90, 10, kSurface + 7);  // out, above it
  f.Check();
  EXPECT_EQ(f.ws.sim.SimStatus, 0);
  EXPECT_TRUE(f.Errors().empty());
  EXPECT_EQ(f.net.NodeCount, 2);
  EXPECT_EQ(f.net.EntryNodeId[1], SurfaceKey);
  EXPECT_EQ(f.net.ExitNodeNo[2], 1);  // the surface is node 1
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

TEST(CheckNetwork, DeadEndHeadingHasNoExit) {
  MeshFixture f;
  f.AddSurfaceLoop();
  f.Add(10, 10, 500, 50, 10, 500);  // a heading off the loop, never holed through
  f.Check();
  EXPECT_EQ(f.Errors(), (Lines{"3\tNo exit from branch"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "No Exit");
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

TEST(CheckNetwork, ClearsOldMarksAndLeftoverFlows) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500);
  f.Add(10, 10, 500, 10, 20, 500);
  f.Add(10, 20, 500, 10, 20, kSurface);
  f.Add(10, 10, 500, 10, 30, 500);
  f.Add(10, 30, 500, 10, 30, kSurface);
  f.net.Comment[1] = "Bad Fix";
  f.net.BranchCode[1] |= Bit::ErrorMark | 0x7F000000;
  f.net.Quantity[1] = 9994;
  f.net.Quantity[2] = 9993.9f;
  f.net.Quantity[3] = -12000;
  f.net.Quantity[4] = -9993.9f;
  f.Check();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  EXPECT_TRUE(f.net.Comment[f.At(1)].IsBlank());
  EXPECT_EQ(f.net.BranchCode[f.At(1)], Bit::Rectangular);
  std::vector<float> flows;
  for (int no = 1; no <= 4; ++no) flows.push_back(f.net.Quantity[f.At(no)]);
  EXPECT_EQ(flows, (std::vector<float>{0, 9993.9f, 0, -9993.9f}));
}

TEST(CheckNetwork, NodeNumbersFollowTheEntryKeys) {
  MeshFixture f;
  f.Add(10, 10, kSurface, 10, 10, 500);
  f.Add(10, 10, kSurface, 20, 10, 500);
  f.Add(10, 10, 500, 20, 10, 500);
  f.Add(20, 10, 500, 10, 10, kSurface);
  f.Check();
  ASSERT_EQ(f.ws.sim.SimStatus, 0);
  EXPECT_EQ(f.net.NodeCount, 3);
  EXPECT_EQ((std::vector<int>{f.net.EntryNodeNo[1], f.net.EntryNodeNo[2], f.net.EntryNodeNo[3],
                              f.net.EntryNodeNo[4]}),
            (std::vector<int>{1, 1, 2, 3}));
}

// The exit search finds a key wherever it stands, and only the keys that are there.
TEST(FindEntryPosition, FindsEveryKeyOfADownwardRun) {
  std::mt19937 rng(11);
  Network net;
  net.MaxAirways = 100;
  ClearStore(net);
  // With one airway the first probe is position 0, so even its own key is not found; a run
  // never checks fewer than two airways.
  net.BranchCount = 1;
  net.EntryNodeId[1] = 500;
  EXPECT_EQ(FindEntryPosition(net, 500), 0);
  for (int n = 2; n <= 60; ++n) {
    net.BranchCount = static_cast<std::int16_t>(n);
    Key key = 1000000;
    for (int i = 1; i <= n; ++i) {
      // Even keys, some repeated, so that an odd key is never there.
      key -= 2 * static_cast<Key>(rng() % 3 == 0 ? 0 : 1 + rng() % 5);
      net.EntryNodeId[i] = key;
    }
    for (int i = 1; i <= n; ++i) {
      const int at = FindEntryPosition(net, net.EntryNodeId[i]);
      ASSERT_GT(at, 0) << n << " " << i;
      EXPECT_EQ(net.EntryNodeId[at], net.EntryNodeId[i]);
      EXPECT_EQ(FindEntryPosition(net, net.EntryNodeId[i] + 1), 0);
    }
    EXPECT_EQ(FindEntryPosition(net, 2000000), 0);
    EXPECT_EQ(FindEntryPosition(net, 1), 0);
  }
}

}  // namespace
}  // namespace galeris
