// The visible list and the draw list: layers, levels, flow limits, the cull, colours and widths,
// and what the symbol pass writes.
#include <cstdint>

#include "tests/view/view_fixture.h"
#include "view/labels.h"
#include "view/layer_choice.h"
#include "view/station_box.h"
#include "view/view_options.h"

namespace galeris {
namespace {

using test::RecordingCanvas;
using test::ViewFixture;

class DrawingTest : public ::testing::Test, public ViewFixture {
 protected:
  std::vector<int> Visible() const {
    return {ws.net.SmokeQueue.begin() + 1, ws.net.SmokeQueue.begin() + 1 + view.VisibleCount};
  }
  std::vector<int> Drawn() const {
    return {view.LineAirway.begin(), view.LineAirway.begin() + view.AirwayLineCount};
  }
  const AirwayLineRecord& LineOf(int airway) const {
    for (int k = 0; k < view.AirwayLineCount; ++k) {
      if (view.LineAirway[k] == airway) return ws.net.AirwayLine[k];
    }
    static AirwayLineRecord none;
    ADD_FAILURE() << "airway " << airway << " not drawn";
    return none;
  }
  Colour PaletteOf(int position) const { return PaletteColour(ws.defaults, position); }
};

TEST_F(DrawingTest, HiddenLayersAreDroppedOrDimmed) {
  const int shown = Add(1, 0, 0, 100, 0, 0);
  const int hidden = Add(0, 50, 0, 100, 50, 0);
  ws.net.SecondLayer[hidden] = 30;
  ws.net.SecondLayerShow[30] = 0;

  view.DisplayFlags = LineOpt::Dim;
  Build();
  EXPECT_EQ(Visible(), (std::vector<int>{shown, hidden}));
  EXPECT_FALSE(ws.net.BranchCode[hidden] & Bit::InView);
  EXPECT_EQ(LineOf(hidden).Colour, kContaminantColours[0]);
  EXPECT_EQ(LineOf(shown).Colour, PaletteOf(Palette::OnLevel));

  // A dimmed airway still counts for the fit.
  FitNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.PanY, 25);
}

TEST_F(DrawingTest, LayerZeroIsRepairedAndHighSecondLayersCountAs48) {
  const int i = Add(1, 0, 0, 100, 0, 0);
  ws.net.PrimaryLayer[i] = 0;
  ws.net.SecondLayer[i] = 60;
  ws.net.SecondLayerShow[48] = 0;
  view.DisplayFlags = LineOpt::Invisible;
  Build();
  EXPECT_EQ(ws.net.PrimaryLayer[i], 1);
  EXPECT_EQ(view.VisibleCount, 0);
}

TEST_F(DrawingTest, LevelBandTakesAirwaysWithAnEndInside) {
  const int onLevel = Add(0, 0, 500, 100, 0, 500);
  const int raise = Add(0, 0, 400, 0, 0, 600);  // passes through the band
  Add(0, 0, 300, 100, 0, 300);                  // below the band
  const int touching = Add(0, 0, 300, 0, 0, 490);
  view.LevelMode = LevelModeOf::Single;
  view.LevelBottom = 490;
  view.LevelTop = 510;
  Build();
  EXPECT_EQ(Visible(), (std::vector<int>{onLevel, touching}));
  view.DisplayBits |= Show::OffLevelRaises;
  Build();
  EXPECT_EQ(Visible(), (std::vector<int>{onLevel, raise, touching}));
}

TEST_F(DrawingTest, FlowLimitsHideOrDim) {
  const int slow = Add(1, 0, 0, 100, 0, 0);
  const int fast = Add(0, 50, 0, 100, 50, 0);
  ws.net.Quantity[slow] = 0.5f;
  ws.net.Quantity[fast] = -20;
  view.FlowMinimum = 1;
  view.FlowMaximum = 100;
  view.FlowDimMode = 2;
  Build();
  EXPECT_EQ(Visible(), (std::vector<int>{fast}));
  view.FlowDimMode = 1;
  Build();
  EXPECT_EQ(LineOf(slow).Colour, kContaminantColours[0]);
  EXPECT_EQ(LineOf(fast).Colour, PaletteOf(Palette::OnLevel));
}

TEST_F(DrawingTest, CullNeedsBothEndsBeyondTheSameEdge) {
  // The window runs from -500 to 500 across and -375 to 375 down, centred on the pan (0, 0).
  const int crossing = Add(-900, -600, 0, 900, 600, 0);
  Add(600, 0, 0, 700, 300, 0);                        // both ends beyond the right edge
  const int corner = Add(-900, 100, 0, 100, 900, 0);  // midpoint outside, ends on two sides
  Build();
  EXPECT_EQ(Drawn(), (std::vector<int>{crossing, corner}));
}

TEST_F(DrawingTest, ThreeDColoursByAirWhenAsked) {
  const int rising = Add(1, 0, 0, 10, 0, 100);
  const int falling = Add(50, 0, 100, 60, 0, 0);
  const int drive = Add(0, 100, 0, 200, 100, 10);
  view.Is3D = 1;
  view.TiltAngle = 0.5f;
  view.ColourByAir = true;
  ws.net.BranchCode[drive] |= 512;
  ws.net.BranchCode[rising] |= 1024;
  Build();
  EXPECT_EQ(LineOf(drive).Colour, PaletteOf(Palette::Above));
  EXPECT_EQ(LineOf(rising).Colour, PaletteOf(Palette::Below));
  EXPECT_EQ(LineOf(falling).Colour, PaletteOf(Palette::OnLevel));
}

TEST_F(DrawingTest, ContaminantBandsColourTheLines) {
  const int a = Add(1, 0, 0, 100, 0, 0);
  const int b = Add(0, 50, 0, 100, 50, 0);
  ws.net.SmokeData[a][2] = 9000;  // concentration + 1 passes 8000 but not 12000: band 3
  ws.net.SmokeTime[a] = 10;
  view.SmokeState = 1;
  view.SmokeLimit = 0;
  Build();
  EXPECT_EQ(LineOf(a).Colour, kContaminantColours[3]);
  EXPECT_EQ(LineOf(b).Colour, kContaminantColours[1]);  // with no time limit every airway counts
  view.SmokeLimit = 5;                                  // not reached yet
  Build();
  EXPECT_EQ(LineOf(a).Colour, kContaminantColours[0]);
}

TEST_F(DrawingTest, RasterCanvasClipsLinesFarOutside) {
  RasterCanvas canvas(100, 50);
  canvas.SetScale(0, 0, 100, 50);
  canvas.Clear(kBackground);
  canvas.Line(-1e7f, 10, 1e7f, 10, kWhite, 1, LineStyle::Solid);
  EXPECT_EQ(canvas.Pixel(0, 10), kWhite);
  EXPECT_EQ(canvas.Pixel(99, 10), kWhite);
  canvas.Line(-1e7f, -5, 1e7f, -5, kWhite, 1, LineStyle::Solid);
  canvas.Line(50, 60, 50, 1e7f, kWhite, 1, LineStyle::Solid);
  EXPECT_EQ(canvas.Pixel(50, 49), kBackground);
  EXPECT_EQ(canvas.Lines(), 3);
}

TEST_F(DrawingTest, DataTextAndNamesFollowTheDisplayBits) {
  const int i = Add(-200, 0, 0, 200, 0, 0);
  ws.net.Quantity[i] = 12.34f;
  ws.net.BranchName[i] = "Main drive";
  ws.net.ExitNodeName[i] = "N2";
  view.DisplayBits = Show::DataValues | Show::AirwayNames | Show::NodeNames;
  view.DataTypeCode = DataType::Quantity;
  Build();
  RecordingCanvas canvas;
  DrawSymbols(ws, view, canvas);
  EXPECT_EQ(canvas.texts, (std::vector<std::string>{"N2", "12.3", "Main drive"}));
  EXPECT_EQ(canvas.textColours[1], PaletteOf(Palette::DataText));
  // Each kind of text in the font the options give it.
  ws.defaults.Fonts[1] = {"Courier", -1, 6};
  ws.defaults.Fonts[2] = {"Times", 0, 6};
  ws.defaults.Fonts[3] = {"Helvetica", 0, 6};
  RecordingCanvas fonts;
  DrawSymbols(ws, view, fonts);
  EXPECT_EQ(fonts.textFonts, (std::vector<std::string>{"Helvetica", "Courier bold", "Times"}));
}

TEST_F(DrawingTest, NodeValuesAreWrittenOncePerNode) {
  Add(-200, 0, 5, 0, 0, 5);
  Add(0, 0, 5, 200, 10, 5);  // b
  view.DisplayBits = Show::DataValues;
  view.DataTypeCode = DataType::Coordinates;
  Build();
  RecordingCanvas canvas;
  DrawSymbols(ws, view, canvas);
  // The joined middle node is written by b's entry end only.
  EXPECT_EQ(canvas.texts, (std::vector<std::string>{"-200,0,5", "0,0,5", "200,10,5"}));
}

TEST_F(DrawingTest, SymbolsOnlyForAirwaysInViewAndOnScreen) {
  const int fan = Add(-200, 0, 0, 200, 0, 0);
  const int door = Add(-200, 100, 0, 200, 100, 0);
  const int far = Add(2000, 0, 0, 2400, 0, 0);
  ws.net.FanNumber[fan] = 3;
  ws.net.ResType[door] = 1;
  ws.net.FanNumber[far] = 2;
  ws.net.SmokeData[door][1] = 2;
  view.DisplayBits = Show::FanSymbols | Show::ResistanceSymbols | Show::NodeSymbols;
  Build();
  RecordingCanvas canvas;
  DrawSymbols(ws, view, canvas);
  EXPECT_EQ(canvas.pictures,
            (std::vector<int>{Picture::Node, Picture::Node, Picture::Fan, Picture::Node,
                              Picture::Node, Picture::BulkheadSymbol, Picture::PinBlue}));
}

// The plain rule for the exit end's node symbol: drawn unless another airway end shares its key
// (or the airway is steep). The drawing uses sorted keys instead; both must agree.
int PlainNodeSymbolCount(const Network& net, const ViewState& view) {
  int count = 0;
  for (int k = 0; k < view.AirwayLineCount; ++k) {
    const int i = view.LineAirway[k];
    const AirwayLineRecord& r = net.AirwayLine[k];
    auto inside = [&](float x, float y) {
      return x > view.ViewLeft && x < view.ViewRight && y > view.ViewTop && y < view.ViewBottom;
    };
    int shared = 0;
    for (int j = 1; j <= net.BranchCount; ++j) {
      shared += net.EntryNodeId[j] == net.ExitNodeId[i];
      shared += net.ExitNodeId[j] == net.ExitNodeId[i];
    }
    const bool steep =
        std::fabs(static_cast<float>(net.Coord1[i][3] - net.Coord2[i][3])) * 1.5f > net.Length[i];
    count += inside(r.X1, r.Y1);
    count += inside(r.X2, r.Y2) && (steep || shared <= 1);
  }
  return count;
}

TEST_F(DrawingTest, JoinedEndsAgreeWithThePlainRuleOnRandomNetworks) {
  std::uint32_t seed = 12345;
  auto next = [&seed](int range) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(range));
  };
  view.DisplayBits = Show::NodeSymbols;
  for (int round = 0; round < 25; ++round) {
    ws.net.BranchCount = 0;
    const int airways = 5 + next(120);
    for (int a = 0; a < airways; ++a) {
      // A coarse lattice so that many ends meet.
      Add(1 + 100 * next(8), 100 * next(6), 10 * next(3), 1 + 100 * next(8), 100 * next(6),
          10 * next(3));
    }
    SetScale(view, 1000, 750, 350, 250);
    Build();
    RecordingCanvas canvas;
    canvas.SetScale(view.ScaleLeft, view.ScaleTop, view.ScaleWidth, view.ScaleHeight);
    DrawSymbols(ws, view, canvas);
    ASSERT_EQ(static_cast<int>(canvas.pictures.size()), PlainNodeSymbolCount(ws.net, view))
        << "round " << round;
  }
}

