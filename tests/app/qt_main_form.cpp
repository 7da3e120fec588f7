// The frame's controls: every menu entry by its name and caption, which of them work yet, the
// palette's buttons and tool tips, the data lists and their codes, the window limit and help;
// and its simulation commands: the progress window and its Cancel, the error list and its Goto,
// the status label, the refusal of a run without data, and the Solver choice of the Simulate
// menu, kept in the user's settings.
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTextBrowser>
#include <QToolButton>

#include "app/frm_error.h"
#include "app/frm_help.h"
#include "app/frm_sim_form.h"
#include "app/qt_ui.h"
#include "app/tool_palette.h"
#include "files/lifecycle.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

class MainFormTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  Network& net() { return frame->ws.net; }
  QString Label() { return form().SimLabel().text(); }
  int Pressed() { return form().Palette().PressedButton(); }
  // Two underground airways that touch nothing: each has no entry and no exit.
  void AddBrokenNetwork() {
    test::AddAirway(net(), 0, 0, -100, 100, 0, -100);
    test::AddAirway(net(), 500, 500, -200, 600, 500, -200);
  }

 private slots:
  void init() { Start(); }

  void EveryNamedEntryExistsWithItsCaption() {
    const std::pair<const char*, const char*> captions[] = {
        {"mnuExecute", "Airflow Simulation"},
        {"mnnuNonConverge", "Non-converging Airways"},
        {"mnuProblems", "Find"},
        {"mnuRemoveRedund", "Remove"},
        {"mnuFindResFans", "Find Restrictive Fans"},
        {"mnuDupAir", "Find Duplicate Airways"},
        {"mnuResetAirflows", "Re-seed Airflows"},
        {"mnuFire", "Smoke Simulation"},
        {"mnuTrace", "Sourcing Simulation"},
        {"mnuClrSmoke", "Clear Smoke Tracking"},
        {"mnuClrSources", "Clear Smoke Sourcing"},
        {"mnuAutoName", "Auto Name Airway"},
        {"mnuAutoNodes", "Auto Name Nodes"},
        {"mnuFixL", "Fix All"},
        {"mnuUnFixL", "Unfix All"},
        {"mnuResetAir", "Renumber Airways"},
        {"mnuchecknumbers", "Check numbering"},
        {"mnuRevCoord", "Swap XY Axis"},
        {"mnuReverse", "Reverse coordinate axis"},
        {"mnuremdup", "Remove duplicates"},
        {"mnuRmvFlow", "Remove"},
        {"mnuComment", "Title Note..."},
        {"mnuMessage", "File &Memo"},
        {"mnuFBName", "Branch Name"},
        {"mnuFNName", "Node Name"},
        {"mnuSimp", "Simplify"},
        {"mnuConfirm", "Confirmations"}};
    for (const auto& [name, caption] : captions) {
      QVERIFY2(form().Action(name), name);
      QCOMPARE(form().Action(name)->text(), QString(caption));
    }
    // Entries that work are enabled; those not yet are there, greyed.
    for (const char* name :
         {"mnuNewFile",      "mnuOpenFile",      "mnuMergeFile",     "mnuSaveFile",
          "mnuSaveAs",       "mnuExecute",       "mnnuNonConverge",  "mnuProblems",
          "mnuRemoveRedund", "mnuFindResFans",   "mnuDupAir",        "mnuResetAirflows",
          "mnuMessage",      "mnuNewWindow",     "mnuExit",          "mnuFit",
          "mnuSaveView",     "mnuchecknumbers",  "mnuExportPicture", "mnuFire",
          "mnuTrace",        "mnuClrSmoke",      "mnuClrSources",    "mnuAutoName",
          "mnuAutoNodes",    "mnuFixL",          "mnuUnFixL",        "mnuResetAir",
          "mnuRevCoord",     "mnuReverse",       "mnuremdup",        "mnuRmvFlow",
          "mnuComment",      "mnuFBName",        "mnuFNName",        "mnuImportData",
          "mnuExportData",   "mnuDXFTrue",       "MnuDXFScreen",     "mnuUndo",
          "mnuRedo",         "mnuSimp",          "mnuPrintNetwork",  "mnuSpreadSheet",
          "mnuFanList",      "mnuZoom",          "mnuCpyPst",        "mnuCopy2",
          "mnuFinder",       "mnuFitAll",        "mnuPlanS",         "mnu3d",
          "mnuDelView",      "mnuRemoteStation", "mnuRemote",        "mnuRealOut",
          "mnuRealOutStart", "mnuBar(0)",        "mnuBar(10)",       "mnuLevels(1)",
          "mnuLevels(4)"})
      QVERIFY2(form().Action(name) && form().Action(name)->isEnabled(), name);
    for (const char* name : {"mnuOld(1)", "mnuOld(9)"}) QVERIFY2(form().Action(name), name);
    QVERIFY(!form().Action("mnuFreeze")->isEnabled());
    for (const char* menu :
         {"mnuLevels", "mnuAirflow", "mnuPressure", "mnuBranch", "mnuCost", "MnuQFlag", "mnuBar"})
      QVERIFY2(form().findChild<QMenu*>(menu), menu);
    QCOMPARE(form().Action("mnuExecute")->shortcut(), QKeySequence(Qt::Key_F5));
  }

  void PaletteHasItsButtonsAndToolTips() {
    ToolPalette& palette = form().Palette();
    QCOMPARE(palette.objectName(), QString("Tools"));
    const std::pair<int, const char*> tips[] = {
        {0, "Zoom / Pan  [F2]"},
        {2, "Copy (right)  Paste (left) Layers"},
        {4, "Draw new airway [F3]"},
        {6, "Move airway end [F5]"},
        {7, "Reverse airway direction [F6]"},
        {8, "Delete airway [F4]"},
        {9, "Place / remove fan [F8]"},
        {10, "Place/Remove Text [F7]"},
        {11, "Place / Remove contaminant"},
        {12, "Edit airway [F10]"},
        {13, "Airway information [F9]"},
        {15, "Insert node along airway"},
        {16, "Follow airway"},
        {17, "Place/remove smoke report - left (smoke) or right (clear)"},
        {18, "Centre Model (left) or Rotate (right)"},
        {21, "Copy (right) or Paste (left) airway attributes"},
        {31, "Select airway tool (ESC to deselect)"}};
    for (const auto& [index, tip] : tips)
      QCOMPARE(form().findChild<QToolButton*>(QString("Tools(%1)").arg(index))->toolTip(),
               QString(tip));
    for (int i = 0; i < kPaletteButtons; ++i) {
      QVERIFY(!palette.Button(i)->toolTip().isEmpty());
      QVERIFY(!palette.Button(i)->icon().isNull());
    }
    QCOMPARE(Pressed(), 0);
    QVERIFY(palette.Button(14)->isEnabled());
    QCOMPARE(PaletteStatusText(0), QString("ZOOM / PAN"));
    QCOMPARE(PaletteStatusText(10), QString("PLACE/REMO"));
  }

  void PaletteCommandShowsItsStatusText() {
    form().Palette().Button(19)->click();  // Open: the dialog is cancelled
    QCOMPARE(form().findChild<QLabel*>("LblStatus")->text(), QString("OPEN NETWO"));
    QCOMPARE(Pressed(), 0);
    // A tool stays down; a momentary command gives the palette back to it.
    form().Palette().Button(4)->click();
    QCOMPARE(form().findChild<QLabel*>("LblStatus")->text(), QString("DRAW NEW A"));
    QCOMPARE(Pressed(), 4);
    form().Palette().Button(1)->click();  // Fit
    QCOMPARE(Pressed(), 4);
    // The menu twins reach the same dispatcher.
    form().Action("mnuBar(6)")->trigger();
    QCOMPARE(Pressed(), 9);
    form().Action("mnuZoom")->trigger();
    QCOMPARE(Pressed(), 0);
  }

  void DataListsAndMenusGiveTheDataTypeCode() {
    auto* group = form().findChild<QComboBox*>("CmbDataType");
    auto* item = form().findChild<QComboBox*>("CmbDataVal");
    QCOMPARE(group->count(), 5);
    QCOMPARE(group->itemText(2), QString("Airway data"));
    QCOMPARE(form().DataTypeCode(), 12);
    group->setCurrentIndex(1);
    QCOMPARE(item->count(), 7);
    QCOMPARE(item->itemText(3), QString("Regulator Load"));
    QCOMPARE(form().DataTypeCode(), 22);
    item->setCurrentIndex(item->findText("Absolute"));
    QCOMPARE(form().DataTypeCode(), 27);
    group->setCurrentIndex(2);
    item->setCurrentIndex(item->findText("Coordinates"));
    QCOMPARE(form().DataTypeCode(), 37);
    // Back to a group: its last item returns.
    group->setCurrentIndex(1);
    QCOMPARE(form().DataTypeCode(), 27);
    QCOMPARE(item->currentText(), QString("Absolute"));
    group->setCurrentIndex(4);
    QCOMPARE(item->itemText(4), QString("Spread Time"));
    QCOMPARE(form().DataTypeCode(), 52);

    auto* pressure = form().findChild<QMenu*>("mnuPressure");
    QStringList captions;
    for (QAction* action : pressure->actions()) captions << action->text();
    QCOMPARE(captions, QStringList({"Loss  Pa", "Boost Pa", "Load  kg", "Node relative Pa",
                                    "Node atmos kPa", "Node barometric kPa"}));
    pressure->actions()[1]->trigger();
    QCOMPARE(form().DataTypeCode(), 24);
    QCOMPARE(item->currentText(), QString("Boost"));
    form().findChild<QMenu*>("MnuQFlag")->actions()[0]->trigger();
    QCOMPARE(form().DataTypeCode(), 52);
  }

  void AtMostFiveViewWindows() {
    for (int k = 2; k <= 5; ++k) QVERIFY(form().NewViewWindow());
    ui->ClearRecords();
    QVERIFY(!form().NewViewWindow());
    QCOMPARE(ui->MessageTexts(), std::vector<std::string>{"Too many windows"});
    QCOMPARE(form().Views().subWindowList().size(), 5);
  }

  void HelpPagesOpenAndLinkTogether() {
    form().Action("mnuContents")->trigger();
    FrmHelp& help = form().HelpForm();
    QVERIFY(help.isVisible());
    QTextBrowser& browser = help.Browser();
    QVERIFY(browser.toPlainText().contains("simulates the airflow"));
    for (const char* page :
         {"build.html", "simulate.html", "results.html", "files.html", "about.html"}) {
      help.ShowPage(page);
      QVERIFY2(browser.toPlainText().size() > 200, page);
      QVERIFY2(browser.toHtml().contains("index.html"), page);
    }
  }

  void EmptyNetworkIsRefused() {
    ui->ClearRecords();
    form().RunSimulationCommand(0);
    QCOMPARE(ui->MessageTexts(), std::vector<std::string>{"No data to simulate"});
    QVERIFY(!ui->ProgressShown());
    QCOMPARE(Label(), QString("SIM"));
  }

  void BrokenNetworkOpensTheErrorListAndGoto() {
    AddBrokenNetwork();
    form().RunSimulationCommand(0);
    FrmError& errors = form().ErrorForm();
    QVERIFY(errors.isVisible());
    QCOMPARE(errors.windowTitle(), QString("Sim Fail Error List"));
    QCOMPARE(ui->ProgressCaption(), std::string("Simulation Failed !"));
    QListWidget& list = errors.List();
    QStringList lines, expected;
    for (int row = 0; row < list.count(); ++row) lines << list.item(row)->text();
    for (const std::string& line : net().Errorlist) expected << QString::fromStdString(line);
    QCOMPARE(lines, expected);
    QVERIFY(lines.join('\n').contains("\tNo exit from branch"));
    QVERIFY(lines.join('\n').contains("\tNo entry into branch"));
    QCOMPARE(Label(), QString("SIM"));  // a failed check leaves the network unsolved

    // Goto finds the airway by the number at the head of the line.
    int shown = 0;
    form().OnGoToAirway([&](int position) { shown = position; });
    list.setCurrentRow(list.count() - 1);
    const int airwayNo = AirwayNoOfErrorLine(list.currentItem()->text().toStdString());
    errors.findChild<QPushButton*>("Command2")->click();
    QVERIFY(shown > 0);
    QCOMPARE(net().AirwayNo[shown], airwayNo);

    // Cancel closes the list and marks the run stopped.
    errors.findChild<QPushButton*>("Command1")->click();
    QVERIFY(!errors.isVisible());
    QCOMPARE(int(frame->ws.sim.SimCancel), 255);
  }

  void CleanRunTurnsTheLabelGreen() {
    test::AddVentilatedNetwork(net());
    QCOMPARE(Label(), QString("SIM"));
    QCOMPARE(form().SimLabel().palette().color(QPalette::Window), QColor(255, 192, 128));
    form().RunSimulationCommand(0);
    QCOMPARE(frame->ws.sim.SimStatus, std::int16_t(0));
    QCOMPARE(Label(), QString("OK"));
    QCOMPARE(form().SimLabel().palette().color(QPalette::Window), QColor(0, 255, 0));
    QCOMPARE(form().findChild<QComboBox*>("CmbDataType")->palette().color(QPalette::Base),
             QColor(192, 255, 192));
    QVERIFY(form().findChild<FrmError*>() == nullptr || !form().ErrorForm().isVisible());
    QCOMPARE(ui->BusyDepth(), 0);
    // Any later change turns the label back, and the palette's button 14 runs it again.
    net().NetworkBalanced = 0;
    form().RefreshSimStatus();
    QCOMPARE(Label(), QString("SIM"));
    form().Palette().Button(14)->click();
    QCOMPARE(Label(), QString("OK"));
    QCOMPARE(Pressed(), 0);
  }

  void CancelDuringBalancingLeavesSimulationFailed() {
    test::AddVentilatedNetwork(net());
    bool pressed = false;
    ui->OnYield([&](int) {
      if (ui->ProgressCaption() == "Balancing airflows" && !pressed) {
        frame->ws.sim.SimCancel = 255;
        pressed = true;
      }
    });
    form().RunSimulationCommand(0);
    QVERIFY(pressed);
    QCOMPARE(ui->ProgressCaption(), std::string("Simulation Failed !"));
    QCOMPARE(net().NetworkBalanced, std::int16_t(0));
    QCOMPARE(Label(), QString("SIM"));
    QVERIFY(!ui->ProgressShown());
  }

  void ProgressWindowCancelButtonStopsTheRun() {
    HeadlessUi boxes;
    QtUi qtUi(&boxes);
    test::Frame qtFrame(qtUi);
    qtUi.SetSimRun(&qtFrame.ws.sim);
    test::AddVentilatedNetwork(qtFrame.ws.net);
    FrmSimForm& simForm = qtUi.SimForm();
    bool wasShown = false;
    boxes.OnYield([&](int) {
      wasShown = wasShown || simForm.isVisible();
      if (simForm.windowTitle() == "Balancing airflows" && simForm.isVisible())
        simForm.findChild<QPushButton*>("Command1")->click();
    });
    qtFrame.form.RunSimulationCommand(0);
    QVERIFY(wasShown);
    QVERIFY(!simForm.isVisible());
    QCOMPARE(simForm.windowTitle(), QString("Simulation Failed !"));
    QCOMPARE(qtFrame.ws.net.NetworkBalanced, std::int16_t(0));
    QCOMPARE(qtUi.BusyDepth(), 0);
    QVERIFY(qtFrame.form.Action("mnuExecute")->isEnabled());
  }

  void ErrorLineNumbers() {
    const std::pair<const char*, int> cases[] = {{"17\tNo exit from branch", 17},
                                                 {"  42\tFan restricted", 42},
                                                 {"305x\tlabel", 305},
                                                 {"\tno number", 0},
                                                 {"", 0},
                                                 {"99999999999\tlabel", 0}};
    for (const auto& [line, number] : cases) QCOMPARE(AirwayNoOfErrorLine(line), number);
  }

  void ProgressWindowLabelsAppearWithTheSweeps() {
    QtUi qtUi;
    qtUi.ShowProgress("Simulate");
    FrmSimForm& simForm = qtUi.SimForm();
    QVERIFY(simForm.isVisible());
    QCOMPARE(simForm.windowTitle(), QString("Simulate"));
    QVERIFY(!simForm.findChild<QLabel*>("Lbl1")->isVisible());
    QVERIFY(!simForm.findChild<QLabel*>("Lbl2")->isVisible());
    qtUi.SetProgressLabels("", "");
    QVERIFY(!simForm.findChild<QLabel*>("Lbl1")->isVisible());
    qtUi.SetProgressLabels("3", "0.12 m3/s");
    QVERIFY(simForm.findChild<QLabel*>("Lbl1")->isVisible());
    QCOMPARE(simForm.findChild<QLabel*>("LblItt")->text(), QString("3"));
    QCOMPARE(simForm.findChild<QLabel*>("LblError")->text(), QString("0.12 m3/s"));
    qtUi.SetProgress(150);
    QCOMPARE(simForm.findChild<ProgBar*>("ProgBar")->Percent(), 100);
    // Without a run attached, Cancel only closes the window.
    simForm.findChild<QPushButton*>("Command1")->click();
    QVERIFY(!simForm.isVisible());
  }

  void BusyPointerNests() {
    QtUi qtUi;
    qtUi.SetBusy(true);
    qtUi.SetBusy(true);
    qtUi.SetBusy(false);
    QVERIFY(QApplication::overrideCursor() != nullptr);
    qtUi.SetBusy(false);
    QVERIFY(QApplication::overrideCursor() == nullptr);
    qtUi.SetBusy(false);  // one too many does not underflow
    QCOMPARE(qtUi.BusyDepth(), 0);
  }

  void ExampleMineSolves() {
    QVERIFY(OpenNetwork(frame->ws, test::SourcePath("examples/example_mine.sim")));
    form().RunSimulationCommand(0);
    QVERIFY2(net().Errorlist.empty(), net().Errorlist.empty() ? "" : net().Errorlist[0].c_str());
    QCOMPARE(Label(), QString("OK"));
  }

  void SolverChoiceIsKeptAndTheRunEndsWithItsCheck() {
    HeadlessUi boxes;
    QtUi qtUi(&boxes);
    test::Frame qtFrame(qtUi);
    qtUi.SetParentWindow(&qtFrame.form);
    qtUi.SetSimRun(&qtFrame.ws.sim);
    QVERIFY(qtFrame.form.Action("mnuSolverHardyCross")->isChecked());
    qtFrame.form.Action("mnuSolverNewton")->trigger();
    QCOMPARE(qtFrame.ws.sim.Method, SolverMethod::Newton);
    QCOMPARE(QSettings("Galeris", "Galeris").value("Simulate/Solver").toString(),
             QString("newton"));
    test::AddVentilatedNetwork(qtFrame.ws.net);
    qtFrame.form.RunSimulationCommand(0);
    QCOMPARE(qtFrame.ws.sim.SimStatus, std::int16_t(0));
    QVERIFY(qtUi.SimForm().isVisible());
    QVERIFY(qtUi.SimForm()
                .findChild<QLabel*>("LblCheck")
                ->text()
                .startsWith("Self-check : continuity "));
    QSettings("Galeris", "Galeris").remove("Simulate/Solver");
  }
};

QTEST_MAIN(MainFormTest)
#include "qt_main_form.moc"
