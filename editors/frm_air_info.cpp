// frmAirInfo: the report's labels and the fan chart painted through the view's canvas.
#include "editors/frm_air_info.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "editors/logic/airway_edit.h"
#include "editors/form_printing.h"
#include "editors/frm_air_edit.h"
#include "editors/leave_closes.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

QLabel* Named(const QString& name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  return label;
}

}  // namespace

FanChartWidget::FanChartWidget(const Workspace& ws, int fan, int fans, bool series,
                               const FanChartDuty& duty, QWidget* parent)
    : QWidget(parent), ws_(ws), fan_(fan), fans_(fans), series_(series), duty_(duty) {
  setObjectName("PicFan2");
  setMouseTracking(true);
  setMinimumSize(320, 280);
}

void FanChartWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterCanvas canvas(painter, size());
  DrawFanChart(canvas, ws_.net, ws_.units, fan_, fans_, series_, &duty_);
}

void FanChartWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const float x = kFanChartLeft + static_cast<float>(at.x()) * kFanChartWidth / width();
  const float y = kFanChartTop + static_cast<float>(at.y()) * kFanChartHeight / height();
  emit Reading(FanChartReadout(FanChartScaleOf(ws_.net, fan_, fans_, series_), x, y));
}

FrmAirInfo::FrmAirInfo(Workspace& ws, int airway, QWidget* parent) : QDialog(parent) {
  setObjectName("frmAirInfo");
  setWindowTitle("Airway Info");
  const AirInfoReport report = BuildAirInfo(ws, airway);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Named("LblAirName", Q(report.heading), this));
  auto* rows = new QGridLayout;
  for (int k = 0; k < kAirInfoRows; ++k) {
    const bool used = k < static_cast<int>(report.rows.size());
    QLabel* name = Named(QString("LblDName(%1)").arg(k), used ? Q(report.rows[k].name) : "", this);
    QLabel* data = Named(QString("LblData(%1)").arg(k), used ? Q(report.rows[k].text) : "", this);
    name->setVisible(used);
    data->setVisible(used);
    rows->addWidget(name, k, 0);
    rows->addWidget(data, k, 1);
  }
  layout->addLayout(rows);
  layout->addWidget(Named("LblCoord", Q(report.entryCoordinates), this));
  layout->addWidget(Named("LblCoord2", Q(report.exitCoordinates), this));
  if (report.fanChart) {
    const Network& net = ws.net;
    layout->addWidget(Named("LblFanName", Q(report.fanTitle), this));
    auto* chart =
        new FanChartWidget(ws, net.FanNumber[airway], net.NoOfFans[airway],
                           (net.BranchCode[airway] & Bit::FansInSeries) != 0,
                           {report.dutyQuantity, report.dutyPressure, report.dutyTotal}, this);
    layout->addWidget(chart, 1);
    auto* readout = new QHBoxLayout;
    QLabel* lblP = Named("LblP", "", this);
    QLabel* lblQ = Named("LblQ", "", this);
    readout->addWidget(lblQ);
    readout->addWidget(lblP);
    layout->addLayout(readout);
    connect(chart, &FanChartWidget::Reading, this, [&ws, lblP, lblQ](const FanChartReading& r) {
      lblP->setText(Q(FormatValue(ws.units, r.Pressure, Unit::Pressure, true)));
      lblQ->setText(Q(FormatValue(ws.units, r.Quantity, Unit::Quantity, true)));
    });
    layout->addWidget(Named("LblFanPower", "Fan Power " + Q(report.fanPower), this));
  }
  auto* buttons = new QHBoxLayout;
  auto* close = new QPushButton("Close", this);
  close->setObjectName("Command1");
  auto* edit = new QPushButton("Edit", this);
  edit->setObjectName("Command2");
  auto* print = new QPushButton("Print", this);
  print->setObjectName("Prnter");
  buttons->addWidget(close);
  buttons->addWidget(edit);
  buttons->addWidget(print);
  connect(print, &QPushButton::clicked, this, [this] { PrintForm(this); });
  layout->addLayout(buttons);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  connect(edit, &QPushButton::clicked, this, [this] {
    editWanted_ = true;
    accept();
  });
}

void ShowAirInfo(Workspace& ws, int airway, QWidget* parent) {
  if (airway < 1 || airway > ws.net.BranchCount) return;
  FrmAirInfo dialog(ws, airway, parent);
  RunUntilLeft(dialog, [&dialog] { dialog.accept(); });
  if (dialog.EditWanted()) ShowAirEdit(ws, AirEditMode::Single, airway, parent);
}

}  // namespace galeris
