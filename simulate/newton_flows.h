// Flow balancing by Newton's method on the nodal equations (the global gradient algorithm of
// Todini and Pilati): the same square law, fan curves, fixed pressures and locked chords as
// the mesh balancing, with flows and node pressures corrected together each iteration through
// one sparse symmetric factorisation. An option beside Hardy Cross for large mines.
#pragma once

#include <memory>

#include "core/workspace.h"

namespace galeris {

// Balances the network meshed by the last BuildMeshes (fan slots built), starting from the
// flows in the store, and leaves the flows in Quantity. Locked chords keep their flow; every
// other airway is free. Iterates until no flow moves by more than MaxError, at most MaxIter
// times before the "Convergence Warning" question; a Cancel after an iteration
// sets SimStatus 1. Sweeps counts the iterations.
// `plan`, when given, is the system PlanNewton made of this network after its forest was
// grown; without it NewtonFlows makes its own.
struct NewtonPlan;
void NewtonFlows(Workspace& ws, std::shared_ptr<NewtonPlan> plan = nullptr);

// The nodal system of the free airways with its sparsity pattern analysed. It depends only on
// the ends of the airways and the chords the forest locked (and their flows), so it can be
// made while the meshes are listed.
std::shared_ptr<NewtonPlan> PlanNewton(const Network& net);

}  // namespace galeris
