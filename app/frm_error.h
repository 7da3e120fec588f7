// frmError: the list of faults a simulation run found, one "AirwayNo<TAB>label" line each,
// with Goto to show the airway and Cancel to stop the run and close.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

class QListWidget;
class QPushButton;

namespace galeris {

class FrmError : public QDialog {
  Q_OBJECT
 public:
  explicit FrmError(QWidget* parent = nullptr);

  // Goto: receives the AirwayNo of the selected line.
  void OnGoto(std::function<void(int airwayNo)> go) { goto_ = std::move(go); }
  // Cancel and the close box: stop the run, close the progress window, redraw.
  void OnCancel(std::function<void()> cancel) { cancel_ = std::move(cancel); }

  // Fills the list and shows the window, non-modal, at the lower right of the frame; the
  // caption is "Warning-reversals" when the run ended with warnings only.
  void ShowList(const std::vector<std::string>& lines, const QString& caption);
  void PressGoto();
  void PressCancel();

  QListWidget& List() { return *list_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override { PressCancel(); }

 private:
  void PlaceAtLowerRight();

  QListWidget* list_;
  QPushButton* command1_;
  QPushButton* command2_;
  std::function<void(int)> goto_;
  std::function<void()> cancel_;
};

// The AirwayNo of an error line: its leading digits, the number ending at the tab; 0 if none.
int AirwayNoOfErrorLine(const std::string& line);

}  // namespace galeris
