// Network simplification: chains of airways through pass-through nodes folded into their first
// airway, and airways without flow removed, as one undo action.
#include "tools/simplify.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "core/typed_number.h"
#include "core/units.h"
#include "simulate/pressures.h"
#include "simulate/sort_airways.h"

namespace galeris {
namespace {

using Vector3 = std::array<double, 3>;

Vector3 Span(const Network& net, int i) {
  return {static_cast<double>(net.Coord2[i][1]) - net.Coord1[i][1],
          static_cast<double>(net.Coord2[i][2]) - net.Coord1[i][2],
          static_cast<double>(net.Coord2[i][3]) - net.Coord1[i][3]};
}

double StraightLength(const Network& net, int i) {
  const Vector3 v = Span(net, i);
  return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

bool IsSurfaceEnd(const Network& net, int i) {
  return net.EntryNodeId[i] == SurfaceKey || net.ExitNodeId[i] == SurfaceKey;
}

// The airway that carries i on through its exit node, when that node joins exactly these two;
// 0 otherwise.
int PassThroughSuccessor(const Network& net, int i) {
  const LinkRange& out = net.NodeLinkRange[i];
  if (out[2][1] != out[2][2]) return 0;
  const int j = net.NodeLinks[out[2][1]];
  if (j == i || j < 1 || net.BranchCode[j] == 0) return 0;
  const LinkRange& in = net.NodeLinkRange[j];
  if (in[1][1] != in[1][2]) return 0;
  return j;
}

bool PairQualifies(const Network& net, const SimplifyFilter& filter, int i, int j) {
  if (net.Length[i] == 0 || net.Length[j] == 0) return false;
  if (std::fabs(BendAngle(net, i, j)) > filter.MaxAngle) return false;
  if (StraightLength(net, i) > filter.MaxLength) return false;
  if (net.FanNumber[i] != 0 || net.FanNumber[j] != 0) return false;
  if (IsSurfaceEnd(net, i) || IsSurfaceEnd(net, j)) return false;
  if (filter.NoResistancePresets && net.ResType[j] != 0) return false;
  if (net.BranchCode[i] & Bit::FixedQuantity) return false;
  if (filter.SameWallType && net.WallType[i] != net.WallType[j]) return false;
  if (filter.SameDimensions && (net.Dim[i][1] != net.Dim[j][1] || net.Dim[i][2] != net.Dim[j][2]))
    return false;
  return true;
}

// Records each airway once, as it stood before the run.
class RunJournal {
 public:
  RunJournal(Workspace& ws) : ws_(ws), before_(static_cast<std::size_t>(ws.net.BranchCount) + 1) {}
  void Before(int i) {
    if (before_[i]) return;
    JournalBefore(ws_.journal, i);
    before_[i] = 1;
  }
  void Merged(int i) { Before(i), merged_.push_back(i); }
  void Removed(int i) { before_[i] = 2; }
  // The merged airways as they stand now; removed ones have no after state.
  void After() {
    for (int i : merged_)
      if (before_[i] == 1) JournalAfter(ws_.journal, i), before_[i] = 3;
  }

 private:
  Workspace& ws_;
  std::vector<char> before_;  // 0 not recorded, 1 recorded, 2 removed, 3 recorded after too
  std::vector<int> merged_;
};

void Merge(Network& net, const SimplifyFilter& filter, int i, int j) {
  net.ExitNodeId[i] = net.ExitNodeId[j];
  net.Coord2[i] = net.Coord2[j];
  net.NodeLinkRange[i][2] = net.NodeLinkRange[j][2];
  if (!filter.CombineLengths) return;
  net.Length[i] += net.Length[j];
  net.ShockFactor[i] += net.ShockFactor[j];
  if (net.ShockFactor[i] > 0) net.ShockType[i] = 50;
  net.BranchCode[i] |= Bit::FixedLength;
}

bool Chosen(const Network& net, const SimplifyFilter& filter, int i) {
  return !filter.SelectedOnly || (net.BranchCode[i] & Bit::Selected);
}

}  // namespace

SimplifyLimits ReadSimplifyLimits(const UnitTable& units, const std::string& lengthText,
                                  const std::string& angleText) {
  SimplifyLimits limits;
  const std::optional<double> length = ReadTypedNumber(lengthText);
  const std::optional<double> angle = ReadTypedNumber(angleText);
  if (!length || *length < 0 || *length > kSimplifyLengthLimit || *length != std::floor(*length)) {
    limits.Refusal =
        "Max Length must be a whole number from 0 to " + std::to_string(kSimplifyLengthLimit);
  } else if (!angle || *angle < 0 || *angle > kSimplifyAngleLimit) {
    limits.Refusal = "Max Angle must be a number of degrees from 0 to 180";
  } else {
    limits.MaxLength = FromDisplay(units, *length, Unit::Length);
    limits.MaxAngle = *angle;
  }
  return limits;
}

double BendAngle(const Network& net, int i, int j) {
  const double li = StraightLength(net, i), lj = StraightLength(net, j);
  if (li == 0 || lj == 0) return 90;
  const Vector3 a = Span(net, i), b = Span(net, j);
  const double d = (a[0] * b[0] + a[1] * b[1] + a[2] * b[2]) / (li * lj);
  // Straight on, or straight back: no bend, as the merge has always taken it.
  if (std::fabs(d) >= 1) return 0;
  return std::acos(d) * 180 / (4 * std::atan(1.0));
}

int SimplifyNetwork(Workspace& ws, const SimplifyFilter& filter) {
  Network& net = ws.net;
  ws.ui.SetBusy(true);
  RebuildNodes(net, ws.defaults, ws.ui);
  // The sort with its clean-up of duplicate and zero-length airways, which would otherwise make
  // false junctions and stubs; the selection stays, as the filter may need it.
  SortByNodeKeys(net);
  DeleteRedundantAirways(ws);
  SortByNodeKeys(net);
  BuildNodeLinks(ws);

  RunJournal journal(ws);
  int removed = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.BranchCode[i] == 0) continue;
    if (filter.NoResistancePresets && net.ResType[i] != 0) continue;
    if (!Chosen(net, filter, i)) continue;
    for (int j = PassThroughSuccessor(net, i); j != 0 && PairQualifies(net, filter, i, j);
         j = PassThroughSuccessor(net, i)) {
      journal.Merged(i);
      Merge(net, filter, i, j);
      journal.Before(j);
      journal.Removed(j);
      BlankAirway(net, j);
      ++removed;
    }
  }
  if (filter.RemoveZeroFlow) {
    for (int i = 1; i <= net.BranchCount; ++i) {
      if (net.BranchCode[i] == 0 || !Chosen(net, filter, i) || net.Quantity[i] != 0) continue;
      journal.Before(i);
      journal.Removed(i);
      BlankAirway(net, i);
      ++removed;
    }
  }
  journal.After();
  if (removed > 0) CloseUndoAction(ws.journal);

  CompactAirways(net);
  for (int i = 1; i <= net.BranchCount; ++i) net.BranchCode[i] &= ~Bit::Selected;
  if (removed > 0) MarkNetworkChanged(ws);
  ws.ui.SetBusy(false);
  ws.ui.Inform("The network size was reduced by " + std::to_string(removed) + " airways");
  return removed;
}

}  // namespace galeris
