// frmSpreadSheet: the grid, its menus and keys over core's working copy.
#include "editors/frm_spread_sheet.h"

#include <QApplication>
#include <QClipboard>
#include <QColor>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "editors/frm_air_edit.h"
#include "editors/frm_air_info.h"
#include "editors/grid_edit.h"

namespace galeris {
namespace {

constexpr QRgb kFixedColour = 0xFFFF0000;  // CellColour 255: red
constexpr int kRowHeight = 20;

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

// View column c shows sheet column c + 1.
int SheetColumnAt(int viewColumn) {
  return viewColumn + 1;
}

// A busy pointer for the operations over all rows.
struct Busy {
  explicit Busy(UiPort& ui) : ui_(ui) { ui_.SetBusy(true); }
  ~Busy() { ui_.SetBusy(false); }
  UiPort& ui_;
};

}  // namespace

SheetModel::SheetModel(Workspace& ws, AirwaySheet& sheet, QObject* parent)
    : QAbstractTableModel(parent), ws_(ws), sheet_(sheet) {}

int SheetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(sheet_.rows.size());
}

int SheetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kSheetColumns;
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const SheetRow& row = sheet_.rows[index.row()];
  const int column = SheetColumnAt(index.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return Q(row.cell[column]);
    case Qt::ForegroundRole:
      return row.IsFixed(column) ? QVariant(QColor(kFixedColour)) : QVariant();
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignVCenter) |
             static_cast<int>(SheetColumnOf(column).leftAligned ? Qt::AlignLeft : Qt::AlignRight);
    default:
      return {};
  }
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) return Q(SheetColumnOf(SheetColumnAt(section)).title);
  return section + 1;
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.isValid() && SheetColumnOf(SheetColumnAt(index.column())).editable)
    f |= Qt::ItemIsEditable;
  return f;
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  const int column = SheetColumnAt(index.column());
  if (!SheetColumnOf(column).editable) return false;
  CommitCell(ws_, sheet_, index.row(), column, value.toString().toStdString());
  CellsChanged();  // a node name spreads to other rows, a recalculation to the row's cells
  return true;
}

void SheetModel::CellsChanged() {
  if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, kSheetColumns - 1));
}

void SheetModel::Refresh() {
  beginResetModel();
  endResetModel();
}

void ShowSpreadSheet(Workspace& ws, SheetColumnWidths& widths, std::function<void()> simulate,
                     QWidget* parent) {
  FrmSpreadSheet form(ws, widths, std::move(simulate), parent);
  form.exec();
}

FrmSpreadSheet::FrmSpreadSheet(Workspace& ws, SheetColumnWidths& widths,
                               std::function<void()> simulate, QWidget* parent)
    : QDialog(parent), ws_(ws), widths_(widths), simulate_(std::move(simulate)) {
  setObjectName("frmSpreadSheet");
  setWindowTitle("SpreadSheet");
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  {
    Busy busy(ws_.ui);
    sheet_ = FillSheet(ws_);
  }
  model_ = new SheetModel(ws_, sheet_, this);
  auto* layout = new QVBoxLayout(this);
  Spreadsheet = new QTableView(this);
  Spreadsheet->setObjectName("Spreadsheet");
  Spreadsheet->setModel(model_);
  Spreadsheet->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                               QAbstractItemView::EditKeyPressed);
  // Fixed row heights: the view never measures 30 000 rows.
  Spreadsheet->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  Spreadsheet->verticalHeader()->setDefaultSectionSize(kRowHeight);
  Spreadsheet->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  Spreadsheet->installEventFilter(this);
  InstallGridEdit(Spreadsheet);
  layout->addWidget(Spreadsheet);

  frozen_ = new QTableView(Spreadsheet);
  frozen_->setModel(model_);
  frozen_->setSelectionModel(Spreadsheet->selectionModel());
  frozen_->verticalHeader()->hide();
  frozen_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  frozen_->verticalHeader()->setDefaultSectionSize(kRowHeight);
  frozen_->setFocusPolicy(Qt::NoFocus);
  frozen_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  frozen_->hide();
  connect(Spreadsheet->verticalScrollBar(), &QScrollBar::valueChanged, frozen_->verticalScrollBar(),
          &QScrollBar::setValue);
  connect(frozen_->verticalScrollBar(), &QScrollBar::valueChanged, Spreadsheet->verticalScrollBar(),
          &QScrollBar::setValue);

  BuildMenus();
  ApplyColumnWidths();
  resize(1000, 600);
}

