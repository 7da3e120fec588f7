// Newton balancing against Hardy Cross on generated mines with every kind of special airway,
// both at a tight MaxError: the same flows, fan duty points, error list and status. And the
// self-check: it passes a solved mine and catches a flow moved behind the solver's back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/headless_ui.h"
#include "simulate/newton_flows.h"
#include "simulate/simulate.h"
#include "tests/simulate/mesh_fixture.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

int Find(const Network& net, const std::function<bool(int)>& pick) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (pick(i)) return i;
  return 0;
}
int Tagged(const Network& net, const char* comment) {
  return Find(net, [&](int i) { return net.Comment[i].Trimmed() == comment; });
}

// A fan type whose curve runs from `first` m3/s to ten times that: off its curve where the
// airway's flow lies outside.
void PutOffCurveFan(Network& net, int i, float first) {
  const int f = Find(net, [&](int k) { return k <= net.FanMax && net.FanName[k].empty(); });
  net.FanName[f] = "Off curve";
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[f][j] = first * j;
    net.CurveP[f][j] = {0, 100.0f - 10.0f * j, 105.0f - 10.0f * j};
  }
  net.FanNumber[i] = static_cast<std::int16_t>(f);
  net.NoOfFans[i] = 1;
}

struct Variant {
  const char* name;
  std::function<void(Network&, const Defaults&)> apply;
  float fanMark = 0;  // a fan must end at this mark (stall or negate)
};

const Variant kVariants[] = {
    {"generated", [](Network&, const Defaults&) {}},
    {"main fans in parallel",
     [](Network& net, const Defaults&) { net.NoOfFans[Tagged(net, "Main Fan")] = 2; }},
    {"main fans in series on the total curve",
     [](Network& net, const Defaults&) {
       const int i = Tagged(net, "Main Fan");
       net.NoOfFans[i] = 2, net.BranchCode[i] |= Bit::FansInSeries, net.CurveFraction[i] = 100;
     }},
    {"main fan on a combo curve",
     [](Network& net, const Defaults&) { net.CurveFraction[Tagged(net, "Main Fan")] = 50; }},
    {"boosters on a combo curve",
     [](Network& net, const Defaults&) {
       for (int i = 1; i <= net.BranchCount; ++i)
         if (net.Comment[i].Trimmed() == "Booster") net.CurveFraction[i] = 30;
     }},
    {"fixed quantity",
     [](Network& net, const Defaults&) {
       const int i = Tagged(net, "Regulator");
       net.BranchCode[i] |= Bit::FixedQuantity, net.Quantity[i] = 5;
     }},
    {"fixed pressure",
     [](Network& net, const Defaults&) {
       const int i = Tagged(net, "Booster");
       net.FanNumber[i] = -1, net.Pressure[i] = 150;
     }},
    {"bulkhead",
     [](Network& net, const Defaults& d) {
       const int i = Tagged(net, "Regulator");
       net.ResType[i] = kUserGiven, net.Resistance[i] = static_cast<float>(d.HighResistance);
     }},
    {"negated fan",
     [](Network& net, const Defaults&) {
       PutOffCurveFan(
           net,
           Find(net,
                [&](int i) { return net.BranchName[i].Trimmed().rfind("Intake Shaft", 0) == 0; }),
           0.1f);
     },
     kNegateMark},
    {"stalled fan",
     [](Network& net, const Defaults&) { PutOffCurveFan(net, Tagged(net, "Regulator"), 100); },
     kStallMark},
};

struct Solved {
  HeadlessUi ui;
  Workspace ws{ui};
};

std::unique_ptr<Solved> Solve(const Variant& variant, SolverMethod method, int airways = 400) {
  auto s = std::make_unique<Solved>();
  GenerateMine(s->ws, airways, 7);
  s->ws.defaults.MaxError = 1e-5f;
  s->ws.defaults.MaxIter = 5000;
  variant.apply(s->ws.net, s->ws.defaults);
  s->ws.sim.ShowProgress = 0;
  s->ws.sim.Method = method;
  RunSimulation(s->ws);
  return s;
}

// The flow towards the larger end key, so that a reversal in one run only compares equal.
double KeyedFlow(const Network& net, int i) {
  return net.EntryNodeId[i] > net.ExitNodeId[i] ? net.Quantity[i] : -net.Quantity[i];
}

