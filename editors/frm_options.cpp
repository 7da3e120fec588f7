#include "editors/frm_options.h"

#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/typed_number.h"
#include "core/units.h"
#include "editors/number_box.h"
#include "files/defaults_file.h"
#include "view/canvas.h"
#include "view/drawing.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

// The sixteen colours of the console palette, as 0x00BBGGRR.
constexpr std::array<std::int32_t, 16> kPalette = {
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
    0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

QColor ColourOf(std::int32_t c) {
  return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
}

void PaintButton(QPushButton* button, std::int32_t colour, bool selected) {
  button->setStyleSheet(QString("QPushButton { background-color: %1; border: %2; }")
                            .arg(ColourOf(colour).name(), selected ? "3px solid white" : "none"));
}

// The preset groups: combo, value box and row box names, and the unit of the values.
struct PresetGroup {
  const char *title, *combo, *value, *row;
  int unit;
};
constexpr std::array<PresetGroup, 3> kPresetGroups = {{
    {"Resistance Types", "CmbRes", "TxtRes", "TxtR", Unit::Resistance},
    {"Wall Types", "CmbWall", "TxtWallC", "TxtW", Unit::FrictionFactor},
    {"Shock Loss Types", "CmbShock", "TxtShockC", "TxtS", Unit::Length},
}};

}  // namespace

FrmOptions::FrmOptions(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("frmOptions");
  setWindowTitle("Options");
  auto* layout = new QVBoxLayout(this);
  auto* tabs = new QTabWidget(this);
  tabs->setObjectName("SSTab1");
  tabs->addTab(BuildGeneralTab(), "General");
  tabs->addTab(BuildDisplayTab(), "Display");
  tabs->addTab(BuildAirwaysTab(), "Airways");
  tabs->addTab(BuildPresetsTab(), "Preset Values");
  tabs->addTab(BuildUnitsTab(), "Units");
  layout->addWidget(tabs);

  auto* buttons = new QHBoxLayout;
  auto* save = new QPushButton("Save Defaults", this);
  save->setObjectName("cmdSaveDefaults");
  auto* load = new QPushButton("Load Defaults", this);
  load->setObjectName("cmdLoadDefaults");
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("cmdOK");
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("cmdCancel");
  buttons->addWidget(save);
  buttons->addWidget(load);
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(save, &QPushButton::clicked, this, &FrmOptions::SaveDefaultsFile);
  connect(load, &QPushButton::clicked, this, &FrmOptions::LoadDefaultsFile);
  connect(ok, &QPushButton::clicked, this, &FrmOptions::accept);
  connect(cancel, &QPushButton::clicked, this, &FrmOptions::reject);
  ToControls(LoadOptionsForm(ws_));
}

QLineEdit* FrmOptions::Box(QWidget* parent, const char* control, bool digitsOnly) {
  QLineEdit* box = NumberBox(parent, control, digitsOnly);
  boxes_[control] = box;
  return box;
}

QCheckBox* FrmOptions::Check(QWidget* parent, const char* control, const char* caption) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(control);
  checks_[control] = box;
  return box;
}

