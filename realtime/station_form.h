// The rules of the two real-time dialogs that need no screen: the fields of one station as
// frmRemote shows and stores them, its holding row for copying channels between stations,
// and the apply of frmRealOut.
#pragma once

#include <array>
#include <string>

#include "core/remote_stations.h"

namespace galeris {

// The channel fields of one station, as texts.
struct StationChannels {
  std::array<std::string, kStationChannels + 1> Name, Abbrev, Unit, Mult, Low, High;
};

// Everything frmRemote shows for one station, with the global settings.
struct StationFields {
  std::string StationName;
  bool UpdateQ = false;
  StationChannels Channels;
  std::string RemoteSource;
  bool RemoteResim = false;
  std::string RemoteInterval;
  bool AlarmsOn = false;
};

// The fields of station s; alarm limits of 0 show empty.
StationFields ShowStationFields(const RemoteStations& st, int station);
// Stores the fields into station s: a number field only when it is not empty and reads as a
// number; an interval only when above 0.
void StoreStationFields(RemoteStations& st, int station, const StationFields& fields);

// frmRealOut's apply: ".txt" is added to a name without a dot; an interval only when above 0.
void ApplyRealOut(RemoteStations& st, const std::string& file, const std::string& interval);

}  // namespace galeris
