// The state of one simulation run, read and written by the driver, its stages and the windows
// that show the run (progress form, error list).
#pragma once

#include <cstdint>

namespace galeris {

// How the flows are balanced: Hardy Cross mesh corrections (the standard), or Newton's method
// on the nodal equations. The diagnostic modes always use Hardy Cross.
enum class SolverMethod : std::uint8_t { HardyCross, Newton };

// The physics of the flows a run left: the largest imbalance of flow at a node (m3/s) and the
// largest pressure mismatch round a loop (Pa). Done is false when the run left no solution.
struct SolutionCheck {
  bool Done = false;
  double Continuity = 0;
  double Loop = 0;
};

struct SimRun {
  std::int16_t SimMode = 0;      // 0 simulate, -1 non-converging, 1..4 diagnostics
  std::int16_t SimStatus = 0;    // 0 clean, 1 failed or stopped, 2 warnings
  std::uint8_t SimCancel = 0;    // 255: stop at the next test
  std::uint8_t ShowProgress = 1; // 1 show the progress form; 0 a quiet run
  std::int16_t MeshCount = 0;
  std::int32_t Sweeps = 0;       // sweeps of the last balancing
  bool Converged = false;        // the last balancing ended with every mesh within MaxError
  bool RestrictionFound = false;
  bool AirwayReversed = false;
  bool Running = false;          // a run is under way: no other simulation may start
  const char* FormCaption = "Simulate";  // the progress form's caption as the run left it
  std::int16_t SimCurveCount = 0;  // fan curve slots built for this run
  std::int16_t SimFanCount = 0;    // airways with a fan in this run
  // The last mesh correction; it carries over to the next mesh and the next run, so that a
  // dead mesh receives its neighbour's correction.
  float SimCorr = 0;
  // The user's choice, kept outside the network and defaults files.
  SolverMethod Method = SolverMethod::HardyCross;
  // The self-check of the last run that reached its results.
  SolutionCheck Check;
};

}  // namespace galeris
