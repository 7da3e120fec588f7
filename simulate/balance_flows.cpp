// Flow balancing by mesh corrections. The sweep is the hot path of the program: it runs on the
// store's flat arrays, allocates nothing and builds no text.
#include "simulate/balance_flows.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "core/number_format.h"
#include "simulate/fan_curves.h"

namespace galeris {
namespace {

constexpr std::uint8_t kCancel = 255;

// Marks the mesh's number, used as a store position, as still moving on the last sweep.
void ListNonConvergence(Network& net, SimRun& run, int m, float correction) {
  if (net.BranchCode[m] & Bit::ErrorMark) return;
  net.Errorlist.push_back(std::to_string(net.AirwayNo[m]) + "\tConverge Error");
  net.Comment[m] = "Converge " + FormatNumber(std::fabs(correction), "0.0");
  net.BranchCode[m] |= Bit::ErrorMark;
  run.SimStatus = 1;
}

}  // namespace

void ShowSweep(Workspace& ws, int sweeps, float worst) {
  const double shown = std::floor(static_cast<double>(worst) * 100.0) / 100.0;
  ws.ui.SetProgressLabels(std::to_string(sweeps), FormatNumber(shown, "0.00") + " m3/s");
}

bool KeepOnSimulating(Workspace& ws, int meshCount, int unconverged) {
  int percent = 100;
  if (meshCount > 0)
    percent = static_cast<int>(
        std::floor(static_cast<double>(meshCount - unconverged) / meshCount * 100.0));
  ws.sim.Converged = percent == 100;
  if (ws.sim.Converged) return false;
  return ws.ui.Message("Your Network only has a convergence of " + std::to_string(percent) +
                           "%\nDo you wish to keep on simulating ?",
                       MsgButtons::YesNo, MsgIcon::Question,
                       "Convergence Warning") == MsgAnswer::Yes;
}

void SuperposeStartFlows(Network& net, int meshCount) {
  float* q = net.Quantity.data();
  float* meshFlow = net.ChordWeight.data();
  const std::int16_t* member = net.MeshMember.data();
  const std::int32_t* start = net.MeshStart.data();
  for (int m = 1; m <= meshCount; ++m) meshFlow[m] = q[std::abs(member[start[m]])];
  for (int i = 1; i <= net.BranchCount; ++i) q[i] = 0;
  for (int m = 1; m <= meshCount; ++m) {
    const float flow = meshFlow[m];
    // The chord counts forward even in a locked mesh, whose first member is negative.
    q[std::abs(member[start[m]])] += flow;
    for (int k = start[m] + 1; k < start[m + 1]; ++k) {
      const int v = member[k];
      if (v > 0)
        q[v] += flow;
      else
        q[-v] -= flow;
    }
  }
}

SweepResult BalanceSweep(Workspace& ws, bool listNonConvergence) {
  Network& net = ws.net;
  SimRun& run = ws.sim;
  SweepResult result;
  float* q = net.Quantity.data();
  const float* r = net.Resistance.data();
  const float* fanSlot = net.FanSlot.data();
  const float* pressure = net.Pressure.data();
  const std::int16_t* member = net.MeshMember.data();
  const std::int32_t* start = net.MeshStart.data();
  const float maxError = ws.defaults.MaxError;
  const int meshCount = run.MeshCount;
  float corr = run.SimCorr;
  for (int m = 1; m <= meshCount; ++m) {
    if (run.SimCancel == kCancel) {
      result.Cancelled = true;
      break;
    }
    const int first = start[m];
    const int end = start[m + 1];
    if (member[first] < 0) continue;  // locked: its chord's flow is never corrected
    float numer = 0;
    float denom = 0;
    for (int k = first; k < end; ++k) {
      const int v = member[k];
      const int a = v < 0 ? -v : v;
      const float s = v < 0 ? -1.0f : 1.0f;
      const float flow = s * q[a];
      const float loss = std::fabs(flow * r[a]);
      if (fanSlot[a] != 0) {
        const FanPoint fan =
            EvaluateFanCurve(net, static_cast<int>(fanSlot[a]), q[a], a, pressure[a]);
        numer = numer + flow * loss - s * fan.FanP;
        denom = denom + 2.0f * loss - fan.Slope;
      } else {
        numer = numer + flow * loss;
        denom = denom + 2.0f * loss;
      }
    }
    // A dead mesh (no flow, no fan) keeps the last correction: its neighbour's kick.
    if (denom != 0) {
      corr = -numer / denom;
      const float size = std::fabs(corr);
      if (size > maxError) {
        ++result.Unconverged;
        if (size > result.WorstCorr) result.WorstCorr = size;
      }
    }
    for (int k = first; k < end; ++k) {
      const int v = member[k];
      if (v > 0)
        q[v] = q[v] + corr;
      else
        q[-v] = q[-v] - corr;
    }
    if (listNonConvergence && std::fabs(corr) > maxError) ListNonConvergence(net, run, m, corr);
  }
  run.SimCorr = corr;
  return result;
}

void BalanceFlows(Workspace& ws) {
  SimRun& run = ws.sim;
  const int maxIter = ws.defaults.MaxIter;
  SuperposeStartFlows(ws.net, run.MeshCount);
  run.Sweeps = 0;
  run.Converged = false;
  for (;;) {
    int sweep = 0;
    SweepResult last;
    for (;;) {
      const bool lastPermitted = run.SimMode == -1 && sweep == maxIter - 1;
      last = BalanceSweep(ws, lastPermitted);
      if (last.Cancelled) return;
      ++sweep;
      ++run.Sweeps;
      if (last.Unconverged == 0) break;
      if (run.ShowProgress == 1) ShowSweep(ws, sweep, last.WorstCorr);
      ws.ui.Yield();
      if (run.SimCancel == kCancel) {
        run.SimStatus = 1;
        return;
      }
      if (sweep >= maxIter) break;
    }
    if (!KeepOnSimulating(ws, run.MeshCount, last.Unconverged)) return;
  }
}

}  // namespace galeris
