// frmShock ("Shock Calculator"): adds up standard shock losses into one equivalent length.
#pragma once

#include <QDialog>
#include <array>
#include <optional>

#include "core/airway_values.h"
#include "core/workspace.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace galeris {

// Opens the calculator modally; the total in the display's length unit when the user pressed
// OK on a total above 0.
std::optional<double> ShowShock(Workspace& ws, QWidget* parent);

class FrmShock : public QDialog {
  Q_OBJECT

 public:
  FrmShock(Workspace& ws, QWidget* parent = nullptr);
  double ShockResult() const { return shockResult_; }

 protected:
  // A count box selects its text on getting focus, so a typed count replaces the old one.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Recompute();

  Workspace& ws_;
  double shockResult_ = 0;
  std::array<QCheckBox*, kShockLossCount> ChkShockType{};
  std::array<QLineEdit*, kShockLossCount> LblNumS{};
  QLabel* LblShockTotal = nullptr;
};

}  // namespace galeris
