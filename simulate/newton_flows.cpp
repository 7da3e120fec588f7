// Newton balancing. Unknowns are the flows of the free airways and the pressures of the nodes;
// each airway's law rise(Q) = fan(Q) - R Q|Q| is linearised about the present flow with the
// derivative D, and eliminating the flows leaves the weighted node Laplacian (weights 1/D),
// symmetric positive definite once one node per connected part is held at pressure 0. Its
// pattern is analysed once; each iteration refills the values and factorises again.
//
// From a cold start, where most airways carry no flow yet, the square law's Newton step
// overshoots many times over and then only halves its error at each step. A cold start
// therefore first solves the system with every airway linearised at one typical flow, and gives
// each airway without a fan the flow its own law gives for the pressure drop found.
#include "simulate/newton_flows.h"

#include <Eigen/OrderingMethods>
#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "simulate/balance_flows.h"
#include "simulate/fan_curves.h"

namespace galeris {
namespace {

constexpr std::uint8_t kCancel = 255;
// Below this flow the square law's derivative is taken at this flow, so that an airway
// without flow still conducts in the linear system.
constexpr double kFlowFloor = 1e-3;
// The smallest derivative: a resistance-free airway without a fan.
constexpr double kDerivativeFloor = 1e-6;

using SparseMatrix = Eigen::SparseMatrix<double>;

// The network as the iteration sees it: free airways between unknown nodes (index -1 for a
// node held at pressure 0), and the value slots of each airway in the matrix.
struct NodalSystem {
  std::vector<int> airways;      // free airways
  std::vector<int> entry, exit;  // unknown index of each end, per free airway; -1 held
  std::vector<double*> diagEntry, diagExit, offDiagonal;
  std::vector<int> unknownAt;       // per node: its unknown index; -1 held
  SparseMatrix matrix;
};

int FindRoot(std::vector<int>& parent, int v) {
  while (parent[v] != v) v = parent[v] = parent[parent[v]];
  return v;
}

bool LockedChord(const Network& net, int i) {
  return net.EntryNodeNo[i] < 0 && net.ExitNodeNo[i] < 0;
}

// The airways the forest locks when they are chords: a fixed quantity or a blockage keeps its
// flow.
bool LocksAsChord(const Network& net, const Defaults& defaults, int i) {
  return (net.BranchCode[i] & Bit::FixedQuantity) || net.Resistance[i] >= defaults.HighResistance;
}

// The node numbers of the airways' ends, which the forest only marks with signs, and whether
// each airway is locked by the rule given.
template <class Locked>
NewtonEnds EndsWith(const Network& net, Locked&& locked) {
  NewtonEnds ends;
  const int n = net.BranchCount;
  ends.nodeCount = net.NodeCount;
  ends.entry.resize(static_cast<std::size_t>(n) + 1);
  ends.exit.resize(static_cast<std::size_t>(n) + 1);
  ends.locked.resize(static_cast<std::size_t>(n) + 1);
  for (int i = 1; i <= n; ++i) {
    ends.entry[i] = std::abs(net.EntryNodeNo[i]);
    ends.exit[i] = std::abs(net.ExitNodeNo[i]);
    ends.locked[i] = locked(i);
  }
  return ends;
}

// Which triangle of the system a pattern holds.
enum class Triangle { Upper, Both };

// The pattern of the system with the unknowns numbered as given, with zero values: in every
// column the diagonal and one entry per other unknown joined to it by an airway, in ascending
// rows, within the triangle asked for. It is counted out column by column, as a compressed
// matrix holds it, with no list of single entries to sort.
SparseMatrix Pattern(const std::vector<int>& entry, const std::vector<int>& exit, int count,
                     Triangle triangle) {
  const auto forEachLink = [&](auto&& link) {
    for (std::size_t k = 0; k < entry.size(); ++k) {
      const int a = entry[k], b = exit[k];
      if (a < 0 || b < 0 || a == b) continue;
      link(std::min(a, b), std::max(a, b));  // row, column
      if (triangle == Triangle::Both) link(std::max(a, b), std::min(a, b));
    }
  };
  std::vector<int> start(static_cast<std::size_t>(count) + 1, 0);
  for (int c = 0; c < count; ++c) start[c + 1] = 1;
  forEachLink([&](int, int column) { ++start[column + 1]; });
  for (int c = 0; c < count; ++c) start[c + 1] += start[c];
  std::vector<int> rows(static_cast<std::size_t>(start[count]));
  std::vector<int> filled(start.begin(), start.end() - 1);
  for (int c = 0; c < count; ++c) rows[filled[c]++] = c;
  forEachLink([&](int row, int column) { rows[filled[column]++] = row; });

  SparseMatrix pattern(count, count);
  pattern.resizeNonZeros(start[count]);
  int* outer = pattern.outerIndexPtr();
  int* inner = pattern.innerIndexPtr();
  int used = 0;
  outer[0] = 0;
  for (int c = 0; c < count; ++c) {
    const auto first = rows.begin() + start[c], last = rows.begin() + start[c + 1];
    std::sort(first, last);
    used = static_cast<int>(std::unique_copy(first, last, inner + used) - inner);
    outer[c + 1] = used;
  }
  pattern.resizeNonZeros(used);
  std::fill(pattern.valuePtr(), pattern.valuePtr() + used, 0.0);
  return pattern;
}

// Renumbers the unknowns in the order an approximate minimum degree ordering eliminates them,
// the order the factorisation would otherwise take a permuted copy of the matrix in at every
// iteration. The ordering is given the whole symmetric pattern, counted out directly: its
// public face would first add a triangle to its transpose, which takes as long as the ordering.
void NumberInEliminationOrder(const std::vector<int>& entry, const std::vector<int>& exit,
                              int count, std::vector<int>& unknown) {
  if (count == 0) return;
  SparseMatrix symmetric = Pattern(entry, exit, count, Triangle::Both);
  Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> eliminated;
  Eigen::internal::minimum_degree_ordering(symmetric, eliminated);
  if (eliminated.size() != count) return;
  const Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> position =
      eliminated.inverse();
  for (int& u : unknown)
    if (u >= 0) u = position.indices()[u];
}

// Fills sys in place: it keeps pointers into its own matrix, whose upper triangle holds the
// system with the unknowns in elimination order.
void BuildSystem(const NewtonEnds& ends, NodalSystem& sys) {
  const int nodeCount = ends.nodeCount;
  const auto node = [&ends](int i, bool atEntry) { return atEntry ? ends.entry[i] : ends.exit[i]; };
  // One node of every part joined by free airways stays at pressure 0: it takes up what the
  // others' continuity leaves, and fixes the level of the pressures.
  std::vector<int> parent(nodeCount + 1);
  std::iota(parent.begin(), parent.end(), 0);
  for (int i = 1; i < static_cast<int>(ends.locked.size()); ++i) {
    if (ends.locked[i]) continue;
    sys.airways.push_back(i);
    parent[FindRoot(parent, node(i, true))] = FindRoot(parent, node(i, false));
  }
  std::vector<int> unknown(nodeCount + 1, -1);
  int count = 0;
  for (int v = 1; v <= nodeCount; ++v)
    if (FindRoot(parent, v) != v) unknown[v] = count++;
  const std::size_t m = sys.airways.size();
  const auto numberEnds = [&] {
    sys.entry.resize(m);
    sys.exit.resize(m);
    for (std::size_t k = 0; k < m; ++k) {
      sys.entry[k] = unknown[node(sys.airways[k], true)];
      sys.exit[k] = unknown[node(sys.airways[k], false)];
    }
  };
  numberEnds();
  NumberInEliminationOrder(sys.entry, sys.exit, count, unknown);
  numberEnds();
  sys.unknownAt = std::move(unknown);
  sys.matrix = Pattern(sys.entry, sys.exit, count, Triangle::Upper);
  sys.diagEntry.assign(m, nullptr);
  sys.diagExit.assign(m, nullptr);
  sys.offDiagonal.assign(m, nullptr);
  for (std::size_t k = 0; k < m; ++k) {
    const int a = sys.entry[k], b = sys.exit[k];
    if (a == b) continue;  // a loop on one node carries no pressure difference to solve for
    if (a >= 0) sys.diagEntry[k] = &sys.matrix.coeffRef(a, a);
    if (b >= 0) sys.diagExit[k] = &sys.matrix.coeffRef(b, b);
    if (a >= 0 && b >= 0) sys.offDiagonal[k] = &sys.matrix.coeffRef(std::min(a, b), std::max(a, b));
  }
}

// What one iteration did: the largest flow change, and the meshes whose chord moved by more
// than MaxError.
struct Step {
  bool Solved = true;
  double Largest = 0;
  int Unconverged = 0;
};

// The unknowns are already in elimination order.
using Factorisation =
    Eigen::SimplicialLDLT<SparseMatrix, Eigen::Upper, Eigen::NaturalOrdering<int>>;

}  // namespace

struct NewtonPlan {
  NewtonEnds ends;
  NodalSystem sys;
  Factorisation solver;
};

namespace {

class NewtonIteration {
 public:
  NewtonIteration(Workspace& ws, NewtonPlan& plan)
      : ws_(ws), net_(ws.net), sys_(plan.sys), solver_(plan.solver) {
    const std::size_t m = sys_.airways.size();
    flow_.resize(m);
    for (std::size_t k = 0; k < m; ++k) flow_[k] = net_.Quantity[sys_.airways[k]];
    rise_.resize(m);
    weight_.resize(m);
    change_.resize(m);
    trialFlow_.resize(m);
    rhs_.resize(sys_.matrix.rows());
    // The flow the locked chords bring to each unknown node, at their present flows.
    fixedInflow_ = Eigen::VectorXd::Zero(sys_.matrix.rows());
    for (int i = 1; i <= net_.BranchCount; ++i) {
      if (!LockedChord(net_, i)) continue;
      const int a = sys_.unknownAt[std::abs(net_.EntryNodeNo[i])];
      const int b = sys_.unknownAt[std::abs(net_.ExitNodeNo[i])];
      if (a >= 0) fixedInflow_[a] -= net_.Quantity[i];
      if (b >= 0) fixedInflow_[b] += net_.Quantity[i];
    }
    pressure_ = Eigen::VectorXd::Zero(sys_.matrix.rows());
  }

