// Fence and attribute tools. Every change is journalled before and after and closed as one
// action; a refusal leaves the store and the journal untouched.
#include "view/fence_tools.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "core/airway_values.h"
#include "core/number_format.h"
#include "core/units.h"
#include "view/construction.h"
#include "view/drawing.h"

namespace galeris {
namespace {

constexpr int kClickShare = 50;
constexpr std::int16_t kSmokePin = 1, kClearPin = 2;
constexpr std::int16_t kTraceSmoke = 4, kTraceClear = 7;
constexpr int kLengthUnit = 1;

void FinishAction(Workspace& ws) {
  CloseUndoAction(ws.journal);
  MarkNetworkChanged(ws);
}

// Runs an edit on each airway, journalled before and after, as one action.
template <typename Edit>
bool EditEach(Workspace& ws, const std::vector<int>& airways, Edit edit) {
  if (airways.empty()) return false;
  for (int i : airways) {
    JournalBefore(ws.journal, i);
    edit(i);
    JournalAfter(ws.journal, i);
  }
  FinishAction(ws);
  return true;
}

std::vector<int> SelectedAirways(const Network& net) {
  std::vector<int> selected;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.BranchCode[i] & Bit::Selected) selected.push_back(i);
  return selected;
}

int NearestAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  const AirwayPick pick = FindNearestAirway(ws, view, tools, release.X, release.Y);
  tools.PickFraction = pick.Fraction;
  tools.Edit.InsertPoint = {pick.X, pick.Y, pick.Z};
  return pick.Airway;
}

std::string AirwayTitle(const Network& net, int i) {
  const std::string name = net.BranchName[i].Trimmed();
  return name.empty() ? std::to_string(net.AirwayNo[i]) : name;
}

std::string Shown(const Workspace& ws, double value, int unit) {
  return FormatValue(ws.units, value, unit, true);
}

std::string PresetName(const std::array<std::string, kPresetSlots>& names, int index) {
  return index >= 0 && index < kPresetSlots ? names[index] : std::string();
}

std::string LayerNameOf(const std::vector<std::string>& names, int layer) {
  return layer >= 0 && layer < static_cast<int>(names.size()) ? names[layer] : std::string();
}

bool IsSteep(const Network& net, int i) {
  return std::fabs(double(net.Coord1[i][3]) - net.Coord2[i][3]) * 1.5 > net.Length[i];
}

// The pan brought to a world point, and in plan the scale halved about it.
void BringIntoView(Workspace& ws, ViewState& view, const Coord3& at) {
  float sx = 0, sy = 0;
  ProjectPoint(view, at[1], at[2], at[3], sx, sy);
  MovePan(ws.net, view, view.PanX + sx, view.PanY + sy);
  if (view.Is3D == 0) SetZoom(ws, view, view.ScaleWidth / 2, view.ScaleHeight / 2);
}

// Selects a level whose band holds the height, adding a global one when none does.
void ShowLevelOf(Workspace& ws, ViewState& view, float z) {
  if (z >= view.LevelBottom && z <= view.LevelTop) return;
  Network& net = ws.net;
  for (int k = 1; k <= net.RLCount; ++k) {
    if (z <= net.RLBound[k][1] && z >= net.RLBound[k][2]) {
      SelectLevel(ws, view, k);
      return;
    }
  }
  ws.ui.Message(
      "Could not find a valid defined display level the airway was on!\nGaleris will create a "
      "new global level range and add it to your level list",
      MsgButtons::OK, MsgIcon::Information, "Global Level");
  if (net.RLCount + 1 >= kMaxLevels) {
    ws.ui.Inform("Level addition failed - too many levels already defined");
    return;
  }
  const int k = ++net.RLCount;
  net.RLName[k] = "Global";
  net.RLBound[k] = {0, 99999, -99999};
  SelectLevel(ws, view, k);
}

bool ContainsNoCase(const std::string& text, const std::string& part) {
  const auto lower = [](std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
  };
  return lower(text).find(lower(part)) != std::string::npos;
}

