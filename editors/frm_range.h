// frmRange, "Select Range": a band from the RL High of one level to the RL Low of another.
#pragma once

#include <QDialog>
#include <utility>

#include "core/workspace.h"

class QComboBox;

namespace galeris {

class FrmRange : public QDialog {
  Q_OBJECT
 public:
  // Both lists start at `currentLevel` (the list position of CmbRL, from 1).
  FrmRange(const Workspace& ws, int currentLevel, QWidget* parent = nullptr);
  // {LevelBottom, LevelTop} of the levels chosen (Command1).
  std::pair<float, float> Band() const;

 private:
  const Workspace& ws_;
  QComboBox* from_;
  QComboBox* to_;
};

}  // namespace galeris
