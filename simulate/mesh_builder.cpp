// The mesh builder. Kruskal's pass over the airways, lightest first, grows a spanning forest
// whose trees are kept as parent pointers (NodeParent) towards their roots; each airway that
// closes a loop is a chord, and its mesh is the chord plus the two tree paths from its ends to
// where they meet. Fans, fixed quantities and blockages weigh 100000000, so they become chords
// wherever the network lets them.
#include "simulate/mesh_builder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <vector>

#include "simulate/restrictions.h"

namespace galeris {
namespace {

void PlainWeightOrder(Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i) {
    int j = i;
    while (j >= 2 && net.ChordWeight[i] >= net.ChordWeight[net.WeightOrder[j - 1]]) {
      net.WeightOrder[j] = net.WeightOrder[j - 1];
      --j;
    }
    net.WeightOrder[j] = static_cast<std::int16_t>(i);
  }
}

// Component labels of the forest. Merging two trees gives every node of the higher label the
// lower one; a union-find whose roots carry the label gives the same labels without the scan.
class Groups {
 public:
  Groups(Network& net, int nodes) : net_(net), parent_(nodes + 1), label_(nodes + 1, 0) {
    std::iota(parent_.begin(), parent_.end(), 0);
  }

  int Of(int node) { return net_.NodeGroup[node] == 0 ? 0 : label_[Find(node)]; }

  void Start(int node, int group) {
    net_.NodeGroup[node] = static_cast<std::int16_t>(group);
    label_[node] = group;
  }
  void Join(int node, int member) {
    net_.NodeGroup[node] = static_cast<std::int16_t>(Of(member));
    parent_[node] = Find(member);
  }
  void Merge(int hiMember, int loMember, int lo) {
    const int hi = Find(hiMember);
    const int root = Find(loMember);
    parent_[hi] = root;
    label_[root] = lo;
  }
  // Writes the label of every reached node into NodeGroup.
  void Store(int nodes) {
    for (int node = 1; node <= nodes; ++node)
      if (net_.NodeGroup[node] != 0) net_.NodeGroup[node] = static_cast<std::int16_t>(Of(node));
  }

 private:
  int Find(int node) {
    int root = node;
    while (parent_[root] != root) root = parent_[root];
    while (parent_[node] != root) {
      const int up = parent_[node];
      parent_[node] = root;
      node = up;
    }
    return root;
  }

  Network& net_;
  std::vector<int> parent_;
  std::vector<int> label_;
};

int EntryNode(const Network& net, int i) {
  return std::abs(net.EntryNodeNo[i]);
}
int ExitNode(const Network& net, int i) {
  return std::abs(net.ExitNodeNo[i]);
}

bool NodesNumbered(const Network& net) {
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int entry = EntryNode(net, i);
    const int exit = ExitNode(net, i);
    if (entry < 1 || exit < 1 || entry > net.NodeCount || exit > net.NodeCount) return false;
  }
  return true;
}

void MarkChord(Workspace& ws, int i) {
  Network& net = ws.net;
  net.EntryNodeNo[i] = static_cast<std::int16_t>(-net.EntryNodeNo[i]);
  // A fixed quantity or a blockage keeps its flow: the chord is locked.
  if ((net.BranchCode[i] & Bit::FixedQuantity) || net.Resistance[i] >= ws.defaults.HighResistance)
    net.ExitNodeNo[i] = static_cast<std::int16_t>(-net.ExitNodeNo[i]);
}

// Joins the tree of higher label to the other through airway i: the path from i's end in that
// tree up to its root is turned round, so that the whole tree now hangs from i.
void MergeTrees(Network& net, Groups& groups, int i, int a, int b) {
  const int lo = std::min(a, b);
  int v = i;
  int node = a > b ? EntryNode(net, i) : ExitNode(net, i);
  const int hiMember = node;
  for (;;) {
    const int next = std::abs(net.NodeParent[node]);
    const bool atExit = node == ExitNode(net, v);
    net.NodeParent[node] = static_cast<std::int16_t>(atExit ? -v : v);
    if (next == 0) break;
    node = EntryNode(net, next) == node ? ExitNode(net, next) : EntryNode(net, next);
    v = next;
  }
  groups.Merge(hiMember, a > b ? ExitNode(net, i) : EntryNode(net, i), lo);
}

