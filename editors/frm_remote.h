// frmRemote, "Realtime Input Stations": the channels, alarms and airflow switch of each of the
// 50 stations, one at a time through VScStation, and the monitoring settings. Closing it any
// way (OK, mnuExit, Esc, the window's close box) stores the shown station and writes
// Remotes.dat.
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "core/workspace.h"
#include "realtime/station_form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QScrollBar;

namespace galeris {

class FrmRemote : public QDialog {
  Q_OBJECT
 public:
  // browse gets the filter as "Description|pattern|..." pairs and returns the chosen path, empty
  // when cancelled.
  using Browse = std::function<QString(const QString& filter)>;
  FrmRemote(Workspace& ws, Browse browse, QWidget* parent = nullptr);

  int ShownStation() const { return shown_; }
  void ShowStation(int station);  // stores the shown station first
  void CopyChannels();            // mnuCopy
  void PasteChannels();           // mnuPaste
  // CmdOK and mnuExit: store, write Remotes.dat, close. False when the file was not written.
  bool Finish();
  // Esc and the close box (through QDialog's close) end as OK does.
  void reject() override;

 private:
  void Fill(const StationFields& f);
  StationFields Fields() const;
  void Store();

  Workspace& ws_;
  Browse browse_;
  int shown_ = 1;
  bool filling_ = false;
  bool finished_ = false;
  StationChannels holding_;
  QScrollBar* VScStation = nullptr;
  QLabel* LblNumber = nullptr;
  QLineEdit *TxtStationName = nullptr, *TxtRemoteSource = nullptr, *TxtTimer = nullptr;
  QCheckBox *ChkUpdateQ = nullptr, *ChkResim = nullptr, *ChkAlarm = nullptr;
  std::array<QLineEdit*, kStationChannels + 1> TxtLngNames{}, Abrev{}, RUnits{}, Mult{}, ALow{},
      AHigh{};
};

}  // namespace galeris
