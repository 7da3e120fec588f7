// The network file: a file the program writes reads back byte for byte, the short record,
// the note, merges with their fan offset, Master files, and every kind of bad file, none of
// which may cost the open network without the user's answer. The older record forms are the
// version fixtures' part.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "core/number_format.h"
#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "files/whole_file.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

using test::FileFixture;
using test::ReadFile;
using test::WriteFile;

const std::string kLoadQuestion = "Error occured loading file\nDo you wish to continue loading?";

// Writes the sample network to a file and returns its path and bytes.
std::string SaveSample(FileFixture& fx, const std::string& name = "sample.sim") {
  test::BuildSampleNetwork(fx.ws);
  const std::string path = fx.dir + name;
  WriteFile(path, FormatNetworkFile(fx.ws));
  return path;
}

bool Load(FileFixture& fx, const std::string& path) {
  fx.ws.net.FileName = path;
  fx.ws.MergeBase = 1;
  return LoadNetwork(fx.ws);
}

TEST(NetworkFile, WrittenFileReadsBackByteIdentical) {
  FileFixture a;
  const std::string path = SaveSample(a);
  const std::string bytes = ReadFile(path);
  FileFixture b;
  ASSERT_TRUE(Load(b, path));
  EXPECT_TRUE(test::SameBytes(FormatNetworkFile(b.ws), bytes));
  EXPECT_TRUE(b.ui.MessageTexts().empty());
}

TEST(AirwayRecord, ShortRecordKeepsPressuresAndZeroesTheRest) {
  FileFixture fx;
  Network& n = fx.ws.net;
  n.Pressure[1] = 7;
  n.ToNodeP[1] = 8;
  n.AirwayNo[1] = 99;
  n.CurveFraction[1] = 30;
  std::string line =
      "A\tB\tC\t\t\t1\t2\t3\t4\t5\t6\t2\t3\t1\t0\t0\t4\t0.01\t0\t\t0.5\t10\t0\t0\t"
      "50\t\t\t\t\t\t\t7";  // 32 fields
  ReadAirwayRecord(fx.ws, line, 1, 3.1f);
  EXPECT_EQ(n.Pressure[1], 7);
  EXPECT_EQ(n.ToNodeP[1], 8);
  EXPECT_EQ(n.UndoNo[1], 7);
  EXPECT_EQ(n.AirwayNo[1], 0);
  EXPECT_EQ(n.CurveFraction[1], 0);
  EXPECT_EQ(n.ExitNodeName[1].Padded(), "B" + std::string(39, ' '));
}

TEST(AirwayRecord, CoordinatesRoundHalfToEven) {
  FileFixture fx;
  const std::string line =
      "A\tB\tC\t\t\t2.5\t3.5\t-2.5\t4\t5\t6\t2\t3\t1\t0\t0\t0\t0\t0\t\t0\t0\t0\t0\t0";
  ReadAirwayRecord(fx.ws, line, 1, 3.1f);
  EXPECT_EQ(fx.ws.net.Coord1[1], (Coord3{0, 2, 4, -2}));
}

TEST(NetworkFile, NoteEscapesAndCommasFollowTheSeparatorRule) {
  EXPECT_EQ(EscapeNote("a\nb\rc\td"),
            "a\x1d"
            "b\x1e"
            "c\x1f"
            "d");
  EXPECT_EQ(UnescapeNote(EscapeNote("x\r\ny\tz")), "x\r\ny\tz");
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.FileNote = "Checked, approved";
  const std::string path = fx.dir + "n.sim";
  WriteFile(path, FormatNetworkFile(fx.ws));
  FileFixture b;
  ASSERT_TRUE(Load(b, path));
  EXPECT_EQ(b.ws.net.FileNote, "Checked. approved");  // a comma reads as the decimal mark
}

