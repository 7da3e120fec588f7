// Monitoring without a screen: at a fixed cadence read the station file, apply it, resimulate
// and write the output file, until a number of ticks or a stop request.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "core/workspace.h"

namespace galeris {

struct MonitorSettings {
  double EverySeconds = 10;
  int Ticks = 0;         // 0: until stopped
  std::string Stations;  // the station file; empty: RemoteSource
  std::string Output;    // the output file; empty: OutputFile (none when both are empty)
};

struct MonitorTick {
  int Tick = 0;
  int Stations = 0;              // station lines of the file read
  int Fixed = 0;                 // airways that stations hold fixed
  const char* Status = "clean";  // clean, warnings or failed
  std::vector<std::string> Alarms;
  std::string Failure;  // why the read failed, said once until a read succeeds
};

// "tick N stations N fixed N status WORD", then the alarm lines.
std::string FormatTick(const MonitorTick& tick);

// One tick of the loop: read (a failed read keeps the last good readings and network), apply,
// resimulate, write the output file.
MonitorTick RunMonitorTick(Workspace& ws, int tickNumber, bool& failureSaid);

// Runs ticks every EverySeconds until Ticks are done or stop turns true; report hears each
// tick. Returns the status of the last tick.
const char* RunMonitor(Workspace& ws, const MonitorSettings& settings,
                       const std::atomic<bool>& stop,
                       const std::function<void(const MonitorTick&)>& report);

}  // namespace galeris
