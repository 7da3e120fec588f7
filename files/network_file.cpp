// The network file: the loader with its branches for every older version, the merge behind
// the open airways, the writer, and the one-record conversions shared with the undo journal.
// A load reads into a fresh workspace and takes its place only when it got to the end (with
// the user's consent to every error on the way), so a refused or abandoned file never costs
// the open network.
#include "files/network_file.h"

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>

#include "core/headless_ui.h"
#include "core/in_parts.h"
#include "core/number_format.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/whole_file.h"

namespace galeris {
namespace {

constexpr const char* kCrLf = "\r\n";
constexpr const char* kHeadTag = "3.1 GALERIS3";
constexpr const char* kDefaultsHead = "Defaults List for Network";
constexpr const char* kViewsHead = "Saved Views";
constexpr const char* kViewsEnd = "End of saved views";
constexpr const char* kStartupView = "startupview";
constexpr const char* kTagHead = "Tag List";
constexpr const char* kTagEnd = "End of Tag List";
constexpr const char* kLevelsHead = "RL Name\tRL Max\tRL Min";
constexpr const char* kLevelsEnd = "**END OF RL LIST**";
constexpr const char* kTextEnd = "**End Of Floating Text";
constexpr const char* kRecordLabels =
    "Entry Node\tExit Node\tBranch Name\tBlank\tBlank\tX1\tY1\tZ1\tX2\tY2\tZ2\tHeight\tWidth\t"
    "Branch Code\tRes Type\tShock Type\tWall Type\tWall Factor\tShock Factor\tComment\t"
    "Resistance\tQuantity\tFan Number\tNo of Fans\tLength\tPressure\tContaminant\tPrimary Layer\t"
    "Second Layer\tFrom Node P\tTo Node P\tUndo No\tAirway No\tIcon Loc\tRemote Station\t"
    "No Airways\tCurve Fraction";
constexpr double kPi = 3.141592654;
constexpr int kLastWrittenView = 99;
constexpr int kFirstUserView = 6;
constexpr int kMoreViewLines = 100;
constexpr int kLevelLines = 250;
constexpr int kMergedLevelBase = 98;
constexpr int kOldDisplayBit = 0x200;  // display flag that files of 2.7 and before did not know
constexpr float kOldBulkheadLimit = 1000;
constexpr float kOldBulkhead = 10000;
constexpr int kLegacyRecordFields = 25;  // a 1.0 record holds today's fields 1 to 25

// A text field never holds a line end or a tab: they would break the file's lines and fields.
std::string CleanField(std::string s) {
  for (char& c : s)
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  return s;
}

bool EndsWithNoCase(const std::string& s, const std::string& tail) {
  if (s.size() < tail.size()) return false;
  for (std::size_t i = 0; i < tail.size(); ++i)
    if (std::toupper(static_cast<unsigned char>(s[s.size() - tail.size() + i])) != tail[i])
      return false;
  return true;
}

bool IsMasterFile(const std::string& path) {
  return EndsWithNoCase(path, "SMM");
}

std::int16_t AxisSign(const std::string& field) {
  const double v = 1 - 2 * Val(field);
  if (v == 1 || v == -1) return static_cast<std::int16_t>(v);
  return 1;
}

// ---- Writer -----------------------------------------------------------------------------

void AppendHeader(std::string& out, const Network& net) {
  out += kHeadTag;
  out += '\t';
  out += CleanField(net.NetworkTitle);
  out += '\t';
  out += PrintNumber((1 - net.AxisSignX) / 2.0);
  out += '\t';
  out += PrintNumber((1 - net.AxisSignY) / 2.0);
  out += '\t';
  out += EscapeNote(net.FileNote);
  out += '\t';
  out += PrintNumber(net.FanDatabaseSerial);
  out += kCrLf;
}

void AppendViewLine(std::string& out, const Network& net, int slot) {
  out += slot == 0 ? std::string(kStartupView) : CleanField(net.ViewName[slot]);
  out += '\t';
  for (int item = 1; item <= 22; ++item) out += PrintSingle(net.ViewValue[slot][item]) + "\t";
  for (int code = 1; code <= kViewCodes; ++code)
    out += PrintNumber(static_cast<double>(net.ViewCode[slot][code]) / kKeyScale) + "\t";
  for (int item = 23; item <= kViewItems; ++item)
    out += PrintSingle(net.ViewValue[slot][item]) + "\t";
  out += kCrLf;
}

void AppendViews(std::string& out, const Network& net) {
  out += kViewsHead;
  out += kCrLf;
  AppendViewLine(out, net, 0);
  for (int slot = kFirstUserView; slot <= kLastWrittenView; ++slot)
    if (!net.ViewName[slot].empty()) AppendViewLine(out, net, slot);
  out += kViewsEnd;
  out += kCrLf;
}

void AppendLayers(std::string& out, const Network& net) {
  out += kTagHead;
  out += kCrLf;
  for (int i = 1; i <= kPrimaryLayers; ++i) {
    if (net.PrimaryLayerName[i].empty()) continue;
    out += PrintNumber(i) + "\t" + CleanField(net.PrimaryLayerName[i]) + "\t" +
           PrintNumber(net.PrimaryLayerShow[i]) + kCrLf;
  }
  for (int i = 1; i <= kSecondLayers; ++i) {
    if (net.SecondLayerName[i].empty()) continue;
    out += PrintNumber(-i) + "\t" + CleanField(net.SecondLayerName[i]) + "\t" +
           PrintNumber(net.SecondLayerShow[i]) + kCrLf;
  }
  out += kTagEnd;
  out += kCrLf;
}

void AppendLevels(std::string& out, const Network& net) {
  out += kLevelsHead;
  out += kCrLf;
  for (int slot = 1; slot < kMaxLevels; ++slot) {
    if (net.RLName[slot].empty() && net.RLBound[slot][1] == 0) break;
    out += CleanField(net.RLName[slot]) + "\t" + PrintNumber(net.RLBound[slot][1]) + "\t" +
           PrintNumber(net.RLBound[slot][2]) + kCrLf;
  }
  out += kLevelsEnd;
  out += kCrLf;
}

void AppendTexts(std::string& out, const Network& net) {
  for (int slot = 1; slot <= net.MaxTexts; ++slot) {
    if (net.TextUsed[slot] != -1) continue;
    out += CleanField(net.TextString[slot]);
    for (int k = 1; k <= 3; ++k) out += "\t" + PrintNumber(net.TextCoord[slot][k]);
    out += kCrLf;
  }
  out += kTextEnd;
  out += kCrLf;
}

// Positions to write: the recovery file takes them all; a saved file stops before the first
// record without a location key, as blanked records have none.
int LastWrittenPosition(const Network& net, bool allPositions) {
  if (allPositions) return net.BranchCount;
  int last = 1;
  while (last < net.BranchCount && last < net.MaxAirways - 1 && net.EntryNodeId[last + 1] != 0)
    ++last;
  return last;
}

std::string DateStamp() {
  static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::time_t now = std::time(nullptr);
  std::tm t{};
  localtime_r(&now, &t);
  char clock[16];
  std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", t.tm_hour, t.tm_min, t.tm_sec);
  return std::string(kDays[t.tm_wday]) + ", " + std::to_string(t.tm_mday) + " " +
         kMonths[t.tm_mon] + " " + std::to_string(t.tm_year + 1900) + "   " + clock;
}

void StampNote(std::string& note) {
  if (!note.empty() && note.back() != '\n' && note.back() != '\r') note += '\n';
  note += "*** File Saved " + DateStamp() + " ***\n";
}

void StoreRecent(Workspace& ws, const std::string& path) {
  PushRecentFile(ws, path);
  if (ws.StoreRecentFiles) ws.StoreRecentFiles(ws.RecentFiles);
}

void ForgetRecent(Workspace& ws, const std::string& path) {
  if (RemoveRecentFile(ws, path) && ws.StoreRecentFiles) ws.StoreRecentFiles(ws.RecentFiles);
}

// ---- Reader -----------------------------------------------------------------------------

// Tokens of the comma-separated input of version 1.0: commas and line ends separate them, and
// a quoted text may hold commas.
class TokenStream {
 public:
  explicit TokenStream(NetworkReader& reader) : reader_(reader) {}

