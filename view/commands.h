// The command dispatcher: every palette button, its menu twin and the function keys arrive at
// RunCommand with a button code. Codes that choose a tool leave it current; the others act at
// once and hand the palette back to the button that was down before. What needs a dialog, a
// file or the solver is answered as an operation for the window layer to carry out.
#pragma once

#include <cstdint>
#include <string>

#include "core/workspace.h"
#include "view/tools.h"
#include "view/view_state.h"

namespace galeris {

// Button codes with a name of their own in the program.
namespace ButtonOf {
inline constexpr int ZoomPan = 0, Fit = 1, Layers = 2, Find = 3, Draw = 4, Redo = 5, Move = 6,
                     Reverse = 7, Delete = 8, Fan = 9, Text = 10, Contaminant = 11, Edit = 12,
                     Info = 13, AirSimulation = 14, InsertNode = 15, Follow = 16, SmokeReport = 17,
                     CentreRotate = 18, Open = 19, Save = 20, CopyAttributes = 21, PrintScreen = 22,
                     Undo = 23, TwoDThreeD = 24, Grid = 25, DisplayOptions = 26, Levels = 27,
                     UpdateScreen = 28, ContaminantSimulation = 29, SmokeSourcing = 30, Select = 31,
                     Spare = 32, PasteAttributes = 91;
}
inline constexpr int kPaletteButtonCount = 32;

// What a command leaves for the window layer.
enum class CommandOperation {
  None,
  Fit,         // done here: redraw
  FindAirway,  // done here: redraw when an airway was found
  Redo,
  Undo,
  AirSimulation,  // run the airflow simulation, then rebuild the visible list and project
  Open,
  Save,                   // save under the network's name
  SaveAs,                 // no name yet, or a Master file
  PrintScreen,            // the user said OK to "Print Screen ?"
  ToggleThreeD,           // done here: redraw
  ToggleGrid,             // done here: redraw; the menu check follows GridOn
  DisplayOptions,         // open frmViewer modally, then project and redraw
  ToggleLevels,           // done here: redraw
  UpdateScreen,           // done here: redraw every window
  ContaminantSimulation,  // the spread simulation
  SmokeSourcing,          // the source simulation and its trace
  StepLevelUp,            // done here: redraw
  StepLevelDown,          // done here: redraw
};

struct CommandState {
  int CurrentButton = ButtonOf::ZoomPan;
  int PreviousButton = ButtonOf::ZoomPan;
  std::int16_t CopyOrPaste = 0;  // 0 copy mode, -1 paste mode of the attribute tool
  std::int16_t CommandBusy = 0;
  int PressedButton = ButtonOf::ZoomPan;  // the palette button shown down
};

struct CommandResult {
  CommandOperation Operation = CommandOperation::None;
  bool Redraw = false;            // redraw the current window (every window for UpdateScreen)
  bool ToolChanged = false;       // a lasting tool was chosen
  int StatusButton = -1;          // whose tool tip the status shows; -1 for none
  bool FocusWindow = true;        // give the current window the focus
  bool PasteMenuChecked = false;  // mnuCopy2 checked, mnuCpyPst not
  bool CopyMenuChecked = false;   // mnuCpyPst checked, mnuCopy2 not
  std::string Unavailable;        // a command this version does not offer yet
};

// The tool a button code chooses, or -1 when the code is a command.
int ToolOfButton(int code);

// RunCommand on cmd.CurrentButton. view is the current window's state, or null with no window.
CommandResult RunCommand(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools);
// Tools_Click and the menus: the button before becomes PreviousButton, then RunCommand.
CommandResult ClickButton(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools,
                          int code);

// Keys that view windows, the palette and the rotator answer.
enum class ViewKey {
  Other,
  Backspace,
  Tab,
  Escape,
  Home,
  Up,
  Down,
  F1,
  F2,
  F3,
  F4,
  F5,
  F6,
  F7,
  F8,
  F9,
  F10,
  F11,
  F12,
};

// What a key does: a button code, or one of the actions of its own.
struct KeyCommand {
  enum class Kind { Ignore, Button, Undo, ClearSelection, LevelUp, LevelDown } kind = Kind::Ignore;
  int Button = -1;
};
// F5 is the menu's "Airflow Simulation" wherever the focus is, so it is no key of the dispatcher.
KeyCommand CommandOfKey(ViewKey key);

// KeyDown: refreshes PreviousButton and runs the key's action.
CommandResult KeyDown(Workspace& ws, ViewState* view, CommandState& cmd, ToolState& tools,
                      ViewKey key);

// Clears the selected bit (hex 20000) of every airway.
void ClearSelection(Network& net);

}  // namespace galeris
