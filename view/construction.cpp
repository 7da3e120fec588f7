// Airway construction and node editing. Room in the store and the surface rule are tested
// before anything changes, so a refused action never leaves half an airway behind.
#include "view/construction.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_set>

#include "core/airway_values.h"
#include "core/number_format.h"
#include "view/drawing.h"
#include "view/fence_tools.h"

namespace galeris {
namespace {


Coord3 CoordOf(double x, double y, double z) {
  return {0, static_cast<std::int32_t>(RoundHalfEven(x)), static_cast<std::int32_t>(RoundHalfEven(y)),
          static_cast<std::int32_t>(RoundHalfEven(z))};
}

bool SamePoint(const Coord3& a, const Coord3& b) {
  return a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

double Distance(const Coord3& a, const Coord3& b) {
  const double dx = double(b[1]) - a[1], dy = double(b[2]) - a[2], dz = double(b[3]) - a[3];
  return std::sqrt(dx * dx + dy * dy + dz * dz);
}

void SetNodeIds(Network& net, int i) {
  net.EntryNodeId[i] = NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]);
  net.ExitNodeId[i] = NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]);
}

// Length (unless fixed), resistance and the rest of the derived values after a move.
void Renode(Workspace& ws, int i) {
  SetNodeIds(ws.net, i);
  CalcResistance(ws, i);
}

void FinishAction(Workspace& ws) {
  CloseUndoAction(ws.journal);
  MarkNetworkChanged(ws);
}

// The end under the window point, else a point on an airway body, else nothing.
ConstructionPoint PointUnderMouse(Workspace& ws, ViewState& view, ToolState& tools, float x,
                                  float y) {
  ConstructionPoint point;
  const EndPick end = FindNearestEnd(ws, view, tools, x, y, true);
  if (end.End != 0) {
    point.At = {0, end.X, end.Y, end.Z};
    point.EndOf = std::abs(end.End);
    point.Name = end.NodeName;
    return point;
  }
  const AirwayPick hit = FindNearestAirway(ws, view, tools, x, y);
  if (hit.Airway != 0) {
    point.At = CoordOf(hit.X, hit.Y, hit.Z);
    point.OnBody = hit.Airway;
  }
  return point;
}

// The world point of a window point at the height z: in the upright plane facing the viewer
// when the view is edge-on, else on the horizontal plane.
Coord3 FreePoint(Workspace& ws, const ViewState& view, const ToolState& tools, const Coord3& from,
                 float x, float y) {
  double wx = from[1], wy = from[2], wz = from[3];
  if (ViewKind(view) == 2) {
    ShiftPointInPlane(view, tools.PressX, tools.PressY, x, y, wx, wy, wz);
  } else {
    UnprojectInput input;
    input.ShiftHeld = tools.ShiftState != 0;
    input.PickX = tools.PickX;
    input.PickY = tools.PickY;
    input.PickZ = tools.PickZ;
    input.PressX = tools.PressX;
    input.PressY = tools.PressY;
    UnprojectPoint(ws.net, view, x, y, wz, wx, wy, input);
  }
  return CoordOf(wx, wy, wz);
}

bool OnSurface(const Network& net, const Coord3& a, const Coord3& b) {
  if (net.RLCount < 1) return false;
  const std::int32_t surface = SurfaceThreshold(net);
  return a[3] >= surface || b[3] >= surface;
}

// Size, wall and shock of a new airway: from the airway drawn from, else from the defaults.
void TakeSection(Workspace& ws, int n, int model) {
  Network& net = ws.net;
  const Defaults& d = ws.defaults;
  if (model != 0 && d.NoPropertyInherit == 0) {
    net.Dim[n] = net.Dim[model];
    net.WallType[n] = net.WallType[model];
    net.ShockType[n] = net.ShockType[model];
    net.ShockFactor[n] = net.ShockFactor[model];
    net.WallFactor[n] = net.WallFactor[model];
    net.BranchCode[n] = net.BranchCode[model] & Bit::NewAirwayMask;
    return;
  }
  if (d.UseAreaForNew == 1) {
    net.Dim[n] = {0, d.DefaultPerimeter, d.DefaultArea};
    net.WallType[n] = d.DefaultWallDrive;
    net.BranchCode[n] = Bit::Custom;
  } else {
    const Coord3& a = net.Coord1[n];
    const Coord3& b = net.Coord2[n];
    const bool steep = a[3] != b[3] && std::fabs(double(a[3]) - b[3]) * 1.5 > net.Length[n];
    if (steep) {
      net.Dim[n] = {0, 0, d.DefaultDiameter};
      net.WallType[n] = d.DefaultWallRaise;
      net.BranchCode[n] = Bit::Round;
    } else {
      net.Dim[n] = {0, d.DefaultHeight, d.DefaultWidth};
      net.WallType[n] = d.DefaultWallDrive;
      net.BranchCode[n] = Bit::Rectangular;
    }
  }
  net.ShockType[n] = static_cast<std::int16_t>(d.DefaultShock);
  const auto slot = [](int index) { return std::clamp(index, 0, kPresetSlots - 1); };
  net.ShockFactor[n] = d.ShockPreset[slot(net.ShockType[n])];
  net.WallFactor[n] = d.WallFactorPreset[slot(net.WallType[n])];
}

