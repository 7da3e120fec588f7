// The tools on small hand networks and generated mines. The synthetic mine: exact size, the
// same mine for the same seed, a network that passes the checks with one mesh per independent
// loop, and fans that balance it on their curves. The whole-network commands, the name lists
// and the network summary. Simplification: which chains fold, the flows of the simplified
// mine, and the undo of the whole run.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <vector>

#include "core/airway_values.h"
#include "core/headless_ui.h"
#include "files/undo_journal.h"
#include "simulate/contaminants.h"
#include "simulate/mesh_builder.h"
#include "simulate/network_checks.h"
#include "simulate/pressures.h"
#include "simulate/simulate.h"
#include "simulate/sort_airways.h"
#include "tests/support/test_support.h"
#include "tools/mine_generator.h"
#include "tools/network_commands.h"
#include "tools/network_summary.h"
#include "tools/simplify.h"

namespace galeris {
namespace {

using Names = std::vector<std::string>;

struct Mine {
  HeadlessUi ui;
  Workspace ws{ui};
  explicit Mine(int airways, unsigned seed = 1) {
    ws.defaults.ResPreset[2] = 10;  // steel door
    ws.defaults.ResPreset[3] = 5;   // wood door
    GenerateMine(ws, airways, seed);
  }
  void Mesh() {
    RebuildNodes(ws.net, ws.defaults, ws.ui);
    SortAirways(ws);
    CheckNetwork(ws);
    WeighAirways(ws);
    BuildMeshes(ws);
  }
};

// Distinct nodes and connected parts, counted from the keys alone.
std::pair<int, int> NodesAndComponents(const Network& net) {
  std::map<Key, int> index;
  for (int i = 1; i <= net.BranchCount; ++i) {
    index.emplace(net.EntryNodeId[i], static_cast<int>(index.size()));
    index.emplace(net.ExitNodeId[i], static_cast<int>(index.size()));
  }
  std::vector<int> parent(index.size());
  std::iota(parent.begin(), parent.end(), 0);
  auto find = [&](int x) {
    while (parent[x] != x) x = parent[x] = parent[parent[x]];
    return x;
  };
  int components = static_cast<int>(index.size());
  for (int i = 1; i <= net.BranchCount; ++i) {
    const int a = find(index[net.EntryNodeId[i]]);
    const int b = find(index[net.ExitNodeId[i]]);
    if (a != b) {
      parent[a] = b;
      --components;
    }
  }
  return {static_cast<int>(index.size()), components};
}

TEST(MineGenerator, GivesExactlyTheAirwaysAskedFor) {
  EXPECT_EQ(Mine(257).ws.net.NextAirwayNo, 257);
  EXPECT_EQ(Mine(3).ws.net.BranchCount, SmallestGeneratedMine());  // too small an ask
}

TEST(MineGenerator, SameSeedSameMineOtherSeedOtherMine) {
  Mine a(500, 7), b(500, 7), c(500, 8);
  bool differs = false;
  for (int i = 1; i <= 500; ++i) {
    EXPECT_EQ(a.ws.net.Coord1[i], b.ws.net.Coord1[i]);
    EXPECT_EQ(a.ws.net.Coord2[i], b.ws.net.Coord2[i]);
    EXPECT_EQ(a.ws.net.Resistance[i], b.ws.net.Resistance[i]);
    differs = differs || a.ws.net.Coord1[i] != c.ws.net.Coord1[i];
  }
  EXPECT_TRUE(differs);
}

TEST(MineGenerator, HasLevelsShaftsFansDoorsAndRegulator) {
  Mine mine(800);
  const Network& net = mine.ws.net;
  EXPECT_GE(net.RLCount, 3);
  int mainFans = 0, boosters = 0, doors = 0, regulators = 0, surfaceEnds = 0;
  for (int i = 1; i <= net.BranchCount; ++i) {
    const std::string comment = net.Comment[i].Trimmed();
    mainFans += comment == "Main Fan";
    boosters += comment == "Booster";
    doors += net.ResType[i] == 2 || net.ResType[i] == 3;
    regulators += net.ResType[i] == kUserGiven;
    surfaceEnds +=
        (net.Coord1[i][3] >= SurfaceThreshold(net)) + (net.Coord2[i][3] >= SurfaceThreshold(net));
  }
  EXPECT_EQ(mainFans, 1);
  EXPECT_GE(boosters, 1);
  EXPECT_GE(doors, 2);
  EXPECT_EQ(regulators, 1);
  EXPECT_EQ(surfaceEnds, 3);  // intake collar, decline portal, exhaust collar
}

TEST(MineGenerator, KeepsFansAlreadyInTheStore) {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.net.FanName[1] = "Site fan";
  ws.net.CurveP[1][1][1] = 500;
  GenerateMine(ws, 200);
  EXPECT_EQ(ws.net.FanName[1], "Site fan");
  EXPECT_EQ(ws.net.FanName[2], "Generated Main Exhaust");
  GenerateMine(ws, 300);  // a second mine reuses the generated slots
  EXPECT_TRUE(ws.net.FanName[4].empty());
}

TEST(MineGenerator, ChecksCleanWithOneMeshPerIndependentLoop) {
  for (int airways : {SmallestGeneratedMine(), 150, 2000, 9000}) {
    Mine mine(airways, 3);
    mine.Mesh();
    const Network& net = mine.ws.net;
    EXPECT_EQ(mine.ws.sim.SimStatus, 0) << airways;
    EXPECT_TRUE(net.Errorlist.empty()) << airways << " " << net.Errorlist.front();
    EXPECT_TRUE(mine.ui.Records().empty());
    const auto [nodes, components] = NodesAndComponents(net);
    EXPECT_EQ(net.NodeCount, nodes);
    EXPECT_EQ(components, 1);
    EXPECT_EQ(mine.ws.sim.MeshCount, airways - nodes + components) << airways;
    // Every fan is a chord, so each fan has a loop of its own to drive.
    for (int i = 1; i <= net.BranchCount; ++i) {
      if (net.FanNumber[i] != 0) {
        EXPECT_LT(net.EntryNodeNo[i], 0) << i;
      }
    }
  }
}

TEST(MineGenerator, LargestMineFitsTheMeshArrays) {
  Mine mine(30000);
  ASSERT_EQ(mine.ws.net.MaxAirways, 30000);
  mine.Mesh();
  EXPECT_EQ(mine.ws.sim.SimStatus, 0);
  EXPECT_LT(mine.ws.sim.MeshCount, 15000);
  EXPECT_LT(mine.ws.net.MeshStart[mine.ws.sim.MeshCount + 1], 20 * 30000);
}

// The generated fans find an operating point on their curves: each works between its second
// and last points, clear of stall and free delivery.
TEST(MineGenerator, MainFanBalancesTheMineOnItsCurve) {
  for (int airways : {60, 600, 3000}) {
    Mine mine(airways, 5);
    Network& net = mine.ws.net;
    mine.ws.defaults.MaxIter = 3000;
    mine.ws.sim.ShowProgress = 0;
    RunSimulation(mine.ws);
    EXPECT_TRUE(mine.ws.sim.Converged) << airways;
    EXPECT_EQ(mine.ws.sim.SimStatus, 0) << airways;
    for (int i = 1; i <= net.BranchCount; ++i) {
      const int f = net.FanNumber[i];
      if (f <= 0) continue;
      const float q = net.Quantity[i] / std::max<int>(1, net.NoOfFans[i]);
      EXPECT_GT(q, net.CurveQ[f][2]) << net.Comment[i].Trimmed() << " of " << airways;
      EXPECT_LT(q, net.CurveQ[f][10]) << net.Comment[i].Trimmed() << " of " << airways;
    }
  }
}

struct Commands : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;
  test::JournalSpy journal;

