// frmAirEdit: controls, their handlers, and the commit through core's CommitAirEdit.
#include "editors/frm_air_edit.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "core/number_format.h"
#include "editors/form_printing.h"
#include "editors/frm_air_info.h"
#include "editors/frm_shock.h"
#include "editors/leave_closes.h"
#include "files/lifecycle.h"

namespace galeris {
namespace {

constexpr int kMaxFans = 10;  // VSF runs from 0 to this
constexpr int kStations = 50;

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

// The three shape pictures, filled in the colour of the airway's air.
QPixmap ShapePicture(int shapeType, QColor fill) {
  QPixmap pixmap(36, 28);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(fill);
  painter.setPen(Qt::black);
  if (shapeType == 0) {
    painter.drawRect(4, 3, 28, 22);
  } else if (shapeType == 1) {
    painter.drawEllipse(7, 2, 23, 23);
  } else {
    const QPoint points[] = {{3, 25}, {6, 8}, {14, 3}, {26, 5}, {33, 14}, {31, 25}};
    painter.drawPolygon(points, 6);
  }
  return pixmap;
}

void FillPresetCombo(QComboBox* combo, const std::vector<PresetRow>& rows) {
  combo->clear();
  for (const PresetRow& row : rows) combo->addItem(Q(row.name), row.index);
}

// Selects the row of a preset index; row 0 when there is none (index 50 and above).
void SelectPreset(QComboBox* combo, int index) {
  const int row = index >= kUserGiven ? -1 : combo->findData(index);
  combo->setCurrentIndex(row >= 0 ? row : (combo->count() > 0 ? 0 : -1));
}

int PresetOf(const QComboBox* combo) {
  return combo->currentIndex() >= 0 ? combo->currentData().toInt() : 0;
}

// Focus leaves a box that holds no negative number: the sign goes.
void DropSign(QLineEdit* box) {
  const std::optional<double> v = ReadNumber(box->text().toStdString());
  if (v && *v < 0) box->setText(box->text().trimmed().mid(1));
}

}  // namespace

FrmAirEdit::FrmAirEdit(Workspace& ws, int mode, int airway, QWidget* parent)
    : QDialog(parent), ws_(ws), mode_(mode), airway_(airway) {
  setObjectName("frmAirEdit");
  setWindowTitle("Airway Edit");
  BuildControls();
  fields_ = LoadAirEdit(ws_, airway_);
  LoadFields();
  if (mode_ == AirEditMode::Multiple) {
    SetMultipleMode();
    int count = 0;
    for (int k = 1; k <= ws_.net.BranchCount; ++k)
      if (ws_.net.BranchCode[k] & Bit::Selected) ++count;
    setWindowTitle(QString("Airway Edit - Multiple select (%1)").arg(count));
  }
}

void FrmAirEdit::BuildControls() {
  auto lineEdit = [this](const char* name, const char* tip) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setToolTip(tip);
    box->installEventFilter(this);
    return box;
  };
  auto check = [this](const char* name, const char* caption) {
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(name);
    box->installEventFilter(this);
    return box;
  };
  auto combo = [this](const char* name, const char* tip) {
    auto* box = new QComboBox(this);
    box->setObjectName(name);
    box->setToolTip(tip);
    box->installEventFilter(this);
    return box;
  };
  auto label = [this](const char* name, const char* caption) {
    auto* l = new QLabel(caption, this);
    l->setObjectName(name);
    return l;
  };
  auto button = [this](const char* name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
  };

