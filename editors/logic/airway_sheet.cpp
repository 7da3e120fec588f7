// The airway spreadsheet's working copy and its rules.
#include "editors/logic/airway_sheet.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numeric>

#include "editors/logic/airway_edit.h"
#include "core/airway_values.h"
#include "editors/logic/fan_grid.h"
#include "editors/logic/grid_text.h"
#include "core/number_format.h"

namespace galeris {
namespace {

namespace C = SheetColumn;

constexpr double kSheetPi = 3.1415926;
constexpr float kNegate = 9999.0f;
constexpr float kStall = -9999.0f;
constexpr std::int16_t kFixedPressureFan = -1;  // FanNumber 65535 in 16 bits

std::array<SheetColumnInfo, kSheetColumns + 1> BuildColumns() {
  std::array<SheetColumnInfo, kSheetColumns + 1> columns{};
  const std::string format = kSheetFormat;
  std::size_t at = 0;
  for (int c = 1; c <= kSheetColumns; ++c) {
    const std::size_t start = format.find('|', at) + 1;
    const std::size_t end = std::min(format.find('|', start), format.size());
    const std::string field = format.substr(start, end - start);
    at = end;
    SheetColumnInfo& info = columns[c];
    info.leftAligned = field[0] == '<';
    info.widthHint = static_cast<int>(field.size()) - 1;
    const std::size_t first = field.find_first_not_of(' ', 1);
    const std::size_t last = field.find_last_not_of(' ');
    info.title = field.substr(first, last - first + 1);
  }
  const std::array<int, kSheetColumns + 1> units{0,
                                                 0,
                                                 0,
                                                 0,
                                                 0,
                                                 Unit::Length,
                                                 Unit::Quantity,
                                                 Unit::Velocity,
                                                 Unit::Pressure,
                                                 Unit::Resistance,
                                                 Unit::FrictionFactor,
                                                 Unit::Coordinates,
                                                 0,
                                                 Unit::Pressure,
                                                 Unit::Length,
                                                 Unit::Length,
                                                 0,
                                                 Unit::Length,
                                                 Unit::Length,
                                                 Unit::Length,
                                                 Unit::Length,
                                                 Unit::Length,
                                                 Unit::Length};
  for (int c = 1; c <= kSheetColumns; ++c) columns[c].unit = units[c];
  columns[C::No].editable = columns[C::Vel].editable = false;
  for (int c : {C::Length, C::Flow, C::Pdrop, C::Resistance, C::KFactor, C::Shock, C::FPres})
    columns[c].fixable = true;
  for (int c : {C::Name, C::From, C::To, C::Comments}) columns[c].text = true;
  return columns;
}

const std::array<SheetColumnInfo, kSheetColumns + 1>& Columns() {
  static const std::array<SheetColumnInfo, kSheetColumns + 1> columns = BuildColumns();
  return columns;
}

bool IsNumeric(int column) {
  return !Columns()[column].text && column != C::No;
}

std::string Trimmed(const std::string& s) {
  const std::size_t first = s.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// ParseCell: empty text is 0; a trailing "*" (the old fixed mark) is ignored.
std::optional<double> ReadCell(const std::string& text) {
  std::string t = Trimmed(text);
  if (!t.empty() && t.back() == '*') t.pop_back();
  if (t.empty()) return 0.0;
  const std::optional<double> v = ReadNumber(t);
  if (!v || !std::isfinite(*v)) return std::nullopt;
  return v;
}

// A cell in SI; an unreadable one counts as 0 (it is refused at the save).
double CellValue(const UnitTable& units, const SheetRow& row, int column) {
  const double v = ReadCell(row.cell[column]).value_or(0);
  const int unit = Columns()[column].unit;
  return unit ? FromDisplay(units, v, unit) : v;
}

std::string CellText(const UnitTable& units, double si, int column) {
  return FormatValue(units, si, Columns()[column].unit);
}

std::string ResPrefix(const Workspace& ws, int position) {
  const int type = ws.net.ResType[position];
  if (type == 0 || type < 0 || type > kUserGiven) return {};
  const std::string& name = ws.defaults.ResName[type];
  return name.empty() ? std::string() : Trimmed(name) + " ";
}

bool ValidFPres(const std::string& text) {
  const std::string t = Lower(Trimmed(text));
  return t == "negate" || t == "stall" || ReadCell(text).has_value();
}

std::optional<SheetCell> CheckRow(Workspace& ws, const SheetRow& row, int index) {
  for (int c = 1; c <= kSheetColumns; ++c) {
    if (row.airway != 0 && row.cell[c] == row.original[c]) continue;
    const std::string& text = row.cell[c];
    if (Columns()[c].text && text.find(',') != std::string::npos) {
      ws.ui.Inform(kMsgCommaInName);
      return SheetCell{index, c};
    }
    bool good = true;
    if (c == C::FPres) {
      good = ValidFPres(text);
    } else if (c == C::Fan) {
      const std::optional<double> v = ReadCell(text);
      good = v && *v >= 0 && *v <= ws.net.FanMax && *v == std::floor(*v);
    } else if (IsNumeric(c) && Columns()[c].editable) {
      const std::optional<double> v = ReadCell(text);
      const int unit = Columns()[c].unit;
      good = v && std::fabs(unit ? FromDisplay(ws.units, *v, unit) : *v) < 3.0e38;
    }
    if (!good) {
      ws.ui.Inform(kMsgNumberFormat);
      return SheetCell{index, c};
    }
  }
  return std::nullopt;
}

// Writes the cells (and fix marks) that differ from the fill to the airway at `i`.
void ApplyRow(Workspace& ws, SheetRow& row, int i, bool all) {
  Network& net = ws.net;
  const UnitTable& u = ws.units;
  auto changed = [&](int c) {
    return all || row.cell[c] != row.original[c] ||
           row.IsFixed(c) != ((row.originalFixed >> c) & 1U);
  };
  auto value = [&](int c) { return static_cast<float>(CellValue(u, row, c)); };
  auto setBit = [&](std::int32_t bit, bool on) {
    net.BranchCode[i] = on ? (net.BranchCode[i] | bit) : (net.BranchCode[i] & ~bit);
  };
  if (changed(C::Name)) net.BranchName[i] = Trimmed(row.cell[C::Name]);
  if (changed(C::From)) net.EntryNodeName[i] = Trimmed(row.cell[C::From]);
  if (changed(C::To)) net.ExitNodeName[i] = Trimmed(row.cell[C::To]);
  if (changed(C::Length)) {
    net.Length[i] = value(C::Length);
    setBit(Bit::FixedLength, row.IsFixed(C::Length));
  }
  if (changed(C::Flow)) {
    net.Quantity[i] = value(C::Flow);
    setBit(Bit::FixedQuantity, row.IsFixed(C::Flow));
  }
  if (changed(C::Resistance)) {
    net.Resistance[i] = value(C::Resistance);
    if (!row.IsFixed(C::Resistance))
      net.ResType[i] = 0;
    else if (net.ResType[i] == 0)
      net.ResType[i] = kUserGiven;
    if (net.Resistance[i] == 0) net.ResType[i] = 0;
  }
  auto typed = [&](int c, ZeroArray<float>& field, ZeroArray<std::int16_t>& type) {
    if (!changed(c)) return;
    field[i] = value(c);
    if (row.IsFixed(c)) type[i] = kUserGiven;
    if (field[i] == 0) type[i] = 0;
  };
  typed(C::KFactor, net.WallFactor, net.WallType);
  typed(C::Shock, net.ShockFactor, net.ShockType);
  if (changed(C::Fan)) net.FanNumber[i] = static_cast<std::int16_t>(value(C::Fan));
  if (changed(C::FPres)) {
    if (row.IsFixed(C::FPres)) {
      const std::string word = Lower(Trimmed(row.cell[C::FPres]));
      net.FanNumber[i] = kFixedPressureFan;
      net.Pressure[i] = word == "negate" ? kNegate : word == "stall" ? kStall : value(C::FPres);
    } else if (net.FanNumber[i] == kFixedPressureFan) {
      net.FanNumber[i] = 0;
    }
  }
  if (changed(C::Height)) net.Dim[i][1] = value(C::Height);
  if (changed(C::Width)) net.Dim[i][2] = value(C::Width);
  if (changed(C::Comments)) {
    std::string text = row.cell[C::Comments];
    const std::string prefix = ResPrefix(ws, i);
    if (!prefix.empty() && text.rfind(prefix, 0) == 0) text.erase(0, prefix.size());
    net.Comment[i] = Trimmed(text);
  }
  for (int axis = 1; axis <= 3; ++axis) {
    if (changed(C::X1 + axis - 1))
      net.Coord1[i][axis] = static_cast<std::int32_t>(std::llround(value(C::X1 + axis - 1)));
    if (changed(C::X2 + axis - 1))
      net.Coord2[i][axis] = static_cast<std::int32_t>(std::llround(value(C::X2 + axis - 1)));
  }
  net.EntryNodeId[i] = NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]);
  net.ExitNodeId[i] = NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]);
  CalcResistance(ws, i);
}