TEST(NetworkFile, SaveStampsTheNoteAndStoresTheRecentList) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  std::array<std::string, 10> stored{};
  fx.ws.StoreRecentFiles = [&stored](const std::array<std::string, 10>& l) { stored = l; };
  fx.ws.net.FileName = fx.dir + "stamped.sim";
  fx.ws.net.NetworkSaved = 0;
  ASSERT_TRUE(SaveNetwork(fx.ws));
  EXPECT_EQ(fx.ws.net.NetworkSaved, 0xFF);
  EXPECT_EQ(stored[1], fx.dir + "stamped.sim");
  const std::regex stamp(
      "First line\nSecond\tline\n\\*\\*\\* File Saved (Sun|Mon|Tue|Wed|Thu|Fri|Sat), "
      "[0-9]{1,2} [A-Z][a-z]{2} [0-9]{4}   [0-9]{2}:[0-9]{2}:[0-9]{2} \\*\\*\\*\n");
  EXPECT_TRUE(std::regex_match(fx.ws.net.FileNote, stamp)) << fx.ws.net.FileNote;
  FileFixture b;
  ASSERT_TRUE(Load(b, fx.dir + "stamped.sim"));
  EXPECT_EQ(b.ws.net.FileNote.rfind("First line\nSecond\tline\n*** File Saved ", 0), 0u);
}

TEST(NetworkFile, SaveStopsAtTheFirstRecordWithoutAKey) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.EntryNodeId[4] = 0;  // drawn but not yet keyed
  const std::string saved = FormatNetworkFile(fx.ws);
  const std::string recovery = FormatNetworkFile(fx.ws, true);
  EXPECT_EQ(std::count(recovery.begin(), recovery.end(), '\n') -
                std::count(saved.begin(), saved.end(), '\n'),
            2);
}

TEST(NetworkFile, EmptyNetworkWritesOneBlankRecordThatIsDropped) {
  FileFixture fx;
  fx.ws.net.RLName[1] = "SURFACE";
  fx.ws.net.RLBound[1] = {0, 1100, 1000};
  const std::string path = fx.dir + "empty.sim";
  WriteFile(path, FormatNetworkFile(fx.ws));
  FileFixture b;
  test::BuildSampleNetwork(b.ws);
  ASSERT_TRUE(Load(b, path));
  EXPECT_EQ(b.ws.net.BranchCount, 0);
}

TEST(NetworkFile, TheScreenTakesTheUnitSystemOfTheLoadedNetwork) {
  FileFixture british;
  british.ws.defaults.UnitSystem = 2;
  const std::string path = SaveSample(british);
  FileFixture si;
  ASSERT_TRUE(Load(si, path));
  EXPECT_EQ(si.ws.units.UnitSystem, 2);
  EXPECT_EQ(si.ws.defaults.UnitSystem, 2);
}

TEST(NetworkFile, GasSimulationBlocksSaving) {
  FileFixture fx;
  const std::string path = SaveSample(fx);
  fx.ws.net.FileName = path;
  int shown = 2;
  fx.ws.ShownSmokeState = [&shown] { return shown; };
  EXPECT_FALSE(SaveNetwork(fx.ws));
  EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{"Clear gas simulation first !"});
  EXPECT_TRUE(SaveNetwork(fx.ws, 1));  // the recovery file is still written
  shown = 0;
  EXPECT_TRUE(SaveNetwork(fx.ws));
  EXPECT_EQ(fx.ui.MessageTexts().size(), 1u);
}

// ---- Merge ------------------------------------------------------------------------------

TEST(Merge, FansJoinBehindTheOpenListWithTheOffset) {
  FileFixture src;
  const std::string path = SaveSample(src, "other.sim");
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.FanName[3] = "Auxiliary";
  fx.ws.net.CurveP[3][1][1] = 500;
  fx.ui.QueueAnswer(MsgAnswer::No);  // add the merged fans to the list
  ASSERT_TRUE(MergeNetwork(fx.ws, path));
  const Network& n = fx.ws.net;
  EXPECT_TRUE(fx.ui.Said(kMsgMergeFans));
  EXPECT_EQ(n.BranchCount, 10);
  EXPECT_EQ(n.FanName[4], "Main Axial");
  EXPECT_EQ(n.FanNumber[3], 1);       // the open airway keeps its fan
  EXPECT_EQ(n.FanNumber[8], 4);       // fan 1 of the file is now fan 4
  EXPECT_EQ(n.FanNumber[9], 2);       // and a fixed pressure, -1, is moved as well
  EXPECT_EQ(n.RLName[3], "SURFACE");  // levels join behind the open ones
  EXPECT_EQ(n.FileName, "");
}

