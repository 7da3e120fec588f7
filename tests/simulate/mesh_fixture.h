// A small network on a scripted screen, built airway by airway, and the stages of a run up to
// the meshes.
#pragma once

#include <string>
#include <vector>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/sort_airways.h"
#include "tests/support/test_support.h"

namespace galeris::test {

inline constexpr int kSurface = 1000;  // level 1's "RL Min" in these networks

struct MeshFixture {
  HeadlessUi ui{HeadlessUi::Policy::AlwaysNo};
  Workspace ws{ui};
  Network& net = ws.net;

  MeshFixture() {
    net.MaxAirways = 200;
    ClearStore(net);
    net.RLName[1] = "SURFACE";
    net.RLBound[1] = {0, 5000, kSurface};
    ws.defaults.ResPreset[1] = 1000000000;  // bulkhead
  }

  // An airway with a resistance of its own, kept by every recalculation; numbered from 1.
  int Add(int x1, int y1, int z1, int x2, int y2, int z2, float resistance = 1) {
    const int i = AddAirway(net, x1, y1, z1, x2, y2, z2);
    net.ResType[i] = kUserGiven;
    net.Resistance[i] = resistance;
    net.AirwayNo[i] = i;
    return i;
  }

  // Airways 1 and 2: down from the surface to (10, 10, 500) and back up.
  void AddSurfaceLoop() {
    Add(10, 10, kSurface, 10, 10, 500);
    Add(10, 10, 500, 10, 10, kSurface);
  }

  // Runs the stages as a simulation does up to the checks.
  void Check() {
    RebuildNodes(net, ws.defaults, ws.ui);
    SortAirways(ws);
    CheckNetwork(ws);
  }

  // ...and on to the meshes, stopping where the driver would.
  void Mesh() {
    Check();
    if (ws.sim.SimStatus == 1) return;
    WeighAirways(ws);
    BuildMeshes(ws);
  }

  int At(int airwayNo) const { return AtNumber(net, airwayNo); }

  // The members of mesh m as signed airway numbers.
  std::vector<int> Members(int m) const {
    std::vector<int> members;
    for (int k = net.MeshStart[m]; k < net.MeshStart[m + 1]; ++k) {
      const int v = net.MeshMember[k];
      members.push_back(v > 0 ? net.AirwayNo[v] : -net.AirwayNo[-v]);
    }
    return members;
  }

  std::vector<std::string> Errors() const { return net.Errorlist; }
};

}  // namespace galeris::test
