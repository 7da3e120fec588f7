// Real-time stations and output: Remotes.dat, the station file's bad input, what a reading
// does to its airway, and the output file. The monitor loop itself runs in the command-line
// tests.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <sstream>

#include "core/headless_ui.h"
#include "files/network_file.h"
#include "files/text_format.h"
#include "realtime/realtime_output.h"
#include "realtime/remotes_file.h"
#include "realtime/station_form.h"
#include "realtime/stations.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

std::string StationFile(const std::string& lines) {
  return "Q\tCO\r\nunits\r\n" + lines;
}

std::vector<std::string> SplitLines(const std::string& bytes) {
  std::vector<std::string> lines;
  std::istringstream in(bytes);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

struct Realtime : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  RemoteStations& st = ws.remote;
  std::string dir = test::ScratchDir();
  int beeps = 0;

  void SetUp() override {
    ws.paths.ProgramFolder = dir;
    st.RemoteSource = dir + "Galeris.rem";
    st.Beep = [this] { ++beeps; };
  }
  void LoadExample() {
    ws.net.FileName = test::SourcePath("examples/example_mine.sim");
    ASSERT_TRUE(LoadNetwork(ws));
  }
  bool Fixed(int i) { return (ws.net.BranchCode[i] & Bit::FixedQuantity) != 0; }
};

TEST_F(Realtime, RemotesDatRoundTripKeepsEveryFieldAndTheLastSettings) {
  st.StationName[3] = "Vent Raise";
  st.ChannelUnit[2][3] = "%";
  st.ChannelMult[2][3] = 0.25f;
  st.AlarmHigh[5][50] = 23.5f;
  st.UpdateQ[3] = -1;
  st.RemoteResim = st.AlarmsOn = true;
  st.OutputFile = dir + "out, new.txt";  // a comma is no decimal mark in a path
  st.OutputInterval = 7;
  ASSERT_TRUE(SaveRemotes(ws));
  const std::string written = test::ReadFile(dir + kRemotesFileName);
  const auto lines = SplitLines(written);
  HeadlessUi ui2;
  Workspace again(ui2);
  again.paths.ProgramFolder = dir;
  LoadRemotes(again);
  EXPECT_EQ(FormatRemotes(again.remote), written);

  // Reading stops at a blank line; the settings of the last line read stand.
  test::WriteFile(dir + kRemotesFileName, lines[0] + "\n" + lines[1] + "\n\n" + lines[2] + "\n");
  Workspace cut(ui2);
  cut.paths.ProgramFolder = dir;
  LoadRemotes(cut);
  EXPECT_TRUE(cut.remote.StationName[3].empty());
  EXPECT_EQ(cut.remote.OutputInterval, 7);
}

TEST_F(Realtime, StationFieldsShowZeroLimitsEmptyAndStoreOnlyNumbers) {
  st.AlarmHigh[1][9] = 4;
  StationFields f = ShowStationFields(st, 9);
  EXPECT_EQ(f.Channels.Low[1], "");
  EXPECT_EQ(f.Channels.High[1], "4");
  f.Channels.High[1] = "";    // empty keeps the limit
  f.Channels.Low[1] = "abc";  // not a number keeps it too
  f.Channels.Mult[1] = "0.5";
  f.RemoteInterval = "0";  // no interval of nothing
  StoreStationFields(st, 9, f);
  EXPECT_EQ(st.AlarmHigh[1][9], 4);
  EXPECT_EQ(st.AlarmLow[1][9], 0);
  EXPECT_EQ(st.ChannelMult[1][9], 0.5f);
  EXPECT_EQ(st.RemoteInterval, 10);
  ApplyRealOut(st, "flows", "2");
  EXPECT_EQ(st.OutputFile, "flows.txt");
}

TEST_F(Realtime, BadStationFilesKeepTheLastGoodReadings) {
  std::string why;
  int count = 0;
  // A logger's readings read as their leading number, and fields a short line leaves off as 0.
  st.ChannelRaw[5][7] = st.ChannelRaw[1][9] = 99;
  test::WriteFile(st.RemoteSource,
                  StationFile("7\ta\tb\t12\tN/A\t12.6ppm\t\r\n9.4\ta\r\n3 pump\ta\tb\t-1.5e1\r\n"));
  ASSERT_TRUE(ReadStationFile(st, st.RemoteSource, why, count)) << why;
  EXPECT_EQ(count, 3);
  const std::array<std::int32_t, 5> station7{12, 0, 13, 0, 0};
  for (int k = 1; k <= kStationChannels; ++k) EXPECT_EQ(st.ChannelRaw[k][7], station7[k - 1]);
  EXPECT_EQ(st.ChannelRaw[1][9], 0);
  EXPECT_EQ(st.ChannelRaw[1][3], -15);
  const struct {
    const char* bytes;
    const char* why;
  } cases[] = {
      {nullptr, "cannot open"},
      {"only one line\r\n", "heading"},
      {"Q\r\nu\r\n7\ta\tb\t1\t2\t3\t4\t5\r\n0\ta\tb\t1\t2\t3\t4\t5\r\n", "from 1 to 50"},
      {"Q\r\nu\r\nN/A\ta\tb\t1\r\n", "from 1 to 50"},
      {"Q\r\nu\r\n7\ta\tb\t1\t3e12\r\n", "too large"},
  };
  for (const auto& c : cases) {
    std::filesystem::remove(st.RemoteSource);
    if (c.bytes) test::WriteFile(st.RemoteSource, c.bytes);
    EXPECT_FALSE(ReadStationFile(st, st.RemoteSource, why, count)) << c.why;
    EXPECT_NE(why.find(c.why), std::string::npos) << why;
    EXPECT_EQ(st.ChannelRaw[1][7], 12) << c.why;
  }

  // The timer's read: one critical box, and monitoring is off, so the next tick is silent.
  st.RemoteRunning = true;
  EXPECT_FALSE(ReadStations(ws));
  EXPECT_FALSE(st.RemoteRunning);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgStationFile});
  EXPECT_EQ(ui.Records().back().icon, MsgIcon::Critical);
}

