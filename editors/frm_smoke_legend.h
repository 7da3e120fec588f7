// frmSmokeLegend ("Smoke Spread"): the time slider that shows the spread as it stood at a
// moment, the six legend thresholds with their colours, and Clear Smoke / Show Smoke, Clear
// Sources and Exit.
#pragma once

#include <QDialog>
#include <array>

#include "core/workspace.h"

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;

namespace galeris {

class FrmSmokeLegend : public QDialog {
  Q_OBJECT
 public:
  FrmSmokeLegend(Workspace& ws, QWidget* parent = nullptr);

  // The Percent boxes, highest threshold first.
  std::array<float, 6> Legend() const;
  void SetLegend(const std::array<float, 6>& legend);
  // True once a legend has been shown.
  bool LegendExists() const { return legendExists_; }

  // SetSliderRange's result: the slider from 0 to `seconds`, standing at its end; the drawn
  // time limit is left as it is.
  void SetSliderRange(int seconds);
  // Moves the slider as a saved view asks, as if the user had moved it.
  void MoveSlider(int seconds);
  int SliderValue() const;
  QString TimerText() const;

  // "Clear Smoke" and "Show Smoke" of CmdClearS: the caption follows the display.
  void ShowSpreadShown(bool shown);

 signals:
  void TimeLimitChanged(float seconds);  // at least 1
  void LegendEdited();
  void ClearSmokeClicked();  // hide the spread
  void ShowSmokeClicked();   // run the spread again
  void SourcesCleared();
  void ExitClicked();
  void Closed();

 protected:
  void done(int result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SliderMoved(int value);

  Workspace& ws_;
  QSlider* slider_;
  QLabel* lblTimer_;
  QGroupBox* frmLegend_;
  std::array<QLineEdit*, 6> percent_{};
  QPushButton* cmdClearS_;
  QPushButton* cmdClearSources_;
  QPushButton* cmdExit_;
  bool legendExists_ = false;
  bool spreadShown_ = true;
};

}  // namespace galeris
