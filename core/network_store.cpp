// The network store: sizing, clearing, node keys, record blanking and compaction, and the
// rebuild of node identities after any change of coordinates.
#include "core/network_store.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <unordered_set>

#include "core/defaults.h"
#include "core/in_parts.h"
#include "core/ui_port.h"
#include "core/undo_journal_port.h"
#include "core/workspace.h"

namespace galeris {
namespace {

// Calls f on every array that holds a field of the stored airway record.
template <class F>
void ForEachRecordArray(Network& n, F&& f) {
  f(n.EntryNodeName); f(n.ExitNodeName); f(n.BranchName);
  f(n.EntryNodeId); f(n.ExitNodeId);
  f(n.Coord1); f(n.Coord2); f(n.Dim); f(n.BranchCode);
  f(n.ResType); f(n.ShockType); f(n.WallType);
  f(n.WallFactor); f(n.ShockFactor); f(n.Comment);
  f(n.Resistance); f(n.Quantity); f(n.FanNumber); f(n.NoOfFans);
  f(n.Length); f(n.Pressure); f(n.Contaminant);
  f(n.PrimaryLayer); f(n.SecondLayer); f(n.FromNodeP); f(n.ToNodeP);
  f(n.UndoNo); f(n.AirwayNo); f(n.LabelPos);
  f(n.RemoteStation); f(n.ParallelCount); f(n.CurveFraction); f(n.SmokeData);
}

// Calls f on every working array that belongs to one airway (and so moves with it).
template <class F>
void ForEachWorkingArray(Network& n, F&& f) {
  f(n.ExitNodeNo); f(n.EntryNodeNo); f(n.ViewEnd1); f(n.ViewEnd2); f(n.AirwayLine);
  f(n.SmokeTime); f(n.FanSlot); f(n.SolvedFan); f(n.NodeLinkRange); f(n.ChordWeight); f(n.TreeMark);
}

template <class F>
void ForEachAirwayArray(Network& n, F&& f) {
  ForEachRecordArray(n, f);
  ForEachWorkingArray(n, f);
}

template <class V>
void ResizeKeeping(V& v, std::size_t size) {
  v.resize(size);
}

// A zero-page array is never resized in place: a fresh one takes the elements that are not
// zero, so untouched pages stay untouched.
template <class T>
void ResizeKeeping(ZeroArray<T>& v, std::size_t size) {
  if (v.size() == size) return;
  ZeroArray<T> fresh(size);
  const T zero{};
  const std::size_t kept = std::min(size, v.size());
  for (std::size_t i = 0; i < kept; ++i)
    if (std::memcmp(&v[i], &zero, sizeof(T)) != 0) fresh[i] = v[i];
  v.swap(fresh);
}

// Blanks every element in the memory the array already has, so clearing a store of the same
// size costs no new pages.
template <class V>
void Refill(V& v, std::size_t size) {
  v.assign(size, typename V::value_type{});
}

// A zero-page array is cleared by a fresh one, whose pages cost nothing until written.
template <class T>
void Refill(ZeroArray<T>& v, std::size_t size) {
  ZeroArray<T>(size).swap(v);
}

void SizeArrays(Network& n, bool keep) {
  auto size = [keep](auto& v, std::size_t count) { keep ? ResizeKeeping(v, count) : Refill(v, count); };
  const std::size_t airways = static_cast<std::size_t>(n.MaxAirways) + 1;
  // Slots the store gains are never reached by smoke, like every slot of a cleared store.
  const std::size_t reached = keep ? std::min(n.SmokeTime.size(), airways) : 0;
  ForEachAirwayArray(n, [&](auto& v) { size(v, airways); });
  std::fill(n.SmokeTime.begin() + static_cast<std::ptrdiff_t>(reached), n.SmokeTime.end(),
            9999999.0f);
  const std::size_t nodes = 2 * static_cast<std::size_t>(n.MaxAirways) + 2;
  size(n.NodeParent, nodes);
  size(n.NodeGroup, nodes);
  size(n.SmokeQueue, airways);
  size(n.WeightOrder, airways);
  size(n.LoopOrder, airways);
  size(n.NodeLinks, 4 * static_cast<std::size_t>(n.MaxAirways) + 1);
  size(n.MeshMember, 20 * static_cast<std::size_t>(n.MaxAirways) + 1);
  size(n.MeshStart, static_cast<std::size_t>(n.MaxAirways) / 2 + 1);
  size(n.MeshPath, static_cast<std::size_t>(n.MaxAirways) / 2 + 1);

  size(n.RLName, kMaxLevels + 1);
  size(n.RLBound, kMaxLevels + 1);
  size(n.ViewName, kMaxViews + 1);
  size(n.ViewValue, kMaxViews + 1);
  size(n.ViewCode, kMaxViews + 1);
  size(n.PrimaryLayerName, kPrimaryLayers + 1);
  size(n.PrimaryLayerShow, kPrimaryLayers + 1);
  size(n.SecondLayerName, kSecondLayers + 1);
  size(n.SecondLayerShow, kSecondLayers + 1);

  const std::size_t texts = static_cast<std::size_t>(n.MaxTexts) + 1;
  size(n.TextString, texts);
  size(n.TextCoord, texts);
  size(n.TextUsed, texts + 1);
  size(n.TextLayer, texts + 1);

  const std::size_t fans = static_cast<std::size_t>(n.FanMax) + 1;
  size(n.FanName, fans);
  size(n.FanDiameter, fans);
  size(n.CurveQ, fans);
  size(n.CurveP, fans);
  size(n.CurveEff, fans);
  size(n.SimCurveQ, fans);
  size(n.SimCurveP, fans);

  size(n.UndoOrder, static_cast<std::size_t>(n.UndoMax) + 1);
}

bool AllZeroBytes(const std::byte* p, std::size_t size) {
  std::byte any{0};
  for (std::size_t k = 0; k < size; ++k) any |= p[k];
  return any == std::byte{0};
}

// Mod of the key: abs(v) less its whole multiples of m.
std::int64_t KeyMod(std::int64_t v, std::int64_t m) { return std::llabs(v) % m; }

}  // namespace

void ResizeStore(Network& net) { SizeArrays(net, true); }

void ClearStore(Network& net) { SizeArrays(net, false); }

Key NodeKey(std::int32_t x, std::int32_t y, std::int32_t z) {
  // The offsets differ on purpose: 9999 for X and Z, 99999 for Y.
  const std::int64_t mz = z < 0 ? KeyMod(std::int64_t{z} + 9999, 10000) : KeyMod(z, 10000);
  const std::int64_t my = y < 0 ? KeyMod(std::int64_t{y} + 99999, 1000000) : KeyMod(y, 1000000);
  const std::int64_t mx = x < 0 ? KeyMod(std::int64_t{x} + 9999, 1000000) : KeyMod(x, 1000000);
  // Terms: Z times 10^10, Y times 10^4, X over 100; in fixed point (times 10^4) all exact.
  return mz * 100000000000000LL + my * 100000000LL + mx * 100LL;
}

void BlankAirway(Network& net, int position) {
  ForEachRecordArray(net, [position](auto& v) {
    using T = typename std::decay_t<decltype(v)>::value_type;
    v[position] = T{};
  });
}

void CopyAirway(Network& net, int from, int to) {
  if (from == to) return;
  ForEachAirwayArray(net, [from, to](auto& v) { v[to] = v[from]; });
}

void SwapAirways(Network& net, int a, int b) {
  if (a == b) return;
  ForEachAirwayArray(net, [a, b](auto& v) { std::swap(v[a], v[b]); });
}

namespace {

// The moves of a new order as cycles, each ended by a 0: along a cycle k1, k2, ..., kn every
// slot takes the record of the next one, and kn takes what k1 held. Records that stay where
// they are make no cycle.
std::vector<int> CyclesOf(const std::vector<int>& order) {
  const std::size_t count = order.size() - 1;
  std::vector<char> placed(order.size(), 0);
  std::vector<int> cycles;
  cycles.reserve(count + count / 2 + 1);
  for (std::size_t start = 1; start <= count; ++start) {
    if (placed[start] || order[start] == static_cast<int>(start)) continue;
    for (auto k = static_cast<std::size_t>(start); !placed[k];
         k = static_cast<std::size_t>(order[k])) {
      placed[k] = 1;
      cycles.push_back(static_cast<int>(k));
    }
    cycles.push_back(0);
  }
  return cycles;
}

}  // namespace

void ReorderAirways(Network& net, const std::vector<int>& order) {
  const std::size_t count = order.size() - 1;
  if (count == 0) return;
  const std::vector<int> cycles = CyclesOf(order);
  if (cycles.empty()) return;
  // Only the slots from the lowest to the highest that moves change.
  int lowest = static_cast<int>(count), highest = 1, moved = 0;
  for (int k : cycles) {
    if (k == 0) continue;
    lowest = std::min(lowest, k), highest = std::max(highest, k), ++moved;
  }
  const std::size_t span = static_cast<std::size_t>(highest - lowest + 1);
  // Every array is moved in place along the cycles, with no copy of it; the arrays are shared
  // out among the cores.
  const int parts = PartCount(moved, 4000);
  RunInParts(parts, [&](int part) {
    int array = 0;
    ForEachAirwayArray(net, [&](auto& v) {
      if (array++ % parts != part) return;
      // Slots that hold nothing yet keep their untouched pages.
      if (AllZeroBytes(reinterpret_cast<const std::byte*>(&v[lowest]), span * sizeof v[1])) return;
      for (std::size_t c = 0; c < cycles.size(); ++c) {
        const int first = cycles[c];
        auto held = v[first];
        int k = first;
        for (; cycles[c + 1] != 0; k = cycles[++c]) v[k] = v[cycles[c + 1]];
        v[k] = held;
        ++c;  // past the 0
      }
    });
  });
}

void CompactAirways(Network& net) {
  int kept = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.BranchCode[i] == 0) continue;
    ++kept;
    CopyAirway(net, i, kept);
  }
  for (int i = kept + 1; i <= net.BranchCount; ++i) BlankAirway(net, i);
  net.BranchCount = static_cast<std::int16_t>(kept);
}

