// The program's life on the engine side: start-up loads, New, Open, Save As, the recovery file
// and its timer, the questions at exit and the recent-file list.
#include <gtest/gtest.h>

#include <filesystem>

#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

using test::FileFixture;
using test::ReadFile;
using test::WriteFile;

bool Exists(const std::string& path) {
  return std::filesystem::exists(path);
}

TEST(Lifecycle, CommandLineNamesEndInSimOrSmm) {
  for (const char* name : {"/a/b/mine.sim", "MINE.SMM", "x.SiM"})
    EXPECT_TRUE(IsNetworkFileName(name));
  for (const char* name : {"mine.dxf", "sim", ""}) EXPECT_FALSE(IsNetworkFileName(name));
}

TEST(RecentFiles, NewNamesPushTheOldestOut) {
  FileFixture fx;
  for (int i = 1; i <= 10; ++i) PushRecentFile(fx.ws, "f" + std::to_string(i));
  PushRecentFile(fx.ws, "f8");  // entry 3 moves to the head, the others keep their order
  EXPECT_EQ(std::vector<std::string>(fx.ws.RecentFiles.begin() + 1, fx.ws.RecentFiles.end()),
            (std::vector<std::string>{"f8", "f10", "f9", "f7", "f6", "f5", "f4", "f3", "f2"}));
}

TEST(RecentFiles, OldListFileIsReadOnceAndDeleted) {
  FileFixture fx;
  EXPECT_FALSE(ReadOldRecentList(fx.ws));
  WriteFile(fx.dir + "Galeris.old", "a.sim\r\nb.sim\r\nc.sim\r\nd.sim\r\ne.sim\r\n");
  EXPECT_TRUE(ReadOldRecentList(fx.ws));
  EXPECT_EQ(std::vector<std::string>(fx.ws.RecentFiles.begin() + 1, fx.ws.RecentFiles.begin() + 6),
            (std::vector<std::string>{"a.sim", "b.sim", "c.sim", "d.sim", ""}));
  EXPECT_FALSE(Exists(fx.dir + "Galeris.old"));
}

TEST(Lifecycle, StartUpLoadsTheSettingsFilesInOrder) {
  FileFixture fx;
  FileFixture maker;
  maker.ws.paths = fx.ws.paths;
  maker.ws.net.FanName[4] = "From the database";
  maker.ws.net.CurveP[4][1][1] = 100;
  ASSERT_TRUE(SaveFanDatabase(maker.ws));
  StartUp(fx.ws);
  EXPECT_EQ(fx.ws.net.FanName[4], "From the database");
  EXPECT_EQ(fx.ws.net.RLName[2], "U/Ground");
  EXPECT_EQ(fx.ws.defaults.ResName[2], "Steel Door");
}

TEST(Lifecycle, NewAsksWhenThereIsSomethingToLose) {
  FileFixture fx;
  EXPECT_TRUE(NewNetwork(fx.ws));  // nothing there: no question
  EXPECT_TRUE(fx.ui.Records().empty());
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.ViewName[1] = " 1. Default View";
  fx.ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(NewNetwork(fx.ws));
  EXPECT_EQ(fx.ui.Records()[0].title + ": " + fx.ui.Records()[0].text,
            "Data Exists: Current Data will be lost ?");
  EXPECT_EQ(fx.ui.Records()[0].buttons, MsgButtons::OKCancel);
  EXPECT_EQ(fx.ws.net.BranchCount, 5);
  fx.ui.QueueAnswer(MsgAnswer::OK);
  EXPECT_TRUE(NewNetwork(fx.ws));
  EXPECT_EQ(fx.ws.net.BranchCount, 0);
  EXPECT_EQ(fx.ws.net.ViewName[1], " 1. Default View");  // the permanent views stay
}

TEST(Lifecycle, SaveChangesFirstAnswers) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  bool saveAs = false;
  fx.ws.net.NetworkSaved = 0xFF;
  EXPECT_TRUE(SaveChangesFirst(fx.ws, "Network Data is not saved - Save it?", saveAs));
  EXPECT_TRUE(fx.ui.Records().empty());
  MarkNetworkChanged(fx.ws);
  fx.ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(SaveChangesFirst(fx.ws, "Network Data is not saved - Save it?", saveAs));
  EXPECT_EQ(fx.ui.Records()[0].buttons, MsgButtons::YesNoCancel);
  fx.ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(SaveChangesFirst(fx.ws, "Network Data is not saved - Save it?", saveAs));
  EXPECT_TRUE(saveAs);  // no name yet: Save As is the caller's
  fx.ws.net.FileName = fx.dir + "named.sim";
  fx.ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(SaveChangesFirst(fx.ws, "Network Data is not saved - Save it?", saveAs));
  EXPECT_FALSE(saveAs);
  EXPECT_TRUE(Exists(fx.dir + "named.sim"));
  EXPECT_EQ(fx.ws.net.NetworkSaved, 0xFF);
}

