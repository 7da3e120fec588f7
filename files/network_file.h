// The network file (.sim, Master .smm, and the recovery file tempsim.sim): loading, merging
// behind the existing airways, saving, and the one-record reader and writer that the undo
// journal shares.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/workspace.h"
#include "files/text_format.h"

namespace galeris {

// Reads ws.net.FileName; replaces the network when ws.MergeBase is 1, else merges behind it.
// Returns false when the load was refused or abandoned; the open network is then untouched.
// Starting the view and resetting the undo journal are left to the caller.
bool LoadNetwork(Workspace& ws);
// Writes ws.net.FileName, or with tempMode 1 the recovery file in the temporary folder.
bool SaveNetwork(Workspace& ws, int tempMode = 0);

// The whole file as SaveNetwork writes it, without stamping the note. allPositions writes
// every airway up to BranchCount, as the recovery file does.
std::string FormatNetworkFile(const Workspace& ws, bool allPositions = false);

// A shown gas simulation blocks saving: says "Clear gas simulation first !" and returns true.
// smokeState is the view's SmokeState (0 when nothing is shown).
bool GasSimulationBlocksSave(UiPort& ui, int smokeState);

// One airway record, 39 fields.
void ReadAirwayRecord(Workspace& ws, const std::string& line, int position, float version);
std::string FormatAirwayRecord(const Network& net, int position);
// The same record added to the end of out.
void AppendAirwayRecord(std::string& out, const Network& net, int position);

std::string EscapeNote(const std::string& text);
std::string UnescapeNote(const std::string& text);
// True when the note holds words of the user's, not only the "*** File Saved ***" stamps that
// every save adds.
bool NoteHasWords(const std::string& note);

// The name of the recovery file in the temporary folder.
inline constexpr const char* kRecoveryFileName = "tempsim.sim";

// Messages of the network file.
inline constexpr const char* kMsgNotGaleris = "Not a GALERIS File - Action Aborted";
inline constexpr const char* kMsgCannotRead = "Cannot read file format";
inline constexpr const char* kMsgLoadError = "Error occured loading file";
inline constexpr const char* kMsgContinueLoading = "Do you wish to continue loading?";
inline constexpr const char* kMsgError53 = "ERROR 53: That file doesn't exist.";
inline constexpr const char* kMsgError68 = "ERROR 68: Drive not available.";
inline constexpr const char* kMsgError76 = "ERROR 76: That path doesn't exist.";
inline constexpr const char* kMsgMasterLoad =
    "Caution - a MASTER SMM file is being loaded - this file will only be saved as a normal SIM "
    "file unless otherwise specified";
inline constexpr const char* kMsgMasterSave =
    "You are about to save as a Master file - are you sure ?";
inline constexpr const char* kMsgClearGasFirst = "Clear gas simulation first !";
inline constexpr const char* kMsgSaveFailed = "Error Save File - Check Name";

// The reading state of one network file: the open file, its version and locale, the shared
// field table, and the error trap that asks whether to go on. A "No" ends the load by throwing
// LoadAbandoned, which LoadNetwork catches.
struct LoadAbandoned {};

class NetworkReader {
 public:
  NetworkReader(UiPort& ui, const std::string& path) : ui_(ui), in_(path) {}

  bool IsOpen() const { return in_.IsOpen(); }
  LineReader& Lines() { return in_; }

  // Reads the next line into line. The first read past the end is an error (asked about);
  // later ones quietly give empty lines. False past the end.
  bool Next();
  // Gives the last line back to the next Next().
  void Unread() { pushedBack_ = true; }
  bool HasUnread() const { return pushedBack_; }
  bool PastEnd() const { return pastEnd_; }
  bool AtEnd();
  void Split() {
    SplitLine(version, line, f, locale);
    UseTable();
  }
  // Splits an airway record: the fields are left as views into the line only, not copied
  // into f. They stay valid until the next line is read.
  void SplitRecord();
  // Points the conversions back at f, after f was filled by hand.
  void UseTable() { recordViews_ = false; }
  // Field i of the last split: what the conversions below read.
  std::string_view Field(int i) const {
    if (!recordViews_) return f[i];
    return i <= fieldCount_ ? fields_[i] : std::string_view();
  }
  bool NextSplit() {
    const bool ok = Next();
    Split();
    return ok;
  }
  bool LineBegins(std::string_view head) const { return line.compare(0, head.size(), head) == 0; }

  // "Error occured loading file" and the question; No throws LoadAbandoned. Once the user
  // chose to go on past the end of the file, nothing more is asked.
  void Trap();

  // Field conversions: a bad text traps and leaves the target as it was.
  void Strict(int field, float& target);
  void StrictWhole(int field, std::int32_t& target);  // rounded half to even
  void Whole(int field, std::int16_t& target);        // Val, then rounded half to even
  void Whole(int field, std::int32_t& target);
  void Single(int field, float& target);           // Val
  void Currency(int field, std::int64_t& target);  // Val, four decimals

  std::string line;
  FieldTable f;
  float version = 0;
  SplitLocale locale;

 private:
  UiPort& ui_;
  LineReader in_;
  FieldViews fields_{};       // the record fields of SplitRecord
  int fieldCount_ = 0;        // fields_ after this one are empty
  bool recordViews_ = false;  // the conversions read fields_ rather than f
  std::string mappedLine_;  // a record line after its decimal marks were mapped
  bool pastEnd_ = false;
  bool quietPastEnd_ = false;
  bool pushedBack_ = false;
};

// The record reader used by the loader: bad fields go through the reader's trap.
void ReadAirwayFields(Workspace& ws, NetworkReader& reader, int position);

}  // namespace galeris
