// frmFanEdit ("Fan Edit"): the short dialog that puts a fan on an airway from the view. Its
// OK is core's CommitFanEdit.
#pragma once

#include <QDialog>

#include "editors/logic/fan_edit.h"
#include "core/workspace.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QScrollBar;

namespace galeris {

// Opens the dialog modally on an airway; true when the airway was changed.
bool ShowFanEdit(Workspace& ws, int airway, QWidget* parent);

class FrmFanEdit : public QDialog {
  Q_OBJECT

 public:
  FrmFanEdit(Workspace& ws, int airway, QWidget* parent = nullptr);
  bool Committed() const { return committed_; }

 private:
  void CurveTypeChosen(int type);
  void Commit();

  Workspace& ws_;
  int airway_;
  FanEditFields fields_;
  bool committed_ = false;
  QComboBox* FanCombo2;
  QRadioButton *OptSer2, *OptPar2;
  QLineEdit* TxtFanN;
  QScrollBar* VSF;
  QRadioButton* OptCurveType[3];
  QLineEdit* TxtVPart;
  QLabel* LblCPart;
};

}  // namespace galeris
