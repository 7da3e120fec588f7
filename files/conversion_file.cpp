// Conversion.dat: the unit table's factors, unit texts and number pictures for SI and British
// screens, one row per kind of quantity.
#include <fstream>

#include "files/conversion_file.h"
#include "files/text_format.h"
#include "files/whole_file.h"

namespace galeris {
namespace {

constexpr float kConversionVersion = 3;  // the file is always split by the tab rules
constexpr const char* kEndLine = "End";
constexpr const char* kLoadFailed = "Error loading conversion values";
constexpr const char* kSaveFailed = "Error savings conversion values";

std::string Trimmed(const std::string& text) {
  const std::size_t a = text.find_first_not_of(' ');
  if (a == std::string::npos) return "";
  return text.substr(a, text.find_last_not_of(' ') - a + 1);
}

// A file written where the decimal mark is a comma holds "0,0": the second place of a digit
// picture is always its decimal point here. Time and text pictures have none to undo.
std::string UndoLocaleMark(std::string picture) {
  const bool digitPicture = !picture.empty() && (picture[0] == '0' || picture[0] == '#');
  if (digitPicture && picture.size() > 1) picture[1] = '.';
  return picture;
}

bool ReadRow(const FieldTable& fields, UnitTable& table, int row) {
  double factor = 0;
  if (!StrictNumber(fields[2], factor) || factor <= 0) return false;
  table.UnitName[row] = fields[1];
  table.UnitFactor[row] = {0.0, 1.0, factor};
  table.UnitText[row] = {"", fields[3], fields[4]};
  table.UnitFormat[row] = {"", UndoLocaleMark(Trimmed(fields[5])),
                           UndoLocaleMark(Trimmed(fields[6]))};
  return true;
}

// Reads the whole file into a copy; false at the first line that is missing or wrong.
bool ReadConversion(const std::string& path, UnitTable& table) {
  LineReader in(path);
  if (!in.IsOpen()) return false;
  std::string line;
  FieldTable fields;
  if (!in.ReadLine(line)) return false;
  SplitLine(kConversionVersion, line, fields);
  table.Heads[0] = fields[1];
  if (!in.ReadLine(line)) return false;
  SplitLine(kConversionVersion, line, fields);
  for (int column = 1; column <= 6; ++column) table.Heads[column] = fields[column];
  for (int row = 1; row <= kUnitRows; ++row) {
    if (!in.ReadLine(line)) return false;
    SplitLine(kConversionVersion, line, fields);
    if (!ReadRow(fields, table, row)) return false;
  }
  return true;
}

}  // namespace

void LoadConversion(UnitTable& units, const std::string& path, UiPort& ui) {
  UnitTable read = units;
  if (!ReadConversion(path, read)) {
    ui.Inform(kLoadFailed);
    return;
  }
  units = read;
}

void SaveConversion(const UnitTable& units, const std::string& path, UiPort& ui) {
  const UnitTable builtIn = BuiltInUnits();
  std::string text = (units.Heads[0].empty() ? builtIn.Heads[0] : units.Heads[0]) + "\r\n";
  for (int column = 1; column <= 6; ++column) {
    const std::string& head = units.Heads[column];
    text += (head.empty() ? builtIn.Heads[column] : head) + (column < 6 ? "\t" : "\r\n");
  }
  for (int row = 1; row <= kUnitRows; ++row) {
    text += units.UnitName[row] + "\t" + PrintNumber(units.UnitFactor[row][2]) + "\t" +
            units.UnitText[row][1] + "\t" + units.UnitText[row][2] + "\t" +
            units.UnitFormat[row][1] + "\t" + units.UnitFormat[row][2] + "\r\n";
  }
  text += std::string(kEndLine) + "\r\n";

  if (!WriteWholeFile(path, text)) ui.Inform(kSaveFailed);
}

}  // namespace galeris
