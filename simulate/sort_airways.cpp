// The sort of the store by location keys, and the clean-up of duplicate and zero-length
// airways between its two passes. Surface entries have the highest key, so they come first.
#include "simulate/sort_airways.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/airway_values.h"

namespace galeris {
namespace {

// True when airway a belongs before airway b: larger entry key first, then larger exit key.
bool KeysAbove(const Network& net, int a, int b) {
  if (net.EntryNodeId[a] != net.EntryNodeId[b]) return net.EntryNodeId[a] > net.EntryNodeId[b];
  return net.ExitNodeId[a] > net.ExitNodeId[b];
}

bool IsSorted(const Network& net) {
  for (int j = 2; j <= net.BranchCount; ++j)
    if (KeysAbove(net, j, j - 1)) return false;
  return true;
}

void AddError(Workspace& ws, int i, const char* label, const char* comment) {
  ws.net.Errorlist.push_back(std::to_string(ws.net.AirwayNo[i]) + "\t" + label);
  ws.net.Comment[i] = comment;
  ws.net.BranchCode[i] |= Bit::ErrorMark;
}

// One clean-up loop: the first airway that `isRedundant` finds raises the question (unless
// `ask` is false, which counts as No); Yes blanks it and every later one, each journalled so
// that Undo brings it back; No lists them all.
template <class Test>
bool RemoveOrList(Workspace& ws, bool ask, const char* question, const char* title,
                  const char* label, const char* comment, Test isRedundant) {
  Network& net = ws.net;
  bool asked = false;
  bool remove = false;
  bool blanked = false;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (!isRedundant(i)) continue;
    if (!asked) {
      asked = true;
      remove = ask && ws.ui.Message(question, MsgButtons::YesNo, MsgIcon::Question, title) ==
                          MsgAnswer::Yes;
    }
    if (remove) {
      JournalBefore(ws.journal, i);
      BlankAirway(net, i);
      blanked = true;
    } else {
      ws.sim.SimStatus = 1;
      AddError(ws, i, label, comment);
    }
  }
  return blanked;
}

// Sorts a store left sorted by the last run but for a few airways: both items of every pair
// out of order are taken out, and when the rest are in order, the few are sorted and merged
// back. False, with the items as they were, when that does not hold.
template <class T, class Before>
bool SortedByMerging(std::vector<T>& items, Before before) {
  const std::size_t n = items.size();
  std::vector<char> out(n, 0);
  std::size_t few = 0;
  for (std::size_t k = 1; k < n; ++k)
    if (before(items[k], items[k - 1])) few += !out[k - 1] + !out[k], out[k - 1] = out[k] = 1;
  if (few > n / 16) return false;
  std::vector<T> rest, strays;
  rest.reserve(n - few);
  strays.reserve(few);
  for (std::size_t k = 0; k < n; ++k) {
    if (out[k]) {
      strays.push_back(items[k]);
    } else {
      if (!rest.empty() && before(items[k], rest.back())) return false;
      rest.push_back(items[k]);
    }
  }
  std::sort(strays.begin(), strays.end(), before);
  std::merge(rest.begin(), rest.end(), strays.begin(), strays.end(), items.begin(), before);
  return true;
}

}  // namespace

void SortByNodeKeys(Network& net) {
  const int n = net.BranchCount;
  if (n < 2 || IsSorted(net)) return;
  // A stable sort with the insertion sort's comparison gives its order, ties included: here
  // the position breaks the ties, and the keys sit beside it so that a comparison reads no
  // further than the entry it compares.
  struct Place {
    Key entry, exit;
    int at;
  };
  std::vector<Place> places(static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i) places[i - 1] = {net.EntryNodeId[i], net.ExitNodeId[i], i};
  const auto before = [](const Place& a, const Place& b) {
    if (a.entry != b.entry) return a.entry > b.entry;
    if (a.exit != b.exit) return a.exit > b.exit;
    return a.at < b.at;
  };
  // The order is total, so any sort gives the one answer.
  if (!SortedByMerging(places, before))
    std::sort(places.begin(), places.end(), before);
  std::vector<int> order(static_cast<std::size_t>(n) + 1);
  for (int k = 1; k <= n; ++k) order[k] = places[k - 1].at;
  std::vector<float> fromP(net.FromNodeP.begin(), net.FromNodeP.begin() + n + 1);
  std::vector<float> toP(net.ToNodeP.begin(), net.ToNodeP.begin() + n + 1);
  std::vector<float> smoke(net.SmokeTime.begin(), net.SmokeTime.begin() + n + 1);
  ReorderAirways(net, order);
  std::copy(fromP.begin(), fromP.end(), net.FromNodeP.begin());
  std::copy(toP.begin(), toP.end(), net.ToNodeP.begin());
  std::copy(smoke.begin(), smoke.end(), net.SmokeTime.begin());
}

void SortAirways(Workspace& ws) {
  Network& net = ws.net;
  if (net.BranchCount <= 1) {
    ws.ui.Inform("No Data to sort", "Galeris", MsgIcon::Information);
    return;
  }
  SortByNodeKeys(net);
  DeleteRedundantAirways(ws);
  SortByNodeKeys(net);
  for (int i = 1; i <= net.BranchCount; ++i) net.BranchCode[i] &= ~Bit::Selected;
}

void DeleteRedundantAirways(Workspace& ws) {
  Network& net = ws.net;
  // The last airway compares with the blank slot after it, so never counts as a duplicate.
  const bool duplicatesBlanked =
      RemoveOrList(ws, ws.sim.SimMode != 4, "Duplicate branches exist - delete them ?",
                   "Duplicate branches", "Duplicate airway", "Duplicate branch", [&net](int i) {
                     if (i == net.BranchCount) return false;
                     return net.EntryNodeId[i] == net.EntryNodeId[i + 1] &&
                            net.ExitNodeId[i] == net.ExitNodeId[i + 1];
                   });
  if (duplicatesBlanked) CompactAirways(net);

  const bool zeroLengthBlanked =
      RemoveOrList(ws, true, "Branches with identical start/end points detected - delete them ?",
                   "Zero length branches", "Same start/end", "Same start/end", [&net](int i) {
                     const Key entry = net.EntryNodeId[i];
                     return entry == net.ExitNodeId[i] && entry != SurfaceKey && entry != 0;
                   });
  if (zeroLengthBlanked) CompactAirways(net);
  if (duplicatesBlanked || zeroLengthBlanked) CloseUndoAction(ws.journal);  // one undoable deletion
  RecalcAllResistances(ws);
}

}  // namespace galeris
