// frmFanData ("Fan List"): the network's fan types, their ten curve points, the chart of the
// curves and the estimate of one pressure curve from the other. The grid's rules are core's
// (editors/logic/fan_grid.h); Cancel without saving puts the fans back as they were.
#pragma once

#include <QDialog>
#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "editors/logic/fan_grid.h"
#include "core/workspace.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace galeris {

// Opens the dialog modally; true when the fans of the network were changed.
bool ShowFanData(Workspace& ws, QWidget* parent);

// PicFan: the curves of one fan through the view's canvas chart.
class FanPicture : public QWidget {
  Q_OBJECT

 public:
  FanPicture(const Workspace& ws, QWidget* parent = nullptr);
  void ShowFan(int fan) {
    fan_ = fan;
    update();
  }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Workspace& ws_;
  int fan_ = 1;
};

class FrmFanData : public QDialog {
  Q_OBJECT

 public:
  explicit FrmFanData(Workspace& ws, QWidget* parent = nullptr);
  bool Saved() const { return saved_; }
  int CurrentFan() const { return currentFan_; }
  // ExitFan: the grid is stored, zero efficiencies mended, and the form closes.
  void ExitFan();

 protected:
  void reject() override;  // Cancel, Escape and the window's close box
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildControls();
  void BuildMenus();
  void FillFanList();
  void ShowFan(int fan);
  void ShowCurveColumns();
  bool StoreGrid();
  void GridEdited();
  void Estimate(bool total, bool all);
  void DeleteFan();
  void SaveAsDefault();
  void CopyCells();
  void PasteCells();
  void RestoreFans();

  Workspace& ws_;
  int currentFan_ = 1;
  bool loading_ = false;
  bool FanChanged = false;
  bool saved_ = false;
  FanCurveChecks checks_;
  // The fans as they were when the form opened, for a Cancel that does not save.
  std::vector<std::string> oldName_;
  std::vector<float> oldDiameter_;
  decltype(Network::CurveQ) oldQ_;
  decltype(Network::CurveP) oldP_;
  decltype(Network::CurveEff) oldEff_;

  QListWidget* FanList;
  QLineEdit *TxtFanName, *TxtOutDiam;
  QLabel* LblDiamUnit;
  QCheckBox *ChkStatic, *ChkTotal, *ChkEff;
  QTableWidget* Spreadsheet;
  FanPicture* PicFan;
  QPushButton *ExitFanButton, *CancelButton, *Command2;
};

}  // namespace galeris
