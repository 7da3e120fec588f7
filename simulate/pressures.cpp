// Pressure resolution and results: fan loads, airway pressures, reversals, node pressures,
// node links and the derived values of a solved airway.
#include "simulate/pressures.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulate/fan_curves.h"
#include "simulate/simulate.h"
#include "simulate/sort_airways.h"

namespace galeris {
namespace {

constexpr std::uint8_t kCancel = 255;
constexpr double kPi = 3.141592654;
constexpr std::int32_t kTopByte = static_cast<std::int32_t>(0xFF000000u);

float SquareLaw(const Network& net, int i) {
  return net.Quantity[i] * net.Quantity[i] * net.Resistance[i];
}

// The signed pressure sum round a mesh, as the balancing forms it; for a locked mesh this is
// what the fixed chord has to supply.
float MeshLoad(const Network& net, int first, int end) {
  float load = 0;
  for (int k = first; k < end; ++k) {
    int v = net.MeshMember[k];
    if (k == first) v = std::abs(v);
    const int a = std::abs(v);
    const float s = v < 0 ? -1.0f : 1.0f;
    const float q = s * net.Quantity[a];
    float fanP = 0;
    if (net.FanSlot[a] != 0)
      fanP = EvaluateFanCurve(net, static_cast<int>(net.FanSlot[a]), net.Quantity[a], a,
                              net.Pressure[a])
                 .FanP;
    load = load + q * std::fabs(q * net.Resistance[a]) - s * fanP;
  }
  return load;
}

// The full exchange of FinishRun: both surface bits trade places.
void ExchangeEnds(Network& net, int i) {
  std::swap(net.EntryNodeId[i], net.ExitNodeId[i]);
  net.Quantity[i] = -net.Quantity[i];
  std::swap(net.Coord1[i], net.Coord2[i]);
  std::swap(net.EntryNodeName[i], net.ExitNodeName[i]);
  std::int32_t& code = net.BranchCode[i];
  if (code & Bit::ForceEntrySurface)
    code = (code & ~Bit::ForceEntrySurface) | Bit::ForceExitSurface;
  else if (code & Bit::ForceExitSurface)
    code = (code & ~Bit::ForceExitSurface) | Bit::ForceEntrySurface;
}

void ReverseJournalled(Workspace& ws, int i, int action) {
  if (ws.journal) ws.journal->RecordUndo(i, UndoJournal::kBefore, action);
  ExchangeEnds(ws.net, i);
  if (ws.journal) ws.journal->RecordUndo(i, UndoJournal::kAfter, action);
}

void ListReversedFan(Workspace& ws, int i) {
  Network& net = ws.net;
  net.Errorlist.push_back(std::to_string(net.AirwayNo[i]) + "\tFan flow reversed");
  if (ws.sim.SimStatus == 0) ws.sim.SimStatus = 2;
  net.Comment[i] = "Flow Reversed";
  net.BranchCode[i] |= Bit::ErrorMark;
}

// First position 1..BranchCount whose entry key equals key, in the descending store; 0 if none.
int FirstEntryAt(const Network& net, Key key) {
  const auto begin = net.EntryNodeId.begin() + 1;
  const auto end = begin + net.BranchCount;
  const auto it = std::lower_bound(begin, end, key, [](Key a, Key k) { return a > k; });
  if (it == end || *it != key) return 0;
  return static_cast<int>(it - net.EntryNodeId.begin());
}

// One end of every airway, sorted by (key, position): the airways at each key form a run, in
// ascending position.
struct EndAt {
  Key key;
  int at;
};
std::vector<EndAt> EndsByKey(const ZeroArray<Key>& keys, int count) {
  std::vector<EndAt> ends(static_cast<std::size_t>(count));
  for (int j = 1; j <= count; ++j) ends[j - 1] = {keys[j], j};
  std::sort(ends.begin(), ends.end(), [](const EndAt& a, const EndAt& b) {
    return a.key != b.key ? a.key < b.key : a.at < b.at;
  });
  return ends;
}

// Links each airway's own end to the airways j != i whose other end has the same key. The run
// of each own key among the other ends is found by walking both sorted lists together.
void LinkEnd(Network& net, const std::vector<EndAt>& own, const std::vector<EndAt>& other, int end,
             std::size_t& pos) {
  const int n = net.BranchCount;
  std::vector<std::pair<int, int>> runOf(static_cast<std::size_t>(n) + 1);
  std::size_t first = 0, last = 0;
  for (std::size_t k = 0; k < own.size(); ++k) {
    const Key key = own[k].key;
    if (k == 0 || key != own[k - 1].key) {
      first = last;
      while (first < other.size() && other[first].key < key) ++first;
      last = first;
      while (last < other.size() && other[last].key == key) ++last;
    }
    runOf[static_cast<std::size_t>(own[k].at)] = {static_cast<int>(first), static_cast<int>(last)};
  }
  for (int i = 1; i <= n; ++i) {
    net.NodeLinkRange[i][end][1] = static_cast<std::int32_t>(pos);
    for (int r = runOf[i].first; r < runOf[i].second; ++r) {
      const int j = other[static_cast<std::size_t>(r)].at;
      if (j == i) continue;
      if (pos >= net.NodeLinks.size())
        throw std::length_error(
            "Too many airways meet at the nodes of this network for the node links - increase "
            "the allowable branch numbers in the defaults settings");
      net.NodeLinks[pos++] = static_cast<std::int16_t>(j);
    }
    net.NodeLinkRange[i][end][2] = static_cast<std::int32_t>(pos) - 1;
  }
}

}  // namespace

void ResolveFanLoads(Workspace& ws) {
  Network& net = ws.net;
  const SimRun& run = ws.sim;
  auto& fanLoad = net.ChordWeight;
  for (int i = 1; i <= net.BranchCount; ++i) fanLoad[i] = net.Resistance[i];
  for (int m = 1; m <= run.MeshCount; ++m) {
    if (run.SimCancel == kCancel) return;
    const int first = net.MeshStart[m];
    if (net.MeshMember[first] >= 0) continue;
    fanLoad[std::abs(net.MeshMember[first])] = MeshLoad(net, first, net.MeshStart[m + 1]);
  }
  for (int m = 1; m <= run.MeshCount; ++m) {
    if (run.SimCancel == kCancel) return;
    const int first = net.MeshStart[m];
    const bool locked = net.MeshMember[first] < 0;
    for (int k = first; k < net.MeshStart[m + 1]; ++k) {
      if (k == first && locked) continue;
      fanLoad[std::abs(net.MeshMember[k])] = 0;
    }
  }
  // The solved fan is kept beside the weight order's low half; the weighing cleared it, so this
  // leaves the fan number itself.
  for (int i = 1; i <= net.BranchCount; ++i) {
    const std::int16_t fanBackup = net.FanNumber[i];
    net.WeightOrder[i] = static_cast<std::int16_t>(net.SolvedFan[i] & 0xFF);
    net.SolvedFan[i] = static_cast<std::int16_t>(net.WeightOrder[i] * 10000 + fanBackup);
  }
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.FanSlot[i] == 0) continue;
    const FanPoint fan = EvaluateFanCurve(net, static_cast<int>(net.FanSlot[i]), net.Quantity[i], i,
                                          net.Pressure[i]);
    net.FanSlot[i] = fan.State == FanOnCurve ? fan.FanP : 9999.0f * fan.State;
  }
  for (int i = 1; i <= net.BranchCount; ++i)
    if (fanLoad[i] != 0) net.FanSlot[i] = fanLoad[i];
}

