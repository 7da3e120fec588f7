// frmFanData: moves the fan slots between the controls and core's fan grid rules.
#include "editors/frm_fan_data.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTableWidget>
#include <QVBoxLayout>

#include "editors/logic/airway_edit.h"
#include "editors/logic/grid_text.h"
#include "editors/form_printing.h"
#include "editors/grid_edit.h"
#include "files/fan_database.h"
#include "view/fan_chart.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

constexpr int kPointColumn = 0;
constexpr std::array<int, FanColumn::Count> kShownWidth{80, 80, 80, 60};

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

bool ShowFanData(Workspace& ws, QWidget* parent) {
  FrmFanData form(ws, parent);
  form.exec();
  return form.StoreChanged();
}

FanPicture::FanPicture(const Workspace& ws, QWidget* parent) : QWidget(parent), ws_(ws) {
  setObjectName("PicFan");
  setMinimumSize(320, 260);
}

void FanPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterCanvas canvas(painter, size());
  DrawFanChart(canvas, ws_.net, ws_.units, fan_, 1, true, nullptr);
}

FrmFanData::FrmFanData(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmFanData");
  setWindowTitle("Fan List");
  BuildControls();
  BuildMenus();
  FillFanList();
  ShowFan(1);
}

void FrmFanData::BuildControls() {
  auto* layout = new QHBoxLayout(this);
  FanList = new QListWidget(this);
  FanList->setObjectName("FanList");
  FanList->setMinimumWidth(180);
  layout->addWidget(FanList);

  auto* middle = new QVBoxLayout;
  auto* fields = new QGridLayout;
  TxtFanName = new QLineEdit(this);
  TxtFanName->setObjectName("TxtFanName");
  // The fan file is comma-delimited: a comma is swallowed.
  TxtFanName->setValidator(
      new QRegularExpressionValidator(QRegularExpression("[^,]*"), TxtFanName));
  TxtOutDiam = new QLineEdit(this);
  TxtOutDiam->setObjectName("TxtOutDiam");
  LblDiamUnit = new QLabel(Q(UnitCaption(ws_.units, Unit::Length)), this);
  fields->addWidget(new QLabel("Fan Name", this), 0, 0);
  fields->addWidget(TxtFanName, 0, 1, 1, 2);
  fields->addWidget(new QLabel("Fan Exit Diameter", this), 1, 0);
  fields->addWidget(TxtOutDiam, 1, 1);
  fields->addWidget(LblDiamUnit, 1, 2);
  middle->addLayout(fields);
  auto* checks = new QHBoxLayout;
  ChkStatic = new QCheckBox("Static Curve", this);
  ChkStatic->setObjectName("ChkStatic");
  ChkTotal = new QCheckBox("Total Curve", this);
  ChkTotal->setObjectName("ChkTotal");
  ChkEff = new QCheckBox("Efficiency Curve", this);
  ChkEff->setObjectName("ChkEff");
  for (QCheckBox* box : {ChkStatic, ChkTotal, ChkEff}) checks->addWidget(box);
  middle->addLayout(checks);

  Spreadsheet = new QTableWidget(kFanPoints, FanColumn::Count + 1, this);
  Spreadsheet->setObjectName("Spreadsheet");
  Spreadsheet->verticalHeader()->hide();
  QStringList titles{"Point"};
  for (const std::string& t : FanGridTitles(ws_.units)) titles << Q(t);
  Spreadsheet->setHorizontalHeaderLabels(titles);
  Spreadsheet->setColumnWidth(kPointColumn, 50);
  for (int k = 1; k <= kFanPoints; ++k) {
    auto* item = new QTableWidgetItem(QString::number(k));
    item->setFlags(Qt::ItemIsEnabled);
    Spreadsheet->setItem(k - 1, kPointColumn, item);
  }
  Spreadsheet->installEventFilter(this);
  InstallGridEdit(Spreadsheet);
  Spreadsheet->setMinimumWidth(400);
  middle->addWidget(Spreadsheet);
  auto* buttons = new QHBoxLayout;
  ExitFanButton = new QPushButton("Save", this);
  ExitFanButton->setObjectName("ExitFan");
  CancelButton = new QPushButton("Cancel", this);
  CancelButton->setObjectName("Cancel");
  Command2 = new QPushButton("Delete", this);
  Command2->setObjectName("Command2");
  for (QPushButton* b : {ExitFanButton, CancelButton, Command2}) {
    b->setAutoDefault(false);
    buttons->addWidget(b);
  }
  middle->addLayout(buttons);
  layout->addLayout(middle);
  PicFan = new FanPicture(ws_, this);
  layout->addWidget(PicFan, 1);

  connect(FanList, &QListWidget::currentRowChanged, this, [this](int row) {
    if (loading_ || row < 0) return;
    if (!StoreGrid()) {  // the list stays on the fan with the bad cell
      loading_ = true;
      FanList->setCurrentRow(currentFan_ - 1);
      loading_ = false;
      return;
    }
    ShowFan(row + 1);
  });
  connect(TxtFanName, &QLineEdit::textEdited, this, [this](const QString& text) {
    ws_.net.FanName[currentFan_] = text.toStdString();
    FanList->item(currentFan_ - 1)->setText(Q(FanListRow(ws_.net, currentFan_)));
    FanChanged = true;
  });
  connect(TxtFanName, &QLineEdit::returnPressed, FanList, qOverload<>(&QWidget::setFocus));
  connect(TxtOutDiam, &QLineEdit::editingFinished, this, [this] {
    const std::optional<float> d = ReadFanDiameter(ws_.units, TxtOutDiam->text().toStdString());
    if (!d) {
      ws_.ui.Inform(kMsgNumberFormat);
    } else if (*d != ws_.net.FanDiameter[currentFan_]) {
      ws_.net.FanDiameter[currentFan_] = *d;
      FanChanged = true;
    }
    TxtOutDiam->setText(Q(FanDiameterText(ws_.units, ws_.net.FanDiameter[currentFan_])));
  });
  for (QCheckBox* box : {ChkStatic, ChkTotal, ChkEff})
    connect(box, &QCheckBox::toggled, this, [this, box](bool on) {
      // One pressure curve always stays.
      if (!on && box != ChkEff && !ChkStatic->isChecked() && !ChkTotal->isChecked())
        box->setChecked(true);
      ShowCurveColumns();
    });
  connect(Spreadsheet, &QTableWidget::itemChanged, this, [this] { GridEdited(); });
  connect(ExitFanButton, &QPushButton::clicked, this, &FrmFanData::ExitFan);
  connect(CancelButton, &QPushButton::clicked, this, &FrmFanData::reject);
  connect(Command2, &QPushButton::clicked, this, &FrmFanData::DeleteFan);
}