  // One Newton step, shortened by halves while it doesn't lower the squared pressure
  // mismatches: a fan that the full step would throw past the end of its curve and back
  // otherwise goes round in a cycle. A shortened step keeps continuity, as the full one does.
  Step Iterate() {
    Step step;
    Eigen::VectorXd target;
    if (!SolveLinearised(0, target)) {
      step.Solved = false;
      return step;
    }
    const float maxError = ws_.defaults.MaxError;
    for (std::size_t k = 0; k < flow_.size(); ++k) {
      // rise + p(entry) - p(exit) = 0 is the airway's law; the step closes its linear model.
      change_[k] = weight_[k] * (rise_[k] + At(target, sys_.entry[k]) - At(target, sys_.exit[k]));
      const double size = std::fabs(change_[k]);
      step.Largest = std::max(step.Largest, size);
      if (size > maxError && net_.EntryNodeNo[sys_.airways[k]] < 0) ++step.Unconverged;
    }
    const double before = Mismatch(flow_, pressure_, false);
    double share = 1;
    Eigen::VectorXd trialPressure;
    for (;;) {
      for (std::size_t k = 0; k < flow_.size(); ++k) trialFlow_[k] = flow_[k] + share * change_[k];
      trialPressure = pressure_ + share * (target - pressure_);
      if (share < kShortestStep || Mismatch(trialFlow_, trialPressure, true) <= before) break;
      share /= 2;
    }
    flow_.swap(trialFlow_);
    pressure_ = std::move(trialPressure);
    return step;
  }