bool RowChanged(const SheetRow& row) {
  return row.airway == 0 || row.cell != row.original || row.fixed != row.originalFixed;
}

// A new row's typed section losses are its own: they are written as given.
void NewAirwayAt(Workspace& ws, SheetRow& row, int n) {
  Network& net = ws.net;
  BlankAirway(net, n);
  net.BranchCode[n] = Bit::Rectangular;
  net.AirwayNo[n] = ++net.NextAirwayNo;
  net.ParallelCount[n] = 1;
  net.CurveFraction[n] = static_cast<std::int16_t>(ws.defaults.DefaultCurveFraction);
  for (int c : {C::KFactor, C::Shock})
    if (!Trimmed(row.cell[c]).empty()) row.SetFixed(c, true);
}

}  // namespace

void SheetRow::SetFixed(int column, bool on) {
  const std::uint32_t bit = 1U << column;
  fixed = on ? (fixed | bit) : (fixed & ~bit);
}

const SheetColumnInfo& SheetColumnOf(int column) {
  return Columns()[std::clamp(column, 1, kSheetColumns)];
}

SheetRow FillRow(const Workspace& ws, int i) {
  const Network& net = ws.net;
  const UnitTable& u = ws.units;
  SheetRow row;
  row.airway = i;
  auto& cell = row.cell;
  const std::int32_t code = net.BranchCode[i];
  const double q = net.Quantity[i];
  cell[C::No] = std::to_string(net.AirwayNo[i]);
  cell[C::Name] = net.BranchName[i].Trimmed();
  cell[C::From] = net.EntryNodeName[i].Trimmed();
  cell[C::To] = net.ExitNodeName[i].Trimmed();
  cell[C::Length] = FullText(u, net.Length[i], Unit::Length);
  cell[C::Flow] = CellText(u, std::floor(q * 1000) / 1000, C::Flow);
  const double area = EquivalentsOf(ShapeTypeOf(code), net.Dim[i][1], net.Dim[i][2]).Area;
  cell[C::Vel] = CellText(u, area > 0 ? q / area : 0, C::Vel);
  cell[C::Pdrop] = CellText(u, net.Resistance[i] * q * q, C::Pdrop);
  cell[C::Resistance] = CellText(u, net.Resistance[i], C::Resistance);
  cell[C::KFactor] = CellText(u, net.WallFactor[i], C::KFactor);
  cell[C::Shock] = FullText(u, net.ShockFactor[i], Unit::Coordinates);
  const int fan = net.FanNumber[i];
  if (fan > 0) cell[C::Fan] = std::to_string(fan);
  const float p = net.Pressure[i];
  const bool fixedQ = code & Bit::FixedQuantity;
  if (p == kNegate)
    cell[C::FPres] = "Negate";
  else if (p == kStall)
    cell[C::FPres] = "Stall";
  else if (p == 0)
    cell[C::FPres] = (fan != 0 || fixedQ) ? "0" : "";
  else
    cell[C::FPres] = CellText(u, p, C::FPres);
  if (!(code & Bit::Round)) cell[C::Height] = CellText(u, net.Dim[i][1], C::Height);
  cell[C::Width] = CellText(u, net.Dim[i][2], C::Width);
  cell[C::Comments] = ResPrefix(ws, i) + net.Comment[i].Trimmed();
  for (int axis = 1; axis <= 3; ++axis) {
    cell[C::X1 + axis - 1] = CellText(u, net.Coord1[i][axis], C::X1);
    cell[C::X2 + axis - 1] = CellText(u, net.Coord2[i][axis], C::X2);
  }
  row.SetFixed(C::Length, code & Bit::FixedLength);
  row.SetFixed(C::Flow, fixedQ);
  row.SetFixed(C::Pdrop, fan == kFixedPressureFan && fixedQ);
  row.SetFixed(C::Resistance, net.ResType[i] == kUserGiven);
  row.SetFixed(C::KFactor, net.WallType[i] == kUserGiven);
  row.SetFixed(C::Shock, net.ShockType[i] == kUserGiven);
  row.SetFixed(C::FPres, !fixedQ && fan == kFixedPressureFan);
  row.original = row.cell;
  row.originalFixed = row.fixed;
  return row;
}

