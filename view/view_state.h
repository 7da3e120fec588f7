// The geometry of looking at the network from one view window: rotation, tilt, pan, scale and
// level band, the projection of airway ends onto the drawing plane and back, fitting, zooming,
// the rotation button's steps, the level controls and the saved views. Plain data and
// functions; the window that owns a ViewState only feeds it its size.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

inline constexpr float kPi = 3.141592654f;  // the view's pi, kept apart from the drag's 3.14159
inline constexpr float kDragPi = 3.14159f;

// Level modes, in the order of the Levels menu.
namespace LevelModeOf {
inline constexpr std::int16_t Single = 1, Multiple = 2, Range = 3, All = 4;
}

// Line state for airways outside the shown layers: the two low bits of DisplayFlags.
namespace LineOpt {
inline constexpr std::int16_t Invisible = 0, Dim = 1, Solid = 2;
}

// Bits of DisplayBits, one per check box of the display options.
namespace Show {
inline constexpr std::int32_t NodeNames = 1, AirwayNames = 2, DataValues = 4, ResistanceSymbols = 8,
                              FanSymbols = 16, NodeSymbols = 32, Arrows = 64, Contaminants = 128,
                              FloatingText = 256, OffLevelRaises = 512;
}

// Details still shown on airways outside the layers (bits of DisplayFlags above the line state).
namespace OffLayer {
inline constexpr std::int16_t Data = 4, AirwayName = 8, NodeNames = 16, Arrows = 32,
                              NodeSymbols = 64;
}

// Slots of the saved views.
inline constexpr int kPermanentViews = 5;
inline constexpr int kLastUserView = 100;
inline constexpr int kWindowSlotBase = 100;  // slot 100 + n holds window position n

struct ViewState {
  // Window: its client size in pixels, and whether it is shown at all.
  bool WindowOpen = true;
  bool Minimised = false;
  int PixelWidth = 800;
  int PixelHeight = 600;
  int WindowNumber = 0;

  // Rotation (radians) and the steps the next projection pass adds.
  float TiltAngle = 0, SpinAngle = 0;
  float TiltStep = 0, SpinStep = 0;
  std::int16_t Is3D = 0;
  float Cs = 1, Ss = 0, Ct = 1, St = 0;  // sines and cosines of the last projection pass

  // Drawing plane in world units, symmetric about the origin.
  float ScaleLeft = -500, ScaleTop = -375, ScaleWidth = 1000, ScaleHeight = 750;
  float PanX = 0, PanY = 0;
  float AspectRatio = 0.75f;
  std::int32_t ViewTop = 0, ViewBottom = 0, ViewLeft = 0, ViewRight = 0;
  bool PanHold = false;

  // Perspective pull of 3-D mode.
  std::int16_t Perspective = 0;
  float EyeDistance = 0, EyeX = 0, EyeY = 0, EyeZ = 0;

  // Pivot: X, Y, Z in [1..3]; see PivotState for who set it.
  std::array<std::int32_t, 4> Pivot{};
  std::int16_t PivotState = 0;  // 0 rebuild, 1 on demand, 999 fixed by the user, else an airway
  bool PivotHold = false;

  // Level band.
  std::int16_t LevelMode = LevelModeOf::All;
  std::int16_t PreviousLevelMode = LevelModeOf::All;  // for the Levels toggle
  float LevelBottom = -99999, LevelTop = 99999;
  float WorkingRL = 0;
  int CurrentLevel = 1;
  std::vector<std::int16_t> SelectedLevels;  // Multiple mode: list positions, up to 100

  // What is drawn.
  std::int16_t DisplayFlags = LineOpt::Dim;
  std::int32_t DisplayBits = 0x1FF;
  bool ColourByAir = false;
  bool GridOn = false;
  std::int16_t DataTypeCode = 12;
  std::int16_t FlowDimMode = 0;  // 0 all, 1 dim, 2 invisible outside the flow limits
  float FlowMinimum = 0, FlowMaximum = 0;
  std::int16_t DataFilter = 0;  // 0 all, 1 vertical, 2 horizontal, 3 selected
  std::array<std::int16_t, 7> SymbolSize{1, 2, 5, 5, 5, 5, 5};
  std::array<std::int16_t, 7> SymbolScaled{};
  bool TextScaled = false;
  // Leave out a node circle, symbol, arrow or text whose place on the screen is already taken by
  // one drawn before it (the user's choice, kept in the program's settings).
  bool Declutter = false;

