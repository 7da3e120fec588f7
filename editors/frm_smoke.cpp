// frmSmoke: fields and buttons; the spread itself is the engine's.
#include "editors/frm_smoke.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/number_format.h"

namespace galeris {
namespace {

QLineEdit* Field(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setReadOnly(true);
  field->setAlignment(Qt::AlignRight);
  return field;
}

}  // namespace

FrmSmoke::FrmSmoke(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSmoke");
  setWindowTitle("Smoke Simulation");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QGridLayout;
  txtItt_ = Field(this, "TxtItt");
  txtRate_ = Field(this, "TxtRate");
  txtSpread_ = Field(this, "TxtSpread");
  txtErr_ = Field(this, "TxtErr");
  const std::pair<const char*, QLineEdit*> rows[] = {{"Iteration", txtItt_},
                                                     {"Smoke Rate", txtRate_},
                                                     {"Spread", txtSpread_},
                                                     {"Convergence", txtErr_}};
  int column = 0;
  for (auto [caption, field] : rows) {
    fields->addWidget(new QLabel(caption, this), 0, column);
    fields->addWidget(field, 1, column++);
  }
  layout->addLayout(fields);

  auto* sources = new QGroupBox("Simulation Sources", this);
  sources->setObjectName("OptSimSource");
  auto* sourceRow = new QHBoxLayout(sources);
  optCumulative_ = new QRadioButton("Cummulative", sources);
  optCumulative_->setObjectName("OptSimSource(0)");
  optFixed_ = new QRadioButton("Fixed", sources);
  optFixed_->setObjectName("OptSimSource(1)");
  sourceRow->addWidget(optCumulative_);
  sourceRow->addWidget(optFixed_);
  // Shown, not read: the source mode is a setting of the options.
  (ws_.defaults.SmokeAddSource != 0 ? optFixed_ : optCumulative_)->setChecked(true);
  sources->setEnabled(false);
  layout->addWidget(sources);

  chkRetain_ = new QCheckBox("Retain Legend", this);
  chkRetain_->setObjectName("ChkRetain");
  layout->addWidget(chkRetain_);
  auto* buttons = new QHBoxLayout;
  ok_ = new QPushButton("Simulate", this);
  ok_->setObjectName("OK");
  ok_->setDefault(true);
  cancel_ = new QPushButton("Cancel", this);
  cancel_->setObjectName("Cancel");
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  layout->addLayout(buttons);
  connect(ok_, &QPushButton::clicked, this, &FrmSmoke::Simulate);
  connect(cancel_, &QPushButton::clicked, this, &FrmSmoke::reject);
}

void FrmSmoke::Simulate() {
  if (running_ || !isVisible()) return;
  running_ = true;
  ok_->setEnabled(false);
  emit SimulateClicked();
  running_ = false;
  ok_->setEnabled(true);
}

SpreadDisplay FrmSmoke::Display() {
  SpreadDisplay display;
  display.ShowSpread = [this](int round, int spread, double share) {
    txtItt_->setText(QString::number(round));
    txtSpread_->setText(QString::number(spread));
    txtRate_->setText(QString::fromStdString(FormatNumber(share, "0 %")));
  };
  txtErr_->setText("0");
  display.ShowConvergence = [this](double convergence) {
    txtErr_->setText(QString::fromStdString(FormatNumber(convergence, "0.0 %")));
  };
  return display;
}

bool FrmSmoke::RetainLegend() const {
  return chkRetain_->isChecked();
}

void FrmSmoke::SetRetainLegend(bool retain) {
  chkRetain_->setChecked(retain);
}

void FrmSmoke::reject() {
  emit CancelClicked();
  QDialog::reject();
}

}  // namespace galeris
