// Printing and simplification on the frame: "Print Network..." with frmPrinter, the palette's
// "Print Screen ?", and the Tools menu's "Simplify" with frmSimplify.
#pragma once

#include <QObject>

#include "view/print_layout.h"

namespace galeris {

class FrmWindow;
class MainForm;
struct Workspace;

class PrintCommands : public QObject {
  Q_OBJECT
 public:
  // Adds "Print Network..." to the File menu and connects and enables mnuSimp.
  explicit PrintCommands(MainForm& form);

  // mnuPrintNetwork: frmPrinter over the current view.
  void ShowPrinter();
  // Palette button 22 after "Print Screen ?": the current view printed with the settings as
  // they stand; a "PDF file" print asks for its file first.
  void PrintScreen();
  // mnuSimp: frmSimplify, modal; the views follow each run.
  void ShowSimplify();

  PrintSettings& Settings() { return settings_; }

 private:
  // The settings' title and data name brought up to the network and the frame's data choice.
  void RefreshSettings();
  QString ChoosePdfFile();

  MainForm& form_;
  Workspace& ws_;
  PrintSettings settings_;
};

}  // namespace galeris
