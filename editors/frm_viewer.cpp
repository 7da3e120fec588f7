#include "editors/frm_viewer.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "editors/number_box.h"

namespace galeris {
namespace {

template <std::size_t N>
QGroupBox* RadioGroup(QWidget* parent, const QString& title, const QString& name,
                      const std::array<const char*, N>& captions,
                      std::array<QRadioButton*, N>& buttons) {
  auto* group = new QGroupBox(title, parent);
  auto* layout = new QVBoxLayout(group);
  for (std::size_t k = 0; k < N; ++k) {
    buttons[k] = new QRadioButton(captions[k], group);
    buttons[k]->setObjectName(QString("%1(%2)").arg(name).arg(k));
    layout->addWidget(buttons[k]);
  }
  return group;
}

}  // namespace

FrmViewer::FrmViewer(Workspace& ws, ViewState& view, QWidget* parent)
    : QDialog(parent), ws_(ws), view_(view) {
  setObjectName("frmViewer");
  setWindowTitle("View Options");
  auto* layout = new QGridLayout(this);

  auto* detail = new QGroupBox("Show", this);
  auto* detailLayout = new QVBoxLayout(detail);
  const char* captions[kViewerBoxes] = {
      "Node Names",   "Airway Names", "Data Values",  "Resistance Symbols", "Fan Symbols",
      "Node Symbols", "Arrows",       "Contaminants", "Floating Text",      "Off Level Raises"};
  for (int i = 0; i < kViewerBoxes; ++i) {
    chkViewer_[i] = new QCheckBox(captions[i], detail);
    chkViewer_[i]->setObjectName(QString("ChkViewer(%1)").arg(i));
    detailLayout->addWidget(chkViewer_[i]);
  }
  chkDeclutter_ = new QCheckBox("Declutter", detail);
  chkDeclutter_->setObjectName("ChkDeclutter");
  chkDeclutter_->setToolTip("Leave out a node, symbol or text whose place is already taken");
  detailLayout->addWidget(chkDeclutter_);
  layout->addWidget(detail, 0, 0, 3, 1);

  layout->addWidget(RadioGroup<4>(this, "Data", "OptType",
                                  {"Show All Data", "Vertical Data only", "Horizontal data only",
                                   "Selected Data only"},
                                  optType_),
                    0, 1);
  auto* flows = new QGroupBox("Show airways by flow", this);
  auto* flowLayout = new QFormLayout(flows);
  txtSig_ = NumberBox(flows, "TxtSig");
  txtSigMin_ = NumberBox(flows, "TxtSigMin");
  flowLayout->addRow("maximum flow", txtSig_);
  flowLayout->addRow("minimum flow", txtSigMin_);
  auto* dimmer = RadioGroup<3>(flows, "", "OptDimmer", {"All", "Dim", "Invisible"}, optDimmer_);
  flowLayout->addRow(dimmer);
  layout->addWidget(flows, 1, 1);
  layout->addWidget(
      RadioGroup<2>(this, "Colours", "ColOpt", {"Levels", "Fresh / Exhaust"}, colOpt_), 2, 1);

  auto* buttons = new QHBoxLayout;
  auto* show = new QPushButton("Show All", this);
  show->setObjectName("Show");
  auto* hide = new QPushButton("Hide All", this);
  hide->setObjectName("Hide");
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  for (QPushButton* b : {show, hide, ok, cancel}) buttons->addWidget(b);
  layout->addLayout(buttons, 3, 0, 1, 2);
  connect(show, &QPushButton::clicked, this, &FrmViewer::ShowAll);
  connect(hide, &QPushButton::clicked, this, &FrmViewer::HideAll);
  connect(ok, &QPushButton::clicked, this, &FrmViewer::accept);
  connect(cancel, &QPushButton::clicked, this, &FrmViewer::reject);
  ToControls(ReadViewOptions(ws_, view_));
}

ViewOptions FrmViewer::Options() const {
  ViewOptions o;
  for (int i = 0; i < kViewerBoxes; ++i) o.Detail[i] = chkViewer_[i]->isChecked();
  for (int k = 0; k < 4; ++k)
    if (optType_[k]->isChecked()) o.DataDisplay = static_cast<std::int16_t>(k);
  o.SignificantMax = txtSig_->text().toStdString();
  o.SignificantMin = txtSigMin_->text().toStdString();
  for (int k = 0; k < 3; ++k)
    if (optDimmer_[k]->isChecked()) o.FlowDimMode = static_cast<std::int16_t>(k);
  o.ColourMode = colOpt_[1]->isChecked() ? 1 : 0;
  o.Declutter = chkDeclutter_->isChecked();
  return o;
}

void FrmViewer::ToControls(const ViewOptions& o) {
  for (int i = 0; i < kViewerBoxes; ++i) chkViewer_[i]->setChecked(o.Detail[i]);
  optType_[std::clamp<int>(o.DataDisplay, 0, 3)]->setChecked(true);
  txtSig_->setText(QString::fromStdString(o.SignificantMax));
  txtSigMin_->setText(QString::fromStdString(o.SignificantMin));
  optDimmer_[std::clamp<int>(o.FlowDimMode, 0, 2)]->setChecked(true);
  colOpt_[o.ColourMode == 1 ? 1 : 0]->setChecked(true);
  chkDeclutter_->setChecked(o.Declutter);
}

void FrmViewer::ShowAll() {
  ViewOptions o = Options();
  ShowAllDetails(o);
  ToControls(o);
}

void FrmViewer::HideAll() {
  ViewOptions o = Options();
  HideAllDetails(o);
  ToControls(o);
}

void FrmViewer::accept() {
  ApplyViewOptions(ws_, view_, Options());
  QDialog::accept();
}

}  // namespace galeris
