// The fan database: fansdata.dat in both its forms, its serial, growing the fan store, and the
// fan list of a network file with its size message and its merge question.
#include <gtest/gtest.h>

#include "files/fan_database.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

using test::FileFixture;
using test::ReadFile;
using test::WriteFile;

void PutFan(Network& net, int slot, const std::string& name, float scale) {
  net.FanName[slot] = name;
  net.FanDiameter[slot] = 1.5f * scale;
  for (int p = 1; p <= 10; ++p) {
    net.CurveQ[slot][p] = 5.0f * p * scale;
    net.CurveP[slot][p][1] = (1000.0f - 80.0f * p) * scale;
    net.CurveP[slot][p][2] = (1050.0f - 75.0f * p) * scale;
    net.CurveEff[slot][p] = static_cast<std::int16_t>(40 + 4 * p);
  }
}

TEST(FanDatabase, SavesWithTheSerialRaisedAndReadsBack) {
  FileFixture fx;
  PutFan(fx.ws.net, 1, "Axial 2.4 m", 1);
  PutFan(fx.ws.net, 7, "Booster", 0.5f);
  fx.ws.net.FanName[3] = "Nameless curve";  // no first-point pressures: not in use
  fx.ws.net.FanDatabaseSerial = 41;
  ASSERT_TRUE(SaveFanDatabase(fx.ws));
  EXPECT_EQ(fx.ws.net.FanDatabaseSerial, 42);
  const std::string bytes = ReadFile(fx.dir + "fansdata.dat");
  EXPECT_EQ(
      bytes.substr(0, bytes.find(" 1 \tAxial")),
      "2.6 GALERIS\t 42 \r\nFan Number\tFan Name\tFan Effective Diameter\r\n"
      "Point\tStatic Pressure (Pa)\tQuantity (m3/s)\tEfficiency (%)\tTotal Pressure (Pa)\r\n");
  EXPECT_NE(bytes.find(" 1 \tAxial 2.4 m\t 1.5 \r\n 1 \t 920 \t 5 \t 44 \t 975 \r\n"),
            std::string::npos);
  EXPECT_EQ(bytes.find("Nameless"), std::string::npos);

  FileFixture other;
  other.ws.paths = fx.ws.paths;
  other.ws.net.FanName[5] = "stale";
  LoadFanDatabase(other.ws);
  EXPECT_EQ(other.ws.net.FanDatabaseSerial, 42);
  EXPECT_EQ(other.ws.net.FanName[1], "Axial 2.4 m");
  EXPECT_EQ(other.ws.net.FanName[5], "");
  EXPECT_EQ(other.ws.net.CurveP[7][10][2], 150);
  EXPECT_TRUE(other.ui.MessageTexts().empty());
}

TEST(FanDatabase, MoreFansThanTheStoreGrowsIt) {
  FileFixture fx;
  std::string text =
      "2.6 GALERIS\t 3 \r\nFan Number\tFan Name\tFan Effective Diameter\t 300 \r\n"
      "Point\tStatic\r\n 290 \tBig list fan\t 2 \r\n";
  for (int p = 1; p <= 10; ++p)
    text += " " + std::to_string(p) + " \t 100 \t " + std::to_string(p) + " \t 50 \t\r\n";
  WriteFile(fx.dir + "fansdata.dat", text);
  LoadFanDatabase(fx.ws);
  EXPECT_EQ(fx.ws.net.FanMax, 300);
  EXPECT_GE(fx.ws.net.FanName.size(), 301u);
  EXPECT_EQ(fx.ws.net.FanName[290], "Big list fan");
  EXPECT_EQ(fx.ws.net.CurveP[290][4][2], 0);  // no total pressure given
  EXPECT_EQ(fx.ws.net.CurveQ[290][4], 4);
}

TEST(FanDatabase, VersionOneHasNameThenTenPairs) {
  FileFixture fx;
  std::string text = "1.0 GALERIS\r\n\"Old axial\"";
  for (int p = 1; p <= 10; ++p)
    text += "," + std::to_string(p * 10) + "," + std::to_string(1000 - p);
  text += "\r\n\"Second\",1,2\r\n";
  WriteFile(fx.dir + "fansdata.dat", text);
  LoadFanDatabase(fx.ws);
  EXPECT_EQ(fx.ws.net.CurveQ[1][10], 100);
  EXPECT_EQ(fx.ws.net.CurveP[1][10][1], 990);
  EXPECT_EQ(fx.ws.net.FanName[2], "Second");
  EXPECT_EQ(fx.ws.net.CurveP[2][1][1], 2);
}

TEST(FanDatabase, DamagedFileKeepsWhatWasRead) {
  FileFixture fx;
  PutFan(fx.ws.net, 1, "Good", 1);
  PutFan(fx.ws.net, 2, "Cut short", 1);
  ASSERT_TRUE(SaveFanDatabase(fx.ws));
  std::string bytes = ReadFile(fx.dir + "fansdata.dat");
  bytes = bytes.substr(0, bytes.find("Cut short") + 40) + "\r\n\x01garbage";
  WriteFile(fx.dir + "fansdata.dat", bytes);
  FileFixture other;
  other.ws.paths = fx.ws.paths;
  LoadFanDatabase(other.ws);
  EXPECT_EQ(other.ws.net.FanName[1], "Good");
  EXPECT_TRUE(other.ui.Records().empty());
}

