// frmAttrib: one check box per attribute (ChkAttrib), "Deselect All" (Command3), OK and Cancel.
#include "editors/frm_attrib.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace galeris {
namespace {

constexpr const char* kCaptions[AttributeOf::Count] = {
    "Wall Type",          "Friction Factor", "Dimensions",      "Shock Value",
    "Resistance",         "Length",          "Fresh / Return Air", "Primary Layer",
    "Secondary Layer",    "Display data"};

}  // namespace

bool ShowAttrib(AttributeChoice& chosen, QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName("frmAttrib");
  dialog.setWindowTitle("Copy/Paste Attributes");
  auto* layout = new QVBoxLayout(&dialog);
  std::array<QCheckBox*, AttributeOf::Count> boxes{};
  for (int k = 0; k < AttributeOf::Count; ++k) {
    boxes[k] = new QCheckBox(kCaptions[k], &dialog);
    boxes[k]->setObjectName(QString("ChkAttrib(%1)").arg(k));
    boxes[k]->setChecked(chosen[k]);
    layout->addWidget(boxes[k]);
  }
  auto* deselect = new QPushButton("Deselect All", &dialog);
  deselect->setObjectName("Command3");
  QObject::connect(deselect, &QPushButton::clicked, &dialog, [&boxes] {
    for (QCheckBox* box : boxes) box->setChecked(false);
  });
  layout->addWidget(deselect);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addWidget(buttons);
  if (dialog.exec() != QDialog::Accepted) return false;
  for (int k = 0; k < AttributeOf::Count; ++k) chosen[k] = boxes[k]->isChecked();
  return true;
}

}  // namespace galeris
