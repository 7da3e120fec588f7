// The synthetic mine. Fresh air enters by an intake shaft and a decline from the surface, runs
// across each level's grid of drives and cross-cuts from the intake corner to the return
// corner, and leaves by an exhaust shaft whose main fan stands at the collar. Raises join the
// levels. Drives are lighter than cross-cuts and one wide cross-cut runs down the middle of each
// level, so the spanning tree follows the drives and the spine and every mesh stays short.
#include "tools/mine_generator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/airway_values.h"

namespace galeris {
namespace {

constexpr int kSurfaceRL = 2000;  // "RL Min" of the surface level
constexpr int kFirstLevelRL = 1900;
constexpr int kLevelSpacing = 50;
constexpr int kDriveSpacing = 60;     // along X
constexpr int kCrossCutSpacing = 40;  // along Y
constexpr int kOriginX = 10000;       // away from 0 so that no end can have the blank key
constexpr int kOriginY = 20000;
constexpr int kMaxLevels = 30;
constexpr int kAirwaysPerLevelJoin = 7;  // two stations, two shaft legs, three decline legs
constexpr float kRegulatorResistance = 0.2f;
constexpr std::int16_t kSteelDoor = 2;
constexpr std::int16_t kWoodDoor = 3;

struct Point {
  int x = 0, y = 0, z = 0;
  std::string name;
};

enum class Shape { Round, Rectangular };

// The section and walls of one kind of airway.
struct Profile {
  Shape shape;
  float height;  // or the diameter of a round airway
  float width;
  float wallFactor;
  float shockLength;
};

// Shafts carry steelwork, so their friction is high for their size; the spine is a wide,
// smooth haulage cross-cut; ordinary cross-cuts are smaller and rougher than drives.
constexpr Profile kShaft{Shape::Round, 5.0f, 5.0f, 0.035f, 10};
constexpr Profile kStation{Shape::Rectangular, 5.0f, 5.0f, 0.012f, 20};
constexpr Profile kDrive{Shape::Rectangular, 5.0f, 5.0f, 0.012f, 0};
constexpr Profile kSpine{Shape::Rectangular, 6.0f, 6.0f, 0.008f, 0};
constexpr Profile kCrossCut{Shape::Rectangular, 4.0f, 4.0f, 0.014f, 5};
constexpr Profile kDecline{Shape::Rectangular, 5.5f, 5.5f, 0.014f, 10};
constexpr Profile kRaise{Shape::Round, 3.0f, 3.0f, 0.004f, 5};

// How the airways are laid out: levels of rows by columns.
struct Layout {
  int levels = 2;
  int rows = 2;
  int columns = 2;
  int spineColumn = 1;
  int declineRow = 0;
};

int GridAirways(int rows, int columns) {
  return rows * (columns - 1) + (rows - 1) * columns;
}

int BaseAirways(const Layout& l) {
  return l.levels * (GridAirways(l.rows, l.columns) + kAirwaysPerLevelJoin) + (l.levels - 1);
}

// The largest grid, no more than twice as long as wide, within the airways a level may have.
bool FitGrid(int budget, int& rows, int& columns) {
  int best = 0;
  for (int r = 2; GridAirways(r, r) <= budget; ++r) {
    for (int c = r; c <= 2 * r; ++c) {
      const int n = GridAirways(r, c);
      if (n > budget) break;
      if (n > best) {
        best = n;
        rows = r;
        columns = c;
      }
    }
  }
  return best > 0;
}

Layout ChooseLayout(int airways) {
  Layout l;
  l.levels = std::clamp(static_cast<int>(std::lround(std::cbrt(airways / 2.0))), 2, kMaxLevels);
  for (;; --l.levels) {
    const int budget = (airways - (l.levels - 1)) / l.levels - kAirwaysPerLevelJoin;
    if (FitGrid(budget, l.rows, l.columns)) break;
    if (l.levels == 2) {
      l.rows = l.columns = 2;
      break;
    }
  }
  l.spineColumn = l.columns / 2;
  l.declineRow = l.rows / 2;
  return l;
}

std::string Padded2(int n) {
  std::string text = std::to_string(n);
  if (n < 10) text.insert(text.begin(), '0');
  return text;
}

std::string LevelTag(int level) {
  std::string tag = "L";
  tag += Padded2(level);
  return tag;
}

class MineBuilder {
 public:
  MineBuilder(Workspace& ws, unsigned seed) : ws_(ws), net_(ws.net), rng_(seed) {}