void StoreAirwayPressures(Workspace& ws) {
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.FanNumber[i] == 0)
      net.Pressure[i] = -SquareLaw(net, i);
    else if (net.FanNumber[i] > 0)
      net.Pressure[i] = net.FanSlot[i];
    if (net.FanSlot[i] != 0) net.Pressure[i] = net.FanSlot[i];
  }
}

void FinishRun(Workspace& ws) {
  Network& net = ws.net;
  SimRun& run = ws.sim;
  if (run.SimCancel == kCancel || run.SimStatus == 1) {
    SetSimCaption(ws, "Simulation Failed !");
    return;
  }
  const float maxError = ws.defaults.MaxError;
  const int action = ws.journal ? ws.journal->UndoAction() : 0;
  bool reversed = false;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.LabelPos[i] = std::fabs(net.LabelPos[i]);
    if (net.LabelPos[i] < 1) net.LabelPos[i] = 0.5f;
    if (!(net.Quantity[i] < 0 && std::fabs(net.Quantity[i]) > maxError)) continue;
    if (net.FanNumber[i] != 0) {
      ListReversedFan(ws, i);
    } else if (!(net.BranchCode[i] & Bit::FixedDirection)) {
      ReverseJournalled(ws, i, action);
      reversed = true;
    }
  }
  if (reversed) {
    run.AirwayReversed = true;
    if (ws.journal) ws.journal->SetUndoAction(action + 1);
  }
}

