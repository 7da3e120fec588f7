// frmExport: what a DXF export writes beside the airway lines (arrows, names, data values,
// node circles) and the size of its text, kept in the defaults block; and which airways the
// file will hold, since the view's level and layer filters apply.
#pragma once

#include <QDialog>
#include <array>

#include "core/workspace.h"
#include "exchange/dxf_export.h"

class QCheckBox;
class QRadioButton;

namespace galeris {

// LblContents: how many airways the export of this view writes, and how to write them all when
// the view's levels or layers leave some out.
std::string ExportContentsNote(Workspace& ws, const ViewState& view);

class FrmExport : public QDialog {
  Q_OBJECT
 public:
  FrmExport(Workspace& ws, const ViewState& view, QWidget* parent = nullptr);

  DxfExportChoices Choices() const;
  // OK: the choices go to the defaults block, which then counts as changed.
  void Commit();

 private:
  Workspace& ws_;
  QCheckBox *arrows_, *branchNames_, *nodeNames_, *data_, *nodes_;
  std::array<QRadioButton*, 3> size_{};
};

}  // namespace galeris