  bool Take(std::string& token) {
    while (next_ >= tokens_.size()) {
      if (reader_.AtEnd()) return false;
      reader_.Next();
      Tokenise(reader_.line);
    }
    token = tokens_[next_++];
    return true;
  }

  // True when no token is left; blank lines before the end do not count.
  bool Exhausted() {
    while (next_ >= tokens_.size()) {
      if (reader_.AtEnd()) return true;
      reader_.Next();
      Tokenise(reader_.line);
    }
    return false;
  }

 private:
  void Tokenise(const std::string& line) {
    tokens_.clear();
    next_ = 0;
    AppendInputTokens(line, tokens_);
  }

  NetworkReader& reader_;
  std::vector<std::string> tokens_;
  std::size_t next_ = 0;
};

void ReadViewLine(NetworkReader& r, Network& net, int slot) {
  auto& value = net.ViewValue[slot];
  auto& code = net.ViewCode[slot];
  if (slot != 0) net.ViewName[slot] = r.f[1];
  for (int item = 1; item <= 22; ++item)
    if (!r.f[item + 1].empty()) r.Single(item + 1, value[item]);
  // Codes 1 to 3 are read when field 24 holds something, each from its own field: older
  // files read that way.
  if (!r.f[24].empty())
    for (int k = 1; k <= 3; ++k) r.Currency(23 + k, code[k]);
  if (r.f[27].empty())
    code[4] = 255 * kKeyScale;
  else
    r.Currency(27, code[4]);
  if (!r.f[28].empty()) r.Currency(28, code[5]);
  for (int item = 23; item <= 26; ++item)
    if (!r.f[item + 6].empty()) r.Single(item + 6, value[item]);
}

void ReadViews(NetworkReader& r, Network& net) {
  r.Next();  // "Saved Views"
  r.NextSplit();
  int slot = kFirstUserView;
  if (r.f[1] == kStartupView) {
    ReadViewLine(r, net, 0);
  } else if (!r.LineBegins(kViewsEnd) && !r.PastEnd()) {
    ReadViewLine(r, net, slot++);
  }
  if (!r.LineBegins(kViewsEnd)) {
    for (int n = 0; n < kMoreViewLines; ++n) {
      if (!r.NextSplit() || r.LineBegins(kViewsEnd)) break;
      if (slot <= kMaxViews) ReadViewLine(r, net, slot++);
    }
  }
  const float half = static_cast<float>(net.AxisSignY * kPi / 2);
  net.ViewValue[3][1] = half;
  net.ViewValue[4][1] = half;
  net.ViewValue[5][1] = static_cast<float>(net.AxisSignY);
}

void ReadLayers(NetworkReader& r, Network& net) {
  r.Next();  // "Tag List"
  while (r.NextSplit() && !r.LineBegins("End of Tag")) {
    std::int16_t index = 0;
    r.Whole(1, index);
    if (index >= 1 && index <= kPrimaryLayers) {
      net.PrimaryLayerName[index] = r.f[2];
      r.Whole(3, net.PrimaryLayerShow[index]);
    } else if (-index >= 1 && -index <= kSecondLayers) {
      net.SecondLayerName[-index] = r.f[2];
      r.Whole(3, net.SecondLayerShow[-index]);
    }
  }
}

void ReadLevels(NetworkReader& r, Network& net, bool merge) {
  int base = 0;
  if (merge) {
    if (net.RLCount > kMergedLevelBase) net.RLCount = kMergedLevelBase;
    base = net.RLCount;
  }
  int last = base;
  for (int n = 1; n <= kLevelLines; ++n) {
    if (!r.NextSplit() || r.LineBegins("**END OF RL")) break;
    const int slot = base + n;
    if (slot >= kMaxLevels) continue;
    net.RLName[slot] = r.f[1];
    r.Whole(2, net.RLBound[slot][1]);
    r.Whole(3, net.RLBound[slot][2]);
    last = slot;
  }
  for (int slot = last + 1; slot < kMaxLevels; ++slot) {
    net.RLName[slot].clear();
    net.RLBound[slot] = {};
  }
  net.RLCount = static_cast<std::int16_t>(last);
}

// Floating text: a load fills the slots from 1, a merge adds behind the texts in use.
void ReadTexts(NetworkReader& r, Network& net, bool merge) {
  int slot = 1;
  while (r.NextSplit() && r.f[1] != kTextEnd) {
    if (merge)
      while (slot <= net.MaxTexts && net.TextUsed[slot] == -1) ++slot;
    if (slot > net.MaxTexts) continue;  // lines beyond the slots are read and dropped
    if (r.f[1].empty()) {
      net.TextString[slot].clear();
      net.TextUsed[slot] = 0;
      net.TextCoord[slot] = {};
    } else {
      net.TextString[slot] = r.f[1];
      net.TextUsed[slot] = -1;
      for (int k = 1; k <= 3; ++k) r.Whole(k + 1, net.TextCoord[slot][k]);
    }
    ++slot;
  }
}

// Reads records ahead on every core, before the one-by-one read: each part parses its records
// into their own positions and stops at the first field that would ask a question. Returns how
// many records from `position` on were read without one; the reader then stands after the last
// of them, as the one-by-one read would, and that read goes on from there.
int ReadRecordsAhead(NetworkReader& r, Workspace& ws, int position, int limit) {
  if (!IsTabFormat(r.version) || r.HasUnread()) return 0;
  LineReader& lines = r.Lines();
  const LineReader::Place start = lines.Here();
  std::vector<std::string_view> records;
  std::vector<LineReader::Place> after;
  std::string_view line;
  while (position + static_cast<int>(records.size()) <= limit && lines.ReadLineView(line)) {
    if (line.empty()) continue;
    records.push_back(line);
    after.push_back(lines.Here());
  }
  const int count = static_cast<int>(records.size());
  const int parts = PartCount(count, 3000);
  if (parts < 2) {
    lines.GoBack(start);
    return 0;
  }
  std::vector<int> clean(static_cast<std::size_t>(parts));  // records read up to the first question
  RunInParts(parts, [&](int k) {
    HeadlessUi quiet(HeadlessUi::Policy::AlwaysYes);
    NetworkReader reader(quiet, "");
    reader.version = r.version;
    reader.locale = r.locale;
    int j = PartStart(count, parts, k);
    try {
      for (; j < PartStart(count, parts, k + 1); ++j) {
        reader.line.assign(records[j]);
        reader.SplitRecord();
        ReadAirwayFields(ws, reader, position + j);
        if (!quiet.Records().empty()) break;
      }
    } catch (...) {
      // read again one by one, where a failure can be told
    }
    clean[k] = j;
  });
  int read = 0;
  for (int k = 0; k < parts && read == PartStart(count, parts, k); ++k) read = clean[k];
  for (int j = 0; j < read; ++j) ws.net.UndoNo[position + j] = 0;
  if (read == 0) {
    lines.GoBack(start);
  } else {
    lines.GoBack(after[read - 1]);
    r.line.assign(records[read - 1]);
  }
  return read;
}

// Returns the last position read; MergeBase when the file had no records.
int ReadAirways(NetworkReader& r, Workspace& ws, UiPort& ui) {
  Network& net = ws.net;
  const int limit = net.MaxAirways - 1;
  int position = ws.MergeBase;
  const int ahead = ReadRecordsAhead(r, ws, position, limit);
  bool more = true;
  if (ahead > 0) {
    position += ahead - 1;
    more = !r.AtEnd() && position < limit;
    if (more) ++position;
  }
  while (more) {
    bool got = false;
    while (!r.AtEnd()) {
      r.Next();
      if (!r.line.empty()) {
        got = true;
        break;
      }
    }
    if (got) {
      r.SplitRecord();
      ReadAirwayFields(ws, r, position);
    }
    net.UndoNo[position] = 0;
    if (r.AtEnd() || position >= limit) break;
    ++position;
  }
  if (position >= limit) ui.Message(kMsgFileTooBig, MsgButtons::OK, MsgIcon::Exclamation);
  return position;
}

void ReadLegacyNetwork(NetworkReader& r, Workspace& ws, bool merge, UiPort& ui) {
  Network& net = ws.net;
  if (!merge) net.NetworkTitle = r.f[2];
  if (net.RLCount > kMergedLevelBase) net.RLCount = kMergedLevelBase;
  const int base = merge ? net.RLCount : 0;
  TokenStream tokens(r);
  int last = base;
  for (int n = 1; n <= 99; ++n) {
    std::array<std::string, 3> level;
    for (auto& part : level)
      if (!tokens.Take(part)) r.Next();  // past the end: asked once
    const int slot = base + n;
    if (slot >= kMaxLevels || level[0].empty()) continue;
    net.RLName[slot] = level[0];
    net.RLBound[slot][1] = static_cast<std::int32_t>(RoundHalfEven(Val(level[1])));
    net.RLBound[slot][2] = static_cast<std::int32_t>(RoundHalfEven(Val(level[2])));
    last = slot;
  }
  net.RLCount = static_cast<std::int16_t>(last);

  const int limit = net.MaxAirways - 1;
  int position = ws.MergeBase;
  while (!tokens.Exhausted() && position < limit) {
    for (int i = 1; i <= kSplitFields; ++i) r.f[i].clear();
    for (int field = 1; field <= kLegacyRecordFields; ++field)
      if (!tokens.Take(r.f[field])) r.Next();
    for (int field : {26, 30, 31})
      if (!tokens.Take(r.f[field])) r.Next();
    r.UseTable();
    ReadAirwayFields(ws, r, position);
    net.UndoNo[position] = 0;
    ++position;
  }
  if (position >= limit) ui.Message(kMsgFileTooBig, MsgButtons::OK, MsgIcon::Exclamation);
  net.BranchCount = static_cast<std::int16_t>(position - 1);
}

// The settings part of a load: title, note, defaults, views and layers. Returns the fan count
// of the list head, or -1 for a file so old that its levels come next.
int ReadNetworkSettings(NetworkReader& r, Workspace& ws, UiPort& ui, bool& totalPressures) {
  Network& net = ws.net;
  const float version = r.version;
  net.NetworkTitle = r.f[2];
  net.FileNote = UnescapeNote(r.f[5]);
  if (version < 2.4f) {
    totalPressures = ui.AskYesNo(
        "Galeris now has a 'TOTAL PRESSURE' estimating function for fan power calculation\n\n"
        "Allow Galeris to estimate fan diameters and use this function?  ",
        "Total Pressures");
  }
  if (version < 1.5f) return -1;  // straight to the levels
  while (r.Next() && !r.LineBegins("Defaults List")) {
  }
  if (!r.LineBegins(kDefaultsHead)) return 0;
  bool ok = true;
  if (version <= 2.0f) {
    ok = ReadLegacyDefaultsA(ws, r.Lines(), version, r.locale);
  } else if (version <= 2.7f) {
    ok = ReadLegacyDefaultsB(ws, r.Lines(), version, r.locale);
  } else if (version >= 2.8f) {
    r.Next();
    ok = ReadDefaultsBlock(ws, r.Lines(), version, r.locale);
    ResizeStore(net);
  }
  if (!ok) r.Trap();
  if (version <= 2.7f) {
    if (ws.defaults.ResPreset[1] < kOldBulkheadLimit) ws.defaults.ResPreset[1] = kOldBulkhead;
    ws.defaults.ViewDetail = static_cast<std::int16_t>(ws.defaults.ViewDetail | kOldDisplayBit);
    for (int font = 1; font <= 4; ++font) ws.defaults.Fonts[font].Name = "Arial";
  }
  if (version != 1.5f) {
    ReadViews(r, net);
    ReadLayers(r, net);
  }
  r.NextSplit();
  return static_cast<int>(RoundHalfEven(std::clamp(Val(r.f[5]), -1e9, 1e9)));
}

// The whole file into ws. False when it is refused (not a Galeris file, unknown format).
bool ReadNetworkFile(NetworkReader& r, Workspace& ws, UiPort& ui) {
  Network& net = ws.net;
  const bool merge = ws.MergeBase > 1;
  r.Next();
  r.version = VersionOf(r.line);
  r.locale = LocaleOfHeader(r.line);
  SplitLine(r.version, r.line.size() > 4 ? std::string_view(r.line).substr(4) : "", r.f, r.locale);
  r.UseTable();
  if (r.f[1].compare(0, 7, "GALERIS") != 0) {
    ui.Message(kMsgNotGaleris, MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  net.AxisSignX = AxisSign(r.f[3]);
  net.AxisSignY = AxisSign(r.f[4]);
  if (r.version < 1.1f) {
    if (r.version != 1.0f) {
      ui.Message(kMsgCannotRead, MsgButtons::OK, MsgIcon::Exclamation);
      return false;
    }
    ReadLegacyNetwork(r, ws, merge, ui);
    return true;
  }

  bool totalPressures = false;
  int fanCount = 0;
  bool levelsNext = false;
  if (merge) {
    // A merge takes only fans, levels, texts and airways. Files before 1.5 have no fan list and
    // 1.5 has no tag list: their levels, or their fan head, are found directly.
    levelsNext = r.version < 1.5f;
    if (!levelsNext) {
      const char* before = r.version == 1.5f ? "Fan Name" : "End of Tag";
      while (r.Next() && !r.LineBegins(before)) {
      }
      if (r.version == 1.5f) r.Unread();
      r.NextSplit();
      fanCount = static_cast<int>(RoundHalfEven(std::clamp(Val(r.f[5]), -1e9, 1e9)));
    }
  } else {
    fanCount = ReadNetworkSettings(r, ws, ui, totalPressures);
    levelsNext = fanCount < 0;
  }
  int fanOffset = 0;
  if (!levelsNext) fanOffset = ReadFanList(ws, r, fanCount, totalPressures);

  r.Next();  // the end of the fan list, or the levels head
  ReadLevels(r, net, merge);
  const bool roomForAirways = ws.MergeBase < net.MaxAirways - 1;
  if (!roomForAirways) ui.Message(kMsgFileTooBig, MsgButtons::OK, MsgIcon::Exclamation);
  if (r.AtEnd()) return true;
  if (r.version >= 2.6f) ReadTexts(r, net, merge);
  if (!roomForAirways) return true;
  r.Next();  // the record labels
  net.BranchCount = static_cast<std::int16_t>(ReadAirways(r, ws, ui));

  if (merge) {
    for (int i = ws.MergeBase; i <= net.BranchCount; ++i)
      if (net.FanNumber[i] != 0)
        net.FanNumber[i] = static_cast<std::int16_t>(net.FanNumber[i] + fanOffset);
  }
  return true;
}

// After the records: saved state, the surface level's name, layers shown, node keys.
void FinishLoad(Workspace& ws, UiPort& ui) {
  Network& net = ws.net;
  net.NetworkSaved = 0xFF;
  net.NetworkBalanced = 0;
  if (net.RLName[1].empty()) net.RLName[1] = "SURFACE";
  for (int i = 1; i <= kSecondLayers; ++i) net.SecondLayerShow[i] = -1;
  for (int i = 1; i <= 8; ++i) net.PrimaryLayerShow[i] = -1;
  RebuildNodes(net, ws.defaults, ui);
}

// The workspace a load reads into: for a merge a copy of the open network, for a load an
// empty store of the same capacities. Settings, units and folders come along.
void PrepareTarget(const Workspace& ws, Workspace& target) {
  target.defaults = ws.defaults;
  target.units = ws.units;
  target.paths = ws.paths;
  target.MergeBase = ws.MergeBase;
  target.MasterMode = ws.MasterMode;
  if (ws.MergeBase > 1) {
    target.net = ws.net;
    return;
  }
  Network& net = target.net;
  net.MaxAirways = ws.net.MaxAirways;
  net.UndoMax = ws.net.UndoMax;
  net.FanMax = ws.net.FanMax;
  net.MaxTexts = ws.net.MaxTexts;
  net.NextAirwayNo = ws.net.NextAirwayNo;
  net.FanDatabaseSerial = ws.net.FanDatabaseSerial;
  net.FileName = ws.net.FileName;
  ClearNetwork(target);
  for (int slot = 1; slot < kFirstUserView; ++slot) {
    net.ViewName[slot] = ws.net.ViewName[slot];
    net.ViewValue[slot] = ws.net.ViewValue[slot];
    net.ViewCode[slot] = ws.net.ViewCode[slot];
  }
}

// A name such as "D:\mines\a.sim", carried over in a recent list from another machine.
bool NamesADrive(const std::string& path) {
  return path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
         (path[2] == '\\' || path[2] == '/');
}

// Open errors that end the load at once: a missing file, folder or drive.
bool FileIsMissing(Workspace& ws, const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code ec;
  if (fs::exists(path, ec)) return false;
  const fs::path parent = fs::path(path).parent_path();
  const bool folderMissing = !parent.empty() && !fs::is_directory(parent, ec);
  const char* text = NamesADrive(path) ? kMsgError68 : folderMissing ? kMsgError76 : kMsgError53;
  ws.ui.Message(text, MsgButtons::OK, MsgIcon::Exclamation);
  ws.net.FileName.clear();
  return true;
}

}  // namespace

// ---- Reader state -------------------------------------------------------------------------

bool NetworkReader::Next() {
  if (pushedBack_) {
    pushedBack_ = false;
    return true;
  }
  if (in_.ReadLine(line)) return true;
  line.clear();
  if (!pastEnd_) {
    pastEnd_ = true;
    Trap();
    // Going on past the end: what fails from here on is only the missing rest, not asked again.
    quietPastEnd_ = true;
  }
  return false;
}

bool NetworkReader::AtEnd() {
  return !pushedBack_ && in_.AtEnd();
}

void NetworkReader::SplitRecord() {
  if (!IsTabFormat(version)) return Split();
  const std::string_view view =
      MapDecimalMarks(line, locale, mappedLine_) ? std::string_view(mappedLine_) : line;
  fieldCount_ = SplitTabViews(view, fields_);
  recordViews_ = true;
}

void NetworkReader::Trap() {
  if (quietPastEnd_) return;
  if (ui_.Message(std::string(kMsgLoadError) + "\n" + kMsgContinueLoading, MsgButtons::YesNo,
                  MsgIcon::Critical, "Error") != MsgAnswer::Yes)
    throw LoadAbandoned{};
}

void NetworkReader::Strict(int field, float& target) {
  double v = 0;
  if (!StrictNumber(Field(field), v) || std::fabs(v) > FLT_MAX) return Trap();
  target = static_cast<float>(v);
}

namespace {

// The quick way of the whole-number fields: a plain whole number is stored as it stands, or
// traps when it lies outside lowest..the largest of T. False when the field is no plain whole
// number, which then takes the general way.
template <class T>
bool TakePlainWhole(NetworkReader& r, int field, long long lowest, T& target) {
  long long whole = 0;
  if (!PlainWhole(r.Field(field), whole)) return false;
  if (whole < lowest || whole > std::numeric_limits<T>::max())
    r.Trap();
  else
    target = static_cast<T>(whole);
  return true;
}

}  // namespace

void NetworkReader::StrictWhole(int field, std::int32_t& target) {
  if (TakePlainWhole(*this, field, -2147483647, target)) return;
  double v = 0;
  if (!StrictNumber(Field(field), v) || std::fabs(v) > 2147483647.0) return Trap();
  target = static_cast<std::int32_t>(RoundHalfEven(v));
}

void NetworkReader::Whole(int field, std::int16_t& target) {
  if (TakePlainWhole(*this, field, -32768, target)) return;
  const double v = Val(Field(field));
  if (!(std::fabs(v) < 1e9)) return Trap();
  const long long r = RoundHalfEven(v);
  if (r < -32768 || r > 32767) return Trap();
  target = static_cast<std::int16_t>(r);
}

void NetworkReader::Whole(int field, std::int32_t& target) {
  if (TakePlainWhole(*this, field, -2147483647, target)) return;
  const double v = Val(Field(field));
  if (!(std::fabs(v) <= 2147483647.0)) return Trap();
  target = static_cast<std::int32_t>(RoundHalfEven(v));
}

void NetworkReader::Single(int field, float& target) {
  const double v = Val(Field(field));
  if (!(std::fabs(v) <= FLT_MAX)) return Trap();
  target = static_cast<float>(v);
}

void NetworkReader::Currency(int field, std::int64_t& target) {
  const double v = Val(Field(field)) * kKeyScale;
  if (!(std::fabs(v) <= 9.2e18)) return Trap();
  target = static_cast<std::int64_t>(RoundHalfEven(v));
}

// ---- Records ----------------------------------------------------------------------------

void ReadAirwayFields(Workspace& ws, NetworkReader& r, int p) {
  Network& n = ws.net;
  const float version = r.version;
  n.EntryNodeName[p] = r.Field(1);
  n.ExitNodeName[p] = r.Field(2);
  n.BranchName[p] = r.Field(3);
  r.Currency(4, n.EntryNodeId[p]);
  r.Currency(5, n.ExitNodeId[p]);
  for (int k = 1; k <= 3; ++k) {
    r.StrictWhole(5 + k, n.Coord1[p][k]);
    r.StrictWhole(8 + k, n.Coord2[p][k]);
  }
  r.Strict(12, n.Dim[p][1]);
  r.Strict(13, n.Dim[p][2]);
  r.Whole(14, n.BranchCode[p]);
  r.Whole(15, n.ResType[p]);
  if (version <= 2.0f && n.ResType[p] == 10) n.ResType[p] = kUserGiven;
  r.Whole(16, n.ShockType[p]);
  if (version < 2.9f && n.ShockType[p] == 6) n.ShockType[p] = kUserGiven;
  r.Whole(17, n.WallType[p]);
  if (version < 2.9f && n.WallType[p] == 10) n.WallType[p] = kUserGiven;
  r.Strict(18, n.WallFactor[p]);
  r.Strict(19, n.ShockFactor[p]);
  n.Comment[p] = r.Field(20);
  r.Strict(21, n.Resistance[p]);
  r.Strict(22, n.Quantity[p]);
  r.Whole(23, n.FanNumber[p]);
  r.Whole(24, n.NoOfFans[p]);
  r.Strict(25, n.Length[p]);
  // An older, shorter record keeps what the slot held for the pressures and layers.
  if (!r.Field(26).empty()) r.Strict(26, n.Pressure[p]);
  if (!r.Field(27).empty()) r.Single(27, n.Contaminant[p]);
  if (!r.Field(28).empty()) r.Whole(28, n.PrimaryLayer[p]);
  if (!r.Field(29).empty()) r.Whole(29, n.SecondLayer[p]);
  if (!r.Field(30).empty()) r.Strict(30, n.FromNodeP[p]);
  if (!r.Field(31).empty()) r.Strict(31, n.ToNodeP[p]);
  r.Whole(32, n.UndoNo[p]);
  r.Whole(33, n.AirwayNo[p]);
  r.Single(34, n.LabelPos[p]);
  r.Whole(35, n.RemoteStation[p]);
  r.Whole(36, n.ParallelCount[p]);
  r.Whole(37, n.CurveFraction[p]);
  r.Whole(38, n.SmokeData[p][1]);
  r.Whole(39, n.SmokeData[p][2]);
  n.TreeMark[p] = 0;
}

void ReadAirwayRecord(Workspace& ws, const std::string& line, int position, float version) {
  // The journal's own records: a field it cannot read keeps the slot's value, with no question.
  HeadlessUi quiet(HeadlessUi::Policy::AlwaysYes);
  NetworkReader reader(quiet, "");
  reader.version = version;
  reader.line = line;
  reader.Split();
  ReadAirwayFields(ws, reader, position);
}

std::string FormatAirwayRecord(const Network& net, int p) {
  std::string s;
  s.reserve(256);
  AppendAirwayRecord(s, net, p);
  return s;
}

void AppendAirwayRecord(std::string& s, const Network& net, int p) {
  // The record is made in a buffer that holds the longest one: four texts of at most 40
  // characters and a tab, and the other fields with room for any number.
  char buffer[4 * 41 + 39 * kSingleTextSize];
  char* out = buffer;
  const auto text = [&out](const auto& field) {
    // Without the blanks around it, and with no tab or line end inside.
    const auto chars = field.Chars();
    std::string_view t(chars.data(), chars.size());
    const std::size_t a = t.find_first_not_of(' ');
    t = a == std::string_view::npos ? std::string_view()
                                    : t.substr(a, t.find_last_not_of(' ') - a + 1);
    for (char c : t) *out++ = c == '\t' || c == '\r' || c == '\n' ? ' ' : c;
    *out++ = '\t';
  };
  const auto whole = [&out](long long v) {
    out = std::to_chars(out, out + kSingleTextSize, v).ptr;
    *out++ = '\t';
  };
  const auto single = [&out](float v) {
    out = WriteGeneralSingle(out, v);
    *out++ = '\t';
  };
  text(net.EntryNodeName[p]);
  text(net.ExitNodeName[p]);
  text(net.BranchName[p]);
  *out++ = '\t';
  *out++ = '\t';
  for (int k = 1; k <= 3; ++k) whole(net.Coord1[p][k]);
  for (int k = 1; k <= 3; ++k) whole(net.Coord2[p][k]);
  single(net.Dim[p][1]);
  single(net.Dim[p][2]);
  whole(net.BranchCode[p]);
  whole(net.ResType[p]);
  whole(net.ShockType[p]);
  whole(net.WallType[p]);
  single(net.WallFactor[p]);
  single(net.ShockFactor[p]);
  text(net.Comment[p]);
  single(net.Resistance[p]);
  single(net.Quantity[p]);
  whole(net.FanNumber[p]);
  whole(net.NoOfFans[p]);
  single(net.Length[p]);
  single(net.Pressure[p]);
  single(net.Contaminant[p]);
  whole(net.PrimaryLayer[p]);
  whole(net.SecondLayer[p]);
  single(net.FromNodeP[p]);
  single(net.ToNodeP[p]);
  whole(net.UndoNo[p]);
  whole(net.AirwayNo[p]);
  single(net.LabelPos[p]);
  whole(net.RemoteStation[p]);
  whole(net.ParallelCount[p]);
  whole(net.CurveFraction[p]);
  whole(net.SmokeData[p][1]);
  out = std::to_chars(out, out + kSingleTextSize, net.SmokeData[p][2]).ptr;
  s.append(buffer, out);
}

std::string EscapeNote(const std::string& text) {
  std::string s = text;
  for (char& c : s) {
    if (c == '\n')
      c = 29;
    else if (c == '\r')
      c = 30;
    else if (c == '\t')
      c = 31;
  }
  return s;
}

bool NoteHasWords(const std::string& note) {
  std::size_t start = 0;
  while (start < note.size()) {
    std::size_t end = note.find_first_of("\r\n", start);
    if (end == std::string::npos) end = note.size();
    const std::string line = TrimBlanks(note.substr(start, end - start));
    if (!line.empty() && !line.starts_with("*** File Saved ")) return true;
    start = end + 1;
  }
  return false;
}

std::string UnescapeNote(const std::string& text) {
  std::string s = text;
  for (char& c : s) {
    if (c == 29)
      c = '\n';
    else if (c == 30)
      c = '\r';
    else if (c == 31)
      c = '\t';
  }
  return s;
}

// ---- Load and save ----------------------------------------------------------------------

namespace {

// The load proper; the recent list is kept by the caller.
bool ReadNetworkInto(Workspace& ws, const std::string& path) {
  if (IsMasterFile(path)) ws.ui.Message(kMsgMasterLoad, MsgButtons::OK, MsgIcon::Exclamation);
  if (FileIsMissing(ws, path)) return false;

  Workspace target(ws.ui);
  PrepareTarget(ws, target);
  target.defaults.SurfaceRL = 99999;
  NetworkReader reader(ws.ui, path);
  try {
    if (!reader.IsOpen() || std::filesystem::is_directory(path)) {
      reader.Trap();
      return false;  // nothing can be read, whatever the answer
    }
    if (!ReadNetworkFile(reader, target, ws.ui)) return false;
  } catch (const LoadAbandoned&) {
    return false;
  }
  FinishLoad(target, ws.ui);
  if (IsMasterFile(path) && path.size() >= 4)
    target.net.FileName = path.substr(0, path.size() - 4) + ".sim";
  ws.net = std::move(target.net);
  ws.defaults = std::move(target.defaults);
  ws.units.UnitSystem = target.units.UnitSystem;  // the screen shows the network's own units
  return true;
}

}  // namespace

bool LoadNetwork(Workspace& ws) {
  const std::string path = ws.net.FileName;
  const bool loaded = ReadNetworkInto(ws, path);
  // A file that could not be opened leaves the recent list, so it is not offered again.
  if (path == ws.paths.InTemp(kRecoveryFileName)) return loaded;
  if (loaded)
    StoreRecent(ws, path);
  else
    ForgetRecent(ws, path);
  return loaded;
}

namespace {

// The records of positions first..last, each with its line end.
void AppendRecordRange(std::string& out, const Network& net, int first, int last) {
  for (int p = first; p <= last; ++p) {
    AppendAirwayRecord(out, net, p);
    out += kCrLf;
  }
}

// Records go into pieces of this many, made on every core and written in order.
constexpr int kRecordsPerPiece = 1500;

// The records of positions 1..last in pieces, made on every core and handed to use(piece) in
// order; false when a use refused its piece.
template <class Use>
bool MakeRecordPieces(const Network& net, int last, Use&& use) {
  const int pieces = last > 0 ? (last + kRecordsPerPiece - 1) / kRecordsPerPiece : 0;
  return MakeInOrder(
      pieces,
      [&](int k, std::string& piece) {
        const int first = 1 + k * kRecordsPerPiece;
        const int end = std::min(last, first + kRecordsPerPiece - 1);
        piece.reserve(static_cast<std::size_t>(end - first + 1) * 230);
        AppendRecordRange(piece, net, first, end);
      },
      [&](int, const std::string& piece) { return use(piece); });
}

// Everything before the airway records.
std::string FormatNetworkHead(const Workspace& ws) {
  const Network& net = ws.net;
  std::string out;
  out.reserve(65536);
  AppendHeader(out, net);
  out += kDefaultsHead;
  out += kCrLf;
  out += DefaultsHeadLine();
  out += kCrLf;
  out += FormatDefaultsBlock(ws);
  AppendViews(out, net);
  AppendLayers(out, net);
  out += FormatNetworkFanList(net);
  AppendLevels(out, net);
  AppendTexts(out, net);
  out += kRecordLabels;
  out += kCrLf;
  return out;
}

// The file written piece by piece: the head, then the records as each piece is made.
bool WriteNetworkFile(const std::string& path, const Workspace& ws, bool allPositions) {
  const int last = LastWrittenPosition(ws.net, allPositions);
  WholeFileWriter writer(path);
  if (!writer.Append(FormatNetworkHead(ws))) return false;
  return MakeRecordPieces(ws.net, last,
                          [&](const std::string& piece) { return writer.Append(piece); }) &&
         writer.Commit();
}

}  // namespace

std::string FormatNetworkFile(const Workspace& ws, bool allPositions) {
  const int last = LastWrittenPosition(ws.net, allPositions);
  std::string out = FormatNetworkHead(ws);
  out.reserve(out.size() + static_cast<std::size_t>(last) * 230);
  MakeRecordPieces(ws.net, last, [&](const std::string& piece) {
    out += piece;
    return true;
  });
  return out;
}

bool GasSimulationBlocksSave(UiPort& ui, int smokeState) {
  if (smokeState == 0) return false;
  ui.Message(kMsgClearGasFirst, MsgButtons::OK, MsgIcon::Exclamation);
  return true;
}

bool SaveNetwork(Workspace& ws, int tempMode) {
  const bool temp = tempMode == 1;
  // The recovery file is written regardless: a message at every autosave tick would stop work.
  if (!temp && ws.ShownSmokeState && GasSimulationBlocksSave(ws.ui, ws.ShownSmokeState()))
    return false;
  if (!temp && ws.MasterMode && !ws.ui.AskYesNo(kMsgMasterSave, "Master File", MsgIcon::Question))
    return false;
  const std::string note = ws.net.FileNote;
  if (!temp) {
    StampNote(ws.net.FileNote);
    if (ws.net.FileName.empty()) return false;
    StoreRecent(ws, ws.net.FileName);
  }
  const std::string path = temp ? ws.paths.InTemp(kRecoveryFileName) : ws.net.FileName;
  if (!WriteNetworkFile(path, ws, temp)) {
    ws.net.FileNote = note;  // nothing was saved, so the note says no more than before
    if (!temp) ws.ui.Message(kMsgSaveFailed, MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  if (!temp) ws.net.NetworkSaved = 0xFF;
  return true;
}

}  // namespace galeris
