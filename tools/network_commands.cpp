// Whole-network commands: names, lengths, numbers, coordinates, flow labels, smoke clearing and
// the title note.
#include "tools/network_commands.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/airway_values.h"
#include "files/lifecycle.h"
#include "files/undo_journal.h"
#include "simulate/contaminants.h"

namespace galeris {
namespace {

std::string Trim(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Runs `apply` on every airway that `touches` picks, each recorded before and after in the
// journal, all under one action. True when some airway was changed.
template <class Touches, class Apply>
bool EditAirways(Workspace& ws, Touches touches, Apply apply) {
  bool changed = false;
  for (int i = 1; i <= ws.net.BranchCount; ++i) {
    if (!touches(i)) continue;
    JournalBefore(ws.journal, i);
    apply(i);
    JournalAfter(ws.journal, i);
    changed = true;
  }
  if (changed) {
    CloseUndoAction(ws.journal);
    MarkNetworkChanged(ws);
  }
  return changed;
}

bool EditEveryAirway(Workspace& ws, auto apply) {
  return EditAirways(
      ws, [](int) { return true; }, apply);
}

// The prefix box of the auto-name commands; a cancelled box gives an empty prefix.
std::string AskPrefix(Workspace& ws, const char* confirm, const char* title, const char* example,
                      const char* defaultPrefix, bool& go) {
  go = ws.ui.Message(confirm, MsgButtons::OKCancel, MsgIcon::None, "Auto name") == MsgAnswer::OK;
  if (!go) return "";
  const std::string prompt = std::string(
                                 "Enter a prefix (if any) you would like to appear in "
                                 "front of the auto number (eg '") +
                             example + "')";
  return ws.ui.Input(title, prompt, defaultPrefix).value_or("");
}

// The node identity of an airway end, as the node rebuild gives it, without touching the store.
Key EndKey(const Network& net, int i, int end) {
  const Coord3& c = end == 1 ? net.Coord1[i] : net.Coord2[i];
  const std::int32_t force = end == 1 ? Bit::ForceEntrySurface : Bit::ForceExitSurface;
  if (SurfaceThreshold(net) <= c[3] || (net.BranchCode[i] & force)) return SurfaceKey;
  return NodeKey(c[1], c[2], c[3]);
}

void ExchangeXY(Coord3& c) {
  std::swap(c[1], c[2]);
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

// Sorted as a list box sorts, ignoring case; adjacent equal rows then go.
std::vector<std::string> SortedOnce(std::vector<std::string> names) {
  std::stable_sort(names.begin(), names.end(),
                   [](const std::string& a, const std::string& b) { return Upper(a) < Upper(b); });
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace

std::vector<std::string> AirwayNameList(const Network& net) {
  std::vector<std::string> names;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (std::string name = Trim(net.BranchName[i].Trimmed()); !name.empty()) names.push_back(name);
  return SortedOnce(std::move(names));
}

std::vector<std::string> NodeNameList(const Network& net) {
  std::vector<std::string> names;
  for (int i = 1; i <= net.BranchCount; ++i)
    for (const Text40* end : {&net.EntryNodeName[i], &net.ExitNodeName[i]})
      if (std::string name = Trim(end->Trimmed()); !name.empty()) names.push_back(name);
  return SortedOnce(std::move(names));
}

int FindAirwayByName(const Network& net, const std::string& upperName) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (Upper(Trim(net.BranchName[i].Trimmed())) == upperName) return i;
  return 0;
}

int FindAirwayByNodeName(const Network& net, const std::string& upperName) {
  for (int i = 1; i <= net.BranchCount; ++i)
    if (Upper(Trim(net.EntryNodeName[i].Trimmed())) == upperName ||
        Upper(Trim(net.ExitNodeName[i].Trimmed())) == upperName)
      return i;
  return 0;
}

bool AutoNameAirways(Workspace& ws) {
  bool go = false;
  const std::string prefix = AskPrefix(
      ws,
      "This routine automatically names all airways that do not have an existing name - Are you "
      "sure you want to procede (this cannot be undone) ?",
      "Input Airway Prefix", "B", "B", go);
  if (!go) return false;
  Network& net = ws.net;
  int counter = 1;
  return EditAirways(
      ws,
      [&net](int i) {
        const std::string trimmed = Trim(net.BranchName[i].Trimmed());
        return trimmed.empty() || trimmed != net.BranchName[i].Trimmed();
      },
      [&](int i) {
        const std::string trimmed = Trim(net.BranchName[i].Trimmed());
        net.BranchName[i] = trimmed.empty() ? prefix + std::to_string(counter++) : trimmed;
      });
}

bool AutoNameNodes(Workspace& ws) {
  bool go = false;
  const std::string prefix = AskPrefix(
      ws,
      "This routine automatically names all nodes that do not have an existing name - Are you "
      "sure you want to procede (this cannot be undone) ?",
      "Input Node Prefix", "N", "N", go);
  if (!go) return false;
  ws.ui.SetBusy(true);
  Network& net = ws.net;
  const int n = net.BranchCount;
  // The airways at each node, by the end that meets there.
  std::unordered_map<Key, std::vector<int>> entering, leaving;
  std::vector<Key> entryKey(n + 1), exitKey(n + 1);
  for (int i = 1; i <= n; ++i) {
    entryKey[i] = EndKey(net, i, 1);
    exitKey[i] = EndKey(net, i, 2);
    leaving[entryKey[i]].push_back(i);
    entering[exitKey[i]].push_back(i);
  }
  std::vector<std::string> entryName(n + 1), exitName(n + 1);
  for (int i = 1; i <= n; ++i) {
    entryName[i] = net.EntryNodeName[i].Trimmed();
    exitName[i] = net.ExitNodeName[i].Trimmed();
  }
  int counter = 1;
  const auto nameNode = [&](Key key, std::string& own) {
    if (!Trim(own).empty()) return;
    const std::string name = prefix + std::to_string(counter++);
    for (int j : entering[key]) exitName[j] = name;
    for (int j : leaving[key]) entryName[j] = name;
    own = name;
  };
  for (int i = 1; i <= n; ++i) {
    nameNode(exitKey[i], exitName[i]);
    nameNode(entryKey[i], entryName[i]);
  }
  const bool changed = EditAirways(
      ws,
      [&](int i) {
        return entryName[i] != net.EntryNodeName[i].Trimmed() ||
               exitName[i] != net.ExitNodeName[i].Trimmed();
      },
      [&](int i) {
        net.EntryNodeName[i] = entryName[i];
        net.ExitNodeName[i] = exitName[i];
      });
  ws.ui.SetBusy(false);
  return changed;
}

bool FixAllLengths(Workspace& ws) {
  if (!ws.ui.AskYesNo("All lengths will be fixed - Are you sure?", "Fix all lengths")) return false;
  Network& net = ws.net;
  EditAirways(
      ws, [&net](int i) { return !(net.BranchCode[i] & Bit::FixedLength); },
      [&net](int i) { net.BranchCode[i] |= Bit::FixedLength; });
  ws.ui.Inform("All lengths are now fixed");
  return true;
}

bool UnfixAllLengths(Workspace& ws) {
  if (!ws.ui.AskYesNo("All lengths will be unfixed and recalculated - Are you sure?",
                      "Unfix all lengths"))
    return false;
  Network& net = ws.net;
  EditEveryAirway(ws, [&](int i) {
    net.BranchCode[i] &= ~Bit::FixedLength;
    CalcResistance(ws, i);
  });
  ws.ui.Inform("All lengths are now unfixed");
  return true;
}

bool RenumberAirways(Workspace& ws) {
  Network& net = ws.net;
  EditAirways(
      ws, [&net](int i) { return net.AirwayNo[i] != i; }, [&net](int i) { net.AirwayNo[i] = i; });
  net.NextAirwayNo = net.BranchCount + 1;
  ws.ui.Inform("Airways renumbered !");
  return true;
}

bool CheckNumbering(Workspace& ws) {
  if (!HasDuplicateAirwayNumbers(ws.net)) {
    ws.ui.Inform("All airways have unqiue numbers");
    return false;
  }
  if (!ws.ui.AskYesNo("Duplicate unique airway numbers exist - allow Galeris to re-number them ?",
                      "Duplicate airway numbers"))
    return false;
  return RenumberAirways(ws);
}

bool SwapXYAxis(Workspace& ws) {
  if (ws.ui.Message("This will swap your X & Y axis.  Are you sure you wish to do this ?",
                    MsgButtons::OKCancel, MsgIcon::Question, "Swap Axis") != MsgAnswer::OK)
    return false;
  Network& net = ws.net;
  // The signs go into the same undo action as the airways, so that one undo turns both back.
  if (ws.journal) ws.journal->RecordUndo(0, kUndoAxisSignsSwapped, ws.journal->UndoAction());
  std::swap(net.AxisSignX, net.AxisSignY);
  const bool airwaysMoved = EditEveryAirway(ws, [&net](int i) {
    ExchangeXY(net.Coord1[i]);
    ExchangeXY(net.Coord2[i]);
  });
  if (!airwaysMoved) {
    CloseUndoAction(ws.journal);
    MarkNetworkChanged(ws);
  }
  return true;
}

bool ReverseCoordinateAxis(Workspace& ws) {
  if (!ws.ui.AskYesNo("Galeris will swap your X and Y axis coordinates.  This will affect "
                      "importing and exporting of data to other programs.  Do you wish to "
                      "proceed ?",
                      "Alter coordinate system"))
    return false;
  Network& net = ws.net;
  EditEveryAirway(ws, [&net](int i) {
    ExchangeXY(net.Coord1[i]);
    ExchangeXY(net.Coord2[i]);
  });
  return true;
}

bool NormaliseDirections(Workspace& ws) {
  Network& net = ws.net;
  // The three passes are worked out first so that each airway is journalled once.
  std::vector<std::pair<Coord3, Coord3>> ends(net.BranchCount + 1);
  for (int i = 1; i <= net.BranchCount; ++i) ends[i] = {net.Coord1[i], net.Coord2[i]};
  for (int axis = 1; axis <= 3; ++axis)
    for (int i = 1; i <= net.BranchCount; ++i)
      if (ends[i].first[axis] > ends[i].second[axis]) std::swap(ends[i].first, ends[i].second);
  return EditAirways(
      ws, [&](int i) { return ends[i].first != net.Coord1[i]; },
      [&](int i) {
        net.Coord1[i] = ends[i].first;
        net.Coord2[i] = ends[i].second;
      });
}

bool RemoveFlowLabels(Workspace& ws) {
  Network& net = ws.net;
  return EditAirways(
      ws,
      [&net](int i) {
        const std::string name = Trim(net.BranchName[i].Trimmed());
        return name.size() >= 2 && name.front() == '(' && name.back() == ')';
      },
      [&net](int i) { net.BranchName[i] = ""; });
}

bool ClearSmokeTracking(Workspace& ws) {
  const bool sources =
      ws.ui.AskYesNo("Clear contaminant sources as well?", "CLEAR CONTAMINANT", MsgIcon::Question);
  ClearContaminantSpread(ws, sources);
  return sources;
}

bool EditTitleNote(Workspace& ws) {
  Network& net = ws.net;
  const std::string present = net.NetworkTitle.empty() ? "Galeris File" : net.NetworkTitle;
  const auto answer = ws.ui.Input("File Comment", "Enter Note for Title Bar", present);
  if (!answer) return false;
  net.NetworkTitle = *answer;
  if (answer->find('"') != std::string::npos) {
    ws.ui.Inform("Invalid comment text");
    net.NetworkTitle.clear();
  } else if (answer->find(',') != std::string::npos) {
    ws.ui.Inform("Commas not allowed in comment !");
    net.NetworkTitle.clear();
  }
  net.NetworkSaved = 0;
  return true;
}

}  // namespace galeris
