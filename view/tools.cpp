// The mouse tools of a view window: presses, moves and releases turned into zooms, pans,
// rotations, fences, rubber bands, picks and the airway report. Tolerances are shares of the
// window's width in world units, so they follow the zoom and never depend on pixels.
#include "view/tools.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/number_format.h"
#include "core/units.h"
#include "view/construction.h"
#include "view/drawing.h"
#include "view/fence_tools.h"
#include "view/labels.h"

namespace galeris {
namespace {

constexpr float kNoDistance = 9999999;
constexpr float kVerticalSlope = 100000000;  // the slope a vertical line is given
constexpr int kClickShare = 50;              // a click moves less than ScaleWidth / 50
constexpr int kLongLengthUnit = 14;
constexpr int kWheelNotch = 120;
constexpr float kWheelStep = 1.25f;
constexpr Colour kMoveBandColour = RGBColour(255, 0, 0);  // light red, 12 of the standard palette
constexpr Colour kDrawBandColour = RGBColour(0, 0, 0);    // black, which the inverting pen shows

// Tools whose left drag draws a fence and whose right drag pans.
bool IsRectangleTool(std::int16_t code) {
  return code == ToolOf::Zoom || code == ToolOf::Move || code == ToolOf::Delete ||
         code == ToolOf::CopyPaste || code == ToolOf::Layers || code == ToolOf::Select;
}

bool IsBandTool(std::int16_t code) {
  return code == ToolOf::Draw || code == ToolOf::Move;
}

int DrawnLineCount(const Network& net, const ViewState& view) {
  const int count = std::min<int>(view.AirwayLineCount, static_cast<int>(net.AirwayLine.size()));
  return std::min<int>(count, static_cast<int>(view.LineAirway.size()));
}

float PickTolerance(const ViewState& view, const ToolState& tools) {
  return view.ScaleWidth / (tools.PickDivisor > 0 ? tools.PickDivisor : 25);
}

UnprojectInput PressInput(const ToolState& tools, bool buttonHeld) {
  UnprojectInput input;
  input.ShiftHeld = tools.ShiftState != 0;
  input.PowerZoom = tools.ZoomMode == kPowerZoomMode;
  input.ButtonHeld = buttonHeld;
  input.PickX = tools.PickX;
  input.PickY = tools.PickY;
  input.PickZ = tools.PickZ;
  input.PressX = tools.PressX;
  input.PressY = tools.PressY;
  return input;
}

void ClearDrag(ViewState& view, ToolState& tools) {
  tools.MouseDownFlag = 0;
  tools.RotatingFlag = 0;
  tools.PanOnly = 0;
  tools.FenceDrawn = 0;
  tools.PanMoved = false;
  tools.PickMode = 1;
  tools.ZoomMode = 0;
  tools.ToolSourceWindow = -1;
  tools.Overlay = {};
  view.Moving = false;
  view.Panning = false;
}

bool InsideWindow(const Network& net, const ViewState& view, float x, float y) {
  const float rx = x * net.AxisSignX, ry = y * net.AxisSignY;
  return rx >= view.ScaleLeft && rx <= view.ScaleLeft + view.ScaleWidth && ry >= view.ScaleTop &&
         ry <= view.ScaleTop + view.ScaleHeight;
}

// Tools 1 and 2 at the press: snap to a nearby end, else note the airway under the mouse.
void BeginAirwayPick(Workspace& ws, ViewState& view, ToolState& tools) {
  tools.Edit.MoveOnly = false;
  tools.Edit.TextPicked = 0;
  const EndPick end = FindNearestEnd(ws, view, tools, tools.MouseX, tools.MouseY, true);
  if (end.End == 0) {
    const AirwayPick hit = FindNearestAirway(ws, view, tools, tools.MouseX, tools.MouseY);
    tools.PickedAirway = static_cast<std::int16_t>(hit.Airway);
    tools.PickFraction = hit.Fraction;
    if (hit.Airway == 0) {
      // Nothing of the network under the press: tool 2 may take a floating text instead.
      if (tools.ToolCode == ToolOf::Move)
        tools.Edit.TextPicked = FindNearestText(ws.net, view, tools, tools.MouseX, tools.MouseY);
      return;
    }
    if (tools.ToolCode == ToolOf::Draw) {
      // The new airway starts on the body: the point there, where the airway is cut.
      tools.PickX = hit.X;
      tools.PickY = hit.Y;
      tools.PickZ = hit.Z;
      return;
    }
    // Tool 2 on a body takes the nearer end; the left button alone moves a selection.
    const Network& net = ws.net;
    const Coord3& near = hit.Fraction < 0.5f ? net.Coord1[hit.Airway] : net.Coord2[hit.Airway];
    tools.PickedEnd = static_cast<std::int16_t>(hit.Airway);
    tools.Edit.InsertPoint = {double(near[1]), double(near[2]), double(near[3])};
    tools.Edit.MoveOnly = tools.MouseButton == MouseButtonOf::Left;
    return;
  }
  tools.PickedEnd = static_cast<std::int16_t>(std::abs(end.End));
  tools.PickX = end.X;
  tools.PickY = end.Y;
  tools.PickZ = end.Z;
  tools.Edit.InsertPoint = {double(end.X), double(end.Y), double(end.Z)};
  tools.PickNode = end.NodeName;
  tools.PressX = tools.LastX = end.ScreenX;
  tools.PressY = tools.LastY = end.ScreenY;
}

void StartRotation(Workspace& ws, ViewState& view, ToolState& tools) {
  tools.Rotation = BeginDragRotation(ws, view, tools.PressX, tools.PressY);
  tools.RotatingFlag = -1;
  view.Moving = true;
}

// The pan drag: nothing moves until the mouse leaves the click tolerance.
bool PanDrag(Workspace& ws, ViewState& view, ToolState& tools) {
  const float dx = tools.PressX - tools.MouseX, dy = tools.PressY - tools.MouseY;
  if (!tools.PanMoved && std::fabs(dx) <= view.ScaleWidth / kClickShare &&
      std::fabs(dy) <= view.ScaleHeight / kClickShare) {
    return false;
  }
  tools.PanMoved = true;
  tools.PickMode = 2;
  view.Moving = true;
  view.Panning = true;
  MovePan(ws.net, view, dx + tools.PanBaseX, dy + tools.PanBaseY);
  ProjectNetwork(ws, view);
  return true;
}

void NormaliseFence(ToolState& tools, float pickDistance) {
  if (std::fabs(tools.LastX - tools.PressX) <= pickDistance &&
      std::fabs(tools.LastY - tools.PressY) <= pickDistance) {
    return;
  }
  if (tools.LastX < tools.PressX) std::swap(tools.LastX, tools.PressX);
  if (tools.LastY < tools.PressY) std::swap(tools.LastY, tools.PressY);
}

// The release of tool 0: a left click or drag zooms in, a right click zooms out.
void ZoomRelease(Workspace& ws, ViewState& view, ToolState& tools, int button,
                 ToolResponse& response) {
  if (tools.PanMoved) return;
  if (button == MouseButtonOf::Left) {
    ZoomClick(ws, view, tools.PressX, tools.PressY, tools.LastX, tools.LastY);
    response.Redraw = true;
  } else if (button == MouseButtonOf::Right) {
    ZoomOutClick(ws, view);
    response.Redraw = true;
  }
}

void ToolRelease(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release,
                 ToolResponse& response) {
  MouseInput in = release;
  in.Shift = tools.ShiftState != 0;
  bool edited = false;
  switch (tools.ToolCode) {
    case ToolOf::Zoom:
      break;
    case ToolOf::Draw:
      edited = FinishAirway(ws, view, tools, in);
      break;
    case ToolOf::Move:
      edited = MoveAirwayEnd(ws, view, tools, in);
      break;
    case ToolOf::Reverse:
      edited = ReverseAirway(ws, view, tools, in);
      break;
    case ToolOf::Delete:
      if (in.Button == MouseButtonOf::Left) edited = DeleteAirway(ws, view, tools, in);
      break;
    case ToolOf::Fan:
      edited = PlaceFan(ws, view, tools, in);
      break;
    case ToolOf::Text:
      edited = NameAndText(ws, view, tools, in);
      break;
    case ToolOf::Contaminant:
      edited = PlaceContaminant(ws, view, tools, in);
      break;
    case ToolOf::Edit:
      edited = EditAirway(ws, view, tools, in, in.Button);
      break;
    case ToolOf::Insert:
      edited = EditAirway(ws, view, tools, in, MouseButtonOf::Both);
      break;
    case ToolOf::Info:
      if (in.Button == MouseButtonOf::Left) response.InfoAirway = tools.PickedAirway;
      break;
    case ToolOf::CentreRotate:
      if (in.Button == MouseButtonOf::Left) {
        const AirwayPick pick = FindNearestAirway(ws, view, tools, in.X, in.Y);
        if (pick.Airway != 0) {
          CentreOnAirway(ws, view, pick);
          response.Redraw = true;
        }
      }
      break;
    case ToolOf::Follow:
      FollowAirway(ws, view, tools, in);
      response.Redraw = true;
      break;
    case ToolOf::CopyPaste:
      edited = CopyPasteAttributes(ws, view, tools, in);
      break;
    case ToolOf::Layers:
      edited = PasteLayers(ws, view, tools, in);
      break;
    case ToolOf::SmokeReport:
      edited = PlaceSmokeReport(ws, view, tools, in);
      break;
    case ToolOf::Select:
      response.Redraw = SelectAirways(ws, view, tools, in) || response.Redraw;
      break;
    default:
      response.Unavailable = std::string(ToolTip(tools.ToolCode));
      break;
  }
  if (edited) {
    response.Edited = true;
    response.Redraw = true;
  }
}

}  // namespace

std::string_view ToolTip(std::int16_t toolCode) {
  switch (toolCode) {
    case ToolOf::Zoom:
      return "Zoom / Pan  [F2]";
    case ToolOf::Draw:
      return "Draw new airway [F3]";
    case ToolOf::Move:
      return "Move airway end";
    case ToolOf::Reverse:
      return "Reverse airway direction [F6]";
    case ToolOf::Delete:
      return "Delete airway [F4]";
    case ToolOf::Fan:
      return "Place / remove fan [F8]";
    case ToolOf::Text:
      return "Place/Remove Text [F7]";
    case ToolOf::Contaminant:
      return "Place / Remove contaminant";
    case ToolOf::Edit:
      return "Edit airway [F10]";
    case ToolOf::Info:
      return "Airway information [F9]";
    case ToolOf::CentreRotate:
      return "Centre Model (left) or Rotate (right)";
    case ToolOf::Follow:
      return "Follow airway";
    case ToolOf::CopyPaste:
      return "Copy (right) or Paste (left) airway attributes";
    case ToolOf::Layers:
      return "Copy (right)  Paste (left) Layers";
    case ToolOf::Insert:
      return "Insert node along airway";
    case ToolOf::SmokeReport:
      return "Place/remove smoke report - left (smoke) or right (clear)";
    case ToolOf::Select:
      return "Select airway tool (ESC to deselect)";
    case ToolOf::Spare:
      return "Tool 20";
    default:
      return {};
  }
}

bool ToolHasRightAction(std::int16_t toolCode) {
  switch (toolCode) {
    case ToolOf::Reverse:
    case ToolOf::Follow:
    case ToolOf::Spare:
      return false;
    default:
      return !ToolTip(toolCode).empty();
  }
}

std::string CursorName(int paletteColumn, int button) {
  switch (paletteColumn) {
    case 0:
      return button == MouseButtonOf::Right ? "HAND" : "MAGNIFY";
    case 2:
      return "TAG";
    case 4:
      return "CROSS";
    case 5:
      return "PASTE";
    case 6:
      return "MOVE";
    case 7:
      return "REVERSE";
    case 8:
      return "DELETE";
    case 9:
      return "FAN";
    case 10:
      return "ALPHA";
    case 11:
      return "CLOUD";
    case 12:
      return "EDIT";
    case 13:
      return "INFO";
    case 15:
      return "INSERT";
    case 17:
      return "TRACE";
    case 18:
      return "ROTATE";
    case 21:
      return "COPY";
    default:
      return {};
  }
}

std::string SetToolCursor(ToolState& tools, int button) {
  tools.CursorColumn = tools.PaletteIndex;
  tools.CursorRow = button == MouseButtonOf::Right ? 2 : 1;
  return CursorName(tools.PaletteIndex, button);
}

EndPick FindNearestEnd(Workspace& ws, ViewState& view, const ToolState& tools, float x, float y,
                       bool takeHeight) {
  const Network& net = ws.net;
  const float t = PickTolerance(view, tools);
  const float rx = x * net.AxisSignX, ry = y * net.AxisSignY;
  float best = kNoDistance;
  EndPick pick;
  const int count = DrawnLineCount(net, view);
  for (int k = 0; k < count; ++k) {
    const int i = view.LineAirway[k];
    if (i == 0) break;
    const AirwayLineRecord& line = net.AirwayLine[k];
    const float ends[2][2] = {{line.X1, line.Y1}, {line.X2, line.Y2}};
    for (int end = 0; end < 2; ++end) {
      const float dx = std::fabs(ends[end][0] - rx), dy = std::fabs(ends[end][1] - ry);
      if (dx < t && dy < t && dx + dy < best) {
        best = dx + dy;
        pick.End = end == 0 ? i : -i;
        pick.ScreenX = ends[end][0] * net.AxisSignX;
        pick.ScreenY = ends[end][1] * net.AxisSignY;
      }
    }
  }
  if (pick.End == 0) return pick;
  const int i = std::abs(pick.End);
  const Coord3& c = pick.End > 0 ? net.Coord1[i] : net.Coord2[i];
  pick.X = c[1];
  pick.Y = c[2];
  pick.Z = c[3];
  pick.NodeName = pick.End > 0 ? net.EntryNodeName[i].Trimmed() : net.ExitNodeName[i].Trimmed();
  if (takeHeight) view.WorkingRL = static_cast<float>(pick.Z);
  return pick;
}

AirwayPick FindNearestAirway(Workspace& ws, ViewState& view, const ToolState& tools, float x,
                             float y) {
  const Network& net = ws.net;
  const double t = PickTolerance(view, tools);
  const double rx = x * net.AxisSignX, ry = y * net.AxisSignY;
  double best = kNoDistance;
  int bestLine = -1;
  const int count = DrawnLineCount(net, view);
  for (int k = 0; k < count; ++k) {
    if (view.LineAirway[k] == 0) break;
    const AirwayLineRecord& line = net.AirwayLine[k];
    if (line.X1 == line.X2 && line.Y1 == line.Y2) continue;
    const double m = line.X2 == line.X1 ? kVerticalSlope
                                        : (static_cast<double>(line.Y2) - line.Y1) /
                                              (static_cast<double>(line.X2) - line.X1);
    double loX = std::min(line.X1, line.X2), hiX = std::max(line.X1, line.X2);
    double loY = std::min(line.Y1, line.Y2), hiY = std::max(line.Y1, line.Y2);
    if (std::fabs(m) < 0.2) loY -= t, hiY += t;
    if (std::fabs(m) > 5) loX -= t, hiX += t;
    if (rx < loX || rx > hiX || ry < loY || ry > hiY) continue;
    const double d = std::fabs(ry - m * rx - (line.Y1 - line.X1 * m)) / std::sqrt(m * m + 1);
    if (d < best) {
      best = d;
      bestLine = k;
    }
  }
  AirwayPick pick;
  if (bestLine < 0 || t < best) {
    double z = view.WorkingRL;
    UnprojectPoint(net, view, x, y, z, pick.X, pick.Y, PressInput(tools, false));
    pick.Z = z;
    return pick;
  }
  const AirwayLineRecord& line = net.AirwayLine[bestLine];
  const int i = view.LineAirway[bestLine];
  const double d1 = std::hypot(rx - line.X1, ry - line.Y1);
  const double d2 = std::hypot(rx - line.X2, ry - line.Y2);
  pick.Airway = i;
  pick.Fraction = static_cast<float>(d1 + d2 > 0 ? d1 / (d1 + d2) : 0);
  const Coord3& a = net.Coord1[i];
  const Coord3& b = net.Coord2[i];
  pick.X = static_cast<double>(RoundHalfEven(a[1] + pick.Fraction * (double(b[1]) - a[1])));
  pick.Y = static_cast<double>(RoundHalfEven(a[2] + pick.Fraction * (double(b[2]) - a[2])));
  pick.Z = a[3] + pick.Fraction * (double(b[3]) - a[3]);
  view.WorkingRL = static_cast<float>(pick.Z);
  return pick;
}

CoordinateText ShowCoordinates(const Workspace& ws, const ViewState& view, const ToolState& tools,
                               float x, float y) {
  const bool picking = tools.MouseDownFlag == -1;
  double z = picking ? tools.PickZ : view.WorkingRL;
  double worldX = view.PanX + x, worldY = view.PanY + y;
  if (view.Is3D != 0)
    UnprojectPoint(ws.net, view, x, y, z, worldX, worldY, PressInput(tools, picking));
  CoordinateText text;
  text.X = FormatValue(ws.units, worldX, kLongLengthUnit);
  text.Y = FormatValue(ws.units, worldY, kLongLengthUnit);
  text.Z = FormatValue(ws.units, z, kLongLengthUnit);
  text.PanX = FormatValue(ws.units, view.PanX, kLongLengthUnit);
  text.PanY = FormatValue(ws.units, view.PanY, kLongLengthUnit);
  return text;
}

std::vector<std::string> AirwayReportRows(const Workspace& ws, const ViewState& view, int airway) {
  static constexpr struct {
    const char* caption;
    int dataType;
  } kRows[] = {{"Q = ", DataType::Quantity},          {"Vel = ", DataType::Velocity},
               {"Res = ", DataType::Resistance},      {"kFac = ", DataType::FrictionFactor},
               {"PLoss = ", DataType::TotalLoss},     {"Shock = ", DataType::ShockLength},
               {"Size = ", DataType::Dimensions},     {"Cost = ", DataType::FrictionCost},
               {"Power = ", DataType::FrictionPower}, {"Layers = ", DataType::LayerName}};
  LabelSettings settings;
  settings.SmokeState = view.SmokeState;
  settings.ResistanceSymbols = (view.DisplayBits & Show::ResistanceSymbols) != 0;
  std::vector<std::string> rows{"     AIRWAY " + std::to_string(ws.net.AirwayNo[airway]), ""};
  for (const auto& row : kRows) {
    rows.push_back(row.caption + AirwayLabel(ws, row.dataType, airway, 1, settings));
  }
  return rows;
}

std::vector<std::string> AirwayReport(Workspace& ws, ViewState& view, ToolState& tools, float x,
                                      float y) {
  const AirwayPick pick = FindNearestAirway(ws, view, tools, x, y);
  tools.PickedAirway = static_cast<std::int16_t>(pick.Airway);
  tools.PickFraction = pick.Fraction;
  if (pick.Airway == 0) return {};
  return AirwayReportRows(ws, view, pick.Airway);
}

void CentreOnAirway(Workspace& ws, ViewState& view, const AirwayPick& pick) {
  if (pick.Airway == 0) return;
  if (view.Is3D == 0) {
    view.TiltAngle = 0;
    view.SpinAngle = 0;
    view.TiltStep = 0;
    view.SpinStep = 0;
    view.Is3D = 1;
    BuildVisibleList(ws, view);
  }
  view.Pivot[1] = static_cast<std::int32_t>(RoundHalfEven(pick.X));
  view.Pivot[2] = static_cast<std::int32_t>(RoundHalfEven(pick.Y));
  view.Pivot[3] = static_cast<std::int32_t>(RoundHalfEven(pick.Z));
  view.PivotState = static_cast<std::int16_t>(pick.Airway);
  view.PanHold = false;
  ProjectNetwork(ws, view);
}

ToolResponse MouseDown(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in) {
  ToolResponse response;
  tools.ShiftState = in.Shift ? 1 : 0;
  tools.MouseX = in.X;
  tools.MouseY = in.Y;
  if (tools.RotatingFlag == -1 || tools.MouseDownFlag == -1) {
    // A second button joining a held one: from now on the drag rotates.
    tools.MouseButton = in.Button;
    if (in.Button >= MouseButtonOf::Both) {
      tools.PanOnly = -1;
      response.HideReport = tools.ReportShown;
      tools.ReportShown = false;
    }
    return response;
  }
  if (view.Minimised) return response;
  tools.MouseButton = in.Button;
  tools.ToolSourceWindow = in.Window;
  tools.PickMode = 1;
  tools.PressX = tools.LastX = in.X;
  tools.PressY = tools.LastY = in.Y;
  tools.PickZ = view.WorkingRL;
  UnprojectPoint(ws.net, view, in.X, in.Y, tools.PickZ, tools.PickX, tools.PickY,
                 PressInput(tools, false));
  tools.PanBaseX = view.PanX;
  tools.PanBaseY = view.PanY;
  tools.MouseDownFlag = -1;
  tools.PickedEnd = 0;
  tools.PickedAirway = 0;
  tools.FenceDrawn = 0;
  tools.PanMoved = false;
  tools.Overlay = {};
  tools.PanOnly = in.Button >= MouseButtonOf::Both ||
                          (in.Button == MouseButtonOf::Right && !ToolHasRightAction(tools.ToolCode))
                      ? -1
                      : 0;

  const bool singleButton = in.Button == MouseButtonOf::Left || in.Button == MouseButtonOf::Right;
  if (tools.ToolCode == ToolOf::Zoom && in.Shift && singleButton) {
    tools.ZoomMode = kPowerZoomMode;
    return PowerZoomStep(ws, view, tools);
  }
  if (tools.PanOnly != 0) return response;

  if (IsBandTool(tools.ToolCode)) {
    BeginAirwayPick(ws, view, tools);
  } else if (tools.ToolCode == ToolOf::Info) {
    response.ReportRows = AirwayReport(ws, view, tools, in.X, in.Y);
    response.ShowReport = !response.ReportRows.empty();
    tools.ReportShown = response.ShowReport;
  }
  return response;
}

ToolResponse MouseMove(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in) {
  ToolResponse response;
  tools.ShiftState = in.Shift ? 1 : 0;
  tools.MouseX = in.X;
  tools.MouseY = in.Y;
  if (tools.MouseDownFlag != -1 || tools.ZoomMode == kPowerZoomMode || tools.ReportShown)
    return response;
  int button = in.Button != MouseButtonOf::None ? in.Button : tools.MouseButton;
  tools.MouseButton = button;
  if (button == MouseButtonOf::Right && tools.ToolCode == ToolOf::Move)
    button = MouseButtonOf::Both;

  const bool rightRotates =
      button == MouseButtonOf::Right && tools.ToolCode == ToolOf::CentreRotate;
  if (tools.RotatingFlag == -1) {
    DragRotate(ws, view, tools.Rotation, in.X, in.Y);
    response.Wireframe = true;
    return response;
  }
  if (button == MouseButtonOf::Both || rightRotates) {
    StartRotation(ws, view, tools);
    DragRotate(ws, view, tools.Rotation, in.X, in.Y);
    response.Wireframe = true;
    return response;
  }
  const bool pans =
      button == MouseButtonOf::Middle ||
      (button == MouseButtonOf::Right && (tools.PanOnly != 0 || IsRectangleTool(tools.ToolCode)));
  if (pans) {
    response.Wireframe = PanDrag(ws, view, tools);
    return response;
  }
  if (tools.PanOnly != 0 || button != MouseButtonOf::Left) return response;

  const bool bandDrag =
      IsBandTool(tools.ToolCode) && (tools.ToolCode == ToolOf::Draw || tools.PickedEnd != 0);
  if (bandDrag) {
    tools.Overlay = {OverlayShape::Kind::RubberBand,
                     tools.PressX,
                     tools.PressY,
                     in.X,
                     in.Y,
                     tools.ToolCode == ToolOf::Draw ? kDrawBandColour : kMoveBandColour};
  } else if (IsRectangleTool(tools.ToolCode)) {
    tools.Overlay = {
        OverlayShape::Kind::Fence, tools.PressX, tools.PressY, in.X, in.Y, kDrawBandColour};
    tools.FenceDrawn = -1;
  } else {
    return response;
  }
  tools.LastX = in.X;
  tools.LastY = in.Y;
  response.OverlayChanged = true;
  return response;
}

ToolResponse MouseUp(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& in) {
  ToolResponse response;
  tools.MouseX = in.X;
  tools.MouseY = in.Y;
  if (tools.MouseDownFlag != -1) return response;
  response.CrossWindow = tools.ToolSourceWindow >= 0 && in.Window != tools.ToolSourceWindow;
  if (response.CrossWindow) response.Redraw = true;
  const float pickDistance = view.ScaleWidth / kClickShare;
  response.OverlayChanged = tools.Overlay.kind != OverlayShape::Kind::None;

  if (tools.ReportShown) {
    response.HideReport = true;
    tools.ReportShown = false;
  }
  const bool endsMotion = tools.RotatingFlag == -1 || tools.ZoomMode == kPowerZoomMode ||
                          tools.PanMoved || tools.MouseButton >= MouseButtonOf::Both;
  if (endsMotion) {
    // An edge-on view keeps its picture after a pan or a power zoom: the pivot follows in the
    // upright plane.
    const bool zoomed = tools.ZoomMode == kPowerZoomMode;
    if ((tools.PanMoved || zoomed) && ViewKind(view) == 2) {
      ShiftPivotInPlane(view, view.PanX - tools.PanBaseX, view.PanY - tools.PanBaseY);
      view.PanHold = true;
      ProjectNetwork(ws, view);
    }
    response.Redraw = true;
    ClearDrag(view, tools);
    return response;
  }
  if (!InsideWindow(ws.net, view, in.X, in.Y)) {
    ClearDrag(view, tools);
    return response;
  }
  if (tools.ToolCode > ToolOf::Move && (std::fabs(view.PanX + in.X) > kCoordinateLimit ||
                                        std::fabs(view.PanY + in.Y) > kCoordinateLimit)) {
    ws.ui.Inform("ERROR - Cursor Coordinates exceed size limit");
    ClearDrag(view, tools);
    response.Redraw = true;
    return response;
  }

  tools.LastX = in.X;
  tools.LastY = in.Y;
  if (tools.FenceDrawn == -1) {
    NormaliseFence(tools, pickDistance);
    tools.FenceDrawn = 0;
  }
  const int button = in.Button != MouseButtonOf::None ? in.Button : tools.MouseButton;
  // A tool may open a dialog, and the focus it takes must not count as a second release.
  tools.MouseDownFlag = 0;
  if (tools.ToolCode == ToolOf::Zoom) {
    ZoomRelease(ws, view, tools, button, response);
  } else if (tools.PanOnly == 0) {
    MouseInput release = in;
    release.Button = button;
    ToolRelease(ws, view, tools, release, response);
  }
  ClearDrag(view, tools);
  return response;
}

ToolResponse PowerZoomStep(Workspace& ws, ViewState& view, ToolState& tools) {
  ToolResponse response;
  if (tools.ZoomMode != kPowerZoomMode || tools.MouseDownFlag != -1) return response;
  const float share = ws.defaults.PowerZoomSpeed / 100;
  const float factor = tools.MouseButton == MouseButtonOf::Right ? 1 + share : 1 - share;
  const float before = view.ScaleWidth;
  SetZoom(ws, view, view.ScaleWidth * factor, view.ScaleHeight * factor);
  tools.MouseX *= factor;
  tools.MouseY *= factor;
  response.Wireframe = true;
  response.PowerZoom = view.ScaleWidth != before;
  return response;
}

bool WheelZoom(Workspace& ws, ViewState& view, int delta) {
  if (ws.defaults.ScrollZoomOff != 0 || delta == 0) return false;
  const float factor = std::pow(kWheelStep, -static_cast<float>(delta) / kWheelNotch);
  SetZoom(ws, view, view.ScaleWidth * factor, view.ScaleHeight * factor);
  return true;
}

OverlayShape OverlayToDraw(const Network& net, const ToolState& tools) {
  OverlayShape shape = tools.Overlay;
  shape.X1 *= net.AxisSignX;
  shape.X2 *= net.AxisSignX;
  shape.Y1 *= net.AxisSignY;
  shape.Y2 *= net.AxisSignY;
  return shape;
}

}  // namespace galeris