  // Contaminant display: 0 none, 1 spread bands from concentrations, 2 stored bands.
  std::int16_t SmokeState = 0;
  float SmokeLimit = 0;
  std::array<float, 6> LegendValue{20000, 16000, 12000, 8000, 4000, 0};  // highest first

  // Visible list: airway positions in net.SmokeQueue[1..VisibleCount], then a 0.
  int VisibleCount = 0;
  std::vector<std::int16_t> VisibleTexts;  // floating texts that pass the band
  bool PlanCopyFresh = false;
  std::array<std::int64_t, 3>
      LayerMask{};  // [0] secondary 25..48, [1] primary, [2] secondary 1..24
  // The current window takes its masks from the network's shown-layer flags; the others keep
  // the masks they had when they were left.
  bool FollowsStoreLayers = true;

  // Draw list: net.AirwayLine[0..AirwayLineCount-1], with the airway of each record here.
  int AirwayLineCount = 0;
  bool AirwayLineShown = false;
  std::vector<std::int32_t> LineAirway;
  bool FitRunning = false;
  bool Moving = false;                       // rotation or pan under way: no grid labels
  bool Panning = false;                      // a pan drag: its quick pictures keep the grid
  int SingleAirway = 0;                      // a redraw of one airway's symbols only; 0 for all
  std::vector<std::int64_t> NodeKeyScratch;  // sorted end keys for joined-end tests
  std::vector<std::uint8_t> TakenCells;      // declutter: screen cells already drawn on

  // Status texts for the frame.
  std::string StatusRotX = "RotX 0", StatusRotY = "RotY 0";
  std::string FrameCaption;
  float PrintableWidthMm = 277;  // the printer's printable width, set by the program
  bool FitAfterView = false;
};

// Builds a view state sized for the workspace: level band, display bits and text from the
// defaults, the visible list's storage.
ViewState MakeViewState(const Workspace& ws);

// The symbol rows of the settings: DataRowType holds each symbol's size, DataRowSize its scale
// box, 1 for a fixed share of the window (the stored default) and 2 for shrinking with distance.
inline constexpr std::int16_t kFixedSymbolRow = 1, kScaledSymbolRow = 2;
void TakeSymbolSettings(const Defaults& defaults, ViewState& view);
void KeepSymbolSettings(const ViewState& view, Defaults& defaults);

// Reads the bounds of the drawing plane into ViewTop, ViewBottom, ViewLeft and ViewRight.
void ReadViewBounds(ViewState& view);

// Projects one airway's two ends into ViewEnd1 and ViewEnd2, or with index 0 the pivot.
void ProjectAirway(Workspace& ws, ViewState& view, int index);
// Adds the rotation steps, clamps and wraps the angles and projects every visible airway.
void ProjectNetwork(Workspace& ws, ViewState& view);
// A world point without the perspective: plan (x - PanX, y - PanY), else rotated then panned.
void ProjectPoint(const ViewState& view, double x, double y, double z, float& screenX,
                  float& screenY);

// What the mouse is doing while a window point is turned back into a world point.
struct UnprojectInput {
  bool ShiftHeld = false;
  bool PowerZoom = false;
  bool ButtonHeld = false;
  double PickX = 0, PickY = 0, PickZ = 0;  // world point of the press
  float PressX = 0, PressY = 0;            // window point of the press, axis-signed
};

// Window point (already axis-signed) to world. worldZ gives the height of the horizontal plane
// searched; with Shift held or edge-on the point moves in the plane facing the viewer instead.
void UnprojectPoint(const Network& net, const ViewState& view, float screenX, float screenY,
                    double& worldZ, double& worldX, double& worldY,
                    const UnprojectInput& input = {});
// Movement (x1, y1) to (x2, y2) in the vertical plane that faces the viewer.
void ShiftPointInPlane(const ViewState& view, float x1, float y1, float x2, float y2,
                       double& worldX, double& worldY, double& worldZ);

// 0 plan, 1 3-D, 2 3-D seen edge-on.
int ViewKind(const ViewState& view);

