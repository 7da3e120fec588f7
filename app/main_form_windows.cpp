// MainForm's view windows: a new window as a copy of the current view, the switch between
// windows (each keeps its own layers in its slot), Freeze, the list of windows in the Window
// menu, the printer's width behind the scale caption, and the last window, whose close closes
// the network.
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/main_form_print.h"
#include "editors/print_network.h"
#include "files/lifecycle.h"

namespace galeris {

namespace {
constexpr const char* kFrozenMessage = "Cannot freeze when only one window is present !";
}  // namespace

std::vector<FrmWindow*> MainForm::ViewsCurrentLast() const {
  std::vector<FrmWindow*> views = AllViews();
  FrmWindow* current = CurrentView();
  std::stable_partition(views.begin(), views.end(),
                        [current](FrmWindow* view) { return view != current; });
  return views;
}

void MainForm::ViewActivated(QMdiSubWindow* sub) {
  auto* view = sub ? qobject_cast<FrmWindow*>(sub->widget()) : nullptr;
  // The frame losing the focus activates no window: the current one stays current.
  if (view == nullptr || view == activeView_) return;
  if (activeView_) activeView_->Deactivate();
  activeView_ = view;
  view->Activate();
  ViewCaptionChanged(QString::fromStdString(view->View().FrameCaption));
}

void MainForm::FreezeCommand() {
  for (FrmWindow* view : AllViews()) {
    if (view->Frozen()) {
      view->SetFrozen(false);
      view->Redraw();
      return;
    }
  }
  if (AllViews().size() < 2) {
    ws_.ui.Inform(kFrozenMessage, "Freeze error", MsgIcon::Exclamation);
    return;
  }
  if (FrmWindow* view = CurrentView()) view->SetFrozen(true);
}

void MainForm::FillWindowList() {
  for (QAction* entry : windowList_) {
    windowMenu_->removeAction(entry);
    entry->deleteLater();
  }
  windowList_.clear();
  const QList<QMdiSubWindow*> subs = mdi_->subWindowList();
  if (!subs.isEmpty()) windowList_.push_back(windowMenu_->addSeparator());
  int number = 0;
  for (QMdiSubWindow* sub : subs) {
    QAction* entry = windowMenu_->addAction(QString("&%1 %2").arg(++number).arg(sub->windowTitle()));
    entry->setCheckable(true);
    entry->setChecked(sub == mdi_->currentSubWindow());
    connect(entry, &QAction::triggered, this, [this, sub] { mdi_->setActiveSubWindow(sub); });
    windowList_.push_back(entry);
  }
}

double MainForm::PrintableWidthMm() const {
  return PrintableFor(printCommands_->Settings()).WidthMm;
}

void MainForm::RefreshPrintableWidth() {
  const double width = PrintableWidthMm();
  if (width <= 0) return;  // no printer to measure: the width stands
  for (FrmWindow* view : AllViews()) view->View().PrintableWidthMm = static_cast<float>(width);
  if (FrmWindow* view = CurrentView()) {
    SetScaleCaption(ws_, view->View());
    ViewCaptionChanged(QString::fromStdString(view->View().FrameCaption));
  }
}

// The last window cannot go without the network: unsaved data is offered for saving, and the
// network is cleared.
bool MainForm::MayCloseView() {
  if (AllViews().size() > 1) return true;
  bool needsSaveAs = false;
  if (!SaveChangesFirst(ws_, "Network Data is not saved - Save it?", needsSaveAs)) return false;
  if (needsSaveAs && !SaveAs()) return false;
  CloseNetwork(ws_);
  undo_.ResetUndoFile();
  activeView_ = nullptr;
  RefreshCaption();
  RefreshLevelList();
  RefreshSimStatus();
  return true;
}

}  // namespace galeris
