// Names of the symbol pictures, as the program's resources know them.
#include "view/canvas.h"

#include <array>

namespace galeris {

std::string_view PictureName(int picture) {
  static constexpr std::array<std::string_view, Picture::Count> kNames = {
      "Line",    "Arrow",   "Smoke2", "FanBig", "Node2", "Hazard2", "BBH2",
      "PinRed2", "Pinblu2", "Res",    "Fixed",  "BBH2",  "Hazard2"};
  if (picture < 0 || picture >= Picture::Count) return "";
  return kNames[picture];
}

}  // namespace galeris
