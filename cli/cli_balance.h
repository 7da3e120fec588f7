// The balancing that the smoke and summary commands run when the file holds no solution.
#pragma once

#include "cli/cli_command.h"

namespace galeris::cli {

// Solves the loaded network quietly; "yes" answers to the convergence questions are bounded so
// a script never hangs. Returns the exit status a solve would give (0, 1 or 2).
int BalanceIfNeeded(CliContext& c);

}  // namespace galeris::cli
