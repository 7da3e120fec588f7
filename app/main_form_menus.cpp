// MainForm's menus. Every entry carries the object name of its command; entries whose
// command is not part of the program yet are present and disabled.
#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>

#include "app/data_types.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/solver_choice.h"
#include "app/tool_palette.h"

namespace galeris {

QAction* MainForm::AddEntry(QMenu* menu, const QString& name, const QString& caption,
                            std::function<void()> run) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(name);
  if (run)
    connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  else
    action->setEnabled(false);
  return action;
}

QAction* MainForm::Action(const QString& objectName) const {
  return findChild<QAction*>(objectName);
}

void MainForm::BuildMenus() {
  BuildFileMenu();
  BuildEditMenu();
  BuildViewMenu();
  BuildSimulateMenu();
  BuildToolsMenu();
  BuildWindowMenu();
  BuildHelpMenu();
  BuildLevelMenus();
  BuildSheetMenus();
}

void MainForm::BuildFileMenu() {
  fileMenu_ = menuBar()->addMenu("&File");
  fileMenu_->setObjectName("mnuFile");
  AddEntry(fileMenu_, "mnuNewFile", "&New", [this] { NewFile(); })->setShortcut(QKeySequence::New);
  AddEntry(fileMenu_, "mnuOpenFile", "&Open...", [this] {
    OpenFile();
  })->setShortcut(QKeySequence::Open);
  AddEntry(fileMenu_, "mnuMergeFile", "&Merge...", [this] { MergeFile(); });
  AddEntry(fileMenu_, "mnuSaveFile", "&Save", [this] {
    SaveFile();
  })->setShortcut(QKeySequence::Save);
  AddEntry(fileMenu_, "mnuSaveAs", "Save &As...", [this] { SaveAs(); });
  fileMenu_->addSeparator();
  AddEntry(fileMenu_, "mnuImportData", "&Import Data...", [this] { ImportDataCommand(); });
  AddEntry(fileMenu_, "mnuExportData", "&Export Data...", [this] { ExportDataCommand(); });
  QMenu* dxf = fileMenu_->addMenu("DXF Export");
  dxf->setObjectName("mnuDXF");
  AddEntry(dxf, "mnuDXFTrue", "True Coordinates...", [this] { ExportDxfCommand(false); });
  AddEntry(dxf, "MnuDXFScreen", "Screen View...", [this] { ExportDxfCommand(true); });
  AddEntry(fileMenu_, "mnuExportPicture", "Export Picture...", [this] { ExportPictureCommand(); });
  fileMenu_->addSeparator();
  AddEntry(fileMenu_, "mnuMessage", "File &Memo", [this] { ShowFileNote(); });
  AddEntry(fileMenu_, "mnuComment", "Title Note");
  recentSeparator_ = fileMenu_->addSeparator();
  for (int n = 1; n <= 9; ++n) {
    mnuOld_[n] =
        AddEntry(fileMenu_, QString("mnuOld(%1)").arg(n), "", [this, n] { OpenRecent(n); });
    mnuOld_[n]->setVisible(false);
  }
  fileMenu_->addSeparator();
  AddEntry(fileMenu_, "mnuExit", "E&xit", [this] { close(); });
}

void MainForm::BuildEditMenu() {
  QMenu* edit = menuBar()->addMenu("&Edit");
  edit->setObjectName("mnuEdit");
  AddEntry(edit, "mnuUndo", "&Undo", [this] { UndoCommand(); })->setShortcut(QKeySequence::Undo);
  AddEntry(edit, "mnuRedo", "&Redo", [this] { RedoCommand(); })->setShortcut(QKeySequence::Redo);
  edit->addSeparator();
  AddEntry(edit, "mnuZoom", "Zoom / Pan", [this] { PaletteClicked(ButtonOf::ZoomPan); });
  AddEntry(edit, "mnuCpyPst", "Copy / Paste Attributes", [this] {
    PaletteClicked(ButtonOf::CopyAttributes);
  })->setCheckable(true);
  AddEntry(edit, "mnuCopy2", "Paste Attributes", [this] {
    PaletteClicked(ButtonOf::PasteAttributes);
  })->setCheckable(true);
  QMenu* bar = edit->addMenu("Airway Tools");
  bar->setObjectName("mnuBar");
  // The items stand for palette buttons 3 to 13.
  for (int index = 0; index <= 10; ++index) {
    const int code = index + 3;
    AddEntry(bar, QString("mnuBar(%1)").arg(index), PaletteToolTip(code),
             [this, code] { PaletteClicked(code); });
  }
  edit->addSeparator();
  QMenu* finder = edit->addMenu("Find by Name");
  finder->setObjectName("mnuFinderMenu");
  finder->menuAction()->setObjectName("mnuFinder");
  AddEntry(finder, "mnuFinderBranch", "Branch...", [this] { FindByNameCommand(false); });
  AddEntry(finder, "mnuFinderNode", "Node...", [this] { FindByNameCommand(true); });
  QMenu* search = edit->addMenu("Find Button Searches For");
  search->setObjectName("mnuSearchMode");
  auto* searchGroup = new QActionGroup(search);
  const char* searches[] = {"Airways with Faults", "Fixed Quantities", "Fans"};
  for (int mode = 1; mode <= 3; ++mode) {
    QAction* item = AddEntry(search, QString("mnuSearchMode(%1)").arg(mode), searches[mode - 1],
                             [this, mode] { tools_.Edit.SearchMode = static_cast<std::int16_t>(mode); });
    item->setCheckable(true);
    item->setChecked(mode == tools_.Edit.SearchMode);
    searchGroup->addAction(item);
  }
  QMenu* lists = edit->addMenu("Name Lists");
  lists->setObjectName("mnuNameLists");
  AddEntry(lists, "mnuFBName", "Branch Name");
  AddEntry(lists, "mnuFNName", "Node Name");
  edit->addSeparator();
  QAction* confirm = AddEntry(edit, "mnuConfirm", "Confirmations", [] {});
  confirm->setCheckable(true);
  confirm->setChecked(tools_.Edit.ConfirmJoin);
  connect(confirm, &QAction::toggled, this, [this](bool on) { tools_.Edit.ConfirmJoin = on; });
}

