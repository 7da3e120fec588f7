// Where the program's files live: the program folder (GALERIS_HOME, else the executable's
// folder) for the settings files, and the system's temporary folder for scratch files.
#pragma once

#include <string>

namespace galeris {

struct ProgramPaths {
  std::string ProgramFolder;  // with a trailing separator
  std::string TempFolder;     // with a trailing separator

  std::string InProgram(const std::string& name) const { return ProgramFolder + name; }
  std::string InTemp(const std::string& name) const { return TempFolder + name; }
};

// GALERIS_HOME when set, else the folder of the executable given; TMPDIR, else the system's.
ProgramPaths FindProgramPaths(const std::string& executablePath);

}  // namespace galeris
