// The contaminant and whole-network commands on the frame: the Simulate menu's smoke entries,
// the palette's spread and sourcing buttons, the Tools menu, the title note, the summary and
// the name lists.
#include "app/main_form_tools.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "editors/frm_list_air_names.h"
#include "editors/frm_list_air_nodes.h"
#include "editors/frm_smoke.h"
#include "editors/frm_smoke_legend.h"
#include "editors/frm_smoke_trace.h"
#include "editors/frm_summary.h"
#include "simulate/simulate.h"
#include "tools/network_commands.h"

namespace galeris {
namespace {

// The data display of a spread: "Other", "Contaminant".
constexpr int kContaminantGroup = 5;
constexpr int kContaminantItem = 5;
constexpr int kSpreadTimeItem = 6;

void PrintWidget(QWidget& widget) {
  QPrinter printer;
  QPrintDialog dialog(&printer, &widget);
  if (dialog.exec() != QDialog::Accepted) return;
  QPainter painter(&printer);
  const double scale = printer.pageRect(QPrinter::DevicePixel).width() / widget.width() / 2;
  painter.scale(scale, scale);
  widget.render(&painter);
}

}  // namespace

ToolCommands::ToolCommands(MainForm& form) : QObject(&form), form_(form), ws_(form.ws_) {
  setObjectName("ToolCommands");
  ConnectMenus();
  // A saved view may carry an animation time: the legend's slider follows it.
  connect(form_.cmbView_, &QComboBox::activated, this, [this] { AfterViewChosen(); });
}

void ToolCommands::ConnectEntry(const char* name, std::function<void()> run) {
  QAction* action = form_.Action(name);
  if (!action) return;
  action->disconnect(&form_);
  connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  action->setEnabled(true);
}

void ToolCommands::ConnectEdit(const char* name, std::function<bool()> run, bool fitViews) {
  ConnectEntry(name, [this, run = std::move(run), fitViews] {
    if (ws_.sim.Running || !run()) return;
    form_.RefreshSimStatus();
    for (FrmWindow* view : form_.AllViews()) fitViews ? view->Fit() : view->Redraw();
  });
}

void ToolCommands::ConnectMenus() {
  ConnectEntry("mnuFire", [this] { SmokeSimulation(); });
  ConnectEntry("mnuTrace", [this] { SourcingSimulation(); });
  ConnectEntry("mnuClrSmoke", [this] { ClearSmokeTracking(); });
  ConnectEntry("mnuClrSources", [this] { ClearSmokeSourcing(); });
  ConnectEdit("mnuAutoName", [this] { return AutoNameAirways(ws_); });
  ConnectEdit("mnuAutoNodes", [this] { return AutoNameNodes(ws_); });
  ConnectEdit("mnuFixL", [this] { return FixAllLengths(ws_); });
  ConnectEdit("mnuUnFixL", [this] { return UnfixAllLengths(ws_); });
  ConnectEdit("mnuResetAir", [this] { return RenumberAirways(ws_); });
  ConnectEdit("mnuchecknumbers", [this] { return CheckNumbering(ws_); });
  ConnectEdit(
      "mnuRevCoord", [this] { return SwapXYAxis(ws_); }, true);
  ConnectEdit("mnuReverse", [this] { return ReverseCoordinateAxis(ws_); });
  ConnectEdit("mnuremdup", [this] { return NormaliseDirections(ws_); });
  ConnectEdit("mnuRmvFlow", [this] { return RemoveFlowLabels(ws_); });
  ConnectEntry("mnuComment", [this] {
    if (!EditTitleNote(ws_)) return;
    form_.RefreshCaption();
    form_.RedrawViews();
  });
  ConnectEntry("mnuFBName", [this] { ShowNameList(false); });
  ConnectEntry("mnuFNName", [this] { ShowNameList(true); });
  if (auto* tools = form_.findChild<QMenu*>("mnuTools")) {
    QAction* summary = tools->addAction("Network Summary...");
    summary->setObjectName("mnuSummary");
    connect(summary, &QAction::triggered, this, [this] { ShowSummary(); });
  }
}

void ToolCommands::ForEachView(const std::function<void(ViewState&)>& change) {
  for (FrmWindow* view : form_.AllViews()) change(view->View());
}

int ToolCommands::SmokeState() const {
  const FrmWindow* view = form_.CurrentView();
  return view ? view->View().SmokeState : 0;
}

void ToolCommands::SetSmokeState(int state) {
  ForEachView([state](ViewState& view) { view.SmokeState = static_cast<std::int16_t>(state); });
}

FrmSmoke& ToolCommands::SmokeForm() {
  if (!frmSmoke_) {
    frmSmoke_ = new FrmSmoke(ws_, &form_);
    connect(frmSmoke_, &FrmSmoke::SimulateClicked, this, &ToolCommands::SpreadFromForm);
    connect(frmSmoke_, &FrmSmoke::CancelClicked, this, [this] {
      ws_.sim.SimCancel = 255;
      if (frmSmoke_->Running()) return;  // the spread shows what it has reached
      SetSmokeState(0);
      if (legend_) legend_->ShowSpreadShown(false);
      ClearNonSourceContaminant(ws_.net);
      form_.RedrawViews();
    });
  }
  return *frmSmoke_;
}

void ToolCommands::SpreadFromForm() {
  RememberDataType();
  SpreadDisplay display = frmSmoke_->Display();
  display.Simulate = [this] { form_.RunSimulationCommand(kModeSimulate); };
  if (!form_.SourceToolUsed()) retainLegend_ = frmSmoke_->RetainLegend();
  const bool retain = retainLegend_;
  ws_.ui.SetBusy(true);
  const SpreadResult result = SimulateContaminant(ws_, display);
  ws_.ui.SetBusy(false);
  form_.RefreshSimStatus();
  if (result.End == SpreadEnd::Finished || result.End == SpreadEnd::Failed) {
    frmSmoke_->accept();
    if (result.End == SpreadEnd::Finished) SpreadFinished(result, retain);
  }
  form_.RedrawViews();
}

void ToolCommands::SmokeSimulation() {
  if (SmokeState() == 1) {
    ws_.ui.Message("Contaminant must be cleared before simulating", MsgButtons::OK,
                   MsgIcon::Exclamation);
    return;
  }
  RunSpread();
}

void ToolCommands::RunSpread() {
  if (ws_.sim.Running) return;
  SmokeForm().exec();
}

void ToolCommands::SpreadFinished(const SpreadResult& result, bool retain) {
  if (trace_) trace_->hide();
  SetSmokeState(1);
  FrmSmokeLegend& legend = LegendForm();
  std::array<float, 6> values = legend.Legend();
  const FrmWindow* view = form_.CurrentView();
  if (view) values[0] = view->View().LegendValue[0];  // box 0 is not read back
  LegendAfterSpread(result.SmokeMax, retain, legend.LegendExists(), values);
  legend.SetLegend(values);
  legend.ShowSpreadShown(true);
  ForEachView([&values](ViewState& v) {
    v.LegendValue = values;
    v.SmokeLimit = 0;
  });
  if (form_.DataTypeCode() / 10 != kContaminantGroup)
    form_.SetDataType(kContaminantGroup, kContaminantItem);
  legend.SetSliderRange(SliderRange(ws_.net));
  if (!legend.isVisible()) {
    const QRect frame = form_.geometry();
    legend.adjustSize();
    legend.move(frame.right() - legend.width() - 24, frame.top() + 120);
  }
  legend.show();
  legend.raise();
}

FrmSmokeLegend& ToolCommands::LegendForm() {
  if (legend_) return *legend_;
  legend_ = new FrmSmokeLegend(ws_, &form_);
  connect(legend_, &FrmSmokeLegend::TimeLimitChanged, this, [this](float seconds) {
    ForEachView([seconds](ViewState& v) { v.SmokeLimit = seconds; });
    form_.RedrawViews();
  });
  connect(legend_, &FrmSmokeLegend::LegendEdited, this, [this] {
    const std::array<float, 6> values = legend_->Legend();
    ForEachView([&values](ViewState& v) { v.LegendValue = values; });
    form_.RedrawViews();
  });
  connect(legend_, &FrmSmokeLegend::ClearSmokeClicked, this, [this] {
    SetSmokeState(0);
    form_.RedrawViews();
  });
  connect(legend_, &FrmSmokeLegend::ShowSmokeClicked, this, [this] {
    SetSmokeState(1);
    // The spread runs again at once in its form, as a press of "Simulate" would run it.
    FrmSmoke* form = &SmokeForm();
    QTimer::singleShot(0, form, [form] { form->Simulate(); });
    RunSpread();
  });
  connect(legend_, &FrmSmokeLegend::SourcesCleared, this, [this] { form_.RedrawViews(); });
  connect(legend_, &FrmSmokeLegend::ExitClicked, this, [this] {
    ForEachView([](ViewState& v) { v.SmokeLimit = 0; });
    SetSmokeState(0);
  });
  connect(legend_, &FrmSmokeLegend::Closed, this, [this] {
    RestoreDataType();
    form_.RedrawViews();
  });
  return *legend_;
}

void ToolCommands::RememberDataType() {
  const int code = form_.DataTypeCode();
  const bool onContaminant = code / 10 == kContaminantGroup &&
                             (code % 10 == kContaminantItem || code % 10 == kSpreadTimeItem);
  if (!onContaminant) savedDataType_ = code;
}

void ToolCommands::RestoreDataType() {
  if (savedDataType_ == 0) return;
  form_.SetDataType(savedDataType_ / 10, savedDataType_ % 10);
  savedDataType_ = 0;
}

void ToolCommands::AfterViewChosen() {
  const FrmWindow* view = form_.CurrentView();
  if (!legend_ || !legend_->isVisible() || !view || view->View().SmokeLimit <= 0) return;
  legend_->MoveSlider(static_cast<int>(view->View().SmokeLimit));
}

FrmSmokeTrace& ToolCommands::TraceForm() {
  if (trace_) return *trace_;
  trace_ = new FrmSmokeTrace(ws_, &form_);
  connect(trace_, &FrmSmokeTrace::PinsCleared, this, [this] {
    SetSmokeState(0);
    form_.RedrawViews();
  });
  connect(trace_, &FrmSmokeTrace::TraceToggled, this, [this](bool shown) {
    SetSmokeState(shown ? 2 : 0);
    form_.RedrawViews();
  });
  connect(trace_, &FrmSmokeTrace::PinTypeChosen, &form_, &MainForm::SetReportPin);
  connect(trace_, &FrmSmokeTrace::Closed, this, [this] {
    SetSmokeState(0);
    form_.RedrawViews();
  });
  return *trace_;
}

void ToolCommands::SourcingSimulation() {
  if (ws_.sim.Running) return;
  const bool traced = TraceContaminant(ws_, [this] { form_.RunSimulationCommand(kModeSimulate); });
  form_.RefreshSimStatus();
  if (!traced) {
    form_.RedrawViews();
    return;
  }
  if (legend_ && legend_->isVisible()) legend_->close();
  SetSmokeState(2);
  FrmSmokeTrace& trace = TraceForm();
  trace.ShowTraceShown(true);
  if (!trace.isVisible()) {
    const QRect frame = form_.geometry();
    trace.adjustSize();
    trace.move(frame.right() - trace.width() - 24, frame.top() + 120);
  }
  trace.show();
  trace.raise();
  form_.RedrawViews();
}

void ToolCommands::ClearSmokeTracking() {
  galeris::ClearSmokeTracking(ws_);
  if (SmokeState() == 1) {
    SetSmokeState(0);
    if (legend_ && legend_->isVisible()) legend_->close();
  }
  form_.RedrawViews();
}

void ToolCommands::ClearSmokeSourcing() {
  galeris::ClearSmokeSourcing(ws_.net);
  form_.RedrawViews();
}

void ToolCommands::ShowSummary() {
  if (!summary_) {
    summary_ = new FrmSummary(ws_, &form_);
    summary_->OnPrint(PrintWidget);
    summary_->OnSimulate([this] { form_.RunSimulationCommand(0); });
  }
  summary_->Refresh();
  summary_->show();
  summary_->raise();
}

void ToolCommands::ShowNameList(bool nodeNames) {
  NameListForm* list = nodeNames ? static_cast<NameListForm*>(nodes_) : names_;
  if (!list) {
    list = nodeNames ? static_cast<NameListForm*>(nodes_ = new FrmListAirNodes(&form_))
                     : (names_ = new FrmListAirNames(&form_));
    connect(list, &NameListForm::NamePicked, this,
            [this, nodeNames](const QString& text) { NamePicked(text, nodeNames); });
  }
  list->SetNames(nodeNames ? NodeNameList(ws_.net) : AirwayNameList(ws_.net));
  list->show();
  list->raise();
}

void ToolCommands::NamePicked(const QString& searchText, bool nodeNames) {
  const std::string text = searchText.toStdString();
  const int position =
      nodeNames ? FindAirwayByNodeName(ws_.net, text) : FindAirwayByName(ws_.net, text);
  if (position == 0) {
    form_.SetStatusText(searchText + " is not in the network");
    return;
  }
  ClearSelection(ws_.net);
  ws_.net.BranchCode[position] |= Bit::Selected;
  form_.GoToAirwayNo(ws_.net.AirwayNo[position]);
}

}  // namespace galeris
