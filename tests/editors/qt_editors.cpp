// The editors' wiring: the airway dialogs (the editor commits a changed width and refuses a bad
// one, the fan dialog and coordinate entry hand their boxes to the engine, the info report shows
// its rows and chart, and the fan chart drawn on the raster canvas matches its reference picture
// beside this file); the level, layer, view option and options dialogs (controls named as the
// program names them, filled from the store, and OK, Cancel, Show All and Hide All reaching the
// store and the view; Select Range and Selected Levels: qt_main_form_commands); and the grid
// editors (the spreadsheet's model edits the working copy and its menus save, paste and sort
// it; the fan list stores its grid, estimates a curve, stops a save on a bad cell and keeps
// what it stored on a Cancel that does not save).
#include <QPrinter>

#include "core/airway_values.h"
#include "core/units.h"
#include "editors/form_printing.h"
#include "editors/frm_air_edit.h"
#include "editors/frm_air_info.h"
#include "editors/frm_coords.h"
#include "editors/frm_fan_data.h"
#include "editors/frm_fan_edit.h"
#include "editors/frm_options.h"
#include "editors/frm_rl_base.h"
#include "editors/frm_spread_sheet.h"
#include "editors/frm_tag_s.h"
#include "editors/frm_viewer.h"
#include "files/defaults_file.h"
#include "tests/app/qt_test_support.h"
#include "view/drawing.h"
#include "view/fan_chart.h"
#include "view/layer_choice.h"
#include "view/raster_canvas.h"

using namespace galeris;

namespace {

// Two airways; the second carries two fans of type 1 in parallel at its duty point.
struct FanMine {
  HeadlessUi ui;
  Workspace ws{ui};
  FanMine() {
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

// The same with the built-in defaults, two levels, every layer shown and a view.
struct Store : FanMine {
  Store() {
    SetBuiltInDefaults(ws);
    ws.net.RLName[1] = "SURFACE";
    ws.net.RLBound[1] = {0, 1100, 1000};
    ws.net.RLName[2] = "900 Level";
    ws.net.RLBound[2] = {0, 950, 850};
    ws.net.RLCount = 2;
    ShowAllLayers(ws.net);
    view = MakeViewState(ws);
  }
  ViewState view;
};

namespace C = SheetColumn;

}  // namespace

class EditorsTest : public QObject {
  Q_OBJECT
 private slots:
  void FanChartMatchesItsReference() {
    FanMine mine;
    RasterCanvas canvas(400, 360);
    const FanChartDuty duty{110, 1450, 1520};
    DrawFanChart(canvas, mine.ws.net, mine.ws.units, 1, 2, false, &duty);
    // Drawn by the engine's own canvas: 8 per channel on 0.2% of pixels.
    test::CompareWithReference(ToImage(canvas), "tests/editors/fan_chart.png", 8, 0.002);
    // Parallel fans double the flow axis: the duty point at 110 of 200 m3/s.
    QCOMPARE(FanChartScaleOf(mine.ws.net, 1, 2, false).MaxQ, 200.0);
    QCOMPARE(FanChartScaleOf(mine.ws.net, 1, 2, true).MaxQ, 100.0);
  }

  void EditorRefusesABadWidthThenCommitsAGoodOne() {
    FanMine mine;
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
    // A count of parallel airways loses its sign on leaving the box.
    auto* multi = Child<QLineEdit>(dialog, "TxtMultiAir");
    multi->setText("-2");
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(multi, &out);
    QCOMPARE(multi->text(), QString("2"));
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(dialog.Committed());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(mine.ws.net.Dim[1][2], 6.0f);
  }

  void MultipleModeAppliesClickedFieldsOnly() {
    FanMine mine;
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
  }

