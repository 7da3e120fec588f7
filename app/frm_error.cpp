// frmError: the error list of a simulation run.
#include "app/frm_error.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <cctype>

namespace galeris {

int AirwayNoOfErrorLine(const std::string& line) {
  std::size_t i = 0;
  while (i < line.size() && line[i] == ' ') ++i;
  long long number = 0;
  bool any = false;
  for (; i < line.size() && std::isdigit(static_cast<unsigned char>(line[i])); ++i) {
    number = number * 10 + (line[i] - '0');
    any = true;
    if (number > 2147483647LL) return 0;
  }
  return any ? static_cast<int>(number) : 0;
}

FrmError::FrmError(QWidget* parent) : QDialog(parent, Qt::Tool) {
  setObjectName("frmError");
  setWindowTitle("Sim Fail Error List");
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("Network Errors", this));
  list_ = new QListWidget(this);
  list_->setObjectName("Errorlist");
  layout->addWidget(list_);
  auto* buttons = new QHBoxLayout;
  command2_ = new QPushButton("Goto", this);
  command2_->setObjectName("Command2");
  command1_ = new QPushButton("Cancel", this);
  command1_->setObjectName("Command1");
  buttons->addWidget(command2_);
  buttons->addStretch();
  buttons->addWidget(command1_);
  layout->addLayout(buttons);
  resize(300, 260);
  connect(command2_, &QPushButton::clicked, this, &FrmError::PressGoto);
  connect(command1_, &QPushButton::clicked, this, &FrmError::PressCancel);
  connect(list_, &QListWidget::itemDoubleClicked, this, &FrmError::PressGoto);
}

void FrmError::ShowList(const std::vector<std::string>& lines, const QString& caption) {
  setWindowTitle(caption);
  list_->clear();
  for (const auto& line : lines) list_->addItem(QString::fromStdString(line));
  PlaceAtLowerRight();
  show();
  raise();
}

void FrmError::PlaceAtLowerRight() {
  const QWidget* frame = parentWidget();
  if (!frame) return;
  const QRect area = frame->geometry();
  move(area.right() - width() - 8, area.bottom() - height() - 8);
}

void FrmError::PressGoto() {
  const QListWidgetItem* item = list_->currentItem();
  if (!item) return;
  const int airwayNo = AirwayNoOfErrorLine(item->text().toStdString());
  if (airwayNo > 0 && goto_) goto_(airwayNo);
}

void FrmError::PressCancel() {
  if (cancel_) cancel_();
  hide();
}

void FrmError::closeEvent(QCloseEvent* event) {
  event->ignore();
  PressCancel();
}

}  // namespace galeris
