// The one door through which the engine talks to the user: message boxes, questions, input
// boxes, yields, the busy pointer and progress. The desktop program answers with real dialogs;
// the headless backend answers from a script and records every text.
#pragma once

#include <optional>
#include <string>

namespace galeris {

enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgIcon { None, Information, Exclamation, Question, Critical };
enum class MsgAnswer { OK, Cancel, Yes, No };

class UiPort {
 public:
  virtual ~UiPort() = default;

  // A message box; returns the button pressed. Closing a box counts as its Cancel (or No).
  virtual MsgAnswer Message(const std::string& text, MsgButtons buttons = MsgButtons::OK,
                            MsgIcon icon = MsgIcon::None, const std::string& title = "Galeris") = 0;

  // An input box; nothing when the user cancels.
  virtual std::optional<std::string> Input(const std::string& title, const std::string& prompt,
                                           const std::string& defaultText) = 0;

  // Lets pending events run: this is where a Cancel click arrives during long work.
  virtual void Yield() = 0;

  // The arrow-and-hourglass pointer, on or off. Calls nest.
  virtual void SetBusy(bool busy) = 0;

  // The progress window of long work (the simulation form): shown, captioned, filled, labelled.
  virtual void ShowProgress(const std::string& caption) = 0;
  virtual void SetProgressCaption(const std::string& caption) = 0;
  virtual void SetProgress(int percent) = 0;
  // The two labels under the bar, attempt number and maximum error: shown from the first call
  // after ShowProgress, which hides them.
  virtual void SetProgressLabels(const std::string& attempt, const std::string& error) = 0;
  virtual void HideProgress() = 0;

  // Shorthand for the common boxes.
  void Inform(const std::string& text, const std::string& title = "Galeris",
              MsgIcon icon = MsgIcon::None) {
    Message(text, MsgButtons::OK, icon, title);
  }
  bool AskYesNo(const std::string& text, const std::string& title = "Galeris",
                MsgIcon icon = MsgIcon::Question) {
    return Message(text, MsgButtons::YesNo, icon, title) == MsgAnswer::Yes;
  }
};

}  // namespace galeris
