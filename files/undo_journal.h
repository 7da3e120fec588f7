// The undo and redo journal: whole airway records kept in undo.dat in the temporary folder, in
// fixed records of 256 characters, with a small index in memory (UndoOrder of the store). Every
// edit records each airway it touches before and after the change under one action number;
// undo and redo replay those records by action number.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <unordered_map>

#include "core/workspace.h"

namespace galeris {

inline constexpr int kUndoRecordLength = 256;
inline constexpr const char* kUndoFileName = "undo.dat";
inline constexpr int kUndoMark = 3;  // an entry without a stored record, passed over on replay
// An entry without a stored record: the action exchanged the two axis signs, so undo and redo
// exchange them again.
inline constexpr int kUndoAxisSignsSwapped = 4;

inline constexpr const char* kMsgUndoBufferFull = "Undo buffer full - clearing buffer ...";
inline constexpr const char* kMsgNoMoreUndo = "No more actions to undo";
inline constexpr const char* kMsgNoMoreRedo = "No more actions available to redo";
inline constexpr const char* kMsgUndoNoRoom =
    "Insufficient memory for undo function - please increase file size in defaults";

class UndoFile : public UndoJournal {
 public:
  explicit UndoFile(Workspace& ws) : ws_(ws) {}

  // Closes, deletes and recreates undo.dat and empties the index. At start-up and whenever the
  // network is loaded or cleared.
  void ResetUndoFile();

  void RecordUndo(int position, int kind, int action) override;
  int UndoAction() const override { return undoAction_; }
  void SetUndoAction(int action) override { undoAction_ = static_cast<std::int16_t>(action); }

  // mnuUndo and mnuRedo. True when the store changed; the caller rebuilds the views.
  bool Undo();
  bool Redo();

  int UndoWritePos() const { return writePos_; }
  // True when the last undo or redo exchanged the axis signs ("Swap XY Axis").
  bool AxesSwappedByReplay() const { return axesSwapped_; }

 private:
  void WriteRecord(int entry, const std::string& line);
  std::string ReadRecord(int entry);
  int FindByUndoNo(int undoNo) const;
  bool AppendRecord(int entry);  // false when the store is full
  void AfterReplay();

  Workspace& ws_;
  std::fstream file_;
  std::string path_;
  std::int16_t writePos_ = 1;    // UndoWritePos: next free entry
  std::int16_t undoAction_ = 1;  // UndoAction
  std::int32_t serial_ = 0;      // UndoSerial: last UndoNo handed out
  bool resumed_ = false;         // UndoResumed
  bool axesSwapped_ = false;
  // The entries of the action being recorded that hold an airway's state after it, by UndoNo,
  // so that an airway touched twice in one action keeps one pair of records.
  std::unordered_map<std::int32_t, int> afterEntries_;
  int recordingAction_ = 0;
};

}  // namespace galeris
