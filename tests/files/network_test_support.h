// Shared by the file tests: a workspace whose folders are a scratch folder, and a small but
// complete network that touches every section of the file.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/defaults_file.h"
#include "tests/support/test_support.h"

namespace galeris::test {

struct FileFixture {
  FileFixture() : ws(ui), dir(ScratchDir()) {
    ws.paths.ProgramFolder = dir;
    ws.paths.TempFolder = dir;
    SetBuiltInDefaults(ws);
  }
  HeadlessUi ui;
  Workspace ws;
  std::string dir;
};

// Two levels, a saved view, layers, a floating text, two fans and five airways with values
// that need every number picture (fractions, exponents, negatives).
inline void BuildSampleNetwork(Workspace& ws) {
  Network& net = ws.net;
  net.NetworkTitle = "Sample Mine";
  net.FileNote = "First line\nSecond\tline";
  net.AxisSignY = -1;
  net.RLName[1] = "SURFACE";
  net.RLBound[1] = {0, 1100, 1000};
  net.RLName[2] = "Level 900";
  net.RLBound[2] = {0, 990, 880};
  net.RLCount = 2;
  net.ViewValue[0][1] = 0.5f;
  net.ViewValue[0][5] = 1234.5f;
  net.ViewCode[0] = {0, 10000, 20000, 30000, 2550000, 0};
  net.ViewName[6] = "Shaft bottom";
  net.ViewValue[6][2] = -1.25f;
  net.ViewCode[6] = {0, 0, 0, 0, 40000, 50000};
  net.PrimaryLayerName[2] = "Ventilation";
  net.PrimaryLayerShow[2] = -1;
  net.SecondLayerName[3] = "Pumps";
  net.SecondLayerShow[3] = -1;
  net.TextString[1] = "Portal";
  net.TextUsed[1] = -1;
  net.TextCoord[1] = {0, 10, 20, 1000};
  for (int fan = 1; fan <= 2; ++fan) {
    net.FanName[fan] = fan == 1 ? "Main Axial" : "Booster";
    net.FanDiameter[fan] = fan == 1 ? 2.8f : 1.2f;
    for (int p = 1; p <= 10; ++p) {
      net.CurveQ[fan][p] = 10.0f * p / fan;
      net.CurveP[fan][p][1] = 3000.0f / fan - 250.0f * p / fan;
      net.CurveP[fan][p][2] = net.CurveP[fan][p][1] + 40.5f;
      net.CurveEff[fan][p] = static_cast<std::int16_t>(50 + p * 3);
    }
  }
  const int a = AddAirway(net, 100, 100, 1000, 100, 100, 900);
  const int b = AddAirway(net, 100, 100, 900, 600, 100, 900);
  const int c = AddAirway(net, 600, 100, 900, 600, 100, 1000);
  const int d = AddAirway(net, 100, 100, 900, 100, 500, 880);
  const int e = AddAirway(net, 100, 500, 880, 600, 100, 900);
  net.EntryNodeName[a] = "Intake collar";
  net.BranchName[a] = "Intake shaft";
  net.Comment[a] = "fresh";
  net.BranchCode[a] = Bit::Round | Bit::Fresh;
  net.Dim[a] = {0, 0, 5.5f};
  net.WallType[b] = 50;
  net.WallFactor[b] = 0.0123f;
  net.ShockFactor[b] = 12.5f;
  net.Resistance[b] = 1.234568e-05f;
  net.Quantity[c] = -150.25f;
  net.FanNumber[c] = 1;
  net.NoOfFans[c] = 2;
  net.BranchCode[c] |= Bit::Exhaust | Bit::FansInSeries;
  net.Pressure[c] = 2500;
  net.FanNumber[d] = -1;
  net.Pressure[d] = -35.5f;
  net.BranchCode[e] |= Bit::FixedQuantity;
  net.Quantity[e] = 25;
  net.ResType[e] = 2;
  net.Resistance[e] = 1e8f;
  net.PrimaryLayer[e] = 2;
  net.SecondLayer[e] = 3;
  net.LabelPos[e] = -0.5f;
  net.CurveFraction[e] = 40;
  net.SmokeData[e] = {0, 1, 2};
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.AirwayNo[i] = 10 + i;
    net.Length[i] = 100.0f + i / 4.0f;
  }
  net.NextAirwayNo = 20;
  RebuildNodes(net, ws.defaults, ws.ui);
}

// The lines of a text, each ended by CR LF; an unended last piece is left out.
inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
    lines.push_back(text.substr(start, end - start));
  return lines;
}

// Two files' bytes, with the first line that differs when they do not match.
inline testing::AssertionResult SameBytes(const std::string& actual, const std::string& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  std::size_t at = 0;
  while (at < actual.size() && at < expected.size() && actual[at] == expected[at]) ++at;
  const std::size_t line =
      expected.rfind('\n', at) == std::string::npos ? 0 : expected.rfind('\n', at) + 1;
  const auto lineOf = [line](const std::string& s) {
    return line >= s.size() ? std::string("<end>") : s.substr(line, s.find('\r', line) - line);
  };
  return testing::AssertionFailure()
         << "first difference at byte " << at << "\n  actual:   " << lineOf(actual)
         << "\n  expected: " << lineOf(expected);
}

}  // namespace galeris::test
