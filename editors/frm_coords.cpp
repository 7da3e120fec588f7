// frmCoords: absolute boxes, the relative move, the level list.
#include "editors/frm_coords.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "core/number_format.h"

namespace galeris {

FrmCoords::FrmCoords(Workspace& ws, const std::array<double, 3>& point, bool moveNode,
                     QWidget* parent)
    : QDialog(parent), ws_(ws) {
  setObjectName("frmCoords");
  setWindowTitle("Coordinate Entry");
  auto* layout = new QVBoxLayout(this);
  auto* absoluteGroup = new QGroupBox("Coordinates", this);
  auto* absoluteForm = new QFormLayout(absoluteGroup);
  relativeGroup_ = new QGroupBox("Relative Move", this);
  auto* relativeForm = new QFormLayout(relativeGroup_);
  const char* names[] = {"TxtX", "TxtY", "TxtZ"};
  const char* deltas[] = {"TxtdX", "TxtdY", "TxtdZ"};
  const char* captions[] = {"X", "Y", "RL"};
  const char* deltaCaptions[] = {"dX", "dY", "dRL"};
  for (int axis = 0; axis < 3; ++axis) {
    absolute_[axis] = new QLineEdit(
        QString::fromStdString(FormatValue(ws.units, point[axis], Unit::Length)), absoluteGroup);
    absolute_[axis]->setObjectName(names[axis]);
    absoluteForm->addRow(captions[axis], absolute_[axis]);
    relative_[axis] = new QLineEdit("0", relativeGroup_);
    relative_[axis]->setObjectName(deltas[axis]);
    relativeForm->addRow(deltaCaptions[axis], relative_[axis]);
    absolute_[axis]->installEventFilter(this);
    relative_[axis]->installEventFilter(this);
  }
  // The point is the sum of both groups: a surveyed offset goes into the relative boxes.
  layout->addWidget(absoluteGroup);
  layout->addWidget(relativeGroup_);

  CmbRL = new QComboBox(this);
  CmbRL->setObjectName("CmbRL");
  const Network& net = ws.net;
  if (net.RLCount < 2) {
    CmbRL->addItem(QString::fromStdString(ws.defaults.SurfaceName), 1);
  } else {
    for (int k = 1; k <= net.RLCount && k < static_cast<int>(net.RLName.size()); ++k)
      CmbRL->addItem(QString::fromStdString(net.RLName[k]), k);
  }
  CmbRL->setCurrentIndex(-1);
  auto* level = new QFormLayout;
  level->addRow("Level", CmbRL);
  layout->addLayout(level);
  ChkCopy = new QCheckBox("Make a copy", this);
  ChkCopy->setObjectName("ChkCopy");
  ChkCopy->setVisible(moveNode);
  layout->addWidget(ChkCopy);

  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("Cancel");
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);

  connect(CmbRL, &QComboBox::activated, this, [this](int row) {
    const int k = CmbRL->itemData(row).toInt();
    const auto& bound = ws_.net.RLBound[k];
    const double middle = (static_cast<double>(bound[1]) + bound[2]) / 2;
    absolute_[2]->setText(QString::fromStdString(FormatValue(ws_.units, middle, Unit::Length)));
  });
  connect(ok, &QPushButton::clicked, this, &FrmCoords::Accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool FrmCoords::eventFilter(QObject* watched, QEvent* event) {
  auto* box = qobject_cast<QLineEdit*>(watched);
  if (box && event->type() == QEvent::FocusIn) QTimer::singleShot(0, box, &QLineEdit::selectAll);
  if (box && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->text() == "." &&
      MachineDecimalSeparator() != '.') {
    box->insert(QString(QChar(MachineDecimalSeparator())));
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void FrmCoords::Accept() {
  CoordEntryFields fields;
  fields.absoluteShown = true;
  fields.relativeShown = !relativeGroup_->isHidden();
  for (int axis = 0; axis < 3; ++axis) {
    fields.absolute[axis] = absolute_[axis]->text().toStdString();
    fields.relative[axis] = relative_[axis]->text().toStdString();
  }
  entryPoint_ = ReadCoordEntry(ws_.units, fields, ws_.ui);
  if (entryPoint_)
    accept();
  else
    reject();
}

bool FrmCoords::CopyPoint() const {
  return !ChkCopy->isHidden() && ChkCopy->isChecked();
}

std::optional<std::array<double, 3>> ShowCoords(Workspace& ws, const std::array<double, 3>& point,
                                                QWidget* parent, bool* copy) {
  FrmCoords dialog(ws, point, copy != nullptr, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  if (copy) *copy = dialog.CopyPoint();
  return dialog.EntryPoint();
}

}  // namespace galeris
