// The allocator of the store's large numeric arrays. A store is sized for its full capacity
// (30 000 airways by default) whatever it holds, so its arrays take their memory straight from
// the system already zeroed, and a page costs nothing until it is first written: a small mine
// pays for a small store.
//
// A value-initialised element is left as the zero bytes it was given, so the element types
// must be plain numbers or aggregates of them, whose zero is all zero bytes. Slots that were
// written and then dropped are not zeroed again: an array must never shrink and regrow in place.
// The store only ever replaces its arrays by fresh ones, never resizes them.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace galeris {

// Blocks of at least this size are mapped from the system; smaller ones come from calloc.
inline constexpr std::size_t kZeroPagesMapped = 16 * 1024;

void* AllocateZeroPages(std::size_t bytes);
void FreeZeroPages(void* p, std::size_t bytes);

template <class T>
struct ZeroPages {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>,
                "zero pages hold plain numbers only");
  using value_type = T;
  using is_always_equal = std::true_type;
  using propagate_on_container_move_assignment = std::true_type;

  ZeroPages() = default;
  template <class U>
  ZeroPages(const ZeroPages<U>&) noexcept {}  // NOLINT: rebinding

  T* allocate(std::size_t n) { return static_cast<T*>(AllocateZeroPages(n * sizeof(T))); }
  void deallocate(T* p, std::size_t n) noexcept { FreeZeroPages(p, n * sizeof(T)); }

  // Value-initialisation writes nothing: the bytes are already zero.
  template <class U>
  void construct(U*) noexcept {}
  template <class U, class... A>
  void construct(U* p, A&&... a) {
    ::new (static_cast<void*>(p)) U(std::forward<A>(a)...);
  }

  template <class U>
  bool operator==(const ZeroPages<U>&) const noexcept {
    return true;
  }
};

template <class T>
using ZeroArray = std::vector<T, ZeroPages<T>>;

}  // namespace galeris
