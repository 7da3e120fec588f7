// The UI port without a screen: answers come from a script (a queue, then a standing policy)
// and every call is recorded with its exact texts, for tests and the command line.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/ui_port.h"

namespace galeris {

struct UiRecord {
  enum class Kind { Message, Input, Progress } kind;
  std::string title;
  std::string text;
  MsgButtons buttons = MsgButtons::OK;
  MsgIcon icon = MsgIcon::None;
};

class HeadlessUi : public UiPort {
 public:
  // What a question gets when the script is empty: Yes for Yes/No boxes, OK for OK/Cancel.
  enum class Policy { AlwaysYes, AlwaysNo, AlwaysCancel };

  explicit HeadlessUi(Policy policy = Policy::AlwaysNo) : policy_(policy) {}

  MsgAnswer Message(const std::string& text, MsgButtons buttons, MsgIcon icon,
                    const std::string& title) override;
  std::optional<std::string> Input(const std::string& title, const std::string& prompt,
                                   const std::string& defaultText) override;
  void Yield() override;
  void SetBusy(bool busy) override { busyDepth_ += busy ? 1 : -1; }
  void ShowProgress(const std::string& caption) override;
  void SetProgressCaption(const std::string& caption) override { progressCaption_ = caption; }
  void SetProgress(int percent) override { progressValues_.push_back(percent); }
  void SetProgressLabels(const std::string& attempt, const std::string& error) override;
  void HideProgress() override { progressShown_ = false; }

  // Script: answers used in order before the policy applies.
  void QueueAnswer(MsgAnswer answer) { answers_.push_back(answer); }
  void QueueInput(std::optional<std::string> input) { inputs_.push_back(std::move(input)); }
  void SetPolicy(Policy policy) { policy_ = policy; }
  // Called at every yield with its count from 1: a test can press Cancel at the n-th one.
  void OnYield(std::function<void(int)> hook) { yieldHook_ = std::move(hook); }
  // Each message box as "Title: text" as it happens (the command line sends it to stderr).
  void OnMessage(std::function<void(const UiRecord&)> hook) { messageHook_ = std::move(hook); }

  const std::vector<UiRecord>& Records() const { return records_; }
  // The texts of the message boxes, in order.
  std::vector<std::string> MessageTexts() const;
  bool Said(const std::string& text) const;  // some message box or input prompt had this text
  void ClearRecords() { records_.clear(); }
  int YieldCount() const { return yields_; }
  int BusyDepth() const { return busyDepth_; }
  bool ProgressShown() const { return progressShown_; }
  const std::string& ProgressCaption() const { return progressCaption_; }
  const std::vector<int>& ProgressValues() const { return progressValues_; }
  const std::string& AttemptLabel() const { return attemptLabel_; }
  const std::string& ErrorLabel() const { return errorLabel_; }

 private:
  MsgAnswer Answer(MsgButtons buttons);

  Policy policy_;
  std::deque<MsgAnswer> answers_;
  std::deque<std::optional<std::string>> inputs_;
  std::vector<UiRecord> records_;
  std::function<void(int)> yieldHook_;
  std::function<void(const UiRecord&)> messageHook_;
  int yields_ = 0;
  int busyDepth_ = 0;
  bool progressShown_ = false;
  std::string progressCaption_;
  std::vector<int> progressValues_;
  std::string attemptLabel_, errorLabel_;
};

}  // namespace galeris
