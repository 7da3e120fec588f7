// The mouse tools: zoom, pan and rotation by button, click against drag, picks with their
// tolerances and ties, and the airway report.
#include "view/tools.h"

#include "core/units.h"
#include "tests/view/view_fixture.h"
#include "view/labels.h"

namespace galeris::test {
namespace {

struct ToolsTest : ::testing::Test, ViewFixture {
  ToolResponse Down(float x, float y, int button, bool shift = false) {
    return MouseDown(ws, view, tools, {x, y, button, shift, 0});
  }
  ToolResponse Move(float x, float y, int button) {
    return MouseMove(ws, view, tools, {x, y, button, false, 0});
  }
  ToolResponse Up(float x, float y, int button) {
    return MouseUp(ws, view, tools, {x, y, button, false, 0});
  }
  ToolResponse Click(float x, float y, int button) {
    Down(x, y, button);
    return Up(x, y, button);
  }

  ToolState tools;
};

TEST_F(ToolsTest, LeftClickHalvesAndRightClickDoublesTheViewAboutThePointClicked) {
  EXPECT_TRUE(Click(100, 50, MouseButtonOf::Left).Redraw);
  EXPECT_TRUE(ScaleIs(500, 375, 100, 50));
  Click(100, 100, MouseButtonOf::Right);
  EXPECT_TRUE(ScaleIs(1000, 750, 100, 50));
}

TEST_F(ToolsTest, LeftDragZoomsToTheRectangleEvenFromRightToLeft) {
  Down(200, 200, MouseButtonOf::Left);
  EXPECT_TRUE(Move(-200, -100, MouseButtonOf::Left).OverlayChanged);
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::Fence);
  EXPECT_EQ(tools.FenceDrawn, -1);
  EXPECT_TRUE(Up(-200, -100, MouseButtonOf::Left).Redraw);
  EXPECT_TRUE(ScaleIs(400, 300, 0, 50));
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::None);
}

TEST_F(ToolsTest, AReleaseOutsideTheWindowDropsTheFence) {
  Down(0, 0, MouseButtonOf::Left);
  Move(300, 200, MouseButtonOf::Left);
  EXPECT_TRUE(Up(900, 200, MouseButtonOf::Left).OverlayChanged);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 1000);
  EXPECT_EQ(tools.MouseDownFlag, 0);
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::None);
}

TEST_F(ToolsTest, MiddleButtonPansWhateverTheTool) {
  tools.ToolCode = ToolOf::Draw;
  Down(0, 0, MouseButtonOf::Middle);
  EXPECT_EQ(tools.PanOnly, -1);
  Move(200, 0, MouseButtonOf::Middle);
  Up(200, 0, MouseButtonOf::Middle);
  EXPECT_FLOAT_EQ(view.PanX, -200);
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::None);
}

// The picture stays where the pan drag or a click zoom left it, also when the next projection
// pass recentres the pan on the pivot; edge-on the pivot has to move in the upright plane.
TEST_F(ToolsTest, PannedPictureStaysInEveryThreeDView) {
  const int a = Add(100, 50, 900, 300, 80, 950);
  Build();
  for (const float tilt : {0.6f, kPi / 2}) {
    view.Is3D = 1;
    view.TiltAngle = tilt;
    view.SpinAngle = 0.3f;
    view.PivotState = 999;
    view.Pivot = {0, 150, 60, 920};
    ProjectNetwork(ws, view);
    const auto screen = [&] {
      return std::array<float, 2>{ws.net.ViewEnd1[a][0] - view.PanX,
                                  ws.net.ViewEnd1[a][1] - view.PanY};
    };
    const auto before = screen();
    Down(0, 0, MouseButtonOf::Middle);
    Move(100, 60, MouseButtonOf::Middle);
    Up(100, 60, MouseButtonOf::Middle);
    ProjectNetwork(ws, view);
    EXPECT_NEAR(screen()[0], before[0] + 100, 1) << tilt;
    EXPECT_NEAR(screen()[1], before[1] + 60, 1) << tilt;

    const auto centre = screen();
    Click(centre[0], centre[1], MouseButtonOf::Left);  // the end clicked comes to the centre
    ProjectNetwork(ws, view);
    EXPECT_NEAR(screen()[0], 0, 1) << tilt;
    EXPECT_NEAR(screen()[1], 0, 1) << tilt;
  }
}

