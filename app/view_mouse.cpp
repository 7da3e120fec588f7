// ViewMouse: the Qt side of the mouse tools. The window's events are caught before the window
// sees them, so the window keeps only its painting; the fence and the rubber band are painted by
// a see-through child laid over the window with the inverting pen, so the network picture
// under them is never redrawn for a band.
#include "app/view_mouse.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>
#include <algorithm>

#include "app/frm_window.h"
#include "view/qt/tool_cursors.h"

namespace galeris {

namespace {

constexpr int kPowerZoomPause = 200;  // milliseconds between passes of the power zoom

// The view window under a point of the screen, if any.
FrmWindow* ViewWindowAt(QPoint global) {
  for (QWidget* w = QApplication::widgetAt(global); w != nullptr; w = w->parentWidget()) {
    if (auto* window = qobject_cast<FrmWindow*>(w)) return window;
  }
  return nullptr;
}

}  // namespace

// The see-through layer that carries the fence and the rubber band.
class ViewOverlay : public QWidget {
 public:
  ViewOverlay(FrmWindow& window, const Workspace& ws, const ToolState& tools)
      : QWidget(&window), window_(window), ws_(ws), tools_(tools) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setGeometry(window.rect());
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const ViewState& view = window_.View();
    // The tool state is shared by all windows; only the window of the press shows the band.
    if (tools_.ToolSourceWindow != view.WindowNumber) return;
    const OverlayShape shape = OverlayToDraw(ws_.net, tools_);
    if (shape.kind == OverlayShape::Kind::None) return;
    const auto pixel = [&](float x, float y) {
      return QPointF((x - view.ScaleLeft) * width() / view.ScaleWidth,
                     (y - view.ScaleTop) * height() / view.ScaleHeight);
    };
    QPainter painter(this);
    // The inverting pen shows on any background, as a band must.
    painter.setCompositionMode(QPainter::RasterOp_NotSourceXorDestination);
    painter.setPen(
        QPen(QColor(RedOf(shape.colour), GreenOf(shape.colour), BlueOf(shape.colour)), 1));
    const QPointF a = pixel(shape.X1, shape.Y1), b = pixel(shape.X2, shape.Y2);
    if (shape.kind == OverlayShape::Kind::Fence) {
      painter.drawRect(QRectF(a, b).normalized());
    } else {
      painter.drawLine(a, b);
    }
  }

 private:
  FrmWindow& window_;
  const Workspace& ws_;
  const ToolState& tools_;
};

int ToolButtonOf(Qt::MouseButtons buttons) {
  if ((buttons & Qt::LeftButton) && (buttons & Qt::RightButton)) return MouseButtonOf::Both;
  if (buttons & Qt::LeftButton) return MouseButtonOf::Left;
  if (buttons & Qt::RightButton) return MouseButtonOf::Right;
  if (buttons & Qt::MiddleButton) return MouseButtonOf::Middle;
  return MouseButtonOf::None;
}

ViewMouse::ViewMouse(Workspace& ws, FrmWindow& window, ToolState& tools)
    : QObject(&window), ws_(ws), window_(window), tools_(tools) {
  overlay_ = new ViewOverlay(window, ws, tools);
  overlay_->show();
  powerZoom_.setParent(this);
  powerZoom_.setObjectName("PowerZoom");
  powerZoom_.setSingleShot(true);
  connect(&powerZoom_, &QTimer::timeout, this, &ViewMouse::PowerZoomTick);
  window.setMouseTracking(true);
  window.installEventFilter(this);
  RefreshCursor();
}

ViewMouse::~ViewMouse() {
  if (report_) report_->deleteLater();
}

void ViewMouse::RefreshCursor(int button) {
  const std::string name = SetToolCursor(tools_, button);
  if (name == cursorName_) return;
  cursorName_ = name;
  window_.setCursor(ToolCursor(name));
}

const QLabel* ViewMouse::ReportBox() const {
  return report_;
}

MouseInput ViewMouse::InputOf(QMouseEvent* event, int button) const {
  const QPointF at = window_.WindowPoint(event->position());
  MouseInput in;
  in.X = static_cast<float>(at.x());
  in.Y = static_cast<float>(at.y());
  in.Button = button;
  in.Shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  in.Window = window_.View().WindowNumber;
  return in;
}