// Which part of a split airway holds a point that lay on the whole airway.
int PartHolding(const Network& net, int first, int second, const Coord3& at) {
  if (second == 0) return first;
  const double along = Distance(net.Coord1[first], at);
  return along < Distance(net.Coord1[first], net.Coord2[first]) ? first : second;
}

// Airways with an end at the point, other than `except`.
int AirwaysAt(const Network& net, const Coord3& at, int except) {
  int count = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (i == except) continue;
    if (SamePoint(net.Coord1[i], at) || SamePoint(net.Coord2[i], at)) ++count;
  }
  return count;
}

void DeleteSelected(Workspace& ws) {
  std::vector<int> selected;
  for (int i = 1; i <= ws.net.BranchCount; ++i)
    if (ws.net.BranchCode[i] & Bit::Selected) selected.push_back(i);
  DeleteAirways(ws, selected);
}

bool AnySelected(const Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.BranchCode[i] & Bit::Selected) return true;
  return false;
}

}  // namespace

void RemoveAirway(Network& net, int index) {
  BlankAirway(net, index);
}

void PurgeDeleted(Network& net) {
  CompactAirways(net);
}

void RefreshAfterEdit(Workspace& ws, ViewState& view) {
  RebuildNodes(ws.net, ws.defaults, ws.ui);
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
}

int SplitAirway(Workspace& ws, const Coord3& at, int airway) {
  Network& net = ws.net;
  if (net.BranchCount + 1 > net.MaxAirways || net.BranchCount + 1 > kAirwayLoopLimit) {
    ws.ui.Inform(kMsgPasteExceeded);
    return 0;
  }
  JournalBefore(ws.journal, airway);
  const Coord3 oldEnd = net.Coord2[airway];
  const double whole = Distance(net.Coord1[airway], oldEnd);
  const double share = whole > 0 ? Distance(net.Coord1[airway], at) / whole : 0.5;
  const int n = net.BranchCount + 1;
  net.BranchCount = static_cast<std::int16_t>(n);
  CopyAirway(net, airway, n);
  net.Coord2[airway] = at;
  net.Coord1[n] = at;
  net.Coord2[n] = oldEnd;
  // The exit node's name goes with the far part; the new node has none.
  net.ExitNodeName[airway] = "";
  net.EntryNodeName[n] = "";
  // The entry's surface force stays on the first part and the exit's goes to the second; fans,
  // fixed flows and fixed pressures stay on the first part; a fixed direction holds for both.
  net.BranchCode[n] &= ~(Bit::ForceEntrySurface | Bit::FansInSeries | Bit::FixedQuantity);
  net.BranchCode[airway] &= ~Bit::ForceExitSurface;
  net.FanNumber[n] = 0;
  net.NoOfFans[n] = 0;
  net.Pressure[n] = 0;
  net.RemoteStation[n] = 0;
  net.SmokeData[n] = {};
  net.UndoNo[n] = 0;
  net.AirwayNo[n] = ++net.NextAirwayNo;
  if (net.BranchCode[airway] & Bit::FixedLength) {
    const float length = net.Length[airway];
    net.Length[airway] = static_cast<float>(length * share);
    net.Length[n] = static_cast<float>(length * (1 - share));
  }
  Renode(ws, airway);
  Renode(ws, n);
  JournalAfter(ws.journal, airway);
  JournalAfter(ws.journal, n);
  return n;
}