// ---- Master files -------------------------------------------------------------------------

TEST(MasterFile, LoadWarnsAndLaterSavesAsSim) {
  FileFixture src;
  const std::string path = SaveSample(src, "master.SMM");
  FileFixture fx;
  ASSERT_TRUE(OpenNetwork(fx.ws, path));
  EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{kMsgMasterLoad});
  EXPECT_EQ(fx.ws.net.FileName, src.dir + "master.sim");
}

TEST(MasterFile, SavingAsMasterAsksFirst) {
  FileFixture fx;
  test::BuildSampleNetwork(fx.ws);
  fx.ws.net.FileName = fx.dir + "a.sim";
  fx.ui.QueueAnswer(MsgAnswer::No);
  EXPECT_FALSE(SaveNetworkAs(fx.ws, fx.dir + "b.smm"));
  EXPECT_EQ(fx.ui.Records().back().title, "Master File");
  EXPECT_EQ(fx.ui.Records().back().text, kMsgMasterSave);
  EXPECT_EQ(fx.ws.net.FileName, fx.dir + "a.sim");
  EXPECT_TRUE(ReadFile(fx.dir + "b.smm").empty());
  fx.ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(SaveNetworkAs(fx.ws, fx.dir + "b.smm"));
  EXPECT_FALSE(ReadFile(fx.dir + "b.smm").empty());
}

// ---- Bad files ------------------------------------------------------------------------------

// The open network before a bad load, to check it is still there afterwards.
struct OpenNetworkGuard {
  explicit OpenNetworkGuard(FileFixture& fx) : fx(fx) {
    test::BuildSampleNetwork(fx.ws);
    fx.ws.net.FileName = fx.dir + "open.sim";
    before = FormatNetworkFile(fx.ws);
  }
  bool Untouched() const { return FormatNetworkFile(fx.ws) == before; }
  FileFixture& fx;
  std::string before;
};

TEST(BadFile, MissingFileFolderAndDrive) {
  FileFixture fx;
  OpenNetworkGuard guard(fx);
  fx.ws.net.FileName = fx.dir + "none.sim";
  EXPECT_FALSE(LoadNetwork(fx.ws));
  EXPECT_EQ(fx.ui.MessageTexts().back(), "ERROR 53: That file doesn't exist.");
  EXPECT_EQ(fx.ws.net.FileName, "");
  fx.ws.net.FileName = fx.dir + "no/such/folder/x.sim";
  EXPECT_FALSE(LoadNetwork(fx.ws));
  EXPECT_EQ(fx.ui.MessageTexts().back(), "ERROR 76: That path doesn't exist.");
  fx.ws.net.FileName = "Q:\\mines\\old.sim";
  EXPECT_FALSE(LoadNetwork(fx.ws));
  EXPECT_EQ(fx.ui.MessageTexts().back(), "ERROR 68: Drive not available.");
  fx.ws.net.FileName = fx.dir + "open.sim";
  EXPECT_TRUE(guard.Untouched());
}

