// frmSpreadSheet ("SpreadSheet"): the whole network as one grid over core's working copy
// (editors/logic/airway_sheet.h). The grid is a table model over the copy's rows, so that a mine of
// 30 000 airways opens and scrolls at once; nothing reaches the store until Save Changes.
#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <array>
#include <functional>

#include "editors/logic/airway_sheet.h"
#include "core/workspace.h"

class QPrinter;
class QTableView;

namespace galeris {

// ColumnWidth: kept across opens of the form; negative for a hidden column, all zero for the
// default widths.
using SheetColumnWidths = std::array<int, kSheetColumns + 1>;

// Opens the spreadsheet modally. simulate runs the airflow simulation (mnuSim).
void ShowSpreadSheet(Workspace& ws, SheetColumnWidths& widths, std::function<void()> simulate,
                     QWidget* parent);

// The table model over the working copy: column c of the view is sheet column c + 1.
class SheetModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  SheetModel(Workspace& ws, AirwaySheet& sheet, QObject* parent = nullptr);
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  // After the copy changed under the model: rows added, removed or all replaced.
  void Refresh();
  // After cell texts or fix marks changed: the selection stays.
  void CellsChanged();

 private:
  Workspace& ws_;
  AirwaySheet& sheet_;
};

// Prints the visible columns with their headings at a font size, fixed cells marked "F";
// false when the printer failed.
bool PrintSheet(const AirwaySheet& sheet, const std::vector<int>& columns, int fontSize,
                QPrinter& printer);

class FrmSpreadSheet : public QDialog {
  Q_OBJECT

 public:
  FrmSpreadSheet(Workspace& ws, SheetColumnWidths& widths, std::function<void()> simulate,
                 QWidget* parent = nullptr);
  AirwaySheet& Sheet() { return sheet_; }
  SheetModel& Model() { return *model_; }
  QTableView& Grid() { return *Spreadsheet; }
  // mnuSaveChanges without its question: false when a cell was refused.
  bool SaveChanges();

 protected:
  void reject() override;  // Exit, Escape and the close box: offers to save first
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildMenus();
  int DefaultColumnWidth(int column) const;
  void ApplyColumnWidths();
  void KeepColumnWidths();
  // The selection's bounds in sheet rows and columns; the current cell when nothing is selected.
  struct Block {
    int top = 0, bottom = -1, left = 1, right = 0;
  };
  Block Selection() const;
  int CurrentRow() const;
  int CurrentColumn() const;
  void GoTo(int row, int column);
  void Refill();
  void Find(bool again);
  void Replace();
  void Sort(bool ascending);
  void Paste();
  void Insert(bool after);
  void OpenAirway(bool edit);
  void Simulate();
  void Print();
  void SetFrozenColumns(int count);

  Workspace& ws_;
  SheetColumnWidths& widths_;
  std::function<void()> simulate_;
  AirwaySheet sheet_;
  SheetModel* model_;
  QTableView* Spreadsheet;
  QTableView* frozen_;  // the frozen leading columns, laid over the grid
  int frozenColumns_ = 0;
};

}  // namespace galeris
