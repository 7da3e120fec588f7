// The synthetic mine: exact size, same mine for the same seed, a network that passes the
// checks with one mesh per independent loop, and a main fan that balances it on its curve.
#include "tools/mine_generator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <vector>

#include "core/headless_ui.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/simulate.h"
#include "simulate/sort_airways.h"

namespace galeris {
namespace {

struct Mine {
  HeadlessUi ui;
  Workspace ws{ui};
  explicit Mine(int airways, unsigned seed = 1) {
    ws.defaults.ResPreset[2] = 10;  // steel door
    ws.defaults.ResPreset[3] = 5;   // wood door
    GenerateMine(ws, airways, seed);
  }
  void Mesh() {
    RebuildNodes(ws.net, ws.defaults, ws.ui);
    SortAirways(ws);
    CheckNetwork(ws);
    WeighAirways(ws);
    BuildMeshes(ws);
  }
};

// Distinct nodes and connected parts, counted from the keys alone.
std::pair<int, int> NodesAndComponents(const Network& net) {
  std::map<Key, int> index;
  for (int i = 1; i <= net.BranchCount; ++i) {
    index.emplace(net.EntryNodeId[i], static_cast<int>(index.size()));
    index.emplace(net.ExitNodeId[i], static_cast<int>(index.size()));
  }
  std::vector<int> parent(index.size());
  std::iota(parent.begin(), parent.end(), 0);
  auto find = [&](int x) {
    while (parent[x] != x) x = parent[x] = parent[parent[x]];
    return x;
  };
  int components = static_cast<int>(index.size());
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int a = find(index[net.EntryNodeId[i]]);
    const int b = find(index[net.ExitNodeId[i]]);
    if (a != b) {
      parent[a] = b;
      --components;
    }
  }
  return {static_cast<int>(index.size()), components};
}

TEST(MineGenerator, GivesExactlyTheAirwaysAskedFor) {
  for (int airways : {SmallestGeneratedMine(), 40, 100, 257, 1000, 4321}) {
    Mine mine(airways);
    EXPECT_EQ(mine.ws.net.BranchCount, airways);
    std::set<int> numbers;
    for (int i = 1; i <= airways; ++i) numbers.insert(mine.ws.net.AirwayNo[i]);
    EXPECT_EQ(static_cast<int>(numbers.size()), airways);
    EXPECT_EQ(mine.ws.net.NextAirwayNo, airways);
  }
  EXPECT_EQ(Mine(3).ws.net.BranchCount, SmallestGeneratedMine());  // too small an ask
}

TEST(MineGenerator, SameSeedSameMineOtherSeedOtherMine) {
  Mine a(500, 7), b(500, 7), c(500, 8);
  bool differs = false;
  for (int i = 1; i <= 500; ++i) {
    EXPECT_EQ(a.ws.net.Coord1[i], b.ws.net.Coord1[i]);
    EXPECT_EQ(a.ws.net.Coord2[i], b.ws.net.Coord2[i]);
    EXPECT_EQ(a.ws.net.Resistance[i], b.ws.net.Resistance[i]);
    differs = differs || a.ws.net.Coord1[i] != c.ws.net.Coord1[i];
  }
  EXPECT_TRUE(differs);
}

TEST(MineGenerator, HasLevelsShaftsFansDoorsAndRegulator) {
  Mine mine(800);
  const Network& net = mine.ws.net;
  EXPECT_EQ(net.RLName[1], "SURFACE");
  EXPECT_GE(net.RLCount, 3);
  int mainFans = 0, boosters = 0, doors = 0, regulators = 0, surfaceEnds = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const std::string comment = net.Comment[i].Trimmed();
    mainFans += comment == "Main Fan";
    boosters += comment == "Booster";
    doors += net.ResType[i] == 2 || net.ResType[i] == 3;
    regulators += net.ResType[i] == kUserGiven;
    surfaceEnds +=
        (net.Coord1[i][3] >= SurfaceThreshold(net)) + (net.Coord2[i][3] >= SurfaceThreshold(net));
    EXPECT_GT(net.Resistance[i], 0) << i;
    if (net.FanNumber[i] > 0) {
      EXPECT_FALSE(net.FanName[net.FanNumber[i]].empty());
    }
  }
  EXPECT_EQ(mainFans, 1);
  EXPECT_GE(boosters, 1);
  EXPECT_GE(doors, 2);
  EXPECT_EQ(regulators, 1);
  EXPECT_EQ(surfaceEnds, 3);  // intake collar, decline portal, exhaust collar
}