int BuildAirway(Workspace& ws, const ViewState& view, EditState& edit,
                const ConstructionPoint& start, const ConstructionPoint& end) {
  Network& net = ws.net;
  if (SamePoint(start.At, end.At)) return 0;
  if (edit.DefaultPrimaryLayer == 0) edit.DefaultPrimaryLayer = 1;
  if (edit.DefaultSecondLayer == 0) edit.DefaultSecondLayer = 1;
  const int splits = (start.OnBody != 0) + (end.OnBody != 0);
  if (net.BranchCount + 1 >= net.MaxAirways || net.BranchCount + 1 > kAirwayLoopLimit) {
    ws.ui.Inform(kMsgAirwaysExceeded);
    return 0;
  }
  if (splits > 0 && net.BranchCount + 1 + splits > net.MaxAirways) {
    ws.ui.Inform(kMsgPasteExceeded);
    return 0;
  }
  if (OnSurface(net, start.At, end.At)) {
    std::string text = kMsgSurfaceAirway;
    const int level = std::clamp(view.CurrentLevel, 0, static_cast<int>(net.RLName.size()) - 1);
    if (view.LevelMode == LevelModeOf::Single && net.RLName[level].empty())
      text += std::string("\n") + kMsgNeedLevels;
    ws.ui.Inform(text);
    return 0;
  }

  const int model = start.EndOf != 0 ? start.EndOf : start.OnBody;
  std::int16_t primary = edit.DefaultPrimaryLayer, second = edit.DefaultSecondLayer;
  if (model != 0 && (ws.defaults.LayerInherit != 0 || start.OnBody != 0)) {
    primary = net.PrimaryLayer[model];
    second = net.SecondLayer[model];
  }
  if (primary == 0 || second == 0) {
    primary = edit.DefaultPrimaryLayer;
    second = edit.DefaultSecondLayer;
  }

  int split = 0;
  if (start.OnBody != 0) split = SplitAirway(ws, start.At, start.OnBody);
  if (end.OnBody != 0) {
    int target = end.OnBody;
    if (target == start.OnBody) target = PartHolding(net, start.OnBody, split, end.At);
    SplitAirway(ws, end.At, target);
  }

  const int n = net.BranchCount + 1;
  net.BranchCount = static_cast<std::int16_t>(n);
  BlankAirway(net, n);
  edit.DrawnAirway = n;
  net.Coord1[n] = start.At;
  net.Coord2[n] = end.At;
  net.EntryNodeName[n] = start.Name == "&&" ? std::string() : start.Name;
  net.ExitNodeName[n] = end.Name == "&&" ? std::string() : end.Name;
  net.Length[n] = static_cast<float>(std::floor(Distance(start.At, end.At)));
  TakeSection(ws, n, model);
  net.PrimaryLayer[n] = primary;
  net.SecondLayer[n] = second;
  net.LabelPos[n] = 0.5f;
  net.AirwayNo[n] = ++net.NextAirwayNo;
  SetNodeIds(net, n);
  CalcResistance(ws, n);
  if (primary < static_cast<int>(net.PrimaryLayerShow.size()) && net.PrimaryLayerShow[primary] == 0)
    ws.ui.Inform(kMsgPrimaryInvisible);
  if (second < static_cast<int>(net.SecondLayerShow.size()) && net.SecondLayerShow[second] == 0)
    ws.ui.Inform(kMsgSecondInvisible);
  JournalAfter(ws.journal, n);
  FinishAction(ws);
  return n;
}

bool FinishAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  if (release.Button != MouseButtonOf::Left && release.Button != MouseButtonOf::Right) return false;
  if (release.Button == MouseButtonOf::Left && tools.PressX == release.X &&
      tools.PressY == release.Y)
    return false;
  ConstructionPoint start;
  start.At = CoordOf(tools.PickX, tools.PickY, tools.PickZ);
  start.EndOf = tools.PickedEnd;
  start.OnBody = tools.PickedEnd == 0 ? tools.PickedAirway : 0;
  start.Name = tools.PickedEnd != 0 ? tools.PickNode : std::string();
  const float startRL = static_cast<float>(start.At[3]);

  ConstructionPoint end;
  if (!release.Shift) end = PointUnderMouse(ws, view, tools, release.X, release.Y);
  if (end.EndOf == 0 && end.OnBody == 0) {
    // Carried into another window, the end takes that window's working level.
    Coord3 from = start.At;
    if (tools.ToolSourceWindow >= 0 && release.Window != tools.ToolSourceWindow)
      from[3] = static_cast<std::int32_t>(RoundHalfEven(view.WorkingRL));
    end = {};
    end.At = FreePoint(ws, view, tools, from, release.X, release.Y);
  }
  if (release.Button == MouseButtonOf::Right) {
    if (tools.Edit.Dialogs == nullptr) return false;
    const auto typed = tools.Edit.Dialogs->Coordinates(
        {double(end.At[1]), double(end.At[2]), double(end.At[3])});
    if (!typed) return false;
    end = {};
    end.At = CoordOf((*typed)[0], (*typed)[1], (*typed)[2]);
  }
  if (end.EndOf == 0 && end.OnBody == 0) view.WorkingRL = startRL;
  if (SamePoint(start.At, end.At)) return false;
  const int n = BuildAirway(ws, view, tools.Edit, start, end);
  if (n == 0) return false;
  // The next airway goes on from the end of this one.
  tools.PickX = end.At[1];
  tools.PickY = end.At[2];
  tools.PickZ = end.At[3];
  RefreshAfterEdit(ws, view);
  return true;
}

