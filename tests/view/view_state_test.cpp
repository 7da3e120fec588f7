// Projection and its inverse, fitting, zoom limits, rotation steps, levels and saved views.
#include <optional>

#include "tests/view/view_fixture.h"

namespace galeris {
namespace {

using test::ViewFixture;

class ViewStateTest : public ::testing::Test, public ViewFixture {
 protected:
  // Projects a world point to the window (panned, unsigned) and back.
  void ExpectRoundTrip(int x, int y, int z) {
    const int i = Add(x, y, z, x + 10, y, z);
    float wx = float(x), wy = float(y);
    if (view.Is3D != 0) {
      ProjectAirway(ws, view, i);
      wx = ws.net.ViewEnd1[i][0];
      wy = ws.net.ViewEnd1[i][1];
    }
    double worldZ = z, worldX = 0, worldY = 0;
    UnprojectPoint(ws.net, view, wx - view.PanX, wy - view.PanY, worldZ, worldX, worldY);
    EXPECT_NEAR(worldX, x, 1.0) << "at " << x << "," << y << "," << z;
    EXPECT_NEAR(worldY, y, 1.0) << "at " << x << "," << y << "," << z;
    EXPECT_EQ(worldZ, z);
  }
};

TEST_F(ViewStateTest, PointsUnprojectToThemselves) {
  view.PanX = 1234;
  view.PanY = -567;
  ws.net.AxisSignY = -1;
  ExpectRoundTrip(-800, 4000, -20);
  view.Is3D = 1;
  for (int sign : {1, -1}) {
    ws.net.AxisSignX = static_cast<std::int16_t>(sign);
    ws.net.AxisSignY = static_cast<std::int16_t>(sign);
    view.TiltAngle = 0.6f * sign;
    view.SpinAngle = 1.1f;
    SetScale(view, 1000, 750, 250, -75);
    view.Cs = std::cos(view.SpinAngle);
    view.Ss = std::sin(view.SpinAngle);
    view.Ct = std::cos(view.TiltAngle);
    view.St = std::sin(view.TiltAngle);
    ExpectRoundTrip(1000, 2000, -300);
    ExpectRoundTrip(0, 99999, 0);
  }
}

TEST_F(ViewStateTest, EdgeOnShiftMovesInTheFacingPlane) {
  view.Is3D = 1;
  view.TiltAngle = kPi / 2;
  view.SpinAngle = 0;
  view.Pivot = {0, 100, 200, 300};
  view.PanY = -300;
  double z = 0, x = 0, y = 0;
  UnprojectPoint(ws.net, view, 10, 20, z, x, y);
  // Edge-on, the height comes from the mouse's vertical position, not from WorkingRL.
  EXPECT_NEAR(x, 110, 1e-3);
  EXPECT_NEAR(y, 200, 1e-3);
  EXPECT_NEAR(z, 300 + 20, 1e-3);
}

TEST_F(ViewStateTest, HeldButtonMovesFromThePickInTheFacingPlane) {
  view.Is3D = 1;
  view.TiltAngle = 0.5f;
  view.SpinAngle = kPi / 6;
  const UnprojectInput input{.ShiftHeld = true,
                             .ButtonHeld = true,
                             .PickX = 1000,
                             .PickY = 2000,
                             .PickZ = 300,
                             .PressX = 5,
                             .PressY = 5};
  double z = 0, x = 0, y = 0;
  UnprojectPoint(ws.net, view, 25, 5, z, x, y, input);
  EXPECT_NEAR(x, 1000 + 20 * std::cos(kPi / 6), 1e-3);
  EXPECT_NEAR(y, 2000 - 20 * std::sin(kPi / 6), 1e-3);
  EXPECT_NEAR(z, 300, 1e-9);
}

TEST_F(ViewStateTest, PivotTakesTheHeightOfWhatIsOnScreen) {
  Add(-100, 0, 100, 100, 0, 100);
  Add(-100, 50, 300, 100, 50, 300);
  Add(5000, 0, 900, 5100, 0, 900);  // off screen
  view.Is3D = 1;
  view.PivotState = 999;
  Build();
  PivotToVisible(ws, view);
  EXPECT_EQ(view.Pivot[3], 200);

  SetScale(view, 1000, 750, 20000, 20000);  // nothing on screen: the mean of all
  view.PanHold = true;
  Build();
  PivotToVisible(ws, view);
  EXPECT_EQ(view.Pivot[3], 433);
}

TEST_F(ViewStateTest, SingleVerticalAirwayFitsAHundredSquare) {
  Add(300, 400, 0, 300, 400, -80);
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
  EXPECT_TRUE(ScaleIs(120, 90, 300, 400));
  EXPECT_EQ(view.Pivot[3], -40);  // the centre of all visible ends
}

TEST_F(ViewStateTest, FitWidensToTheWindowAndNeverFitsTighterThanTheLimit) {
  Add(0, 0, -10, 2000, 600, -10);
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
  EXPECT_TRUE(ScaleIs(2400, 1800, 1000, 300));

  Add(3000, 3000, -10, 3003, 3004, -10);
  ws.net.BranchCode[1] = 0;  // leave only the tiny airway in view
  ws.net.EntryNodeId[1] = 0;
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
  EXPECT_NEAR(view.ScaleWidth, 250000.0 / (0.75 * 60000) * 1.2, 1e-3);
}

TEST_F(ViewStateTest, FitInThreeDStaysFittedThroughTheNextRedraw) {
  Add(10, 10, -10, 6000, 0, -600);  // a long decline, the development bunched at its foot
  for (int k = 0; k < 20; ++k) Add(6000, 10 * k, -600, 6000, 10 * k + 10, -600);
  view.Is3D = 1;
  view.TiltAngle = 0.6f;
  view.SpinAngle = 0.4f;
  Build();
  FitNetwork(ws, view);
  const float panX = view.PanX, panY = view.PanY;
  Build();
  EXPECT_NEAR(view.PanX, panX, 1);
  EXPECT_NEAR(view.PanY, panY, 1);
}

TEST_F(ViewStateTest, FitWithEveryAirwayHiddenLeavesTheViewAlone) {
  Add(0, 0, -10, 200, 0, -10);
  ws.net.PrimaryLayerShow[1] = 0;
  view.DisplayFlags = LineOpt::Invisible;
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 1000);
}

TEST_F(ViewStateTest, ZoomStopsAtItsLimitsWithAMessage) {
  SetZoom(ws, view, 10, 7.5f);
  EXPECT_TRUE(ScaleIs(20, 15, 0, 0));
  SetZoom(ws, view, 2e7f, 1.5e7f);
  EXPECT_TRUE(ScaleIs(1e7f, 7.5e6f, 0, 0));
  SetZoom(ws, view, 500, 375);
  EXPECT_EQ(ui.MessageTexts(),
            (std::vector<std::string>{"Minimum Scaling Reached", "Maximum Scaling Reached"}));
  EXPECT_FLOAT_EQ(view.ScaleLeft, -250);
}

TEST_F(ViewStateTest, ClickAndRectangleZooms) {
  ZoomClick(ws, view, 100, 50, -100, -10);  // dragged right to left
  EXPECT_TRUE(ScaleIs(200, 150, 0, 20));
  ZoomClick(ws, view, 0, 0, 10, 150);  // a tall rectangle widens to the window's shape
  EXPECT_FLOAT_EQ(view.ScaleWidth, 200);
  ZoomOutClick(ws, view);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 400);
  EXPECT_TRUE(ui.MessageTexts().empty());
}

