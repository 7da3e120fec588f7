// Hand-built mines for the simulation tests, and the physical checks a solved
// network must pass: continuity at every node and node pressures that close round every loop.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/workspace.h"
#include "simulate/simulate.h"
#include "tests/support/test_support.h"

namespace galeris::test {

inline constexpr std::int32_t kSurfaceRL = 1000;

struct Point {
  int x, y, z;
};

// The surface at RL 1000 and one fan type: Q 10..100 m3/s, static 3000 Pa falling 20 Pa per
// m3/s, total 150 Pa above static.
inline void PrepareMine(Workspace& ws) {
  Network& net = ws.net;
  net.RLCount = 1;
  net.RLName[1] = "SURFACE";
  net.RLBound[1] = {0, 2000, kSurfaceRL};
  net.FanName[1] = "Main fan";
  net.FanDiameter[1] = 2.5f;
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[1][j] = 10.0f * j;
    net.CurveP[1][j] = {0, 3200.0f - 200.0f * j, 3350.0f - 200.0f * j};
    net.CurveEff[1][j] = static_cast<std::int16_t>(50 + 3 * j);
  }
}

// An airway of user-given resistance from a to b.
inline int Link(Network& net, Point a, Point b, float resistance) {
  const int i = AddAirway(net, a.x, a.y, a.z, b.x, b.y, b.z);
  net.ResType[i] = 50;
  net.Resistance[i] = resistance;
  net.LabelPos[i] = 0.5f;
  return i;
}

inline void PutFan(Network& net, int i, int count, bool series, int curveFraction) {
  net.FanNumber[i] = 1;
  net.NoOfFans[i] = static_cast<std::int16_t>(count);
  if (series) net.BranchCode[i] |= Bit::FansInSeries;
  net.CurveFraction[i] = static_cast<std::int16_t>(curveFraction);
}

struct PhysicsReport {
  double worstContinuity = 0;    // m3/s
  double worstLoop = 0;          // Pa
  double worstNodePressure = 0;  // Pa, the run's FromNodeP and ToNodeP against the fresh ones
  double loopTolerance = 0;      // Pa, what MaxError allows
};

// Continuity at every node, and a pressure at every node found afresh from the solved flows
// along a spanning tree, which must close on every other airway. Fixed quantities and
// blockages carry whatever pressure their loop needs, so they are left out of the closure.
inline PhysicsReport CheckPhysics(Workspace& ws) {
  Network& net = ws.net;
  PhysicsReport report;
  BuildSimCurves(ws);
  std::map<Key, double> balance;
  std::vector<double> drop(static_cast<std::size_t>(net.BranchCount) + 1);
  std::vector<bool> free(drop.size());
  double denominators = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const double q = net.Quantity[i];
    balance[net.EntryNodeId[i]] -= q;
    balance[net.ExitNodeId[i]] += q;
    double d = -net.Resistance[i] * q * std::fabs(q);
    double slope = 0;
    if (net.FanSlot[i] != 0) {
      const FanPoint fan = EvaluateFanCurve(net, static_cast<int>(net.FanSlot[i]), net.Quantity[i],
                                            i, net.Pressure[i]);
      d += fan.FanP;
      slope = fan.Slope;
    }
    drop[i] = d;
    free[i] =
        !(net.BranchCode[i] & Bit::FixedQuantity) && net.Resistance[i] < ws.defaults.HighResistance;
    if (free[i]) denominators += 2 * net.Resistance[i] * std::fabs(q) - slope;
  }
  for (const auto& [key, sum] : balance)
    report.worstContinuity = std::max(report.worstContinuity, std::fabs(sum));
  // Node pressures by a walk over the free airways from the surface.
  std::map<Key, double> p{{SurfaceKey, 0.0}};
  for (bool grew = true; grew;) {
    grew = false;
    for (int i = 1; i <= net.BranchCount; ++i) {
      if (!free[i]) continue;
      const Key a = net.EntryNodeId[i], b = net.ExitNodeId[i];
      if (p.count(a) && !p.count(b)) {
        p[b] = p[a] + drop[i];
        grew = true;
      } else if (p.count(b) && !p.count(a)) {
        p[a] = p[b] - drop[i];
        grew = true;
      }
    }
  }
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (!free[i]) continue;
    const Key a = net.EntryNodeId[i], b = net.ExitNodeId[i];
    if (!p.count(a) || !p.count(b)) continue;
    report.worstLoop = std::max(report.worstLoop, std::fabs(p[a] + drop[i] - p[b]));
  }
  for (int i = 1; i <= net.BranchCount; ++i) {
    const Key a = net.EntryNodeId[i], b = net.ExitNodeId[i];
    if (net.ToNodeP[i] == kUnreached || !p.count(a) || !p.count(b)) continue;
    report.worstNodePressure =
        std::max({report.worstNodePressure, std::fabs(net.FromNodeP[i] - p[a]),
                  std::fabs(net.ToNodeP[i] - p[b])});
  }
  report.loopTolerance = ws.defaults.MaxError * denominators;
  return report;
}

}  // namespace galeris::test
