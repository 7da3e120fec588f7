// The import and export engine: round trips through both formats, the clean-up rules of a
// new airway, the DXF entities and line ends, level building, and files that must not hurt.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/headless_ui.h"
#include "exchange/dxf_export.h"
#include "exchange/import_file.h"
#include "exchange/text_exchange.h"
#include "files/defaults_file.h"
#include "files/network_file.h"
#include "tests/exchange/exchange_fixture.h"

namespace galeris {
namespace {

using test::WriteFile;

TEST_F(ExchangeFixture, RoundTripsKeepTheAirways) {
  BuildSmallMine(ws);
  ws.net.Dim[1][1] = 5.8f;  // sizes are written as the singles they are: "5.8", no noise
  const Network before = ws.net;
  EXPECT_NE(FormatTextExport(ws).find("\t5.8\t"), std::string::npos) << FormatTextExport(ws);
  ASSERT_TRUE(ExportText(ws, dir + "EXPORT.TXT"));
  ASSERT_EQ(ImportFile(ws, dir + "EXPORT.TXT", {}), ImportOutcome::Done);
  ExpectSameAirways(before, ws.net);
  for (int i = 1; i <= ws.net.BranchCount; ++i) {
    EXPECT_EQ(ws.net.BranchName[i], before.BranchName[i]);
    EXPECT_EQ(ws.net.Dim[i], before.Dim[i]);
    EXPECT_FLOAT_EQ(ws.net.Quantity[i], before.Quantity[i]);
  }
  EXPECT_EQ(ws.net.RLBound[1][1], 20);  // ten above the highest entry end

  // DXF: the system's own file gives its arrows back as airways (the drives have two each).
  ViewState view = MakeViewState(ws);
  WriteFile(dir + "plain.dxf", FormatDxf(ws, view, false, {}, "stamp"));
  WriteFile(dir + "arrows.dxf", FormatDxf(ws, view, false, {true}, "stamp"));
  // The plan seen on screen: Y turned upwards, Z 0.
  EXPECT_NE(FormatDxf(ws, view, true, {}, "").find("11\r\n200\r\n21\r\n-50\r\n31\r\n0\r\n"),
            std::string::npos);
  ASSERT_EQ(ImportFile(ws, dir + "plain.dxf", {}), ImportOutcome::Done);
  ExpectSameAirways(before, ws.net);
  ASSERT_EQ(ImportFile(ws, dir + "arrows.dxf", {}), ImportOutcome::Done);
  EXPECT_EQ(ws.net.BranchCount, 4 + 2 * 2);
}

TEST_F(ExchangeFixture, CleanUpOfEachNewAirway) {
  struct Case {
    const char* line;
    ImportChoices choices;
    float dim1, dim2;
    std::int32_t code;
    std::int16_t resType;
  };
  ImportChoices retainDrive, retainRaise, common;
  retainDrive.RetainDrive = retainRaise.RetainRaise = common.CommonSize = true;
  const Defaults& d = ws.defaults;
  const Case cases[] = {
      {"1\t0\t0\t10\t0\t0\t0\t0.5\t0\t0\tr\t\t\t0\t3", {}, 0, 3, Bit::Round, 0},
      {"1\t0\t0\t10\t0\t1\t0\t0.5", {}, d.DefaultHeight, d.DefaultWidth, Bit::Rectangular, 0},
      {"1\t0\t0\t1\t0\t50\t0\t0.5", {}, 0, d.DefaultDiameter, Bit::Round, 0},
      {"1\t0\t0\t1\t0\t50\t0\t0.5", common, d.DefaultHeight, d.DefaultWidth, Bit::Rectangular, 0},
      {"1\t0\t0\t10\t0\t0\t0\t0.5\t3\t1", retainDrive, d.DefaultHeight, d.DefaultWidth,
       Bit::Rectangular | Bit::FansInSeries, kUserGiven},
      {"1\t0\t0\t10\t0\t0\t0\t0.5", retainRaise, d.DefaultHeight, d.DefaultWidth, Bit::Rectangular,
       0},
  };
  for (const Case& c : cases) {
    WriteFile(dir + "one.txt", std::string(kTextExportHeads) + "\r\n" + c.line + "\r\n");
    ASSERT_EQ(ImportFile(ws, dir + "one.txt", c.choices), ImportOutcome::Done) << c.line;
    ASSERT_EQ(ws.net.BranchCount, 1) << c.line;
    EXPECT_FLOAT_EQ(ws.net.Dim[1][1], c.dim1) << c.line;
    EXPECT_FLOAT_EQ(ws.net.Dim[1][2], c.dim2) << c.line;
    EXPECT_EQ(ws.net.BranchCode[1] & 0xFFFF, c.code) << c.line;
    EXPECT_EQ(ws.net.ResType[1], c.resType) << c.line;
    EXPECT_EQ(ws.net.WallType[1], 4) << c.line;
  }
}

TEST_F(ExchangeFixture, CoordinatesAreClampedOnceAndShiftedBeforeNegation) {
  EXPECT_EQ(ClampCoordinate(ws, "12345678"), 2345678);
  EXPECT_EQ(ClampCoordinate(ws, "-12345678"), -12345678);
  EXPECT_EQ(ClampCoordinate(ws, "99999999"), 9999999);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgCoordinateTruncated});

