// The editing tools' dialogs: the airway editor, the fan picker and coordinate entry.
#include "app/qt_edit_dialogs.h"

#include "editors/frm_air_edit.h"
#include "editors/frm_coords.h"
#include "editors/frm_fan_edit.h"

namespace galeris {

bool QtEditDialogs::AirwayEdit(int mode, int airway) {
  redraw_();
  const bool changed = ShowAirEdit(ws_, mode, airway, parent_);
  if (!changed) redraw_();  // the highlight goes; a change redraws anyway
  return changed;
}

bool QtEditDialogs::FanEdit(int airway) {
  return ShowFanEdit(ws_, airway, parent_);
}

std::optional<WorldPoint> QtEditDialogs::Coordinates(const WorldPoint& start) {
  const auto typed = ShowCoords(ws_, start[0], start[1], start[2], parent_);
  if (!typed) return std::nullopt;
  return WorldPoint{(*typed)[0], (*typed)[1], (*typed)[2]};
}

}  // namespace galeris
