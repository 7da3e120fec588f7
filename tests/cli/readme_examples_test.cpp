// Every command-line example of the README runs as written, in order, in a scratch folder that
// sees the source tree's examples and fixtures, with the built programs on the PATH.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace galeris {
namespace {

// The indented lines of the README that call one of the programs, comments removed.
std::vector<std::string> ReadmeCommands() {
  std::istringstream readme(test::ReadFile(test::SourcePath("README.md")));
  std::vector<std::string> commands;
  for (std::string line; std::getline(readme, line);) {
    if (line.rfind("    galeris", 0) != 0) continue;
    line = line.substr(
        4, line.find(" #") == std::string::npos ? std::string::npos : line.find(" #") - 4);
    commands.push_back(line);
  }
  return commands;
}

TEST(Readme, CommandLineExamplesRunAsWritten) {
  const std::string dir = test::ScratchDir();
  for (const char* folder : {"examples", "tests"})
    std::filesystem::create_directory_symlink(test::SourcePath(folder), dir + folder);
  const std::string bin = std::getenv("GALERIS_HOME");
  const std::vector<std::string> commands = ReadmeCommands();
  ASSERT_GE(commands.size(), 7u);
  for (const std::string& command : commands) {
    const std::string program = command.substr(0, command.find(' '));
    if (!std::filesystem::exists(bin + "/" + program)) continue;  // a build without Qt or Python
    const std::string run = "cd '" + dir + "' && PATH='" + bin + "':\"$PATH\" " + command + " >'" +
                            dir + "out.txt' 2>'" + dir + "err.txt'";
    const int raw = std::system(run.c_str());
    EXPECT_TRUE(WIFEXITED(raw) && WEXITSTATUS(raw) == 0) << command << "\n"
                                                         << test::ReadFile(dir + "err.txt");
    const std::string out = test::ReadFile(dir + "out.txt");
    if (command.rfind("galeris-sim solve", 0) == 0) {
      EXPECT_NE(out.find("status clean"), std::string::npos) << command << "\n" << out;
    }
  }
  EXPECT_TRUE(std::filesystem::exists(dir + "big.sim"));
  EXPECT_TRUE(std::filesystem::exists(dir + "new.sim"));
}

}  // namespace
}  // namespace galeris
