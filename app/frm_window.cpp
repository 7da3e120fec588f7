// frmWindow: paints the network through the view's drawing passes and turns window events into
// the view commands (resize, wheel zoom, drag rotation and pan).
#include "app/frm_window.h"

#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "view/drawing.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

constexpr float kWheelStep = 1.25f;   // one notch of the wheel
constexpr int kPowerZoomPause = 200;  // milliseconds between the steps of the power zoom

int ButtonOf(Qt::MouseButtons buttons) {
  if ((buttons & Qt::LeftButton) && (buttons & Qt::RightButton)) return MouseButtonOf::Both;
  if (buttons & Qt::LeftButton) return MouseButtonOf::Left;
  if (buttons & Qt::RightButton) return MouseButtonOf::Right;
  if (buttons & Qt::MiddleButton) return MouseButtonOf::Middle;
  return MouseButtonOf::None;
}

void EnsurePermanentViews(Network& net) {
  if (net.ViewName[1].empty()) MakePermanentViews(net);
}

}  // namespace

FrmWindow::FrmWindow(Workspace& ws, QWidget* parent)
    : QWidget(parent), ws_(ws), view_(MakeViewState(ws)) {
  setWindowTitle("Network");
  setMinimumSize(320, 240);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  EnsurePermanentViews(ws_.net);
  view_.PixelWidth = std::max(1, width());
  view_.PixelHeight = std::max(1, height());
  BuildVisibleList(ws_, view_);
}

void FrmWindow::Repaint(bool wireframeOnly) {
  wireframeOnly_ = wireframeOnly;
  pictureStale_ = true;
  update();
}

void FrmWindow::Announce() {
  SetScaleCaption(ws_, view_);
  emit CaptionChanged(QString::fromStdString(view_.FrameCaption));
  emit RotationChanged(QString::fromStdString(view_.StatusRotX),
                       QString::fromStdString(view_.StatusRotY));
}

// A load may have grown the store or emptied the view names since the last drawing.
void FrmWindow::CatchUpWithStore() {
  if (view_.LineAirway.size() < static_cast<std::size_t>(ws_.net.MaxAirways) + 1) {
    view_.LineAirway.assign(static_cast<std::size_t>(ws_.net.MaxAirways) + 1, 0);
  }
  EnsurePermanentViews(ws_.net);
}

void FrmWindow::Redraw() {
  CatchUpWithStore();
  // A window opened on an empty network fits the first airways that reach it.
  if (isVisible() && !fitted_ && ws_.net.BranchCount > 0) {
    Fit();
    return;
  }
  BuildVisibleList(ws_, view_);
  ProjectNetwork(ws_, view_);
  Announce();
  Repaint(false);
}

void FrmWindow::Fit() {
  CatchUpWithStore();
  BuildVisibleList(ws_, view_);
  ProjectNetwork(ws_, view_);
  FitNetwork(ws_, view_);
  fitted_ = ws_.net.BranchCount > 0;
  Announce();
  Repaint(false);
}

void FrmWindow::SetDataType(int code) {
  view_.DataTypeCode = static_cast<std::int16_t>(code);
  Repaint(false);
}

bool FrmWindow::ApplyView(const QString& name) {
  if (!ApplyNamedView(ws_, view_, name.toStdString())) return false;
  Announce();
  Repaint(false);
  return true;
}

int FrmWindow::SaveView() {
  return SaveNamedView(ws_, view_);
}

bool FrmWindow::DeleteView(int listPosition) {
  return DeleteNamedView(ws_, listPosition);
}

void FrmWindow::SetLevel(int listPosition) {
  SelectLevel(ws_, view_, listPosition);
  setWindowTitle(QString::fromStdString(LevelCaption(ws_, view_)));
  Repaint(false);
}

void FrmWindow::StepLevel(bool up) {
  galeris::StepLevel(ws_, view_, up);
  setWindowTitle(QString::fromStdString(LevelCaption(ws_, view_)));
  Repaint(false);
}

void FrmWindow::ToggleLevels() {
  ToggleLevelMode(ws_, view_);
  setWindowTitle(QString::fromStdString(LevelCaption(ws_, view_)));
  Repaint(false);
}

void FrmWindow::SetThreeD(bool on) {
  if (on) {
    view_.Is3D = 1;
    ProjectNetwork(ws_, view_);
    PivotToVisible(ws_, view_);
    ProjectNetwork(ws_, view_);
  } else {
    SetPlanView(ws_, view_);
  }
  Announce();
  Repaint(false);
}

