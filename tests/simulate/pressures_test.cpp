// Results of a run: loads and fan marks, airway pressures, reversals with their journal
// entries, node pressures and node links (each compared with the plain quadratic walk of the
// store on many random networks), and the derived values.
#include "simulate/pressures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "tests/simulate/hand_mesh.h"

namespace galeris {
namespace {

using PressureFixture = test::HandMesh;
using test::JournalSpy;

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
  net.Coord1[back] = {0, 1, 2, 3};
  net.Coord2[back] = {0, 4, 5, 6};
  net.EntryNodeId[back] = 11;
  net.ExitNodeId[back] = 22;
  net.EntryNodeName[back] = "in";
  net.ExitNodeName[back] = "out";
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
  EXPECT_EQ(net.EntryNodeName[back].Trimmed(), "out");
  EXPECT_EQ(net.BranchCode[back] & (Bit::ForceEntrySurface | Bit::ForceExitSurface),
            Bit::ForceExitSurface);
  EXPECT_FLOAT_EQ(net.LabelPos[back], 3);  // made positive, not negated
  EXPECT_FLOAT_EQ(net.LabelPos[smallLabel], 0.5f);
  EXPECT_EQ(
      std::vector<float>({net.Quantity[tiny], net.Quantity[fixedDirection], net.Quantity[fan]}),
      (std::vector<float>{-0.01f, -5, -5}));
  EXPECT_EQ(net.Errorlist, std::vector<std::string>{"104\tFan flow reversed"});
  EXPECT_EQ(net.Comment[fan].Trimmed(), "Flow Reverse");  // twelve characters hold it
  EXPECT_TRUE(net.BranchCode[fan] & Bit::ErrorMark);
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
  ws.sim.SimStatus = 0;
  ws.sim.SimCancel = 255;
  ws.sim.ShowProgress = 0;
  ui.SetProgressCaption("other");
  FinishRun(ws);
  EXPECT_FLOAT_EQ(net.Quantity[back], -8);
  EXPECT_EQ(ui.ProgressCaption(), "other");  // a quiet run paints nothing
}

TEST_F(PressureFixture, ReverseAirwayIsOneSidedOnTheSurfaceBits) {
  const int i = Airway(1, -4);
  net.BranchCode[i] |= Bit::ForceEntrySurface;
  net.LabelPos[i] = 0.7f;
  ReverseAirway(net, i);
  EXPECT_EQ(net.BranchCode[i] & (Bit::ForceEntrySurface | Bit::ForceExitSurface),
            Bit::ForceEntrySurface | Bit::ForceExitSurface);
  EXPECT_FLOAT_EQ(net.LabelPos[i], -0.7f);
  EXPECT_FLOAT_EQ(net.Quantity[i], 4);
  const int plain = Airway(1, -4);
  ReverseAirway(net, plain);
  EXPECT_EQ(net.BranchCode[plain], Bit::Rectangular);
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

TEST_F(PressureFixture, FirstValueFoundWinsAtANodeReachedTwice) {
  // S -> A (drop -10) and S -> B (drop -1), A -> C and B -> C, then C -> S. Sorted by keys.
  const Key A = 30, B = 20, C = 10;
  const int sa = Airway(0), sb = Airway(0), ac = Airway(0), bc = Airway(0), cs = Airway(0);
  const auto set = [this](int i, Key in, Key out, float p) {
    net.EntryNodeId[i] = in;
    net.ExitNodeId[i] = out;
    net.Pressure[i] = p;
  };
  set(sa, SurfaceKey, A, -10);
  set(sb, SurfaceKey, B, -1);
  set(ac, A, C, -5);
  set(bc, B, C, -5);
  set(cs, C, SurfaceKey, -2);
  PropagateNodePressures(ws);
  EXPECT_FLOAT_EQ(net.ToNodeP[ac], -15);
  EXPECT_FLOAT_EQ(net.FromNodeP[cs], -15);  // through A, found first; B's way isn't compared
  EXPECT_FLOAT_EQ(net.ToNodeP[cs], -17);
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