void FrmSpreadSheet::BuildMenus() {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  auto add = [this](QMenu* menu, const QString& name, const QString& caption,
                    std::function<void()> run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
    return action;
  };
  QMenu* file = bar->addMenu("&File");
  add(file, "mnuSaveChanges", "Save Changes", [this] {
    if (ws_.ui.AskYesNo(kMsgSaveSheet, "Save changes")) SaveChanges();
  });
  add(file, "mnuPrint", "Print", [this] { Print(); });
  add(file, "mnuExit", "Exit", [this] { close(); });

  QMenu* edit = bar->addMenu("&Edit");
  add(edit, "mnuUndo", "Undo changes", [this] { Refill(); });
  add(edit, "mnuEditBox", "Edit Box", [this] { OpenAirway(true); });
  add(edit, "mnuInfo", "Info Box", [this] { OpenAirway(false); });
  edit->addSeparator();
  add(edit, "mnuCopy", "Copy  Ctrl+C", [this] {
    const Block b = Selection();
    QApplication::clipboard()->setText(Q(CopyBlock(sheet_, b.top, b.bottom, b.left, b.right)));
  });
  add(edit, "mnuPaste", "Paste  Ctrl+V", [this] { Paste(); });
  add(edit, "mnuClear", "Clear  <del>", [this] {
    const Block b = Selection();
    ClearBlock(sheet_, b.top, b.bottom, b.left, b.right);
    model_->CellsChanged();
  });
  add(edit, "mnuSelAll", "Select All", [this] { Spreadsheet->selectAll(); });
  edit->addSeparator();
  add(edit, "mnuInsert", "Insert Row Before", [this] { Insert(false); });
  add(edit, "mnuInsert2", "Insert Row After", [this] { Insert(true); });
  add(edit, "mnuDelete", "Delete Row", [this] {
    CommitOpenEditor(Spreadsheet);
    const Block b = Selection();
    const std::optional<SheetCell> bad = DeleteRows(ws_, sheet_, b.top, b.bottom);
    model_->Refresh();
    if (bad && bad->row >= 0) GoTo(bad->row, bad->column);
  });

  QMenu* search = bar->addMenu("&Search");
  add(search, "mnuFind", "Column Find", [this] { Find(false); });
  add(search, "mnuAgain", "Find Again (F3)", [this] { Find(true); });
  add(search, "mnuReplace", "Column Replace", [this] { Replace(); });
  QMenu* sort = bar->addMenu("S&ort");
  add(sort, "mnuAscend", "Ascending", [this] { Sort(true); });
  add(sort, "mnuDescend", "Descending", [this] { Sort(false); });

  QMenu* cells = bar->addMenu("&Cells");
  auto fix = [this](bool on) {
    const Block b = Selection();
    SetFixedBlock(sheet_, b.top, b.bottom, b.left, b.right, on);
    model_->CellsChanged();
  };
  add(cells, "mnuFix", "Fix", [fix] { fix(true); });
  add(cells, "mnuUnfix", "Unfix", [fix] { fix(false); });
  cells->addSeparator();
  QMenu* fixColumns = cells->addMenu("Fix Columns");
  fixColumns->menuAction()->setObjectName("mnuFixC");
  for (int n = 1; n <= 4; ++n)
    add(fixColumns, QString("mnu%1").arg(n), QString::number(n),
        [this, n] { SetFrozenColumns(n); });
  // The headings of this grid never scroll away: fixing and releasing them changes nothing.
  add(cells, "mnuFixR", "Fix Headings", [] {});
  add(cells, "mnuUnfixC", "Unfix Columns", [this] { SetFrozenColumns(0); });
  add(cells, "mnuUnfixR", "Unfix Headings", [] {});
  cells->addSeparator();
  add(cells, "mnuHideC", "Hide Columns", [this] {
    const Block b = Selection();
    for (int c = b.left; c <= b.right; ++c) Spreadsheet->setColumnHidden(c - 1, true);
    KeepColumnWidths();
    SetFrozenColumns(frozenColumns_);
  });
  auto showAll = [this] {
    for (int c = 0; c < kSheetColumns; ++c) Spreadsheet->setColumnHidden(c, false);
    KeepColumnWidths();
    SetFrozenColumns(frozenColumns_);
  };
  add(cells, "mnuShowC", "Show Columns", showAll);
  add(cells, "mnuShowAll", "Show All Data", showAll);

  QMenu* calc = bar->addMenu("C&alculate");
  add(calc, "mnuRecalc", "Recalc row", [this] {
    const int row = CurrentRow();
    if (row < 0) return;
    RecalcRow(ws_, sheet_, row);
    sheet_.SheetDirty = true;
    model_->CellsChanged();
  });
  add(calc, "mnuRecalcAll", "Recalc all", [this] {
    RecalcAll(ws_, sheet_);
    model_->CellsChanged();
  });
  add(calc, "mnuSim", "Simulate <F5>", [this] { Simulate(); });

  QMenu* type = bar->addMenu("Additional");
  type->menuAction()->setObjectName("mnuType");
  const char* additional[] = {"Air Velocity",   "Pressure Load", "Shock Length", "Friction Factor",
                              "Friction Power", "Fan/Fix Power", "Energy Loss",  "Fan/Fix Cost",
                              "Layers",         "Layer Names",   "Fire Values",  "Time Values"};
  for (int n = 0; n < 12; ++n) add(type, QString("mnuAdd(%1)").arg(n), additional[n], [] {});
}

