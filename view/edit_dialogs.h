// The dialogs the editing tools open in the middle of an action: the airway editor, the fan
// picker, coordinate entry and the choice of attributes to copy. The desktop program answers
// with its own windows; tests give scripted answers; with none set the tools that need a dialog
// do nothing.
#pragma once

#include <array>
#include <optional>

namespace galeris {

// The check boxes of the attribute copy, in the order of the dialog.
namespace AttributeOf {
inline constexpr int WallType = 0, FrictionFactor = 1, Dimensions = 2, ShockValue = 3,
                     Resistance = 4, Length = 5, FreshReturnAir = 6, PrimaryLayer = 7,
                     SecondaryLayer = 8, DisplayData = 9, Count = 10;
}
using AttributeChoice = std::array<bool, AttributeOf::Count>;

// A point typed in world units (SI), X, Y and Z.
using WorldPoint = std::array<double, 3>;

class EditDialogs {
 public:
  virtual ~EditDialogs() = default;
  // The airway editor: mode 1 one airway, 2 the airway copied to the defaults, 3 the selection.
  // True when the store changed.
  virtual bool AirwayEdit(int mode, int airway) = 0;
  // The fan picker on one airway; true when the airway changed.
  virtual bool FanEdit(int airway) = 0;
  // Coordinate entry, prefilled with a point; nothing on Cancel.
  virtual std::optional<WorldPoint> Coordinates(const WorldPoint& start) = 0;
  // Coordinate entry for a node being moved: where to, and whether to copy its airways there.
  struct NodeMove {
    WorldPoint to{};
    bool copy = false;
  };
  virtual std::optional<NodeMove> MoveNodeTo(const WorldPoint& from) {
    const std::optional<WorldPoint> to = Coordinates(from);
    if (!to) return std::nullopt;
    return NodeMove{*to, false};
  }
};

}  // namespace galeris