TEST_F(ToolsTest, BothButtonsRotateWhateverTheTool) {
  Add(0, 0, -10, 100, 0, -10);
  Build();
  for (std::int16_t code : {ToolOf::Zoom, ToolOf::Draw}) {
    view.Is3D = 0;
    view.SpinAngle = 0;
    view.TiltAngle = 0;
    tools.ToolCode = code;
    Down(0, 0, MouseButtonOf::Left);
    Down(0, 0, MouseButtonOf::Both);
    const ToolResponse moved = Move(-250, -150, MouseButtonOf::Both);
    EXPECT_TRUE(moved.Wireframe) << code;
    EXPECT_EQ(tools.RotatingFlag, -1) << code;
    EXPECT_NE(view.Is3D, 0) << code;
    EXPECT_NEAR(view.SpinAngle, kDragPi / 4, 1e-4) << code;  // a quarter of the width: 1/8 turn
    const ToolResponse released = Up(-250, -150, MouseButtonOf::Right);
    EXPECT_TRUE(released.Redraw && released.Unavailable.empty()) << code;
    EXPECT_EQ(tools.RotatingFlag + tools.MouseDownFlag, 0) << code;
    EXPECT_FLOAT_EQ(view.ScaleWidth, 1000) << code;  // no zoom on the way out
  }
}

// The right button pans where the tool has no right action, and rotates for Move and Centre.
TEST_F(ToolsTest, RightDragPansOrRotatesByTheTool) {
  const std::pair<std::int16_t, bool> cases[] = {
      {ToolOf::Reverse, true}, {ToolOf::Draw, false}, {ToolOf::CentreRotate, false}};
  for (const auto& [code, pans] : cases) {
    SetPlanView(ws, view);
    SetScale(view, 1000, 750, 0, 0);
    tools.ToolCode = code;
    Down(0, 0, MouseButtonOf::Right);
    EXPECT_EQ(tools.PanOnly, pans ? -1 : 0) << code;
    Move(-250, -375, MouseButtonOf::Right);
    const ToolResponse released = Up(-250, -375, MouseButtonOf::Right);
    if (pans) {
      EXPECT_TRUE(ScaleIs(1000, 750, 250, 375)) << code;
      EXPECT_TRUE(released.Unavailable.empty()) << code;  // a pan, not the tool
    }
    if (code == ToolOf::Move || code == ToolOf::CentreRotate) {
      EXPECT_NEAR(view.SpinAngle, kDragPi / 4, 1e-4) << code;
      EXPECT_NEAR(view.TiltAngle, kDragPi / 4, 1e-4) << code;
      EXPECT_TRUE(released.Redraw);
      EXPECT_TRUE(Up(-250, 0, MouseButtonOf::Right).Unavailable.empty());  // a second release
    }
  }
}

TEST_F(ToolsTest, ShiftHeldRunsThePowerZoomUntilRelease) {
  ws.defaults.PowerZoomSpeed = 4;
  ToolResponse response = Down(0, 0, MouseButtonOf::Left, true);
  EXPECT_EQ(tools.ZoomMode, kPowerZoomMode);
  EXPECT_TRUE(response.PowerZoom);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 960);
  response = PowerZoomStep(ws, view, tools);
  EXPECT_TRUE(response.PowerZoom);
  EXPECT_NEAR(view.ScaleWidth, 921.6, 1e-3);
  EXPECT_TRUE(Up(0, 0, MouseButtonOf::Left).Redraw);
  EXPECT_EQ(tools.ZoomMode, 0);
  EXPECT_NEAR(view.ScaleWidth, 921.6, 1e-3);  // the release is no click zoom
  EXPECT_FALSE(PowerZoomStep(ws, view, tools).PowerZoom);

  Down(0, 0, MouseButtonOf::Right, true);
  EXPECT_NEAR(view.ScaleWidth, 921.6 * 1.04, 1e-2);
  Up(0, 0, MouseButtonOf::Right);
}

TEST_F(ToolsTest, PowerZoomStopsAtTheSmallestScale) {
  SetScale(view, 20.5f, 15, 0, 0);
  Down(0, 0, MouseButtonOf::Left, true);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 20);
  EXPECT_FALSE(PowerZoomStep(ws, view, tools).PowerZoom);
  EXPECT_TRUE(ui.Said("Minimum Scaling Reached"));
}

TEST_F(ToolsTest, WheelZoomsUnlessScrollZoomIsOff) {
  EXPECT_TRUE(WheelZoom(ws, view, 120));
  EXPECT_FLOAT_EQ(view.ScaleWidth, 800);
  EXPECT_TRUE(WheelZoom(ws, view, -120));
  ws.defaults.ScrollZoomOff = 1;
  EXPECT_FALSE(WheelZoom(ws, view, 120));
  EXPECT_FLOAT_EQ(view.ScaleWidth, 1000);
}

