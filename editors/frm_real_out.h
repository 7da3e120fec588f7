// frmRealOut, "Realtime Output File": the file that the real-time output rewrites and its
// interval. CmdOK applies and closes.
#pragma once

#include <QDialog>
#include <functional>

#include "core/workspace.h"

class QLineEdit;

namespace galeris {

class FrmRealOut : public QDialog {
  Q_OBJECT
 public:
  // browse gets the filter as "Description|pattern|..." pairs and returns the chosen path,
  // empty when cancelled.
  using Browse = std::function<QString(const QString& filter)>;
  FrmRealOut(Workspace& ws, Browse browse, QWidget* parent = nullptr);

 private:
  Workspace& ws_;
  Browse browse_;
  QLineEdit* TxtRealOut = nullptr;
  QLineEdit* TxtTimer = nullptr;
};

}  // namespace galeris