// The default width of a column: its title's hint, and for a column of figures room for the
// longest figure it holds, so that no value is cut short ("2145.3", not "214...").
int FrmSpreadSheet::DefaultColumnWidth(int column) const {
  const QFontMetrics metrics = Spreadsheet->fontMetrics();
  const int standard = (SheetColumnOf(column).widthHint + 2) * metrics.averageCharWidth();
  if (SheetColumnOf(column).leftAligned) return standard;
  std::size_t longest = 0;
  for (const SheetRow& row : sheet_.rows) longest = std::max(longest, row.cell[column].size());
  const int margins = 2 * (Spreadsheet->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
  const int figures = metrics.horizontalAdvance(QString(static_cast<int>(longest), '0'));
  return std::max(standard, figures + margins);
}

void FrmSpreadSheet::ApplyColumnWidths() {
  const bool defaults = std::all_of(widths_.begin(), widths_.end(), [](int w) { return w == 0; });
  for (int c = 1; c <= kSheetColumns; ++c) {
    const int standard = DefaultColumnWidth(c);
    const int w = defaults ? standard : widths_[c];
    Spreadsheet->setColumnWidth(c - 1, w == 0 ? standard : std::abs(w));
    Spreadsheet->setColumnHidden(c - 1, w < 0);
  }
}

void FrmSpreadSheet::KeepColumnWidths() {
  for (int c = 1; c <= kSheetColumns; ++c) {
    if (!Spreadsheet->isColumnHidden(c - 1)) {
      widths_[c] = Spreadsheet->columnWidth(c - 1);
    } else {
      const int last = std::abs(widths_[c]);
      widths_[c] = -std::max(last, 1);
    }
  }
}

FrmSpreadSheet::Block FrmSpreadSheet::Selection() const {
  Block b;
  const QModelIndexList selected = Spreadsheet->selectionModel()->selectedIndexes();
  if (selected.isEmpty()) {
    b.top = b.bottom = CurrentRow();
    b.left = b.right = CurrentColumn();
    return b;
  }
  b = {INT32_MAX, -1, INT32_MAX, 0};
  for (const QModelIndex& index : selected) {
    b.top = std::min(b.top, index.row());
    b.bottom = std::max(b.bottom, index.row());
    b.left = std::min(b.left, SheetColumnAt(index.column()));
    b.right = std::max(b.right, SheetColumnAt(index.column()));
  }
  return b;
}

int FrmSpreadSheet::CurrentRow() const {
  return Spreadsheet->currentIndex().row();
}

int FrmSpreadSheet::CurrentColumn() const {
  const QModelIndex current = Spreadsheet->currentIndex();
  return current.isValid() ? SheetColumnAt(current.column()) : SheetColumn::Name;
}

void FrmSpreadSheet::GoTo(int row, int column) {
  const QModelIndex index = model_->index(row, column - 1);
  Spreadsheet->setCurrentIndex(index);
  Spreadsheet->scrollTo(index);
}

void FrmSpreadSheet::Refill() {
  Busy busy(ws_.ui);
  sheet_ = FillSheet(ws_);
  model_->Refresh();
}

bool FrmSpreadSheet::SaveChanges() {
  CommitOpenEditor(Spreadsheet);
  Busy busy(ws_.ui);
  if (const std::optional<SheetCell> bad = SaveSheet(ws_, sheet_)) {
    if (bad->row >= 0) GoTo(bad->row, bad->column);
    return false;
  }
  model_->Refresh();
  return true;
}

void FrmSpreadSheet::Find(bool again) {
  if (!again || sheet_.lastFind.empty()) {
    const std::optional<std::string> text = ws_.ui.Input("Find", "Enter Search", sheet_.lastFind);
    if (!text) return;
    sheet_.findRow = 0;
    sheet_.lastFind = *text;
  }
  const int column = CurrentColumn();
  const int row = FindInColumn(ws_.ui, sheet_, column, sheet_.lastFind);
  if (row >= 0) GoTo(row, column);
}

void FrmSpreadSheet::Replace() {
  const std::optional<std::string> search = ws_.ui.Input("Replace", "Enter text to replace", "");
  if (!search) return;
  const std::optional<std::string> replacement =
      ws_.ui.Input("Replace", "Enter replacement text", "");
  if (!replacement) return;
  const int count = ReplaceInColumn(sheet_, CurrentColumn(), *search, *replacement);
  model_->CellsChanged();
  ws_.ui.Inform(std::to_string(count) + " replacements made", "Replace");
}

void FrmSpreadSheet::Sort(bool ascending) {
  const int column = CurrentColumn();
  {
    Busy busy(ws_.ui);
    emit model_->layoutAboutToBeChanged();
    SortSheet(sheet_, column, ascending);
    emit model_->layoutChanged();
  }
  GoTo(0, column);
}

void FrmSpreadSheet::Paste() {
  const int row = std::max(CurrentRow(), 0);
  const int column = CurrentColumn();
  const std::string text = QApplication::clipboard()->text().toStdString();
  if (PasteBlock(ws_, sheet_, row, column, text) > 0) model_->Refresh();
  GoTo(row, column);
}

void FrmSpreadSheet::Insert(bool after) {
  const Block b = Selection();
  const int count = std::max(b.bottom - b.top + 1, 1);
  const int at = after ? b.bottom + 1 : std::max(b.top, 0);
  if (InsertRows(ws_, sheet_, at, count)) model_->Refresh();
}

void FrmSpreadSheet::OpenAirway(bool edit) {
  const int row = CurrentRow();
  if (row < 0) return;
  const int airway = sheet_.rows[row].airway;
  if (airway == 0) return;  // a row the sheet added has no airway until it is saved
  if (edit) {
    if (ShowAirEdit(ws_, AirEditMode::Single, airway, this)) {
      sheet_.rows[row] = FillRow(ws_, airway);
      model_->Refresh();
      GoTo(row, CurrentColumn());
    }
  } else {
    ShowAirInfo(ws_, airway, this);
  }
}

void FrmSpreadSheet::Simulate() {
  if (!SaveChanges()) return;
  KeepColumnWidths();
  if (simulate_) simulate_();
  Refill();
}

void FrmSpreadSheet::Print() {
  const std::optional<std::string> size = ws_.ui.Input("Font Size", "Enter Printer Font Size", "6");
  if (!size) return;
  bool ok = false;
  const int fontSize = QString::fromStdString(*size).trimmed().toInt(&ok);
  QPrinter printer;
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  std::vector<int> columns;
  for (int c = 1; c <= kSheetColumns; ++c)
    if (!Spreadsheet->isColumnHidden(c - 1)) columns.push_back(c);
  Busy busy(ws_.ui);
  if (!PrintSheet(sheet_, columns, ok && fontSize > 0 ? fontSize : 6, printer))
    ws_.ui.Inform(kMsgPrintFailed, "Print", MsgIcon::Exclamation);
}

bool PrintSheet(const AirwaySheet& sheet, const std::vector<int>& columns, int fontSize,
                QPrinter& printer) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  QFont font("DejaVu Sans Mono");
  font.setPointSize(fontSize);
  painter.setFont(font);
  const QFontMetrics metrics(font, &printer);
  const int lineHeight = metrics.height();
  const int charWidth = metrics.averageCharWidth();
  const QRect page = painter.viewport();
  std::vector<int> x;
  int at = 0;
  for (int c : columns) {
    x.push_back(at);
    at +=
        (std::max<int>(SheetColumnOf(c).widthHint, SheetColumnOf(c).title.size()) + 3) * charWidth;
  }
  const int perPage = std::max(page.height() / lineHeight - 2, 1);
  for (std::size_t first = 0; first < sheet.rows.size() || first == 0; first += perPage) {
    if (first > 0) printer.newPage();
    for (std::size_t k = 0; k < columns.size(); ++k)
      painter.drawText(x[k], lineHeight, Q(SheetColumnOf(columns[k]).title));
    for (std::size_t r = first; r < std::min(sheet.rows.size(), first + perPage); ++r) {
      const SheetRow& row = sheet.rows[r];
      const int y = static_cast<int>(r - first + 2) * lineHeight;
      for (std::size_t k = 0; k < columns.size(); ++k) {
        const int c = columns[k];
        std::string text = row.cell[c];
        if (SheetColumnOf(c).fixable && row.IsFixed(c)) text += " F";
        painter.drawText(x[k], y, Q(text));
      }
    }
    if (sheet.rows.empty()) break;
  }
  return painter.end();
}

