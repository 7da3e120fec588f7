// The frame's level, layer and option commands: their menu entries work, the view list loads
// a view on every pick, palette button 26 opens View Options, Declutter lives in the user's
// settings, and the Levels menu sets the view's level mode.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QSettings>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/tool_palette.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([](const FileDialogRequest&) { return QString(); });
    form.Load(test::SourcePath("examples/example_mine.sim"));
    form.show();
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
  void EntriesAreThereAndWork();
  void ViewListLoadsOnEveryPick();
  void PaletteOpensViewOptionsAndDeclutterIsKept();
  void LevelsMenuSetsTheMode();
};

void MainFormLevelsTest::EntriesAreThereAndWork() {
  HeadlessUi ui;
  Frame frame(ui);
  for (const char* name : {"mnuRLBase", "mnuTagS", "mnuViewer", "mnuOptions", "mnuLevels(1)",
                           "mnuLevels(2)", "mnuLevels(3)", "mnuLevels(4)"}) {
    QVERIFY2(frame.form.Action(name) && frame.form.Action(name)->isEnabled(), name);
  }
  // The Level List's OK refills CmbRL with the table as validated.
  OnNextDialog([](QDialog& dialog) { QCOMPARE(dialog.objectName(), QString("frmRLBase")); });
  frame.form.Action("mnuRLBase")->trigger();
  QCOMPARE(frame.form.findChild<QComboBox*>("CmbRL")->count(), int(frame.ws.net.RLCount));
  OnNextDialog([](QDialog& dialog) { dialog.findChild<QLineEdit*>("txtIt")->setText("321"); });
  frame.form.Action("mnuOptions")->trigger();
  QCOMPARE(frame.ws.defaults.MaxIter, std::int16_t{321});
}

void MainFormLevelsTest::ViewListLoadsOnEveryPick() {
  HeadlessUi ui;
  Frame frame(ui);
  auto* list = frame.form.findChild<QComboBox*>("CmbView");
  const int iso = list->findText(" 5. Iso View");
  emit list->activated(iso);
  QCOMPARE(frame.View().Is3D, std::int16_t{1});
  const int plan = list->findText(" 1. Default View");
  emit list->activated(plan);
  QCOMPARE(frame.View().Is3D, std::int16_t{0});
  // The same pick again, in plan mode, loads the view again.
  frame.View().PanX += 5000;
  emit list->activated(plan);
  QVERIFY(frame.View().PanX < 5000);
  emit list->activated(iso);
  QCOMPARE(frame.View().Is3D, std::int16_t{1});
}

void MainFormLevelsTest::PaletteOpensViewOptionsAndDeclutterIsKept() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(frame.View().Declutter);  // on by default
  OnNextDialog([](QDialog& dialog) {
    QCOMPARE(dialog.objectName(), QString("frmViewer"));
    dialog.findChild<QCheckBox*>("ChkDeclutter")->setChecked(false);
  });
  frame.form.Palette().Button(26)->click();
  QVERIFY(!frame.View().Declutter);
  QCOMPARE(QSettings("Galeris", "Galeris").value("View/Declutter").toBool(), false);
  QVERIFY(!MainForm::DeclutterSetting());
  QSettings("Galeris", "Galeris").remove("View/Declutter");
}

void MainFormLevelsTest::LevelsMenuSetsTheMode() {
  HeadlessUi ui;
  Frame frame(ui);
  frame.form.Action("mnuLevels(4)")->trigger();
  QCOMPARE(frame.View().LevelMode, LevelModeOf::All);
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
  QCOMPARE(frame.View().LevelMode, LevelModeOf::Multiple);
  QCOMPARE(frame.View().SelectedLevels, (std::vector<std::int16_t>{3}));
  frame.form.Action("mnuLevels(1)")->trigger();
  QCOMPARE(frame.View().LevelMode, LevelModeOf::Single);
}

QTEST_MAIN(MainFormLevelsTest)
#include "qt_main_form_levels.moc"
