#include "editors/frm_remote.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "realtime/remotes_file.h"

namespace galeris {
namespace {

constexpr const char* kRemoteFilter = "Galeris Remote Files (*.rem)|*.rem|All Files (*.*)|*.*";

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}
std::string S(const QLineEdit* box) {
  return box->text().toStdString();
}

}  // namespace

FrmRemote::FrmRemote(Workspace& ws, Browse browse, QWidget* parent)
    : QDialog(parent), ws_(ws), browse_(std::move(browse)) {
  setObjectName("frmRemote");
  setWindowTitle("Realtime Input Stations");
  auto* layout = new QVBoxLayout(this);
  auto* menus = new QMenuBar(this);
  layout->setMenuBar(menus);
  QMenu* edit = menus->addMenu("&Edit");
  auto action = [&](QMenu* menu, const char* name, const char* caption, auto run) {
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, run);
  };
  action(edit, "mnuCopy", "&Copy Channels", [this] { CopyChannels(); });
  action(edit, "mnuPaste", "&Paste Channels", [this] { PasteChannels(); });
  action(menus->addMenu("E&xit"), "mnuExit", "E&xit", [this] { Finish(); });

  auto box = [this](const QString& name) {
    auto* e = new QLineEdit(this);
    e->setObjectName(name);
    return e;
  };
  auto check = [this](const char* name, const char* caption) {
    auto* c = new QCheckBox(caption, this);
    c->setObjectName(name);
    return c;
  };
  auto* grid = new QGridLayout;
  layout->addLayout(grid);
  grid->addWidget(new QLabel("Station", this), 0, 0);
  LblNumber = new QLabel(this);
  LblNumber->setObjectName("LblNumber");
  grid->addWidget(LblNumber, 0, 1);
  VScStation = new QScrollBar(Qt::Vertical, this);
  VScStation->setObjectName("VScStation");
  VScStation->setRange(1, kMaxStations);
  VScStation->setInvertedAppearance(true);
  grid->addWidget(VScStation, 0, 2, 2, 1);
  grid->addWidget(new QLabel("Station Name", this), 1, 0);
  TxtStationName = box("TxtStationName");
  grid->addWidget(TxtStationName, 1, 1);
  ChkUpdateQ = check("ChkUpdateQ", "Update airflow");
  grid->addWidget(ChkUpdateQ, 1, 3);

  auto* channels = new QGridLayout;
  layout->addLayout(channels);
  const char* heads[] = {"Name", "Abbrev", "Units", "Mult", "A Low", "A High"};
  for (int c = 0; c < 6; ++c) channels->addWidget(new QLabel(heads[c], this), 0, c + 1);
  for (int k = 1; k <= kStationChannels; ++k) {
    channels->addWidget(new QLabel(QString::number(k), this), k, 0);
    const QString n = QString("(%1)").arg(k);
    QLineEdit** row[] = {&TxtLngNames[k], &Abrev[k], &RUnits[k], &Mult[k], &ALow[k], &AHigh[k]};
    const char* names[] = {"TxtLngNames", "Abrev", "RUnits", "Mult", "ALow", "AHigh"};
    for (int c = 0; c < 6; ++c) {
      *row[c] = box(names[c] + n);
      channels->addWidget(*row[c], k, c + 1);
    }
  }

  auto* settings = new QGridLayout;
  layout->addLayout(settings);
  settings->addWidget(new QLabel("Station File", this), 0, 0);
  TxtRemoteSource = box("TxtRemoteSource");
  settings->addWidget(TxtRemoteSource, 0, 1);
  auto* browseButton = new QPushButton("Browse...", this);
  browseButton->setObjectName("CmdBrowse");
  settings->addWidget(browseButton, 0, 2);
  settings->addWidget(new QLabel("Sampling (Sec)", this), 1, 0);
  TxtTimer = box("TxtTimer");
  settings->addWidget(TxtTimer, 1, 1);
  ChkResim = check("ChkResim", "Resimulate Network");
  ChkAlarm = check("ChkAlarm", "Activate Alarms");
  settings->addWidget(ChkResim, 2, 1);
  settings->addWidget(ChkAlarm, 3, 1);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("CmdOK");
  layout->addWidget(ok);

  connect(browseButton, &QPushButton::clicked, this, [this] {
    const QString path = browse_ ? browse_(kRemoteFilter) : QString();
    if (!path.isEmpty()) TxtRemoteSource->setText(path);
  });
  connect(ok, &QPushButton::clicked, this, [this] { Finish(); });
  connect(VScStation, &QScrollBar::valueChanged, this, [this](int s) {
    if (!filling_) ShowStation(s);
  });
  Fill(ShowStationFields(ws_.remote, shown_));
}

void FrmRemote::Fill(const StationFields& f) {
  filling_ = true;
  VScStation->setValue(shown_);
  LblNumber->setText(QString::number(shown_));
  TxtStationName->setText(Q(f.StationName));
  ChkUpdateQ->setChecked(f.UpdateQ);
  for (int k = 1; k <= kStationChannels; ++k) {
    TxtLngNames[k]->setText(Q(f.Channels.Name[k]));
    Abrev[k]->setText(Q(f.Channels.Abbrev[k]));
    RUnits[k]->setText(Q(f.Channels.Unit[k]));
    Mult[k]->setText(Q(f.Channels.Mult[k]));
    ALow[k]->setText(Q(f.Channels.Low[k]));
    AHigh[k]->setText(Q(f.Channels.High[k]));
  }
  TxtRemoteSource->setText(Q(f.RemoteSource));
  TxtTimer->setText(Q(f.RemoteInterval));
  ChkResim->setChecked(f.RemoteResim);
  ChkAlarm->setChecked(f.AlarmsOn);
  filling_ = false;
}

StationFields FrmRemote::Fields() const {
  StationFields f;
  f.StationName = S(TxtStationName);
  f.UpdateQ = ChkUpdateQ->isChecked();
  for (int k = 1; k <= kStationChannels; ++k) {
    f.Channels.Name[k] = S(TxtLngNames[k]);
    f.Channels.Abbrev[k] = S(Abrev[k]);
    f.Channels.Unit[k] = S(RUnits[k]);
    f.Channels.Mult[k] = S(Mult[k]);
    f.Channels.Low[k] = S(ALow[k]);
    f.Channels.High[k] = S(AHigh[k]);
  }
  f.RemoteSource = S(TxtRemoteSource);
  f.RemoteInterval = S(TxtTimer);
  f.RemoteResim = ChkResim->isChecked();
  f.AlarmsOn = ChkAlarm->isChecked();
  return f;
}

void FrmRemote::Store() {
  StoreStationFields(ws_.remote, shown_, Fields());
}

void FrmRemote::ShowStation(int station) {
  Store();
  shown_ = std::clamp(station, 1, kMaxStations);
  Fill(ShowStationFields(ws_.remote, shown_));
}

void FrmRemote::CopyChannels() {
  Store();
  holding_ = ShowStationFields(ws_.remote, shown_).Channels;
}

void FrmRemote::PasteChannels() {
  StationFields f = Fields();
  f.Channels = holding_;
  StoreStationFields(ws_.remote, shown_, f);
  Fill(ShowStationFields(ws_.remote, shown_));
}

bool FrmRemote::Finish() {
  Store();
  finished_ = true;
  const bool saved = SaveRemotes(ws_);
  if (!saved) ws_.ui.Message("Can't write Remotes.dat", MsgButtons::OK, MsgIcon::Exclamation);
  accept();
  return saved;
}

void FrmRemote::reject() {
  if (!finished_) Finish();
}

}  // namespace galeris
