// MainForm's edit commands: undo and redo through the journal, the name finder, the attribute
// choice of the copy tool, and the one refresh that follows any change of the network, so that
// every view window, the status label and the lists agree with the store.
#include <QAction>
#include <QTimer>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "editors/frm_attrib.h"
#include "view/construction.h"
#include "view/drawing.h"
#include "view/fence_tools.h"

namespace galeris {
namespace {

// A replayed "Swap XY Axis" turns the axes round: the views are fitted again, as the swap
// fitted them.
void FitAfterTurnedAxes(MainForm& form) {
  if (!form.Journal().AxesSwappedByReplay()) return;
  for (FrmWindow* window : form.AllViews()) window->Fit();
}

}  // namespace

void MainForm::RefreshAfterNetworkChange() {
  refreshDue_ = false;
  for (FrmWindow* window : ViewsCurrentLast())
    if (!window->Frozen()) window->Redraw();
  RefreshSimStatus();
  // The scale caption the redraw wrote stands; without a window the file's name does.
  if (AllViews().empty()) RefreshCaption();
}

void MainForm::UndoCommand() {
  if (ws_.sim.Running) return;
  undo_.Undo();
  RefreshAfterNetworkChange();
  FitAfterTurnedAxes(*this);
}

void MainForm::RedoCommand() {
  if (ws_.sim.Running) return;
  undo_.Redo();
  RefreshAfterNetworkChange();
  FitAfterTurnedAxes(*this);
}

void MainForm::FindByNameCommand(bool node) {
  FrmWindow* window = CurrentView();
  if (window == nullptr) return;
  if (FindByName(ws_, window->View(), tools_, node)) window->Redraw();
}

void MainForm::ChooseAttributes() {
  if (frmAttrib_ == nullptr) frmAttrib_ = new FrmAttrib(tools_.Edit.AttributeChosen, this);
  frmAttrib_->Open();
}

}  // namespace galeris
