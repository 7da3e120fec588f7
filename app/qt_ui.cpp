// The Qt backend of the UI port.
#include "app/qt_ui.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include "app/frm_sim_form.h"
#include "core/sim_run.h"

namespace galeris {

namespace {

QMessageBox::Icon ToQtIcon(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::Information:
      return QMessageBox::Information;
    case MsgIcon::Exclamation:
      return QMessageBox::Warning;
    case MsgIcon::Question:
      return QMessageBox::Question;
    case MsgIcon::Critical:
      return QMessageBox::Critical;
    case MsgIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ToQtButtons(MsgButtons buttons) {
  switch (buttons) {
    case MsgButtons::OK:
      return QMessageBox::Ok;
    case MsgButtons::OKCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

// Closing a box by its close box or Escape counts as its Cancel, or No where there is none.
MsgAnswer FromQtAnswer(int pressed, MsgButtons buttons) {
  switch (pressed) {
    case QMessageBox::Ok:
      return MsgAnswer::OK;
    case QMessageBox::Yes:
      return MsgAnswer::Yes;
    case QMessageBox::No:
      return MsgAnswer::No;
    case QMessageBox::Cancel:
      return MsgAnswer::Cancel;
    default:
      break;
  }
  if (buttons == MsgButtons::YesNo) return MsgAnswer::No;
  return buttons == MsgButtons::OK ? MsgAnswer::OK : MsgAnswer::Cancel;
}

}  // namespace

QtUi::QtUi(UiPort* boxes) : boxes_(boxes) {}

QtUi::~QtUi() {
  delete simForm_.data();
}

MsgAnswer QtUi::Message(const std::string& text, MsgButtons buttons, MsgIcon icon,
                        const std::string& title) {
  if (boxes_) return boxes_->Message(text, buttons, icon, title);
  // A box must be readable even while the busy pointer is up.
  const bool busy = busyDepth_ > 0;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  QMessageBox box(ToQtIcon(icon), QString::fromStdString(title), QString::fromStdString(text),
                  ToQtButtons(buttons), parent_);
  if (buttons == MsgButtons::YesNo) box.setEscapeButton(QMessageBox::No);
  const int pressed = box.exec();
  if (busy) QApplication::restoreOverrideCursor();
  return FromQtAnswer(pressed, buttons);
}

std::optional<std::string> QtUi::Input(const std::string& title, const std::string& prompt,
                                       const std::string& defaultText) {
  if (boxes_) return boxes_->Input(title, prompt, defaultText);
  bool ok = false;
  const QString answer =
      QInputDialog::getText(parent_, QString::fromStdString(title), QString::fromStdString(prompt),
                            QLineEdit::Normal, QString::fromStdString(defaultText), &ok);
  if (!ok) return std::nullopt;
  return answer.toStdString();
}

void QtUi::Yield() {
  if (boxes_) boxes_->Yield();
  QApplication::processEvents();
}

void QtUi::SetBusy(bool busy) {
  if (busy) {
    ++busyDepth_;
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else if (busyDepth_ > 0) {
    --busyDepth_;
    QApplication::restoreOverrideCursor();
  }
  if (boxes_) boxes_->SetBusy(busy);
}

FrmSimForm& QtUi::SimForm() {
  if (!simForm_) {
    simForm_ = new FrmSimForm(parent_);
    simForm_->OnCancel([this] {
      if (run_) run_->SimCancel = 255;
      if (afterCancel_) afterCancel_();
    });
    simForm_->CancelPendingTest([this] { return run_ && run_->SimCancel != 0; });
  }
  return *simForm_;
}

void QtUi::ShowProgress(const std::string& caption) {
  SimForm().Open(QString::fromStdString(caption));
  QApplication::processEvents();
}

void QtUi::SetProgressCaption(const std::string& caption) {
  SimForm().setWindowTitle(QString::fromStdString(caption));
}

void QtUi::SetProgress(int percent) {
  SimForm().SetPercent(percent);
}

void QtUi::SetProgressLabels(const std::string& attempt, const std::string& error) {
  SimForm().SetLabels(QString::fromStdString(attempt), QString::fromStdString(error));
}

void QtUi::HideProgress() {
  if (simForm_) simForm_->hide();
}

}  // namespace galeris
