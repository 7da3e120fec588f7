// frmExport: the export's choices and the note of what the file will hold.
#include "editors/frm_export.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "view/drawing.h"

namespace galeris {

std::string ExportContentsNote(Workspace& ws, const ViewState& view) {
  ViewState walked = view;
  BuildVisibleList(ws, walked);
  int airways = 0;
  for (int i = 1; i <= ws.net.BranchCount; ++i) airways += ws.net.EntryNodeId[i] != 0;
  const std::string all = std::to_string(airways);
  if (walked.VisibleCount >= airways) return "The file will hold all " + all + " airways.";
  std::string shown = LevelCaption(ws, walked);
  if (const std::size_t colon = shown.find(" : "); colon != std::string::npos)
    shown = shown.substr(colon + 3);
  return "The file will hold only the " + std::to_string(walked.VisibleCount) + " of " + all +
         " airways that the view shows (" + shown +
         ", shown layers). To write every airway, choose Levels > All and show every layer "
         "first.";
}

FrmExport::FrmExport(Workspace& ws, const ViewState& view, QWidget* parent)
    : QDialog(parent), ws_(ws) {
  setObjectName("frmExport");
  setWindowTitle("DXF Export");
  auto* layout = new QVBoxLayout(this);
  auto* contents = new QLabel(QString::fromStdString(ExportContentsNote(ws, view)), this);
  contents->setObjectName("LblContents");
  contents->setWordWrap(true);
  layout->addWidget(contents);
  const DxfExportChoices now = ExportChoicesOf(ws.defaults);
  auto check = [&](const char* name, const char* caption, bool on) {
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(name);
    box->setChecked(on);
    layout->addWidget(box);
    return box;
  };
  arrows_ = check("ChkArrows", "Direction Arrows", now.Arrows);
  branchNames_ = check("ChkBranchNames", "Branch Names", now.BranchNames);
  nodeNames_ = check("ChkNodeNames", "Node Names", now.NodeNames);
  data_ = check("ChkData", "Data Values", now.DataValues);
  nodes_ = check("ChkNodes", "Node Circles", now.NodeCircles);

  auto* sizes = new QGroupBox("Text Size", this);
  auto* sizeLayout = new QVBoxLayout(sizes);
  const char* captions[] = {"Small", "Medium", "Large"};
  for (int k = 0; k < 3; ++k) {
    size_[k] = new QRadioButton(captions[k], sizes);
    size_[k]->setObjectName(QString("OptSize(%1)").arg(k));
    sizeLayout->addWidget(size_[k]);
  }
  size_[now.TextSize]->setChecked(true);
  layout->addWidget(sizes);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("CmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("CmdCancel");
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    Commit();
    accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

DxfExportChoices FrmExport::Choices() const {
  DxfExportChoices c;
  c.Arrows = arrows_->isChecked();
  c.BranchNames = branchNames_->isChecked();
  c.NodeNames = nodeNames_->isChecked();
  c.DataValues = data_->isChecked();
  c.NodeCircles = nodes_->isChecked();
  for (int k = 0; k < 3; ++k) {
    if (size_[k]->isChecked()) c.TextSize = k;
  }
  return c;
}

void FrmExport::Commit() {
  const auto before = ws_.defaults.ExportLayers;
  const auto option = ws_.defaults.ExportOption;
  StoreExportChoices(ws_.defaults, Choices());
  if (before != ws_.defaults.ExportLayers || option != ws_.defaults.ExportOption)
    ws_.DefaultsSaved = 0;
}

}  // namespace galeris
