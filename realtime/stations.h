// The station file of the outside logger and what its readings do: read whole or not at all,
// the first channel of a station that controls its airway made a fixed airflow, alarms, and
// the quiet resimulation that follows a read.
#pragma once

#include <string>
#include <vector>

#include "core/workspace.h"
#include "simulate/simulate.h"

namespace galeris {

inline constexpr const char* kMsgStationFile =
    "Error - Can't find correct realtime station file - check directory or file name in TOOLS "
    "=> realtime stations";

// Reads the station file into the raw readings. All or nothing: on failure the tables keep
// the last good readings and why says what was wrong. stationsRead counts the station lines.
bool ReadStationFile(RemoteStations& st, const std::string& path, std::string& why,
                     int& stationsRead);
// The timer's read of RemoteSource: on failure the critical box, and monitoring stops.
bool ReadStations(Workspace& ws);

// The value of channel k of station s: the raw reading times its multiplier.
float ChannelValue(const RemoteStations& st, int channel, int station);

// One line of the station box beside an airway; alarm -1 below the low limit, 1 above the
// high one, 0 none.
struct StationLine {
  std::string text;
  int alarm = 0;
};
// Applies the station of one airway (the first channel of a station that controls its airway
// fixes its Quantity; a reading of 0 frees it) and returns the box: the station's name, then
// one line per named channel. Empty for an airway without a station.
std::vector<StationLine> ShowStationOf(Workspace& ws, int airway);
// Applies every airway's station, on screen or not; returns how many airways stations now
// hold fixed. While SoundAlarms is set (the pass that follows a read) each alarm beeps.
int ApplyStations(Workspace& ws);
// The channels in alarm of the stations that the last file held, one line each:
// "alarm STATION ABBREV VALUE below|above LIMIT".
std::vector<std::string> StationAlarms(const Workspace& ws);

// The simulation without its progress form, when no other run is under way and there is a
// network to solve; Ran is false otherwise.
SimOutcome ResimulateQuietly(Workspace& ws);

}  // namespace galeris
