// The self-check: node continuity and the loop law, from node keys and stored results only.
#include "simulate/solution_check.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "simulate/pressures.h"

namespace galeris {
namespace {

// Dense node numbers from the location keys of both ends: [1..n] per airway end.
struct Nodes {
  std::vector<Key> keys;
  std::vector<int> entry, exit;
};

Nodes NumberEnds(const Network& net) {
  Nodes nodes;
  const int n = net.BranchCount;
  // Both ends of every airway, sorted by key: the keys' ranks are the node numbers.
  struct End {
    Key key;
    int slot;  // 2i for the entry of airway i, 2i + 1 for its exit
  };
  std::vector<End> ends;
  ends.reserve(2 * static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i) {
    ends.push_back({net.EntryNodeId[i], 2 * i});
    ends.push_back({net.ExitNodeId[i], 2 * i + 1});
  }
  std::sort(ends.begin(), ends.end(), [](const End& a, const End& b) { return a.key < b.key; });
  nodes.entry.assign(n + 1, 0);
  nodes.exit.assign(n + 1, 0);
  for (std::size_t k = 0; k < ends.size(); ++k) {
    if (k == 0 || ends[k].key != ends[k - 1].key) nodes.keys.push_back(ends[k].key);
    const int number = static_cast<int>(nodes.keys.size()) - 1;
    (ends[k].slot % 2 ? nodes.exit : nodes.entry)[ends[k].slot / 2] = number;
  }
  return nodes;
}

// The pressure a fan or fixed pressure adds along its airway, as the run left it: the
// operating pressure, the first curve point when stalled, nothing when negated.
double StoredHead(const Network& net, int i) {
  const int fan = net.FanNumber[i];
  const float p = net.Pressure[i];
  if (fan < 0) return p;
  if (fan == 0) return 0;
  if (p == kNegateMark) return 0;
  if (p != kStallMark) return p;
  const int series =
      (net.BranchCode[i] & Bit::FansInSeries) && net.NoOfFans[i] > 0 ? net.NoOfFans[i] : 1;
  const float stat = series * net.CurveP[fan][1][1];
  const float total = series * net.CurveP[fan][1][2];
  return net.CurveFraction[i] * (total - stat) / 100.0f + stat;
}

}  // namespace

SolutionCheck CheckSolution(const Workspace& ws) {
  const Network& net = ws.net;
  SolutionCheck check;
  const int n = net.BranchCount;
  if (n < 1) return check;
  const Nodes nodes = NumberEnds(net);
  const int nodeCount = static_cast<int>(nodes.keys.size());

  std::vector<double> balance(nodeCount, 0.0);
  std::vector<double> rise(n + 1, 0.0);
  std::vector<char> closes(n + 1, 0);
  for (int i = 1; i <= n; ++i) {
    const double q = net.Quantity[i];
    balance[nodes.entry[i]] -= q;
    balance[nodes.exit[i]] += q;
    const bool fixed = net.BranchCode[i] & Bit::FixedQuantity;
    closes[i] = !fixed && net.Resistance[i] < ws.defaults.HighResistance;
    rise[i] = StoredHead(net, i) - double{net.Resistance[i]} * q * std::fabs(q);
  }
  for (double b : balance) check.Continuity = std::max(check.Continuity, std::fabs(b));

  // Adjacency of the airways that close loops, then a breadth-first tree from the surface
  // (and from the first node of any part that does not reach it).
  std::vector<int> first(nodeCount + 1, 0), list(2 * static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i)
    if (closes[i]) ++first[nodes.entry[i] + 1], ++first[nodes.exit[i] + 1];
  for (int v = 0; v < nodeCount; ++v) first[v + 1] += first[v];
  std::vector<int> fill(first.begin(), first.end() - 1);
  for (int i = 1; i <= n; ++i)
    if (closes[i]) list[fill[nodes.entry[i]]++] = i, list[fill[nodes.exit[i]]++] = i;

  std::vector<double> p(nodeCount, 0.0);
  std::vector<char> reached(nodeCount, 0), inTree(n + 1, 0);
  std::vector<int> queue;
  queue.reserve(nodeCount);
  const auto grow = [&](int root) {
    reached[root] = 1;
    queue.assign(1, root);
    for (std::size_t k = 0; k < queue.size(); ++k) {
      const int v = queue[k];
      for (int e = first[v]; e < first[v + 1]; ++e) {
        const int i = list[e];
        const bool forward = nodes.entry[i] == v;
        const int w = forward ? nodes.exit[i] : nodes.entry[i];
        if (reached[w]) continue;
        reached[w] = 1;
        inTree[i] = 1;
        p[w] = forward ? p[v] + rise[i] : p[v] - rise[i];
        queue.push_back(w);
      }
    }
  };
  const auto surface = std::lower_bound(nodes.keys.begin(), nodes.keys.end(), SurfaceKey);
  if (surface != nodes.keys.end() && *surface == SurfaceKey)
    grow(static_cast<int>(surface - nodes.keys.begin()));
  for (int v = 0; v < nodeCount; ++v)
    if (!reached[v]) grow(v);

  for (int i = 1; i <= n; ++i) {
    if (!closes[i] || inTree[i]) continue;
    const double mismatch = p[nodes.entry[i]] + rise[i] - p[nodes.exit[i]];
    check.Loop = std::max(check.Loop, std::fabs(mismatch));
  }
  check.Done = true;
  return check;
}

std::string SolutionCheckText(const SolutionCheck& check) {
  char text[96];
  std::snprintf(text, sizeof text, "continuity %.3g m3/s loop %.3g Pa", check.Continuity,
                check.Loop);
  return text;
}

}  // namespace galeris
