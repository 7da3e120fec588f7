// A synthetic but plausible underground mine, for trying the program out and for measuring it
// on large networks: a surface, levels of drives and cross-cuts, raises, a decline ramp, an
// intake and an exhaust shaft with a main fan, boosters, doors and a regulator.
#pragma once

#include <cstdint>

#include "core/workspace.h"

namespace galeris {

// Replaces the network in ws with a mine of about `airways` airways (exactly that many from
// a few dozen upwards, up to the 16-bit airway limit). The same seed gives the same mine.
// Puts the two fan types it needs into the fan store when they are not there yet, and sets
// the iteration limit MaxIter to SweepLimitFor(airways), so that the mine solves from still air.
void GenerateMine(Workspace& ws, int airways, unsigned seed = 1);

// The fewest airways a generated mine has: two levels of four-node grids and what joins them.
int SmallestGeneratedMine();

// The iteration limit a generated mine of that many airways is given: 50 up to 100 airways,
// half the airway count above, at most 500.
std::int16_t SweepLimitFor(int airways);

}  // namespace galeris
