// frmSummary: the rows of the engine's summary as labels.
#include "editors/frm_summary.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "tools/network_summary.h"

namespace galeris {

FrmSummary::FrmSummary(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmSummary");
  setWindowTitle("Network Summary");
  auto* layout = new QVBoxLayout(this);
  unsolved_ = new QWidget(this);
  auto* unsolvedLayout = new QHBoxLayout(unsolved_);
  unsolvedLayout->setContentsMargins(0, 0, 0, 0);
  auto* note = new QLabel(kUnsolvedSummaryNote, unsolved_);
  note->setObjectName("LblUnsolved");
  note->setWordWrap(true);
  note->setStyleSheet("QLabel { color: #a00000; }");
  auto* simulate = new QPushButton("Simulate", unsolved_);
  simulate->setObjectName("CmdSimulate");
  unsolvedLayout->addWidget(note, 1);
  unsolvedLayout->addWidget(simulate);
  layout->addWidget(unsolved_);
  connect(simulate, &QPushButton::clicked, this, [this] {
    if (simulate_) simulate_();
    Refresh();
  });
  grid_ = new QGridLayout;
  layout->addLayout(grid_);
  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  ok->setDefault(true);
  auto* print = new QPushButton("Print", this);
  print->setObjectName("Prnter");
  buttons->addStretch();
  buttons->addWidget(print);
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(print, &QPushButton::clicked, this, [this] {
    if (print_) print_(*this);
  });
  Refresh();
}

void FrmSummary::Refresh() {
  unsolved_->setVisible(ws_.net.NetworkBalanced == 0);
  while (QLayoutItem* item = grid_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  int row = 0;
  for (const SummaryRow& r : SummaryRows(ws_, SumNetwork(ws_))) {
    auto* value = new QLabel(QString::fromStdString(r.Value), this);
    value->setObjectName(QString::fromStdString(r.Control));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid_->addWidget(new QLabel(QString::fromStdString(r.Label), this), row, 0);
    grid_->addWidget(value, row, 1);
    grid_->addWidget(new QLabel(QString::fromStdString(r.Unit), this), row++, 2);
  }
}

}  // namespace galeris
