// The one maker of the text shown beside an airway: the value of a data type (group times 10
// plus item) for one airway, with the fan and fixing prefixes on request. The view, printing,
// the info pop-up and the text export all use it.
#pragma once

#include <cstdint>
#include <string>

#include "core/workspace.h"

namespace galeris {

// Data type codes.
namespace DataType {
inline constexpr int Quantity = 12, Velocity = 13;
inline constexpr int TotalLoss = 22, FrictionLoss = 23, Boost = 24, RegulatorLoad = 25,
                     NodeRelative = 26, NodeAbsolute = 27, NodeBarometric = 28;
inline constexpr int Resistance = 32, ShockLength = 33, FrictionFactor = 34, Dimensions = 35,
                     AirwayLength = 36, Coordinates = 37;
inline constexpr int FrictionPower = 42, FanPower = 43, FrictionCost = 44, FanCost = 45;
inline constexpr int AirwayNumber = 52, LayerNumber = 53, LayerName = 54, Contaminant = 55,
                     SpreadTime = 56;
}  // namespace DataType

// Node data types are written at the ends by the drawing, not by AirwayLabel.
bool IsNodeDataType(int dataType);

// What the label depends on beside the airway itself.
struct LabelSettings {
  std::int16_t SmokeState = 0;     // 1 while a spread display runs
  bool ResistanceSymbols = false;  // resistance symbols shown: velocity of a regulator is "N/A"
};

// Option 1 gives the value alone; 0 adds the prefixes "Fan", "FixP ", "FixQ " and "[n] ".
std::string AirwayLabel(const Workspace& ws, int dataType, int airway, int option,
                        const LabelSettings& settings = {});

// Area of the airway's section as the labels reckon it.
double LabelArea(const Network& net, int airway);

}  // namespace galeris
