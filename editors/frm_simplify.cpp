// frmSimplify: the filter's controls, read into SimplifyFilter for the engine.
#include "editors/frm_simplify.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "tools/simplify.h"

namespace galeris {
namespace {

constexpr int kStartLength = 100;
constexpr int kStartAngle = 10;

// A scroll bar that writes its value into its text box, on load and on each change.
QScrollBar* ValueBar(QWidget* parent, const char* name, int maximum, int value, QLineEdit* box) {
  auto* bar = new QScrollBar(Qt::Horizontal, parent);
  bar->setObjectName(name);
  bar->setRange(0, maximum);
  QObject::connect(bar, &QScrollBar::valueChanged, box,
                   [box](int v) { box->setText(QString::number(v)); });
  bar->setValue(value);
  box->setText(QString::number(value));
  return bar;
}

}  // namespace

QCheckBox* FrmSimplify::Check(const char* name, const char* caption, const char* tip) {
  auto* box = new QCheckBox(caption, this);
  box->setObjectName(name);
  box->setToolTip(tip);
  return box;
}

FrmSimplify::FrmSimplify(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSimplify");
  setWindowTitle("Simplify Network Filter");
  auto* layout = new QVBoxLayout(this);
  auto* limits = new QGridLayout;
  txtL_ = new QLineEdit(this);
  txtL_->setObjectName("TxtL");
  txtA_ = new QLineEdit(this);
  txtA_->setObjectName("TxtA");
  hsl_ = ValueBar(this, "HSL", kSimplifyLengthLimit, kStartLength, txtL_);
  hsa_ = ValueBar(this, "HSA", kSimplifyAngleLimit, kStartAngle, txtA_);
  limits->addWidget(new QLabel("Max Length", this), 0, 0);
  limits->addWidget(txtL_, 0, 1);
  limits->addWidget(hsl_, 0, 2);
  limits->addWidget(new QLabel("Max Angle", this), 1, 0);
  limits->addWidget(txtA_, 1, 1);
  limits->addWidget(hsa_, 1, 2);
  limits->setColumnStretch(2, 1);
  layout->addLayout(limits);

  chkZero_ = Check("ChkZero", "Remove airways with zero flow",
                   "Simplify will only be performed on selected airways");
  checkK_ = Check("CheckK", "Ensure wall types are the same",
                  "Only airways with same friction wall types will be filtered");
  checkS_ = Check("CheckS", "Ensure airway dimsensions are the same",
                  "Only airways with same dimensions will be filtered");
  checkR_ = Check("CheckR", "Ensure no resistance presets filtered",
                  "Airways will preset resistance will not be filtered");
  checkSel_ = Check("CheckSel", "Filter selected airways only",
                    "Simplify will only be performed on selected airways");
  chkCombine_ = Check("ChkCombine", "Use Combined Lengths",
                      "Combined lengths will be fixed into the new filtered airway");
  for (QCheckBox* box : {chkZero_, checkK_, checkS_, checkR_, checkSel_, chkCombine_})
    layout->addWidget(box);

  auto* buttons = new QHBoxLayout;
  auto* cmdSimp = new QPushButton("Simplify !", this);
  cmdSimp->setObjectName("CmdSimp");
  auto* cmdExit = new QPushButton("Exit", this);
  cmdExit->setObjectName("CmdExit");
  buttons->addStretch();
  buttons->addWidget(cmdSimp);
  buttons->addWidget(cmdExit);
  layout->addLayout(buttons);
  connect(cmdSimp, &QPushButton::clicked, this, &FrmSimplify::Simplify);
  connect(cmdExit, &QPushButton::clicked, this, &QDialog::accept);
}

void FrmSimplify::Simplify() {
  const SimplifyLimits limits =
      ReadSimplifyLimits(ws_.units, txtL_->text().toStdString(), txtA_->text().toStdString());
  if (!limits.Refusal.empty()) {
    ws_.ui.Inform(limits.Refusal);
    return;
  }
  SimplifyFilter filter;
  filter.MaxLength = *limits.MaxLength;
  filter.MaxAngle = *limits.MaxAngle;
  filter.RemoveZeroFlow = chkZero_->isChecked();
  filter.SameWallType = checkK_->isChecked();
  filter.SameDimensions = checkS_->isChecked();
  filter.NoResistancePresets = checkR_->isChecked();
  filter.SelectedOnly = checkSel_->isChecked();
  filter.CombineLengths = chkCombine_->isChecked();
  emit Simplified(SimplifyNetwork(ws_, filter));
}

}  // namespace galeris
