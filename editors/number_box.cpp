#include "editors/number_box.h"

#include <QKeyEvent>

#include "core/number_format.h"

namespace galeris {
namespace {

class NumberEdit : public QLineEdit {
 public:
  NumberEdit(QWidget* parent, bool digitsOnly) : QLineEdit(parent), digitsOnly_(digitsOnly) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const QString text = event->text();
    const QChar separator = QChar(MachineDecimalSeparator());
    if (text == ".") {
      insert(separator);
      return;
    }
    if (digitsOnly_ && text.size() == 1 && text[0].isPrint() && !text[0].isDigit() &&
        text[0] != separator) {
      return;
    }
    QLineEdit::keyPressEvent(event);
  }

 private:
  bool digitsOnly_;
};

}  // namespace

QLineEdit* NumberBox(QWidget* parent, const QString& objectName, bool digitsOnly) {
  auto* box = new NumberEdit(parent, digitsOnly);
  box->setObjectName(objectName);
  return box;
}

}  // namespace galeris