  // A cold network, where fewer than half the free airways carry a flow, first gets one solve
  // with every airway linearised at the mean flow of those that carry one (the given
  // quantities); then each airway without a fan takes the flow of its square law at the
  // pressure drop found, and the others keep the linear answer. False when the system is
  // singular.
  bool WarmUpIfCold() {
    double sum = 0;
    std::size_t flowing = 0;
    for (double q : flow_) {
      if (std::fabs(q) < kFlowFloor) continue;
      sum += std::fabs(q);
      ++flowing;
    }
    if (2 * flowing >= flow_.size()) return true;
    Eigen::VectorXd target;
    if (!SolveLinearised(flowing > 0 ? sum / static_cast<double>(flowing) : 1.0, target))
      return false;
    const float* r = net_.Resistance.data();
    for (std::size_t k = 0; k < flow_.size(); ++k) {
      const int i = sys_.airways[k];
      const double drop = At(target, sys_.entry[k]) - At(target, sys_.exit[k]);
      if (r[i] > 0 && net_.FanSlot[i] == 0)
        flow_[k] = std::copysign(std::sqrt(std::fabs(drop) / r[i]), drop);
      else
        flow_[k] += weight_[k] * (rise_[k] + drop);
    }
    pressure_ = target;
    return true;
  }