void RebuildNodes(Network& net, const Defaults& defaults, UiPort& ui) {
  const std::int32_t surface = SurfaceThreshold(net);
  bool warn = false;
  bool compact = false;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.EntryNodeId[i] = NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]);
    net.ExitNodeId[i] = NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]);
    if (surface <= net.Coord1[i][3] || (net.BranchCode[i] & Bit::ForceEntrySurface))
      net.EntryNodeId[i] = SurfaceKey;
    if (surface <= net.Coord2[i][3] || (net.BranchCode[i] & Bit::ForceExitSurface))
      net.ExitNodeId[i] = SurfaceKey;
    if (net.EntryNodeId[i] == SurfaceKey && net.ExitNodeId[i] == SurfaceKey) {
      net.Errorlist.push_back(std::to_string(net.AirwayNo[i]) + "\tboth ends on surface");
      net.Comment[i] = "ends on surface";
      net.BranchCode[i] |= Bit::ErrorMark;
      warn = true;
    }
    if (net.EntryNodeId[i] == 0 || net.ExitNodeId[i] == 0) {
      BlankAirway(net, i);
      compact = true;
    }
    if (net.Resistance[i] >= defaults.HighResistance) net.Quantity[i] = 0;
    if (net.AirwayNo[i] == 0) net.AirwayNo[i] = ++net.NextAirwayNo;
  }
  if (compact) CompactAirways(net);
  if (warn) {
    ui.Message(
        "Please check your surface RL values or the airway data as the network will not "
        "simulate properly with the current settings.",
        MsgButtons::OK, MsgIcon::Exclamation,
        "Galeris has detected that one or more of your airways has both ends on or above the "
        "surface");
  }
}

