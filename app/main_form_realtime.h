// The real-time commands of the Tools menu: the station dialog, monitoring on Timer1 (read,
// show, resimulate), the output dialog and the output file on Timer2. Every tick does nothing
// while the program is busy.
#pragma once

#include <QObject>

class QMenu;
class QTimer;

namespace galeris {

class MainForm;
struct Workspace;

class RealtimeCommands : public QObject {
  Q_OBJECT
 public:
  // Connects and enables mnuRemoteStation, mnuRemote, mnuRealOut and mnuRealOutStart.
  explicit RealtimeCommands(MainForm& form);

  // At start-up, after the settings: reads Remotes.dat and sets the timers' intervals.
  void Start();

  void ShowStations();   // mnuRemoteStation: frmRemote
  void ToggleMonitor();  // mnuRemote
  void ShowRealOut();    // mnuRealOut: frmRealOut
  void ToggleOutput();   // mnuRealOutStart
  void StationTick();    // Timer1
  void OutputTick();     // Timer2

  QTimer& Timer1() const { return *timer1_; }
  QTimer& Timer2() const { return *timer2_; }

 private:
  void ConnectEntry(const char* name, void (RealtimeCommands::*run)());
  void SetIntervals();
  QString Browse(const QString& filter);

  MainForm& form_;
  Workspace& ws_;
  QTimer* timer1_ = nullptr;
  QTimer* timer2_ = nullptr;
};

}  // namespace galeris
