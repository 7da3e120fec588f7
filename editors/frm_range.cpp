#include "editors/frm_range.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>

#include "editors/logic/level_list.h"

namespace galeris {

FrmRange::FrmRange(const Workspace& ws, int currentLevel, QWidget* parent)
    : QDialog(parent), ws_(ws) {
  setObjectName("frmRange");
  setWindowTitle("Select Range");
  auto* layout = new QFormLayout(this);
  from_ = new QComboBox(this);
  from_->setObjectName("CmbRL1");
  to_ = new QComboBox(this);
  to_->setObjectName("CmbRL2");
  const int end = LevelTableEnd(ws.net);
  for (QComboBox* list : {from_, to_}) {
    for (int level = 1; level <= end; ++level)
      list->addItem(QString::fromStdString(ws.net.RLName[level]));
    list->setCurrentIndex(std::clamp(currentLevel - 1, 0, std::max(0, end - 1)));
  }
  layout->addRow("From", from_);
  layout->addRow("To", to_);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("Command1");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Command2");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addRow(buttons);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

std::pair<float, float> FrmRange::Band() const {
  return RangeBand(ws_.net, from_->currentIndex() + 1, to_->currentIndex() + 1);
}

}  // namespace galeris