bool ViewMouse::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      Press(static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseMove:
      Move(static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseButtonRelease:
      Release(static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseButtonDblClick:
      return true;
    case QEvent::Wheel:
      Wheel(static_cast<QWheelEvent*>(event));
      return true;
    case QEvent::Resize:
      overlay_->setGeometry(window_.rect());
      return false;
    case QEvent::FocusOut:
      // Losing the focus ends a rotation or a drag as a release would.
      if (tools_.MouseDownFlag == -1) {
        MouseInput in;
        in.Button = tools_.MouseButton;
        in.Window = window_.View().WindowNumber;
        in.X = tools_.MouseX;
        in.Y = tools_.MouseY;
        Apply(MouseUp(ws_, window_.View(), tools_, in));
      }
      return false;
    default:
      return false;
  }
}

void ViewMouse::Press(QMouseEvent* event) {
  const int button = ToolButtonOf(event->buttons());
  RefreshCursor(button);
  Apply(MouseDown(ws_, window_.View(), tools_, InputOf(event, button)));
}

void ViewMouse::Move(QMouseEvent* event) {
  const int button = ToolButtonOf(event->buttons());
  RefreshCursor(button);
  const MouseInput in = InputOf(event, button);
  const CoordinateText text = ShowCoordinates(ws_, window_.View(), tools_, in.X, in.Y);
  emit CoordinatesChanged(QString::fromStdString(text.X), QString::fromStdString(text.Y),
                          QString::fromStdString(text.Z));
  Apply(MouseMove(ws_, window_.View(), tools_, in));
}

void ViewMouse::Release(QMouseEvent* event) {
  const int button = ToolButtonOf(event->button());
  FrmWindow* target = ViewWindowAt(event->globalPosition().toPoint());
  if (target != nullptr && target != &window_) {
    // A drag carried into another window: that window receives the action.
    const QPointF at = target->WindowPoint(target->mapFromGlobal(event->globalPosition()));
    MouseInput in{static_cast<float>(at.x()), static_cast<float>(at.y()), button,
                  (event->modifiers() & Qt::ShiftModifier) != 0, target->View().WindowNumber};
    const ToolResponse response = MouseUp(ws_, target->View(), tools_, in);
    target->Redraw();
    window_.Redraw();
    overlay_->update();
    Apply(response);
  } else {
    Apply(MouseUp(ws_, window_.View(), tools_, InputOf(event, button)));
  }
  RefreshCursor(ToolButtonOf(event->buttons()));
}

void ViewMouse::Wheel(QWheelEvent* event) {
  if (WheelZoom(ws_, window_.View(), event->angleDelta().y())) window_.Redraw();
}

void ViewMouse::Apply(const ToolResponse& response) {
  if (response.HideReport && report_) report_->hide();
  if (response.ShowReport) ShowReport(response.ReportRows);
  if (response.OverlayChanged) overlay_->update();
  if (response.Redraw) {
    window_.Redraw();
    overlay_->update();
  } else if (response.Wireframe) {
    window_.RepaintWireframe();
  }
  // "Unlimited rotation and zoom speed" takes the pause out of the power zoom.
  if (response.PowerZoom) powerZoom_.start(ws_.defaults.UnlimitedSpeed != 0 ? 0 : kPowerZoomPause);
  if (response.InfoAirway != 0) emit InfoRequested(response.InfoAirway);
  if (response.Edited) emit NetworkEdited();
  if (!response.Unavailable.empty()) {
    emit StatusMessage(QString::fromStdString(response.Unavailable) +
                       ": not available in this version");
  }
}

void ViewMouse::PowerZoomTick() {
  if (ToolButtonOf(QApplication::mouseButtons()) == MouseButtonOf::None) return;
  Apply(PowerZoomStep(ws_, window_.View(), tools_));
}

void ViewMouse::ShowReport(const std::vector<std::string>& rows) {
  if (!report_) {
    report_ = new QLabel(window_.window(), Qt::ToolTip | Qt::FramelessWindowHint);
    report_->setAttribute(Qt::WA_ShowWithoutActivating);
    report_->setObjectName("AirwayReport");
    report_->setFrameShape(QFrame::Box);
    report_->setAutoFillBackground(true);
    report_->setMargin(4);
  }
  QString text;
  for (const std::string& row : rows) {
    if (!text.isEmpty()) text += '\n';
    text += QString::fromStdString(row);
  }
  report_->setText(text);
  report_->adjustSize();
  // At the mouse, but moved in where it would leave the frame.
  const QRect frame = window_.window()->frameGeometry();
  QPoint at = QCursor::pos();
  at.setX(
      std::clamp(at.x(), frame.left(), std::max(frame.left(), frame.right() - report_->width())));
  at.setY(
      std::clamp(at.y(), frame.top(), std::max(frame.top(), frame.bottom() - report_->height())));
  report_->move(at);
  report_->show();
}

}  // namespace galeris
