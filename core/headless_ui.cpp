// Scripted answers and the record of every box shown.
#include "core/headless_ui.h"

namespace galeris {

MsgAnswer HeadlessUi::Answer(MsgButtons buttons) {
  if (!answers_.empty()) {
    MsgAnswer a = answers_.front();
    answers_.pop_front();
    return a;
  }
  switch (buttons) {
    case MsgButtons::OK:
      return MsgAnswer::OK;
    case MsgButtons::OKCancel:
      return policy_ == Policy::AlwaysYes ? MsgAnswer::OK : MsgAnswer::Cancel;
    case MsgButtons::YesNo:
      return policy_ == Policy::AlwaysYes ? MsgAnswer::Yes : MsgAnswer::No;
    case MsgButtons::YesNoCancel:
      if (policy_ == Policy::AlwaysYes) return MsgAnswer::Yes;
      return policy_ == Policy::AlwaysNo ? MsgAnswer::No : MsgAnswer::Cancel;
  }
  return MsgAnswer::Cancel;
}

MsgAnswer HeadlessUi::Message(const std::string& text, MsgButtons buttons, MsgIcon icon,
                              const std::string& title) {
  UiRecord r{UiRecord::Kind::Message, title, text, buttons, icon};
  records_.push_back(r);
  if (messageHook_) messageHook_(r);
  return Answer(buttons);
}

std::optional<std::string> HeadlessUi::Input(const std::string& title, const std::string& prompt,
                                             const std::string& defaultText) {
  UiRecord r{UiRecord::Kind::Input, title, prompt, MsgButtons::OKCancel, MsgIcon::None};
  records_.push_back(r);
  if (messageHook_) messageHook_(r);
  if (!inputs_.empty()) {
    auto v = inputs_.front();
    inputs_.pop_front();
    return v;
  }
  if (policy_ == Policy::AlwaysYes) return defaultText;
  return std::nullopt;
}

void HeadlessUi::Yield() {
  ++yields_;
  if (yieldHook_) yieldHook_(yields_);
}

void HeadlessUi::ShowProgress(const std::string& caption) {
  progressShown_ = true;
  progressCaption_ = caption;
  records_.push_back({UiRecord::Kind::Progress, caption, "", MsgButtons::OK, MsgIcon::None});
}

void HeadlessUi::SetProgressLabels(const std::string& attempt, const std::string& error) {
  attemptLabel_ = attempt;
  errorLabel_ = error;
}

std::vector<std::string> HeadlessUi::MessageTexts() const {
  std::vector<std::string> out;
  for (const auto& r : records_)
    if (r.kind == UiRecord::Kind::Message) out.push_back(r.text);
  return out;
}

bool HeadlessUi::Said(const std::string& text) const {
  for (const auto& r : records_)
    if (r.kind != UiRecord::Kind::Progress && (r.text == text || r.title == text)) return true;
  return false;
}

}  // namespace galeris
