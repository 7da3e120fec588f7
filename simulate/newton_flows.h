// Flow balancing by Newton's method on the nodal equations (the global gradient algorithm of
// Todini and Pilati): the same square law, fan curves, fixed pressures and locked chords as
// the mesh balancing, with flows and node pressures corrected together each iteration through
// one sparse symmetric factorisation. An option beside Hardy Cross for large mines.
#pragma once

#include <memory>
#include <vector>

#include "core/workspace.h"

namespace galeris {

// The airways' ends as Newton's system sees them: the node numbers of both ends of every
// airway 1..BranchCount, and which airways are locked chords, whose flow stays as it is.
struct NewtonEnds {
  int nodeCount = 0;
  std::vector<int> entry, exit;
  std::vector<char> locked;
  bool operator==(const NewtonEnds&) const = default;
};
// As the grown forest left them.
NewtonEnds NewtonEndsOf(const Network& net);
// As the forest will leave them if every airway it locks as a chord (a fixed quantity or a
// blockage) ends up one, which is the rule: taken once the nodes are numbered, so that the
// system can be planned while the forest is grown.
NewtonEnds ExpectedNewtonEnds(const Network& net, const Defaults& defaults);

// Balances the network meshed by the last BuildMeshes (fan slots built), starting from the
// flows in the store, and leaves the flows in Quantity. Locked chords keep their flow; every
// other airway is free. Iterates until no flow moves by more than MaxError, at most MaxIter
// times before the "Convergence Warning" question; a Cancel after an iteration
// sets SimStatus 1. Sweeps counts the iterations.
// `plan`, when given, is used when it was made for the ends the forest left; otherwise
// NewtonFlows makes its own.
struct NewtonPlan;
void NewtonFlows(Workspace& ws, std::shared_ptr<NewtonPlan> plan = nullptr);

// The nodal system of the free airways with its sparsity pattern analysed. It depends only on
// the ends given, so it can be made while the forest is grown and the meshes listed.
std::shared_ptr<NewtonPlan> PlanNewton(NewtonEnds ends);

}  // namespace galeris