void ResetPivot(const Workspace& ws, ViewState& view);
void PivotToVisible(Workspace& ws, ViewState& view);
void CentrePivot(const Workspace& ws, ViewState& view);
// Moves the pivot within the plane facing the viewer until it stands at the window's centre, so
// that the next projection, which centres the pivot, keeps the view where a fit left it.
void PivotOnWindowCentre(ViewState& view);
void SetPlanView(Workspace& ws, ViewState& view);
void SetThreeDView(Workspace& ws, ViewState& view);

void SetScale(ViewState& view, float width, float height, float panX, float panY);
// Zoom with its limits; the messages go through ws.ui.
void SetZoom(Workspace& ws, ViewState& view, float width, float height);
// A new window size in pixels: the width in world units stays, the height follows the shape.
void ResizeView(Workspace& ws, ViewState& view, int pixelWidth, int pixelHeight);
void FitNetwork(Workspace& ws, ViewState& view);
void SetScaleCaption(const Workspace& ws, ViewState& view);

// Moves the centre of the window to (panX, panY) in projected terms; in 3-D the pivot follows
// so that the next projection pass keeps the new centre. Edge-on it follows only when the pan
// ends, through ShiftPivotInPlane.
void MovePan(const Network& net, ViewState& view, float panX, float panY);
// Moves the pivot by a pan of (dx, dy) in the vertical plane that faces the viewer.
void ShiftPivotInPlane(ViewState& view, float dx, float dy);

// Zooms: the right click doubles the view about its centre, the left click halves it about
// the point clicked, a drag rectangle becomes the view. Points are window coordinates.
void ZoomOutClick(Workspace& ws, ViewState& view);
void ZoomClick(Workspace& ws, ViewState& view, float x1, float y1, float x2, float y2);

// The rotation button: a press enters 3-D and fixes the pivot; each timer tick turns by the
// position held in the button and returns true when the view moved.
void BeginRotator(Workspace& ws, ViewState& view);
bool RotatorTick(Workspace& ws, ViewState& view, float buttonX, float buttonY);

// The drag rotation: a full window's width is half a turn, a full height a quarter turn.
struct DragRotation {
  float StartFractionX = 0, StartFractionY = 0, StartSpin = 0, StartTilt = 0;
};
DragRotation BeginDragRotation(Workspace& ws, ViewState& view, float x, float y);
void DragRotate(Workspace& ws, ViewState& view, const DragRotation& drag, float x, float y);

// Levels: CmbRL's choice (list position 1..RLCount), the scroll bar's value to a list
// position, the Up and Down keys, and the Levels toggle.
void SelectLevel(Workspace& ws, ViewState& view, int listPosition);
int LevelFromScrollBar(const Workspace& ws, int scrollValue);
int ScrollBarFromLevel(const Workspace& ws, int listPosition);
void StepLevel(Workspace& ws, ViewState& view, bool up);
void ToggleLevelMode(Workspace& ws, ViewState& view);
// "View " + number + " : " + level name and band.
std::string LevelCaption(const Workspace& ws, const ViewState& view);

// Saved views.
// Sets the network's shown-layer flags from the view's masks: a window made current brings its
// layers back.
void ShowViewLayers(Network& net, const ViewState& view);
void SaveViewSlot(Workspace& ws, const ViewState& view, int slot);
void LoadViewSlot(Workspace& ws, ViewState& view, int slot);
// A file that carries a start-up view (slot 0, stored with a scale) opens in it: loads it at
// its stored width for the window's shape and returns true. Files without one open fitted to the
// whole network, as before.
bool LoadStartupView(Workspace& ws, ViewState& view);
// The five permanent views, made when the defaults are loaded.
void MakePermanentViews(Network& net);
// CmbView, on every pick: loads the view of that name; false after "Error - could not load
// view".
bool ApplyNamedView(Workspace& ws, ViewState& view, const std::string& name);
// mnuSaveView: asks for a name and stores the view; returns the slot, 0 when nothing was saved.
int SaveNamedView(Workspace& ws, const ViewState& view);
// mnuDelView for the list position given (0-based, as in CmbView); true when deleted.
bool DeleteNamedView(Workspace& ws, int listPosition);
// The names for CmbView, slots 1..100 that are in use.
std::vector<std::string> ViewNames(const Network& net);

}  // namespace galeris