// An input box that refuses commas, asking again; nothing on Cancel.
std::optional<std::string> AskName(Workspace& ws, const std::string& title,
                                   const std::string& prompt, const std::string& value) {
  std::string current = value;
  for (;;) {
    auto answer = ws.ui.Input(title, prompt, current);
    if (!answer) return std::nullopt;
    if (answer->find(',') == std::string::npos) return answer;
    ws.ui.Inform(kMsgCommas);
    current = *answer;
  }
}

}  // namespace

std::vector<int> FindInFence(const Network& net, const ViewState& view, float x1, float y1,
                             float x2, float y2) {
  const float ax = x1 * net.AxisSignX, bx = x2 * net.AxisSignX;
  const float ay = y1 * net.AxisSignY, by = y2 * net.AxisSignY;
  const float left = std::min(ax, bx), right = std::max(ax, bx);
  const float top = std::min(ay, by), bottom = std::max(ay, by);
  const auto inside = [&](float x, float y) {
    return x > left && x < right && y > top && y < bottom;
  };
  std::vector<int> found;
  const int count = std::min<int>({view.AirwayLineCount, static_cast<int>(net.AirwayLine.size()),
                                   static_cast<int>(view.LineAirway.size())});
  for (int k = 0; k < count; ++k) {
    const int i = view.LineAirway[k];
    if (i == 0) break;
    const AirwayLineRecord& line = net.AirwayLine[k];
    if (inside(line.X1, line.Y1) || inside(line.X2, line.Y2) ||
        inside((line.X1 + line.X2) / 2, (line.Y1 + line.Y2) / 2)) {
      if (found.empty() || found.back() != i) found.push_back(i);
    }
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

bool IsFence(const ViewState& view, const ToolState& tools) {
  // The release is LastX, LastY: the fence has been put in order by then.
  const float pickDistance = view.ScaleWidth / kClickShare;
  return std::fabs(tools.LastX - tools.PressX) > pickDistance ||
         std::fabs(tools.LastY - tools.PressY) > pickDistance;
}

std::string CopyAttributesFrom(Workspace& ws, EditState& edit, int airway, bool toDefaults) {
  Network& net = ws.net;
  const SavedSettings before = SettingsOf(ws);
  Defaults& d = ws.defaults;
  const AttributeChoice& chosen = edit.AttributeChosen;
  edit.CopySource = airway;
  edit.CopiedWallType = net.WallType[airway];
  edit.CopiedWallFactor = net.WallFactor[airway];
  edit.CopiedDim = net.Dim[airway];
  edit.CopiedCode = net.BranchCode[airway];
  edit.CopiedShockType = net.ShockType[airway];
  edit.CopiedShockFactor = net.ShockFactor[airway];
  edit.CopiedResType = net.ResType[airway];
  edit.CopiedResistance = net.Resistance[airway];
  edit.CopiedLength = net.Length[airway];
  edit.CopiedPrimaryLayer = net.PrimaryLayer[airway];
  edit.CopiedSecondLayer = net.SecondLayer[airway];

  const bool steep = IsSteep(net, airway);
  std::string text = "The following attributes for branch " + AirwayTitle(net, airway) +
                     (toDefaults ? " were copied to defaults" : " were copied for future pasting");
  const auto line = [&text](const std::string& row) { text += "\n" + row; };
  const std::int32_t code = net.BranchCode[airway];
  if (chosen[AttributeOf::WallType]) {
    const std::string wall = PresetName(d.WallName, net.WallType[airway]);
    if (!toDefaults) {
      line("Airway Wall Type: " + wall);
    } else if (steep) {
      line("Raise Wall Type: " + wall);
      d.DefaultWallRaise = net.WallType[airway];
    } else {
      line("Drive Wall Type: " + wall);
      d.DefaultWallDrive = net.WallType[airway];
    }
  }
  if (chosen[AttributeOf::FrictionFactor]) {
    line(std::string(steep ? "Raise" : "Drive") +
         " Wall Friction Factor: " + Shown(ws, net.WallFactor[airway], 10));
  }
  if (chosen[AttributeOf::Dimensions]) {
    if (code & Bit::Custom) {
      line("Area " + Shown(ws, net.Dim[airway][2], 3) + " x Perimeter " +
           Shown(ws, net.Dim[airway][1], kLengthUnit));
      if (toDefaults) d.DefaultArea = net.Dim[airway][2], d.DefaultPerimeter = net.Dim[airway][1];
    } else if (code & Bit::Round) {
      line("Diameter " + Shown(ws, net.Dim[airway][2], kLengthUnit));
      if (toDefaults) d.DefaultDiameter = net.Dim[airway][2];
    } else {
      line("Dimension " + Shown(ws, net.Dim[airway][2], kLengthUnit) + " x " +
           Shown(ws, net.Dim[airway][1], kLengthUnit));
      if (toDefaults) d.DefaultWidth = net.Dim[airway][2], d.DefaultHeight = net.Dim[airway][1];
    }
  }
  if (chosen[AttributeOf::ShockValue]) {
    line("Shock Value: " + PresetName(d.ShockName, net.ShockType[airway]));
    if (toDefaults) d.DefaultShock = net.ShockType[airway];
  }
  if (chosen[AttributeOf::Resistance])
    line("Resistance Type: " + PresetName(d.ResName, net.ResType[airway]));
  if (chosen[AttributeOf::Length]) {
    line(code & Bit::FixedLength
             ? "Length is fixed to " + Shown(ws, net.Length[airway], kLengthUnit)
             : std::string("Length is unfixed"));
  }
  if (chosen[AttributeOf::FreshReturnAir]) {
    line(code & Bit::Fresh     ? "Airway is in fresh air"
         : code & Bit::Exhaust ? "Airway is in exhaust air"
                               : "Airway is in unspecified air");
  }
  if (chosen[AttributeOf::PrimaryLayer]) {
    line("Primary Layer = " + LayerNameOf(net.PrimaryLayerName, net.PrimaryLayer[airway]));
    if (toDefaults) edit.DefaultPrimaryLayer = net.PrimaryLayer[airway];
  }
  if (chosen[AttributeOf::SecondaryLayer]) {
    line("Secondary Layer = " + LayerNameOf(net.SecondLayerName, net.SecondLayer[airway]));
    if (toDefaults) edit.DefaultSecondLayer = net.SecondLayer[airway];
  }
  if (chosen[AttributeOf::DisplayData])
    line(code & Bit::ShowData ? "Data values will be shown" : "Data values will be hidden");
  MarkDefaultsChanged(ws, before);
  return text;
}

void PasteAttributesTo(Workspace& ws, const EditState& edit, int i) {
  Network& net = ws.net;
  const AttributeChoice& chosen = edit.AttributeChosen;
  std::int32_t& code = net.BranchCode[i];
  const auto takeBits = [&](std::int32_t mask) { code = (code & ~mask) | (edit.CopiedCode & mask); };
  if (chosen[AttributeOf::WallType]) {
    net.WallType[i] = edit.CopiedWallType;
    net.WallFactor[i] = edit.CopiedWallFactor;
  }
  if (chosen[AttributeOf::FrictionFactor]) net.WallFactor[i] = edit.CopiedWallFactor;
  if (chosen[AttributeOf::Dimensions]) {
    net.Dim[i] = edit.CopiedDim;
    takeBits(Bit::Rectangular | Bit::Round | Bit::Custom | Bit::Services);
  }
  if (chosen[AttributeOf::ShockValue]) {
    net.ShockType[i] = edit.CopiedShockType;
    net.ShockFactor[i] = edit.CopiedShockFactor;
  }
  if (chosen[AttributeOf::Resistance]) {
    net.ResType[i] = edit.CopiedResType;
    if (edit.CopiedResType == kUserGiven) net.Resistance[i] = edit.CopiedResistance;
  }
  if (chosen[AttributeOf::Length]) {
    takeBits(Bit::FixedLength);
    if (edit.CopiedCode & Bit::FixedLength) net.Length[i] = edit.CopiedLength;
  }
  if (chosen[AttributeOf::FreshReturnAir]) takeBits(Bit::Fresh | Bit::Exhaust);
  if (chosen[AttributeOf::PrimaryLayer]) net.PrimaryLayer[i] = edit.CopiedPrimaryLayer;
  if (chosen[AttributeOf::SecondaryLayer]) net.SecondLayer[i] = edit.CopiedSecondLayer;
  if (chosen[AttributeOf::DisplayData]) takeBits(Bit::ShowData);
  CalcResistance(ws, i);
}

bool CopyPasteAttributes(Workspace& ws, ViewState& view, ToolState& tools,
                         const MouseInput& release) {
  EditState& edit = tools.Edit;
  if (std::none_of(edit.AttributeChosen.begin(), edit.AttributeChosen.end(),
                   [](bool b) { return b; })) {
    ws.ui.Inform(kMsgNoAttributes);
    return false;
  }
  const bool fence = IsFence(view, tools);
  if (release.Button == MouseButtonOf::Right) {
    if (fence) return false;
    const int airway = NearestAirway(ws, view, tools, release);
    if (airway == 0) return false;
    ws.ui.Inform(CopyAttributesFrom(ws, edit, airway, release.Shift));
    return false;
  }
  if (release.Button != MouseButtonOf::Left) return false;
  if (!fence) {
    if (edit.CopySource == 0) {
      ws.ui.Inform(kMsgCopyFirst);
      return false;
    }
    const int airway = NearestAirway(ws, view, tools, release);
    if (airway == 0) return false;
    EditEach(ws, {airway}, [&](int i) { PasteAttributesTo(ws, edit, i); });
    ws.ui.Inform("Attributes pasted to Branch " + std::to_string(ws.net.AirwayNo[airway]));
    RefreshAfterEdit(ws, view);
    return true;
  }
  if (edit.CopySource == 0) {
    ws.ui.Inform(kMsgCopyFirstFence);
    return false;
  }
  const std::vector<int> inside =
      FindInFence(ws.net, view, tools.PressX, tools.PressY, tools.LastX, tools.LastY);
  edit.FenceHit = static_cast<int>(inside.size());
  if (inside.empty() || !ws.ui.AskYesNo(kMsgFencePaste, "Fence Paste")) return false;
  EditEach(ws, inside, [&](int i) { PasteAttributesTo(ws, edit, i); });
  RefreshAfterEdit(ws, view);
  return true;
}

bool PasteLayers(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  EditState& edit = tools.Edit;
  const auto paste = [&](int i) {
    if (edit.DefaultPrimaryLayer > 0) net.PrimaryLayer[i] = edit.DefaultPrimaryLayer;
    if (edit.DefaultSecondLayer > 0) net.SecondLayer[i] = edit.DefaultSecondLayer;
  };
  if (IsFence(view, tools)) {
    if (release.Button != MouseButtonOf::Left) return false;
    const std::vector<int> inside =
        FindInFence(net, view, tools.PressX, tools.PressY, tools.LastX, tools.LastY);
    edit.FenceHit = static_cast<int>(inside.size());
    if (inside.empty() || !ws.ui.AskYesNo(kMsgFenceLayers, "Fence Tag")) return false;
    EditEach(ws, inside, paste);
    RefreshAfterEdit(ws, view);
    return true;
  }
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway == 0) return false;
  if (release.Button == MouseButtonOf::Right) {
    edit.DefaultPrimaryLayer = net.PrimaryLayer[airway];
    edit.DefaultSecondLayer = net.SecondLayer[airway];
    ws.ui.Inform("Primary Layer Default = " + LayerNameOf(net.PrimaryLayerName, edit.DefaultPrimaryLayer) +
                 " (" + std::to_string(edit.DefaultPrimaryLayer) + ")\nSecondary Layer Default = " +
                 LayerNameOf(net.SecondLayerName, edit.DefaultSecondLayer) + " (" +
                 std::to_string(edit.DefaultSecondLayer) + ")");
    return false;
  }
  if (release.Button != MouseButtonOf::Left) return false;
  EditEach(ws, {airway}, paste);
  ws.ui.Inform("Layers pasted to branch");
  RefreshAfterEdit(ws, view);
  return true;
}

bool PlaceFan(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway == 0) return false;
  if (net.FanNumber[airway] == -1) {
    ws.ui.Inform(kMsgFanFixedPressure);
    return false;
  }
  if (net.BranchCode[airway] & Bit::FixedQuantity) {
    ws.ui.Inform(kMsgFanFixedQuantity);
    return false;
  }
  if (release.Button == MouseButtonOf::Right) {
    if (net.FanNumber[airway] == 0) return false;
    EditEach(ws, {airway}, [&](int i) {
      net.FanNumber[i] = 0;
      net.NoOfFans[i] = 0;
      net.BranchCode[i] &= ~Bit::FixedDirection;
    });
    RefreshAfterEdit(ws, view);
    return true;
  }
  if (release.Button != MouseButtonOf::Left || tools.Edit.Dialogs == nullptr) return false;
  if (!tools.Edit.Dialogs->FanEdit(airway)) return false;
  RefreshAfterEdit(ws, view);
  return true;
}

