// The frame's controls: menu entries by name and caption, the palette's buttons and tool tips,
// the data lists and their codes, the window limit and help; and its simulation commands: the
// progress window and its Cancel, the error list and its Goto, the status label, and the Solver
// choice of the Simulate menu, kept in the user's settings.
#include "app/frm_error.h"
#include "app/frm_help.h"
#include "app/frm_sim_form.h"
#include "app/qt_ui.h"
#include "app/tool_palette.h"
#include "editors/frm_summary.h"
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

  void NamedEntriesCaptionsAndPalette() {
    const std::pair<const char*, const char*> captions[] = {
        {"mnnuNonConverge", "Non-converging Airways"}, {"mnuMessage", "File &Memo"}};
    for (const auto& [name, caption] : captions) {
      QVERIFY2(form().Action(name), name);
      QCOMPARE(form().Action(name)->text(), QString(caption));
    }
    QVERIFY(form().Action("mnuFreeze")->isEnabled());
    QCOMPARE(form().Action("mnuExecute")->shortcut(), QKeySequence(Qt::Key_F5));
    ToolPalette& palette = form().Palette();
    QCOMPARE(form().findChild<QToolButton*>("Tools(17)")->toolTip(),
             QString("Place/remove smoke report - left (smoke) or right (clear)"));
    for (int i = 0; i < kPaletteButtons; ++i) {
      QVERIFY(!palette.Button(i)->toolTip().isEmpty());
      QVERIFY(!palette.Button(i)->icon().isNull());
    }
    QCOMPARE(Pressed(), 0);
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
    QCOMPARE(form().DataTypeCode(), 12);
    group->setCurrentIndex(1);
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
    form().findChild<QMenu*>("mnuPressure")->actions()[1]->trigger();
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

  // Tiling changes every window's shape; each is fitted anew, so no part of the mine is cut off.
  void TileFitsEveryWindow() {
    test::AddVentilatedNetwork(net(), 1000);
    RebuildNodes(net(), frame->ws.defaults, frame->ws.ui);  // as a loaded network has them
    form().resize(1200, 500);
    form().show();
    QVERIFY(QTest::qWaitForWindowExposed(&form()));
    for (FrmWindow* view : form().AllViews()) view->Fit();
    form().NewViewWindow();
    form().Action("mnuTile")->trigger();
    for (FrmWindow* view : form().AllViews()) {
      const ViewState& v = view->View();
      const float top = v.PanY - v.ScaleHeight / 2, bottom = v.PanY + v.ScaleHeight / 2;
      QVERIFY2(v.PanX - v.ScaleWidth / 2 <= 0 && v.PanX + v.ScaleWidth / 2 >= 1000 &&
                   ((top <= 0 && bottom >= 500) || (top <= -500 && bottom >= 0)),
               qPrintable(QString("%1 x %2").arg(v.ScaleWidth).arg(v.ScaleHeight)));
    }
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

  // Figures of an unsolved network say so and offer the run; after it the self-check shows.
  void SummaryOfAnUnsolvedNetworkOffersToSimulate() {
    test::AddVentilatedNetwork(net());
    form().Action("mnuSummary")->trigger();
    auto* summary = form().findChild<FrmSummary*>("frmSummary");
    QVERIFY(summary);
    QVERIFY(summary->findChild<QLabel*>("LblUnsolved")->isVisibleTo(summary));
    QVERIFY(!summary->findChild<QLabel*>("LblCheck"));
    summary->findChild<QPushButton*>("CmdSimulate")->click();
    QCOMPARE(Label(), QString("OK"));
    QVERIFY(!summary->findChild<QLabel*>("LblUnsolved")->isVisibleTo(summary));
    QVERIFY(summary->findChild<QLabel*>("LblCheck")->text().startsWith("continuity "));
  }

  void CleanRunTurnsTheLabelGreen() {
    test::AddVentilatedNetwork(net());
    form().RunSimulationCommand(0);
    QCOMPARE(frame->ws.sim.SimStatus, std::int16_t(0));
    QCOMPARE(Label(), QString("OK"));
    QCOMPARE(form().SimLabel().palette().color(QPalette::Window), QColor(0, 255, 0));
    QLabel* status = form().findChild<QLabel*>("LblStatus");
    QVERIFY(status->text().startsWith("Self-check : continuity "));
    // A network opened or started afresh shows no check of flows it never had, and the
    // label's tip says why a network just opened reads SIM.
    QVERIFY(form().SimLabel().toolTip().contains("since it was opened"));
    ui->SetPolicy(HeadlessUi::Policy::AlwaysYes);
    form().Action("mnuNewFile")->trigger();
    QCOMPARE(Label(), QString("SIM"));
    QCOMPARE(status->text(), QString());
    test::AddVentilatedNetwork(net());
    // Any later change turns the label back, and the palette's button 14 runs it again.
    net().NetworkBalanced = 0;
    form().RefreshSimStatus();
    QCOMPARE(Label(), QString("SIM"));
    form().Palette().Button(14)->click();
    QCOMPARE(Label(), QString("OK"));
    QCOMPARE(Pressed(), 0);
  }

  void ErrorLineNumbers() {
    const std::pair<const char*, int> cases[] = {
        {"  42\tFan restricted", 42}, {"305x\tlabel", 305}, {"\tno", 0}, {"99999999999\tx", 0}};
    for (const auto& [line, number] : cases) QCOMPARE(AirwayNoOfErrorLine(line), number);
  }

  void ProgressWindowLabelsAppearWithTheSweeps() {
    QtUi qtUi;
    qtUi.ShowProgress("Simulate");
    FrmSimForm& simForm = qtUi.SimForm();
    QVERIFY(simForm.isVisible());
    QCOMPARE(simForm.windowTitle(), QString("Simulate"));
    QVERIFY(!simForm.findChild<QLabel*>("Lbl1")->isVisible());
    qtUi.SetProgressLabels("", "");  // balancing starts: the labels show before the first sweep
    QVERIFY(simForm.findChild<QLabel*>("Lbl2")->isVisible());
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

  void ProgressWindowCancelAndTheSolverChoice() {
    HeadlessUi boxes;
    QtUi qtUi(&boxes);
    test::Frame qtFrame(qtUi);
    qtUi.SetParentWindow(&qtFrame.form);
    qtUi.SetSimRun(&qtFrame.ws.sim);
    test::AddVentilatedNetwork(qtFrame.ws.net);
    FrmSimForm& simForm = qtUi.SimForm();
    bool wasShown = false, cancel = true;
    boxes.OnYield([&](int) {
      wasShown = wasShown || simForm.isVisible();
      if (cancel && simForm.windowTitle() == "Balancing airflows" && simForm.isVisible())
        simForm.findChild<QPushButton*>("Command1")->click();
    });
    qtFrame.form.RunSimulationCommand(0);
    QVERIFY(wasShown);
    QVERIFY(!simForm.isVisible());
    QCOMPARE(simForm.windowTitle(), QString("Simulation Failed !"));
    QCOMPARE(qtFrame.ws.net.NetworkBalanced, std::int16_t(0));
    QCOMPARE(qtUi.BusyDepth(), 0);
    // The Solver choice is kept in the user's settings; a run closes its window and leaves its
    // self-check on the status line.
    cancel = false;
    QVERIFY(qtFrame.form.Action("mnuSolverHardyCross")->isChecked());
    qtFrame.form.Action("mnuSolverNewton")->trigger();
    QCOMPARE(qtFrame.ws.sim.Method, SolverMethod::Newton);
    QCOMPARE(QSettings("Galeris", "Galeris").value("Simulate/Solver").toString(),
             QString("newton"));
    qtFrame.form.RunSimulationCommand(0);
    QCOMPARE(qtFrame.ws.sim.SimStatus, std::int16_t(0));
    QVERIFY(!simForm.isVisible());
    QVERIFY(qtFrame.form.findChild<QLabel*>("LblStatus")
                ->text()
                .startsWith("Self-check : continuity "));
    QSettings("Galeris", "Galeris").remove("Simulate/Solver");
  }
};

QTEST_MAIN(MainFormTest)
#include "qt_main_form.moc"
