// galeris-sim monitor: real-time monitoring on a computer without a screen. Each tick reads
// the station file, applies it, resimulates and rewrites the output file, and prints one
// status line; SIGINT or SIGTERM ends the run between ticks, with every file whole.
#include <atomic>
#include <charconv>
#include <cmath>
#include <csignal>
#include <ostream>

#include "cli/cli_command.h"
#include "realtime/monitor.h"
#include "realtime/remotes_file.h"

namespace galeris::cli {
namespace {

std::atomic<bool> stopRequested{false};

extern "C" void RequestStop(int) {
  stopRequested = true;
}

constexpr const char* kUsage =
    "usage: galeris-sim monitor NET.sim --every SECONDS [--ticks N] [--output OUT.txt] "
    "[--stations FILE]\n";

bool ParseSeconds(const std::string& text, double& seconds) {
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, seconds);
  return ec == std::errc() && p == end && std::isfinite(seconds) && seconds > 0;
}

bool ParseTicks(const std::string& text, int& ticks) {
  if (text.empty()) return true;
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, ticks);
  return ec == std::errc() && p == end && ticks > 0;
}

int ExitCode(const std::string& status) {
  if (status == "failed") return kExitFailed;
  return status == "warnings" ? kExitWarnings : kExitOk;
}

int RunMonitorCommand(CliContext& c) {
  MonitorSettings settings;
  const std::string every = TakeOption(c.args, "--every");
  const std::string ticks = TakeOption(c.args, "--ticks");
  settings.Output = TakeOption(c.args, "--output");
  settings.Stations = TakeOption(c.args, "--stations");
  if (c.args.size() != 1 || !ParseSeconds(every, settings.EverySeconds) ||
      !ParseTicks(ticks, settings.Ticks)) {
    c.err << kUsage;
    return kExitBadInput;
  }
  Workspace& ws = c.ws;
  LoadRemotes(ws);
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  stopRequested = false;
  std::signal(SIGINT, RequestStop);
  std::signal(SIGTERM, RequestStop);
  const std::string status = RunMonitor(ws, settings, stopRequested, [&c](const MonitorTick& t) {
    if (!t.Failure.empty()) c.err << "monitor: " << t.Failure << "\n";
    c.out << FormatTick(t) << std::endl;
  });
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
  return ExitCode(status);
}

const RegisterCommand kMonitor(
    {"monitor", "monitor NET.sim --every SECONDS [--ticks N] [--output OUT.txt] [--stations FILE]",
     "Every SECONDS reads the station file (from Remotes.dat, or FILE), fixes the airflows its\n"
     "      stations control, resimulates and rewrites the output file; one status line a tick.\n"
     "      Runs N ticks, or until SIGINT or SIGTERM.",
     RunMonitorCommand});

}  // namespace
}  // namespace galeris::cli
