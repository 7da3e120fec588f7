// The real-time monitoring tables: up to 50 stations of five channels each, configured by the
// user and kept in Remotes.dat, with the raw readings of the last station file read, and the
// settings of the real-time output file. Tables are [channel 0..5][station 0..50]; row and
// column 0 are unused except for the station file's channel headings (row 0 of
// StationFileNames).
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace galeris {

inline constexpr int kMaxStations = 50;
inline constexpr int kStationChannels = 5;

template <typename T>
using StationTable = std::array<std::array<T, kMaxStations + 1>, kStationChannels + 1>;

struct RemoteStations {
  RemoteStations() {
    static const char* const kChannelNames[] = {
        "", "Quantity", "Carbon Dioxide", "Carbon Monoxide", "Methane", "Oxygen"};
    for (int k = 1; k <= kStationChannels; ++k) {
      for (int s = 1; s <= kMaxStations; ++s) {
        ChannelName[k][s] = kChannelNames[k];
        ChannelMult[k][s] = 1;
      }
    }
  }

  std::array<std::string, kMaxStations + 1> StationName{};
  StationTable<std::string> ChannelName{}, ChannelAbbrev{}, ChannelUnit{};
  StationTable<float> ChannelMult{}, AlarmLow{}, AlarmHigh{};
  StationTable<std::int32_t> ChannelRaw{};
  std::array<std::int16_t, kMaxStations + 1> UpdateQ{};  // -1: channel 1 fixes the airflow
  // Fields 2 and 3 of each station line; [0] of channels 1..5 holds the file's headings.
  std::array<std::array<std::string, 3>, kMaxStations + 1> StationFileNames{};
  std::array<std::string, kStationChannels + 1> ChannelHeadings{};
  std::array<bool, kMaxStations + 1> InLastFile{};  // stations that the last file read held

  std::string RemoteSource;   // the logger's station file
  bool RemoteResim = false;   // resimulate after each read
  float RemoteInterval = 10;  // seconds between reads
  bool AlarmsOn = false;
  bool RemoteRunning = false;  // mnuRemote is checked
  bool SoundAlarms = false;    // true only during the redraw that follows a read
  std::string OutputFile;      // the real-time output file
  float OutputInterval = 10;   // seconds between writes
  bool OutputRunning = false;  // mnuRealOutStart is checked
  bool OutputFailed = false;   // the last write failed and has said so

  // Sounds the alarm bell; the desktop program beeps, the command line leaves it empty.
  std::function<void()> Beep;
};

}  // namespace galeris
