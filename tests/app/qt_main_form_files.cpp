// The program's life through the frame: the command-line file, the recovery offer, New, Open,
// Save As to a Master file, bad names, the file dialogs' filters, the note window and exit.
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>

#include "app/frm_file_note.h"
#include "app/frm_title.h"
#include "files/network_file.h"
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

// A saved network of three airways, written by the frame's Save As.
QString SavedNetwork(const QString& name) {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  test::Frame frame(ui);
  AddSmallNetwork(frame.ws);
  frame.answer = QString::fromStdString(test::ScratchDir()) + name;
  return frame.form.SaveAs() ? frame.answer : QString();
}

}  // namespace

class MainFormFilesTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  QString Title() { return form().windowTitle(); }
  int Airways() { return frame->ws.net.BranchCount; }
  QString Recovery() { return QString::fromStdString(frame->ws.paths.InTemp("tempsim.sim")); }

 private slots:
  void init() { Start(); }
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
  }

  void CommandLineFileIsLoadedAndCaptioned() {
    const QString path = SavedNetwork("north.sim");
    Start(path.toStdString());
    QCOMPARE(Airways(), 3);
    QCOMPARE(Title(), QString("north.sim"));
    QCOMPARE(frame->ws.net.FileName, path.toStdString());
    QCOMPARE(frame->ws.RecentFiles[1], path.toStdString());
  }

  // The engine decides the offer; the frame shows what it loaded under the scratch name.
  void RecoveryOfferedAtStart() {
    AddSmallNetwork(frame->ws);
    QVERIFY(SaveNetwork(frame->ws, 1));
    Start("", HeadlessUi::Policy::AlwaysYes);
    QVERIFY(ui->Said("An autosaved recovery file exists - do you wish to load this file"));
    QCOMPARE(Airways(), 3);
    QCOMPARE(Title(), QString("tempsim.sim"));
  }

  void NewAsksWhenDataIsPresent() {
    AddSmallNetwork(frame->ws);
    ui->QueueAnswer(MsgAnswer::Cancel);
    form().NewFile();
    QCOMPARE(ui->MessageTexts(), std::vector<std::string>{"Current Data will be lost ?"});
    QCOMPARE(ui->Records().back().title, std::string("Data Exists"));
    QCOMPARE(ui->Records().back().buttons, MsgButtons::OKCancel);
    QCOMPARE(Airways(), 3);
    ui->QueueAnswer(MsgAnswer::OK);
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
    QVERIFY(ui->Said("Master File"));
    QVERIFY(!QFile::exists(frame->answer));
    ui->QueueAnswer(MsgAnswer::Yes);
    QVERIFY(form().SaveAs());
    QVERIFY(QFile::exists(frame->answer));
    QCOMPARE(Title(), QString("reference.smm"));
    QCOMPARE(int(frame->ws.net.NetworkSaved), 0xFF);
  }

  void SaveAsAddsTheExtensionAndUsesTheFilter() {
    ui->SetPolicy(HeadlessUi::Policy::AlwaysYes);
    AddSmallNetwork(frame->ws);
    const QString folder = QString::fromStdString(test::ScratchDir());
    frame->answer = folder + "plain";
    QVERIFY(form().SaveFile());  // no name yet: Save As
    QCOMPARE(frame->requests.size(), std::size_t(1));
    QVERIFY(frame->requests[0].save);
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

  void BadNameIsRefused() {
    AddSmallNetwork(frame->ws);
    frame->answer = QString::fromStdString(test::ScratchDir()) + "no/such/folder/x.sim";
    QVERIFY(!form().SaveAs());
    QCOMPARE(ui->MessageTexts().back(), std::string("Error Save File - Check Name"));
    // A cancelled dialog says nothing.
    ui->ClearRecords();
    frame->answer.clear();
    QVERIFY(!form().SaveAs());
    QVERIFY(ui->MessageTexts().empty());
  }

  void OpenAsksToSaveChangesFirst() {
    const QString path = SavedNetwork("south.sim");
    AddSmallNetwork(frame->ws);
    frame->ws.net.NetworkSaved = 0;
    ui->QueueAnswer(MsgAnswer::Cancel);
    form().OpenFile();
    QVERIFY(ui->Said("Network Data is not saved - Save it?"));
    QVERIFY(frame->requests.empty());
    ui->QueueAnswer(MsgAnswer::No);
    frame->answer = path;
    form().OpenFile();
    QCOMPARE(frame->requests.size(), std::size_t(1));
    QCOMPARE(frame->requests[0].filter,
             QString("Galeris Data (*.sim);;Master Files (*.smm);;All Files (*.*)"));
    QVERIFY(!frame->requests[0].save);
    QCOMPARE(Title(), QString("south.sim"));
    QCOMPARE(Airways(), 3);
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
    QVERIFY(form().Action("mnuMessage")->isEnabled());
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
    frame->ws.net.FileName = "C:\\Mines\\West.sim";
    form().RefreshCaption();
    QCOMPARE(Title(), QString("West.sim"));
  }

  // The shipped example stores a start-up view of one level in plan, so that its names and
  // values are readable at once; a file without one still opens on every level, fitted.
  void ExampleOpensAtItsStartupLevelOthersFitted() {
    Start(test::SourcePath("examples/example_mine.sim"));
    QCOMPARE(frame->View().LevelMode, LevelModeOf::Single);
    QCOMPARE(frame->View().LevelTop, 950.0f);
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->currentText(), QString("900 Level"));
    Start(SavedNetwork("west.sim").toStdString());
    QCOMPARE(frame->View().LevelMode, LevelModeOf::All);
    QCOMPARE(frame->View().VisibleCount, 3);
  }
};

QTEST_MAIN(MainFormFilesTest)
#include "qt_main_form_files.moc"