  TxtUnique = lineEdit("TxtUnique", "ID Number");
  TxtUnique->setReadOnly(true);
  TxtName = lineEdit("TxtName", "Airway name");
  LblFrom = lineEdit("LblFrom", "Entry node name");
  LblTo = lineEdit("LblTo", "Exit node name");
  TxtComment = lineEdit("TxtComment", "Comment");
  for (QLineEdit* text : {TxtName, LblFrom, LblTo}) text->setMaxLength(Text40::Width());
  TxtComment->setMaxLength(Text12::Width());
  TxtWidth = lineEdit("TxtWidth", "Airway width");
  txtHeight = lineEdit("txtHeight", "Airway height");
  TxtFlow = lineEdit("TxtFlow", "Quantity");
  TxtPres = lineEdit("TxtPres", "Pressure");
  TxtLength = lineEdit("TxtLength", "Length");
  TxtFixRes = lineEdit("TxtFixRes", "Resist");
  TxtWall = lineEdit("TxtWall", "K Factor");
  TxtShock = lineEdit("TxtShock", "Shock");
  TxtMultiAir = lineEdit("TxtMultiAir", "Number of parallel airways");
  TxtFanN = lineEdit("TxtFanN", "Number of fans");
  TxtCPart = lineEdit("TxtCPart", "% of useful velocity pressure");
  LblWidth = label("LblWidth", "Width");
  LblHeight = label("LblHeight", "Height");
  LblCPart = label("LblCPart", "% of useful velocity pressure");
  LblRemote = label("LblRemote", "Realtime Station Name");
  LblRes = label("LblRes", "Type");
  LblWall = label("LblWall", "Type");
  LblShock = label("LblShock", "Type");
  for (int k = 0; k < 8; ++k) LblUnit[k] = label(QString("LblUnit(%1)").arg(k).toUtf8(), "");
  for (int k = 0; k < kShapeTypes; ++k) {
    DriveShape[k] = label(QString("DriveShape(%1)").arg(k).toUtf8(), "");
  }
  CheckFix = check("CheckFix", "Fix Q");
  ChkPress = check("ChkPress", "Fix P");
  CheckLength = check("CheckLength", "Fix L");
  CheckDirection = check("CheckDirection", "Fixed direction");
  CheckService = check("CheckService", "Services");
  CheckService->setToolTip("Reduce airway area 0.6m2");
  ChkFixRes = check("ChkFixRes", "Fix");
  ChkFixK = check("ChkFixK", "Fix");
  ChkShock = check("ChkShock", "Fix");
  OptShowData = check("OptShowData", "Show data");
  ChkSurfaceEntry = check("ChkSurfaceEntry", "Entry on surface");
  ChkSurfaceExit = check("ChkSurfaceExit", "Exit on surface");
  OptAirType[0] = check("OptAirType(0)", "Fresh");
  OptAirType[1] = check("OptAirType(1)", "Exhaust");
  ResCombo = combo("ResCombo", "Resistance type");
  WallCombo = combo("WallCombo", "Wall type");
  ShockCombo = combo("ShockCombo", "Shock type");
  FanCombo2 = combo("FanCombo2", "Fan");
  txtRemote = combo("txtRemote", "Realtime Station Name");
  CmbPrimary = combo("CmbPrimary", "Primary View Layer");
  CmbSecond = combo("CmbSecond", "Secondary View Layer");
  CmbPrimary->setEditable(true);
  CmbSecond->setEditable(true);
  CmbPrimary->setInsertPolicy(QComboBox::NoInsert);
  CmbSecond->setInsertPolicy(QComboBox::NoInsert);
  CmbPrimary->lineEdit()->installEventFilter(this);
  CmbSecond->lineEdit()->installEventFilter(this);
  OK = button("OK", "OK");
  OK->setDefault(true);
  cmdCancel = button("cmdCancel", "Cancel");
  ReCalc = button("ReCalc", "Recalc");
  Info = button("Info", "Info");
  CmdShape = button("CmdShape", "Type");
  CmdShape->setToolTip("Change airway shape");
  CmdShock = button("CmdShock", "Shock");
  CmdOriface = button("CmdOriface", "Orifice");
  Prnter = button("Prnter", "Print");
  Prnter->setToolTip("Print the form");
  CmdResetSekection = button("CmdResetSekection", "Reset Selection");
  CmdResetSekection->hide();

