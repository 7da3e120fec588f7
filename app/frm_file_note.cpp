// frmFileNote: the network's note.
#include "app/frm_file_note.h"

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QVBoxLayout>

namespace galeris {

namespace {

// The note is stored with CR LF line ends; the box works with bare line feeds.
QString NoteForBox(const std::string& note) {
  QString text = QString::fromStdString(note);
  text.replace("\r\n", "\n");
  text.replace('\r', '\n');
  return text;
}

std::string NoteForStore(const QString& text) {
  QString note = text;
  note.replace("\n", "\r\n");
  return note.toStdString();
}

}  // namespace

FrmFileNote::FrmFileNote(Workspace& ws, QWidget* parent) : QWidget(parent, Qt::Tool), ws_(ws) {
  setObjectName("frmFileNote");
  setWindowTitle("File Memo");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName("TxtNote");
  layout->addWidget(text_);
  resize(380, 170);
  connect(text_, &QPlainTextEdit::textChanged, this, &FrmFileNote::TextEdited);
  Refresh();
}

void FrmFileNote::Refresh() {
  const QString note = NoteForBox(ws_.net.FileNote);
  if (note == text_->toPlainText()) return;
  filling_ = true;
  text_->setPlainText(note);
  text_->moveCursor(QTextCursor::End);
  filling_ = false;
}

QString FrmFileNote::Text() const {
  return text_->toPlainText();
}

void FrmFileNote::TextEdited() {
  if (filling_) return;
  ws_.net.FileNote = NoteForStore(text_->toPlainText());
  // A changed note is part of the network and must be offered for saving.
  ws_.net.NetworkSaved = 0;
}

}  // namespace galeris
