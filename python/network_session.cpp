// One open network for a script: loading with the program's settings, quiet solves and spreads
// whose questions are answered from a policy, and the small edits of a scenario study.
#include "python/network_session.h"

#include <algorithm>
#include <numeric>

#include "core/airway_values.h"
#include "files/conversion_file.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/network_file.h"
#include "files/text_format.h"
#include "simulate/contaminants.h"
#include "simulate/repeated_runs.h"
#include "simulate/simulate.h"

namespace galeris::scripting {
namespace {

// As on the command line: a "yes" to a convergence question is given this many times at most.
constexpr int kMaxRounds = 10;
constexpr std::int16_t kBulkheadPreset = 1;
constexpr std::int16_t kFixedPreset = 50;
constexpr float kRecordVersion = 3.1f;  // the airway record as this program writes it

// A single as the network file keeps it: written to seven digits and read back.
float AsFileKeepsIt(float value) {
  return static_cast<float>(Val(FormatGeneralSingle(value)));
}

// The command line's start-up loads, in their order: units, defaults, then the fan database.
void PrepareWorkspace(Workspace& ws) {
  ws.units = BuiltInUnits();
  LoadConversion(ws.units, ws.paths.InProgram("Conversion.dat"), ws.ui);
  InitDefaults(ws);
  LoadFanDatabase(ws);
}

// Answers every question from the policy, with the convergence questions bounded: balancing
// stops on No, the smoke mixing accepts its best guess on Yes.
void AnswerQuestions(HeadlessUi& ui, bool answerYes) {
  ui.ClearRecords();
  ui.SetPolicy(answerYes ? HeadlessUi::Policy::AlwaysYes : HeadlessUi::Policy::AlwaysNo);
  auto asked = std::make_shared<int>(0);
  ui.OnMessage([&ui, asked](const UiRecord& r) {
    const bool bounded = r.title == "Convergence Warning" || r.title == "Convergence problem";
    if (bounded && ++*asked > kMaxRounds)
      ui.QueueAnswer(r.title == "Convergence problem" ? MsgAnswer::Yes : MsgAnswer::No);
  });
}

// A balancing left short of convergence still stands as a result, but counts as a warning.
const char* StatusWord(const SimOutcome& outcome, const SimRun& run) {
  if (!outcome.Ran || run.SimStatus == 1) return "failed";
  return run.SimStatus == 2 || (run.Sweeps > 0 && !run.Converged) ? "warnings" : "clean";
}

const char* SpreadEndWord(SpreadEnd end) {
  switch (end) {
    case SpreadEnd::NotBalanced: return "not balanced";
    case SpreadEnd::NoData: return "no data";
    case SpreadEnd::NoSource: return "no source";
    case SpreadEnd::Failed: return "failed";
    case SpreadEnd::Finished: return "finished";
  }
  return "failed";
}

// Store positions in AirwayNo order.
std::vector<int> ByAirwayNo(const Network& net) {
  std::vector<int> order(net.BranchCount);
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(),
                   [&net](int a, int b) { return net.AirwayNo[a] < net.AirwayNo[b]; });
  return order;
}

}  // namespace

std::unique_ptr<NetworkSession> NetworkSession::Open(const std::string& path,
                                                     const std::string& programFolder) {
  KeepMemoryBetweenRuns();  // a script solves many times
  std::unique_ptr<NetworkSession> s(new NetworkSession);
  s->ws_.paths = FindProgramPaths("");
  if (!programFolder.empty())
    s->ws_.paths.ProgramFolder = programFolder.back() == '/' ? programFolder : programFolder + "/";
  PrepareWorkspace(s->ws_);
  s->ui_.ClearRecords();
  s->ws_.net.FileName = path;
  s->ws_.MergeBase = 1;
  if (!LoadNetwork(s->ws_)) {
    const auto texts = s->ui_.MessageTexts();
    throw FileRefused(texts.empty() ? "cannot read " + path : texts.front());
  }
  s->ui_.ClearRecords();
  return s;
}

std::unique_ptr<NetworkSession> NetworkSession::Copy() const {
  std::unique_ptr<NetworkSession> s(new NetworkSession);
  CopyTo(*s);
  return s;
}

void NetworkSession::CopyTo(NetworkSession& target) const {
  if (&target == this) return;
  target.ws_.net = ws_.net;
  target.ws_.defaults = ws_.defaults;
  target.ws_.units = ws_.units;
  target.ws_.paths = ws_.paths;
  target.ws_.sim = ws_.sim;
  target.ws_.remote = ws_.remote;
  target.solvedInMemory_ = solvedInMemory_;
  target.positionsValid_ = false;
}