  // A chain of four airways eastwards from (0,0,500), 100 m each, below the surface.
  void SetUp() override {
    net.RLBound[1] = {0, 2000, 1000};
    ws.journal = &journal;
    for (int k = 0; k < 4; ++k)
      net.AirwayNo[test::AddAirway(net, 100 * k, 0, 500, 100 * k + 100, 0, 500)] = k + 1;
  }
  Names BranchNames() const {
    Names names;
    for (int i = 1; i <= net.BranchCount; ++i) names.push_back(net.BranchName[i].Trimmed());
    return names;
  }
  void SetNames(const Names& names) {
    for (std::size_t k = 0; k < names.size(); ++k) net.BranchName[k + 1] = names[k];
  }
};

TEST_F(Commands, AutoNames) {
  struct Case {
    Names before;
    std::optional<std::string> prefix;
    Names after;
  } cases[] = {
      {{"", " X ", "", "(5)"}, "B", {"B1", "X", "B2", "(5)"}},
      {{"a", "b", "c", "d"}, "B", {"a", "b", "c", "d"}},        // every airway has a name
      {{"", "", "q", ""}, std::nullopt, {"1", "2", "q", "3"}},  // a cancelled prefix box
  };
  for (const Case& c : cases) {
    SetNames(c.before);
    ui.QueueAnswer(MsgAnswer::OK);
    ui.QueueInput(c.prefix);
    AutoNameAirways(ws);
    EXPECT_EQ(BranchNames(), c.after);
  }
  EXPECT_EQ(journal.entries.size(), 12u);  // before and after of each named airway
  EXPECT_EQ(journal.action, 3);            // one action for each command that named something
  ui.QueueAnswer(MsgAnswer::Cancel);
  EXPECT_FALSE(AutoNameAirways(ws));

  net.ExitNodeName[3] = net.EntryNodeName[4] = "Dn";
  ui.QueueAnswer(MsgAnswer::OK);
  ui.QueueInput("N");
  ASSERT_TRUE(AutoNameNodes(ws));
  const Names entries = {"N2", "N1", "N3", "Dn"}, exits = {"N1", "N3", "Dn", "N4"};
  for (int i = 1; i <= 4; ++i) {
    EXPECT_EQ(net.EntryNodeName[i].Trimmed(), entries[i - 1]) << i;
    EXPECT_EQ(net.ExitNodeName[i].Trimmed(), exits[i - 1]) << i;
  }
}

TEST_F(Commands, LengthsNumbersLabelsAndLists) {
  net.Length[2] = 5;
  ui.QueueAnswer(MsgAnswer::Yes);
  FixAllLengths(ws);
  EXPECT_TRUE(net.BranchCode[4] & Bit::FixedLength);
  ui.QueueAnswer(MsgAnswer::Yes);
  UnfixAllLengths(ws);
  EXPECT_FALSE(net.BranchCode[2] & Bit::FixedLength);
  EXPECT_EQ(net.Length[2], 100);
  EXPECT_TRUE(ui.Said("All lengths are now fixed") && ui.Said("All lengths are now unfixed"));

  net.AirwayNo[1] = net.AirwayNo[2] = 7;
  ui.QueueAnswer(MsgAnswer::Yes);
  ASSERT_TRUE(CheckNumbering(ws));
  EXPECT_EQ(std::vector<int>(&net.AirwayNo[1], &net.AirwayNo[5]), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(net.NextAirwayNo, 5);
  EXPECT_TRUE(ui.Said("Airways renumbered !"));
  EXPECT_FALSE(CheckNumbering(ws));
  EXPECT_TRUE(ui.Said("All airways have unqiue numbers"));

  SetNames({"(12.5)", " (typed) ", "(a", "Adit"});
  RemoveFlowLabels(ws);
  EXPECT_EQ(BranchNames(), (Names{"", "", "(a", "Adit"}));
  net.BranchName[1] = "adit";
  net.EntryNodeName[2] = net.ExitNodeName[1] = "n1";
  EXPECT_EQ(AirwayNameList(net), (Names{"(a", "adit", "Adit"}));
  EXPECT_EQ(NodeNameList(net), (Names{"n1"}));
  EXPECT_EQ(FindAirwayByName(net, "ADIT"), 1);
  EXPECT_EQ(FindAirwayByNodeName(net, "N1"), 1);
}

TEST_F(Commands, CoordinatesSmokeAndTitle) {
  net.Coord1[1] = {0, 5, 1, 9};  // equal X: the Y pass turns it
  net.Coord2[1] = {0, 5, 0, 2};
  net.Coord1[2] = {0, 3, 0, 0};  // turned by X, back by Y: the Z pass decides
  net.Coord2[2] = {0, 1, 5, 9};
  ASSERT_TRUE(NormaliseDirections(ws));
  EXPECT_EQ(net.Coord1[1], (Coord3{0, 5, 0, 2}));
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 3, 0, 0}));
  net.AxisSignY = -1;
  ui.QueueAnswer(MsgAnswer::Yes);
  ReverseCoordinateAxis(ws);
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 0, 3, 0}));
  EXPECT_EQ(net.AxisSignY, -1);
  ui.QueueAnswer(MsgAnswer::OK);
  SwapXYAxis(ws);
  EXPECT_EQ(net.Coord1[2], (Coord3{0, 3, 0, 0}));
  EXPECT_TRUE(net.AxisSignX == -1 && net.AxisSignY == 1);

  net.BranchCode[1] |= Bit::ContaminantSource;
  net.Contaminant[1] = 100;
  net.SmokeData[2] = {0, 1, 60};
  ui.QueueAnswer(MsgAnswer::Yes);
  EXPECT_TRUE(ClearSmokeTracking(ws));
  EXPECT_EQ(net.SmokeData[2], (SmokePair{0, 1, 0}));  // the report pin stays
  EXPECT_EQ(net.Contaminant[1], 0);

  const std::pair<const char*, const char*> titles[] = {
      {"Main decline", "Main decline"}, {"a,b", ""}, {"say \"hi\"", ""}};
  for (auto [answer, title] : titles) {
    ui.QueueInput(answer);
    EditTitleNote(ws);
    EXPECT_EQ(net.NetworkTitle, title);
  }
  EXPECT_TRUE(ui.Said("Commas not allowed in comment !") && ui.Said("Invalid comment text"));
}

