// Replays every file under tests/fuzz_replay/<reader>/ through that reader: the inputs that once
// crashed or hung a reader, and a few ordinary seeds. A new find needs only its file dropped in.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/reader_harness.h"

namespace galeris {
namespace {

namespace fs = std::filesystem;

struct Replay {
  std::string reader;
  fs::path file;
};

// Test listings name the file, not the bytes of the struct.
void PrintTo(const Replay& r, std::ostream* os) {
  *os << r.reader << "/" << r.file.filename().string();
}

const fs::path kReplayFolder = fs::path(GALERIS_TEST_SOURCE) / "tests" / "fuzz_replay";

std::vector<Replay> AllReplays() {
  std::vector<Replay> replays;
  for (const std::string& reader : fuzz::ReaderNames()) {
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(kReplayFolder / reader, ec))
      if (entry.is_regular_file()) replays.push_back({reader, entry.path()});
  }
  std::sort(replays.begin(), replays.end(),
            [](const Replay& a, const Replay& b) { return a.file < b.file; });
  return replays;
}

class FuzzReplay : public testing::TestWithParam<Replay> {};

TEST_P(FuzzReplay, ReaderSurvivesTheFile) {
  std::ifstream in(GetParam().file, std::ios::binary);
  ASSERT_TRUE(in) << GetParam().file;
  const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  fuzz::RunReader(GetParam().reader, bytes);
}

INSTANTIATE_TEST_SUITE_P(Files, FuzzReplay, testing::ValuesIn(AllReplays()),
                         [](const testing::TestParamInfo<Replay>& info) {
                           std::string name =
                               info.param.reader + "_" + info.param.file.filename().string();
                           std::replace_if(
                               name.begin(), name.end(),
                               [](unsigned char c) { return !std::isalnum(c); }, '_');
                           return name;
                         });

TEST(FuzzReplayFolders, EveryReaderHasAFile) {
  const std::vector<Replay> replays = AllReplays();
  for (const std::string& reader : fuzz::ReaderNames())
    EXPECT_TRUE(std::any_of(replays.begin(), replays.end(), [&](const Replay& r) {
      return r.reader == reader;
    })) << reader;
}

}  // namespace
}  // namespace galeris