std::vector<std::string> NetworkSession::TakeMessages() {
  std::vector<std::string> texts;
  for (const UiRecord& r : ui_.Records())
    if (r.kind == UiRecord::Kind::Message) texts.push_back(r.title + ": " + r.text);
  ui_.ClearRecords();
  return texts;
}

void NetworkSession::AsSavedAndLoaded() {
  for (int i = 1; i <= ws_.net.BranchCount; ++i)
    ReadAirwayRecord(ws_, FormatAirwayRecord(ws_.net, i), i, kRecordVersion);
  solvedInMemory_ = false;
}

SolveReport NetworkSession::Solve(bool newton, bool answerYes) {
  if (solvedInMemory_) AsSavedAndLoaded();
  solvedInMemory_ = true;
  AnswerQuestions(ui_, answerYes);
  // A fresh run state: the same network loaded from its file would start with this one.
  ws_.sim = SimRun{};
  ws_.sim.ShowProgress = 0;
  ws_.sim.SimMode = kModeSimulate;
  ws_.sim.Method = newton ? SolverMethod::Newton : SolverMethod::HardyCross;
  positionsValid_ = false;
  const SimOutcome outcome = RunSimulation(ws_);
  SolveReport report;
  report.status = StatusWord(outcome, ws_.sim);
  report.sweeps = ws_.sim.Sweeps;
  report.meshes = ws_.sim.MeshCount;
  report.converged = ws_.sim.Converged;
  report.checked = ws_.sim.Check.Done;
  report.continuity = ws_.sim.Check.Continuity;
  report.loop = ws_.sim.Check.Loop;
  report.errors = ws_.net.Errorlist;
  report.messages = TakeMessages();
  return report;
}

SpreadReport NetworkSession::Spread(const std::vector<std::int32_t>& nos,
                                    const std::vector<float>& values, bool fixedMode,
                                    bool answerYes) {
  struct Before {
    std::int32_t no;
    std::int32_t sourceBit;
    float value;
  };
  std::vector<Before> before;
  for (std::size_t k = 0; k < nos.size(); ++k) {
    if (!(values[k] > 0 && values[k] <= kMaxConcentration))
      throw EditRefused("a source concentration must be above 0 and at most 20000");
    const int i = PositionOf(nos[k]);
    before.push_back({nos[k], ws_.net.BranchCode[i] & Bit::ContaminantSource,
                      ws_.net.Contaminant[i]});
  }
  SpreadReport report;
  std::vector<std::string> messages;
  if (ws_.net.NetworkBalanced == 0) {
    SolveReport solved = Solve(false, answerYes);
    messages = solved.messages;
  }
  const std::int16_t addSource = ws_.defaults.SmokeAddSource;
  ws_.defaults.SmokeAddSource = fixedMode ? 1 : 0;
  for (std::size_t k = 0; k < nos.size(); ++k) {
    const int i = PositionOf(nos[k]);
    ws_.net.BranchCode[i] |= Bit::ContaminantSource;
    ws_.net.Contaminant[i] = values[k];
  }
  AnswerQuestions(ui_, answerYes);
  positionsValid_ = false;
  const SpreadResult result = SimulateContaminant(ws_);
  ws_.defaults.SmokeAddSource = addSource;
  for (const Before& b : before) {
    const int i = PositionOf(b.no);
    ws_.net.BranchCode[i] = (ws_.net.BranchCode[i] & ~Bit::ContaminantSource) | b.sourceBit;
    ws_.net.Contaminant[i] = b.value;
  }
  report.end = SpreadEndWord(result.End);
  report.sources = result.Sources;
  for (std::string& m : TakeMessages()) messages.push_back(std::move(m));
  report.messages = std::move(messages);
  return report;
}

void NetworkSession::SpreadColumns(std::vector<std::int32_t>& no,
                                   std::vector<std::int16_t>& concentration,
                                   std::vector<float>& seconds) const {
  const Network& net = ws_.net;
  for (int i : ByAirwayNo(net)) {
    no.push_back(net.AirwayNo[i]);
    concentration.push_back(net.SmokeData[i][2]);
    seconds.push_back(net.SmokeTime[i]);
  }
}

