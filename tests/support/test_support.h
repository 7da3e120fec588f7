// Helpers shared by the tests: fixture paths in the source tree, scratch folders in TMPDIR,
// whole-file reads and writes.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/network_store.h"
#include "core/undo_journal_port.h"

namespace galeris::test {

// A file of the source tree, e.g. SourcePath("tests/files/fixtures/a.sim").
std::string SourcePath(const std::string& relative);
// A new empty folder under TMPDIR, with a trailing separator.
std::string ScratchDir();
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

// Appends one ordinary rectangular airway from (x1,y1,z1) to (x2,y2,z2); returns its position.
int AddAirway(Network& net, int x1, int y1, int z1, int x2, int y2, int z2);
// The store position of the airway numbered `airwayNo`, or 0.
int AtNumber(const Network& net, int airwayNo);

// An undo journal that keeps every entry, with a value of the record taken by `capture` as the
// entry is made, and counts the closes of its actions.
struct JournalSpy : UndoJournal {
  struct Entry {
    int position, kind, action;
    double value;
    bool operator==(const Entry&) const = default;
  };
  explicit JournalSpy(int first = 1, std::function<double(int)> take = {})
      : action(first), capture(std::move(take)) {}
  void RecordUndo(int position, int kind, int act) override {
    entries.push_back({position, kind, act, capture ? capture(position) : 0});
  }
  int UndoAction() const override { return action; }
  void SetUndoAction(int a) override {
    action = a;
    ++closes;
  }
  std::vector<Entry> entries;
  int action, closes = 0;
  std::function<double(int)> capture;
};

}  // namespace galeris::test
