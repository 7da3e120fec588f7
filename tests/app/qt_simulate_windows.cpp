// The simulation commands of the frame: the progress window and its Cancel, the error list
// and its Goto, the status label, the refusals of a run without data, and the Solver choice
// of the Simulate menu, kept in the user's settings.
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>

#include "app/frm_error.h"
#include "app/frm_sim_form.h"
#include "app/qt_ui.h"
#include "app/tool_palette.h"
#include "files/lifecycle.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

class SimulateWindowsTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  Network& net() { return frame->ws.net; }
  QString Label() { return form().SimLabel().text(); }
  // Two underground airways that touch nothing: each has no entry and no exit.
  void AddBrokenNetwork() {
    test::AddAirway(net(), 0, 0, -100, 100, 0, -100);
    test::AddAirway(net(), 500, 500, -200, 600, 500, -200);
  }

 private slots:
  void init() { Start(); }

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
    QCOMPARE(form().Palette().PressedButton(), 0);
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

QTEST_MAIN(SimulateWindowsTest)
#include "qt_simulate_windows.moc"
