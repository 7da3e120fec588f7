// galeris-sim import: a text table or DXF drawing made into a network file, with the import
// dialog's choices as options; the questions of the import are answered by --answer.
#include <ostream>
#include <sstream>

#include "cli/cli_command.h"
#include "exchange/import_file.h"
#include "files/network_file.h"

namespace galeris::cli {
namespace {

constexpr const char* kUsage =
    "usage: galeris-sim import IN.txt|IN.dxf -o OUT.sim [--merge BASE.sim] [--levels] "
    "[--offset X,Y,Z] [--negate xyz] [--retain-drive] [--retain-raise] [--common-size]\n";

bool TakeFlag(std::vector<std::string>& args, const std::string& flag) {
  for (auto it = args.begin(); it != args.end(); ++it) {
    if (*it == flag) {
      args.erase(it);
      return true;
    }
  }
  return false;
}

bool ParseOffset(const std::string& text, std::array<double, 3>& offset) {
  if (text.empty()) return true;
  std::istringstream in(text);
  char comma1 = 0, comma2 = 0;
  in >> offset[0] >> comma1 >> offset[1] >> comma2 >> offset[2];
  return in && comma1 == ',' && comma2 == ',' && (in >> std::ws).eof();
}

bool ParseNegate(const std::string& text, std::array<bool, 3>& negate) {
  for (char c : text) {
    if (c < 'x' || c > 'z') return false;
    negate[c - 'x'] = true;
  }
  return true;
}

int RunImport(CliContext& c) {
  const std::string output = TakeOption(c.args, "-o");
  const std::string base = TakeOption(c.args, "--merge");
  ImportChoices choices;
  choices.BuildLevels = TakeFlag(c.args, "--levels");
  choices.RetainDrive = TakeFlag(c.args, "--retain-drive");
  choices.RetainRaise = TakeFlag(c.args, "--retain-raise");
  choices.CommonSize = TakeFlag(c.args, "--common-size");
  const bool offsetOk = ParseOffset(TakeOption(c.args, "--offset"), choices.Offset);
  const bool negateOk = ParseNegate(TakeOption(c.args, "--negate"), choices.Negate);
  if (c.args.size() != 1 || output.empty() || !offsetOk || !negateOk) {
    c.err << kUsage;
    return kExitBadInput;
  }
  if (!base.empty()) {
    if (!LoadInput(c, base)) return kExitBadInput;
    choices.Merge = true;
  }
  switch (ImportFile(c.ws, c.args[0], choices)) {
    case ImportOutcome::Refused:
      return kExitBadInput;
    case ImportOutcome::Abandoned:
      c.err << "galeris-sim: the import of " << c.args[0] << " was stopped\n";
      return kExitFailed;
    case ImportOutcome::Done:
      break;
  }
  c.ws.net.FileName = output;
  if (!SaveNetwork(c.ws)) {
    c.err << "galeris-sim: cannot write " << output << "\n";
    return kExitFailed;
  }
  c.out << "Imported " << c.ws.net.BranchCount << " airways on " << c.ws.net.RLCount
        << " levels to " << output << "\n";
  return kExitOk;
}

const RegisterCommand registered({"import",
                                  "import IN.txt|IN.dxf -o OUT.sim [--merge BASE.sim] "
                                  "[--levels] [--offset X,Y,Z] [--negate xyz]",
                                  "makes a network of a text table or a DXF drawing; --merge "
                                  "adds it behind BASE, --levels makes a level per height.\n"
                                  "      Also --retain-drive, --retain-raise, --common-size.",
                                  RunImport});

}  // namespace
}  // namespace galeris::cli
