// One real-time tick on a generated mine of 30 000 airways with 50 stations, each fixing the
// airflow of one airway near its solved value: the whole tick (read 50 stations, apply,
// resimulate, write the output file), and the tick's own work without the resimulation (the
// resimulation alone is the solver's benchmark). The tick should cost the solve time plus at most
// 50 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>

#include "bench/bench_mine.h"
#include "core/headless_ui.h"
#include "realtime/monitor.h"
#include "realtime/realtime_output.h"
#include "realtime/stations.h"
#include "simulate/simulate.h"

namespace galeris {
namespace {

constexpr int kAirways = 30000;

struct MonitoredMine {
  HeadlessUi ui;
  Workspace ws{ui};
};

Workspace& Mine() {
  static std::unique_ptr<MonitoredMine> mine;
  if (mine) return mine->ws;
  mine = std::make_unique<MonitoredMine>();
  Workspace& ws = mine->ws;
  GenerateMine(ws, kAirways, 1);
  ws.defaults.MaxIter = 5000;
  ResimulateQuietly(ws);
  RemoteStations& st = ws.remote;
  st.RemoteSource = bench::Scratch("bench_stations.rem");
  st.OutputFile = bench::Scratch("bench_realtime_out.txt");
  std::ofstream file(st.RemoteSource, std::ios::binary);
  file << "Quantity\tCarbon Dioxide\r\nlogger\r\n";
  const int step = ws.net.BranchCount / kMaxStations;
  for (int s = 1; s <= kMaxStations; ++s) {
    const int i = s * step;
    ws.net.RemoteStation[i] = static_cast<std::int16_t>(s);
    st.UpdateQ[s] = -1;
    st.ChannelMult[1][s] = 0.01f;
    file << s << "\tstation\t" << s << "\t" << std::lround(ws.net.Quantity[i] * 100.0)
         << "\t400\t0\t0\t0\r\n";
  }
  file.close();
  bool said = false;
  RunMonitorTick(ws, 1, said);  // the first solve with the stations' fixed flows
  return ws;
}

void BM_MonitorTick(benchmark::State& state) {
  Workspace& ws = Mine();
  bool said = false;
  for (auto _ : state) {
    const MonitorTick tick = RunMonitorTick(ws, 2, said);
    if (std::string(tick.Status) == "failed") state.SkipWithError("tick failed");
  }
  state.counters["sweeps"] = ws.sim.Sweeps;
}

void BM_TickWithoutResimulation(benchmark::State& state) {
  Workspace& ws = Mine();
  std::string why;
  int count = 0;
  for (auto _ : state) {
    if (!ReadStationFile(ws.remote, ws.remote.RemoteSource, why, count))
      state.SkipWithError("read failed");
    ApplyStations(ws);
    WriteRealtimeOutput(ws);
  }
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(ws.remote.OutputFile));
}

BENCHMARK(BM_MonitorTick)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TickWithoutResimulation)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace galeris
