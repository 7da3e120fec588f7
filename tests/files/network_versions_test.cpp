// Every version the reader accepts: each old file under fixtures/vNN loads and saves to the
// current version exactly as the mine.sim beside it, and that file reads back unchanged.
#include <gtest/gtest.h>

#include "files/network_file.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

using test::FileFixture;
using test::ReadFile;
using test::SourcePath;

const std::string kTotalPressures =
    "Galeris now has a 'TOTAL PRESSURE' estimating function for fan power calculation\n\n"
    "Allow Galeris to estimate fan diameters and use this function?  ";

struct VersionCase {
  const char* folder;
  bool asksTotalPressures;
};

class OldVersion : public testing::TestWithParam<VersionCase> {};

std::string Fixture(const std::string& folder, const std::string& name) {
  return SourcePath("tests/files/fixtures/" + folder + "/" + name);
}

bool LoadAnsweringYes(FileFixture& fx, const std::string& path) {
  fx.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
  fx.ws.net.FileName = path;
  return LoadNetwork(fx.ws);
}

// The old file saves as the mine.sim beside it, and that file reads back unchanged.
TEST_P(OldVersion, LoadsAndSavesAsTheCurrentFile) {
  const VersionCase& c = GetParam();
  const std::string folder = c.folder;
  const std::string expected = ReadFile(Fixture(folder, "mine.sim"));
  ASSERT_FALSE(expected.empty());
  FileFixture fx;
  ASSERT_TRUE(LoadAnsweringYes(fx, Fixture(folder, "mine_" + folder + ".sim")));
  EXPECT_TRUE(test::SameBytes(FormatNetworkFile(fx.ws), expected));
  EXPECT_EQ(fx.ui.MessageTexts(), c.asksTotalPressures ? std::vector<std::string>{kTotalPressures}
                                                       : std::vector<std::string>{});
  EXPECT_EQ(fx.ws.net.BranchCount, 5);
  FileFixture current;
  ASSERT_TRUE(LoadAnsweringYes(current, Fixture(folder, "mine.sim")));
  EXPECT_TRUE(test::SameBytes(FormatNetworkFile(current.ws), expected));
  EXPECT_TRUE(current.ui.MessageTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(Files, OldVersion,
                         testing::Values(VersionCase{"v10", false}, VersionCase{"v13", true},
                                         VersionCase{"v15", true}, VersionCase{"v20", true},
                                         VersionCase{"v23", true}, VersionCase{"v24", false},
                                         VersionCase{"v27", false}, VersionCase{"v28", false},
                                         VersionCase{"v29", false}),
                         [](const auto& info) { return std::string(info.param.folder); });

TEST(OldVersion, TotalPressuresAnsweredNoKeepsTheDiameter) {
  FileFixture fx;
  fx.ws.net.FileName = Fixture("v23", "mine_v23.sim");
  ASSERT_TRUE(LoadNetwork(fx.ws));
  EXPECT_EQ(fx.ui.Records()[0].title, "Total Pressures");
  EXPECT_EQ(fx.ws.net.FanDiameter[1], 0);
}

TEST(OldVersion, EveryVersionMergesBehindTheOpenNetwork) {
  for (const char* folder : {"v10", "v13", "v15", "v20", "v23", "v24", "v27", "v28", "v29"}) {
    FileFixture fx;
    test::BuildSampleNetwork(fx.ws);
    fx.ui.QueueAnswer(MsgAnswer::No);  // the merged fans join behind the open ones
    fx.ws.net.FileName = Fixture(folder, std::string("mine_") + folder + ".sim");
    fx.ws.MergeBase = static_cast<std::int16_t>(fx.ws.net.BranchCount + 1);
    ASSERT_TRUE(LoadNetwork(fx.ws)) << folder;
    EXPECT_EQ(fx.ws.net.BranchCount, 10) << folder;
    EXPECT_EQ(fx.ws.net.RLName[4], "Level 1") << folder;
    EXPECT_EQ(fx.ws.net.BranchName[10].Trimmed(), "Exhaust shaft") << folder;
    for (const auto& r : fx.ui.Records()) EXPECT_NE(r.title, "Error") << folder << r.text;
    const bool hasFans = std::string(folder) != "v13" && std::string(folder) != "v10";
    EXPECT_EQ(fx.ws.net.FanNumber[10], hasFans ? 3 : 1) << folder;  // behind fans 1 and 2
  }
}

TEST(OldVersion, TruncatedVersionOneAsksOnce) {
  const std::string bytes = ReadFile(Fixture("v10", "mine_v10.sim"));
  FileFixture fx;
  const std::string path = fx.dir + "cut_v10.sim";
  test::WriteFile(path, bytes.substr(0, bytes.find("\"Level 1\"")));  // in the level entries
  ASSERT_TRUE(LoadAnsweringYes(fx, path));
  EXPECT_EQ(
      fx.ui.MessageTexts(),
      std::vector<std::string>{"Error occured loading file\nDo you wish to continue loading?"});
  EXPECT_EQ(fx.ws.net.RLName[1], "SURFACE");
  EXPECT_EQ(fx.ws.net.BranchCount, 0);
}

TEST(OldVersion, VersionOneRecordsMayShareLinesAndEndInBlankLines) {
  std::string bytes = ReadFile(Fixture("v10", "mine_v10.sim"));
  const std::size_t records = bytes.find("\"Intake collar\"");
  std::string tail = bytes.substr(records);
  for (std::size_t at = tail.find("\r\n"); at != std::string::npos; at = tail.find("\r\n"))
    tail.replace(at, 2, ",");
  bytes = bytes.substr(0, records) + tail.substr(0, tail.size() - 1) + "\r\n\r\n\r\n";
  FileFixture fx;
  const std::string path = fx.dir + "one_line_v10.sim";
  test::WriteFile(path, bytes);
  fx.ws.net.FileName = path;
  ASSERT_TRUE(LoadNetwork(fx.ws));
  EXPECT_TRUE(fx.ui.MessageTexts().empty());
  EXPECT_EQ(fx.ws.net.BranchCount, 5);
  EXPECT_EQ(fx.ws.net.Pressure[5], -1500);
}

TEST(CurrentVersion, ExampleMineReadsBackByteIdentical) {
  FileFixture fx;
  const std::string path = SourcePath("examples/example_mine.sim");
  fx.ws.net.FanDatabaseSerial = 1;  // the header carries the open database's serial, not the file's
  fx.ws.net.FileName = path;
  ASSERT_TRUE(LoadNetwork(fx.ws));
  EXPECT_TRUE(fx.ui.MessageTexts().empty());
  EXPECT_EQ(fx.ws.net.BranchCount, 107);
  EXPECT_TRUE(test::SameBytes(FormatNetworkFile(fx.ws), ReadFile(path)));
}

}  // namespace
}  // namespace galeris
