// Remotes.dat: fields 1..30 the channel tables, 31 the station's name, 32 its airflow switch,
// 33..39 the settings of monitoring and of the output file.
#include "files/whole_file.h"
#include "realtime/remotes_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "core/number_format.h"
#include "files/text_format.h"

namespace galeris {
namespace {

const char* Truth(bool on) {
  return on ? "-1" : "0";
}

float Single(const std::string& field) {
  const double v = Val(field);
  return std::fabs(v) < 3.4e38 ? static_cast<float>(v) : 0.0f;
}

// A duration in seconds: a nonsense value keeps the one in force.
void Seconds(const std::string& field, float& target) {
  const float v = Single(field);
  if (v > 0) target = v;
}

}  // namespace

std::string FormatRemotes(const RemoteStations& st) {
  std::string out;
  for (int s = 1; s <= kMaxStations; ++s) {
    std::string line;
    auto field = [&line](const std::string& text) { line += text + "\t"; };
    for (int k = 1; k <= kStationChannels; ++k) field(st.ChannelName[k][s]);
    for (int k = 1; k <= kStationChannels; ++k) field(st.ChannelAbbrev[k][s]);
    for (int k = 1; k <= kStationChannels; ++k) field(st.ChannelUnit[k][s]);
    for (int k = 1; k <= kStationChannels; ++k) field(FormatGeneralSingle(st.ChannelMult[k][s]));
    for (int k = 1; k <= kStationChannels; ++k) field(FormatGeneralSingle(st.AlarmLow[k][s]));
    for (int k = 1; k <= kStationChannels; ++k) field(FormatGeneralSingle(st.AlarmHigh[k][s]));
    field(st.StationName[s]);
    field(Truth(st.UpdateQ[s] != 0));
    field(st.RemoteSource);
    field(Truth(st.RemoteResim));
    field(FormatGeneralSingle(st.RemoteInterval));
    field(Truth(st.AlarmsOn));
    field("");
    field(st.OutputFile);
    line += FormatGeneralSingle(st.OutputInterval);
    out += line + "\r\n";
  }
  return out;
}

void ReadRemotesLine(RemoteStations& st, int s, const std::string& line) {
  // Split by Tab alone: the file's names and paths keep their commas.
  FieldTable f;
  std::size_t start = 0;
  for (int n = 1; n <= kSplitFields && start <= line.size(); ++n) {
    const std::size_t tab = std::min(line.find('\t', start), line.size());
    f[n] = line.substr(start, tab - start);
    start = tab + 1;
  }
  for (int k = 1; k <= kStationChannels; ++k) {
    st.ChannelName[k][s] = f[k];
    st.ChannelAbbrev[k][s] = f[5 + k];
    st.ChannelUnit[k][s] = f[10 + k];
    st.ChannelMult[k][s] = Single(f[15 + k]);
    st.AlarmLow[k][s] = Single(f[20 + k]);
    st.AlarmHigh[k][s] = Single(f[25 + k]);
  }
  st.StationName[s] = f[31];
  st.UpdateQ[s] = Val(f[32]) != 0 ? -1 : 0;
  st.RemoteSource = f[33];
  st.RemoteResim = Val(f[34]) != 0;
  Seconds(f[35], st.RemoteInterval);
  st.AlarmsOn = Val(f[36]) != 0;
  st.OutputFile = f[38];
  Seconds(f[39], st.OutputInterval);
}

void LoadRemotes(Workspace& ws) {
  RemoteStations& st = ws.remote;
  LineReader in(ws.paths.InProgram(kRemotesFileName));
  std::string line;
  for (int s = 1; in.IsOpen() && s <= kMaxStations && in.ReadLine(line) && !line.empty(); ++s)
    ReadRemotesLine(st, s, line);
  if (st.RemoteSource.empty()) st.RemoteSource = ws.paths.InProgram("Galeris.rem");
}

bool SaveRemotes(const Workspace& ws) {
  return WriteWholeFile(ws.paths.InProgram(kRemotesFileName), FormatRemotes(ws.remote));
}

}  // namespace galeris
