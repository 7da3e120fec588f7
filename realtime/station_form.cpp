#include "realtime/station_form.h"

#include <cmath>

#include "core/typed_number.h"
#include "files/text_format.h"
#include "realtime/realtime_output.h"

namespace galeris {
namespace {

std::string Shown(float value) {
  return FormatGeneralSingle(value);
}
std::string ShownLimit(float value) {
  return value == 0 ? std::string() : Shown(value);
}

// A number field is stored only when it holds a number; an empty one keeps the old value.
void Store(const std::string& text, float& target) {
  const auto v = ReadTypedNumber(text);
  if (v && std::fabs(*v) < 3.4e38) target = static_cast<float>(*v);
}

void StoreSeconds(const std::string& text, float& target) {
  float seconds = target;
  Store(text, seconds);
  if (seconds > 0) target = seconds;
}

}  // namespace

StationFields ShowStationFields(const RemoteStations& st, int s) {
  StationFields f;
  f.StationName = st.StationName[s];
  f.UpdateQ = st.UpdateQ[s] != 0;
  for (int k = 1; k <= kStationChannels; ++k) {
    f.Channels.Name[k] = st.ChannelName[k][s];
    f.Channels.Abbrev[k] = st.ChannelAbbrev[k][s];
    f.Channels.Unit[k] = st.ChannelUnit[k][s];
    f.Channels.Mult[k] = Shown(st.ChannelMult[k][s]);
    f.Channels.Low[k] = ShownLimit(st.AlarmLow[k][s]);
    f.Channels.High[k] = ShownLimit(st.AlarmHigh[k][s]);
  }
  f.RemoteSource = st.RemoteSource;
  f.RemoteResim = st.RemoteResim;
  f.RemoteInterval = Shown(st.RemoteInterval);
  f.AlarmsOn = st.AlarmsOn;
  return f;
}

void StoreStationFields(RemoteStations& st, int s, const StationFields& f) {
  st.StationName[s] = f.StationName;
  st.UpdateQ[s] = f.UpdateQ ? -1 : 0;
  for (int k = 1; k <= kStationChannels; ++k) {
    st.ChannelName[k][s] = f.Channels.Name[k];
    st.ChannelAbbrev[k][s] = f.Channels.Abbrev[k];
    st.ChannelUnit[k][s] = f.Channels.Unit[k];
    Store(f.Channels.Mult[k], st.ChannelMult[k][s]);
    Store(f.Channels.Low[k], st.AlarmLow[k][s]);
    Store(f.Channels.High[k], st.AlarmHigh[k][s]);
  }
  st.RemoteSource = f.RemoteSource;
  st.RemoteResim = f.RemoteResim;
  StoreSeconds(f.RemoteInterval, st.RemoteInterval);
  st.AlarmsOn = f.AlarmsOn;
}

void ApplyRealOut(RemoteStations& st, const std::string& file, const std::string& interval) {
  st.OutputFile = RealOutFileName(file);
  StoreSeconds(interval, st.OutputInterval);
}

}  // namespace galeris
