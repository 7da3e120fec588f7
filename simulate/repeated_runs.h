// A process that runs many solves one after another (a study worker, a benchmark) keeps the
// memory each run frees for the next, instead of handing it back to the system and taking
// fresh pages, each to be zeroed, at every run.
#pragma once

namespace galeris {

void KeepMemoryBetweenRuns();

}  // namespace galeris
