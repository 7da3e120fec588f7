// Hand-built meshes for the balancing and pressure tests: airways numbered from 1, meshes
// given as lists of signed store positions, and one falling fan curve.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "core/headless_ui.h"
#include "simulate/fan_curves.h"
#include "tests/support/test_support.h"

namespace galeris::test {

struct HandMesh : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  int Airway(float r, float q = 0) {
    const int i = ++net.BranchCount;
    net.Resistance[i] = r;
    net.Quantity[i] = q;
    net.AirwayNo[i] = 100 + i;
    net.BranchCode[i] = Bit::Rectangular;
    net.LabelPos[i] = 0.5f;
    return i;
  }

  void Meshes(std::initializer_list<std::vector<int>> meshes) {
    int pos = 1;
    int m = 0;
    for (const auto& members : meshes) {
      net.MeshStart[++m] = pos;
      for (int v : members) net.MeshMember[pos++] = static_cast<std::int16_t>(v);
    }
    net.MeshStart[m + 1] = pos;
    ws.sim.MeshCount = static_cast<std::int16_t>(m);
  }

  // Fan type f: Q 10..100 m3/s, static 2000 falling 10 Pa per m3/s, total 100 Pa above.
  void PutFan(int f) {
    net.FanName[f] = "Main";
    net.FanDiameter[f] = 2;
    for (int j = 1; j <= 10; ++j) {
      net.CurveQ[f][j] = 10.0f * j;
      net.CurveP[f][j] = {0, 2100.0f - 100.0f * j, 2200.0f - 100.0f * j};
    }
    ValidateFanCurves(ws);
  }
};

}  // namespace galeris::test
