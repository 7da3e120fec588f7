// Contaminant spread and sourcing on hand networks whose flows are set directly (continuity
// holds at every node).
#include "simulate/contaminants.h"

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "tests/simulate/simulate_physics_support.h"

namespace galeris {
namespace {

using test::Point;

// Airways are named by AirwayNo, the order drawn, which survives the spread's sort.
struct Smoke : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  void SetUp() override { Reset(); }
  void Reset() {
    ClearStore(net);
    net.BranchCount = 0;
    test::PrepareMine(ws);
    net.NetworkBalanced = -1;  // the flows below stand as a solution
  }
  int Flow(Point a, Point b, float q) {
    const int i = test::Link(net, a, b, 0.1f);
    net.Quantity[i] = q;
    return net.AirwayNo[i] = i;
  }
  int At(int no) const { return test::AtNumber(net, no); }
  void Source(int no, float concentration) {
    net.BranchCode[At(no)] |= Bit::ContaminantSource;
    net.Contaminant[At(no)] = concentration;
  }
  int Concentration(int no) const { return net.SmokeData[At(no)][2]; }
  float Time(int no) const { return net.SmokeTime[At(no)]; }
  float Travel(int no) const { return net.Length[At(no)] / (net.Quantity[At(no)] / 16.0f); }

