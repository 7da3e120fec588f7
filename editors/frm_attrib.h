// frmAttrib, "Copy/Paste Attributes": which attributes the copy and paste tool carries.
#pragma once

#include "view/edit_dialogs.h"

class QWidget;

namespace galeris {

// Shows the check boxes filled from `chosen`; on OK they are stored back. False on Cancel.
bool ShowAttrib(AttributeChoice& chosen, QWidget* parent);

}  // namespace galeris
