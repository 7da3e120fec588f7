#include "editors/frm_tag_s.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace galeris {
namespace {

constexpr std::array<std::int16_t, 5> kDetailBits = {OffLayer::Data, OffLayer::AirwayName,
                                                     OffLayer::NodeNames, OffLayer::Arrows,
                                                     OffLayer::NodeSymbols};

// A layer label: '"' and ',' cannot be typed, as both would break the file format.
QLineEdit* LabelBox(QWidget* parent, const QString& name) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setValidator(new QRegularExpressionValidator(QRegularExpression("[^\",]*"), box));
  box->setMaximumWidth(110);
  return box;
}

}  // namespace

FrmTagS::FrmTagS(Workspace& ws, ViewState& view, QWidget* parent)
    : QDialog(parent), ws_(ws), view_(view) {
  setObjectName("frmTagS");
  setWindowTitle("Viewing Layers");
  auto* layout = new QVBoxLayout(this);

  auto* hidden = new QGroupBox("Airways of hidden layers", this);
  auto* hiddenRow = new QHBoxLayout(hidden);
  const char* states[] = {"Invisible", "Dim", "Solid"};
  for (int k = 0; k < 3; ++k) {
    lineOpt_[k] = new QRadioButton(states[k], hidden);
    lineOpt_[k]->setObjectName(QString("LineOpt(%1)").arg(k));
    hiddenRow->addWidget(lineOpt_[k]);
  }
  const char* names[] = {"ChkData", "ChkBranch", "ChkName", "ChkArrow", "ChkNode"};
  const char* captions[] = {"Data", "Branch", "Name", "Arrow", "Nodes"};
  for (int k = 0; k < 5; ++k) {
    details_[k] = new QCheckBox(captions[k], hidden);
    details_[k]->setObjectName(names[k]);
    hiddenRow->addWidget(details_[k]);
  }
  layout->addWidget(hidden);

  auto addLayers = [&](const QString& title, int count, int columns, auto& labels, auto& tags,
                       const QString& labelName, const QString& tagName, bool primary) {
    auto* group = new QGroupBox(title, this);
    auto* grid = new QGridLayout(group);
    for (int n = 1; n <= count; ++n) {
      tags[n] = new QCheckBox(group);
      tags[n]->setObjectName(QString("%1(%2)").arg(tagName).arg(n));
      labels[n] = LabelBox(group, QString("%1(%2)").arg(labelName).arg(n));
      labels[n]->installEventFilter(this);
      connect(labels[n], &QLineEdit::editingFinished, this,
              [this, primary, n] { NameEdited(primary, n); });
      const int row = (n - 1) / columns, column = 2 * ((n - 1) % columns);
      grid->addWidget(tags[n], row, column);
      grid->addWidget(labels[n], row, column + 1);
    }
    layout->addWidget(group);
  };
  addLayers("Primary layers", kPrimaryLayers, 8, pLabel_, tag1_, "PLabel", "Tag1", true);
  addLayers("Secondary layers", kSecondLayers, 8, tagLabel_, tag2_, "TagLabel", "Tag2", false);

  auto* buttons = new QHBoxLayout;
  auto* showAll = new QPushButton("Show All", this);
  showAll->setObjectName("cmdSet");
  auto* hideAll = new QPushButton("Hide All", this);
  hideAll->setObjectName("CmdReset");
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  buttons->addWidget(showAll);
  buttons->addWidget(hideAll);
  buttons->addStretch();
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  connect(showAll, &QPushButton::clicked, this, &FrmTagS::ShowAll);
  connect(hideAll, &QPushButton::clicked, this, &FrmTagS::HideAll);
  connect(ok, &QPushButton::clicked, this, &FrmTagS::accept);

  loading_ = true;
  const LayerChoice choice = ReadLayerChoice(ws_.net, view_);
  primaryCurrent_ = choice.PrimaryCurrent;
  secondCurrent_ = choice.SecondCurrent;
  ToControls(choice);
  for (int n = 1; n <= kPrimaryLayers; ++n)
    pLabel_[n]->setText(QString::fromStdString(LayerLabel(ws_.net.PrimaryLayerName[n], n)));
  for (int n = 1; n <= kSecondLayers; ++n)
    tagLabel_[n]->setText(QString::fromStdString(LayerLabel(ws_.net.SecondLayerName[n], n)));
  Highlight();
  loading_ = false;
}