AirwaySheet FillSheet(const Workspace& ws) {
  AirwaySheet sheet;
  sheet.rows.reserve(ws.net.BranchCount);
  for (int i = 1; i <= ws.net.BranchCount; ++i)
    if (ws.net.BranchCode[i] != 0) sheet.rows.push_back(FillRow(ws, i));
  return sheet;
}

std::optional<SheetCell> SaveSheet(Workspace& ws, AirwaySheet& sheet) {
  int added = 0;
  for (std::size_t r = 0; r < sheet.rows.size(); ++r) {
    const SheetRow& row = sheet.rows[r];
    if (row.airway == 0) ++added;
    if (!RowChanged(row)) continue;
    if (auto bad = CheckRow(ws, row, static_cast<int>(r))) return bad;
  }
  if (added > 0 && !RoomForAirways(ws.net, added, ws.ui)) return SheetCell{-1, 0};

  Network& net = ws.net;
  bool any = !sheet.deleted.empty();
  for (SheetRow& row : sheet.rows) {
    if (!RowChanged(row)) continue;
    any = true;
    const bool isNew = row.airway == 0;
    if (isNew) {
      row.airway = net.BranchCount + 1;
      net.BranchCount = static_cast<std::int16_t>(row.airway);
      NewAirwayAt(ws, row, row.airway);
    } else {
      JournalBefore(ws.journal, row.airway);
    }
    ApplyRow(ws, row, row.airway, isNew);
    JournalAfter(ws.journal, row.airway);
  }
  std::vector<int> deleted = sheet.deleted;
  std::sort(deleted.begin(), deleted.end());
  for (int i : deleted) {
    JournalBefore(ws.journal, i);
    BlankAirway(net, i);
  }
  if (!deleted.empty()) CompactAirways(net);
  for (SheetRow& row : sheet.rows) {
    const bool refill = RowChanged(row);
    row.airway -= static_cast<int>(std::lower_bound(deleted.begin(), deleted.end(), row.airway) -
                                   deleted.begin());
    if (refill) row = FillRow(ws, row.airway);
  }
  sheet.deleted.clear();
  sheet.SheetDirty = false;
  ws.sim.SimStatus = 0;
  if (any) {
    // The surface rule and force bits on moved ends; an airway with an end at the origin is
    // dropped there, and then the rows no longer match the positions.
    const int count = net.BranchCount;
    RebuildNodes(net, ws.defaults, ws.ui);
    if (net.BranchCount != count) sheet.rows = FillSheet(ws).rows;
    CloseUndoAction(ws.journal);
    MarkNetworkChanged(ws);
  }
  return std::nullopt;
}

