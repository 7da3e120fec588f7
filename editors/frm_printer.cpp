// frmPrinter: moves the print settings between the controls and PrintNetwork.
#include "editors/frm_printer.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "editors/number_box.h"
#include "editors/print_network.h"

namespace galeris {
namespace {

QFrame* PagePicture(QWidget* parent, const QString& name, QSize size) {
  auto* shape = new QFrame(parent);
  shape->setObjectName(name);
  shape->setFrameShape(QFrame::Box);
  shape->setFixedSize(size);
  return shape;
}

}  // namespace

FrmPrinter::FrmPrinter(Workspace& ws, const ViewState& view, PrintSettings& settings,
                       QWidget* parent)
    : QDialog(parent), ws_(ws), view_(view), settings_(settings) {
  setObjectName("frmPrinter");
  setWindowTitle("PRINT NETWORK");
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  txtTitle_ = new QLineEdit(this);
  txtTitle_->setObjectName("TxtTitle");
  form->addRow("Title", txtTitle_);
  combo1_ = new QComboBox(this);
  combo1_->setObjectName("Combo1");
  form->addRow("Printer", combo1_);
  printSize_ = new QComboBox(this);
  printSize_->setObjectName("PrintSize");
  form->addRow("Paper Size", printSize_);

  auto* orientation = new QHBoxLayout;
  optLandscape_ = new QRadioButton("Landscape", this);
  optLandscape_->setObjectName("OptOrient(0)");
  optPortrait_ = new QRadioButton("Portrait", this);
  optPortrait_->setObjectName("OptOrient(1)");
  shpLandscape_ = PagePicture(this, "ShpLandscape", QSize(42, 30));
  shpPortrait_ = PagePicture(this, "ShpPortrait", QSize(30, 42));
  orientation->addWidget(optLandscape_);
  orientation->addWidget(optPortrait_);
  orientation->addWidget(shpLandscape_);
  orientation->addWidget(shpPortrait_);
  orientation->addStretch();
  form->addRow("Orientation", orientation);

  chkColour_ = new QCheckBox("Colour", this);
  chkColour_->setObjectName("ChkColour");
  form->addRow("", chkColour_);
  txtScale_ = NumberBox(this, "TxtScale", true);
  form->addRow("Print Scale", txtScale_);
  txtCopies_ = NumberBox(this, "TxtCopies", true);
  txtCopies_->setValidator(new QIntValidator(1, 99, txtCopies_));
  form->addRow("Copies", txtCopies_);
  layout->addLayout(form);

  auto* buttons = new QHBoxLayout;
  auto* printIt = new QPushButton("Print", this);
  printIt->setObjectName("PrintIt");
  printIt->setDefault(true);
  auto* cancelIt = new QPushButton("Cancel", this);
  cancelIt->setObjectName("CancelIt");
  buttons->addStretch();
  buttons->addWidget(printIt);
  buttons->addWidget(cancelIt);
  layout->addLayout(buttons);

  Fill();
  connect(optLandscape_, &QRadioButton::toggled, this, [this] { ShowOrientation(); });
  connect(txtScale_, &QLineEdit::textEdited, this, [this] { scaleTyped_ = true; });
  connect(txtScale_, &QLineEdit::editingFinished, this, [this] {
    if (scaleTyped_) CheckScale();
  });
  connect(printIt, &QPushButton::clicked, this, [this] { PrintItClicked(); });
  connect(cancelIt, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmPrinter::Fill() {
  txtTitle_->setText(QString::fromStdString(settings_.Title));
  combo1_->addItems(PrinterNames());
  const int printer = combo1_->findText(QString::fromStdString(settings_.Printer));
  combo1_->setCurrentIndex(printer >= 0 ? printer : combo1_->count() - 1);
  for (const PaperSize& paper : PaperSizes()) printSize_->addItem(paper.Name);
  const int paper = printSize_->findText(QString::fromStdString(settings_.Paper));
  printSize_->setCurrentIndex(std::max(0, paper));
  const bool landscape = settings_.PrinterOrientation == OrientationOf::Landscape;
  optLandscape_->setChecked(landscape);
  optPortrait_->setChecked(!landscape);
  ShowOrientation();
  chkColour_->setChecked(settings_.Colour);
  const std::int32_t scale =
      settings_.PrintScaleSet ? std::max(settings_.PrintScale, SmallestScale()) : SmallestScale();
  txtScale_->setText(QString::number(scale));
  scaleTyped_ = settings_.PrintScaleSet;
  txtCopies_->setText(QString::number(std::max(1, settings_.Copies)));
}

void FrmPrinter::ShowOrientation() {
  shpLandscape_->setVisible(optLandscape_->isChecked());
  shpPortrait_->setVisible(!optLandscape_->isChecked());
}

void FrmPrinter::ReadControls() {
  settings_.Title = txtTitle_->text().toStdString();
  settings_.Printer = combo1_->currentText().toStdString();
  settings_.Paper = printSize_->currentText().toStdString();
  settings_.PrinterOrientation =
      optLandscape_->isChecked() ? OrientationOf::Landscape : OrientationOf::Portrait;
  settings_.Colour = chkColour_->isChecked();
  settings_.Copies = std::max(1, txtCopies_->text().toInt());
}

std::int32_t FrmPrinter::SmallestScale() const {
  PrintSettings chosen = settings_;
  chosen.Printer = combo1_->currentText().toStdString();
  chosen.Paper = printSize_->currentText().toStdString();
  chosen.PrinterOrientation =
      optLandscape_->isChecked() ? OrientationOf::Landscape : OrientationOf::Portrait;
  return SmallestPrintScale(view_, PrintableFor(chosen));
}

void FrmPrinter::CheckScale() {
  const ScaleEntry entry = CheckPrintScale(txtScale_->text().toStdString(), SmallestScale());
  if (!entry.Message.empty()) {
    ws_.ui.Inform(entry.Message);
    txtScale_->setText(QString::number(entry.Scale));
    scaleTyped_ = false;
  }
}

void FrmPrinter::PrintItClicked() {
  if (scaleTyped_) CheckScale();
  ReadControls();
  settings_.PrintScaleSet = scaleTyped_;
  settings_.PrintScale = txtScale_->text().toInt();
  if (settings_.Printer == kPdfPrinter) {
    const QString file = choosePdf_ ? choosePdf_() : QString();
    if (file.isEmpty()) return;
    settings_.OutputFile = file.toStdString();
  }
  if (PrintNetwork(ws_, view_, settings_)) accept();
}

}  // namespace galeris