TEST_F(ViewStateTest, SymbolSizesComeFromTheSettingsAndGoBack) {
  ws.defaults.DataRowType[4] = 9;  // fans
  ws.defaults.DataRowSize[2] = kScaledSymbolRow;
  ViewState fresh = MakeViewState(ws);
  EXPECT_EQ(fresh.SymbolSize, (std::array<std::int16_t, 7>{1, 2, 5, 9, 5, 5, 5}));
  EXPECT_EQ(fresh.SymbolScaled, (std::array<std::int16_t, 7>{0, 1, 0, 0, 0, 0, 0}));
  fresh.SymbolSize[6] = 12;
  fresh.SymbolScaled[1] = 0;
  KeepSymbolSettings(fresh, ws.defaults);
  EXPECT_EQ(ws.defaults.DataRowType[7], 12);
  EXPECT_EQ(ws.defaults.DataRowSize[2], kFixedSymbolRow);
}

TEST_F(ViewStateTest, ScaleCaptionCarriesThePrintRatio) {
  ws.net.FileName = "/mines/north/deep.sim";
  ws.net.NetworkTitle = "Level 3 upgrade";
  view.PrintableWidthMm = 250;
  SetScale(view, 5000, 3750, 0, 0);
  SetScaleCaption(ws, view);
  EXPECT_EQ(view.FrameCaption, "GALERIS [deep.sim   Level 3 upgrade] [Scale = 1:22000]");
}

