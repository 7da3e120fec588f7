// Contaminant spread and sourcing. Both walk the node links that the balancing left: an
// airway's inflows are the airways ending where it begins, its outflows those beginning where
// it ends.
#include "simulate/contaminants.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/number_format.h"
#include "simulate/simulate.h"

namespace galeris {
namespace {

constexpr std::uint8_t kCancel = 255;
constexpr double kSmokePi = 3.1415927;
// The slider's seconds become days over this divisor, everywhere the slider is shown as a time.
constexpr double kSliderDay = 86404.0;
constexpr int kInflows = 1, kOutflows = 2;

bool Cancelled(const Workspace& ws) {
  return ws.sim.SimCancel == kCancel;
}

// Runs the airflow simulation when no solution stands; true when one stands afterwards.
bool EnsureBalanced(Workspace& ws, const std::function<void()>& simulate) {
  if (ws.net.NetworkBalanced != 0) return true;
  if (simulate) {
    simulate();
  } else {
    ws.sim.ShowProgress = 1;
    ws.sim.SimMode = 0;
    RunSimulation(ws);
  }
  return ws.net.NetworkBalanced != 0;
}

template <class Visit>
void ForEachLink(const Network& net, int i, int side, Visit visit) {
  const auto& range = net.NodeLinkRange[i][side];
  for (std::int32_t k = range[1]; k <= range[2]; ++k) visit(static_cast<int>(net.NodeLinks[k]));
}

bool ExitsToSurface(const Network& net, int i) {
  return net.ExitNodeId[i] == SurfaceKey || (net.BranchCode[i] & Bit::ForceExitSurface);
}

// The cross-section by the airway's shape bits, later bits overriding, without services.
double SmokeArea(const Network& net, int i) {
  const std::int32_t code = net.BranchCode[i];
  double area = 0;
  if (code & Bit::Round) area = double{net.Dim[i][2]} * net.Dim[i][2] / 4.0 * kSmokePi;
  if (code & Bit::Rectangular) area = double{net.Dim[i][1]} * net.Dim[i][2];
  if (code & Bit::Custom) area = net.Dim[i][2];
  return area;
}

// A mixed value is clipped at the bound; a source keeps its own value, as far as 16 bits hold it.
std::int16_t ClippedConcentration(double c) {
  return static_cast<std::int16_t>(
      RoundHalfEven(std::clamp(c, -32767.0, double{kMaxConcentration})));
}

std::int16_t SourceConcentration(double c) {
  return static_cast<std::int16_t>(RoundHalfEven(std::clamp(c, -32768.0, 32767.0)));
}

// Step one of the spread: times and concentrations reset, sources released. Returns the
// number of released sources; the queue gets the sources that mix with their inflows.
int ReleaseSources(Workspace& ws, int& queueLength) {
  Network& net = ws.net;
  const bool fixedInjection = ws.defaults.SmokeAddSource != 0;
  int sources = 0;
  queueLength = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.SmokeTime[i] = kNeverReached;
    net.SmokeQueue[i] = 0;
    net.SmokeData[i][2] = 0;
    if (!(net.BranchCode[i] & Bit::ContaminantSource) || !(net.Quantity[i] > 0)) continue;
    net.SmokeTime[i] = 0;
    net.SmokeData[i][2] = SourceConcentration(net.Contaminant[i]);
    ++sources;
    // A cumulative source stays out of the queue and keeps its value.
    if (fixedInjection && net.EntryNodeId[i] != SurfaceKey)
      net.SmokeQueue[++queueLength] = static_cast<std::int16_t>(i);
  }
  return sources;
}

// Rounds over the store until nothing new is reached: every airway with a concentration that
// doesn't leave to the surface passes a mark of 1 to the airways leaving its exit.
void SpreadRounds(Workspace& ws, const SpreadDisplay& display, int& queueLength) {
  Network& net = ws.net;
  const float maxError = ws.defaults.MaxError;
  for (int round = 1; round <= kSpreadRounds; ++round) {
    int spread = 0, visited = 0;
    for (int i = 1; i <= net.BranchCount && !Cancelled(ws); ++i) {
      if (net.SmokeData[i][2] == 0 || ExitsToSurface(net, i)) continue;
      ++visited;
      ForEachLink(net, i, kOutflows, [&](int j) {
        if (net.SmokeData[j][2] != 0 || !(std::fabs(net.Quantity[j]) > maxError)) return;
        // A fixed-injection source that rounds to 0 is queued already: the queue stays in bounds.
        if (queueLength + 1 >= static_cast<int>(net.SmokeQueue.size())) return;
        net.SmokeData[j][2] = 1;
        net.SmokeQueue[++queueLength] = static_cast<std::int16_t>(j);
        ++spread;
      });
    }
    if (display.ShowSpread)
      display.ShowSpread(round, spread,
                         net.BranchCount > 0 ? double(visited) / net.BranchCount : 0);
    ws.ui.Yield();
    if (spread == 0 || Cancelled(ws)) return;
  }
}

// One mixing pass over the queue: each airway takes the flow-weighted concentration of its
// inflows (plus its own source in fixed injection) and its arrival time from the inflow that
// was reached first. An airway none of whose inflows moved since it was last worked out would
// come to the same values, less than half a unit from its stored concentration, so it is
// passed over: `stale` marks those whose inflows moved, and those clipped at the bound, whose
// change stands at every pass. Returns the largest change, or a
// negative value when an inflow that carries the time has no velocity.
double MixingPass(Workspace& ws, int queueLength, std::vector<char>& stale) {
  Network& net = ws.net;
  const float maxError = ws.defaults.MaxError;
  const double injection = ws.defaults.SmokeAddSource;
  double change = 0;
  for (int k = 1; k <= queueLength && !Cancelled(ws); ++k) {
    const int i = net.SmokeQueue[k];
    if (!stale[i]) continue;
    stale[i] = 0;
    int best = i;
    double sumQ = 0, sumC = 0;
    ForEachLink(net, i, kInflows, [&](int p) {
      sumQ += net.Quantity[p];
      sumC += std::abs(net.SmokeData[p][2]) * double{net.Quantity[p]};
      if (net.SmokeTime[best] > net.SmokeTime[p]) best = p;
    });
    const double c = sumQ > maxError ? sumC / std::fabs(sumQ) + injection * net.Contaminant[i] : 0;
    change = std::max(change, std::fabs(c - net.SmokeData[i][2]));
    const std::int16_t concentration = ClippedConcentration(c);
    if (std::fabs(c - concentration) >= 1) stale[i] = 1;
    bool moved = concentration != net.SmokeData[i][2];
    net.SmokeData[i][2] = concentration;
    if (net.SmokeTime[best] != kNeverReached && net.SmokeTime[i] > net.SmokeTime[best]) {
      const double velocity = net.Quantity[best] / SmokeArea(net, best);
      if (velocity == 0 || std::isnan(velocity)) return -1;
      const float time = static_cast<float>(net.Length[best] / velocity + net.SmokeTime[best]);
      moved = moved || time != net.SmokeTime[i];
      net.SmokeTime[i] = time;
    }
    if (moved) ForEachLink(net, i, kOutflows, [&stale](int j) { stale[j] = 1; });
  }
  return change;
}

// Mixing passes until no concentration moves by 1 or more; every hundred passes the user may
// accept the best guess. False when a pass failed.
bool MixConcentrations(Workspace& ws, const SpreadDisplay& display, int queueLength, int& passes) {
  int sinceQuestion = 0;
  std::vector<char> stale(static_cast<std::size_t>(ws.net.BranchCount) + 1, 1);
  while (!Cancelled(ws)) {
    const double change = MixingPass(ws, queueLength, stale);
    if (change < 0) return false;
    ++passes;
    if (display.ShowConvergence) display.ShowConvergence((1000.0 - change) / 1000.0);
    ws.ui.Yield();
    if (change < 1) return true;
    if (++sinceQuestion >= kMixingPassesBeforeQuestion) {
      if (ws.ui.AskYesNo("There seems to be a problem converging flows - do you want to accept "
                         "the best guess ?",
                         "Convergence problem"))
        return true;
      sinceQuestion = 0;
    }
  }
  return true;
}

int CountReached(const Network& net) {
  int reached = 0;
  for (int i = 1; i <= net.BranchCount; ++i)
    reached += net.SmokeData[i][2] != 0 || net.SmokeTime[i] != kNeverReached ? 1 : 0;
  return reached;
}

// The trace's walks: from every airway in `from`, airways on one side that pass `admit` take
// `state`, until nothing changes.
template <class Admit>
void TraceWalk(Network& net, std::vector<int> from, int side, std::int16_t state, Admit admit) {
  while (!from.empty()) {
    const int i = from.back();
    from.pop_back();
    const bool blocked = side == kInflows ? net.EntryNodeId[i] == SurfaceKey ||
                                                (net.BranchCode[i] & Bit::ForceEntrySurface)
                                          : ExitsToSurface(net, i);
    if (blocked) continue;
    ForEachLink(net, i, side, [&](int p) {
      if (!admit(p)) return;
      net.SmokeData[p][2] = state;
      from.push_back(p);
    });
  }
}

// Every airway with this pin takes the state; their positions are returned.
std::vector<int> PinnedAirways(Network& net, std::int16_t pin, std::int16_t state) {
  std::vector<int> pinned;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.SmokeData[i][1] != pin) continue;
    net.SmokeData[i][2] = state;
    pinned.push_back(i);
  }
  return pinned;
}

}  // namespace