QWidget* FrmOptions::BuildGeneralTab() {
  auto* tab = new QWidget(this);
  auto* layout = new QHBoxLayout(tab);
  auto* left = new QFormLayout;
  const std::pair<const char*, const char*> boxes[] = {
      {"TxtVPart", "% of useful velocity pressure"},
      {"TxtCd", "Minimum Node Spacing (1-100)"},
      {"TxtTol", "Airway Proximity Search\n(% of screen area)"},
      {"TxtPowerZoom", "Power Zoom Speed"},
      {"TxtTilt", "Tilt/Spin rotation speed"},
      {"TxtSpin", "Spin rotation speed"},
      {"txtIt", "Max Itterations (1-5000)"},
      {"txtMe", "Max Allowable Error (0.0001-5.0)"},
      {"TxtDensity", "Average Air Density"},
      {"TxtAirP", "Surface Barometric Press"},
      {"TxtAirRL", "RL at Surface Pressure"},
      {"TxtCost", "Power Cost $ per kWhr"},
      {"TxtEff", "Air Power Efficiency Factor (%)"},
      {"TxtFanMax", "Max Number of Fan Types (1000)"},
  };
  for (const auto& [control, label] : boxes) {
    const std::string name = control;
    const bool digitsOnly =
        name == "TxtCd" || name == "TxtPowerZoom" || name == "TxtSpin" || name == "TxtTilt";
    left->addRow(label, Box(tab, control, digitsOnly));
  }
  layout->addLayout(left);
  auto* right = new QVBoxLayout;
  const std::pair<const char*, const char*> checks[] = {
      {"ChkRemote", "Activate Realtime Monitoring Options"},
      {"ChkBuffer", "Screen Buffer"},
      {"ChkInfo", "Auto Info"},
      {"ChkScroll", "Scroll Zoom Off"},
      {"ChkLayer", "Layer Inheritance"},
      {"ChkInherit", "Property Inheritance"},
      {"ChkEDIT", "EDIT disable right mouse click"},
      {"ChkTilt", "Allow full 360 degree rotation"},
      {"ChkSpeed", "Unlimited rotation and zoom speed"},
      {"ChkHor", "Reverse Horizontal Coordinates"},
      {"ChkVert", "Reverse Vertical Coordinates"},
  };
  for (const auto& [control, caption] : checks) right->addWidget(Check(tab, control, caption));
  auto* grid = new QGroupBox("Grid", tab);
  auto* gridLayout = new QFormLayout(grid);
  gridLayout->addRow("Grid Line Spacing (5-1000)", Box(grid, "TxtMj"));
  gridLayout->addRow("Scale Width", Box(grid, "Txtgwidth"));
  gridLayout->addRow("Centre X Coord", Box(grid, "Txtgx"));
  gridLayout->addRow("Centre Y Coord", Box(grid, "Txtgy"));
  right->addWidget(grid);
  auto* save = new QHBoxLayout;
  QCheckBox* saveTime = Check(tab, "ChkSaveTime", "Auto Save simulations");
  QLineEdit* minutes = Box(tab, "txtsavetime", true);
  save->addWidget(saveTime);
  save->addWidget(minutes);
  save->addWidget(new QLabel("minutes", tab));
  right->addLayout(save);
  connect(saveTime, &QCheckBox::toggled, minutes, &QLineEdit::setEnabled);
  right->addStretch();
  layout->addLayout(right);
  return tab;
}

