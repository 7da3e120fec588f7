// The level, layer, view option and options dialogs are wired to their engine rules: controls
// named as the program names them, filled from the store, and OK, Cancel, Show All and Hide All
// reaching the store and the view. (Select Range and Selected Levels: qt_main_form_levels.)
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest>

#include "core/headless_ui.h"
#include "core/units.h"
#include "editors/frm_options.h"
#include "editors/frm_rl_base.h"
#include "editors/frm_tag_s.h"
#include "editors/frm_viewer.h"
#include "files/defaults_file.h"
#include "view/layer_choice.h"

using namespace galeris;

namespace {

struct Store {
  Store() : ws(ui) {
    ResizeStore(ws.net);
    SetBuiltInDefaults(ws);
    ws.units = BuiltInUnits();
    ws.net.RLName[1] = "SURFACE";
    ws.net.RLBound[1] = {0, 1100, 1000};
    ws.net.RLName[2] = "900 Level";
    ws.net.RLBound[2] = {0, 950, 850};
    ws.net.RLCount = 2;
    ShowAllLayers(ws.net);
    view = MakeViewState(ws);
  }
  template <typename T>
  static T* Named(QWidget& dialog, const char* name) {
    return dialog.findChild<T*>(name);
  }
  HeadlessUi ui;
  Workspace ws;
  ViewState view;
};

}  // namespace

class LevelViewDialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void LevelListValidatesOnOkAndAsksOnCancel() {
    Store s;
    int validated = 0;
    FrmRLBase dialog(s.ws, [&] { ++validated; });
    QCOMPARE(dialog.windowTitle(), QString("Level List"));
    QTableWidget& grid = dialog.GridRL();
    QCOMPARE(grid.item(1, 1)->text(), QString("900 Level"));
    grid.item(2, 1)->setText("800 Level");
    grid.item(2, 2)->setText("750");
    grid.item(2, 3)->setText("850");  // inverted: exchanged
    Store::Named<QPushButton>(dialog, "RLOK")->click();
    QCOMPARE(validated, 1);
    QCOMPARE(s.ws.net.RLCount, std::int16_t{3});
    QCOMPARE(s.ws.net.RLBound[3][1], 850);

    FrmRLBase again(s.ws, [&] { ++validated; });
    again.GridRL().item(2, 1)->setText("Changed");
    s.ui.QueueAnswer(MsgAnswer::No);
    Store::Named<QPushButton>(again, "RLCancel")->click();
    QVERIFY(s.ui.Said("Save spreadsheet changes to network ?"));
    QCOMPARE(s.ws.net.RLName[3], std::string("800 Level"));
    QCOMPARE(validated, 1);
  }

  void ViewingLayersHideAllAndNames() {
    Store s;
    s.ws.net.PrimaryLayerName[2] = "Intake";
    FrmTagS dialog(s.ws, s.view);
    QCOMPARE(dialog.windowTitle(), QString("Viewing Layers"));
    QCOMPARE(Store::Named<QLineEdit>(dialog, "PLabel(2)")->text(), QString("Intake"));
    dialog.MakeCurrent(true, 2);
    dialog.MakeCurrent(false, 30);
    Store::Named<QPushButton>(dialog, "CmdReset")->click();
    QVERIFY(Store::Named<QCheckBox>(dialog, "Tag1(2)")->isChecked());
    QVERIFY(Store::Named<QCheckBox>(dialog, "Tag2(30)")->isChecked());
    Store::Named<QRadioButton>(dialog, "LineOpt(0)")->setChecked(true);
    Store::Named<QCheckBox>(dialog, "ChkArrow")->setChecked(true);
    auto* label = Store::Named<QLineEdit>(dialog, "PLabel(5)");
    label->clear();
    QTest::keyClicks(label, "a,b\"c");
    QCOMPARE(label->text(), QString("abc"));
    emit label->editingFinished();
    Store::Named<QPushButton>(dialog, "OK")->click();
    QCOMPARE(s.ws.net.PrimaryLayerName[5], std::string("abc"));
    QCOMPARE(s.ws.net.PrimaryLayerShow[1], std::int16_t{0});
    QCOMPARE(s.view.DisplayFlags, std::int16_t(LineOpt::Invisible | OffLayer::Arrows));
  }

  void ViewOptionsReachTheView() {
    Store s;
    s.view.DisplayBits = Show::OffLevelRaises;
    FrmViewer dialog(s.ws, s.view);
    QCOMPARE(dialog.windowTitle(), QString("View Options"));
    Store::Named<QPushButton>(dialog, "Hide")->click();
    QVERIFY(!Store::Named<QCheckBox>(dialog, "ChkViewer(0)")->isChecked());
    QVERIFY(Store::Named<QCheckBox>(dialog, "ChkViewer(9)")->isChecked());
    Store::Named<QLineEdit>(dialog, "TxtSigMin")->setText("2");
    Store::Named<QRadioButton>(dialog, "OptDimmer(1)")->setChecked(true);
    Store::Named<QCheckBox>(dialog, "ChkDeclutter")->setChecked(true);
    Store::Named<QPushButton>(dialog, "OK")->click();
    QCOMPARE(s.view.DisplayBits, Show::OffLevelRaises);
    QCOMPARE(s.view.FlowMinimum, 2.0f);
    QCOMPARE(s.view.FlowDimMode, std::int16_t{1});
    QVERIFY(s.view.Declutter);
  }

  void OptionsApplyOnOkOnly() {
    Store s;
    {
      FrmOptions dialog(s.ws);
      QCOMPARE(dialog.windowTitle(), QString("Options"));
      Store::Named<QLineEdit>(dialog, "txtIt")->setText("700");
      Store::Named<QPushButton>(dialog, "cmdCancel")->click();
    }
    QCOMPARE(s.ws.defaults.MaxIter, std::int16_t{50});
    FrmOptions dialog(s.ws);
    Store::Named<QLineEdit>(dialog, "txtIt")->setText("700");
    Store::Named<QCheckBox>(dialog, "ChkVert")->setChecked(true);
    auto* formats = Store::Named<QTableWidget>(dialog, "MSFlexGrid1");
    formats->item(0, 1)->setText("abc");
    QVERIFY(s.ui.Said(kMsgInvalidFormat));
    QCOMPARE(formats->item(0, 1)->text(), QString::fromStdString(s.ws.units.UnitFormat[1][1]));
    dialog.SetSymbolSizes({1, 2, 5, 5, 5, 5, 5}, {});
    Store::Named<QComboBox>(dialog, "CmbIcon")->setCurrentIndex(4);
    Store::Named<QComboBox>(dialog, "CmbIconSize")->setCurrentIndex(8);
    QCOMPARE(dialog.SymbolSize()[4], std::int16_t{9});
    dialog.SelectColourSlot(2);
    dialog.PickColour(12);
    Store::Named<QPushButton>(dialog, "cmdOK")->click();
    QCOMPARE(s.ws.defaults.MaxIter, std::int16_t{700});
    QCOMPARE(s.ws.net.AxisSignY, std::int16_t{-1});
    QCOMPARE(s.ws.defaults.ColourTable[3], 0x0000FF);
    QVERIFY(dialog.Applied().GridChanged);
  }
};

QTEST_MAIN(LevelViewDialogsTest)
#include "qt_level_view_dialogs.moc"
