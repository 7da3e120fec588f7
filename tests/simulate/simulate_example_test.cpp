// The example mine that ships with the program: it solves clean, and once solved and saved it
// reloads as a balanced network that needs a single sweep.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/headless_ui.h"
#include "files/network_file.h"
#include "simulate/simulate.h"
#include "tests/simulate/simulate_physics_support.h"

namespace galeris {
namespace {

bool Load(Workspace& ws, const std::string& path) {
  ws.MergeBase = 1;
  ws.net.FileName = path;
  return LoadNetwork(ws);
}

SimOutcome Solve(Workspace& ws) {
  ws.sim.SimMode = kModeSimulate;
  ws.sim.ShowProgress = 1;
  return RunSimulation(ws);
}

TEST(ExampleMine, SolvesCleanAndReloadsBalanced) {
  const std::string example = test::SourcePath("examples/example_mine.sim");
  ASSERT_TRUE(std::filesystem::exists(example)) << example;
  HeadlessUi ui;
  Workspace ws(ui);
  ASSERT_TRUE(Load(ws, example));
  const int airways = ws.net.BranchCount;
  Solve(ws);
  EXPECT_EQ(ws.sim.SimStatus, 0) << (ws.net.Errorlist.empty() ? "" : ws.net.Errorlist[0]);
  EXPECT_EQ(ws.net.NetworkBalanced, -1);
  EXPECT_EQ(ws.net.BranchCount, airways);
  const test::PhysicsReport physics = test::CheckPhysics(ws);
  EXPECT_LE(physics.worstLoop, physics.loopTolerance);

  const std::string solved = test::ScratchDir() + "solved.sim";
  ws.net.FileName = solved;
  ASSERT_TRUE(SaveNetwork(ws));
  HeadlessUi ui2;
  Workspace again(ui2);
  ASSERT_TRUE(Load(again, solved));
  Solve(again);
  EXPECT_EQ(again.sim.SimStatus, 0);
  EXPECT_EQ(again.sim.Sweeps, 1);
  EXPECT_TRUE(ui2.MessageTexts().empty());
}

}  // namespace
}  // namespace galeris
