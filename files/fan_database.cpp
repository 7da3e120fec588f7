// The fan database on disk (fansdata.dat) and the fan list of the network file: reading both
// forms of the database, writing it with its serial raised, and the list that a load replaces
// and a merge joins.
#include "files/fan_database.h"

#include <cmath>
#include <filesystem>
#include <fstream>

#include "core/number_format.h"
#include "files/whole_file.h"

namespace galeris {
namespace {

constexpr const char* kCrLf = "\r\n";
constexpr int kPoints = 10;
constexpr const char* kFanListHead = "Fan Name/Point\tPressure Pa\tQuantity m3/s\tMax Fans=\t";
constexpr const char* kDatabaseHead = "2.6 GALERIS";
constexpr const char* kDatabaseFanHead = "Fan Number\tFan Name\tFan Effective Diameter";
constexpr const char* kDatabasePointHead =
    "Point\tStatic Pressure (Pa)\tQuantity (m3/s)\tEfficiency (%)\tTotal Pressure (Pa)";
constexpr const char* kEndOfFans = "**End of Fa";
constexpr double kPi = 3.141592654;

// A number of fansdata.dat: the general trap of the start-up swallows a bad one, so the
// reading stops there and keeps what it has.
bool Single(const std::string& field, float& target) {
  double v = 0;
  if (!StrictNumber(field, v) || std::fabs(v) > 3.4e38) return false;
  target = static_cast<float>(v);
  return true;
}

std::int16_t Percent(const std::string& field) {
  const double v = Val(field);
  if (!(std::fabs(v) < 32767)) return 0;
  return static_cast<std::int16_t>(RoundHalfEven(v));
}

void AppendPointLines(std::string& out, const Network& net, int slot) {
  for (int point = 1; point <= kPoints; ++point) {
    out += PrintNumber(point) + "\t" + PrintSingle(net.CurveP[slot][point][1]) + "\t" +
           PrintSingle(net.CurveQ[slot][point]) + "\t" + PrintNumber(net.CurveEff[slot][point]) +
           "\t" + PrintSingle(net.CurveP[slot][point][2]) + kCrLf;
  }
}

// Version 1.0 of fansdata.dat: comma-separated names and ten quantity and pressure pairs,
// with no total pressures.
void ReadVersionOneDatabase(Network& net, LineReader& in) {
  std::vector<std::string> tokens;
  std::string line;
  while (in.ReadLine(line)) AppendInputTokens(line, tokens);
  std::size_t next = 0;
  const auto take = [&]() { return next < tokens.size() ? Val(tokens[next++]) : 0.0; };
  for (int slot = 1; slot <= net.FanMax && next < tokens.size(); ++slot) {
    net.FanName[slot] = tokens[next++];
    for (int point = 1; point <= kPoints; ++point) {
      net.CurveQ[slot][point] = static_cast<float>(take());
      net.CurveP[slot][point][1] = static_cast<float>(take());
      net.CurveP[slot][point][2] = 0;
    }
  }
}

// One fan of fansdata.dat: the fan line already split, then its ten point lines.
bool ReadDatabaseFan(Network& net, LineReader& in, const FieldTable& fanLine, float version) {
  const double slotValue = Val(fanLine[1]);
  if (!(slotValue >= 1 && slotValue <= net.FanMax)) return false;
  const int slot = static_cast<int>(RoundHalfEven(slotValue));
  net.FanName[slot] = TrimBlanks(fanLine[2]);
  if (!Single(fanLine[3], net.FanDiameter[slot])) return false;
  FieldTable f;
  std::string line;
  for (int point = 1; point <= kPoints; ++point) {
    if (!in.ReadLine(line)) return false;
    SplitLine(version, line, f);
    if (!Single(f[2], net.CurveP[slot][point][1])) return false;
    if (!Single(f[3], net.CurveQ[slot][point])) return false;
    net.CurveEff[slot][point] = Percent(f[4]);
    if (!f[5].empty() && !Single(f[5], net.CurveP[slot][point][2])) return false;
  }
  return true;
}

// Ten point lines of a network file's fan into the slot, through the load's error trap.
void ReadListPoints(NetworkReader& r, Network& net, int slot) {
  for (int point = 1; point <= kPoints; ++point) {
    r.NextSplit();
    r.Strict(2, net.CurveP[slot][point][1]);
    if (!r.f[5].empty()) r.Strict(5, net.CurveP[slot][point][2]);
    r.Strict(3, net.CurveQ[slot][point]);
    if (!r.f[4].empty()) r.Whole(4, net.CurveEff[slot][point]);
  }
}

// The effective diameter of a fan from a file older than total pressures: the diameter that
// gives its largest flow 21 m/s, to two decimals.
float EstimatedDiameter(const Network& net, int slot) {
  const double q = net.CurveQ[slot][kPoints];
  if (!(q > 0)) return 0;
  const double d = 2 * std::sqrt(q / (21 * kPi));
  return static_cast<float>(Val(FormatNumber(d, "0.00")));
}

// The fans of the list into slot plus offset. False when the list ended on the size message.
void ReadListFans(Workspace& ws, NetworkReader& r, int count, int offset, bool totalPressures) {
  Network& net = ws.net;
  bool ended = false;
  for (int n = 1; n <= count; ++n) {
    if (!r.NextSplit() || r.f[1].compare(0, 11, kEndOfFans) == 0) {
      ended = true;
      break;
    }
    std::int16_t fileSlot = 0;
    r.Whole(3, fileSlot);
    const int slot = (fileSlot <= 0 ? n : fileSlot) + offset;
    if (slot > net.FanMax) {
      // The lines not yet read then reach the level reader.
      ws.ui.Message(std::string(kMsgFanListTooBig) + "\nAny fans above fan " +
                        std::to_string(net.FanMax) + " will be deleted",
                    MsgButtons::OK, MsgIcon::Exclamation);
      return;
    }
    net.FanName[slot] = TrimBlanks(r.f[1]);
    if (!r.f[2].empty()) r.Strict(2, net.FanDiameter[slot]);
    ReadListPoints(r, net, slot);
    if (net.FanDiameter[slot] == 0 && r.version < 2.4f && totalPressures)
      net.FanDiameter[slot] = EstimatedDiameter(net, slot);
  }
  // A list that fills every slot has its end line still to come: take it, so that the levels
  // start where they always do.
  if (!ended && count > 0 && !r.AtEnd()) {
    r.Next();
    if (r.line.compare(0, 11, kEndOfFans) != 0) r.Unread();
  }
}

}  // namespace

bool FanSlotInUse(const Network& net, int slot) {
  return net.CurveP[slot][1][1] != 0 || net.CurveP[slot][1][2] != 0;
}

void ClearFanSlot(Network& net, int slot) {
  net.FanName[slot].clear();
  net.FanDiameter[slot] = 0;
  net.CurveQ[slot] = {};
  net.CurveP[slot] = {};
  net.CurveEff[slot] = {};
}

void LoadFanDatabase(Workspace& ws) {
  Network& net = ws.net;
  LineReader in(ws.paths.InProgram(kFanDatabaseName));
  std::string line;
  if (!in.IsOpen() || !in.ReadLine(line)) return;
  const float version = VersionOf(line);
  FieldTable f;
  SplitLine(version, line, f);
  // A serial beyond a long is not one this program wrote: the old one stays.
  if (const double serial = Val(f[2]); !f[2].empty() && std::fabs(serial) < 2147483647.0)
    net.FanDatabaseSerial = static_cast<std::int32_t>(serial);
  if (version == 1.0f) {
    ReadVersionOneDatabase(net, in);
    return;
  }
  if (version < 1.5f) return;
  for (int slot = 0; slot <= net.FanMax; ++slot) ClearFanSlot(net, slot);
  if (!in.ReadLine(line)) return;
  SplitLine(version, line, f);
  const double wanted = Val(f[4]);
  if (wanted > net.FanMax && wanted <= 32767) {
    net.FanMax = static_cast<std::int16_t>(wanted);
    ResizeStore(net);
  }
  in.ReadLine(line);  // the point head
  while (in.ReadLine(line)) {
    if (line.empty()) continue;
    SplitLine(version, line, f);
    if (!ReadDatabaseFan(net, in, f, version)) return;
  }
}

bool SaveFanDatabase(Workspace& ws) {
  Network& net = ws.net;
  ++net.FanDatabaseSerial;
  std::string out = std::string(kDatabaseHead) + "\t" + PrintNumber(net.FanDatabaseSerial) + kCrLf;
  out += kDatabaseFanHead;
  out += kCrLf;
  out += kDatabasePointHead;
  out += kCrLf;
  for (int slot = 1; slot <= net.FanMax; ++slot) {
    if (!FanSlotInUse(net, slot)) continue;
    out += PrintNumber(slot) + "\t" + net.FanName[slot] + "\t" +
           PrintSingle(net.FanDiameter[slot]) + kCrLf;
    AppendPointLines(out, net, slot);
  }
  const std::string path = ws.paths.InProgram(kFanDatabaseName);
  return WriteWholeFile(path, out);
}

std::string FormatNetworkFanList(const Network& net) {
  std::string out = kFanListHead + PrintNumber(net.FanMax) + kCrLf;
  for (int slot = 1; slot <= net.FanMax; ++slot) {
    if (!FanSlotInUse(net, slot)) continue;
    out += net.FanName[slot] + "\t" + PrintSingle(net.FanDiameter[slot]) + "\t" +
           PrintNumber(slot) + kCrLf;
    AppendPointLines(out, net, slot);
  }
  out += kFanListEnd;
  out += kCrLf;
  return out;
}

int ReadFanList(Workspace& ws, NetworkReader& reader, int count, bool totalPressures) {
  Network& net = ws.net;
  if (ws.MergeBase <= 1) {
    for (int slot = 0; slot <= net.FanMax; ++slot) {
      net.FanName[slot].clear();
      for (int point = 1; point <= kPoints; ++point) {
        net.CurveP[slot][point] = {};
        net.CurveQ[slot][point] = 0;
        net.CurveEff[slot][point] = 0;
      }
    }
    ReadListFans(ws, reader, count, 0, totalPressures);
    return 0;
  }
  int firstEmpty = 1;
  while (firstEmpty <= net.FanMax && !TrimBlanks(net.FanName[firstEmpty]).empty()) ++firstEmpty;
  const int offset = firstEmpty - 1;
  if (ws.ui.AskYesNo(kMsgMergeFans, "Merge fan database")) {
    while (reader.Next() && reader.line.compare(0, 11, kEndOfFans) != 0) {
    }
    return 0;
  }
  ReadListFans(ws, reader, count, offset, totalPressures);
  return offset;
}

}  // namespace galeris
