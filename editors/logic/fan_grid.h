// The rules of the fan list editor that need no screen: the grid of a fan's ten curve points as
// text in display units, storing that grid back into the fan slot (sorted into a falling
// pressure curve, unused points repeating the last real one), the estimate of one pressure
// curve from the other through the fan's velocity pressure, and the zero-efficiency check.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/workspace.h"

namespace galeris {

inline constexpr int kFanPoints = 10;

// Grid columns after the point number.
namespace FanColumn {
inline constexpr int Static = 0, Total = 1, Quantity = 2, Efficiency = 3, Count = 4;
}

// Rows 1..10 of the grid, each with the four columns above; row 0 is unused.
using FanGridText = std::array<std::array<std::string, FanColumn::Count>, kFanPoints + 1>;

// The grid's column titles: "Ps " and "Pt " with the pressure unit, "Q " with the quantity unit.
std::array<std::string, FanColumn::Count> FanGridTitles(const UnitTable& units);

// FanList's row: the number as a signed number string (a blank before a positive one), a blank,
// then the name or "-none-".
std::string FanListRow(const Network& net, int fan);

// A curve whose first and last points agree was never entered.
struct FanCurveChecks {
  bool staticEmpty = false, totalEmpty = false, efficiencyEmpty = false;
};
FanCurveChecks CurveChecksOf(const Network& net, int fan);

// The ten points of a fan in display units.
FanGridText FanGridOf(const Workspace& ws, int fan);

// The largest flow and pressure of the stored grid, in display units.
struct FanGridScale {
  double MaxQ = 0, MaxP = 0;
};

// The first cell (row 1..10, column) that is not a number, if any.
struct FanGridCell {
  int row = 0, column = 0;
};
std::optional<FanGridCell> UnreadableFanCell(const FanGridText& grid);

// Stores the grid into the fan slot: an empty cell takes the previous row's value, negative
// flows and efficiencies become 0, efficiencies above 100 become 100; the rows are put in
// order of falling pressure (total pressure when the static curve is empty) and trailing
// unused points repeat the last real point. A catalogue curve with a stall hump keeps its
// points as they sort. A fan with data and no name is named "Fan #" and its number; `name`
// carries the name box's text in and out. An unreadable cell gives a message and leaves the
// slot as it was: nothing then.
std::optional<FanGridScale> StoreFanGrid(Workspace& ws, int fan, const FanGridText& grid,
                                         bool staticEmpty, std::string& name);

// The velocity pressure of a flow through the fan's exit, in Pa; 0 without a diameter.
double VelocityPressure(const Workspace& ws, int fan, double quantity);
// Ps := Int(Pt - VP) at every point.
void EstimateStaticCurve(Workspace& ws, int fan);
// Pt := Int(Ps + VP) at every point of a fan with a curve; without a diameter the user is told
// and the fan stays as it was (false).
bool EstimateTotalCurve(Workspace& ws, int fan);

// One to nine zero efficiencies are replaced by the default efficiency, after a message.
void FixZeroEfficiency(Workspace& ws, int fan);

// The diameter box's text: the diameter in full format, "n/a" when none was entered.
std::string FanDiameterText(const UnitTable& units, float diameter);
// What the diameter box stores on leaving: 0 for empty text or "n/a", else the typed value in
// metres; nothing when the text is not a number.
std::optional<float> ReadFanDiameter(const UnitTable& units, const std::string& text);

inline constexpr const char* kMsgNumberFormat = "Error in Number Format";

}  // namespace galeris