QWidget* FrmOptions::BuildDisplayTab() {
  auto* tab = new QWidget(this);
  auto* layout = new QGridLayout(tab);
  auto* shown = new QGroupBox("Show", tab);
  auto* shownLayout = new QVBoxLayout(shown);
  const char* captions[10] = {
      "Node Names",   "Airway Names", "Data Values",  "Resistance Symbols", "Fan Symbols",
      "Node Symbols", "Arrows",       "Contaminants", "Floating Text",      "Off Level Raises"};
  for (int i = 0; i < 10; ++i) {
    chkViewer_[i] = new QCheckBox(captions[i], shown);
    chkViewer_[i]->setObjectName(QString("ChkViewer(%1)").arg(i));
    shownLayout->addWidget(chkViewer_[i]);
  }
  layout->addWidget(shown, 0, 0, 3, 1);

  auto radios = [&](const QString& title, const QString& name, const QStringList& captions,
                    auto& buttons) {
    auto* group = new QGroupBox(title, tab);
    auto* groupLayout = new QVBoxLayout(group);
    for (int k = 0; k < captions.size(); ++k) {
      buttons[k] = new QRadioButton(captions[k], group);
      buttons[k]->setObjectName(QString("%1(%2)").arg(name).arg(k));
      groupLayout->addWidget(buttons[k]);
    }
    return group;
  };
  layout->addWidget(
      radios("Data", "OptType",
             {"Show All Data", "Vertical Data only", "Horizontal data only", "Selected Data only"},
             optType_),
      0, 1);
  layout->addWidget(
      radios("Contaminants", "OptSimSource", {"Fixed Injection", "Cummulative"}, optSimSource_), 1,
      1);
  layout->addWidget(radios("Colours", "OptColour", {"Levels", "Fresh / Exhaust"}, optColour_), 2,
                    1);
  for (int k = 0; k < 2; ++k) {
    connect(optColour_[k], &QRadioButton::toggled, this, [this] {
      if (!loading_) FillColours();
    });
  }

  auto* colours = new QGroupBox("Colours", tab);
  auto* colourLayout = new QGridLayout(colours);
  for (int i = 0; i < kOptionColours; ++i) {
    col_[i] = new QPushButton(colours);
    col_[i]->setObjectName(QString("Col(%1)").arg(i));
    col_[i]->setFixedSize(28, 18);
    auto* label = new QLabel(colours);
    label->setObjectName(i < 5 ? QString("LblCol(%1)").arg(i) : QString("Label%1").arg(55 + i));
    colourLayout->addWidget(col_[i], i, 0);
    colourLayout->addWidget(label, i, 1);
    connect(col_[i], &QPushButton::clicked, this, [this, i] { SelectColourSlot(i); });
  }
  auto* frame = new QWidget(colours);
  frame->setObjectName("Frame3D2");
  auto* frameLayout = new QHBoxLayout(frame);
  frameLayout->setSpacing(1);
  for (int k = 0; k < 16; ++k) {
    auto* swatch = new QPushButton(frame);
    swatch->setObjectName(QString("Colr(%1)").arg(k));
    swatch->setFixedSize(14, 14);
    PaintButton(swatch, kPalette[k], false);
    frameLayout->addWidget(swatch);
    connect(swatch, &QPushButton::clicked, this, [this, k] { PickColour(k); });
  }
  colourLayout->addWidget(frame, kOptionColours, 0, 1, 2);
  layout->addWidget(colours, 0, 2, 2, 1);

  auto* fonts = new QGroupBox("Fonts", tab);
  auto* fontLayout = new QFormLayout(fonts);
  cmbFonts_ = new QComboBox(fonts);
  cmbFonts_->setObjectName("CmbFonts");
  cmbFonts_->addItems({"Data values", "Branch names", "Node names", "Floating text"});
  cmbFontSize_ = new QComboBox(fonts);
  cmbFontSize_->setObjectName("CmbFontSize");
  for (int size = 0; size <= 40; size += 2) cmbFontSize_->addItem(QString::number(size));
  chkBold_ = new QCheckBox("Bold", fonts);
  chkBold_->setObjectName("ChkBold");
  fontLayout->addRow(cmbFonts_);
  fontLayout->addRow("Size", cmbFontSize_);
  fontLayout->addRow(chkBold_);
  layout->addWidget(fonts, 2, 2);

  auto* icons = new QGroupBox("Symbols", tab);
  auto* iconLayout = new QFormLayout(icons);
  cmbIcon_ = new QComboBox(icons);
  cmbIcon_->setObjectName("CmbIcon");
  cmbIcon_->addItems({"Lines", "Arrows", "Smoke", "Fans", "Nodes", "Obstruction", "Bulkhead"});
  cmbIconSize_ = new QComboBox(icons);
  cmbIconSize_->setObjectName("CmbIconSize");
  for (int size = 1; size <= 20; ++size) cmbIconSize_->addItem(QString::number(size));
  chkIconScale_ = new QCheckBox("Scale with distance", icons);
  chkIconScale_->setObjectName("ChkIconScale");
  iconPicture_ = new QLabel(icons);
  iconPicture_->setObjectName("IconPicture");
  iconLayout->addRow(cmbIcon_, iconPicture_);
  iconLayout->addRow("Size", cmbIconSize_);
  iconLayout->addRow(chkIconScale_);
  layout->addWidget(icons, 3, 2);
  connect(cmbIcon_, &QComboBox::currentIndexChanged, this, [this] { ShowIcon(); });
  connect(cmbIconSize_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (!loading_) symbolSize_[cmbIcon_->currentIndex()] = static_cast<std::int16_t>(index + 1);
  });
  connect(chkIconScale_, &QCheckBox::toggled, this, [this](bool on) {
    if (!loading_) symbolScaled_[cmbIcon_->currentIndex()] = on ? 1 : 0;
  });
  auto showFont = [this] {
    const LabelFont& font = form_.Fonts[cmbFonts_->currentIndex() + 1];
    const bool was = loading_;
    loading_ = true;
    cmbFontSize_->setCurrentIndex(std::clamp(font.Size / 2, 0, cmbFontSize_->count() - 1));
    chkBold_->setChecked(font.Bold != 0);
    loading_ = was;
  };
  connect(cmbFonts_, &QComboBox::currentIndexChanged, this, showFont);
  connect(cmbFontSize_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (!loading_)
      form_.Fonts[cmbFonts_->currentIndex() + 1].Size = static_cast<std::int16_t>(2 * index);
  });
  connect(chkBold_, &QCheckBox::toggled, this, [this](bool on) {
    if (!loading_) form_.Fonts[cmbFonts_->currentIndex() + 1].Bold = on ? -1 : 0;
  });
  return tab;
}

