// What a run leaves behind after balancing: fan operating points and the loads of fixed
// quantities, the pressure across every airway, the reversal of airways left with negative
// flow, gauge pressures at both ends of every airway, the adjacency lists of the contaminant
// walk, and the derived values that the labels and reports show.
#pragma once

#include "core/workspace.h"

namespace galeris {

// Marks of Pressure (and of FanSlot on leaving the run) for a fan off its curve.
inline constexpr float kStallMark = -9999.0f;
inline constexpr float kNegateMark = 9999.0f;
// ToNodeP of an end not reached from the surface.
inline constexpr float kUnreached = -9999999.0f;

// The pressure load of each locked chord and each fan's operating pressure (or its stall or
// negate mark), left in FanSlot.
void ResolveFanLoads(Workspace& ws);
// Pressure of every airway: -R Q^2 for ordinary ones, the FanSlot value for the others.
void StoreAirwayPressures(Workspace& ws);
// The closing stage, also of every early exit: reverses airways left with a negative flow
// (journalled) and lists fans whose flow reversed.
void FinishRun(Workspace& ws);
// Re-sorts the store, then walks gauge pressures out from the surface along airway directions.
void ResolveNodePressures(Workspace& ws);
// The walk alone, on a store sorted by descending keys. Reaching a node two ways keeps the
// first value found, in the order of repeated passes over the store.
void PropagateNodePressures(Workspace& ws);
// The pressure change along an airway, by its kind (ordinary, fixed, fan on or off its curve).
float PressureDrop(const Network& net, int j);
// Reverses every airway still negative; fixed-direction ones after asking once.
void ApplyFixedDirections(Workspace& ws);
void ReverseAirway(Network& net, int i);
// NodeLinkRange[i][1] lists the airways ending where i begins, [i][2] those beginning where i
// ends, as first and last positions in NodeLinks.
void BuildNodeLinks(Workspace& ws);

// Derived values, SI units.
double AirwayPressureDrop(const Network& net, int i);    // R Q^2, Pa
double AirPower(const Network& net, int i);              // Q^3 R / 1000, kW
double FanVelocityPressure(const Workspace& ws, int i);  // Pa; 0 stalled, negated or no fan
double FanInputPower(const Workspace& ws, int i);        // kW
double YearlyPowerCost(const Workspace& ws, int i);

}  // namespace galeris
