#include "view/view_options.h"

#include "core/typed_number.h"
#include "core/units.h"
#include "view/drawing.h"

namespace galeris {
namespace {

constexpr double kMostSignificantFlow = 10000;

void ApplyFlowLimit(Workspace& ws, const std::string& text, float& limit) {
  const std::optional<double> typed = ReadTypedNumber(text);
  if (!typed || *typed < 0 || *typed > kMostSignificantFlow) {
    ws.ui.Message("Limits of Allowable Significant Flows", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  limit = static_cast<float>(FromDisplay(ws.units, *typed, Unit::Quantity));
}

}  // namespace

ViewOptions ReadViewOptions(const Workspace& ws, const ViewState& view) {
  ViewOptions o;
  for (int i = 0; i < kViewerBoxes; ++i) o.Detail[i] = (view.DisplayBits >> i) & 1;
  o.DataDisplay = view.DataFilter;
  o.SignificantMax = FormatValue(ws.units, view.FlowMaximum, Unit::Quantity, false, true);
  o.SignificantMin = FormatValue(ws.units, view.FlowMinimum, Unit::Quantity, false, true);
  o.FlowDimMode = view.FlowDimMode;
  o.ColourMode = view.ColourByAir ? 1 : 0;
  o.Declutter = view.Declutter;
  return o;
}

void ShowAllDetails(ViewOptions& options) {
  for (int i = 0; i < kViewerBoxes - 1; ++i) options.Detail[i] = true;
}

void HideAllDetails(ViewOptions& options) {
  for (int i = 0; i < kViewerBoxes - 1; ++i) options.Detail[i] = false;
}

void ApplyViewOptions(Workspace& ws, ViewState& view, const ViewOptions& options) {
  std::int32_t bits = 0;
  for (int i = 0; i < kViewerBoxes; ++i)
    if (options.Detail[i]) bits |= 1 << i;
  view.DisplayBits = bits;
  view.DataFilter = options.DataDisplay;
  ApplyFlowLimit(ws, options.SignificantMax, view.FlowMaximum);
  ApplyFlowLimit(ws, options.SignificantMin, view.FlowMinimum);
  view.FlowDimMode = options.FlowDimMode;
  view.ColourByAir = options.ColourMode == 1;
  view.Declutter = options.Declutter;
  ws.defaults.ViewDetail = static_cast<std::int16_t>(bits);
  ws.defaults.DataDisplay = options.DataDisplay;
  ws.defaults.ColourMode = options.ColourMode;
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
}

void ApplyDisplayDefaults(Workspace& ws, ViewState& view) {
  view.DisplayBits = static_cast<std::uint16_t>(ws.defaults.ViewDetail);
  view.DataFilter = ws.defaults.DataDisplay;
  view.ColourByAir = ws.defaults.ColourMode == 1;
  BuildVisibleList(ws, view);
  ProjectNetwork(ws, view);
}

}  // namespace galeris