AirwayColumns NetworkSession::Airways() const {
  const Network& net = ws_.net;
  AirwayColumns c;
  for (int i : ByAirwayNo(net)) {
    c.no.push_back(net.AirwayNo[i]);
    c.name.push_back(net.BranchName[i].Trimmed());
    c.entry.push_back(net.EntryNodeName[i].Trimmed());
    c.exit.push_back(net.ExitNodeName[i].Trimmed());
    c.x1.push_back(net.Coord1[i][1]);
    c.y1.push_back(net.Coord1[i][2]);
    c.z1.push_back(net.Coord1[i][3]);
    c.x2.push_back(net.Coord2[i][1]);
    c.y2.push_back(net.Coord2[i][2]);
    c.z2.push_back(net.Coord2[i][3]);
    c.entryKey.push_back(net.EntryNodeId[i]);
    c.exitKey.push_back(net.ExitNodeId[i]);
    c.resistance.push_back(net.Resistance[i]);
    c.quantity.push_back(net.Quantity[i]);
    c.pressure.push_back(net.Pressure[i]);
    c.fromPressure.push_back(net.FromNodeP[i]);
    c.toPressure.push_back(net.ToNodeP[i]);
    c.fan.push_back(net.FanNumber[i]);
    c.fans.push_back(net.NoOfFans[i]);
    c.fixedQuantity.push_back((net.BranchCode[i] & Bit::FixedQuantity) != 0);
    c.fixedResistance.push_back(net.ResType[i] == kFixedPreset);
    c.fixedDirection.push_back((net.BranchCode[i] & Bit::FixedDirection) != 0);
    c.blocked.push_back(net.Resistance[i] >= ws_.defaults.HighResistance);
  }
  return c;
}

void NetworkSession::Flows(std::vector<std::int32_t>& no, std::vector<float>& quantity,
                           std::vector<std::int64_t>& entryKey) const {
  const Network& net = ws_.net;
  for (int i = 1; i <= net.BranchCount; ++i) {
    no.push_back(net.AirwayNo[i]);
    quantity.push_back(net.Quantity[i]);
    entryKey.push_back(net.EntryNodeId[i]);
  }
}

int NetworkSession::PositionOf(std::int32_t no) {
  if (!positionsValid_) {
    positions_.clear();
    for (int i = ws_.net.BranchCount; i >= 1; --i) positions_[ws_.net.AirwayNo[i]] = i;
    positionsValid_ = true;
  }
  const auto found = positions_.find(no);
  if (found == positions_.end()) throw EditRefused("no airway numbered " + std::to_string(no));
  return found->second;
}

void NetworkSession::Changed() {
  MarkNetworkChanged(ws_);
}

void NetworkSession::SetResistance(std::int32_t no, float resistance) {
  if (!(resistance >= 0)) throw EditRefused("a resistance cannot be negative");
  const int i = PositionOf(no);
  ws_.net.ResType[i] = kFixedPreset;
  ws_.net.Resistance[i] = AsFileKeepsIt(resistance);
  Changed();
}

void NetworkSession::ScaleResistances(const std::vector<double>& factors) {
  Network& net = ws_.net;
  if (factors.size() != static_cast<std::size_t>(net.BranchCount))
    throw EditRefused("one factor per airway is needed");
  RecalcAllResistances(ws_);
  const std::vector<int> order = ByAirwayNo(net);
  for (std::size_t k = 0; k < order.size(); ++k) {
    const int i = order[k];
    if (net.Resistance[i] >= ws_.defaults.HighResistance) continue;
    if (!(factors[k] >= 0)) throw EditRefused("a resistance factor cannot be negative");
    net.ResType[i] = kFixedPreset;
    net.Resistance[i] = AsFileKeepsIt(static_cast<float>(net.Resistance[i] * factors[k]));
  }
  Changed();
}

void NetworkSession::SetFan(std::int32_t no, int fan, int count) {
  if (fan < 0 || fan > ws_.net.FanMax)
    throw EditRefused("fan number " + std::to_string(fan) + " is not in the fan list");
  if (count < 0 || count > kAirwayLoopLimit)
    throw EditRefused("a fan count is from 1 to " + std::to_string(kAirwayLoopLimit));
  const int i = PositionOf(no);
  ws_.net.FanNumber[i] = static_cast<std::int16_t>(fan);
  if (count != 0) ws_.net.NoOfFans[i] = static_cast<std::int16_t>(count);
  Changed();
}

void NetworkSession::SetFixedQuantity(std::int32_t no, float quantity) {
  const int i = PositionOf(no);
  ws_.net.BranchCode[i] |= Bit::FixedQuantity;
  ws_.net.Quantity[i] = AsFileKeepsIt(quantity);
  Changed();
}

void NetworkSession::ClearFixedQuantity(std::int32_t no) {
  const int i = PositionOf(no);
  ws_.net.BranchCode[i] &= ~Bit::FixedQuantity;
  Changed();
}

void NetworkSession::Block(std::int32_t no, bool blocked) {
  const int i = PositionOf(no);
  ws_.net.ResType[i] = blocked ? kBulkheadPreset : 0;
  CalcResistance(ws_, i);
  Changed();
}

bool NetworkSession::Save(const std::string& path) {
  ui_.ClearRecords();
  ws_.net.FileName = path;
  if (SaveNetwork(ws_)) return true;
  const auto texts = ui_.MessageTexts();
  throw FileRefused(texts.empty() ? "could not write " + path : texts.front());
}

}  // namespace galeris::scripting
