// galeris-sim run as the user runs it, beyond the README's examples: resave's questions, check
// and solve on generated mines, import and export through both formats, smoke and summary, and
// the monitor's stop by SIGTERM. Bad usage and unreadable input end with status 3.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

std::string Example() {
  return "'" + test::SourcePath("examples/example_mine.sim") + "'";
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
  const CliOutcome run = RunSim("resave '" + dir + "junk.sim' -o '" + dir + "o.sim'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("Not a GALERIS File - Action Aborted"), std::string::npos);
  EXPECT_EQ(RunSim("resave '" + dir + "missing.sim' -o '" + dir + "o.sim'").status, 3);
  EXPECT_EQ(RunSim("resave " + Fixture("v24/mine.sim")).status, 3);
  EXPECT_EQ(RunSim("resave").status, 3);
  EXPECT_EQ(RunSim("resave " + Fixture("v24/mine.sim") + " -o '" + dir + "no/folder/o.sim'").status,
            1);
}

std::string LastLine(const std::string& text) {
  std::string t = text;
  while (!t.empty() && (t.back() == '\n' || t.back() == '\r')) t.pop_back();
  return t.substr(t.rfind('\n') == std::string::npos ? 0 : t.rfind('\n') + 1);
}

// The airways of a network as "X1 Y1 Z1 X2 Y2 Z2" lines, sorted: its text export's first six
// columns.
std::vector<std::string> DirectedAirways(const std::string& network, const std::string& dir) {
  EXPECT_EQ(RunSim("export '" + network + "' -o '" + dir + "ends.txt'").status, 0);
  std::vector<std::string> ends;
  std::istringstream lines(test::ReadFile(dir + "ends.txt"));
  std::string line;
  std::getline(lines, line);  // the heads
  while (std::getline(lines, line)) {
    std::size_t cut = 0;
    for (int column = 0; column < 6 && cut != std::string::npos; ++column)
      cut = line.find('\t', cut + 1);
    ends.push_back(line.substr(0, cut));
  }
  std::sort(ends.begin(), ends.end());
  return ends;
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

  // The generated airways already point along their flow: the solve turned none round.
  EXPECT_EQ(DirectedAirways(dir + "mine.sim", dir), DirectedAirways(dir + "solved.sim", dir));

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
  EXPECT_NE(LastLine(RunSim("solve '" + dir + "broken.sim'").out).find("status failed"),
            std::string::npos);
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

TEST(CliExchange, MineOutAndBackInThroughBothFormats) {
  const std::string dir = test::ScratchDir();
  const std::string mine = Example() + " -o '" + dir;
  for (const std::string ending : {"txt", "dxf"}) {
    const std::string file = "'" + dir + "mine." + ending + "'";
    ASSERT_EQ(RunSim("export " + mine + "mine." + ending + "'").status, 0);
    CliOutcome run = RunSim("import " + file + " -o '" + dir + "back.sim' --levels --answer yes");
    EXPECT_NE(run.out.find("Imported 107 airways"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("Surface Level: Place highest RL data on surface level?"),
              std::string::npos);
    run = RunSim("import " + file + " -o '" + dir + "twice.sim' --merge '" + dir +
                 "back.sim' --offset 1000,0,0 --negate y");
    EXPECT_NE(run.out.find("Imported 214 airways"), std::string::npos) << run.err;
  }
  EXPECT_EQ(RunSim("export " + mine + "iso.dxf' --screen 'Iso View'").status, 0);
  EXPECT_NE(test::ReadFile(dir + "iso.dxf").find("ENTITIES"), std::string::npos);

  for (const std::string& bad :
       {"export " + mine + "x.doc'", "export " + mine + "x.dxf' --screen No",
        "export " + mine + "x.txt' --screen 'Iso View'", "import " + mine + "x.sim' --negate q",
        "import " + mine + "x.sim'", "import '" + dir + "none.dxf' -o '" + dir + "x.sim'"})
    EXPECT_EQ(RunSim(bad).status, 3) << bad;
}

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
