// The spreadsheet's working copy against the store: edits, fixes, sort, paste, insert, delete,
// find and replace, and the save as one undoable action that leaves untouched airways alone.
#include "editors/logic/airway_sheet.h"

#include <gtest/gtest.h>

#include "core/airway_values.h"
#include "editors/logic/fan_grid.h"
#include "core/headless_ui.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

namespace C = SheetColumn;

// Four 100 m airways along X, named A..D, with their own friction factor.
struct Sheet : ::testing::Test {
  HeadlessUi ui{HeadlessUi::Policy::AlwaysYes};
  Workspace ws{ui};
  test::JournalSpy journal{7};
  AirwaySheet sheet;

  void SetUp() override {
    ws.net.MaxAirways = 6;
    ClearStore(ws.net);
    ws.units = BuiltInUnits();
    ws.journal = &journal;
    for (int k = 0; k < 4; ++k) {
      const int i = test::AddAirway(ws.net, 100 * k, 0, -100, 100 * k + 100, 0, -100);
      ws.net.BranchName[i] = std::string(1, static_cast<char>('A' + k));
      ws.net.AirwayNo[i] = 20 - i;
      ws.net.WallType[i] = ws.net.ShockType[i] = kUserGiven;
      ws.net.WallFactor[i] = 0.012f;
      ws.net.Dim[i] = {0, 3, 4};
      CalcResistance(ws, i);
    }
    ws.net.NextAirwayNo = 20;
    sheet = FillSheet(ws);
  }
  std::string& Cell(int row, int column) { return sheet.rows[row].cell[column]; }
};

TEST_F(Sheet, EditsReachTheStoreOnlyOnSaveAsOneAction) {
  CommitCell(ws, sheet, 1, C::Width, "5");
  CommitCell(ws, sheet, 1, C::X2, "250.6");  // recalculates length and resistance
  CommitCell(ws, sheet, 3, C::Name, "Return");
  EXPECT_EQ(Cell(1, C::Length), "150.6");
  EXPECT_EQ(ws.net.Dim[2][2], 4);  // a working copy
  EXPECT_TRUE(sheet.SheetDirty);

  EXPECT_FALSE(SaveSheet(ws, sheet));
  EXPECT_EQ(ws.net.Dim[2][2], 5);
  EXPECT_EQ(ws.net.Coord2[2][1], 251);  // whole units
  EXPECT_FLOAT_EQ(ws.net.Length[2], 151);
  EXPECT_EQ(ws.net.BranchName[4].Trimmed(), "Return");
  EXPECT_EQ(journal.entries,
            (std::vector<test::JournalSpy::Entry>{{2, UndoJournal::kBefore, 7, 0},
                                                  {2, UndoJournal::kAfter, 7, 0},
                                                  {4, UndoJournal::kBefore, 7, 0},
                                                  {4, UndoJournal::kAfter, 7, 0}}));
  EXPECT_EQ(journal.closes, 1);
}

TEST_F(Sheet, BadInputWritesNothing) {
  const Network before = ws.net;
  struct Case {
    int column;
    const char* text;
    const char* message;
  } cases[] = {{C::Width, "wide", kMsgNumberFormat},
               {C::Name, "A,B", "Commas are not allowed in names or comments"}};
  for (const Case& c : cases) {
    sheet = FillSheet(ws);
    ui.ClearRecords();
    Cell(2, c.column) = c.text;
    const auto bad = SaveSheet(ws, sheet);
    ASSERT_TRUE(bad) << c.text;
    EXPECT_EQ(bad->row, 2);
    EXPECT_EQ(bad->column, c.column);
    EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{c.message});
  }
  EXPECT_EQ(ws.net.Dim, before.Dim);
  EXPECT_EQ(ws.net.BranchName, before.BranchName);
  EXPECT_TRUE(journal.entries.empty());
}

