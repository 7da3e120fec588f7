// The plain, quadratic forms of the sort, the checks, the weighing and the mesh builder, as
// the program first walked them. The engine's faster forms must give exactly what these give.
#pragma once

#include <cstdlib>
#include <string>

#include "core/number_format.h"
#include "core/workspace.h"
#include "simulate/network_checks.h"
#include "simulate/restrictions.h"

namespace galeris::reference {

// Insertion sort, moving whole records; the node pressures and smoke times stay in place.
inline void InsertionSort(Network& net) {
  for (int j = 2; j <= net.BranchCount; ++j) {
    for (int k = j; k >= 2; --k) {
      const bool before = net.EntryNodeId[k - 1] <= net.EntryNodeId[k] &&
                          (net.EntryNodeId[k - 1] != net.EntryNodeId[k] ||
                           net.ExitNodeId[k - 1] < net.ExitNodeId[k]);
      if (!before) break;
      SwapAirways(net, k, k - 1);
      std::swap(net.FromNodeP[k], net.FromNodeP[k - 1]);
      std::swap(net.ToNodeP[k], net.ToNodeP[k - 1]);
      std::swap(net.SmokeTime[k], net.SmokeTime[k - 1]);
    }
  }
}

inline void Fault(Workspace& ws, int i, const char* label, const char* comment) {
  ws.net.Errorlist.push_back(std::to_string(ws.net.AirwayNo[i]) + "\t" + label);
  ws.net.Comment[i] = comment;
  ws.net.BranchCode[i] |= Bit::ErrorMark;
  ws.sim.SimStatus = 1;
}

inline bool SameCoord(const Coord3& a, const Coord3& b) {
  return a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
}

inline int CheckNetwork(Workspace& ws) {
  Network& net = ws.net;
  const int n = net.BranchCount;
  for (int i = 1; i <= n; ++i) {
    net.Comment[i] = "";
    net.WeightOrder[i] = 0;
    net.BranchCode[i] &= 0x00FFFFBF;
  }
  net.EntryNodeNo[1] = 1;
  for (int i = 2; i <= n; ++i)
    net.EntryNodeNo[i] = static_cast<std::int16_t>(
        net.EntryNodeNo[i - 1] + (net.EntryNodeId[i] != net.EntryNodeId[i - 1] ? 1 : 0));
  int errors = 0;
  net.NodeCount = net.EntryNodeNo[n];
  for (int i = 1; i <= n; ++i) {
    const int j = FindEntryPosition(net, net.ExitNodeId[i]);
    if (j > 0) {
      net.WeightOrder[j] = 1;
      net.ExitNodeNo[i] = net.EntryNodeNo[j];
    } else {
      net.ExitNodeNo[i] = 0;
      ++errors;
      Fault(ws, i, "No exit from branch", "No Exit");
    }
  }
  for (int i = 1; i <= n; ++i) {
    if (net.WeightOrder[i] != 0) continue;
    bool found = false;
    for (int j = 1; j <= n && !found; ++j) found = net.ExitNodeId[j] == net.EntryNodeId[i];
    if (!found) {
      ++errors;
      Fault(ws, i, "No entry into branch", "No Entry");
    }
  }
  for (int i = 1; i <= n; ++i) {
    if (!(net.BranchCode[i] & Bit::ForceEntrySurface)) continue;
    bool touched = false;
    for (int j = 1; j <= n; ++j)
      touched = touched || (j != i && (SameCoord(net.Coord1[j], net.Coord1[i]) ||
                                       SameCoord(net.Coord2[j], net.Coord1[i])));
    if (touched) Fault(ws, i, "Airway into surface entry", "Bad Entry");
  }
  for (int i = 1; i <= n; ++i) {
    if (!(net.BranchCode[i] & Bit::ForceExitSurface)) continue;
    bool touched = false;
    for (int j = 1; j <= n; ++j)
      touched = touched || (j != i && (SameCoord(net.Coord1[j], net.Coord2[i]) ||
                                       SameCoord(net.Coord2[j], net.Coord2[i])));
    if (touched) Fault(ws, i, "Airway into surface exit", "Bad Exit");
  }
  for (int i = 1; i <= n; ++i) {
    net.NodeGroup[i] = 0;
    net.NodeParent[i] = 0;
    net.SmokeQueue[i] = 0;
    if (std::abs(net.Quantity[i]) >= 9994) net.Quantity[i] = 0;
    if (net.EntryNodeId[i] == net.EntryNodeId[i - 1] &&
        net.ExitNodeId[i] == net.ExitNodeId[i - 1]) {
      Fault(ws, i, "Duplicate branch", "Error-Duplicate");
      ++errors;
      net.SmokeQueue[errors] = static_cast<std::int16_t>(i);
    }
  }
  return errors;
}

inline void WeighAirways(Workspace& ws) {
  Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i) net.ChordWeight[i] = net.Resistance[i];
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.Resistance[i] >= ws.defaults.HighResistance) {
      net.ChordWeight[i] = 100000000;
      net.Quantity[i] = 0;
    }
    if (net.BranchCode[i] & Bit::FixedQuantity) net.ChordWeight[i] = 100000000;
    if (net.FanNumber[i] != 0) net.ChordWeight[i] = 100000000;
    int j = i;
    while (j >= 2 && net.ChordWeight[i] >= net.ChordWeight[net.WeightOrder[j - 1]]) {
      net.WeightOrder[j] = net.WeightOrder[j - 1];
      --j;
    }
    net.WeightOrder[j] = static_cast<std::int16_t>(i);
  }
}

