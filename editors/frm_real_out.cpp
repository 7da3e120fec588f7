#include "editors/frm_real_out.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "files/text_format.h"
#include "realtime/station_form.h"

namespace galeris {
namespace {

constexpr const char* kRealOutFilter =
    "Galeris Realtime Output Files (*.txt)|*.txt|All Files (*.*)|*.*";

}  // namespace

FrmRealOut::FrmRealOut(Workspace& ws, Browse browse, QWidget* parent)
    : QDialog(parent), ws_(ws), browse_(std::move(browse)) {
  setObjectName("frmRealOut");
  setWindowTitle("Realtime Output File");
  auto* layout = new QFormLayout(this);
  TxtRealOut = new QLineEdit(QString::fromStdString(ws.remote.OutputFile), this);
  TxtRealOut->setObjectName("TxtRealOut");
  auto* browseButton = new QPushButton("Browse...", this);
  browseButton->setObjectName("CmdBrowse");
  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(TxtRealOut);
  fileRow->addWidget(browseButton);
  layout->addRow("Output Data File", fileRow);
  TxtTimer =
      new QLineEdit(QString::fromStdString(FormatGeneralSingle(ws.remote.OutputInterval)), this);
  TxtTimer->setObjectName("TxtTimer");
  layout->addRow("Sampling (Sec)", TxtTimer);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("CmdOK");
  layout->addRow(ok);

  connect(browseButton, &QPushButton::clicked, this, [this] {
    const QString path = browse_ ? browse_(kRealOutFilter) : QString();
    if (!path.isEmpty()) TxtRealOut->setText(path);
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    ApplyRealOut(ws_.remote, TxtRealOut->text().toStdString(), TxtTimer->text().toStdString());
    accept();
  });
}

}  // namespace galeris