TEST_F(Sheet, FixesSurviveASaveAndAReload) {
  CommitCell(ws, sheet, 0, C::Resistance, "0.5");
  CommitCell(ws, sheet, 1, C::Length, "80");
  CommitCell(ws, sheet, 2, C::FPres, "Stall");
  CommitCell(ws, sheet, 3, C::Flow, "12");
  CommitCell(ws, sheet, 3, C::FPres, "100");  // refused: the flow is fixed
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgFixedFlowPressure});
  ASSERT_FALSE(SaveSheet(ws, sheet));
  const Network& n = ws.net;
  EXPECT_EQ(n.ResType[1], kUserGiven);
  EXPECT_FLOAT_EQ(n.Resistance[1], 0.5f);
  EXPECT_TRUE(n.BranchCode[2] & Bit::FixedLength);
  EXPECT_FLOAT_EQ(n.Length[2], 80);
  EXPECT_EQ(n.FanNumber[3], -1);
  EXPECT_EQ(n.Pressure[3], -9999.0f);
  EXPECT_TRUE(n.BranchCode[4] & Bit::FixedQuantity);
  const AirwaySheet reloaded = FillSheet(ws);
  EXPECT_TRUE(reloaded.rows[0].IsFixed(C::Resistance));
  EXPECT_TRUE(reloaded.rows[1].IsFixed(C::Length));
  EXPECT_TRUE(reloaded.rows[2].IsFixed(C::FPres));
  EXPECT_EQ(reloaded.rows[2].cell[C::FPres], "Stall");
  EXPECT_TRUE(reloaded.rows[3].IsFixed(C::Flow));

  // A resistance of 0 turns the airway back to the computed state, fixed or not.
  sheet = FillSheet(ws);
  Cell(0, C::Resistance) = "0";
  ASSERT_FALSE(SaveSheet(ws, sheet));
  EXPECT_EQ(n.ResType[1], 0);
  EXPECT_GT(n.Resistance[1], 0);
}

TEST_F(Sheet, FlowAndPressureDropOfferTheResistance) {
  CommitCell(ws, sheet, 0, C::Flow, "10");
  CommitCell(ws, sheet, 0, C::Pdrop, "-200");
  EXPECT_EQ(Cell(0, C::Resistance), "2.00000");
  EXPECT_TRUE(sheet.rows[0].IsFixed(C::Resistance));
  EXPECT_TRUE(ui.Said(kMsgCalcResistance));
}

TEST_F(Sheet, SortsCarryTheirFixes) {
  Cell(0, C::Name) = "b";
  Cell(1, C::Name) = "C";
  Cell(2, C::Name) = "a";
  Cell(3, C::Name) = "D";
  sheet.rows[1].SetFixed(C::Length, true);
  Cell(0, C::FPres) = "Negate";
  Cell(1, C::FPres) = "25";
  Cell(2, C::FPres) = "-3";
  Cell(3, C::FPres) = "";
  struct Case {
    int column;
    bool ascending;
    std::vector<std::string> names;
  } cases[] = {{C::Name, true, {"a", "b", "C", "D"}},  // after lower-casing
               {C::Name, false, {"D", "C", "b", "a"}},
               {C::FPres, true, {"a", "D", "C", "b"}},  // empty counts as 0, words last
               {C::No, true, {"D", "a", "C", "b"}}};
  for (const Case& c : cases) {
    SortSheet(sheet, c.column, c.ascending);
    std::vector<std::string> names;
    for (const SheetRow& row : sheet.rows) names.push_back(row.cell[C::Name]);
    EXPECT_EQ(names, c.names) << c.column << c.ascending;
    for (const SheetRow& row : sheet.rows)
      EXPECT_EQ(row.IsFixed(C::Length), row.cell[C::Name] == "C");
  }
  // Sorted rows still save to their own airways.
  Cell(0, C::Comments) = "last";
  ASSERT_FALSE(SaveSheet(ws, sheet));
  EXPECT_EQ(ws.net.Comment[4].Trimmed(), "last");
}

