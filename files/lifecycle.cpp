// The engine side of the program's life: the start-up loads, New, Open, Merge, Save As, the
// recovery file and its timer, the questions at exit and the recent-file list.
#include "files/lifecycle.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/network_file.h"
#include "files/conversion_file.h"

namespace galeris {
namespace {

constexpr const char* kConversionFile = "Conversion.dat";
constexpr const char* kOldRecentList = "Galeris.old";
constexpr int kRecentEntries = 9;
constexpr int kOldRecentEntries = 4;
constexpr int kPermanentViews = 5;
constexpr int kAutosaveTicks = 10;

std::string UpperTail(const std::string& s, std::size_t n) {
  std::string tail = s.size() >= n ? s.substr(s.size() - n) : s;
  for (char& c : tail) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return tail;
}

bool IsMasterName(const std::string& path) {
  return UpperTail(path, 4) == ".SMM";
}

std::string RecoveryPath(const Workspace& ws) {
  return ws.paths.InTemp(kRecoveryFileName);
}

// The save behind a "Yes": a network without a name is left to the caller's Save As.
bool SaveForQuestion(Workspace& ws, bool& needsSaveAs) {
  if (ws.net.FileName.empty()) {
    needsSaveAs = true;
    return true;
  }
  return SaveNetwork(ws);
}

}  // namespace

void StartUp(Workspace& ws) {
  ws.units = BuiltInUnits();
  LoadConversion(ws.units, ws.paths.InProgram(kConversionFile), ws.ui);
  ReadOldRecentList(ws);
  if (ws.net.RLName[1].empty()) ws.net.RLName[1] = "SURFACE";
  if (ws.net.RLName[2].empty()) ws.net.RLName[2] = "U/Ground";
  InitDefaults(ws);
  LoadFanDatabase(ws);
}

bool IsNetworkFileName(const std::string& path) {
  const std::string tail = UpperTail(path, 4);
  return path.size() >= 4 && (tail == ".SIM" || tail == ".SMM");
}

void ClearNetwork(Workspace& ws) {
  Network& net = ws.net;
  // The five permanent views belong to the settings, not to the network: they outlive it.
  std::array<std::string, kPermanentViews + 1> names;
  std::array<std::array<float, kViewSlotItems + 1>, kPermanentViews + 1> values;
  std::array<std::array<Key, kViewCodes + 1>, kPermanentViews + 1> codes;
  for (int v = 1; v <= kPermanentViews; ++v) {
    names[v] = net.ViewName[v];
    values[v] = net.ViewValue[v];
    codes[v] = net.ViewCode[v];
  }
  ClearStore(net);
  for (int v = 1; v <= kPermanentViews; ++v) {
    net.ViewName[v] = names[v];
    net.ViewValue[v] = values[v];
    net.ViewCode[v] = codes[v];
  }
  for (int i = 1; i <= kPrimaryLayers; ++i) net.PrimaryLayerShow[i] = -1;
  for (int i = 1; i <= kSecondLayers; ++i) net.SecondLayerShow[i] = -1;
  net.RLCount = 0;
  net.NetworkTitle.clear();
  net.BranchCount = 0;
  net.NodeCount = 0;
  net.NetworkBalanced = 0;
  net.Errorlist.clear();
}

bool NewNetwork(Workspace& ws) {
  if (!ws.net.FileName.empty() || ws.net.BranchCount != 0) {
    if (ws.ui.Message("Current Data will be lost ?", MsgButtons::OKCancel, MsgIcon::Exclamation,
                      "Data Exists") != MsgAnswer::OK)
      return false;
  }
  CloseNetwork(ws);
  return true;
}

void CloseNetwork(Workspace& ws) {
  ws.net.FileName.clear();
  ClearNetwork(ws);
  ws.net.FileNote.clear();
  ws.MergeBase = 1;
  ws.MasterMode = false;
  ws.net.BranchCount = 0;
  LoadFanDatabase(ws);
  ws.net.NetworkSaved = 0xFF;
}

bool SaveChangesFirst(Workspace& ws, const std::string& question, bool& needsSaveAs) {
  needsSaveAs = false;
  if (ws.net.NetworkSaved != 0) return true;
  switch (ws.ui.Message(question, MsgButtons::YesNoCancel, MsgIcon::Question)) {
    case MsgAnswer::Yes:
      return SaveForQuestion(ws, needsSaveAs);
    case MsgAnswer::No:
      return true;
    default:
      return false;
  }
}

bool OpenNetwork(Workspace& ws, const std::string& path) {
  const std::string previous = ws.net.FileName;
  ws.net.FileName = path;
  ws.MergeBase = 1;
  if (!LoadNetwork(ws)) {
    // The open network stayed: it keeps its own name, so a save cannot land on another file.
    ws.net.FileName = previous;
    return false;
  }
  ws.MasterMode = false;
  return true;
}

bool MergeNetwork(Workspace& ws, const std::string& path) {
  const std::string previous = ws.net.FileName;
  ws.MergeBase = static_cast<std::int16_t>(ws.net.BranchCount + 1);
  ws.net.FileName = path;
  const bool merged = LoadNetwork(ws);
  ws.MergeBase = 1;
  // The merged network is still the open file's, and now differs from it.
  ws.net.FileName = previous;
  if (merged) MarkNetworkChanged(ws);
  return merged;
}

bool SaveNetworkAs(Workspace& ws, const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code ec;
  if (path.empty() || path.back() == '/' || fs::is_directory(path, ec)) {
    ws.ui.Message(kMsgSaveFailed, MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  const std::string previous = ws.net.FileName;
  const bool previousMaster = ws.MasterMode;
  ws.MasterMode = IsMasterName(path);
  ws.net.FileName = path;
  if (!SaveNetwork(ws)) {
    ws.net.FileName = previous;
    ws.MasterMode = previousMaster;
    return false;
  }
  return true;
}

bool OfferRecovery(Workspace& ws) {
  std::error_code ec;
  const std::string path = RecoveryPath(ws);
  if (!std::filesystem::exists(path, ec)) return false;
  if (!ws.ui.AskYesNo("An autosaved recovery file exists - do you wish to load this file",
                      "Auto save recovery"))
    return false;
  ws.net.FileName = path;
  ws.MergeBase = 1;
  const bool loaded = LoadNetwork(ws);
  ws.net.FileName.clear();
  if (loaded) ws.net.NetworkSaved = 0xFF;
  return loaded;
}

void AutosaveTick(Workspace& ws, int& ticks) {
  if (ws.defaults.AutoSaveMinutes <= 0) return;
  if (++ticks <= kAutosaveTicks) return;
  ticks = 0;
  SaveNetwork(ws, 1);
}

bool QueryUnload(Workspace& ws, bool& needsSaveAs) {
  needsSaveAs = false;
  if (ws.net.NetworkSaved == 0) {
    switch (ws.ui.Message("Galeris data is not saved - Save it?", MsgButtons::YesNoCancel,
                          MsgIcon::Question)) {
      case MsgAnswer::Yes:
        if (!SaveForQuestion(ws, needsSaveAs)) return false;
        break;
      case MsgAnswer::No:
        break;
      default:
        return false;
    }
  }
  if (ws.DefaultsSaved == 0 &&
      ws.ui.AskYesNo("Galeris defaults are not saved - Save them?", "Galeris", MsgIcon::Question))
    SaveDefaults(ws);
  // With a Save As still to do, the caller finishes the exit after it.
  if (!needsSaveAs) FinishUnload(ws);
  return true;
}

void FinishUnload(Workspace& ws) {
  if (ws.StoreRecentFiles) ws.StoreRecentFiles(ws.RecentFiles);
  std::error_code ec;
  std::filesystem::remove(RecoveryPath(ws), ec);
}

void PushRecentFile(Workspace& ws, const std::string& path) {
  auto& list = ws.RecentFiles;
  int from = kRecentEntries;  // a new name pushes the oldest out
  for (int i = 1; i <= kRecentEntries; ++i) {
    if (list[i] == path) {
      from = i;
      break;
    }
  }
  for (int i = from; i > 1; --i) list[i] = list[i - 1];
  list[1] = path;
}

bool RemoveRecentFile(Workspace& ws, const std::string& path) {
  if (path.empty()) return false;
  auto& list = ws.RecentFiles;
  const auto first = list.begin() + 1;
  const auto kept = std::remove(first, list.begin() + kRecentEntries + 1, path);
  if (kept == list.begin() + kRecentEntries + 1) return false;
  std::fill(kept, list.begin() + kRecentEntries + 1, std::string());
  return true;
}

bool ReadOldRecentList(Workspace& ws) {
  const std::string path = ws.paths.InProgram(kOldRecentList);
  {
    LineReader in(path);
    if (!in.IsOpen()) return false;
    std::string line;
    for (int i = 1; i <= kOldRecentEntries && in.ReadLine(line); ++i) ws.RecentFiles[i] = line;
  }
  std::error_code ec;
  std::filesystem::remove(path, ec);
  return true;
}

}  // namespace galeris
