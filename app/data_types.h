// The data types that can be shown beside the airways: five groups and their items, as the
// toolbar lists and the data-display menus show them. The code of a choice is group * 10 +
// item, the item counting from 2.
#pragma once

#include <QStringList>
#include <vector>

namespace galeris {

inline constexpr int kDataGroups = 5;

QStringList DataGroupNames();
// The items of group 1..5 as the toolbar list shows them.
QStringList DataItemNames(int group);

// The data-display menus: captions with units, and the item number each stands for.
struct DataMenuItem {
  const char* caption;
  int item;
};
const char* DataMenuName(int group);  // objectName of the group's menu
std::vector<DataMenuItem> DataMenuItems(int group);

}  // namespace galeris
