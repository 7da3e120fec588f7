// Compiled into every test executable: points TMPDIR and HOME at a scratch folder of this
// process in the build tree and tells the tests where the sources and the program folder are,
// so that no test writes into the source tree or the user's home, and tests running side by
// side never share scratch files.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

struct TestEnvironment {
  TestEnvironment() {
    const std::string scratch =
        std::string(GALERIS_TEST_SCRATCH) + "/" + std::to_string(getpid());
    std::filesystem::remove_all(scratch);
    std::filesystem::create_directories(scratch + "/config");
    setenv("TMPDIR", scratch.c_str(), 1);
    setenv("HOME", scratch.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (scratch + "/config").c_str(), 1);
    setenv("GALERIS_HOME", GALERIS_TEST_HOME, 0);
    setenv("GALERIS_SOURCE", GALERIS_TEST_SOURCE, 0);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
  }
  ~TestEnvironment() {
    std::error_code ec;
    std::filesystem::remove_all(std::getenv("TMPDIR"), ec);
  }
} environment;

}  // namespace