void FrmFanData::BuildMenus() {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  auto add = [this](QMenu* menu, const char* name, const char* caption, auto run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, run);
    return action;
  };
  QMenu* file = bar->addMenu("&File");
  add(file, "mnuSave", "Save as default", [this] { SaveAsDefault(); });
  add(file, "mnuPrintF", "Print Form", [this] { PrintForm(this); });
  add(file, "mnuex", "Exit", [this] { reject(); });
  QMenu* edit = bar->addMenu("&Edit");
  add(edit, "mnuCopy", "Copy  Ctrl+C", [this] { CopyCells(); })->setShortcut(QKeySequence::Copy);
  add(edit, "mnuPaste", "Paste  Ctrl+V", [this] {
    PasteCells();
  })->setShortcut(QKeySequence::Paste);
  add(edit, "mnuDelete", "Delete Fan", [this] { DeleteFan(); });
  QMenu* staticMenu = bar->addMenu("Estimate Static Curve");
  add(staticMenu, "mnuStaticCurrent", "Current Fan", [this] { Estimate(false, false); });
  add(staticMenu, "mnuStaticAll", "All Fans", [this] { Estimate(false, true); });
  QMenu* totalMenu = bar->addMenu("Estimate Total Curve");
  add(totalMenu, "mnuTotalCurrent", "Current Fan", [this] { Estimate(true, false); });
  add(totalMenu, "mnuTotalAll", "All Fans", [this] { Estimate(true, true); });
}