TEST_F(DrawingTest, GridWithoutSpacingSaysSo) {
  view.GridOn = true;
  ws.defaults.GridSpacing = 0;
  RecordingCanvas canvas;
  DrawGrid(ws, view, canvas);
  EXPECT_TRUE(ui.Said("MAJOR Error Drawing Graphics Grid !"));
  EXPECT_TRUE(canvas.texts.empty());
}

TEST_F(DrawingTest, APanKeepsTheGridInItsQuickPictures) {
  view.GridOn = true;
  RecordingCanvas still, panning;
  RedrawWireframe(ws, view, still);
  view.Panning = true;
  RedrawWireframe(ws, view, panning);
  EXPECT_EQ(still.Lines(), 0);
  EXPECT_GT(panning.Lines(), 0);
}

// The station box of the drawing pass: drawn only while monitoring runs, below the midpoint,
// with the alarm colours; drawing it fixes the airflow that the station controls.
TEST_F(DrawingTest, StationBoxDrawnWhileMonitoringWithAlarmColours) {
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
  RecordingCanvas canvas;
  DrawSymbols(ws, view, canvas);
  EXPECT_TRUE(canvas.texts.empty());
  EXPECT_FALSE(ws.net.BranchCode[i] & Bit::FixedQuantity);

  st.RemoteRunning = true;
  DrawSymbols(ws, view, canvas);
  EXPECT_EQ(canvas.texts, (std::vector<std::string>{"   Raise", "  25.0 ", "  9.0 "}));
  EXPECT_EQ(canvas.textColours.back(), kHighAlarmColour);
  EXPECT_FLOAT_EQ(ws.net.Quantity[i], 25);
  EXPECT_TRUE(ws.net.BranchCode[i] & Bit::FixedQuantity);
}

