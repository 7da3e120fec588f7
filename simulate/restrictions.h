// Restriction diagnostics: a fan, fixed-quantity airway or bulkhead should be a chord; one that
// lands in the spanning tree is a bridge and can't carry a loop of its own. The test runs at
// each airway that joins the tree; the dialogs of the diagnostic commands run after the pass.
#pragma once

#include "core/workspace.h"

namespace galeris {

// The test for airway i, which has just joined the tree.
void CheckTreeAirway(Workspace& ws, int i);

// After the forest pass: the dialog of the diagnostic command when something was found, and
// for the removal command the removal itself.
void ReportRestrictions(Workspace& ws);

}  // namespace galeris
