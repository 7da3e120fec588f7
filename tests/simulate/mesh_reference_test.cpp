// The faster sort, checks, weighing and mesh builder against their plain forms, on thousands
// of random networks (equal keys, equal weights, several parts, loops through the surface,
// locked chords, duplicates, dead ends and flagged surface ends) and on generated mines.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "core/headless_ui.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/pressures.h"
#include "simulate/sort_airways.h"
#include "tests/simulate/mesh_reference.h"
#include "tests/support/test_support.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

constexpr int kSurfaceRL = 1000;

struct Bench {
  HeadlessUi ui;
  Workspace ws{ui};
  Bench() {
    ws.net.MaxAirways = 400;
    ClearStore(ws.net);
    ws.defaults.ResPreset[1] = 1000000000;  // bulkhead
  }
};

// An airway of user-given resistance with a 4 x 4 section; returns its position.
int StoreAirway(Network& net, int x1, int y1, int z1, int x2, int y2, int z2, float resistance,
                std::int16_t fan, std::int32_t number) {
  const int i = test::AddAirway(net, x1, y1, z1, x2, y2, z2);
  net.ResType[i] = kUserGiven, net.Resistance[i] = resistance;
  net.FanNumber[i] = fan, net.AirwayNo[i] = number;
  return i;
}

class RandomNetwork {
 public:
  explicit RandomNetwork(unsigned seed) : rng_(seed) {}

  // Fills both benches with the same random network and the same run settings.
  void Fill(Bench& a, Bench& b) {
    const int pools = 1 + Pick(3);
    const int walks = 1 + Pick(25);
    airways_.clear();
    for (int w = 0; w < walks; ++w) AddWalk(Pick(pools));
    const int strays = Pick(8) == 0 ? 1 + Pick(2) : 0;
    for (int s = 0; s < strays; ++s) airways_.push_back(Airway{RandomPoint(0), RandomPoint(0)});
    if (Pick(6) == 0 && !airways_.empty()) airways_.push_back(airways_[Pick(airways_.size())]);
    if (airways_.size() > 390) airways_.resize(390);
    const std::int16_t mode = kModes[Pick(std::size(kModes))];
    const bool yes = Pick(2) == 0;
    for (Bench* bench : {&a, &b}) {
      Network& net = bench->ws.net;
      ClearStore(net);
      net.RLBound[1] = {0, 5000, kSurfaceRL};
      bench->ws.sim = SimRun{};
      bench->ws.sim.SimMode = mode;
      bench->ui.ClearRecords();
      bench->ui.SetPolicy(yes ? HeadlessUi::Policy::AlwaysYes : HeadlessUi::Policy::AlwaysNo);
    }
    for (const Airway& airway : airways_) {
      const Properties p = RandomProperties();
      for (Bench* bench : {&a, &b}) Store(bench->ws.net, airway, p);
    }
  }

 private:
  struct Point {
    int x, y, z;
  };
  struct Airway {
    Point from, to;
  };
  struct Properties {
    float resistance;
    std::int32_t code;
    std::int16_t resType, fan;
    float quantity;
    std::int32_t number;
  };
  static constexpr std::int16_t kModes[] = {0, 0, 0, -1, 1, 2, 3, 4};

  int Pick(std::size_t n) { return static_cast<int>(rng_() % n); }

  // Points of a pool lie in their own block, so pools meet only through the surface.
  Point RandomPoint(int pool) {
    if (Pick(6) == 0) return Point{100 * Pick(4) + 1, 100 * Pick(2) + 1, kSurfaceRL + Pick(2)};
    return Point{pool * 1000 + 100 * Pick(3) + 1, 100 * Pick(3) + 1, 500 + 10 * Pick(2)};
  }

  void AddWalk(int pool) {
    const int length = 2 + Pick(5);
    std::vector<Point> points;
    // Now and then two walk points coincide, which makes a zero-length airway.
    for (int k = 0; k < length; ++k) {
      Point p = RandomPoint(pool);
      while (k > 0 && Pick(30) != 0 && p.x == points.back().x && p.y == points.back().y &&
             p.z == points.back().z)
        p = RandomPoint(pool);
      points.push_back(p);
    }
    for (int k = 0; k < length; ++k)
      airways_.push_back(Airway{points[k], points[(k + 1) % length]});
  }