TEST_F(ViewStateTest, ProjectionClampsTiltAndWrapsSpin) {
  Add(1, 0, 0, 100, 0, 0);
  BuildVisibleList(ws, view);
  view.Is3D = 1;
  view.TiltStep = 3;
  view.SpinStep = -0.5f;
  ProjectNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.TiltAngle, kPi / 2);
  EXPECT_NEAR(view.SpinAngle, 2 * kPi - 0.5f, 1e-5);
  EXPECT_EQ(view.StatusRotY, "RotY 331");

  ws.net.AxisSignY = -1;
  view.TiltStep = 0.2f;  // with the Y axis flipped the step runs the other way
  view.SpinStep = 0;
  ProjectNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.TiltAngle, 0);  // clamped to -pi/2..0

  ws.defaults.FullRotation = 1;  // free tilt: no clamp, a full turn wraps
  ws.net.AxisSignY = 1;
  view.TiltAngle = 6.2f;
  ProjectNetwork(ws, view);
  EXPECT_NEAR(view.TiltAngle, 6.4f - 2 * kPi, 1e-5);
}

TEST_F(ViewStateTest, SpinSquareOnToTheYAxisIsNudged) {
  view.Is3D = 1;
  view.TiltStep = view.SpinStep = 0;
  view.SpinAngle = 3 * kPi / 2;
  ProjectNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.SpinAngle, 3 * kPi / 2 + kPi / 1000);
}

TEST_F(ViewStateTest, PanFollowsThePivotUnlessHeld) {
  Add(100, 0, 0, 300, 0, 0);
  BuildVisibleList(ws, view);
  view.Is3D = 1;
  view.Pivot = {0, 200, 0, 0};
  view.PivotState = 999;
  ProjectNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.PanX, 200);
  view.PanHold = true;
  view.PanX = 5;
  ProjectNetwork(ws, view);
  EXPECT_FLOAT_EQ(view.PanX, 5);
  EXPECT_FALSE(view.PanHold);
}

TEST_F(ViewStateTest, RotatorTurnsByThePositionInTheButton) {
  Add(1, 0, 0, 100, 0, 0);
  BuildVisibleList(ws, view);
  BeginRotator(ws, view);
  EXPECT_EQ(view.Is3D, 1);
  EXPECT_EQ(view.PivotState, 999);
  EXPECT_FALSE(RotatorTick(ws, view, 22, 28));  // the centre of the button holds still
  EXPECT_FALSE(RotatorTick(ws, view, 51, 10));  // outside the button
  EXPECT_TRUE(RotatorTick(ws, view, 7, 28));
  EXPECT_NEAR(view.SpinAngle, kPi / 180 * 2 / 2, 1e-6);  // (22 - 7) / 15 degrees times speed / 2
  EXPECT_EQ(view.SpinStep, 0);
  EXPECT_TRUE(RotatorTick(ws, view, 22, 13));
  EXPECT_NEAR(view.TiltAngle, kPi / 180, 1e-6);
}

TEST_F(ViewStateTest, ChoosingALevelSetsItsBandAndTheScrollBarRunsAgainstTheList) {
  ws.net.RLCount = 3;
  ws.net.RLName[2] = "300 Level";
  ws.net.RLBound[2] = {0, 720, 680};
  ws.net.RLBound[3] = {0, 620, 580};
  view.LevelMode = LevelModeOf::Range;
  SelectLevel(ws, view, 2);
  EXPECT_EQ(view.LevelMode, LevelModeOf::Single);
  EXPECT_EQ(view.PreviousLevelMode, LevelModeOf::Range);
  EXPECT_EQ((std::array{view.LevelBottom, view.LevelTop, view.WorkingRL}),
            (std::array{680.0f, 720.0f, 700.0f}));
  EXPECT_EQ(view.PivotState, 1);
  EXPECT_EQ(LevelCaption(ws, view), "View 0 : 300 Level (RL 680 to 720)");
  ToggleLevelMode(ws, view);
  EXPECT_EQ(view.LevelMode, LevelModeOf::Range);
  EXPECT_EQ((std::array{LevelFromScrollBar(ws, 1), LevelFromScrollBar(ws, 3)}), (std::array{3, 1}));
  EXPECT_EQ(ScrollBarFromLevel(ws, 2), 2);
  SelectLevel(ws, view, 1);
  StepLevel(ws, view, true);  // already at the top
  EXPECT_EQ(view.CurrentLevel, 1);
  StepLevel(ws, view, false);
  EXPECT_EQ(view.CurrentLevel, 2);
}

class SavedViewTest : public ViewStateTest {
 protected:
  SavedViewTest() { MakePermanentViews(ws.net); }
};

