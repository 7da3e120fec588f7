// The tools that work on one airway, or on every airway inside a fence: attributes and layers
// copied and pasted, fans, contaminant sources, smoke report pins, names and floating text,
// reversal, selection, and the finders that take the view to an airway. A release within
// ScaleWidth / 50 of its press is a click on the nearest airway; beyond it, a fence.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"
#include "view/tools.h"
#include "view/view_state.h"

namespace galeris {

inline constexpr const char* kMsgNoAttributes = "No copy/paste attributes have been selected !";
inline constexpr const char* kMsgCopyFirst =
    "Paste attributes must first be copied from an existing branch by using the right mouse "
    "button";
inline constexpr const char* kMsgCopyFirstFence =
    "Use the right mouse button to copy attributes from an airway first !";
inline constexpr const char* kMsgFencePaste =
    "Are you sure you want to paste the copied attributes to all airways within the fence?";
inline constexpr const char* kMsgFenceLayers =
    "Are you sure you want to change all airway view layers within the fence ?";
inline constexpr const char* kMsgFanFixedPressure = "Fan not allowed with fixed pressure airway";
inline constexpr const char* kMsgFanFixedQuantity = "Fan not allowed with fixed quantity airway";
inline constexpr const char* kMsgCommas = "Commas are not allowed!";
inline constexpr const char* kMsgNoBranches = "No branches to find!";

// The airways of the last draw list whose ends or midpoint lie inside the rectangle given by
// two window points (axis-signed, as the mouse).
std::vector<int> FindInFence(const Network& net, const ViewState& view, float x1, float y1,
                             float x2, float y2);

// What a fence tool's release is: a click or a fence.
bool IsFence(const ViewState& view, const ToolState& tools);

// The tools' releases. Each returns true when the network changed.
bool CopyPasteAttributes(Workspace& ws, ViewState& view, ToolState& tools,
                         const MouseInput& release);
bool PasteLayers(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool PlaceFan(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool PlaceContaminant(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool PlaceSmokeReport(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool NameAndText(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool ReverseAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
bool SelectAirways(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);
void FollowAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release);

// Pastes the copied attributes onto one airway (not journalled: the caller does it).
void PasteAttributesTo(Workspace& ws, const EditState& edit, int airway);
// Copies the chosen attributes of an airway; toDefaults puts them into the defaults instead.
// Returns the report's text.
std::string CopyAttributesFrom(Workspace& ws, EditState& edit, int airway, bool toDefaults);

// Reverses one airway's direction in the store (not journalled).
void ReverseOne(Network& net, int airway);

// Button 3: the next airway with a fault, a fixed quantity or a fan, as SearchMode says.
bool FindAirway(Workspace& ws, ViewState& view, ToolState& tools);
// mnuFinder: the next airway (or node) whose name holds the text asked for.
bool FindByName(Workspace& ws, ViewState& view, ToolState& tools, bool node);
// Shows the airway at this position: its level, the selection, and the view brought to it.
void GoToAirway(Workspace& ws, ViewState& view, ToolState& tools, int index);

// The floating text drawn nearest the window point, 0 for none.
int FindNearestText(const Network& net, const ViewState& view, const ToolState& tools, float x,
                    float y);

}  // namespace galeris