TEST(Lifecycle, SaveAsRefusesBadNames) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  EXPECT_FALSE(SaveNetworkAs(fx.ws, ""));
  EXPECT_FALSE(SaveNetworkAs(fx.ws, fx.dir));
  EXPECT_FALSE(SaveNetworkAs(fx.ws, fx.dir + "no/such/folder/x.sim"));
  for (const auto& text : fx.ui.MessageTexts()) EXPECT_EQ(text, "Error Save File - Check Name");
  EXPECT_EQ(fx.ui.MessageTexts().size(), 3u);
  EXPECT_EQ(fx.ws.net.FileName, "");
  EXPECT_TRUE(SaveNetworkAs(fx.ws, fx.dir + "good.sim"));
  EXPECT_EQ(fx.ws.net.FileName, fx.dir + "good.sim");
  EXPECT_FALSE(fx.ws.MasterMode);
}

TEST(Recovery, AutosaveWritesEveryEleventhTickWithoutTouchingTheNetwork) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.FileName = fx.dir + "mine.sim";
  MarkNetworkChanged(fx.ws);
  int ticks = 0;
  AutosaveTick(fx.ws, ticks);
  EXPECT_EQ(ticks, 0);  // auto-save is off
  fx.ws.defaults.AutoSaveMinutes = 5;
  for (int i = 0; i < 10; ++i) AutosaveTick(fx.ws, ticks);
  EXPECT_FALSE(Exists(fx.dir + "tempsim.sim"));
  AutosaveTick(fx.ws, ticks);
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(Exists(fx.dir + "tempsim.sim"));
  EXPECT_EQ(fx.ws.net.FileName, fx.dir + "mine.sim");
  EXPECT_EQ(fx.ws.net.NetworkSaved, 0);
  EXPECT_TRUE(fx.ui.Records().empty());
}

TEST(Recovery, OfferedAtStartAndReloadedWithoutAName) {
  FileFixture fx;
  EXPECT_FALSE(OfferRecovery(fx.ws));
  EXPECT_TRUE(fx.ui.Records().empty());
  test::BuildSampleNetwork(fx.ws);
  ASSERT_TRUE(SaveNetwork(fx.ws, 1));

  FileFixture next;
  next.ws.paths = fx.ws.paths;
  next.ui.QueueAnswer(MsgAnswer::No);
  EXPECT_FALSE(OfferRecovery(next.ws));
  EXPECT_EQ(
      next.ui.Records()[0].title + ": " + next.ui.Records()[0].text,
      "Auto save recovery: An autosaved recovery file exists - do you wish to load this file");
  EXPECT_TRUE(Exists(fx.dir + "tempsim.sim"));  // it stays until a normal exit
  next.ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(OfferRecovery(next.ws));
  EXPECT_EQ(next.ws.net.BranchCount, 5);
  EXPECT_EQ(next.ws.net.FileName, "");
  EXPECT_EQ(next.ws.net.NetworkSaved, 0xFF);
  EXPECT_EQ(next.ws.RecentFiles[1], "");  // the recovery file is no recent file
}

TEST(Exit, QuestionsThenTheRecoveryFileGoes) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  ASSERT_TRUE(SaveNetwork(fx.ws, 1));
  MarkNetworkChanged(fx.ws);
  fx.ws.DefaultsSaved = 0;
  bool saveAs = false;
  fx.ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(QueryUnload(fx.ws, saveAs));
  EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{"Galeris data is not saved - Save it?"});
  EXPECT_TRUE(Exists(fx.dir + "tempsim.sim"));

  int stores = 0;
  fx.ws.StoreRecentFiles = [&stores](const std::array<std::string, 10>&) { ++stores; };
  fx.ui.ClearRecords();
  fx.ui.QueueAnswer(MsgAnswer::No);
  fx.ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(QueryUnload(fx.ws, saveAs));
  EXPECT_EQ(fx.ui.MessageTexts(),
            (std::vector<std::string>{"Galeris data is not saved - Save it?",
                                      "Galeris defaults are not saved - Save them?"}));
  EXPECT_TRUE(Exists(fx.dir + "Defaults.dat"));
  EXPECT_FALSE(Exists(fx.dir + "tempsim.sim"));
  EXPECT_EQ(stores, 1);
}

}  // namespace
}  // namespace galeris