QWidget* FrmOptions::BuildAirwaysTab() {
  auto* tab = new QWidget(this);
  auto* layout = new QFormLayout(tab);
  layout->addRow("Drive Height", Box(tab, "txtHeight"));
  layout->addRow("Drive Width", Box(tab, "TxtWidth"));
  layout->addRow("Raise Diameter", Box(tab, "TxtDiam"));
  layout->addRow("Airway Area", Box(tab, "TxtArea"));
  layout->addRow("Airway Perimeter", Box(tab, "TxtPerim"));
  wallCombo_ = new QComboBox(tab);
  wallCombo_->setObjectName("WallCombo");
  wallCombo2_ = new QComboBox(tab);
  wallCombo2_->setObjectName("WallCombo2");
  shockCombo_ = new QComboBox(tab);
  shockCombo_->setObjectName("ShockCombo");
  layout->addRow("Wall Smoothness - Drives", wallCombo_);
  layout->addRow("Wall Smoothness - Raises", wallCombo2_);
  layout->addRow("Shock Distance", shockCombo_);
  layout->addRow(Check(tab, "ChkArea", "Use 'area' for new airways"));
  layout->addRow(Check(tab, "ChkUnderR", "Add underlying airway resistance"));
  return tab;
}

QWidget* FrmOptions::BuildPresetsTab() {
  auto* tab = new QGroupBox("Preset Values", this);
  auto* layout = new QGridLayout(tab);
  for (int g = 0; g < 3; ++g) {
    const PresetGroup& group = kPresetGroups[g];
    presetCombo_[g] = new QComboBox(tab);
    presetCombo_[g]->setObjectName(group.combo);
    presetCombo_[g]->setEditable(true);
    presetCombo_[g]->setInsertPolicy(QComboBox::NoInsert);
    presetCombo_[g]->lineEdit()->setValidator(
        new QRegularExpressionValidator(QRegularExpression("[^,]*"), presetCombo_[g]));
    presetValue_[g] = NumberBox(tab, group.value);
    presetRow_[g] = new QLineEdit(tab);
    presetRow_[g]->setObjectName(group.row);
    presetRow_[g]->setReadOnly(true);
    presetRow_[g]->setMaximumWidth(40);
    layout->addWidget(new QLabel(group.title, tab), g, 0);
    layout->addWidget(presetCombo_[g], g, 1);
    layout->addWidget(presetValue_[g], g, 2);
    layout->addWidget(presetRow_[g], g, 3);
    connect(presetCombo_[g], &QComboBox::currentIndexChanged, this, [this, g] {
      if (!loading_) FillPresetValue(g);
    });
    // A typed name replaces the row's name; a typed value is stored through the unit.
    connect(presetCombo_[g]->lineEdit(), &QLineEdit::editingFinished, this, [this, g] {
      const int row = presetRow_[g]->text().toInt();
      if (loading_ || row < 0 || row >= kPresetRows) return;
      std::array<std::string, kPresetRows>* names[] = {&form_.ResName, &form_.WallName,
                                                       &form_.ShockName};
      (*names[g])[row] = presetCombo_[g]->currentText().toStdString();
      loading_ = true;
      presetCombo_[g]->setItemText(row, QString::fromStdString(PresetListName((*names[g])[row])));
      presetCombo_[g]->setCurrentIndex(row);
      loading_ = false;
    });
    connect(presetValue_[g], &QLineEdit::editingFinished, this, [this, g] {
      const int row = presetRow_[g]->text().toInt();
      const std::optional<double> typed = ReadTypedNumber(presetValue_[g]->text().toStdString());
      if (loading_ || !typed || row < 0 || row >= kPresetRows) return;
      std::array<float, kPresetRows>* values[] = {&form_.Res, &form_.Wall, &form_.Shock};
      (*values[g])[row] = static_cast<float>(FromDisplay(ws_.units, *typed, kPresetGroups[g].unit));
    });
  }
  layout->setRowStretch(3, 1);
  return tab;
}

