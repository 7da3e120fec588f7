// Memory kept between runs: large blocks come from the heap, and the heap is never trimmed
// below what a run of the largest network needs.
#include "simulate/repeated_runs.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace galeris {

void KeepMemoryBetweenRuns() {
#if defined(__GLIBC__)
  constexpr int kLargestBlock = 256 << 20;  // beyond any array of the largest store
  mallopt(M_MMAP_THRESHOLD, kLargestBlock);
  mallopt(M_TRIM_THRESHOLD, 2 * kLargestBlock);
#endif
}

}  // namespace galeris
