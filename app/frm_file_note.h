// frmFileNote: the note of the network as one multi-line text box, kept in step with the
// note that is saved with the file.
#pragma once

#include <QWidget>

#include "core/workspace.h"

class QPlainTextEdit;

namespace galeris {

class FrmFileNote : public QWidget {
  Q_OBJECT
 public:
  FrmFileNote(Workspace& ws, QWidget* parent = nullptr);

  // Shows the note as it stands in the network (after a load, a save or New).
  void Refresh();
  QString Text() const;

 private:
  void TextEdited();

  Workspace& ws_;
  QPlainTextEdit* text_;
  bool filling_ = false;
};

}  // namespace galeris
