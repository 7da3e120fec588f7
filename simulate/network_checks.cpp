// The checks before meshing. Every airway must leave its exit end into another airway and be
// fed at its entry end; ends declared open to the surface must be free; no two airways may
// join the same two nodes. Findings are listed and marked, never repaired here.
#include "simulate/network_checks.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>


namespace galeris {
namespace {

// Clears the error mark; the mask also clears the top byte of the code.
constexpr std::int32_t kClearErrorMark = 0x00FFFFBF;
constexpr float kLeftoverFlow = 9994;  // flows this large are leftovers of a failed run

void ListFault(Workspace& ws, int i, const char* label, const char* comment) {
  Network& net = ws.net;
  net.Errorlist.push_back(std::to_string(net.AirwayNo[i]) + "\t" + label);
  net.Comment[i] = comment;
  net.BranchCode[i] |= Bit::ErrorMark;
  ws.sim.SimStatus = 1;
}

void NumberNodes(Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.Comment[i] = "";
    net.WeightOrder[i] = 0;
    net.BranchCode[i] &= kClearErrorMark;
  }
  net.EntryNodeNo[1] = 1;
  for (int i = 2; i <= net.BranchCount; ++i) {
    const bool newNode = net.EntryNodeId[i] != net.EntryNodeId[i - 1];
    net.EntryNodeNo[i] = static_cast<std::int16_t>(net.EntryNodeNo[i - 1] + (newNode ? 1 : 0));
  }
  net.NodeCount = net.EntryNodeNo[net.BranchCount];
}

int CheckExitEnds(Workspace& ws) {
  Network& net = ws.net;
  int errors = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int j = FindEntryPosition(net, net.ExitNodeId[i]);
    if (j > 0) {
      net.WeightOrder[j] = 1;
      net.ExitNodeNo[i] = net.EntryNodeNo[j];
    } else {
      net.ExitNodeNo[i] = 0;
      ++errors;
      ListFault(ws, i, "No exit from branch", "No Exit");
    }
  }
  return errors;
}

// An airway is fed when its entry key is some airway's exit key. The exit search found one
// airway at each such key, and the airways beside it with the same entry key are fed alike;
// only the rest are looked up, in a sorted copy of the exit keys made when first needed.
int CheckEntryEnds(Workspace& ws) {
  Network& net = ws.net;
  const int n = net.BranchCount;
  std::vector<Key> exits;
  int errors = 0;
  for (int first = 1, end = 1; first <= n; first = end) {
    bool found = false;
    for (end = first; end <= n && net.EntryNodeId[end] == net.EntryNodeId[first]; ++end)
      found = found || net.WeightOrder[end] != 0;
    if (found) continue;
    if (exits.empty()) {
      exits.assign(net.ExitNodeId.begin() + 1, net.ExitNodeId.begin() + n + 1);
      std::sort(exits.begin(), exits.end());
    }
    if (std::binary_search(exits.begin(), exits.end(), net.EntryNodeId[first])) continue;
    for (int i = first; i < end; ++i) {
      ++errors;
      ListFault(ws, i, "No entry into branch", "No Entry");
    }
  }
  return errors;
}

using Point3 = std::array<std::int32_t, 3>;

Point3 PointOf(const Coord3& c) {
  return {c[1], c[2], c[3]};
}

// Ends flagged open to the surface must touch no other airway. All ends are sorted once, so
// that each flagged end is one lookup: another airway shares it when more ends lie there than
// the flagged airway's own.
void CheckSurfaceFlags(Workspace& ws) {
  Network& net = ws.net;
  const int n = net.BranchCount;
  bool anyFlag = false;
  for (int i = 1; i <= n && !anyFlag; ++i)
    anyFlag = (net.BranchCode[i] & (Bit::ForceEntrySurface | Bit::ForceExitSurface)) != 0;
  if (!anyFlag) return;
  std::vector<Point3> ends;
  ends.reserve(2 * static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i) {
    ends.push_back(PointOf(net.Coord1[i]));
    ends.push_back(PointOf(net.Coord2[i]));
  }
  std::sort(ends.begin(), ends.end());
  auto touchedByOther = [&](int i, const Point3& end) {
    const auto range = std::equal_range(ends.begin(), ends.end(), end);
    const long own = (PointOf(net.Coord1[i]) == end) + (PointOf(net.Coord2[i]) == end);
    return range.second - range.first > own;
  };
  for (int i = 1; i <= n; ++i) {
    if ((net.BranchCode[i] & Bit::ForceEntrySurface) && touchedByOther(i, PointOf(net.Coord1[i])))
      ListFault(ws, i, "Airway into surface entry", "Bad Entry");
  }
  for (int i = 1; i <= n; ++i) {
    if ((net.BranchCode[i] & Bit::ForceExitSurface) && touchedByOther(i, PointOf(net.Coord2[i])))
      ListFault(ws, i, "Airway into surface exit", "Bad Exit");
  }
}

int CheckDuplicatesAndReset(Workspace& ws, int errors) {
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.NodeGroup[i] = 0;
    net.NodeParent[i] = 0;
    net.SmokeQueue[i] = 0;
    if (std::abs(net.Quantity[i]) >= kLeftoverFlow) net.Quantity[i] = 0;
    // Position 1 compares with the blank position 0, which never matches a real airway.
    if (net.EntryNodeId[i] == net.EntryNodeId[i - 1] &&
        net.ExitNodeId[i] == net.ExitNodeId[i - 1]) {
      ListFault(ws, i, "Duplicate branch", "Error-Duplicate");
      ++errors;
      if (errors < static_cast<int>(net.SmokeQueue.size()))
        net.SmokeQueue[errors] = static_cast<std::int16_t>(i);
    }
  }
  return errors;
}

}  // namespace

int FindEntryPosition(const Network& net, Key key) {
  // Half of a whole number, rounded half to even: RoundHalfEven(s / 2.0) in whole arithmetic.
  const auto half = [](int s) { return (s >> 1) + ((s & 1) & ((s >> 1) & 1)); };
  const int n = net.BranchCount;
  int lower = 0;
  int upper = n + 1;
  int probe = half(n);
  for (;;) {
    if (net.EntryNodeId[probe] == key) return probe;
    // Keys run downward: a larger key at the probe means the wanted one lies further on.
    if (net.EntryNodeId[probe] > key) {
      lower = probe;
    } else {
      upper = probe;
    }
    if (upper - lower == 1) lower = upper;
    if (upper - lower < 1) return 0;
    probe = half(lower + upper);
  }
}

int CheckNetwork(Workspace& ws) {
  Network& net = ws.net;
  if (net.BranchCount < 1) return 0;
  NumberNodes(net);
  int errors = CheckExitEnds(ws);
  errors += CheckEntryEnds(ws);
  CheckSurfaceFlags(ws);
  return CheckDuplicatesAndReset(ws, errors);
}

}  // namespace galeris
