// frmSimForm: the progress window of a simulation run, with its stage caption, the bar, the
// attempt and error labels of the balancing sweeps, and the Cancel that stops the run at its
// next yield.
#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QPushButton;

namespace galeris {

// ProgBar: a bar from 0 to 100 filled in pure blue up to the percentage, the rest in the
// window's background colour.
class ProgBar : public QWidget {
  Q_OBJECT
 public:
  explicit ProgBar(QWidget* parent = nullptr);
  void SetPercent(int percent);
  int Percent() const { return percent_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int percent_ = 0;
};

class FrmSimForm : public QDialog {
  Q_OBJECT
 public:
  explicit FrmSimForm(QWidget* parent = nullptr);

  // What Cancel does to the run: the owner sets the run's SimCancel to 255 and redraws.
  void OnCancel(std::function<void()> cancel) { cancel_ = std::move(cancel); }
  // Whether a run has been asked to stop; the form closes itself when reactivated then.
  void CancelPendingTest(std::function<bool()> pending) { pending_ = std::move(pending); }

  // Shown modeless and centred on the screen, with the labels of the sweeps hidden.
  void Open(const QString& caption);
  void SetPercent(int percent);
  // Balancing shows the two labels from its start, then its attempt number and largest
  // correction once per sweep.
  void SetLabels(const QString& attempt, const QString& error);
  void PressCancel();

 protected:
  void reject() override { PressCancel(); }
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void CentreOnScreen();

  ProgBar* bar_;
  QLabel* lbl1_;
  QLabel* lblItt_;
  QLabel* lbl2_;
  QLabel* lblError_;
  QPushButton* command1_;
  std::function<void()> cancel_;
  std::function<bool()> pending_;
};

}  // namespace galeris
