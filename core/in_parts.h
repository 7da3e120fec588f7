// Work split into parts, one per core: the parts of a large file's records, read or written at
// once. Part 0 runs on the calling thread, the others on threads of their own. A stream of
// pieces made on every core but used in order on the calling thread, as a file is written
// while its later pieces are still being made. And one job run beside the caller. Every helper
// thread starts on a core other than its caller's.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#if defined(__linux__)
#include <sched.h>
#endif

namespace galeris {

// Starts helper threads on a core other than their caller's (see in_parts.cpp). Launch throws
// std::system_error, as std::thread does, when no thread can be started.
class HelperStart {
 public:
  HelperStart();
  template <class F>
  std::thread Launch(F&& body) const {
    std::thread helper([this, body = std::forward<F>(body)]() mutable {
      Anywhere();
      body();
    });
    OffCaller(helper);
    return helper;
  }

 private:
  void OffCaller(std::thread& helper) const;
  void Anywhere() const;

#if defined(__linux__)
  cpu_set_t everywhere_{}, elsewhere_{};
  bool usable_ = false;
#endif
};

// One job run on another core while the caller goes on, from its making until its end, which
// waits for the job. Where no thread can be started the job runs at once, on the caller. What
// the job throws is dropped: it must leave its result unset when it fails.
class BesideJob {
 public:
  explicit BesideJob(std::function<void()> job) : job_(std::move(job)) {
    try {
      thread_ = start_.Launch([this] { Run(); });
    } catch (const std::system_error&) {
      Run();
    }
  }
  BesideJob(const BesideJob&) = delete;
  BesideJob& operator=(const BesideJob&) = delete;
  ~BesideJob() {
    if (thread_.joinable()) thread_.join();
  }

 private:
  void Run() noexcept {
    try {
      job_();
    } catch (...) {
    }
  }
  HelperStart start_;
  std::function<void()> job_;
  std::thread thread_;
};

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
  const HelperStart start;
  for (int k = 1; k < parts; ++k) {
    try {
      workers.push_back(start.Launch([&guarded, k] { guarded(k); }));
    } catch (const std::system_error&) {
      here.push_back(k);
    }
  }
  for (int k : here) guarded(k);
  for (auto& worker : workers) worker.join();
  for (const auto& failure : failed)
    if (failure) std::rethrow_exception(failure);
}

// Makes pieces 0..pieces-1 with make(k, text) on the calling thread and up to one helper
// thread per other core, and hands each to use(k, text) on the calling thread in order of k,
// as soon as it and all before it are made. False as soon as a use returns false: the pieces
// still being made are then dropped. The first exception of any make is thrown again here.
template <class Make, class Use>
bool MakeInOrder(int pieces, Make&& make, Use&& use) {
  std::vector<std::string> text(static_cast<std::size_t>(pieces));
  std::vector<char> made(static_cast<std::size_t>(pieces), 0);
  std::mutex lock;
  std::condition_variable madeOne;
  int next = 0, used = 0;
  bool stop = false;
  std::exception_ptr failed;
  // Makes the next piece nobody has taken; false when none is left or the stream has stopped.
  const auto makeOne = [&] {
    int k = 0;
    {
      std::lock_guard<std::mutex> hold(lock);
      if (stop || next >= pieces) return false;
      k = next++;
    }
    std::string piece;
    try {
      make(k, piece);
    } catch (...) {
      std::lock_guard<std::mutex> hold(lock);
      if (!failed) failed = std::current_exception();
      stop = true;
      madeOne.notify_all();
      return false;
    }
    {
      std::lock_guard<std::mutex> hold(lock);
      text[k] = std::move(piece);
      made[k] = 1;
    }
    madeOne.notify_all();
    return true;
  };
  // Hands on the made pieces in order, waiting for each one when `wait`; false once stopped.
  const auto handOn = [&](bool wait) {
    while (used < pieces) {
      std::string ready;
      {
        std::unique_lock<std::mutex> hold(lock);
        if (wait) madeOne.wait(hold, [&] { return stop || made[used] != 0; });
        if (stop || !made[used]) return !stop;
        ready = std::move(text[used]);
      }
      if (!use(used, ready)) {
        std::lock_guard<std::mutex> hold(lock);
        stop = true;
        return false;
      }
      ++used;
    }
    return true;
  };
  std::vector<std::thread> helpers;
  const HelperStart start;
  for (int h = 1; h < PartCount(pieces, 1); ++h) {
    try {
      helpers.push_back(start.Launch([&makeOne] {
        while (makeOne()) {
        }
      }));
    } catch (const std::system_error&) {
      break;  // the calling thread makes them all
    }
  }
  // The caller hands on whatever is ready before it makes more, then waits for the rest.
  while (makeOne() && handOn(false)) {
  }
  handOn(true);
  for (auto& helper : helpers) helper.join();
  if (failed) std::rethrow_exception(failed);
  return used == pieces;
}

}  // namespace galeris
