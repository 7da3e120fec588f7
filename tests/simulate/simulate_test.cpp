// The simulation driver on whole networks: the ends of a run, the diagnostic modes, cancel,
// quiet runs, re-seeding, and solved networks that obey continuity and close every loop.
#include "simulate/simulate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/headless_ui.h"
#include "files/defaults_file.h"
#include "files/network_file.h"
#include "tests/simulate/simulate_physics_support.h"

namespace galeris {
namespace {

using test::Link;
using test::Point;

struct SimFixture : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  void SetUp() override {
    test::PrepareMine(ws);
    ws.defaults.MaxError = 0.001f;
    ws.defaults.MaxIter = 2000;
  }

  // Intake shaft to A, a level A-B-C-D with a door B-D, and two exhaust shafts from B and C.
  // A-D is drawn against the air. Returns the two exhaust shafts.
  std::pair<int, int> Level() {
    const Point top{100, 100, 1000}, a{100, 100, 500}, b{600, 100, 500}, c{600, 600, 500},
        d{100, 600, 500};
    Link(net, top, a, 0.05f);
    Link(net, a, b, 0.2f);
    Link(net, d, a, 0.3f);
    Link(net, d, c, 0.2f);
    Link(net, b, c, 0.5f);
    Link(net, b, d, 20.0f);  // a door
    const int fanB = Link(net, b, {600, 100, 1000}, 0.1f);
    const int fanC = Link(net, c, {600, 600, 1000}, 0.1f);
    return {fanB, fanC};
  }

  // The level with one fan on the static curve in each exhaust shaft.
  void LevelWithFans() {
    auto [fanB, fanC] = Level();
    test::PutFan(net, fanB, 1, false, 0);
    test::PutFan(net, fanC, 1, false, 0);
  }

  int Find(int airwayNo) { return test::AtNumber(net, airwayNo); }

  void ExpectSolvedPhysics() {
    const test::PhysicsReport r = test::CheckPhysics(ws);
    double largest = 0;
    for (int i = 1; i <= net.BranchCount; ++i)
      largest = std::max(largest, std::fabs(static_cast<double>(net.Quantity[i])));
    EXPECT_LT(r.worstContinuity, 1e-5 * largest + 1e-4);
    EXPECT_LE(r.worstLoop, r.loopTolerance);
    EXPECT_LE(r.worstNodePressure, r.loopTolerance);
  }

  // A full run that ends clean, with a solution that obeys the physics.
  void SolveClean() {
    Run();
    EXPECT_EQ(ws.sim.SimStatus, 0);
    ExpectSolvedPhysics();
  }

  SimOutcome Run(std::int16_t mode = kModeSimulate) {
    ws.sim.SimMode = mode;
    ws.sim.ShowProgress = 1;
    return RunSimulation(ws);
  }
};

TEST_F(SimFixture, NothingToSimulate) {
  EXPECT_FALSE(Run().Ran);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{"No data to simulate"});
  Link(net, {100, 100, 1000}, {100, 100, 500}, 1);
  ui.ClearRecords();
  EXPECT_FALSE(Run().Ran);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{"Not enough data to simulate"});
  EXPECT_FALSE(ui.ProgressShown());
  EXPECT_EQ(ui.BusyDepth(), 0);
}

TEST_F(SimFixture, ParallelFansOnStaticCurvesSolveClean) {
  LevelWithFans();
  const SimOutcome outcome = Run();
  EXPECT_TRUE(outcome.Ran && !outcome.ShowErrorList);
  EXPECT_EQ(ws.sim.SimStatus, 0);
  EXPECT_EQ(net.NetworkBalanced, -1);
  EXPECT_EQ(ui.ProgressValues(),
            (std::vector<int>{0, 10, 20, 30, 40, 50, 60, 70, 80, 87, 95, 100}));
  for (int i = 1; i <= net.BranchCount; ++i) EXPECT_GE(net.Quantity[i], 0) << i;
  EXPECT_GT(net.Quantity[Find(1)], 10);
  ExpectSolvedPhysics();
  // The airway drawn D -> A is reversed through the run: the air goes A -> D.
  EXPECT_EQ(net.Coord1[Find(3)], (Coord3{0, 100, 100, 500}));
  EXPECT_TRUE(ws.sim.AirwayReversed);
  // Solved again from its own flows, it needs one sweep.
  Run();
  EXPECT_EQ(ws.sim.Sweeps, 1);
  // The non-converging mode finds nothing on a converged network.
  ui.ClearRecords();
  Run(kModeNonConverging);
  EXPECT_TRUE(ui.Said("There are NO major convergence problems"));
}

