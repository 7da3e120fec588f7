// galeris-sim smoke: the contaminant spread from the file's sources and those given on the
// command line; one line per reached airway with its concentration and arrival time.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <ostream>
#include <set>
#include <vector>

#include "cli/cli_balance.h"
#include "simulate/contaminants.h"

namespace galeris::cli {
namespace {

constexpr const char* kUsage =
    "usage: galeris-sim smoke IN --source AIRWAYNO[:CONC] ... [--mode cumulative|fixed]\n";
constexpr float kDefaultConcentration = 100;  // as the source tool places it

struct SourceOption {
  std::int32_t airwayNo = 0;
  float concentration = kDefaultConcentration;
};

bool ParseSource(const std::string& text, SourceOption& source) {
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, source.airwayNo);
  if (ec != std::errc() || source.airwayNo <= 0) return false;
  if (p == end) return true;
  if (*p != ':') return false;
  auto [q, ec2] = std::from_chars(p + 1, end, source.concentration);
  return ec2 == std::errc() && q == end && source.concentration > 0 &&
         source.concentration <= kMaxConcentration;
}

int PositionOf(const Network& net, std::int32_t airwayNo) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.AirwayNo[i] == airwayNo) return i;
  return 0;
}

// The sources of the command line go into the store; false after saying why.
bool PlaceSources(CliContext& c, const std::vector<SourceOption>& sources) {
  Network& net = c.ws.net;
  for (const SourceOption& s : sources) {
    const int i = PositionOf(net, s.airwayNo);
    if (i == 0) {
      c.err << "smoke: no airway numbered " << s.airwayNo << "\n";
      return false;
    }
    net.BranchCode[i] |= Bit::ContaminantSource;
    net.Contaminant[i] = s.concentration;
  }
  return true;
}

// Sources that cannot release anything are named; one given on the command line is bad usage.
bool SourcesUsable(CliContext& c, const std::vector<SourceOption>& sources) {
  bool usable = true;
  for (const SourceProblem& problem : CheckContaminantSources(c.ws.net)) {
    c.err << "smoke: source airway " << problem.AirwayNo << " " << problem.Reason << "\n";
    usable = usable && std::none_of(sources.begin(), sources.end(), [&](const SourceOption& s) {
               return s.airwayNo == problem.AirwayNo;
             });
  }
  return usable;
}

void PrintSpread(CliContext& c, const SpreadResult& result) {
  const Network& net = c.ws.net;
  std::vector<int> reached;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.SmokeData[i][2] != 0 || net.SmokeTime[i] != kNeverReached) reached.push_back(i);
  std::sort(reached.begin(), reached.end(),
            [&net](int a, int b) { return net.AirwayNo[a] < net.AirwayNo[b]; });
  char time[32];
  for (int i : reached) {
    if (net.SmokeTime[i] == kNeverReached)
      std::snprintf(time, sizeof time, "never");
    else
      std::snprintf(time, sizeof time, "%.1f", double{net.SmokeTime[i]});
    c.out << net.AirwayNo[i] << "\t" << net.SmokeData[i][2] << "\t" << time << "\n";
  }
  c.out << "airways " << net.BranchCount << " reached " << reached.size() << " sources "
        << result.Sources << "\n";
}

int RunSmoke(CliContext& c) {
  std::vector<SourceOption> sources;
  bool valid = true;
  for (std::string text; !(text = TakeOption(c.args, "--source")).empty();) {
    SourceOption s;
    valid = valid && ParseSource(text, s);
    sources.push_back(s);
  }
  const std::string mode = TakeOption(c.args, "--mode");
  valid = valid && (mode.empty() || mode == "cumulative" || mode == "fixed");
  if (!valid || c.args.size() != 1) {
    c.err << kUsage;
    return kExitBadInput;
  }
  Workspace& ws = c.ws;
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  if (!mode.empty()) ws.defaults.SmokeAddSource = mode == "fixed" ? 1 : 0;
  if (!PlaceSources(c, sources)) return kExitBadInput;
  const bool anySource =
      std::any_of(ws.net.BranchCode.begin() + 1, ws.net.BranchCode.begin() + ws.net.BranchCount + 1,
                  [](std::int32_t code) { return code & Bit::ContaminantSource; });
  if (!anySource) {
    c.err << "smoke: no contaminant source: give --source or mark sources in the file\n";
    return kExitBadInput;
  }
  const int status = BalanceIfNeeded(c);
  if (status == kExitFailed) return status;
  if (!SourcesUsable(c, sources)) return kExitBadInput;
  const SpreadResult result = SimulateContaminant(ws);
  switch (result.End) {
    case SpreadEnd::Finished:
      PrintSpread(c, result);
      return status;
    case SpreadEnd::NoSource:
      c.err << "smoke: no source airway has flow: nothing is released\n";
      return kExitBadInput;
    default:
      c.err << "smoke: the spread could not be worked out\n";
      return kExitFailed;
  }
}

const RegisterCommand registered(
    {"smoke", "smoke IN --source AIRWAYNO[:CONC] ... [--mode cumulative|fixed]",
     "Balances IN when needed and spreads contaminant from the given airways (concentration "
     "100\n      unless given) and the file's own sources; prints \"AirwayNo<TAB>concentration"
     "<TAB>arrival seconds\"\n      for each reached airway, then \"airways N reached N sources "
     "N\".",
     RunSmoke});

}  // namespace
}  // namespace galeris::cli
