// A crash after an auto-save loses nothing: the desktop program opens the example mine, an airway
// is drawn with the mouse, the auto-save timer runs its interval, and the process is killed hard.
// Started again, the program offers the recovery file and brings back the drawn airway.
//
// The program under test is this executable started again with --crash-child: the same main
// window the desktop program builds, with the scripted dialogs of the tests.
#include <QProcess>
#include <QTimer>
#include <QtTest>
#include <csignal>
#include <cstdio>
#include <filesystem>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

constexpr const char* kChildFlag = "--crash-child";

std::string Airway(const Network& net, int i) {
  char text[160];
  std::snprintf(text, sizeof text, "%d %d,%d,%d %d,%d,%d", int(net.BranchCount), net.Coord1[i][1],
                net.Coord1[i][2], net.Coord1[i][3], net.Coord2[i][1], net.Coord2[i][2],
                net.Coord2[i][3]);
  return text;
}

// The program: opens the network, draws an airway, lets the auto-save timer run eleven ticks
// (one interval of the recovery file), says what it drew, and waits to be killed.
int RunChild(const std::string& network, const char* temp) {
  setenv("TMPDIR", temp, 1);  // the test's own, where the next start looks for the recovery file
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
  MainForm form(ws);
  form.resize(1000, 700);
  form.show();
  form.Load(network);
  FrmWindow* view = form.CurrentView();
  view->setFocus();
  form.Action("mnuBar(1)")->trigger();  // Draw new airway
  view->View().WorkingRL = -100;
  const QPoint from(30, 40), to(260, 40);
  QTest::mousePress(view, Qt::LeftButton, {}, from);
  QTest::mouseMove(view, to);
  QTest::mouseRelease(view, Qt::LeftButton, {}, to);
  auto* autosave = form.findChild<QTimer*>("Autosave");
  if (!autosave || !autosave->isActive()) return 3;
  if (ws.net.BranchCount == 0) return 4;
  for (int tick = 0; tick <= 10; ++tick) QMetaObject::invokeMethod(autosave, "timeout");
  std::printf("drawn %s\n", Airway(ws.net, ws.net.BranchCount).c_str());
  std::fflush(stdout);
  return QCoreApplication::exec();
}

}  // namespace

class CrashRecoveryTest : public QObject {
  Q_OBJECT
 private slots:
  void KilledAfterAutosaveRecoversTheEdit();
};

void CrashRecoveryTest::KilledAfterAutosaveRecoversTheEdit() {
  // The example mine, saved with auto-save every minute (the network carries its options).
  const std::string network = test::ScratchDir() + "mine.sim";
  {
    HeadlessUi ui;
    Workspace ws(ui);
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    StartUp(ws);
    QVERIFY(OpenNetwork(ws, test::SourcePath("examples/example_mine.sim")));
    ws.defaults.AutoSaveMinutes = 1;
    ws.net.FileName = network;
    QVERIFY(SaveNetwork(ws, 0));
    std::filesystem::remove(ws.paths.InTemp(kRecoveryFileName));
  }

  QProcess child;
  child.start(QCoreApplication::applicationFilePath(),
              {kChildFlag, QString::fromStdString(network), qEnvironmentVariable("TMPDIR")});
  QVERIFY(child.waitForStarted());
  QTRY_VERIFY_WITH_TIMEOUT(child.canReadLine() || child.state() == QProcess::NotRunning, 60000);
  const QString said = QString::fromUtf8(child.readLine()).trimmed();
  QVERIFY2(said.startsWith("drawn "), qPrintable(QString::number(child.exitCode()) + said));
  ::kill(static_cast<pid_t>(child.processId()), SIGKILL);
  QVERIFY(child.waitForFinished());
  QCOMPARE(child.exitStatus(), QProcess::CrashExit);

  HeadlessUi ui;
  ui.QueueAnswer(MsgAnswer::Yes);
  Workspace ws(ui);
  ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
  MainForm form(ws);
  form.Load("");
  QVERIFY(ui.Said("An autosaved recovery file exists - do you wish to load this file"));
  QCOMPARE(QString::fromStdString("drawn " + Airway(ws.net, ws.net.BranchCount)), said);
  QVERIFY(ws.net.FileName.empty());
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc == 4 && std::string(argv[1]) == kChildFlag) return RunChild(argv[2], argv[3]);
  CrashRecoveryTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "qt_crash_recovery.moc"
