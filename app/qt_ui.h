// The UI port on the desktop: real message and input boxes, event processing for the yields,
// the override cursor for the busy pointer and frmSimForm for progress.
#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "core/ui_port.h"

class QWidget;

namespace galeris {

class FrmSimForm;
struct SimRun;

class QtUi : public UiPort {
 public:
  // With `boxes` given, message and input boxes are answered there instead of on the screen
  // (the tests script them while the progress window stays real).
  explicit QtUi(UiPort* boxes = nullptr);
  ~QtUi() override;

  // The frame the boxes and the progress window belong to.
  void SetParentWindow(QWidget* parent) { parent_ = parent; }
  // The run that the progress window's Cancel stops, and what to do after it (redraw).
  void SetSimRun(SimRun* run) { run_ = run; }
  void OnCancel(std::function<void()> afterCancel) { afterCancel_ = std::move(afterCancel); }

  MsgAnswer Message(const std::string& text, MsgButtons buttons, MsgIcon icon,
                    const std::string& title) override;
  std::optional<std::string> Input(const std::string& title, const std::string& prompt,
                                   const std::string& defaultText) override;
  void Yield() override;
  void SetBusy(bool busy) override;
  void ShowProgress(const std::string& caption) override;
  void SetProgressCaption(const std::string& caption) override;
  void SetProgress(int percent) override;
  void SetProgressLabels(const std::string& attempt, const std::string& error) override;
  void HideProgress() override;

  // The progress window, created at its first use.
  FrmSimForm& SimForm();
  int BusyDepth() const { return busyDepth_; }

 private:
  UiPort* boxes_;
  QWidget* parent_ = nullptr;
  SimRun* run_ = nullptr;
  std::function<void()> afterCancel_;
  // Owned here, unless the frame (its parent) goes first and takes it along.
  QPointer<FrmSimForm> simForm_;
  int busyDepth_ = 0;
};

}  // namespace galeris