void MainForm::BuildViewMenu() {
  QMenu* view = menuBar()->addMenu("&View");
  view->setObjectName("mnuView");
  AddEntry(view, "mnuFit", "&Fit", [this] {
    if (FrmWindow* window = CurrentView()) window->Fit();
  });
  AddEntry(view, "mnuFitAll", "Fit &All", [this] {
    for (FrmWindow* window : AllViews()) window->Fit();
  });
  view->addSeparator();
  QAction* plan = AddEntry(view, "mnuPlanS", "&Plan View", [this] {
    if (FrmWindow* window = CurrentView()) window->SetThreeD(false);
  });
  QAction* threeD = AddEntry(view, "mnu3d", "&3D View", [this] {
    if (FrmWindow* window = CurrentView()) window->SetThreeD(true);
  });
  plan->setCheckable(true);
  threeD->setCheckable(true);
  // The checks tell the current window's mode, which the rotator and the views change too.
  connect(view, &QMenu::aboutToShow, this, [this, plan, threeD] {
    const FrmWindow* window = CurrentView();
    const bool is3D = window != nullptr && window->View().Is3D != 0;
    plan->setChecked(window != nullptr && !is3D);
    threeD->setChecked(is3D);
  });
  AddEntry(view, "mnuGrid", "&Grid", [this] {
    PaletteClicked(ButtonOf::Grid);
  })->setCheckable(true);
  QMenu* levels = view->addMenu("&Levels");
  levels->setObjectName("mnuLevels");
  const char* modes[] = {"Single", "Multiple", "Range", "All"};
  for (int mode = 1; mode <= 4; ++mode)
    AddEntry(levels, QString("mnuLevels(%1)").arg(mode), modes[mode - 1])->setCheckable(true);
  view->addSeparator();
  QMenu* display = view->addMenu("&Data Display");
  display->setObjectName("mnuDataDisplay");
  const QStringList groups = DataGroupNames();
  for (int group = 1; group <= kDataGroups; ++group) {
    QMenu* menu = display->addMenu(groups[group - 1]);
    menu->setObjectName(DataMenuName(group));
    for (const DataMenuItem& item : DataMenuItems(group))
      AddEntry(menu, QString("%1_%2").arg(DataMenuName(group)).arg(item.item), item.caption,
               [this, group, item = item.item] { SetDataType(group, item); });
  }
  view->addSeparator();
  AddEntry(view, "mnuSaveView", "&Save View...", [this] { SaveViewCommand(); });
  AddEntry(view, "mnuDelView", "&Delete View", [this] { DeleteViewCommand(); });
}

void MainForm::BuildSimulateMenu() {
  QMenu* simulate = menuBar()->addMenu("&Simulate");
  simulate->setObjectName("mnuSimulate");
  AddEntry(simulate, "mnuExecute", "Airflow Simulation", [this] {
    RunSimulationCommand(0);
  })->setShortcut(Qt::Key_F5);
  AddEntry(simulate, "mnnuNonConverge", "Non-converging Airways",
           [this] { RunSimulationCommand(-1); });
  QMenu* bulkheads = simulate->addMenu("Unnecessary bulkheads");
  bulkheads->setObjectName("mnuBulkheads");
  AddEntry(bulkheads, "mnuProblems", "Find", [this] { RunSimulationCommand(1); });
  AddEntry(bulkheads, "mnuRemoveRedund", "Remove", [this] { RunSimulationCommand(2); });
  AddEntry(simulate, "mnuFindResFans", "Find Restrictive Fans",
           [this] { RunSimulationCommand(3); });
  AddEntry(simulate, "mnuDupAir", "Find Duplicate Airways", [this] { RunSimulationCommand(4); });
  AddEntry(simulate, "mnuResetAirflows", "Re-seed Airflows", [this] { ReseedAirflowsCommand(); });
  AddSolverMenu(simulate, ws_.sim);
  simulate->addSeparator();
  AddEntry(simulate, "mnuFire", "Smoke Simulation");
  AddEntry(simulate, "mnuTrace", "Sourcing Simulation");
  AddEntry(simulate, "mnuClrSmoke", "Clear Smoke Tracking");
  AddEntry(simulate, "mnuClrSources", "Clear Smoke Sourcing");
}

