#include "editors/frm_import.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "files/text_format.h"

namespace galeris {

FrmImport::FrmImport(Workspace& ws, std::function<QString()> chooseFile,
                     std::array<std::int16_t, 2> defaultLayers, QWidget* parent)
    : QDialog(parent), ws_(ws), chooseFile_(std::move(chooseFile)), defaultLayers_(defaultLayers) {
  setObjectName("frmImport");
  setWindowTitle("Import Data");
  auto* layout = new QVBoxLayout(this);
  merge_ = AddCheck("ChkMerge", "Merge Data", "Merge with existing data");
  levels_ = AddCheck("ChkRL", "Attempt to create RL Database",
                     "Find discrete levels to separate airways into");
  const QString retainTip = "Retain original drive resistances if set in txt file";
  retainDrive_ = AddCheck("ChkRDrive", "Retain Drive Resistances", retainTip);
  retainRaise_ = AddCheck("ChkRRaise", "Retain Raise Resistances", retainTip);
  commonSize_ = AddCheck("ChkSize", "Force common airway size",
                         "Make horizontal and vertical airways the same default size");
  for (QCheckBox* box : {merge_, levels_, retainDrive_, retainRaise_, commonSize_})
    layout->addWidget(box);

  auto* offsets = new QFormLayout;
  const char* axes[] = {"X", "Y", "Z"};
  for (int axis = 0; axis < 3; ++axis) {
    offset_[axis] = new QLineEdit("0", this);
    offset_[axis]->setObjectName(QString("Txt%1Offset").arg(axes[axis]));
    negate_[axis] = new QCheckBox(this);
    negate_[axis]->setObjectName(QString("Neg%1").arg(axes[axis]));
    auto* row = new QHBoxLayout;
    row->addWidget(offset_[axis]);
    row->addWidget(negate_[axis]);
    offsets->addRow(QString("%1 Offset").arg(axes[axis]), row);
  }
  layout->addLayout(offsets);

  message_ = new QLabel(this);
  message_->setObjectName("LblMessage");
  layout->addWidget(message_);

  auto* buttons = new QDialogButtonBox(this);
  QPushButton* import = buttons->addButton("Import", QDialogButtonBox::AcceptRole);
  import->setObjectName("Import");
  buttons->addButton(QDialogButtonBox::Cancel)->setObjectName("Cancel");
  layout->addWidget(buttons);
  connect(import, &QPushButton::clicked, this, [this] {
    if (RunImport()) accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QCheckBox* FrmImport::AddCheck(const char* name, const QString& caption, const QString& tip) {
  auto* box = new QCheckBox(caption, this);
  box->setObjectName(name);
  box->setToolTip(tip);
  return box;
}

ImportChoices FrmImport::Choices() const {
  ImportChoices c;
  c.Merge = merge_->isChecked();
  c.BuildLevels = levels_->isChecked();
  c.RetainDrive = retainDrive_->isChecked();
  c.RetainRaise = retainRaise_->isChecked();
  c.CommonSize = commonSize_->isChecked();
  for (int axis = 0; axis < 3; ++axis) {
    c.Offset[axis] = Val(offset_[axis]->text().toStdString());
    c.Negate[axis] = negate_[axis]->isChecked();
  }
  c.PrimaryLayer = defaultLayers_[0];
  c.SecondLayer = defaultLayers_[1];
  return c;
}

bool FrmImport::RunImport() {
  const QString path = chooseFile_ ? chooseFile_() : QString();
  if (path.isEmpty()) return false;
  message_->setText(kMsgLoadingData);
  outcome_ = ImportFile(ws_, path.toStdString(), Choices());
  message_->clear();
  return true;
}

}  // namespace galeris