void RecalcRow(const Workspace& ws, AirwaySheet& sheet, int r) {
  SheetRow& row = sheet.rows[r];
  const UnitTable& u = ws.units;
  const Network& net = ws.net;
  const double height = CellValue(u, row, C::Height);
  const double width = CellValue(u, row, C::Width);
  double area, perimeter;
  if (height == 0) {
    area = width * width * kSheetPi / 4;
    perimeter = width * kSheetPi;
  } else {
    area = width * height;
    perimeter = 2 * width + 2 * height;
  }
  if (row.airway != 0 && (net.BranchCode[row.airway] & Bit::Services)) {
    area -= 0.8;
    if (area <= 0) area = 0.05;
  }
  const double k = CellValue(u, row, C::KFactor);
  double shock = CellValue(u, row, C::Shock);
  if (row.airway != 0 && !row.IsFixed(C::Shock)) {
    const int type = net.ShockType[row.airway];
    if (type >= 0 && type < 6) shock = ws.defaults.ShockPreset[type];
  }
  double length;
  if (row.IsFixed(C::Length)) {
    length = CellValue(u, row, C::Length);
  } else {
    const double dx = CellValue(u, row, C::X2) - CellValue(u, row, C::X1);
    const double dy = CellValue(u, row, C::Y2) - CellValue(u, row, C::Y1);
    const double dz = CellValue(u, row, C::Z2) - CellValue(u, row, C::Z1);
    length = std::sqrt(dx * dx + dy * dy + dz * dz);
    row.cell[C::Length] = FullText(u, length, Unit::Length);
  }
  const double total = length + shock;
  if (area <= 0 || total == 0) return;
  double resistance = k * total * perimeter * ws.defaults.AirDensity / (area * area * area * 1.2);
  if (resistance == 0) resistance = 1e-5;
  if (!row.IsFixed(C::Resistance)) row.cell[C::Resistance] = CellText(u, resistance, C::Resistance);
}

