// The Solver choice of the Simulate menu, kept in the user's settings, and the self-check that
// frmSimForm shows at the end of a run.
#include <QAction>
#include <QLabel>
#include <QSettings>
#include <QtTest>

#include "app/frm_sim_form.h"
#include "app/main_form.h"
#include "app/qt_ui.h"
#include "core/headless_ui.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

using namespace galeris;

class SolverChoiceTest : public QObject {
  Q_OBJECT
 private slots:
  void ChoiceIsKeptAndTheRunEndsWithItsCheck();
};

void SolverChoiceTest::ChoiceIsKeptAndTheRunEndsWithItsCheck() {
  HeadlessUi boxes;
  QtUi ui(&boxes);
  Workspace ws(ui);
  ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
  MainForm form(ws);
  ui.SetParentWindow(&form);
  ui.SetSimRun(&ws.sim);
  form.Load("");
  QVERIFY(form.Action("mnuSolverHardyCross")->isChecked());
  form.Action("mnuSolverNewton")->trigger();
  QCOMPARE(ws.sim.Method, SolverMethod::Newton);
  QCOMPARE(QSettings("Galeris", "Galeris").value("Simulate/Solver").toString(), QString("newton"));

  const int intake = test::AddAirway(ws.net, 0, 0, 0, 0, 0, -100);
  ws.net.BranchCode[intake] |= Bit::ForceEntrySurface | Bit::FixedQuantity;
  ws.net.Quantity[intake] = 50;
  test::AddAirway(ws.net, 0, 0, -100, 100, 0, -100);
  test::AddAirway(ws.net, 0, 0, -100, 50, 50, -100);
  test::AddAirway(ws.net, 50, 50, -100, 100, 0, -100);
  const int upcast = test::AddAirway(ws.net, 100, 0, -100, 100, 0, 0);
  ws.net.BranchCode[upcast] |= Bit::ForceExitSurface;
  form.RunSimulationCommand(0);
  QCOMPARE(ws.sim.SimStatus, std::int16_t(0));
  QVERIFY(ui.SimForm().isVisible());
  QVERIFY(
      ui.SimForm().findChild<QLabel*>("LblCheck")->text().startsWith("Self-check : continuity "));
}

QTEST_MAIN(SolverChoiceTest)
#include "qt_solver_choice.moc"