TEST_F(SavedViewTest, SavedViewComesBackWithItsLayers) {
  view.Is3D = 1;
  view.TiltAngle = 0.4f;
  SetScale(view, 640, 480, 120, -30);
  view.LevelMode = LevelModeOf::Range;
  view.LevelTop = 50;
  ws.net.PrimaryLayerShow[3] = 0;
  ws.net.SecondLayerShow[30] = 0;
  ui.QueueInput("Shaft area");
  const int slot = SaveNamedView(ws, view);
  ASSERT_EQ(slot, 6);

  ViewState other = MakeViewState(ws);
  other.Is3D = 1;
  for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
  for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
  ASSERT_TRUE(ApplyNamedView(ws, other, "Shaft area"));
  EXPECT_EQ((std::array{other.ScaleWidth, other.LevelTop, other.TiltAngle}),
            (std::array{640.0f, 50.0f, 0.4f}));
  EXPECT_EQ(other.LevelMode, LevelModeOf::Range);
  EXPECT_EQ((std::array{ws.net.PrimaryLayerShow[3], ws.net.PrimaryLayerShow[4],
                        ws.net.SecondLayerShow[30], ws.net.SecondLayerShow[24]}),
            (std::array<std::int16_t, 4>{0, -1, 0, -1}));
}

TEST_F(SavedViewTest, OldStyleSlotKeepsItsPanInTheCorner) {
  ws.net.ViewName[7] = "old";
  auto& v = ws.net.ViewValue[7];
  v[3] = 0;  // left edge 0 instead of minus half the width
  v[4] = 0;
  v[5] = 400;
  v[6] = 300;
  v[14] = 1;
  LoadViewSlot(ws, view, 7);
  EXPECT_FLOAT_EQ(view.ScaleLeft, -200);
  EXPECT_EQ(view.PivotState, 1);  // rebuilt from 0 by the projection pass
}

TEST_F(SavedViewTest, NamesAreCheckedBeforeSaving) {
  for (const std::optional<std::string>& name :
       {std::optional<std::string>("north,south"), {"say \"hi\""}, {"\tTab"}, {}}) {
    ui.QueueInput(name);
    EXPECT_EQ(SaveNamedView(ws, view), 0);
  }
  EXPECT_EQ(ui.MessageTexts(),
            (std::vector<std::string>{"No commas allowed in name !", "Invalid view name",
                                      "Invalid view name"}));
  EXPECT_EQ(ui.Records()[0].title, "View Name");
  EXPECT_EQ(ui.Records()[0].text, "Enter name of view");
}

TEST_F(SavedViewTest, ExistingNameAsksBeforeOverwriting) {
  ui.QueueInput("Decline");
  ASSERT_EQ(SaveNamedView(ws, view), 6);
  ui.QueueInput("Decline");
  ui.QueueAnswer(MsgAnswer::No);
  EXPECT_EQ(SaveNamedView(ws, view), 0);
  ui.QueueInput("Decline");
  ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_EQ(SaveNamedView(ws, view), 6);
  const auto& r = ui.Records();
  EXPECT_EQ(r.back().title, "Overwrite view");
  EXPECT_EQ(r.back().text, "There is already a view with that name!\nDo you wish to overwrite ?");
}

TEST_F(SavedViewTest, FullListAndUnknownNamesAreRefused) {
  for (int slot = 6; slot <= kLastUserView; ++slot)
    ws.net.ViewName[slot] = "v" + std::to_string(slot);
  ui.QueueInput("one more");
  EXPECT_EQ(SaveNamedView(ws, view), 0);
  EXPECT_TRUE(ui.Said("No view slots available to save view"));
  view.Is3D = 1;
  EXPECT_FALSE(ApplyNamedView(ws, view, "nowhere"));
  EXPECT_TRUE(ui.Said("Error - could not load view"));
}

// A saved view keeps the contaminant legend's animation time; a slot without one leaves the
// window's time alone.
TEST_F(SavedViewTest, SavedViewsKeepTheAnimationTime) {
  for (float time : {600.0f, 0.0f}) {
    view.SmokeLimit = time;
    SaveViewSlot(ws, view, 7);
    view.SmokeLimit = 42;
    LoadViewSlot(ws, view, 7);
    EXPECT_EQ(view.SmokeLimit, time == 0 ? 42 : time);
  }
}

TEST_F(SavedViewTest, DeletingGuardsThePermanentViews) {
  EXPECT_FALSE(DeleteNamedView(ws, 4));
  EXPECT_TRUE(ui.Said("Permanent view - cannot delete!"));
  ui.QueueInput("Stope");
  ASSERT_EQ(SaveNamedView(ws, view), 6);
  ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(DeleteNamedView(ws, 5));
  EXPECT_TRUE(ws.net.ViewName[6].empty());
  EXPECT_EQ(ws.net.ViewValue[6][5], 0);
  EXPECT_EQ(ui.Records().back().title, "Delete View");
}

}  // namespace
}  // namespace galeris
