// Helpers shared by the tests: fixture paths in the source tree, scratch folders in TMPDIR,
// whole-file reads and writes.
#pragma once

#include <string>

#include "core/network_store.h"

namespace galeris::test {

// A file of the source tree, e.g. SourcePath("tests/files/fixtures/a.sim").
std::string SourcePath(const std::string& relative);
// A new empty folder under TMPDIR, with a trailing separator.
std::string ScratchDir();
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

// Appends one ordinary rectangular airway from (x1,y1,z1) to (x2,y2,z2); returns its position.
int AddAirway(Network& net, int x1, int y1, int z1, int x2, int y2, int z2);

}  // namespace galeris::test
