// Flow balancing on hand-built meshes: start flows, convergence, locked and dead meshes, the
// convergence question, cancel, and the non-convergence listing.
#include "simulate/balance_flows.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/simulate/hand_mesh.h"

namespace galeris {
namespace {

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

TEST_F(ParallelPair, PercentCountsTheMeshesOfTheLastSweep) {
  // Mesh 1 converges at once when its fixed pressure is already met; mesh 2 does not.
  ws.defaults.MaxIter = 1;
  net.Quantity[fixed] = 45;
  net.Quantity[r2] = 0;
  net.Pressure[fixed] = 45.0f * 45.0f;  // all flow through r1 balances mesh 1
  BalanceFlows(ws);
  ASSERT_FALSE(ui.MessageTexts().empty());
  EXPECT_EQ(ui.MessageTexts()[0],
            "Your Network only has a convergence of 50%\nDo you wish to keep on simulating ?");
}

TEST_F(ParallelPair, LabelsShowTheSweepAndTheWorstCorrection) {
  ws.defaults.MaxIter = 1;
  BalanceFlows(ws);
  EXPECT_EQ(ui.AttemptLabel(), "1");
  EXPECT_EQ(ui.ErrorLabel().find('.'), ui.ErrorLabel().size() - 8);  // "x.xx m3/s"
  EXPECT_EQ(ui.ErrorLabel().substr(ui.ErrorLabel().size() - 5), " m3/s");
}

TEST_F(ParallelPair, QuietRunsLeaveTheLabelsAlone) {
  ws.sim.ShowProgress = 0;
  BalanceFlows(ws);
  EXPECT_EQ(ui.AttemptLabel(), "");
  EXPECT_GT(ui.YieldCount(), 0);  // a quiet run still yields
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
  // From the same start, airways already marked are skipped.
  net.Errorlist.clear();
  ws.sim.SimStatus = 0;
  net.Quantity[fixed] = 5;
  net.Quantity[r1] = net.Quantity[r2] = 0;
  ws.sim.SimCorr = 0;
  net.BranchCode[2] |= Bit::ErrorMark;
  BalanceFlows(ws);
  EXPECT_TRUE(net.Errorlist.empty());
  EXPECT_EQ(ws.sim.SimStatus, 0);
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

TEST_F(BalanceFixture, AllZeroWithoutFansStaysAtZero) {
  const int a = Airway(1);
  const int b = Airway(2);
  Meshes({{a, -b}});
  BalanceFlows(ws);
  EXPECT_EQ(std::pair(net.Quantity[a], net.Quantity[b]), std::pair(0.0f, 0.0f));
  EXPECT_EQ(ws.sim.Sweeps, 1);
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

}  // namespace
}  // namespace galeris
