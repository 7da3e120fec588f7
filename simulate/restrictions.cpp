// Restriction diagnostics. With weights capped at 100000000 and HighResistance at 1000000000
// only fixed-quantity airways pass the first test; the order of the tests and both constants
// are kept, so the bulkhead and fan commands normally answer with their "NO" message.
#include "simulate/restrictions.h"

#include <string>

#include "core/airway_values.h"

namespace galeris {
namespace {

constexpr float kHeavyWeight = 999997;
constexpr std::int16_t kBulkheadPreset = 1;

void ListTreeAirway(Workspace& ws, int i, const char* label, const char* comment) {
  Network& net = ws.net;
  net.Errorlist.push_back(std::to_string(net.AirwayNo[i]) + "\t" + label);
  net.Comment[i] = comment;
  ws.sim.SimStatus = 1;
}

void RemoveRedundantBulkheads(Workspace& ws) {
  Network& net = ws.net;
  int removed = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.Comment[i].Trimmed() != "Bad BBH") continue;
    net.ResType[i] = 0;
    ++removed;
  }
  RecalcAllResistances(ws);
  ws.ui.Inform("There were " + std::to_string(removed) +
               " unnecessary bulkheads removed from the network");
}

}  // namespace

void CheckTreeAirway(Workspace& ws, int i) {
  Network& net = ws.net;
  const bool fixed = (net.BranchCode[i] & Bit::FixedQuantity) != 0;
  if (net.ChordWeight[i] < ws.defaults.HighResistance && !fixed) return;
  if (fixed) ListTreeAirway(ws, i, "FIX restricting flow", "Bad Fix");
  if (net.ChordWeight[i] < kHeavyWeight) return;
  const int mode = ws.sim.SimMode;
  if (mode == 0) return;
  if (net.ResType[i] == kBulkheadPreset && (mode == 1 || mode == 2)) {
    ListTreeAirway(ws, i, "BBH not required", "Bad BBH");
    net.BranchCode[i] |= Bit::ErrorMark;
    ws.sim.RestrictionFound = true;
  }
  if (net.FanNumber[i] != 0 && mode == 3) {
    ListTreeAirway(ws, i, "Fan restricted", "Bad Fan");
    net.BranchCode[i] |= Bit::ErrorMark;
    ws.sim.RestrictionFound = true;
  }
}

void ReportRestrictions(Workspace& ws) {
  if (!ws.sim.RestrictionFound) return;
  ws.sim.RestrictionFound = false;
  switch (ws.sim.SimMode) {
    case 1:
      ws.ui.Message("CAUTION - Bulkheads are present which MAY restrict meshes formation.",
                    MsgButtons::OK, MsgIcon::Exclamation, "Possible meshing problems");
      ws.sim.SimStatus = 1;
      break;
    case 3:
      ws.ui.Message("WARNING - Fans are present which restrict other fans.", MsgButtons::OK,
                    MsgIcon::Exclamation, "Possible meshing problems");
      ws.sim.SimStatus = 1;
      break;
    case 2:
      if (ws.ui.Message(
              "WARNING - This will remove redundant bulkheads from the network.  Continue ?",
              MsgButtons::YesNo, MsgIcon::None, "Remove redundant bulkheads") != MsgAnswer::Yes) {
        ws.sim.SimStatus = 1;
        break;
      }
      RemoveRedundantBulkheads(ws);
      break;
    default:
      break;
  }
}

}  // namespace galeris
