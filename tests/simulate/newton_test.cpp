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

#include "core/headless_ui.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

namespace galeris {
namespace {

int Find(const Network& net, const std::function<bool(int)>& pick) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (pick(i)) return i;
  return 0;
}
int ByComment(const Network& net, const char* comment) {
  return Find(net, [&](int i) { return net.Comment[i].Trimmed() == comment; });
}
int IntakeShaft(const Network& net) {
  return Find(net,
              [&](int i) { return net.BranchName[i].Trimmed().rfind("Intake Shaft", 0) == 0; });
}

// A fan type whose curve starts at `first` m3/s and ends at ten times that: off its curve
// where the airway's flow lies outside.
int PutOffCurveFan(Network& net, int i, float first) {
  const int f = Find(net, [&](int k) { return k <= net.FanMax && net.FanName[k].empty(); });
  net.FanName[f] = "Off curve";
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[f][j] = first * j;
    net.CurveP[f][j] = {0, 100.0f - 10.0f * j, 105.0f - 10.0f * j};
    net.CurveEff[f][j] = 60;
  }
  net.FanNumber[i] = static_cast<std::int16_t>(f);
  net.NoOfFans[i] = 1;
  return i;
}

struct Variant {
  const char* name;
  std::function<void(Workspace&)> apply;
};

const Variant kVariants[] = {
    {"generated", [](Workspace&) {}},
    {"main fans in parallel",
     [](Workspace& ws) { ws.net.NoOfFans[ByComment(ws.net, "Main Fan")] = 2; }},
    {"main fans in series on the total curve",
     [](Workspace& ws) {
       const int i = ByComment(ws.net, "Main Fan");
       ws.net.NoOfFans[i] = 2;
       ws.net.BranchCode[i] |= Bit::FansInSeries;
       ws.net.CurveFraction[i] = 100;
     }},
    {"main fan on a combo curve",
     [](Workspace& ws) { ws.net.CurveFraction[ByComment(ws.net, "Main Fan")] = 50; }},
    {"boosters on a combo curve",
     [](Workspace& ws) {
       for (int i = 1; i <= ws.net.BranchCount; ++i)
         if (ws.net.Comment[i].Trimmed() == "Booster") ws.net.CurveFraction[i] = 30;
     }},
    {"fixed quantity",
     [](Workspace& ws) {
       const int i = ByComment(ws.net, "Regulator");
       ws.net.BranchCode[i] |= Bit::FixedQuantity;
       ws.net.Quantity[i] = 5;
     }},
    {"fixed pressure",
     [](Workspace& ws) {
       const int i = ByComment(ws.net, "Booster");
       ws.net.FanNumber[i] = -1;
       ws.net.Pressure[i] = 150;
     }},
    {"bulkhead",
     [](Workspace& ws) {
       const int i = ByComment(ws.net, "Regulator");
       ws.net.ResType[i] = kUserGiven;
       ws.net.Resistance[i] = static_cast<float>(ws.defaults.HighResistance);
     }},
    {"negated fan", [](Workspace& ws) { PutOffCurveFan(ws.net, IntakeShaft(ws.net), 0.1f); }},
    {"stalled fan",
     [](Workspace& ws) { PutOffCurveFan(ws.net, ByComment(ws.net, "Regulator"), 100); }},
};

struct Solved {
  HeadlessUi ui;
  Workspace ws{ui};
  SimOutcome outcome;
};

std::unique_ptr<Solved> Solve(int airways, const Variant& variant, SolverMethod method) {
  auto s = std::make_unique<Solved>();
  GenerateMine(s->ws, airways, 7);
  s->ws.defaults.MaxError = 1e-5f;
  s->ws.defaults.MaxIter = 5000;
  variant.apply(s->ws);
  s->ws.sim.ShowProgress = 0;
  s->ws.sim.SimMode = kModeSimulate;
  s->ws.sim.Method = method;
  s->outcome = RunSimulation(s->ws);
  return s;
}

// The flow of an airway in the direction of its larger end key, so that a reversal in one
// run and not the other compares equal.
double KeyedFlow(const Network& net, int i) {
  return net.EntryNodeId[i] > net.ExitNodeId[i] ? net.Quantity[i] : -net.Quantity[i];
}