TEST(MineGenerator, KeepsFansAlreadyInTheStore) {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.net.FanName[1] = "Site fan";
  ws.net.CurveP[1][1][1] = 500;
  GenerateMine(ws, 200);
  EXPECT_EQ(ws.net.FanName[1], "Site fan");
  EXPECT_EQ(ws.net.FanName[2], "Generated Main Exhaust");
  GenerateMine(ws, 300);  // a second mine reuses the generated slots
  EXPECT_TRUE(ws.net.FanName[4].empty());
}

TEST(MineGenerator, ChecksCleanWithOneMeshPerIndependentLoop) {
  for (int airways : {SmallestGeneratedMine(), 150, 2000, 9000}) {
    Mine mine(airways, 3);
    mine.Mesh();
    const Network& net = mine.ws.net;
    EXPECT_EQ(mine.ws.sim.SimStatus, 0) << airways;
    EXPECT_TRUE(net.Errorlist.empty()) << airways << " " << net.Errorlist.front();
    EXPECT_TRUE(mine.ui.Records().empty());
    const auto [nodes, components] = NodesAndComponents(net);
    EXPECT_EQ(net.NodeCount, nodes);
    EXPECT_EQ(components, 1);
    EXPECT_EQ(mine.ws.sim.MeshCount, airways - nodes + components) << airways;
    // Every fan is a chord, so each fan has a loop of its own to drive.
    for (int i = 1; i <= net.BranchCount; ++i) {
      if (net.FanNumber[i] != 0) {
        EXPECT_LT(net.EntryNodeNo[i], 0) << i;
      }
    }
  }
}

TEST(MineGenerator, SeedFlowsKeepContinuityAndLeaveByTheMainFan) {
  Mine mine(1500, 4);
  const Network& net = mine.ws.net;
  std::map<Key, double> balance;
  double mainFan = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    balance[net.EntryNodeId[i]] -= net.Quantity[i];
    balance[net.ExitNodeId[i]] += net.Quantity[i];
    if (net.Comment[i].Trimmed() == "Main Fan") mainFan = net.Quantity[i];
  }
  for (const auto& [key, sum] : balance) EXPECT_NEAR(sum, 0, 1e-3) << key;
  EXPECT_GT(mainFan, 0);
  EXPECT_EQ(balance.count(SurfaceKey), 1u);
}

TEST(MineGenerator, LargestMineFitsTheMeshArrays) {
  Mine mine(30000);
  ASSERT_EQ(mine.ws.net.MaxAirways, 30000);
  mine.Mesh();
  EXPECT_EQ(mine.ws.sim.SimStatus, 0);
  EXPECT_LT(mine.ws.sim.MeshCount, 15000);
  EXPECT_LT(mine.ws.net.MeshStart[mine.ws.sim.MeshCount + 1], 20 * 30000);
}

// The generated fans find an operating point on their curves: each works between its second
// and last points, clear of stall and free delivery.
TEST(MineGenerator, MainFanBalancesTheMineOnItsCurve) {
  for (int airways : {60, 600, 3000}) {
    Mine mine(airways, 5);
    Network& net = mine.ws.net;
    mine.ws.defaults.MaxIter = 3000;
    mine.ws.sim.ShowProgress = 0;
    RunSimulation(mine.ws);
    EXPECT_TRUE(mine.ws.sim.Converged) << airways;
    EXPECT_EQ(mine.ws.sim.SimStatus, 0) << airways;
    for (int i = 1; i <= net.BranchCount; ++i) {
      const int f = net.FanNumber[i];
      if (f <= 0) continue;
      const float q = net.Quantity[i] / std::max<int>(1, net.NoOfFans[i]);
      EXPECT_GT(q, net.CurveQ[f][2]) << net.Comment[i].Trimmed() << " of " << airways;
      EXPECT_LT(q, net.CurveQ[f][10]) << net.Comment[i].Trimmed() << " of " << airways;
    }
  }
}

}  // namespace
}  // namespace galeris
