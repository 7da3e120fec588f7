// MainForm's entries for the two grid editors: the airway spreadsheet and the fan list.
#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "app/main_form.h"
#include "editors/frm_fan_data.h"
#include "editors/frm_spread_sheet.h"

namespace galeris {
namespace {

// The spreadsheet's ColumnWidth lives as long as the frame.
class SheetMemory : public QObject {
 public:
  explicit SheetMemory(QObject* parent) : QObject(parent) { setObjectName("SheetMemory"); }
  SheetColumnWidths widths{};
};

}  // namespace

void MainForm::BuildSheetMenus() {
  QMenu* edit = menuBar()->findChild<QMenu*>("mnuEdit");
  auto* memory = new SheetMemory(this);
  edit->addSeparator();
  AddEntry(edit, "mnuSpreadSheet", "Spreadsheet...", [this, memory] {
    if (IsBusy()) return;
    ShowSpreadSheet(
        ws_, memory->widths, [this] { RunSimulationCommand(0); }, this);
    RefreshAfterNetworkChange();
  });
  AddEntry(edit, "mnuFanList", "Fan List...", [this] {
    if (IsBusy()) return;
    if (ShowFanData(ws_, this)) RefreshAfterNetworkChange();
  });
}

}  // namespace galeris
