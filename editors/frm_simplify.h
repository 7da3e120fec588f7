// frmSimplify ("Simplify Network Filter"): the length and angle limits with their scroll bars,
// the likeness and selection checks, zero-flow removal and combined lengths; "Simplify !" runs
// SimplifyNetwork, "Exit" closes.
#pragma once

#include <QDialog>

#include "core/workspace.h"

class QCheckBox;
class QLineEdit;
class QScrollBar;

namespace galeris {

class FrmSimplify : public QDialog {
  Q_OBJECT
 public:
  FrmSimplify(Workspace& ws, QWidget* parent = nullptr);

  // CmdSimp: refuses a filter it cannot read, with the reason; otherwise simplifies.
  void Simplify();

 signals:
  // The store changed: the views and lists follow.
  void Simplified(int removed);

 private:
  QCheckBox* Check(const char* name, const char* caption, const char* tip);

  Workspace& ws_;
  QLineEdit* txtL_;
  QLineEdit* txtA_;
  QScrollBar* hsl_;
  QScrollBar* hsa_;
  QCheckBox* chkZero_;
  QCheckBox* checkK_;
  QCheckBox* checkS_;
  QCheckBox* checkR_;
  QCheckBox* checkSel_;
  QCheckBox* chkCombine_;
};

}  // namespace galeris
