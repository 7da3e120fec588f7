// The mouse tools of a view window: which button means what, when a press is a click and when
// a drag, what lies under the mouse, and the shapes (fence, rubber band) drawn over the picture
// while a drag runs. Plain data and functions; the window feeds it presses, moves and releases
// in its own world units and carries out what each event answers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/workspace.h"
#include "view/canvas.h"
#include "view/edit_dialogs.h"
#include "view/view_state.h"

namespace galeris {

// Values of ToolCode.
namespace ToolOf {
inline constexpr std::int16_t Zoom = 0, Draw = 1, Move = 2, Reverse = 3, Delete = 4, Fan = 5,
                              Text = 6, Contaminant = 7, Edit = 8, Info = 9, CentreRotate = 10,
                              Follow = 11, CopyPaste = 15, Layers = 16, Insert = 17,
                              SmokeReport = 18, Select = 19, Spare = 20;
}

// Values of MouseButton.
namespace MouseButtonOf {
inline constexpr int None = 0, Left = 1, Right = 2, Both = 3, Middle = 4;
}

inline constexpr float kCoordinateLimit = 9999999;  // beyond it a release is refused
inline constexpr std::int16_t kPowerZoomMode = 5;   // ZoomMode while the power zoom runs

// One mouse event in a window. X and Y are the window's own world units with the axis signs
// already applied (the window's point (0, 0) is its centre).
struct MouseInput {
  float X = 0, Y = 0;
  int Button = MouseButtonOf::None;
  bool Shift = false;
  int Window = 0;
};

// An airway end found near the mouse. End is the airway position, positive for the entry end
// and negative for the exit end, 0 for none.
struct EndPick {
  int End = 0;
  std::int32_t X = 0, Y = 0, Z = 0;
  std::string NodeName;
  float ScreenX = 0, ScreenY = 0;  // where the end is drawn, axis-signed as the mouse
};

// An airway found near the mouse, with the world point along it; Airway 0 for none.
struct AirwayPick {
  int Airway = 0;
  double X = 0, Y = 0, Z = 0;
  float Fraction = 0;  // 0 at the entry end, 1 at the exit end
};

// A shape the window draws over the picture, in the drawing plane's own units (as drawn).
struct OverlayShape {
  enum class Kind { None, Fence, RubberBand } kind = Kind::None;
  float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  Colour colour = 0;
};

// The coordinate fields of the frame, as shown.
struct CoordinateText {
  std::string X, Y, Z, PanX, PanY;
};

// What the editing tools keep between actions.
struct EditState {
  EditDialogs* Dialogs = nullptr;  // the dialogs an edit may open; none in most tests
  bool MoveOnly = false;           // tool 2 picked an airway's body with the left button alone
  bool ConfirmJoin = true;         // mnuConfirm: ask before an end joins an existing node
  int TextPicked = 0;              // the floating text tool 2 picked, 0 for none
  int DrawnAirway = 0;
  WorldPoint InsertPoint{};  // the last pick's world point
  AttributeChoice AttributeChosen{};
  int CopySource = 0;  // airway whose attributes were copied; 0 for none
  // The copied attributes, in the fields of the store.
  std::int16_t CopiedWallType = 0, CopiedShockType = 0, CopiedResType = 0;
  float CopiedWallFactor = 0, CopiedShockFactor = 0, CopiedResistance = 0, CopiedLength = 0;
  Dim2 CopiedDim{};
  std::int32_t CopiedCode = 0;
  std::int16_t CopiedPrimaryLayer = 1, CopiedSecondLayer = 1;
  std::int16_t DefaultPrimaryLayer = 1, DefaultSecondLayer = 1;
  std::int16_t SearchMode = 1;  // Find: 0 off, 1 faults, 2 fixed quantities, 3 fans
  int LastFound = 0;            // position of the last airway Find or Locate went to
  int FenceHit = 0;
  // frmSmokeTrace's "Report Pin": the pin a left click places (1 smoke, 2 clear).
  std::int16_t PinType = 1;
  // The contaminant source tool has been used since the program started: from then on the
  // spread keeps the "Retain Legend" choice it last read.
  bool SourceToolUsed = false;
};

// The shared state of the mouse tools.
struct ToolState {
  std::int16_t ToolCode = ToolOf::Zoom;
  int PaletteIndex = 0;  // button whose cursor the tool shows

