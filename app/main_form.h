// MainForm: the frame window. It holds the menus, the button palette, the data-display and
// level lists, the simulation status label, the coordinate fields, the status text and the
// view windows, and it runs the file and simulation commands through the engine.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "app/file_dialogs.h"
#include "app/qt_edit_dialogs.h"
#include "core/workspace.h"
#include "files/undo_journal.h"
#include "view/commands.h"
#include "view/tools.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QScrollBar;
class QTimer;

namespace galeris {

// The last entry of CmbRL: every level drawn.
inline constexpr const char* kAllLevelsEntry = "All";

class FrmAttrib;
class FrmError;
class FrmFileNote;
class FrmHelp;
class FrmWindow;
class PrintCommands;
class RealtimeCommands;
class RotatorButton;
class ToolCommands;
class ToolPalette;

inline constexpr int kMaxViewWindows = 5;

// Colours of the simulation status label and of the data lists when a solution stands.
inline constexpr QRgb kSimLabelChanged = 0xFFFFC080;   // RGB 255, 192, 128
inline constexpr QRgb kSimLabelBalanced = 0xFF00FF00;  // RGB 0, 255, 0
inline constexpr QRgb kDataListBalanced = 0xFFC0FFC0;  // RGB 192, 255, 192

class MainForm : public QMainWindow {
  Q_OBJECT
 public:
  // Message boxes and questions go through ws.ui; tests give a scripted one.
  explicit MainForm(Workspace& ws, QWidget* parent = nullptr);
  ~MainForm() override;

  // The load of the frame: the data lists, the recent files, the start-up loads in their one
  // order, the first view window, then the command-line file and the recovery offer.
  void Load(const std::string& commandFile);

  // The file dialogs; tests answer them from a script.
  void SetFileChooser(FileChooser chooser) { chooser_ = std::move(chooser); }
  // Goto of the error list and the views: shows the airway at this store position.
  void OnGoToAirway(std::function<void(int position)> go) { goToAirway_ = std::move(go); }

  // File commands.
  void NewFile();
  void OpenFile();
  void OpenRecent(int number);
  void MergeFile();
  bool SaveFile();
  bool SaveAs();

  // Simulation commands: the run with its progress and error windows, for one SimMode.
  void RunSimulationCommand(int simMode);
  void ReseedAirflowsCommand();

  // Edit commands: the journal's undo and redo, the name finder, the attribute choice.
  void UndoCommand();
  void RedoCommand();
  void FindByNameCommand(bool node);
  void ChooseAttributes();
  UndoFile& Journal() { return undo_; }
  // After any change of the network: every window, the status label and the lists follow.
  void RefreshAfterNetworkChange();

  // Windows.
  FrmWindow* NewViewWindow();
  // The view window the view commands act on: the active one, else the first.
  FrmWindow* CurrentView() const;
  std::vector<FrmWindow*> AllViews() const;
  // mnuFreeze: the first frozen window thaws, else the current one freezes.
  void FreezeCommand();
  // The printable width of the chosen printer and paper goes to every window's scale caption.
  void RefreshPrintableWidth();
  void ExportPictureCommand();
  // Import and export of text and DXF files (main_form_exchange.cpp).
  void ImportDataCommand();
  void ExportDataCommand();
  void ExportDxfCommand(bool screen);
  void ShowFileNote();
  void ShowHelp(const QString& page = "index.html");

  // Refreshes after a change of the network.
  void RefreshSimStatus();
  void RefreshCaption();
  void TileViews();  // mnuTile: the windows side by side, each fitted anew
  // The frame's caption; a "*" before it while the network differs from its file.
  void SetCaption(const QString& caption);
  void RefreshRecentMenu();
  void RefreshLevelList();
  void ShowLevelChoice();  // CmbRL and VsbRL follow the current window's levels
  // The level CmbRL names, or the current window's level while it shows "All" or a range.
  int ChosenLevel() const;
  void RedrawViews();
  void SetStatusText(const QString& text);

  // The data type shown beside the airways: group * 10 + item.
  int DataTypeCode() const { return dataTypeCode_; }
  void SetDataType(int group, int item);

  // Levels, layers and options (main_form_levels.cpp).
  void ShowLevelList();                     // frmRLBase
  void ChooseLevelMode(int mode);           // mnuLevels(1..4)
  void ShowViewingLayers();                 // frmTagS
  void ShowViewOptions(FrmWindow* window);  // frmViewer, palette button 26
  void ShowOptions();                       // frmOptions
  static bool DeclutterSetting();           // the user's Declutter choice, on by default

