// Editing in the view, driven through the mouse on a plan view where a window point is the
// world point: each edit is checked in the store, then undone (the same airways by AirwayNo as
// before) and redone (the same as after the edit), through the journal in its scratch file.
#include <functional>
#include <map>
#include <sstream>
#include <utility>

#include "files/undo_journal.h"
#include "tests/view/view_fixture.h"
#include "view/construction.h"
#include "view/drawing.h"
#include "view/fence_tools.h"
#include "view/tools.h"

namespace galeris::test {
namespace {

// Everything an edit may change, by AirwayNo: undo brings airways back at other positions.
std::map<int, std::string> Airways(const Network& net) {
  std::map<int, std::string> rows;
  for (int i = 1; i <= net.BranchCount; ++i) {
    std::ostringstream row;
    const auto coord = [&row](const Coord3& c) {
      row << c[1] << ',' << c[2] << ',' << c[3] << ' ';
    };
    coord(net.Coord1[i]);
    coord(net.Coord2[i]);
    row << net.EntryNodeName[i].Trimmed() << '|' << net.ExitNodeName[i].Trimmed() << '|'
        << net.BranchName[i].Trimmed() << '|'
        << (net.BranchCode[i] & ~(Bit::Selected | Bit::InView)) << ' ' << net.Dim[i][1] << 'x'
        << net.Dim[i][2] << ' ' << net.Length[i] << ' ' << net.Resistance[i] << ' '
        << net.FanNumber[i] << ' ' << net.Contaminant[i] << ' ' << net.EntryNodeId[i] << ' '
        << net.ExitNodeId[i];
    rows[net.AirwayNo[i]] = row.str();
  }
  return rows;
}

struct FakeDialogs : EditDialogs {
  bool AirwayEdit(int mode, int airway) override {
    lastMode = mode;
    lastAirway = airway;
    return during ? during(airway) : false;
  }
  bool FanEdit(int) override { return false; }
  std::optional<WorldPoint> Coordinates(const WorldPoint&) override { return typed; }
  std::optional<NodeMove> MoveNodeTo(const WorldPoint&) override {
    if (!typed) return std::nullopt;
    return NodeMove{*typed, copy};
  }
  std::optional<WorldPoint> typed;
  bool copy = false;
  std::function<bool(int)> during;  // what the user does in the editor; true for a commit
  int lastMode = 0, lastAirway = 0;
};

// A (0,0)-(200,0), B (200,0)-(200,200), C (200,0)-(400,0), D (-200,0)-(0,0), all at -10.
struct EditingTest : ::testing::Test, ViewFixture {
  EditingTest() : journal(ws) {
    ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
    ws.paths.TempFolder = ScratchDir() + "/";
    ws.journal = &journal;
    journal.ResetUndoFile();
    Add(0, 0, -10, 200, 0, -10);
    Add(200, 0, -10, 200, 200, -10);
    Add(200, 0, -10, 400, 0, -10);
    Add(-200, 0, -10, 0, 0, -10);
    ws.net.NextAirwayNo = 4;
    view.WorkingRL = -10;
    tools.Edit.Dialogs = &dialogs;
    tools.Edit.AttributeChosen[AttributeOf::Dimensions] = true;
    Build();
  }

  void Drag(std::int16_t tool, float x1, float y1, float x2, float y2, int button = 1,
            bool shift = false) {
    tools.ToolCode = tool;
    MouseDown(ws, view, tools, {x1, y1, button, shift, 0});
    MouseMove(ws, view, tools, {(x1 + x2) / 2, (y1 + y2) / 2, button, shift, 0});
    MouseMove(ws, view, tools, {x2, y2, button, shift, 0});
    MouseUp(ws, view, tools, {x2, y2, button, shift, 0});
    Build();
  }
  void Click(std::int16_t tool, float x, float y, int button = 1) {
    tools.ToolCode = tool;
    MouseDown(ws, view, tools, {x, y, button, false, 0});
    MouseUp(ws, view, tools, {x, y, button, false, 0});
    Build();
  }
  int At(int airwayNo) const {
    for (int i = 1; i <= ws.net.BranchCount; ++i)
      if (ws.net.AirwayNo[i] == airwayNo) return i;
    return 0;
  }

