// The airway spreadsheet's working copy: one row of text per airway, 22 columns through the
// unit table, and a table of the cells that the user fixed. Nothing reaches the store until
// SaveSheet writes the changed rows back as one undoable action. Find, replace, sort, fix,
// paste, insert, delete and the row recalculation all work on the copy.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

inline constexpr int kSheetColumns = 22;

// The grid's format string: titles, alignment and width hints.
inline constexpr const char* kSheetFormat =
    "|<No.   |<Name          |<From       |<To        |>Length|> Flow |> Vel |>Pdrop "
    "|>Resistance|>K-Factor|>Shock|>Fan |>F Pres|>Height|>Width|< Comments  |>X1     |>Y1     "
    "|>Z1     |>X2     |>Y2    |>Z2    ";

namespace SheetColumn {
inline constexpr int No = 1, Name = 2, From = 3, To = 4, Length = 5, Flow = 6, Vel = 7, Pdrop = 8,
                     Resistance = 9, KFactor = 10, Shock = 11, Fan = 12, FPres = 13, Height = 14,
                     Width = 15, Comments = 16, X1 = 17, Y1 = 18, Z1 = 19, X2 = 20, Y2 = 21,
                     Z2 = 22;
}

struct SheetColumnInfo {
  std::string title;  // trimmed
  bool leftAligned = false;
  int widthHint = 0;  // characters of the format string's title
  int unit = 0;       // row of the unit table, 0 for none
  bool editable = true;
  bool fixable = false;
  bool text = false;  // sorts and finds as text
};
// Columns 1..22 from the format string and the column rules.
const SheetColumnInfo& SheetColumnOf(int column);

struct SheetRow {
  int airway = 0;  // store position the row was filled from; 0 for a row the sheet added
  std::array<std::string, kSheetColumns + 1> cell{};
  std::array<std::string, kSheetColumns + 1> original{};  // the text as filled from the store
  std::uint32_t fixed = 0;          // bit 1 << column: the cell is fixed by the user
  std::uint32_t originalFixed = 0;  // as filled
  bool IsFixed(int column) const { return (fixed >> column) & 1U; }
  void SetFixed(int column, bool on);
};

struct AirwaySheet {
  std::vector<SheetRow> rows;
  std::vector<int> deleted;  // store positions of rows the user deleted
  bool SheetDirty = false;
  int findRow = 0;  // the next row a find starts at
  std::string lastFind;
};

// Open: one row per airway of the store, in store order.
AirwaySheet FillSheet(const Workspace& ws);
// The row of one airway as the store holds it.
SheetRow FillRow(const Workspace& ws, int position);

// Writes every changed, added and deleted row to the store as one undoable action, after
// checking every changed number: a cell that cannot be read shows "Error in Number Format" and
// nothing is written (its row and column are returned). Coordinates become whole units.
struct SheetCell {
  int row = 0, column = 0;
};
std::optional<SheetCell> SaveSheet(Workspace& ws, AirwaySheet& sheet);

// A cell's text after the user typed it (CellCommitted): names spread along the node, numbers
// get fixed and the row recalculated, a fixed pressure and flow offer the resistance.
void CommitCell(Workspace& ws, AirwaySheet& sheet, int row, int column, const std::string& text);
// RecalcRow: area, length and resistance from the row's own text.
void RecalcRow(const Workspace& ws, AirwaySheet& sheet, int row);
void RecalcAll(const Workspace& ws, AirwaySheet& sheet);

// Fix or unfix the cells of a block; only fixable columns take it. Pdrop is fixed together with
// Flow.
void SetFixedBlock(AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn, int lastColumn,
                   bool fixed);
// Empties every editable cell of a block.
void ClearBlock(AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn, int lastColumn);
// Tab and CR LF text of a block.
std::string CopyBlock(const AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn,
                      int lastColumn);
// Pastes clipboard text at a cell; columns past the last are dropped, rows past the last are
// added (after the capacity check, which refuses the whole paste). Returns the rows pasted to,
// 0 when refused.
int PasteBlock(Workspace& ws, AirwaySheet& sheet, int row, int column, const std::string& text);
// Adds `count` empty rows before `row` (row == rows.size() appends); false when the store
// would overflow.
bool InsertRows(Workspace& ws, AirwaySheet& sheet, int row, int count);
// mnuDelete: asks first (once for a block of rows, or naming the one airway), then saves the
// pending edits and deletes the rows' airways from the store. A refused save comes back as
// SaveSheet gives it, and nothing is deleted; No changes nothing.
std::optional<SheetCell> DeleteRows(Workspace& ws, AirwaySheet& sheet, int firstRow, int lastRow);

// Sorts all rows by a column; the fix marks travel with their rows.
void SortSheet(AirwaySheet& sheet, int column, bool ascending);

// mnuFind / mnuAgain: the next row whose cell in this column matches, asking about a near
// match; -1 when nothing is found (after the message).
int FindInColumn(UiPort& ui, AirwaySheet& sheet, int column, const std::string& text);
// mnuReplace: replaces every cell of the column that matches whole; the count.
int ReplaceInColumn(AirwaySheet& sheet, int column, const std::string& search,
                    const std::string& replacement);

inline constexpr const char* kMsgSaveSheet = "Save spreadsheet changes to network ?";
inline constexpr const char* kMsgDeleteRows = "Permanently delete row selections ?";
inline constexpr const char* kMsgDeleteBranch = "Permanently delete branch ?";
inline constexpr const char* kMsgFixedFlowPressure = "Cannot fix this pressure due to fixed flow";
inline constexpr const char* kMsgCalcResistance = "Calculate and fix resistance ?";
inline constexpr const char* kMsgLevelNotFound = "Level name not found";
inline constexpr const char* kMsgPrintFailed = "Error printing data ! - aborting";

}  // namespace galeris
