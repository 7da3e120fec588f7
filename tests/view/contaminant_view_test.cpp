// The contaminant display in the view: a saved view keeps the legend's animation time, and the
// spread and trace states colour the airways by their bands.
#include <gtest/gtest.h>

#include "simulate/contaminants.h"
#include "tests/view/view_fixture.h"

namespace galeris {
namespace {

TEST(ContaminantView, SavedViewsKeepTheAnimationTime) {
  test::ViewFixture f;
  f.Add(0, 0, 0, 100, 0, 0);
  const int slot = 7;
  for (float time : {600.0f, 0.0f}) {
    f.view.SmokeLimit = time;
    SaveViewSlot(f.ws, f.view, slot);
    f.view.SmokeLimit = 42;
    LoadViewSlot(f.ws, f.view, slot);
    EXPECT_EQ(f.view.SmokeLimit, time == 0 ? 42 : time);  // no saved time leaves the present one
  }
}

TEST(ContaminantView, BandsColourTheAirways) {
  test::ViewFixture f;
  const int a = f.Add(1, 0, 0, 100, 0, 0);
  const int b = f.Add(100, 0, 0, 200, 0, 0);
  f.ws.net.SmokeData[a][2] = TraceState::Smoke;
  f.ws.net.SmokeData[b][2] = TraceState::Clear;
  f.view.SmokeState = 2;
  f.Build();
  const auto colourOf = [&f](int airway) {
    for (int k = 0; k < f.view.AirwayLineCount; ++k)
      if (f.view.LineAirway[k] == airway) return f.ws.net.AirwayLine[k].Colour;
    return -1;
  };
  EXPECT_EQ(colourOf(a), kContaminantColours[TraceState::Smoke]);
  EXPECT_EQ(colourOf(b), kContaminantColours[TraceState::Clear]);
}

}  // namespace
}  // namespace galeris