SpreadResult SimulateContaminant(Workspace& ws, const SpreadDisplay& display) {
  SpreadResult result;
  if (!EnsureBalanced(ws, display.Simulate)) {
    ws.ui.Inform("Network must be successfully balanced before smoke simulation can work");
    result.End = SpreadEnd::NotBalanced;
    return result;
  }
  ws.sim.SimCancel = 0;
  Network& net = ws.net;
  if (net.BranchCount <= 1) {
    ws.ui.Inform("No Data to Simulate", "Galeris", MsgIcon::Exclamation);
    result.End = SpreadEnd::NoData;
    return result;
  }
  RebuildNodes(net, ws.defaults, ws.ui);
  SortAirways(ws);
  // The sort may have moved airways since the balancing built the links.
  BuildNodeLinks(ws);
  int queueLength = 0;
  result.Sources = ReleaseSources(ws, queueLength);
  if (result.Sources == 0) {
    result.End = SpreadEnd::NoSource;
    return result;
  }
  SpreadRounds(ws, display, queueLength);
  const bool mixed = MixConcentrations(ws, display, queueLength, result.MixingPasses);
  result.End = mixed ? SpreadEnd::Finished : SpreadEnd::Failed;
  result.Reached = CountReached(net);
  result.SmokeMax = SmokeMaximum(net);
  return result;
}

