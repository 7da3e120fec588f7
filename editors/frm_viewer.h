// frmViewer, "View Options": the detail mask, the data display mode, the flow band and how
// airways outside it are drawn, the colour scheme, and Declutter.
#pragma once

#include <QDialog>
#include <array>

#include "core/workspace.h"
#include "view/view_options.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace galeris {

class FrmViewer : public QDialog {
  Q_OBJECT
 public:
  FrmViewer(Workspace& ws, ViewState& view, QWidget* parent = nullptr);

  ViewOptions Options() const;  // the controls as they stand
  void ShowAll();               // Show
  void HideAll();               // Hide
  void accept() override;       // OK: the options go to the view; the window redraws

 private:
  void ToControls(const ViewOptions& options);

  Workspace& ws_;
  ViewState& view_;
  std::array<QCheckBox*, kViewerBoxes> chkViewer_{};
  std::array<QRadioButton*, 4> optType_{};
  std::array<QRadioButton*, 3> optDimmer_{};
  std::array<QRadioButton*, 2> colOpt_{};
  QLineEdit* txtSig_;
  QLineEdit* txtSigMin_;
  QCheckBox* chkDeclutter_;
};

}  // namespace galeris
