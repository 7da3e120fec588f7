// frmAirEdit ("Airway Edit"): every stored property of one airway, or of all selected airways
// at once. The dialog only moves values between its controls and the engine's rules
// (editors/logic/airway_edit.h), which check and commit them.
#pragma once

#include <QDialog>
#include <QHash>

#include "editors/logic/airway_edit.h"
#include "core/workspace.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;

namespace galeris {

// Opens the editor on an airway (mode AirEditMode::Single, ToDefaults or Multiple) and returns
// when it closes; true when the store was changed. A click outside the editor, or leaving the
// program, commits as OK does; the close box cancels. Info opens the airway info report after
// the commit.
bool ShowAirEdit(Workspace& ws, int mode, int airway, QWidget* parent);

class FrmAirEdit : public QDialog {
  Q_OBJECT

 public:
  FrmAirEdit(Workspace& ws, int mode, int airway, QWidget* parent = nullptr);

  bool Committed() const { return committed_; }
  bool InfoWanted() const { return infoWanted_; }
  // OK: commits and closes, or shows why not and stays open.
  void CommitAndClose();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildControls();
  void LoadFields();
  void ShowShape();
  void ShowDriveColour();
  void SetMultipleMode();
  void ReadControls();
  bool Commit();
  void RestoreField(AirField field);
  void Touch(QWidget* widget);
  void EnterPressed(QWidget* widget);
  void SetPresetGroup(QCheckBox* fix, QComboBox* combo, QLabel* label, QLineEdit* text,
                      int presetIndex);
  void PresetChosen(QComboBox* combo);
  void LayerNamed(QComboBox* combo, int& editedRow);

  Workspace& ws_;
  int mode_;
  int airway_;
  AirEditFields fields_;
  bool built_ = false;  // the filter has every control to look at
  bool loading_ = false;
  bool committed_ = false;
  bool infoWanted_ = false;
  QHash<QWidget*, AirField> touchOf_;

  QLineEdit *TxtUnique, *TxtName, *LblFrom, *LblTo, *TxtComment;
  QLabel *LblWidth, *LblHeight, *LblCPart, *LblRemote;
  QLabel *LblRes, *LblWall, *LblShock;
  QLabel* LblUnit[8];
  QLabel* DriveShape[kShapeTypes];
  QLineEdit *TxtWidth, *txtHeight, *TxtFlow, *TxtPres, *TxtLength, *TxtFixRes, *TxtWall;
  QLineEdit *TxtShock, *TxtMultiAir, *TxtFanN, *TxtCPart;
  QCheckBox *CheckFix, *ChkPress, *CheckLength, *CheckDirection, *CheckService;
  QCheckBox *ChkFixRes, *ChkFixK, *ChkShock, *OptShowData, *ChkSurfaceEntry, *ChkSurfaceExit;
  QCheckBox* OptAirType[2];
  QComboBox *ResCombo, *WallCombo, *ShockCombo, *FanCombo2, *txtRemote, *CmbPrimary, *CmbSecond;
  QRadioButton *OptSer2, *OptPar2;
  QRadioButton* Optcurve[3];
  QScrollBar* VSF;
  QGroupBox* Frame2;
  QPushButton *OK, *cmdCancel, *ReCalc, *Info, *CmdShape, *CmdShock, *CmdOriface;
  QPushButton *CmdResetSekection, *Prnter;
  int primaryEdited_ = 0, secondEdited_ = 0;
};

}  // namespace galeris