TEST_F(ToolsTest, NearestEndTiesGoToTheFirstFoundAndEntryBeatsExit) {
  const int a = Add(0, 0, -10, 100, 0, -10);
  const int b = Add(0, 40, -10, 100, 40, -10);
  const int shaft = Add(-200, -200, 0, -200, -200, -100);
  ws.net.EntryNodeName[a] = "Portal ";
  Build();
  EndPick pick = FindNearestEnd(ws, view, tools, 0, 20);
  EXPECT_EQ(pick.End, a);
  EXPECT_EQ(pick.NodeName, "Portal");
  pick = FindNearestEnd(ws, view, tools, 0, 21);
  EXPECT_EQ(pick.End, b);
  pick = FindNearestEnd(ws, view, tools, 95, 38);
  EXPECT_EQ((std::array{pick.End, pick.X, pick.Y}), (std::array{-b, 100, 40}));
  pick = FindNearestEnd(ws, view, tools, -201, -199, true);
  EXPECT_EQ((std::array{pick.End, pick.Z}), (std::array{shaft, 0}));
  EXPECT_FLOAT_EQ(view.WorkingRL, 0);
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 300, 300).End, 0);
}

TEST_F(ToolsTest, TolerancesDoubleWhenTheViewIsZoomedOutByTwo) {
  const int a = Add(0, 0, -10, 400, 0, -10);
  Build();
  // A width of 1000 gives a pick tolerance of 40.
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 0, 39).End, a);
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 0, 60).End, 0);
  EXPECT_EQ(FindNearestAirway(ws, view, tools, 200, 60).Airway, 0);
  SetScale(view, 2000, 1500, 0, 0);
  Build();
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 0, 60).End, a);
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 0, 81).End, 0);
  EXPECT_EQ(FindNearestAirway(ws, view, tools, 200, 60).Airway, a);

  // The click tolerance is a fiftieth of the width: 40 now.
  Down(0, 0, MouseButtonOf::Left);
  Move(35, 35, MouseButtonOf::Left);
  Up(35, 35, MouseButtonOf::Left);
  EXPECT_TRUE(ScaleIs(1000, 750, 0, 0));
}

TEST_F(ToolsTest, NearestAirwayGivesTheFractionAndTheWorldPoint) {
  const int a = Add(0, 0, 10, 200, 0, 30);
  Add(0, 10, 0, 200, 10, 0);
  Build();
  const AirwayPick pick = FindNearestAirway(ws, view, tools, 50, 4);
  EXPECT_EQ(pick.Airway, a);
  EXPECT_NEAR(pick.Fraction, 0.25, 0.01);
  EXPECT_NEAR(pick.X, 50, 1);
  EXPECT_EQ(pick.Y, 0);
  EXPECT_NEAR(pick.Z, 15, 0.2);
  EXPECT_FLOAT_EQ(view.WorkingRL, static_cast<float>(pick.Z));
  // Equally near both: the first one drawn keeps it.
  EXPECT_EQ(FindNearestAirway(ws, view, tools, 100, 5).Airway, a);
}

TEST_F(ToolsTest, AShaftSeenEndOnCanOnlyBeFoundByItsEnds) {
  const int shaft = Add(100, 100, 0, 100, 100, -300);
  Build();
  const AirwayPick pick = FindNearestAirway(ws, view, tools, 100, 100);
  EXPECT_EQ(pick.Airway, 0);
  EXPECT_FLOAT_EQ(pick.X, 100);  // the plan point under the mouse
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 100, 100).End, shaft);
}

TEST_F(ToolsTest, VerticalLinesOnScreenArePickedBesideThem) {
  const int a = Add(0, -200, 0, 0, 200, 0);
  Build();
  const AirwayPick pick = FindNearestAirway(ws, view, tools, 15, 100);
  EXPECT_EQ(pick.Airway, a);
  EXPECT_NEAR(pick.Fraction, 0.75, 0.01);
  EXPECT_EQ(FindNearestAirway(ws, view, tools, 15, 260).Airway, 0);  // beyond its end
}

TEST_F(ToolsTest, PicksFollowMirroredAxes) {
  ws.net.AxisSignX = -1;
  const int a = Add(300, 0, 0, 400, 0, 0);
  Build();
  // The mouse is axis-signed like the world, the draw list is as drawn.
  EXPECT_EQ(FindNearestEnd(ws, view, tools, 300, 0).End, a);
  EXPECT_EQ(FindNearestAirway(ws, view, tools, 350, 0).Airway, a);
}