  Frame2 = new QGroupBox("Fan", this);
  Frame2->setObjectName("Frame2");
  OptSer2 = new QRadioButton("Series", Frame2);
  OptSer2->setObjectName("OptSer2");
  OptPar2 = new QRadioButton("Parallel", Frame2);
  OptPar2->setObjectName("OptPar2");
  VSF = new QScrollBar(Qt::Vertical, Frame2);
  VSF->setObjectName("VSF");
  VSF->setRange(0, kMaxFans);
  VSF->setFixedHeight(40);
  const char* curveCaptions[] = {"Use Static", "Use Total", "Use Combo"};
  for (int k = 0; k < 3; ++k) {
    Optcurve[k] = new QRadioButton(curveCaptions[k], Frame2);
    Optcurve[k]->setObjectName(QString("Optcurve(%1)").arg(k));
  }
  // The arrangement and the curve type are two separate choices within the one frame.
  auto* arrangement = new QButtonGroup(Frame2);
  arrangement->addButton(OptSer2);
  arrangement->addButton(OptPar2);
  auto* curve = new QButtonGroup(Frame2);
  for (QRadioButton* option : Optcurve) curve->addButton(option);
  auto* fan = new QGridLayout(Frame2);
  fan->addWidget(FanCombo2, 0, 0, 1, 4);
  fan->addWidget(OptSer2, 1, 0);
  fan->addWidget(OptPar2, 1, 1);
  fan->addWidget(new QLabel("Number of fans", Frame2), 2, 0);
  fan->addWidget(TxtFanN, 2, 1);
  fan->addWidget(VSF, 2, 2);
  for (int k = 0; k < 3; ++k) fan->addWidget(Optcurve[k], 3 + k, 0, 1, 2);
  fan->addWidget(TxtCPart, 5, 2);
  fan->addWidget(LblCPart, 5, 3);

  auto* grid = new QGridLayout;
  int row = 0;
  auto addRow = [&](const QString& caption, std::initializer_list<QWidget*> widgets) {
    if (!caption.isEmpty()) grid->addWidget(new QLabel(caption, this), row, 0);
    int column = 1;
    for (QWidget* w : widgets) grid->addWidget(w, row, column++);
    ++row;
  };
  addRow("ID Number", {TxtUnique});
  addRow("Airway name", {TxtName});
  addRow("Entry node name", {LblFrom});
  addRow("Exit node name", {LblTo});
  addRow("Comment", {TxtComment});
  auto* pictures = new QWidget(this);
  auto* pictureRow = new QHBoxLayout(pictures);
  pictureRow->setContentsMargins(0, 0, 0, 0);
  for (QLabel* picture : DriveShape) pictureRow->addWidget(picture);
  addRow("", {CmdShape, pictures});
  grid->addWidget(LblWidth, row, 0);
  addRow("", {TxtWidth, LblUnit[0]});
  grid->addWidget(LblHeight, row, 0);
  addRow("", {txtHeight, LblUnit[1]});
  addRow("Quantity", {TxtFlow, LblUnit[2], CheckFix});
  addRow("Pressure", {TxtPres, LblUnit[3], ChkPress});
  addRow("Length", {TxtLength, LblUnit[4], CheckLength});
  addRow("Resist", {TxtFixRes, LblUnit[5], ChkFixRes, LblRes, ResCombo});
  addRow("K Factor", {TxtWall, LblUnit[6], ChkFixK, LblWall, WallCombo});
  addRow("Shock", {TxtShock, LblUnit[7], ChkShock, LblShock, ShockCombo});
  addRow("", {CmdShock, CmdOriface});
  addRow("Number of parallel airways", {TxtMultiAir});
  addRow("Primary View Layer", {CmbPrimary});
  addRow("Secondary View Layer", {CmbSecond});
  grid->addWidget(LblRemote, row, 0);
  addRow("", {txtRemote});

