// Choosing the spanning forest and building one mesh per chord.
#pragma once


#include "core/workspace.h"

namespace galeris {

// The weight that makes an airway a chord wherever the topology allows.
inline constexpr float kChordWeight = 100000000;

// Fills ChordWeight and WeightOrder (positions by descending weight, the later airway first
// among equals).
void WeighAirways(Workspace& ws);

// The spanning forest (lightest airways first), the restriction tests and dialogs, then, unless
// a diagnostic mode asked only for the forest, one mesh per chord into MeshStart/MeshMember.
void BuildMeshes(Workspace& ws);

inline constexpr const char* kMsgMeshesFull =
    "Number of meshes exceed reserved memory setting - please increase the allowable branch "
    "numbers in the defaults settings !";

}  // namespace galeris