  void InfoReportShowsRowsAndChart() {
    FanMine mine;
    FrmAirInfo dialog(mine.ws, 2);
    QCOMPARE(Child<QLabel>(dialog, "LblAirName")->text(), QString("Fan Airway 0"));
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
    FanMine mine;
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
    FanMine mine;
    mine.ws.units.UnitSystem = 2;
    FrmCoords dialog(mine.ws, {1000, 2000, 300});
    dialog.show();
    QCOMPARE(Child<QLineEdit>(dialog, "TxtX")->text(), QString("3280.8"));
    Child<QLineEdit>(dialog, "TxtZ")->setText("656.16798");
    QTest::mouseClick(Child<QPushButton>(dialog, "OK"), Qt::LeftButton);
    QVERIFY(dialog.EntryPoint());
    QCOMPARE(*dialog.EntryPoint(), (std::array<double, 3>{1000, 2000, 200}));
    QVERIFY(!Child<QCheckBox>(dialog, "ChkCopy")->isVisibleTo(&dialog));

    FrmCoords move(mine.ws, {1000, 2000, 300}, true);  // a node moved by a surveyed offset
    QVERIFY(Child<QCheckBox>(move, "ChkCopy")->isVisibleTo(&move));
    Child<QLineEdit>(move, "TxtdX")->setText("32.808399");
    Child<QLineEdit>(move, "TxtdZ")->setText("-328.08399");
    Child<QCheckBox>(move, "ChkCopy")->setChecked(true);
    Child<QPushButton>(move, "OK")->click();
    QCOMPARE(*move.EntryPoint(), (std::array<double, 3>{1010, 2000, 200}));
    QVERIFY(move.CopyPoint());
  }

  void LevelListValidatesOnOkAndAsksOnCancel() {
    Store s;
    int validated = 0;
    FrmRLBase dialog(s.ws, [&] { ++validated; });
    QTableWidget& grid = dialog.GridRL();
    dialog.show();
    grid.setCurrentCell(2, 1);
    grid.edit(grid.currentIndex());
    QWidget* editor = grid.viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QTest::keyClicks(editor, "800 Level");
    QTest::keyClick(editor, Qt::Key_Return);  // the shared grid keys: Enter moves down
    QCOMPARE(grid.currentRow(), 3);
    grid.item(2, 2)->setText("750");
    grid.item(2, 3)->setText("850");  // inverted: exchanged
    Child<QPushButton>(dialog, "RLOK")->click();
    QCOMPARE(validated, 1);
    QCOMPARE(s.ws.net.RLCount, std::int16_t{3});
    QCOMPARE(s.ws.net.RLBound[3][1], 850);

    FrmRLBase again(s.ws, [&] { ++validated; });
    again.GridRL().item(2, 1)->setText("Changed");
    s.ui.QueueAnswer(MsgAnswer::No);
    Child<QPushButton>(again, "RLCancel")->click();
    QVERIFY(s.ui.Said("Save spreadsheet changes to network ?"));
    QCOMPARE(s.ws.net.RLName[3], std::string("800 Level"));
  }

  void ViewingLayersHideAllAndNames() {
    Store s;
    s.ws.net.PrimaryLayerName[2] = "Intake";
    FrmTagS dialog(s.ws, s.view);
    QCOMPARE(Child<QLineEdit>(dialog, "PLabel(2)")->text(), QString("Intake"));
    Child<QPushButton>(dialog, "CmdReset")->click();  // Hide All
    Child<QRadioButton>(dialog, "LineOpt(0)")->setChecked(true);
    Child<QCheckBox>(dialog, "ChkArrow")->setChecked(true);
    auto* label = Child<QLineEdit>(dialog, "PLabel(5)");
    label->clear();
    QTest::keyClicks(label, "a,b\"c");
    QCOMPARE(label->text(), QString("abc"));
    emit label->editingFinished();
    Child<QPushButton>(dialog, "OK")->click();
    QCOMPARE(s.ws.net.PrimaryLayerName[5], std::string("abc"));
    QCOMPARE(s.ws.net.PrimaryLayerShow[2], std::int16_t{0});
    QCOMPARE(s.view.DisplayFlags, std::int16_t(LineOpt::Invisible | OffLayer::Arrows));

    FrmTagS again(s.ws, s.view);
    again.MakeCurrent(true, 4);
    Child<QPushButton>(again, "CmdReset")->click();
    QTest::keyClick(&again, Qt::Key_Escape);  // applies as OK does
    QCOMPARE(s.ws.net.PrimaryLayerShow[4], std::int16_t{-1});
    QCOMPARE(s.ws.net.PrimaryLayerShow[1], std::int16_t{0});
    FrmTagS third(s.ws, s.view);  // the current layer lasts between openings
    Child<QPushButton>(third, "CmdReset")->click();
    Child<QPushButton>(third, "OK")->click();
    QCOMPARE(s.ws.net.PrimaryLayerShow[4], std::int16_t{-1});
  }