  auto* flags = new QVBoxLayout;
  for (QWidget* w :
       std::initializer_list<QWidget*>{OptAirType[0], OptAirType[1], OptShowData, CheckDirection,
                                       CheckService, ChkSurfaceEntry, ChkSurfaceExit})
    flags->addWidget(w);
  flags->addWidget(Frame2);
  flags->addStretch();
  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {OK, cmdCancel, ReCalc, Info, Prnter, CmdResetSekection})
    buttons->addWidget(b);
  auto* columns = new QHBoxLayout;
  columns->addLayout(grid);
  columns->addLayout(flags);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addLayout(buttons);

  // Touch marks of multiple mode.
  const std::pair<QWidget*, AirField> touches[] = {
      {CmbPrimary, AirField::Primary},
      {CmbSecond, AirField::Second},
      {txtHeight, AirField::Height},
      {TxtWidth, AirField::Width},
      {TxtMultiAir, AirField::MultiAir},
      {ResCombo, AirField::FixRes},
      {TxtFixRes, AirField::FixRes},
      {ChkFixRes, AirField::FixRes},
      {WallCombo, AirField::Wall},
      {TxtWall, AirField::Wall},
      {ChkFixK, AirField::Wall},
      {ShockCombo, AirField::Shock},
      {TxtShock, AirField::Shock},
      {ChkShock, AirField::Shock},
      {TxtLength, AirField::Length},
      {CheckLength, AirField::Length},
      {CheckDirection, AirField::Direction},
      {OptAirType[0], AirField::AirType},
      {OptAirType[1], AirField::AirType},
      {OptShowData, AirField::ShowData},
  };
  for (const auto& [widget, field] : touches) touchOf_.insert(widget, field);

  // Handlers.
  connect(CheckFix, &QCheckBox::toggled, TxtFlow, &QWidget::setEnabled);
  connect(ChkPress, &QCheckBox::toggled, TxtPres, &QWidget::setEnabled);
  connect(CheckLength, &QCheckBox::toggled, TxtLength, &QWidget::setEnabled);
  connect(ChkFixRes, &QCheckBox::clicked, this, [this] {
    SetPresetGroup(ChkFixRes, ResCombo, LblRes, TxtFixRes, ws_.net.ResType[airway_]);
  });
  connect(ChkFixK, &QCheckBox::clicked, this, [this] {
    SetPresetGroup(ChkFixK, WallCombo, LblWall, TxtWall, ws_.net.WallType[airway_]);
  });
  connect(ChkShock, &QCheckBox::clicked, this, [this] {
    SetPresetGroup(ChkShock, ShockCombo, LblShock, TxtShock, ws_.net.ShockType[airway_]);
  });
  for (QComboBox* c : {ResCombo, WallCombo, ShockCombo})
    connect(c, &QComboBox::activated, this, [this, c] { PresetChosen(c); });
  connect(CmdShape, &QPushButton::clicked, this, [this] {
    fields_.Width.text = TxtWidth->text().toStdString();
    fields_.Height.text = txtHeight->text().toStdString();
    NextShape(ws_.units, fields_);
    Touch(TxtMultiAir);
    ShowShape();
  });
  connect(CmdShock, &QPushButton::clicked, this, [this] {
    if (const std::optional<double> shock = ShowShock(ws_, this)) {
      ChkShock->setChecked(true);
      SetPresetGroup(ChkShock, ShockCombo, LblShock, TxtShock, ws_.net.ShockType[airway_]);
      TxtShock->setText(Q(FormatNumber(*shock, "0")));
      Touch(TxtShock);
    }
  });
  connect(CmdOriface, &QPushButton::clicked, this, [this] {
    const std::optional<std::string> total =
        OrificeWizard(ws_, airway_, TxtFixRes->text().toStdString());
    if (!total) return;
    ChkFixRes->setChecked(true);
    SetPresetGroup(ChkFixRes, ResCombo, LblRes, TxtFixRes, ws_.net.ResType[airway_]);
    TxtFixRes->setText(Q(*total));
    Touch(TxtFixRes);
  });
  connect(FanCombo2, &QComboBox::activated, this, [this](int row) {
    if (row > 0) {
      if (TxtFanN->text().trimmed() == "0") TxtFanN->setText("1");
      CheckDirection->setChecked(true);
    } else {
      CheckDirection->setChecked(false);
      TxtFanN->setText("0");
    }
  });
  connect(VSF, &QScrollBar::valueChanged, this, [this](int value) {
    if (!loading_) TxtFanN->setText(QString::number(kMaxFans - value));
  });
  for (int k = 0; k < 3; ++k) {
    connect(Optcurve[k], &QRadioButton::clicked, this, [this, k] {
      TxtCPart->setVisible(k == 2);
      LblCPart->setVisible(k == 2);
      TxtCPart->setText(QString::number(CurvePartFor(k, ws_.defaults.DefaultCurveFraction)));
    });
  }
  connect(ChkSurfaceEntry, &QCheckBox::clicked, this, [this](bool checked) {
    if (checked) ChkSurfaceExit->setChecked(false);
  });
  connect(ChkSurfaceExit, &QCheckBox::clicked, this, [this](bool checked) {
    if (checked) ChkSurfaceEntry->setChecked(false);
  });
  for (int k = 0; k < 2; ++k) {
    connect(OptAirType[k], &QCheckBox::clicked, this, [this, k](bool checked) {
      if (checked) OptAirType[1 - k]->setChecked(false);
      ShowDriveColour();
    });
  }
  connect(OK, &QPushButton::clicked, this, [this] {
    if (Commit()) accept();
  });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ReCalc, &QPushButton::clicked, this, [this] {
    if (!Commit()) return;
    fields_ = LoadAirEdit(ws_, airway_);
    LoadFields();
    if (mode_ == AirEditMode::Multiple) SetMultipleMode();
  });
  connect(Info, &QPushButton::clicked, this, [this] {
    if (!Commit()) return;
    infoWanted_ = true;
    accept();
  });
  connect(CmdResetSekection, &QPushButton::clicked, this, &FrmAirEdit::SetMultipleMode);
  connect(Prnter, &QPushButton::clicked, this, [this] { PrintForm(this); });
  built_ = true;
}

