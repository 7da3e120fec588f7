// The dispatcher's keys across the whole frame, through one filter on the application.
#include "app/frame_keys.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QToolBar>

namespace galeris {
namespace {

bool IsFunctionKey(ViewKey key) {
  return key >= ViewKey::F1 && key <= ViewKey::F12;
}

// A widget where the arrows, Home, Tab, Backspace and Escape edit or move within it.
bool EditsText(const QObject* widget) {
  return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
         qobject_cast<const QComboBox*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
         qobject_cast<const QPlainTextEdit*>(widget) ||
         qobject_cast<const QAbstractItemView*>(widget);
}

}  // namespace

ViewKey ViewKeyOfQt(int qtKey) {
  switch (qtKey) {
    case Qt::Key_Backspace:
      return ViewKey::Backspace;
    case Qt::Key_Tab:
      return ViewKey::Tab;
    case Qt::Key_Escape:
      return ViewKey::Escape;
    case Qt::Key_Home:
      return ViewKey::Home;
    case Qt::Key_Up:
      return ViewKey::Up;
    case Qt::Key_Down:
      return ViewKey::Down;
    default:
      if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return static_cast<ViewKey>(static_cast<int>(ViewKey::F1) + (qtKey - Qt::Key_F1));
      return ViewKey::Other;
  }
}

FrameKeys::FrameKeys(QWidget& frame, std::function<void()> anyKey,
                     std::function<void(ViewKey)> pressed)
    : QObject(&frame), frame_(frame), anyKey_(std::move(anyKey)), pressed_(std::move(pressed)) {
  qApp->installEventFilter(this);
}

FrameKeys::~FrameKeys() {
  qApp->removeEventFilter(this);
}

// The frame itself or one of its tool bars, floating or not; its dialogs are windows of their own.
bool FrameKeys::InFrame(QObject* watched) const {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr) return false;
  QWidget* window = widget->window();
  return window == &frame_ ||
         (qobject_cast<QToolBar*>(window) && window->parentWidget() == &frame_);
}

bool FrameKeys::Takes(QObject* watched, const QKeyEvent& key) const {
  const auto* widget = static_cast<const QWidget*>(watched);
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  const ViewKey viewKey = ViewKeyOfQt(key.key());
  if (CommandOfKey(viewKey).kind == KeyCommand::Kind::Ignore) return false;
  return IsFunctionKey(viewKey) || !EditsText(widget);
}

bool FrameKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) return false;
  if (!InFrame(watched)) return false;
  anyKey_();
  auto* key = static_cast<QKeyEvent*>(event);
  if (!Takes(watched, *key)) return false;
  // The menus give these keys no other meaning, but Tab would move the focus: the key is taken
  // here, so it comes back as a key press rather than a shortcut.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  pressed_(ViewKeyOfQt(key->key()));
  return true;
}

}  // namespace galeris
