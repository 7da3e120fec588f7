// The command dispatcher and the keys of the view windows, the palette and the rotator.
#include "view/commands.h"

#include <algorithm>
#include <cctype>

#include "view/drawing.h"
#include "view/fence_tools.h"

namespace galeris {
namespace {

bool IsMasterFile(const std::string& fileName) {
  if (fileName.size() < 4) return false;
  std::string extension = fileName.substr(fileName.size() - 4);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return extension == ".SMM";
}

void ToggleThreeD(Workspace& ws, ViewState& view) {
  if (view.Is3D != 0) {
    view.Is3D = 0;
    SetPlanView(ws, view);
    return;
  }
  view.Is3D = 1;
  ProjectNetwork(ws, view);
  PivotToVisible(ws, view);
  ProjectNetwork(ws, view);
}

void FitView(Workspace& ws, ViewState& view) {
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
  FitNetwork(ws, view);
}

// Momentary commands: the palette goes back to the button before, then the action runs.
void RunMomentary(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools, int code,
                  CommandResult& result) {
  const auto restore = [&cmd] { cmd.CurrentButton = cmd.PreviousButton; };
  switch (code) {
    case ButtonOf::Fit:
      restore();
      if (view != nullptr) FitView(ws, *view);
      result.Operation = CommandOperation::Fit;
      result.Redraw = true;
      break;
    case ButtonOf::Find:
      restore();
      result.Operation = CommandOperation::FindAirway;
      if (view != nullptr && FindAirway(ws, *view, tools)) result.Redraw = true;
      break;
    case ButtonOf::Redo:
      restore();
      result.Operation = CommandOperation::Redo;
      break;
    case ButtonOf::AirSimulation:
      if (view != nullptr) view->SmokeState = 0;
      restore();
      result.Operation = CommandOperation::AirSimulation;
      break;
    case ButtonOf::Open:
      restore();
      result.Operation = CommandOperation::Open;
      break;
    case ButtonOf::Save:
      restore();
      result.Operation = ws.net.FileName.empty() || IsMasterFile(ws.net.FileName)
                             ? CommandOperation::SaveAs
                             : CommandOperation::Save;
      break;
    case ButtonOf::PrintScreen: {
      // Printing hands the palette back to Zoom / Pan, not to the tool before.
      cmd.CurrentButton = ButtonOf::ZoomPan;
      cmd.PreviousButton = ButtonOf::ZoomPan;
      const CommandResult zoom = RunCommand(ws, view, cmd, tools);
      result.ToolChanged = zoom.ToolChanged;
      if (ws.ui.Message("Print Screen ?", MsgButtons::OKCancel, MsgIcon::Question, "Printing") ==
          MsgAnswer::OK) {
        result.Operation = CommandOperation::PrintScreen;
      }
      result.Redraw = true;
      break;
    }
    case ButtonOf::Undo:
      restore();
      result.Operation = CommandOperation::Undo;
      break;
    case ButtonOf::TwoDThreeD:
      restore();
      if (view != nullptr) ToggleThreeD(ws, *view);
      result.Operation = CommandOperation::ToggleThreeD;
      result.Redraw = true;
      break;
    case ButtonOf::Grid:
      restore();
      if (view != nullptr) view->GridOn = !view->GridOn;
      result.Operation = CommandOperation::ToggleGrid;
      result.Redraw = true;
      break;
    case ButtonOf::DisplayOptions:
      restore();
      result.Operation = CommandOperation::DisplayOptions;
      break;
    case ButtonOf::Levels:
      restore();
      if (view != nullptr) ToggleLevelMode(ws, *view);
      result.Operation = CommandOperation::ToggleLevels;
      result.Redraw = true;
      break;
    case ButtonOf::UpdateScreen:
      restore();
      ClearSelection(ws.net);
      result.Operation = CommandOperation::UpdateScreen;
      result.Redraw = true;
      break;
    case ButtonOf::ContaminantSimulation:
      if (view != nullptr) view->SmokeState = 1;
      restore();
      result.Operation = CommandOperation::ContaminantSimulation;
      break;
    case ButtonOf::SmokeSourcing:
      if (view != nullptr) view->SmokeState = 2;
      restore();
      result.Operation = CommandOperation::SmokeSourcing;
      break;
    case ButtonOf::PasteAttributes:
      tools.ToolCode = ToolOf::CopyPaste;
      cmd.CopyOrPaste = -1;
      cmd.CurrentButton = ButtonOf::CopyAttributes;
      result.ToolChanged = true;
      result.PasteMenuChecked = true;
      break;
    default:
      break;
  }
}

}  // namespace

int ToolOfButton(int code) {
  switch (code) {
    case ButtonOf::ZoomPan:
      return ToolOf::Zoom;
    case ButtonOf::Layers:
      return ToolOf::Layers;
    case ButtonOf::Draw:
      return ToolOf::Draw;
    case ButtonOf::Move:
      return ToolOf::Move;
    case ButtonOf::Reverse:
      return ToolOf::Reverse;
    case ButtonOf::Delete:
      return ToolOf::Delete;
    case ButtonOf::Fan:
      return ToolOf::Fan;
    case ButtonOf::Text:
      return ToolOf::Text;
    case ButtonOf::Contaminant:
      return ToolOf::Contaminant;
    case ButtonOf::Edit:
      return ToolOf::Edit;
    case ButtonOf::Info:
      return ToolOf::Info;
    case ButtonOf::InsertNode:
      return ToolOf::Insert;
    case ButtonOf::Follow:
      return ToolOf::Follow;
    case ButtonOf::SmokeReport:
      return ToolOf::SmokeReport;
    case ButtonOf::CentreRotate:
      return ToolOf::CentreRotate;
    case ButtonOf::CopyAttributes:
      return ToolOf::CopyPaste;
    case ButtonOf::Select:
      return ToolOf::Select;
    case ButtonOf::Spare:
      return ToolOf::Spare;
    default:
      return -1;
  }
}

CommandResult RunCommand(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools) {
  CommandResult result;
  cmd.CommandBusy = -1;
  const int code = cmd.CurrentButton;
  if (code == ButtonOf::ZoomPan) tools.ToolCode = ToolOf::Zoom;
  if (code != ButtonOf::PasteAttributes) result.StatusButton = code;

  const int tool = ToolOfButton(code);
  if (tool >= 0) {
    tools.ToolCode = static_cast<std::int16_t>(tool);
    result.ToolChanged = true;
    if (code == ButtonOf::CopyAttributes) {
      cmd.CopyOrPaste = 0;
      result.CopyMenuChecked = true;
    }
  } else {
    RunMomentary(ws, view, cmd, tools, code, result);
  }

  cmd.PressedButton = cmd.CurrentButton;
  tools.PaletteIndex = cmd.CurrentButton;
  cmd.CommandBusy = 0;
  result.FocusWindow = code != ButtonOf::AirSimulation && code != ButtonOf::SmokeReport;
  return result;
}

CommandResult ClickButton(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools,
                          int code) {
  cmd.PreviousButton = cmd.CurrentButton;
  cmd.CurrentButton = code;
  return RunCommand(ws, view, cmd, tools);
}

KeyCommand CommandOfKey(ViewKey key) {
  const auto button = [](int code) { return KeyCommand{KeyCommand::Kind::Button, code}; };
  switch (key) {
    case ViewKey::Backspace:
      return {KeyCommand::Kind::Undo, -1};
    case ViewKey::Tab:
      return button(ButtonOf::Redo);
    case ViewKey::Escape:
      return {KeyCommand::Kind::ClearSelection, -1};
    case ViewKey::Home:
      return button(ButtonOf::Fit);
    case ViewKey::Up:
      return {KeyCommand::Kind::LevelUp, -1};
    case ViewKey::Down:
      return {KeyCommand::Kind::LevelDown, -1};
    case ViewKey::F2:
      return button(ButtonOf::ZoomPan);
    case ViewKey::F3:
      return button(ButtonOf::Draw);
    case ViewKey::F4:
      return button(ButtonOf::Delete);
    case ViewKey::F6:
      return button(ButtonOf::Reverse);
    case ViewKey::F7:
      return button(ButtonOf::Text);
    case ViewKey::F8:
      return button(ButtonOf::Fan);
    case ViewKey::F9:
      return button(ButtonOf::Info);
    case ViewKey::F10:
      return button(ButtonOf::Edit);
    case ViewKey::F11:
      return button(ButtonOf::CopyAttributes);
    case ViewKey::F12:
      return button(ButtonOf::AirSimulation);
    default:
      return {};
  }
}

CommandResult KeyDown(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools,
                      ViewKey key) {
  cmd.PreviousButton = cmd.CurrentButton;
  const KeyCommand command = CommandOfKey(key);
  CommandResult result;
  result.FocusWindow = false;
  switch (command.kind) {
    case KeyCommand::Kind::Ignore:
      break;
    case KeyCommand::Kind::Button:
      cmd.CurrentButton = command.Button;
      return RunCommand(ws, view, cmd, tools);
    case KeyCommand::Kind::Undo:
      result.Operation = CommandOperation::Undo;
      break;
    case KeyCommand::Kind::ClearSelection:
      ClearSelection(ws.net);
      result.Operation = CommandOperation::UpdateScreen;
      result.Redraw = true;
      break;
    case KeyCommand::Kind::LevelUp:
    case KeyCommand::Kind::LevelDown: {
      const bool up = command.kind == KeyCommand::Kind::LevelUp;
      if (view != nullptr) StepLevel(ws, *view, up);
      result.Operation = up ? CommandOperation::StepLevelUp : CommandOperation::StepLevelDown;
      result.Redraw = true;
      break;
    }
  }
  return result;
}

void ClearSelection(Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i) net.BranchCode[i] &= ~Bit::Selected;
}

}  // namespace galeris
