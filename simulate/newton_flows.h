// Flow balancing by Newton's method on the nodal equations (the global gradient algorithm of
// Todini and Pilati): the same square law, fan curves, fixed pressures and locked chords as
// the mesh balancing, with flows and node pressures corrected together each iteration through
// one sparse symmetric factorisation. An option beside Hardy Cross for large mines.
#pragma once

#include "core/workspace.h"

namespace galeris {

// Balances the network meshed by the last BuildMeshes (fan slots built), starting from the
// flows in the store, and leaves the flows in Quantity. Locked chords keep their flow; every
// other airway is free. Iterates until no flow moves by more than MaxError, at most MaxIter
// times before the "Convergence Warning" question; a Cancel after an iteration
// sets SimStatus 1. Sweeps counts the iterations.
void NewtonFlows(Workspace& ws);

}  // namespace galeris
