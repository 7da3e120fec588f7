// The start-up loads of the command line: the same settings files, in the same order, as the
// desktop program (units and Conversion.dat, Defaults.dat, then the fan database, whose size
// the defaults decide). The recent-file list is the desktop's and is left alone.
#include "cli/cli_command.h"
#include "files/conversion_file.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"

namespace galeris::cli {

void PrepareWorkspace(Workspace& ws) {
  ws.units = BuiltInUnits();
  LoadConversion(ws.units, ws.paths.InProgram("Conversion.dat"), ws.ui);
  InitDefaults(ws);
  LoadFanDatabase(ws);
}

}  // namespace galeris::cli
