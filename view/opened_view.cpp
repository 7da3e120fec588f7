// The view's reset for a newly opened network, and the test for a mine of several levels.
#include "view/opened_view.h"

namespace galeris {

void ForgetShownNetwork(ViewState& view) {
  const ViewState fresh;
  view.LevelMode = view.PreviousLevelMode = LevelModeOf::All;
  view.LevelBottom = fresh.LevelBottom;
  view.LevelTop = fresh.LevelTop;
  view.WorkingRL = fresh.WorkingRL;
  view.CurrentLevel = fresh.CurrentLevel;
  view.SelectedLevels.clear();
  view.TiltAngle = view.SpinAngle = view.TiltStep = view.SpinStep = 0;
  view.Is3D = 0;
  view.PanX = view.PanY = 0;
  view.PanHold = false;
  view.Pivot = {};
  view.PivotState = 0;
  view.PivotHold = false;
  view.SmokeState = 0;
  view.FitAfterView = false;
}

bool SpansSeveralLevels(const Network& net) {
  // Row 1 is the surface; an airway counts on the first underground level whose band holds
  // its entry end.
  int first = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.EntryNodeId[i] == 0) continue;
    const double z = net.Coord1[i][3];
    for (int level = 2; level <= net.RLCount && level < static_cast<int>(net.RLBound.size());
         ++level) {
      if (z > net.RLBound[level][1] || z < net.RLBound[level][2]) continue;
      if (first == 0) first = level;
      if (level != first) return true;
      break;
    }
  }
  return false;
}

}  // namespace galeris