bool PlaceContaminant(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  tools.Edit.SourceToolUsed = true;
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway == 0) return false;
  const float labelAt = tools.PickFraction - 0.3f;
  if (release.Button == MouseButtonOf::Left) {
    EditEach(ws, {airway}, [&](int i) {
      net.BranchCode[i] ^= Bit::ContaminantSource;
      if (net.BranchCode[i] & Bit::ContaminantSource) {
        net.Contaminant[i] = 100;
        net.LabelPos[i] = labelAt;
      } else {
        net.Contaminant[i] = 0;
      }
    });
  } else if (release.Button == MouseButtonOf::Right) {
    const float present = net.Contaminant[airway];
    const auto answer = ws.ui.Input("Concentration", "Enter contamination concentration",
                                     FormatNumber(present == 0 ? 100 : present, "0.###"));
    if (!answer || answer->empty()) return false;
    char* end = nullptr;
    const double value = std::strtod(answer->c_str(), &end);
    if (end == answer->c_str() || *end != '\0' || !std::isfinite(value) || value < 0) {
      ws.ui.Inform("The concentration must be a number of 0 or more");
      return false;
    }
    EditEach(ws, {airway}, [&](int i) {
      net.Contaminant[i] = static_cast<float>(value);
      if (value == 0) {
        net.BranchCode[i] &= ~Bit::ContaminantSource;
      } else {
        net.BranchCode[i] |= Bit::ContaminantSource;
        net.LabelPos[i] = labelAt;
      }
    });
  } else {
    return false;
  }
  RefreshAfterEdit(ws, view);
  return true;
}