  // Every airway of the fixture is 200 long: a merge would leave one longer, or of no length.
  void ExpectNoMerge() const {
    for (int i = 1; i <= ws.net.BranchCount; ++i) EXPECT_EQ(ws.net.Length[i], 200) << i;
  }

  UndoFile journal;
  ToolState tools;
  FakeDialogs dialogs;
};

// One mouse gesture as an edit: a click where both points are the same, else a drag.
std::function<void(EditingTest&)> G(std::int16_t tool, float x1, float y1, float x2, float y2,
                                    int button = 1) {
  return [=](EditingTest& t) {
    if (x1 == x2 && y1 == y2)
      t.Click(tool, x1, y1, button);
    else
      t.Drag(tool, x1, y1, x2, y2, button);
  };
}

struct EditCase {
  const char* name;
  std::function<void(EditingTest&)> act;
  int airways;                                   // count after the edit
  std::function<void(EditingTest&)> check = {};  // more checks on the edited store
  std::function<void(EditingTest&)> setup = {};  // before the edit, kept by undo
};

class EditTable : public EditingTest, public ::testing::WithParamInterface<EditCase> {};

TEST_P(EditTable, EditsAreUndoneAndRedoneExactly) {
  const EditCase& c = GetParam();
  if (c.setup) c.setup(*this);
  const auto before = Airways(ws.net);
  c.act(*this);
  EXPECT_EQ(ws.net.BranchCount, c.airways);
  if (c.check) c.check(*this);
  const auto after = Airways(ws.net);
  ASSERT_NE(before, after) << "the edit changed nothing";
  EXPECT_EQ(ws.net.NetworkSaved, 0);

  EXPECT_TRUE(journal.Undo());
  EXPECT_EQ(Airways(ws.net), before);
  EXPECT_TRUE(journal.Redo());
  EXPECT_EQ(Airways(ws.net), after);
  EXPECT_TRUE(journal.Undo());
  EXPECT_EQ(Airways(ws.net), before);
  EXPECT_FALSE(journal.Undo());
  EXPECT_TRUE(ui.Said(kMsgNoMoreUndo));
}

INSTANTIATE_TEST_SUITE_P(
    Edits, EditTable,
    ::testing::Values(
        EditCase{"DrawFree", G(ToolOf::Draw, -100, 300, 300, 300), 5,
                 [](EditingTest& t) {
                   const int n = t.At(5);
                   EXPECT_EQ(t.ws.net.Length[n], 400);
                   EXPECT_EQ(t.ws.net.Coord1[n][3], -10);
                 }},
        EditCase{"DrawFromAnEnd", G(ToolOf::Draw, 398, 2, 400, -200), 5,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.EntryNodeId[t.At(5)], t.ws.net.ExitNodeId[t.At(3)]);
                 }},
        EditCase{"DrawToATypedPoint",
                 [](EditingTest& t) {
                   t.dialogs.typed = WorldPoint{400, 0, -90};
                   t.Click(ToolOf::Draw, 400, 0, MouseButtonOf::Right);
                 },
                 5,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.Coord2[t.At(5)][3], -90);
                   EXPECT_EQ(t.ws.net.Length[t.At(5)], 80);
                 }},
        EditCase{"CopyANodeToATypedPoint",
                 [](EditingTest& t) {
                   t.dialogs.typed = WorldPoint{0, 100, -10};
                   t.dialogs.copy = true;
                   t.Click(ToolOf::Move, 0, 0, MouseButtonOf::Right);
                 },
                 6,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.Coord1[t.At(1)][2], 0);  // the originals stay
                   EXPECT_EQ(t.ws.net.Coord1[t.At(5)][2], 100);
                   EXPECT_EQ(t.ws.net.Coord2[t.At(6)][2], 100);
                 }},
        EditCase{"DrawFromABodySplitsIt", G(ToolOf::Draw, 100, 1, 100, 300), 6,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.Coord2[t.At(1)][1], 100);
                   EXPECT_EQ(t.ws.net.Coord1[t.At(5)][1], 100);
                   EXPECT_EQ(t.ws.net.Coord1[t.At(6)][2], 0);
                 }},
        EditCase{"DrawAlongOneBodySplitsItTwice", G(ToolOf::Draw, 50, 1, 150, 1), 7},
        EditCase{"DrawOntoABodySplitsIt", G(ToolOf::Draw, -200, 0, 199, 120), 6},
        EditCase{"MoveAnEndMovesTheNode", G(ToolOf::Move, 200, 0, 220, 30), 4,
                 [](EditingTest& t) {
                   for (int no : {1, 2, 3}) {
                     const int i = t.At(no);
                     const Coord3& c = no == 1 ? t.ws.net.Coord2[i] : t.ws.net.Coord1[i];
                     EXPECT_EQ(c[1], 220);
                     EXPECT_EQ(c[2], 30);
                   }
                 }},
        EditCase{"MoveOntoANodeJoins", G(ToolOf::Move, 200, 200, 400, 0), 4,
                 [](EditingTest& t) {
                   EXPECT_TRUE(t.ui.Said(kMsgJoinNodes));
                   EXPECT_EQ(t.ws.net.ExitNodeId[t.At(2)], t.ws.net.ExitNodeId[t.At(3)]);
                 }},
        EditCase{"DeleteAnAirway", G(ToolOf::Delete, 200, 100, 200, 100), 3},
        EditCase{"DeleteANodeMergesItsTwoAirwaysIntoTheUpstreamOne", G(ToolOf::Delete, 0, 0, 0, 0),
                 3,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.At(1), 0);
                   EXPECT_EQ(t.ws.net.Coord2[t.At(4)][1], 200);
                 }},
        EditCase{"DeleteAtTwoEntriesDeletesAnAirway", G(ToolOf::Delete, 0, 0, 0, 0), 3,
                 [](EditingTest& t) { t.ExpectNoMerge(); },
                 [](EditingTest& t) {
                   Network& net = t.ws.net;
                   std::swap(net.Coord1[t.At(4)], net.Coord2[t.At(4)]);
                   std::swap(net.EntryNodeId[t.At(4)], net.ExitNodeId[t.At(4)]);
                   t.Build();
                 }},
        EditCase{"DeleteAtTheEndOfTwoParallelsDeletesOne", G(ToolOf::Delete, 200, 200, 200, 200), 3,
                 [](EditingTest& t) { t.ExpectNoMerge(); },
                 [](EditingTest& t) {
                   Network& net = t.ws.net;
                   for (auto* field : {&net.Coord1, &net.Coord2})
                     (*field)[t.At(4)] = (*field)[t.At(2)];
                   net.EntryNodeId[t.At(4)] = net.EntryNodeId[t.At(2)];
                   net.ExitNodeId[t.At(4)] = net.ExitNodeId[t.At(2)];
                   t.Build();
                 }},
        EditCase{"FenceDelete", G(ToolOf::Delete, 150, -50, 450, 250), 1},
        EditCase{"InsertANodeKeepsAFixedDirectionOnBothHalves", G(ToolOf::Insert, 300, 0, 300, 0),
                 5,
                 [](EditingTest& t) {
                   for (int no : {3, 5})
                     EXPECT_TRUE(t.ws.net.BranchCode[t.At(no)] & Bit::FixedDirection) << no;
                 },
                 [](EditingTest& t) { t.ws.net.BranchCode[t.At(3)] |= Bit::FixedDirection; }},
        EditCase{"Reverse", G(ToolOf::Reverse, 200, 100, 200, 100), 4,
                 [](EditingTest& t) { EXPECT_EQ(t.ws.net.Coord1[t.At(2)][2], 200); }},
        EditCase{"Contaminant", G(ToolOf::Contaminant, 300, 0, 300, 0), 4,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.Contaminant[t.At(3)], 100);
                   EXPECT_TRUE(t.tools.Edit.SourceToolUsed);  // "Retain Legend" now stands
                 }},
        EditCase{"NodeName",
                 [](EditingTest& t) {
                   t.ui.QueueInput("N,1");
                   t.ui.QueueInput("N1");
                   t.Click(ToolOf::Text, 200, 0);
                 },
                 4,
                 [](EditingTest& t) {
                   EXPECT_TRUE(t.ui.Said(kMsgCommas));
                   EXPECT_EQ(t.ws.net.EntryNodeName[t.At(3)].Trimmed(), "N1");
                   EXPECT_EQ(t.ws.net.ExitNodeName[t.At(1)].Trimmed(), "N1");
                 }},
        EditCase{"FencePasteOfAttributes",
                 [](EditingTest& t) {
                   t.Click(ToolOf::CopyPaste, -100, 0, MouseButtonOf::Right);
                   t.Drag(ToolOf::CopyPaste, 250, -50, 450, 250);
                 },
                 4,
                 [](EditingTest& t) {
                   EXPECT_TRUE(t.ui.Said(kMsgFencePaste));
                   EXPECT_EQ(t.ws.net.Dim[t.At(3)][2], 5);
                   EXPECT_EQ(t.ws.net.Dim[t.At(1)][2], 4);
                 },
                 [](EditingTest& t) {
                   t.ws.net.Dim[t.At(4)] = {0, 3, 5};
                 }},
        EditCase{"MoveTheSelection",
                 [](EditingTest& t) {
                   t.Click(ToolOf::Select, 200, 100);
                   t.Drag(ToolOf::Move, 200, 120, 250, 120);
                 },
                 4,
                 [](EditingTest& t) {
                   EXPECT_EQ(t.ws.net.Coord2[t.At(2)][1], 250);
                   EXPECT_EQ(t.ws.net.Coord2[t.At(1)][1], 250);  // stays attached
                 }}),
    [](const ::testing::TestParamInfo<EditCase>& info) { return info.param.name; });