TEST_F(Commands, UndoOfSwapXYTurnsTheAxisSignsBackToo) {
  ws.paths.TempFolder = test::ScratchDir();
  UndoFile undo(ws);
  undo.ResetUndoFile();
  ws.journal = &undo;
  net.AxisSignY = -1;
  ui.QueueAnswer(MsgAnswer::OK);
  ASSERT_TRUE(SwapXYAxis(ws));
  ASSERT_TRUE(undo.Undo());
  EXPECT_TRUE(net.AxisSignX == 1 && net.AxisSignY == -1);
  EXPECT_EQ(net.Coord2[test::AtNumber(net, 2)], (Coord3{0, 200, 0, 500}));
  ASSERT_TRUE(undo.Redo());
  EXPECT_TRUE(net.AxisSignX == -1 && net.AxisSignY == 1);
  EXPECT_EQ(net.Coord2[test::AtNumber(net, 2)], (Coord3{0, 0, 200, 500}));
}

// An intake of R 0.5, a fixed quantity of 200 Pa, R 1, and a stalled fan, R 0.1, at 10 m3/s.
TEST_F(Commands, SummarySumsAgainstAHandCalculation) {
  ws.units = BuiltInUnits();
  net.BranchCount = 3;
  net.Coord1[1][3] = 1000;  // the intake starts at the surface
  net.Coord2[3][3] = 1000;
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[1][j] = 10.0f * j;
    net.CurveP[1][j] = {0, 3200.0f - 200.0f * j, 0};
    net.CurveEff[1][j] = static_cast<std::int16_t>(50 + 3 * j);
  }
  const float resistance[] = {0, 0.5f, 1, 0.1f};
  for (int i = 1; i <= 3; ++i) {
    net.Quantity[i] = 10;
    net.Resistance[i] = resistance[i];
    net.Length[i] = 100;
  }
  net.BranchCode[2] |= Bit::FixedQuantity;
  net.Pressure[2] = 200;
  net.FanNumber[3] = net.NoOfFans[3] = 1;
  net.Pressure[3] = kStallMark;  // the first curve point's static pressure counts
  RebuildNodes(net, ws.defaults, ui);
  const NetworkSums sums = SumNetwork(ws);
  EXPECT_DOUBLE_EQ(sums.TotalAirflow, 10);
  EXPECT_NEAR(sums.AirPower, 1600, 1e-3);
  EXPECT_NEAR(sums.InputPower, 200 * 10 / 0.8 + 10 * 3000 / 0.53, 1e-2);
  EXPECT_DOUBLE_EQ(sums.TotalLength, 300);
  EXPECT_EQ(sums.FanCount, 1);
  Names values;
  for (const SummaryRow& row : SummaryRows(ws, sums)) values.push_back(row.Value);
  EXPECT_EQ(values, (Names{"10.0", "1", "59", "3 %", "1.60000", "$41,419", "3", "300", "1"}));
  net.EntryNodeId[1] = 1;  // no surface entry: no airflow and no mine resistance
  EXPECT_EQ(SummaryRows(ws, SumNetwork(ws))[4].Value, "");
}