bool PlaceSmokeReport(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  // A left click places the pin chosen on the trace form; a right click always a clear one.
  const std::int16_t chosen = tools.Edit.PinType == kClearPin ? kClearPin : kSmokePin;
  const std::int16_t kind = release.Button == MouseButtonOf::Left    ? chosen
                            : release.Button == MouseButtonOf::Right ? kClearPin
                                                                     : 0;
  if (kind == 0) return false;
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway == 0) return false;
  const std::int16_t state = net.SmokeData[airway][2];
  if (state == kTraceClear && kind == kSmokePin &&
      !ws.ui.AskYesNo(
          "You are about to place a smoke report in a defined clear airway - is this correct",
          "Conflicting Report"))
    return false;
  if (state == kTraceSmoke && kind == kClearPin &&
      !ws.ui.AskYesNo(
          "You are about to place a 'clear' report in a defined smoked airway - is this correct",
          "Conflicting Report"))
    return false;
  const float labelAt = tools.PickFraction - 0.3f;
  EditEach(ws, {airway}, [&](int i) {
    if (net.SmokeData[i][1] == kind) {
      net.SmokeData[i][1] = 0;
    } else {
      net.SmokeData[i][1] = kind;
      net.LabelPos[i] = labelAt;
    }
  });
  RefreshAfterEdit(ws, view);
  return true;
}

