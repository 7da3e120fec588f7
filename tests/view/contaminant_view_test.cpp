// A saved view keeps the contaminant legend's animation time; a slot without one leaves the
// window's time alone.
#include <gtest/gtest.h>

#include "tests/view/view_fixture.h"

namespace galeris {
namespace {

TEST(ContaminantView, SavedViewsKeepTheAnimationTime) {
  test::ViewFixture f;
  f.Add(1, 0, 0, 100, 0, 0);
  for (float time : {600.0f, 0.0f}) {
    f.view.SmokeLimit = time;
    SaveViewSlot(f.ws, f.view, 7);
    f.view.SmokeLimit = 42;
    LoadViewSlot(f.ws, f.view, 7);
    EXPECT_EQ(f.view.SmokeLimit, time == 0 ? 42 : time);
  }
}

}  // namespace
}  // namespace galeris
