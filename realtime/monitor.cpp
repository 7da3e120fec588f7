// The headless monitoring loop. Stops come between ticks only, so every file it writes is
// whole when it ends.
#include "realtime/monitor.h"

#include <chrono>
#include <thread>

#include "realtime/realtime_output.h"
#include "realtime/stations.h"

namespace galeris {
namespace {

constexpr auto kStopCheck = std::chrono::milliseconds(20);

bool Warned(const SimRun& run) {
  return run.SimStatus == 2 || (run.Sweeps > 0 && !run.Converged);
}

}  // namespace

std::string FormatTick(const MonitorTick& t) {
  std::string text = "tick " + std::to_string(t.Tick) + " stations " + std::to_string(t.Stations) +
                     " fixed " + std::to_string(t.Fixed) + " status " + t.Status;
  for (const std::string& alarm : t.Alarms) text += "\n" + alarm;
  return text;
}

MonitorTick RunMonitorTick(Workspace& ws, int tickNumber, bool& failureSaid) {
  MonitorTick tick;
  tick.Tick = tickNumber;
  std::string why;
  const bool read = ReadStationFile(ws.remote, ws.remote.RemoteSource, why, tick.Stations);
  if (!read) {
    tick.Status = "failed";
    if (!failureSaid) {
      tick.Failure = why;
      ws.ui.Message(kMsgStationFile, MsgButtons::OK, MsgIcon::Critical);
    }
    failureSaid = true;
    tick.Fixed = ApplyStations(ws);
  } else {
    failureSaid = false;
    tick.Fixed = ApplyStations(ws);
    tick.Alarms = StationAlarms(ws);
    const SimOutcome outcome = ResimulateQuietly(ws);
    if (!outcome.Ran || ws.sim.SimStatus == 1) {
      tick.Status = "failed";
    } else if (Warned(ws.sim)) {
      tick.Status = "warnings";
    }
  }
  if (!ws.remote.OutputFile.empty() && !WriteRealtimeOutput(ws)) tick.Status = "failed";
  return tick;
}

const char* RunMonitor(Workspace& ws, const MonitorSettings& settings,
                       const std::atomic<bool>& stop,
                       const std::function<void(const MonitorTick&)>& report) {
  using Clock = std::chrono::steady_clock;
  if (!settings.Stations.empty()) ws.remote.RemoteSource = settings.Stations;
  if (!settings.Output.empty()) ws.remote.OutputFile = settings.Output;
  const auto every = std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(settings.EverySeconds));
  bool failureSaid = false;
  const char* status = "clean";
  auto next = Clock::now();
  for (int n = 1; (settings.Ticks == 0 || n <= settings.Ticks) && !stop; ++n) {
    if (n > 1) {
      next += every;
      while (!stop && Clock::now() < next)
        std::this_thread::sleep_for(std::min<Clock::duration>(kStopCheck, next - Clock::now()));
      if (stop) break;
      // A tick that overran its interval is followed at once, not by a burst of catch-up ticks.
      if (Clock::now() > next + every) next = Clock::now();
    }
    const MonitorTick tick = RunMonitorTick(ws, n, failureSaid);
    status = tick.Status;
    if (report) report(tick);
  }
  return status;
}

}  // namespace galeris