  void ViewOptionsReachTheView() {
    Store s;
    s.view.DisplayBits = Show::OffLevelRaises;
    FrmViewer dialog(s.ws, s.view);
    Child<QPushButton>(dialog, "Hide")->click();
    QVERIFY(!Child<QCheckBox>(dialog, "ChkViewer(0)")->isChecked());
    QVERIFY(Child<QCheckBox>(dialog, "ChkViewer(9)")->isChecked());
    Child<QLineEdit>(dialog, "TxtSigMin")->setText("2");
    Child<QRadioButton>(dialog, "OptDimmer(1)")->setChecked(true);
    Child<QCheckBox>(dialog, "ChkDeclutter")->setChecked(true);
    Child<QPushButton>(dialog, "OK")->click();
    QCOMPARE(s.view.DisplayBits, Show::OffLevelRaises);
    QCOMPARE(s.view.FlowMinimum, 2.0f);
    QCOMPARE(s.view.FlowDimMode, std::int16_t{1});
    QVERIFY(s.view.Declutter);
  }

  void OptionsApplyOnOkOnly() {
    Store s;
    {
      FrmOptions dialog(s.ws);
      Child<QLineEdit>(dialog, "txtIt")->setText("700");
      Child<QPushButton>(dialog, "cmdCancel")->click();
    }
    QCOMPARE(s.ws.defaults.MaxIter, std::int16_t{50});
    FrmOptions dialog(s.ws);
    Child<QLineEdit>(dialog, "txtIt")->setText("700");
    Child<QCheckBox>(dialog, "ChkVert")->setChecked(true);
    auto* formats = Child<QTableWidget>(dialog, "MSFlexGrid1");
    QCOMPARE(formats->horizontalHeaderItem(1)->text(), QString("SI Format"));  // the table's heads
    formats->item(0, 1)->setText("abc");
    QVERIFY(s.ui.Said(kMsgInvalidFormat));
    QCOMPARE(formats->item(0, 1)->text(), QString::fromStdString(s.ws.units.UnitFormat[1][1]));
    const Colour onLevel = PaletteColour(s.ws.defaults, Palette::OnLevel);
    dialog.SelectColourSlot(2);  // "Node Text"
    dialog.PickColour(12);
    dialog.SelectColourSlot(0);  // "Background"
    dialog.PickColour(1);
    Child<QPushButton>(dialog, "cmdOK")->click();
    QCOMPARE(s.ws.defaults.MaxIter, std::int16_t{700});
    QCOMPARE(s.ws.net.AxisSignY, std::int16_t{-1});
    QCOMPARE(PaletteColour(s.ws.defaults, Palette::Symbols), 0x0000FF);
    QCOMPARE(BackgroundColour(s.ws.defaults), 0x800000);
    QCOMPARE(PaletteColour(s.ws.defaults, Palette::OnLevel), onLevel);
    QVERIFY(dialog.Applied().GridChanged);
  }

  void SpreadSheetKeepsItsCopyUntilSaved() {
    FanMine mine;
    mine.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
    SheetColumnWidths widths{};
    int simulations = 0;
    mine.ws.net.Quantity[1] = -2345.6f;  // long figures in Flow and Pdrop
    FrmSpreadSheet form(mine.ws, widths, [&] { ++simulations; });
    form.show();
    SheetModel& model = form.Model();
    // No figure is cut short by the default widths.
    const QFontMetrics metrics = form.Grid().fontMetrics();
    const int margins = 2 * (form.Grid().style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
    for (int column = C::Length; column <= C::FPres; ++column)
      for (int row = 0; row < model.rowCount(); ++row) {
        const QString text = model.data(model.index(row, column - 1), Qt::DisplayRole).toString();
        QVERIFY2(metrics.horizontalAdvance(text) + margins <= form.Grid().columnWidth(column - 1),
                 qPrintable(text));
      }
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.headerData(C::Resistance - 1, Qt::Horizontal, Qt::DisplayRole).toString(),
             QString("Resistance"));
    QVERIFY(model.setData(model.index(0, C::Width - 1), "5", Qt::EditRole));
    QCOMPARE(mine.ws.net.Dim[1][2], 4.0f);

    form.Grid().setCurrentIndex(model.index(1, C::Name - 1));
    QApplication::clipboard()->setText("Gamma\tn1\r\nDelta\tn2\r\n");
    Child<QAction>(form, "mnuPaste")->trigger();  // the second line adds a row
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.data(model.index(1, C::From - 1), Qt::DisplayRole).toString(), QString("n1"));

