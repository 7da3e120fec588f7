// frmFanData ("Fan List"): the network's fan types, their ten curve points, the chart of the
// curves and the estimate of one pressure curve from the other. The grid's rules are core's
// (editors/logic/fan_grid.h). What list clicks, estimates and deletes stored stays stored.
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
  bool StoreChanged() const { return storeChanged_; }
  int CurrentFan() const { return currentFan_; }
  // ExitFan: the grid is stored, zero efficiencies mended, and the form closes; a grid that
  // cannot be stored keeps the form open on its bad cell.
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
  // The grid into the fan slot; `quiet` while the user types: an unreadable cell then waits.
  bool StoreGrid(bool quiet = false);
  void GridEdited();
  void Estimate(bool total, bool all);
  void DeleteFan();
  void SaveAsDefault();
  void CopyCells();
  void PasteCells();
  void Close(bool saved);  // marks the network changed when the fans were

  Workspace& ws_;
  int currentFan_ = 1;
  bool loading_ = false;
  bool FanChanged = false;
  bool storeChanged_ = false;
  FanCurveChecks checks_;

  QListWidget* FanList;
  QLineEdit *TxtFanName, *TxtOutDiam;
  QLabel* LblDiamUnit;
  QCheckBox *ChkStatic, *ChkTotal, *ChkEff;
  QTableWidget* Spreadsheet;
  FanPicture* PicFan;
  QPushButton *ExitFanButton, *CancelButton, *Command2;
};

}  // namespace galeris