  QAction* Action(const QString& objectName) const;
  QMdiArea& Views() const { return *mdi_; }
  ToolPalette& Palette() const { return *palette_; }
  FrmError& ErrorForm();
  FrmFileNote& FileNoteForm();
  FrmHelp& HelpForm();
  QLabel& SimLabel() const { return *lblSim_; }
  bool CommandRunning() const { return ws_.sim.Running; }
  // The contaminant and whole-network commands (main_form_tools.cpp).
  ToolCommands& NetworkTools() const { return *toolCommands_; }
  // frmSmokeTrace's "Report Pin": the pin a left click of the report tool places.
  void SetReportPin(int pinType) { tools_.Edit.PinType = static_cast<std::int16_t>(pinType); }
  bool SourceToolUsed() const { return tools_.Edit.SourceToolUsed; }
  // Printing and simplification (main_form_print.cpp).
  PrintCommands& Printing() const { return *printCommands_; }
  // Stations and output of the real-time menu (main_form_realtime.cpp).
  RealtimeCommands& Realtime() const { return *realtimeCommands_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString caption_ = "Galeris";
  friend class ToolCommands;
  friend class PrintCommands;
  friend class RealtimeCommands;
  void BuildMenus();
  void BuildFileMenu();
  void BuildEditMenu();
  void BuildViewMenu();
  void BuildSimulateMenu();
  void BuildToolsMenu();
  void BuildWindowMenu();
  void BuildHelpMenu();
  void BuildLevelMenus();
  void BuildSheetMenus();  // main_form_sheets.cpp
  QAction* AddEntry(QMenu* menu, const QString& name, const QString& caption,
                    std::function<void()> run = {});
  void BuildToolbars();
  void BuildStatusBar();

  void FillDataTypeLists();
  void DataGroupChosen(int position);
  void DataItemChosen(int position);
  void LevelScrolled(int value);
  void LevelChosen(int position);
  void ViewChosen(int position);
  void SaveViewCommand();
  void DeleteViewCommand();
  void ViewCaptionChanged(const QString& caption);
  void PaletteClicked(int index);
  void FrameKeyPressed(ViewKey key);
  void ShowMenuChecks(const CommandResult& result, FrmWindow* view);
  // The dispatcher's answer for a view window, the current one when none is given.
  void CarryOut(const CommandResult& result, FrmWindow* view = nullptr);
  void RefreshToolCursors();
  int FreeWindowNumber() const;
  // Windows (main_form_windows.cpp).
  std::vector<FrmWindow*> ViewsCurrentLast() const;
  void ViewActivated(QMdiSubWindow* sub);
  void FillWindowList();
  double PrintableWidthMm() const;
  bool MayCloseView();

  // opened: a file was opened (not merged), so views may take its start-up view.
  void AfterLoad(bool loaded, bool opened = false);
  void AfterSave(bool saved);
  QString ChooseFile(FileDialogRequest request);
  QString ChooseNetworkToOpen(const QString& title);
  bool OpenPath(const std::string& path);
  void RestartAutosave();
  void AutosaveTimerTick();
  bool IsBusy() const;
  void ShowRunResult(bool reachedTheEnd);
  void SetSimulationEnabled(bool enabled);
  void GoToAirwayNo(int airwayNo);
  void StopRun();

  Workspace& ws_;
  FileChooser chooser_;
  std::function<void(int)> goToAirway_;

  QMdiArea* mdi_ = nullptr;
  ToolPalette* palette_ = nullptr;
  RotatorButton* rotator_ = nullptr;
  QComboBox* cmbDataType_ = nullptr;
  QComboBox* cmbDataVal_ = nullptr;
  QComboBox* cmbRL_ = nullptr;
  QScrollBar* vsbRL_ = nullptr;
  QComboBox* cmbView_ = nullptr;
  QLabel* lblSim_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QLabel* lblRotX_ = nullptr;
  QLabel* lblRotY_ = nullptr;
  QLineEdit* txtX_ = nullptr;
  QLineEdit* txtY_ = nullptr;
  QLineEdit* txtZ_ = nullptr;
  QMenu* fileMenu_ = nullptr;
  QMenu* windowMenu_ = nullptr;
  QAction* recentSeparator_ = nullptr;
  std::vector<QAction*> windowList_;  // the open windows at the foot of the Window menu
  QPointer<FrmWindow> activeView_;    // the window whose layers the network shows
  std::array<QAction*, 10> mnuOld_{};
  QTimer* autosave_ = nullptr;
  int autoSaveTicks_ = 0;
  FrmAttrib* frmAttrib_ = nullptr;
  FrmError* frmError_ = nullptr;
  FrmFileNote* frmFileNote_ = nullptr;
  FrmHelp* frmHelp_ = nullptr;

  int dataTypeCode_ = 12;
  std::array<int, 6> lastItemOfGroup_{2, 2, 2, 2, 2, 2};
  bool fillingLists_ = false;
  // The palette's dispatcher and the mouse tools, shared by the palette, the menus, the keys
  // and the mouse of every view window.
  CommandState commands_;
  ToolState tools_;
  UndoFile undo_{ws_};
  QtEditDialogs dialogs_{ws_, this, [this] { RedrawViews(); }};
  bool refreshDue_ = false;  // a change of the network waits for the windows to follow
  ToolCommands* toolCommands_ = nullptr;
  PrintCommands* printCommands_ = nullptr;
  RealtimeCommands* realtimeCommands_ = nullptr;
};

}  // namespace galeris