// Refusals: the message, the store as it was, and nothing to undo.
struct Refusal {
  const char* name;
  std::function<void(EditingTest&)> act;
  const char* message;
  std::function<void(EditingTest&)> setup = {};
};

class RefusalTable : public EditingTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(RefusalTable, LeaveTheNetworkAsItWas) {
  if (GetParam().setup) GetParam().setup(*this);
  const auto before = Airways(ws.net);
  GetParam().act(*this);
  EXPECT_EQ(Airways(ws.net), before);
  EXPECT_TRUE(GetParam().message[0] == '\0' || ui.Said(GetParam().message));
  EXPECT_FALSE(journal.Undo());
}

INSTANTIATE_TEST_SUITE_P(
    Refusals, RefusalTable,
    ::testing::Values(
        Refusal{"ZeroLength", G(ToolOf::Draw, 0, 0, 2, 1), ""},
        Refusal{"PastMaxAirways",
                [](EditingTest& t) {
                  t.ws.net.MaxAirways = 5;
                  t.Drag(ToolOf::Draw, -100, 300, 300, 300);
                },
                kMsgAirwaysExceeded},
        Refusal{"WithinTheSurface",
                [](EditingTest& t) {
                  t.ws.net.RLCount = 1;
                  t.ws.net.RLBound[1] = {0, 99999, -20};
                  t.Drag(ToolOf::Draw, -100, 300, 300, 300);
                },
                kMsgSurfaceAirway},
        Refusal{"JoinRefused",
                [](EditingTest& t) {
                  t.ui.QueueAnswer(MsgAnswer::No);
                  t.Drag(ToolOf::Move, 200, 200, 400, 0);
                },
                kMsgJoinNodes},
        Refusal{"MoveOntoItsOwnOtherEnd", G(ToolOf::Move, 200, 200, 200, 0), kMsgNoLength},
        Refusal{"NodeOfThreeAirways", G(ToolOf::Delete, 200, 0, 200, 0), kMsgTooManyAttached},
        Refusal{"FanOnAFixedQuantity", G(ToolOf::Fan, 300, 0, 300, 0), kMsgFanFixedQuantity,
                [](EditingTest& t) { t.ws.net.BranchCode[t.At(3)] |= Bit::FixedQuantity; }},
        Refusal{"PasteWithNothingCopied", G(ToolOf::CopyPaste, 300, 0, 300, 0), kMsgCopyFirst},
        Refusal{"FenceDeleteAnsweredNo",
                [](EditingTest& t) {
                  t.ui.QueueAnswer(MsgAnswer::No);
                  t.Drag(ToolOf::Delete, 150, -50, 450, 250);
                },
                kMsgFenceDelete}),
    [](const ::testing::TestParamInfo<Refusal>& info) { return info.param.name; });