// The airways with an end at from, none of which would lose its length with that end at to;
// empty, after the message, when one would.
static std::vector<int> AirwaysMovableAt(Workspace& ws, const Coord3& from, const Coord3& to) {
  const Network& net = ws.net;
  std::vector<int> met;
  if (SamePoint(from, to)) return met;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const bool one = SamePoint(net.Coord1[i], from), two = SamePoint(net.Coord2[i], from);
    if (!one && !two) continue;
    if ((one && two) || SamePoint(one ? net.Coord2[i] : net.Coord1[i], to)) {
      ws.ui.Inform(kMsgNoLength);
      return {};
    }
    met.push_back(i);
  }
  return met;
}

bool MoveNode(Workspace& ws, const Coord3& from, const Coord3& to) {
  Network& net = ws.net;
  const std::vector<int> moved = AirwaysMovableAt(ws, from, to);
  if (moved.empty()) return false;
  for (int i : moved) {
    JournalBefore(ws.journal, i);
    if (SamePoint(net.Coord1[i], from)) net.Coord1[i] = to;
    if (SamePoint(net.Coord2[i], from)) net.Coord2[i] = to;
    Renode(ws, i);
    JournalAfter(ws.journal, i);
  }
  return true;
}

bool CopyNode(Workspace& ws, const Coord3& from, const Coord3& to) {
  Network& net = ws.net;
  const std::vector<int> met = AirwaysMovableAt(ws, from, to);
  if (met.empty()) return false;
  const int count = net.BranchCount + static_cast<int>(met.size());
  if (count > net.MaxAirways || count > kAirwayLoopLimit) {
    ws.ui.Inform(kMsgPasteExceeded);
    return false;
  }
  for (int i : met) {
    const int n = net.BranchCount + 1;
    net.BranchCount = static_cast<std::int16_t>(n);
    CopyAirway(net, i, n);
    if (SamePoint(net.Coord1[n], from)) {
      net.Coord1[n] = to;
      net.EntryNodeName[n] = "";
    } else {
      net.Coord2[n] = to;
      net.ExitNodeName[n] = "";
    }
    net.RemoteStation[n] = 0;
    net.SmokeData[n] = {};
    net.UndoNo[n] = 0;
    net.AirwayNo[n] = ++net.NextAirwayNo;
    Renode(ws, n);
    JournalAfter(ws.journal, n);
  }
  return true;
}

bool MoveSelected(Workspace& ws, std::int32_t dx, std::int32_t dy, std::int32_t dz) {
  Network& net = ws.net;
  if (dx == 0 && dy == 0 && dz == 0) return false;
  std::unordered_set<Key> nodes;
  std::vector<int> touched;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (!(net.BranchCode[i] & Bit::Selected)) continue;
    nodes.insert(NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]));
    nodes.insert(NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]));
    touched.push_back(i);
  }
  if (touched.empty()) return false;
  const auto shift = [&](Coord3& c) {
    c[1] += dx;
    c[2] += dy;
    c[3] += dz;
  };
  for (int i = 1; i <= net.BranchCount; ++i) {
    const bool selected = (net.BranchCode[i] & Bit::Selected) != 0;
    const bool one = nodes.count(NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]));
    const bool two = nodes.count(NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]));
    if (!selected && !one && !two) continue;
    JournalBefore(ws.journal, i);
    // Ends of other airways at a moved node follow it, so that they stay attached.
    if (selected || one) shift(net.Coord1[i]);
    if (selected || two) shift(net.Coord2[i]);
    Renode(ws, i);
    JournalAfter(ws.journal, i);
  }
  net.NextAirwayNo += static_cast<std::int32_t>(touched.size());
  FinishAction(ws);
  return true;
}

