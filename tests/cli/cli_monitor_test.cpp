// galeris-sim monitor: its usage, and a stop by SIGTERM that leaves the output file whole (the
// README runs it for a number of ticks).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/cli/cli_run.h"

namespace galeris {
namespace {

std::string Example() {
  return "'" + test::SourcePath("examples/example_mine.sim") + "'";
}

TEST(CliMonitor, RefusesBadUsage) {
  const std::string monitor = "monitor " + Example();
  for (const std::string& args : {std::string("monitor"), monitor, monitor + " --every 0",
                                  monitor + " --every x", monitor + " --every 1 --ticks 0"})
    EXPECT_EQ(RunSim(args).status, 3) << args;
}

TEST(CliMonitor, StopsOnSigtermWithTheFileWhole) {
  const std::string dir = test::ScratchDir();
  test::WriteFile(dir + "st.rem", "Q\r\nu\r\n1\ta\tb\t30\t0\t0\t0\t0\r\n");
  const std::string files = " --stations '" + dir + "st.rem' --output '" + dir + "flows.txt'";
  const char* home = std::getenv("GALERIS_HOME");
  const std::string command = "timeout --preserve-status -s TERM 1 '" + std::string(home) +
                              "/galeris-sim' monitor " + Example() + " --every 0.1" + files +
                              " --home '" + dir + "' >'" + dir + "out.txt' 2>&1";
  const int raw = std::system(command.c_str());
  ASSERT_TRUE(WIFEXITED(raw));
  EXPECT_EQ(WEXITSTATUS(raw), 0);
  const std::string out = test::ReadFile(dir + "out.txt");
  EXPECT_GE(std::count(out.begin(), out.end(), '\n'), 3) << out;
  const std::string flows = test::ReadFile(dir + "flows.txt");
  ASSERT_GE(flows.size(), 2u);
  EXPECT_EQ(flows.substr(flows.size() - 2), "\r\n");
  EXPECT_FALSE(std::filesystem::exists(dir + "flows.txt.partial"));
}

}  // namespace
}  // namespace galeris
