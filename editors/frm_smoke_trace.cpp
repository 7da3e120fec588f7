// frmSmokeTrace: the sourcing display's legend and buttons.
#include "editors/frm_smoke_trace.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "simulate/contaminants.h"
#include "view/drawing.h"

namespace galeris {

FrmSmokeTrace::FrmSmokeTrace(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSmokeTrace");
  setWindowTitle("Smoke Source");
  setModal(false);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  auto* layout = new QVBoxLayout(this);
  auto* legend = new QGroupBox("Legend", this);
  auto* grid = new QGridLayout(legend);
  const std::pair<const char*, int> states[] = {{"Smoke", TraceState::Smoke},
                                                {"Potential", TraceState::Potential},
                                                {"Clear", TraceState::Clear}};
  int row = 0;
  for (auto [caption, state] : states) {
    auto* swatch = new QLabel(legend);
    swatch->setFixedSize(24, 16);
    swatch->setAutoFillBackground(true);
    const Colour c = kContaminantColours[state];
    QPalette colours = swatch->palette();
    colours.setColor(QPalette::Window, QColor(RedOf(c), GreenOf(c), BlueOf(c)));
    swatch->setPalette(colours);
    grid->addWidget(swatch, row, 0);
    grid->addWidget(new QLabel(caption, legend), row++, 1);
  }
  layout->addWidget(legend);
  auto* pins = new QGroupBox("Report Pin", this);
  auto* pinRow = new QHBoxLayout(pins);
  optSmoke_ = new QRadioButton("Smoke", pins);
  optSmoke_->setObjectName("OptPin(1)");
  optClear_ = new QRadioButton("Clear", pins);
  optClear_->setObjectName("OptPin(2)");
  optSmoke_->setChecked(true);
  pinRow->addWidget(optSmoke_);
  pinRow->addWidget(optClear_);
  layout->addWidget(pins);

  auto* buttons = new QHBoxLayout;
  cmdClearS_ = new QPushButton("Clear Pins", this);
  cmdClearS_->setObjectName("CmdClearS");
  cmdSim_ = new QPushButton("Clear Trace", this);
  cmdSim_->setObjectName("CmdSim");
  cmdExit_ = new QPushButton("Exit", this);
  cmdExit_->setObjectName("CmdExit");
  for (QPushButton* b : {cmdClearS_, cmdSim_, cmdExit_}) buttons->addWidget(b);
  layout->addLayout(buttons);

  connect(cmdClearS_, &QPushButton::clicked, this, [this] {
    if (!ws_.ui.AskYesNo("Confirm deletion of all report pins", "Delete smoke reports")) return;
    ClearSmokeSourcing(ws_.net);
    emit PinsCleared();
  });
  connect(cmdSim_, &QPushButton::clicked, this, [this] {
    ShowTraceShown(!traceShown_);
    emit TraceToggled(traceShown_);
  });
  connect(cmdExit_, &QPushButton::clicked, this, &QDialog::close);
  connect(optClear_, &QRadioButton::toggled, this, [this] { emit PinTypeChosen(PinType()); });
}

int FrmSmokeTrace::PinType() const {
  return optClear_->isChecked() ? ReportPin::Clear : ReportPin::Smoke;
}

void FrmSmokeTrace::ShowTraceShown(bool shown) {
  traceShown_ = shown;
  cmdSim_->setText(shown ? "Clear Trace" : "Show Traces");
}

void FrmSmokeTrace::done(int result) {
  QDialog::done(result);
  emit Closed();
}

}  // namespace galeris
