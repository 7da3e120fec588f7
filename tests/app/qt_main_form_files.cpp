// The program's life through the frame: the command-line file, New, Open, Save As to a Master
// file, the file dialogs' filters, the note window, autosave and exit; and the recent-file list:
// its settings keys, the menu after saves and reopening, the menu texts, and the last folder of
// the file dialogs.
#include "app/frm_file_note.h"
#include "app/frm_title.h"
#include "app/recent_files.h"
#include "files/network_file.h"
#include "tools/mine_generator.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

namespace {

// Three airways with their node keys, as drawing them would leave them.
void AddSmallNetwork(Workspace& ws) {
  test::AddAirway(ws.net, 0, 0, -10, 0, 0, -100);
  test::AddAirway(ws.net, 0, 0, -100, 100, 0, -100);
  test::AddAirway(ws.net, 100, 0, -100, 100, 0, -10);
  RebuildNodes(ws.net, ws.defaults, ws.ui);
}

QString StoredName(int n) {
  return QSettings("Galeris", "Galeris").value(QString("Files/Name%1").arg(n)).toString();
}

}  // namespace

class MainFormFilesTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  QString Title() { return form().windowTitle(); }
  int Airways() { return frame->ws.net.BranchCount; }
  QString Recovery() { return QString::fromStdString(frame->ws.paths.InTemp("tempsim.sim")); }
  QString Recent(int n) { return QString::fromStdString(frame->ws.RecentFiles[n]); }
  // Saves a small network under each name in turn; returns the folder.
  QString SaveAs(const QStringList& names) {
    const QString folder = QString::fromStdString(test::ScratchDir());
    ui->SetPolicy(HeadlessUi::Policy::AlwaysYes);
    AddSmallNetwork(frame->ws);
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
  void cleanup() { QFile::remove(Recovery()); }

  void CommandLineNamesOnlyNetworkFiles() {
    const std::pair<QStringList, std::string> cases[] = {
        {{"galeris", "/mines/My", "Mine.Sim"}, "/mines/My Mine.Sim"},
        {{"galeris", "\"/mines/quoted.sim\""}, "/mines/quoted.sim"},
        {{"galeris", "/mines/notes.txt"}, ""},
        {{"galeris"}, ""},
        // a name relative to the start folder is kept whole, so the recent list works anywhere
        {{"galeris", "mines/west.sim"},
         QDir::current().absoluteFilePath("mines/west.sim").toStdString()}};
    for (const auto& [arguments, file] : cases) QCOMPARE(CommandFileFrom(arguments), file);
    // --help and --version are answered on the terminal; a network file is not.
    QVERIFY(CommandLineAnswer({"galeris", "--help"}).starts_with("galeris: "));
    QCOMPARE(CommandLineAnswer({"galeris", "--version"}), std::string("galeris 3.1\n"));
    QCOMPARE(CommandLineAnswer({"galeris", "/mines/west.sim"}), std::string());
  }

  void NewClearsTheNetworkAndTheCaption() {
    AddSmallNetwork(frame->ws);
    ui->QueueAnswer(MsgAnswer::OK);  // "Current Data will be lost ?"
    form().NewFile();
    QCOMPARE(Airways(), 0);
    QCOMPARE(Title(), QString("Galeris"));
  }

  void SaveAsMasterFileIsConfirmed() {
    AddSmallNetwork(frame->ws);
    frame->answer = QString::fromStdString(test::ScratchDir()) + "reference.smm";
    ui->QueueAnswer(MsgAnswer::No);
    QVERIFY(!form().SaveAs());
    QVERIFY(ui->Said("You are about to save as a Master file - are you sure ?"));
    QVERIFY(!QFile::exists(frame->answer));
    ui->QueueAnswer(MsgAnswer::Yes);
    QVERIFY(form().SaveAs());
    QVERIFY(QFile::exists(frame->answer));
    QCOMPARE(Title(), QString("reference.smm"));
  }

  void SaveAsAddsTheExtensionAndUsesTheFilter() {
    ui->SetPolicy(HeadlessUi::Policy::AlwaysYes);
    AddSmallNetwork(frame->ws);
    const QString folder = QString::fromStdString(test::ScratchDir());
    frame->answer = folder + "plain";
    QVERIFY(form().SaveFile());  // no name yet: Save As
    QCOMPARE(frame->requests[0].filter,
             QString("Data Files (*.sim);;Master Files (*.smm);;All files (*.*)"));
    QVERIFY(QFile::exists(folder + "plain.sim"));
    QCOMPARE(Title(), QString("plain.sim"));
    // With a name, Save writes without a dialog.
    frame->ws.net.NetworkSaved = 0;
    QVERIFY(form().SaveFile());
    QCOMPARE(frame->requests.size(), std::size_t(1));
    QCOMPARE(int(frame->ws.net.NetworkSaved), 0xFF);
  }

  void ExitAsksAndRemovesTheRecoveryFile() {
    form().show();
    AddSmallNetwork(frame->ws);
    QVERIFY(SaveNetwork(frame->ws, 1));
    frame->ws.net.NetworkSaved = 0;
    ui->QueueAnswer(MsgAnswer::Cancel);
    QVERIFY(!form().close());
    QVERIFY(ui->Said("Galeris data is not saved - Save it?"));
    QVERIFY(form().isVisible());
    QVERIFY(QFile::exists(Recovery()));
    ui->QueueAnswer(MsgAnswer::No);
    QVERIFY(form().close());
    QVERIFY(!QFile::exists(Recovery()));
  }

  void NoteWindowFollowsTheNetwork() {
    frame->ws.net.FileNote = "Ventilation survey\r\nMarch readings";
    form().ShowFileNote();
    FrmFileNote& note = form().FileNoteForm();
    QVERIFY(note.isVisible());
    QCOMPARE(note.Text(), QString("Ventilation survey\nMarch readings"));
    QCOMPARE(int(frame->ws.net.NetworkSaved), 0xFF);  // showing is not editing
    note.findChild<QPlainTextEdit*>("TxtNote")->setPlainText("Fan 2 stopped\nfor repair");
    QCOMPARE(frame->ws.net.FileNote, std::string("Fan 2 stopped\r\nfor repair"));
    QCOMPARE(int(frame->ws.net.NetworkSaved), 0);
    // A note of save stamps alone does not open over the drawing.
    frame->ws.net.FileNote.clear();
    const QString path = SaveAs({"stamped.sim"}) + "stamped.sim";
    Start(path.toStdString());
    QVERIFY(!frame->ws.net.FileNote.empty());
    const auto* opened = form().findChild<FrmFileNote*>();
    QVERIFY(!opened || !opened->isVisible());
  }

  void AutosaveWritesTheRecoveryFileEveryEleventhTick() {
    auto* autosave = form().findChild<QTimer*>("Autosave");
    QVERIFY(!autosave->isActive());  // AutoSaveMinutes 0: no auto-save
    frame->ws.defaults.AutoSaveMinutes = 2;
    form().NewFile();
    QVERIFY(autosave->isActive());
    QCOMPARE(autosave->interval(), 12000);
    AddSmallNetwork(frame->ws);
    for (int tick = 1; tick <= 11; ++tick) QMetaObject::invokeMethod(autosave, "timeout");
    QVERIFY(QFile::exists(Recovery()));
    QVERIFY(frame->ws.net.FileName.empty());  // temp mode leaves the name alone
  }

  void CaptionIsTheFileNameCutAtAHundred() {
    frame->ws.net.FileName = "/mines/" + std::string(120, 'n') + ".sim";
    form().RefreshCaption();
    QCOMPARE(Title(), QString(100, 'n'));
    // A change marks the caption until the network is saved again.
    MarkNetworkChanged(frame->ws);
    form().RefreshSimStatus();  // as after every click and key
    QCOMPARE(Title(), "*" + QString(100, 'n'));
    frame->ws.net.NetworkSaved = 0xFF;
    form().RefreshSimStatus();
    QCOMPARE(Title(), QString(100, 'n'));
  }

  // The shipped example stores a start-up view of one level in plan, so that its names and
  // values are readable at once; a file without one still opens on every level, fitted.
  void ExampleOpensAtItsStartupLevelOthersFitted() {
    const QString path = SaveAs({"west.sim"}) + "west.sim";
    Start(test::SourcePath("examples/example_mine.sim"));
    QCOMPARE(frame->View().LevelMode, LevelModeOf::Single);
    QCOMPARE(frame->View().LevelTop, 950.0f);
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->currentText(), QString("900 Level"));
    Start(path.toStdString());
    QCOMPARE(Title(), QString("west.sim"));
    QCOMPARE(frame->ws.RecentFiles[1], path.toStdString());
    QCOMPARE(frame->View().LevelMode, LevelModeOf::All);
    QCOMPARE(frame->View().VisibleCount, 3);
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->currentText(), QString("All"));
    // Opened after the example, the small network is not looked for on the example's level.
    form().Action("mnuOld(2)")->trigger();
    QCOMPARE(frame->View().LevelTop, 950.0f);
    form().Action("mnuOld(2)")->trigger();
    QCOMPARE(Title(), QString("west.sim"));
    QCOMPARE(frame->View().LevelMode, LevelModeOf::All);
    QCOMPARE(frame->View().VisibleCount, 3);
    QCOMPARE(frame->View().WorkingRL, 0.0f);
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->currentText(), QString("All"));
  }

  // A mine of several levels without a start-up view opens in the iso view, not as a plan of
  // levels drawn over each other.
  void MineOfSeveralLevelsOpensInTheIsoView() {
    GenerateMine(frame->ws, 200);
    const QString path = QString::fromStdString(test::ScratchDir()) + "levels.sim";
    frame->ws.net.FileName = path.toStdString();
    QVERIFY(SaveNetwork(frame->ws));
    Start(path.toStdString());
    QCOMPARE(frame->View().Is3D, std::int16_t{1});
    QVERIFY(frame->View().TiltAngle != 0);
    QCOMPARE(frame->View().LevelMode, LevelModeOf::All);
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->currentText(), QString("All"));
  }

  void SavesFillTheMenuAndReopeningMovesToTheHead() {
    QStringList names;
    for (int k = 1; k <= 10; ++k) names << QString("net%1.sim").arg(k);
    const QString folder = SaveAs(names);
    QCOMPARE(StoredName(9), folder + names[1]);  // newest first; the tenth drops the oldest
    QCOMPARE(form().Action("mnuOld(9)")->text(), RecentMenuText(9, StoredName(9).toStdString()));
    form().Action("mnuOld(3)")->trigger();
    QCOMPARE(form().windowTitle(), names[7]);
    QCOMPARE((QStringList{Recent(1), StoredName(1)}), (QStringList{folder + names[7], Recent(1)}));
    // A file that can no longer be opened leaves the list; the later ones move up.
    const QString third = Recent(3);
    QFile::remove(Recent(2));
    form().Action("mnuOld(2)")->trigger();
    QCOMPARE((QStringList{Recent(2), StoredName(2)}), (QStringList{third, third}));
    QVERIFY(!form().Action("mnuOld(9)")->isVisible());
  }

  void ListSurvivesARestart() {
    QSettings("Galeris", "Galeris").setValue("Files/Name1", "/mines/one.sim");
    QSettings("Galeris", "Galeris").setValue("Files/Name2", "/mines/two.sim");
    Start();
    QCOMPARE(Recent(1), QString("/mines/one.sim"));
    QCOMPARE(form().Action("mnuOld(2)")->text(), QString("&2 /mines/two.sim"));
    QVERIFY(!form().Action("mnuOld(3)")->isVisible());
  }

  void MenuTextsAreShortenedAndEscaped() {
    const QString shortened =
        ShortenedPath("/home/engineer/projects/north_mine/ventilation/2024/march/north.sim");
    QVERIFY(shortened.size() <= 40 && shortened.startsWith("/home/.."));
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

QTEST_MAIN(MainFormFilesTest)
#include "qt_main_form_files.moc"
