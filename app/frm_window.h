// frmWindow: one view window of the network inside the frame's MDI area.
#pragma once

#include <QWidget>

#include "core/workspace.h"

namespace galeris {

class FrmWindow : public QWidget {
  Q_OBJECT
 public:
  FrmWindow(Workspace& ws, QWidget* parent = nullptr);
  // Rebuilds the projection and repaints.
  void Redraw();

 private:
  Workspace& ws_;
};

}  // namespace galeris