std::map<int, int> Positions(const Network& net) {
  std::map<int, int> at;
  for (int i = 1; i <= net.BranchCount; ++i) at[net.AirwayNo[i]] = i;
  return at;
}

TEST(NewtonFlows, EqualsHardyCrossOnGeneratedMines) {
  for (const Variant& variant : kVariants) {
    SCOPED_TRACE(variant.name);
    const auto hardy = Solve(400, variant, SolverMethod::HardyCross);
    const auto newton = Solve(400, variant, SolverMethod::Newton);
    const Network& a = hardy->ws.net;
    const Network& b = newton->ws.net;
    ASSERT_TRUE(hardy->ws.sim.Converged);
    EXPECT_TRUE(newton->ws.sim.Converged);
    EXPECT_EQ(newton->ws.sim.SimStatus, hardy->ws.sim.SimStatus);
    EXPECT_EQ(b.Errorlist, a.Errorlist);
    ASSERT_EQ(b.BranchCount, a.BranchCount);
    double largest = 0;
    for (int i = 1; i <= a.BranchCount; ++i)
      largest = std::max(largest, std::fabs(double{a.Quantity[i]}));
    const auto at = Positions(b);
    for (int i = 1; i <= a.BranchCount; ++i) {
      const int j = at.at(a.AirwayNo[i]);
      ASSERT_NEAR(KeyedFlow(b, j), KeyedFlow(a, i), 1e-4 * largest) << "airway " << a.AirwayNo[i];
      if (a.FanNumber[i] <= 0) continue;
      const double duty = std::fabs(a.Pressure[i]) * 1e-3 + 1e-3;
      EXPECT_NEAR(b.Pressure[j], a.Pressure[i], duty) << "fan airway " << a.AirwayNo[i];
      EXPECT_NEAR(std::fabs(b.Quantity[j]), std::fabs(a.Quantity[i]),
                  std::fabs(a.Quantity[i]) * 1e-3 + 1e-4);
    }
    EXPECT_LT(newton->ws.sim.Check.Continuity, 1e-3);
    EXPECT_LT(newton->ws.sim.Check.Loop, 0.01);
  }
}

// The variants reach what their names say: the fan off its curve stands at its mark.
TEST(NewtonFlows, VariantsReachTheirFanStates) {
  const auto named = [](const std::string& name) {
    return *std::find_if(std::begin(kVariants), std::end(kVariants),
                         [&](const Variant& v) { return v.name == name; });
  };
  const auto negated = Solve(400, named("negated fan"), SolverMethod::Newton);
  const auto stalled = Solve(400, named("stalled fan"), SolverMethod::Newton);
  const auto marked = [](const Network& net, float mark) {
    return Find(net, [&](int i) { return net.FanNumber[i] > 0 && net.Pressure[i] == mark; }) > 0;
  };
  EXPECT_TRUE(marked(negated->ws.net, kNegateMark));
  EXPECT_TRUE(marked(stalled->ws.net, kStallMark));
}

TEST(SolutionCheck, PassesASolvedMineAndCatchesAMovedFlow) {
  auto s = Solve(400, kVariants[0], SolverMethod::HardyCross);
  Network& net = s->ws.net;
  const SolutionCheck solved = CheckSolution(s->ws);
  ASSERT_TRUE(solved.Done);
  EXPECT_EQ(solved.Continuity, s->ws.sim.Check.Continuity);
  EXPECT_LT(solved.Continuity, 1e-3);
  EXPECT_LT(solved.Loop, 0.05);
  const int i = Find(net, [&](int k) { return net.FanNumber[k] == 0 && net.Quantity[k] > 1; });
  net.Quantity[i] += 0.5f;
  const SolutionCheck moved = CheckSolution(s->ws);
  EXPECT_NEAR(moved.Continuity, 0.5, 1e-3);
  EXPECT_GT(moved.Loop, 1e-3);
  EXPECT_EQ(SolutionCheckText({true, 1.5e-5, 0.25}), "continuity 1.5e-05 m3/s loop 0.25 Pa");
}

}  // namespace
}  // namespace galeris
