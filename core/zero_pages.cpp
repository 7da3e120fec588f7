// Zeroed memory from the system for the store's large arrays: big blocks are mapped anonymous
// pages, which the system hands out zeroed on first touch; small ones come from calloc.
#include "core/zero_pages.h"

#include <sys/mman.h>

#include <cstdlib>

namespace galeris {
namespace {

// Under the address sanitizer every block comes from calloc, so that it keeps its guard zones.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMapPages = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kMapPages = false;
#else
constexpr bool kMapPages = true;
#endif
#else
constexpr bool kMapPages = true;
#endif

bool Mapped(std::size_t bytes) { return kMapPages && bytes >= kZeroPagesMapped; }

}  // namespace

void* AllocateZeroPages(std::size_t bytes) {
  if (bytes == 0) bytes = 1;
  void* p = nullptr;
  if (Mapped(bytes)) {
    p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (p == MAP_FAILED) p = nullptr;
  } else {
    p = std::calloc(1, bytes);
  }
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

void FreeZeroPages(void* p, std::size_t bytes) {
  if (p == nullptr) return;
  if (bytes == 0) bytes = 1;
  if (Mapped(bytes))
    munmap(p, bytes);
  else
    std::free(p);
}

}  // namespace galeris
