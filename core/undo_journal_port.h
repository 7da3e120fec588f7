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

}  // namespace galeris
