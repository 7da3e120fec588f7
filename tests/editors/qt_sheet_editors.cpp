// The grid editors' wiring: the spreadsheet's model edits the working copy and its menus save,
// paste and sort it; the fan list stores its grid, estimates a curve and puts everything back
// on a Cancel that does not save.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QtTest>

#include "core/airway_values.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "editors/frm_fan_data.h"
#include "editors/frm_spread_sheet.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

namespace C = SheetColumn;

struct Mine {
  HeadlessUi ui{HeadlessUi::Policy::AlwaysYes};
  Workspace ws{ui};
  Mine() {
    ws.net.MaxAirways = 10;
    ClearStore(ws.net);
    ws.units = BuiltInUnits();
    for (int k = 0; k < 2; ++k) {
      const int i = test::AddAirway(ws.net, 100 * k, 0, -50, 100 * k + 100, 0, -50);
      ws.net.BranchName[i] = k == 0 ? "Alpha" : "Beta";
      ws.net.Dim[i] = {0, 3, 4};
      ws.net.WallFactor[i] = 0.012f;
      ws.net.WallType[i] = ws.net.ShockType[i] = kUserGiven;
      CalcResistance(ws, i);
    }
    ws.net.FanDiameter[1] = 2;
    for (int k = 1; k <= 10; ++k) {
      ws.net.CurveQ[1][k] = 10.0f * k;
      ws.net.CurveP[1][k][1] = 2000.0f - 100.0f * k;
    }
  }
};

void Trigger(QWidget& form, const char* name) {
  QAction* action = form.findChild<QAction*>(name);
  if (!action) qFatal("no menu %s", name);
  action->trigger();
}

}  // namespace

class SheetEditorsTest : public QObject {
  Q_OBJECT
 private slots:
  void SpreadSheetKeepsItsCopyUntilSaved() {
    Mine mine;
    SheetColumnWidths widths{};
    int simulations = 0;
    FrmSpreadSheet form(mine.ws, widths, [&] { ++simulations; });
    form.show();
    for (const char* name :
         {"mnuSaveChanges", "mnuPrint",   "mnuExit",   "mnuUndo",    "mnuEditBox", "mnuInfo",
          "mnuClear",       "mnuSelAll",  "mnuInsert", "mnuInsert2", "mnuDelete",  "mnuFind",
          "mnuAgain",       "mnuReplace", "mnuFix",    "mnuUnfix",   "mnuRecalc",  "mnuRecalcAll",
          "mnu4",           "mnuFixR",    "mnuUnfixC", "mnuUnfixR",  "mnuHideC",   "mnuShowC",
          "mnuShowAll",     "mnuAdd(11)"})
      QVERIFY2(form.findChild<QAction*>(name), name);
    SheetModel& model = form.Model();
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.headerData(C::Resistance - 1, Qt::Horizontal, Qt::DisplayRole).toString(),
             QString("Resistance"));
    QVERIFY(model.setData(model.index(0, C::Width - 1), "5", Qt::EditRole));
    QCOMPARE(mine.ws.net.Dim[1][2], 4.0f);

    form.Grid().setCurrentIndex(model.index(1, C::Name - 1));
    QApplication::clipboard()->setText("Gamma\tn1\r\nDelta\tn2\r\n");
    Trigger(form, "mnuPaste");  // the second line adds a row
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.data(model.index(1, C::From - 1), Qt::DisplayRole).toString(), QString("n1"));

    Trigger(form, "mnuSaveChanges");
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
    Trigger(form, "mnuDescend");
    QCOMPARE(model.data(model.index(0, C::Name - 1), Qt::DisplayRole).toString(), QString("Gamma"));
    Trigger(form, "mnuSim");
    QCOMPARE(simulations, 1);
  }

  void FanListStoresEstimatesAndCancels() {
    Mine mine;
    const auto before = mine.ws.net.CurveP[1];
    FrmFanData form(mine.ws);
    form.show();
    auto* list = form.findChild<QListWidget*>("FanList");
    QCOMPARE(list->item(0)->text(), QString(" 1 -none-"));
    auto* grid = form.findChild<QTableWidget*>("Spreadsheet");
    grid->item(0, 1)->setText("2500");  // stored at once, and named
    QCOMPARE(mine.ws.net.CurveP[1][1][1], 2500.0f);
    QCOMPARE(list->item(0)->text(), QString(" 1 Fan #1"));
    Trigger(form, "mnuTotalCurrent");
    const double v = 10 / 3.141592654;  // 10 m3/s through a 2 m exit
    QCOMPARE(mine.ws.net.CurveP[1][1][2], float(std::floor(2500 + v * v * 1.2 / 2)));
    mine.ui.QueueAnswer(MsgAnswer::No);  // "Save fan changes to network ?"
    form.findChild<QPushButton*>("Cancel")->click();
    QCOMPARE(mine.ws.net.CurveP[1], before);
    QVERIFY(mine.ws.net.FanName[1].empty());
  }
};

QTEST_MAIN(SheetEditorsTest)
#include "qt_sheet_editors.moc"
