// The shared in-place cell editor.
#include "editors/grid_edit.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace galeris {
namespace {

class GridEditDelegate : public QStyledItemDelegate {
 public:
  explicit GridEditDelegate(QAbstractItemView* view) : QStyledItemDelegate(view), view_(view) {}

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(object, event);
    int down = 0, right = 0;
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Down:
        down = 1;
        break;
      case Qt::Key_Up:
        down = -1;
        break;
      case Qt::Key_Tab:
        right = 1;
        break;
      default:
        return QStyledItemDelegate::eventFilter(object, event);
    }
    auto* editor = static_cast<QWidget*>(object);
    const QModelIndex at = view_->currentIndex();
    emit commitData(editor);
    emit closeEditor(editor, QAbstractItemDelegate::NoHint);
    const QModelIndex next = at.sibling(at.row() + down, at.column() + right);
    if (next.isValid()) view_->setCurrentIndex(next);
    return true;
  }

 private:
  QAbstractItemView* view_;
};

}  // namespace

void InstallGridEdit(QAbstractItemView* view) {
  view->setItemDelegate(new GridEditDelegate(view));
}

void CommitOpenEditor(QAbstractItemView* view) {
  const QWidget* focus = QApplication::focusWidget();
  if (focus && view->viewport()->isAncestorOf(focus)) view->setFocus();
}

}  // namespace galeris
