// frmExport: what a DXF export writes beside the airway lines (arrows, names, data values,
// node circles) and the size of its text, kept in the defaults block.
#pragma once

#include <QDialog>
#include <array>

#include "core/workspace.h"
#include "exchange/dxf_export.h"

class QCheckBox;
class QRadioButton;

namespace galeris {

class FrmExport : public QDialog {
  Q_OBJECT
 public:
  explicit FrmExport(Workspace& ws, QWidget* parent = nullptr);

  DxfExportChoices Choices() const;
  // OK: the choices go to the defaults block, which then counts as changed.
  void Commit();

 private:
  Workspace& ws_;
  QCheckBox *arrows_, *branchNames_, *nodeNames_, *data_, *nodes_;
  std::array<QRadioButton*, 3> size_{};
};

}  // namespace galeris