TEST_F(EditingTest, ALeftClickPlacesTheChosenReportPinARightClickAClearOne) {
  for (std::int16_t chosen : {1, 2}) {
    tools.Edit.PinType = chosen;
    Click(ToolOf::SmokeReport, 300, 0);
    EXPECT_EQ(ws.net.SmokeData[At(3)][1], chosen);
    Click(ToolOf::SmokeReport, 300, 0);  // the same pin again takes it away
    EXPECT_EQ(ws.net.SmokeData[At(3)][1], 0);
  }
  Click(ToolOf::SmokeReport, 200, 100, MouseButtonOf::Right);
  EXPECT_EQ(ws.net.SmokeData[At(2)][1], 2);
}

TEST_F(EditingTest, ANewEditAfterAnUndoDropsTheRedoTail) {
  Drag(ToolOf::Draw, -100, 300, 300, 300);
  journal.Undo();
  Click(ToolOf::Reverse, 200, 100);
  const auto reversed = Airways(ws.net);
  EXPECT_FALSE(journal.Redo());
  EXPECT_TRUE(ui.Said(kMsgNoMoreRedo));
  EXPECT_EQ(Airways(ws.net), reversed);
}

TEST_F(EditingTest, TheJournalWrapsAtUndoMaxWithItsMessage) {
  ws.net.UndoMax = 5;
  Click(ToolOf::Reverse, 200, 100);  // entries 1, 2
  Click(ToolOf::Reverse, 300, 0);    // entries 3, 4; the next would pass 5
  Click(ToolOf::Reverse, 100, 0);
  EXPECT_TRUE(ui.Said(kMsgUndoBufferFull));
  EXPECT_EQ(journal.UndoWritePos(), 2);
}

