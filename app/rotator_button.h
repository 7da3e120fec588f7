// Rotator: the rotation button of the frame. Held down, it turns the active view window by a
// timer (TimerRotate): the further the pointer from the button's centre, the faster the spin
// (left and right) and tilt (up and down). Releasing the right button leaves the view spinning.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "app/frm_window.h"

namespace galeris {

class RotatorButton : public QWidget {
  Q_OBJECT
 public:
  // activeWindow gives the view window to turn, or null when there is none.
  explicit RotatorButton(std::function<FrmWindow*()> activeWindow, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {50, 56}; }
  bool Turning() const { return timer_.isActive(); }
  // Stops the timer and ends the turn, as a palette click or a key does.
  void Stop() { Finish(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Tick();
  void Finish();
  // The pointer in the button's own 50 by 56 units, whatever its size on screen.
  void Keep(const QPointF& position);

  std::function<FrmWindow*()> activeWindow_;
  QPointer<FrmWindow> turning_;
  QTimer timer_;
  float x_ = 22, y_ = 28;
  bool inTick_ = false;
};

}  // namespace galeris
