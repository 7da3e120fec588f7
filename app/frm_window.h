// frmWindow: one view window of the network inside the frame's MDI area. It owns its view
// state, paints through the QPainter canvas, follows its size, and offers the view commands
// that the frame's menus and toolbar call.
#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

class FrmWindow : public QWidget {
  Q_OBJECT
 public:
  FrmWindow(Workspace& ws, QWidget* parent = nullptr);

  // Rebuilds the visible list and the projection and repaints.
  void Redraw();
  ViewState& View() { return view_; }
  const ViewState& View() const { return view_; }

  void Fit();                           // mnuFit, Home
  bool OpenStartupView();               // after an open: the file's start-up view, if any
  // After an open: what the previous network left goes, then the file's start-up view, else
  // the iso view of a mine of several levels, else the plan of all of it, fitted.
  void ShowOpenedNetwork();
  void SetDataType(int code);           // CmbDataType and CmbDataVal: group * 10 + item
  bool ApplyView(const QString& name);  // CmbView
  int SaveView();                       // mnuSaveView; the slot used, 0 for none
  bool DeleteView(int listPosition);    // mnuDelView
  void SetLevel(int listPosition);      // CmbRL, VsbRL
  void StepLevel(bool up);              // the Up and Down keys
  void ToggleLevels();                  // the Levels button
  void SetThreeD(bool on);              // the 2D / 3D button
  void ToggleGrid();
  void SetDisplayBits(std::int32_t bits);

  // The rotation button: press, each timer tick with the position held in the button, release.
  void BeginRotation();
  bool RotateStep(float buttonX, float buttonY);
  void EndRotation();

  // The window's place among the open windows, numbered from 1; its state is kept in view slot
  // 100 + position, the position being the number less 1.
  void SetWindowNumber(int number);
  int Slot() const;
  // Saves the state into the window's slot (at deactivation), or loads it back.
  void StoreState();
  void RestoreState();
  // A new window starts as a copy of another's view: angles, levels, layers, sizes, data.
  void TakeState(const ViewState& state);
  // Becoming the current window brings back its layers; leaving it keeps them in its slot.
  void Activate();
  void Deactivate();

  // A frozen window no longer follows the network's changes; its caption says "FROZEN ".
  bool Frozen() const { return frozen_; }
  void SetFrozen(bool frozen);
  // Asked before the window closes; false keeps it open.
  void SetCloseGuard(std::function<bool()> guard) { closeGuard_ = std::move(guard); }

  // A pixel of the window in the view's own coordinates, multiplied by the axis signs.
  QPointF WindowPoint(QPointF pixel) const;

  // The fast picture of a moving view (drag rotation, pan, power zoom): wireframe only.
  void RepaintWireframe();

 signals:
  // The frame's caption with the print scale, after every change of scale.
  void CaptionChanged(const QString& caption);
  // "RotX n" and "RotY n" for the status fields.
  void RotationChanged(const QString& rotX, const QString& rotY);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void CatchUpWithStore();
  void Repaint(bool wireframeOnly);
  void RepaintNow();
  void Announce();
  void ShowCaption();

  Workspace& ws_;
  ViewState view_;
  bool wireframeOnly_ = false;
  bool pictureStale_ = true;
  QImage picture_;  // the last drawing, kept so that an overlay moves without a redraw
  bool fitted_ = false;
  bool frozen_ = false;
  std::function<bool()> closeGuard_;
};

}  // namespace galeris