inline bool ForestPass(Workspace& ws) {
  Network& net = ws.net;
  int groupCounter = 1;
  net.NodeGroup[net.EntryNodeNo[1]] = 1;
  for (int k = net.BranchCount; k >= 1; --k) {
    if (ws.sim.SimCancel == 255) return false;
    const int i = net.WeightOrder[k];
    const int entry = std::abs(net.EntryNodeNo[i]);
    const int exit = std::abs(net.ExitNodeNo[i]);
    const int a = net.NodeGroup[entry];
    const int b = net.NodeGroup[exit];
    if ((a == b && a != 0) || entry == exit) {
      net.EntryNodeNo[i] = static_cast<std::int16_t>(-net.EntryNodeNo[i]);
      if ((net.BranchCode[i] & Bit::FixedQuantity) ||
          net.Resistance[i] >= ws.defaults.HighResistance)
        net.ExitNodeNo[i] = static_cast<std::int16_t>(-net.ExitNodeNo[i]);
      continue;
    }
    if (a == 0 && b == 0) {
      ++groupCounter;
      net.NodeGroup[entry] = net.NodeGroup[exit] = static_cast<std::int16_t>(groupCounter);
      net.NodeParent[entry] = static_cast<std::int16_t>(i);
    } else if (a == 0) {
      net.NodeGroup[entry] = static_cast<std::int16_t>(b);
      net.NodeParent[entry] = static_cast<std::int16_t>(i);
    } else if (b == 0) {
      net.NodeGroup[exit] = static_cast<std::int16_t>(a);
      net.NodeParent[exit] = static_cast<std::int16_t>(-i);
    } else {
      const int hi = std::max(a, b);
      const int lo = std::min(a, b);
      int v = i;
      for (;;) {
        const int ve = std::abs(net.EntryNodeNo[v]);
        const int vx = std::abs(net.ExitNodeNo[v]);
        const bool atEntry = net.NodeGroup[ve] > net.NodeGroup[vx];
        const int node = atEntry ? ve : vx;
        const int next = std::abs(net.NodeParent[node]);
        net.NodeParent[node] = static_cast<std::int16_t>(atEntry ? v : -v);
        net.NodeGroup[node] = static_cast<std::int16_t>(lo);
        if (next == 0) break;
        v = next;
      }
      for (int node = 1; node <= net.NodeCount; ++node)
        if (net.NodeGroup[node] == hi) net.NodeGroup[node] = static_cast<std::int16_t>(lo);
    }
    CheckTreeAirway(ws, i);
  }
  return true;
}

inline int Next(const Network& net, int v) {
  return v > 0 ? net.NodeParent[std::abs(net.ExitNodeNo[v])]
               : net.NodeParent[std::abs(net.EntryNodeNo[-v])];
}

inline void MeshPass(Workspace& ws) {
  Network& net = ws.net;
  int meshCount = 0;
  int pos = 1;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.EntryNodeNo[i] >= 0) continue;
    ++meshCount;
    net.MeshStart[meshCount] = pos;
    int v = i;
    while (v != 0) {
      net.MeshMember[pos] = static_cast<std::int16_t>(v);
      ++pos;
      if (pos > net.MaxAirways * 20) {
        ws.sim.SimStatus = 1;
        ws.sim.MeshCount = static_cast<std::int16_t>(meshCount);
        return;
      }
      v = Next(net, v);
    }
    if (net.ExitNodeNo[i] < 0)
      net.MeshMember[net.MeshStart[meshCount]] =
          static_cast<std::int16_t>(-net.MeshMember[net.MeshStart[meshCount]]);
    v = net.NodeParent[std::abs(net.EntryNodeNo[i])];
    int count = 1;
    while (v != 0) {
      net.MeshPath[count] = static_cast<std::int16_t>(v);
      int found = 0;
      for (int q = net.MeshStart[meshCount]; q <= pos - 1 && found == 0; ++q)
        if (net.MeshMember[q] == v) found = q;
      if (found != 0) {
        pos = found;
        break;
      }
      ++count;
      v = Next(net, v);
    }
    for (int k = count - 1; k >= 1; --k)
      net.MeshMember[pos++] = static_cast<std::int16_t>(-net.MeshPath[k]);
  }
  net.MeshStart[meshCount + 1] = pos;
  ws.sim.MeshCount = static_cast<std::int16_t>(meshCount);
}

inline void BuildMeshes(Workspace& ws) {
  if (!ForestPass(ws)) return;
  ReportRestrictions(ws);
  if (ws.sim.SimMode > 0) return;
  MeshPass(ws);
}

}  // namespace galeris::reference
