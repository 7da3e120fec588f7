// Blocks of grid cells as clipboard text: cells joined by Tab, rows by CR LF, so that a block
// copied from a spreadsheet program lands cell by cell and ours pastes into one.
#pragma once

#include <string>
#include <vector>

namespace galeris {

using CellBlock = std::vector<std::vector<std::string>>;

// Splits on Tab and CR; the LF of a CR LF is skipped, a lone LF (the clipboard of other
// systems) ends a row too. A final line ending adds no empty row.
CellBlock SplitCellBlock(const std::string& text);
// Joins the rows of a block with Tab and CR LF (no line ending after the last row).
std::string JoinCellBlock(const CellBlock& block);

}  // namespace galeris
