// The simulation commands of the frame: the progress window and its Cancel, the error list
// and its Goto, the status label, and the refusals of a run without data.
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

#include "app/frm_error.h"
#include "app/frm_sim_form.h"
#include "app/main_form.h"
#include "app/qt_ui.h"
#include "app/tool_palette.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

// A frame started as the program starts it, over scripted boxes.
struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([](const FileDialogRequest&) { return QString(); });
    form.Load("");
  }
  Workspace ws;
  MainForm form;
};

// Two underground airways that touch nothing: each has no entry and no exit.
void AddBrokenNetwork(Network& net) {
  test::AddAirway(net, 0, 0, -100, 100, 0, -100);
  test::AddAirway(net, 500, 500, -200, 600, 500, -200);
}

// An intake shaft with a fixed quantity, two parallel ways of different resistance and an
// upcast: closed through the surface, and needing more than one sweep to balance.
void AddVentilatedNetwork(Network& net) {
  const int intake = test::AddAirway(net, 0, 0, 0, 0, 0, -100);
  net.BranchCode[intake] |= Bit::ForceEntrySurface | Bit::FixedQuantity;
  net.Quantity[intake] = 50;
  const int direct = test::AddAirway(net, 0, 0, -100, 100, 0, -100);
  net.Resistance[direct] = 0.5f;
  test::AddAirway(net, 0, 0, -100, 50, 50, -100);
  test::AddAirway(net, 50, 50, -100, 100, 0, -100);
  const int upcast = test::AddAirway(net, 100, 0, -100, 100, 0, 0);
  net.BranchCode[upcast] |= Bit::ForceExitSurface;
}

}  // namespace

class SimulateWindowsTest : public QObject {
  Q_OBJECT
 private slots:
  void EmptyAndSingleAirwayNetworksAreRefused();
  void BrokenNetworkOpensTheErrorList();
  void CleanRunTurnsTheLabelGreen();
  void CancelDuringBalancingLeavesSimulationFailed();
  void ProgressWindowCancelButtonStopsTheRun();
  void GotoFindsTheAirwayByItsNumber();
  void ErrorLineNumbers();
  void ProgressWindowLabelsAppearWithTheSweeps();
  void BusyPointerNests();
  void ExampleMineSolves();
};

void SimulateWindowsTest::EmptyAndSingleAirwayNetworksAreRefused() {
  HeadlessUi ui;
  Frame frame(ui);
  ui.ClearRecords();
  frame.form.RunSimulationCommand(0);
  QCOMPARE(ui.MessageTexts(), std::vector<std::string>{"No data to simulate"});
  QVERIFY(!ui.ProgressShown());
  QVERIFY(frame.form.findChild<FrmError*>() == nullptr || !frame.form.ErrorForm().isVisible());

  test::AddAirway(frame.ws.net, 0, 0, 0, 10, 0, 0);
  ui.ClearRecords();
  frame.form.RunSimulationCommand(0);
  QCOMPARE(ui.MessageTexts(), std::vector<std::string>{"Not enough data to simulate"});
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));
}

void SimulateWindowsTest::BrokenNetworkOpensTheErrorList() {
  HeadlessUi ui;
  Frame frame(ui);
  AddBrokenNetwork(frame.ws.net);
  frame.form.RunSimulationCommand(0);

  FrmError& errors = frame.form.ErrorForm();
  QVERIFY(errors.isVisible());
  QCOMPARE(errors.windowTitle(), QString("Sim Fail Error List"));
  QCOMPARE(ui.ProgressCaption(), std::string("Simulation Failed !"));
  QListWidget& list = errors.List();
  QCOMPARE(list.count(), static_cast<int>(frame.ws.net.Errorlist.size()));
  QVERIFY(list.count() >= 2);
  QStringList labels;
  for (int row = 0; row < list.count(); ++row) {
    const QString line = list.item(row)->text();
    QCOMPARE(line, QString::fromStdString(frame.ws.net.Errorlist[row]));
    const QStringList parts = line.split('\t');
    QCOMPARE(parts.size(), 2);
    bool number = false;
    QVERIFY(parts[0].toInt(&number) > 0 && number);
    labels << parts[1];
  }
  QVERIFY(labels.contains("No exit from branch"));
  QVERIFY(labels.contains("No entry into branch"));
  // A failed check leaves the network unsolved.
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));

  // Cancel closes the list and marks the run stopped.
  errors.findChild<QPushButton*>("Command1")->click();
  QVERIFY(!errors.isVisible());
  QCOMPARE(int(frame.ws.sim.SimCancel), 255);
}

