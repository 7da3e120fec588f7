// Fan curves: the free-delivery point, slots by fan type and arrangement, evaluation on and off
// the curve, and the efficiency curve.
#include "simulate/fan_curves.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/headless_ui.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

// A falling fan curve: Q = 10..100 m3/s, static 2000..1100 Pa, total 100 Pa above static.
void PutFan(Network& net, int f, float slope = 10) {
  net.FanName[f] = "Fan " + std::to_string(f);
  net.FanDiameter[f] = 2;
  for (int j = 1; j <= 10; ++j) {
    net.CurveQ[f][j] = 10.0f * j;
    net.CurveP[f][j][1] = 2100.0f - slope * 10.0f * j;
    net.CurveP[f][j][2] = net.CurveP[f][j][1] + 100.0f;
    net.CurveEff[f][j] = 0;
  }
}

struct FanFixture : ::testing::Test {
  HeadlessUi ui;
  Workspace ws{ui};
  Network& net = ws.net;

  int AddFanAirway(int fan, int count, bool series) {
    const int i = test::AddAirway(net, 0, 0, 0, 10, 10, 0);
    net.FanNumber[i] = static_cast<std::int16_t>(fan);
    net.NoOfFans[i] = static_cast<std::int16_t>(count);
    if (series) net.BranchCode[i] |= Bit::FansInSeries;
    return i;
  }
};

TEST_F(FanFixture, FreeDeliveryExtendsTheLastSegmentToZeroPressure) {
  PutFan(net, 1);
  ValidateFanCurves(ws);
  // Static 1100 Pa at 100 m3/s, falling 10 Pa per m3/s: zero at 210 m3/s.
  EXPECT_FLOAT_EQ(net.CurveQ[1][11], 210.0f);
  EXPECT_EQ(net.CurveP[1][11], (std::array<float, 3>{0, -1200, 0}));
  EXPECT_TRUE(ui.MessageTexts().empty());
}

TEST_F(FanFixture, FlatStaticCurveFallsBackToTheTotalCurve) {
  PutFan(net, 1);
  for (int j = 1; j <= 10; ++j) {
    net.CurveP[1][j][1] = 500;
    net.CurveP[1][j][2] = 1100.0f - 10.0f * j;
  }
  ValidateFanCurves(ws);
  EXPECT_FLOAT_EQ(net.CurveQ[1][11], 1100.0f);  // total 1000 Pa at 100, falling 1 per m3/s
  EXPECT_FLOAT_EQ(net.CurveP[1][11][1], -1000.0f);
}

TEST_F(FanFixture, InvalidCurveStopsTheCheckWithItsNumber) {
  PutFan(net, 1);
  PutFan(net, 2);
  PutFan(net, 3);
  for (int j = 1; j <= 10; ++j) net.CurveP[2][j] = {0, 700, 800};  // all pressures equal
  net.CurveQ[3][11] = 77;  // fan 3 comes after the invalid one: not looked at
  ValidateFanCurves(ws);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{"Invalid Fan Curve : Fan curve # 2"});
  EXPECT_FLOAT_EQ(net.CurveQ[1][11], 210.0f);
  EXPECT_FLOAT_EQ(net.CurveQ[3][11], 77.0f);
  EXPECT_FLOAT_EQ(net.CurveP[2][11][1], 0.0f);
}

TEST_F(FanFixture, ArrangementKeysReadParallelTimesHundredPlusSeries) {
  const struct {
    int count;
    bool series;
    int key;
  } cases[] = {{3, true, 103}, {3, false, 301}, {0, false, 10101}, {0, true, 201}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.key);
    EXPECT_EQ(FanArrangementKey(net, AddFanAirway(1, c.count, c.series)), c.key);
  }
  const int huge = AddFanAirway(1, 400, false);
  EXPECT_THROW(FanArrangementKey(net, huge), std::overflow_error);
}

TEST_F(FanFixture, SlotsScaleFlowsInParallelAndPressuresInSeries) {
  PutFan(net, 1);
  PutFan(net, 2);
  ValidateFanCurves(ws);
  const int single = AddFanAirway(1, 1, false);
  const int twoParallel = AddFanAirway(1, 2, false);
  const int twoSeries = AddFanAirway(1, 2, true);
  const int oneInSeries = AddFanAirway(1, 1, true);  // key 101, as one fan in parallel
  const int otherType = AddFanAirway(2, 1, false);
  const int fixedPressure = AddFanAirway(-1, 0, false);
  const int noFan = AddFanAirway(0, 0, false);
  BuildSimCurves(ws);
  EXPECT_EQ(ws.sim.SimFanCount, 5);
  std::vector<int> slots;
  for (int i : {single, twoParallel, twoSeries, oneInSeries, otherType, fixedPressure, noFan})
    slots.push_back(net.FanSlot[i]);
  EXPECT_EQ(slots, (std::vector<int>{1, 2, 3, 1, 4, -1, 0}));
  EXPECT_EQ(ws.sim.SimCurveCount, 4);
  for (int j = 1; j <= 11; ++j) {
    EXPECT_FLOAT_EQ(net.SimCurveQ[2][j], 2 * net.CurveQ[1][j]);
    EXPECT_FLOAT_EQ(net.SimCurveP[2][j][1], net.CurveP[1][j][1]);
    EXPECT_FLOAT_EQ(net.SimCurveP[3][j][2], 2 * net.CurveP[1][j][2]);
  }
}

