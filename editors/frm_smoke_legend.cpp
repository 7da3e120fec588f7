// frmSmokeLegend: the slider, the legend boxes and the buttons of the spread display.
#include "editors/frm_smoke_legend.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSlider>
#include <QVBoxLayout>

#include "core/number_format.h"
#include "simulate/contaminants.h"
#include "view/drawing.h"

namespace galeris {
namespace {

QColor ColourOfBand(int band) {
  const Colour c = kContaminantColours[band];
  return QColor(RedOf(c), GreenOf(c), BlueOf(c));
}

}  // namespace

FrmSmokeLegend::FrmSmokeLegend(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSmokeLegend");
  setWindowTitle("Smoke Spread");
  setModal(false);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  auto* layout = new QVBoxLayout(this);
  slider_ = new QSlider(Qt::Horizontal, this);
  slider_->setObjectName("Slider");
  slider_->setPageStep(60);
  slider_->setSingleStep(10);
  lblTimer_ = new QLabel("0:00:00", this);
  lblTimer_->setObjectName("LblTimer");
  layout->addWidget(slider_);
  layout->addWidget(lblTimer_, 0, Qt::AlignHCenter);

  frmLegend_ = new QGroupBox("Legend", this);
  frmLegend_->setObjectName("frmLegend");
  auto* grid = new QGridLayout(frmLegend_);
  auto* digits = new QRegularExpressionValidator(QRegularExpression("[0-9]*"), this);
  for (int k = 0; k < 6; ++k) {
    auto* swatch = new QLabel(frmLegend_);
    swatch->setObjectName(QString("LegendBox(%1)").arg(k));
    swatch->setFixedSize(24, 16);
    swatch->setAutoFillBackground(true);
    QPalette colours = swatch->palette();
    colours.setColor(QPalette::Window, ColourOfBand(6 - k));
    swatch->setPalette(colours);
    percent_[k] = new QLineEdit(frmLegend_);
    percent_[k]->setObjectName(QString("Percent(%1)").arg(k));
    percent_[k]->setValidator(digits);
    percent_[k]->setMaximumWidth(70);
    percent_[k]->installEventFilter(this);
    grid->addWidget(swatch, k, 0);
    grid->addWidget(percent_[k], k, 1);
  }
  layout->addWidget(frmLegend_);

  auto* buttons = new QHBoxLayout;
  cmdClearS_ = new QPushButton("Clear Smoke", this);
  cmdClearS_->setObjectName("CmdClearS");
  cmdClearSources_ = new QPushButton("Clear Sources", this);
  cmdClearSources_->setObjectName("CmdClearSources");
  cmdExit_ = new QPushButton("Exit", this);
  cmdExit_->setObjectName("CmdExit");
  for (QPushButton* b : {cmdClearS_, cmdClearSources_, cmdExit_}) buttons->addWidget(b);
  layout->addLayout(buttons);

  connect(slider_, &QSlider::valueChanged, this, &FrmSmokeLegend::SliderMoved);
  connect(cmdClearS_, &QPushButton::clicked, this, [this] {
    if (spreadShown_) {
      ShowSpreadShown(false);
      emit ClearSmokeClicked();
    } else {
      ShowSpreadShown(true);
      emit ShowSmokeClicked();
    }
  });
  connect(cmdClearSources_, &QPushButton::clicked, this, [this] {
    if (!ws_.ui.AskYesNo("Clear contaminant sources ?", "CLEAR CONTAMINANTS")) return;
    ClearContaminantSources(ws_);
    emit SourcesCleared();
  });
  connect(cmdExit_, &QPushButton::clicked, this, [this] {
    emit ExitClicked();
    close();
  });
}

std::array<float, 6> FrmSmokeLegend::Legend() const {
  std::array<float, 6> legend{};
  for (int k = 0; k < 6; ++k) legend[k] = percent_[k]->text().toFloat();
  return legend;
}

void FrmSmokeLegend::SetLegend(const std::array<float, 6>& legend) {
  for (int k = 0; k < 6; ++k)
    percent_[k]->setText(QString::fromStdString(FormatNumber(legend[k], "0")));
  legendExists_ = true;
}

void FrmSmokeLegend::SetSliderRange(int seconds) {
  const QSignalBlocker quiet(slider_);
  slider_->setRange(0, seconds);
  slider_->setValue(seconds);
  lblTimer_->setText(QString::fromStdString(SliderTimeText(seconds)));
}

void FrmSmokeLegend::MoveSlider(int seconds) {
  slider_->setValue(seconds);
}

int FrmSmokeLegend::SliderValue() const {
  return slider_->value();
}

QString FrmSmokeLegend::TimerText() const {
  return lblTimer_->text();
}

void FrmSmokeLegend::ShowSpreadShown(bool shown) {
  spreadShown_ = shown;
  cmdClearS_->setText(shown ? "Clear Smoke" : "Show Smoke");
  frmLegend_->setEnabled(shown);
}

void FrmSmokeLegend::SliderMoved(int value) {
  lblTimer_->setText(QString::fromStdString(SliderTimeText(value)));
  emit TimeLimitChanged(static_cast<float>(std::max(1, value)));
}

bool FrmSmokeLegend::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) emit LegendEdited();
  return QDialog::eventFilter(watched, event);
}

// Exit, the close box and Escape all end here.
void FrmSmokeLegend::done(int result) {
  QDialog::done(result);
  emit Closed();
}

}  // namespace galeris
