// The contaminant and whole-network commands of the frame on the example mine: the spread's
// form, legend and data display, the refusal while a spread stands, clearing, the sourcing
// form, a Tools entry, the summary and the name lists.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/main_form_tools.h"
#include "core/headless_ui.h"
#include "editors/frm_smoke.h"
#include "editors/frm_smoke_legend.h"
#include "editors/frm_smoke_trace.h"
#include "editors/frm_summary.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([](const FileDialogRequest&) { return QString(); });
    form.Load("");
    OpenNetwork(ws, test::SourcePath("examples/example_mine.sim"));
    form.RunSimulationCommand(0);
  }
  int ViewSmokeState() { return form.CurrentView()->View().SmokeState; }
  Workspace ws;
  MainForm form;
};

}  // namespace

class MainFormToolsTest : public QObject {
  Q_OBJECT
 private slots:
  void SpreadAndSourcingShowTheirWindows();
  void ToolsEntriesSummaryAndNameLists();
};

void MainFormToolsTest::SpreadAndSourcingShowTheirWindows() {
  HeadlessUi ui;
  Frame frame(ui);
  Network& net = frame.ws.net;
  net.BranchCode[5] |= Bit::ContaminantSource;
  net.Contaminant[5] = 1000;
  const int dataType = frame.form.DataTypeCode();
  const auto simulate = [&frame] {  // Simulate, once frmSmoke is open modally
    frame.form.NetworkTools().SmokeForm().findChild<QPushButton*>("OK")->click();
  };
  QTimer::singleShot(0, &frame.form, simulate);
  frame.form.Action("mnuFire")->trigger();
  FrmSmokeLegend* legend = frame.form.NetworkTools().Legend();
  QVERIFY(legend && legend->isVisible());
  QCOMPARE(frame.ViewSmokeState(), 1);
  QCOMPARE(frame.form.DataTypeCode(), 55);
  QCOMPARE(legend->SliderValue(), SliderRange(net));
  QCOMPARE(legend->Legend()[0], SmokeMaximum(net));
  QVERIFY(SmokeMaximum(net) > 0);

  frame.form.Action("mnuFire")->trigger();
  QVERIFY(ui.Said("Contaminant must be cleared before simulating"));
  legend->findChild<QSlider*>("Slider")->setValue(0);  // the limit is at least 1 second
  QCOMPARE(frame.form.CurrentView()->View().SmokeLimit, 1.0f);
  auto* box = legend->findChild<QLineEdit*>("Percent(2)");
  box->clear();
  QTest::keyClicks(box, "12a3");
  QCOMPARE(box->text(), QString("123"));
  legend->findChild<QPushButton*>("CmdClearS")->click();
  QCOMPARE(frame.ViewSmokeState(), 0);
  QTimer::singleShot(0, &frame.form, simulate);
  legend->findChild<QPushButton*>("CmdClearS")->click();  // "Show Smoke" runs the spread again
  QCOMPARE(frame.ViewSmokeState(), 1);

  ui.QueueAnswer(MsgAnswer::No);  // the sources stay
  frame.form.Action("mnuClrSmoke")->trigger();
  QVERIFY(!legend->isVisible());
  QCOMPARE(frame.ViewSmokeState(), 0);
  QCOMPARE(frame.form.DataTypeCode(), dataType);
  QCOMPARE(SmokeMaximum(net), 0.0f);

  const int last = net.BranchCount;
  net.SmokeData[last][1] = ReportPin::Smoke;
  frame.form.Action("mnuTrace")->trigger();
  FrmSmokeTrace* trace = frame.form.NetworkTools().Trace();
  QVERIFY(trace && trace->isVisible());
  QCOMPARE(frame.ViewSmokeState(), 2);
  QCOMPARE(net.SmokeData[last][2], TraceState::Smoke);
  trace->findChild<QPushButton*>("CmdSim")->click();
  QCOMPARE(frame.ViewSmokeState(), 0);
  frame.form.Action("mnuClrSources")->trigger();
  QCOMPARE(net.SmokeData[last][1], std::int16_t{0});
}

void MainFormToolsTest::ToolsEntriesSummaryAndNameLists() {
  HeadlessUi ui;
  Frame frame(ui);
  Network& net = frame.ws.net;
  ui.QueueAnswer(MsgAnswer::Yes);
  frame.form.Action("mnuFixL")->trigger();
  QVERIFY(net.BranchCode[net.BranchCount] & Bit::FixedLength);
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));

  frame.form.Action("mnuSummary")->trigger();
  FrmSummary* summary = frame.form.NetworkTools().Summary();
  QVERIFY(summary && summary->isVisible());
  QCOMPARE(summary->findChild<QLabel*>("LblNA")->text(), QString::number(net.BranchCount));

  net.BranchName[3] = "Main drive";
  frame.form.Action("mnuFBName")->trigger();
  auto* list = frame.form.findChild<QDialog*>("frmListAirNames")->findChild<QListWidget*>("List1");
  const QList<QListWidgetItem*> rows = list->findItems("Main drive", Qt::MatchExactly);
  QCOMPARE(rows.size(), 1);
  emit list->itemClicked(rows.front());
  QVERIFY(net.BranchCode[3] & Bit::Selected);
}

QTEST_MAIN(MainFormToolsTest)
#include "qt_main_form_tools.moc"