void FrmWindow::ToggleGrid() {
  view_.GridOn = !view_.GridOn;
  Repaint(false);
}

void FrmWindow::SetDisplayBits(std::int32_t bits) {
  view_.DisplayBits = bits;
  Redraw();
}

void FrmWindow::BeginRotation() {
  BeginRotator(ws_, view_);
  view_.Moving = true;
  Announce();
}

bool FrmWindow::RotateStep(float buttonX, float buttonY) {
  if (!RotatorTick(ws_, view_, buttonX, buttonY)) return false;
  emit RotationChanged(QString::fromStdString(view_.StatusRotX),
                       QString::fromStdString(view_.StatusRotY));
  Repaint(true);
  return true;
}

void FrmWindow::EndRotation() {
  view_.Moving = false;
  Announce();
  Repaint(false);
}

void FrmWindow::SetWindowNumber(int number) {
  view_.WindowNumber = std::clamp(number, 0, kMaxViews - kWindowSlotBase);
  setWindowTitle(QString::fromStdString(LevelCaption(ws_, view_)));
}

void FrmWindow::StoreState() {
  SaveViewSlot(ws_, view_, kWindowSlotBase + view_.WindowNumber);
}

void FrmWindow::RestoreState() {
  const int slot = kWindowSlotBase + view_.WindowNumber;
  if (ws_.net.ViewValue[slot][5] == 0) return;  // nothing stored yet
  LoadViewSlot(ws_, view_, slot);
  ResizeView(ws_, view_, std::max(1, width()), std::max(1, height()));
  Announce();
  Repaint(false);
}

QPointF FrmWindow::WindowPoint(QPointF pixel) const {
  const double x = view_.ScaleLeft + pixel.x() * view_.ScaleWidth / std::max(1, width());
  const double y = view_.ScaleTop + pixel.y() * view_.ScaleHeight / std::max(1, height());
  return QPointF(x * ws_.net.AxisSignX, y * ws_.net.AxisSignY);
}

void FrmWindow::paintEvent(QPaintEvent*) {
  view_.PixelWidth = std::max(1, width());
  view_.PixelHeight = std::max(1, height());
  if (pictureStale_ || picture_.size() != size()) {
    picture_ = QImage(size(), QImage::Format_RGB32);
    QPainter painter(&picture_);
    QPainterCanvas canvas(painter, size());
    if (wireframeOnly_) {
      RedrawWireframe(ws_, view_, canvas);
    } else {
      RedrawNetwork(ws_, view_, canvas);
    }
    wireframeOnly_ = false;
    pictureStale_ = false;
  }
  QPainter painter(this);
  painter.drawImage(0, 0, picture_);
  DrawOverlay(painter);
}

void FrmWindow::DrawOverlay(QPainter& painter) {
  if (tools_ == nullptr || tools_->Overlay.kind == OverlayShape::Kind::None) return;
  const OverlayShape shape = OverlayToDraw(ws_.net, *tools_);
  QPainterCanvas canvas(painter, size());
  canvas.SetScale(view_.ScaleLeft, view_.ScaleTop, view_.ScaleWidth, view_.ScaleHeight);
  if (shape.kind == OverlayShape::Kind::RubberBand) {
    canvas.Line(shape.X1, shape.Y1, shape.X2, shape.Y2, shape.colour, 1, LineStyle::Solid);
    return;
  }
  canvas.Line(shape.X1, shape.Y1, shape.X2, shape.Y1, shape.colour, 1, LineStyle::Dash);
  canvas.Line(shape.X2, shape.Y1, shape.X2, shape.Y2, shape.colour, 1, LineStyle::Dash);
  canvas.Line(shape.X2, shape.Y2, shape.X1, shape.Y2, shape.colour, 1, LineStyle::Dash);
  canvas.Line(shape.X1, shape.Y2, shape.X1, shape.Y1, shape.colour, 1, LineStyle::Dash);
}

MouseInput FrmWindow::ToolInput(QMouseEvent* event, int button) const {
  const QPointF at = WindowPoint(event->position());
  MouseInput in;
  in.X = static_cast<float>(at.x());
  in.Y = static_cast<float>(at.y());
  in.Button = button;
  in.Shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  in.Window = view_.WindowNumber;
  return in;
}

