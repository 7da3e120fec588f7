// frmImport: the choices of an import (merge, levels, retained resistances, common size,
// offsets and negation) and its Import button, which asks for the file and runs the import.
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <functional>

#include "core/workspace.h"
#include "exchange/import_file.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace galeris {

class FrmImport : public QDialog {
  Q_OBJECT
 public:
  // chooseFile gives the file to import, empty when the user cancels. The new airways go on
  // the layers of defaultLayers (primary, secondary): the current defaults of new construction.
  FrmImport(Workspace& ws, std::function<QString()> chooseFile,
            std::array<std::int16_t, 2> defaultLayers, QWidget* parent = nullptr);

  // The controls as the import reads them, with the default layers.
  ImportChoices Choices() const;
  // Runs the import as the Import button does; false when no file was chosen.
  bool RunImport();
  ImportOutcome Outcome() const { return outcome_; }

 private:
  QCheckBox* AddCheck(const char* name, const QString& caption, const QString& tip);

  Workspace& ws_;
  std::function<QString()> chooseFile_;
  std::array<std::int16_t, 2> defaultLayers_;
  QCheckBox *merge_, *levels_, *retainDrive_, *retainRaise_, *commonSize_;
  QLineEdit* offset_[3];
  QCheckBox* negate_[3];
  QLabel* message_;
  ImportOutcome outcome_ = ImportOutcome::Refused;
};

}  // namespace galeris
