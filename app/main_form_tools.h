// The contaminant commands of the Simulate menu and the palette, the whole-network commands of
// the Tools and File menus, the network summary and the name lists: the windows they open and
// what the views show while a spread or a trace stands.
#pragma once

#include <QObject>
#include <array>
#include <functional>

#include "simulate/contaminants.h"

namespace galeris {

class FrmListAirNames;
class FrmListAirNodes;
class FrmSmoke;
class FrmSmokeLegend;
class FrmSmokeTrace;
class FrmSummary;
class MainForm;
struct ViewState;
struct Workspace;

class ToolCommands : public QObject {
  Q_OBJECT
 public:
  // Connects and enables the menu entries of these commands on the frame.
  explicit ToolCommands(MainForm& form);

  // Simulate menu.
  void SmokeSimulation();     // mnuFire: refused while a spread is shown
  void RunSpread();           // palette button 29 and "Show Smoke": frmSmoke at once
  void SourcingSimulation();  // mnuTrace and palette button 30
  void ClearSmokeTracking();  // mnuClrSmoke
  void ClearSmokeSourcing();  // mnuClrSources

  void ShowSummary();
  void ShowNameList(bool nodeNames);

  // The contaminant display of the current view: 0 none, 1 spread, 2 trace.
  int SmokeState() const;
  FrmSmoke& SmokeForm();
  FrmSmokeLegend* Legend() const { return legend_; }
  FrmSmokeTrace* Trace() const { return trace_; }
  FrmSummary* Summary() const { return summary_; }

 private:
  void ConnectMenus();
  void ConnectEntry(const char* name, std::function<void()> run);
  // A whole-network command: runs it, then refreshes the status and the views.
  void ConnectEdit(const char* name, std::function<bool()> run, bool fitViews = false);
  void ForEachView(const std::function<void(ViewState&)>& change);
  void SetSmokeState(int state);
  // The spread from frmSmoke's choices, as its "Simulate" runs it.
  void SpreadFromForm();
  void SpreadFinished(const SpreadResult& result, bool retain);
  FrmSmokeLegend& LegendForm();
  FrmSmokeTrace& TraceForm();
  void RememberDataType();
  void RestoreDataType();
  void AfterViewChosen();
  void NamePicked(const QString& searchText, bool nodeNames);

  MainForm& form_;
  Workspace& ws_;
  FrmSmoke* frmSmoke_ = nullptr;
  bool retainLegend_ = false;  // "Retain Legend" as the spread last read it
  FrmSmokeLegend* legend_ = nullptr;
  FrmSmokeTrace* trace_ = nullptr;
  FrmSummary* summary_ = nullptr;
  FrmListAirNames* names_ = nullptr;
  FrmListAirNodes* nodes_ = nullptr;
  int savedDataType_ = 0;  // the data display before the spread, 0 when none is kept
};

}  // namespace galeris