// The forest pass; false when it was cancelled.
bool GrowForest(Workspace& ws) {
  Network& net = ws.net;
  Groups groups(net, net.NodeCount);
  int groupCounter = 1;
  groups.Start(EntryNode(net, 1), 1);
  for (int k = net.BranchCount; k >= 1; --k) {
    if (ws.sim.SimCancel == 255) {
      groups.Store(net.NodeCount);
      return false;
    }
    const int i = net.WeightOrder[k];
    const int entry = EntryNode(net, i);
    const int exit = ExitNode(net, i);
    const int a = groups.Of(entry);
    const int b = groups.Of(exit);
    // An airway from a node to itself can only close a loop.
    if ((a == b && a != 0) || entry == exit) {
      MarkChord(ws, i);
      continue;
    }
    if (a == 0 && b == 0) {
      ++groupCounter;
      groups.Start(exit, groupCounter);
      groups.Join(entry, exit);
      net.NodeParent[entry] = static_cast<std::int16_t>(i);
    } else if (a == 0) {
      groups.Join(entry, exit);
      net.NodeParent[entry] = static_cast<std::int16_t>(i);
    } else if (b == 0) {
      groups.Join(exit, entry);
      net.NodeParent[exit] = static_cast<std::int16_t>(-i);
    } else {
      MergeTrees(net, groups, i, a, b);
    }
    CheckTreeAirway(ws, i);
  }
  groups.Store(net.NodeCount);
  return true;
}

// The node above `node` in its tree, through the airway `up` that hangs it there: taken in
// the sign's direction, a positive airway leads to its exit and a negative one to its entry.
int UpperNode(const Network& net, int up) {
  return up > 0 ? ExitNode(net, up) : EntryNode(net, -up);
}

// How many airways lie between every node and the root of its tree; empty when the parents
// do not form trees.
std::vector<int> NodeDepths(const Network& net) {
  const int n = net.NodeCount;
  std::vector<int> depth(static_cast<std::size_t>(n) + 1, -1);
  std::vector<int> chain;
  for (int first = 1; first <= n; ++first) {
    chain.clear();
    int node = first;
    int above = -1;  // the depth of the node the chain hangs from; -1 above a root
    while (depth[node] < 0) {
      if (depth[node] == -2) return {};  // the chain came round to itself
      depth[node] = -2;
      chain.push_back(node);
      const int up = net.NodeParent[node];
      if (up == 0) break;
      node = UpperNode(net, up);
      if (node < 1 || node > n) return {};
    }
    if (depth[node] >= 0) above = depth[node];
    for (auto k = chain.rbegin(); k != chain.rend(); ++k) depth[*k] = ++above;
  }
  return depth;
}

void MeshesFull(Workspace& ws) {
  ws.ui.Message(kMsgMeshesFull, MsgButtons::OK, MsgIcon::Exclamation, "meshes Error");
  ws.sim.SimStatus = 1;
}