void MainForm::BuildToolsMenu() {
  QMenu* tools = menuBar()->addMenu("&Tools");
  tools->setObjectName("mnuTools");
  QMenu* names = tools->addMenu("Names");
  names->setObjectName("mnuNames");
  AddEntry(names, "mnuAutoName", "Auto Name Airway");
  AddEntry(names, "mnuAutoNodes", "Auto Name Nodes");
  QMenu* flowLabels = names->addMenu("Flow Labels");
  flowLabels->setObjectName("mnuFlowLabels");
  AddEntry(flowLabels, "mnuRmvFlow", "Remove");
  QMenu* lengths = tools->addMenu("Lengths");
  lengths->setObjectName("mnuLengths");
  AddEntry(lengths, "mnuFixL", "Fix All");
  AddEntry(lengths, "mnuUnFixL", "Unfix All");
  QMenu* numbers = tools->addMenu("Airway Numbers");
  numbers->setObjectName("mnuNumbers");
  AddEntry(numbers, "mnuResetAir", "Renumber Airways");
  AddEntry(numbers, "mnuchecknumbers", "Check numbering", [this] {
    CheckDuplicateAirwayNumbers(ws_);
    RedrawViews();
  });
  QMenu* coordinates = tools->addMenu("Coordinates");
  coordinates->setObjectName("mnuCoordinates");
  AddEntry(coordinates, "mnuRevCoord", "Swap XY Axis");
  AddEntry(coordinates, "mnuReverse", "Reverse coordinate axis");
  AddEntry(coordinates, "mnuremdup", "Remove duplicates");
  AddEntry(tools, "mnuSimp", "Simplify");
  tools->addSeparator();
  QMenu* realtime = tools->addMenu("Realtime");
  realtime->setObjectName("mnuRealtime");
  AddEntry(realtime, "mnuRemoteStation", "Realtime Stations...");
  AddEntry(realtime, "mnuRemote", "Monitor Stations")->setCheckable(true);
  AddEntry(realtime, "mnuRealOut", "Realtime Output...");
  AddEntry(realtime, "mnuRealOutStart", "Write Output")->setCheckable(true);
}

void MainForm::BuildWindowMenu() {
  windowMenu_ = menuBar()->addMenu("&Window");
  windowMenu_->setObjectName("mnuWindow");
  AddEntry(windowMenu_, "mnuNewWindow", "&New Window", [this] { NewViewWindow(); });
  AddEntry(windowMenu_, "mnuFreeze", "&Freeze", [this] { FreezeCommand(); });
  windowMenu_->addSeparator();
  AddEntry(windowMenu_, "mnuCascade", "&Cascade", [this] { mdi_->cascadeSubWindows(); });
  AddEntry(windowMenu_, "mnuTile", "&Tile", [this] { TileViews(); });
  connect(windowMenu_, &QMenu::aboutToShow, this, &MainForm::FillWindowList);
}

void MainForm::TileViews() {
  mdi_->tileSubWindows();
  // Each window's new size is laid out first, then the network is fitted into it whole.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  for (FrmWindow* view : AllViews()) view->Fit();
}

void MainForm::BuildHelpMenu() {
  QMenu* help = menuBar()->addMenu("&Help");
  help->setObjectName("mnuHelp");
  AddEntry(help, "mnuContents", "&Contents", [this] {
    ShowHelp("index.html");
  })->setShortcut(QKeySequence::HelpContents);
  AddEntry(help, "mnuHelpBuild", "Building a Network", [this] { ShowHelp("build.html"); });
  AddEntry(help, "mnuHelpSimulate", "Simulating", [this] { ShowHelp("simulate.html"); });
  AddEntry(help, "mnuHelpResults", "Reading the Results", [this] { ShowHelp("results.html"); });
  AddEntry(help, "mnuHelpFiles", "Files", [this] { ShowHelp("files.html"); });
  help->addSeparator();
  AddEntry(help, "mnuAbout", "&About Galeris", [this] { ShowHelp("about.html"); });
}

}  // namespace galeris