float PressureDrop(const Network& net, int j) {
  const int fan = net.FanNumber[j];
  const bool fixedQuantity = net.BranchCode[j] & Bit::FixedQuantity;
  if (!fixedQuantity && fan == 0) return net.Pressure[j];
  if (fixedQuantity || fan < 0) return net.Pressure[j] - SquareLaw(net, j);
  if (net.Pressure[j] == kNegateMark) return -SquareLaw(net, j);
  if (net.Pressure[j] == kStallMark && fan <= net.FanMax) {
    float stall = net.CurveP[fan][1][1];
    if (net.BranchCode[j] & Bit::FansInSeries) stall *= static_cast<float>(net.NoOfFans[j]);
    return stall - SquareLaw(net, j);
  }
  return net.Pressure[j] - SquareLaw(net, j);
}

// Positions waiting in a pass, taken in store order: one bit each, so that the next is found a
// word at a time however many passes there are.
class WaitingAirways {
 public:
  explicit WaitingAirways(int count) : bits_(static_cast<std::size_t>(count) / 64 + 1, 0) {}
  void Add(int i) { bits_[Word(i)] |= Bit(i); }
  // The first waiting position from `from` on, taken out; 0 when none.
  int TakeFrom(int from) {
    for (std::size_t w = Word(from); w < bits_.size(); ++w) {
      const std::uint64_t left = w == Word(from) ? bits_[w] & ~(Bit(from) - 1) : bits_[w];
      if (left == 0) continue;
      const int i = static_cast<int>(w * 64) + std::countr_zero(left);
      bits_[w] &= ~Bit(i);
      return i;
    }
    return 0;
  }

 private:
  static std::size_t Word(int i) { return static_cast<std::size_t>(i) / 64; }
  static std::uint64_t Bit(int i) { return std::uint64_t{1} << (i % 64); }
  std::vector<std::uint64_t> bits_;
};

void PropagateNodePressures(Workspace& ws) {
  Network& net = ws.net;
  const int n = net.BranchCount;
  WaitingAirways thisPass(n);
  std::vector<int> nextPass;
  bool fromSurface = false;
  for (int i = 1; i <= n; ++i) {
    net.ToNodeP[i] = kUnreached;
    net.FromNodeP[i] = 0;
  }
  for (int i = 1; i <= n; ++i) {
    if (net.EntryNodeId[i] != SurfaceKey) continue;
    net.ToNodeP[i] = PressureDrop(net, i);
    thisPass.Add(i);
    fromSurface = true;
  }
  if (!fromSurface) {
    for (int i = 1; i <= n; ++i) net.ToNodeP[i] = 0;
    return;
  }
  // The passes over the store, airway by airway, done only where something is newly reached:
  // an airway reached behind the one at work waits for the next pass, as in a full pass.
  for (int i = thisPass.TakeFrom(1);; i = thisPass.TakeFrom(i)) {
    if (i == 0) {
      if (nextPass.empty()) break;
      for (int j : nextPass) thisPass.Add(j);
      nextPass.clear();
      i = thisPass.TakeFrom(1);
    }
    if (net.ExitNodeId[i] == SurfaceKey) continue;
    const int first = FirstEntryAt(net, net.ExitNodeId[i]);
    if (first == 0) continue;
    for (int j = first; j <= n && net.EntryNodeId[j] == net.ExitNodeId[i]; ++j) {
      if (net.ToNodeP[j] != kUnreached) continue;
      net.ToNodeP[j] = net.ToNodeP[i] + PressureDrop(net, j);
      net.FromNodeP[j] = net.ToNodeP[i];
      if (j > i)
        thisPass.Add(j);
      else
        nextPass.push_back(j);
    }
  }
}

