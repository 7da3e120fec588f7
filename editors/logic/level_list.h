// The table of levels: named bands of reduced level (RL), row 1 the surface. The rules of the
// Level List grid (ValidateLevels and the sort), the band of a range of levels, and the
// choice of up to six levels, all without a screen.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/workspace.h"

namespace galeris {

inline constexpr int kLevelGridRows = 249;
inline constexpr int kMostSelectedLevels = 6;
inline constexpr std::int32_t kHighestRL = 9999999;

// One row of GridRL as shown and typed: name, RL High and RL Low in the display's length unit.
struct LevelRow {
  std::string Name, High, Low;
};
using LevelGrid = std::vector<LevelRow>;  // rows 1..kLevelGridRows; [0] unused

// The grid filled from the table; rows after the end of the table are empty.
LevelGrid LevelGridFromTable(const Workspace& ws);

// RLOK and mnuSave: every row into RLName and RLBound (clipped with a warning, Low above High
// exchanged, the surface rule warned of), then SortLevels, the end of the table, the
// "SURFACE" rule for fewer than two levels, and RLCount. A name with a comma or a double
// quote, or a bound that is not a number, is refused with a message and the row keeps its old
// value.
void ValidateLevels(Workspace& ws, const LevelGrid& grid);

// Named rows 2..249 ordered by RL High descending, by insertion; the walk may reach row 1.
void SortLevels(Network& net);

// The number of levels before the first row with an empty name and both bounds 0.
int LevelTableEnd(const Network& net);

// frmRange: the band from the RL High of level `from` (read as a 16-bit integer, so that it
// wraps) to the RL Low of level `to`: {bottom, top}, bottom at or below top.
std::pair<float, float> RangeBand(const Network& net, int from, int to);

// frmSelLevel: adds a level to the chosen list; a seventh shows "Maximum of only 6 selected
// levels allowed!" and is not added.
bool AddSelectedLevel(Workspace& ws, std::vector<std::int16_t>& chosen, int level);

// Tab and CR LF separated text of the cells rows r1..r2, columns c1..c2 (1 name, 2 High,
// 3 Low), and the paste of such text at (row, column), stopping at the grid's edges.
std::string CopyLevelCells(const LevelGrid& grid, int r1, int c1, int r2, int c2);
void PasteLevelCells(LevelGrid& grid, int row, int column, const std::string& text);

}  // namespace galeris
