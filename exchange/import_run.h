// What the two import readers share while one import runs: the workspace, the error prompt
// that may end the import, and the conversion of a coordinate text to a stored whole number.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/workspace.h"

namespace galeris {

// Thrown by ImportRun::Trap when the user ends the import; caught by ImportFile.
struct ImportAbandoned {};

class ImportRun {
 public:
  explicit ImportRun(Workspace& workspace) : ws(workspace) {}

  // "Error Loading Data - Do you wish to continue loading ?": Yes goes on with the next
  // statement, No throws ImportAbandoned.
  void Trap();
  // ClampCoordinate, display to stored length, rounded half to even. A value beyond a long
  // traps and leaves the target as it was.
  void Coordinate(std::string_view text, std::int32_t& target);
  // A whole number for a 16-bit field: beyond the range traps and leaves the target.
  void Short(double value, std::int16_t& target);

  Workspace& ws;
};

// The text reader: line 1 is dropped, every further line fills the next position. Returns the
// last position filled; net.BranchCount follows the reading.
int ReadTextAirways(ImportRun& run, const std::string& path);

// The DXF reader: the lines and polylines of the drawing, from net.BranchCount + 1 on.
int ReadDxfAirways(ImportRun& run, const std::string& path);

// Gives a file with bare line feeds CR LF endings in tmp.dat of the temporary folder; returns
// the path to read (the file itself when its first 1000 bytes hold a carriage return).
std::string NormaliseLineEnds(Workspace& ws, const std::string& path);

// Builds the levels after an import (both modes), from the Z range the clean-up tracked.
void BuildImportLevels(Workspace& ws, bool oneLevelPerHeight, bool merge, int lowestZ,
                       int highestZ);

}  // namespace galeris
