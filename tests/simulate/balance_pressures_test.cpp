// Flow balancing and the results of a run on hand-built meshes. Balancing: start flows,
// convergence, locked and dead meshes, the convergence question, cancel, and the
// non-convergence listing. Results: loads and fan marks, airway pressures, reversals with
// their journal entries, node pressures and node links (each compared with the plain
// quadratic walk of the store on many random networks), and the derived values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "simulate/balance_flows.h"
#include "simulate/pressures.h"
#include "tests/simulate/hand_mesh.h"

namespace galeris {
namespace {

using PressureFixture = test::HandMesh;
using test::JournalSpy;

struct BalanceFixture : test::HandMesh {
  void SetUp() override {
    ws.defaults.MaxError = 0.0001f;
    ws.defaults.MaxIter = 500;
  }

  // The pressure left unbalanced round mesh m.
  double Residual(int m) {
    double sum = 0;
    for (int k = net.MeshStart[m]; k < net.MeshStart[m + 1]; ++k) {
      const int v = net.MeshMember[k];
      const int a = std::abs(v);
      const double s = v < 0 ? -1 : 1;
      const double q = s * net.Quantity[a];
      double fanP = 0;
      if (net.FanSlot[a] != 0)
        fanP = EvaluateFanCurve(net, static_cast<int>(net.FanSlot[a]), net.Quantity[a], a,
                                net.Pressure[a])
                   .FanP;
      sum += q * std::fabs(q * net.Resistance[a]) - s * fanP;
    }
    return sum;
  }
};

// Surface S, node A; 3 is a fixed pressure S->A, 1 and 2 return A->S in parallel.
struct ParallelPair : BalanceFixture {
  int r1 = 0, r2 = 0, fixed = 0;
  void SetUp() override {
    BalanceFixture::SetUp();
    r1 = Airway(1);
    r2 = Airway(4);
    fixed = Airway(0, 5);
    net.FanNumber[fixed] = -1;
    net.FanSlot[fixed] = -1;
    net.Pressure[fixed] = 900;
    Meshes({{fixed, r1}, {r2, -r1}});
  }
};

TEST_F(ParallelPair, SplitsByTheSquareLaw) {
  BalanceFlows(ws);
  EXPECT_NEAR(net.Quantity[fixed], 45.0, 0.01);
  EXPECT_NEAR(net.Quantity[r1], 30.0, 0.01);
  EXPECT_NEAR(net.Quantity[r2], 15.0, 0.01);
  EXPECT_TRUE(ws.sim.Converged);
  EXPECT_TRUE(ui.MessageTexts().empty());
  EXPECT_GT(ui.YieldCount(), 0);
  EXPECT_EQ(ui.AttemptLabel(), std::to_string(ws.sim.Sweeps - 1));
  // Balanced already, the next run needs one sweep, asks nothing and does not yield.
  ui.ClearRecords();
  const int yields = ui.YieldCount();
  BalanceFlows(ws);
  EXPECT_EQ(ws.sim.Sweeps, 1);
  EXPECT_EQ(ui.YieldCount(), yields);
  EXPECT_TRUE(ui.MessageTexts().empty());
}

TEST_F(ParallelPair, StartFlowsComeFromTheChordsAlone) {
  net.Quantity[r1] = 1234;  // a tree airway's old flow is forgotten
  net.Quantity[r2] = 7;
  SuperposeStartFlows(net, ws.sim.MeshCount);
  EXPECT_FLOAT_EQ(net.Quantity[fixed], 5);
  EXPECT_FLOAT_EQ(net.Quantity[r2], 7);
  EXPECT_FLOAT_EQ(net.Quantity[r1], 5 - 7);  // continuity at A
}

TEST_F(ParallelPair, SweepsUsedUpAskToGoOn) {
  ws.defaults.MaxIter = 1;
  ui.QueueAnswer(MsgAnswer::Yes);
  ui.QueueAnswer(MsgAnswer::No);
  BalanceFlows(ws);
  ASSERT_EQ(ui.MessageTexts().size(), 2u);
  EXPECT_EQ(ui.Records()[0].title, "Convergence Warning");
  EXPECT_EQ(ui.MessageTexts()[0],
            "Your Network only has a convergence of 0%\nDo you wish to keep on simulating ?");
  EXPECT_EQ(ws.sim.Sweeps, 2);
  EXPECT_FALSE(ws.sim.Converged);
  EXPECT_EQ(ws.sim.SimStatus, 0);  // No keeps the flows and the run goes on
}

TEST_F(ParallelPair, CancelAtAYieldStopsWithStatusOne) {
  ui.OnYield([this](int n) {
    if (n == 2) ws.sim.SimCancel = 255;
  });
  BalanceFlows(ws);
  EXPECT_EQ(ws.sim.SimStatus, 1);
  EXPECT_EQ(ws.sim.Sweeps, 2);
  // The flows stand as far as balanced, still continuous at A.
  EXPECT_FLOAT_EQ(net.Quantity[fixed], net.Quantity[r1] + net.Quantity[r2]);
}

TEST_F(ParallelPair, CancelSeenAtAMeshLeavesStatusAlone) {
  ws.sim.SimCancel = 255;
  BalanceFlows(ws);
  EXPECT_EQ(ws.sim.SimStatus, 0);
  EXPECT_EQ(ws.sim.Sweeps, 0);
}

TEST_F(ParallelPair, NonConvergingModeListsTheMeshNumberAsAPosition) {
  ws.sim.SimMode = -1;
  ws.defaults.MaxIter = 1;
  BalanceFlows(ws);
  ASSERT_GE(net.Errorlist.size(), 1u);
  // Meshes 1 and 2 are reported against the airways at store positions 1 and 2.
  EXPECT_EQ(net.Errorlist[0], "101\tConverge Error");
  EXPECT_EQ(net.Comment[1].Trimmed().substr(0, 9), "Converge ");
  EXPECT_TRUE(net.BranchCode[1] & Bit::ErrorMark);
  EXPECT_EQ(ws.sim.SimStatus, 1);
}

TEST_F(BalanceFixture, LockedMeshKeepsItsStartFlows) {
  const int fixedQ = Airway(2, 12);
  const int a = Airway(3);
  const int b = Airway(5);
  net.BranchCode[fixedQ] |= Bit::FixedQuantity;
  Meshes({{-fixedQ, a, -b}});
  BalanceFlows(ws);
  EXPECT_EQ(std::vector<float>({net.Quantity[fixedQ], net.Quantity[a], net.Quantity[b]}),
            (std::vector<float>{12, 12, -12}));
  EXPECT_EQ(ws.sim.Sweeps, 1);
}

TEST_F(BalanceFixture, FixedQuantityPushesItsFlowIntoNeighbouringMeshes) {
  // Fixed 20 m3/s into A; two parallel returns share it by resistance.
  const int fixedQ = Airway(0, 20);
  const int r1 = Airway(1);
  const int r2 = Airway(9);
  net.BranchCode[fixedQ] |= Bit::FixedQuantity;
  Meshes({{-fixedQ, r1}, {r2, -r1}});
  BalanceFlows(ws);
  EXPECT_FLOAT_EQ(net.Quantity[fixedQ], 20);
  EXPECT_NEAR(net.Quantity[r1], 15, 0.001);
  EXPECT_NEAR(net.Quantity[r2], 5, 0.001);
}

TEST_F(BalanceFixture, DeadMeshTakesItsNeighboursCorrection) {
  const int fixed = Airway(0, 0);
  net.FanNumber[fixed] = -1;
  net.FanSlot[fixed] = -1;
  net.Pressure[fixed] = 100;
  const int r = Airway(1);
  const int dead1 = Airway(1);
  const int dead2 = Airway(1);
  Meshes({{fixed, r}, {dead1, dead2}});
  ws.defaults.MaxIter = 1;
  BalanceSweep(ws, false);
  EXPECT_NE(net.Quantity[fixed], 0);
  EXPECT_EQ(std::vector<float>({net.Quantity[dead1], net.Quantity[dead2], ws.sim.SimCorr}),
            std::vector<float>(3, net.Quantity[fixed]));
}

TEST_F(BalanceFixture, TheLastCorrectionCarriesIntoTheNextRun) {
  const int a = Airway(1);
  const int b = Airway(1);
  Meshes({{a, b}});
  ws.sim.SimCorr = 2.5f;
  BalanceSweep(ws, false);
  EXPECT_FLOAT_EQ(net.Quantity[a], 2.5f);
}

TEST_F(BalanceFixture, FansOnACurveFindTheirOperatingPoint) {
  // A single return R = 0.5 on one fan, two in parallel, then two in series.
  PutFan(1);
  const int fan = Airway(0, 30);
  net.FanNumber[fan] = 1;
  net.NoOfFans[fan] = 1;
  const int r = Airway(0.5f);
  Meshes({{fan, r}});
  const auto solve = [&](double slope, double static0) {
    BuildSimCurves(ws);
    BalanceFlows(ws);
    // static0 - slope Q = 0.5 Q^2
    EXPECT_NEAR(net.Quantity[fan], (-slope + std::sqrt(slope * slope + 2 * static0)), 0.001);
    EXPECT_NEAR(Residual(1), 0, 0.05);
  };
  solve(10, 2100);  // one fan: Q = 55.80 m3/s
  net.NoOfFans[fan] = 2;
  solve(5, 2100);
  net.BranchCode[fan] |= Bit::FansInSeries;
  solve(20, 4200);
}

TEST_F(PressureFixture, LockedChordCarriesTheLoadOfItsLoop) {
  const int fixedQ = Airway(2, 12);
  const int a = Airway(3, 12);
  const int b = Airway(5, -12);
  const int loose = Airway(0.25f, 3);  // in no mesh
  net.BranchCode[fixedQ] |= Bit::FixedQuantity;
  Meshes({{-fixedQ, a, -b}});
  ResolveFanLoads(ws);
  StoreAirwayPressures(ws);
  EXPECT_FLOAT_EQ(net.Pressure[fixedQ], 144.0f * (2 + 3 + 5));  // it has to add pressure
  EXPECT_FLOAT_EQ(net.Pressure[a], -144.0f * 3);
  EXPECT_FLOAT_EQ(net.Pressure[b], -144.0f * 5);
  EXPECT_FLOAT_EQ(net.Pressure[loose], 0.25f);  // the resistance stands as a marker
}

TEST_F(PressureFixture, FansLeaveOperatingPressureOrMarks) {
  PutFan(1);
  const int onCurve = Airway(0, 25);
  const int stalled = Airway(0, 5);
  const int negated = Airway(0, 300);
  const int fixedP = Airway(0.1f, 10);
  for (int i : {onCurve, stalled, negated}) {
    net.FanNumber[i] = 1;
    net.NoOfFans[i] = 1;
  }
  net.FanNumber[fixedP] = -1;
  net.Pressure[fixedP] = 432;
  const int r = Airway(1, 0);
  Meshes({{onCurve, r}, {stalled, r}, {negated, r}, {fixedP, r}});
  BuildSimCurves(ws);
  ResolveFanLoads(ws);
  StoreAirwayPressures(ws);
  EXPECT_FLOAT_EQ(net.Pressure[onCurve], 1850.0f);
  EXPECT_FLOAT_EQ(net.Pressure[stalled], kStallMark);
  EXPECT_FLOAT_EQ(net.Pressure[negated], kNegateMark);
  EXPECT_FLOAT_EQ(net.Pressure[fixedP], 432.0f);
  EXPECT_FLOAT_EQ(PressureDrop(net, onCurve), 1850.0f);
  EXPECT_FLOAT_EQ(PressureDrop(net, stalled), 2000.0f);  // the first static point
  EXPECT_FLOAT_EQ(PressureDrop(net, negated), 0.0f);
  EXPECT_FLOAT_EQ(PressureDrop(net, fixedP), 432.0f - 10.0f);
  net.BranchCode[stalled] |= Bit::FansInSeries;
  net.NoOfFans[stalled] = 3;
  EXPECT_FLOAT_EQ(PressureDrop(net, stalled), 6000.0f);
}

TEST_F(PressureFixture, FinishRunReversesNegativeFlowsThroughTheJournal) {
  JournalSpy journal(7, [this](int i) { return static_cast<double>(net.EntryNodeId[i]); });
  ws.journal = &journal;
  ws.defaults.MaxError = 0.05f;
  const int back = Airway(1, -8);
  net.Coord2[back] = {0, 4, 5, 6};
  net.EntryNodeId[back] = 11;
  net.ExitNodeId[back] = 22;
  net.BranchCode[back] |= Bit::ForceEntrySurface;
  net.LabelPos[back] = -3;
  const int tiny = Airway(1, -0.01f);
  const int fixedDirection = Airway(1, -5);
  net.BranchCode[fixedDirection] |= Bit::FixedDirection;
  const int fan = Airway(1, -5);
  net.FanNumber[fan] = 1;
  const int smallLabel = Airway(1, 2);
  net.LabelPos[smallLabel] = -0.2f;

  FinishRun(ws);

  EXPECT_FLOAT_EQ(net.Quantity[back], 8);
  EXPECT_EQ(net.EntryNodeId[back], 22);
  EXPECT_EQ(net.Coord1[back], (Coord3{0, 4, 5, 6}));
  EXPECT_EQ(net.BranchCode[back] & (Bit::ForceEntrySurface | Bit::ForceExitSurface),
            Bit::ForceExitSurface);
  EXPECT_FLOAT_EQ(net.LabelPos[back], 3);  // made positive, not negated
  EXPECT_FLOAT_EQ(net.LabelPos[smallLabel], 0.5f);
  EXPECT_EQ(
      std::vector<float>({net.Quantity[tiny], net.Quantity[fixedDirection], net.Quantity[fan]}),
      (std::vector<float>{-0.01f, -5, -5}));
  EXPECT_EQ(net.Errorlist, std::vector<std::string>{"104\tFan flow reversed"});
  EXPECT_EQ(net.Comment[fan].Trimmed(), "Flow Reverse");  // twelve characters hold it
  EXPECT_EQ(ws.sim.SimStatus, 2);
  EXPECT_TRUE(ws.sim.AirwayReversed);

  EXPECT_EQ(journal.entries, (std::vector<JournalSpy::Entry>{{back, UndoJournal::kBefore, 7, 11},
                                                             {back, UndoJournal::kAfter, 7, 22}}));
  EXPECT_EQ(journal.action, 8);
}

TEST_F(PressureFixture, FinishRunWithoutReversalsKeepsTheActionNumber) {
  JournalSpy journal(7);
  ws.journal = &journal;
  Airway(1, 5);
  FinishRun(ws);
  EXPECT_TRUE(journal.entries.empty());
  EXPECT_EQ(journal.action, 7);
}

TEST_F(PressureFixture, FinishRunAfterAFailureOnlySaysSo) {
  const int back = Airway(1, -8);
  ws.sim.SimStatus = 1;
  FinishRun(ws);
  EXPECT_FLOAT_EQ(net.Quantity[back], -8);
  EXPECT_STREQ(ws.sim.FormCaption, "Simulation Failed !");
  EXPECT_EQ(ui.ProgressCaption(), "Simulation Failed !");
}

TEST_F(PressureFixture, FixedDirectionsAskOnceAndNoKeepsThem) {
  const int a = Airway(1, -0.001f);  // below MaxError: FinishRun left it, this pass reverses it
  const int f1 = Airway(1, -3);
  const int f2 = Airway(1, -4);
  net.BranchCode[f1] |= Bit::FixedDirection;
  net.BranchCode[f2] |= Bit::FixedDirection;
  net.Comment[f2] = "Rev";
  ui.QueueAnswer(MsgAnswer::No);
  ApplyFixedDirections(ws);
  ASSERT_EQ(ui.MessageTexts().size(), 1u);
  EXPECT_EQ(ui.Records()[0].title, "Reverse airways");
  EXPECT_EQ(std::vector<float>({net.Quantity[a], net.Quantity[f1], net.Quantity[f2]}),
            (std::vector<float>{0.001f, -3, -4}));
  EXPECT_EQ(net.Errorlist, std::vector<std::string>{"103\tFixed direction violated!"});

  ui.ClearRecords();
  ui.QueueAnswer(MsgAnswer::Yes);
  ApplyFixedDirections(ws);
  EXPECT_EQ(ui.MessageTexts().size(), 1u);
  EXPECT_FLOAT_EQ(net.Quantity[f1], 3);
  EXPECT_FLOAT_EQ(net.Quantity[f2], 4);
}

// The node pressure walk as the store describes it: whole passes with a binary search each,
// until a pass changes nothing.
void PlainNodePressures(Network& net) {
  const int n = net.BranchCount;
  bool seeded = false;
  for (int i = 1; i <= n; ++i) {
    net.ToNodeP[i] = kUnreached;
    net.FromNodeP[i] = 0;
  }
  for (int i = 1; i <= n; ++i) {
    if (net.EntryNodeId[i] != SurfaceKey) continue;
    net.ToNodeP[i] = PressureDrop(net, i);
    seeded = true;
  }
  if (!seeded) {
    for (int i = 1; i <= n; ++i) net.ToNodeP[i] = 0;
    return;
  }
  bool changed = true;
  while (changed) {
    changed = false;
    for (int i = 1; i <= n; ++i) {
      if (net.ToNodeP[i] == kUnreached || net.ExitNodeId[i] == SurfaceKey) continue;
      const Key key = net.ExitNodeId[i];
      int lo = 0, hi = n + 1, found = 0;
      while (hi - lo > 1) {
        const int mid = (lo + hi) / 2;
        if (net.EntryNodeId[mid] == key) {
          found = mid;
          break;
        }
        if (net.EntryNodeId[mid] > key)
          lo = mid;
        else
          hi = mid;
      }
      if (found == 0) continue;
      while (found > 1 && net.EntryNodeId[found - 1] == key) --found;
      for (int j = found; j <= n && net.EntryNodeId[j] == key; ++j) {
        if (net.ToNodeP[j] != kUnreached) continue;
        net.ToNodeP[j] = net.ToNodeP[i] + PressureDrop(net, j);
        net.FromNodeP[j] = net.ToNodeP[i];
        changed = true;
      }
    }
  }
}

// Node links as two quadratic passes.
void PlainNodeLinks(Network& net, std::vector<std::int16_t>& links, std::vector<LinkRange>& range) {
  int pos = 0;
  for (int end = 1; end <= 2; ++end) {
    for (int i = 1; i <= net.BranchCount; ++i) {
      range[i][end][1] = pos;
      const Key own = end == 1 ? net.EntryNodeId[i] : net.ExitNodeId[i];
      for (int j = 1; j <= net.BranchCount; ++j) {
        const Key other = end == 1 ? net.ExitNodeId[j] : net.EntryNodeId[j];
        if (j != i && other == own) links[pos++] = static_cast<std::int16_t>(j);
      }
      range[i][end][2] = pos - 1;
    }
  }
}

// A random network of nodes 1..nodes plus the surface, sorted as the store is sorted.
void RandomNetwork(Network& net, std::mt19937& rng, int airways, int nodes, bool withSurface) {
  ClearStore(net);
  std::uniform_int_distribution<int> node(withSurface ? 0 : 1, nodes);
  std::uniform_real_distribution<float> pressure(-50, 50);
  std::uniform_int_distribution<int> kind(0, 9);
  const auto keyOf = [](int k) { return k == 0 ? SurfaceKey : Key{k} * 1000003; };
  for (int i = 1; i <= airways; ++i) {
    int a = node(rng), b = node(rng);
    while (b == a) b = node(rng);
    net.EntryNodeId[i] = keyOf(a);
    net.ExitNodeId[i] = keyOf(b);
    net.Pressure[i] = pressure(rng);
    net.Quantity[i] = pressure(rng);
    net.Resistance[i] = 0.01f;
    net.BranchCode[i] = Bit::Rectangular | (kind(rng) == 0 ? Bit::FixedQuantity : 0);
    net.AirwayNo[i] = i;
  }
  net.BranchCount = static_cast<std::int16_t>(airways);
  std::vector<int> order(static_cast<std::size_t>(airways) + 1);
  for (int i = 0; i <= airways; ++i) order[i] = i;
  std::stable_sort(order.begin() + 1, order.end(), [&net](int x, int y) {
    if (net.EntryNodeId[x] != net.EntryNodeId[y]) return net.EntryNodeId[x] > net.EntryNodeId[y];
    return net.ExitNodeId[x] > net.ExitNodeId[y];
  });
  ReorderAirways(net, order);
}

TEST(NodePressures, FastWalkEqualsThePlainPassesOnRandomNetworks) {
  std::mt19937 rng(20261123);
  HeadlessUi ui;
  Workspace ws(ui);
  for (int trial = 0; trial < 300; ++trial) {
    const int airways = 2 + static_cast<int>(rng() % 200);
    const int nodes = 1 + static_cast<int>(rng() % (airways / 2 + 2));
    RandomNetwork(ws.net, rng, airways, nodes, trial % 10 != 0);
    PropagateNodePressures(ws);
    const std::vector<float> to(ws.net.ToNodeP.begin(), ws.net.ToNodeP.begin() + airways + 1);
    const std::vector<float> from(ws.net.FromNodeP.begin(), ws.net.FromNodeP.begin() + airways + 1);
    PlainNodePressures(ws.net);
    for (int i = 1; i <= airways; ++i) {
      ASSERT_EQ(to[i], ws.net.ToNodeP[i]) << "trial " << trial << " airway " << i;
      ASSERT_EQ(from[i], ws.net.FromNodeP[i]) << "trial " << trial << " airway " << i;
    }
  }
}

TEST(NodeLinks, FastLinksEqualTheQuadraticPassesOnRandomNetworks) {
  std::mt19937 rng(77);
  HeadlessUi ui;
  Workspace ws(ui);
  for (int trial = 0; trial < 200; ++trial) {
    const int airways = 2 + static_cast<int>(rng() % 150);
    RandomNetwork(ws.net, rng, airways, 1 + static_cast<int>(rng() % (airways + 1)), true);
    BuildNodeLinks(ws);
    std::vector<std::int16_t> links(ws.net.NodeLinks.size());
    std::vector<LinkRange> range(ws.net.NodeLinkRange.size());
    PlainNodeLinks(ws.net, links, range);
    for (int i = 1; i <= airways; ++i) ASSERT_EQ(range[i], ws.net.NodeLinkRange[i]) << trial;
    const int used = range[airways][2][2] + 1;
    for (int k = 0; k < used; ++k) ASSERT_EQ(links[k], ws.net.NodeLinks[k]) << trial;
  }
}

TEST_F(PressureFixture, NodeLinksThatOverflowEndTheRun) {
  net.MaxAirways = 60;
  ResizeStore(net);
  for (int i = 0; i < 30; ++i) {
    const int a = Airway(1);
    net.EntryNodeId[a] = i % 2 ? SurfaceKey : 5;
    net.ExitNodeId[a] = i % 2 ? 5 : SurfaceKey;
  }
  EXPECT_THROW(BuildNodeLinks(ws), std::length_error);
}

TEST_F(PressureFixture, DerivedValues) {
  PutFan(1);
  ws.defaults.AirDensity = 1.2f;
  ws.defaults.PowerCost = 0.1f;
  ws.defaults.FanEffDefault = 0.8f;
  const int r = Airway(0.5f, 20);
  EXPECT_DOUBLE_EQ(AirwayPressureDrop(net, r), 200.0);
  EXPECT_DOUBLE_EQ(AirPower(net, r), 4.0);
  EXPECT_NEAR(YearlyPowerCost(ws, r), 4.0 * 0.1 * 24 * 365 / 0.8, 1e-6);
  const int fan = Airway(0, 31.415926f);
  net.FanNumber[fan] = 1;
  net.NoOfFans[fan] = 2;
  net.Pressure[fan] = 1500;
  net.CurveFraction[fan] = 0;
  // Two fans of 2 m: 2 x pi m2, 5 m/s, VP = 1.2 x 25 / 2 = 15 Pa.
  EXPECT_NEAR(FanVelocityPressure(ws, fan), 15.0, 1e-4);
  EXPECT_NEAR(FanInputPower(ws, fan), (15.0 + 1500.0) * 31.415926 / 1000.0 / 0.8, 1e-3);
  net.CurveFraction[fan] = 100;  // on the total curve the velocity pressure is in P already
  EXPECT_NEAR(FanInputPower(ws, fan), 1500.0 * 31.415926 / 1000.0 / 0.8, 1e-3);
  net.Pressure[fan] = kStallMark;
  EXPECT_EQ(FanVelocityPressure(ws, fan), 0);
  EXPECT_NEAR(FanInputPower(ws, fan), 2000.0 * 31.415926 / 1000.0 / 0.8, 1e-3);
  net.Pressure[fan] = kNegateMark;
  EXPECT_EQ(FanInputPower(ws, fan), 0);
}

}  // namespace
}  // namespace galeris
