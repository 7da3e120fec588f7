// MainForm's exchange commands: Import Data through frmImport, Export Data as a text table,
// and the DXF export in true coordinates or as the current view shows the network. The
// engine reads and writes; the frame asks for the names and refreshes its windows.
#include <QDir>
#include <QFileInfo>

#include "app/file_dialogs.h"
#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/recent_files.h"
#include "editors/frm_export.h"
#include "editors/frm_import.h"
#include "exchange/dxf_export.h"
#include "exchange/text_exchange.h"

namespace galeris {
namespace {

constexpr const char* kImportFilter =
    "Import Files (*.txt *.dxf)|*.txt;*.dxf|Data Files (*.TXT)|*.TXT|DXF Files (*.DXF)|*.DXF|"
    "All files (*.*)|*.*";
constexpr const char* kTextExportFilter = "Data Files (*.TXT)|*.TXT|All files (*.*)|*.*";
constexpr const char* kDxfExportFilter = "Data Files (*.DXF)|*.DXF|All files (*.*)|*.*";

FileDialogRequest ExportRequest(const QString& title, const char* filter, const QString& name) {
  FileDialogRequest request;
  request.save = true;
  request.title = title;
  request.filter = QtFilter(filter);
  request.startFolder = QDir(StoredDefaultDir()).filePath(name);
  request.defaultSuffix = QFileInfo(name).suffix();
  return request;
}

}  // namespace

void MainForm::ImportDataCommand() {
  FrmImport dialog(
      ws_,
      [this] {
        FileDialogRequest request;
        request.title = "Import Data";
        request.filter = QtFilter(kImportFilter);
        return ChooseFile(request);
      },
      {tools_.Edit.DefaultPrimaryLayer, tools_.Edit.DefaultSecondLayer}, this);
  if (dialog.exec() != QDialog::Accepted || dialog.Outcome() == ImportOutcome::Refused) return;
  // An import is not journalled. One that cleared the network starts the journal again; a
  // merge keeps the earlier edits' undo.
  if (!dialog.Choices().Merge) undo_.ResetUndoFile();
  AfterLoad(false);
}

void MainForm::ExportDataCommand() {
  const FileDialogRequest request = ExportRequest("Export Data", kTextExportFilter, "EXPORT.TXT");
  const QString chosen = ChooseFile(request);
  if (chosen.isEmpty()) return;
  const QString path = WithDefaultSuffix(chosen, request.defaultSuffix);
  if (!IsUsableSaveName(path) || !ExportText(ws_, path.toStdString()))
    ws_.ui.Inform(kMsgExportFailed);
}

void MainForm::ExportDxfCommand(bool screen) {
  FrmWindow* view = CurrentView();
  if (!view) return;
  const FileDialogRequest request = ExportRequest("DXF Export", kDxfExportFilter, "EXPORT.DXF");
  const QString chosen = ChooseFile(request);
  if (chosen.isEmpty()) return;
  const QString path = WithDefaultSuffix(chosen, request.defaultSuffix);
  if (!IsUsableSaveName(path)) {
    ws_.ui.Inform(kMsgExportFailed);
    return;
  }
  FrmExport choices(ws_, view->View(), this);
  if (choices.exec() != QDialog::Accepted) return;
  if (!ExportDxf(ws_, view->View(), screen, path.toStdString())) ws_.ui.Inform(kMsgExportFailed);
  // The export walked the visible list that every window shares: each draws its own again.
  RedrawViews();
}

}  // namespace galeris