TEST_F(Realtime, TheFirstChannelFixesOrFreesItsAirwayAndAlarmsTakeSides) {
  const int i = test::AddAirway(ws.net, 0, 0, 0, 100, 0, 0);  // 4 x 4 m, R 0.01
  ws.net.RemoteStation[i] = 4;
  st.UpdateQ[4] = -1;
  const struct {
    const char* channel;
    std::int32_t raw;
    float quantity;
    bool fixed;
  } readings[] = {{"Quantity", 30, 30, true},
                  {"velocity", 2, 32, true},
                  {"PRESSURE", 9, 30, true},
                  {"Quantity", 0, 0, false}};
  for (const auto& r : readings) {
    st.ChannelName[1][4] = r.channel;
    st.ChannelRaw[1][4] = r.raw;
    ApplyStations(ws);
    EXPECT_FLOAT_EQ(ws.net.Quantity[i], r.quantity) << r.channel;
    EXPECT_EQ(Fixed(i), r.fixed) << r.channel;
  }
  // A station that does not control its airway frees it at the next pass.
  st.ChannelRaw[1][4] = 30;
  ApplyStations(ws);
  st.UpdateQ[4] = 0;
  EXPECT_EQ(ApplyStations(ws), 0);
  EXPECT_FALSE(Fixed(i));

  // Alarms: a limit of 0 is no limit; a reading past both limits shows blue.
  st.AlarmsOn = true;
  st.ChannelAbbrev[2][4] = "CO";
  st.ChannelUnit[2][4] = "ppm";
  st.ChannelMult[2][4] = 0.5f;
  const struct {
    std::int32_t raw;
    float low, high;
    int alarm;
  } alarms[] = {{10, 6, 0, -1}, {10, 0, 4, 1}, {-10, 0, 0, 0}, {10, 5, 5, 0}, {10, 6, 4, 1}};
  for (const auto& a : alarms) {
    st.ChannelRaw[2][4] = a.raw;
    st.AlarmLow[2][4] = a.low;
    st.AlarmHigh[2][4] = a.high;
    const auto box = ShowStationOf(ws, i);
    ASSERT_EQ(box.size(), 6u);
    EXPECT_EQ(box[2].alarm, a.alarm) << a.raw << " " << a.low << " " << a.high;
  }
  // The bell rings in the pass over every station airway after a read, whether a view shows
  // the airway or not, once for each limit passed.
  ApplyStations(ws);
  EXPECT_EQ(beeps, 0);
  st.SoundAlarms = true;
  ApplyStations(ws);
  EXPECT_EQ(beeps, 2);
  EXPECT_EQ(ShowStationOf(ws, i)[2].text, "CO  5.0 ppm");
  EXPECT_EQ(beeps, 2);
}

// An outside reader of the output file: every read must be a whole file.
bool WholeOutput(const std::string& bytes, int airways) {
  if (bytes.size() < 2 || bytes.substr(bytes.size() - 2) != "\r\n") return false;
  const auto lines = SplitLines(bytes);
  if (static_cast<int>(lines.size()) != airways + 1) return false;
  return std::all_of(lines.begin(), lines.end(), [](const std::string& l) {
    return std::count(l.begin(), l.end(), '\t') == kOutputColumns - 1;
  });
}

TEST_F(Realtime, OutputFileHas27ColumnsAndOneMessagePerRunOfFailures) {
  EXPECT_EQ(SplitLines(FormatRealtimeOutput(ws.net)).size(), 1u);

  LoadExample();
  st.OutputFile = dir + "no such folder/out.txt";
  EXPECT_FALSE(WriteRealtimeOutput(ws));
  EXPECT_FALSE(WriteRealtimeOutput(ws));
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgOutputWrite});
  st.OutputFile = dir + "out.txt";
  ASSERT_TRUE(WriteRealtimeOutput(ws));
  const std::string bytes = test::ReadFile(st.OutputFile);
  EXPECT_TRUE(WholeOutput(bytes, ws.net.BranchCount));
  EXPECT_EQ(bytes.substr(0, 10), "Branch No\t");
}

}  // namespace
}  // namespace galeris