void FrmSpreadSheet::SetFrozenColumns(int count) {
  frozenColumns_ = count;
  int width = 0;
  for (int c = 0; c < kSheetColumns; ++c) {
    const bool shown = c < count && !Spreadsheet->isColumnHidden(c);
    frozen_->setColumnHidden(c, !shown);
    if (shown) {
      frozen_->setColumnWidth(c, Spreadsheet->columnWidth(c));
      width += Spreadsheet->columnWidth(c);
    }
  }
  frozen_->setVisible(count > 0);
  frozen_->setGeometry(
      Spreadsheet->verticalHeader()->width() + Spreadsheet->frameWidth(), Spreadsheet->frameWidth(),
      width + 1, Spreadsheet->viewport()->height() + Spreadsheet->horizontalHeader()->height());
  frozen_->verticalScrollBar()->setValue(Spreadsheet->verticalScrollBar()->value());
}

void FrmSpreadSheet::reject() {
  // A refused cell keeps the form open on it.
  if (sheet_.SheetDirty && ws_.ui.AskYesNo(kMsgSaveSheet, "Save changes") && !SaveChanges()) return;
  KeepColumnWidths();
  QDialog::reject();
}

bool FrmSpreadSheet::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Spreadsheet && event->type() == QEvent::Resize && frozenColumns_ > 0)
    SetFrozenColumns(frozenColumns_);
  if (watched != Spreadsheet || event->type() != QEvent::KeyPress)
    return QDialog::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  auto run = [this](const char* name) {
    if (QAction* action = findChild<QAction*>(name)) action->trigger();
    return true;
  };
  if (key->matches(QKeySequence::Copy)) return run("mnuCopy");
  if (key->matches(QKeySequence::Paste)) return run("mnuPaste");
  switch (key->key()) {
    case Qt::Key_Delete:
      return run("mnuClear");
    case Qt::Key_F3:
      return run("mnuAgain");
    case Qt::Key_F5:
      return run("mnuSim");
    default:
      return QDialog::eventFilter(watched, event);
  }
}

}  // namespace galeris
