// frmSimForm: progress of a simulation run.
#include "app/frm_sim_form.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>

namespace galeris {

ProgBar::ProgBar(QWidget* parent) : QWidget(parent) {
  setObjectName("ProgBar");
  setMinimumSize(260, 22);
}

void ProgBar::SetPercent(int percent) {
  percent_ = std::clamp(percent, 0, 100);
  update();
}

void ProgBar::paintEvent(QPaintEvent*) {
  QPainter p(this);
  const int filled = width() * percent_ / 100;
  p.fillRect(0, 0, filled, height(), QColor(0, 0, 255));
  p.fillRect(filled, 0, width() - filled, height(), palette().color(QPalette::Window));
  p.setPen(palette().color(QPalette::Mid));
  p.drawRect(0, 0, width() - 1, height() - 1);
}

FrmSimForm::FrmSimForm(QWidget* parent) : QDialog(parent) {
  setObjectName("frmSimForm");
  setWindowTitle("Simulate");
  setModal(false);
  auto* grid = new QGridLayout(this);
  auto* label1 = new QLabel("Progress", this);
  label1->setObjectName("Label1");
  bar_ = new ProgBar(this);
  lbl1_ = new QLabel("Attempt Number :", this);
  lbl1_->setObjectName("Lbl1");
  lblItt_ = new QLabel(this);
  lblItt_->setObjectName("LblItt");
  lbl2_ = new QLabel("Maximum Error :", this);
  lbl2_->setObjectName("Lbl2");
  lblError_ = new QLabel(this);
  lblError_->setObjectName("LblError");
  command1_ = new QPushButton("Cancel", this);
  command1_->setObjectName("Command1");
  grid->addWidget(label1, 0, 0, 1, 2);
  grid->addWidget(bar_, 1, 0, 1, 2);
  grid->addWidget(lbl1_, 2, 0);
  grid->addWidget(lblItt_, 2, 1);
  grid->addWidget(lbl2_, 3, 0);
  grid->addWidget(lblError_, 3, 1);
  grid->addWidget(command1_, 4, 1, Qt::AlignRight);
  connect(command1_, &QPushButton::clicked, this, &FrmSimForm::PressCancel);
}

void FrmSimForm::Open(const QString& caption) {
  setWindowTitle(caption);
  bar_->SetPercent(0);
  lblItt_->clear();
  lblError_->clear();
  lbl1_->hide();
  lbl2_->hide();
  show();
  CentreOnScreen();
  raise();
  repaint();
}

void FrmSimForm::CentreOnScreen() {
  const QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
  if (!screen) return;
  QRect frame = frameGeometry();
  frame.moveCenter(screen->availableGeometry().center());
  move(frame.topLeft());
}

void FrmSimForm::SetPercent(int percent) {
  bar_->SetPercent(percent);
  bar_->repaint();
}

void FrmSimForm::SetLabels(const QString& attempt, const QString& error) {
  lblItt_->setText(attempt);
  lblError_->setText(error);
  lbl1_->show();
  lbl2_->show();
}

void FrmSimForm::PressCancel() {
  if (cancel_) cancel_();
  hide();
}

void FrmSimForm::changeEvent(QEvent* event) {
  // A run stopped from elsewhere (the error list's Cancel) closes this window when it is
  // brought back to the front.
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && pending_ && pending_())
    hide();
  QDialog::changeEvent(event);
}

void FrmSimForm::closeEvent(QCloseEvent* event) {
  event->ignore();
  PressCancel();
}

}  // namespace galeris