TEST_F(SimFixture, ReversedFanFlowEndsWithWarnings) {
  auto [fanB, fanC] = Level();
  test::PutFan(net, fanB, 1, false, 0);
  // A strong fixed pressure on C's shaft drives air down B's shaft against its weak fan.
  net.FanNumber[fanC] = -1;
  net.Pressure[fanC] = 20000;
  for (int j = 1; j <= 10; ++j) net.CurveP[1][j] = {0, 220.0f - 20.0f * j, 230.0f - 20.0f * j};
  const SimOutcome outcome = Run();
  EXPECT_EQ(ws.sim.SimStatus, 2);
  EXPECT_TRUE(outcome.ShowErrorList);
  EXPECT_STREQ(outcome.ErrorListCaption, "Warning-reversals");
  EXPECT_EQ(net.NetworkBalanced, -1);
  EXPECT_NE(std::find(net.Errorlist.begin(), net.Errorlist.end(), "7\tFan flow reversed"),
            net.Errorlist.end());
  const int b = Find(7);
  EXPECT_GT(net.Quantity[b], 0);  // swapped all the same by the fixed-direction pass
  EXPECT_EQ(net.Coord1[b][3], 1000);
}

TEST_F(SimFixture, CheckFailureStopsBeforeMeshing) {
  Level();
  Link(net, {5000, 5000, 500}, {5100, 5000, 500}, 1);  // goes nowhere
  const SimOutcome outcome = Run();
  EXPECT_EQ(ws.sim.SimStatus, 1);
  EXPECT_STREQ(outcome.ErrorListCaption, "Sim Fail Error List");
  EXPECT_STREQ(ws.sim.FormCaption, "Simulation Failed !");
  EXPECT_EQ(net.NetworkBalanced, 0);
  EXPECT_EQ(ui.ProgressValues().back(), 30);
}

TEST_F(SimFixture, CancelledRunLeavesThePressuresOfTheLastFullRun) {
  LevelWithFans();
  Run();
  std::map<int, float> before;
  for (int i = 1; i <= net.BranchCount; ++i) before[net.AirwayNo[i]] = net.Pressure[i];
  ui.QueueInput(std::string("3"));
  ReseedAirflows(ws);
  ui.OnYield([&](int) {
    if (ui.ProgressCaption() == "Balancing airflows") ws.sim.SimCancel = 255;
  });
  Run();
  EXPECT_STREQ(ws.sim.FormCaption, "Simulation Failed !");
  for (int i = 1; i <= net.BranchCount; ++i)
    EXPECT_EQ(net.Pressure[i], before[net.AirwayNo[i]]) << net.AirwayNo[i];
}

TEST_F(SimFixture, QuietRunShowsNoFormButFinishes) {
  LevelWithFans();
  ws.sim.ShowProgress = 0;
  ws.sim.SimMode = 0;
  RunSimulation(ws);
  for (const auto& r : ui.Records()) EXPECT_NE(r.kind, UiRecord::Kind::Progress);
  EXPECT_TRUE(ui.ProgressValues().empty());
  EXPECT_EQ(net.NetworkBalanced, -1);
}

TEST_F(SimFixture, NoRunStartsWhileOneIsUnderWay) {
  Level();
  ws.sim.Running = true;
  EXPECT_FALSE(Run().Ran);
  EXPECT_TRUE(ui.Records().empty());
}

