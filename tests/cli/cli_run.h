// Runs the built galeris-sim as a user would, with an empty program folder of its own so that
// the built-in settings apply, and collects its status and output.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "tests/support/test_support.h"

namespace galeris {

struct CliOutcome {
  int status = -1;
  std::string out, err;
};

inline CliOutcome RunSim(const std::string& args) {
  const char* home = std::getenv("GALERIS_HOME");
  const std::string program = std::string(home ? home : ".") + "/galeris-sim";
  const std::string dir = test::ScratchDir();
  const std::string command = "'" + program + "' " + args + " --home '" + dir + "' >'" + dir +
                              "out.txt' 2>'" + dir + "err.txt'";
  CliOutcome run;
  const int raw = std::system(command.c_str());
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.out = test::ReadFile(dir + "out.txt");
  run.err = test::ReadFile(dir + "err.txt");
  return run;
}

inline std::string Fixture(const std::string& name) {
  return "'" + test::SourcePath("tests/files/fixtures/" + name) + "'";
}

}  // namespace galeris