void FrmAirEdit::LoadFields() {
  loading_ = true;
  const AirEditFields& f = fields_;
  const UnitTable& u = ws_.units;
  LblRemote->setVisible(ws_.defaults.RemoteEnabled != 0);
  txtRemote->setVisible(ws_.defaults.RemoteEnabled != 0);
  const int units[] = {Unit::Length,         Unit::Length,      Unit::Quantity,
                       Unit::Pressure,       Unit::Coordinates, Unit::Resistance,
                       Unit::FrictionFactor, Unit::Coordinates};
  for (int k = 0; k < 8; ++k) LblUnit[k]->setText(Q(UnitCaption(u, units[k])));
  ShowShape();

  CmbPrimary->clear();
  for (const std::string& row : LayerRows(ws_.net, true)) CmbPrimary->addItem(Q(row));
  CmbSecond->clear();
  for (const std::string& row : LayerRows(ws_.net, false)) CmbSecond->addItem(Q(row));
  CmbPrimary->setCurrentIndex(f.PrimaryLayer - 1);
  CmbSecond->setCurrentIndex(f.SecondLayer - 1);
  primaryEdited_ = secondEdited_ = 0;
  TxtMultiAir->setText(Q(f.MultiAir));

  CheckFix->setChecked(f.CheckFix);
  TxtFlow->setEnabled(f.CheckFix);
  CheckLength->setChecked(f.CheckLength);
  TxtLength->setEnabled(f.CheckLength);
  CheckDirection->setChecked(f.CheckDirection);
  CheckService->setChecked(f.CheckService);
  ChkPress->setChecked(f.ChkPress);
  TxtPres->setEnabled(f.ChkPress || (f.CheckFix && f.ChkFixRes));
  OptAirType[0]->setChecked(f.Fresh);
  OptAirType[1]->setChecked(f.Exhaust);
  ShowDriveColour();

  TxtUnique->setText(Q(f.Unique));
  TxtName->setText(Q(f.Name));
  LblFrom->setText(Q(f.EntryName));
  LblTo->setText(Q(f.ExitName));
  TxtComment->setText(Q(f.Comment));
  TxtFlow->setText(Q(f.Flow.text));
  TxtPres->setText(Q(f.Pres.text));
  TxtLength->setText(Q(f.Length.text));

  FillPresetCombo(ResCombo, ResRows(ws_.defaults));
  FillPresetCombo(WallCombo, WallRows(ws_.defaults));
  FillPresetCombo(ShockCombo, ShockRows(ws_.defaults));
  ChkFixRes->setChecked(f.ChkFixRes);
  ChkFixK->setChecked(f.ChkFixK);
  ChkShock->setChecked(f.ChkShock);
  SetPresetGroup(ChkFixRes, ResCombo, LblRes, TxtFixRes, f.ResIndex);
  SetPresetGroup(ChkFixK, WallCombo, LblWall, TxtWall, f.WallIndex);
  SetPresetGroup(ChkShock, ShockCombo, LblShock, TxtShock, f.ShockIndex);
  TxtFixRes->setText(Q(f.FixRes.text));
  TxtWall->setText(Q(f.Wall.text));
  TxtShock->setText(Q(f.Shock.text));

  FanCombo2->clear();
  for (const FanRow& row : FanRows(ws_.net)) FanCombo2->addItem(Q(row.text), row.number);
  const int fanRow = FanCombo2->findData(f.Fan);
  FanCombo2->setCurrentIndex(fanRow >= 0 ? fanRow : 0);
  TxtFanN->setText(Q(f.FanN));
  VSF->setValue(std::clamp(kMaxFans - ReadNumber(f.FanN).value_or(0), 0.0, double{kMaxFans}));
  (f.Series ? OptSer2 : OptPar2)->setChecked(true);
  Optcurve[f.CurveType]->setChecked(true);
  TxtCPart->setText(Q(f.CPart));
  TxtCPart->setVisible(f.CurveType == 2);
  LblCPart->setVisible(f.CurveType == 2);

  txtRemote->clear();
  txtRemote->addItem("none");
  // A station without a name shows its number.
  for (int k = 1; k <= kStations; ++k) {
    const std::string& name = ws_.remote.StationName[k];
    txtRemote->addItem(name.empty() ? QString::number(k) : Q(name));
  }
  txtRemote->setCurrentIndex(f.RemoteStation);
  OptShowData->setChecked(f.ShowData);
  ChkSurfaceEntry->setChecked(f.SurfaceEntry);
  ChkSurfaceExit->setChecked(f.SurfaceExit);
  loading_ = false;
  if (!f.FanFound) ws_.ui.Inform(kMsgFanNotDetected);
}

