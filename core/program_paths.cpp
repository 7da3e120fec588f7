// Finding the program and temporary folders.
#include "core/program_paths.h"

#include <cstdlib>
#include <filesystem>

namespace galeris {
namespace {

std::string WithSeparator(std::string folder) {
  if (folder.empty()) return "./";
  if (folder.back() != '/') folder += '/';
  return folder;
}

}  // namespace

ProgramPaths FindProgramPaths(const std::string& executablePath) {
  namespace fs = std::filesystem;
  ProgramPaths paths;
  if (const char* home = std::getenv("GALERIS_HOME"); home && *home) {
    paths.ProgramFolder = WithSeparator(home);
  } else {
    std::error_code ec;
    fs::path exe = fs::canonical("/proc/self/exe", ec);
    if (ec) exe = fs::absolute(executablePath, ec);
    paths.ProgramFolder = WithSeparator(exe.parent_path().string());
  }
  std::error_code ec;
  fs::path temp = fs::temp_directory_path(ec);  // honours TMPDIR
  paths.TempFolder = WithSeparator(ec ? std::string("/tmp") : temp.string());
  return paths;
}

}  // namespace galeris
