// The dialogs the editing tools open, shown as the desktop program's own windows.
#pragma once

#include <functional>

#include "core/workspace.h"
#include "view/edit_dialogs.h"

class QWidget;

namespace galeris {

class QtEditDialogs : public EditDialogs {
 public:
  // redraw shows the windows again: the edited airway highlighted while the editor is open.
  QtEditDialogs(Workspace& ws, QWidget* parent, std::function<void()> redraw)
      : ws_(ws), parent_(parent), redraw_(std::move(redraw)) {}

  bool AirwayEdit(int mode, int airway) override;
  bool FanEdit(int airway) override;
  std::optional<WorldPoint> Coordinates(const WorldPoint& start) override;
  std::optional<NodeMove> MoveNodeTo(const WorldPoint& from) override;

 private:
  Workspace& ws_;
  QWidget* parent_;
  std::function<void()> redraw_;
};

}  // namespace galeris
