#include "editors/frm_sel_level.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "editors/logic/level_list.h"

namespace galeris {

FrmSelLevel::FrmSelLevel(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSelLevel");
  setWindowTitle("Selected Levels");
  auto* layout = new QGridLayout(this);
  from_ = new QListWidget(this);
  from_->setObjectName("RLFrom");
  to_ = new QListWidget(this);
  to_->setObjectName("RLTo");
  for (int level = 1; level <= kMaxLevels && level < static_cast<int>(ws.net.RLName.size());
       ++level) {
    if (ws.net.RLName[level].empty()) continue;
    auto* item = new QListWidgetItem(QString::fromStdString(ws.net.RLName[level]), from_);
    item->setData(Qt::UserRole, level);
  }
  layout->addWidget(new QLabel("Available Levels", this), 0, 0);
  layout->addWidget(new QLabel("Selected Levels", this), 0, 1);
  layout->addWidget(from_, 1, 0);
  layout->addWidget(to_, 1, 1);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  auto* cancel = new QPushButton("CANCEL", this);
  cancel->setObjectName("Command1");
  layout->addWidget(ok, 2, 0);
  layout->addWidget(cancel, 2, 1);
  connect(from_, &QListWidget::itemDoubleClicked, this,
          [this](QListWidgetItem* item) { Choose(from_->row(item)); });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmSelLevel::Choose(int fromRow) {
  QListWidgetItem* item = from_->item(fromRow);
  if (!item || !AddSelectedLevel(ws_, chosen_, item->data(Qt::UserRole).toInt())) return;
  auto* moved = new QListWidgetItem(item->text(), to_);
  moved->setData(Qt::UserRole, item->data(Qt::UserRole));
  delete from_->takeItem(fromRow);
}

}  // namespace galeris