bool TraceContaminant(Workspace& ws, const std::function<void()>& simulate) {
  if (!EnsureBalanced(ws, simulate)) {
    ws.ui.Inform("Network must be successfully balanced before smoke sourcing simulation can work");
    return false;
  }
  Network& net = ws.net;
  if (net.BranchCount < 1) return true;
  BuildNodeLinks(ws);
  for (int i = 1; i <= net.BranchCount; ++i) net.SmokeData[i][2] = TraceState::Unknown;
  using namespace TraceState;
  // Upstream of a smoke report the source can lie; upstream of a clear report it cannot.
  TraceWalk(net, PinnedAirways(net, ReportPin::Smoke, Potential), kInflows, Potential,
            [&net](int p) {
              return net.SmokeData[p][1] == ReportPin::None && net.SmokeData[p][2] != Potential &&
                     std::fabs(net.Quantity[p]) >= 0.1f;
            });
  TraceWalk(net, PinnedAirways(net, ReportPin::Clear, Clear), kInflows, Clear, [&net](int p) {
    const std::int16_t s = net.SmokeData[p][2];
    return net.SmokeData[p][1] == ReportPin::None && s != Clear && s != Smoke &&
           std::fabs(net.Quantity[p]) >= 0.1f;
  });
  // Downstream of a smoke report there is smoke for certain.
  TraceWalk(net, PinnedAirways(net, ReportPin::Smoke, Smoke), kOutflows, Smoke,
            [&net](int p) { return net.Quantity[p] != 0 && net.SmokeData[p][2] != Smoke; });
  return true;
}

float SmokeMaximum(const Network& net) {
  int highest = 0;
  for (int i = 1; i <= net.BranchCount; ++i) highest = std::max<int>(highest, net.SmokeData[i][2]);
  return static_cast<float>(highest);
}

void LegendAfterSpread(float smokeMax, bool retain, bool legendExists,
                       std::array<float, 6>& legend) {
  if (retain && legendExists) return;
  legend[0] = smokeMax;
  for (int k = 1; k <= 5; ++k)
    legend[k] = static_cast<float>(RoundHalfEven(smokeMax - smokeMax / 5.0 * k));
}

int SliderRange(const Network& net) {
  double latest = 0;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.SmokeData[i][2] > 1) latest = std::max(latest, std::floor(double{net.SmokeTime[i]}));
  return static_cast<int>(std::min<double>(latest + 1, kSliderTimeLimit));
}

std::string SliderTimeText(double seconds) {
  return FormatNumber(seconds / kSliderDay * 86400.0, "h:mm:ss");
}

void ClearContaminantSources(Workspace& ws) {
  Network& net = ws.net;
  bool changed = false;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (!(net.BranchCode[i] & Bit::ContaminantSource) && net.Contaminant[i] == 0) continue;
    JournalBefore(ws.journal, i);
    net.BranchCode[i] &= ~Bit::ContaminantSource;
    net.Contaminant[i] = 0;
    JournalAfter(ws.journal, i);
    changed = true;
  }
  if (changed) CloseUndoAction(ws.journal);
}

void ClearContaminantSpread(Workspace& ws, bool sourcesToo) {
  if (sourcesToo) ClearContaminantSources(ws);
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.SmokeData[i][2] = 0;
    net.SmokeTime[i] = kNeverReached;
    net.LoopOrder[i] = 0;
  }
}

void ClearSmokeSourcing(Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i) net.SmokeData[i] = {0, 0, 0};
}

void ClearNonSourceContaminant(Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (!(net.BranchCode[i] & Bit::ContaminantSource)) net.Contaminant[i] = 0;
}

std::vector<SourceProblem> CheckContaminantSources(const Network& net) {
  std::vector<SourceProblem> problems;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (!(net.BranchCode[i] & Bit::ContaminantSource)) continue;
    if (!(net.Quantity[i] > 0))
      problems.push_back({net.AirwayNo[i], "has no flow: a source without flow is not released"});
    else if (ExitsToSurface(net, i))
      problems.push_back({net.AirwayNo[i],
                          "leaves to the surface: its contaminant reaches no "
                          "other airway"});
  }
  return problems;
}

}  // namespace galeris
