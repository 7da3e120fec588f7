// Where the helper threads of work in parts start. A new thread is often queued on the core of
// the thread that made it, to run only when that one waits, and the scheduler moves it only
// some milliseconds later: longer than most parts take. A helper is therefore started on the
// other cores, and once it runs it may go anywhere again.
#include "core/in_parts.h"

#if defined(__linux__)
#include <pthread.h>
#include <sched.h>
#endif

namespace galeris {

#if defined(__linux__)
namespace {

bool CallersCores(cpu_set_t& cores) {
  return sched_getaffinity(0, sizeof cores, &cores) == 0;
}

}  // namespace

HelperStart::HelperStart() {
  if (!CallersCores(everywhere_)) return;
  elsewhere_ = everywhere_;
  const int here = sched_getcpu();
  if (here < 0 || here >= CPU_SETSIZE) return;
  CPU_CLR(here, &elsewhere_);
  usable_ = CPU_COUNT(&elsewhere_) > 0;
}

void HelperStart::OffCaller(std::thread& helper) const {
  if (usable_) pthread_setaffinity_np(helper.native_handle(), sizeof elsewhere_, &elsewhere_);
}

void HelperStart::Anywhere() const {
  if (usable_) pthread_setaffinity_np(pthread_self(), sizeof everywhere_, &everywhere_);
}

#else

HelperStart::HelperStart() = default;
void HelperStart::OffCaller(std::thread&) const {}
void HelperStart::Anywhere() const {}

#endif

}  // namespace galeris