void FrmAirEdit::ShowShape() {
  const ShapeFields shape = galeris::ShowShape(ws_.units, fields_.ShapeType, fields_.Equiv);
  fields_.Width = shape.width;
  fields_.Height = shape.height;
  for (int k = 0; k < kShapeTypes; ++k) DriveShape[k]->setVisible(k == fields_.ShapeType);
  LblWidth->setText(shape.widthLabel);
  LblUnit[0]->setText(Q(UnitCaption(ws_.units, shape.widthUnit)));
  const bool height = *shape.heightLabel != '\0';
  LblHeight->setText(shape.heightLabel);
  LblHeight->setVisible(height);
  txtHeight->setVisible(height);
  LblUnit[1]->setVisible(height);
  TxtWidth->setText(Q(shape.width.text));
  txtHeight->setText(Q(shape.height.text));
}

void FrmAirEdit::ShowDriveColour() {
  QColor fill(0, 255, 0);
  if (OptAirType[0]->isChecked()) fill = QColor(0, 0, 255);
  if (OptAirType[1]->isChecked()) fill = QColor(255, 0, 0);
  for (int k = 0; k < kShapeTypes; ++k) DriveShape[k]->setPixmap(ShapePicture(k, fill));
}

void FrmAirEdit::SetPresetGroup(QCheckBox* fix, QComboBox* combo, QLabel* label, QLineEdit* text,
                                int presetIndex) {
  const bool fixed = fix->isChecked();
  combo->setVisible(!fixed);
  label->setVisible(!fixed);
  text->setEnabled(fixed);
  if (!fixed) SelectPreset(combo, presetIndex);
}

void FrmAirEdit::PresetChosen(QComboBox* combo) {
  const int index = PresetOf(combo);
  const Defaults& d = ws_.defaults;
  if (combo == ResCombo) {
    ChkFixRes->setChecked(false);
    TxtFixRes->setText(Q(
        FormatValue(ws_.units, index != 0 ? ResPresetValue(d, index) : ws_.net.Resistance[airway_],
                    Unit::Resistance)));
  } else if (combo == WallCombo && index < kUserGiven) {
    TxtWall->setText(Q(FormatValue(ws_.units, WallPresetValue(d, index), Unit::FrictionFactor)));
  } else if (combo == ShockCombo && index < kUserGiven) {
    TxtShock->setText(Q(FullText(ws_.units, ShockPresetValue(d, index), Unit::Coordinates)));
  }
  if (!loading_) Touch(combo);
}

void FrmAirEdit::SetMultipleMode() {
  for (QWidget* w : std::initializer_list<QWidget*>{ChkPress, TxtFlow, TxtPres, ChkSurfaceEntry,
                                                    ChkSurfaceExit, TxtName, TxtUnique, LblFrom,
                                                    LblTo, TxtComment, LblUnit[2], LblUnit[3]})
    w->setEnabled(false);
  Frame2->hide();
  Info->hide();
  CmdOriface->hide();
  CmdResetSekection->show();
  fields_.Touched = {};
  for (QWidget* w : touchOf_.keys()) w->setStyleSheet("background-color: palette(button);");
  TxtMultiAir->setStyleSheet("background-color: palette(button);");
}

void FrmAirEdit::Touch(QWidget* widget) {
  if (mode_ != AirEditMode::Multiple) return;
  if (widget == TxtMultiAir) {
    fields_.Touch(AirField::MultiAir);
    TxtMultiAir->setStyleSheet("");
    return;
  }
  const auto found = touchOf_.find(widget);
  if (found == touchOf_.end()) return;
  fields_.Touch(found.value());
  // Every control of the same field shows the mark.
  for (auto it = touchOf_.begin(); it != touchOf_.end(); ++it)
    if (it.value() == found.value()) it.key()->setStyleSheet("");
}