  void Store() {
    for (std::size_t k = 0; k < flow_.size(); ++k)
      net_.Quantity[sys_.airways[k]] = static_cast<float>(flow_[k]);
  }

 private:
  static constexpr double kShortestStep = 1.0 / 64;

  static double At(const Eigen::VectorXd& p, int node) { return node >= 0 ? p[node] : 0.0; }

  // The pressure an airway adds along itself at a flow, and the slope of its fan there.
  double Rise(int i, double q, double* fanSlope) const {
    double fanP = 0, slope = 0;
    const float slot = net_.FanSlot[i];
    if (slot != 0) {
      const FanPoint fan = EvaluateFanCurve(net_, static_cast<int>(slot), static_cast<float>(q), i,
                                            net_.Pressure[i]);
      fanP = fan.FanP;
      // Off the curve and at a fixed pressure the pressure doesn't change with the flow: the
      // fixed slopes that damp the mesh corrections would only slow Newton down.
      if (fan.State == FanOnCurve && slot != kFixedPressureSlot) slope = fan.Slope;
    }
    if (fanSlope) *fanSlope = slope;
    return fanP - double{net_.Resistance[i]} * q * std::fabs(q);
  }

  // The sum of squared pressure mismatches of the airway laws at these flows and pressures.
  // Without `evaluate` the rises of the last linearisation stand for the flows.
  double Mismatch(const std::vector<double>& flow, const Eigen::VectorXd& p, bool evaluate) const {
    double sum = 0;
    for (std::size_t k = 0; k < flow.size(); ++k) {
      const double rise = evaluate ? Rise(sys_.airways[k], flow[k], nullptr) : rise_[k];
      const double e = rise + At(p, sys_.entry[k]) - At(p, sys_.exit[k]);
      sum += e * e;
    }
    return sum;
  }

  // Linearises about the present flows (or, with a typical flow above 0, every airway at that
  // flow) and solves for the node pressures. False when the system is singular.
  bool SolveLinearised(double typicalFlow, Eigen::VectorXd& pressure) {
    Linearise(typicalFlow);
    solver_.factorize(sys_.matrix);
    if (solver_.info() != Eigen::Success) return false;
    pressure = solver_.solve(rhs_);
    return true;
  }

