// frmFanEdit: fan, count, arrangement and curve type of one airway.
#include "editors/frm_fan_edit.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include "editors/logic/airway_edit.h"
#include "files/lifecycle.h"

namespace galeris {
namespace {

constexpr int kMaxFans = 10;

}  // namespace

FrmFanEdit::FrmFanEdit(Workspace& ws, int airway, QWidget* parent)
    : QDialog(parent), ws_(ws), airway_(airway), fields_(LoadFanEdit(ws, airway)) {
  setObjectName("frmFanEdit");
  setWindowTitle("Fan Edit");
  FanCombo2 = new QComboBox(this);
  FanCombo2->setObjectName("FanCombo2");
  for (const FanRow& row : FanRows(ws.net))
    FanCombo2->addItem(QString::fromStdString(row.text), row.number);
  const int row = FanCombo2->findData(fields_.Fan);
  FanCombo2->setCurrentIndex(row >= 0 ? row : 0);
  OptSer2 = new QRadioButton("Series", this);
  OptSer2->setObjectName("OptSer2");
  OptPar2 = new QRadioButton("Parallel", this);
  OptPar2->setObjectName("OptPar2");
  (fields_.Series ? OptSer2 : OptPar2)->setChecked(true);
  TxtFanN = new QLineEdit(QString::fromStdString(fields_.FanN), this);
  TxtFanN->setObjectName("TxtFanN");
  VSF = new QScrollBar(Qt::Vertical, this);
  VSF->setObjectName("VSF");
  VSF->setRange(0, kMaxFans);
  VSF->setFixedHeight(40);
  VSF->setValue(std::clamp(kMaxFans - TxtFanN->text().toInt(), 0, kMaxFans));
  const char* captions[] = {"Static curve", "Total curve", "Combo curve"};
  for (int k = 0; k < 3; ++k) {
    OptCurveType[k] = new QRadioButton(captions[k], this);
    OptCurveType[k]->setObjectName(QString("OptCurveType(%1)").arg(k));
    connect(OptCurveType[k], &QRadioButton::clicked, this, [this, k] { CurveTypeChosen(k); });
  }
  auto* arrangement = new QButtonGroup(this);
  arrangement->addButton(OptSer2);
  arrangement->addButton(OptPar2);
  auto* curve = new QButtonGroup(this);
  for (QRadioButton* option : OptCurveType) curve->addButton(option);
  OptCurveType[fields_.CurveType]->setChecked(true);
  TxtVPart = new QLineEdit(QString::fromStdString(fields_.VPart), this);
  TxtVPart->setObjectName("TxtVPart");
  LblCPart = new QLabel("% of useful velocity pressure", this);
  LblCPart->setObjectName("LblCPart");
  TxtVPart->setVisible(fields_.CurveType == 2);
  LblCPart->setVisible(fields_.CurveType == 2);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("Command1");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Command2");

  auto* grid = new QGridLayout(this);
  grid->addWidget(FanCombo2, 0, 0, 1, 3);
  grid->addWidget(OptSer2, 1, 0);
  grid->addWidget(OptPar2, 1, 1);
  grid->addWidget(new QLabel("Number of fans", this), 2, 0);
  grid->addWidget(TxtFanN, 2, 1);
  grid->addWidget(VSF, 2, 2);
  for (int k = 0; k < 3; ++k) grid->addWidget(OptCurveType[k], 3 + k, 0, 1, 2);
  grid->addWidget(TxtVPart, 5, 1);
  grid->addWidget(LblCPart, 5, 2);
  grid->addWidget(ok, 6, 0);
  grid->addWidget(cancel, 6, 1);

  connect(VSF, &QScrollBar::valueChanged, this,
          [this](int value) { TxtFanN->setText(QString::number(kMaxFans - value)); });
  connect(FanCombo2, &QComboBox::activated, this, [this](int chosen) {
    if (chosen > 0 && TxtFanN->text().trimmed() == "0") TxtFanN->setText("1");
  });
  connect(ok, &QPushButton::clicked, this, &FrmFanEdit::Commit);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  if (!fields_.FanFound) ws_.ui.Inform(kMsgFanNotDetected);
}

void FrmFanEdit::CurveTypeChosen(int type) {
  TxtVPart->setVisible(type == 2);
  LblCPart->setVisible(type == 2);
  TxtVPart->setText(QString::number(CurvePartFor(type, ws_.defaults.DefaultCurveFraction)));
}

void FrmFanEdit::Commit() {
  FanEditFields f = fields_;
  f.Fan = FanNumberOfRow(FanCombo2->currentText().toStdString());
  f.Series = OptSer2->isChecked();
  f.FanN = TxtFanN->text().toStdString();
  for (int k = 0; k < 3; ++k)
    if (OptCurveType[k]->isChecked()) f.CurveType = k;
  f.VPart = TxtVPart->text().toStdString();
  if (const std::optional<std::string> error = CommitFanEdit(ws_, airway_, f)) {
    ws_.ui.Inform(*error);
    TxtFanN->setText(QString::fromStdString(fields_.FanN));
    TxtVPart->setText(QString::fromStdString(fields_.VPart));
    return;
  }
  committed_ = true;
  accept();
}

bool ShowFanEdit(Workspace& ws, int airway, QWidget* parent) {
  if (airway < 1 || airway > ws.net.BranchCount) return false;
  FrmFanEdit dialog(ws, airway, parent);
  dialog.exec();
  if (dialog.Committed()) MarkNetworkChanged(ws);
  return dialog.Committed();
}

}  // namespace galeris
