// galeris-sim info: what a network file holds, in a few lines: title, airways, fans, levels,
// floating texts and saved views.
#include <ostream>

#include "cli/cli_command.h"
#include "files/fan_database.h"
#include "files/network_file.h"

namespace galeris::cli {
namespace {

int CountFanTypes(const Network& net) {
  int count = 0;
  for (int slot = 1; slot <= net.FanMax; ++slot) count += FanSlotInUse(net, slot) ? 1 : 0;
  return count;
}

int CountFanAirways(const Network& net) {
  int count = 0;
  for (int i = 1; i <= net.BranchCount; ++i) count += net.FanNumber[i] > 0 ? 1 : 0;
  return count;
}

int CountLevels(const Network& net) {
  int count = 0;
  while (count + 1 < kMaxLevels && !net.RLName[count + 1].empty()) ++count;
  return count;
}

int CountTexts(const Network& net) {
  int count = 0;
  for (int slot = 1; slot <= net.MaxTexts; ++slot) count += net.TextUsed[slot] == -1 ? 1 : 0;
  return count;
}

// The permanent views and the user's saved ones; the start-up view is not counted.
int CountViews(const Network& net) {
  int count = 0;
  for (int slot = 1; slot <= kMaxViews; ++slot) count += net.ViewName[slot].empty() ? 0 : 1;
  return count;
}

int Info(CliContext& c) {
  if (c.args.size() != 1) {
    c.err << "usage: galeris-sim info IN\n";
    return kExitBadInput;
  }
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  const Network& net = c.ws.net;
  c.out << "Title: " << net.NetworkTitle << "\n"
        << "Airways: " << net.BranchCount << "\n"
        << "Fan types: " << CountFanTypes(net) << "\n"
        << "Airways with fans: " << CountFanAirways(net) << "\n"
        << "Levels: " << CountLevels(net) << "\n"
        << "Floating texts: " << CountTexts(net) << "\n"
        << "Views: " << CountViews(net) << "\n";
  return kExitOk;
}

const RegisterCommand registered({"info", "info IN",
                                  "shows the title and the counts of airways, fans, levels, "
                                  "floating texts and views of a network file",
                                  Info});

}  // namespace
}  // namespace galeris::cli