// While the editor is open its airway is drawn highlighted; a new resistance type puts the
// symbol where the airway was picked.
TEST_F(EditingTest, TheEditedAirwayIsHighlightedAndItsNewRegulatorStandsAtThePick) {
  Colour drawn = 0;
  dialogs.during = [this, &drawn](int airway) {
    Build();
    for (int k = 0; k < view.AirwayLineCount; ++k)
      if (view.LineAirway[k] == airway) drawn = ws.net.AirwayLine[k].Colour;
    ws.net.ResType[airway] = 2;
    return true;
  };
  Click(ToolOf::Edit, 250, 0);
  EXPECT_EQ(drawn, kHighlightColour);
  EXPECT_EQ(ws.HighlightAirway, 0);
  EXPECT_NEAR(ws.net.LabelPos[At(3)], 0.25f - 0.3f, 0.01f);
  ws.net.LabelPos[At(3)] = 0.5f;
  dialogs.during = [](int) { return true; };  // the same type: the symbol stays
  Click(ToolOf::Edit, 350, 0);
  EXPECT_EQ(ws.net.LabelPos[At(3)], 0.5f);
}

TEST_F(EditingTest, ARedoBringsBackTheRegulatorWhereItWasPicked) {
  dialogs.during = [this](int airway) {  // commits as the editor does: one journalled action
    JournalBefore(ws.journal, airway);
    ws.net.ResType[airway] = 2;
    JournalAfter(ws.journal, airway);
    CloseUndoAction(ws.journal);
    return true;
  };
  Click(ToolOf::Edit, 250, 0);
  ASSERT_TRUE(journal.Undo());
  ASSERT_TRUE(journal.Redo());
  const int airway = At(3);
  EXPECT_EQ(ws.net.ResType[airway], 2);
  EXPECT_NEAR(ws.net.LabelPos[airway], 0.25f - 0.3f, 0.01f);
}

TEST_F(EditingTest, EditAndFindToolsOpenTheirDialogsAndGoToTheAirway) {
  Click(ToolOf::Edit, 300, 0);
  EXPECT_EQ(dialogs.lastMode, 1);
  EXPECT_EQ(dialogs.lastAirway, At(3));
  Click(ToolOf::Select, 300, 0);
  Click(ToolOf::Insert, 300, 0);
  EXPECT_EQ(dialogs.lastMode, 3);
  EXPECT_EQ(ws.net.BranchCount, 4);
  ws.net.BranchCode[At(2)] |= Bit::ErrorMark;
  tools.Edit.SearchMode = 1;
  EXPECT_TRUE(FindAirway(ws, view, tools));
  EXPECT_TRUE(ws.net.BranchCode[At(2)] & Bit::Selected);
  tools.Edit.SearchMode = 3;
  EXPECT_FALSE(FindAirway(ws, view, tools));
  EXPECT_TRUE(ui.Said(kMsgNoBranches));
}

}  // namespace
}  // namespace galeris::test