int FindNearestText(const Network& net, const ViewState& view, const ToolState& tools, float x,
                    float y) {
  const float t = view.ScaleWidth / (tools.PickDivisor > 0 ? tools.PickDivisor : 25);
  const float rx = x * net.AxisSignX, ry = y * net.AxisSignY;
  float best = t * 2;
  int found = 0;
  for (std::int16_t k : view.VisibleTexts) {
    const Coord3& c = net.TextCoord[k];
    float sx = 0, sy = 0;
    ProjectPoint(view, c[1], c[2], c[3], sx, sy);
    const float dx = std::fabs(sx - rx), dy = std::fabs(sy - ry);
    if (dx < t && dy < t && dx + dy < best) {
      best = dx + dy;
      found = k;
    }
  }
  return found;
}

bool NameAndText(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  if (release.Button == MouseButtonOf::Right) {
    const int text = FindNearestText(net, view, tools, release.X, release.Y);
    if (text == 0) return false;
    net.TextUsed[text] = 0;
    net.TextString[text].clear();
    MarkNetworkChanged(ws);
    BuildVisibleList(ws, view);
    return true;
  }
  if (release.Button != MouseButtonOf::Left) return false;
  const EndPick end = FindNearestEnd(ws, view, tools, release.X, release.Y);
  if (end.End != 0) {
    const auto name = AskName(ws, "Node Name", "Enter Name of Node", end.NodeName);
    if (!name) return false;
    const Coord3 node{0, end.X, end.Y, end.Z};
    std::vector<int> touched;
    for (int i = 1; i <= net.BranchCount; ++i) {
      const bool one = net.Coord1[i][1] == node[1] && net.Coord1[i][2] == node[2] &&
                       net.Coord1[i][3] == node[3];
      const bool two = net.Coord2[i][1] == node[1] && net.Coord2[i][2] == node[2] &&
                       net.Coord2[i][3] == node[3];
      if (one || two) touched.push_back(i);
    }
    return EditEach(ws, touched, [&](int i) {
      if (net.Coord1[i][1] == node[1] && net.Coord1[i][2] == node[2] && net.Coord1[i][3] == node[3])
        net.EntryNodeName[i] = *name;
      if (net.Coord2[i][1] == node[1] && net.Coord2[i][2] == node[2] && net.Coord2[i][3] == node[3])
        net.ExitNodeName[i] = *name;
    });
  }
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway != 0) {
    const bool selected = (net.BranchCode[airway] & Bit::Selected) != 0;
    const auto name =
        AskName(ws, "Input Branch Name",
                selected ? "Enter Name of Selected Branch(s) " : "Enter Name of Branch ",
                net.BranchName[airway].Trimmed());
    if (!name) return false;
    const std::vector<int> targets = selected ? SelectedAirways(net) : std::vector<int>{airway};
    return EditEach(ws, targets, [&](int i) { net.BranchName[i] = *name; });
  }
  const auto text = ws.ui.Input("Floating Text", "Enter Text", "");
  if (!text || text->empty()) return false;
  int slot = 0;
  for (int k = 1; k <= net.MaxTexts && k < static_cast<int>(net.TextUsed.size()); ++k) {
    if (net.TextUsed[k] != -1) {
      slot = k;
      break;
    }
  }
  if (slot == 0) {
    ws.ui.Inform("Exceeded " + std::to_string(net.MaxTexts) +
                 " text boxes - increase number in defaults");
    return false;
  }
  const WorldPoint& at = tools.Edit.InsertPoint;
  net.TextString[slot] = *text;
  net.TextUsed[slot] = -1;
  net.TextCoord[slot] = {0, static_cast<std::int32_t>(RoundHalfEven(at[0])),
                         static_cast<std::int32_t>(RoundHalfEven(at[1])),
                         static_cast<std::int32_t>(RoundHalfEven(at[2]))};
  MarkNetworkChanged(ws);
  BuildVisibleList(ws, view);
  return true;
}

