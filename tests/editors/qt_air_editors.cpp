// The airway dialogs' wiring: the editor commits a changed width and refuses a bad one, the
// fan dialog and coordinate entry hand their boxes to the engine, the info report shows its
// rows and chart, and the fan chart drawn on the raster canvas matches its reference picture
// beside this file (GALERIS_UPDATE_REFERENCES=1 writes it anew).
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include "core/airway_values.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "editors/form_printing.h"
#include "editors/frm_air_edit.h"
#include "editors/frm_air_info.h"
#include "editors/frm_coords.h"
#include "editors/frm_fan_edit.h"
#include "tests/app/qt_test_support.h"
#include "view/fan_chart.h"
#include "view/raster_canvas.h"

using namespace galeris;

namespace {

// Two airways; the second carries two fans of type 1 in parallel at its duty point.
struct Mine {
  HeadlessUi ui;
  Workspace ws{ui};
  Mine() {
    ws.net.MaxAirways = 10;
    ClearStore(ws.net);
    ws.units = BuiltInUnits();
    test::AddAirway(ws.net, 0, 0, 500, 100, 0, 500);
    const int fan = test::AddAirway(ws.net, 100, 0, 500, 100, 0, 600);
    for (int i = 1; i <= 2; ++i) {
      ws.net.WallFactor[i] = 0.012f;
      ws.net.WallType[i] = ws.net.ShockType[i] = kUserGiven;
      CalcResistance(ws, i);
    }
    ws.net.FanName[1] = "Axial 1800";
    ws.net.FanDiameter[1] = 1.8f;
    for (int k = 1; k <= 10; ++k) {
      ws.net.CurveQ[1][k] = 10.0f * k;
      ws.net.CurveP[1][k][1] = 2000.0f - 18.0f * k * k;
      ws.net.CurveP[1][k][2] = 2100.0f - 17.0f * k * k;
      ws.net.CurveEff[1][k] = static_cast<std::int16_t>(40 + 8 * k - k * k / 2);
    }
    ws.net.FanNumber[fan] = 1;
    ws.net.NoOfFans[fan] = 2;
    ws.net.Quantity[fan] = 110;
    ws.net.Pressure[fan] = 1450;
  }
};

QImage ToImage(const RasterCanvas& canvas) {
  QImage image(canvas.Width(), canvas.Height(), QImage::Format_RGB32);
  for (int y = 0; y < canvas.Height(); ++y)
    for (int x = 0; x < canvas.Width(); ++x) {
      const Colour c = canvas.Pixel(x, y);
      image.setPixel(x, y, qRgb(RedOf(c), GreenOf(c), BlueOf(c)));
    }
  return image;
}

template <typename T>
T* Child(QWidget& parent, const char* name) {
  T* child = parent.findChild<T*>(name);
  if (!child) qFatal("no control %s", name);
  return child;
}

}  // namespace

class AirEditorsTest : public QObject {
  Q_OBJECT
 private slots:
  void FanChartMatchesItsReference() {
    Mine mine;
    RasterCanvas canvas(400, 360);
    const FanChartDuty duty{110, 1450, 1520};
    DrawFanChart(canvas, mine.ws.net, mine.ws.units, 1, 2, false, &duty);
    // Drawn by the engine's own canvas: 8 per channel on 0.2% of pixels.
    test::CompareWithReference(ToImage(canvas), "tests/editors/fan_chart.png", 8, 0.002);
    // Parallel fans double the flow axis: the duty point at 110 of 200 m3/s.
    const FanChartScale scale = FanChartScaleOf(mine.ws.net, 1, 2, false);
    QCOMPARE(scale.MaxQ, 200.0);
    QCOMPARE(FanChartScaleOf(mine.ws.net, 1, 2, true).MaxQ, 100.0);
  }

