// The program's life through the frame: the command-line file, the recovery offer, New, Open,
// Save As to a Master file, bad names, the file dialogs' filters, the note window and exit.
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QTimer>
#include <QtTest>

#include "app/frm_file_note.h"
#include "app/frm_title.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/network_file.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

struct Frame {
  explicit Frame(UiPort& ui, const std::string& commandFile = "") : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([this](const FileDialogRequest& request) {
      requests.push_back(request);
      return answer;
    });
    form.Load(commandFile);
  }
  Workspace ws;
  MainForm form;
  QString answer;  // what the file dialog returns
  std::vector<FileDialogRequest> requests;
};

// Three airways with their node keys, as drawing them would leave them.
void AddSmallNetwork(Workspace& ws) {
  test::AddAirway(ws.net, 0, 0, -10, 0, 0, -100);
  test::AddAirway(ws.net, 0, 0, -100, 100, 0, -100);
  test::AddAirway(ws.net, 100, 0, -100, 100, 0, -10);
  RebuildNodes(ws.net, ws.defaults, ws.ui);
}

std::string RecoveryFile(const Workspace& ws) {
  return ws.paths.InTemp("tempsim.sim");
}

// A saved network of three airways, written by the frame's Save As.
QString SavedNetwork(const QString& name) {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  AddSmallNetwork(frame.ws);
  frame.answer = QString::fromStdString(test::ScratchDir()) + name;
  if (!frame.form.SaveAs()) return {};
  return frame.answer;
}

}  // namespace

class MainFormFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void cleanup();
  void CommandLineNamesOnlyNetworkFiles();
  void CommandLineFileIsLoadedAndCaptioned();
  void RecoveryYesReloadsWithoutAName();
  void RecoveryNoKeepsTheFile();
  void NewAsksWhenDataIsPresent();
  void SaveAsMasterFileIsConfirmed();
  void SaveAsAddsTheExtensionAndUsesTheFilter();
  void BadNameIsRefused();
  void OpenAsksToSaveChangesFirst();
  void ExitAsksAndRemovesTheRecoveryFile();
  void NoteWindowFollowsTheNetwork();
  void AutosaveWritesTheRecoveryFileEveryEleventhTick();
  void CaptionIsTheFileNameCutAtAHundred();
  void ExampleOpensAtItsStartupLevelOthersFitted();
};

void MainFormFilesTest::cleanup() {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
  QFile::remove(QString::fromStdString(RecoveryFile(ws)));
}

void MainFormFilesTest::CommandLineNamesOnlyNetworkFiles() {
  QCOMPARE(CommandFileFrom({"galeris", "/mines/North.SIM"}), std::string("/mines/North.SIM"));
  QCOMPARE(CommandFileFrom({"galeris", "/mines/north.smm"}), std::string("/mines/north.smm"));
  QCOMPARE(CommandFileFrom({"galeris", "/mines/My", "Mine.Sim"}),
           std::string("/mines/My Mine.Sim"));
  QCOMPARE(CommandFileFrom({"galeris", "\"/mines/quoted.sim\""}), std::string("/mines/quoted.sim"));
  QCOMPARE(CommandFileFrom({"galeris", "/mines/notes.txt"}), std::string());
  QCOMPARE(CommandFileFrom({"galeris"}), std::string());
  // a name relative to the start folder is kept whole, so the recent list works from anywhere
  QCOMPARE(CommandFileFrom({"galeris", "mines/west.sim"}),
           QDir::current().absoluteFilePath("mines/west.sim").toStdString());
}

void MainFormFilesTest::CommandLineFileIsLoadedAndCaptioned() {
  const QString path = SavedNetwork("north.sim");
  QVERIFY(!path.isEmpty());
  HeadlessUi ui;
  Frame frame(ui, path.toStdString());
  QCOMPARE(int(frame.ws.net.BranchCount), 3);
  QCOMPARE(frame.form.windowTitle(), QString("north.sim"));
  QCOMPARE(frame.ws.net.FileName, path.toStdString());
  QCOMPARE(frame.ws.RecentFiles[1], path.toStdString());
}

void MainFormFilesTest::RecoveryYesReloadsWithoutAName() {
  {
    HeadlessUi ui;
    Frame frame(ui);
    AddSmallNetwork(frame.ws);
    QVERIFY(SaveNetwork(frame.ws, 1));
    QVERIFY(QFile::exists(QString::fromStdString(RecoveryFile(frame.ws))));
  }
  // Every box of the start is answered Yes; the recovery question is the only Yes/No one.
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  QVERIFY(ui.Said("An autosaved recovery file exists - do you wish to load this file"));
  QVERIFY(ui.Said("Auto save recovery"));
  QCOMPARE(int(frame.ws.net.BranchCount), 3);
  QVERIFY(frame.ws.net.FileName.empty());
  QCOMPARE(int(frame.ws.net.NetworkSaved), 0xFF);
  QCOMPARE(frame.form.windowTitle(), QString("tempsim.sim"));
}

