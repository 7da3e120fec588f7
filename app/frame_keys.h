// FrameKeys: the keys of the dispatcher, caught wherever in the frame the focus is: in a view
// window, on the palette, on the rotator or on any other part of the frame. Text boxes, lists
// and number boxes keep their own editing keys; the function keys reach the dispatcher from
// them too. A key a menu entry also holds (F5) stays the menu's.
#pragma once

#include <QObject>
#include <functional>

#include "view/commands.h"

class QKeyEvent;
class QWidget;

namespace galeris {

// The key of the dispatcher for a Qt key code; ViewKey::Other for the keys it ignores.
ViewKey ViewKeyOfQt(int qtKey);

class FrameKeys : public QObject {
 public:
  // frame is the main window whose keys these are; anyKey hears of every key pressed in it,
  // pressed gets each key of the dispatcher.
  FrameKeys(QWidget& frame, std::function<void()> anyKey, std::function<void(ViewKey)> pressed);
  ~FrameKeys() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool InFrame(QObject* watched) const;
  bool Takes(QObject* watched, const QKeyEvent& key) const;

  QWidget& frame_;
  std::function<void()> anyKey_;
  std::function<void(ViewKey)> pressed_;
};

}  // namespace galeris
