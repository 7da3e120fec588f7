// frmSmoke ("Smoke Simulation"): the progress of the contaminant spread (round, share of
// airways visited, spread count, convergence), the source mode as the options set it, the
// "Retain Legend" choice, and Simulate and Cancel.
#pragma once

#include <QDialog>

#include "core/workspace.h"
#include "simulate/contaminants.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace galeris {

class FrmSmoke : public QDialog {
  Q_OBJECT
 public:
  FrmSmoke(Workspace& ws, QWidget* parent = nullptr);

  // The fields the spread fills as it goes.
  SpreadDisplay Display();
  bool RetainLegend() const;
  void SetRetainLegend(bool retain);
  // True while the spread runs (Simulate was pressed and has not returned).
  bool Running() const { return running_; }
  // What pressing "Simulate" does, while the form is shown.
  void Simulate();

 signals:
  // Simulate: the owner runs the spread with Display() and closes the form.
  void SimulateClicked();
  // Cancel before or during a spread: the run stops at its next test.
  void CancelClicked();

 protected:
  void reject() override;

 private:
  Workspace& ws_;
  QLineEdit* txtItt_;
  QLineEdit* txtRate_;
  QLineEdit* txtSpread_;
  QLineEdit* txtErr_;
  QRadioButton* optCumulative_;
  QRadioButton* optFixed_;
  QCheckBox* chkRetain_;
  QPushButton* ok_;
  QPushButton* cancel_;
  bool running_ = false;
};

}  // namespace galeris
