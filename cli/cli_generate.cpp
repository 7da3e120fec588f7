// galeris-sim generate: writes a synthetic mine of about N airways, for trials and benchmarks.
#include <charconv>
#include <ostream>

#include "cli/cli_command.h"
#include "files/network_file.h"
#include "tools/mine_generator.h"

namespace galeris::cli {
namespace {

bool ParseWhole(const std::string& text, long& value) {
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && p == end;
}

int RunGenerate(CliContext& c) {
  const std::string out = TakeOption(c.args, "-o");
  const std::string seedText = TakeOption(c.args, "--seed");
  long airways = 0;
  long seed = 1;
  if (c.args.size() != 1 || out.empty() || !ParseWhole(c.args[0], airways) || airways < 1 ||
      (!seedText.empty() && (!ParseWhole(seedText, seed) || seed < 0))) {
    c.err << "usage: galeris-sim generate N -o OUT [--seed S]\n";
    return kExitBadInput;
  }
  if (airways > kAirwayLoopLimit) {
    c.err << "generate: at most " << kAirwayLoopLimit << " airways\n";
    return kExitBadInput;
  }
  GenerateMine(c.ws, static_cast<int>(airways), static_cast<unsigned>(seed));
  c.ws.net.FileName = out;
  if (!SaveNetwork(c.ws)) {
    c.err << "generate: could not write " << out << "\n";
    return kExitFailed;
  }
  c.out << "airways " << c.ws.net.BranchCount << "\n";
  return kExitOk;
}

const RegisterCommand kGenerate{{"generate", "generate N -o OUT [--seed S]",
                                 "writes a synthetic mine of about N airways (same seed, same "
                                 "mine)",
                                 RunGenerate}};

}  // namespace
}  // namespace galeris::cli
