// The text exchange file: its writer, and the reader the import runs on a TXT file.
#include "exchange/text_exchange.h"

#include <charconv>
#include <filesystem>
#include <fstream>

#include "core/number_format.h"
#include "exchange/import_file.h"
#include "exchange/import_run.h"
#include "files/text_format.h"
#include "files/whole_file.h"

namespace galeris {
namespace {

constexpr const char* kCrLf = "\r\n";

void AppendFixed(std::string& out, double value, int decimals) {
  char buffer[64];
  const auto r =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  std::string_view text(buffer, static_cast<std::size_t>(r.ptr - buffer));
  if (text.find_first_not_of("-0.") == std::string_view::npos && text.front() == '-')
    text.remove_prefix(1);  // no "-0.0"
  for (char c : text) out += c == '.' ? MachineDecimalSeparator() : c;
}

void AppendLength(std::string& out, const UnitTable& units, double stored) {
  out += FormatGeneral(ToDisplay(units, stored, Unit::Length));
}

// A size is a single in the store: it is written as the shortest text that reads back to the
// same single, so a height of 5.8 stays "5.8".
void AppendSize(std::string& out, const UnitTable& units, float stored) {
  AppendGeneralSingle(out, static_cast<float>(ToDisplay(units, stored, Unit::Length)));
}

}  // namespace

std::string FormatTextExport(const Workspace& ws) {
  const Network& net = ws.net;
  std::string out = kTextExportHeads;
  out += kCrLf;
  out.reserve(static_cast<std::size_t>(net.BranchCount) * 96 + out.size());
  for (int i = 1; i <= net.BranchCount; ++i) {
    for (const Coord3* end : {&net.Coord1[i], &net.Coord2[i]}) {
      for (int axis = 1; axis <= 3; ++axis) {
        AppendLength(out, ws.units, (*end)[axis]);
        out += '\t';
      }
    }
    AppendFixed(out, ToDisplay(ws.units, net.Quantity[i], Unit::Quantity), 1);
    out += '\t';
    AppendFixed(out, ToDisplay(ws.units, net.Resistance[i], Unit::Resistance), 5);
    out += '\t';
    out += std::to_string(net.FanNumber[i]) + '\t' + std::to_string(net.NoOfFans[i]) + '\t';
    out += TrimBlanks(net.BranchName[i].Trimmed()) + '\t';
    out += TrimBlanks(net.EntryNodeName[i].Trimmed()) + '\t';
    out += TrimBlanks(net.ExitNodeName[i].Trimmed()) + '\t';
    AppendSize(out, ws.units, net.Dim[i][1]);
    out += '\t';
    AppendSize(out, ws.units, net.Dim[i][2]);
    out += '\t';
    out += std::to_string(net.AirwayNo[i]);
    out += kCrLf;
  }
  return out;
}

bool ExportText(const Workspace& ws, const std::string& path) {
  return WriteWholeFile(path, FormatTextExport(ws));
}

int ReadTextAirways(ImportRun& run, const std::string& path) {
  Network& net = run.ws.net;
  const UnitTable& units = run.ws.units;
  LineReader in(path);
  std::string line;
  in.ReadLine(line);  // the heads
  FieldTable f;
  int position = net.BranchCount;
  while (in.ReadLine(line)) {
    if (TrimBlanks(line).empty()) continue;
    ++position;
    if (position > net.MaxAirways) {
      // The last slot is overwritten by every further line; the reading goes on.
      run.ws.ui.Inform(kMsgTooManyAirways);
      position = net.MaxAirways;
    }
    BlankAirway(net, position);
    net.BranchCount = static_cast<std::int16_t>(std::max<int>(net.BranchCount, position));
    SplitLine(2.6f, line, f);
    for (int axis = 1; axis <= 3; ++axis) {
      run.Coordinate(f[axis], net.Coord1[position][axis]);
      run.Coordinate(f[axis + 3], net.Coord2[position][axis]);
    }
    net.Quantity[position] = static_cast<float>(FromDisplay(units, Val(f[7]), Unit::Quantity));
    net.Resistance[position] = static_cast<float>(FromDisplay(units, Val(f[8]), Unit::Resistance));
    run.Short(Val(f[9]), net.FanNumber[position]);
    run.Short(Val(f[10]), net.NoOfFans[position]);
    net.BranchName[position] = TrimBlanks(f[11]);
    net.EntryNodeName[position] = TrimBlanks(f[12]);
    net.ExitNodeName[position] = TrimBlanks(f[13]);
    net.Dim[position][1] = static_cast<float>(FromDisplay(units, Val(f[14]), Unit::Length));
    net.Dim[position][2] = static_cast<float>(FromDisplay(units, Val(f[15]), Unit::Length));
    const double number = Val(f[16]);
    if (number >= 0 && number < 2147483647) net.AirwayNo[position] = static_cast<int>(number);
  }
  return position;
}

}  // namespace galeris
