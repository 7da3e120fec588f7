// The recent-file list: the settings keys, the order after saves and reopening, the menu
// texts, the older Galeris.old list, and the last folder of the file dialogs.
#include <QFile>
#include <QSettings>

#include "app/recent_files.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

namespace {

QString StoredName(int n) {
  return QSettings("Galeris", "Galeris").value(QString("Files/Name%1").arg(n)).toString();
}

}  // namespace

class RecentFilesTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  QString Recent(int n) { return QString::fromStdString(frame->ws.RecentFiles[n]); }
  // Saves a small network under each name in turn; returns the folder.
  QString SaveAs(const QStringList& names) {
    const QString folder = QString::fromStdString(test::ScratchDir());
    ui->SetPolicy(HeadlessUi::Policy::AlwaysYes);
    test::AddAirway(frame->ws.net, 0, 0, 0, 0, 0, -50);
    test::AddAirway(frame->ws.net, 0, 0, -50, 0, 50, 0);
    for (const QString& name : names) {
      frame->answer = folder + name;
      if (!form().SaveAs()) return {};
    }
    return folder;
  }

 private slots:
  void init() {
    QSettings("Galeris", "Galeris").remove("Files");
    Start();
  }

  void SavesFillTheMenuAndReopeningMovesToTheHead() {
    QStringList names;
    for (int k = 1; k <= 10; ++k) names << QString("net%1.sim").arg(k);
    const QString folder = SaveAs(names);
    for (int n = 1; n <= 9; ++n) {  // newest first; the tenth drops the oldest
      const QString expected = folder + names[10 - n];
      QCOMPARE(Recent(n), expected);
      QCOMPARE(StoredName(n), expected);
      QAction* entry = form().Action(QString("mnuOld(%1)").arg(n));
      QVERIFY(entry->isVisible());
      QCOMPARE(entry->text(), RecentMenuText(n, expected.toStdString()));
    }
    form().Action("mnuOld(3)")->trigger();
    QCOMPARE(form().windowTitle(), names[7]);
    QCOMPARE(
        (QStringList{Recent(1), Recent(2), Recent(3), StoredName(1)}),
        (QStringList{folder + names[7], folder + names[9], folder + names[8], folder + names[7]}));
  }

  void ListSurvivesARestart() {
    QSettings("Galeris", "Galeris").setValue("Files/Name1", "/mines/one.sim");
    QSettings("Galeris", "Galeris").setValue("Files/Name2", "/mines/two.sim");
    Start();
    QCOMPARE(Recent(1), QString("/mines/one.sim"));
    QCOMPARE(form().Action("mnuOld(2)")->text(), QString("&2 /mines/two.sim"));
    QVERIFY(!form().Action("mnuOld(3)")->isVisible());
  }

  void OldListFileIsReadOnceAndDeleted() {
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

  void MenuTextsAreShortenedAndEscaped() {
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

  void DialogFolderIsRemembered() {
    const QString folder = SaveAs({"kept.sim"});
    QCOMPARE(StoredDefaultDir() + "/", folder);
    form().MergeFile();
    QCOMPARE(frame->requests.size(), std::size_t(2));
    QCOMPARE(frame->requests.back().startFolder + "/", folder);
  }
};

QTEST_MAIN(RecentFilesTest)
#include "qt_recent_files.moc"
