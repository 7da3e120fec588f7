// frmWindow: paints the network through the view's drawing passes, keeps the last picture so
// that overlays move without a redraw, and follows its size. Mouse, wheel and keys reach the
// view through the mouse tools (ViewMouse), which the frame attaches.
#include "app/frm_window.h"

#include <QCloseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>

#include "view/drawing.h"
#include "view/opened_view.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

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

// The draw lists live in the network and are shared by all windows, so a full redraw paints
// at once, from the lists it has just built.
void FrmWindow::RepaintNow() {
  Repaint(false);
  if (isVisible()) repaint();
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
  RepaintNow();
}

void FrmWindow::Fit() {
  CatchUpWithStore();
  BuildVisibleList(ws_, view_);
  ProjectNetwork(ws_, view_);
  FitNetwork(ws_, view_);
  fitted_ = ws_.net.BranchCount > 0;
  Announce();
  RepaintNow();
}

bool FrmWindow::OpenStartupView() {
  CatchUpWithStore();
  view_.PixelWidth = std::max(1, width());
  view_.PixelHeight = std::max(1, height());
  if (!LoadStartupView(ws_, view_)) return false;
  fitted_ = true;
  ShowCaption();
  Announce();
  Repaint(false);
  return true;
}

void FrmWindow::ShowOpenedNetwork() {
  ForgetShownNetwork(view_);
  if (!OpenStartupView()) {
    if (SpansSeveralLevels(ws_.net)) {
      CatchUpWithStore();
      ApplyView(QString::fromStdString(ws_.net.ViewName[kIsoViewSlot]));
      fitted_ = true;
    } else {
      Fit();
    }
  }
  setWindowTitle(QString::fromStdString(LevelCaption(ws_, view_)));
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
  ShowCaption();
  Repaint(false);
}

void FrmWindow::StepLevel(bool up) {
  galeris::StepLevel(ws_, view_, up);
  ShowCaption();
  Repaint(false);
}

void FrmWindow::ToggleLevels() {
  ToggleLevelMode(ws_, view_);
  ShowCaption();
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

void FrmWindow::ShowCaption() {
  const QString caption = QString::fromStdString(LevelCaption(ws_, view_));
  setWindowTitle(frozen_ ? "FROZEN " + caption : caption);
}

void FrmWindow::SetWindowNumber(int number) {
  view_.WindowNumber = std::clamp(number, 1, kMaxViews - kWindowSlotBase + 1);
  ShowCaption();
}

int FrmWindow::Slot() const {
  return kWindowSlotBase + std::max(0, view_.WindowNumber - 1);
}

void FrmWindow::StoreState() {
  if (view_.FollowsStoreLayers) ReadLayerMasks(ws_.net, view_);
  SaveViewSlot(ws_, view_, Slot());
}

void FrmWindow::RestoreState() {
  if (ws_.net.ViewValue[Slot()][5] == 0) return;  // nothing stored yet
  LoadViewSlot(ws_, view_, Slot());
  ResizeView(ws_, view_, std::max(1, width()), std::max(1, height()));
  Announce();
  Repaint(false);
}

void FrmWindow::TakeState(const ViewState& state) {
  const int number = view_.WindowNumber;
  const int pixelWidth = view_.PixelWidth, pixelHeight = view_.PixelHeight;
  view_ = state;
  view_.WindowNumber = number;
  view_.PixelWidth = pixelWidth;
  view_.PixelHeight = pixelHeight;
  view_.WindowOpen = true;
  view_.Minimised = false;
  view_.Moving = false;
  view_.FollowsStoreLayers = true;
  ShowCaption();
}

void FrmWindow::Activate() {
  // Only a window that kept layers of its own brings them back; one that has followed the
  // network all along (a new window) has nothing to give it.
  if (!view_.FollowsStoreLayers) ShowViewLayers(ws_.net, view_);
  view_.FollowsStoreLayers = true;
  Redraw();
}

void FrmWindow::Deactivate() {
  StoreState();
  view_.FollowsStoreLayers = false;
}

void FrmWindow::SetFrozen(bool frozen) {
  frozen_ = frozen;
  ShowCaption();
}

void FrmWindow::closeEvent(QCloseEvent* event) {
  if (closeGuard_ && !closeGuard_()) {
    event->ignore();
    return;
  }
  QWidget::closeEvent(event);
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
}

void FrmWindow::RepaintWireframe() {
  emit RotationChanged(QString::fromStdString(view_.StatusRotX),
                       QString::fromStdString(view_.StatusRotY));
  Repaint(true);
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

}  // namespace galeris
