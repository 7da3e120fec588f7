// frmAttrib, "Copy/Paste Attributes": which attributes the copy and paste tool carries. It stays
// open beside the view, so the user can change the choice between copies.
#pragma once

#include <QDialog>
#include <array>

#include "view/edit_dialogs.h"

class QCheckBox;

namespace galeris {

class FrmAttrib : public QDialog {
  Q_OBJECT
 public:
  // The choice is read when shown and written back on OK.
  FrmAttrib(AttributeChoice& chosen, QWidget* parent);
  // Refills the check boxes from the choice, then shows the form.
  void Open();

 private:
  AttributeChoice& chosen_;
  std::array<QCheckBox*, AttributeOf::Count> boxes_{};
};

}  // namespace galeris