bool FrmAirEdit::eventFilter(QObject* watched, QEvent* event) {
  if (!built_) return QDialog::eventFilter(watched, event);
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == CmbPrimary->lineEdit()) widget = CmbPrimary;
  if (widget == CmbSecond->lineEdit()) widget = CmbSecond;
  switch (event->type()) {
    case QEvent::FocusIn: {
      // Focus the user gave marks the field; focus the window hands out on opening does not.
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
          reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
        Touch(widget);
      if (auto* box = qobject_cast<QLineEdit*>(watched))
        QTimer::singleShot(0, box, &QLineEdit::selectAll);
      break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      Touch(widget);
      break;
    case QEvent::FocusOut:
      for (QLineEdit* box : {TxtFixRes, TxtFlow, txtHeight, TxtWidth, TxtMultiAir})
        if (watched == box) DropSign(box);
      if (widget == CmbPrimary) LayerNamed(CmbPrimary, primaryEdited_);
      if (widget == CmbSecond) LayerNamed(CmbSecond, secondEdited_);
      break;
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        EnterPressed(widget);
        return true;
      }
      if (widget == CmbPrimary && !key->text().isEmpty())
        primaryEdited_ = CmbPrimary->currentIndex() + 1;
      if (widget == CmbSecond && !key->text().isEmpty())
        secondEdited_ = CmbSecond->currentIndex() + 1;
      if (key->text() == ".") {
        if (watched == TxtMultiAir) return true;
        const char separator = MachineDecimalSeparator();
        if (separator != '.' && qobject_cast<QLineEdit*>(watched)) {
          static_cast<QLineEdit*>(watched)->insert(QString(QChar(separator)));
          return true;
        }
      }
      break;
    }
    default:
      break;
  }
  return QDialog::eventFilter(watched, event);
}

void FrmAirEdit::EnterPressed(QWidget* widget) {
  const std::pair<QWidget*, QWidget*> next[] = {{TxtFixRes, TxtWall}, {TxtWall, TxtShock},
                                                {TxtShock, TxtWidth}, {TxtFlow, TxtPres},
                                                {TxtPres, TxtLength}, {ResCombo, WallCombo}};
  for (const auto& [from, to] : next) {
    if (widget == from) {
      to->setFocus();
      return;
    }
  }
  CommitAndClose();
}

void FrmAirEdit::LayerNamed(QComboBox* combo, int& editedRow) {
  const QString text = combo->currentText().trimmed();
  if (editedRow < 1 || text.isEmpty()) return;
  combo->setItemText(editedRow - 1, text);
  combo->setCurrentIndex(editedRow - 1);
}

void FrmAirEdit::ReadControls() {
  AirEditFields& f = fields_;
  f.Name = TxtName->text().toStdString();
  f.EntryName = LblFrom->text().toStdString();
  f.ExitName = LblTo->text().toStdString();
  f.Comment = TxtComment->text().toStdString();
  f.Width.text = TxtWidth->text().toStdString();
  f.Height.text = txtHeight->text().toStdString();
  f.Flow.text = TxtFlow->text().toStdString();
  f.Pres.text = TxtPres->text().toStdString();
  f.Length.text = TxtLength->text().toStdString();
  f.FixRes.text = TxtFixRes->text().toStdString();
  f.Wall.text = TxtWall->text().toStdString();
  f.Shock.text = TxtShock->text().toStdString();
  f.MultiAir = TxtMultiAir->text().toStdString();
  f.FanN = TxtFanN->text().toStdString();
  f.CPart = TxtCPart->text().toStdString();
  f.CheckFix = CheckFix->isChecked();
  f.ChkPress = ChkPress->isChecked();
  f.CheckLength = CheckLength->isChecked();
  f.CheckDirection = CheckDirection->isChecked();
  f.CheckService = CheckService->isChecked();
  f.ChkFixRes = ChkFixRes->isChecked();
  f.ChkFixK = ChkFixK->isChecked();
  f.ChkShock = ChkShock->isChecked();
  f.ResIndex = PresetOf(ResCombo);
  f.WallIndex = PresetOf(WallCombo);
  f.ShockIndex = PresetOf(ShockCombo);
  f.Fresh = OptAirType[0]->isChecked();
  f.Exhaust = OptAirType[1]->isChecked();
  f.ShowData = OptShowData->isChecked();
  f.SurfaceEntry = ChkSurfaceEntry->isChecked();
  f.SurfaceExit = ChkSurfaceExit->isChecked();
  f.Fan = FanNumberOfRow(FanCombo2->currentText().toStdString());
  f.Series = OptSer2->isChecked();
  for (int k = 0; k < 3; ++k)
    if (Optcurve[k]->isChecked()) f.CurveType = k;
  f.RemoteStation = std::max(txtRemote->currentIndex(), 0);
  LayerNamed(CmbPrimary, primaryEdited_);
  LayerNamed(CmbSecond, secondEdited_);
  f.PrimaryLayer = CmbPrimary->currentIndex() + 1;
  f.SecondLayer = CmbSecond->currentIndex() + 1;
  f.PrimaryText = CmbPrimary->currentText().toStdString();
  f.SecondText = CmbSecond->currentText().toStdString();
  f.PrimaryEdited = primaryEdited_;
  f.SecondEdited = secondEdited_;
}

