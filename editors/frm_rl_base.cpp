#include "editors/frm_rl_base.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeySequence>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/units.h"
#include "editors/grid_edit.h"

namespace galeris {

FrmRLBase::FrmRLBase(Workspace& ws, std::function<void()> validated, QWidget* parent)
    : QDialog(parent), ws_(ws), validated_(std::move(validated)) {
  setObjectName("frmRLBase");
  setWindowTitle("Level List");
  auto* layout = new QVBoxLayout(this);
  auto* menus = new QMenuBar(this);
  QMenu* file = menus->addMenu("&File");
  file->addAction("&Save", this, &FrmRLBase::Save)->setObjectName("mnuSave");
  file->addAction("E&xit", this, &FrmRLBase::reject)->setObjectName("mnuExit");
  QMenu* edit = menus->addMenu("&Edit");
  edit->addAction("Copy  Ctrl+C", this, &FrmRLBase::CopyData)->setObjectName("CopyData");
  edit->addAction("Paste  Ctrl+V", this, &FrmRLBase::PasteData)->setObjectName("PasteData");
  layout->setMenuBar(menus);

  grid_ = new QTableWidget(kLevelGridRows, 4, this);
  grid_->setObjectName("GridRL");
  const QString unit =
      QString::fromStdString(ws.units.UnitText[Unit::Length][ws.units.UnitSystem == 2 ? 2 : 1]);
  grid_->setHorizontalHeaderLabels({"No", "Name", "RL High " + unit, "RL Low " + unit});
  grid_->verticalHeader()->hide();
  grid_->horizontalHeader()->setStretchLastSection(true);
  InstallGridEdit(grid_);
  layout->addWidget(grid_);
  new QShortcut(QKeySequence::Copy, grid_, [this] { CopyData(); });
  new QShortcut(QKeySequence::Paste, grid_, [this] { PasteData(); });
  new QShortcut(QKeySequence::Delete, grid_, [this] {
    for (QTableWidgetItem* item : grid_->selectedItems())
      if (item->column() > 0) item->setText("");
  });

  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("RLOK");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("RLCancel");
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, &FrmRLBase::accept);
  connect(cancel, &QPushButton::clicked, this, &FrmRLBase::reject);
  connect(grid_, &QTableWidget::itemChanged, this, [this] {
    if (!filling_) changed_ = true;
  });
  Fill(LevelGridFromTable(ws_));
  resize(520, 420);
}

void FrmRLBase::Fill(const LevelGrid& grid) {
  filling_ = true;
  for (int row = 1; row <= kLevelGridRows; ++row) {
    auto* number = new QTableWidgetItem(QString::number(row));
    number->setFlags(number->flags() & ~Qt::ItemIsEditable);
    grid_->setItem(row - 1, 0, number);
    const LevelRow& cells = grid[row];
    for (auto [column, text] : {std::pair{1, &cells.Name}, {2, &cells.High}, {3, &cells.Low}})
      grid_->setItem(row - 1, column, new QTableWidgetItem(QString::fromStdString(*text)));
  }
  filling_ = false;
}

LevelGrid FrmRLBase::Grid() const {
  LevelGrid grid(kLevelGridRows + 1);
  auto cell = [this](int row, int column) {
    const QTableWidgetItem* item = grid_->item(row - 1, column);
    return item ? item->text().toStdString() : std::string();
  };
  for (int row = 1; row <= kLevelGridRows; ++row)
    grid[row] = {cell(row, 1), cell(row, 2), cell(row, 3)};
  return grid;
}

void FrmRLBase::Save() {
  CommitOpenEditor(grid_);  // a cell still being typed in counts
  ValidateLevels(ws_, Grid());
  Fill(LevelGridFromTable(ws_));
  changed_ = false;
  if (validated_) validated_();
}

void FrmRLBase::CopyData() {
  const QList<QTableWidgetSelectionRange> ranges = grid_->selectedRanges();
  if (ranges.isEmpty()) return;
  const QTableWidgetSelectionRange& r = ranges.front();
  const std::string text = CopyLevelCells(Grid(), r.topRow() + 1, std::max(1, r.leftColumn()),
                                          r.bottomRow() + 1, r.rightColumn());
  QApplication::clipboard()->setText(QString::fromStdString(text));
}

void FrmRLBase::PasteData() {
  LevelGrid grid = Grid();
  PasteLevelCells(grid, grid_->currentRow() + 1, std::max(1, grid_->currentColumn()),
                  QApplication::clipboard()->text().toStdString());
  Fill(grid);
  changed_ = true;
}

void FrmRLBase::accept() {
  Save();
  QDialog::accept();
}

void FrmRLBase::reject() {
  if (changed_ && ws_.ui.AskYesNo("Save spreadsheet changes to network ?", "Save changes")) {
    accept();
    return;
  }
  QDialog::reject();
}

}  // namespace galeris
