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
  RemoteStations remote;  // real-time stations and output (Remotes.dat)
  UndoJournal* journal = nullptr;  // the undo journal; none in tests and the command line

  // Recent files 1..9, newest first; StoreRecentFiles saves them (the desktop program sets it).
  std::array<std::string, 10> RecentFiles{};
  std::function<void(const std::array<std::string, 10>&)> StoreRecentFiles;
  // Told after every change of the network, so that every window and list can follow. It may
  // be told many times in one action: it should only note that a refresh is due.
  std::function<void()> NetworkChanged;

  int HighlightAirway = 0;            // the airway an open dialog is on, 0 for none
  std::uint8_t DefaultsSaved = 0xFF;  // 0 after the options are changed
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

}  // namespace galeris
