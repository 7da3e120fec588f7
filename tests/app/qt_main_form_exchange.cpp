// The exchange commands through the frame: frmImport's controls reach the import and its
// Import button refits the views; Export Data writes the table; the DXF export takes
// frmExport's choices into the defaults and refuses a bad name.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "core/headless_ui.h"
#include "editors/frm_export.h"
#include "editors/frm_import.h"
#include "exchange/text_exchange.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

// Acts on the modal dialog the next command opens, once its event loop runs.
template <class Dialog>
void OnNextDialog(std::function<void(Dialog&)> act) {
  QTimer::singleShot(0, [act] {
    if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) act(*dialog);
  });
}

}  // namespace

class MainFormExchangeTest : public QObject {
  Q_OBJECT
 private slots:
  void ImportAndExportThroughTheMenus();
};

void MainFormExchangeTest::ImportAndExportThroughTheMenus() {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
  MainForm form(ws);
  QString answer, filter, start;
  form.SetFileChooser([&](const FileDialogRequest& request) {
    filter = request.filter;
    start = request.startFolder;
    return answer;
  });
  form.Load("");
  const std::string dir = test::ScratchDir();
  test::WriteFile(dir + "far.txt", std::string(kTextExportHeads) +
                                       "\r\n5000\t5000\t-10\t9000\t5000\t-10\r\n"
                                       "9000\t5000\t-10\t9000\t8000\t-10\r\n");
  answer = QString::fromStdString(dir + "far.txt");
  ImportChoices seen;
  OnNextDialog<FrmImport>([&seen](FrmImport& dialog) {
    dialog.findChild<QCheckBox*>("ChkSize")->setChecked(true);
    dialog.findChild<QLineEdit*>("TxtZOffset")->setText("2.5");
    dialog.findChild<QCheckBox*>("NegX")->setChecked(true);
    seen = dialog.Choices();
    dialog.findChild<QPushButton*>("Import")->click();
  });
  form.Action("mnuImportData")->trigger();
  QVERIFY(seen.CommonSize && seen.Negate[0] && !seen.Negate[1] && !seen.Merge);
  QCOMPARE(seen.Offset[2], 2.5);
  QCOMPARE(int(ws.net.BranchCount), 2);
  QCOMPARE(ws.net.Coord1[1][1], -5000);
  QVERIFY(filter.contains("*.dxf"));
  // The view was fitted to the new airways far from the origin.
  const float width = form.CurrentView()->View().ScaleWidth;
  QVERIFY(width < 10000 && width > 3000);

  answer = QString::fromStdString(dir + "table");
  form.Action("mnuExportData")->trigger();
  QVERIFY(test::ReadFile(dir + "table.TXT").rfind(kTextExportHeads, 0) == 0);
  QVERIFY(start.endsWith("EXPORT.TXT"));

  ws.DefaultsSaved = 0xFF;
  OnNextDialog<FrmExport>([](FrmExport& dialog) {
    dialog.findChild<QCheckBox*>("ChkArrows")->setChecked(true);
    dialog.findChild<QPushButton*>("CmdOK")->click();
  });
  answer = QString::fromStdString(dir + "plan.dxf");
  form.Action("mnuDXFTrue")->trigger();
  QVERIFY(test::ReadFile(dir + "plan.dxf").find("Arrow") != std::string::npos);
  QCOMPARE(int(ws.defaults.ExportLayers[2]), -1);
  QCOMPARE(int(ws.DefaultsSaved), 0);

  answer = QString::fromStdString(dir + "no/folder/x.dxf");
  form.Action("MnuDXFScreen")->trigger();
  QVERIFY(ui.Said(kMsgExportFailed));
}

QTEST_MAIN(MainFormExchangeTest)
#include "qt_main_form_exchange.moc"
