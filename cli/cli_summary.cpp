// galeris-sim summary: the network summary's rows, balanced first when needed, in the units
// of the file's settings.
#include <ostream>

#include "cli/cli_balance.h"
#include "tools/network_summary.h"

namespace galeris::cli {
namespace {

int RunSummary(CliContext& c) {
  if (c.args.size() != 1) {
    c.err << "usage: galeris-sim summary IN\n";
    return kExitBadInput;
  }
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  const int status = BalanceIfNeeded(c);
  if (status == kExitFailed) return status;
  for (const SummaryRow& row : SummaryRows(c.ws, SumNetwork(c.ws)))
    c.out << row.Label << "\t" << row.Value << "\t" << row.Unit << "\n";
  return status;
}

const RegisterCommand registered({"summary", "summary IN",
                                  "Balances IN when needed and prints the network summary, one "
                                  "\"label<TAB>value<TAB>unit\" line a row.",
                                  RunSummary});

}  // namespace
}  // namespace galeris::cli