std::string Written(const std::string& path, const std::string& text) {
  WriteFile(path, text);
  return path;
}

// A network file's list read on its own: the list, then what follows it.
struct ListFile {
  ListFile(FileFixture& fx, const std::string& text)
      : path(Written(fx.dir + "list.sim", text)), reader(fx.ui, path) {
    reader.version = 3.1f;
  }
  std::string path;
  NetworkReader reader;
};

std::string FanLines(const std::string& name, int slot) {
  std::string text = name + "\t 2 \t " + std::to_string(slot) + " \r\n";
  for (int p = 1; p <= 10; ++p)
    text += " " + std::to_string(p) + " \t 500 \t " + std::to_string(p) + " \t 60 \t 520 \r\n";
  return text;
}

// Fewer lines than the count leave the other slots; a full list has its end line taken too;
// slot zero means the running count.
TEST(FanList, ListEndsAtTheEndLineOrTheCount) {
  for (auto [count, slot] : {std::pair{250, 1}, {2, 1}, {250, 0}}) {
    FileFixture fx;
    fx.ws.net.FanDiameter[3] = 7;
    ListFile file(fx, FanLines("One", slot) + FanLines("Two", slot ? 2 : 0) +
                          "**End of Fan Database**\r\nNEXT\r\n");
    EXPECT_EQ(ReadFanList(fx.ws, file.reader, count, false), 0) << count << slot;
    EXPECT_EQ(fx.ws.net.FanName[2], "Two") << count << slot;
    EXPECT_EQ(fx.ws.net.CurveP[2][3][2], 520);
    EXPECT_EQ(fx.ws.net.FanDiameter[3], 7);
    file.reader.Next();
    EXPECT_EQ(file.reader.line, "NEXT") << count << slot;
  }
}

TEST(FanList, SlotAboveTheStoreStopsTheListAtOnce) {
  FileFixture fx;
  fx.ws.net.FanMax = 2;
  ResizeStore(fx.ws.net);
  ListFile file(fx, FanLines("One", 1) + FanLines("Nine", 9) + "**End of Fan Database**\r\n");
  ReadFanList(fx.ws, file.reader, 250, false);
  EXPECT_EQ(fx.ui.MessageTexts(),
            std::vector<std::string>{"Fan database default size is smaller than the file size !\n"
                                     "Any fans above fan 2 will be deleted"});
  EXPECT_EQ(fx.ws.net.FanName[1], "One");
  file.reader.Next();  // the unread point lines are left for whatever reads next
  EXPECT_EQ(file.reader.line.substr(0, 5), " 1 \t ");
}

TEST(FanList, WrittenListReadsBack) {
  FileFixture fx;
  PutFan(fx.ws.net, 2, "Main", 1);
  PutFan(fx.ws.net, 5, "Aux", 0.25f);
  const std::string list = FormatNetworkFanList(fx.ws.net);
  EXPECT_EQ(list.substr(0, list.find("\r\n")),
            "Fan Name/Point\tPressure Pa\tQuantity m3/s\tMax Fans=\t 250 ");
  EXPECT_NE(list.find("Aux\t 0.375 \t 5 \r\n"), std::string::npos);
  FileFixture other;
  ListFile file(other, list.substr(list.find("\r\n") + 2));
  ReadFanList(other.ws, file.reader, 250, false);
  EXPECT_EQ(FormatNetworkFanList(other.ws.net), list);
}

TEST(FanList, MergeAsksAndOffsetsBehindTheFirstEmptySlot) {
  FileFixture fx;
  PutFan(fx.ws.net, 1, "Open one", 1);
  PutFan(fx.ws.net, 2, "Open two", 1);
  fx.ws.MergeBase = 10;
  fx.ui.QueueAnswer(MsgAnswer::No);
  ListFile file(fx, FanLines("Merged", 1) + "**End of Fan Database**\r\n");
  EXPECT_EQ(ReadFanList(fx.ws, file.reader, 250, false), 2);
  EXPECT_EQ(fx.ui.Records()[0].title, "Merge fan database");
  EXPECT_EQ(fx.ws.net.FanName[3], "Merged");
  EXPECT_EQ(fx.ws.net.FanName[1], "Open one");

  FileFixture keep;
  keep.ws.MergeBase = 10;
  keep.ui.QueueAnswer(MsgAnswer::Yes);
  ListFile kept(keep, FanLines("Merged", 1) + "**End of Fan Database**\r\nNEXT\r\n");
  EXPECT_EQ(ReadFanList(keep.ws, kept.reader, 250, false), 0);
  EXPECT_EQ(keep.ws.net.FanName[1], "");
  kept.reader.Next();
  EXPECT_EQ(kept.reader.line, "NEXT");
}

}  // namespace
}  // namespace galeris
