// The real-time output file. Numbers are plain and in SI units, names trimmed, fields joined
// by Tab.
#include "realtime/realtime_output.h"

#include <algorithm>

#include "files/text_format.h"
#include "realtime/remotes_file.h"

namespace galeris {
namespace {

constexpr const char* kTitles =
    "Branch No\tFrom Node\tTo Node\tAirway Name\tX1\tY1\tZ1\tX2\tY2\tZ2\tDim 1\tDim 2\t"
    "k factor\tshock factor\tresist\tquantity\tfan #\tno fans\tlength\tpres change\tsmoke\t"
    "prim layer\tsec layer\tentry pres\texit pres\tno of airways\tRemote Station";

void AppendAirway(std::string& out, const Network& net, int i) {
  auto text = [&out](const std::string& s) { out += s + "\t"; };
  auto whole = [&out](long long v) { out += std::to_string(v) + "\t"; };
  auto single = [&out](float v) { out += FormatGeneralSingle(v) + "\t"; };
  whole(net.AirwayNo[i]);
  text(TrimBlanks(net.EntryNodeName[i].Trimmed()));
  text(TrimBlanks(net.ExitNodeName[i].Trimmed()));
  text(TrimBlanks(net.BranchName[i].Trimmed()));
  for (int a = 1; a <= 3; ++a) whole(net.Coord1[i][a]);
  for (int a = 1; a <= 3; ++a) whole(net.Coord2[i][a]);
  single(net.Dim[i][1]);
  single(net.Dim[i][2]);
  single(net.WallFactor[i]);
  single(net.ShockFactor[i]);
  single(net.Resistance[i]);
  single(net.Quantity[i]);
  whole(net.FanNumber[i]);
  whole(net.NoOfFans[i]);
  single(net.Length[i]);
  single(net.Pressure[i]);
  single(net.Contaminant[i]);
  whole(net.PrimaryLayer[i]);
  whole(net.SecondLayer[i]);
  single(net.FromNodeP[i]);
  single(net.ToNodeP[i]);
  whole(net.ParallelCount[i]);
  out += std::to_string(net.RemoteStation[i]) + "\r\n";
}

}  // namespace

std::string RealOutFileName(const std::string& typed) {
  return typed.find('.') == std::string::npos ? typed + ".txt" : typed;
}

std::string FormatRealtimeOutput(const Network& net) {
  std::string out = std::string(kTitles) + "\r\n";
  const int count = std::min<int>(net.BranchCount, static_cast<int>(net.AirwayNo.size()) - 1);
  out.reserve(static_cast<std::size_t>(count) * 160 + out.size());
  for (int i = 1; i <= count; ++i) AppendAirway(out, net, i);
  return out;
}

bool WriteRealtimeOutput(Workspace& ws) {
  RemoteStations& st = ws.remote;
  if (!st.OutputFile.empty() && WriteFileWhole(st.OutputFile, FormatRealtimeOutput(ws.net))) {
    st.OutputFailed = false;
    return true;
  }
  if (!st.OutputFailed) ws.ui.Message(kMsgOutputWrite, MsgButtons::OK, MsgIcon::Exclamation);
  st.OutputFailed = true;
  return false;
}

}  // namespace galeris
