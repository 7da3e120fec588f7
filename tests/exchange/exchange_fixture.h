// Shared by the exchange tests: a workspace on a scratch folder, a small mine of shafts and
// drives, and hand-made drawings.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/defaults_file.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

namespace galeris {

struct ExchangeFixture : ::testing::Test {
  ExchangeFixture() : ws(ui), dir(test::ScratchDir()) {
    ws.paths.ProgramFolder = dir;
    ws.paths.TempFolder = dir;
    ws.units = BuiltInUnits();
    SetBuiltInDefaults(ws);
  }
  HeadlessUi ui;
  Workspace ws;
  std::string dir;
};

// A shaft, a drive with a fan, a raise and a drive: entry ends from 10 down to -200.
inline void BuildSmallMine(Workspace& ws) {
  ClearNetwork(ws);
  Network& net = ws.net;
  test::AddAirway(net, 0, 0, 10, 0, 0, -100);
  test::AddAirway(net, 0, 0, -100, 100, 0, -100);
  test::AddAirway(net, 100, 0, -100, 100, 0, -200);
  test::AddAirway(net, 100, 0, -200, 200, 50, -200);
  const char* names[] = {"", "Shaft", "Drive 1", "Raise", "Drive 2"};
  for (int i = 1; i <= 4; ++i) {
    net.BranchName[i] = names[i];
    net.Dim[i] = i % 2 ? Dim2{0, 0, 3} : Dim2{0, 4, 5};
    net.Quantity[i] = 12.5f * i;
    net.EntryNodeId[i] = NodeKey(net.Coord1[i][1], net.Coord1[i][2], net.Coord1[i][3]);
    net.ExitNodeId[i] = NodeKey(net.Coord2[i][1], net.Coord2[i][2], net.Coord2[i][3]);
  }
  net.FanNumber[2] = 1;
  net.NoOfFans[2] = 1;
}

inline void ExpectSameAirways(const Network& expected, const Network& actual) {
  ASSERT_EQ(actual.BranchCount, expected.BranchCount);
  for (int i = 1; i <= expected.BranchCount; ++i) {
    EXPECT_EQ(actual.Coord1[i], expected.Coord1[i]) << "airway " << i;
    EXPECT_EQ(actual.Coord2[i], expected.Coord2[i]) << "airway " << i;
  }
}

// Group codes and values written blank-separated, made one a line with the given ending.
inline std::string DxfOf(const std::string& items, const std::string& ending = "\r\n") {
  std::istringstream in(items);
  std::string out, item;
  while (in >> item) out += item + ending;
  return out;
}

}  // namespace galeris
