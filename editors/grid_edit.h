// GridEditKeyDown: the in-place cell editor of the grid editors (spreadsheet, fan list). Enter
// puts the text in the cell and moves down, Tab moves right, Up and Down move by one row;
// Escape leaves the cell as it was.
#pragma once

class QAbstractItemView;

namespace galeris {

// Gives the view's cells the shared in-place editor.
void InstallGridEdit(QAbstractItemView* view);
// An open cell editor gives its text to its cell (before a save reads the grid).
void CommitOpenEditor(QAbstractItemView* view);

}  // namespace galeris