struct Simplify : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  void SetUp() override {
    net.RLBound[1] = {0, 2000, 1000};  // the surface from RL 1000 up
    ws.defaults.WallFactorPreset[1] = 0.012f;
    ws.defaults.WallFactorPreset[2] = 0.02f;
  }
  int Airway(int x1, int y1, int z1, int x2, int y2, int z2, int wall = 1) {
    const int i = test::AddAirway(net, x1, y1, z1, x2, y2, z2);
    net.AirwayNo[i] = ++net.NextAirwayNo;
    net.WallType[i] = static_cast<std::int16_t>(wall);
    net.LabelPos[i] = 0.5f;
    CalcResistance(ws, i);
    return i;
  }
  // Five airways of 100 m running west from x = 500: the sort takes them first to last.
  void WestwardChain() {
    for (int k = 0; k < 5; ++k) Airway(500 - 100 * k, 0, 500, 400 - 100 * k, 0, 500);
  }
  std::map<int, float> FlowsByNumber() const {
    std::map<int, float> flows;
    for (int i = 1; i <= net.BranchCount; ++i) flows[net.AirwayNo[i]] = net.Quantity[i];
    return flows;
  }
  void Solve() {
    ws.sim.SimMode = 0;
    ws.sim.ShowProgress = 0;
    RunSimulation(ws);
    ASSERT_EQ(ws.sim.SimStatus, 0);
  }
};