TEST_F(FanFixture, FanNumberOutsideTheDatabaseOrTooManyArrangementsEndTheRun) {
  const int outside = AddFanAirway(300, 1, false);
  EXPECT_THROW(BuildSimCurves(ws), std::out_of_range);
  net.FanNumber[outside] = 0;
  net.FanMax = 2;
  PutFan(net, 1);
  for (int n = 1; n <= 3; ++n) AddFanAirway(1, n, false);
  EXPECT_THROW(BuildSimCurves(ws), std::length_error);
}

struct EvaluateFixture : FanFixture {
  int airway = 0;
  void SetUp() override {
    PutFan(net, 1);
    ValidateFanCurves(ws);
    airway = AddFanAirway(1, 1, false);
    BuildSimCurves(ws);
  }
  FanPoint At(float q) { return EvaluateFanCurve(net, 1, q, airway); }
};

TEST_F(EvaluateFixture, OnTheCurveAndAtItsEnds) {
  // Beyond point 10, up to the free-delivery point, the last segment is the line to point 11.
  const float last = (1100.0f + 1200.0f) / (100.0f - 210.0f);
  const float kAny = std::nanf("");
  const struct {
    float q;
    FanState state;
    float p, slope;
  } cases[] = {
      {25, FanOnCurve, 1850, -10},  // the segment slope
      {150, FanOnCurve, -1200.0f + (150.0f - 210.0f) * last, last},
      {10, FanOnCurve, 2000, kAny},  // exactly point 1: on the curve
      {9.99f, FanStalled, 2000, -50},
      {-30, FanStalled, kAny, kAny},
      {210, FanNegated, 0, -50},  // exactly point 11: negated
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.q);
    const FanPoint p = At(c.q);
    EXPECT_EQ(p.State, c.state);
    EXPECT_FLOAT_EQ(p.FanP, std::isnan(c.p) ? p.FanP : c.p);  // kAny: not looked at
    EXPECT_FLOAT_EQ(p.Slope, std::isnan(c.slope) ? p.Slope : c.slope);
  }
}

TEST_F(EvaluateFixture, CurveFractionBlendsStaticAndTotal) {
  for (int fraction : {0, 100, 50}) {
    net.CurveFraction[airway] = static_cast<std::int16_t>(fraction);
    EXPECT_FLOAT_EQ(At(30).FanP, 1800.0f + fraction) << fraction;
  }
}

TEST_F(EvaluateFixture, FixedPressureKeepsTheCallersValue) {
  const FanPoint p = EvaluateFanCurve(net, kFixedPressureSlot, 55, airway, 321.5f);
  EXPECT_EQ(p.State, FanOnCurve);
  EXPECT_FLOAT_EQ(p.FanP, 321.5f);
  EXPECT_FLOAT_EQ(p.Slope, -1.0f);
}

TEST_F(FanFixture, EfficiencyCurve) {
  PutFan(net, 1);
  const int i = AddFanAirway(1, 2, false);
  net.Quantity[i] = 50;
  EXPECT_FLOAT_EQ(EvaluateFanEfficiency(ws, i), 80.0f);  // no efficiency curve: the default
  for (int j = 1; j <= 10; ++j) net.CurveEff[1][j] = static_cast<std::int16_t>(40 + 4 * j);
  // Two in parallel: 50 m3/s is 25 per fan, half way between points 2 and 3; in series each
  // fan carries the whole flow; 100 is exactly the last point.
  for (auto [q, series, eff] : {std::tuple{50.0f, false, 50.0f},
                                {50.0f, true, 60.0f},
                                {500.0f, true, 80.0f},
                                {1.0f, true, 44.0f},
                                {100.0f, true, 80.0f}}) {
    net.Quantity[i] = q;
    net.BranchCode[i] = series ? Bit::FansInSeries : 0;
    EXPECT_FLOAT_EQ(EvaluateFanEfficiency(ws, i), eff) << q;
  }
  net.FanNumber[i] = -1;
  EXPECT_FLOAT_EQ(EvaluateFanEfficiency(ws, i), 80.0f);
}

}  // namespace
}  // namespace galeris