  Properties RandomProperties() {
    static constexpr float kResistances[] = {0.5f, 1, 1, 1, 2, 3, 0.25f};
    Properties p{
        kResistances[Pick(std::size(kResistances))], Bit::Rectangular, kUserGiven, 0, 0, ++number_};
    const int roll = Pick(40);
    if (roll == 0) p.code |= Bit::FixedQuantity;
    if (roll == 1) p.fan = 1;
    if (roll == 2) p.fan = -1;
    if (roll == 3) p.resType = 1;
    if (roll == 4) p.resistance = 2000000000;
    if (roll == 5 && Pick(8) == 0) p.code |= Bit::ForceEntrySurface;
    if (roll == 6 && Pick(8) == 0) p.code |= Bit::ForceExitSurface;
    if (roll == 7) p.code |= Bit::FixedQuantity, p.fan = 1;
    if (roll == 8) p.code |= Bit::FixedQuantity, p.resType = 1;
    if (Pick(10) == 0) p.code |= Bit::Selected;
    p.quantity = Pick(8) == 0 ? 9994 : static_cast<float>(Pick(50));
    return p;
  }

  static void Store(Network& net, const Airway& airway, const Properties& p) {
    const int i = StoreAirway(net, airway.from.x, airway.from.y, airway.from.z, airway.to.x,
                              airway.to.y, airway.to.z, p.resistance, p.fan, p.number);
    net.BranchCode[i] = p.code;
    net.ResType[i] = p.resType;
    net.Quantity[i] = p.quantity;
    net.FromNodeP[i] = static_cast<float>(i);
    net.SmokeTime[i] = static_cast<float>(2 * i);
  }

  std::mt19937 rng_;
  std::vector<Airway> airways_;
  std::int32_t number_ = 0;
};

void RunEngine(Workspace& ws) {
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  if (ws.net.BranchCount < 2) return;
  SortAirways(ws);
  CheckNetwork(ws);
  if (ws.sim.SimStatus == 1) return;
  WeighAirways(ws);
  BuildMeshes(ws);
}

void RunReference(Workspace& ws) {
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  if (ws.net.BranchCount < 2) return;
  reference::InsertionSort(ws.net);
  DeleteRedundantAirways(ws);
  reference::InsertionSort(ws.net);
  for (int i = 1; i <= ws.net.BranchCount; ++i) ws.net.BranchCode[i] &= ~Bit::Selected;
  reference::CheckNetwork(ws);
  if (ws.sim.SimStatus == 1) return;
  reference::WeighAirways(ws);
  reference::BuildMeshes(ws);
}

void ExpectSame(const Bench& fast, const Bench& plain, unsigned seed) {
  const Network& a = fast.ws.net;
  const Network& b = plain.ws.net;
  SCOPED_TRACE("seed " + std::to_string(seed));
  ASSERT_EQ(a.BranchCount, b.BranchCount);
  ASSERT_EQ(a.Errorlist, b.Errorlist);
  ASSERT_EQ(fast.ui.MessageTexts(), plain.ui.MessageTexts());
  ASSERT_EQ(fast.ws.sim.SimStatus, plain.ws.sim.SimStatus);
  ASSERT_EQ(a.NodeCount, b.NodeCount);
  for (int i = 1; i <= a.BranchCount; ++i) {
    ASSERT_EQ(a.AirwayNo[i], b.AirwayNo[i]) << i;
    ASSERT_EQ(a.FromNodeP[i], b.FromNodeP[i]) << i;
    ASSERT_EQ(a.SmokeTime[i], b.SmokeTime[i]) << i;
    ASSERT_EQ(a.EntryNodeNo[i], b.EntryNodeNo[i]) << i;
    ASSERT_EQ(a.ExitNodeNo[i], b.ExitNodeNo[i]) << i;
    ASSERT_EQ(a.BranchCode[i], b.BranchCode[i]) << i;
    ASSERT_EQ(a.Comment[i], b.Comment[i]) << i;
    ASSERT_EQ(a.Quantity[i], b.Quantity[i]) << i;
    ASSERT_EQ(a.WeightOrder[i], b.WeightOrder[i]) << i;
    ASSERT_EQ(a.SmokeQueue[i], b.SmokeQueue[i]) << i;
    ASSERT_EQ(a.ResType[i], b.ResType[i]) << i;
  }
  if (a.Errorlist.empty() || fast.ws.sim.SimStatus == 0) {
    for (int i = 1; i <= a.BranchCount; ++i) ASSERT_EQ(a.ChordWeight[i], b.ChordWeight[i]) << i;
  }
  for (int node = 1; node <= a.NodeCount; ++node) {
    ASSERT_EQ(a.NodeGroup[node], b.NodeGroup[node]) << node;
    ASSERT_EQ(a.NodeParent[node], b.NodeParent[node]) << node;
  }
  ASSERT_EQ(fast.ws.sim.MeshCount, plain.ws.sim.MeshCount);
  const int meshes = fast.ws.sim.MeshCount;
  if (meshes == 0) return;
  for (int m = 1; m <= meshes + 1; ++m) ASSERT_EQ(a.MeshStart[m], b.MeshStart[m]) << m;
  for (int k = 1; k < a.MeshStart[meshes + 1]; ++k) ASSERT_EQ(a.MeshMember[k], b.MeshMember[k]);
}