TEST_F(Simplify, ChainsFoldUnlessTheFilterOrTheNodeForbids) {
  const SimplifyFilter plain{1000, 10};
  struct Case {
    const char* name;
    std::function<void(Network&, SimplifyFilter&)> change;
    int removed;
  } cases[] = {
      {"straight chain", [](Network&, SimplifyFilter&) {}, 4},
      {"length limit on the growing first airway",
       [](Network&, SimplifyFilter& f) { f.MaxLength = 250; }, 3},
      {"a fan in the middle", [](Network& n, SimplifyFilter&) { n.FanNumber[3] = 1; }, 2},
      {"a junction",
       [](Network& n, SimplifyFilter&) { test::AddAirway(n, 300, 0, 500, 300, 100, 500); }, 3},
      {"a surface end",
       [](Network& n, SimplifyFilter&) {
         n.Coord2[5] = {0, 0, 0, 1000};
       },
       3},
      {"unlike sections",
       [](Network& n, SimplifyFilter& f) { n.Dim[3][2] = 5, f.SameDimensions = true; }, 2},
      {"only the first of a pair selected",
       [](Network& n, SimplifyFilter& f) {
         n.BranchCode[1] |= Bit::Selected, f.SelectedOnly = true;
       },
       4},
      {"none selected", [](Network&, SimplifyFilter& f) { f.SelectedOnly = true; }, 0},
      {"bends above the angle on both sides",
       [](Network& n, SimplifyFilter&) {
         n.Coord2[3] = {0, 200, 50, 500}, n.Coord1[4] = {0, 200, 50, 500};
       },
       1},
      {"no flow removed as well",
       [](Network& n, SimplifyFilter& f) {
         test::AddAirway(n, 900, 0, 500, 900, 100, 500), f.RemoveZeroFlow = true;
       },
       6},
  };
  for (const Case& c : cases) {
    net = Network();
    net.RLBound[1] = {0, 2000, 1000};
    WestwardChain();
    SimplifyFilter filter = plain;
    c.change(net, filter);
    const int before = net.BranchCount;
    EXPECT_EQ(SimplifyNetwork(ws, filter), c.removed) << c.name;
    EXPECT_EQ(net.BranchCount, before - c.removed) << c.name;
    EXPECT_EQ(ui.Records().back().text,
              "The network size was reduced by " + std::to_string(c.removed) + " airways")
        << c.name;
  }
}

