// MainForm's level, layer and option commands: the Level List, the Levels menu (single,
// selected levels, a range, all), Viewing Layers, View Options with the user's Declutter
// choice, and the Options dialog.
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "editors/logic/level_list.h"
#include "editors/frm_options.h"
#include "editors/frm_range.h"
#include "editors/frm_rl_base.h"
#include "editors/frm_sel_level.h"
#include "editors/frm_tag_s.h"
#include "editors/frm_viewer.h"
#include "view/view_options.h"

namespace galeris {
namespace {

constexpr const char* kDeclutterKey = "View/Declutter";

QMenu* MenuNamed(QMenuBar* bar, const QString& name) {
  return bar->findChild<QMenu*>(name);
}

}  // namespace

bool MainForm::DeclutterSetting() {
  return QSettings("Galeris", "Galeris").value(kDeclutterKey, true).toBool();
}

void MainForm::BuildLevelMenus() {
  QMenu* view = MenuNamed(menuBar(), "mnuView");
  QMenu* levels = MenuNamed(menuBar(), "mnuLevels");
  for (int mode = LevelModeOf::Single; mode <= LevelModeOf::All; ++mode) {
    QAction* action = Action(QString("mnuLevels(%1)").arg(mode));
    action->setEnabled(true);
    connect(action, &QAction::triggered, this, [this, mode] { ChooseLevelMode(mode); });
  }
  connect(levels, &QMenu::aboutToShow, this, [this] {
    const FrmWindow* window = CurrentView();
    for (int mode = LevelModeOf::Single; mode <= LevelModeOf::All; ++mode)
      Action(QString("mnuLevels(%1)").arg(mode))
          ->setChecked(window && window->View().LevelMode == mode);
  });
  QAction* before = levels->menuAction();
  auto insert = [&](const QString& name, const QString& caption, std::function<void()> run) {
    auto* action = new QAction(caption, view);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, std::move(run));
    view->insertAction(before, action);
  };
  insert("mnuRLBase", "Level &List...", [this] { ShowLevelList(); });
  insert("mnuTagS", "Viewing La&yers...", [this] { ShowViewingLayers(); });
  insert("mnuViewer", "View &Options...", [this] { ShowViewOptions(CurrentView()); });
  QMenu* tools = MenuNamed(menuBar(), "mnuTools");
  tools->addSeparator();
  AddEntry(tools, "mnuOptions", "&Options...", [this] { ShowOptions(); });
}

void MainForm::ShowLevelList() {
  FrmRLBase dialog(
      ws_,
      [this] {
        RefreshLevelList();
        // The band of the level CmbRL shows, as the list now holds it.
        const int level = ChosenLevel();
        if (FrmWindow* window = CurrentView()) {
          ViewState& view = window->View();
          view.LevelBottom = static_cast<float>(ws_.net.RLBound[level][2]);
          view.LevelTop = static_cast<float>(ws_.net.RLBound[level][1]);
          view.WorkingRL = (view.LevelBottom + view.LevelTop) / 2;
          window->Redraw();
        }
      },
      this);
  dialog.exec();
}

void MainForm::ChooseLevelMode(int mode) {
  FrmWindow* window = CurrentView();
  if (!window) return;
  ViewState& view = window->View();
  switch (mode) {
    case LevelModeOf::Single:
      window->SetLevel(ChosenLevel());
      ShowLevelChoice();
      return;
    case LevelModeOf::Multiple: {
      FrmSelLevel dialog(ws_, this);
      if (dialog.exec() == QDialog::Accepted && !dialog.Selected().empty()) {
        view.SelectedLevels = dialog.Selected();
        view.LevelMode = LevelModeOf::Multiple;
      }
      break;
    }
    case LevelModeOf::Range: {
      FrmRange dialog(ws_, ChosenLevel(), this);
      if (dialog.exec() != QDialog::Accepted) return;
      std::tie(view.LevelBottom, view.LevelTop) = dialog.Band();
      view.WorkingRL = (view.LevelBottom + view.LevelTop) / 2;
      view.LevelMode = LevelModeOf::Range;
      break;
    }
    default:
      view.LevelMode = LevelModeOf::All;
      break;
  }
  view.PreviousLevelMode = view.LevelMode;
  view.PivotState = 1;
  window->setWindowTitle(QString::fromStdString(LevelCaption(ws_, view)));
  window->Redraw();
  ShowLevelChoice();
}

void MainForm::ShowViewingLayers() {
  FrmWindow* window = CurrentView();
  if (!window) return;
  FrmTagS dialog(ws_, window->View(), this);
  if (dialog.exec() == QDialog::Accepted) RedrawViews();
}

void MainForm::ShowViewOptions(FrmWindow* window) {
  if (!window) return;
  FrmViewer dialog(ws_, window->View(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  // Declutter is the user's choice for every window, kept in the settings, not in files.
  const bool declutter = window->View().Declutter;
  QSettings("Galeris", "Galeris").setValue(kDeclutterKey, declutter);
  for (FrmWindow* other : AllViews()) other->View().Declutter = declutter;
  RedrawViews();
}

void MainForm::ShowOptions() {
  const QString level = cmbRL_->currentText();
  FrmOptions dialog(ws_, this);
  if (FrmWindow* window = CurrentView())
    dialog.SetSymbolSizes(window->View().SymbolSize, window->View().SymbolScaled);
  if (dialog.exec() == QDialog::Accepted) {
    for (FrmWindow* window : AllViews()) {
      window->View().SymbolSize = dialog.SymbolSize();
      window->View().SymbolScaled = dialog.SymbolScaled();
      ApplyDisplayDefaults(ws_, window->View());
    }
    // Kept in the settings, so that new windows and the next start draw them the same.
    if (FrmWindow* window = CurrentView()) KeepSymbolSettings(window->View(), ws_.defaults);
  }
  if (dialog.Applied().AutosaveChanged) RestartAutosave();
  // A unit switch applies at once, so the lists follow even after Cancel.
  RefreshLevelList();
  if (const int keep = cmbRL_->findText(level); keep >= 0) cmbRL_->setCurrentIndex(keep);
  RedrawViews();
}

}  // namespace galeris