  void EditorRefusesABadWidthThenCommitsAGoodOne() {
    Mine mine;
    FrmAirEdit dialog(mine.ws, AirEditMode::Single, 1);
    dialog.show();
    QCOMPARE(dialog.windowTitle(), QString("Airway Edit"));
    // The arrangement and the curve type are separate choices.
    QVERIFY(Child<QRadioButton>(dialog, "OptPar2")->isChecked());
    QVERIFY(Child<QRadioButton>(dialog, "Optcurve(0)")->isChecked());
    auto* width = Child<QLineEdit>(dialog, "TxtWidth");
    width->setText("wide");
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(!dialog.Committed());
    QVERIFY(mine.ui.Said(kMsgDataEntry));
    QCOMPARE(width->text(), QString("4.0"));
    QCOMPARE(mine.ws.net.Dim[1][2], 4.0f);
    width->setText("6");
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(dialog.Committed());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(mine.ws.net.Dim[1][2], 6.0f);
    QCOMPARE(mine.ws.net.Dim[2][2], 4.0f);
  }

  void MultipleModeAppliesClickedFieldsOnly() {
    Mine mine;
    mine.ws.net.BranchCode[1] |= Bit::Selected;
    mine.ws.net.BranchCode[2] |= Bit::Selected;
    FrmAirEdit dialog(mine.ws, AirEditMode::Multiple, 1);
    dialog.show();
    QCOMPARE(dialog.windowTitle(), QString("Airway Edit - Multiple select (2)"));
    auto* width = Child<QLineEdit>(dialog, "TxtWidth");
    QTest::mouseClick(width, Qt::LeftButton);
    width->setText("5");
    Child<QLineEdit>(dialog, "txtHeight")->setText("9");  // typed into, never clicked
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(dialog.Committed());
    for (int i = 1; i <= 2; ++i) {
      QCOMPARE(mine.ws.net.Dim[i][2], 5.0f);
      QCOMPARE(mine.ws.net.Dim[i][1], 4.0f);
    }
    QCOMPARE(int(mine.ws.net.FanNumber[2]), 1);
  }

  void InfoReportShowsRowsAndChart() {
    Mine mine;
    FrmAirInfo dialog(mine.ws, 2);
    QCOMPARE(Child<QLabel>(dialog, "LblAirName")->text(), QString("Fan Airway 0"));
    QCOMPARE(Child<QLabel>(dialog, "LblDName(3)")->text(), QString("Airflow"));
    QCOMPARE(Child<QLabel>(dialog, "LblFanName")->text(), QString("Axial 1800 x 2 in parallel"));
    QVERIFY(dialog.findChild<FanChartWidget*>("PicFan2"));
    QPrinter printer;  // Prnter prints the form as it stands
    const QString pdf = QString::fromStdString(test::ScratchDir()) + "info.pdf";
    printer.setOutputFileName(pdf);
    RenderFormToPrinter(&dialog, printer);
    QVERIFY(QFileInfo(pdf).size() > 1000);
    FrmAirInfo passive(mine.ws, 1);
    QCOMPARE(Child<QLabel>(passive, "LblAirName")->text(), QString("Passive Airway 0"));
    QVERIFY(!passive.findChild<FanChartWidget*>("PicFan2"));
  }

  void FanEditPutsAFanOnTheAirway() {
    Mine mine;
    FrmFanEdit dialog(mine.ws, 1);
    dialog.show();
    auto* fans = Child<QComboBox>(dialog, "FanCombo2");
    QCOMPARE(fans->itemText(1), QString("  1: Axial 1800"));
    fans->setCurrentIndex(1);
    Child<QLineEdit>(dialog, "TxtFanN")->setText("3");
    QTest::mouseClick(Child<QPushButton>(dialog, "Command1"), Qt::LeftButton);
    QVERIFY(dialog.Committed());
    QCOMPARE(int(mine.ws.net.FanNumber[1]), 1);
    QCOMPARE(int(mine.ws.net.NoOfFans[1]), 3);
  }

  void CoordinatesComeBackInSI() {
    Mine mine;
    mine.ws.units.UnitSystem = 2;
    FrmCoords dialog(mine.ws, {1000, 2000, 300});
    dialog.show();
    QCOMPARE(Child<QLineEdit>(dialog, "TxtX")->text(), QString("3280.8"));
    Child<QLineEdit>(dialog, "TxtZ")->setText("656.16798");
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(dialog.EntryPoint());
    QCOMPARE(*dialog.EntryPoint(), (std::array<double, 3>{1000, 2000, 200}));
  }
};

QTEST_MAIN(AirEditorsTest)
#include "qt_air_editors.moc"
