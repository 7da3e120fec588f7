// frmRLBase, "Level List": the table of levels in a grid. RLOK and mnuSave validate it through
// ValidateLevels; RLCancel asks first when the grid has changes.
#pragma once

#include <QDialog>
#include <functional>

#include "editors/logic/level_list.h"
#include "core/workspace.h"

class QTableWidget;

namespace galeris {

class FrmRLBase : public QDialog {
  Q_OBJECT
 public:
  // `validated` runs after every ValidateLevels (refills CmbRL, applies the band, redraws).
  FrmRLBase(Workspace& ws, std::function<void()> validated, QWidget* parent = nullptr);

  LevelGrid Grid() const;
  QTableWidget& GridRL() const { return *grid_; }

  void Save();             // mnuSave
  void CopyData();         // "Copy  Ctrl+C": the selected cells
  void PasteData();        // "Paste  Ctrl+V": at the current cell
  void accept() override;  // RLOK
  void reject() override;  // RLCancel

 private:
  void Fill(const LevelGrid& grid);

  Workspace& ws_;
  std::function<void()> validated_;
  QTableWidget* grid_;
  bool filling_ = false;
  bool changed_ = false;
};

}  // namespace galeris