void FrmAirEdit::CommitAndClose() {
  if (Commit()) accept();
}

bool FrmAirEdit::Commit() {
  ReadControls();
  const std::optional<FieldError> error = CommitAirEdit(ws_, mode_, airway_, fields_);
  if (error) {
    ws_.ui.Inform(error->message);
    RestoreField(error->field);
    return false;
  }
  committed_ = true;
  return true;
}

// A refused field goes back to what it showed when it was filled.
void FrmAirEdit::RestoreField(AirField field) {
  const AirEditFields loaded = LoadAirEdit(ws_, airway_);
  QLineEdit* box = nullptr;
  QString text;
  switch (field) {
    case AirField::Name:
      TxtName->setText(Q(loaded.Name));
      LblFrom->setText(Q(loaded.EntryName));
      LblTo->setText(Q(loaded.ExitName));
      TxtComment->setText(Q(loaded.Comment));
      box = TxtName;
      break;
    case AirField::Width:
      box = TxtWidth, text = Q(fields_.Width.shownText);
      break;
    case AirField::Height:
      box = txtHeight, text = Q(fields_.Height.shownText);
      break;
    case AirField::Flow:
      box = TxtFlow, text = Q(loaded.Flow.text);
      break;
    case AirField::Pres:
      box = TxtPres, text = Q(loaded.Pres.text);
      break;
    case AirField::Length:
      box = TxtLength, text = Q(loaded.Length.text);
      break;
    case AirField::FixRes:
      box = TxtFixRes, text = Q(loaded.FixRes.text);
      break;
    case AirField::Wall:
      box = TxtWall, text = Q(loaded.Wall.text);
      break;
    case AirField::Shock:
      box = TxtShock, text = Q(loaded.Shock.text);
      break;
    case AirField::MultiAir:
      box = TxtMultiAir, text = Q(loaded.MultiAir);
      break;
    case AirField::FanN:
      box = TxtFanN, text = Q(loaded.FanN);
      break;
    case AirField::CPart:
      box = TxtCPart, text = Q(loaded.CPart);
      break;
    case AirField::Primary:
      CmbPrimary->setItemText(CmbPrimary->currentIndex(),
                              Q(LayerRows(ws_.net, true)[CmbPrimary->currentIndex()]));
      primaryEdited_ = 0;
      return;
    case AirField::Second:
      CmbSecond->setItemText(CmbSecond->currentIndex(),
                             Q(LayerRows(ws_.net, false)[CmbSecond->currentIndex()]));
      secondEdited_ = 0;
      return;
    default:
      return;
  }
  if (field != AirField::Name) box->setText(text);
  box->setFocus();
}

bool ShowAirEdit(Workspace& ws, int mode, int airway, QWidget* parent) {
  if (ws.net.BranchCount < 1) return false;
  airway = std::clamp(airway, 1, static_cast<int>(ws.net.BranchCount));
  FrmAirEdit dialog(ws, mode, airway, parent);
  RunUntilLeft(dialog, [&dialog] { dialog.CommitAndClose(); });
  if (dialog.Committed()) MarkNetworkChanged(ws);
  if (dialog.InfoWanted()) ShowAirInfo(ws, airway, parent);
  return dialog.Committed();
}

}  // namespace galeris
