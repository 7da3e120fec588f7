// Coordinate entry.
#include "editors/logic/coord_entry.h"

#include <cmath>

#include "editors/logic/airway_edit.h"
#include "core/number_format.h"
#include "core/ui_port.h"

namespace galeris {
namespace {

// X and Y may reach ten million; Z stops one short of it.
constexpr double kMaxPlan = 10000000;
constexpr double kMaxHeight = 9999999;

std::optional<double> BoxValue(const UnitTable& units, const std::string& text) {
  if (text.find_first_not_of(' ') == std::string::npos) return 0.0;
  const std::optional<double> v = ReadNumber(text);
  if (!v) return std::nullopt;
  return FromDisplay(units, *v, Unit::Length);
}

}  // namespace

std::optional<std::array<double, 3>> ReadCoordEntry(
    const UnitTable& units, const CoordEntryFields& fields, UiPort& ui,
    const std::optional<std::array<double, 3>>& start) {
  std::array<double, 3> point{};
  for (int axis = 0; axis < 3; ++axis) {
    double value = 0;
    for (const auto& [shown, text] : {std::pair{fields.absoluteShown, fields.absolute[axis]},
                                      std::pair{fields.relativeShown, fields.relative[axis]}}) {
      if (!shown) continue;
      const std::optional<double> v = BoxValue(units, text);
      if (!v) {
        ui.Inform(kMsgCoordinateEntry);
        return std::nullopt;
      }
      value += *v;
    }
    point[axis] = static_cast<double>(RoundHalfEven(value));
    if (start) point[axis] += (*start)[axis];
  }
  if (std::fabs(point[0]) > kMaxPlan || std::fabs(point[1]) > kMaxPlan ||
      std::fabs(point[2]) > kMaxHeight) {
    ui.Inform(kMsgCoordinatesExceeded);
    return std::nullopt;
  }
  return point;
}

}  // namespace galeris
