// MainForm's simulation commands: each sets the run's mode, shows the progress, runs the
// driver, then opens or closes the error list, turns the status label and redraws.
#include <QAction>
#include <QToolButton>

#include "app/frm_error.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/solver_choice.h"
#include "app/tool_palette.h"
#include "simulate/simulate.h"
#include "view/fence_tools.h"

namespace galeris {

namespace {

const char* const kSimulationActions[] = {"mnuExecute",      "mnnuNonConverge", "mnuProblems",
                                          "mnuRemoveRedund", "mnuFindResFans",  "mnuDupAir",
                                          "mnuResetAirflows"};

}  // namespace

void MainForm::SetSimulationEnabled(bool enabled) {
  for (const char* name : kSimulationActions)
    if (QAction* action = Action(name)) action->setEnabled(enabled);
  palette_->Button(ButtonOf::AirSimulation)->setEnabled(enabled);
}

void MainForm::RunSimulationCommand(int simMode) {
  if (ws_.sim.Running) return;
  SetSimulationEnabled(false);
  ws_.sim.ShowProgress = 1;
  ws_.sim.SimMode = static_cast<std::int16_t>(simMode);
  const SimOutcome outcome = RunSimulation(ws_);
  SetSimulationEnabled(true);
  if (outcome.Ran) {
    // The progress window has closed; the self-check of the flows goes to the status line and
    // under the error list's lines.
    const QString check = SolutionCheckLine(ws_.sim);
    if (!check.isEmpty()) SetStatusText(check);
    if (outcome.ShowErrorList) {
      std::vector<std::string> lines = ws_.net.Errorlist;
      if (!check.isEmpty()) lines.push_back(check.toStdString());
      ErrorForm().ShowList(lines, outcome.ErrorListCaption);
    } else if (frmError_) {
      frmError_->hide();
    }
  }
  RefreshSimStatus();
  RedrawViews();
}

void MainForm::ReseedAirflowsCommand() {
  if (ws_.sim.Running) return;
  if (ReseedAirflows(ws_)) {
    RefreshSimStatus();
    RedrawViews();
  }
}

void MainForm::StopRun() {
  ws_.sim.SimCancel = 255;
  ws_.ui.HideProgress();
  RedrawViews();
}

void MainForm::GoToAirwayNo(int airwayNo) {
  for (int position = 1; position <= ws_.net.BranchCount; ++position) {
    if (ws_.net.AirwayNo[position] != airwayNo) continue;
    SetStatusText(QString("Airway %1").arg(airwayNo));
    if (goToAirway_) {
      goToAirway_(position);
    } else if (FrmWindow* window = CurrentView()) {
      // The error list's Goto: the airway's level, selected, and the view brought to it.
      tools_.PickFraction = 0;
      GoToAirway(ws_, window->View(), tools_, position);
    }
    RedrawViews();
    return;
  }
  SetStatusText(QString("Airway %1 is no longer in the network").arg(airwayNo));
}

}  // namespace galeris
