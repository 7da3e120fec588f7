// The real-time entries of the frame on the example mine: frmRemote stores and writes
// Remotes.dat, monitoring reads and resimulates on Timer1 unless the program is busy and stops
// after one message, and frmRealOut with Timer2 writes the output file.
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QtTest>

#include "app/main_form.h"
#include "app/main_form_realtime.h"
#include "core/headless_ui.h"
#include "editors/frm_real_out.h"
#include "editors/frm_remote.h"
#include "files/lifecycle.h"
#include "realtime/stations.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([](const FileDialogRequest&) { return QString(); });
    form.Load("");
    ws.paths.ProgramFolder = dir;
    OpenNetwork(ws, test::SourcePath("examples/example_mine.sim"));
    for (int i = 1; i <= ws.net.BranchCount; ++i)
      if (ws.net.AirwayNo[i] == 85) decline = i;
  }
  // Runs fill on the dialog that the entry opens, then presses its CmdOK.
  template <typename Dialog>
  void WithDialog(const char* entry, std::function<void(Dialog&)> fill) {
    QTimer::singleShot(0, &form, [this, fill] {
      auto* dialog = form.findChild<Dialog*>();
      QVERIFY(dialog);
      fill(*dialog);
      dialog->template findChild<QPushButton*>("CmdOK")->click();
    });
    form.Action(entry)->trigger();
  }
  std::string dir = test::ScratchDir();
  Workspace ws;
  MainForm form;
  int decline = 0;
};

}  // namespace

class MainFormRealtimeTest : public QObject {
  Q_OBJECT
 private slots:
  void StationDialogStoresAndWritesRemotesDat();
  void MonitoringReadsResimulatesAndStopsOnAFailure();
  void OutputDialogAndTimer2WriteTheFile();
};

void MainFormRealtimeTest::StationDialogStoresAndWritesRemotesDat() {
  HeadlessUi ui;
  Frame frame(ui);
  frame.WithDialog<FrmRemote>("mnuRemoteStation", [](FrmRemote& d) {
    d.findChild<QLineEdit*>("TxtStationName")->setText("Decline");
    d.findChild<QLineEdit*>("ALow(2)")->setText("0.5");
    d.findChild<QLineEdit*>("TxtTimer")->setText("3");
    d.CopyChannels();
    d.findChild<QScrollBar*>("VScStation")->setValue(2);
    d.PasteChannels();
  });
  const RemoteStations& st = frame.ws.remote;
  QCOMPARE(st.StationName[1], std::string("Decline"));
  QCOMPARE(st.AlarmLow[2][1], 0.5f);
  QCOMPARE(st.AlarmLow[2][2], 0.5f);
  QCOMPARE(frame.form.Realtime().Timer1().interval(), 3000);
  QVERIFY(test::ReadFile(frame.dir + "Remotes.dat").find("Decline") != std::string::npos);
}

void MainFormRealtimeTest::MonitoringReadsResimulatesAndStopsOnAFailure() {
  HeadlessUi ui;
  Frame frame(ui);
  RemoteStations& st = frame.ws.remote;
  st.RemoteSource = frame.dir + "Galeris.rem";
  st.RemoteResim = true;
  st.UpdateQ[1] = -1;
  frame.ws.net.RemoteStation[frame.decline] = 1;
  test::WriteFile(st.RemoteSource, "Q\r\nu\r\n1\ta\tb\t30\t0\t0\t0\t0\r\n");
  frame.form.Action("mnuRemote")->trigger();
  QVERIFY(frame.form.Realtime().Timer1().isActive());

  // Busy: the tick leaves the network alone.
  QApplication::setOverrideCursor(Qt::WaitCursor);
  frame.form.Realtime().StationTick();
  QApplication::restoreOverrideCursor();
  QVERIFY(!(frame.ws.net.BranchCode[frame.decline] & Bit::FixedQuantity));

  frame.form.Realtime().StationTick();
  QCOMPARE(frame.ws.net.NetworkBalanced, std::int16_t{-1});  // resimulated

  std::remove(st.RemoteSource.c_str());
  frame.form.Realtime().StationTick();
  frame.form.Realtime().StationTick();
  QCOMPARE(ui.MessageTexts(), std::vector<std::string>{kMsgStationFile});
  QVERIFY(!frame.form.Action("mnuRemote")->isChecked());
  QVERIFY(!frame.form.Realtime().Timer1().isActive());
}

void MainFormRealtimeTest::OutputDialogAndTimer2WriteTheFile() {
  HeadlessUi ui;
  Frame frame(ui);
  const QString name = QString::fromStdString(frame.dir + "flows");
  frame.WithDialog<FrmRealOut>("mnuRealOut", [name](FrmRealOut& d) {
    d.findChild<QLineEdit*>("TxtRealOut")->setText(name);
  });
  QCOMPARE(frame.ws.remote.OutputFile, frame.dir + "flows.txt");
  frame.form.Action("mnuRealOutStart")->trigger();
  QVERIFY(frame.form.Realtime().Timer2().isActive());
  frame.form.Realtime().OutputTick();
  QVERIFY(test::ReadFile(frame.dir + "flows.txt").substr(0, 9) == "Branch No");
}

QTEST_MAIN(MainFormRealtimeTest)
#include "qt_main_form_realtime.moc"
