// frmPrinter ("PRINT NETWORK"): the title line, the printer (the system's and "PDF file"), the
// paper size, the orientation and its picture, colour or black and white, the print scale and
// the copies. PrintIt prints the current view with PrintNetwork; CancelIt closes.
#pragma once

#include <QDialog>
#include <functional>

#include "core/workspace.h"
#include "view/print_layout.h"
#include "view/view_state.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QLineEdit;
class QRadioButton;

namespace galeris {

class FrmPrinter : public QDialog {
  Q_OBJECT
 public:
  // settings are read on opening and kept on printing; view is the window printed.
  FrmPrinter(Workspace& ws, const ViewState& view, PrintSettings& settings,
             QWidget* parent = nullptr);

  // Asks where a "PDF file" print goes; an empty answer cancels. Tests give a script.
  void SetPdfChooser(std::function<QString()> choose) { choosePdf_ = std::move(choose); }

  // TxtScale_LostFocus: a scale below the page's smallest goes back to it with the message.
  void CheckScale();
  // The smallest scale of the paper and orientation chosen now.
  std::int32_t SmallestScale() const;

 private:
  void Fill();
  void ReadControls();
  void ShowOrientation();
  void PrintItClicked();

  Workspace& ws_;
  const ViewState& view_;
  PrintSettings& settings_;
  std::function<QString()> choosePdf_;
  QLineEdit* txtTitle_;
  QComboBox* combo1_;
  QComboBox* printSize_;
  QRadioButton* optLandscape_;
  QRadioButton* optPortrait_;
  QFrame* shpLandscape_;
  QFrame* shpPortrait_;
  QCheckBox* chkColour_;
  QLineEdit* txtScale_;
  QLineEdit* txtCopies_;
  bool scaleTyped_ = false;
};

}  // namespace galeris
