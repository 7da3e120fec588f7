// The editing tools' dialogs: the airway editor, the fan picker and coordinate entry.
#include "app/qt_edit_dialogs.h"

namespace galeris {

bool QtEditDialogs::AirwayEdit(int, int) {
  ws_.ui.Inform("The airway editor is not available in this version");
  return false;
}

bool QtEditDialogs::FanEdit(int) {
  ws_.ui.Inform("The fan editor is not available in this version");
  return false;
}

std::optional<WorldPoint> QtEditDialogs::Coordinates(const WorldPoint&) {
  (void)parent_;
  return std::nullopt;
}

}  // namespace galeris
