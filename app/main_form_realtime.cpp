#include "app/main_form_realtime.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <algorithm>

#include "app/main_form.h"
#include "editors/frm_real_out.h"
#include "editors/frm_remote.h"
#include "realtime/realtime_output.h"
#include "realtime/remotes_file.h"
#include "realtime/stations.h"

namespace galeris {
namespace {

int Milliseconds(float seconds) {
  return static_cast<int>(std::clamp<double>(seconds * 1000.0, 1, 2147483647.0));
}

}  // namespace

RealtimeCommands::RealtimeCommands(MainForm& form) : QObject(&form), form_(form), ws_(form.ws_) {
  setObjectName("RealtimeCommands");
  timer1_ = new QTimer(this);
  timer1_->setObjectName("Timer1");
  timer2_ = new QTimer(this);
  timer2_->setObjectName("Timer2");
  connect(timer1_, &QTimer::timeout, this, &RealtimeCommands::StationTick);
  connect(timer2_, &QTimer::timeout, this, &RealtimeCommands::OutputTick);
  ConnectEntry("mnuRemoteStation", &RealtimeCommands::ShowStations);
  ConnectEntry("mnuRemote", &RealtimeCommands::ToggleMonitor);
  ConnectEntry("mnuRealOut", &RealtimeCommands::ShowRealOut);
  ConnectEntry("mnuRealOutStart", &RealtimeCommands::ToggleOutput);
  // The whole feature is offered only while the option is on.
  if (auto* menu = form_.findChild<QMenu*>("mnuRealtime")) {
    if (auto* tools = qobject_cast<QMenu*>(menu->parentWidget())) {
      connect(tools, &QMenu::aboutToShow, menu,
              [this, menu] { menu->menuAction()->setEnabled(ws_.defaults.RemoteEnabled != 0); });
    }
  }
  ws_.remote.Beep = [] { QApplication::beep(); };
}

void RealtimeCommands::ConnectEntry(const char* name, void (RealtimeCommands::*run)()) {
  QAction* action = form_.Action(name);
  if (!action) return;
  action->disconnect(&form_);
  connect(action, &QAction::triggered, this, run);
  action->setEnabled(true);
}

void RealtimeCommands::Start() {
  LoadRemotes(ws_);
  SetIntervals();
}

void RealtimeCommands::SetIntervals() {
  timer1_->setInterval(Milliseconds(ws_.remote.RemoteInterval));
  timer2_->setInterval(Milliseconds(ws_.remote.OutputInterval));
}

QString RealtimeCommands::Browse(const QString& filter) {
  FileDialogRequest request;
  request.title = "Open";
  request.filter = QtFilter(filter.toStdString());
  return form_.ChooseFile(request);
}

void RealtimeCommands::ShowStations() {
  FrmRemote dialog(
      ws_, [this](const QString& filter) { return Browse(filter); }, &form_);
  dialog.exec();
  SetIntervals();
  // A station that no longer controls its airway frees it at once.
  if (ws_.remote.RemoteRunning) {
    ApplyStations(ws_);
    form_.RedrawViews();
  }
}

void RealtimeCommands::ToggleMonitor() {
  RemoteStations& st = ws_.remote;
  st.RemoteRunning = !st.RemoteRunning;
  form_.Action("mnuRemote")->setChecked(st.RemoteRunning);
  if (st.RemoteRunning) {
    timer1_->start();
  } else {
    timer1_->stop();
  }
  form_.RedrawViews();
}

void RealtimeCommands::ShowRealOut() {
  FrmRealOut dialog(
      ws_, [this](const QString& filter) { return Browse(filter); }, &form_);
  dialog.exec();
  SetIntervals();
}

void RealtimeCommands::ToggleOutput() {
  RemoteStations& st = ws_.remote;
  st.OutputRunning = !st.OutputRunning;
  st.OutputFailed = false;
  form_.Action("mnuRealOutStart")->setChecked(st.OutputRunning);
  if (st.OutputRunning) {
    timer2_->start();
  } else {
    timer2_->stop();
  }
  form_.RedrawViews();
}

void RealtimeCommands::StationTick() {
  RemoteStations& st = ws_.remote;
  if (!st.RemoteRunning || form_.IsBusy()) return;
  if (!ReadStations(ws_)) {
    timer1_->stop();
    form_.Action("mnuRemote")->setChecked(false);
    form_.RedrawViews();
    return;
  }
  // The bell rings once per alarm after a read, for every station airway whether a view
  // shows it or not; the views then colour the boxes they show.
  st.SoundAlarms = true;
  ApplyStations(ws_);
  st.SoundAlarms = false;
  form_.RedrawViews();
  if (!st.RemoteResim) return;
  ResimulateQuietly(ws_);
  form_.RefreshSimStatus();
  if (!form_.IsBusy()) form_.RedrawViews();
}

void RealtimeCommands::OutputTick() {
  if (!ws_.remote.OutputRunning || form_.IsBusy()) return;
  WriteRealtimeOutput(ws_);
}

}  // namespace galeris
