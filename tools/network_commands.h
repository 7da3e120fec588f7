// The commands of the Tools, File and Simulate menus that act on every airway at once, or on
// the network's notes: each asks when it must, loops over the airways and says when it is done.
// They return true when the network changed, so that the caller rebuilds the drawing data and
// redraws. Edits of airway records are journalled, one undo action per command.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

// "Auto Name Airway": every airway without a name takes a prefix and a running number.
bool AutoNameAirways(Workspace& ws);
// "Auto Name Nodes": every node without a name takes a prefix and a running number, at every
// airway end that meets there.
bool AutoNameNodes(Workspace& ws);

// "Fix All" / "Unfix All" lengths; unfixing takes every length from the coordinates again.
bool FixAllLengths(Workspace& ws);
bool UnfixAllLengths(Workspace& ws);

// "Renumber Airways": AirwayNo 1, 2, ... in store order, then "Airways renumbered !".
bool RenumberAirways(Workspace& ws);
// "Check numbering": all numbers unique, or the offer to renumber them all.
bool CheckNumbering(Workspace& ws);

// "Swap XY Axis": X and Y of both ends exchanged, and the two axis signs with them.
bool SwapXYAxis(Workspace& ws);
// "Reverse coordinate axis": X and Y of both ends exchanged, the axis signs left alone.
bool ReverseCoordinateAxis(Workspace& ws);
// "Remove duplicates": every airway drawn from its lower end to its higher one, by X, then Y,
// then Z, the last pass deciding.
bool NormaliseDirections(Workspace& ws);

// "Remove" flow labels: names in brackets are emptied.
bool RemoveFlowLabels(Workspace& ws);

// "Clear Smoke Tracking": asks whether the sources go too, then clears the spread. True when
// the sources went.
bool ClearSmokeTracking(Workspace& ws);

// "Title Note": the network's title from an input box. True when the title was changed.
bool EditTitleNote(Workspace& ws);

// The names in use, for the name lists: sorted without regard to case, each once.
std::vector<std::string> AirwayNameList(const Network& net);
std::vector<std::string> NodeNameList(const Network& net);
// The first airway whose trimmed name, upper-cased, is upperName (at either end for a node
// name); 0 for none.
int FindAirwayByName(const Network& net, const std::string& upperName);
int FindAirwayByNodeName(const Network& net, const std::string& upperName);

}  // namespace galeris
