// Drawing the network in the view: new airways, splits, moves of ends and of the selection,
// merges at a node and deletes. A node is only the place where airway ends coincide, so every
// routine here moves coordinates and leaves node identity to the location keys. Each action is
// one undo step: the touched airways are journalled before and after, and the action is closed
// only when the construction stands, so a refused one leaves the store and journal as they were.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"
#include "view/tools.h"
#include "view/view_state.h"

namespace galeris {

// Messages of the construction tools.
inline constexpr const char* kMsgSurfaceAirway = "Cannot construct an airway within the surface RL.";
inline constexpr const char* kMsgNeedLevels = "You will need to construct an RL database first!";
inline constexpr const char* kMsgPrimaryInvisible =
    "Primary layer is set to invisible - drawn airway may be invisible";
inline constexpr const char* kMsgSecondInvisible =
    "Secondary layer is set to invisible - drawn airway may be invisible";
inline constexpr const char* kMsgJoinNodes = "Are you sure you want to join to this node?";
inline constexpr const char* kMsgTooManyAttached = "Too many attached branches to delete node";
inline constexpr const char* kMsgFenceDelete =
    "Are you sure you want to delete all airways within the fence?";
inline constexpr const char* kMsgNoLength =
    "The two ends of an airway cannot be at the same point - the end stays where it was";

// One end of a new airway: the point, and what it was found on.
struct ConstructionPoint {
  Coord3 At{};
  int EndOf = 0;   // the airway whose end it snapped to, 0 for none
  int OnBody = 0;  // the airway whose body it lies on (split there), 0 for none
  std::string Name;  // the node's name at a snapped end
};

// Builds the airway from start to end with the defaults of a new airway, splitting the airways
// the ends lie on. Returns its position, 0 when refused (after the message).
int BuildAirway(Workspace& ws, const ViewState& view, EditState& edit,
                const ConstructionPoint& start, const ConstructionPoint& end);

// Tool 1's release: finds the end point under the mouse (or asks for it with the right
// button) and builds the airway from the press. True when the network changed.
bool FinishAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);

// Cuts the airway in two at the point; the second part is new at the end of the store and is
// returned (0 when the store is full). Journals both parts; the caller closes the action.
int SplitAirway(Workspace& ws, const Coord3& at, int airway);

// Tool 2's release. True when the network changed.
bool MoveAirwayEnd(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
// Moves every end at the node `from` to `to`, journalled. False when it would leave an airway
// with both ends at one point: nothing is moved then.
bool MoveNode(Workspace& ws, const Coord3& from, const Coord3& to);
// "Make a copy" of a node move: each airway meeting at `from` is copied with that end at `to`,
// and the originals stay. False when refused (after the message) or when none meets there.
bool CopyNode(Workspace& ws, const Coord3& from, const Coord3& to);
// Adds the offset to both ends of every selected airway; ends of other airways at the moved
// nodes follow so that they stay attached.
bool MoveSelected(Workspace& ws, std::int32_t dx, std::int32_t dy, std::int32_t dz);

// Tool 8's release, and tool 17's with the button forced to 3 (insert a node).
bool EditAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release,
                int button);

// Tool 4's release: a node merges its two airways, an airway goes, a fence deletes all in it.
bool DeleteAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
// Joins `second` onto `first` where first's exit meets second's entry: first keeps its record
// and takes second's exit, and second is removed.
void MergeAtNode(Workspace& ws, int first, int second);
// Deletes the airways at these positions in one action.
void DeleteAirways(Workspace& ws, const std::vector<int>& positions);

// The low-level delete: the record is blanked at once, the store compacted by PurgeDeleted.
void RemoveAirway(Network& net, int index);
void PurgeDeleted(Network& net);

// After an edit: node keys, the visible list and the projection of the window.
void RefreshAfterEdit(Workspace& ws, ViewState& view);

}  // namespace galeris