void RecalcAll(const Workspace& ws, AirwaySheet& sheet) {
  ws.ui.SetBusy(true);
  for (std::size_t r = 0; r < sheet.rows.size(); ++r) RecalcRow(ws, sheet, static_cast<int>(r));
  ws.ui.SetBusy(false);
  sheet.SheetDirty = true;
}

void CommitCell(Workspace& ws, AirwaySheet& sheet, int r, int column, const std::string& text) {
  SheetRow& row = sheet.rows[r];
  const std::string before = row.cell[column];
  row.cell[column] = text;
  sheet.SheetDirty = true;
  switch (column) {
    case C::From:
    case C::To: {
      // The node is where the row's end lies: every end with the same coordinate text takes
      // the name, whichever end of its airway it is.
      const int x = column == C::From ? C::X1 : C::X2;
      const std::string key = row.cell[x] + "|" + row.cell[x + 1] + "|" + row.cell[x + 2];
      if (key == "||") break;
      for (SheetRow& other : sheet.rows) {
        if (other.cell[C::X1] + "|" + other.cell[C::Y1] + "|" + other.cell[C::Z1] == key)
          other.cell[C::From] = text;
        if (other.cell[C::X2] + "|" + other.cell[C::Y2] + "|" + other.cell[C::Z2] == key)
          other.cell[C::To] = text;
      }
      break;
    }
    case C::Resistance:
    case C::KFactor:
    case C::Shock:
    case C::Length:
      row.SetFixed(column, true);
      RecalcRow(ws, sheet, r);
      break;
    case C::Flow:
    case C::Pdrop: {
      row.SetFixed(column, true);
      if (!row.IsFixed(C::Flow) || !row.IsFixed(C::Pdrop)) break;
      if (!ws.ui.AskYesNo(kMsgCalcResistance, "Resistance Calculation")) break;
      for (int c : {C::Flow, C::Pdrop})
        if (!row.cell[c].empty() && row.cell[c].back() == '*') row.cell[c].pop_back();
      const double q = CellValue(ws.units, row, C::Flow);
      if (q == 0) {
        ws.ui.Inform(kMsgNumberFormat);
        break;
      }
      const double resistance = std::fabs(CellValue(ws.units, row, C::Pdrop)) / (q * q);
      row.cell[C::Resistance] =
          FormatNumber(ToDisplay(ws.units, resistance, Unit::Resistance), "0.00000");
      row.SetFixed(C::Resistance, true);
      RecalcRow(ws, sheet, r);
      break;
    }
    case C::FPres:
      if (row.IsFixed(C::Flow)) {
        row.cell[column] = before;
        ws.ui.Inform(kMsgFixedFlowPressure);
      } else {
        row.SetFixed(column, true);
      }
      break;
    case C::Height:
    case C::Width:
    case C::X1:
    case C::Y1:
    case C::Z1:
    case C::X2:
    case C::Y2:
    case C::Z2:
      RecalcRow(ws, sheet, r);
      break;
    default:
      break;
  }
}

