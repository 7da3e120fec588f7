// frmWindow: a view window.
#include "app/frm_window.h"

namespace galeris {

FrmWindow::FrmWindow(Workspace& ws, QWidget* parent) : QWidget(parent), ws_(ws) {
  setWindowTitle("Network");
  setMinimumSize(320, 240);
}

void FrmWindow::Redraw() { update(); }

}  // namespace galeris
