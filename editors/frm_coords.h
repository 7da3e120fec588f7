// frmCoords ("Coordinate Entry"): a point typed while an airway is drawn or an end is moved.
// The reading and checking of the boxes is core's ReadCoordEntry.
#pragma once

#include <QDialog>
#include <array>
#include <optional>

#include "editors/logic/coord_entry.h"
#include "core/workspace.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;

namespace galeris {

// Opens the dialog modally on a point (SI); the typed point in SI, nothing on Cancel or on
// a refused entry. For a node being moved it offers "Make a copy", returned in `copy`.
std::optional<std::array<double, 3>> ShowCoords(Workspace& ws, const std::array<double, 3>& point,
                                                QWidget* parent, bool* copy = nullptr);

class FrmCoords : public QDialog {
  Q_OBJECT

 public:
  // `moveNode`: the dialog moves a node, and "Make a copy" is offered.
  FrmCoords(Workspace& ws, const std::array<double, 3>& point, bool moveNode = false,
            QWidget* parent = nullptr);
  const std::optional<std::array<double, 3>>& EntryPoint() const { return entryPoint_; }
  bool CopyPoint() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Accept();

  Workspace& ws_;
  std::optional<std::array<double, 3>> entryPoint_;
  std::array<QLineEdit*, 3> absolute_{};  // TxtX, TxtY, TxtZ
  std::array<QLineEdit*, 3> relative_{};  // TxtdX, TxtdY, TxtdZ
  QGroupBox* relativeGroup_ = nullptr;
  QComboBox* CmbRL = nullptr;
  QCheckBox* ChkCopy = nullptr;
};

}  // namespace galeris