// Weights the random networks seldom hold: both zeros, negatives, infinities, subnormals and
// runs of equal weights, in random order.
TEST(MeshReference, WeightOrderIsThePlainOneOnAwkwardWeights) {
  const float awkward[] = {0.0f, -0.0f, -1.0f, -2.5f, 1e-40f, -1e-40f, 3.0f, 3.0f, 100000000.0f,
                           std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(), 0.5f};
  std::mt19937 rng(5);
  for (int trial = 0; trial < 50; ++trial) {
    Bench fast, plain;
    const int count = 2 + static_cast<int>(rng() % 300);
    for (Bench* b : {&fast, &plain}) b->ws.net.BranchCount = static_cast<std::int16_t>(count);
    for (int i = 1; i <= count; ++i) {
      const float r = awkward[rng() % std::size(awkward)];
      fast.ws.net.Resistance[i] = plain.ws.net.Resistance[i] = r;
    }
    WeighAirways(fast.ws);
    reference::WeighAirways(plain.ws);
    for (int k = 1; k <= count; ++k)
      ASSERT_EQ(fast.ws.net.WeightOrder[k], plain.ws.net.WeightOrder[k]) << trial << " " << k;
  }
}

TEST(MeshReference, FastFormsGiveThePlainResultsOnRandomNetworks) {
  Bench fast, plain;
  int forested = 0;
  int meshed = 0;
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    RandomNetwork(seed).Fill(fast, plain);
    RunEngine(fast.ws);
    RunReference(plain.ws);
    ExpectSame(fast, plain, seed);
    if (HasFailure()) return;
    forested += fast.ws.sim.SimStatus == 0 || fast.ws.sim.MeshCount > 0;
    meshed += fast.ws.sim.MeshCount > 0;
  }
  // Enough random networks pass the checks to put the forest and the meshes to the test.
  EXPECT_GT(forested, 1000);
  EXPECT_GT(meshed, 500);
}

// Generated mines of a few hundred airways, with their fans, doors and many equal weights.
TEST(MeshReference, FastFormsGiveThePlainResultsOnLargeNetworks) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Bench fast, plain;
    for (Bench* b : {&fast, &plain}) GenerateMine(b->ws, 200 + 20 * static_cast<int>(seed), seed);
    RunEngine(fast.ws);
    RunReference(plain.ws);
    ExpectSame(fast, plain, seed);
  }
}

// A sorted store with a few airways turned round, as a run leaves it for the next: once with
// so few that they are merged back, once with enough for the general sort.
TEST(MeshReference, FastSortGivesThePlainOrderOnANearlySortedStore) {
  std::mt19937 rng(11);
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Bench fast, plain;
    for (Bench* b : {&fast, &plain}) {
      GenerateMine(b->ws, 300, seed);
      RebuildNodes(b->ws.net, b->ws.defaults, b->ui);
    }
    SortByNodeKeys(fast.ws.net);
    reference::InsertionSort(plain.ws.net);
    const int n = fast.ws.net.BranchCount;
    const int turned = seed % 2 ? 1 + static_cast<int>(rng() % 8) : n / 4;
    for (int k = 0; k < turned; ++k) {
      const int i = 1 + static_cast<int>(rng() % static_cast<unsigned>(n));
      for (Bench* b : {&fast, &plain}) ReverseAirway(b->ws.net, i);
    }
    SortByNodeKeys(fast.ws.net);
    reference::InsertionSort(plain.ws.net);
    for (int i = 1; i <= n; ++i) {
      ASSERT_EQ(fast.ws.net.AirwayNo[i], plain.ws.net.AirwayNo[i]) << seed << " " << i;
      ASSERT_EQ(fast.ws.net.EntryNodeId[i], plain.ws.net.EntryNodeId[i]) << seed << " " << i;
      ASSERT_EQ(fast.ws.net.FromNodeP[i], plain.ws.net.FromNodeP[i]) << seed << " " << i;
    }
  }
}

}  // namespace
}  // namespace galeris