bool MoveAirwayEnd(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  if (const int text = tools.Edit.TextPicked; text != 0 && tools.PickedEnd == 0) {
    tools.Edit.TextPicked = 0;
    net.TextCoord[text] = FreePoint(ws, view, tools, net.TextCoord[text], release.X, release.Y);
    MarkNetworkChanged(ws);
    BuildVisibleList(ws, view);
    return true;
  }
  const int picked = tools.PickedEnd;
  if (picked == 0 || picked > net.BranchCount) return false;
  const Coord3 from = CoordOf(tools.Edit.InsertPoint[0], tools.Edit.InsertPoint[1],
                              tools.Edit.InsertPoint[2]);
  if (tools.Edit.MoveOnly && (net.BranchCode[picked] & Bit::Selected)) {
    const Coord3 to = FreePoint(ws, view, tools, from, release.X, release.Y);
    const Coord3 press = FreePoint(ws, view, tools, from, tools.PressX, tools.PressY);
    if (!MoveSelected(ws, to[1] - press[1], to[2] - press[2], to[3] - press[3])) return false;
    RefreshAfterEdit(ws, view);
    return true;
  }
  if (release.Button == MouseButtonOf::Right) {
    // The right button types the end's new place.
    if (tools.Edit.Dialogs == nullptr) return false;
    const auto typed =
        tools.Edit.Dialogs->MoveNodeTo({double(from[1]), double(from[2]), double(from[3])});
    if (!typed) return false;
    const Coord3 to = CoordOf(typed->to[0], typed->to[1], typed->to[2]);
    if (!(typed->copy ? CopyNode(ws, from, to) : MoveNode(ws, from, to))) return false;
    FinishAction(ws);
    RefreshAfterEdit(ws, view);
    return true;
  }
  ConstructionPoint target;
  if (!release.Shift) target = PointUnderMouse(ws, view, tools, release.X, release.Y);
  // The end's own node under the release is no target: the end moves a short way.
  if (target.EndOf != 0 && SamePoint(target.At, from)) target = {};
  if (target.EndOf != 0) {
    if (tools.Edit.ConfirmJoin && AirwaysAt(net, target.At, 0) > 0 &&
        !ws.ui.AskYesNo(kMsgJoinNodes, "Join Nodes"))
      return false;
  } else if (target.OnBody != 0) {
    const bool ownBody = SamePoint(net.Coord1[target.OnBody], from) ||
                         SamePoint(net.Coord2[target.OnBody], from);
    if (ownBody) target = {};
  }
  if (target.EndOf == 0 && target.OnBody == 0) {
    target.At = FreePoint(ws, view, tools, from, release.X, release.Y);
  }
  if (SamePoint(target.At, from)) return false;
  if (target.OnBody != 0 && SplitAirway(ws, target.At, target.OnBody) == 0) return false;
  if (!MoveNode(ws, from, target.At)) {
    if (target.OnBody != 0) FinishAction(ws);  // the split stands
    RefreshAfterEdit(ws, view);
    return target.OnBody != 0;
  }
  FinishAction(ws);
  RefreshAfterEdit(ws, view);
  return true;
}

namespace {

// The editor on the picked airway, shown as being edited while it is open. A resistance type
// changed there puts the resistance symbol where the airway was picked.
bool EditInDialog(Workspace& ws, EditDialogs& dialogs, int mode, const AirwayPick& pick) {
  Network& net = ws.net;
  const int i = pick.Airway;
  const std::int16_t loadedResType = net.ResType[i];
  ws.HighlightAirway = i;
  const bool changed = dialogs.AirwayEdit(mode, i);
  ws.HighlightAirway = 0;
  if (i <= net.BranchCount && net.ResType[i] != loadedResType) {
    net.LabelPos[i] = pick.Fraction - 0.3f;
    // The editor has closed its action: the airway's state after it, which a redo brings
    // back, takes the moved symbol too.
    if (changed && ws.journal)
      ws.journal->RecordUndo(i, UndoJournal::kAfter, ws.journal->UndoAction() - 1);
  }
  return changed;
}

}  // namespace