// The variants on a small mine, and a mine large enough that the Newton system is planned
// while the forest is grown, and the self-check runs beside the node links.
TEST(NewtonFlows, EqualsHardyCrossOnGeneratedMines) {
  std::vector<std::pair<const Variant*, int>> runs;
  for (const Variant& variant : kVariants) runs.emplace_back(&variant, 400);
  runs.emplace_back(&kVariants[0], 2500);
  for (const auto& [variantAt, airways] : runs) {
    const Variant& variant = *variantAt;
    SCOPED_TRACE(std::string(variant.name) + " " + std::to_string(airways));
    const auto hardy = Solve(variant, SolverMethod::HardyCross, airways);
    const auto newton = Solve(variant, SolverMethod::Newton, airways);
    const Network& a = hardy->ws.net;
    const Network& b = newton->ws.net;
    ASSERT_TRUE(hardy->ws.sim.Converged);
    EXPECT_TRUE(newton->ws.sim.Converged);
    EXPECT_EQ(newton->ws.sim.SimStatus, hardy->ws.sim.SimStatus);
    EXPECT_EQ(b.Errorlist, a.Errorlist);
    ASSERT_EQ(b.BranchCount, a.BranchCount);
    double largest = 0;
    std::map<int, int> at;
    for (int i = 1; i <= a.BranchCount; ++i) {
      largest = std::max(largest, std::fabs(double{a.Quantity[i]}));
      at[b.AirwayNo[i]] = i;
    }
    bool marked = variant.fanMark == 0;
    for (int i = 1; i <= a.BranchCount; ++i) {
      const int j = at.at(a.AirwayNo[i]);
      ASSERT_NEAR(KeyedFlow(b, j), KeyedFlow(a, i), 1e-4 * largest) << "airway " << a.AirwayNo[i];
      if (a.FanNumber[i] <= 0) continue;
      EXPECT_NEAR(b.Pressure[j], a.Pressure[i], std::fabs(a.Pressure[i]) * 1e-3) << a.AirwayNo[i];
      EXPECT_NEAR(b.Quantity[j], a.Quantity[i], std::fabs(a.Quantity[i]) * 1e-3 + 1e-4);
      marked = marked || b.Pressure[j] == variant.fanMark;
    }
    EXPECT_TRUE(marked);
    EXPECT_LT(newton->ws.sim.Check.Continuity, 1e-4);
    EXPECT_LT(newton->ws.sim.Check.Loop, 1e-2);
  }
}

// A plan made for other locked chords than the forest left is not used: the flows are those
// of a run that planned for itself.
TEST(NewtonFlows, APlanForOtherLocksIsMadeAgain) {
  test::MeshFixture given, own;
  for (test::MeshFixture* f : {&given, &own}) {
    GenerateMine(f->ws, 400, 7);
    f->Mesh();
    BuildSimCurves(f->ws);
    ASSERT_EQ(f->ws.sim.SimStatus, 0);
  }
  NewtonEnds other = NewtonEndsOf(given.ws.net);
  other.locked[Find(given.ws.net, [&](int i) { return other.locked[i] == 0; })] = 1;
  NewtonFlows(given.ws, PlanNewton(other));
  NewtonFlows(own.ws);
  for (int i = 1; i <= own.ws.net.BranchCount; ++i)
    ASSERT_EQ(given.ws.net.Quantity[i], own.ws.net.Quantity[i]) << i;
}

TEST(SolutionCheck, PassesASolvedMineAndCatchesAMovedFlow) {
  auto s = Solve(kVariants[0], SolverMethod::HardyCross);
  Network& net = s->ws.net;
  const SolutionCheck solved = CheckSolution(s->ws);
  ASSERT_TRUE(solved.Done);
  EXPECT_EQ(solved.Continuity, s->ws.sim.Check.Continuity);
  EXPECT_LT(solved.Continuity, 1e-3);
  EXPECT_LT(solved.Loop, 1e-2);
  net.Quantity[Find(net, [&](int k) { return net.FanNumber[k] == 0 && net.Quantity[k] > 1; })] +=
      0.5f;
  const SolutionCheck moved = CheckSolution(s->ws);
  EXPECT_NEAR(moved.Continuity, 0.5, 1e-3);
  EXPECT_GT(moved.Loop, 1e-3);
  EXPECT_EQ(SolutionCheckText({true, 1.5e-5, 0.25}), "continuity 1.5e-05 m3/s loop 0.25 Pa");
}

}  // namespace
}  // namespace galeris
