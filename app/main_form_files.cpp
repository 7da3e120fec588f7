// MainForm's file commands and its life: start-up, New, Open, the recent list, Merge, Save,
// Save As, auto-save and the questions at exit. The engine does the work; the frame adds the
// file dialogs and refreshes its windows around it.
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QTimer>

#include "app/export_image.h"
#include "app/file_dialogs.h"
#include "app/frm_file_note.h"
#include "app/frm_help.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/main_form_realtime.h"
#include "app/recent_files.h"
#include "files/lifecycle.h"
#include "files/network_file.h"

namespace galeris {

void MainForm::Load(const std::string& commandFile) {
  ws_.StoreRecentFiles = [](const std::array<std::string, 10>& recent) {
    StoreRecentFiles(recent);
  };
  FillDataTypeLists();
  LoadRecentFiles(ws_);
  RefreshRecentMenu();
  StartUp(ws_);
  realtimeCommands_->Start();
  undo_.ResetUndoFile();
  RefreshLevelList();
  NewViewWindow();
  if (!commandFile.empty()) {
    const bool opened = OpenNetwork(ws_, commandFile);
    if (opened) undo_.ResetUndoFile();
    AfterLoad(true, opened);
  }
  if (OfferRecovery(ws_)) {
    undo_.ResetUndoFile();
    AfterLoad(true, true);
    // The recovered network keeps no name until it is saved as; the caption says where it
    // came from.
    SetCaption("tempsim.sim");
  }
  RestartAutosave();
}

QString MainForm::ChooseFile(FileDialogRequest request) {
  if (request.startFolder.isEmpty()) request.startFolder = StoredDefaultDir();
  const QString path = chooser_ ? chooser_(request) : QString();
  if (!path.isEmpty()) StoreDefaultDir(QFileInfo(path).absolutePath());
  return path;
}

QString MainForm::ChooseNetworkToOpen(const QString& title) {
  FileDialogRequest request;
  request.title = title;
  request.filter = QtFilter(kOpenFilter);
  return ChooseFile(request);
}

void MainForm::NewFile() {
  if (!NewNetwork(ws_)) return;
  undo_.ResetUndoFile();
  AfterLoad(false);
}

void MainForm::OpenFile() {
  bool needsSaveAs = false;
  if (!SaveChangesFirst(ws_, "Network Data is not saved - Save it?", needsSaveAs)) return;
  if (needsSaveAs && !SaveAs()) return;
  const QString path = ChooseNetworkToOpen("Open Network");
  if (path.isEmpty()) return;
  OpenPath(path.toStdString());
}

void MainForm::OpenRecent(int number) {
  if (number < 1 || number > 9 || ws_.RecentFiles[number].empty()) return;
  bool needsSaveAs = false;
  if (!SaveChangesFirst(ws_, "Network Data is not saved - Save it?", needsSaveAs)) return;
  if (needsSaveAs && !SaveAs()) return;
  // The entry is copied: loading moves it to the head of the list it lives in.
  const std::string path = ws_.RecentFiles[number];
  OpenPath(path);
}

bool MainForm::OpenPath(const std::string& path) {
  const bool loaded = OpenNetwork(ws_, path);
  // A replaced network starts a fresh journal; a refused load leaves the old one.
  if (loaded) undo_.ResetUndoFile();
  AfterLoad(loaded, loaded);
  return loaded;
}

void MainForm::MergeFile() {
  const QString path = ChooseNetworkToOpen("Merge Network");
  if (path.isEmpty()) return;
  const bool merged = MergeNetwork(ws_, path.toStdString());
  AfterLoad(merged);
}

bool MainForm::SaveFile() {
  if (ws_.net.FileName.empty()) return SaveAs();
  const bool saved = SaveNetwork(ws_);
  AfterSave(saved);
  return saved;
}

bool MainForm::SaveAs() {
  // Refused before a name is asked for, as the save itself would refuse.
  if (ws_.ShownSmokeState && GasSimulationBlocksSave(ws_.ui, ws_.ShownSmokeState())) {
    RedrawViews();
    return false;
  }
  FileDialogRequest request;
  request.save = true;
  request.title = "Save Network As";
  request.filter = QtFilter(kSaveFilter);
  request.defaultSuffix = "sim";
  const QString chosen = ChooseFile(request);
  if (chosen.isEmpty()) return false;
  const QString path = WithDefaultSuffix(chosen, request.defaultSuffix);
  if (!IsUsableSaveName(path)) {
    ws_.ui.Inform("Error Save File - Check Name");
    return false;
  }
  const bool saved = SaveNetworkAs(ws_, path.toStdString());
  AfterSave(saved);
  return saved;
}

void MainForm::ExportPictureCommand() {
  FrmWindow* view = CurrentView();
  if (!view) return;
  FileDialogRequest request;
  request.save = true;
  request.title = "Export Picture";
  request.filter = QtFilter("PNG Pictures (*.png)|*.png|JPEG Pictures (*.jpg)|*.jpg");
  request.defaultSuffix = "png";
  const QString chosen = ChooseFile(request);
  if (chosen.isEmpty()) return;
  const QString path = WithDefaultSuffix(chosen, request.defaultSuffix);
  if (!IsUsableSaveName(path) || !ExportPicture(ws_, view->View(), path, view->size()))
    ws_.ui.Inform("Error Export File - Check Name");
}

void MainForm::AfterLoad(bool loaded, bool opened) {
  // A refused load may still have emptied the network, so everything is refreshed anyway.
  // The views of an opened network start afresh (see ShowOpenedNetwork); after a merge or a
  // refused load they are fitted. Their scale caption gives way to the file's name until the
  // next change of scale.
  for (FrmWindow* view : AllViews()) {
    if (opened)
      view->ShowOpenedNetwork();
    else
      view->Fit();
  }
  RefreshCaption();
  RefreshRecentMenu();
  RefreshLevelList();
  RefreshSimStatus();
  // The self-check of a run speaks of the flows it left; a network not yet run here has none.
  if (ws_.net.NetworkBalanced == 0) SetStatusText({});
  if (frmFileNote_) frmFileNote_->Refresh();
  // The note opens by itself only when it says something beyond the save stamps.
  if (loaded && NoteHasWords(ws_.net.FileNote)) ShowFileNote();
  RestartAutosave();
}

void MainForm::AfterSave(bool saved) {
  RefreshCaption();
  RefreshRecentMenu();
  if (saved && frmFileNote_) frmFileNote_->Refresh();
}

void MainForm::RefreshRecentMenu() {
  bool any = false;
  for (int n = 1; n <= 9; ++n) {
    const std::string& path = ws_.RecentFiles[n];
    mnuOld_[n]->setVisible(!path.empty());
    mnuOld_[n]->setText(path.empty() ? QString() : RecentMenuText(n, path));
    mnuOld_[n]->setToolTip(QString::fromStdString(path));
    any = any || !path.empty();
  }
  recentSeparator_->setVisible(any);
}

void MainForm::RestartAutosave() {
  autosave_->stop();
  const long long minutes = ws_.defaults.AutoSaveMinutes;
  if (minutes <= 0) return;
  autosave_->setInterval(static_cast<int>(std::min<long long>(minutes * 6000, 2147483647LL)));
  autosave_->start();
}

bool MainForm::IsBusy() const {
  return ws_.sim.Running || QApplication::overrideCursor() != nullptr;
}

void MainForm::AutosaveTimerTick() {
  if (IsBusy()) return;
  AutosaveTick(ws_, autoSaveTicks_);
}

void MainForm::closeEvent(QCloseEvent* event) {
  if (ws_.sim.Running) {
    // A run in progress is stopped first; the window closes on the next request.
    ws_.sim.SimCancel = 255;
    event->ignore();
    return;
  }
  bool needsSaveAs = false;
  if (!QueryUnload(ws_, needsSaveAs) || (needsSaveAs && !SaveAs())) {
    event->ignore();
    return;
  }
  autosave_->stop();
  FinishUnload(ws_);
  event->accept();
  // The help window is a window of its own and would keep the program alive.
  if (frmHelp_) frmHelp_->close();
}

}  // namespace galeris