void SimulateWindowsTest::CleanRunTurnsTheLabelGreen() {
  HeadlessUi ui;
  Frame frame(ui);
  AddVentilatedNetwork(frame.ws.net);
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));
  QCOMPARE(frame.form.SimLabel().palette().color(QPalette::Window), QColor(255, 192, 128));

  frame.form.RunSimulationCommand(0);
  QCOMPARE(frame.ws.sim.SimStatus, std::int16_t(0));
  QCOMPARE(frame.form.SimLabel().text(), QString("OK"));
  QCOMPARE(frame.form.SimLabel().palette().color(QPalette::Window), QColor(0, 255, 0));
  auto* dataType = frame.form.findChild<QComboBox*>("CmbDataType");
  QCOMPARE(dataType->palette().color(QPalette::Base), QColor(192, 255, 192));
  QVERIFY(frame.form.findChild<FrmError*>() == nullptr || !frame.form.ErrorForm().isVisible());
  QCOMPARE(ui.BusyDepth(), 0);

  // Any later change turns the label back, and the palette's button 14 runs it again.
  frame.ws.net.NetworkBalanced = 0;
  frame.form.RefreshSimStatus();
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));
  frame.form.Palette().Button(14)->click();
  QCOMPARE(frame.form.SimLabel().text(), QString("OK"));
  QCOMPARE(frame.form.Palette().PressedButton(), 0);
}

void SimulateWindowsTest::CancelDuringBalancingLeavesSimulationFailed() {
  HeadlessUi ui;
  Frame frame(ui);
  AddVentilatedNetwork(frame.ws.net);
  bool pressed = false;
  ui.OnYield([&](int) {
    if (ui.ProgressCaption() == "Balancing airflows" && !pressed) {
      frame.ws.sim.SimCancel = 255;
      pressed = true;
    }
  });
  frame.form.RunSimulationCommand(0);
  QVERIFY(pressed);
  QCOMPARE(ui.ProgressCaption(), std::string("Simulation Failed !"));
  QCOMPARE(frame.ws.net.NetworkBalanced, std::int16_t(0));
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));
  QVERIFY(!ui.ProgressShown());
}

void SimulateWindowsTest::ProgressWindowCancelButtonStopsTheRun() {
  HeadlessUi boxes;
  QtUi ui(&boxes);
  Frame frame(ui);
  ui.SetSimRun(&frame.ws.sim);
  AddVentilatedNetwork(frame.ws.net);
  FrmSimForm& simForm = ui.SimForm();
  bool wasShown = false;
  boxes.OnYield([&](int) {
    wasShown = wasShown || simForm.isVisible();
    if (simForm.windowTitle() == "Balancing airflows" && simForm.isVisible())
      simForm.findChild<QPushButton*>("Command1")->click();
  });
  frame.form.RunSimulationCommand(0);
  QVERIFY(wasShown);
  QVERIFY(!simForm.isVisible());
  QCOMPARE(simForm.windowTitle(), QString("Simulation Failed !"));
  QCOMPARE(frame.ws.net.NetworkBalanced, std::int16_t(0));
  QCOMPARE(ui.BusyDepth(), 0);
  QVERIFY(frame.form.Action("mnuExecute")->isEnabled());
}