  // Shafts 1 and 2 feed airways 3 and 4, which join and leave as 5, then up shaft 6.
  void Junction(float q3, float q4) {
    const Point j{1050, 1100, 500}, k{1050, 1200, 500};
    Flow({1000, 1000, 1000}, {1000, 1000, 500}, q3);
    Flow({1100, 1000, 1000}, {1100, 1000, 500}, q4);
    Flow({1000, 1000, 500}, j, q3);
    Flow({1100, 1000, 500}, j, q4);
    Flow(j, k, q3 + q4);
    Flow(k, {1050, 1200, 1000}, q3 + q4);
  }
};

TEST_F(Smoke, JunctionMixesByFlow) {
  struct Case {
    float q3, q4, c3, c4;
    int mixed;
  } cases[] = {{10, 10, 100, 0, 50}, {30, 10, 100, 0, 75}, {10, 10, 100, 200, 150}};
  for (const Case& k : cases) {
    Reset();
    Junction(k.q3, k.q4);
    Source(3, k.c3);
    if (k.c4 > 0) Source(4, k.c4);
    const SpreadResult r = SimulateContaminant(ws);
    ASSERT_EQ(r.End, SpreadEnd::Finished);
    EXPECT_EQ(Concentration(5), k.mixed);
    EXPECT_NEAR(Time(5), Travel(3), 0.01f);
  }
}

TEST_F(Smoke, TheInflowReachedFirstGivesTheTimeWhateverTheLargerFlow) {
  Junction(1, 19);
  Source(3, 100);  // slow, from time 0
  Source(2, 100);  // reaches 4 later, though by 4 the smoke comes sooner
  SimulateContaminant(ws);
  EXPECT_NEAR(Time(4), Travel(2), 0.01f);
  ASSERT_LT(Time(4) + Travel(4), Travel(3));
  EXPECT_NEAR(Time(5), Travel(3), 0.01f);
}

TEST_F(Smoke, FixedInjectionAddsToWhatArrivesCumulativeKeepsItsValue) {
  for (std::int16_t fixed : {1, 0}) {
    Reset();
    Flow({1000, 1000, 1000}, {1000, 1000, 500}, 10);
    Flow({1000, 1000, 500}, {1000, 1100, 500}, 10);
    Flow({1000, 1100, 500}, {1000, 1100, 1000}, 10);
    Source(1, 100);
    Source(2, 50);
    ws.defaults.SmokeAddSource = fixed;
    ASSERT_EQ(SimulateContaminant(ws).End, SpreadEnd::Finished);
    EXPECT_EQ(Concentration(2), fixed ? 150 : 50);
    EXPECT_EQ(Concentration(1), 100);
  }
}

TEST_F(Smoke, OnlyMixedValuesAreClippedAtTwentyThousand) {
  for (std::int16_t fixed : {0, 1}) {
    Reset();
    Flow({1000, 1000, 1000}, {1000, 1000, 500}, 10);
    Flow({1000, 1000, 500}, {1000, 1100, 500}, 10);
    Flow({1000, 1100, 500}, {1000, 1100, 1000}, 10);
    Source(1, 15000);
    Source(2, 30000);
    ws.defaults.SmokeAddSource = fixed;
    ui.ClearRecords();
    ui.QueueAnswer(MsgAnswer::Yes);
    const SpreadResult r = SimulateContaminant(ws);
    ASSERT_EQ(r.End, SpreadEnd::Finished);
    EXPECT_EQ(Concentration(1), 15000);
    // Cumulative: the source keeps its 30000. Fixed injection: 15000 arrives and 30000 is
    // added, and the mix is held at the bound.
    EXPECT_EQ(Concentration(2), fixed ? 20000 : 30000) << fixed;
    EXPECT_EQ(Concentration(3), 20000) << fixed;
    // A clipped mix never settles, so the question comes after a hundred passes.
    EXPECT_EQ(r.MixingPasses, 100) << fixed;
    EXPECT_EQ(ui.MessageTexts().size(), 1u) << fixed;
  }
}

TEST_F(Smoke, RefusalsAndSilentEnds) {
  Junction(10, 10);
  EXPECT_EQ(SimulateContaminant(ws).End, SpreadEnd::NoSource);
  Source(3, 100);
  net.Quantity[At(3)] = 0;  // a source with no flow isn't released
  EXPECT_EQ(SimulateContaminant(ws).End, SpreadEnd::NoSource);
  EXPECT_TRUE(ui.MessageTexts().empty());
  net.BranchCode[At(6)] |= Bit::ContaminantSource;  // the upcast leaves to the surface
  const auto problems = CheckContaminantSources(net);
  ASSERT_EQ(problems.size(), 2u);
  EXPECT_NE((problems[0].Reason + problems[1].Reason).find("surface"), std::string::npos);

  net.NetworkBalanced = 0;
  const auto unbalanced = [] {};  // a run that does not balance
  EXPECT_EQ(SimulateContaminant(ws, {unbalanced, {}, {}}).End, SpreadEnd::NotBalanced);
  EXPECT_FALSE(TraceContaminant(ws, unbalanced));
  for (const char* what : {"smoke", "smoke sourcing"})
    EXPECT_TRUE(ui.Said(std::string("Network must be successfully balanced before ") + what +
                        " simulation can work"));
}

TEST_F(Smoke, RecirculationAsksEveryHundredPassesAndCancelKeepsTheReach) {
  // 99 parts of 100 go round the loop J-K-J: the mixing creeps towards the source value.
  const Point j{1000, 1100, 500}, k{1000, 1200, 500};
  Flow({1000, 1000, 1000}, j, 1);
  Flow(j, k, 100);
  Flow(k, j, 99);
  Flow(k, {1000, 1200, 1000}, 1);
  Source(1, 20000);
  ui.QueueAnswer(MsgAnswer::No);
  ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_EQ(SimulateContaminant(ws).MixingPasses, 200);
  EXPECT_EQ(ui.MessageTexts().size(), 2u);
  EXPECT_TRUE(
      ui.Said("There seems to be a problem converging flows - do you want to accept the "
              "best guess ?"));

  ui.OnYield([this](int) { ws.sim.SimCancel = 255; });  // Cancel after the first round
  EXPECT_EQ(SimulateContaminant(ws).MixingPasses, 0);
  EXPECT_EQ(Concentration(2), 1);  // reached, never mixed
}

TEST_F(Smoke, SliderRangeAndLegend) {
  net.BranchCount = 2;
  net.SmokeData[1][2] = 5;
  net.SmokeTime[1] = 300.7f;
  net.SmokeData[2][2] = 1;  // concentration 1 doesn't count
  net.SmokeTime[2] = 900;
  EXPECT_EQ(SliderRange(net), 301);
  net.SmokeTime[1] = 20000;
  EXPECT_EQ(SliderRange(net), kSliderTimeLimit);  // the three-hour cut
  std::array<float, 6> legend{1, 2, 3, 4, 5, 6}, retained = legend;
  LegendAfterSpread(1000, true, true, legend);
  EXPECT_EQ(legend, retained);
  LegendAfterSpread(1000, true, false, legend);
  EXPECT_EQ(legend, (std::array<float, 6>{1000, 800, 600, 400, 200, 0}));
}

TEST_F(Smoke, SourcingMarksPotentialClearAndSmoke) {
  // Intake 1 to P; 2 from P to Q, 3 from P to R; upcasts 4 from Q (smoke seen), 5 from R (clear).
  const Point p{1000, 1000, 500}, q{1100, 1000, 500}, r{1000, 1100, 500};
  Flow({1000, 1000, 1000}, p, 20);
  Flow(p, q, 10);
  Flow(p, r, 10);
  Flow(q, {1100, 1000, 1000}, 10);
  Flow(r, {1000, 1100, 1000}, 10);
  net.SmokeData[At(4)][1] = ReportPin::Smoke;
  net.SmokeData[At(5)][1] = ReportPin::Clear;
  RebuildNodes(net, ws.defaults, ui);  // node keys as a balancing run leaves them
  ASSERT_TRUE(TraceContaminant(ws));
  namespace T = TraceState;
  const std::int16_t expected[] = {0, T::Clear, T::Potential, T::Clear, T::Smoke, T::Clear};
  for (int no = 1; no <= 5; ++no) EXPECT_EQ(net.SmokeData[At(no)][2], expected[no]) << no;
}

}  // namespace
}  // namespace galeris
