// Projection of the network onto a window's drawing plane and back, and the commands that move
// the view: fit, zoom, rotation, levels and the saved views.
#include "view/view_state.h"

#include <algorithm>
#include <cmath>

#include "core/number_format.h"
#include "view/drawing.h"

namespace galeris {
namespace {

constexpr float kTwoPi = 2 * kPi;

// Int() of the view code: the whole part towards minus infinity.
long long WholePart(double v) {
  return static_cast<long long>(std::floor(v));
}

// Whole world units; a point beyond the coordinate range is held at its edge.
std::int32_t Whole(double v) {
  if (!std::isfinite(v)) return 0;
  return static_cast<std::int32_t>(RoundHalfEven(std::clamp(v, -2.0e9, 2.0e9)));
}

void StoreTrigonometry(ViewState& view) {
  view.Cs = std::cos(view.SpinAngle);
  view.Ss = std::sin(view.SpinAngle);
  view.Ct = std::cos(view.TiltAngle);
  view.St = std::sin(view.TiltAngle);
}

void RotatePoint(double cs, double ss, double ct, double st, double x, double y, double z,
                 float& sx, float& sy) {
  sx = static_cast<float>(cs * x - ss * y);
  sy = static_cast<float>((cs * y + ss * x) * ct - st * z);
}

void RotatePoint(const ViewState& view, double x, double y, double z, float& sx, float& sy) {
  RotatePoint(view.Cs, view.Ss, view.Ct, view.St, x, y, z, sx, sy);
}

// Pulls a projected end towards the centre the further it lies from the eye.
void ApplyPerspective(const ViewState& view, double x, double y, double z, float& sx, float& sy) {
  const double depth = 2.0 * view.ScaleWidth;
  if (depth == 0) return;
  const double d = std::sqrt((view.EyeY - y) * (view.EyeY - y) + (view.EyeX - x) * (view.EyeX - x) +
                             (view.EyeZ - z) * (view.EyeZ - z));
  const double share = 1.0 - d / depth;
  if (share < 0) return;  // beyond the eye's reach: the end keeps its flat position
  const double f = std::sqrt(share);
  sx = static_cast<float>((sx - view.PanX) * f + view.PanX);
  sy = static_cast<float>((sy - view.PanY) * f + view.PanY);
}

int VisibleAirway(const Network& net, const ViewState& view, int k) {
  return k <= view.VisibleCount ? net.SmokeQueue[k] : 0;
}

// A pan moved in 3-D must carry the pivot with it, or the next projection pass would put the
// old pivot back in the centre. Edge-on, the window's upright is the world's height, so the
// pivot moves in the plane facing the viewer by the pan's change.
void PivotFollowsPan(const Network& net, ViewState& view, float oldPanX, float oldPanY) {
  if (view.Is3D == 0) {
    view.Pivot[1] = Whole(view.PanX);
    view.Pivot[2] = Whole(view.PanY);
    return;
  }
  view.PanHold = true;
  if (ViewKind(view) == 2) {
    ShiftPivotInPlane(view, view.PanX - oldPanX, view.PanY - oldPanY);
    return;
  }
  double z = view.Pivot[3], x = 0, y = 0;
  UnprojectPoint(net, view, 0, 0, z, x, y);
  view.Pivot[1] = Whole(x);
  view.Pivot[2] = Whole(y);
}

void ClearViewSlot(Network& net, int slot) {
  net.ViewValue[slot].fill(0);
  net.ViewCode[slot].fill(0);
}

std::int64_t LayerMaskOf(const std::vector<std::int16_t>& show, int first, int last) {
  std::int64_t mask = 0;
  for (int n = first; n <= last; ++n) {
    if (n < static_cast<int>(show.size()) && show[n] != 0)
      mask |= std::int64_t{1} << (n - first + 1);
  }
  return mask;
}

void ShowLayersFromMask(std::vector<std::int16_t>& show, int first, int last, std::int64_t mask) {
  for (int n = first; n <= last && n < static_cast<int>(show.size()); ++n) {
    show[n] = (mask & (std::int64_t{1} << (n - first + 1))) ? -1 : 0;
  }
}

}  // namespace

void TakeSymbolSettings(const Defaults& defaults, ViewState& view) {
  for (int k = 0; k < 7; ++k) {
    if (defaults.DataRowType[k + 1] > 0) view.SymbolSize[k] = defaults.DataRowType[k + 1];
    view.SymbolScaled[k] = defaults.DataRowSize[k + 1] == kScaledSymbolRow ? 1 : 0;
  }
}

void KeepSymbolSettings(const ViewState& view, Defaults& defaults) {
  for (int k = 0; k < 7; ++k) {
    defaults.DataRowType[k + 1] = view.SymbolSize[k];
    defaults.DataRowSize[k + 1] = view.SymbolScaled[k] == 1 ? kScaledSymbolRow : kFixedSymbolRow;
  }
}

ViewState MakeViewState(const Workspace& ws) {
  ViewState view;
  view.DisplayBits = ws.defaults.ViewDetail;
  TakeSymbolSettings(ws.defaults, view);
  view.LineAirway.assign(static_cast<std::size_t>(ws.net.MaxAirways) + 1, 0);
  return view;
}

void ReadViewBounds(ViewState& view) {
  view.ViewTop = Whole(view.ScaleTop);
  view.ViewBottom = Whole(view.ScaleTop + view.ScaleHeight);
  view.ViewLeft = Whole(view.ScaleLeft);
  view.ViewRight = Whole(view.ScaleLeft + view.ScaleWidth);
}

void ProjectAirway(Workspace& ws, ViewState& view, int index) {
  const Network& net = ws.net;
  if (index == 0) {
    RotatePoint(view, view.Pivot[1], view.Pivot[2], view.Pivot[3], ws.net.ViewEnd1[0][0],
                ws.net.ViewEnd1[0][1]);
    return;
  }
  const Coord3& a = net.Coord1[index];
  const Coord3& b = net.Coord2[index];
  ViewPoint& e1 = ws.net.ViewEnd1[index];
  ViewPoint& e2 = ws.net.ViewEnd2[index];
  RotatePoint(view, a[1], a[2], a[3], e1[0], e1[1]);
  RotatePoint(view, b[1], b[2], b[3], e2[0], e2[1]);
  if (view.Perspective != 0) {
    ApplyPerspective(view, a[1], a[2], a[3], e1[0], e1[1]);
    ApplyPerspective(view, b[1], b[2], b[3], e2[0], e2[1]);
  }
}

void ProjectPoint(const ViewState& view, double x, double y, double z, float& screenX,
                  float& screenY) {
  if (view.Is3D == 0) {
    screenX = static_cast<float>(x - view.PanX);
    screenY = static_cast<float>(y - view.PanY);
    return;
  }
  RotatePoint(std::cos(view.SpinAngle), std::sin(view.SpinAngle), std::cos(view.TiltAngle),
              std::sin(view.TiltAngle), x, y, z, screenX, screenY);
  screenX -= view.PanX;
  screenY -= view.PanY;
}

void ProjectNetwork(Workspace& ws, ViewState& view) {
  if (!view.WindowOpen || view.Is3D == 0) return;
  ReadViewBounds(view);
  if (!view.PivotHold && view.PivotState == 0) {
    ResetPivot(ws, view);
    view.PivotState = 1;
  }
  const Network& net = ws.net;
  view.TiltAngle += net.AxisSignY * view.TiltStep;
  view.SpinAngle += net.AxisSignX * view.SpinStep * net.AxisSignY;

  // Never exactly square on to the Y axis: UnprojectPoint divides by cos(spin).
  const long long spin = WholePart(view.SpinAngle * 1000.0);
  if (spin == WholePart(kPi / 2 * 1000.0) || spin == WholePart(3 * kPi / 2 * 1000.0)) {
    view.SpinAngle += kPi / 1000;
  }
  if (ws.defaults.FullRotation == 0) {  // "Allow full 360 degree rotation" frees the tilt
    if (net.AxisSignY == 1) {
      view.TiltAngle = std::clamp(view.TiltAngle, 0.0f, kPi / 2);
    } else {
      view.TiltAngle = std::clamp(view.TiltAngle, -kPi / 2, 0.0f);
    }
  }
  if (view.TiltAngle < -kTwoPi) view.TiltAngle += kTwoPi;
  if (view.TiltAngle > kTwoPi) view.TiltAngle -= kTwoPi;
  if (view.SpinAngle < 0) view.SpinAngle += kTwoPi;
  if (view.SpinAngle >= kTwoPi) view.SpinAngle -= kTwoPi;

  view.StatusRotX = "RotX " + std::to_string(WholePart(view.TiltAngle / kTwoPi * 360.0));
  view.StatusRotY = "RotY " + std::to_string(WholePart(view.SpinAngle / kTwoPi * 360.0));

  if (view.EyeDistance != 0) view.EyeDistance = view.ScaleWidth;
  view.EyeX =
      view.Pivot[1] + view.EyeDistance * std::sin(view.SpinAngle) * std::sin(view.TiltAngle);
  view.EyeY =
      view.Pivot[2] + view.EyeDistance * std::cos(view.SpinAngle) * std::sin(view.TiltAngle);
  view.EyeZ = view.Pivot[3] + view.EyeDistance * std::cos(view.TiltAngle);

  StoreTrigonometry(view);
  ProjectAirway(ws, view, 0);
  if (!view.PanHold) {
    view.PanX = ws.net.ViewEnd1[0][0];
    view.PanY = ws.net.ViewEnd1[0][1];
  }
  view.PanHold = false;

  for (int k = 1; k <= view.VisibleCount; ++k) {
    const int airway = ws.net.SmokeQueue[k];
    if (airway != 0) ProjectAirway(ws, view, airway);
  }
}

void UnprojectPoint(const Network& net, const ViewState& view, float screenX, float screenY,
                    double& worldZ, double& worldX, double& worldY, const UnprojectInput& input) {
  if (view.Is3D == 0) {
    worldX = screenX + view.PanX;
    worldY = screenY + view.PanY;
    return;
  }
  const double cs = std::cos(view.SpinAngle), ss = std::sin(view.SpinAngle);
  const double ct = std::cos(view.TiltAngle), st = std::sin(view.TiltAngle);
  const bool solvable = std::fabs(ct) > 1e-9 && std::fabs(cs) > 1e-9;
  if ((!input.ShiftHeld || input.PowerZoom) && ViewKind(view) != 2 && solvable) {
    const double a = screenX + view.PanX;
    const double b = (screenY + view.PanY + st * worldZ) / ct;
    const double y = (b - a * ss / cs) / (ss * ss / cs + cs);
    const double x = (y * ss + a) / cs;
    worldX = Whole(x);
    worldY = Whole(y);
    return;
  }
  worldZ = view.WorkingRL;
  if (input.ButtonHeld) {
    worldX = input.PickX;
    worldY = input.PickY;
    worldZ = input.PickZ;
    ShiftPointInPlane(view, input.PressX, input.PressY, screenX, screenY, worldX, worldY, worldZ);
    return;
  }
  worldX = view.Pivot[1];
  worldY = view.Pivot[2];
  worldZ = -view.PanY * net.AxisSignY;
  ShiftPointInPlane(view, 0, 0, screenX, screenY, worldX, worldY, worldZ);
}

void ShiftPointInPlane(const ViewState& view, float x1, float y1, float x2, float y2,
                       double& worldX, double& worldY, double& worldZ) {
  const double st = std::sin(view.TiltAngle);
  if (st != 0) worldZ += (y2 - y1) / st;
  worldY -= (x2 - x1) * std::sin(view.SpinAngle);
  worldX += (x2 - x1) * std::cos(view.SpinAngle);
}

int ViewKind(const ViewState& view) {
  const long long t = WholePart(std::fabs(view.TiltAngle) * 1000.0);
  const bool edgeOn = t == WholePart(kPi / 2 * 1000.0) || t == WholePart(9.424777962 / 2 * 1000.0);
  if (view.Is3D == 0) return 0;
  return edgeOn ? 2 : 1;
}

void ResetPivot(const Workspace& ws, ViewState& view) {
  view.Pivot[1] = Whole(view.PanX);
  view.Pivot[2] = Whole(view.PanY);
  double sum = 0;
  int count = 0;
  for (int k = 1; k <= view.VisibleCount; ++k) {
    const int i = VisibleAirway(ws.net, view, k);
    if (i == 0) break;
    sum += ws.net.Coord1[i][3] + ws.net.Coord2[i][3];
    count += 2;
  }
  view.Pivot[3] = Whole(sum / (count == 0 ? 1 : count));
}

void PivotToVisible(Workspace& ws, ViewState& view) {
  if (!view.WindowOpen) return;
  ReadViewBounds(view);
  double sum = 0;
  int count = 0;
  for (int k = 0; k < view.AirwayLineCount; ++k) {
    const AirwayLineRecord& line = ws.net.AirwayLine[k];
    const float mx = (line.X1 + line.X2) / 2, my = (line.Y1 + line.Y2) / 2;
    if (mx > view.ViewLeft && mx < view.ViewRight && my > view.ViewTop && my < view.ViewBottom) {
      const int i = view.LineAirway[k];
      sum += ws.net.Coord1[i][3] + ws.net.Coord2[i][3];
      count += 2;
    }
  }
  if (count == 0) {
    ResetPivot(ws, view);
  } else {
    view.Pivot[3] = Whole(sum / count);
  }
  double z = view.Pivot[3], x = 0, y = 0;
  UnprojectPoint(ws.net, view, 0, 0, z, x, y);
  view.Pivot[1] = Whole(x);
  view.Pivot[2] = Whole(y);
}

void CentrePivot(const Workspace& ws, ViewState& view) {
  double sx = 0, sy = 0, sz = 0;
  int count = 0;
  for (int k = 1; k <= view.VisibleCount; ++k) {
    const int i = VisibleAirway(ws.net, view, k);
    if (i == 0) break;
    const Coord3& a = ws.net.Coord1[i];
    const Coord3& b = ws.net.Coord2[i];
    sx += a[1] + b[1];
    sy += a[2] + b[2];
    sz += a[3] + b[3];
    count += 2;
  }
  if (count == 0) count = 1;
  view.Pivot = {0, Whole(sx / count), Whole(sy / count), Whole(sz / count)};
}

void PivotOnWindowCentre(ViewState& view) {
  const bool flat = view.Is3D == 0;  // plan mode draws the map unrotated
  const double cs = flat ? 1 : std::cos(view.SpinAngle), ss = flat ? 0 : std::sin(view.SpinAngle);
  const double ct = flat ? 1 : std::cos(view.TiltAngle), st = flat ? 0 : std::sin(view.TiltAngle);
  const double x = view.Pivot[1], y = view.Pivot[2], z = view.Pivot[3];
  float sx = 0, sy = 0;
  RotatePoint(cs, ss, ct, st, x, y, z, sx, sy);
  // One unit across the screen is (cs, -ss, 0) in the world, one unit down it (ss ct, cs ct, -st).
  const double across = view.PanX - sx, down = view.PanY - sy;
  view.Pivot = {0, Whole(x + across * cs + down * ss * ct), Whole(y - across * ss + down * cs * ct),
                Whole(z - down * st)};
}

void SetPlanView(Workspace& ws, ViewState& view) {
  view.PivotState = 0;
  view.Is3D = 0;
  BuildVisibleList(ws, view);
  view.PanX = static_cast<float>(view.Pivot[1]);
  view.PanY = static_cast<float>(view.Pivot[2]);
}

void SetThreeDView(Workspace& ws, ViewState& view) {
  if (!view.WindowOpen) return;
  view.Is3D = 1;
  view.TiltStep = 0;
  view.SpinStep = 0;
  BuildVisibleList(ws, view);
  view.PivotState = 1;
  PivotToVisible(ws, view);
  ProjectNetwork(ws, view);
}

void SetScale(ViewState& view, float width, float height, float panX, float panY) {
  view.ScaleWidth = width;
  view.ScaleHeight = height;
  view.ScaleLeft = -width / 2;
  view.ScaleTop = -height / 2;
  view.PanX = panX;
  view.PanY = panY;
  ReadViewBounds(view);
}

void SetZoom(Workspace& ws, ViewState& view, float width, float height) {
  if (width < 20) {
    width = 20;
    height = 20 * view.AspectRatio;
    ws.ui.Inform("Minimum Scaling Reached");
  } else if (width > 10000000) {
    width = 10000000;
    height = 10000000 * view.AspectRatio;
    ws.ui.Inform("Maximum Scaling Reached");
  }
  if (view.Perspective == 1 && view.Is3D != 0) ProjectNetwork(ws, view);
  SetScale(view, width, height, view.PanX, view.PanY);
  SetScaleCaption(ws, view);
}

void ResizeView(Workspace& ws, ViewState& view, int pixelWidth, int pixelHeight) {
  if (pixelWidth <= 0 || pixelHeight <= 0) return;
  view.PixelWidth = pixelWidth;
  view.PixelHeight = pixelHeight;
  view.AspectRatio = static_cast<float>(pixelHeight) / static_cast<float>(pixelWidth);
  SetZoom(ws, view, view.ScaleWidth, view.ScaleWidth * view.AspectRatio);
}

void FitNetwork(Workspace& ws, ViewState& view) {
  if (view.Minimised || !view.WindowOpen) return;
  view.PivotState = 1;
  if (view.PixelWidth < 1 || view.PixelHeight < 1) return;
  view.AspectRatio = static_cast<float>(view.PixelHeight) / static_cast<float>(view.PixelWidth);
  view.FitRunning = true;
  BuildAirwayLines(ws, view);
  view.FitRunning = false;

  const Network& net = ws.net;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  if (view.AirwayLineCount == 0) {
    if (net.BranchCount >= 1) return;
    const Defaults& d = ws.defaults;
    minX = d.GridCentreX - d.GridWidth / 2;
    maxX = std::fabs(d.GridCentreX + d.GridWidth / 2);
    minY = d.GridCentreY - d.GridWidth / 2;
    maxY = std::fabs(d.GridCentreY + d.GridWidth / 2);
  } else {
    const int first = view.LineAirway[0];
    minX = maxX = net.ViewEnd1[first][0];
    minY = maxY = net.ViewEnd1[first][1];
    for (int k = 0; k < view.AirwayLineCount; ++k) {
      const int i = view.LineAirway[k];
      for (const ViewPoint* e : {&net.ViewEnd1[i], &net.ViewEnd2[i]}) {
        minX = std::min<double>(minX, (*e)[0]);
        maxX = std::max<double>(maxX, (*e)[0]);
        minY = std::min<double>(minY, (*e)[1]);
        maxY = std::max<double>(maxY, (*e)[1]);
      }
    }
  }
  const double aspect = view.AspectRatio;
  double w = std::fabs(maxX - minX);
  double h = std::fabs(maxY - minY);
  if (w * aspect < h) w = h / aspect;
  // A tiny network is never fitted tighter than this.
  if (w != 0 && 250000 / (w * 1.2 * aspect) > 50000) w = 250000 / (aspect * 60000);
  if (w == 0 || h == 0) {
    w = 100;
    h = 100;
  }
  SetScale(view, static_cast<float>(w * 1.2), static_cast<float>(w * 1.2 * aspect),
           static_cast<float>(RoundHalfEven((minX + maxX) / 2)),
           static_cast<float>(RoundHalfEven((minY + maxY) / 2)));
  BuildAirwayLines(ws, view);
  PivotToVisible(ws, view);
  SetScaleCaption(ws, view);
  CentrePivot(ws, view);
  PivotOnWindowCentre(view);
}

void SetScaleCaption(const Workspace& ws, ViewState& view) {
  const double printable = view.PrintableWidthMm > 0 ? view.PrintableWidthMm : 1;
  const long long n = WholePart(view.ScaleWidth * 1.1 / printable * 1000);
  std::string name = ws.net.FileName;
  const std::size_t slash = name.find_last_of("/\\");
  if (slash != std::string::npos) name = name.substr(slash + 1);
  std::string caption = "GALERIS [" + name;
  if (!ws.net.NetworkTitle.empty()) caption += "   " + ws.net.NetworkTitle;
  caption += "] [Scale = 1:" + std::to_string(n) + "]";
  view.FrameCaption = caption;
}

void MovePan(const Network& net, ViewState& view, float panX, float panY) {
  const float oldPanX = view.PanX, oldPanY = view.PanY;
  view.PanX = panX;
  view.PanY = panY;
  if (ViewKind(view) == 2) {
    view.PanHold = true;  // the pivot follows once, when the pan ends
    return;
  }
  PivotFollowsPan(net, view, oldPanX, oldPanY);
}

// The pan is in projected terms, where height runs against the window's Y; hence the shift in
// the facing plane with the Y movement turned round.
void ShiftPivotInPlane(ViewState& view, float dx, float dy) {
  double x = view.Pivot[1], y = view.Pivot[2], z = view.Pivot[3];
  ShiftPointInPlane(view, 0, dy, dx, 0, x, y, z);
  view.Pivot[1] = Whole(x);
  view.Pivot[2] = Whole(y);
  view.Pivot[3] = Whole(z);
}

void ZoomOutClick(Workspace& ws, ViewState& view) {
  SetZoom(ws, view, view.ScaleWidth * 2, view.ScaleHeight * 2);
}

void ZoomClick(Workspace& ws, ViewState& view, float x1, float y1, float x2, float y2) {
  const float tolerance = view.ScaleWidth / 50;
  if (std::fabs(x2 - x1) <= tolerance && std::fabs(y2 - y1) <= tolerance) {
    const float oldPanX = view.PanX, oldPanY = view.PanY;
    view.PanX += x1;
    view.PanY += y1;
    PivotFollowsPan(ws.net, view, oldPanX, oldPanY);
    SetZoom(ws, view, view.ScaleWidth / 2, view.ScaleHeight / 2);
    return;
  }
  if (x2 < x1) std::swap(x1, x2);
  if (y2 < y1) std::swap(y1, y2);
  float width = x2 - x1;
  const float height = y2 - y1;
  if (view.AspectRatio * width < height) width = height / view.AspectRatio;
  const float oldPanX = view.PanX, oldPanY = view.PanY;
  view.PanX += (x1 + x2) / 2;
  view.PanY += (y1 + y2) / 2;
  PivotFollowsPan(ws.net, view, oldPanX, oldPanY);
  SetZoom(ws, view, width, width * view.AspectRatio);
}

void BeginRotator(Workspace& ws, ViewState& view) {
  if (view.Is3D == 0) {
    view.TiltAngle = 0;
    view.SpinAngle = 0;
    ResetPivot(ws, view);
    SetThreeDView(ws, view);
    view.PivotState = 999;
  } else if (view.PivotState == 1) {
    PivotToVisible(ws, view);
    ProjectNetwork(ws, view);
    view.PivotState = 999;
  }
}

bool RotatorTick(Workspace& ws, ViewState& view, float buttonX, float buttonY) {
  const float degree = kPi / 180;
  view.SpinStep = ((22 - buttonX) / 15) * degree * ws.defaults.SpinSpeed / 2;
  view.TiltStep = ((28 - buttonY) / 15) * degree * ws.defaults.TiltSpeed / 2;
  if (buttonX > 50 || buttonX < 1 || buttonY > 50 || buttonY < 1) {
    view.SpinStep = 0;
    view.TiltStep = 0;
  }
  if (view.SpinStep == 0 && view.TiltStep == 0) return false;
  ProjectNetwork(ws, view);
  view.SpinStep = 0;
  view.TiltStep = 0;
  return true;
}

DragRotation BeginDragRotation(Workspace& ws, ViewState& view, float x, float y) {
  view.SpinStep = 0;
  if (view.Is3D == 0) {
    view.TiltAngle = 0;
    view.SpinAngle = 0;
    ResetPivot(ws, view);
    SetThreeDView(ws, view);
  }
  DragRotation drag;
  drag.StartFractionX = (x - view.ScaleLeft) / view.ScaleWidth;
  drag.StartFractionY = (y - view.ScaleTop) / view.ScaleHeight;
  drag.StartSpin = view.SpinAngle;
  drag.StartTilt = view.TiltAngle;
  if (view.PivotState <= 1) {
    PivotToVisible(ws, view);
    view.PivotState = 1;
  }
  return drag;
}

void DragRotate(Workspace& ws, ViewState& view, const DragRotation& drag, float x, float y) {
  const float fx = (x - view.ScaleLeft) / view.ScaleWidth;
  const float fy = (y - view.ScaleTop) / view.ScaleHeight;
  view.SpinAngle = (drag.StartFractionX - fx) * kDragPi * ws.net.AxisSignY + drag.StartSpin;
  view.TiltAngle = (drag.StartFractionY - fy) * kDragPi / 2 + drag.StartTilt;
  ProjectNetwork(ws, view);
}

void SelectLevel(Workspace& ws, ViewState& view, int listPosition) {
  const Network& net = ws.net;
  if (listPosition < 1 || listPosition > net.RLCount) return;
  if (view.LevelMode != LevelModeOf::Single) view.PreviousLevelMode = view.LevelMode;
  view.LevelMode = LevelModeOf::Single;
  view.PivotState = 1;
  view.CurrentLevel = listPosition;
  view.LevelBottom = static_cast<float>(net.RLBound[listPosition][2]);
  view.LevelTop = static_cast<float>(net.RLBound[listPosition][1]);
  view.WorkingRL = (view.LevelTop + view.LevelBottom) / 2;
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
}

int LevelFromScrollBar(const Workspace& ws, int scrollValue) {
  return std::clamp(ws.net.RLCount + 1 - scrollValue, 1, std::max<int>(1, ws.net.RLCount));
}

int ScrollBarFromLevel(const Workspace& ws, int listPosition) {
  return ws.net.RLCount + 1 - listPosition;
}

void StepLevel(Workspace& ws, ViewState& view, bool up) {
  if (ws.net.RLCount < 1) return;
  const int next =
      std::clamp(view.CurrentLevel + (up ? -1 : 1), 1, static_cast<int>(ws.net.RLCount));
  SelectLevel(ws, view, next);
}

void ToggleLevelMode(Workspace& ws, ViewState& view) {
  if (view.LevelMode == LevelModeOf::Single) {
    view.LevelMode =
        view.PreviousLevelMode == LevelModeOf::Single ? LevelModeOf::All : view.PreviousLevelMode;
    view.PivotState = 1;
    BuildVisibleList(ws, view);
    ProjectNetwork(ws, view);
    return;
  }
  SelectLevel(ws, view, std::max(1, view.CurrentLevel));
}

std::string LevelCaption(const Workspace& ws, const ViewState& view) {
  std::string caption = "View " + std::to_string(view.WindowNumber) + " : ";
  if (view.LevelMode == LevelModeOf::All) return caption + "All levels";
  const int level = view.CurrentLevel;
  if (view.LevelMode == LevelModeOf::Single && level >= 1 && level <= ws.net.RLCount) {
    caption += ws.net.RLName[level] + " ";
  }
  return caption + "(RL " + FormatValue(ws.units, view.LevelBottom, Unit::Coordinates) + " to " +
         FormatValue(ws.units, view.LevelTop, Unit::Coordinates) + ")";
}

void ShowViewLayers(Network& net, const ViewState& view) {
  ShowLayersFromMask(net.SecondLayerShow, 25, 48, view.LayerMask[0]);
  ShowLayersFromMask(net.PrimaryLayerShow, 1, 16, view.LayerMask[1]);
  ShowLayersFromMask(net.SecondLayerShow, 1, 24, view.LayerMask[2]);
}

void SaveViewSlot(Workspace& ws, const ViewState& view, int slot) {
  Network& net = ws.net;
  if (slot < 0 || slot > kMaxViews) return;
  auto& v = net.ViewValue[slot];
  v.fill(0);
  v[1] = view.TiltAngle;
  v[2] = view.SpinAngle;
  v[3] = view.ScaleLeft;
  v[4] = view.ScaleTop;
  v[5] = view.ScaleWidth;
  v[6] = view.ScaleHeight;
  v[9] = view.DisplayFlags;
  v[10] = view.LevelMode;
  v[11] = view.LevelBottom;
  v[12] = view.LevelTop;
  v[13] = static_cast<float>(view.CurrentLevel);
  v[14] = view.Is3D;
  v[15] = view.PanX;
  v[16] = view.PanY;
  for (int k = 0; k < 6 && k < static_cast<int>(view.SelectedLevels.size()); ++k) {
    v[17 + k] = view.SelectedLevels[k];
  }
  v[23] = static_cast<float>(view.Pivot[1]);
  v[24] = static_cast<float>(view.Pivot[2]);
  v[25] = static_cast<float>(view.Pivot[3]);
  v[26] = view.PivotState;
  v[27] = view.WorkingRL;
  v[28] = view.SmokeLimit;
  auto& c = net.ViewCode[slot];
  if (view.FollowsStoreLayers) {
    c[1] = LayerMaskOf(net.SecondLayerShow, 25, 48);
    c[2] = LayerMaskOf(net.PrimaryLayerShow, 1, 16);
    c[3] = LayerMaskOf(net.SecondLayerShow, 1, 24);
  } else {
    c[1] = view.LayerMask[0];
    c[2] = view.LayerMask[1];
    c[3] = view.LayerMask[2];
  }
  c[4] = view.DisplayBits;
  c[5] = view.ColourByAir ? -1 : 0;
}

void LoadViewSlot(Workspace& ws, ViewState& view, int slot) {
  if (view.Minimised || slot < 0 || slot > kMaxViews) return;
  Network& net = ws.net;
  const auto& v = net.ViewValue[slot];
  view.TiltAngle = v[1];
  view.SpinAngle = v[2];
  view.Is3D = static_cast<std::int16_t>(v[14]);
  if (slot >= 1 && slot <= kPermanentViews) {
    if (slot > 2) view.TiltAngle = std::fabs(view.TiltAngle) * net.AxisSignY;
    view.FitAfterView = true;
  } else {
    view.PivotState = 0;
    if (v[5] != 0) {
      float left = v[3], top = v[4];
      const float width = v[5], height = v[6];
      float panX = v[15], panY = v[16];
      float pivotState = v[26];
      if (left != -width / 2) {  // an old style slot kept its pan in the corner
        panX = width / 2 + left;
        panY = height / 2 + top;
        pivotState = 0;
      }
      SetScale(view, width, height, panX, panY);
      view.DisplayFlags = static_cast<std::int16_t>(v[9]);
      view.LevelMode = static_cast<std::int16_t>(v[10]);
      if (view.LevelMode < 1 || view.LevelMode > 4) view.LevelMode = LevelModeOf::All;
      view.LevelBottom = v[11];
      view.LevelTop = v[12];
      view.CurrentLevel = static_cast<int>(v[13]);
      view.WorkingRL = (view.LevelBottom + view.LevelTop) / 2;
      view.SelectedLevels.clear();
      for (int k = 0; k < 6; ++k) {
        if (v[17 + k] != 0) view.SelectedLevels.push_back(static_cast<std::int16_t>(v[17 + k]));
      }
      view.Pivot = {0, Whole(v[23]), Whole(v[24]), Whole(v[25])};
      view.PivotState = static_cast<std::int16_t>(pivotState);
      if (v[27] != 0) view.WorkingRL = v[27];
      if (v[28] != 0) view.SmokeLimit = v[28];
      const auto& c = net.ViewCode[slot];
      ShowLayersFromMask(net.SecondLayerShow, 25, 48, c[1]);
      ShowLayersFromMask(net.PrimaryLayerShow, 1, 16, c[2]);
      ShowLayersFromMask(net.SecondLayerShow, 1, 24, c[3]);
      view.DisplayBits = static_cast<std::int32_t>(c[4]);
      view.ColourByAir = c[5] != 0;
    }
  }
  BuildVisibleList(ws, view);
  if (slot == 1) SetPlanView(ws, view);
  ProjectNetwork(ws, view);
}

bool LoadStartupView(Workspace& ws, ViewState& view) {
  if (ws.net.ViewValue[0][5] == 0) return false;
  LoadViewSlot(ws, view, 0);
  ResizeView(ws, view, view.PixelWidth, view.PixelHeight);  // the stored width, this shape
  SetScaleCaption(ws, view);
  return true;
}

void MakePermanentViews(Network& net) {
  struct Permanent {
    const char* name;
    float tilt, spin, is3D;
  };
  const float sign = net.AxisSignY;
  const Permanent views[kPermanentViews] = {
      {" 1. Default View", 0, 0, 0},
      {" 2. Plan View 3D", 0, 0, 1},
      {" 3. Long Section", sign * kPi / 2, 0, 1},
      {" 4. Cross Section", sign * kPi / 2, -kPi / 2, 1},
      {" 5. Iso View", sign * 1, -0.391f, 1},
  };
  for (int slot = 1; slot <= kPermanentViews; ++slot) {
    const Permanent& p = views[slot - 1];
    ClearViewSlot(net, slot);
    net.ViewName[slot] = p.name;
    net.ViewValue[slot][1] = p.tilt;
    net.ViewValue[slot][2] = p.spin;
    net.ViewValue[slot][14] = p.is3D;
  }
}

std::vector<std::string> ViewNames(const Network& net) {
  std::vector<std::string> names;
  for (int slot = 1; slot <= kLastUserView; ++slot) {
    if (!net.ViewName[slot].empty()) names.push_back(net.ViewName[slot]);
  }
  return names;
}

namespace {
int FindViewSlot(const Network& net, const std::string& name) {
  for (int slot = 1; slot <= kLastUserView; ++slot) {
    if (!name.empty() && net.ViewName[slot] == name) return slot;
  }
  return 0;
}
}  // namespace

bool ApplyNamedView(Workspace& ws, ViewState& view, const std::string& name) {
  // Every pick loads the view again, in plan mode as in 3-D: a list that only answered in 3-D
  // went dead once " 1. Default View" had put the window back into plan mode.
  if (name.empty()) return false;
  const int slot = FindViewSlot(ws.net, name);
  if (slot == 0) {
    ws.ui.Inform("Error - could not load view");
    return false;
  }
  view.FitAfterView = false;
  LoadViewSlot(ws, view, slot);
  if (view.FitAfterView) {
    FitNetwork(ws, view);
    view.FitAfterView = false;
  }
  SetScaleCaption(ws, view);
  return true;
}

int SaveNamedView(Workspace& ws, const ViewState& view) {
  const std::optional<std::string> answer = ws.ui.Input("View Name", "Enter name of view", "");
  if (!answer || answer->empty()) return 0;
  const std::string& name = *answer;
  if (name.find(',') != std::string::npos) {
    ws.ui.Inform("No commas allowed in name !");
    return 0;
  }
  if (name.find('"') != std::string::npos || static_cast<unsigned char>(name[0]) < ' ') {
    ws.ui.Inform("Invalid view name");
    return 0;
  }
  int slot = FindViewSlot(ws.net, name);
  if (slot != 0) {
    if (!ws.ui.AskYesNo("There is already a view with that name!\nDo you wish to overwrite ?",
                        "Overwrite view")) {
      return 0;
    }
  } else {
    for (int s = 1; s <= kLastUserView && slot == 0; ++s) {
      if (ws.net.ViewName[s].empty()) slot = s;
    }
    if (slot == 0) {
      ws.ui.Inform("No view slots available to save view");
      return 0;
    }
  }
  ws.net.ViewName[slot] = name;
  SaveViewSlot(ws, view, slot);
  return slot;
}

bool DeleteNamedView(Workspace& ws, int listPosition) {
  if (listPosition < kPermanentViews) {
    ws.ui.Inform("Permanent view - cannot delete!");
    return false;
  }
  const std::vector<std::string> names = ViewNames(ws.net);
  if (listPosition >= static_cast<int>(names.size())) return false;
  if (!ws.ui.AskYesNo("Are you sure", "Delete View")) return false;
  const int slot = FindViewSlot(ws.net, names[listPosition]);
  if (slot <= kPermanentViews) return false;
  ws.net.ViewName[slot].clear();
  ClearViewSlot(ws.net, slot);
  return true;
}

}  // namespace galeris
