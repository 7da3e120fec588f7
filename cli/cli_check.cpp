// galeris-sim check: the checks and the meshing of a simulation run, without balancing. Lists
// the faults as the error list shows them, then the size of the network.
#include <ostream>

#include "cli/cli_command.h"
#include "files/network_file.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/solution_check.h"
#include "simulate/sort_airways.h"

namespace galeris::cli {
namespace {

// Runs the stages up to the meshes; false when the network can't be meshed.
bool CheckAndMesh(Workspace& ws) {
  Network& net = ws.net;
  if (net.BranchCount < 2) {
    ws.ui.Message(net.BranchCount == 0 ? "No data to simulate" : "Not enough data to simulate",
                  MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  ws.sim = SimRun{};
  net.Errorlist.clear();
  RebuildNodes(net, ws.defaults, ws.ui);
  SortAirways(ws);
  CheckNetwork(ws);
  if (ws.sim.SimStatus == 1) return false;
  WeighAirways(ws);
  BuildMeshes(ws);
  return ws.sim.SimStatus != 1;
}

int RunCheck(CliContext& c) {
  if (c.args.size() != 1) {
    c.err << "usage: galeris-sim check IN\n";
    return kExitBadInput;
  }
  Workspace& ws = c.ws;
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  const bool clean = CheckAndMesh(ws);
  for (const std::string& line : ws.net.Errorlist) c.out << line << "\n";
  c.out << "airways " << ws.net.BranchCount << " nodes " << ws.net.NodeCount << " meshes "
        << ws.sim.MeshCount;
  // The flows standing in the file, as a solved file left them.
  if (ws.net.BranchCount > 1) c.out << " " << SolutionCheckText(CheckSolution(ws));
  c.out << "\n";
  return clean ? kExitOk : kExitFailed;
}

const RegisterCommand kCheck{
    {"check", "check IN",
     "checks and meshes a network; lists faults as \"AirwayNo<TAB>"
     "label\" and ends with \"airways N nodes N meshes N continuity X m3/s loop Y Pa\", the "
     "self-check of the flows standing in the file",
     RunCheck}};

}  // namespace
}  // namespace galeris::cli
