// MainForm: construction of the frame, its toolbars and status line, the data and level
// lists, the palette, and the refreshes that follow changes of the network.
#include "app/main_form.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "app/data_types.h"
#include "app/frame_keys.h"
#include "app/frm_error.h"
#include "app/frm_file_note.h"
#include "app/frm_help.h"
#include "app/frm_window.h"
#include "app/main_form_print.h"
#include "app/main_form_realtime.h"
#include "app/main_form_tools.h"
#include "app/recent_files.h"
#include "app/rotator_button.h"
#include "app/tool_palette.h"
#include "app/view_mouse.h"
#include "editors/frm_air_info.h"
#include "files/lifecycle.h"

namespace galeris {

MainForm::MainForm(Workspace& ws, QWidget* parent) : QMainWindow(parent), ws_(ws) {
  setObjectName("MainForm");
  setWindowTitle("Galeris");
  resize(1200, 800);
  mdi_ = new QMdiArea(this);
  mdi_->setObjectName("Views");
  mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setCentralWidget(mdi_);
  connect(mdi_, &QMdiArea::subWindowActivated, this, &MainForm::ViewActivated);
  chooser_ = [this](const FileDialogRequest& request) {
    return ChooseFileWithDialog(this, request);
  };
  BuildMenus();
  BuildToolbars();
  BuildStatusBar();
  const auto stopRotator = [this] { rotator_->Stop(); };
  new FrameKeys(*this, stopRotator, [this](ViewKey key) { FrameKeyPressed(key); });
  toolCommands_ = new ToolCommands(*this);
  printCommands_ = new PrintCommands(*this);
  realtimeCommands_ = new RealtimeCommands(*this);
  autosave_ = new QTimer(this);
  autosave_->setObjectName("Autosave");
  connect(autosave_, &QTimer::timeout, this, &MainForm::AutosaveTimerTick);
  // Edits made in a view window or a dialog change the network behind the frame's back; the
  // status label catches up after each user action.
  qApp->installEventFilter(this);
  // The journal records every edit; many changes in one action bring one refresh of the windows.
  ws_.journal = &undo_;
  tools_.Edit.Dialogs = &dialogs_;
  ws_.NetworkChanged = [this] {
    if (refreshDue_) return;
    refreshDue_ = true;
    QTimer::singleShot(0, this, [this] {
      if (refreshDue_) RefreshAfterNetworkChange();
    });
  };
  ws_.ShownSmokeState = [this] {
    for (FrmWindow* view : AllViews())
      if (view->View().SmokeState != 0) return static_cast<int>(view->View().SmokeState);
    return 0;
  };
  RefreshSimStatus();
}

MainForm::~MainForm() {
  // The children die after this body; none of their last signals may reach a half-gone frame.
  for (QObject* child : findChildren<QObject*>()) child->disconnect(this);
  qApp->removeEventFilter(this);
  ws_.NetworkChanged = nullptr;
  ws_.ShownSmokeState = nullptr;
  if (ws_.journal == &undo_) ws_.journal = nullptr;
}

void MainForm::BuildToolbars() {
  palette_ = new ToolPalette(this);
  addToolBar(Qt::LeftToolBarArea, palette_);
  palette_->setOrientation(Qt::Vertical);
  connect(palette_, &ToolPalette::ButtonClicked, this, &MainForm::PaletteClicked);
  palette_->PressButton(0);
  palette_->addSeparator();
  rotator_ = new RotatorButton([this] { return CurrentView(); }, this);
  palette_->addWidget(rotator_);

  auto* data = new QToolBar("Data", this);
  data->setObjectName("DataBar");
  addToolBar(Qt::TopToolBarArea, data);
  lblSim_ = new QLabel(this);
  lblSim_->setObjectName("LblSim");
  lblSim_->setAlignment(Qt::AlignCenter);
  lblSim_->setMinimumWidth(44);
  lblSim_->setAutoFillBackground(true);
  lblSim_->setFrameShape(QFrame::Panel);
  lblSim_->setFrameShadow(QFrame::Sunken);
  lblSim_->setToolTip(
      "Simulation status: SIM when the network has not been simulated since it was opened or "
      "last changed (the flows shown are those saved or left by the last run), OK when the "
      "flows shown are the solution of the last run");
  data->addWidget(lblSim_);
  data->addSeparator();
  data->addWidget(new QLabel(" Data ", this));
  cmbDataType_ = new QComboBox(this);
  cmbDataType_->setObjectName("CmbDataType");
  cmbDataType_->setToolTip("Data group shown beside the airways");
  data->addWidget(cmbDataType_);
  cmbDataVal_ = new QComboBox(this);
  cmbDataVal_->setObjectName("CmbDataVal");
  cmbDataVal_->setToolTip("Data item shown beside the airways");
  cmbDataVal_->setMinimumContentsLength(14);
  data->addWidget(cmbDataVal_);
  data->addSeparator();
  data->addWidget(new QLabel(" Level ", this));
  cmbRL_ = new QComboBox(this);
  cmbRL_->setObjectName("CmbRL");
  cmbRL_->setMinimumContentsLength(12);
  cmbRL_->setToolTip("Level shown in the view");
  data->addWidget(cmbRL_);
  vsbRL_ = new QScrollBar(Qt::Vertical, this);
  vsbRL_->setObjectName("VsbRL");
  vsbRL_->setFixedHeight(cmbRL_->sizeHint().height());
  vsbRL_->setToolTip("Step through the levels");
  data->addWidget(vsbRL_);
  data->addSeparator();
  data->addWidget(new QLabel(" View ", this));
  cmbView_ = new QComboBox(this);
  cmbView_->setObjectName("CmbView");
  cmbView_->setMinimumContentsLength(14);
  cmbView_->setToolTip("Saved views");
  data->addWidget(cmbView_);
  data->addSeparator();
  for (auto [name, field] : {std::pair{"X", &txtX_}, {"Y", &txtY_}, {"Z", &txtZ_}}) {
    data->addWidget(new QLabel(QString(" %1 ").arg(name), this));
    *field = new QLineEdit(this);
    (*field)->setObjectName(QString("Txt%1").arg(name));
    (*field)->setReadOnly(true);
    (*field)->setMaximumWidth(90);
    (*field)->setToolTip("Mouse position in the view");
    data->addWidget(*field);
  }
  FillDataTypeLists();
  connect(cmbDataType_, &QComboBox::currentIndexChanged, this, &MainForm::DataGroupChosen);
  connect(cmbDataVal_, &QComboBox::currentIndexChanged, this, &MainForm::DataItemChosen);
  connect(vsbRL_, &QScrollBar::valueChanged, this, &MainForm::LevelScrolled);
  connect(cmbRL_, &QComboBox::activated, this, &MainForm::LevelChosen);
  connect(cmbView_, &QComboBox::activated, this, &MainForm::ViewChosen);
}

void MainForm::BuildStatusBar() {
  lblStatus_ = new QLabel(this);
  lblStatus_->setObjectName("LblStatus");
  statusBar()->addWidget(lblStatus_, 1);
  lblRotX_ = new QLabel(this);
  lblRotX_->setObjectName("LblRotX");
  lblRotY_ = new QLabel(this);
  lblRotY_->setObjectName("LblRotY");
  statusBar()->addPermanentWidget(lblRotX_);
  statusBar()->addPermanentWidget(lblRotY_);
}

void MainForm::SetStatusText(const QString& text) {
  lblStatus_->setText(text);
}

void MainForm::FillDataTypeLists() {
  fillingLists_ = true;
  cmbDataType_->clear();
  cmbDataType_->addItems(DataGroupNames());
  cmbDataType_->setCurrentIndex(dataTypeCode_ / 10 - 1);
  cmbDataVal_->clear();
  cmbDataVal_->addItems(DataItemNames(dataTypeCode_ / 10));
  cmbDataVal_->setCurrentIndex(dataTypeCode_ % 10 - 2);
  fillingLists_ = false;
}

void MainForm::DataGroupChosen(int position) {
  if (fillingLists_ || position < 0) return;
  const int group = position + 1;
  SetDataType(group, std::max(2, lastItemOfGroup_[group]));
}

void MainForm::DataItemChosen(int position) {
  if (fillingLists_ || position < 0) return;
  SetDataType(dataTypeCode_ / 10, position + 2);
}

void MainForm::SetDataType(int group, int item) {
  if (group < 1 || group > kDataGroups) return;
  const int items = static_cast<int>(DataItemNames(group).size());
  item = std::clamp(item, 2, items + 1);
  lastItemOfGroup_[group] = item;
  dataTypeCode_ = group * 10 + item;
  FillDataTypeLists();
  for (FrmWindow* view : AllViews())
    if (!view->Frozen()) view->SetDataType(dataTypeCode_);
}

void MainForm::RefreshLevelList() {
  const QString shown = cmbRL_->currentText();
  const int index = cmbRL_->currentIndex();
  cmbRL_->blockSignals(true);
  cmbRL_->clear();
  for (int i = 1; i <= ws_.net.RLCount && i < static_cast<int>(ws_.net.RLName.size()); ++i)
    cmbRL_->addItem(QString::fromStdString(ws_.net.RLName[i]));
  if (cmbRL_->count() == 0) cmbRL_->addItems({"SURFACE", "U/Ground"});
  cmbRL_->addItem(kAllLevelsEntry);
  // The shown level by its name, so that a sort keeps it; a renamed one by its place.
  int keep = cmbRL_->findText(shown);
  if (keep < 0) keep = std::min(index, cmbRL_->count() - 1);
  // A view showing one level (a file's start-up view, say) names it in the list.
  if (const FrmWindow* view = CurrentView(); view && view->View().LevelMode == LevelModeOf::Single)
    keep = std::min(view->View().CurrentLevel, cmbRL_->count()) - 1;
  cmbRL_->setCurrentIndex(keep >= 0 ? keep : 0);
  cmbRL_->blockSignals(false);
  // The scroll bar runs against the list: its top is the list's last entry.
  vsbRL_->blockSignals(true);
  vsbRL_->setRange(0, std::max(0, cmbRL_->count() - 1));
  vsbRL_->blockSignals(false);
  ShowLevelChoice();

  cmbView_->clear();
  for (int i = 1; i <= 100 && i < static_cast<int>(ws_.net.ViewName.size()); ++i)
    if (!ws_.net.ViewName[i].empty())
      cmbView_->addItem(QString::fromStdString(ws_.net.ViewName[i]));
  cmbView_->setCurrentIndex(-1);
}

// The list names what the current window draws: its one level, "All", or, for several levels
// or a range, a word in place of a level.
void MainForm::ShowLevelChoice() {
  const FrmWindow* window = CurrentView();
  const int all = cmbRL_->count() - 1;
  int position = cmbRL_->currentIndex();
  if (window) {
    const ViewState& view = window->View();
    switch (view.LevelMode) {
      case LevelModeOf::Single:
        position = std::clamp(view.CurrentLevel, 1, std::max(1, all)) - 1;
        break;
      case LevelModeOf::All:
        position = all;
        break;
      default:
        position = -1;
        cmbRL_->setPlaceholderText(view.LevelMode == LevelModeOf::Range ? "Range" : "Selected");
        break;
    }
  }
  cmbRL_->blockSignals(true);
  cmbRL_->setCurrentIndex(position);
  cmbRL_->blockSignals(false);
  vsbRL_->blockSignals(true);
  vsbRL_->setValue(vsbRL_->maximum() - std::max(0, position));
  vsbRL_->blockSignals(false);
}

int MainForm::ChosenLevel() const {
  const int position = cmbRL_->currentIndex();
  if (position >= 0 && position < cmbRL_->count() - 1) return position + 1;
  const FrmWindow* window = CurrentView();
  return window ? std::max(1, window->View().CurrentLevel) : 1;
}

// The scroll bar only moves the list's selection; the level is taken as the list's choice.
void MainForm::LevelScrolled(int value) {
  cmbRL_->setCurrentIndex(vsbRL_->maximum() - value);
  LevelChosen(cmbRL_->currentIndex());
}

void MainForm::LevelChosen(int position) {
  if (position < 0) return;
  vsbRL_->blockSignals(true);
  vsbRL_->setValue(vsbRL_->maximum() - position);
  vsbRL_->blockSignals(false);
  if (position == cmbRL_->count() - 1) {
    ChooseLevelMode(LevelModeOf::All);
    return;
  }
  if (FrmWindow* view = CurrentView()) view->SetLevel(position + 1);
}

void MainForm::ViewChosen(int position) {
  if (position < 0) return;
  if (FrmWindow* view = CurrentView()) view->ApplyView(cmbView_->itemText(position));
}

void MainForm::SaveViewCommand() {
  FrmWindow* view = CurrentView();
  if (view && view->SaveView() > 0) RefreshLevelList();
}

void MainForm::DeleteViewCommand() {
  FrmWindow* view = CurrentView();
  if (view && view->DeleteView(cmbView_->currentIndex())) RefreshLevelList();
}

void MainForm::ViewCaptionChanged(const QString& caption) {
  if (!caption.isEmpty()) SetCaption(caption);
  ShowLevelChoice();
}

void MainForm::RefreshSimStatus() {
  SetCaption(caption_);
  const bool balanced = ws_.net.NetworkBalanced != 0;
  lblSim_->setText(balanced ? "OK" : "SIM");
  // Styles may paint toolbar widgets their own way; the style sheet makes the colour stick,
  // the palette keeps it readable for code.
  const QColor labelColour = QColor::fromRgb(balanced ? kSimLabelBalanced : kSimLabelChanged);
  QPalette label = lblSim_->palette();
  label.setColor(QPalette::Window, labelColour);
  label.setColor(QPalette::WindowText, Qt::black);
  lblSim_->setPalette(label);
  lblSim_->setStyleSheet(
      QString("QLabel { background-color: %1; color: black; }").arg(labelColour.name()));
  const QColor listColour = QColor::fromRgb(kDataListBalanced);
  for (QComboBox* list : {cmbDataType_, cmbDataVal_}) {
    QPalette colours = QApplication::palette();
    if (balanced) {
      colours.setColor(QPalette::Base, listColour);
      colours.setColor(QPalette::Button, listColour);
    }
    list->setPalette(colours);
    list->setStyleSheet(
        balanced ? QString("QComboBox { background-color: %1; }").arg(listColour.name()) : "");
  }
}

void MainForm::RefreshCaption() {
  const std::string& name = ws_.net.FileName;
  if (name.empty()) {
    SetCaption("Galeris");
    return;
  }
  const std::size_t cut = name.find_last_of("/\\");
  const std::string shown = cut == std::string::npos ? name : name.substr(cut + 1);
  SetCaption(QString::fromStdString(shown.substr(0, 100)));
}

void MainForm::SetCaption(const QString& caption) {
  caption_ = caption;
  setWindowTitle(ws_.net.NetworkSaved == 0 ? "*" + caption : caption);
}

std::vector<FrmWindow*> MainForm::AllViews() const {
  std::vector<FrmWindow*> views;
  for (QMdiSubWindow* sub : mdi_->subWindowList())
    if (auto* view = qobject_cast<FrmWindow*>(sub->widget())) views.push_back(view);
  return views;
}

FrmWindow* MainForm::CurrentView() const {
  if (QMdiSubWindow* sub = mdi_->currentSubWindow())
    if (auto* view = qobject_cast<FrmWindow*>(sub->widget())) return view;
  const std::vector<FrmWindow*> views = AllViews();
  return views.empty() ? nullptr : views.front();
}

// The current window last: picks work on the draw list of the last redraw.
void MainForm::RedrawViews() {
  for (FrmWindow* view : ViewsCurrentLast())
    if (!view->Frozen()) view->Redraw();
}

FrmWindow* MainForm::NewViewWindow() {
  if (mdi_->subWindowList().size() >= kMaxViewWindows) {
    ws_.ui.Inform("Too many windows");
    return nullptr;
  }
  FrmWindow* source = CurrentView();
  auto* view = new FrmWindow(ws_);
  view->SetWindowNumber(FreeWindowNumber());
  if (source != nullptr) {
    source->StoreState();
    view->TakeState(source->View());
  } else {
    view->View().Declutter = DeclutterSetting();
  }
  view->SetDataType(dataTypeCode_);
  if (const double width = PrintableWidthMm(); width > 0)
    view->View().PrintableWidthMm = static_cast<float>(width);
  view->SetCloseGuard([this] { return MayCloseView(); });
  // The window's events go to the mouse tools first; the window itself only paints.
  auto* mouse = new ViewMouse(ws_, *view, tools_);
  connect(mouse, &ViewMouse::CoordinatesChanged, this,
          [this](const QString& x, const QString& y, const QString& z) {
            txtX_->setText(x);
            txtY_->setText(y);
            txtZ_->setText(z);
          });
  connect(mouse, &ViewMouse::StatusMessage, this, &MainForm::SetStatusText);
  connect(mouse, &ViewMouse::InfoRequested, this, [this](int airway) {
    ws_.HighlightAirway = airway;
    RedrawViews();
    ShowAirInfo(ws_, airway, this);
    ws_.HighlightAirway = 0;
    RedrawViews();
  });
  // A report pin placed traces the sources again.
  connect(mouse, &ViewMouse::NetworkEdited, this, [this] {
    if (tools_.ToolCode == ToolOf::SmokeReport) NetworkTools().SourcingSimulation();
  });
  connect(view, &FrmWindow::CaptionChanged, this, [this, view](const QString& caption) {
    if (view == CurrentView()) ViewCaptionChanged(caption);
  });
  connect(view, &FrmWindow::RotationChanged, this, [this](const QString& x, const QString& y) {
    lblRotX_->setText(x);
    lblRotY_->setText(y);
  });
  QMdiSubWindow* sub = mdi_->addSubWindow(view);
  sub->resize(720, 520);
  // The first window fills the frame; later ones open beside it as ordinary windows.
  if (mdi_->subWindowList().size() == 1)
    sub->showMaximized();
  else
    sub->show();
  return view;
}

// Numbers stay with their windows, so a new window takes the lowest one left free.
int MainForm::FreeWindowNumber() const {
  const std::vector<FrmWindow*> views = AllViews();
  for (int number = 1;; ++number) {
    const bool taken = std::any_of(views.begin(), views.end(), [number](FrmWindow* view) {
      return view->View().WindowNumber == number;
    });
    if (!taken) return number;
  }
}

void MainForm::PaletteClicked(int index) {
  rotator_->Stop();
  FrmWindow* view = CurrentView();
  CarryOut(ClickButton(ws_, view ? &view->View() : nullptr, commands_, tools_, index));
}

void MainForm::FrameKeyPressed(ViewKey key) {
  FrmWindow* view = CurrentView();
  CarryOut(KeyDown(ws_, view ? &view->View() : nullptr, commands_, tools_, key), view);
}

void MainForm::RefreshToolCursors() {
  for (FrmWindow* view : AllViews())
    if (auto* mouse = view->findChild<ViewMouse*>(QString(), Qt::FindDirectChildrenOnly))
      mouse->RefreshCursor();
}

// The dispatcher answers with what is left for the windows to do.
void MainForm::CarryOut(const CommandResult& result, FrmWindow* view) {
  if (result.StatusButton >= 0) SetStatusText(PaletteStatusText(result.StatusButton));
  if (!result.Unavailable.empty())
    SetStatusText(QString::fromStdString(result.Unavailable) + " is not available yet");
  if (view == nullptr) view = CurrentView();
  switch (result.Operation) {
    case CommandOperation::AirSimulation:
      RunSimulationCommand(0);
      break;
    case CommandOperation::Open:
      OpenFile();
      break;
    case CommandOperation::Save:
      SaveFile();
      break;
    case CommandOperation::SaveAs:
      SaveAs();
      break;
    case CommandOperation::UpdateScreen:
      RedrawViews();
      break;
    case CommandOperation::ContaminantSimulation:
      toolCommands_->RunSpread();
      break;
    case CommandOperation::SmokeSourcing:
      toolCommands_->SourcingSimulation();
      break;
    case CommandOperation::DisplayOptions:
      ShowViewOptions(view);
      break;
    case CommandOperation::PrintScreen:
      printCommands_->PrintScreen();
      break;
    case CommandOperation::None:
    case CommandOperation::Fit:
    case CommandOperation::ToggleThreeD:
    case CommandOperation::ToggleGrid:
    case CommandOperation::ToggleLevels:
    case CommandOperation::StepLevelUp:
    case CommandOperation::StepLevelDown:
      if (result.Redraw && view) view->Redraw();
      break;
    case CommandOperation::Undo:
      UndoCommand();
      break;
    case CommandOperation::Redo:
      RedoCommand();
      break;
    case CommandOperation::FindAirway:
      if (result.Redraw && view) view->Redraw();
      break;
    default:
      SetStatusText(PaletteStatusText(commands_.CurrentButton) + " is not available yet");
      break;
  }
  // Choosing the copy tool asks which attributes it carries.
  if (result.ToolChanged && tools_.ToolCode == ToolOf::CopyPaste && commands_.CopyOrPaste == 0)
    ChooseAttributes();
  palette_->PressButton(commands_.PressedButton);
  ShowMenuChecks(result, view);
  RefreshToolCursors();
  ShowLevelChoice();
  if (result.FocusWindow && view) view->setFocus();
}

// The grid's check follows the window; the copy and paste checks follow the attribute tool's
// mode whenever a command sets them.
void MainForm::ShowMenuChecks(const CommandResult& result, FrmWindow* view) {
  Action("mnuGrid")->setChecked(view != nullptr && view->View().GridOn);
  if (result.CopyMenuChecked || result.PasteMenuChecked) {
    Action("mnuCpyPst")->setChecked(result.CopyMenuChecked);
    Action("mnuCopy2")->setChecked(result.PasteMenuChecked);
  }
}

FrmError& MainForm::ErrorForm() {
  if (!frmError_) {
    frmError_ = new FrmError(this);
    frmError_->OnGoto([this](int airwayNo) { GoToAirwayNo(airwayNo); });
    frmError_->OnCancel([this] { StopRun(); });
  }
  return *frmError_;
}

FrmFileNote& MainForm::FileNoteForm() {
  if (!frmFileNote_) frmFileNote_ = new FrmFileNote(ws_, this);
  return *frmFileNote_;
}

FrmHelp& MainForm::HelpForm() {
  if (!frmHelp_) frmHelp_ = new FrmHelp(this);
  return *frmHelp_;
}

void MainForm::ShowFileNote() {
  FrmFileNote& note = FileNoteForm();
  note.Refresh();
  if (!note.isVisible()) {
    // At the frame's upper right, clear of the menus and the palette.
    const QRect frame = geometry();
    note.move(frame.right() - note.width() - 24, frame.top() + 90);
  }
  note.show();
  note.raise();
}

void MainForm::ShowHelp(const QString& page) {
  HelpForm().ShowPage(page);
}

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
      QTimer::singleShot(0, this, [this] { RefreshSimStatus(); });
      break;
    default:
      break;
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace galeris
