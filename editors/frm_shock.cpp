// The shock calculator's window; the sum itself is core's ShockTotal.
#include "editors/frm_shock.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "core/number_format.h"

namespace galeris {

FrmShock::FrmShock(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmShock");
  setWindowTitle("Shock Calculator");
  auto* grid = new QGridLayout(this);
  for (int k = 0; k < kShockLossCount; ++k) {
    ChkShockType[k] = new QCheckBox(kShockLosses[k].caption, this);
    ChkShockType[k]->setObjectName(QString("ChkShockType(%1)").arg(k));
    LblNumS[k] = new QLineEdit("0", this);
    LblNumS[k]->setObjectName(QString("LblNumS(%1)").arg(k));
    LblNumS[k]->setValidator(new QIntValidator(0, 9999, LblNumS[k]));
    LblNumS[k]->setMaximumWidth(50);
    LblNumS[k]->installEventFilter(this);
    const int row = k % 10, column = (k / 10) * 2;
    grid->addWidget(ChkShockType[k], row, column);
    grid->addWidget(LblNumS[k], row, column + 1);
    connect(ChkShockType[k], &QCheckBox::clicked, this, [this, k](bool checked) {
      const double count = ShockCountAfterClick(checked, LblNumS[k]->text().toDouble());
      LblNumS[k]->setText(QString::number(count));
      Recompute();
    });
    connect(LblNumS[k], &QLineEdit::editingFinished, this, &FrmShock::Recompute);
  }
  auto* note = new QLabel(
      "Note : Shock losses to be included in airway following a change, except discharge which "
      "should precede a change.",
      this);
  note->setWordWrap(true);
  grid->addWidget(note, 10, 0, 1, 4);
  grid->addWidget(new QLabel("Equivalent lengths after the standard mine-ventilation handbook "
                             "table of shock losses.",
                             this),
                  11, 0, 1, 4);
  LblShockTotal = new QLabel("0", this);
  LblShockTotal->setObjectName("LblShockTotal");
  grid->addWidget(LblShockTotal, 12, 1);
  auto* update = new QPushButton("Update", this);
  update->setObjectName("CmdUpdate");
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("cmdOK");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Command2");
  grid->addWidget(update, 12, 0);
  grid->addWidget(ok, 12, 2);
  grid->addWidget(cancel, 12, 3);
  connect(update, &QPushButton::clicked, this, &FrmShock::Recompute);
  connect(ok, &QPushButton::clicked, this, [this] {
    Recompute();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool FrmShock::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn)
    if (auto* box = qobject_cast<QLineEdit*>(watched))
      QTimer::singleShot(0, box, &QLineEdit::selectAll);
  return QDialog::eventFilter(watched, event);
}

void FrmShock::Recompute() {
  std::array<ShockRow, kShockLossCount> rows{};
  for (int k = 0; k < kShockLossCount; ++k)
    rows[k] = {ChkShockType[k]->isChecked(), LblNumS[k]->text().toDouble()};
  shockResult_ = ShockTotal(rows, ws_.units);
  LblShockTotal->setText(QString::fromStdString(FormatNumber(shockResult_, "0")));
}

std::optional<double> ShowShock(Workspace& ws, QWidget* parent) {
  FrmShock dialog(ws, parent);
  if (dialog.exec() != QDialog::Accepted || dialog.ShockResult() <= 0) return std::nullopt;
  return dialog.ShockResult();
}

}  // namespace galeris
