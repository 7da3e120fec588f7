// The data types of the toolbar lists and the data-display menus.
#include "app/data_types.h"

#include <vector>

namespace galeris {

QStringList DataGroupNames() {
  return {"Airflow", "Pressure", "Airway data", "Energy", "Other"};
}

QStringList DataItemNames(int group) {
  switch (group) {
    case 1:
      return {"Quantity", "Velocity"};
    case 2:
      return {"Total Loss", "Friction Loss", "Boost",     "Regulator Load",
              "Relative",   "Absolute",      "Barometric"};
    case 3:
      return {"Resistance", "Shock Length",  "Friction Factor",
              "Dimensions", "Airway Length", "Coordinates"};
    case 4:
      return {"Friction Power", "Fan/Fix Power", "Friction Cost", "Fan/Fix Cost"};
    case 5:
      return {"Airway Number", "Layer Number", "Layer Name", "Contaminant", "Spread Time"};
    default:
      return {};
  }
}

const char* DataMenuName(int group) {
  static const char* const names[] = {"",          "mnuAirflow", "mnuPressure",
                                      "mnuBranch", "mnuCost",    "MnuQFlag"};
  return group >= 1 && group <= kDataGroups ? names[group] : "";
}

// The pressure menu has no entry for the friction loss (item 3): the list has one more item
// than the menu.
std::vector<DataMenuItem> DataMenuItems(int group) {
  switch (group) {
    case 1:
      return {{"Quantity m3/s", 2}, {"Velocity m/s", 3}};
    case 2:
      return {{"Loss  Pa", 2},         {"Boost Pa", 4},       {"Load  kg", 5},
              {"Node relative Pa", 6}, {"Node atmos kPa", 7}, {"Node barometric kPa", 8}};
    case 3:
      return {{"Resistance", 2}, {"Shock Length", 3},  {"Friction Factor", 4},
              {"Dimensions", 5}, {"Airway Length", 6}, {"Coordinates", 7}};
    case 4:
      return {
          {"Friction Power", 2}, {"Fan/Fix Power", 3}, {"Friction Cost", 4}, {"Fan/Fix Cost", 5}};
    case 5:
      return {{"Airway Number", 2},
              {"Layer Number", 3},
              {"Layer Name", 4},
              {"Contaminant", 5},
              {"Spread Time", 6}};
    default:
      return {};
  }
}

}  // namespace galeris
