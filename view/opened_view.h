// What a view shows of a network just opened. The level band, working level, pan, pivot,
// rotation and contaminant display belong to the network that was shown before and go; the
// user's choices of what to draw (data type, symbols, flags) stay.
#pragma once

#include "core/network_store.h"
#include "view/view_state.h"

namespace galeris {

// The view as it stands before the new network's start-up view or fit: every level, in plan.
void ForgetShownNetwork(ViewState& view);

// True when the airways lie on more than one underground level of the level list: a plan of
// them all would draw the levels over each other, so such a network opens in the iso view.
bool SpansSeveralLevels(const Network& net);

inline constexpr int kIsoViewSlot = 5;

}  // namespace galeris