void MainFormFilesTest::RecoveryNoKeepsTheFile() {
  {
    HeadlessUi ui;
    Frame frame(ui);
    AddSmallNetwork(frame.ws);
    QVERIFY(SaveNetwork(frame.ws, 1));
  }
  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  Frame frame(ui);
  QVERIFY(ui.Said("An autosaved recovery file exists - do you wish to load this file"));
  QCOMPARE(int(frame.ws.net.BranchCount), 0);
  QCOMPARE(frame.form.windowTitle(), QString("Galeris"));
  QVERIFY(QFile::exists(QString::fromStdString(RecoveryFile(frame.ws))));
}

void MainFormFilesTest::NewAsksWhenDataIsPresent() {
  HeadlessUi ui;
  Frame frame(ui);
  ui.ClearRecords();
  frame.form.NewFile();  // nothing there: no question
  QVERIFY(ui.MessageTexts().empty());

  AddSmallNetwork(frame.ws);
  ui.QueueAnswer(MsgAnswer::Cancel);
  frame.form.NewFile();
  QCOMPARE(ui.MessageTexts(), std::vector<std::string>{"Current Data will be lost ?"});
  QCOMPARE(ui.Records().back().title, std::string("Data Exists"));
  QCOMPARE(ui.Records().back().buttons, MsgButtons::OKCancel);
  QCOMPARE(int(frame.ws.net.BranchCount), 3);

  ui.QueueAnswer(MsgAnswer::OK);
  frame.form.NewFile();
  QCOMPARE(int(frame.ws.net.BranchCount), 0);
  QCOMPARE(frame.form.windowTitle(), QString("Galeris"));
}

void MainFormFilesTest::SaveAsMasterFileIsConfirmed() {
  HeadlessUi ui;
  Frame frame(ui);
  AddSmallNetwork(frame.ws);
  frame.answer = QString::fromStdString(test::ScratchDir()) + "reference.smm";

  ui.QueueAnswer(MsgAnswer::No);
  QVERIFY(!frame.form.SaveAs());
  QVERIFY(ui.Said("You are about to save as a Master file - are you sure ?"));
  QVERIFY(ui.Said("Master File"));
  QVERIFY(!QFile::exists(frame.answer));

  ui.QueueAnswer(MsgAnswer::Yes);
  QVERIFY(frame.form.SaveAs());
  QVERIFY(QFile::exists(frame.answer));
  QCOMPARE(frame.form.windowTitle(), QString("reference.smm"));
  QCOMPARE(int(frame.ws.net.NetworkSaved), 0xFF);
}

void MainFormFilesTest::SaveAsAddsTheExtensionAndUsesTheFilter() {
  HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  Frame frame(ui);
  AddSmallNetwork(frame.ws);
  const QString folder = QString::fromStdString(test::ScratchDir());
  frame.answer = folder + "plain";
  QVERIFY(frame.form.SaveFile());  // no name yet: Save As
  QCOMPARE(frame.requests.size(), std::size_t(1));
  QVERIFY(frame.requests[0].save);
  QCOMPARE(frame.requests[0].filter,
           QString("Data Files (*.sim);;Master Files (*.smm);;All files (*.*)"));
  QVERIFY(QFile::exists(folder + "plain.sim"));
  QCOMPARE(frame.form.windowTitle(), QString("plain.sim"));

  // With a name, Save writes without a dialog.
  frame.ws.net.NetworkSaved = 0;
  QVERIFY(frame.form.SaveFile());
  QCOMPARE(frame.requests.size(), std::size_t(1));
  QCOMPARE(int(frame.ws.net.NetworkSaved), 0xFF);
}

void MainFormFilesTest::BadNameIsRefused() {
  HeadlessUi ui;
  Frame frame(ui);
  AddSmallNetwork(frame.ws);
  for (const QString& bad : {QString::fromStdString(test::ScratchDir()) + "no/such/folder/x.sim",
                             QString::fromStdString(test::ScratchDir()) + "what?.sim"}) {
    ui.ClearRecords();
    frame.answer = bad;
    QVERIFY(!frame.form.SaveAs());
    QCOMPARE(ui.MessageTexts(), std::vector<std::string>{"Error Save File - Check Name"});
  }
  // A cancelled dialog says nothing.
  ui.ClearRecords();
  frame.answer.clear();
  QVERIFY(!frame.form.SaveAs());
  QVERIFY(ui.MessageTexts().empty());
}

void MainFormFilesTest::OpenAsksToSaveChangesFirst() {
  const QString path = SavedNetwork("south.sim");
  HeadlessUi ui;
  Frame frame(ui);
  AddSmallNetwork(frame.ws);
  frame.ws.net.NetworkSaved = 0;
  ui.QueueAnswer(MsgAnswer::Cancel);
  frame.form.OpenFile();
  QVERIFY(ui.Said("Network Data is not saved - Save it?"));
  QVERIFY(frame.requests.empty());

  ui.QueueAnswer(MsgAnswer::No);
  frame.answer = path;
  frame.form.OpenFile();
  QCOMPARE(frame.requests.size(), std::size_t(1));
  QCOMPARE(frame.requests[0].filter,
           QString("Galeris Data (*.sim);;Master Files (*.smm);;All Files (*.*)"));
  QVERIFY(!frame.requests[0].save);
  QCOMPARE(frame.form.windowTitle(), QString("south.sim"));
  QCOMPARE(int(frame.ws.net.BranchCount), 3);
}

