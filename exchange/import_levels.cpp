// The levels an import leaves behind: one "Import Level" over the new airways' heights, or a
// level for every distinct exit-end height with the highest on the surface row.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "exchange/import_run.h"

namespace galeris {
namespace {

constexpr std::int32_t kRLLimit = 9999999;
// An exit end at RL 0 is held as this while levels are made: an empty row has the bound 0.
constexpr std::int32_t kZeroHeld = 10000000;
constexpr int kLastLevel = kMaxLevels - 1;  // rows 1..249

void EmptyLevels(Network& net) {
  for (int level = 1; level <= kLastLevel; ++level) {
    net.RLName[level].clear();
    net.RLBound[level] = {};
  }
}

// Rows 2..249 with a name in descending RL High, by insertion; the highest may reach row 1.
// Then RLCount counts the rows up to the end of the table.
void SortLevels(Network& net) {
  for (int row = 2; row <= kLastLevel; ++row) {
    if (net.RLName[row].empty()) continue;
    int at = row;
    for (int above = row - 1; above >= 1; --above) {
      if (net.RLName[above].empty()) continue;
      if (net.RLBound[at][1] < net.RLBound[above][1]) break;
      std::swap(net.RLName[at], net.RLName[above]);
      std::swap(net.RLBound[at], net.RLBound[above]);
      at = above;
    }
  }
  int count = 0;
  while (count < kLastLevel && !(net.RLName[count + 1].empty() && net.RLBound[count + 1][1] == 0 &&
                                 net.RLBound[count + 1][2] == 0))
    ++count;
  if (count < 2 && net.RLName[1].empty()) {
    net.RLName[1] = "SURFACE";
    count = std::max(count, 1);
  }
  net.RLCount = static_cast<std::int16_t>(count);
}

void BuildOneLevel(Workspace& ws, bool merge, int lowestZ, int highestZ) {
  Network& net = ws.net;
  if (!merge || net.BranchCount <= 1) EmptyLevels(net);
  if (!(net.RLBound[1][1] > highestZ && net.RLBound[1][2] > highestZ)) {
    net.RLName[1] = "Surface";
    net.RLBound[1] = {0, highestZ + 10, highestZ + 10};
  }
  for (int level = 2; level <= kLastLevel; ++level) {
    if (!net.RLName[level].empty()) continue;
    net.RLName[level] = "Import Level";
    net.RLBound[level] = {0, highestZ, lowestZ};
    break;
  }
  SortLevels(net);
}

void BuildLevelPerHeight(Workspace& ws, bool merge) {
  Network& net = ws.net;
  if (!merge || net.BranchCount <= 1) EmptyLevels(net);
  int counter = 1;
  std::int32_t highest = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    std::int32_t z = net.Coord2[i][3];
    if (z > kRLLimit) {
      ws.ui.Message("Node exceeds Maximum RL Limits", MsgButtons::OK, MsgIcon::Exclamation,
                    "Import Level");
      z = kRLLimit;
    } else if (z < -kRLLimit) {
      ws.ui.Message("Node exceeds Minimum RL Limits", MsgButtons::OK, MsgIcon::Exclamation,
                    "Import Level");
      z = -kRLLimit;
    }
    highest = std::max(highest, z);
    if (z == 0) z = kZeroHeld;
    bool known = false;
    for (int level = 1; level <= kLastLevel && !known; ++level) known = net.RLBound[level][1] == z;
    if (known || !net.RLName[counter].empty()) continue;
    net.RLName[counter] = "Level" + std::to_string(counter);
    net.RLBound[counter] = {0, z, z};
    if (++counter > kLastLevel) {
      ws.ui.Inform("Maximum number of different RL's used!");
      break;
    }
  }
  SortLevels(net);
  for (int level = 2; level <= kLastLevel; ++level) {
    if (!net.RLName[level].empty())
      net.RLName[level] = "Level" + std::to_string(net.RLBound[level][1]);
  }
  if (net.RLBound[1][1] == kZeroHeld) net.RLBound[1] = {};
  if (ws.ui.AskYesNo("Place highest RL data on surface level?", "Surface Level")) {
    net.RLName[1] = "Surface";
    net.RLBound[1] = {0, highest, highest};
  } else {
    net.RLName[1] = "Surface";
    const std::int32_t bound = net.RLBound[2][2] + 10;
    net.RLBound[1] = {0, bound, bound};
  }
  SortLevels(net);
}

}  // namespace

void BuildImportLevels(Workspace& ws, bool oneLevelPerHeight, bool merge, int lowestZ,
                       int highestZ) {
  if (oneLevelPerHeight) {
    BuildLevelPerHeight(ws, merge);
  } else {
    BuildOneLevel(ws, merge, lowestZ, highestZ);
  }
}

}  // namespace galeris