void SimulateWindowsTest::GotoFindsTheAirwayByItsNumber() {
  HeadlessUi ui;
  Frame frame(ui);
  AddBrokenNetwork(frame.ws.net);
  frame.form.RunSimulationCommand(0);
  int shown = 0;
  frame.form.OnGoToAirway([&](int position) { shown = position; });
  QListWidget& list = frame.form.ErrorForm().List();
  QVERIFY(list.count() > 0);
  list.setCurrentRow(list.count() - 1);
  const int airwayNo = AirwayNoOfErrorLine(list.currentItem()->text().toStdString());
  frame.form.ErrorForm().findChild<QPushButton*>("Command2")->click();
  QVERIFY(shown > 0);
  QCOMPARE(frame.ws.net.AirwayNo[shown], airwayNo);
}

void SimulateWindowsTest::ErrorLineNumbers() {
  QCOMPARE(AirwayNoOfErrorLine("17\tNo exit from branch"), 17);
  QCOMPARE(AirwayNoOfErrorLine("  42\tFan restricted"), 42);
  QCOMPARE(AirwayNoOfErrorLine("305x\tlabel"), 305);
  QCOMPARE(AirwayNoOfErrorLine("\tno number"), 0);
  QCOMPARE(AirwayNoOfErrorLine(""), 0);
  QCOMPARE(AirwayNoOfErrorLine("99999999999\tlabel"), 0);
}

void SimulateWindowsTest::ProgressWindowLabelsAppearWithTheSweeps() {
  HeadlessUi boxes;
  QtUi ui(&boxes);
  ui.ShowProgress("Simulate");
  FrmSimForm& simForm = ui.SimForm();
  QVERIFY(simForm.isVisible());
  QCOMPARE(simForm.windowTitle(), QString("Simulate"));
  QVERIFY(!simForm.findChild<QLabel*>("Lbl1")->isVisible());
  QVERIFY(!simForm.findChild<QLabel*>("Lbl2")->isVisible());
  ui.SetProgressLabels("", "");
  QVERIFY(!simForm.findChild<QLabel*>("Lbl1")->isVisible());
  ui.SetProgressLabels("3", "0.12 m3/s");
  QVERIFY(simForm.findChild<QLabel*>("Lbl1")->isVisible());
  QCOMPARE(simForm.findChild<QLabel*>("LblItt")->text(), QString("3"));
  QCOMPARE(simForm.findChild<QLabel*>("LblError")->text(), QString("0.12 m3/s"));
  ui.SetProgress(150);
  QCOMPARE(simForm.findChild<ProgBar*>("ProgBar")->Percent(), 100);
  // Without a run attached, Cancel only closes the window.
  simForm.findChild<QPushButton*>("Command1")->click();
  QVERIFY(!simForm.isVisible());
}

void SimulateWindowsTest::BusyPointerNests() {
  QtUi ui;
  ui.SetBusy(true);
  ui.SetBusy(true);
  QVERIFY(QApplication::overrideCursor() != nullptr);
  ui.SetBusy(false);
  QVERIFY(QApplication::overrideCursor() != nullptr);
  ui.SetBusy(false);
  QVERIFY(QApplication::overrideCursor() == nullptr);
  ui.SetBusy(false);  // one too many does not underflow
  QCOMPARE(ui.BusyDepth(), 0);
}

void SimulateWindowsTest::ExampleMineSolves() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(OpenNetwork(frame.ws, test::SourcePath("examples/example_mine.sim")));
  QVERIFY(frame.ws.net.BranchCount > 10);
  frame.form.RunSimulationCommand(0);
  QVERIFY2(frame.ws.net.Errorlist.empty(),
           frame.ws.net.Errorlist.empty() ? "" : frame.ws.net.Errorlist.front().c_str());
  QCOMPARE(frame.form.SimLabel().text(), QString("OK"));
}

QTEST_MAIN(SimulateWindowsTest)
#include "qt_simulate_windows.moc"
