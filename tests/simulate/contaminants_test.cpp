// Contaminant spread and sourcing on hand networks whose flows are set directly (continuity
// holds at every node), and the spread on a solved generated mine.
#include "simulate/contaminants.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/headless_ui.h"
#include "tests/simulate/simulate_physics_support.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

using test::Point;

struct Smoke : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  void SetUp() override { Reset(); }
  void Reset() {
    ClearStore(net);
    test::PrepareMine(ws);
    net.NetworkBalanced = -1;  // the flows below stand as a solution
  }

  // An airway with a given flow; returns its AirwayNo, which survives the spread's sort.
  int Flow(Point a, Point b, float q) {
    const int i = test::Link(net, a, b, 0.1f);
    net.Quantity[i] = q;
    net.AirwayNo[i] = i;
    return i;
  }
  int At(int airwayNo) const {
    for (int i = 1; i <= net.BranchCount; ++i)
      if (net.AirwayNo[i] == airwayNo) return i;
    return 0;
  }
  void Source(int airwayNo, float concentration) {
    net.BranchCode[At(airwayNo)] |= Bit::ContaminantSource;
    net.Contaminant[At(airwayNo)] = concentration;
  }
  int Concentration(int airwayNo) const { return net.SmokeData[At(airwayNo)][2]; }
  float Time(int airwayNo) const { return net.SmokeTime[At(airwayNo)]; }
  // Travel time through an airway of the hand networks: 4 x 4 m section.
  float Travel(int airwayNo) const {
    const int i = At(airwayNo);
    return net.Length[i] / (net.Quantity[i] / 16.0f);
  }

  // Two intake shafts (airways 1 and 2) feed a and b, which join at J and leave as c.
  struct Joined {
    int a, b, c;
  };
  Joined Junction(float qa, float qb) {
    const Point j{1050, 1100, 500}, k{1050, 1200, 500};
    Flow({1000, 1000, 1000}, {1000, 1000, 500}, qa);
    Flow({1100, 1000, 1000}, {1100, 1000, 500}, qb);
    const int a = Flow({1000, 1000, 500}, j, qa);
    const int b = Flow({1100, 1000, 500}, j, qb);
    const int c = Flow(j, k, qa + qb);
    Flow(k, {1050, 1200, 1000}, qa + qb);
    return {a, b, c};
  }
};

TEST_F(Smoke, JunctionMixesByFlowAndTimesFollowTheFirstArrival) {
  struct Case {
    float qa, qb, ca, cb;
    int mixed;
  } cases[] = {
      {10, 10, 100, 0, 50},     // equal inflows of 100 and 0
      {30, 10, 100, 0, 75},     // flow-weighted
      {10, 10, 100, 200, 150},  // two sources
  };
  for (const Case& k : cases) {
    Reset();
    const auto [a, b, c] = Junction(k.qa, k.qb);
    Source(a, k.ca);
    if (k.cb > 0) Source(b, k.cb);
    const SpreadResult r = SimulateContaminant(ws);
    ASSERT_EQ(r.End, SpreadEnd::Finished);
    EXPECT_EQ(Concentration(c), k.mixed);
    EXPECT_FLOAT_EQ(r.SmokeMax, std::max({k.ca, k.cb, float(k.mixed)}));
    // Both sources start at 0: the first inflow in the store's order carries the time.
    EXPECT_NEAR(Time(c), Travel(a), 0.01f);
  }
}

TEST_F(Smoke, TheInflowReachedFirstGivesTheTimeWhateverTheLargerFlow) {
  // A slow source a, and a fast stream b reached later from a source in its shaft (airway 2).
  const auto [a, b, c] = Junction(1, 19);
  Source(a, 100);
  Source(2, 100);
  SimulateContaminant(ws);
  EXPECT_NEAR(Time(b), Travel(2), 0.01f);
  ASSERT_LT(Time(b) + Travel(b), Travel(a));
  EXPECT_NEAR(Time(c), Travel(a), 0.01f);  // not by b, though that way is sooner
}