TEST_F(SimFixture, DiagnosticModesAnswerCleanNetworks) {
  LevelWithFans();
  Run(kModeFindBulkheads);
  EXPECT_TRUE(ui.Said("There are NO unnecessary bulkheads."));
  EXPECT_EQ(net.NetworkBalanced, 0);
  Run(kModeRemoveBulkheads);
  EXPECT_TRUE(ui.Said("There were NO unnecessary bulkheads removed."));
  Run(kModeRestrictiveFans);
  EXPECT_TRUE(ui.Said("There are NO fans that are being restricted by other fans."));
  ui.ClearRecords();
  const SimOutcome outcome = Run(kModeDuplicates);
  EXPECT_TRUE(ui.MessageTexts().empty());
  EXPECT_FALSE(outcome.ShowErrorList);
  EXPECT_EQ(ui.ProgressValues().back(), 50);
  EXPECT_EQ(net.NetworkBalanced, 0);
}

TEST_F(SimFixture, StageOverrunEndsTheRunWithAMessage) {
  auto [fanB, fanC] = Level();
  test::PutFan(net, fanB, 1, false, 0);
  test::PutFan(net, fanC, 2, false, 0);
  net.FanMax = 1;  // two arrangements, one slot
  Run();
  EXPECT_EQ(ws.sim.SimStatus, 1);
  EXPECT_FALSE(ws.sim.Running);
  EXPECT_EQ(ui.BusyDepth(), 0);
  EXPECT_TRUE(ui.Said("Simulation stopped"));
}

TEST_F(SimFixture, ReseedWritesTheWholePartIntoFreeAirways) {
  Level();
  net.BranchCode[2] |= Bit::FixedQuantity;
  net.Quantity[2] = 7;
  ui.QueueInput(std::string("12.9"));
  EXPECT_TRUE(ReseedAirflows(ws));
  ASSERT_EQ(ui.Records().size(), 1u);
  EXPECT_EQ(ui.Records()[0].title, "Re-seed airflows");
  EXPECT_EQ(ui.Records()[0].text,
            "Warning !  This will re-seed all airways (except fixed airways) to a specified "
            "value.  Subsequent resimulation will allow Galeris to attempt to rebalance the "
            "network.\nPlease enter your seed value");
  EXPECT_FLOAT_EQ(net.Quantity[1], 12);
  EXPECT_FLOAT_EQ(net.Quantity[2], 7);
  for (auto input : {std::optional<std::string>(""), std::optional<std::string>(),
                     std::optional<std::string>("lots")}) {
    ui.QueueInput(input);
    EXPECT_FALSE(ReseedAirflows(ws));
  }
  EXPECT_TRUE(ui.Said("The seed value must be a number"));
  EXPECT_FLOAT_EQ(net.Quantity[1], 12);
}

// The example mine is shipped solved, so that its plans and summary show real flows at once:
// solving it again moves no airway's flow by more than the balancing tolerance.
TEST(ShippedExample, SolvingItChangesNoFlow) {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths.ProgramFolder = ws.paths.TempFolder = test::ScratchDir();
  SetBuiltInDefaults(ws);
  ws.net.FileName = test::SourcePath("examples/example_mine.sim");
  ASSERT_TRUE(LoadNetwork(ws));
  std::map<std::int32_t, float> shipped;
  for (int i = 1; i <= ws.net.BranchCount; ++i) shipped[ws.net.AirwayNo[i]] = ws.net.Quantity[i];
  ws.sim.ShowProgress = 0;
  RunSimulation(ws);
  ASSERT_EQ(ws.sim.SimStatus, 0);
  for (int i = 1; i <= ws.net.BranchCount; ++i)
    EXPECT_NEAR(ws.net.Quantity[i], shipped[ws.net.AirwayNo[i]], ws.defaults.MaxError)
        << "airway " << ws.net.AirwayNo[i];
}

}  // namespace
}  // namespace galeris
