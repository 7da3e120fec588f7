// The Viewing Layers and View Options choices as the view receives them: Hide All, the line
// state and details of hidden layers, the flow limits with their message, and the declutter of
// the symbol pass. (Show All and Hide All of the detail boxes: qt_level_view_dialogs.)
#include "view/view_options.h"

#include <gtest/gtest.h>

#include "tests/view/view_fixture.h"
#include "view/layer_choice.h"
#include "view/raster_canvas.h"

namespace galeris {
namespace {

struct ViewChoices : ::testing::Test, test::ViewFixture {};

TEST_F(ViewChoices, HideAllLeavesTheCurrentPairShown) {
  const int kept = Add(1, 0, 0, 100, 0, 0);
  const int hidden = Add(0, 50, 0, 100, 50, 0);
  ws.net.PrimaryLayer[kept] = 3;
  ws.net.SecondLayer[kept] = 40;
  LayerChoice choice = ReadLayerChoice(ws.net, view);
  choice.PrimaryCurrent = 3;
  choice.SecondCurrent = 40;
  HideAllLayers(choice);
  choice.LineState = LineOpt::Invisible;
  choice.OffLayerDetails = OffLayer::Arrows | OffLayer::NodeNames;
  ApplyLayerChoice(ws.net, view, choice);
  Build();
  EXPECT_EQ(view.VisibleCount, 1);
  EXPECT_EQ(ws.net.SmokeQueue[1], kept);

  choice.LineState = LineOpt::Dim;
  ApplyLayerChoice(ws.net, view, choice);
  Build();
  EXPECT_EQ(view.VisibleCount, 2);  // dimmed, still in the list
  EXPECT_FALSE(ws.net.BranchCode[hidden] & Bit::InView);

  ShowAllLayers(choice);
  ApplyLayerChoice(ws.net, view, choice);
  EXPECT_EQ(ws.net.SecondLayerShow[48], -1);
  EXPECT_EQ(LayerLabel("", 7), "7");
}

TEST_F(ViewChoices, FlowLimitsKeepTheOldValueOnBadInput) {
  view.FlowMaximum = 5;
  struct Case {
    const char* typed;
    float stored;
    bool refused;
  } cases[] = {{"10000", 10000, false}, {"0", 0, false},   {"10000.5", 5, true},
               {"-1", 5, true},         {"lots", 5, true}, {"", 5, true}};
  for (const Case& c : cases) {
    ui.ClearRecords();
    view.FlowMaximum = 5;
    ViewOptions options = ReadViewOptions(ws, view);
    options.SignificantMax = c.typed;
    ApplyViewOptions(ws, view, options);
    EXPECT_FLOAT_EQ(view.FlowMaximum, c.stored) << c.typed;
    EXPECT_EQ(ui.Said("Limits of Allowable Significant Flows"), c.refused) << c.typed;
  }
}

// Ten airways on one spot: with declutter one circle per spot and one of each text stand (a
// name may sit on its own circle); off, every one is drawn as before.
TEST_F(ViewChoices, DeclutterLeavesOutWhatIsAlreadyCovered) {
  for (int k = 0; k < 10; ++k) {
    const int i = Add(1, k, 0, 300, k, 0);
    ws.net.BranchName[i] = "Drive";
    ws.net.ExitNodeName[i] = "N";
  }
  Add(-300, 300, 0, -100, 300, 0);  // far from the others: always drawn
  view.DisplayBits = Show::NodeSymbols | Show::NodeNames | Show::DataValues | Show::AirwayNames;
  for (const bool declutter : {false, true}) {
    view.Declutter = declutter;
    Build();
    RasterCanvas canvas(800, 600);
    canvas.SetScale(view.ScaleLeft, view.ScaleTop, view.ScaleWidth, view.ScaleHeight);
    DrawSymbols(ws, view, canvas);
    EXPECT_EQ(canvas.Texts(), declutter ? 5 : 32) << declutter;
    EXPECT_EQ(canvas.Bitmaps(), declutter ? 4 : 22) << declutter;
  }
}

}  // namespace
}  // namespace galeris