TEST_F(Simplify, DuplicateAndZeroLengthAirwaysGoFirst) {
  WestwardChain();
  Airway(500, 0, 500, 400, 0, 500);  // a duplicate would make a junction of the first node
  Airway(900, 0, 500, 900, 0, 500);
  ui.SetPolicy(HeadlessUi::Policy::AlwaysYes);
  EXPECT_EQ(SimplifyNetwork(ws, {1000, 10}), 4);
  EXPECT_EQ(net.BranchCount, 1);
  EXPECT_TRUE(ui.Said("Duplicate branches exist - delete them ?"));
}

TEST_F(Simplify, CombinedChainsKeepTheFlowsAndUndoRestoresEveryAirway) {
  // Intake shaft, a chain of three, a split into a straight chain (the last of unlike wall) and a
  // bent one, and the return shaft holding 50 m3/s.
  Airway(0, 0, 1000, 0, 0, 500);
  for (int k = 0; k < 3; ++k) Airway(100 * k, 0, 500, 100 * k + 100, 0, 500);
  Airway(300, 0, 500, 400, 0, 500);
  Airway(400, 0, 500, 500, 0, 500);
  Airway(500, 0, 500, 600, 0, 500, 2);
  Airway(300, 0, 500, 300, 100, 500);
  Airway(300, 100, 500, 450, 150, 500);
  Airway(450, 150, 500, 600, 100, 500);
  Airway(600, 100, 500, 600, 0, 500);
  const int shaft = Airway(600, 0, 500, 600, 0, 1000);
  net.BranchCode[shaft] |= Bit::FixedQuantity;
  net.Quantity[shaft] = 50;
  Solve();
  const std::map<int, float> original = FlowsByNumber();
  std::map<int, std::string> records;
  for (int i = 1; i <= net.BranchCount; ++i)
    records[net.AirwayNo[i]] = std::to_string(net.Coord1[i][1]) + "," +
                               std::to_string(net.Coord2[i][1]) + "," +
                               std::to_string(net.Length[i]);

  ws.paths.TempFolder = test::ScratchDir();
  UndoFile journal(ws);
  journal.ResetUndoFile();
  ws.journal = &journal;
  SimplifyFilter filter{1000, 30};
  filter.SameWallType = filter.SameDimensions = filter.CombineLengths = true;
  EXPECT_EQ(SimplifyNetwork(ws, filter), 3);  // two of the first chain, one of the straight one
  EXPECT_EQ(net.NetworkBalanced, 0);
  Solve();
  for (const auto& [number, flow] : FlowsByNumber())
    EXPECT_NEAR(flow, original.at(number), 0.01) << number;

  ASSERT_TRUE(journal.Undo());
  ASSERT_EQ(net.BranchCount, static_cast<int>(records.size()));
  for (int i = 1; i <= net.BranchCount; ++i)
    EXPECT_EQ(std::to_string(net.Coord1[i][1]) + "," + std::to_string(net.Coord2[i][1]) + "," +
                  std::to_string(net.Length[i]),
              records.at(net.AirwayNo[i]));
}

TEST(SimplifyLimitsTest, LettersAndOutOfRangeValuesAreRefused) {
  const UnitTable units;
  for (const auto& [length, angle, refused] : {std::tuple{"100", "10", false},
                                               {"abc", "10", true},
                                               {"-5", "10", true},
                                               {"10.5", "10", true},
                                               {"100", "181", true},
                                               {"100", "x", true},
                                               {"0", "180", false}}) {
    const SimplifyLimits limits = ReadSimplifyLimits(units, length, angle);
    EXPECT_EQ(!limits.Refusal.empty(), refused) << length << " " << angle;
    EXPECT_EQ(limits.MaxLength.has_value(), !refused);
  }
}

}  // namespace
}  // namespace galeris