  WriteFile(dir + "a.txt", std::string(kTextExportHeads) + "\r\n1\t2\t-3\t11\t2\t-3\r\n");
  ImportChoices choices;
  choices.Offset = {100, 200, 300};
  choices.Negate = {true, false, true};
  ASSERT_EQ(ImportFile(ws, dir + "a.txt", choices), ImportOutcome::Done);
  EXPECT_EQ(ws.net.Coord1[1], (Coord3{0, -101, 202, -297}));
  EXPECT_EQ(ws.net.Coord2[1], (Coord3{0, -111, 202, -297}));
}

TEST_F(ExchangeFixture, DxfEntitiesAndLineEnds) {
  const std::string drawing =
      "0 SECTION 2 ENTITIES "
      "0 LINE 8 A 10 1 20 2 30 3 11 4 21 5 31 6 "
      "0 3DLINE 10 7 20 7 30 7 11 8 21 8 31 8 "
      "0 POLYLINE 66 1 70 8 "
      "0 VERTEX 10 0 20 0 30 -5 0 VERTEX 10 10 20 0 30 -5 0 VERTEX 10 10 20 10 30 -6 0 SEQEND "
      "0 LWPOLYLINE 90 4 38 -50 10 0 20 0 10 5 20 0 10 5 20 5 10 0 20 5 "
      "0 ENDSEC 0 EOF";
  for (const char* ending : {"\n", "\r\n"}) {
    std::filesystem::remove(dir + "tmp.dat");
    WriteFile(dir + "d.dxf", DxfOf(drawing, ending));
    ASSERT_EQ(ImportFile(ws, dir + "d.dxf", {}), ImportOutcome::Done);
    EXPECT_EQ(std::filesystem::exists(dir + "tmp.dat"), std::string(ending) == "\n");
    ASSERT_EQ(ws.net.BranchCount, 1 + 1 + 2 + 3);
    EXPECT_EQ(ws.net.Coord1[1], (Coord3{0, 1, 2, 3}));
    EXPECT_EQ(ws.net.Coord2[2], (Coord3{0, 8, 8, 8}));
    EXPECT_EQ(ws.net.Coord2[4], (Coord3{0, 10, 10, -6}));
    EXPECT_EQ(ws.net.Coord1[7], (Coord3{0, 5, 5, -50}));
    EXPECT_EQ(ws.net.Coord2[7], (Coord3{0, 0, 5, -50}));
  }
  // The system's own file takes its lines only.
  WriteFile(dir + "own.dxf", "999\r\n" + std::string(kDxfBanner) + "\r\n" + DxfOf(drawing));
  ASSERT_EQ(ImportFile(ws, dir + "own.dxf", {}), ImportOutcome::Done);
  EXPECT_EQ(ws.net.BranchCount, 2);
}

TEST_F(ExchangeFixture, LevelPerExitHeightWithTheSurfaceQuestion) {
  const std::string file = std::string(kTextExportHeads) +
                           "\r\n0\t0\t0\t0\t10\t0\r\n0\t10\t0\t0\t10\t-100\r\n"
                           "0\t10\t-100\t0\t20\t-100\r\n0\t20\t-100\t0\t20\t-200\r\n";
  WriteFile(dir + "l.txt", file);
  ImportChoices choices;
  choices.BuildLevels = true;
  for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    ui.ClearRecords();
    ui.QueueAnswer(answer);
    ASSERT_EQ(ImportFile(ws, dir + "l.txt", choices), ImportOutcome::Done);
    EXPECT_TRUE(ui.Said("Place highest RL data on surface level?"));
    const Network& net = ws.net;
    ASSERT_EQ(net.RLCount, 3);
    EXPECT_EQ(net.RLName[1], "Surface");
    EXPECT_EQ(net.RLBound[1][2], answer == MsgAnswer::Yes ? 0 : -90);
    EXPECT_EQ(net.RLName[2], "Level-100");
    EXPECT_EQ(net.RLName[3], "Level-200");
    EXPECT_EQ(net.RLBound[3][1], -200);
  }
  // A surface at RL 0 still goes into the network file with the levels below it.
  EXPECT_NE(FormatNetworkFile(ws).find("Surface\t 0 \t 0 \r\nLevel-100\t"), std::string::npos);
}

