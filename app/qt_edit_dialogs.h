// The dialogs the editing tools open, shown as the desktop program's own windows.
#pragma once

#include "core/workspace.h"
#include "view/edit_dialogs.h"

class QWidget;

namespace galeris {

class QtEditDialogs : public EditDialogs {
 public:
  QtEditDialogs(Workspace& ws, QWidget* parent) : ws_(ws), parent_(parent) {}

  bool AirwayEdit(int mode, int airway) override;
  bool FanEdit(int airway) override;
  std::optional<WorldPoint> Coordinates(const WorldPoint& start) override;
  std::optional<NodeMove> MoveNodeTo(const WorldPoint& from) override;

 private:
  Workspace& ws_;
  QWidget* parent_;
};

}  // namespace galeris