  int MouseButton = MouseButtonOf::None;
  std::int16_t ShiftState = 0;
  std::int16_t MouseDownFlag = 0;
  float MouseX = 0, MouseY = 0;
  float PressX = 0, PressY = 0;
  float LastX = 0, LastY = 0;
  double PickX = 0, PickY = 0, PickZ = 0;
  std::string PickNode;
  std::int16_t PickedEnd = 0;
  std::int16_t PickedAirway = 0;
  float PickFraction = 0;
  std::int16_t RotatingFlag = 0;
  std::int16_t PanOnly = 0;
  std::int16_t PickDivisor = 25;
  std::int16_t PickMode = 1;  // 1 picking, 2 panning

  std::int16_t ZoomMode = 0;
  std::int16_t FenceDrawn = 0;
  bool PanMoved = false;
  float PanBaseX = 0, PanBaseY = 0;  // pan at the press
  DragRotation Rotation;
  int ToolSourceWindow = -1;
  bool ReportShown = false;

  OverlayShape Overlay;  // in axis-signed window terms, like the mouse

  EditState Edit;

  // Last cursor handed out: the palette column and the button row (2 right, 1 any other).
  int CursorColumn = -1, CursorRow = -1;
};

// What the window must do after an event.
struct ToolResponse {
  bool Redraw = false;          // the full picture
  bool Wireframe = false;       // the fast picture of a moving view
  bool OverlayChanged = false;  // repaint the overlay shape
  bool PowerZoom = false;       // call PowerZoomStep again after 0.2 s while the button is held
  bool ShowReport = false;      // the pop-up of tool 9, with these rows, at the mouse
  bool HideReport = false;
  std::vector<std::string> ReportRows;
  int InfoAirway = 0;        // open the airway info dialog on this airway position
  std::string Unavailable;   // a tool whose action this version does not offer yet
  bool CrossWindow = false;  // the release came in another window: redraw the source too
  bool Edited = false;       // the network changed: every window follows
};

// The tool tip of a tool code, empty for none.
std::string_view ToolTip(std::int16_t toolCode);
// True for tools that give the right button an action of their own; elsewhere it pans.
bool ToolHasRightAction(std::int16_t toolCode);

// The cursor resource of a palette column and button: "MAGNIFY", "HAND", ... or empty for the
// plain cross.
std::string CursorName(int paletteColumn, int button);
// The cursor for the current tool and button, remembered as the last one handed out. Paste mode
// shows column 21 since its command leaves the Copy button down.
std::string SetToolCursor(ToolState& tools, int button);

// Picks in the last draw list. x and y are axis-signed window terms, as in MouseInput.
EndPick FindNearestEnd(Workspace& ws, ViewState& view, const ToolState& tools, float x, float y,
                       bool takeHeight = false);
AirwayPick FindNearestAirway(Workspace& ws, ViewState& view, const ToolState& tools, float x,
                             float y);

// The world point under the mouse for the coordinate fields.
CoordinateText ShowCoordinates(const Workspace& ws, const ViewState& view, const ToolState& tools,
                               float x, float y);

// Tool 9's pop-up rows for one airway: the heading, a blank line, then a row per value.
std::vector<std::string> AirwayReportRows(const Workspace& ws, const ViewState& view, int airway);
// The pop-up for the airway nearest the mouse; empty when none is near.
std::vector<std::string> AirwayReport(Workspace& ws, ViewState& view, ToolState& tools, float x,
                                      float y);

// Tool 10's left click: the pivot goes to the picked point, and the view turns about it.
void CentreOnAirway(Workspace& ws, ViewState& view, const AirwayPick& pick);

// The state machine.
ToolResponse MouseDown(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in);
ToolResponse MouseMove(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in);
ToolResponse MouseUp(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in);
// One pass of the power zoom while its button is held; the answer says whether to go on.
ToolResponse PowerZoomStep(Workspace& ws, ViewState& view, ToolState& tools);
// The wheel: one notch per 120 of delta, forward zooms in. False when scroll zoom is off.
bool WheelZoom(Workspace& ws, ViewState& view, int delta);

// The overlay in the drawing plane's own units, as the window draws it.
OverlayShape OverlayToDraw(const Network& net, const ToolState& tools);

}  // namespace galeris