TEST_F(ExchangeFixture, BadFilesLeaveTheNetworkOrSayWhy) {
  struct Case {
    const char* name;
    std::string bytes;
    ImportOutcome outcome;
    const char* message;
  };
  const std::string heads = std::string(kTextExportHeads) + "\r\n";
  const Case refused[] = {
      {"missing.txt", "", ImportOutcome::Refused, "ERROR 53: That file doesn't exist."},
      {"plan.dwg", "x", ImportOutcome::Refused, kMsgUnknownImportType},
      {"empty.dxf", "", ImportOutcome::Refused, kMsgImportFileEmpty},
      {"binary.txt", std::string("ELF\0\0\x01", 6), ImportOutcome::Refused, kMsgImportNotText},
      {"code.dxf", "0\r\nLINE\r\nten\r\n1\r\n", ImportOutcome::Abandoned, kMsgImportError},
  };
  for (const Case& c : refused) {
    BuildSmallMine(ws);
    ui.ClearRecords();
    if (std::string(c.name) != "missing.txt") {
      WriteFile(dir + c.name, c.bytes);
    }
    EXPECT_EQ(ImportFile(ws, dir + c.name, {}), c.outcome) << c.name;
    EXPECT_TRUE(ui.Said(c.message)) << c.name;
    if (c.outcome == ImportOutcome::Refused) {
      EXPECT_EQ(ws.net.BranchCount, 4) << c.name;
    }
    EXPECT_EQ(ui.BusyDepth(), 0);
  }

  // No at the error prompt: the airways read so far, the one being read too, stay whole
  // (cleaned, keyed, numbered after the network's last) on the default layers.
  BuildSmallMine(ws);
  ws.net.NextAirwayNo = 40;
  ImportChoices onLayer3;
  onLayer3.Merge = true;
  onLayer3.PrimaryLayer = 3;
  WriteFile(dir + "stop.txt", heads + "0\t0\t-100\t0\t50\t-100\r\n"
                                      "0\t50\t-100\t0\t60\t-100\t0\t0\t99999\r\n");
  ui.ClearRecords();
  EXPECT_EQ(ImportFile(ws, dir + "stop.txt", onLayer3), ImportOutcome::Abandoned);
  EXPECT_TRUE(ui.Said(kMsgImportError));
  ASSERT_EQ(ws.net.BranchCount, 6);
  for (int i = 5; i <= 6; ++i) {
    EXPECT_EQ(ws.net.BranchCode[i], Bit::Rectangular) << i;
    EXPECT_EQ(ws.net.EntryNodeId[i], NodeKey(0, 50 * (i - 5), -100)) << i;
    EXPECT_EQ(ws.net.AirwayNo[i], 36 + i) << i;
    EXPECT_EQ(ws.net.PrimaryLayer[i], 3) << i;
    EXPECT_EQ(ws.net.WallType[i], 4) << i;
  }

  // A drawing cut inside an entity keeps the entities before it; a bad group code answered
  // Yes is passed over.
  ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
  WriteFile(dir + "cut.dxf", DxfOf("0 LINE 10 1 11 2 0 LINE 10 5 X ? 11"));
  EXPECT_EQ(ImportFile(ws, dir + "cut.dxf", {}), ImportOutcome::Done);
  EXPECT_EQ(ws.net.BranchCount, 1);

  // More airways than the store holds: the DXF reader stops one short of the capacity.
  ws.net.MaxAirways = 50;
  ResizeStore(ws.net);
  std::string many;
  for (int k = 1; k <= 60; ++k) {
    const std::string y = std::to_string(k);
    many += "0 LINE 10 0 20 " + y + " 11 1 21 " + y + " ";
  }
  WriteFile(dir + "many.dxf", DxfOf(many));
  ui.ClearRecords();
  EXPECT_EQ(ImportFile(ws, dir + "many.dxf", {}), ImportOutcome::Done);
  EXPECT_EQ(ws.net.BranchCount, 49);
  EXPECT_TRUE(ui.Said(kMsgTooManyAirways));
  ImportChoices merge;
  merge.Merge = true;
  ImportFile(ws, dir + "many.dxf", merge);  // into a full store
  EXPECT_EQ(ws.net.BranchCount, 49);
}

}  // namespace
}  // namespace galeris
