// Conversion.dat: the unit table on disk, read at start-up and written with the defaults.
#pragma once

#include <string>

#include "core/ui_port.h"
#include "core/units.h"

namespace galeris {

// Conversion.dat in the given path; a failure says so and keeps the table as it was.
void LoadConversion(UnitTable& units, const std::string& path, UiPort& ui);
void SaveConversion(const UnitTable& units, const std::string& path, UiPort& ui);

}  // namespace galeris