TEST_F(ToolsTest, InfoToolShowsTheReportAndOpensTheDialogOnLeftRelease) {
  const int a = Add(0, 0, -10, 200, 0, -10);
  ws.net.AirwayNo[a] = 57;
  ws.net.Quantity[a] = 12.5f;
  Build();
  tools.ToolCode = ToolOf::Info;
  const ToolResponse pressed = Down(100, 3, MouseButtonOf::Left);
  ASSERT_TRUE(pressed.ShowReport);
  const std::vector<std::string>& rows = pressed.ReportRows;
  ASSERT_EQ(rows.size(), 12u);
  EXPECT_EQ(rows[0], "     AIRWAY 57");
  EXPECT_EQ(rows[2], "Q = " + AirwayLabel(ws, DataType::Quantity, a, 1));
  EXPECT_TRUE(Move(150, 3, MouseButtonOf::Left).Unavailable.empty());
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::None);
  const ToolResponse released = Up(150, 3, MouseButtonOf::Left);
  EXPECT_TRUE(released.HideReport);
  EXPECT_EQ(released.InfoAirway, a);

  EXPECT_TRUE(Down(100, 3, MouseButtonOf::Right).ShowReport);
  EXPECT_EQ(Up(100, 3, MouseButtonOf::Right).InfoAirway, 0);  // the right button only reports
}

TEST_F(ToolsTest, CentreToolTurnsAboutTheAirwayClicked) {
  const int a = Add(0, 0, -50, 200, 0, -50);
  Build();
  tools.ToolCode = ToolOf::CentreRotate;
  const ToolResponse response = Click(100, 2, MouseButtonOf::Left);
  EXPECT_TRUE(response.Redraw);
  EXPECT_NE(view.Is3D, 0);
  EXPECT_EQ(view.PivotState, a);
  EXPECT_EQ(view.Pivot, (decltype(view.Pivot){0, 100, 0, -50}));
  EXPECT_NEAR(view.PanX, 100, 1e-3);
}

TEST_F(ToolsTest, DrawToolSnapsToAnEndAndDrawsARubberBand) {
  Add(0, 0, -20, 200, 0, -20);
  Build();
  tools.ToolCode = ToolOf::Draw;
  Down(196, 3, MouseButtonOf::Left);
  EXPECT_EQ(tools.PickedEnd, 1);
  EXPECT_EQ((std::array<double, 4>{tools.PressX, tools.PressY, tools.PickZ, view.WorkingRL}),
            (std::array<double, 4>{200, 0, -20, -20}));
  EXPECT_TRUE(Move(300, 100, MouseButtonOf::Left).OverlayChanged);
  EXPECT_EQ(tools.Overlay.kind, OverlayShape::Kind::RubberBand);
  EXPECT_EQ(tools.Overlay.colour, RGBColour(0, 0, 0));
  EXPECT_TRUE(Up(300, 100, MouseButtonOf::Left).Edited);
}

TEST_F(ToolsTest, ReleaseFarBeyondTheWorldIsRefused) {
  tools.ToolCode = ToolOf::Fan;
  view.PanX = 9999990;
  Down(20, 0, MouseButtonOf::Left);
  const ToolResponse response = Up(20, 0, MouseButtonOf::Left);
  EXPECT_TRUE(ui.Said("ERROR - Cursor Coordinates exceed size limit"));
  EXPECT_TRUE(response.Unavailable.empty());
  EXPECT_EQ(tools.MouseDownFlag, 0);
}

TEST_F(ToolsTest, AReleaseInAnotherWindowActsThereAndRedrawsBoth) {
  Down(0, 0, MouseButtonOf::Left);
  ViewState other = view;
  SetScale(other, 4000, 3000, 0, 0);
  const ToolResponse response = MouseUp(ws, other, tools, {10, 10, MouseButtonOf::Left, false, 1});
  EXPECT_TRUE(response.CrossWindow);
  EXPECT_TRUE(response.Redraw);
  EXPECT_FLOAT_EQ(other.ScaleWidth, 2000);
  EXPECT_FLOAT_EQ(view.ScaleWidth, 1000);
}

TEST_F(ToolsTest, CoordinatesShowTheWorldPointUnderTheMouse) {
  view.PanX = 1000;
  view.PanY = 2000;
  view.WorkingRL = -150;
  const CoordinateText text = ShowCoordinates(ws, view, tools, 25, -50);
  std::vector<std::string> expected;
  for (const double v : {1025, 1950, -150, 1000}) expected.push_back(FormatValue(ws.units, v, 14));
  EXPECT_EQ((std::vector{text.X, text.Y, text.Z, text.PanX}), expected);
}

TEST_F(ToolsTest, TheOverlayIsDrawnInThePlaneAsDrawn) {
  ws.net.AxisSignY = -1;
  Down(0, 0, MouseButtonOf::Left);
  Move(100, 100, MouseButtonOf::Left);
  const OverlayShape shape = OverlayToDraw(ws.net, tools);
  EXPECT_EQ(shape.kind, OverlayShape::Kind::Fence);
  EXPECT_FLOAT_EQ(shape.X2, 100);
  EXPECT_FLOAT_EQ(shape.Y2, -100);
}

}  // namespace
}  // namespace galeris::test
