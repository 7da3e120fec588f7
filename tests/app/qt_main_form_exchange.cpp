// The exchange commands through the frame: the menu items run, frmImport's controls reach the
// import and its Import button refits the views, Export Data writes the table, and the DXF
// export takes frmExport's choices into the defaults.
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

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([this](const FileDialogRequest& request) {
      requests.push_back(request);
      return answer;
    });
    form.Load("");
  }
  Workspace ws;
  MainForm form;
  QString answer;
  std::vector<FileDialogRequest> requests;
};

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
  void ImportDialogRunsTheImportAndRefitsTheViews();
  void ExportsWriteTheChosenFiles();
};

void MainFormExchangeTest::ImportDialogRunsTheImportAndRefitsTheViews() {
  HeadlessUi ui;
  Frame frame(ui);
  const std::string dir = test::ScratchDir();
  test::WriteFile(dir + "far.txt", std::string(kTextExportHeads) +
                                       "\r\n5000\t5000\t-10\t9000\t5000\t-10\r\n"
                                       "9000\t5000\t-10\t9000\t8000\t-10\r\n");
  frame.answer = QString::fromStdString(dir + "far.txt");
  ImportChoices seen;
  OnNextDialog<FrmImport>([&seen](FrmImport& dialog) {
    dialog.findChild<QCheckBox*>("ChkSize")->setChecked(true);
    dialog.findChild<QLineEdit*>("TxtZOffset")->setText("2.5");
    dialog.findChild<QCheckBox*>("NegX")->setChecked(true);
    QCOMPARE(dialog.findChild<QCheckBox*>("ChkRRaise")->toolTip(),
             dialog.findChild<QCheckBox*>("ChkRDrive")->toolTip());
    seen = dialog.Choices();
    dialog.findChild<QPushButton*>("Import")->click();
  });
  QAction* import = frame.form.Action("mnuImportData");
  QVERIFY(import->isEnabled());
  import->trigger();
  QVERIFY(seen.CommonSize && seen.Negate[0] && !seen.Negate[1] && !seen.Merge);
  QCOMPARE(seen.Offset[2], 2.5);
  QCOMPARE(int(frame.ws.net.BranchCount), 2);
  QCOMPARE(frame.ws.net.Coord1[1][1], -5000);
  QVERIFY(frame.requests.back().filter.contains("*.dxf"));
  // The view was fitted to the new airways far from the origin.
  const ViewState& view = frame.form.CurrentView()->View();
  QVERIFY(view.ScaleWidth < 10000 && view.ScaleWidth > 3000);
}

void MainFormExchangeTest::ExportsWriteTheChosenFiles() {
  HeadlessUi ui;
  Frame frame(ui);
  test::AddAirway(frame.ws.net, 10, 0, -10, 10, 50, -10);
  RebuildNodes(frame.ws.net, frame.ws.defaults, ui);
  const std::string dir = test::ScratchDir();
  frame.answer = QString::fromStdString(dir + "table");
  frame.form.Action("mnuExportData")->trigger();
  QVERIFY(test::ReadFile(dir + "table.TXT").rfind(kTextExportHeads, 0) == 0);
  QVERIFY(frame.requests.back().startFolder.endsWith("EXPORT.TXT"));

  frame.ws.DefaultsSaved = 0xFF;
  OnNextDialog<FrmExport>([](FrmExport& dialog) {
    dialog.findChild<QCheckBox*>("ChkArrows")->setChecked(true);
    dialog.findChild<QPushButton*>("CmdOK")->click();
  });
  frame.answer = QString::fromStdString(dir + "plan.dxf");
  frame.form.Action("mnuDXFTrue")->trigger();
  QVERIFY(test::ReadFile(dir + "plan.dxf").find("Arrow") != std::string::npos);
  QCOMPARE(int(frame.ws.defaults.ExportLayers[2]), -1);
  QCOMPARE(int(frame.ws.DefaultsSaved), 0);

  OnNextDialog<FrmExport>([](FrmExport& dialog) { dialog.reject(); });
  frame.answer = QString::fromStdString(dir + "screen.dxf");
  frame.form.Action("MnuDXFScreen")->trigger();
  QVERIFY(test::ReadFile(dir + "screen.dxf").empty());

  frame.answer = QString::fromStdString(dir + "no/folder/x.dxf");
  frame.form.Action("MnuDXFScreen")->trigger();
  QVERIFY(ui.Said(kMsgExportFailed));
}

QTEST_MAIN(MainFormExchangeTest)
#include "qt_main_form_exchange.moc"
