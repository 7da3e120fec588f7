// Fan curves for the solver: each fan type's curve checked and extended to free delivery, one
// scaled working curve (a slot) per fan type and arrangement on the network, and the
// evaluation of a curve at a flow with the airway's blend of static and total pressure.
#pragma once

#include <array>
#include <cstdint>

#include "core/workspace.h"

namespace galeris {

// Slopes the evaluation reports off the ends of a curve, and for a fixed pressure: fixed
// values that the balancing divides by, so an airway cannot jump past the ends.
inline constexpr float kOffCurveSlope = -50.0f;
inline constexpr float kFixedPressureSlope = -1.0f;
// FanSlot of an airway with a fixed pressure instead of a fan.
inline constexpr int kFixedPressureSlot = -1;

// Where an evaluated flow lies on its curve.
enum FanState : std::int16_t { FanStalled = -1, FanOnCurve = 0, FanNegated = 1 };

using CurveFlows = std::array<float, kCurvePoints + 1>;
using CurvePressures = std::array<std::array<float, 3>, kCurvePoints + 1>;

// A working curve: a fan type's points scaled for one arrangement, as a slot holds them.
struct WorkingCurve {
  const CurveFlows& Q;
  const CurvePressures& P;
};

struct FanPoint {
  float FanP = 0;   // pressure the fan gives, Pa
  float Slope = 0;  // Pa per m3/s, negative on a falling curve
  std::int16_t State = FanOnCurve;
};

// Extends every named fan type with point 11, where its curve reaches zero pressure. The first
// invalid curve gets the "Invalid Fan Curve" box and ends the check; the run goes on.
void ValidateFanCurves(Workspace& ws);

// Sets FanSlot of every airway (0 none, -1 fixed pressure, else a slot) and fills the slots'
// curves, scaled by the fans in parallel (flows) and in series (pressures).
void BuildSimCurves(Workspace& ws);

// The arrangement key of a fan airway: parallel count times 100 plus series count.
int FanArrangementKey(const Network& net, int airway);

// The pressure of one slot point, blended by the airway's CurveFraction.
float CurvePressure(const Network& net, int point, int slot, int airway);

// The fan's pressure and slope at a signed flow. For a fixed pressure (slot -1) FanP is
// returned as given in fixedPressure.
FanPoint EvaluateFanCurve(const Network& net, int slot, float flow, int airway,
                          float fixedPressure = 0);

// The same over a working curve, blended by the airway's CurveFraction.
FanPoint EvaluateFanCurve(const WorkingCurve& curve, float flow, std::int16_t fraction);

// The operating point of an airway's fan at its Quantity, from its fan type's curve and its
// arrangement, with no simulation slots: what the labels show whether or not a run stands.
// An airway without a valid fan curve gives a zero pressure.
FanPoint EvaluateAirwayFan(const Network& net, int airway);

// The fan efficiency in per cent at the airway's flow, from the fan type's own curve.
float EvaluateFanEfficiency(const Workspace& ws, int airway);

}  // namespace galeris
