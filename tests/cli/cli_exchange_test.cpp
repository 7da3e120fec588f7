// galeris-sim import and export: a mine out to text and DXF and back in, merged, levelled,
// and the usage and input faults that end with status 3.
#include <gtest/gtest.h>

#include <string>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

TEST(CliExchange, MineOutAndBackInThroughBothFormats) {
  const std::string dir = test::ScratchDir();
  const std::string mine = "'" + test::SourcePath("examples/example_mine.sim") + "'";
  for (const char* ending : {"txt", "dxf"}) {
    const std::string file = "'" + dir + "mine." + ending + "'";
    CliOutcome run = RunSim("export " + mine + " -o " + file);
    ASSERT_EQ(run.status, 0) << run.err;
    run = RunSim("import " + file + " -o '" + dir + "back.sim' --levels --answer yes");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Imported 107 airways"), std::string::npos) << run.out;
    EXPECT_NE(run.err.find("Surface Level: Place highest RL data on surface level?"),
              std::string::npos);
    run = RunSim("import " + file + " -o '" + dir + "twice.sim' --merge '" + dir +
                 "back.sim' --offset 1000,0,0 --negate y");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Imported 214 airways"), std::string::npos) << run.out;
  }
  const CliOutcome screen =
      RunSim("export " + mine + " -o '" + dir + "iso.dxf' --screen 'Iso View'");
  EXPECT_EQ(screen.status, 0) << screen.err;
  EXPECT_NE(test::ReadFile(dir + "iso.dxf").find("ENTITIES"), std::string::npos);
}

TEST(CliExchange, BadUsageAndInput) {
  const std::string dir = test::ScratchDir();
  const std::string mine = "'" + test::SourcePath("examples/example_mine.sim") + "'";
  EXPECT_EQ(RunSim("export " + mine + " -o '" + dir + "x.doc'").status, 3);
  EXPECT_EQ(RunSim("export " + mine + " -o '" + dir + "x.txt' --screen 'Iso View'").status, 3);
  EXPECT_EQ(RunSim("export " + mine + " -o '" + dir + "x.dxf' --screen Nowhere").status, 3);
  EXPECT_EQ(RunSim("import " + mine + " -o '" + dir + "x.sim' --negate q").status, 3);
  const CliOutcome missing = RunSim("import '" + dir + "none.dxf' -o '" + dir + "x.sim'");
  EXPECT_EQ(missing.status, 3);
  EXPECT_NE(missing.err.find("ERROR 53: That file doesn't exist."), std::string::npos);
  const CliOutcome unknown = RunSim("import " + mine + " -o '" + dir + "x.sim'");
  EXPECT_EQ(unknown.status, 3);
  EXPECT_NE(unknown.err.find("Unknown file type"), std::string::npos);
}

}  // namespace
}  // namespace galeris