QWidget* FrmOptions::BuildUnitsTab() {
  auto* tab = new QWidget(this);
  auto* layout = new QVBoxLayout(tab);
  auto* system = new QHBoxLayout;
  const char* captions[2] = {"SI Metric", "British Imperial"};
  for (int k = 0; k < 2; ++k) {
    optUnitType_[k] = new QRadioButton(captions[k], tab);
    optUnitType_[k]->setObjectName(QString("OptUnitType(%1)").arg(k));
    system->addWidget(optUnitType_[k]);
    connect(optUnitType_[k], &QRadioButton::clicked, this, [this, k] { SwitchUnits(k + 1); });
  }
  layout->addLayout(system);
  formats_ = new QTableWidget(kUnitRows, 6, tab);
  formats_->setObjectName("MSFlexGrid1");
  formats_->verticalHeader()->hide();
  layout->addWidget(formats_);
  connect(formats_, &QTableWidget::cellChanged, this, &FrmOptions::FormatEdited);
  return tab;
}

void FrmOptions::ToControls(const OptionsForm& form) {
  loading_ = true;
  form_ = form;
  for (auto& [control, box] : boxes_) {
    const auto found = form.Text.find(control);
    box->setText(found == form.Text.end() ? QString() : QString::fromStdString(found->second));
  }
  const std::pair<const char*, bool> checks[] = {{"ChkRemote", form.Remote},
                                                 {"ChkBuffer", form.Buffer},
                                                 {"ChkInfo", form.Info},
                                                 {"ChkScroll", form.ScrollOff},
                                                 {"ChkLayer", form.LayerInherit},
                                                 {"ChkInherit", form.PropertyInherit},
                                                 {"ChkEDIT", form.EditNoRightClick},
                                                 {"ChkTilt", form.FullRotation},
                                                 {"ChkSpeed", form.UnlimitedSpeed},
                                                 {"ChkHor", form.ReverseX},
                                                 {"ChkVert", form.ReverseY},
                                                 {"ChkArea", form.UseArea},
                                                 {"ChkUnderR", form.UnderlyingResistance},
                                                 {"ChkSaveTime", form.SaveTime}};
  for (const auto& [control, on] : checks) checks_[control]->setChecked(on);
  boxes_["txtsavetime"]->setEnabled(form.SaveTime);
  for (int i = 0; i < 10; ++i) chkViewer_[i]->setChecked(form.Viewer[i]);
  optType_[std::clamp<int>(form.DataDisplay, 0, 3)]->setChecked(true);
  optSimSource_[form.SimSource == 1 ? 1 : 0]->setChecked(true);
  optColour_[form.ColourMode == 1 ? 1 : 0]->setChecked(true);
  optUnitType_[ws_.units.UnitSystem == 2 ? 1 : 0]->setChecked(true);

  // The default lists show each row as its value and its name.
  auto fillDefaults = [this](QComboBox* combo, const std::array<std::string, kPresetRows>& names,
                             const std::array<float, kPresetRows>& values, int unit, int index) {
    combo->clear();
    for (int row = 0; row < kPresetRows; ++row) {
      combo->addItem(QString::fromStdString(ShownValue(ws_.units, values[row], unit) + "  (" +
                                            PresetListName(names[row]) + ")"));
    }
    combo->setCurrentIndex(std::clamp(index, 0, kPresetRows - 1));
  };
  fillDefaults(wallCombo_, form.WallName, form.Wall, Unit::FrictionFactor, form.WallDrive);
  fillDefaults(wallCombo2_, form.WallName, form.Wall, Unit::FrictionFactor, form.WallRaise);
  fillDefaults(shockCombo_, form.ShockName, form.Shock, Unit::Length, form.ShockDefault);
  const std::array<const std::array<std::string, kPresetRows>*, 3> names = {
      &form.ResName, &form.WallName, &form.ShockName};
  for (int g = 0; g < 3; ++g) {
    presetCombo_[g]->clear();
    for (int row = 0; row < kPresetRows; ++row)
      presetCombo_[g]->addItem(QString::fromStdString(PresetListName((*names[g])[row])));
    presetCombo_[g]->setCurrentIndex(0);
    FillPresetValue(g);
  }
  cmbFonts_->setCurrentIndex(0);
  cmbFontSize_->setCurrentIndex(std::clamp(form.Fonts[1].Size / 2, 0, cmbFontSize_->count() - 1));
  chkBold_->setChecked(form.Fonts[1].Bold != 0);

  // The heads of the conversion table's first row, in the grid's column order.
  const std::array<const char*, 6> fallback = {"Data Type",       "Metric format", "Metric unit",
                                               "Imperial format", "Imperial unit",
                                               "Conversion factor"};
  constexpr std::array<int, 6> kHeadOf = {1, 5, 3, 6, 4, 2};
  QStringList heads;
  for (int c = 0; c < 6; ++c) {
    const std::string& head = ws_.units.Heads[kHeadOf[c]];
    heads << (head.empty() ? QString(fallback[c]) : QString::fromStdString(head));
  }
  formats_->setHorizontalHeaderLabels(heads);
  for (int row = 1; row <= kUnitRows; ++row) {
    const std::array<QString, 6> cells = {QString::fromStdString(ws_.units.UnitName[row]),
                                          QString::fromStdString(form.MetricFormat[row]),
                                          QString::fromStdString(ws_.units.UnitText[row][1]),
                                          QString::fromStdString(form.ImperialFormat[row]),
                                          QString::fromStdString(ws_.units.UnitText[row][2]),
                                          QString::number(form.ImperialFactor[row], 'g', 10)};
    for (int column = 0; column < 6; ++column) {
      auto* item = new QTableWidgetItem(cells[column]);
      if (column != 1 && column != 3 && column != 5)
        item->setFlags(item->flags() & ~Qt::ItemIsEditable);
      formats_->setItem(row - 1, column, item);
    }
  }
  FillColours();
  loading_ = false;
}