TEST(BadFile, NotAGalerisFileLeavesTheNetworkAndItsName) {
  const std::string notGaleris = "Not a GALERIS File - Action Aborted";
  for (const auto& [bytes, message] : std::vector<std::pair<std::string, std::string>>{
           {"Hello world\r\nsecond line\r\n", notGaleris},
           {std::string("\x00\x01\x02\xff\xfe", 5), notGaleris},
           {std::string(200000, 'x'), notGaleris},
           {"0.9 GALERIS,Title\r\n", "Cannot read file format"}}) {
    FileFixture fx;
    OpenNetworkGuard guard(fx);
    WriteFile(fx.dir + "bad.sim", bytes);
    EXPECT_FALSE(OpenNetwork(fx.ws, fx.dir + "bad.sim"));
    EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{message});
    EXPECT_EQ(fx.ws.net.FileName, fx.dir + "open.sim");
    EXPECT_TRUE(guard.Untouched());
  }
}

// An empty file asks; a folder asks too and cannot be loaded whatever the answer.
TEST(BadFile, EmptyFileOrFolderAsksThenRefuses) {
  for (bool folder : {false, true}) {
    for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
      FileFixture fx;
      OpenNetworkGuard guard(fx);
      const std::string path = fx.dir + (folder ? "folder.sim" : "empty.sim");
      if (folder)
        std::filesystem::create_directory(path);
      else
        WriteFile(path, "");
      fx.ui.QueueAnswer(answer);
      EXPECT_FALSE(OpenNetwork(fx.ws, path));
      EXPECT_EQ(fx.ui.Records()[0].title + ": " + fx.ui.Records()[0].text,
                "Error: " + kLoadQuestion);
      EXPECT_EQ(fx.ui.Records()[0].buttons, MsgButtons::YesNo);
      if (folder) {
        EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{kLoadQuestion});
      } else if (answer == MsgAnswer::Yes) {
        EXPECT_EQ(fx.ui.MessageTexts().back(), kMsgNotGaleris);
      }
      EXPECT_TRUE(guard.Untouched());
    }
  }
}

// A file cut inside the last record, or before the records at the first missing section line.
TEST(BadFile, CutFileNoKeepsTheOpenNetworkYesLoadsWhatIsThere) {
  FileFixture src;
  const std::string bytes = ReadFile(SaveSample(src));
  std::vector<std::pair<std::size_t, int>> cuts = {{bytes.rfind("\r\n", bytes.size() - 3) + 30, 5}};
  for (const char* section :
       {"Saved Views", "Tag List", "Fan Name/Point", "RL Name", "**End Of Floating"})
    cuts.push_back({bytes.find(section), 0});
  for (const auto& [cut, branches] : cuts) {
    FileFixture fx;
    OpenNetworkGuard guard(fx);
    WriteFile(fx.dir + "cut.sim", bytes.substr(0, cut));
    EXPECT_FALSE(OpenNetwork(fx.ws, fx.dir + "cut.sim")) << cut;
    EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{kLoadQuestion}) << cut;
    EXPECT_TRUE(guard.Untouched()) << cut;
    FileFixture yes;  // answers every error with Yes
    yes.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
    EXPECT_TRUE(OpenNetwork(yes.ws, fx.dir + "cut.sim")) << cut;
    EXPECT_EQ(yes.ws.net.BranchCount, branches) << cut;
    if (branches > 0) {
      EXPECT_GE(yes.ui.MessageTexts().size(), 2u);
    }
    for (const auto& text : yes.ui.MessageTexts()) EXPECT_EQ(text, kLoadQuestion) << cut;
  }
}

TEST(BadFile, TooManyAirwaysForTheSettings) {
  FileFixture src;
  test::BuildSampleNetwork(src.ws);
  for (int i = 0; i < 60; ++i) test::AddAirway(src.ws.net, 100 + i, 100, 900, 101 + i, 100, 900);
  RebuildNodes(src.ws.net, src.ws.defaults, src.ui);
  src.ws.defaults.RequestedAirways = 50;  // the file's own block asks for no more room
  const std::string path = src.dir + "big.sim";
  WriteFile(path, FormatNetworkFile(src.ws));
  FileFixture fx;
  fx.ws.net.MaxAirways = 50;
  ClearStore(fx.ws.net);
  ASSERT_TRUE(OpenNetwork(fx.ws, path));
  EXPECT_EQ(fx.ui.MessageTexts(), std::vector<std::string>{kMsgFileTooBig});
  EXPECT_EQ(fx.ws.net.BranchCount, 49);
}