void FrmFanData::FillFanList() {
  loading_ = true;
  FanList->clear();
  for (int fan = 1; fan <= ws_.net.FanMax; ++fan) FanList->addItem(Q(FanListRow(ws_.net, fan)));
  loading_ = false;
}

void FrmFanData::ShowFan(int fan) {
  loading_ = true;
  currentFan_ = fan;
  FanList->setCurrentRow(fan - 1);
  const std::string& name = ws_.net.FanName[fan];
  TxtFanName->setText(name.empty() ? "-none-" : Q(name));
  TxtOutDiam->setText(Q(FanDiameterText(ws_.units, ws_.net.FanDiameter[fan])));
  const FanGridText grid = FanGridOf(ws_, fan);
  for (int k = 1; k <= kFanPoints; ++k)
    for (int c = 0; c < FanColumn::Count; ++c)
      Spreadsheet->setItem(k - 1, c + 1, new QTableWidgetItem(Q(grid[k][c])));
  checks_ = CurveChecksOf(ws_.net, fan);
  ChkStatic->setChecked(!checks_.staticEmpty);
  ChkTotal->setChecked(!checks_.totalEmpty);
  ChkEff->setChecked(!checks_.efficiencyEmpty);
  if (!ChkStatic->isChecked() && !ChkTotal->isChecked()) {
    ChkStatic->setChecked(true);
    ChkTotal->setChecked(true);
  }
  loading_ = false;
  ShowCurveColumns();
  PicFan->ShowFan(fan);
}

void FrmFanData::ShowCurveColumns() {
  const QCheckBox* boxes[] = {ChkStatic, ChkTotal, nullptr, ChkEff};
  for (int c = 0; c < FanColumn::Count; ++c) {
    const bool shown = !boxes[c] || boxes[c]->isChecked();
    Spreadsheet->setColumnHidden(c + 1, !shown);
    if (shown) Spreadsheet->setColumnWidth(c + 1, kShownWidth[c]);
  }
}

bool FrmFanData::StoreGrid(bool quiet) {
  FanGridText grid{};
  for (int k = 1; k <= kFanPoints; ++k)
    for (int c = 0; c < FanColumn::Count; ++c) {
      const QTableWidgetItem* item = Spreadsheet->item(k - 1, c + 1);
      grid[k][c] = item ? item->text().toStdString() : std::string();
    }
  if (const std::optional<FanGridCell> bad = UnreadableFanCell(grid)) {
    if (quiet) return false;
    ws_.ui.Inform(kMsgNumberFormat);
    Spreadsheet->setCurrentCell(bad->row - 1, bad->column + 1);
    Spreadsheet->setFocus();
    return false;
  }
  std::string name = TxtFanName->text().toStdString();
  if (!StoreFanGrid(ws_, currentFan_, grid, checks_.staticEmpty, name)) return false;
  loading_ = true;
  TxtFanName->setText(Q(name));
  FanList->item(currentFan_ - 1)->setText(Q(FanListRow(ws_.net, currentFan_)));
  loading_ = false;
  PicFan->update();
  return true;
}

void FrmFanData::GridEdited() {
  if (loading_) return;
  FanChanged = true;
  StoreGrid(true);
}

void FrmFanData::Estimate(bool total, bool all) {
  struct Prompt {
    const char *title, *text;
  };
  static const Prompt prompts[2][2] = {
      {{"Estimate static curve",
        "Galeris will attempt to calculate a static fan curve based on the total curve and fan "
        "diameter. This may not represent the true fan curve."},
       {"Estimate static curves",
        "Galeris will attempt to calculate a static fan curve for all fans based on the total "
        "curves and fan diameters. This may not represent the true fan curves."}},
      {{"Estimate total curve",
        "Galeris will attempt to calculate a total fan curve based on the static curve and fan "
        "diameter. This may not represent the true fan curve."},
       {"Estimate total curves",
        "Galeris will attempt to calculate a total fan curve for all fans based on the static "
        "curves and fan diameters. This may not represent the true fan curves."}}};
  const Prompt& p = prompts[total][all];
  if (ws_.ui.Message(p.text, MsgButtons::OKCancel, MsgIcon::Question, p.title) != MsgAnswer::OK)
    return;
  if (!StoreGrid()) return;
  const int first = all ? 1 : currentFan_;
  const int last = all ? ws_.net.FanMax : currentFan_;
  for (int fan = first; fan <= last; ++fan) {
    if (total)
      EstimateTotalCurve(ws_, fan);
    else if (FanSlotInUse(ws_.net, fan))
      EstimateStaticCurve(ws_, fan);
  }
  FanChanged = true;
  ShowFan(currentFan_);
}

