// The start-up loads of the command line: the same settings files, in the same order, as the
// desktop program.
#include "cli/cli_command.h"

namespace galeris::cli {

void PrepareWorkspace(Workspace& ws) { ws.units = BuiltInUnits(); }

}  // namespace galeris::cli