  // Refills the matrix and the right-hand side about the present flows.
  void Linearise(double typicalFlow) {
    std::fill(sys_.matrix.valuePtr(), sys_.matrix.valuePtr() + sys_.matrix.nonZeros(), 0.0);
    rhs_ = fixedInflow_;
    const float* r = net_.Resistance.data();
    for (std::size_t k = 0; k < flow_.size(); ++k) {
      const int i = sys_.airways[k];
      const double q = flow_[k];
      double slope = 0;
      rise_[k] = Rise(i, q, &slope);
      // A rising stretch of a curve would make the system indefinite: its slope is left out,
      // which slows the step there but not where it ends.
      const double at = typicalFlow > 0 ? typicalFlow : std::max(std::fabs(q), kFlowFloor);
      const double derivative = std::max(2.0 * r[i] * at + std::max(-slope, 0.0), kDerivativeFloor);
      const double w = 1.0 / derivative;
      weight_[k] = w;
      const double y = q + w * rise_[k];
      if (sys_.entry[k] >= 0) rhs_[sys_.entry[k]] -= y;
      if (sys_.exit[k] >= 0) rhs_[sys_.exit[k]] += y;
      if (sys_.diagEntry[k]) *sys_.diagEntry[k] += w;
      if (sys_.diagExit[k]) *sys_.diagExit[k] += w;
      if (sys_.offDiagonal[k]) *sys_.offDiagonal[k] -= w;
    }
  }

  Workspace& ws_;
  Network& net_;
  NodalSystem& sys_;
  std::vector<double> flow_, rise_, weight_, change_, trialFlow_;
  Eigen::VectorXd rhs_, pressure_, fixedInflow_;
  Factorisation& solver_;
};

}  // namespace

NewtonEnds NewtonEndsOf(const Network& net) {
  return EndsWith(net, [&net](int i) { return LockedChord(net, i); });
}

NewtonEnds ExpectedNewtonEnds(const Network& net, const Defaults& defaults) {
  return EndsWith(net, [&](int i) { return LocksAsChord(net, defaults, i); });
}

std::shared_ptr<NewtonPlan> PlanNewton(NewtonEnds ends) {
  auto plan = std::make_shared<NewtonPlan>();
  plan->ends = std::move(ends);
  BuildSystem(plan->ends, plan->sys);
  plan->solver.analyzePattern(plan->sys.matrix);
  return plan;
}

void NewtonFlows(Workspace& ws, std::shared_ptr<NewtonPlan> plan) {
  SimRun& run = ws.sim;
  const int maxIter = std::max<int>(ws.defaults.MaxIter, 1);
  // The same start as the mesh balancing: continuity at every node, locked chords at their flow.
  SuperposeStartFlows(ws.net, run.MeshCount);
  run.Sweeps = 0;
  run.Converged = false;
  NewtonEnds ends = NewtonEndsOf(ws.net);
  if (!plan || plan->ends != ends) plan = PlanNewton(std::move(ends));
  NewtonIteration newton(ws, *plan);
  if (!newton.WarmUpIfCold()) {
    run.SimStatus = 1;
    return;
  }
  // Newton's last step is within MaxError only when it was already close, so its flows stand
  // nearer the answer than the mesh balancing's at the same MaxError.
  const double tolerance = ws.defaults.MaxError;
  for (;;) {
    int iteration = 0;
    Step last;
    for (;;) {
      last = newton.Iterate();
      if (!last.Solved) {
        run.SimStatus = 1;
        return;
      }
      newton.Store();
      ++iteration;
      ++run.Sweeps;
      if (last.Largest <= tolerance) break;
      if (run.ShowProgress == 1) ShowSweep(ws, iteration, static_cast<float>(last.Largest));
      ws.ui.Yield();
      if (run.SimCancel == kCancel) {
        run.SimStatus = 1;
        return;
      }
      if (iteration >= maxIter) break;
    }
    if (!KeepOnSimulating(ws, run.MeshCount, last.Unconverged)) return;
  }
}

}  // namespace galeris