void FrmFanData::DeleteFan() {
  if (ws_.ui.Message("Are you sure you want to delete fan?", MsgButtons::OKCancel,
                     MsgIcon::Question, "DELETE") != MsgAnswer::OK)
    return;
  ClearFanSlot(ws_.net, currentFan_);
  FanList->item(currentFan_ - 1)->setText(Q(FanListRow(ws_.net, currentFan_)));
  FanChanged = true;
  ShowFan(currentFan_);
}

void FrmFanData::ExitFan() {
  CommitOpenEditor(Spreadsheet);
  if (!StoreGrid()) return;
  FixZeroEfficiency(ws_, currentFan_);
  Close(true);
}

void FrmFanData::reject() {
  if (!FanChanged) {
    QDialog::reject();
    return;
  }
  // Yes saves as ExitFan does, and stays open when the grid cannot be stored; No closes and
  // leaves in the store what list clicks, estimates and deletes already put there.
  if (ws_.ui.AskYesNo("Save fan changes to network ?", "Save changes"))
    ExitFan();
  else
    Close(false);
}

void FrmFanData::Close(bool saved) {
  if (FanChanged) {
    MarkNetworkChanged(ws_);
    storeChanged_ = true;
  }
  FanChanged = false;
  if (saved)
    accept();
  else
    QDialog::reject();
}

void FrmFanData::SaveAsDefault() {
  if (ws_.ui.Message("Are you sure you want to save to default database ?", MsgButtons::OKCancel,
                     MsgIcon::Question, "Save Fan Database") != MsgAnswer::OK)
    return;
  if (!StoreGrid()) return;
  FixZeroEfficiency(ws_, currentFan_);
  if (!SaveFanDatabase(ws_))
    ws_.ui.Inform(std::string("The fan database could not be written to ") + kFanDatabaseName,
                  "Save Fan Database", MsgIcon::Exclamation);
  ShowFan(currentFan_);
}

void FrmFanData::CopyCells() {
  const QList<QTableWidgetSelectionRange> ranges = Spreadsheet->selectedRanges();
  if (ranges.isEmpty()) return;
  const QTableWidgetSelectionRange& r = ranges.first();
  CellBlock block;
  for (int row = r.topRow(); row <= r.bottomRow(); ++row) {
    auto& line = block.emplace_back();
    for (int c = r.leftColumn(); c <= r.rightColumn(); ++c) {
      const QTableWidgetItem* item = Spreadsheet->item(row, c);
      line.push_back(item ? item->text().toStdString() : std::string());
    }
  }
  QApplication::clipboard()->setText(Q(JoinCellBlock(block)));
}

void FrmFanData::PasteCells() {
  const CellBlock block = SplitCellBlock(QApplication::clipboard()->text().toStdString());
  const int top = std::max(Spreadsheet->currentRow(), 0);
  const int left = std::max(Spreadsheet->currentColumn(), 1);
  loading_ = true;
  for (std::size_t r = 0; r < block.size() && top + static_cast<int>(r) < kFanPoints; ++r)
    for (std::size_t c = 0; c < block[r].size() && left + static_cast<int>(c) <= FanColumn::Count;
         ++c)
      Spreadsheet->setItem(top + static_cast<int>(r), left + static_cast<int>(c),
                           new QTableWidgetItem(Q(block[r][c])));
  loading_ = false;
  GridEdited();
}

bool FrmFanData::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Spreadsheet && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
    loading_ = true;
    for (QTableWidgetItem* item : Spreadsheet->selectedItems())
      if (item->column() != kPointColumn) item->setText("");
    loading_ = false;
    GridEdited();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace galeris
