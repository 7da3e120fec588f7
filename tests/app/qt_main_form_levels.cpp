// The frame's level, layer and option commands: their menu entries work, the view list loads
// a view on every pick, palette button 26 opens View Options, Declutter lives in the user's
// settings, and the Levels menu sets the view's level mode.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QListWidget>
#include <QSettings>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/tool_palette.h"
#include "core/headless_ui.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.Load(test::SourcePath("examples/example_mine.sim"));
  }
  ViewState& View() { return form.CurrentView()->View(); }
  Workspace ws;
  MainForm form;
};

// Runs `act` on the next modal dialog to open, then closes it with OK.
void OnNextDialog(std::function<void(QDialog&)> act) {
  QTimer::singleShot(0, [act] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QVERIFY(dialog);
    act(*dialog);
    dialog->accept();
  });
}

}  // namespace

class MainFormLevelsTest : public QObject {
  Q_OBJECT
 private slots:
  void MenusViewListAndDeclutter();
  void LevelsMenuSetsTheMode();
};

void MainFormLevelsTest::MenusViewListAndDeclutter() {
  HeadlessUi ui;
  Frame frame(ui);
  for (const char* name : {"mnuRLBase", "mnuTagS", "mnuViewer", "mnuOptions", "mnuLevels(2)"})
    QVERIFY2(frame.form.Action(name) && frame.form.Action(name)->isEnabled(), name);

  // Every pick of CmbView loads the view, the same one again too, and in plan mode.
  auto* list = frame.form.findChild<QComboBox*>("CmbView");
  const int plan = list->findText(" 1. Default View"), iso = list->findText(" 5. Iso View");
  emit list->activated(plan);
  frame.View().PanX += 5000;
  emit list->activated(plan);
  QVERIFY(frame.View().PanX < 5000);
  emit list->activated(iso);
  QCOMPARE(frame.View().Is3D, std::int16_t{1});

  QVERIFY(frame.View().Declutter);  // on by default
  OnNextDialog([](QDialog& dialog) {
    QCOMPARE(dialog.objectName(), QString("frmViewer"));
    dialog.findChild<QCheckBox*>("ChkDeclutter")->setChecked(false);
  });
  frame.form.Palette().Button(26)->click();
  QVERIFY(!frame.View().Declutter);
  QVERIFY(!MainForm::DeclutterSetting());
  QSettings("Galeris", "Galeris").remove("View/Declutter");
}

void MainFormLevelsTest::LevelsMenuSetsTheMode() {
  HeadlessUi ui;
  Frame frame(ui);
  OnNextDialog([](QDialog& dialog) {
    dialog.findChild<QComboBox*>("CmbRL1")->setCurrentIndex(1);
    dialog.findChild<QComboBox*>("CmbRL2")->setCurrentIndex(2);
  });
  frame.form.Action("mnuLevels(3)")->trigger();
  QCOMPARE(frame.View().LevelMode, LevelModeOf::Range);
  QCOMPARE(frame.View().LevelTop, float(frame.ws.net.RLBound[2][1]));
  QCOMPARE(frame.View().LevelBottom, float(frame.ws.net.RLBound[3][2]));
  OnNextDialog([](QDialog& dialog) {
    auto* from = dialog.findChild<QListWidget*>("RLFrom");
    emit from->itemDoubleClicked(from->item(2));
  });
  frame.form.Action("mnuLevels(2)")->trigger();
  QCOMPARE(frame.View().SelectedLevels, (std::vector<std::int16_t>{3}));
  // The Level List's OK refills CmbRL from the table as validated.
  OnNextDialog([](QDialog& dialog) { QCOMPARE(dialog.objectName(), QString("frmRLBase")); });
  frame.form.Action("mnuRLBase")->trigger();
  QCOMPARE(frame.form.findChild<QComboBox*>("CmbRL")->count(), int(frame.ws.net.RLCount));
  frame.form.Action("mnuLevels(1)")->trigger();
  QCOMPARE(frame.View().LevelMode, LevelModeOf::Single);
}

QTEST_MAIN(MainFormLevelsTest)
#include "qt_main_form_levels.moc"
