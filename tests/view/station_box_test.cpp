// The station box of the drawing pass: drawn only while monitoring runs, below the midpoint,
// with the alarm colours; drawing it fixes the airflow that the station controls.
#include <gtest/gtest.h>

#include "tests/view/view_fixture.h"
#include "view/raster_canvas.h"
#include "view/station_box.h"

namespace galeris {
namespace {

struct TextCanvas : RasterCanvas {
  TextCanvas() : RasterCanvas(800, 600) {}
  void Text(float x, float y, std::string_view text, Colour colour, float size) override {
    texts.emplace_back(text);
    colours.push_back(colour);
    RasterCanvas::Text(x, y, text, colour, size);
  }
  std::vector<std::string> texts;
  std::vector<Colour> colours;
};

struct StationBoxTest : ::testing::Test, test::ViewFixture {};

TEST_F(StationBoxTest, DrawnWhileMonitoringWithAlarmColours) {
  const int i = Add(-200, 0, 0, 200, 0, 0);
  RemoteStations& st = ws.remote;
  ws.net.RemoteStation[i] = 2;
  st.StationName[2] = "Raise";
  st.UpdateQ[2] = -1;
  st.ChannelRaw[1][2] = 25;
  st.ChannelRaw[2][2] = 9;
  st.AlarmHigh[2][2] = 5;
  st.AlarmsOn = true;
  for (int k = 3; k <= kStationChannels; ++k) st.ChannelName[k][2].clear();
  view.DisplayBits = 0;
  Build();
  TextCanvas canvas;
  DrawSymbols(ws, view, canvas);
  EXPECT_TRUE(canvas.texts.empty());
  EXPECT_FALSE(ws.net.BranchCode[i] & Bit::FixedQuantity);

  st.RemoteRunning = true;
  DrawSymbols(ws, view, canvas);
  EXPECT_EQ(canvas.texts, (std::vector<std::string>{"   Raise", "  25.0 ", "  9.0 "}));
  EXPECT_EQ(canvas.colours.back(), kHighAlarmColour);
  EXPECT_FLOAT_EQ(ws.net.Quantity[i], 25);
  EXPECT_TRUE(ws.net.BranchCode[i] & Bit::FixedQuantity);
}

}  // namespace
}  // namespace galeris
