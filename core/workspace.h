// Everything the engine works on for one open network: the store, the settings, the unit
// table, the program's folders and the user-interface port. Owned by the application (or by a
// test) and passed by reference; nothing of it is global.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "core/defaults.h"
#include "core/network_store.h"
#include "core/program_paths.h"
#include "core/remote_stations.h"
#include "core/sim_run.h"
#include "core/ui_port.h"
#include "core/undo_journal_port.h"
#include "core/units.h"

namespace galeris {

struct Workspace {
  explicit Workspace(UiPort& port) : ui(port) {}

  Network net;
  Defaults defaults;
  UnitTable units;
  ProgramPaths paths;
  UiPort& ui;
  SimRun sim;
  RemoteStations remote;           // real-time stations and output (Remotes.dat)
  UndoJournal* journal = nullptr;  // the undo journal; none in tests and the command line

  // Recent files 1..9, newest first; StoreRecentFiles saves them (the desktop program sets it).
  std::array<std::string, 10> RecentFiles{};
  std::function<void(const std::array<std::string, 10>&)> StoreRecentFiles;
  // Told after every change of the network, so that every window and list can follow. It may
  // be told many times in one action: it should only note that a refresh is due.
  std::function<void()> NetworkChanged;
  // The windows' SmokeState: a gas spread or trace on screen (not 0) holds up saving. The
  // desktop program sets it; without it nothing is shown.
  std::function<int()> ShownSmokeState;

  int HighlightAirway = 0;            // the airway an open dialog is on, 0 for none
  std::uint8_t DefaultsSaved = 0xFF;  // 0 once a setting differs from Defaults.dat
  std::int16_t MergeBase = 1;         // 1: a load replaces the network; above: merge behind it
  bool MasterMode = false;            // the next save is to a Master (.smm) file
  bool CoordinateWarned = false;      // the import's coordinate clamp has said so once
};

// Any edit: the network is no longer saved nor balanced, and whoever listens is told.
inline void MarkNetworkChanged(Workspace& ws) {
  ws.net.NetworkSaved = 0;
  ws.net.NetworkBalanced = 0;
  if (ws.NetworkChanged) ws.NetworkChanged();
}

// The settings Defaults.dat and Conversion.dat keep (the fan count lives in the store), taken
// before an edit to tell whether the edit changed one.
struct SavedSettings {
  Defaults defaults;
  UnitTable units;
  std::int16_t FanMax = 0;
  bool operator==(const SavedSettings&) const = default;
};

inline SavedSettings SettingsOf(const Workspace& ws) {
  return {ws.defaults, ws.units, ws.net.FanMax};
}

// The settings are unsaved only when the edit left one of them different.
inline void MarkDefaultsChanged(Workspace& ws, const SavedSettings& before) {
  if (!(SettingsOf(ws) == before)) ws.DefaultsSaved = 0;
}

}  // namespace galeris
