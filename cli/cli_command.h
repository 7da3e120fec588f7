// The commands of galeris-sim: each source file registers one command with its usage line.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "core/headless_ui.h"
#include "core/workspace.h"

namespace galeris::cli {

// Exit statuses shared by every command.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitWarnings = 2;
inline constexpr int kExitBadInput = 3;

struct CliContext {
  Workspace& ws;
  HeadlessUi& ui;
  std::vector<std::string> args;  // what follows the command name, common options removed
  std::ostream& out;
  std::ostream& err;
};

struct CliCommand {
  const char* name;
  const char* usage;  // e.g. "resave IN -o OUT"
  const char* help;   // one or two lines
  int (*run)(CliContext&);
};

std::vector<CliCommand>& Commands();

struct RegisterCommand {
  explicit RegisterCommand(CliCommand command) { Commands().push_back(command); }
};

// The start-up loads of the program (settings, units, defaults, fan database), in order.
void PrepareWorkspace(Workspace& ws);

// Loads the network file a command works on; says why on stderr and returns false when it
// cannot be read (the command then exits with kExitBadInput).
bool LoadInput(CliContext& c, const std::string& path);

// The value after an option such as "-o" in args (removed from args), or "" when absent.
std::string TakeOption(std::vector<std::string>& args, const std::string& option);

}  // namespace galeris::cli
