// frmSmokeTrace ("Smoke Source"): the colours of the trace ("Smoke", "Potential", "Clear"), the
// kind of report pin the pin tool places, Clear Pins, Clear Trace / Show Traces and Exit.
#pragma once

#include <QDialog>

#include "core/workspace.h"

class QPushButton;
class QRadioButton;

namespace galeris {

class FrmSmokeTrace : public QDialog {
  Q_OBJECT
 public:
  FrmSmokeTrace(Workspace& ws, QWidget* parent = nullptr);

  // PinType: 1 a smoke report, 2 a clear report.
  int PinType() const;
  // CmdSim's caption follows whether the trace is shown.
  void ShowTraceShown(bool shown);

 signals:
  void PinsCleared();
  void TraceToggled(bool shown);
  void Closed();
  // "Report Pin" changed: the pin a left click now places.
  void PinTypeChosen(int pinType);

 protected:
  void done(int result) override;

 private:
  Workspace& ws_;
  QRadioButton* optSmoke_;
  QRadioButton* optClear_;
  QPushButton* cmdClearS_;
  QPushButton* cmdSim_;
  QPushButton* cmdExit_;
  bool traceShown_ = true;
};

}  // namespace galeris
