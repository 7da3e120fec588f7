// The real-time output file. Numbers are plain and in SI units, names trimmed, fields joined
// by Tab.
#include "files/whole_file.h"
#include "realtime/realtime_output.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "files/text_format.h"
#include "realtime/remotes_file.h"

namespace galeris {
namespace {

constexpr const char* kTitles =
    "Branch No\tFrom Node\tTo Node\tAirway Name\tX1\tY1\tZ1\tX2\tY2\tZ2\tDim 1\tDim 2\t"
    "k factor\tshock factor\tresist\tquantity\tfan #\tno fans\tlength\tpres change\tsmoke\t"
    "prim layer\tsec layer\tentry pres\texit pres\tno of airways\tRemote Station";

// Shortest text that reads back as the same single: plain, without a rounding format.
void AppendSingle(std::string& out, float value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, std::isfinite(value) ? value : 0.0f);
  out.append(text, result.ptr);
  out += '\t';
}

void AppendWhole(std::string& out, long long value) {
  char text[24];
  const auto result = std::to_chars(text, text + sizeof text, value);
  out.append(text, result.ptr);
  out += '\t';
}

void AppendText(std::string& out, const std::string& text) {
  out += TrimBlanks(text);
  out += '\t';
}

void AppendAirway(std::string& out, const Network& net, int i) {
  AppendWhole(out, net.AirwayNo[i]);
  AppendText(out, net.EntryNodeName[i].Trimmed());
  AppendText(out, net.ExitNodeName[i].Trimmed());
  AppendText(out, net.BranchName[i].Trimmed());
  for (int a = 1; a <= 3; ++a) AppendWhole(out, net.Coord1[i][a]);
  for (int a = 1; a <= 3; ++a) AppendWhole(out, net.Coord2[i][a]);
  for (float v : {net.Dim[i][1], net.Dim[i][2], net.WallFactor[i], net.ShockFactor[i],
                  net.Resistance[i], net.Quantity[i]})
    AppendSingle(out, v);
  AppendWhole(out, net.FanNumber[i]);
  AppendWhole(out, net.NoOfFans[i]);
  for (float v : {net.Length[i], net.Pressure[i], net.Contaminant[i]}) AppendSingle(out, v);
  AppendWhole(out, net.PrimaryLayer[i]);
  AppendWhole(out, net.SecondLayer[i]);
  AppendSingle(out, net.FromNodeP[i]);
  AppendSingle(out, net.ToNodeP[i]);
  AppendWhole(out, net.ParallelCount[i]);
  out += std::to_string(net.RemoteStation[i]) + "\r\n";
}

}  // namespace

std::string RealOutFileName(const std::string& typed) {
  return typed.find('.') == std::string::npos ? typed + ".txt" : typed;
}

std::string FormatRealtimeOutput(const Network& net) {
  std::string out = std::string(kTitles) + "\r\n";
  const int count = std::min<int>(net.BranchCount, static_cast<int>(net.AirwayNo.size()) - 1);
  out.reserve(static_cast<std::size_t>(count) * 256 + out.size());
  for (int i = 1; i <= count; ++i) AppendAirway(out, net, i);
  return out;
}

bool WriteRealtimeOutput(Workspace& ws) {
  RemoteStations& st = ws.remote;
  if (!st.OutputFile.empty() && WriteWholeFile(st.OutputFile, FormatRealtimeOutput(ws.net))) {
    st.OutputFailed = false;
    return true;
  }
  if (!st.OutputFailed) ws.ui.Message(kMsgOutputWrite, MsgButtons::OK, MsgIcon::Exclamation);
  st.OutputFailed = true;
  return false;
}

}  // namespace galeris
