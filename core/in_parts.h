// Work split into parts, one per core: the parts of a large file's records, read or written at
// once. Part 0 runs on the calling thread, the others on threads of their own.
#pragma once

#include <algorithm>
#include <cstdint>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace galeris {

// How many parts to make of `items`: one per core, at most eight, none under `smallest` items.
inline int PartCount(int items, int smallest) {
  const int cores = static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1u, 8u));
  return std::clamp(items / smallest, 1, cores);
}

// The first item of part k when `items` items are cut into `parts` parts; k == parts gives items.
inline int PartStart(int items, int parts, int k) {
  return static_cast<int>(std::int64_t{items} * k / parts);
}

// Runs run(k) for every part k. A part whose thread cannot be started runs on the calling
// thread; the first exception of any part is thrown again here once every part is done.
template <class F>
void RunInParts(int parts, F&& run) {
  std::vector<std::exception_ptr> failed(static_cast<std::size_t>(parts));
  const auto guarded = [&](int k) {
    try {
      run(k);
    } catch (...) {
      failed[k] = std::current_exception();
    }
  };
  std::vector<std::thread> workers;
  std::vector<int> here{0};
  for (int k = 1; k < parts; ++k) {
    try {
      workers.emplace_back(guarded, k);
    } catch (const std::system_error&) {
      here.push_back(k);
    }
  }
  for (int k : here) guarded(k);
  for (auto& worker : workers) worker.join();
  for (const auto& failure : failed)
    if (failure) std::rethrow_exception(failure);
}

}  // namespace galeris
