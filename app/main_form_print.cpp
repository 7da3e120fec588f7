// Printing and simplification commands of the frame.
#include "app/main_form_print.h"

#include <QAction>
#include <QMenu>

#include "app/data_types.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "editors/frm_printer.h"
#include "editors/frm_simplify.h"
#include "editors/print_network.h"

namespace galeris {

PrintCommands::PrintCommands(MainForm& form) : QObject(&form), form_(form), ws_(form.ws_) {
  setObjectName("PrintCommands");
  if (QAction* picture = form_.Action("mnuExportPicture")) {
    auto* print = new QAction("Print Network...", &form_);
    print->setObjectName("mnuPrintNetwork");
    const QList<QAction*> entries = form_.fileMenu_->actions();
    form_.fileMenu_->insertAction(entries.value(entries.indexOf(picture) + 1), print);
    connect(print, &QAction::triggered, this, [this] { ShowPrinter(); });
  }
  if (QAction* simplify = form_.Action("mnuSimp")) {
    connect(simplify, &QAction::triggered, this, [this] { ShowSimplify(); });
    simplify->setEnabled(true);
  }
}

void PrintCommands::RefreshSettings() {
  if (settings_.Title.empty()) settings_.Title = ws_.net.NetworkTitle;
  const int code = form_.DataTypeCode();
  const int group = code / 10, item = code % 10;
  settings_.DataName.clear();
  if (group >= 1 && group <= kDataGroups) {
    const QStringList items = DataItemNames(group);
    settings_.DataName = DataGroupNames().value(group - 1).toStdString();
    if (item >= 2 && item - 2 < items.size())
      settings_.DataName += " " + items[item - 2].toStdString();
  }
}

QString PrintCommands::ChoosePdfFile() {
  FileDialogRequest request;
  request.save = true;
  request.title = "Print to PDF File";
  request.filter = QtFilter("PDF Files (*.pdf)|*.pdf");
  request.defaultSuffix = "pdf";
  const QString chosen = form_.ChooseFile(request);
  if (chosen.isEmpty()) return {};
  const QString path = WithDefaultSuffix(chosen, request.defaultSuffix);
  if (!IsUsableSaveName(path)) {
    ws_.ui.Inform(kMsgCheckPrinter);
    return {};
  }
  return path;
}

void PrintCommands::ShowPrinter() {
  FrmWindow* window = form_.CurrentView();
  if (!window || ws_.sim.Running) return;
  RefreshSettings();
  FrmPrinter printer(ws_, window->View(), settings_, &form_);
  printer.SetPdfChooser([this] { return ChoosePdfFile(); });
  printer.exec();
  form_.RefreshPrintableWidth();
  window->Redraw();
}

void PrintCommands::PrintScreen() {
  FrmWindow* window = form_.CurrentView();
  if (!window) return;
  RefreshSettings();
  if (settings_.Printer == kPdfPrinter) {
    const QString file = ChoosePdfFile();
    if (file.isEmpty()) return;
    settings_.OutputFile = file.toStdString();
  }
  PrintNetwork(ws_, window->View(), settings_);
  window->Redraw();
}

void PrintCommands::ShowSimplify() {
  if (ws_.sim.Running) return;
  FrmSimplify simplify(ws_, &form_);
  connect(&simplify, &FrmSimplify::Simplified, this,
          [this](int) { form_.RefreshAfterNetworkChange(); });
  simplify.exec();
}

}  // namespace galeris
