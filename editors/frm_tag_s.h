// frmTagS, "Viewing Layers": which primary and secondary layers are shown, their names, and how
// the airways of hidden layers are drawn. Unloading reads every control back.
#pragma once

#include <QDialog>
#include <array>

#include "core/workspace.h"
#include "view/layer_choice.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace galeris {

class FrmTagS : public QDialog {
  Q_OBJECT
 public:
  FrmTagS(Workspace& ws, ViewState& view, QWidget* parent = nullptr);

  void ShowAll();  // cmdSet
  void HideAll();  // CmdReset
  // Makes a label row current (a click in PLabel(i) or TagLabel(i)); primary when `primary`.
  void MakeCurrent(bool primary, int layer);
  void accept() override;  // OK: LayerDisplay and the show arrays from the controls
  void reject() override;  // Escape and the close box apply as OK does

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  LayerChoice FromControls() const;
  void ToControls(const LayerChoice& choice);
  void NameEdited(bool primary, int layer);
  void Highlight();

  Workspace& ws_;
  ViewState& view_;
  bool loading_ = false;
  int primaryCurrent_ = 1, secondCurrent_ = 1;
  std::array<QRadioButton*, 3> lineOpt_{};
  std::array<QCheckBox*, 5> details_{};  // ChkData, ChkBranch, ChkName, ChkArrow, ChkNode
  std::array<QLineEdit*, kPrimaryLayers + 1> pLabel_{};
  std::array<QCheckBox*, kPrimaryLayers + 1> tag1_{};
  std::array<QLineEdit*, kSecondLayers + 1> tagLabel_{};
  std::array<QCheckBox*, kSecondLayers + 1> tag2_{};
};

}  // namespace galeris