    Child<QAction>(form, "mnuSaveChanges")->trigger();
    QCOMPARE(mine.ws.net.Dim[1][2], 5.0f);
    QCOMPARE(QString::fromStdString(mine.ws.net.BranchName[2].Trimmed()), QString("Gamma"));
    QCOMPARE(int(mine.ws.net.BranchCount), 3);

    // The in-place editor: Enter puts the text in the cell and moves down.
    form.Grid().setCurrentIndex(model.index(0, C::Comments - 1));
    form.Grid().edit(form.Grid().currentIndex());
    QWidget* editor = form.Grid().viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QTest::keyClicks(editor, "wet");
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(model.data(model.index(0, C::Comments - 1), Qt::DisplayRole).toString(),
             QString("wet"));
    QCOMPARE(form.Grid().currentIndex().row(), 1);

    form.Grid().setCurrentIndex(model.index(0, C::Name - 1));
    Child<QAction>(form, "mnuDescend")->trigger();
    QCOMPARE(model.data(model.index(0, C::Name - 1), Qt::DisplayRole).toString(), QString("Gamma"));
    Child<QAction>(form, "mnuSim")->trigger();
    QCOMPARE(simulations, 1);
  }

  void FanListStoresEstimatesAndCancels() {
    FanMine mine;
    mine.ws.net.FanName[1].clear();
    mine.ws.net.FanDiameter[1] = 2;
    mine.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
    const auto before = mine.ws.net.CurveP[1];
    FrmFanData form(mine.ws);
    form.show();
    auto* list = form.findChild<QListWidget*>("FanList");
    QCOMPARE(list->item(0)->text(), QString(" 1 -none-"));
    auto* grid = form.findChild<QTableWidget*>("Spreadsheet");
    grid->item(0, 1)->setText("2500");  // stored at once, and named
    QCOMPARE(mine.ws.net.CurveP[1][1][1], 2500.0f);
    QCOMPARE(list->item(0)->text(), QString(" 1 Fan #1"));
    Child<QAction>(form, "mnuTotalCurrent")->trigger();
    const double v = 10 / 3.141592654;  // 10 m3/s through a 2 m exit
    QCOMPARE(mine.ws.net.CurveP[1][1][2], float(std::floor(2500 + v * v * 1.2 / 2)));
    const float estimated = mine.ws.net.CurveP[1][1][2];

    // A cell being typed says nothing; Yes to saving stops on it and keeps everything.
    grid->item(3, 3)->setText("4o");
    QVERIFY(!mine.ui.Said(kMsgNumberFormat));
    mine.ui.QueueAnswer(MsgAnswer::Yes);  // "Save fan changes to network ?"
    form.findChild<QPushButton*>("Cancel")->click();
    QVERIFY(mine.ui.Said(kMsgNumberFormat));
    QVERIFY(form.isVisible());
    QCOMPARE(std::pair(grid->currentRow(), grid->currentColumn()), std::pair(3, 3));
    QCOMPARE(mine.ws.net.CurveP[1][1][2], estimated);

    // No closes and keeps what was stored.
    grid->item(3, 3)->setText("40");
    mine.ui.QueueAnswer(MsgAnswer::No);
    form.findChild<QPushButton*>("Cancel")->click();
    QVERIFY(!form.isVisible());
    QCOMPARE(mine.ws.net.CurveP[1][1][2], estimated);
    QCOMPARE(mine.ws.net.FanName[1], std::string("Fan #1"));
    QVERIFY(form.StoreChanged());
    QVERIFY(before != mine.ws.net.CurveP[1]);
  }
};

QTEST_MAIN(EditorsTest)
#include "qt_editors.moc"