void SetFixedBlock(AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn, int lastColumn,
                   bool fixed) {
  for (int r = std::max(firstRow, 0); r <= lastRow && r < static_cast<int>(sheet.rows.size()); ++r)
    for (int c = std::max(firstColumn, 1); c <= std::min(lastColumn, kSheetColumns); ++c)
      if (Columns()[c].fixable) {
        sheet.rows[r].SetFixed(c, fixed);
        if (c == C::Pdrop) sheet.rows[r].SetFixed(C::Flow, fixed);
        sheet.SheetDirty = true;
      }
}

void ClearBlock(AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn, int lastColumn) {
  for (int r = std::max(firstRow, 0); r <= lastRow && r < static_cast<int>(sheet.rows.size()); ++r)
    for (int c = std::max(firstColumn, 1); c <= std::min(lastColumn, kSheetColumns); ++c)
      if (Columns()[c].editable) sheet.rows[r].cell[c].clear();
  sheet.SheetDirty = true;
}

std::string CopyBlock(const AirwaySheet& sheet, int firstRow, int lastRow, int firstColumn,
                      int lastColumn) {
  CellBlock block;
  for (int r = std::max(firstRow, 0); r <= lastRow && r < static_cast<int>(sheet.rows.size());
       ++r) {
    std::vector<std::string>& line = block.emplace_back();
    for (int c = std::max(firstColumn, 1); c <= std::min(lastColumn, kSheetColumns); ++c)
      line.push_back(sheet.rows[r].cell[c]);
  }
  return JoinCellBlock(block);
}

namespace {
int PendingNewRows(const AirwaySheet& sheet) {
  return static_cast<int>(std::count_if(sheet.rows.begin(), sheet.rows.end(),
                                        [](const SheetRow& row) { return row.airway == 0; }));
}
}  // namespace

bool InsertRows(Workspace& ws, AirwaySheet& sheet, int row, int count) {
  if (count <= 0) return true;
  if (!RoomForAirways(ws.net, PendingNewRows(sheet) + count, ws.ui)) return false;
  row = std::clamp(row, 0, static_cast<int>(sheet.rows.size()));
  sheet.rows.insert(sheet.rows.begin() + row, count, SheetRow{});
  sheet.SheetDirty = true;
  return true;
}

int PasteBlock(Workspace& ws, AirwaySheet& sheet, int row, int column, const std::string& text) {
  const CellBlock block = SplitCellBlock(text);
  if (block.empty() || row < 0 || column < 1) return 0;
  const int missing = row + static_cast<int>(block.size()) - static_cast<int>(sheet.rows.size());
  if (missing > 0 && !InsertRows(ws, sheet, static_cast<int>(sheet.rows.size()), missing)) return 0;
  for (std::size_t r = 0; r < block.size(); ++r)
    for (std::size_t j = 0; j < block[r].size(); ++j) {
      const int c = column + static_cast<int>(j);
      if (c > kSheetColumns) break;
      if (Columns()[c].editable) sheet.rows[row + r].cell[c] = block[r][j];
    }
  sheet.SheetDirty = true;
  return static_cast<int>(block.size());
}

