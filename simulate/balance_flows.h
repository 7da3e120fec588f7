// Flow balancing: Hardy Cross mesh corrections on the square law, with the fan curve's slope
// in the denominator, applied mesh by mesh until no correction exceeds MaxError.
#pragma once

#include "core/workspace.h"

namespace galeris {

// Balances the meshes of the last BuildMeshes, starting from the flows in the store, and
// leaves the flows in Quantity. Sets SimStatus 1 on a break after a sweep and on a listed
// non-convergence (SimMode -1); a Cancel seen at a mesh leaves at once.
void BalanceFlows(Workspace& ws);

// The start flows: each chord's flow pushed round its mesh, so that continuity holds at every
// node whatever stood in the store. A locked chord pushes its fixed flow.
void SuperposeStartFlows(Network& net, int meshCount);

// The attempt number and the largest correction, shown once per unconverged sweep.
void ShowSweep(Workspace& ws, int sweeps, float worst);
// Sets Converged; below 100% asks "Convergence Warning": true when the user wants more sweeps.
bool KeepOnSimulating(Workspace& ws, int meshCount, int unconverged);

// What one sweep found: meshes still moving by more than MaxError, the largest correction, and
// whether a Cancel stopped it halfway.
struct SweepResult {
  int Unconverged = 0;
  float WorstCorr = 0;
  bool Cancelled = false;
};
// One Gauss-Seidel sweep over all meshes, each correction applied at once to its members.
SweepResult BalanceSweep(Workspace& ws, bool listNonConvergence);

}  // namespace galeris
