// One filter on the application watches the clicks and the activation while the dialog runs.
#include "editors/leave_closes.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QTimer>

namespace galeris {
namespace {

class LeaveWatch : public QObject {
 public:
  LeaveWatch(QDialog& dialog, std::function<void()> left)
      : dialog_(dialog), left_(std::move(left)) {
    qApp->installEventFilter(this);
  }
  ~LeaveWatch() override { qApp->removeEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        if (!Outside(watched)) return false;
        pressHeld_ = true;
        return true;
      case QEvent::MouseButtonRelease:
        // The release of a held-back press is the click that leaves the dialog.
        if (!pressHeld_ || !Outside(watched)) return false;
        pressHeld_ = false;
        Leave();
        return true;
      case QEvent::ActivationChange:
        if (watched == &dialog_ && !dialog_.isActiveWindow())
          QTimer::singleShot(0, this, [this] {
            if (QApplication::activeWindow() == nullptr && dialog_.isVisible()) Leave();
          });
        return false;
      default:
        return false;
    }
  }

 private:
  // A widget of this program outside the dialog, while nothing modal or popped up stands over it.
  bool Outside(QObject* watched) const {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || !dialog_.isVisible()) return false;
    if (QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr)
      return false;
    for (QWidget* w = widget; w != nullptr; w = w->parentWidget())
      if (w == &dialog_) return false;
    return true;
  }

  void Leave() {
    QTimer::singleShot(0, this, [this] {
      if (dialog_.isVisible()) left_();
    });
  }

  QDialog& dialog_;
  std::function<void()> left_;
  bool pressHeld_ = false;
};

}  // namespace

int RunUntilLeft(QDialog& dialog, std::function<void()> left) {
  dialog.setWindowModality(Qt::NonModal);
  QEventLoop loop;
  QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
  LeaveWatch watch(dialog, std::move(left));
  dialog.show();
  dialog.raise();
  dialog.activateWindow();
  if (dialog.isVisible()) loop.exec();
  return dialog.result();
}

}  // namespace galeris
