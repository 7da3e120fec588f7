// galeris-sim's solver commands end to end: a generated mine checks clean and solves, the
// solved file re-solves in one sweep, a broken network lists its faults and fails, and the
// command line never hangs on a network that will not converge.
#include <gtest/gtest.h>

#include <string>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

std::string LastLine(const std::string& text) {
  std::string t = text;
  while (!t.empty() && (t.back() == '\n' || t.back() == '\r')) t.pop_back();
  return t.substr(t.rfind('\n') == std::string::npos ? 0 : t.rfind('\n') + 1);
}

TEST(CliSimulate, GeneratedMineChecksSolvesAndResolvesInOneSweep) {
  const std::string dir = test::ScratchDir();
  ASSERT_EQ(RunSim("generate 400 -o '" + dir + "mine.sim'").status, 0);

  const CliOutcome check = RunSim("check '" + dir + "mine.sim'");
  EXPECT_EQ(check.status, 0) << check.err;
  EXPECT_EQ(LastLine(check.out).rfind("airways 400 nodes ", 0), 0u) << check.out;

  const CliOutcome solve =
      RunSim("solve '" + dir + "mine.sim' -o '" + dir + "solved.sim' --answer yes");
  EXPECT_EQ(solve.status, 0) << solve.err;
  EXPECT_NE(LastLine(solve.out).find("status clean"), std::string::npos) << solve.out;

  const CliOutcome again = RunSim("solve '" + dir + "solved.sim'");
  EXPECT_EQ(again.status, 0);
  EXPECT_NE(LastLine(again.out).find("sweeps 1 status clean continuity "), std::string::npos)
      << again.out;
  EXPECT_NE(LastLine(RunSim("check '" + dir + "solved.sim'").out).find(" m3/s loop "),
            std::string::npos);

  // Newton's method solves clean in the README's examples; an unknown method is bad usage.
  EXPECT_EQ(RunSim("solve '" + dir + "mine.sim' --method gauss").status, 3);
}

TEST(CliSimulate, DeadEndIsListedAndFails) {
  const std::string dir = test::ScratchDir();
  ASSERT_EQ(RunSim("generate 100 -o '" + dir + "mine.sim'").status, 0);
  // Append an airway that leads nowhere: its exit has no airway leaving it.
  std::string text = test::ReadFile(dir + "mine.sim");
  std::string record =
      "dead\tend\tBlind heading\t\t\t 1 \t 2 \t 3 \t 50 \t 60 \t 70 \t 4 \t 4 \t"
      " 1 \t 0 \t 0 \t 4 \t 0.01 \t 0 \t\t 0.1 \t 0 \t 0 \t 1 \t 100 \t 0 \t 0 \t"
      " 0 \t 0 \t 0 \t 0 \t 0 \t 9999 \t 0 \t 0 \t 1 \t 0 \t 0 \t 0\r\n";
  test::WriteFile(dir + "broken.sim", text + record);

  const CliOutcome check = RunSim("check '" + dir + "broken.sim'");
  EXPECT_EQ(check.status, 1);
  EXPECT_NE(check.out.find("9999\tNo exit from branch"), std::string::npos) << check.out;
  EXPECT_NE(check.out.find("9999\tNo entry into branch"), std::string::npos) << check.out;

  const CliOutcome solve = RunSim("solve '" + dir + "broken.sim'");
  EXPECT_EQ(solve.status, 1);
  EXPECT_NE(LastLine(solve.out).find("status failed"), std::string::npos) << solve.out;
}

TEST(CliSimulate, MaxRoundsBoundsTheYesAnswers) {
  const std::string dir = test::ScratchDir();
  ASSERT_EQ(RunSim("generate 3000 -o '" + dir + "mine.sim'").status, 0);
  // The generated limit of 500 sweeps is enough; 20 is not.
  std::string text = test::ReadFile(dir + "mine.sim");
  const std::size_t limit = text.find("\tSURFACE\t 500 \t");
  ASSERT_NE(limit, std::string::npos);
  test::WriteFile(dir + "mine.sim", text.replace(limit, 15, "\tSURFACE\t 20 \t"));
  const CliOutcome run = RunSim("solve '" + dir + "mine.sim' --answer yes --max-rounds 1");
  EXPECT_EQ(run.status, 2) << run.out << run.err;
  EXPECT_NE(run.err.find("Convergence Warning"), std::string::npos);
  EXPECT_NE(LastLine(run.out).find("status warnings"), std::string::npos) << run.out;
}

TEST(CliSimulate, BadUsageAndUnreadableInput) {
  EXPECT_EQ(RunSim("solve").status, 3);
  EXPECT_EQ(RunSim("solve /nonexistent/mine.sim").status, 3);
  EXPECT_EQ(RunSim("check /nonexistent/mine.sim").status, 3);
  EXPECT_EQ(RunSim("solve x.sim --mode sideways").status, 3);
  EXPECT_EQ(RunSim("frobnicate").status, 3);
}

}  // namespace
}  // namespace galeris