bool HasDuplicateAirwayNumbers(const Network& net) {
  std::unordered_set<std::int32_t> seen;
  seen.reserve(static_cast<std::size_t>(net.BranchCount) * 2);
  for (int i = 1; i <= net.BranchCount; ++i)
    if (!seen.insert(net.AirwayNo[i]).second) return true;
  return false;
}

void RenumberDuplicateAirways(Network& net, UndoJournal* journal) {
  std::unordered_set<std::int32_t> seen;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (seen.insert(net.AirwayNo[i]).second) continue;
    JournalBefore(journal, i);
    net.AirwayNo[i] = ++net.NextAirwayNo;
    JournalAfter(journal, i);
  }
  CloseUndoAction(journal);
}

void CheckDuplicateAirwayNumbers(Workspace& ws) {
  UiPort& ui = ws.ui;
  if (!HasDuplicateAirwayNumbers(ws.net)) {
    ui.Message("All airways have unqiue numbers");
    return;
  }
  if (ui.Message("Duplicate unique airway numbers exist - allow Galeris to re-number them ?",
                 MsgButtons::YesNo, MsgIcon::Question,
                 "Duplicate airway numbers") != MsgAnswer::Yes)
    return;
  RenumberDuplicateAirways(ws.net, ws.journal);
  MarkNetworkChanged(ws);
}

bool RoomForAirway(const Network& net, UiPort& ui) {
  if (net.BranchCount < net.MaxAirways && net.BranchCount < kAirwayLoopLimit) return true;
  ui.Message(kMsgAirwaysExceeded, MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

bool RoomForAirways(const Network& net, int count, UiPort& ui) {
  const long total = long{net.BranchCount} + count;
  if (total <= net.MaxAirways && total <= kAirwayLoopLimit) return true;
  ui.Message(kMsgPasteExceeded, MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

}  // namespace galeris
