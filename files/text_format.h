// The text rules shared by every file the system reads and writes: the line reader (CR LF,
// any bytes), the field splitter of both formats, the writer's number printing and the two
// number conversions of the readers.
#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/zero_pages.h"

namespace galeris {

inline constexpr int kSplitFields = 100;

// Fields 1..100 of the last split line; field 0 unused.
using FieldTable = std::array<std::string, kSplitFields + 1>;

// Splits one line: tab-joined from version 2.4, comma-separated below, with the decimal
// separator rules of both. The locale flag and file mark come from the header line.
struct SplitLocale {
  bool differs = false;  // the file's decimal mark differs from the machine's
  char fileMark = '.';
};
// The line must not lie in one of the fields.
void SplitLine(float version, std::string_view line, FieldTable& fields,
               const SplitLocale& locale = {});

// The tab-joined split in two steps, for readers that keep the fields as views into the line:
// the decimal marks mapped as SplitLine maps them (true, with the mapped line in `mapped`, when
// anything changed), then the fields between the tabs.
using FieldViews = std::array<std::string_view, kSplitFields + 1>;
bool MapDecimalMarks(std::string_view line, const SplitLocale& locale, std::string& mapped);
// SplitTabViews fills fields 1..count and returns count; the fields after it are left as they
// were and stand for empty ones.
int SplitTabViews(std::string_view line, FieldViews& fields);

// The common whole number, as "-12" or "3": an optional sign and up to 18 digits, nothing else
// (no blanks, point or exponent). Its value is the one Val or StrictNumber would give, exactly,
// so readers take it without the round trip through a double. False for any other text.
bool PlainWhole(std::string_view text, long long& value);

// The text without the blanks around it, as the readers trim names.
std::string TrimBlanks(std::string_view text);

// The values of one line of the oldest comma-separated input, added to tokens: commas
// separate them, quotes are taken off (a quoted value may hold commas), blanks around are cut.
// An empty line adds nothing.
void AppendInputTokens(std::string_view line, std::vector<std::string>& tokens);

// True when lines of this version are tab-joined rather than comma-separated.
bool IsTabFormat(float version);

// The locale of a file from its header line: the character at position 2 against the
// machine's separator.
SplitLocale LocaleOfHeader(std::string_view headerLine);

// The version of a file: the first three characters of its first line, as a single.
float VersionOf(std::string_view firstLine);

// The writer's plain number output: a blank before a number that is not negative, and a blank
// after every number (" 5 ", "-2.5 "). Singles print to 7 significant digits, doubles to 15.
std::string PrintNumber(double value);
std::string PrintSingle(float value);
// Formatted fields: the shortest general form, no blanks ("5", "-2.5", "1E+10").
std::string FormatGeneral(double value);
std::string FormatGeneralSingle(float value);
// FormatGeneralSingle added to the end of out, or written at text (kSingleTextSize bytes of
// room), returning the end.
inline constexpr std::size_t kSingleTextSize = 32;
void AppendGeneralSingle(std::string& out, float value);
char* WriteGeneralSingle(char* text, float value);

// Val-style: the longest leading number of the text, blanks skipped, 0 when there is none.
double Val(std::string_view text);
// Strict: the whole text must be a number (blanks around allowed); false on bad or empty text.
bool StrictNumber(std::string_view text, double& value);

// Reads a file line by line; lines end at CR LF, LF or CR. Survives any bytes. The file is
// read whole when the reader is made, and closed again.
class LineReader {
 public:
  explicit LineReader(const std::string& path);
  bool IsOpen() const { return open_; }
  bool ReadLine(std::string& line);  // false at end of file
  // The same line as a view into the file, valid as long as the reader.
  bool ReadLineView(std::string_view& line);
  bool AtEnd();
  // Where the reader stands, to come back to.
  struct Place {
    std::size_t start = 0;
    long lineNumber = 0;
  };
  Place Here() const { return {start_, lineNumber_}; }
  void GoBack(Place place) {
    start_ = place.start;
    lineNumber_ = place.lineNumber;
  }
  long LineNumber() const { return lineNumber_; }

 private:
  bool Fill();  // false when the file has nothing more
  int Peek();   // the next byte, or -1 at the end
  bool open_ = false;
  long lineNumber_ = 0;
  ZeroArray<char> buffer_;  // fresh pages: the file fills them, nothing clears them first
  std::size_t start_ = 0, end_ = 0;
};

}  // namespace galeris
