// frmSummary ("Network Summary"): the network's totals, worked out when the form opens; OK
// closes it and Prnter prints it. Figures from flows not simulated since the network was opened
// or changed say so, with a button that simulates.
#pragma once

#include <QDialog>
#include <functional>

#include "core/workspace.h"

class QGridLayout;

namespace galeris {

class FrmSummary : public QDialog {
  Q_OBJECT
 public:
  FrmSummary(Workspace& ws, QWidget* parent = nullptr);

  // Works the sums out again and fills the labels.
  void Refresh();
  // Prnter: the owner prints the form (a print dialog on the desktop).
  void OnPrint(std::function<void(QWidget&)> print) { print_ = std::move(print); }
  // CmdSimulate: the owner runs the airflow simulation; the figures are then worked out again.
  void OnSimulate(std::function<void()> simulate) { simulate_ = std::move(simulate); }

 private:
  Workspace& ws_;
  QGridLayout* grid_;
  QWidget* unsolved_;
  std::function<void(QWidget&)> print_;
  std::function<void()> simulate_;
};

}  // namespace galeris