std::optional<SheetCell> DeleteRows(Workspace& ws, AirwaySheet& sheet, int firstRow,
                                   int lastRow) {
  firstRow = std::max(firstRow, 0);
  lastRow = std::min(lastRow, static_cast<int>(sheet.rows.size()) - 1);
  if (firstRow > lastRow) return std::nullopt;
  const bool block = firstRow < lastRow;
  const SheetRow& first = sheet.rows[firstRow];
  const std::string question =
      block ? kMsgDeleteRows
            : "Airway " + first.cell[C::No] + " " + first.cell[C::Name] + "\n" + kMsgDeleteBranch;
  if (!ws.ui.AskYesNo(question, block ? "Delete multiple rows" : "Delete")) return std::nullopt;
  // The pending edits first, so that every row has its airway in the store. A save that drops
  // airways at the origin refills the rows; the user then sees them before deleting.
  const std::size_t rows = sheet.rows.size();
  if (std::optional<SheetCell> bad = SaveSheet(ws, sheet)) return bad;
  if (sheet.rows.size() != rows) return std::nullopt;
  for (int r = firstRow; r <= lastRow; ++r) sheet.deleted.push_back(sheet.rows[r].airway);
  sheet.rows.erase(sheet.rows.begin() + firstRow, sheet.rows.begin() + lastRow + 1);
  return SaveSheet(ws, sheet);
}

void SortSheet(AirwaySheet& sheet, int column, bool ascending) {
  if (column < 1 || column > kSheetColumns) return;
  // Keys once per row: a number, or text (lower case) after every number.
  struct SortKey {
    bool word;
    double number;
    std::string text;
  };
  std::vector<SortKey> keys(sheet.rows.size());
  const bool text = Columns()[column].text;
  for (std::size_t r = 0; r < keys.size(); ++r) {
    const std::string& cell = sheet.rows[r].cell[column];
    if (text) {
      keys[r] = {true, 0, Lower(cell)};
    } else if (column == C::FPres) {
      const std::optional<double> v = Trimmed(cell).empty() ? std::nullopt : ReadCell(cell);
      keys[r] = v ? SortKey{false, *v, {}} : SortKey{!Trimmed(cell).empty(), 0, Lower(cell)};
    } else {
      keys[r] = {false, ReadCell(cell).value_or(0), {}};
    }
  }
  auto less = [&](std::size_t a, std::size_t b) {
    const SortKey& x = keys[a];
    const SortKey& y = keys[b];
    if (x.word != y.word) return !x.word;
    return x.word ? x.text < y.text : x.number < y.number;
  };
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? less(a, b) : less(b, a);
  });
  std::vector<SheetRow> sorted;
  sorted.reserve(order.size());
  for (std::size_t r : order) sorted.push_back(std::move(sheet.rows[r]));
  sheet.rows = std::move(sorted);
}

int FindInColumn(UiPort& ui, AirwaySheet& sheet, int column, const std::string& text) {
  const int count = static_cast<int>(sheet.rows.size());
  const std::string wanted = Lower(text);
  sheet.lastFind = text;
  if (sheet.findRow < 0 || sheet.findRow >= count) sheet.findRow = 0;
  auto found = [&](int r) {
    sheet.findRow = r + 1 >= count ? 0 : r + 1;
    return r;
  };
  if (column >= 1 && column <= kSheetColumns && !wanted.empty()) {
    for (int r = sheet.findRow; r < count; ++r)
      if (Lower(sheet.rows[r].cell[column]) == wanted) return found(r);
    for (int r = sheet.findRow; r < count; ++r) {
      const std::string& cell = sheet.rows[r].cell[column];
      if (Lower(cell).find(wanted) == std::string::npos) continue;
      const MsgAnswer answer = ui.Message("Could not find name - Do you mean " + cell,
                                          MsgButtons::YesNoCancel, MsgIcon::Question, "Find");
      if (answer == MsgAnswer::Yes) return found(r);
      if (answer == MsgAnswer::Cancel) {
        sheet.findRow = 0;
        return -1;
      }
    }
  }
  ui.Inform(kMsgLevelNotFound);
  sheet.findRow = 0;
  return -1;
}

int ReplaceInColumn(AirwaySheet& sheet, int column, const std::string& search,
                    const std::string& replacement) {
  if (column < 1 || column > kSheetColumns || !Columns()[column].editable) return 0;
  const std::string wanted = Lower(search);
  int count = 0;
  for (SheetRow& row : sheet.rows)
    if (Lower(row.cell[column]) == wanted) {
      row.cell[column] = replacement;
      ++count;
    }
  if (count > 0) sheet.SheetDirty = true;
  return count;
}

}  // namespace galeris