// A large file is read ahead in parts on every core; a bad field in any part still asks, in
// file order, and keeps the slot's value, exactly as the one-by-one read does.
TEST(BadFile, BadFieldsInALargeFileAskInOrder) {
  FileFixture src;
  for (int i = 1; i <= 9000; ++i) test::AddAirway(src.ws.net, i, 100, -100, i + 1, 100, -100);
  src.ws.net.RLName[1] = "SURFACE";
  RebuildNodes(src.ws.net, src.ws.defaults, src.ui);
  for (int bad : {500, 7000}) src.ws.net.Length[bad] = 4321.5f;
  std::string bytes = FormatNetworkFile(src.ws);
  for (std::size_t at = 0; (at = bytes.find("\t4321.5\t", at)) != std::string::npos;)
    bytes[at + 2] = 'x';
  WriteFile(src.dir + "bad.sim", bytes);
  for (int bad : {500, 7000}) src.ws.net.Length[bad] = 0;

  FileFixture no;
  no.ui.QueueAnswer(MsgAnswer::No);
  EXPECT_FALSE(OpenNetwork(no.ws, src.dir + "bad.sim"));
  EXPECT_EQ(no.ws.net.BranchCount, 0);
  FileFixture yes;
  yes.ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
  ASSERT_TRUE(OpenNetwork(yes.ws, src.dir + "bad.sim"));
  EXPECT_EQ(yes.ui.MessageTexts(), std::vector<std::string>(2, kLoadQuestion));
  EXPECT_TRUE(test::SameBytes(FormatNetworkFile(yes.ws), FormatNetworkFile(src.ws)));
  // Saved piece by piece as the pieces are made, the file is the same text.
  yes.ws.net.FileName = src.dir + "saved.sim";
  ASSERT_TRUE(SaveNetwork(yes.ws));
  EXPECT_TRUE(test::SameBytes(ReadFile(src.dir + "saved.sim"), FormatNetworkFile(yes.ws)));
}

TEST(WholeFile, AWriterDroppedBeforeItsCommitLeavesTheOldFile) {
  FileFixture fx;
  const std::string path = fx.dir + "kept.txt";
  WriteFile(path, "old");
  {
    WholeFileWriter writer(path);
    ASSERT_TRUE(writer.Append("new"));
  }
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_FALSE(std::filesystem::exists(path + ".partial"));
  WholeFileWriter writer(path);
  EXPECT_TRUE(writer.Append("new") && writer.Commit());
  EXPECT_EQ(ReadFile(path), "new");
}

TEST(NetworkFile, FilesMoveBetweenMachinesOfEitherDecimalMark) {
  const char marks[][2] = {{',', '.'}, {'.', ','}, {',', ','}};
  for (const auto& pair : marks) {
    const char writer = pair[0], reader = pair[1];
    const char old = MachineDecimalSeparator();
    SetMachineDecimalSeparator(writer);
    FileFixture src;
    const std::string path = SaveSample(src);
    const std::string written = ReadFile(path);
    SetMachineDecimalSeparator(reader);
    FileFixture fx;
    const bool loaded = Load(fx, path);
    const std::string rewritten = FormatNetworkFile(fx.ws);
    SetMachineDecimalSeparator(old);
    ASSERT_TRUE(loaded) << writer << reader;
    EXPECT_TRUE(fx.ui.MessageTexts().empty()) << writer << reader;
    EXPECT_EQ(fx.ws.net.Quantity[3], -150.25f) << writer << reader;
    EXPECT_FLOAT_EQ(fx.ws.defaults.WallFactorPreset[2], 0.0035f) << writer << reader;
    if (writer == reader) {
      EXPECT_TRUE(test::SameBytes(rewritten, written));
    }
  }
}

}  // namespace
}  // namespace galeris
