// frmSelLevel, "Selected Levels": up to six levels picked by double click from the named ones.
#pragma once

#include <QDialog>
#include <vector>

#include "core/workspace.h"

class QListWidget;

namespace galeris {

class FrmSelLevel : public QDialog {
  Q_OBJECT
 public:
  FrmSelLevel(Workspace& ws, QWidget* parent = nullptr);

  // Moves the level at this row of RLFrom to RLTo (a double click).
  void Choose(int fromRow);
  // SelectedLevels after OK: the levels of RLTo in list order.
  std::vector<std::int16_t> Selected() const { return chosen_; }
  bool SelectCancelled() const { return result() != QDialog::Accepted; }

 private:
  Workspace& ws_;
  QListWidget* from_;
  QListWidget* to_;
  std::vector<std::int16_t> chosen_;
};

}  // namespace galeris