bool EditAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release,
                int button) {
  const AirwayPick pick = FindNearestAirway(ws, view, tools, release.X, release.Y);
  if (pick.Airway == 0) return false;
  Network& net = ws.net;
  EditDialogs* dialogs = tools.Edit.Dialogs;
  if (dialogs != nullptr && (net.BranchCode[pick.Airway] & Bit::Selected)) {
    const bool changed = EditInDialog(ws, *dialogs, 3, pick);
    if (changed) RefreshAfterEdit(ws, view);
    return changed;
  }
  if (button == MouseButtonOf::Both) {
    const Coord3 at = CoordOf(pick.X, pick.Y, pick.Z);
    if (SamePoint(at, net.Coord1[pick.Airway]) || SamePoint(at, net.Coord2[pick.Airway]))
      return false;
    if (SplitAirway(ws, at, pick.Airway) == 0) return false;
    FinishAction(ws);
    RefreshAfterEdit(ws, view);
    return true;
  }
  if (dialogs == nullptr) return false;
  bool changed = false;
  if (button == MouseButtonOf::Left) {
    changed = EditInDialog(ws, *dialogs, 1, pick);
  } else if (button == MouseButtonOf::Right && ws.defaults.EditNoRightClick == 0) {
    changed = EditInDialog(ws, *dialogs, 2, pick);
  }
  if (changed) RefreshAfterEdit(ws, view);
  return changed;
}

void MergeAtNode(Workspace& ws, int first, int second) {
  Network& net = ws.net;
  JournalBefore(ws.journal, first);
  JournalBefore(ws.journal, second);
  net.Coord2[first] = net.Coord2[second];
  net.ExitNodeName[first] = net.ExitNodeName[second];
  if (net.BranchCode[first] & Bit::FixedLength) net.Length[first] += net.Length[second];
  Renode(ws, first);
  JournalAfter(ws.journal, first);
  RemoveAirway(net, second);
  PurgeDeleted(net);
  FinishAction(ws);
}

void DeleteAirways(Workspace& ws, const std::vector<int>& positions) {
  if (positions.empty()) return;
  for (int i : positions) {
    JournalBefore(ws.journal, i);
    RemoveAirway(ws.net, i);
  }
  PurgeDeleted(ws.net);
  FinishAction(ws);
}

bool DeleteAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  if (IsFence(view, tools)) {
    const std::vector<int> inside =
        FindInFence(ws.net, view, tools.PressX, tools.PressY, tools.LastX, tools.LastY);
    tools.Edit.FenceHit = static_cast<int>(inside.size());
    if (inside.empty() || !ws.ui.AskYesNo(kMsgFenceDelete, "Fence Delete")) return false;
    DeleteAirways(ws, inside);
    RefreshAfterEdit(ws, view);
    return true;
  }
  ws.ui.SetBusy(true);
  struct BusyOff {
    UiPort& ui;
    ~BusyOff() { ui.SetBusy(false); }
  } busyOff{ws.ui};
  const EndPick end = FindNearestEnd(ws, view, tools, release.X, release.Y);
  if (end.End != 0) {
    const int a = std::abs(end.End);
    if (net.BranchCode[a] & Bit::Selected) {
      DeleteSelected(ws);
      RefreshAfterEdit(ws, view);
      return true;
    }
    const Coord3 node{0, end.X, end.Y, end.Z};
    int other = 0, count = 0;
    for (int i = 1; i <= net.BranchCount; ++i) {
      if (i == a) continue;
      if (SamePoint(net.Coord1[i], node) || SamePoint(net.Coord2[i], node)) {
        other = i;
        ++count;
      }
    }
    if (count > 1) {
      ws.ui.Inform(kMsgTooManyAttached);
      return false;
    }
    // Only an exit meeting an entry merges, and the upstream airway's record survives.
    const int upstream = end.End < 0 ? a : other;
    const int downstream = end.End < 0 ? other : a;
    if (count == 1 && SamePoint(net.Coord2[upstream], node) &&
        SamePoint(net.Coord1[downstream], node) &&
        !SamePoint(net.Coord1[upstream], net.Coord2[downstream])) {
      MergeAtNode(ws, upstream, downstream);
      RefreshAfterEdit(ws, view);
      view.PanHold = true;
      return true;
    }
  }
  const AirwayPick pick = FindNearestAirway(ws, view, tools, release.X, release.Y);
  const int airway = end.End != 0 && pick.Airway == 0 ? std::abs(end.End) : pick.Airway;
  if (airway == 0) return false;
  const bool selected = (net.BranchCode[airway] & Bit::Selected) != 0;
  if (selected) {
    DeleteSelected(ws);
  } else if (!AnySelected(net)) {
    DeleteAirways(ws, {airway});
  } else {
    return false;
  }
  RefreshAfterEdit(ws, view);
  return true;
}

}  // namespace galeris