void FrmOptions::SetSymbolSizes(const std::array<std::int16_t, 7>& size,
                                const std::array<std::int16_t, 7>& scaled) {
  symbolSize_ = size;
  symbolScaled_ = scaled;
  ShowIcon();
}

void FrmOptions::ShowIcon() {
  const int row = std::max(0, cmbIcon_->currentIndex());
  const bool was = loading_;
  loading_ = true;
  cmbIconSize_->setCurrentIndex(std::clamp<int>(symbolSize_[row], 1, 20) - 1);
  chkIconScale_->setChecked(symbolScaled_[row] == 1);
  // The picture of the row: the symbol bitmaps by their place in the picture list.
  constexpr std::array<int, 7> kPictures = {
      Picture::Line, Picture::Arrow,        Picture::Smoke,         Picture::Fan,
      Picture::Node, Picture::HazardSymbol, Picture::BulkheadSymbol};
  iconPicture_->setPixmap(QPixmap::fromImage(SymbolPicture(kPictures[row], 32)));
  loading_ = was;
}

void FrmOptions::FillPresetValue(int g) {
  const int row = std::max(0, presetCombo_[g]->currentIndex());
  const std::array<float, kPresetRows>* values[] = {&form_.Res, &form_.Wall, &form_.Shock};
  const bool was = loading_;
  loading_ = true;
  presetRow_[g]->setText(QString::number(row));
  presetValue_[g]->setText(
      QString::fromStdString(ShownValue(ws_.units, (*values[g])[row], kPresetGroups[g].unit)));
  loading_ = was;
}

void FrmOptions::FillColours() {
  const bool byAir = optColour_[1]->isChecked();
  const char* fixed[5] = {"Background", "Grid Lines", "Node Text", "Data Text", "Grid Text"};
  const char* air[3] = {"Unspecified Airways", "Fresh Air Airways", "Exhaust Air Airways"};
  const char* levels[3] = {"On Level Airways", "Above Level Airways", "Below Level Airways"};
  for (int i = 0; i < kOptionColours; ++i) {
    auto* label = col_[i]->parentWidget()->findChild<QLabel*>(
        i < 5 ? QString("LblCol(%1)").arg(i) : QString("Label%1").arg(55 + i));
    label->setText(i < 5 ? fixed[i] : byAir ? air[i - 5] : levels[i - 5]);
    PaintButton(col_[i], ShownColour(i), i == colourSlot_);
  }
}

void FrmOptions::SelectColourSlot(int slot) {
  colourSlot_ = std::clamp(slot, 0, kOptionColours - 1);
  FillColours();
}

// A network without a colour table draws in the built-in palette; the boxes show that.
bool FrmOptions::BuiltInPalette() const {
  return std::all_of(form_.ColourTable.begin() + 1, form_.ColourTable.end(),
                     [](std::int32_t c) { return c == 0; });
}

