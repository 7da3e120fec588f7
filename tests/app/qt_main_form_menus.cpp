// The frame's controls: every menu entry by its name and caption, which of them work yet, the
// palette's buttons and tool tips, the data lists and their codes, the window limit and help.
#include <QComboBox>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QTextBrowser>
#include <QToolButton>

#include "app/frm_help.h"
#include "app/tool_palette.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

class MainFormMenusTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  int Pressed() { return form().Palette().PressedButton(); }

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
};

QTEST_MAIN(MainFormMenusTest)
#include "qt_main_form_menus.moc"
