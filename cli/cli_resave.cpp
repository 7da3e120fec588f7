// galeris-sim resave: reads a network file of any version and writes it in today's format,
// its note left as it was (a conversion, not a user's save).
#include <ostream>

#include "cli/cli_command.h"
#include "files/network_file.h"
#include "files/whole_file.h"

namespace galeris::cli {
namespace {

int Resave(CliContext& c) {
  const std::string output = TakeOption(c.args, "-o");
  if (c.args.size() != 1 || output.empty()) {
    c.err << "usage: galeris-sim resave IN -o OUT\n";
    return kExitBadInput;
  }
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  const std::string bytes = FormatNetworkFile(c.ws);
  if (!WriteWholeFile(output, bytes)) {
    c.err << "galeris-sim: cannot write " << output << "\n";
    return kExitFailed;
  }
  c.out << "Saved " << c.ws.net.BranchCount << " airways to " << output << "\n";
  return kExitOk;
}

const RegisterCommand registered({"resave", "resave IN -o OUT",
                                  "reads a network file of any version and writes it in the "
                                  "current format",
                                  Resave});

}  // namespace
}  // namespace galeris::cli
