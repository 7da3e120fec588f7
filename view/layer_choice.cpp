#include "view/layer_choice.h"

#include <algorithm>
#include <cstdlib>

namespace galeris {

LayerChoice ReadLayerChoice(const Network& net, const ViewState& view) {
  LayerChoice c;
  for (int n = 1; n <= kPrimaryLayers; ++n) c.Primary[n] = net.PrimaryLayerShow[n] != 0;
  for (int n = 1; n <= kSecondLayers; ++n) c.Second[n] = net.SecondLayerShow[n] != 0;
  c.LineState = static_cast<std::int16_t>(view.DisplayFlags & 3);
  if (c.LineState > LineOpt::Solid) c.LineState = LineOpt::Solid;
  c.OffLayerDetails = static_cast<std::int16_t>(view.DisplayFlags & 0x7C);
  c.PrimaryCurrent = net.PrimaryLayerCurrent;
  c.SecondCurrent = net.SecondLayerCurrent;
  return c;
}

void ShowAllLayers(LayerChoice& choice) {
  choice.Primary.fill(true);
  choice.Second.fill(true);
}

void HideAllLayers(LayerChoice& choice) {
  choice.Primary.fill(false);
  choice.Second.fill(false);
  choice.Primary[std::clamp(std::abs(choice.PrimaryCurrent), 1, kPrimaryLayers)] = true;
  choice.Second[std::clamp(std::abs(choice.SecondCurrent), 1, kSecondLayers)] = true;
}

void ApplyLayerChoice(Network& net, ViewState& view, const LayerChoice& choice) {
  view.DisplayFlags = static_cast<std::int16_t>(choice.LineState | (choice.OffLayerDetails & 0x7C));
  for (int n = 1; n <= kSecondLayers; ++n) net.SecondLayerShow[n] = choice.Second[n] ? -1 : 0;
  for (int n = 1; n <= kPrimaryLayers; ++n) net.PrimaryLayerShow[n] = choice.Primary[n] ? -1 : 0;
  net.PrimaryLayerCurrent = std::clamp(choice.PrimaryCurrent, 1, kPrimaryLayers);
  net.SecondLayerCurrent = std::clamp(choice.SecondCurrent, 1, kSecondLayers);
}

void ShowAllLayers(Network& net) {
  for (int n = 1; n <= kSecondLayers; ++n) net.SecondLayerShow[n] = -1;
  for (int n = 1; n <= kPrimaryLayers; ++n) net.PrimaryLayerShow[n] = -1;
}

std::string LayerLabel(const std::string& name, int number) {
  return name.empty() ? std::to_string(number) : name;
}

}  // namespace galeris
