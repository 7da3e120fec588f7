// Clipboard text of cell blocks.
#include "editors/logic/grid_text.h"

namespace galeris {

CellBlock SplitCellBlock(const std::string& text) {
  CellBlock block;
  std::vector<std::string> row;
  std::string cell;
  bool rowOpen = false;
  char previous = 0;
  for (char c : text) {
    const bool afterCr = previous == '\r';
    previous = c;
    if (c == '\n' && afterCr) continue;
    if (c == '\t') {
      row.push_back(std::move(cell));
      cell.clear();
      rowOpen = true;
    } else if (c == '\r' || c == '\n') {
      row.push_back(std::move(cell));
      block.push_back(std::move(row));
      row.clear();
      cell.clear();
      rowOpen = false;
    } else {
      cell.push_back(c);
      rowOpen = true;
    }
  }
  if (rowOpen) {
    row.push_back(std::move(cell));
    block.push_back(std::move(row));
  }
  return block;
}

std::string JoinCellBlock(const CellBlock& block) {
  std::string text;
  for (std::size_t r = 0; r < block.size(); ++r) {
    if (r > 0) text += "\r\n";
    for (std::size_t c = 0; c < block[r].size(); ++c) {
      if (c > 0) text += '\t';
      text += block[r][c];
    }
  }
  return text;
}

}  // namespace galeris
