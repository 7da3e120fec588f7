#include "editors/logic/level_list.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "core/number_format.h"
#include "core/typed_number.h"
#include "core/units.h"

namespace galeris {
namespace {

constexpr double kRLLimit = 10000000;

std::string BoundText(const Workspace& ws, std::int32_t value) {
  return FormatValue(ws.units, value, Unit::Length, false, true);
}

// A cell through the length unit, rounded to a whole metre; empty reads as 0.
std::optional<double> CellMetres(const Workspace& ws, const std::string& cell) {
  if (cell.find_first_not_of(" \t") == std::string::npos) return 0.0;
  const std::optional<double> typed = ReadTypedNumber(cell);
  if (!typed) return std::nullopt;
  return static_cast<double>(RoundHalfEven(FromDisplay(ws.units, *typed, Unit::Length)));
}

// High at the limit is refused, Low at the limit is not: the two columns differ on purpose.
std::int32_t ClipHigh(Workspace& ws, double value) {
  if (value >= kRLLimit) {
    ws.ui.Message("Exceeds Maximum RL Limits", MsgButtons::OK, MsgIcon::Exclamation);
    return kHighestRL;
  }
  if (value <= -kRLLimit) {
    ws.ui.Message("Exceeds Minimum RL Limits", MsgButtons::OK, MsgIcon::Exclamation);
    return -kHighestRL;
  }
  return static_cast<std::int32_t>(value);
}

std::int32_t ClipLow(Workspace& ws, double value) {
  if (value > kRLLimit) {
    ws.ui.Message("Exceeds Maximum RL Limits", MsgButtons::OK, MsgIcon::Exclamation);
    return kHighestRL;
  }
  if (value < -kRLLimit) {
    ws.ui.Message("Exceeds Minimum RL Limits", MsgButtons::OK, MsgIcon::Exclamation);
    return -kHighestRL;
  }
  return static_cast<std::int32_t>(value);
}

void ValidateRow(Workspace& ws, const LevelRow& cells, int row) {
  Network& net = ws.net;
  if (cells.Name.find_first_of(",\"") != std::string::npos) {
    ws.ui.Message("No commas or double quotes allowed in level names !", MsgButtons::OK,
                  MsgIcon::Exclamation);
    return;
  }
  const std::optional<double> high = CellMetres(ws, cells.High);
  const std::optional<double> low = CellMetres(ws, cells.Low);
  if (!high || !low) {
    ws.ui.Message("RL values must be numbers: level \"" + cells.Name + "\" keeps its old range",
                  MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  net.RLName[row] = cells.Name;
  auto& bound = net.RLBound[row];
  bound[1] = 0;
  bound[2] = 0;
  if (*high != 0 || *low != 0) {
    bound[1] = ClipHigh(ws, *high);
    bound[2] = ClipLow(ws, *low);
  }
  if (bound[2] > bound[1]) std::swap(bound[1], bound[2]);
  if (row != 1 && !cells.Name.empty() && bound[1] >= net.RLBound[1][2]) {
    ws.ui.Message("Warning : The level " + cells.Name +
                      " is within the NO.1 (surface) RL range.  Change the RL ranges to LESS "
                      "THAN these values to prevent possible problems.",
                  MsgButtons::OK, MsgIcon::Critical, "RL Range Problem");
  }
}

}  // namespace

LevelGrid LevelGridFromTable(const Workspace& ws) {
  LevelGrid grid(kLevelGridRows + 1);
  const int end = LevelTableEnd(ws.net);
  for (int row = 1; row <= end && row <= kLevelGridRows; ++row) {
    grid[row].Name = ws.net.RLName[row];
    grid[row].High = BoundText(ws, ws.net.RLBound[row][1]);
    grid[row].Low = BoundText(ws, ws.net.RLBound[row][2]);
  }
  return grid;
}

int LevelTableEnd(const Network& net) {
  const int last = std::min<int>(kMaxLevels, static_cast<int>(net.RLName.size()) - 1);
  for (int row = 1; row <= last; ++row) {
    if (net.RLName[row].empty() && net.RLBound[row][1] == 0 && net.RLBound[row][2] == 0)
      return row - 1;
  }
  return last;
}

void SortLevels(Network& net) {
  std::vector<int> named;
  for (int row = 1; row <= kLevelGridRows && row < static_cast<int>(net.RLName.size()); ++row)
    if (!net.RLName[row].empty()) named.push_back(row);
  for (std::size_t k = 1; k < named.size(); ++k) {
    for (std::size_t j = k; j > 0; --j) {
      const int here = named[j], above = named[j - 1];
      if (net.RLBound[here][1] < net.RLBound[above][1]) break;
      std::swap(net.RLName[here], net.RLName[above]);
      std::swap(net.RLBound[here], net.RLBound[above]);
    }
  }
}

void ValidateLevels(Workspace& ws, const LevelGrid& grid) {
  Network& net = ws.net;
  for (int row = 1; row <= kLevelGridRows && row < static_cast<int>(grid.size()); ++row)
    ValidateRow(ws, grid[row], row);
  SortLevels(net);
  int count = LevelTableEnd(net);
  if (count < 2) {
    net.RLName[1] = "SURFACE";
    count = std::max(count, 1);
  }
  net.RLCount = static_cast<std::int16_t>(count);
}

std::pair<float, float> RangeBand(const Network& net, int from, int to) {
  const auto wrapped = static_cast<std::int16_t>(net.RLBound[from][1]);
  const auto high = static_cast<float>(wrapped);
  const auto low = static_cast<float>(net.RLBound[to][2]);
  return {std::min(high, low), std::max(high, low)};
}

bool AddSelectedLevel(Workspace& ws, std::vector<std::int16_t>& chosen, int level) {
  if (static_cast<int>(chosen.size()) >= kMostSelectedLevels) {
    ws.ui.Inform("Maximum of only 6 selected levels allowed!");
    return false;
  }
  chosen.push_back(static_cast<std::int16_t>(level));
  return true;
}

namespace {
std::string& Cell(LevelRow& row, int column) {
  return column == 1 ? row.Name : column == 2 ? row.High : row.Low;
}
}  // namespace

std::string CopyLevelCells(const LevelGrid& grid, int r1, int c1, int r2, int c2) {
  std::string text;
  for (int row = std::max(1, r1); row <= r2 && row < static_cast<int>(grid.size()); ++row) {
    LevelRow cells = grid[row];
    for (int column = std::max(1, c1); column <= std::min(3, c2); ++column) {
      text += Cell(cells, column);
      if (column < std::min(3, c2)) text += '\t';
    }
    text += "\r\n";
  }
  return text;
}

void PasteLevelCells(LevelGrid& grid, int row, int column, const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line) && row < static_cast<int>(grid.size()); ++row) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::istringstream fields(line);
    int c = column;
    for (std::string field; std::getline(fields, field, '\t') && c <= 3; ++c)
      Cell(grid[row], c) = field;
  }
}

}  // namespace galeris
