// frmOptions, "Options": every default and display setting on the tabs of SSTab1. cmdOK applies
// the fields through ApplyOptionsForm, cmdCancel leaves everything as it was. Defaults.dat can
// be written from the dialog as it stands, or read into it.
#pragma once

#include <QDialog>
#include <array>
#include <map>

#include "core/workspace.h"
#include "files/options_form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace galeris {

class FrmOptions : public QDialog {
  Q_OBJECT
 public:
  FrmOptions(Workspace& ws, QWidget* parent = nullptr);

  OptionsForm Form() const;  // the controls as they stand
  const OptionsApplied& Applied() const { return applied_; }

  // CmbIcon's rows (lines, arrows, smoke, fans, nodes, obstruction, bulkhead) are the view's
  // symbol sizes (1..20) and their scale boxes: given from the current view, read back after OK.
  void SetSymbolSizes(const std::array<std::int16_t, 7>& size,
                      const std::array<std::int16_t, 7>& scaled);
  const std::array<std::int16_t, 7>& SymbolSize() const { return symbolSize_; }
  const std::array<std::int16_t, 7>& SymbolScaled() const { return symbolScaled_; }

  void accept() override;            // cmdOK
  void SwitchUnits(int unitSystem);  // OptUnitType: 1 SI, 2 British
  void SelectColourSlot(int slot);   // Col(i)
  void PickColour(int palette);      // a press on Frame3D2 over Colr(palette)
  void SaveDefaultsFile();           // cmdSaveDefaults: applies, then writes Defaults.dat
  void LoadDefaultsFile();           // cmdLoadDefaults: Defaults.dat into the dialog only

 private:
  QWidget* BuildGeneralTab();
  QWidget* BuildDisplayTab();
  QWidget* BuildAirwaysTab();
  QWidget* BuildPresetsTab();
  QWidget* BuildUnitsTab();
  QLineEdit* Box(QWidget* parent, const char* control, bool digitsOnly = false);
  QCheckBox* Check(QWidget* parent, const char* control, const char* caption);
  void ToControls(const OptionsForm& form);
  void FillPresetValue(int table);
  void FillColours();
  std::int32_t ShownColour(int slot) const;
  bool BuiltInPalette() const;
  void FormatEdited(int row, int column);

  Workspace& ws_;
  mutable OptionsForm form_;  // working copies of what has no control of its own
  OptionsApplied applied_;
  bool loading_ = false;
  std::map<std::string, QLineEdit*> boxes_;
  std::map<std::string, QCheckBox*> checks_;
  std::array<QCheckBox*, 10> chkViewer_{};
  std::array<QRadioButton*, 4> optType_{};
  std::array<QRadioButton*, 2> optSimSource_{}, optColour_{}, optUnitType_{};
  std::array<QPushButton*, kOptionColours> col_{};
  int colourSlot_ = 0;
  QComboBox* wallCombo_ = nullptr;
  QComboBox* wallCombo2_ = nullptr;
  QComboBox* shockCombo_ = nullptr;
  QComboBox* cmbFonts_ = nullptr;
  QComboBox* cmbFontSize_ = nullptr;
  QCheckBox* chkBold_ = nullptr;
  QComboBox* cmbIcon_ = nullptr;
  QComboBox* cmbIconSize_ = nullptr;
  QCheckBox* chkIconScale_ = nullptr;
  QLabel* iconPicture_ = nullptr;
  std::array<std::int16_t, 7> symbolSize_{1, 2, 5, 5, 5, 5, 5};
  std::array<std::int16_t, 7> symbolScaled_{};
  void ShowIcon();
  // Preset groups: 0 resistance, 1 wall, 2 shock.
  std::array<QComboBox*, 3> presetCombo_{};
  std::array<QLineEdit*, 3> presetValue_{}, presetRow_{};
  QTableWidget* formats_ = nullptr;
};

}  // namespace galeris