  void Build(const Layout& layout, int airways);

 private:
  int Jitter(int spread) { return static_cast<int>(rng_() % (2 * spread + 1)) - spread; }
  int Pick(int count) { return static_cast<int>(rng_() % static_cast<unsigned>(count)); }

  int LevelRL(int level) const { return kFirstLevelRL - kLevelSpacing * (level - 1); }
  const Point& Node(int level, int row, int column) const {
    return grid_[((level - 1) * layout_.rows + row) * layout_.columns + column];
  }

  void ResetNetwork();
  void SetLevels();
  void PlaceGridNodes();
  void PlaceShaftNodes();
  int Add(const Point& from, const Point& to, const Profile& p, const std::string& name,
          std::int32_t extraBits = 0);
  void AddLevel(int level, int drivesToSplit);
  std::array<int, 2> AddDrive(int level, int row, int column, bool split);
  void AddShafts(int level);
  void AddDecline(int level);
  void AddRaise(int lowerLevel, int row, int column, int upperColumn);
  void AddRaises(int extraRaises);
  void HangDoor(int i, int row, int column);
  void AddRegulator();
  struct Ladder {
    std::vector<double> own, under;
    double total = 0;
  };
  Ladder EstimateLadder() const;
  void SeedFlows(double total, const Ladder& ladder);
  void PutFan(int i, int slot, const char* comment);
  void SizeFans();

