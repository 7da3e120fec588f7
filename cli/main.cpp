// galeris-sim: a network file in, a solved (or checked, or re-saved) network out, with no
// window. Common options: --home DIR, --answer yes|no. Message boxes go to stderr.
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "cli/cli_command.h"
#include "core/program_version.h"

#include "files/network_file.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace galeris::cli {

std::vector<CliCommand>& Commands() {
  static std::vector<CliCommand> commands;
  return commands;
}

std::string TakeOption(std::vector<std::string>& args, const std::string& option) {
  for (std::size_t i = 0; i + 1 < args.size(); ++i) {
    if (args[i] == option) {
      std::string value = args[i + 1];
      args.erase(args.begin() + static_cast<long>(i), args.begin() + static_cast<long>(i) + 2);
      return value;
    }
  }
  return "";
}

bool LoadInput(CliContext& c, const std::string& path) {
  c.ws.net.FileName = path;
  c.ws.MergeBase = 1;
  if (LoadNetwork(c.ws)) return true;
  c.err << "galeris-sim: cannot read " << path << "\n";
  return false;
}

namespace {

// A command runs once and leaves: the working arrays of one stage are handed back to the heap
// and taken up again by the next, instead of going back to the system and coming again as
// fresh pages, each of which costs a fault.
void KeepFreedMemory() {
#if defined(__GLIBC__)
  mallopt(M_MMAP_THRESHOLD, 64 << 20);
  mallopt(M_TRIM_THRESHOLD, 256 << 20);
#endif
}

void PrintHelp(std::ostream& out) {
  out << "galeris-sim: the Galeris mine ventilation simulator without a window.\n\n"
         "usage: galeris-sim COMMAND [ARGS] [--home DIR] [--answer yes|no]\n\n"
         "commands:\n";
  for (const auto& c : Commands()) out << "  " << c.usage << "\n      " << c.help << "\n";
  out << "\noptions:\n"
         "  --home DIR        the program folder (Defaults.dat, Conversion.dat, fansdata.dat);\n"
         "                    default GALERIS_HOME, else the folder of this program\n"
         "  --answer yes|no   the answer to every question the command asks (default no)\n"
         "  --help            this text\n"
         "  --version         the program's version\n\n"
         "Every message box is written to stderr as \"Title: text\".\n"
         "Exit status: 0 success, 1 failed, 2 finished with warnings, 3 unreadable input or "
         "bad usage.\n";
}

}  // namespace
}  // namespace galeris::cli

int main(int argc, char** argv) {
  using namespace galeris;
  using namespace galeris::cli;
  KeepFreedMemory();
  std::vector<std::string> args(argv + 1, argv + argc);
  for (const auto& a : args) {
    if (a == "--help" || a == "-h") {
      PrintHelp(std::cout);
      return kExitOk;
    }
    if (a == "--version") {
      std::cout << "galeris-sim " << kProgramVersion << "\n";
      return kExitOk;
    }
  }
  std::string home = TakeOption(args, "--home");
  std::string answer = TakeOption(args, "--answer");
  if (answer.empty()) answer = "no";
  if ((answer != "yes" && answer != "no") || args.empty()) {
    PrintHelp(std::cerr);
    return kExitBadInput;
  }
  if (!home.empty()) setenv("GALERIS_HOME", home.c_str(), 1);

  HeadlessUi ui(answer == "yes" ? HeadlessUi::Policy::AlwaysYes : HeadlessUi::Policy::AlwaysNo);
  ui.OnMessage([](const UiRecord& r) { std::cerr << r.title << ": " << r.text << "\n"; });
  Workspace ws(ui);
  ws.paths = FindProgramPaths(argv[0]);

  const std::string name = args.front();
  args.erase(args.begin());
  for (const auto& c : Commands()) {
    if (name == c.name) {
      PrepareWorkspace(ws);
      CliContext context{ws, ui, args, std::cout, std::cerr};
      const int status = c.run(context);
      // The work is written; the system takes back the store's memory faster than its
      // destructors would hand it back piece by piece.
      std::cout.flush();
      std::cerr.flush();
      std::fflush(nullptr);
      std::_Exit(status);
    }
  }
  std::cerr << "galeris-sim: unknown command \"" << name << "\" (see --help)\n";
  return kExitBadInput;
}
