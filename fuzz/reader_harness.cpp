#include "fuzz/reader_harness.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "exchange/import_file.h"
#include "files/conversion_file.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "realtime/remotes_file.h"
#include "realtime/stations.h"

namespace galeris::fuzz {
namespace {

constexpr int kSmallStore = 100;

void Fail(const char* why) {
  std::fprintf(stderr, "reader harness: %s\n", why);
  std::abort();
}

// One scratch folder per process, serving as both program and temporary folder; removed at
// exit.
const std::string& ScratchFolder() {
  static const std::string folder = [] {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/galeris-fuzz-XXXXXX";
    if (!mkdtemp(pattern.data())) Fail("cannot make a scratch folder");
    return pattern + "/";
  }();
  static const bool removedAtExit =
      std::atexit([] { std::filesystem::remove_all(ScratchFolder()); }) == 0;
  (void)removedAtExit;
  return folder;
}

// Empties the scratch folder, so that no file of an earlier input is read.
void ClearScratchFolder() {
  for (const auto& entry : std::filesystem::directory_iterator(ScratchFolder()))
    std::filesystem::remove_all(entry.path());
}

std::string WriteInput(const std::string& name, std::string_view bytes) {
  const std::string path = ScratchFolder() + name;
  std::ofstream(path, std::ios::binary | std::ios::trunc).write(bytes.data(), bytes.size());
  return path;
}

// A refused load or merge must leave the network as it was.
void ExpectUntouchedWhenRefused(Workspace& ws, const std::function<bool()>& load) {
  const std::string before = FormatNetworkFile(ws, true);
  if (!load() && FormatNetworkFile(ws, true) != before) Fail("a refused load changed the network");
}

// The size of the input picks the door: an ordinary file, a Master file or the recovery file.
// What an ordinary open reads is then merged behind itself.
void ReadNetwork(Workspace& ws, std::string_view bytes) {
  switch (bytes.size() % 3) {
    case 0: {
      const std::string path = WriteInput("fuzz.sim", bytes);
      bool opened = false;
      ExpectUntouchedWhenRefused(ws, [&] { return opened = OpenNetwork(ws, path); });
      if (opened) ExpectUntouchedWhenRefused(ws, [&] { return MergeNetwork(ws, path); });
      break;
    }
    case 1: {
      const std::string path = WriteInput("fuzz.smm", bytes);
      ExpectUntouchedWhenRefused(ws, [&] { return OpenNetwork(ws, path); });
      break;
    }
    default:
      WriteInput(kRecoveryFileName, bytes);
      ExpectUntouchedWhenRefused(ws, [&] { return OfferRecovery(ws); });
  }
}

void ReadImport(Workspace& ws, std::string_view bytes, const char* name) {
  ImportChoices choices;
  choices.BuildLevels = bytes.size() % 2 == 1;
  ImportFile(ws, WriteInput(name, bytes), choices);
}

// The state of the program before a reader runs, with a small store to keep the runs quick (a
// file that asks for more makes it grow).
struct StartState {
  Network net;
  Defaults defaults;
  UnitTable units;
};

const StartState& Start() {
  static const StartState start = [] {
    HeadlessUi ui;
    Workspace ws(ui);
    ws.units = BuiltInUnits();
    SetBuiltInDefaults(ws);
    ws.defaults.RequestedAirways = kSmallStore;
    ws.net.MaxAirways = kSmallStore;
    ResizeStore(ws.net);
    return StartState{std::move(ws.net), ws.defaults, ws.units};
  }();
  return start;
}

// One workspace serves every input, since making one sizes a full store: each of its fields is
// set back to the start state here.
Workspace& FreshWorkspace() {
  static HeadlessUi ui(HeadlessUi::Policy::AlwaysYes);
  static Workspace ws(ui);
  ui.ClearRecords();
  ws.net = Start().net;
  ws.defaults = Start().defaults;
  ws.units = Start().units;
  ws.paths.ProgramFolder = ScratchFolder();
  ws.paths.TempFolder = ScratchFolder();
  ws.sim = SimRun{};
  ws.remote = RemoteStations{};
  ws.journal = nullptr;
  ws.RecentFiles = {};
  ws.StoreRecentFiles = nullptr;
  ws.NetworkChanged = nullptr;
  ws.DefaultsSaved = 0xFF;
  ws.MergeBase = 1;
  ws.MasterMode = false;
  ws.CoordinateWarned = false;
  return ws;
}

using Reader = std::function<void(Workspace&, std::string_view)>;

const std::map<std::string, Reader, std::less<>>& Readers() {
  static const std::map<std::string, Reader, std::less<>> readers{
      {"network", ReadNetwork},
      {"defaults",
       [](Workspace& ws, std::string_view bytes) {
         WriteInput("Defaults.dat", bytes);
         LoadDefaults(ws);
       }},
      {"conversion",
       [](Workspace& ws, std::string_view bytes) {
         LoadConversion(ws.units, WriteInput("Conversion.dat", bytes), ws.ui);
       }},
      {"fans",
       [](Workspace& ws, std::string_view bytes) {
         WriteInput(kFanDatabaseName, bytes);
         LoadFanDatabase(ws);
       }},
      {"remotes",
       [](Workspace& ws, std::string_view bytes) {
         WriteInput(kRemotesFileName, bytes);
         LoadRemotes(ws);
       }},
      {"stations",
       [](Workspace& ws, std::string_view bytes) {
         ws.remote.RemoteSource = WriteInput("stations.txt", bytes);
         std::string why;
         int stationsRead = 0;
         ReadStationFile(ws.remote, ws.remote.RemoteSource, why, stationsRead);
       }},
      {"text_import",
       [](Workspace& ws, std::string_view bytes) { ReadImport(ws, bytes, "fuzz.txt"); }},
      {"dxf_import",
       [](Workspace& ws, std::string_view bytes) { ReadImport(ws, bytes, "fuzz.dxf"); }},
  };
  return readers;
}

}  // namespace

const std::vector<std::string>& ReaderNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const auto& [name, reader] : Readers()) all.push_back(name);
    return all;
  }();
  return names;
}

void RunReader(std::string_view reader, std::string_view bytes) {
  const auto found = Readers().find(reader);
  if (found == Readers().end()) Fail("unknown reader");
  ClearScratchFolder();
  found->second(FreshWorkspace(), bytes);
}

}  // namespace galeris::fuzz
