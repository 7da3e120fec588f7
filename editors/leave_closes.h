// The airway editor and the airway info report stand over the frame without blocking it: a
// click anywhere outside the dialog, or the activation moving to another program, is the user
// leaving it, and the dialog then commits or closes. The click itself is held back, so the
// frame is not used while the dialog is open.
#pragma once

#include <functional>

class QDialog;

namespace galeris {

// Shows the dialog and returns when it is finished, with its result. `left` runs each time the
// user leaves the dialog; it closes the dialog, or leaves it open (a refused commit).
int RunUntilLeft(QDialog& dialog, std::function<void()> left);

}  // namespace galeris