// One mesh per chord: the chord, the tree airways up from its exit, and those up from its
// entry taken back down. Both paths stop at the node where they meet, which the node depths
// find without walking either path to the root; the limits fall where a walk to the root
// with a search for the meeting airway would reach them.
void BuildMeshList(Workspace& ws) {
  Network& net = ws.net;
  const long memberLimit =
      std::min<long>(20L * net.MaxAirways, static_cast<long>(net.MeshMember.size()) - 1);
  const int meshLimit = static_cast<int>(net.MeshStart.size()) - 2;
  const int pathLimit = static_cast<int>(net.MeshPath.size()) - 1;
  const std::vector<int> depth = NodeDepths(net);
  if (depth.empty()) return MeshesFull(ws);
  const auto upper = [&net](int node) { return UpperNode(net, net.NodeParent[node]); };
  int meshCount = 0;
  std::int32_t pos = 1;
  ws.sim.MeshCount = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    if (net.EntryNodeNo[i] >= 0) continue;
    if (meshCount >= meshLimit) return MeshesFull(ws);
    ++meshCount;
    ws.sim.MeshCount = static_cast<std::int16_t>(meshCount);
    const std::int32_t start = pos;
    net.MeshStart[meshCount] = start;
    const int exitNode = ExitNode(net, i);
    const int entryNode = EntryNode(net, i);
    // The lowest node on both paths; 0 when they climb to different roots.
    int a = exitNode, b = entryNode;
    while (depth[a] > depth[b]) a = upper(a);
    while (depth[b] > depth[a]) b = upper(b);
    while (a != b && depth[a] > 0) {
      a = upper(a);
      b = upper(b);
    }
    const int meet = a == b ? a : 0;

    if (start + 1 + depth[exitNode] > memberLimit) return MeshesFull(ws);
    net.MeshMember[pos++] = static_cast<std::int16_t>(i);
    for (int node = exitNode; node != meet && net.NodeParent[node] != 0; node = upper(node))
      net.MeshMember[pos++] = net.NodeParent[node];
    if (net.ExitNodeNo[i] < 0) net.MeshMember[start] = static_cast<std::int16_t>(-i);

    int count = 1;
    for (int node = entryNode; node != meet && net.NodeParent[node] != 0; node = upper(node)) {
      if (count > pathLimit) return MeshesFull(ws);
      net.MeshPath[count++] = net.NodeParent[node];
    }
    if (meet != 0 && net.NodeParent[meet] != 0) {  // the airway where the paths meet
      if (count > pathLimit) return MeshesFull(ws);
      net.MeshPath[count] = net.NodeParent[meet];
    }
    if (pos + count - 2 > memberLimit) return MeshesFull(ws);
    for (int k = count - 1; k >= 1; --k)
      net.MeshMember[pos++] = static_cast<std::int16_t>(-net.MeshPath[k]);
  }
  net.MeshStart[meshCount + 1] = pos;
}

}  // namespace

namespace {

// A weight's bits as a whole number in the weights' order, -0 taken as 0: the sign flipped
// for positive weights, every bit for negative ones.
std::uint32_t OrderedBits(float weight) {
  if (weight == 0) weight = 0;
  std::uint32_t bits = 0;
  std::memcpy(&bits, &weight, sizeof bits);
  return (bits & 0x80000000u) != 0 ? ~bits : bits | 0x80000000u;
}

}  // namespace

void WeighAirways(Workspace& ws) {
  Network& net = ws.net;
  const int n = net.BranchCount;
  bool comparable = true;
  for (int i = 1; i <= n; ++i) {
    net.SolvedFan[i] = 0;
    float weight = net.Resistance[i];
    if (net.Resistance[i] >= ws.defaults.HighResistance) {
      weight = kChordWeight;
      net.Quantity[i] = 0;
    }
    if (net.BranchCode[i] & Bit::FixedQuantity) weight = kChordWeight;
    if (net.FanNumber[i] != 0) weight = kChordWeight;
    net.ChordWeight[i] = weight;
    comparable = comparable && !std::isnan(weight);
  }
  if (!comparable) return PlainWeightOrder(net);
  // The insertion walks each new airway past all lighter or equal ones: descending weight, and
  // among equals the later airway first. A stable sort by descending weight of the airways
  // taken last to first gives that list; here a radix sort, a byte of the weight at a time.
  struct Weighed {
    std::uint32_t key;  // larger weight, smaller key
    int at;
  };
  std::vector<Weighed> order(static_cast<std::size_t>(n)), moved(order.size());
  for (int i = n; i >= 1; --i) order[n - i] = {~OrderedBits(net.ChordWeight[i]), i};
  for (int shift = 0; shift < 32 && n > 0; shift += 8) {
    std::array<std::size_t, 257> next{};
    for (const Weighed& w : order) ++next[((w.key >> shift) & 0xFF) + 1];
    if (next[((order[0].key >> shift) & 0xFF) + 1] == order.size()) continue;  // one byte for all
    for (std::size_t b = 1; b < next.size(); ++b) next[b] += next[b - 1];
    for (const Weighed& w : order) moved[next[(w.key >> shift) & 0xFF]++] = w;
    order.swap(moved);
  }
  for (int k = 1; k <= n; ++k) net.WeightOrder[k] = static_cast<std::int16_t>(order[k - 1].at);
}

void BuildMeshes(Workspace& ws) {
  Network& net = ws.net;
  if (net.BranchCount < 1 || !NodesNumbered(net)) {
    ws.sim.SimStatus = 1;
    return;
  }
  if (!GrowForest(ws)) return;
  ReportRestrictions(ws);
  if (ws.sim.SimMode > 0) return;
  BuildMeshList(ws);
}

}  // namespace galeris