void MainFormFilesTest::ExitAsksAndRemovesTheRecoveryFile() {
  HeadlessUi ui;
  Frame frame(ui);
  frame.form.show();
  AddSmallNetwork(frame.ws);
  QVERIFY(SaveNetwork(frame.ws, 1));
  frame.ws.net.NetworkSaved = 0;

  ui.QueueAnswer(MsgAnswer::Cancel);
  QVERIFY(!frame.form.close());
  QVERIFY(ui.Said("Galeris data is not saved - Save it?"));
  QVERIFY(frame.form.isVisible());
  QVERIFY(QFile::exists(QString::fromStdString(RecoveryFile(frame.ws))));

  ui.QueueAnswer(MsgAnswer::No);
  QVERIFY(frame.form.close());
  QVERIFY(!QFile::exists(QString::fromStdString(RecoveryFile(frame.ws))));
}

void MainFormFilesTest::NoteWindowFollowsTheNetwork() {
  HeadlessUi ui;
  Frame frame(ui);
  frame.ws.net.FileNote = "Ventilation survey\r\nMarch readings";
  frame.form.ShowFileNote();
  FrmFileNote& note = frame.form.FileNoteForm();
  QVERIFY(note.isVisible());
  QCOMPARE(note.Text(), QString("Ventilation survey\nMarch readings"));
  QCOMPARE(int(frame.ws.net.NetworkSaved), 0xFF);  // showing is not editing

  note.findChild<QPlainTextEdit*>("TxtNote")->setPlainText("Fan 2 stopped\nfor repair");
  QCOMPARE(frame.ws.net.FileNote, std::string("Fan 2 stopped\r\nfor repair"));
  QCOMPARE(int(frame.ws.net.NetworkSaved), 0);
  QVERIFY(frame.form.Action("mnuMessage")->isEnabled());
}

void MainFormFilesTest::AutosaveWritesTheRecoveryFileEveryEleventhTick() {
  HeadlessUi ui;
  Frame frame(ui);
  auto* autosave = frame.form.findChild<QTimer*>("Autosave");
  QVERIFY(autosave);
  QVERIFY(!autosave->isActive());  // AutoSaveMinutes 0: no auto-save

  frame.ws.defaults.AutoSaveMinutes = 2;
  frame.form.NewFile();
  QVERIFY(autosave->isActive());
  QCOMPARE(autosave->interval(), 12000);
  AddSmallNetwork(frame.ws);
  const QString recovery = QString::fromStdString(RecoveryFile(frame.ws));
  for (int tick = 1; tick <= 10; ++tick) QMetaObject::invokeMethod(autosave, "timeout");
  QVERIFY(!QFile::exists(recovery));
  QMetaObject::invokeMethod(autosave, "timeout");
  QVERIFY(QFile::exists(recovery));
  // Temp mode leaves the name and the saved flag alone.
  QVERIFY(frame.ws.net.FileName.empty());
}

void MainFormFilesTest::CaptionIsTheFileNameCutAtAHundred() {
  HeadlessUi ui;
  Frame frame(ui);
  frame.ws.net.FileName = "/mines/" + std::string(120, 'n') + ".sim";
  frame.form.RefreshCaption();
  QCOMPARE(frame.form.windowTitle(), QString(100, 'n'));
  frame.ws.net.FileName = "C:\\Mines\\West.sim";
  frame.form.RefreshCaption();
  QCOMPARE(frame.form.windowTitle(), QString("West.sim"));
}

// The shipped example stores a start-up view of one level in plan, so that its names and values
// are readable at once; a file without one still opens on every level, fitted.
void MainFormFilesTest::ExampleOpensAtItsStartupLevelOthersFitted() {
  HeadlessUi ui;
  Frame frame(ui, test::SourcePath("examples/example_mine.sim"));
  const ViewState& view = frame.form.CurrentView()->View();
  QCOMPARE(view.LevelMode, LevelModeOf::Single);
  QCOMPARE(view.LevelTop, 950.0f);
  QCOMPARE(frame.form.findChild<QComboBox*>("CmbRL")->currentText(), QString("900 Level"));

  Frame other(ui, SavedNetwork("west.sim").toStdString());
  QCOMPARE(other.form.CurrentView()->View().LevelMode, LevelModeOf::All);
  QCOMPARE(other.form.CurrentView()->View().VisibleCount, 3);
}

QTEST_MAIN(MainFormFilesTest)
#include "qt_main_form_files.moc"