  Workspace& ws_;
  Network& net_;
  std::mt19937 rng_;
  Layout layout_;
  std::vector<Point> grid_;
  std::vector<Point> intake_, exhaust_;  // shaft nodes, 0 the collar, then by level
  Point portal_;
  std::vector<int> intakeStation_, exhaustStation_, intakeLeg_, exhaustLeg_;
  std::vector<std::vector<int>> levelPath_;  // by level: drives and spine from station to station
  std::vector<std::vector<bool>> raised_;    // by level pair, node index, twice: straight, slanted
};

int MineBuilder::Add(const Point& from, const Point& to, const Profile& p, const std::string& name,
                     std::int32_t extraBits) {
  const int i = ++net_.BranchCount;
  net_.Coord1[i] = {0, from.x, from.y, from.z};
  net_.Coord2[i] = {0, to.x, to.y, to.z};
  net_.EntryNodeName[i] = from.name;
  net_.ExitNodeName[i] = to.name;
  net_.BranchName[i] = name;
  net_.BranchCode[i] = (p.shape == Shape::Round ? Bit::Round : Bit::Rectangular) | extraBits;
  net_.Dim[i] = p.shape == Shape::Round ? Dim2{0, 0, p.width} : Dim2{0, p.height, p.width};
  net_.WallType[i] = kUserGiven;
  net_.WallFactor[i] = p.wallFactor;
  net_.ShockType[i] = kUserGiven;
  net_.ShockFactor[i] = p.shockLength;
  net_.ParallelCount[i] = 1;
  net_.PrimaryLayer[i] = 1;
  net_.SecondLayer[i] = 1;
  net_.LabelPos[i] = 0.5f;
  net_.AirwayNo[i] = i;
  return i;
}

void MineBuilder::ResetNetwork() {
  for (int i = 1; i <= net_.BranchCount; ++i) BlankAirway(net_, i);
  net_.BranchCount = 0;
  net_.NodeCount = 0;
  for (auto& used : net_.TextUsed) used = 0;
  net_.NetworkBalanced = 0;
  net_.Errorlist.clear();
}

void MineBuilder::SetLevels() {
  for (int k = 0; k <= kMaxLevels + 1 && k < static_cast<int>(net_.RLName.size()); ++k) {
    net_.RLName[k].clear();
    net_.RLBound[k] = {0, 0, 0};
  }
  net_.RLName[1] = ws_.defaults.SurfaceName.empty() ? "SURFACE" : ws_.defaults.SurfaceName;
  net_.RLBound[1] = {0, kSurfaceRL + 1000, kSurfaceRL};
  for (int level = 1; level <= layout_.levels; ++level) {
    const int rl = LevelRL(level);
    net_.RLName[level + 1] = "Level " + std::to_string(level) + " (" + std::to_string(rl) + ")";
    net_.RLBound[level + 1] = {0, rl + kLevelSpacing / 2 - 1, rl - kLevelSpacing / 2};
  }
  net_.RLCount = static_cast<std::int16_t>(layout_.levels + 1);
}

void MineBuilder::PlaceGridNodes() {
  grid_.clear();
  for (int level = 1; level <= layout_.levels; ++level) {
    for (int row = 0; row < layout_.rows; ++row) {
      for (int column = 0; column < layout_.columns; ++column) {
        Point p;
        p.x = kOriginX + column * kDriveSpacing + Jitter(12);
        p.y = kOriginY + row * kCrossCutSpacing + Jitter(6);
        // Drives fall gently towards the return side so that water runs off.
        p.z = LevelRL(level) - column * kDriveSpacing / 50;
        p.name = LevelTag(level) + " R" + Padded2(row) + " C" + Padded2(column);
        grid_.push_back(p);
      }
    }
  }
}

void MineBuilder::PlaceShaftNodes() {
  const int farX = kOriginX + (layout_.columns - 1) * kDriveSpacing + 150;
  const int farY = kOriginY + (layout_.rows - 1) * kCrossCutSpacing + 150;
  intake_.assign(1, Point{kOriginX - 150, kOriginY - 150, kSurfaceRL + 10, "Intake Collar"});
  exhaust_.assign(1, Point{farX, farY, kSurfaceRL + 10, "Exhaust Collar"});
  for (int level = 1; level <= layout_.levels; ++level) {
    intake_.push_back(Point{kOriginX - 150, kOriginY - 150, LevelRL(level),
                            LevelTag(level) + " Intake Shaft Station"});
    exhaust_.push_back(
        Point{farX, farY, LevelRL(level), LevelTag(level) + " Exhaust Shaft Station"});
  }
  portal_ = Point{kOriginX - 400, kOriginY + layout_.declineRow * kCrossCutSpacing, kSurfaceRL + 5,
                  "Decline Portal"};
}

void MineBuilder::AddShafts(int level) {
  const std::string tag = LevelTag(level);
  intakeLeg_[level] =
      Add(intake_[level - 1], intake_[level], kShaft, "Intake Shaft " + tag, Bit::Fresh);
  intakeStation_[level] =
      Add(intake_[level], Node(level, 0, 0), kStation, tag + " Intake Station", Bit::Fresh);
  exhaustStation_[level] = Add(Node(level, layout_.rows - 1, layout_.columns - 1), exhaust_[level],
                               kStation, tag + " Return Station", Bit::Exhaust);
  exhaustLeg_[level] =
      Add(exhaust_[level], exhaust_[level - 1], kShaft, "Exhaust Shaft " + tag, Bit::Exhaust);
}

// Three legs from the level above (or the portal) down to the decline's access on this level,
// with a switchback between them.
void MineBuilder::AddDecline(int level) {
  const Point& from = level == 1 ? portal_ : Node(level - 1, layout_.declineRow, 0);
  const Point& to = Node(level, layout_.declineRow, 0);
  const int drop = from.z - to.z;
  const std::string tag = LevelTag(level);
  const Point bend1{kOriginX - 250, to.y - 80, from.z - drop / 3, tag + " Decline Bend 1"};
  const Point bend2{kOriginX - 330, to.y + 80, from.z - 2 * drop / 3, tag + " Decline Bend 2"};
  Add(from, bend1, kDecline, "Decline " + tag + " leg 1", Bit::Fresh);
  Add(bend1, bend2, kDecline, "Decline " + tag + " leg 2", Bit::Fresh);
  Add(bend2, to, kDecline, "Decline " + tag + " leg 3", Bit::Fresh);
}

// The airway or the two halves of a drive split by a survey peg (0 for no second half).
std::array<int, 2> MineBuilder::AddDrive(int level, int row, int column, bool split) {
  const Point& from = Node(level, row, column);
  const Point& to = Node(level, row, column + 1);
  const std::string name = LevelTag(level) + " Drive R" + Padded2(row) + " C" + Padded2(column);
  if (!split) return {Add(from, to, kDrive, name), 0};
  const Point middle{(from.x + to.x) / 2, (from.y + to.y) / 2, (from.z + to.z) / 2,
                     from.name + " Survey Peg"};
  const int first = Add(from, middle, kDrive, name + "a");
  return {first, Add(middle, to, kDrive, name + "b")};
}

// Doors keep the air from short-circuiting at the corners next to the shafts; the spine stays
// open.
void MineBuilder::HangDoor(int i, int row, int column) {
  if (column == layout_.spineColumn) return;
  if (row == 0 && column == layout_.columns - 1) {
    net_.ResType[i] = kSteelDoor;
    net_.Comment[i] = "Steel Door";
  } else if (row == layout_.rows - 2 && column == 0) {
    net_.ResType[i] = kWoodDoor;
    net_.Comment[i] = "Wood Door";
  }
}

void MineBuilder::AddLevel(int level, int drivesToSplit) {
  AddShafts(level);
  AddDecline(level);
  const int drives = layout_.rows * (layout_.columns - 1);
  std::vector<bool> split(drives, false);
  for (int k = 0; k < drivesToSplit && k < drives; ++k) {
    int d = Pick(drives);
    while (split[d]) d = (d + 1) % drives;
    split[d] = true;
  }
  // The path the seed flows take: along the first drive to the spine, down the spine, and
  // along the last drive to the return corner.
  std::vector<int>& path = levelPath_[level];
  auto onPath = [&path](const std::array<int, 2>& airways) {
    for (int i : airways)
      if (i != 0) path.push_back(i);
  };
  const int last = layout_.rows - 1;
  for (int row = 0; row < layout_.rows; ++row) {
    for (int column = 0; column + 1 < layout_.columns; ++column) {
      const auto airways =
          AddDrive(level, row, column, split[row * (layout_.columns - 1) + column]);
      if ((row == 0 && column < layout_.spineColumn) ||
          (row == last && column >= layout_.spineColumn))
        onPath(airways);
    }
  }
  for (int row = 0; row + 1 < layout_.rows; ++row) {
    for (int column = 0; column < layout_.columns; ++column) {
      const Profile& p = column == layout_.spineColumn ? kSpine : kCrossCut;
      const int i = Add(Node(level, row, column), Node(level, row + 1, column), p,
                        LevelTag(level) + " Xcut R" + Padded2(row) + " C" + Padded2(column));
      HangDoor(i, row, column);
      if (column == layout_.spineColumn) path.push_back(i);
    }
  }
}

// A return raise from a node of the lower level up to the level above; a slanted one ends one
// column further on.
void MineBuilder::AddRaise(int lowerLevel, int row, int column, int upperColumn) {
  Add(Node(lowerLevel + 1, row, column), Node(lowerLevel, row, upperColumn), kRaise,
      "Raise " + LevelTag(lowerLevel + 1) + "-" + LevelTag(lowerLevel) + " R" + Padded2(row) +
          " C" + Padded2(column),
      Bit::Exhaust);
}

void MineBuilder::AddRaises(int extraRaises) {
  const int nodes = layout_.rows * layout_.columns;
  const int pairs = layout_.levels - 1;
  raised_.assign(pairs + 1, std::vector<bool>(2 * nodes, false));
  auto raise = [&](int pair, int slot) {
    raised_[pair][slot] = true;
    const int node = slot % nodes;
    const int column = node % layout_.columns;
    const int upper = slot < nodes ? column : (column + 1) % layout_.columns;
    AddRaise(pair, node / layout_.columns, column, upper);
  };
  for (int pair = 1; pair <= pairs; ++pair) {
    raise(pair, (layout_.rows - 1) * layout_.columns + layout_.columns / 3);
  }
  const int room = pairs * (2 * nodes - 1);
  for (int k = 0; k < extraRaises && k < room; ++k) {
    const int pair = 1 + k % pairs;
    int slot = Pick(2 * nodes);
    while (raised_[pair][slot]) slot = (slot + 1) % (2 * nodes);
    raise(pair, slot);
  }
}

// The level nearest the main fan is regulated so that it doesn't take the lot.
void MineBuilder::AddRegulator() {
  const int regulated = exhaustStation_[1];
  net_.ResType[regulated] = kUserGiven;
  net_.Resistance[regulated] = kRegulatorResistance;
  net_.Comment[regulated] = "Regulator";
}

// A falling ten-point curve through (q, p) at its sixth point; the design point sits in the
// middle so that the operating point stays on the curve if the network is a few times more or
// less resistant than estimated.
void WriteFanCurve(Network& net, int slot, const std::string& name, double q, double p) {
  static constexpr double kFlow[11] = {0, 0, 0.25, 0.5, 0.7, 0.85, 1.0, 1.15, 1.3, 1.45, 1.6};
  static constexpr double kPressure[11] = {0, 1.8, 1.75, 1.65, 1.5, 1.3, 1.0, 0.75, 0.5, 0.3, 0.12};
  static constexpr std::int16_t kEfficiency[11] = {0, 45, 60, 70, 78, 82, 84, 82, 76, 66, 50};
  constexpr double kDesignVelocity = 15;  // m/s through the fan at the design flow
  const double area = q / kDesignVelocity;
  const double diameter = std::sqrt(4 * area / 3.1415927);
  net.FanName[slot] = name;
  net.FanDiameter[slot] = static_cast<float>(std::round(diameter * 100) / 100);
  for (int j = 1; j <= 10; ++j) {
    const double flow = q * kFlow[j];
    const double velocity = flow / area;
    const double staticP = std::round(p * kPressure[j]);
    net.CurveQ[slot][j] = static_cast<float>(std::round(flow * 10) / 10);
    net.CurveP[slot][j][1] = static_cast<float>(staticP);
    net.CurveP[slot][j][2] = static_cast<float>(std::round(staticP + 0.6 * velocity * velocity));
    net.CurveEff[slot][j] = kEfficiency[j];
  }
}

// The fan slot that holds this generated type: its own earlier slot, or the first free one.
int FanSlotFor(Network& net, const std::string& name, int avoid) {
  for (int f = 1; f <= net.FanMax; ++f)
    if (net.FanName[f] == name) return f;
  for (int f = 1; f <= net.FanMax; ++f)
    if (net.FanName[f].empty() && f != avoid) return f;
  return avoid == net.FanMax ? net.FanMax - 1 : net.FanMax;
}

double InParallel(double a, double b) {
  const double s = 1 / std::sqrt(a) + 1 / std::sqrt(b);
  return 1 / (s * s);
}

// Balancing starts from the flows in the store: the design flow shared among the levels as
// the ladder estimate shares it, each level's share along its seed path, gives it a start near
// the answer and keeps continuity at every node.
void MineBuilder::SeedFlows(double total, const Ladder& ladder) {
  auto r = [this](int i) { return double{net_.Resistance[i]}; };
  double through = total;
  for (int level = 1; level <= layout_.levels; ++level) {
    net_.Quantity[intakeLeg_[level]] = static_cast<float>(through);
    net_.Quantity[exhaustLeg_[level]] = static_cast<float>(through);
    double share = through;
    if (level < layout_.levels) {
      const double below =
          ladder.under[level + 1] + r(intakeLeg_[level + 1]) + r(exhaustLeg_[level + 1]);
      const double ownWeight = 1 / std::sqrt(ladder.own[level]);
      share = through * ownWeight / (ownWeight + 1 / std::sqrt(below));
    }
    net_.Quantity[intakeStation_[level]] = static_cast<float>(share);
    net_.Quantity[exhaustStation_[level]] = static_cast<float>(share);
    for (int i : levelPath_[level]) net_.Quantity[i] = static_cast<float>(share);
    through -= share;
  }
}

// The ladder of levels between the two shafts: each level's resistance in parallel with
// everything below it, seen through the shaft legs. own: a level between its two shaft
// stations; under: that level and all below it, seen from its stations.
MineBuilder::Ladder MineBuilder::EstimateLadder() const {
  auto r = [this](int i) { return double{net_.Resistance[i]}; };
  double driveSum = 0;
  int drives = 0;
  for (int i = 1; i <= net_.BranchCount; ++i) {
    if (net_.BranchName[i].Trimmed().find(" Drive ") != std::string::npos) {
      driveSum += r(i);
      ++drives;
    }
  }
  // The rows of a level in parallel, each a string of drives.
  const double grid = (driveSum / std::max(drives, 1)) * (layout_.columns - 1) /
                      (static_cast<double>(layout_.rows) * layout_.rows);
  const int levels = layout_.levels;
  Ladder ladder;
  ladder.own.assign(levels + 2, 0.0);
  ladder.under.assign(levels + 2, 0.0);
  for (int level = levels; level >= 1; --level) {
    ladder.own[level] = r(intakeStation_[level]) + grid + r(exhaustStation_[level]);
    ladder.under[level] =
        level == levels
            ? ladder.own[level]
            : InParallel(ladder.own[level], ladder.under[level + 1] + r(intakeLeg_[level + 1]) +
                                                r(exhaustLeg_[level + 1]));
  }
  ladder.total = ladder.under[1] + r(intakeLeg_[1]) + r(exhaustLeg_[1]);
  return ladder;
}

void MineBuilder::PutFan(int i, int slot, const char* comment) {
  net_.FanNumber[i] = static_cast<std::int16_t>(slot);
  net_.NoOfFans[i] = 1;
  net_.Comment[i] = comment;
}

// The main fan is sized on the ladder estimate for a flow that grows with the levels;
// boosters on every third level's return help the deeper workings.
void MineBuilder::SizeFans() {
  const Ladder ladder = EstimateLadder();
  const double q = 15.0 + 6.0 * layout_.levels;
  const double p = std::max(50.0, ladder.total * q * q);
  SeedFlows(q, ladder);

  const int mainSlot = FanSlotFor(net_, "Generated Main Exhaust", 0);
  WriteFanCurve(net_, mainSlot, "Generated Main Exhaust", q, p);
  const int boosterSlot = FanSlotFor(net_, "Generated Booster", mainSlot);
  WriteFanCurve(net_, boosterSlot, "Generated Booster", std::max(4.0 * q / layout_.levels, q / 4),
                0.15 * p);

  PutFan(exhaustLeg_[1], mainSlot, "Main Fan");
  net_.BranchName[exhaustLeg_[1]] = "Main Fan Exhaust Collar";
  for (int level = 3; level <= layout_.levels; level += 3)
    PutFan(exhaustStation_[level], boosterSlot, "Booster");
  if (layout_.levels < 3) PutFan(exhaustStation_[layout_.levels], boosterSlot, "Booster");
}

void MineBuilder::Build(const Layout& layout, int airways) {
  layout_ = layout;
  ResetNetwork();
  SetLevels();
  PlaceGridNodes();
  PlaceShaftNodes();
  intakeStation_.assign(layout_.levels + 1, 0);
  exhaustStation_.assign(layout_.levels + 1, 0);
  intakeLeg_.assign(layout_.levels + 1, 0);
  exhaustLeg_.assign(layout_.levels + 1, 0);
  levelPath_.assign(layout_.levels + 1, {});

  // What the grids leave of the count is made up by survey pegs that split drives (no new
  // mesh) and, when the pegs run out, by extra raises.
  const int spare = std::max(0, airways - BaseAirways(layout_));
  const int drives = layout_.rows * (layout_.columns - 1);
  const int pegs = std::min(spare, drives * layout_.levels);
  for (int level = 1; level <= layout_.levels; ++level) {
    const int share = pegs / layout_.levels + (level <= pegs % layout_.levels ? 1 : 0);
    AddLevel(level, share);
  }
  AddRaises(spare - pegs);
  AddRegulator();
  RecalcAllResistances(net_, ws_.defaults);
  SizeFans();
  net_.NextAirwayNo = net_.BranchCount;
  // Every end gets its location key, as after a load: the file writer stops at a blank key.
  RebuildNodes(net_, ws_.defaults, ws_.ui);
  net_.NetworkTitle = "Generated mine of " + std::to_string(net_.BranchCount) + " airways";
  net_.NetworkSaved = 0;
}

}  // namespace

int SmallestGeneratedMine() {
  return BaseAirways(Layout{});
}

// From still air a generated mine of a few hundred airways or more takes 80 to 150 sweeps
// whatever its size, a small one a dozen or so; half the airway count leaves room for both.
std::int16_t SweepLimitFor(int airways) {
  return static_cast<std::int16_t>(std::clamp(airways / 2, 50, 500));
}

void GenerateMine(Workspace& ws, int airways, unsigned seed) {
  airways = std::clamp(airways, SmallestGeneratedMine(), kAirwayLoopLimit);
  if (airways > ws.net.MaxAirways) {
    ws.net.MaxAirways = airways;
    ResizeStore(ws.net);
  }
  MineBuilder(ws, seed).Build(ChooseLayout(airways), airways);
  ws.defaults.MaxIter = SweepLimitFor(airways);
}

}  // namespace galeris