TEST_F(Sheet, PasteLandsCellByCellAndAddsAirways) {
  EXPECT_EQ(CopyBlock(sheet, 0, 1, C::Name, C::To), "A\t\t\r\nB\t\t");
  // Two rows from the last one on: the second becomes a new airway.
  EXPECT_EQ(PasteBlock(ws, sheet, 3, C::Name, "P\tn1\tn2\r\nQ\tn2\tn3\r\n"), 2);
  ASSERT_EQ(sheet.rows.size(), 5u);
  EXPECT_EQ(Cell(3, C::From), "n1");
  for (int c = C::X1; c <= C::Z2; ++c)
    Cell(4, c) = c == C::X2 ? "50" : (c == C::Z1 || c == C::Z2) ? "-100" : "0";
  Cell(4, C::Width) = "3";
  Cell(4, C::KFactor) = "0.01";
  ASSERT_FALSE(SaveSheet(ws, sheet));
  EXPECT_EQ(ws.net.BranchCount, 5);
  EXPECT_EQ(ws.net.BranchName[5].Trimmed(), "Q");
  EXPECT_FLOAT_EQ(ws.net.Length[5], 50);
  EXPECT_GT(ws.net.Resistance[5], 0);
  EXPECT_EQ(sheet.rows[4].airway, 5);

  // A new row left without coordinates, below the surface, is dropped by the node rebuild;
  // the rows follow.
  ws.net.RLBound[1][2] = 1000;
  ASSERT_TRUE(InsertRows(ws, sheet, 0, 1));
  Cell(0, C::Name) = "Nowhere";
  ASSERT_FALSE(SaveSheet(ws, sheet));
  EXPECT_EQ(ws.net.BranchCount, 5);
  ASSERT_EQ(sheet.rows.size(), 5u);
  for (const SheetRow& row : sheet.rows)
    EXPECT_EQ(row.cell[C::Name], ws.net.BranchName[row.airway].Trimmed());

  // More than the store holds: refused whole, with the capacity message.
  ui.ClearRecords();
  EXPECT_EQ(PasteBlock(ws, sheet, 4, C::Name, "x\r\ny\r\nz"), 0);
  EXPECT_EQ(sheet.rows.size(), 5u);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{kMsgPasteExceeded});
}

TEST_F(Sheet, DeleteAsksThenSavesTheGridAndDeletesFromTheStore) {
  Cell(3, C::Name) = "D2";  // a pending edit, saved before the deletion
  ui.QueueAnswer(MsgAnswer::No);
  EXPECT_FALSE(DeleteRows(ws, sheet, 1, 2));
  EXPECT_EQ(sheet.rows.size(), 4u);
  EXPECT_EQ(ws.net.BranchName[4].Trimmed(), "D");

  EXPECT_FALSE(DeleteRows(ws, sheet, 1, 2));  // B and C
  EXPECT_FALSE(DeleteRows(ws, sheet, 0, 0));  // A
  const std::vector<UiRecord>& asked = ui.Records();
  ASSERT_EQ(asked.size(), 3u);
  EXPECT_EQ(std::pair(asked[1].title, asked[1].text),
            std::pair(std::string("Delete multiple rows"), std::string(kMsgDeleteRows)));
  EXPECT_EQ(std::pair(asked[2].title, asked[2].text),
            std::pair(std::string("Delete"), "Airway 19 A\n" + std::string(kMsgDeleteBranch)));
  EXPECT_EQ(asked[2].icon, MsgIcon::Question);
  EXPECT_EQ(ws.net.BranchCount, 1);
  EXPECT_EQ(ws.net.BranchName[1].Trimmed(), "D2");
  ASSERT_EQ(sheet.rows.size(), 1u);
  EXPECT_EQ(sheet.rows[0].airway, 1);
  EXPECT_FALSE(sheet.SheetDirty);
}

TEST_F(Sheet, FindAndReplaceInAColumn) {
  Cell(1, C::Name) = "Bx";
  Cell(2, C::Name) = "xB";
  EXPECT_EQ(FindInColumn(ui, sheet, C::Name, "c"), -1);
  EXPECT_EQ(FindInColumn(ui, sheet, C::Name, "d"), 3);
  EXPECT_EQ(sheet.findRow, 0);     // wrapped
  ui.QueueAnswer(MsgAnswer::No);   // "Do you mean Bx" for the partial match
  ui.QueueAnswer(MsgAnswer::Yes);  // "Do you mean xB"
  EXPECT_EQ(FindInColumn(ui, sheet, C::Name, "B"), 2);
  EXPECT_EQ(ui.MessageTexts(),
            (std::vector<std::string>{kMsgLevelNotFound, "Could not find name - Do you mean Bx",
                                      "Could not find name - Do you mean xB"}));
  EXPECT_EQ(ReplaceInColumn(sheet, C::Name, "xb", "Z"), 1);
  EXPECT_EQ(Cell(2, C::Name), "Z");
}

}  // namespace
}  // namespace galeris
