// galeris-sim smoke and summary end to end on a generated mine: the spread's lines, the
// summary's rows, bad usage, and the input file left as it was.
#include <gtest/gtest.h>

#include <string>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

int CountLines(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

TEST(CliSmoke, SpreadSummaryAndBadInput) {
  const std::string dir = test::ScratchDir();
  const std::string mine = "'" + dir + "mine.sim'";
  ASSERT_EQ(RunSim("generate 400 -o " + mine).status, 0);
  const std::string before = test::ReadFile(dir + "mine.sim");

  const CliOutcome smoke = RunSim("smoke " + mine + " --source 5:500 --source 9 --answer yes");
  ASSERT_LE(smoke.status, 2) << smoke.err;
  const std::size_t last = smoke.out.rfind("airways 400 reached ");
  ASSERT_NE(last, std::string::npos) << smoke.out;
  EXPECT_NE(smoke.out.find(" sources 2\n", last), std::string::npos);
  EXPECT_NE(smoke.out.find("5\t500\t0.0\n"), std::string::npos) << smoke.out;
  EXPECT_EQ(std::stoi(smoke.out.substr(last + 20)), CountLines(smoke.out) - 1);

  const CliOutcome summary = RunSim("summary " + mine + " --answer yes");
  ASSERT_LE(summary.status, 2) << summary.err;
  EXPECT_EQ(CountLines(summary.out), 10);  // the last: the self-check of the run it needed
  EXPECT_NE(summary.out.find("Solution Check\tcontinuity "), std::string::npos) << summary.out;
  EXPECT_NE(summary.out.find("Number of Airways\t400\t\n"), std::string::npos) << summary.out;

  for (std::string args :
       {"smoke --source 5", "smoke MINE --source 5:x", "smoke MINE --source 99999",
        "smoke MINE --mode sometimes", "smoke MINE", "summary"}) {
    if (const auto at = args.find("MINE"); at != std::string::npos) args.replace(at, 4, mine);
    EXPECT_EQ(RunSim(args).status, 3) << args;
  }
  EXPECT_EQ(test::ReadFile(dir + "mine.sim"), before);
}

}  // namespace
}  // namespace galeris