void ReverseOne(Network& net, int i) {
  std::swap(net.EntryNodeId[i], net.ExitNodeId[i]);
  std::swap(net.Coord1[i], net.Coord2[i]);
  std::swap(net.EntryNodeName[i], net.ExitNodeName[i]);
  net.LabelPos[i] = -net.LabelPos[i];
  // An end forced to the surface stays so after the turn: the force moves with the end.
  std::int32_t& code = net.BranchCode[i];
  const std::int32_t entry = code & Bit::ForceEntrySurface, exit = code & Bit::ForceExitSurface;
  code &= ~(Bit::ForceEntrySurface | Bit::ForceExitSurface);
  if (entry) code |= Bit::ForceExitSurface;
  if (exit) code |= Bit::ForceEntrySurface;
}

bool ReverseAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway == 0) return false;
  const bool selected = (ws.net.BranchCode[airway] & Bit::Selected) != 0;
  const std::vector<int> targets = selected ? SelectedAirways(ws.net) : std::vector<int>{airway};
  EditEach(ws, targets, [&](int i) { ReverseOne(ws.net, i); });
  if (view.Is3D != 0) view.PanHold = true;
  RefreshAfterEdit(ws, view);
  return true;
}

bool SelectAirways(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  Network& net = ws.net;
  if (release.Button != MouseButtonOf::Left && release.Button != MouseButtonOf::Right) return false;
  const bool set = release.Button == MouseButtonOf::Left;
  std::vector<int> targets;
  const bool fence = IsFence(view, tools);
  if (fence) {
    targets = FindInFence(net, view, tools.PressX, tools.PressY, tools.LastX, tools.LastY);
  } else if (const int airway = NearestAirway(ws, view, tools, release); airway != 0) {
    targets.push_back(airway);
  }
  for (int i : targets) {
    if (set)
      net.BranchCode[i] |= Bit::Selected;
    else
      net.BranchCode[i] &= ~Bit::Selected;
  }
  tools.Edit.FenceHit = static_cast<int>(targets.size());
  if (fence && !targets.empty()) {
    ws.ui.Inform(std::to_string(targets.size()) + (set ? " airways selected" : " airways deselected"));
  }
  return !targets.empty();
}