// The Viewing Layers and View Options choices as the view receives them: Hide All, the flow
// limits with their message, and the declutter of the symbol pass.
TEST_F(DrawingTest, HideAllLeavesTheCurrentPairShown) {
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
  EXPECT_EQ(Visible(), (std::vector<int>{kept}));
  EXPECT_FALSE(ws.net.BranchCode[hidden] & Bit::InView);
}

TEST_F(DrawingTest, FlowLimitsKeepTheOldValueOnBadInput) {
  view.FlowMaximum = 5;
  struct Case {
    const char* typed;
    float stored;
    bool refused;
  } cases[] = {{"10000", 10000, false}, {"0", 0, false}, {"10000.5", 5, true}, {"lots", 5, true}};
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
TEST_F(DrawingTest, DeclutterLeavesOutWhatIsAlreadyCovered) {
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

// Short airways put their fan and regulator on their end circles: the circles, drawn first,
// do not hide them.
TEST_F(DrawingTest, DeclutterNeverHidesAFanOrRegulatorBehindACircle) {
  const int fan = Add(10, 0, 0, 60, 0, 0);
  const int regulator = Add(60, 0, 0, 110, 0, 0);
  ws.net.FanNumber[fan] = 1;
  ws.net.ResType[regulator] = 50;
  view.DisplayBits = Show::NodeSymbols | Show::FanSymbols | Show::ResistanceSymbols;
  view.Declutter = true;
  Build();
  RecordingCanvas canvas;
  canvas.SetScale(view.ScaleLeft, view.ScaleTop, view.ScaleWidth, view.ScaleHeight);
  DrawSymbols(ws, view, canvas);
  std::sort(canvas.pictures.begin(), canvas.pictures.end());
  EXPECT_EQ(canvas.pictures, (std::vector<int>{Picture::Fan, Picture::Node, Picture::Node,
                                               Picture::Node, Picture::HazardSymbol}));
}

}  // namespace
}  // namespace galeris
