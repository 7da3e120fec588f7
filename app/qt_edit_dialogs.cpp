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
  return ShowCoords(ws_, start, parent_);
}

std::optional<EditDialogs::NodeMove> QtEditDialogs::MoveNodeTo(const WorldPoint& from) {
  bool copy = false;
  const std::optional<WorldPoint> to = ShowCoords(ws_, from, parent_, &copy);
  if (!to) return std::nullopt;
  return NodeMove{*to, copy};
}

}  // namespace galeris