void FollowAirway(Workspace& ws, ViewState& view, ToolState& tools, const MouseInput& release) {
  if (IsFence(view, tools)) return;
  const int airway = NearestAirway(ws, view, tools, release);
  if (airway != 0) GoToAirway(ws, view, tools, airway);
}

void GoToAirway(Workspace& ws, ViewState& view, ToolState& tools, int index) {
  Network& net = ws.net;
  if (index < 1 || index > net.BranchCount) return;
  const Coord3& end = tools.PickFraction <= 0.5f ? net.Coord1[index] : net.Coord2[index];
  ShowLevelOf(ws, view, static_cast<float>(end[3]));
  for (int i = 1; i <= net.BranchCount; ++i) net.BranchCode[i] &= ~Bit::Selected;
  net.BranchCode[index] |= Bit::Selected;
  tools.Edit.LastFound = index;
  BringIntoView(ws, view, end);
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
}

bool FindAirway(Workspace& ws, ViewState& view, ToolState& tools) {
  const Network& net = ws.net;
  const int mode = tools.Edit.SearchMode;
  if (mode == 0 || net.BranchCount < 1) return false;
  const auto wanted = [&](int i) {
    switch (mode) {
      case 1:
        return (net.BranchCode[i] & Bit::ErrorMark) != 0;
      case 2:
        return (net.BranchCode[i] & Bit::FixedQuantity) != 0;
      default:
        return net.FanNumber[i] > 0;
    }
  };
  const int last = std::clamp(tools.Edit.LastFound, 0, static_cast<int>(net.BranchCount));
  for (int step = 1; step <= net.BranchCount; ++step) {
    const int i = (last + step - 1) % net.BranchCount + 1;
    if (wanted(i)) {
      tools.PickFraction = 0;
      GoToAirway(ws, view, tools, i);
      return true;
    }
  }
  ws.ui.Inform(kMsgNoBranches);
  return false;
}

bool FindByName(Workspace& ws, ViewState& view, ToolState& tools, bool node) {
  const Network& net = ws.net;
  const auto part = node ? ws.ui.Input("Locate Node", "Enter all or part of node name", "")
                         : ws.ui.Input("Locate Branch", "Enter all or part of branch name", "");
  if (!part || part->empty()) return false;
  const int last = std::clamp(tools.Edit.LastFound, 0, static_cast<int>(net.BranchCount));
  for (int step = 1; step <= net.BranchCount; ++step) {
    const int i = (last + step - 1) % net.BranchCount + 1;
    if (node) {
      const bool entry = ContainsNoCase(net.EntryNodeName[i].Trimmed(), *part);
      if (!entry && !ContainsNoCase(net.ExitNodeName[i].Trimmed(), *part)) continue;
      tools.PickFraction = entry ? 0 : 1;
    } else {
      if (!ContainsNoCase(net.BranchName[i].Trimmed(), *part)) continue;
      tools.PickFraction = 0;
    }
    GoToAirway(ws, view, tools, i);
    return true;
  }
  ws.ui.Inform(kMsgNoBranches);
  return false;
}

}  // namespace galeris
