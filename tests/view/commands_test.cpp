// The command dispatcher: lasting tools against momentary commands, the palette's pressed
// button, the printing question, paste mode, and the keys of the view windows.
#include "view/commands.h"

#include "tests/view/view_fixture.h"

namespace galeris::test {
namespace {

struct CommandsTest : ::testing::Test, ViewFixture {
  CommandResult Click(int code) { return ClickButton(ws, &view, cmd, tools, code); }
  CommandResult Press(ViewKey key) { return KeyDown(ws, &view, cmd, tools, key); }

  CommandState cmd;
  ToolState tools;
};

TEST_F(CommandsTest, ToolButtonsChooseTheirTools) {
  const std::pair<int, int> table[] = {{0, 0},   {2, 16},  {4, 1},   {6, 2},   {7, 3},   {8, 4},
                                       {9, 5},   {10, 6},  {11, 7},  {12, 8},  {13, 9},  {15, 17},
                                       {16, 11}, {17, 18}, {18, 10}, {21, 15}, {31, 19}, {32, 20}};
  for (const auto& [button, tool] : table) {
    const CommandResult result = Click(button);
    EXPECT_TRUE(result.ToolChanged) << button;
    EXPECT_EQ(tools.ToolCode, tool) << button;
    EXPECT_EQ((std::array<int, 4>{cmd.CurrentButton, cmd.PressedButton, tools.PaletteIndex,
                                  result.StatusButton}),
              (std::array{button, button, button, button}));
  }
}

TEST_F(CommandsTest, MomentaryCommandsNameTheirOperationAndGiveThePaletteBack) {
  const std::pair<int, CommandOperation> table[] = {
      {ButtonOf::Undo, CommandOperation::Undo},
      {ButtonOf::AirSimulation, CommandOperation::AirSimulation},
      {ButtonOf::SmokeSourcing, CommandOperation::SmokeSourcing},
      {ButtonOf::Find, CommandOperation::FindAirway}};
  Click(ButtonOf::Fan);
  for (const auto& [button, operation] : table) {
    EXPECT_EQ(Click(button).Operation, operation) << button;
    EXPECT_EQ(cmd.CurrentButton, ButtonOf::Fan) << button;
    EXPECT_EQ(tools.ToolCode, ToolOf::Fan) << button;
  }
  EXPECT_EQ(view.SmokeState, 2);
  EXPECT_FALSE(Click(ButtonOf::AirSimulation).FocusWindow);
  EXPECT_TRUE(Click(ButtonOf::Grid).FocusWindow);
}

TEST_F(CommandsTest, PrintScreenResetsThePaletteToZoomAndAsksFirst) {
  Click(ButtonOf::Delete);
  ui.QueueAnswer(MsgAnswer::Cancel);
  CommandResult result = Click(ButtonOf::PrintScreen);
  EXPECT_EQ(result.Operation, CommandOperation::None);
  EXPECT_TRUE(result.Redraw);
  EXPECT_TRUE(ui.Said("Print Screen ?"));
  EXPECT_EQ((std::array<int, 3>{tools.ToolCode, cmd.CurrentButton, cmd.PressedButton}),
            (std::array<int, 3>{ToolOf::Zoom, ButtonOf::ZoomPan, ButtonOf::ZoomPan}));

  ui.QueueAnswer(MsgAnswer::OK);
  result = Click(ButtonOf::PrintScreen);
  EXPECT_EQ(result.Operation, CommandOperation::PrintScreen);
}

TEST_F(CommandsTest, PasteModeShowsTheCopyButtonAndCopyModeClearsIt) {
  CommandResult result = Click(ButtonOf::PasteAttributes);
  EXPECT_EQ(tools.ToolCode, ToolOf::CopyPaste);
  EXPECT_EQ((std::array<int, 4>{cmd.CopyOrPaste, cmd.CurrentButton, cmd.PressedButton,
                                result.StatusButton}),
            (std::array<int, 4>{-1, ButtonOf::CopyAttributes, ButtonOf::CopyAttributes, -1}));
  EXPECT_TRUE(result.PasteMenuChecked);
  EXPECT_EQ(CursorName(tools.PaletteIndex, MouseButtonOf::Left), "COPY");

  result = Click(ButtonOf::CopyAttributes);
  EXPECT_EQ(cmd.CopyOrPaste, 0);
  EXPECT_TRUE(result.CopyMenuChecked);
}

TEST_F(CommandsTest, SaveAsksForANameWithoutOneOrForAMasterFile) {
  ws.net.FileName = "/mines/north.smm";
  EXPECT_EQ(Click(ButtonOf::Save).Operation, CommandOperation::SaveAs);
  ws.net.FileName = "/mines/north.SIM";
  EXPECT_EQ(Click(ButtonOf::Save).Operation, CommandOperation::Save);
}

TEST_F(CommandsTest, ViewTogglesChangeTheWindowState) {
  Add(0, 0, 0, 100, 100, -50);
  Build();
  Click(ButtonOf::TwoDThreeD);
  EXPECT_EQ(view.Is3D, 1);
  Click(ButtonOf::TwoDThreeD);
  EXPECT_EQ(view.Is3D, 0);
  Click(ButtonOf::Grid);
  EXPECT_TRUE(view.GridOn);
  view.LevelMode = LevelModeOf::Single;
  view.PreviousLevelMode = LevelModeOf::Range;
  Click(ButtonOf::Levels);
  EXPECT_EQ(view.LevelMode, LevelModeOf::Range);
}

TEST_F(CommandsTest, NoWindowStillAnswersAndUnknownCodesDoNothing) {
  EXPECT_EQ(ClickButton(ws, nullptr, cmd, tools, ButtonOf::Fit).Operation, CommandOperation::Fit);
  EXPECT_EQ(ClickButton(ws, nullptr, cmd, tools, ButtonOf::TwoDThreeD).Operation,
            CommandOperation::ToggleThreeD);
  Click(ButtonOf::Edit);
  EXPECT_EQ(Click(77).Operation, CommandOperation::None);
  EXPECT_EQ(tools.ToolCode, ToolOf::Edit);
}

TEST_F(CommandsTest, KeysKeepTheToolAndF7F8ReachTextAndFansInOrder) {
  Press(ViewKey::F7);
  EXPECT_EQ(tools.ToolCode, ToolOf::Text);
  Press(ViewKey::F8);
  EXPECT_EQ(tools.ToolCode, ToolOf::Fan);
  EXPECT_EQ(cmd.PreviousButton, ButtonOf::Text);
  Press(ViewKey::F3);
  EXPECT_EQ(Press(ViewKey::Tab).Operation, CommandOperation::Redo);
  EXPECT_EQ(tools.ToolCode, ToolOf::Draw);
  EXPECT_EQ(cmd.CurrentButton, ButtonOf::Draw);
  Press(ViewKey::F9);
  const CommandResult result = Press(ViewKey::Backspace);
  EXPECT_EQ(result.Operation, CommandOperation::Undo);
  EXPECT_EQ(result.StatusButton, -1);
  EXPECT_EQ(cmd.CurrentButton, ButtonOf::Info);
  EXPECT_EQ(tools.ToolCode, ToolOf::Info);
  for (ViewKey other : {ViewKey::F1, ViewKey::F5})
    EXPECT_EQ(CommandOfKey(other).kind, KeyCommand::Kind::Ignore);
}

TEST_F(CommandsTest, EscapeAndUpdateScreenClearTheSelection) {
  const int a = Add(0, 0, 0, 100, 0, 0);
  const int b = Add(0, 0, 0, 0, 100, 0);
  ws.net.BranchCode[a] |= Bit::Selected;
  ws.net.BranchCode[b] |= Bit::Selected | Bit::Exhaust;
  EXPECT_TRUE(Press(ViewKey::Escape).Redraw);
  EXPECT_EQ(ws.net.BranchCode[a] & Bit::Selected, 0);
  EXPECT_EQ(ws.net.BranchCode[b], Bit::Rectangular | Bit::Exhaust);
  ws.net.BranchCode[a] |= Bit::Selected;
  EXPECT_EQ(Click(ButtonOf::UpdateScreen).Operation, CommandOperation::UpdateScreen);
  EXPECT_EQ(ws.net.BranchCode[a] & Bit::Selected, 0);
}

TEST_F(CommandsTest, ArrowKeysStepTheLevel) {
  ws.net.RLCount = 3;
  for (int n = 1; n <= 3; ++n) ws.net.RLBound[n] = {0, 200 - 100 * n, 100 - 100 * n};
  view.CurrentLevel = 2;
  EXPECT_EQ(Press(ViewKey::Down).Operation, CommandOperation::StepLevelDown);
  EXPECT_EQ(view.CurrentLevel, 3);
  EXPECT_EQ(view.LevelMode, LevelModeOf::Single);
  Press(ViewKey::Up);
  Press(ViewKey::Up);
  EXPECT_EQ(view.CurrentLevel, 1);
}

}  // namespace
}  // namespace galeris::test
