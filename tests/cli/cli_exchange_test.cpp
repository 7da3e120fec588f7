// galeris-sim import and export: a mine out to text and DXF and back in, merged and levelled,
// and the faults of usage and input that end with status 3.
#include <gtest/gtest.h>

#include <string>

#include "tests/cli/cli_run.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

TEST(CliExchange, MineOutAndBackInThroughBothFormats) {
  const std::string dir = test::ScratchDir();
  const std::string mine = "'" + test::SourcePath("examples/example_mine.sim") + "' -o '" + dir;
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

}  // namespace
}  // namespace galeris
