// The undo journal: index entries of (action, kind, UndoNo) in the store's UndoOrder, the
// airway records in a random-access scratch file. An airway's UndoNo is its identity inside the
// journal; after an undo the airway stands at the end of the store, so only its AirwayNo and
// UndoNo say who it is.
#include "files/undo_journal.h"

#include <filesystem>
#include <utility>

#include "files/lifecycle.h"
#include "files/network_file.h"

namespace galeris {
namespace {

constexpr float kRecordVersion = 2.6f;  // the rules the journal's records are read with

}  // namespace

void UndoFile::ResetUndoFile() {
  if (file_.is_open()) file_.close();
  path_ = ws_.paths.InTemp(kUndoFileName);
  std::error_code ec;
  std::filesystem::remove(path_, ec);
  file_.open(path_, std::ios::in | std::ios::out | std::ios::binary | std::ios::trunc);
  Network& net = ws_.net;
  for (auto& entry : net.UndoOrder) entry = {};
  // Identities handed out in an earlier session mean nothing to this journal.
  for (int i = 0; i < static_cast<int>(net.UndoNo.size()); ++i) net.UndoNo[i] = 0;
  writePos_ = 1;
  undoAction_ = 1;
  serial_ = 0;
  resumed_ = false;
  afterEntries_.clear();
}

void UndoFile::WriteRecord(int entry, const std::string& line) {
  if (!file_.is_open()) ResetUndoFile();
  std::string record = line.substr(0, kUndoRecordLength);
  record.resize(kUndoRecordLength, ' ');
  file_.clear();
  file_.seekp(static_cast<std::streamoff>(entry - 1) * kUndoRecordLength);
  file_.write(record.data(), kUndoRecordLength);
  file_.flush();
}

std::string UndoFile::ReadRecord(int entry) {
  std::string record(kUndoRecordLength, ' ');
  if (!file_.is_open()) return {};
  file_.clear();
  file_.seekg(static_cast<std::streamoff>(entry - 1) * kUndoRecordLength);
  file_.read(record.data(), kUndoRecordLength);
  record.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, file_.gcount())));
  const std::size_t end = record.find_last_not_of(' ');
  record.resize(end == std::string::npos ? 0 : end + 1);
  return record;
}

void UndoFile::RecordUndo(int position, int kind, int action) {
  Network& net = ws_.net;
  MarkNetworkChanged(ws_);
  if (action != recordingAction_) {
    afterEntries_.clear();
    recordingAction_ = action;
  }
  const bool holdsAirway = kind == kAfter || kind == kBefore;
  if (holdsAirway && net.UndoNo[position] != 0) {
    const auto known = afterEntries_.find(net.UndoNo[position]);
    if (known != afterEntries_.end()) {
      // Touched before in this action: its state before the action is on record already, and
      // its state after the action replaces the one recorded.
      if (kind == kAfter) WriteRecord(known->second, FormatAirwayRecord(net, position));
      return;
    }
  }
  if (!resumed_) {
    // The first entry of a new action cuts the redo tail.
    for (int e = 1; e <= writePos_ && e < static_cast<int>(net.UndoOrder.size()); ++e) {
      if (net.UndoOrder[e][1] == action) {
        writePos_ = static_cast<std::int16_t>(e);
        break;
      }
    }
    resumed_ = true;
  }
  if (holdsAirway && (kind == kAfter || net.UndoNo[position] == 0))
    net.UndoNo[position] = ++serial_;
  auto& entry = net.UndoOrder[writePos_];
  entry[1] = static_cast<std::int16_t>(action);
  entry[2] = static_cast<std::int16_t>(kind);
  entry[3] = 0;
  if (holdsAirway) {
    // Column 3 is 16 bits: past 32767 serials an airway is no longer found, which is accepted.
    entry[3] = static_cast<std::int16_t>(net.UndoNo[position]);
    WriteRecord(writePos_, FormatAirwayRecord(net, position));
    if (kind == kAfter) afterEntries_[net.UndoNo[position]] = writePos_;
  }
  if (writePos_ + 1 > net.UndoMax) {
    ws_.ui.Inform(kMsgUndoBufferFull);
    writePos_ = 1;
    afterEntries_.clear();
  } else {
    ++writePos_;
  }
}

