// The name lists.
#include "editors/frm_list_air_names.h"

#include <QListWidget>
#include <QVBoxLayout>

namespace galeris {

NameListForm::NameListForm(const QString& objectName, const QString& title, QWidget* parent)
    : QDialog(parent) {
  setObjectName(objectName);
  setWindowTitle(title);
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName("List1");
  layout->addWidget(list_);
  connect(list_, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { emit NamePicked(item->text().toUpper()); });
}

void NameListForm::SetNames(const std::vector<std::string>& names) {
  list_->clear();
  for (const std::string& name : names) list_->addItem(QString::fromStdString(name));
}

FrmListAirNames::FrmListAirNames(QWidget* parent)
    : NameListForm("frmListAirNames", "Branch Names", parent) {}

}  // namespace galeris
