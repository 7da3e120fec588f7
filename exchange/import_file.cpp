// The common frame of an import: checks on the file, the readers, the per-airway clean-up,
// numbering, offsets, levels and the node rebuild.
#include "exchange/import_file.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "core/airway_values.h"
#include "core/number_format.h"
#include "exchange/import_run.h"
#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "files/text_format.h"

namespace galeris {
namespace {

constexpr double kCoordinateLimit = 9999999;
constexpr double kCoordinateModulus = 10000000;
constexpr std::size_t kSniffBytes = 1000;

std::string UpperEnding(const std::string& path) {
  std::string tail = path.size() >= 3 ? path.substr(path.size() - 3) : path;
  for (char& c : tail) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return tail;
}

// Why a file cannot be imported at all, before anything of the network is touched; empty when
// it can.
std::string RefusalOf(const std::string& path) {
  if (!IsImportFileName(path)) return kMsgUnknownImportType;
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return kMsgError53;
  std::ifstream in(path, std::ios::binary);
  if (!in) return kMsgError53;
  char head[kSniffBytes];
  in.read(head, kSniffBytes);
  const auto count = static_cast<std::size_t>(in.gcount());
  if (count == 0) return kMsgImportFileEmpty;
  if (std::find(head, head + count, '\0') != head + count) return kMsgImportNotText;
  return "";
}

// Section, wall, shock and layers of a new airway, as set by the defaults and the dialog.
void CleanImportedAirway(Workspace& ws, int i, const ImportChoices& choices) {
  Network& net = ws.net;
  const Defaults& d = ws.defaults;
  const Coord3& a = net.Coord1[i];
  const Coord3& b = net.Coord2[i];
  net.EntryNodeId[i] = NodeKey(a[1], a[2], a[3]);
  net.ExitNodeId[i] = NodeKey(b[1], b[2], b[3]);
  const double dx = b[1] - a[1], dy = b[2] - a[2], dz = b[3] - a[3];
  const double length = std::sqrt(dx * dx + dy * dy + dz * dz);

  Dim2& dim = net.Dim[i];
  if (dim[1] == 0 && dim[2] == 0) {
    if (d.UseAreaForNew != 0) {
      dim[1] = d.DefaultPerimeter;
      dim[2] = d.DefaultArea;
    } else if (1.5 * std::fabs(dz) > length && !choices.CommonSize) {
      dim[1] = 0;
      dim[2] = d.DefaultDiameter;
    } else {
      dim[1] = d.DefaultHeight;
      dim[2] = d.DefaultWidth;
    }
  }
  std::int32_t& code = net.BranchCode[i];
  if (dim[1] == 0 && dim[2] != 0) {
    net.WallType[i] = d.DefaultWallRaise;
    code |= Bit::Round;
  } else if (dim[1] != 0 && dim[2] != 0) {
    net.WallType[i] = d.DefaultWallDrive;
    code |= d.UseAreaForNew != 0 ? Bit::Custom : Bit::Rectangular;
  }
  net.ShockType[i] = static_cast<std::int16_t>(d.DefaultShock);
  net.ShockFactor[i] = d.ShockPreset[std::clamp<int>(net.ShockType[i], 0, kUserGiven)];
  net.WallFactor[i] = d.WallFactorPreset[std::clamp<int>(net.WallType[i], 0, kUserGiven)];
  net.PrimaryLayer[i] = choices.PrimaryLayer;
  net.SecondLayer[i] = choices.SecondLayer;
  if ((choices.RetainDrive && code == Bit::Rectangular) ||
      (choices.RetainRaise && code == Bit::Round))
    net.ResType[i] = kUserGiven;
  if (net.FanNumber[i] != 0) code |= Bit::FansInSeries;
  // Every imported airway ends with wall type 4, whatever was chosen above; the wall factor
  // of the chosen type stays.
  net.WallType[i] = 4;
}

void ShiftCoordinate(ImportRun& run, std::int32_t& value, double offset, bool negate) {
  const double moved = (value + offset) * (negate ? -1.0 : 1.0);
  if (!std::isfinite(moved) || std::fabs(moved) > std::numeric_limits<std::int32_t>::max()) {
    run.Trap();
    return;
  }
  value = static_cast<std::int32_t>(RoundHalfEven(moved));
}

// How far the frame has come with the new airways, so that an import the user stops at an
// error still leaves every airway read whole: cleaned, numbered and keyed.
struct NewAirways {
  int first = 1;
  int cleaned = 0;  // the last position cleaned
  bool numbered = false;
};

void CleanUpTo(Workspace& ws, NewAirways& fresh, int last, const ImportChoices& choices) {
  while (fresh.cleaned < last) CleanImportedAirway(ws, ++fresh.cleaned, choices);
}

// Numbers run on from the last one handed out, so none repeats an airway already there.
void NumberNewAirways(Network& net, NewAirways& fresh) {
  if (fresh.numbered) return;
  for (int i = fresh.first; i <= net.BranchCount; ++i) net.AirwayNo[i] = ++net.NextAirwayNo;
  fresh.numbered = true;
}

void ImportAirways(ImportRun& run, const std::string& path, const ImportChoices& choices,
                   NewAirways& fresh) {
  Workspace& ws = run.ws;
  Network& net = ws.net;
  const bool dxf = UpperEnding(path) == "DXF";
  if (dxf) {
    ReadDxfAirways(run, path);
  } else {
    ReadTextAirways(run, path);
  }

  // The clean-up keeps its Z range in 16-bit variables: an RL beyond them is an error.
  std::int16_t lowestZ = dxf ? -1 : 0, highestZ = lowestZ;
  for (int i = fresh.first; i <= net.BranchCount; ++i) {
    CleanUpTo(ws, fresh, i, choices);
    const std::int32_t z = net.Coord1[i][3];
    if (z < std::numeric_limits<std::int16_t>::min() ||
        z > std::numeric_limits<std::int16_t>::max()) {
      run.Trap();
      continue;
    }
    lowestZ = std::min<std::int16_t>(lowestZ, static_cast<std::int16_t>(z));
    highestZ = std::max<std::int16_t>(highestZ, static_cast<std::int16_t>(z));
  }

  NumberNewAirways(net, fresh);

  std::array<double, 3> offset{};
  for (int axis = 0; axis < 3; ++axis)
    offset[axis] = FromDisplay(ws.units, choices.Offset[axis], Unit::Length);
  for (int i = fresh.first; i <= net.BranchCount; ++i) {
    for (Coord3* end : {&net.Coord1[i], &net.Coord2[i]}) {
      for (int axis = 0; axis < 3; ++axis)
        ShiftCoordinate(run, (*end)[axis + 1], offset[axis], choices.Negate[axis]);
    }
  }

  BuildImportLevels(ws, choices.BuildLevels, choices.Merge, lowestZ, highestZ);
  if (!choices.Merge) RecalcAllResistances(ws);
}

}  // namespace

bool IsImportFileName(const std::string& path) {
  const std::string ending = UpperEnding(path);
  return path.size() > 3 && (ending == "TXT" || ending == "DXF");
}

double ClampCoordinate(Workspace& ws, std::string_view text) {
  double value = Val(text);
  if (value > kCoordinateLimit) {
    if (!ws.CoordinateWarned) {
      ws.CoordinateWarned = true;
      ws.ui.Inform(kMsgCoordinateTruncated);
    }
    value = std::fmod(value, kCoordinateModulus);
  }
  return value;
}

void ImportRun::Trap() {
  if (!ws.ui.AskYesNo(kMsgImportError, kTitleImportError)) throw ImportAbandoned{};
}

void ImportRun::Coordinate(std::string_view text, std::int32_t& target) {
  const double stored = FromDisplay(ws.units, ClampCoordinate(ws, text), Unit::Length);
  if (!std::isfinite(stored) || std::fabs(stored) > std::numeric_limits<std::int32_t>::max()) {
    Trap();
    return;
  }
  target = static_cast<std::int32_t>(RoundHalfEven(stored));
}

void ImportRun::Short(double value, std::int16_t& target) {
  if (!std::isfinite(value) || value < std::numeric_limits<std::int16_t>::min() - 0.5 ||
      value >= std::numeric_limits<std::int16_t>::max() + 0.5) {
    Trap();
    return;
  }
  target = static_cast<std::int16_t>(RoundHalfEven(value));
}

ImportOutcome ImportFile(Workspace& ws, const std::string& path, const ImportChoices& choices) {
  if (const std::string refusal = RefusalOf(path); !refusal.empty()) {
    ws.ui.Inform(refusal, kTitleImportError);
    return ImportOutcome::Refused;
  }
  Network& net = ws.net;
  ws.ui.SetBusy(true);
  ws.ui.Yield();
  if (!choices.Merge) {
    ClearNetwork(ws);
    for (int level = 1; level < kMaxLevels; ++level) {
      net.RLName[level].clear();
      net.RLBound[level] = {};
    }
    net.BranchCount = 0;
    // As after New: the cleared store holds no fan types until the database is read again.
    ws.MergeBase = 1;
    LoadFanDatabase(ws);
  }
  ImportRun run(ws);
  NewAirways fresh{net.BranchCount + 1, net.BranchCount};
  ImportOutcome outcome = ImportOutcome::Done;
  try {
    ImportAirways(run, path, choices, fresh);
  } catch (const ImportAbandoned&) {
    outcome = ImportOutcome::Abandoned;
    CleanUpTo(ws, fresh, net.BranchCount, choices);
    NumberNewAirways(net, fresh);
    if (!choices.Merge) RecalcAllResistances(ws);
  }
  MarkNetworkChanged(ws);
  ws.ui.SetBusy(false);
  RebuildNodes(net, ws.defaults, ws.ui);
  ws.ui.Yield();
  return outcome;
}

}  // namespace galeris
