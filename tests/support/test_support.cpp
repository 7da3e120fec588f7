// Helpers shared by the tests.
#include "tests/support/test_support.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace galeris::test {

std::string SourcePath(const std::string& relative) {
  const char* root = std::getenv("GALERIS_SOURCE");
  return std::string(root ? root : ".") + "/" + relative;
}

std::string ScratchDir() {
  static std::atomic<int> counter{0};
  namespace fs = std::filesystem;
  fs::path dir = fs::temp_directory_path() /
                 ("galeris-" + std::to_string(getpid()) + "-" + std::to_string(++counter));
  fs::remove_all(dir);
  fs::create_directories(dir);
  return dir.string() + "/";
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

int AddAirway(Network& net, int x1, int y1, int z1, int x2, int y2, int z2) {
  const int i = ++net.BranchCount;
  net.Coord1[i] = {0, x1, y1, z1};
  net.Coord2[i] = {0, x2, y2, z2};
  net.BranchCode[i] = Bit::Rectangular;
  net.Dim[i] = {0, 4, 4};
  net.Resistance[i] = 0.01f;
  net.ParallelCount[i] = 1;
  return i;
}

int AtNumber(const Network& net, int airwayNo) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.AirwayNo[i] == airwayNo) return i;
  return 0;
}

}  // namespace galeris::test
