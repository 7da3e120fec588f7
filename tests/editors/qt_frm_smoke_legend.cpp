// The spread legend's wiring: digits only in the legend boxes, the slider's time and limit,
// the Clear Smoke / Show Smoke toggle and the question of Clear Sources.
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QtTest>

#include "core/headless_ui.h"
#include "editors/frm_smoke_legend.h"
#include "tests/support/test_support.h"

using namespace galeris;

class FrmSmokeLegendTest : public QObject {
  Q_OBJECT
 private slots:
  void ControlsAreWired();
};

void FrmSmokeLegendTest::ControlsAreWired() {
  HeadlessUi ui;
  Workspace ws(ui);
  const int source = test::AddAirway(ws.net, 0, 0, 0, 100, 0, 0);
  ws.net.BranchCode[source] |= Bit::ContaminantSource;
  ws.net.Contaminant[source] = 100;
  FrmSmokeLegend legend(ws);

  auto* box = legend.findChild<QLineEdit*>("Percent(2)");
  QTest::keyClicks(box, "12a3");
  QCOMPARE(box->text(), QString("123"));

  QSignalSpy limit(&legend, &FrmSmokeLegend::TimeLimitChanged);
  legend.SetSliderRange(21604);
  QCOMPARE(legend.TimerText(), QString("6:00:03"));  // the slider's day is 86404 seconds
  QCOMPARE(limit.count(), 0);                        // the drawn limit starts at 0
  legend.findChild<QSlider*>("Slider")->setValue(0);
  QCOMPARE(limit.takeFirst().at(0).toFloat(), 1.0f);

  auto* clear = legend.findChild<QPushButton*>("CmdClearS");
  QSignalSpy cleared(&legend, &FrmSmokeLegend::ClearSmokeClicked);
  clear->click();
  QVERIFY(clear->text() == "Show Smoke" && cleared.count() == 1);
  QVERIFY(!legend.findChild<QGroupBox*>("frmLegend")->isEnabled());

  ui.QueueAnswer(MsgAnswer::Yes);
  legend.findChild<QPushButton*>("CmdClearSources")->click();
  QVERIFY(ui.Said("Clear contaminant sources ?"));
  QVERIFY(ws.net.Contaminant[source] == 0 && !(ws.net.BranchCode[source] & Bit::ContaminantSource));
}

QTEST_MAIN(FrmSmokeLegendTest)
#include "qt_frm_smoke_legend.moc"
