// The station file: line 1 the channel headings, line 2 ignored, then one line per station:
// its number, two names for reference and five raw readings.
#include "realtime/stations.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <fstream>
#include <iterator>
#include <thread>

#include "core/number_format.h"
#include "files/text_format.h"

namespace galeris {
namespace {

constexpr float kStationFileVersion = 3.1f;  // tab-joined lines
constexpr int kReadAttempts = 5;             // a logger rewriting the file gets this many chances
constexpr auto kReadPause = std::chrono::milliseconds(20);
constexpr double kRoundPi = 3.1415926;

bool ReadBytes(const std::string& path, std::string& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return !in.bad();
}

// The same bytes twice in a row, so the logger was not writing in between; a logger that
// never pauses gives its latest bytes, as one that is read between two writes would.
bool ReadSettled(const std::string& path, std::string& bytes, std::string& why) {
  std::string again;
  for (int attempt = 0; attempt < kReadAttempts; ++attempt) {
    if (attempt > 0) std::this_thread::sleep_for(kReadPause);
    if (!ReadBytes(path, bytes) || !ReadBytes(path, again)) {
      why = "cannot open " + path;
      return false;
    }
    if (bytes == again) return true;
  }
  bytes = again;
  return true;
}

std::vector<std::string> Lines(const std::string& bytes) {
  std::vector<std::string> lines;
  std::string line;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char c = bytes[i];
    if (c == '\r' || c == '\n') {
      lines.push_back(line);
      line.clear();
      if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    } else {
      line.push_back(c);
    }
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

bool IsBlankLine(const std::string& line) {
  return std::all_of(line.begin(), line.end(),
                     [](unsigned char c) { return c == ' ' || c == '\t'; });
}

// A reading as a logger writes it: its leading number, so "12.5ppm" is 12.5 and "N/A" or an
// empty field 0. Only a number that no long holds fails.
bool Reading(const std::string& field, std::int32_t& raw) {
  const double v = RoundHalfEven(Val(field));
  if (!(std::fabs(v) <= 2147483647.0)) return false;
  raw = static_cast<std::int32_t>(v);
  return true;
}

std::string Upper(std::string text) {
  text = TrimBlanks(text);
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

enum class Meaning { None, Quantity, Velocity, Pressure };

Meaning MeaningOf(const std::string& channelName) {
  const std::string name = Upper(channelName);
  if (name == "QUANTITY") return Meaning::Quantity;
  if (name == "VELOCITY") return Meaning::Velocity;
  if (name == "PRESSURE") return Meaning::Pressure;
  return Meaning::None;
}

// The airway's section for a velocity reading; a later shape bit overrides an earlier one.
double StationArea(const Network& net, int i) {
  const std::int32_t code = net.BranchCode[i];
  const double height = net.Dim[i][1], width = net.Dim[i][2];
  double area = width * height;
  if (code & Bit::Round) area = kRoundPi / 4 * width * width;
  if (code & Bit::Rectangular) area = width * height;
  if (code & Bit::Custom) area = width;
  return area;
}

void FixAirflow(Network& net, int i, Meaning meaning, double value) {
  double q = value;
  if (meaning == Meaning::Velocity) q = value * StationArea(net, i);
  if (meaning == Meaning::Pressure) {
    if (!(net.Resistance[i] > 0)) return;  // no resistance gives no airflow to fix
    q = std::copysign(std::sqrt(std::fabs(value) / net.Resistance[i]), value);
  }
  if (!std::isfinite(q) || std::fabs(q) > 3.4e38) return;
  net.Quantity[i] = static_cast<float>(q);
  if (value != 0) {
    net.BranchCode[i] |= Bit::FixedQuantity;
  } else {
    net.BranchCode[i] &= ~Bit::FixedQuantity;
  }
}

int StationOf(const Network& net, int i) {
  const int s = net.RemoteStation[i];
  return s >= 1 && s <= kMaxStations && net.BranchCode[i] != 0 ? s : 0;
}

// The low and the high limit are tested apart, so a reading outside both (a low limit set
// above the high one) shows the later colour, blue, and rings twice.
struct Alarm {
  int side = 0;  // -1 below the low limit, 1 above the high one
  int rings = 0;
};

Alarm AlarmOf(const RemoteStations& st, int k, int s, float value) {
  Alarm alarm;
  if (!st.AlarmsOn) return alarm;
  if (st.AlarmLow[k][s] != 0 && value < st.AlarmLow[k][s]) {
    alarm.side = -1;
    ++alarm.rings;
  }
  if (st.AlarmHigh[k][s] != 0 && value > st.AlarmHigh[k][s]) {
    alarm.side = 1;
    ++alarm.rings;
  }
  return alarm;
}

// Applies the channels of station s to airway i; calls line(k, value) for each named one.
template <typename LineFn>
void ApplyStation(Workspace& ws, int i, int s, LineFn line) {
  RemoteStations& st = ws.remote;
  for (int k = 1; k <= kStationChannels; ++k) {
    if (st.ChannelName[k][s].empty()) continue;
    const float value = ChannelValue(st, k, s);
    const Meaning meaning = MeaningOf(st.ChannelName[k][s]);
    if (meaning != Meaning::None) {
      if (st.UpdateQ[s] != 0 && k == 1) {
        FixAirflow(ws.net, i, meaning, value);
      } else {
        ws.net.BranchCode[i] &= ~Bit::FixedQuantity;
      }
    }
    line(k, value);
  }
}

}  // namespace

bool ReadStationFile(RemoteStations& st, const std::string& path, std::string& why,
                     int& stationsRead) {
  stationsRead = 0;
  std::string bytes;
  if (path.empty()) {
    why = "no station file is named";
    return false;
  }
  if (!ReadSettled(path, bytes, why)) return false;
  const std::vector<std::string> lines = Lines(bytes);
  if (lines.size() < 2) {
    why = path + " has no heading lines";
    return false;
  }
  FieldTable f;
  StationTable<std::int32_t> raw = st.ChannelRaw;
  std::array<std::array<std::string, 3>, kMaxStations + 1> names = st.StationFileNames;
  std::array<bool, kMaxStations + 1> present{};
  for (std::size_t n = 2; n < lines.size(); ++n) {
    if (IsBlankLine(lines[n])) continue;
    const std::string where = "line " + std::to_string(n + 1) + " of " + path;
    SplitLine(kStationFileVersion, lines[n], f);
    // Fields a short line leaves off read as empty, so as 0.
    const double number = RoundHalfEven(Val(f[1]));
    if (number < 1 || number > kMaxStations) {
      why = where + ": station \"" + f[1] + "\" is not a number from 1 to 50";
      return false;
    }
    const int s = static_cast<int>(number);
    for (int k = 1; k <= kStationChannels; ++k) {
      if (!Reading(f[3 + k], raw[k][s])) {
        why = where + ": reading \"" + f[3 + k] + "\" is too large";
        return false;
      }
    }
    names[s][1] = f[2];
    names[s][2] = f[3];
    present[s] = true;
    ++stationsRead;
  }
  SplitLine(kStationFileVersion, lines[0], f);
  for (int k = 1; k <= kStationChannels; ++k) st.ChannelHeadings[k] = f[k];
  st.ChannelRaw = raw;
  st.StationFileNames = names;
  st.InLastFile = present;
  return true;
}

bool ReadStations(Workspace& ws) {
  std::string why;
  int count = 0;
  if (ReadStationFile(ws.remote, ws.remote.RemoteSource, why, count)) return true;
  ws.remote.RemoteRunning = false;
  ws.ui.Message(kMsgStationFile, MsgButtons::OK, MsgIcon::Critical);
  return false;
}

float ChannelValue(const RemoteStations& st, int k, int s) {
  return static_cast<float>(static_cast<double>(st.ChannelRaw[k][s]) * st.ChannelMult[k][s]);
}

std::vector<StationLine> ShowStationOf(Workspace& ws, int i) {
  std::vector<StationLine> box;
  const int s = StationOf(ws.net, i);
  if (s == 0) return box;
  RemoteStations& st = ws.remote;
  box.push_back({"   " + st.StationName[s], 0});
  ApplyStation(ws, i, s, [&](int k, float value) {
    box.push_back(
        {st.ChannelAbbrev[k][s] + "  " + FormatNumber(value, "0.0") + " " + st.ChannelUnit[k][s],
         AlarmOf(st, k, s, value).side});
  });
  return box;
}

int ApplyStations(Workspace& ws) {
  Network& net = ws.net;
  const RemoteStations& st = ws.remote;
  int fixed = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int s = StationOf(net, i);
    if (s == 0) continue;
    ApplyStation(ws, i, s, [&](int k, float value) {
      if (!st.SoundAlarms || !st.Beep) return;
      for (int ring = AlarmOf(st, k, s, value).rings; ring > 0; --ring) st.Beep();
    });
    if (net.BranchCode[i] & Bit::FixedQuantity) ++fixed;
  }
  return fixed;
}

std::vector<std::string> StationAlarms(const Workspace& ws) {
  const RemoteStations& st = ws.remote;
  std::vector<std::string> alarms;
  for (int s = 1; s <= kMaxStations; ++s) {
    if (!st.InLastFile[s]) continue;
    for (int k = 1; k <= kStationChannels; ++k) {
      if (st.ChannelName[k][s].empty()) continue;
      const float value = ChannelValue(st, k, s);
      const int alarm = AlarmOf(st, k, s, value).side;
      if (alarm == 0) continue;
      const std::string station = st.StationName[s].empty() ? std::to_string(s) : st.StationName[s];
      const std::string label =
          st.ChannelAbbrev[k][s].empty() ? st.ChannelName[k][s] : st.ChannelAbbrev[k][s];
      alarms.push_back("alarm " + station + " " + label + " " + FormatGeneralSingle(value) +
                       (alarm < 0 ? " below " + FormatGeneralSingle(st.AlarmLow[k][s])
                                  : " above " + FormatGeneralSingle(st.AlarmHigh[k][s])));
    }
  }
  return alarms;
}

SimOutcome ResimulateQuietly(Workspace& ws) {
  if (ws.sim.Running || ws.net.BranchCount < 2) return {};
  const std::uint8_t shown = ws.sim.ShowProgress;
  const std::int16_t mode = ws.sim.SimMode;
  ws.sim.ShowProgress = 0;
  ws.sim.SimMode = kModeSimulate;
  const SimOutcome outcome = RunSimulation(ws);
  ws.sim.ShowProgress = shown;
  ws.sim.SimMode = mode;
  return outcome;
}

}  // namespace galeris
