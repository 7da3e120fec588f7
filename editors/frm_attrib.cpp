// frmAttrib: one check box per attribute (ChkAttrib), "Deselect All" (Command3), OK and Cancel.
#include "editors/frm_attrib.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace galeris {
namespace {

constexpr const char* kCaptions[AttributeOf::Count] = {
    "Wall Type",       "Friction Factor", "Dimensions",         "Shock Value",
    "Resistance",      "Length",          "Fresh / Return Air", "Primary Layer",
    "Secondary Layer", "Display data"};

}  // namespace

FrmAttrib::FrmAttrib(AttributeChoice& chosen, QWidget* parent) : QDialog(parent), chosen_(chosen) {
  setObjectName("frmAttrib");
  setWindowTitle("Copy/Paste Attributes");
  auto* layout = new QVBoxLayout(this);
  for (int k = 0; k < AttributeOf::Count; ++k) {
    boxes_[k] = new QCheckBox(kCaptions[k], this);
    boxes_[k]->setObjectName(QString("ChkAttrib(%1)").arg(k));
    layout->addWidget(boxes_[k]);
  }
  auto* deselect = new QPushButton("Deselect All", this);
  deselect->setObjectName("Command3");
  connect(deselect, &QPushButton::clicked, this, [this] {
    for (QCheckBox* box : boxes_) box->setChecked(false);
  });
  layout->addWidget(deselect);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    for (int k = 0; k < AttributeOf::Count; ++k) chosen_[k] = boxes_[k]->isChecked();
    accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

void FrmAttrib::Open() {
  for (int k = 0; k < AttributeOf::Count; ++k) boxes_[k]->setChecked(chosen_[k]);
  show();
  raise();
}

}  // namespace galeris