int UndoFile::FindByUndoNo(int undoNo) const {
  const Network& net = ws_.net;
  for (int i = net.BranchCount; i >= 1; --i) {
    if (net.BranchCode[i] != 0 && net.UndoNo[i] == undoNo) return i;
  }
  return 0;
}

bool UndoFile::AppendRecord(int entry) {
  Network& net = ws_.net;
  if (net.BranchCount + 1 > net.MaxAirways) {
    ws_.ui.Inform(kMsgUndoNoRoom);
    net.BranchCount = static_cast<std::int16_t>(net.MaxAirways);
    return false;
  }
  ++net.BranchCount;
  BlankAirway(net, net.BranchCount);
  const std::string line = ReadRecord(entry);
  if (!line.empty()) ReadAirwayRecord(ws_, line, net.BranchCount, kRecordVersion);
  return true;
}

void UndoFile::AfterReplay() {
  CompactAirways(ws_.net);
  RebuildNodes(ws_.net, ws_.defaults, ws_.ui);
  MarkNetworkChanged(ws_);
}

bool UndoFile::Undo() {
  axesSwapped_ = false;
  afterEntries_.clear();
  recordingAction_ = 0;
  ws_.ui.SetBusy(true);
  --undoAction_;
  if (undoAction_ < 1) {
    undoAction_ = 1;
    ws_.ui.Inform(kMsgNoMoreUndo);
    ws_.ui.SetBusy(false);
    return false;
  }
  Network& net = ws_.net;
  bool changed = false;
  for (int e = writePos_ - 1; e >= 1; --e) {
    const auto& entry = net.UndoOrder[e];
    if (entry[1] < undoAction_) break;
    if (entry[1] != undoAction_) continue;
    if (entry[2] == kAfter) {
      const int i = FindByUndoNo(entry[3]);
      if (i != 0) {
        BlankAirway(net, i);
        changed = true;
      }
    } else if (entry[2] == kBefore) {
      changed = AppendRecord(e) || changed;
    } else if (entry[2] == kUndoAxisSignsSwapped) {
      std::swap(net.AxisSignX, net.AxisSignY);
      axesSwapped_ = changed = true;
    }
  }
  if (changed) resumed_ = false;
  AfterReplay();
  ws_.ui.SetBusy(false);
  return changed;
}

bool UndoFile::Redo() {
  axesSwapped_ = false;
  afterEntries_.clear();
  recordingAction_ = 0;
  ws_.ui.SetBusy(true);
  Network& net = ws_.net;
  bool changed = false;
  for (int pass = 0; pass < 2; ++pass) {
    for (int e = writePos_ - 1; e >= 1; --e) {
      const auto& entry = net.UndoOrder[e];
      if (entry[1] < undoAction_) break;
      if (entry[1] != undoAction_) continue;
      if (pass == 0 && entry[2] == kBefore) {
        const int i = FindByUndoNo(entry[3]);
        if (i != 0) {
          BlankAirway(net, i);
          changed = true;
        }
      } else if (pass == 0 && entry[2] == kUndoAxisSignsSwapped) {
        std::swap(net.AxisSignX, net.AxisSignY);
        axesSwapped_ = changed = true;
      } else if (pass == 1 && entry[2] == kAfter) {
        changed = AppendRecord(e) || changed;
      }
    }
  }
  if (!changed) ws_.ui.Inform(kMsgNoMoreRedo);
  // A redo past the end of the journal still moves the counter on.
  ++undoAction_;
  AfterReplay();
  ws_.ui.SetBusy(false);
  return changed;
}

}  // namespace galeris