void FrmWindow::Carry(const ToolResponse& response, QPoint pixel) {
  if (!response.Unavailable.empty()) {
    emit ToolUnavailable(QString::fromStdString(response.Unavailable));
  }
  if (response.HideReport) emit ReportHidden();
  if (response.ShowReport) {
    QStringList rows;
    for (const std::string& row : response.ReportRows) rows << QString::fromStdString(row);
    emit ReportRequested(rows, pixel);
  }
  if (response.InfoAirway != 0) emit InfoRequested(response.InfoAirway);
  if (response.Redraw) {
    Redraw();
    if (response.CrossWindow) emit NetworkEdited();
  } else if (response.Wireframe) {
    emit RotationChanged(QString::fromStdString(view_.StatusRotX),
                         QString::fromStdString(view_.StatusRotY));
    Repaint(true);
  } else if (response.OverlayChanged) {
    update();
  }
  if (response.PowerZoom) QTimer::singleShot(kPowerZoomPause, this, [this] { PowerZoomTick(); });
}

void FrmWindow::PowerZoomTick() {
  if (tools_ == nullptr || tools_->ZoomMode != 5) return;
  Carry(PowerZoomStep(ws_, view_, *tools_), QPoint());
}

void FrmWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ResizeView(ws_, view_, event->size().width(), event->size().height());
  Repaint(false);
}

void FrmWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (fitted_) return;
  ResizeView(ws_, view_, std::max(1, width()), std::max(1, height()));
  Fit();
}

void FrmWindow::wheelEvent(QWheelEvent* event) {
  const int delta = event->angleDelta().y();
  if (tools_ != nullptr) {
    if (!WheelZoom(ws_, view_, delta)) return;
  } else {
    if (ws_.defaults.ScrollZoomOff != 0 || delta == 0) return;
    const float factor = delta > 0 ? 1 / kWheelStep : kWheelStep;
    SetZoom(ws_, view_, view_.ScaleWidth * factor, view_.ScaleHeight * factor);
  }
  Announce();
  Repaint(false);
}

void FrmWindow::mousePressEvent(QMouseEvent* event) {
  if (tools_ != nullptr) {
    Carry(MouseDown(ws_, view_, *tools_, ToolInput(event, ButtonOf(event->buttons()))),
          event->position().toPoint());
    return;
  }
  const QPointF at = WindowPoint(event->position());
  const Qt::MouseButtons buttons = event->buttons();
  if ((buttons & Qt::LeftButton) && (buttons & Qt::RightButton)) {
    panning_ = false;
    rotating_ = true;
    view_.Moving = true;
    drag_ = BeginDragRotation(ws_, view_, static_cast<float>(at.x()), static_cast<float>(at.y()));
  } else if (buttons & Qt::MiddleButton) {
    panning_ = true;
    pressPoint_ = at;
    pressPanX_ = view_.PanX;
    pressPanY_ = view_.PanY;
  }
}

void FrmWindow::mouseMoveEvent(QMouseEvent* event) {
  if (tools_ != nullptr) {
    Carry(MouseMove(ws_, view_, *tools_, ToolInput(event, ButtonOf(event->buttons()))),
          event->position().toPoint());
    return;
  }
  const QPointF at = WindowPoint(event->position());
  if (rotating_) {
    DragRotate(ws_, view_, drag_, static_cast<float>(at.x()), static_cast<float>(at.y()));
    emit RotationChanged(QString::fromStdString(view_.StatusRotX),
                         QString::fromStdString(view_.StatusRotY));
    Repaint(true);
  } else if (panning_) {
    const double dx = pressPoint_.x() - at.x(), dy = pressPoint_.y() - at.y();
    if (std::fabs(dx) > view_.ScaleWidth / 50 || std::fabs(dy) > view_.ScaleHeight / 50) {
      view_.Moving = true;
      MovePan(ws_.net, view_, static_cast<float>(dx + pressPanX_),
              static_cast<float>(dy + pressPanY_));
      ProjectNetwork(ws_, view_);
      Repaint(true);
    }
  }
}

void FrmWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (tools_ != nullptr) {
    // The release names the buttons of the press, the one let go included.
    Carry(MouseUp(ws_, view_, *tools_,
                  ToolInput(event, ButtonOf(event->buttons() | event->button()))),
          event->position().toPoint());
    return;
  }
  if (!rotating_ && !panning_) return;
  rotating_ = false;
  panning_ = false;
  view_.Moving = false;
  Announce();
  Repaint(false);
}

}  // namespace galeris
