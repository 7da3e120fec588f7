// The button palette `Tools`: 32 buttons, index 0 to 31, each a tool or a command of the
// dispatcher, with its tool tip and a picture drawn here.
#pragma once

#include <QToolBar>
#include <array>
#include <functional>

class QToolButton;
class QButtonGroup;

namespace galeris {

inline constexpr int kPaletteButtons = 32;

// The tool tip of a palette button; the dispatcher shows its first ten characters, trimmed
// and upper-cased, as the status text.
QString PaletteToolTip(int index);
// That status text.
QString PaletteStatusText(int index);
// The picture of a palette button, drawn at the given size.
QIcon PaletteIcon(int index, int size = 24);

class ToolPalette : public QToolBar {
  Q_OBJECT
 public:
  explicit ToolPalette(QWidget* parent = nullptr);

  QToolButton* Button(int index) const { return buttons_[index]; }
  // The button shown as pressed: only one at a time.
  void PressButton(int index);
  int PressedButton() const;

 signals:
  void ButtonClicked(int index);

 private:
  std::array<QToolButton*, kPaletteButtons> buttons_{};
  QButtonGroup* group_;
};

}  // namespace galeris
