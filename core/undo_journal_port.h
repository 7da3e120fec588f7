// What the engine needs of the undo journal to make its own changes undoable: records of an
// airway before and after a change, grouped under one action number. The journal unit
// implements it; a workspace without a journal (a test, the command line) holds none.
#pragma once

namespace galeris {

class UndoJournal {
 public:
  // The kinds of a journal entry: the airway's state after the action, or before it.
  static constexpr int kAfter = 1;
  static constexpr int kBefore = 2;

  virtual ~UndoJournal() = default;

  // Adds an entry for the airway at this store position under the given action number.
  virtual void RecordUndo(int position, int kind, int action) = 0;
  // The number under which the next group of entries is recorded.
  virtual int UndoAction() const = 0;
  // Closes a group: later entries belong to a new action.
  virtual void SetUndoAction(int action) = 0;
};

// Shorthands for an edit command: each touched airway is recorded before and after under the
// current action, and the command closes its action once when it has changed something. With
// no journal they do nothing.
inline void JournalBefore(UndoJournal* journal, int position) {
  if (journal) journal->RecordUndo(position, UndoJournal::kBefore, journal->UndoAction());
}
inline void JournalAfter(UndoJournal* journal, int position) {
  if (journal) journal->RecordUndo(position, UndoJournal::kAfter, journal->UndoAction());
}
inline void CloseUndoAction(UndoJournal* journal) {
  if (journal) journal->SetUndoAction(journal->UndoAction() + 1);
}

}  // namespace galeris