std::int32_t FrmOptions::ShownColour(int slot) const {
  const int place = ColourPlace(slot, optColour_[1]->isChecked());
  if (place == 0 || !BuiltInPalette()) return form_.ColourTable[place];
  return PaletteColour(ws_.defaults, place - 1);
}

void FrmOptions::PickColour(int palette) {
  // The first colour picked fixes the others as they are shown.
  if (BuiltInPalette())
    for (int p = 0; p < 8; ++p) form_.ColourTable[p + 1] = PaletteColour(ws_.defaults, p);
  form_.ColourTable[ColourPlace(colourSlot_, optColour_[1]->isChecked())] =
      kPalette[std::clamp(palette, 0, 15)];
  FillColours();
}

void FrmOptions::FormatEdited(int row, int column) {
  if (loading_ || (column != 1 && column != 3)) return;
  const std::string format = formats_->item(row, column)->text().toStdString();
  auto& stored = column == 1 ? form_.MetricFormat[row + 1] : form_.ImperialFormat[row + 1];
  if (IsValidUnitFormat(format)) {
    stored = format;
    return;
  }
  ws_.ui.Inform(kMsgInvalidFormat);
  loading_ = true;
  formats_->item(row, column)->setText(QString::fromStdString(stored));
  loading_ = false;
}

OptionsForm FrmOptions::Form() const {
  OptionsForm form = form_;
  for (const auto& [control, box] : boxes_) form.Text[control] = box->text().toStdString();
  auto on = [this](const char* control) { return checks_.at(control)->isChecked(); };
  form.Remote = on("ChkRemote");
  form.Buffer = on("ChkBuffer");
  form.Info = on("ChkInfo");
  form.ScrollOff = on("ChkScroll");
  form.LayerInherit = on("ChkLayer");
  form.PropertyInherit = on("ChkInherit");
  form.EditNoRightClick = on("ChkEDIT");
  form.FullRotation = on("ChkTilt");
  form.UnlimitedSpeed = on("ChkSpeed");
  form.ReverseX = on("ChkHor");
  form.ReverseY = on("ChkVert");
  form.UseArea = on("ChkArea");
  form.UnderlyingResistance = on("ChkUnderR");
  form.SaveTime = on("ChkSaveTime");
  for (int i = 0; i < 10; ++i) form.Viewer[i] = chkViewer_[i]->isChecked();
  for (int k = 0; k < 4; ++k)
    if (optType_[k]->isChecked()) form.DataDisplay = static_cast<std::int16_t>(k);
  form.SimSource = optSimSource_[1]->isChecked() ? 1 : 0;
  form.ColourMode = optColour_[1]->isChecked() ? 1 : 0;
  form.WallDrive = wallCombo_->currentIndex();
  form.WallRaise = wallCombo2_->currentIndex();
  form.ShockDefault = shockCombo_->currentIndex();
  for (int row = 1; row <= kUnitRows; ++row) {
    const std::optional<double> factor =
        ReadTypedNumber(formats_->item(row - 1, 5)->text().toStdString());
    if (factor) form.ImperialFactor[row] = *factor;
  }
  return form;
}

void FrmOptions::accept() {
  applied_ = ApplyOptionsForm(ws_, Form());
  QDialog::accept();
}

void FrmOptions::SwitchUnits(int unitSystem) {
  if (loading_) return;
  OptionsForm form = Form();
  const OptionsApplied applied = SwitchOptionUnits(ws_, form, unitSystem);
  applied_.GridChanged |= applied.GridChanged;
  applied_.AutosaveChanged |= applied.AutosaveChanged;
  ToControls(form);
}

void FrmOptions::SaveDefaultsFile() {
  const OptionsApplied applied = ApplyOptionsForm(ws_, Form());
  applied_.GridChanged |= applied.GridChanged;
  applied_.AutosaveChanged |= applied.AutosaveChanged;
  SaveDefaults(ws_);
  ToControls(LoadOptionsForm(ws_));
}

void FrmOptions::LoadDefaultsFile() {
  // The file is read into the dialog only: OK applies it, Cancel leaves the settings alone.
  const Defaults kept = ws_.defaults;
  const UnitTable units = ws_.units;
  const std::int16_t fans = ws_.net.FanMax;
  LoadDefaults(ws_);
  const OptionsForm form = LoadOptionsForm(ws_);
  ws_.defaults = kept;
  ws_.units = units;
  ws_.net.FanMax = fans;
  ToControls(form);
}

}  // namespace galeris
