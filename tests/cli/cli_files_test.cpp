// galeris-sim's file commands run as the user runs them: resave converts any version to the
// current one, info counts what a file holds, and bad input ends with status 3 and the message.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

using test::ReadFile;
using test::SourcePath;

TEST(CliResave, OldVersionsBecomeTheCurrentFile) {
  for (const char* version : {"v13", "v24", "v29"}) {
    const std::string out = test::ScratchDir() + "out.sim";
    const std::string folder = version;
    const CliOutcome run = RunSim("resave " + Fixture(folder + "/mine_" + folder + ".sim") +
                                  " -o '" + out + "' --answer yes");
    EXPECT_EQ(run.status, 0) << version << run.err;
    EXPECT_TRUE(ReadFile(out) ==
                ReadFile(SourcePath("tests/files/fixtures/" + folder + "/mine.sim")))
        << version;
    EXPECT_NE(run.out.find("Saved 5 airways"), std::string::npos);
  }
}

TEST(CliResave, QuestionsGoToStderrWithTheirTitles) {
  const std::string out = test::ScratchDir() + "out.sim";
  const CliOutcome run = RunSim("resave " + Fixture("v23/mine_v23.sim") + " -o '" + out + "'");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("Total Pressures: Galeris now has a 'TOTAL PRESSURE'"), std::string::npos);
}

TEST(CliResave, BadInputAndBadUsage) {
  const std::string dir = test::ScratchDir();
  test::WriteFile(dir + "junk.sim", "not a network\r\n");
  CliOutcome run = RunSim("resave '" + dir + "junk.sim' -o '" + dir + "o.sim'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("Not a GALERIS File - Action Aborted"), std::string::npos);
  run = RunSim("resave '" + dir + "missing.sim' -o '" + dir + "o.sim'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("ERROR 53: That file doesn't exist."), std::string::npos);
  EXPECT_EQ(RunSim("resave " + Fixture("v24/mine.sim")).status, 3);
  EXPECT_EQ(RunSim("resave").status, 3);
  run = RunSim("resave " + Fixture("v24/mine.sim") + " -o '" + dir + "no/folder/o.sim'");
  EXPECT_EQ(run.status, 1);
}

TEST(CliInfo, CountsWhatTheFileHolds) {
  const CliOutcome run = RunSim("info '" + SourcePath("examples/example_mine.sim") + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("Title: Example Mine"), std::string::npos);
  EXPECT_NE(run.out.find("Airways: 107\n"), std::string::npos);
  EXPECT_NE(run.out.find("Fan types: 8\n"), std::string::npos);
  EXPECT_NE(run.out.find("Airways with fans: 2\n"), std::string::npos);
  EXPECT_NE(run.out.find("Levels: 5\n"), std::string::npos);
  const CliOutcome old = RunSim("info " + Fixture("v27/mine_v27.sim"));
  EXPECT_EQ(old.status, 0);
  EXPECT_NE(old.out.find("Floating texts: 1\n"), std::string::npos);
  EXPECT_NE(old.out.find("Title: Old Mine 2.7\n"), std::string::npos);
}

TEST(CliInfo, UnreadableInput) {
  const std::string dir = test::ScratchDir();
  test::WriteFile(dir + "empty.sim", "");
  const CliOutcome run = RunSim("info '" + dir + "empty.sim'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("Error: Error occured loading file"), std::string::npos);
  EXPECT_EQ(RunSim("info").status, 3);
}

}  // namespace
}  // namespace galeris