TEST_F(Smoke, SourceModes) {
  // A source downstream of another: fixed injection adds its own value to what arrives,
  // cumulative keeps its own value.
  struct Case {
    std::int16_t addSource;
    int expected;
  } cases[] = {{1, 150}, {0, 50}};
  for (const Case& k : cases) {
    Reset();
    const int up = Flow({1000, 1000, 1000}, {1000, 1000, 500}, 10);
    const int down = Flow({1000, 1000, 500}, {1000, 1100, 500}, 10);
    Flow({1000, 1100, 500}, {1000, 1100, 1000}, 10);
    Source(up, 100);
    Source(down, 50);
    ws.defaults.SmokeAddSource = k.addSource;
    ASSERT_EQ(SimulateContaminant(ws).End, SpreadEnd::Finished);
    EXPECT_EQ(Concentration(down), k.expected);
    EXPECT_EQ(Concentration(up), 100);
  }
}

TEST_F(Smoke, NothingToReleaseEndsSilently) {
  const int a = Junction(10, 10).a;
  EXPECT_EQ(SimulateContaminant(ws).End, SpreadEnd::NoSource);
  Source(a, 100);
  net.Quantity[At(a)] = 0;  // a source with no flow isn't released
  EXPECT_EQ(SimulateContaminant(ws).End, SpreadEnd::NoSource);
  EXPECT_TRUE(ui.MessageTexts().empty());
  net.BranchCode[At(6)] |= Bit::ContaminantSource;  // the exhaust shaft leaves to the surface
  const auto problems = CheckContaminantSources(net);
  ASSERT_EQ(problems.size(), 2u);
  const std::string reasons = problems[0].Reason + problems[1].Reason;
  EXPECT_NE(reasons.find("no flow"), std::string::npos);
  EXPECT_NE(reasons.find("surface"), std::string::npos);
}

TEST_F(Smoke, NoSolutionIsRefusedWithTheMessage) {
  Junction(10, 10);
  net.NetworkBalanced = 0;
  int runs = 0;
  SpreadDisplay display;
  display.Simulate = [&runs] { ++runs; };  // a run that does not balance
  EXPECT_EQ(SimulateContaminant(ws, display).End, SpreadEnd::NotBalanced);
  EXPECT_FALSE(TraceContaminant(ws, display.Simulate));
  EXPECT_EQ(runs, 2);
  EXPECT_TRUE(ui.Said("Network must be successfully balanced before smoke simulation can work"));
  EXPECT_TRUE(
      ui.Said("Network must be successfully balanced before smoke sourcing simulation can work"));
}

TEST_F(Smoke, RecirculationAsksEveryHundredPasses) {
  // 99 parts of 100 go round the loop J-K-J: the mixing creeps towards the source value.
  const Point j{1000, 1100, 500}, k{1000, 1200, 500};
  const int in = Flow({1000, 1000, 1000}, j, 1);
  Flow(j, k, 100);
  Flow(k, j, 99);
  Flow(k, {1000, 1200, 1000}, 1);
  Source(in, 20000);
  ui.QueueAnswer(MsgAnswer::No);
  ui.QueueAnswer(MsgAnswer::Yes);
  const SpreadResult r = SimulateContaminant(ws);
  EXPECT_EQ(r.MixingPasses, 200);
  EXPECT_EQ(ui.MessageTexts().size(), 2u);
  EXPECT_TRUE(
      ui.Said("There seems to be a problem converging flows - do you want to accept the "
              "best guess ?"));
}

TEST_F(Smoke, CancelKeepsWhatWasReached) {
  const auto [a, b, c] = Junction(10, 10);
  Source(a, 100);
  ui.OnYield([this](int) { ws.sim.SimCancel = 255; });  // Cancel at the first yield
  const SpreadResult r = SimulateContaminant(ws);
  EXPECT_EQ(r.End, SpreadEnd::Finished);
  EXPECT_EQ(r.MixingPasses, 0);
  EXPECT_EQ(Concentration(a), 100);
  EXPECT_EQ(Concentration(c), 1);  // reached by the spread, never mixed
  (void)b;
}

