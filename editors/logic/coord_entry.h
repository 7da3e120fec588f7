// The rules of the coordinate entry dialog: a point typed as absolute values, a relative move
// or both, through the length unit, checked against the limits of the store's coordinates.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/units.h"

namespace galeris {

class UiPort;

inline constexpr const char* kMsgCoordinatesExceeded = "Coordinates exceed allowed values";
inline constexpr const char* kMsgCoordinateEntry = "Error in coordinate entry - please check";

// The six boxes as typed; an absolute box that is hidden counts as absent.
struct CoordEntryFields {
  bool absoluteShown = true;
  std::array<std::string, 3> absolute;  // TxtX, TxtY, TxtZ
  bool relativeShown = false;
  std::array<std::string, 3> relative;  // TxtdX, TxtdY, TxtdZ
};

// OK: each axis is the absolute box (if shown) plus the relative box (if shown), in SI and
// rounded to whole metres, added to the start point when there is one. A bad number or a
// point out of bounds is reported and gives nothing.
std::optional<std::array<double, 3>> ReadCoordEntry(
    const UnitTable& units, const CoordEntryFields& fields, UiPort& ui,
    const std::optional<std::array<double, 3>>& start = std::nullopt);

}  // namespace galeris
