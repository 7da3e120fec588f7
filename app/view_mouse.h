// ViewMouse: the mouse tools attached to one view window. It watches the window's mouse, wheel
// and key events, turns pixels into the view's world units, runs the tools' state machine and
// carries out its answers: redraws, the fence and rubber band drawn over the picture, the power
// zoom's repeat, the airway report pop-up and the tool pointers.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <string>

#include "core/workspace.h"
#include "view/commands.h"
#include "view/tools.h"

class QLabel;
class QMouseEvent;
class QWheelEvent;
class QKeyEvent;
class QWidget;

namespace galeris {

class FrmWindow;
class ViewOverlay;

// Qt's held buttons as the tools count them: 1 left, 2 right, 3 both, 4 middle, 0 none.
int ToolButtonOf(Qt::MouseButtons buttons);

class ViewMouse : public QObject {
  Q_OBJECT
 public:
  // The tool state is shared by every window of the frame; the window must outlive this.
  ViewMouse(Workspace& ws, FrmWindow& window, ToolState& tools);
  ~ViewMouse() override;

  // Sets the window's pointer for the current tool (after a tool change).
  void RefreshCursor(int button = MouseButtonOf::None);
  // The report pop-up, for tests.
  const QLabel* ReportBox() const;

 signals:
  // The coordinate fields TxtX, TxtY and TxtZ.
  void CoordinatesChanged(const QString& x, const QString& y, const QString& z);
  // A line for the status text.
  void StatusMessage(const QString& text);
  // Tool 9's left release: open the airway info dialog on this airway position.
  void InfoRequested(int airway);
  // A tool changed the network.
  void NetworkEdited();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  MouseInput InputOf(QMouseEvent* event, int button) const;
  void Press(QMouseEvent* event);
  void Move(QMouseEvent* event);
  void Release(QMouseEvent* event);
  void Wheel(QWheelEvent* event);
  void Apply(const ToolResponse& response);
  void PowerZoomTick();
  void ShowReport(const std::vector<std::string>& rows);

  Workspace& ws_;
  FrmWindow& window_;
  ToolState& tools_;
  ViewOverlay* overlay_ = nullptr;
  QPointer<QLabel> report_;
  QTimer powerZoom_;
  std::string cursorName_ = "-";  // none set yet
};

}  // namespace galeris
