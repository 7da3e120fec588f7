// The rotation button and its timer.
#include "app/rotator_button.h"

#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include "app/frm_window.h"

namespace galeris {
namespace {

constexpr int kTickMilliseconds = 40;
constexpr float kButtonWidth = 50, kButtonHeight = 56;

}  // namespace

RotatorButton::RotatorButton(std::function<FrmWindow*()> activeWindow, QWidget* parent)
    : QWidget(parent), activeWindow_(std::move(activeWindow)) {
  setObjectName("Rotator");
  setToolTip("Rotate the view: hold the button and move the pointer from its centre");
  setFixedSize(sizeHint());
  setFocusPolicy(Qt::ClickFocus);
  timer_.setObjectName("TimerRotate");
  timer_.setInterval(kTickMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &RotatorButton::Tick);
}

void RotatorButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.fillRect(rect(), palette().button());
  p.setPen(QPen(palette().shadow().color(), 1));
  p.drawRect(rect().adjusted(0, 0, -1, -1));
  // A globe with its meridian and equator, and arrows round it.
  const QRectF globe(9, 12, 26, 26);
  p.setPen(QPen(QColor(0, 0, 128), 1.5));
  p.setBrush(QColor(170, 200, 255));
  p.drawEllipse(globe);
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(globe.adjusted(8, 0, -8, 0));
  p.drawLine(QPointF(globe.left(), globe.center().y()), QPointF(globe.right(), globe.center().y()));
  p.setPen(QPen(QColor(160, 0, 0), 1.5));
  p.drawArc(QRectF(4, 6, 36, 38), 30 * 16, 120 * 16);
  p.drawArc(QRectF(4, 6, 36, 38), 210 * 16, 120 * 16);
  p.drawLine(QPointF(40, 44), QPointF(46, 44));
  p.drawLine(QPointF(43, 41), QPointF(43, 47));
}

void RotatorButton::Keep(const QPointF& position) {
  x_ = static_cast<float>(position.x() * kButtonWidth / std::max(1, width()));
  y_ = static_cast<float>(position.y() * kButtonHeight / std::max(1, height()));
}

void RotatorButton::mousePressEvent(QMouseEvent* event) {
  Keep(event->position());
  if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton) return;
  if (!timer_.isActive()) {
    turning_ = activeWindow_ ? activeWindow_() : nullptr;
    if (!turning_) return;
    turning_->BeginRotation();
    timer_.start();
  }
}

void RotatorButton::mouseMoveEvent(QMouseEvent* event) {
  Keep(event->position());
}

void RotatorButton::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) {
    y_ = 28;  // no tilt: the view goes on spinning at the last speed until the next left click
    return;
  }
  if (event->button() == Qt::LeftButton) Finish();
}

void RotatorButton::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (timer_.isActive() && (QApplication::mouseButtons() & Qt::LeftButton)) Finish();
}

void RotatorButton::Tick() {
  if (inTick_ || QApplication::overrideCursor()) return;  // still drawing, or the program is busy
  if (!turning_) return Finish();
  inTick_ = true;
  turning_->RotateStep(x_, y_);
  inTick_ = false;
}

void RotatorButton::Finish() {
  timer_.stop();
  if (turning_) turning_->EndRotation();
  turning_ = nullptr;
}

}  // namespace galeris