void ResolveNodePressures(Workspace& ws) {
  SortAirways(ws);
  ShowSimProgress(ws, 95);
  PropagateNodePressures(ws);
}

void ReverseAirway(Network& net, int i) {
  std::swap(net.EntryNodeId[i], net.ExitNodeId[i]);
  net.LabelPos[i] = -net.LabelPos[i];
  std::swap(net.Coord1[i], net.Coord2[i]);
  net.Quantity[i] = -net.Quantity[i];
  std::swap(net.EntryNodeName[i], net.ExitNodeName[i]);
  // One-sided on purpose: a surface end stays marked at the exit.
  std::int32_t& code = net.BranchCode[i];
  if (code & (Bit::ForceEntrySurface | Bit::ForceExitSurface))
    code = (code | Bit::ForceExitSurface) & ~kTopByte;
}

void ApplyFixedDirections(Workspace& ws) {
  Network& net = ws.net;
  enum { NotAsked, Allowed, Refused } answer = NotAsked;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const bool fixed = net.BranchCode[i] & Bit::FixedDirection;
    if (net.Quantity[i] < 0) {
      if (fixed && answer == NotAsked) {
        answer = ws.ui.AskYesNo(
                     "Galeris detects a number of airways have a 'FIXED DIRECTION' on them and "
                     "require reversing.  Galeris may not simulate correctly next time unless "
                     "these airways are reversed.  Do you want to allow Galeris to do this ?",
                     "Reverse airways")
                     ? Allowed
                     : Refused;
      }
      if (!fixed || answer != Refused) ReverseAirway(net, i);
    }
    if (fixed && net.Comment[i].Padded().compare(0, 3, "Rev") == 0)
      net.Errorlist.push_back(std::to_string(net.AirwayNo[i]) + "\tFixed direction violated!");
  }
}

void BuildNodeLinks(Workspace& ws) {
  Network& net = ws.net;
  std::size_t pos = 0;
  const std::vector<EndAt> entries = EndsByKey(net.EntryNodeId, net.BranchCount);
  const std::vector<EndAt> exits = EndsByKey(net.ExitNodeId, net.BranchCount);
  LinkEnd(net, entries, exits, 1, pos);
  LinkEnd(net, exits, entries, 2, pos);
}

double AirwayPressureDrop(const Network& net, int i) {
  const double q = net.Quantity[i];
  return net.Resistance[i] * q * q;
}

double AirPower(const Network& net, int i) {
  const double q = net.Quantity[i];
  return q * q * q * net.Resistance[i] / 1000.0;
}

double FanVelocityPressure(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const int fan = net.FanNumber[i];
  if (fan < 1 || fan > net.FanMax || net.Pressure[i] == kStallMark ||
      net.Pressure[i] == kNegateMark)
    return 0;
  const double d = net.FanDiameter[fan];
  const double divisor = net.NoOfFans[i] * kPi / 4.0 * d * d;
  if (divisor == 0) return 0;
  const double v = net.Quantity[i] / divisor;
  return ws.defaults.AirDensity * v * v / 2.0;
}

double FanInputPower(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const int fan = net.FanNumber[i];
  if (fan < 1 || fan > net.FanMax) return 0;
  double p = net.Pressure[i];
  if (p == kStallMark)
    p = net.CurveP[fan][1][1];
  else if (p == kNegateMark)
    p = 0;
  const double eff = EvaluateFanEfficiency(ws, i);
  if (eff == 0) return 0;
  const double vp = FanVelocityPressure(ws, i);
  return ((1.0 - net.CurveFraction[i] / 100.0) * vp + p) * net.Quantity[i] / 1000.0 / (eff / 100.0);
}

double YearlyPowerCost(const Workspace& ws, int i) {
  if (ws.defaults.FanEffDefault == 0) return 0;
  return AirPower(ws.net, i) * ws.defaults.PowerCost * 24.0 * 365.0 / ws.defaults.FanEffDefault;
}

}  // namespace galeris
