// frmAirInfo ("Airway Info"): the read-only report on one airway, and for a fan airway the
// fan chart with its duty point. The rows come from simulate/airway_info.h, the chart from
// view/fan_chart.h.
#pragma once

#include <QDialog>
#include <QWidget>

#include "core/workspace.h"
#include "simulate/airway_info.h"
#include "view/fan_chart.h"

class QLabel;

namespace galeris {

// Opens the report modally on an airway. Its Command2 goes on to the airway editor.
void ShowAirInfo(Workspace& ws, int airway, QWidget* parent);

// PicFan2: the chart of one fan arrangement, with the flow and pressure under the mouse.
class FanChartWidget : public QWidget {
  Q_OBJECT

 public:
  FanChartWidget(const Workspace& ws, int fan, int fans, bool series, const FanChartDuty& duty,
                 QWidget* parent = nullptr);

 signals:
  void Reading(const FanChartReading& reading);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  const Workspace& ws_;
  int fan_, fans_;
  bool series_;
  FanChartDuty duty_;
};

class FrmAirInfo : public QDialog {
  Q_OBJECT

 public:
  FrmAirInfo(Workspace& ws, int airway, QWidget* parent = nullptr);
  bool EditWanted() const { return editWanted_; }

 private:
  bool editWanted_ = false;
};

}  // namespace galeris
