// galeris-sim generate: writes a synthetic mine of about N airways, for trials and benchmarks.
#include <charconv>
#include <ostream>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/cli_command.h"
#include "core/headless_ui.h"
#include "files/network_file.h"
#include "simulate/pressures.h"
#include "simulate/simulate.h"
#include "tools/mine_generator.h"

namespace galeris::cli {
namespace {

// The capacity stops at 30000, and a load warns that a file is too big once it reaches the
// capacity less one airway.
constexpr long kMostAirwaysInFile = 29998;

bool ParseWhole(const std::string& text, long& value) {
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && p == end;
}

// Removes a flag without a value from args; true when it was there.
bool TakeFlag(std::vector<std::string>& args, const std::string& flag) {
  for (auto it = args.begin(); it != args.end(); ++it) {
    if (*it == flag) {
      args.erase(it);
      return true;
    }
  }
  return false;
}

// A solved mine starts the next run from its flows and converges at once.
void Solve(Workspace& ws) {
  ws.sim.SimMode = 0;
  ws.sim.ShowProgress = 0;
  RunSimulation(ws);
}

// The generated airways are drawn in the order the generator lays them out, so many run
// against their air. They are turned to point along their flow, found by solving a copy, so
// that the first solve reverses none: on a big mine thousands of reversals would each go into
// the undo journal and overflow it. A turned airway changes the meshes of the next solve, so an
// airway of almost no flow may come out the other way: a few more rounds settle those.
void PointAlongFlow(Workspace& ws) {
  constexpr int kRounds = 4;
  for (int round = 0; round < kRounds; ++round) {
    HeadlessUi quiet(HeadlessUi::Policy::AlwaysNo);
    Workspace solved(quiet);
    solved.paths = ws.paths;
    solved.defaults = ws.defaults;
    solved.units = ws.units;
    solved.net = ws.net;
    Solve(solved);
    std::unordered_map<std::int32_t, int> position;
    for (int i = 1; i <= ws.net.BranchCount; ++i) position[ws.net.AirwayNo[i]] = i;
    int turned = 0;
    for (int j = 1; j <= solved.net.BranchCount; ++j) {
      const auto found = position.find(solved.net.AirwayNo[j]);
      if (found == position.end()) continue;
      const int i = found->second;
      if (solved.net.Coord1[j] == ws.net.Coord2[i] && solved.net.Coord2[j] == ws.net.Coord1[i]) {
        ReverseAirway(ws.net, i);
        ++turned;
      }
    }
    if (turned == 0) return;
  }
}

int RunGenerate(CliContext& c) {
  const bool solved = TakeFlag(c.args, "--solved");
  const std::string out = TakeOption(c.args, "-o");
  const std::string seedText = TakeOption(c.args, "--seed");
  long airways = 0;
  long seed = 1;
  if (c.args.size() != 1 || out.empty() || !ParseWhole(c.args[0], airways) || airways < 1 ||
      (!seedText.empty() && (!ParseWhole(seedText, seed) || seed < 0))) {
    c.err << "usage: galeris-sim generate N -o OUT [--seed S] [--solved]\n";
    return kExitBadInput;
  }
  if (airways > kMostAirwaysInFile) {
    c.err << "generate: a network file holds at most " << kMostAirwaysInFile << " airways\n";
    return kExitBadInput;
  }
  GenerateMine(c.ws, static_cast<int>(airways), static_cast<unsigned>(seed));
  if (solved)
    Solve(c.ws);
  else
    PointAlongFlow(c.ws);
  c.ws.net.FileName = out;
  if (!SaveNetwork(c.ws)) {
    c.err << "generate: could not write " << out << "\n";
    return kExitFailed;
  }
  c.out << "airways " << c.ws.net.BranchCount << "\n";
  return kExitOk;
}

const RegisterCommand kGenerate{{"generate", "generate N -o OUT [--seed S] [--solved]",
                                 "writes a synthetic mine of about N airways, at most 29998 (same "
                                 "seed, same mine);\n      its iteration limit (Max Itterations) "
                                 "is half of N, between 50 and 500, so that\n      `solve` "
                                 "converges with the default options; --solved balances it first",
                                 RunGenerate}};

}  // namespace
}  // namespace galeris::cli
