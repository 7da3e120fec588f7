// The recent-file list: the settings keys, the order after saves and reopening, the menu
// texts, the older Galeris.old list, and the last folder of the file dialogs.
#include <QAction>
#include <QFile>
#include <QSettings>
#include <QtTest>

#include "app/main_form.h"
#include "app/recent_files.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([this](const FileDialogRequest&) { return answer; });
    form.Load("");
  }
  Workspace ws;
  MainForm form;
  QString answer;
};

QString StoredName(int n) {
  QSettings settings("Galeris", "Galeris");
  return settings.value(QString("Files/Name%1").arg(n)).toString();
}

void ForgetRecentFiles() {
  QSettings settings("Galeris", "Galeris");
  settings.remove("Files");
  settings.sync();
}

}  // namespace

class RecentFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void init() { ForgetRecentFiles(); }
  void TenthFileDropsTheOldest();
  void ReopeningTheThirdMovesItToTheHead();
  void ListSurvivesARestart();
  void OldListFileIsReadOnceAndDeleted();
  void MenuTextsAreShortenedAndEscaped();
  void DialogFolderIsRemembered();
};

void RecentFilesTest::TenthFileDropsTheOldest() {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  test::AddAirway(frame.ws.net, 0, 0, 0, 0, 0, -50);
  test::AddAirway(frame.ws.net, 0, 0, -50, 0, 50, 0);
  const QString folder = QString::fromStdString(test::ScratchDir());
  for (int k = 1; k <= 10; ++k) {
    frame.answer = folder + QString("net%1.sim").arg(k);
    QVERIFY(frame.form.SaveAs());
  }
  for (int n = 1; n <= 9; ++n) {
    const QString expected = folder + QString("net%1.sim").arg(11 - n);
    QCOMPARE(QString::fromStdString(frame.ws.RecentFiles[n]), expected);
    QCOMPARE(StoredName(n), expected);
    QAction* entry = frame.form.Action(QString("mnuOld(%1)").arg(n));
    QVERIFY(entry->isVisible());
    QVERIFY(entry->text().startsWith(QString("&%1 ").arg(n)));
    QVERIFY(entry->text().endsWith(QString("net%1.sim").arg(11 - n)));
  }
  for (int n = 1; n <= 9; ++n) QVERIFY(StoredName(n) != folder + "net1.sim");
}

void RecentFilesTest::ReopeningTheThirdMovesItToTheHead() {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  test::AddAirway(frame.ws.net, 0, 0, 0, 0, 0, -50);
  test::AddAirway(frame.ws.net, 0, 0, -50, 0, 50, 0);
  const QString folder = QString::fromStdString(test::ScratchDir());
  for (const char* name : {"a.sim", "b.sim", "c.sim", "d.sim", "e.sim"}) {
    frame.answer = folder + name;
    QVERIFY(frame.form.SaveAs());
  }
  // Newest first: e d c b a.
  QCOMPARE(QString::fromStdString(frame.ws.RecentFiles[3]), folder + "c.sim");
  frame.form.Action("mnuOld(3)")->trigger();
  QCOMPARE(frame.form.windowTitle(), QString("c.sim"));
  const char* order[] = {"c.sim", "e.sim", "d.sim", "b.sim", "a.sim"};
  for (int n = 1; n <= 5; ++n) {
    QCOMPARE(QString::fromStdString(frame.ws.RecentFiles[n]), folder + order[n - 1]);
    QCOMPARE(StoredName(n), folder + order[n - 1]);
  }
  QVERIFY(frame.ws.RecentFiles[6].empty());
  QVERIFY(!frame.form.Action("mnuOld(6)")->isVisible());
}

void RecentFilesTest::ListSurvivesARestart() {
  {
    QSettings settings("Galeris", "Galeris");
    settings.setValue("Files/Name1", "/mines/one.sim");
    settings.setValue("Files/Name2", "/mines/two.sim");
  }
  HeadlessUi ui;
  Frame frame(ui);
  QCOMPARE(frame.ws.RecentFiles[1], std::string("/mines/one.sim"));
  QCOMPARE(frame.ws.RecentFiles[2], std::string("/mines/two.sim"));
  QCOMPARE(frame.form.Action("mnuOld(2)")->text(), QString("&2 /mines/two.sim"));
  QVERIFY(!frame.form.Action("mnuOld(3)")->isVisible());
}

void RecentFilesTest::OldListFileIsReadOnceAndDeleted() {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths.ProgramFolder = test::ScratchDir();
  ws.paths.TempFolder = test::ScratchDir();
  test::WriteFile(ws.paths.InProgram("Galeris.old"),
                  "/old/one.sim\r\n/old/two.sim\r\n/old/three.sim\r\n/old/four.sim\r\n");
  QSettings("Galeris", "Galeris").setValue("Files/Name1", "/newer/ignored.sim");
  LoadRecentFiles(ws);
  QCOMPARE(ws.RecentFiles[1], std::string("/old/one.sim"));
  QCOMPARE(ws.RecentFiles[4], std::string("/old/four.sim"));
  QVERIFY(!QFile::exists(QString::fromStdString(ws.paths.InProgram("Galeris.old"))));
}

void RecentFilesTest::MenuTextsAreShortenedAndEscaped() {
  QCOMPARE(ShortenedPath("/mines/a.sim"), QString("/mines/a.sim"));
  const QString longPath = "/home/engineer/projects/north_mine/ventilation/2024/march/north.sim";
  const QString shortened = ShortenedPath(longPath);
  QVERIFY(shortened.size() <= 40);
  QVERIFY(shortened.startsWith("/home/.."));
  QVERIFY(shortened.endsWith("/north.sim"));
  QCOMPARE(ShortenedPath("C:\\Mines\\Deep\\Very\\Long\\Folder\\Names\\Here\\and\\more\\mine.sim"),
           QString("C:\\Mines\\..\\Names\\Here\\and\\more\\mine.sim"));
  QCOMPARE(RecentMenuText(2, "/mines/R&D/test.sim"), QString("&2 /mines/R&&D/test.sim"));
}

void RecentFilesTest::DialogFolderIsRemembered() {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  test::AddAirway(frame.ws.net, 0, 0, 0, 0, 0, -50);
  test::AddAirway(frame.ws.net, 0, 0, -50, 0, 50, 0);
  const QString folder = QString::fromStdString(test::ScratchDir());
  frame.answer = folder + "kept.sim";
  QVERIFY(frame.form.SaveAs());
  QCOMPARE(StoredDefaultDir() + "/", folder);
  std::vector<FileDialogRequest> asked;
  frame.form.SetFileChooser([&](const FileDialogRequest& request) {
    asked.push_back(request);
    return QString();
  });
  frame.form.MergeFile();
  QCOMPARE(asked.size(), std::size_t(1));
  QCOMPARE(asked[0].startFolder + "/", folder);
}

QTEST_MAIN(RecentFilesTest)
#include "qt_recent_files.moc"
