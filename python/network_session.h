// One open network for a script: its own store, settings and headless UI port, so that many
// live side by side in one process. Edits go by AirwayNo, the identity that outlives the sorts
// of a run. Every solve answers as a fresh load of the same network saved would: values are
// stored as the file keeps them (seven digits), and the results of an earlier solve in memory
// pass through the file's text before the next one.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/headless_ui.h"
#include "core/workspace.h"

namespace galeris::scripting {

// A file the program refuses: what carries the program's own message.
struct FileRefused : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// An airway number the network does not hold, or a value the edit cannot take.
struct EditRefused : std::invalid_argument {
  using std::invalid_argument::invalid_argument;
};

struct SolveReport {
  std::string status;  // "clean", "warnings" or "failed"
  int sweeps = 0;
  int meshes = 0;
  bool converged = false;
  bool checked = false;  // the self-check ran
  double continuity = 0, loop = 0;
  std::vector<std::string> errors;    // "AirwayNo<TAB>label"
  std::vector<std::string> messages;  // "Title: text", as a desktop user would have seen them
};

struct SpreadReport {
  std::string end;  // "finished", "not balanced", "no data", "no source", "failed"
  int sources = 0;
  std::vector<std::string> messages;
};

// Per airway, in AirwayNo order: the columns of a table.
struct AirwayColumns {
  std::vector<std::int32_t> no;
  std::vector<std::string> name, entry, exit;
  std::vector<std::int32_t> x1, y1, z1, x2, y2, z2;
  std::vector<std::int64_t> entryKey, exitKey;
  std::vector<float> resistance, quantity, pressure, fromPressure, toPressure;
  std::vector<std::int16_t> fan, fans;
  std::vector<std::uint8_t> fixedQuantity, fixedResistance, fixedDirection, blocked;
};

class NetworkSession {
 public:
  // Loads a network file with the settings of programFolder; FileRefused when refused.
  static std::unique_ptr<NetworkSession> Open(const std::string& path,
                                              const std::string& programFolder);
  std::unique_ptr<NetworkSession> Copy() const;
  // Makes target a copy of this one in the store target already has: far quicker than a new
  // store once target has held a network of this size.
  void CopyTo(NetworkSession& target) const;

  // answers: "no" or "yes", the answer to every question; "yes" to "Convergence Warning"
  // is bounded, as on the command line, so a script never hangs.
  SolveReport Solve(bool newton, bool answerYes);
  // Sources by AirwayNo; the network's own sources stay, those given are taken back after.
  SpreadReport Spread(const std::vector<std::int32_t>& nos, const std::vector<float>& values,
                      bool fixedMode, bool answerYes);
  // After Spread: concentration and arrival seconds in AirwayNo order (kNeverReached if never).
  void SpreadColumns(std::vector<std::int32_t>& no, std::vector<std::int16_t>& concentration,
                     std::vector<float>& seconds) const;

  AirwayColumns Airways() const;
  // AirwayNo, Quantity and entry key in store order: the quick view of a solution.
  void Flows(std::vector<std::int32_t>& no, std::vector<float>& quantity,
             std::vector<std::int64_t>& entryKey) const;

  void SetResistance(std::int32_t no, float resistance);
  // Every resistance the solve would use times its factor (given in AirwayNo order), fixed by
  // hand; blocked airways stay blocked.
  void ScaleResistances(const std::vector<double>& factors);
  // Fan 0 stops the airway's fan and leaves it open; a count of 0 keeps the present count.
  void SetFan(std::int32_t no, int fan, int count);
  void SetFixedQuantity(std::int32_t no, float quantity);
  void ClearFixedQuantity(std::int32_t no);
  void Block(std::int32_t no, bool blocked);

  bool Save(const std::string& path);
  int Count() const { return ws_.net.BranchCount; }

 private:
  NetworkSession() = default;
  int PositionOf(std::int32_t no);
  // Every airway record written as the file writes it and read back.
  void AsSavedAndLoaded();
  void Changed();
  std::vector<std::string> TakeMessages();

  HeadlessUi ui_{HeadlessUi::Policy::AlwaysNo};
  Workspace ws_{ui_};
  std::unordered_map<std::int32_t, int> positions_;
  bool positionsValid_ = false;
  bool solvedInMemory_ = false;  // the store holds results the file would round
};

}  // namespace galeris::scripting
