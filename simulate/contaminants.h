// Contaminant simulation on a balanced network, without changing the flows: the spread of
// smoke from source airways downstream (where it goes, how far junctions dilute it, when it
// arrives), and the sourcing trace that works back from report pins to the airways that can
// hold the source. Also the legend thresholds and the slider range of the spread display.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "core/workspace.h"

namespace galeris {

// SmokeTime of an airway the contaminant never reaches.
inline constexpr float kNeverReached = 9999999.0f;
// Concentrations are clipped to fit the 16-bit field.
inline constexpr int kMaxConcentration = 20000;
// The slider shows at most three hours.
inline constexpr int kSliderTimeLimit = 10800;
// The spread gives up after this many rounds, the mixing asks after this many passes.
inline constexpr int kSpreadRounds = 1000;
inline constexpr int kMixingPassesBeforeQuestion = 100;

// SmokeData[i][1]: the report pin on an airway.
namespace ReportPin {
inline constexpr std::int16_t None = 0, Smoke = 1, Clear = 2;
}
// SmokeData[i][2] after a trace: what the airway can be.
namespace TraceState {
inline constexpr std::int16_t Unknown = 0, Smoke = 4, Potential = 5, Clear = 7;
}

// The fields of frmSmoke that the spread fills as it goes, and the airflow run it needs first
// when no solution stands. Empty members are skipped; an empty Simulate runs RunSimulation
// quietly.
struct SpreadDisplay {
  std::function<void()> Simulate;
  // TxtItt, TxtSpread and TxtRate (the share of airways visited, 0..1) after each round.
  std::function<void(int round, int spread, double share)> ShowSpread;
  // TxtErr after each mixing pass: (1000 - largest change) / 1000.
  std::function<void(double convergence)> ShowConvergence;
};

enum class SpreadEnd {
  NotBalanced,  // no solution could be had: "Network must be successfully balanced ..."
  NoData,       // "No Data to Simulate"
  NoSource,     // no source with flow: silently nothing
  Failed,       // a source path with no velocity stopped the mixing; the state stands
  Finished,     // the spread is in the store (also after a Cancel, with what was reached)
};

struct SpreadResult {
  SpreadEnd End = SpreadEnd::NoSource;
  int Sources = 0;  // sources released (flow above 0)
  int Reached = 0;  // airways with a concentration or a time after the run
  int MixingPasses = 0;
  float SmokeMax = 0;  // the highest concentration
};

// The spread: concentrations in SmokeData[i][2], arrival times in SmokeTime, the visiting order
// in SmokeQueue. Runs the airflow simulation first when the network is not balanced. A Cancel
// (ws.sim.SimCancel 255) stops the rounds and passes and keeps what was reached.
SpreadResult SimulateContaminant(Workspace& ws, const SpreadDisplay& display = {});

// The sourcing trace from the report pins: trace states in SmokeData[i][2]. Runs the airflow
// simulation first when needed (simulate as in SpreadDisplay); false when no solution stands.
bool TraceContaminant(Workspace& ws, const std::function<void()>& simulate = {});

// The largest concentration in the store.
float SmokeMaximum(const Network& net);

// The legend after a spread. `legend` holds the values read from the Percent boxes; when they
// are to be retained and a legend exists they stand, otherwise they are spread in five equal
// steps from the highest concentration down to 0.
void LegendAfterSpread(float smokeMax, bool retain, bool legendExists,
                       std::array<float, 6>& legend);

// SetSliderRange: one second past the latest whole arrival time of an airway above
// concentration 1, at most three hours.
int SliderRange(const Network& net);
// The slider's time as LblTimer shows it ("h:mm:ss" of the seconds over 86404).
std::string SliderTimeText(double seconds);

// Clearing. Sources: bit 8 and Contaminant of every airway ("Clear Sources"). Spread: every
// concentration, arrival time and LoopOrder, and the sources as well when asked (the Simulate
// menu's "Clear Smoke Tracking"). Sourcing: both SmokeData columns ("Clear Smoke Sourcing",
// "Clear Pins"). Contaminant of the airways that are no source (frmSmoke's Cancel).
void ClearContaminantSources(Workspace& ws);
void ClearContaminantSpread(Workspace& ws, bool sourcesToo);
void ClearSmokeSourcing(Network& net);
void ClearNonSourceContaminant(Network& net);

// The source airways that cannot release anything, by AirwayNo, with the reason: no flow
// ("... has no flow"), or an exit on the surface. For the command line's checks.
struct SourceProblem {
  std::int32_t AirwayNo = 0;
  std::string Reason;
};
std::vector<SourceProblem> CheckContaminantSources(const Network& net);

}  // namespace galeris