TEST_F(Smoke, SliderRangeLegendAndTime) {
  Junction(10, 10);
  for (int i = 1; i <= net.BranchCount; ++i) net.SmokeTime[i] = kNeverReached;
  net.SmokeData[1][2] = 5;
  net.SmokeTime[1] = 300.7f;
  net.SmokeData[2][2] = 1;  // concentration 1 doesn't count
  net.SmokeTime[2] = 900;
  EXPECT_EQ(SliderRange(net), 301);
  net.SmokeTime[1] = 20000;
  EXPECT_EQ(SliderRange(net), kSliderTimeLimit);  // the three-hour cut
  EXPECT_EQ(SliderTimeText(kSliderTimeLimit), "3:00:00");

  std::array<float, 6> legend{1, 2, 3, 4, 5, 6};
  LegendAfterSpread(1000, true, true, legend);
  EXPECT_EQ(legend, (std::array<float, 6>{1, 2, 3, 4, 5, 6}));  // retained
  LegendAfterSpread(1000, true, false, legend);
  EXPECT_EQ(legend, (std::array<float, 6>{1000, 800, 600, 400, 200, 0}));
}

TEST_F(Smoke, SourcingMarksPotentialClearAndSmoke) {
  // Intake a to P; b from P to Q, c from P to R; exhausts d from Q and e from R.
  const Point p{1000, 1000, 500}, q{1100, 1000, 500}, r{1000, 1100, 500};
  const int a = Flow({1000, 1000, 1000}, p, 20);
  const int b = Flow(p, q, 10);
  const int c = Flow(p, r, 10);
  const int d = Flow(q, {1100, 1000, 1000}, 10);
  const int e = Flow(r, {1000, 1100, 1000}, 10);
  net.SmokeData[At(d)][1] = ReportPin::Smoke;
  net.SmokeData[At(e)][1] = ReportPin::Clear;
  RebuildNodes(net, ws.defaults, ui);  // node keys as a balancing run leaves them
  ASSERT_TRUE(TraceContaminant(ws));
  namespace T = TraceState;
  const std::pair<int, std::int16_t> expected[] = {
      {a, T::Clear}, {b, T::Potential}, {c, T::Clear}, {d, T::Smoke}, {e, T::Clear}};
  for (auto [airway, state] : expected) EXPECT_EQ(net.SmokeData[At(airway)][2], state) << airway;
  ClearSmokeSourcing(net);
  EXPECT_EQ(net.SmokeData[At(d)][1], 0);
}

TEST(SmokeOnAMine, FlowWeightedMixingHoldsWhereverTheSmokeGoes) {
  HeadlessUi ui;
  Workspace ws{ui};
  GenerateMine(ws, 600, 3);
  ws.sim.ShowProgress = 0;
  ws.defaults.MaxIter = 5000;
  ws.defaults.MaxError = 0.001f;
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; i += 97) {
    net.BranchCode[i] |= Bit::ContaminantSource;
    net.Contaminant[i] = 1000;
  }
  const SpreadResult r = SimulateContaminant(ws);
  ASSERT_EQ(r.End, SpreadEnd::Finished);
  ASSERT_GT(r.Reached, 20);
  int checked = 0;
  for (int k = 1; k <= net.BranchCount && net.SmokeQueue[k] != 0; ++k) {
    const int i = net.SmokeQueue[k];
    if (net.BranchCode[i] & Bit::ContaminantSource) continue;
    double sumQ = 0, sumC = 0;
    const auto& range = net.NodeLinkRange[i][1];
    for (int l = range[1]; l <= range[2]; ++l) {
      const int p = net.NodeLinks[l];
      sumQ += net.Quantity[p];
      sumC += net.SmokeData[p][2] * double{net.Quantity[p]};
    }
    if (sumQ <= ws.defaults.MaxError) continue;
    EXPECT_NEAR(net.SmokeData[i][2], sumC / sumQ, 1.5) << "airway " << net.AirwayNo[i];
    EXPECT_LT(net.SmokeTime[i], kNeverReached);
    ++checked;
  }
  EXPECT_GT(checked, 20);
}

}  // namespace
}  // namespace galeris