LayerChoice FrmTagS::FromControls() const {
  LayerChoice c;
  for (int k = 0; k < 3; ++k)
    if (lineOpt_[k]->isChecked()) c.LineState = static_cast<std::int16_t>(k);
  c.OffLayerDetails = 0;
  for (int k = 0; k < 5; ++k)
    if (details_[k]->isChecked()) c.OffLayerDetails |= kDetailBits[k];
  for (int n = 1; n <= kPrimaryLayers; ++n) c.Primary[n] = tag1_[n]->isChecked();
  for (int n = 1; n <= kSecondLayers; ++n) c.Second[n] = tag2_[n]->isChecked();
  c.PrimaryCurrent = primaryCurrent_;
  c.SecondCurrent = secondCurrent_;
  return c;
}

void FrmTagS::ToControls(const LayerChoice& c) {
  lineOpt_[std::clamp<int>(c.LineState, 0, 2)]->setChecked(true);
  for (int k = 0; k < 5; ++k) details_[k]->setChecked(c.OffLayerDetails & kDetailBits[k]);
  for (int n = 1; n <= kPrimaryLayers; ++n) tag1_[n]->setChecked(c.Primary[n]);
  for (int n = 1; n <= kSecondLayers; ++n) tag2_[n]->setChecked(c.Second[n]);
}

void FrmTagS::ShowAll() {
  LayerChoice c = FromControls();
  ShowAllLayers(c);
  ToControls(c);
}

void FrmTagS::HideAll() {
  loading_ = true;
  LayerChoice c = FromControls();
  HideAllLayers(c);
  ToControls(c);
  loading_ = false;
}

void FrmTagS::MakeCurrent(bool primary, int layer) {
  if (loading_) return;
  (primary ? primaryCurrent_ : secondCurrent_) = layer;
  ws_.net.NetworkSaved = 0;
  Highlight();
}

void FrmTagS::Highlight() {
  auto paint = [](QLineEdit* box, bool current) {
    box->setStyleSheet(current ? "QLineEdit { color: red; }" : QString());
  };
  for (int n = 1; n <= kPrimaryLayers; ++n) paint(pLabel_[n], n == primaryCurrent_);
  for (int n = 1; n <= kSecondLayers; ++n) paint(tagLabel_[n], n == secondCurrent_);
}

void FrmTagS::NameEdited(bool primary, int layer) {
  const QString text = (primary ? pLabel_[layer] : tagLabel_[layer])->text();
  (primary ? ws_.net.PrimaryLayerName : ws_.net.SecondLayerName)[layer] = text.toStdString();
}

bool FrmTagS::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn) {
    for (int n = 1; n <= kPrimaryLayers; ++n)
      if (watched == pLabel_[n]) MakeCurrent(true, n);
    for (int n = 1; n <= kSecondLayers; ++n)
      if (watched == tagLabel_[n]) MakeCurrent(false, n);
  }
  return QDialog::eventFilter(watched, event);
}

void FrmTagS::accept() {
  // A label being typed in keeps its name, as on leaving it.
  for (int n = 1; n <= kPrimaryLayers; ++n)
    if (pLabel_[n]->hasFocus()) NameEdited(true, n);
  for (int n = 1; n <= kSecondLayers; ++n)
    if (tagLabel_[n]->hasFocus()) NameEdited(false, n);
  ApplyLayerChoice(ws_.net, view_, FromControls());
  QDialog::accept();
}

void FrmTagS::reject() {
  accept();
}

}  // namespace galeris
