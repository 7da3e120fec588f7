// Airway resistance by Atkinson's equation: sections, services, clamps, presets, parallel
// airways, fixed lengths and resistances; the friction-only value; the shock calculator.
#include "core/airway_values.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/test_support.h"

namespace galeris {
namespace {

struct Airway {
  Network net;
  Defaults defaults;
  int i = 0;

  // A 100 m airway with its own friction factor and shock length and no preset.
  Airway(std::int32_t shape, float height, float width) {
    net.MaxAirways = 10;
    ClearStore(net);
    i = test::AddAirway(net, 1000, 1000, 500, 1100, 1000, 500);
    net.BranchCode[i] = shape;
    net.Dim[i] = {0, height, width};
    net.WallType[i] = kUserGiven;
    net.WallFactor[i] = 0.012f;
    net.ShockType[i] = kUserGiven;
    net.ShockFactor[i] = 20;
    defaults.ResPreset[2] = 10;
    defaults.WallFactorPreset[3] = 0.004f;
    defaults.ShockPreset[2] = 20;
    defaults.ShockPreset[5] = 250;
  }

  float Calc() {
    CalcResistance(net, defaults, i);
    return net.Resistance[i];
  }
};

// The value as the program computes it: single factors, double arithmetic, rounded to single.
float Atkinson(double k, double perimeter, double length, double area, double density = 1.2f) {
  return static_cast<float>(k * perimeter * length * density / (area * area * area * 1.2));
}

TEST(CalcResistance, SectionsAndDensity) {
  Airway rect(Bit::Rectangular, 5, 4);
  EXPECT_EQ(rect.Calc(), Atkinson(0.012f, 18, 120, 20));
  EXPECT_EQ(rect.net.Length[rect.i], 100);

  Airway round(Bit::Round, 3, 2);  // a height left over from a former shape is cleared
  const double pi = 3.1415926;
  EXPECT_EQ(round.Calc(), Atkinson(0.012f, 2 * pi, 120, 4 * pi / 4));
  EXPECT_EQ(round.net.Dim[round.i][1], 0);

  Airway custom(Bit::Custom, 22, 30);  // perimeter 22, area 30
  EXPECT_EQ(custom.Calc(), Atkinson(0.012f, 22, 120, 30));

  // The tests run in order, so the custom bit wins over the others.
  Airway both(Bit::Custom | Bit::Rectangular, 22, 30);
  EXPECT_EQ(both.Calc(), custom.Calc());
  Airway light(Bit::Rectangular, 5, 4);
  light.defaults.AirDensity = 0.6f;
  EXPECT_EQ(light.Calc(), Atkinson(0.012f, 18, 120, 20, 0.6f));
}

TEST(CalcResistance, ServicesAndTheSmallestArea) {
  Airway services(Bit::Rectangular | Bit::Services, 5, 4);  // 20 m2 less 0.8
  EXPECT_EQ(services.Calc(), Atkinson(0.012f, 18, 120, 20 - 0.8));

  Airway tiny(Bit::Rectangular | Bit::Services, 0.5f, 1);  // below 0 after services
  EXPECT_EQ(tiny.Calc(), Atkinson(0.012f, 3, 120, 0.05));

  Airway shapeless(0, 5, 4);  // no area, no perimeter: the smallest resistance
  EXPECT_EQ(shapeless.Calc(), 0.00001f);
}

TEST(CalcResistance, WallAndShockPresets) {
  Airway a(Bit::Rectangular, 5, 4);
  a.net.WallType[a.i] = 3;
  a.net.ShockType[a.i] = 2;
  EXPECT_EQ(a.Calc(), Atkinson(0.004f, 18, 120, 20));
  EXPECT_EQ(a.net.WallFactor[a.i], 0.004f);

  // Shock presets end at 5: type 6 keeps the airway's own shock length.
  Airway b(Bit::Rectangular, 5, 4);
  for (auto [type, length] : {std::pair{6, 20.0f}, {5, 250.0f}}) {
    b.net.ShockType[b.i] = static_cast<std::int16_t>(type);
    b.Calc();
    EXPECT_EQ(b.net.ShockFactor[b.i], length) << type;
  }
}

TEST(CalcResistance, ResistancePresetsAddOrOverride) {
  Airway door(Bit::Rectangular, 5, 4);
  door.net.ResType[door.i] = 2;
  EXPECT_EQ(door.Calc(), static_cast<float>(double{Atkinson(0.012f, 18, 120, 20)} + 10));

  door.defaults.PresetOverrides = 1;
  EXPECT_EQ(door.Calc(), 10);

  Airway open(Bit::Rectangular, 5, 4);
  open.defaults.PresetOverrides = 1;
  EXPECT_EQ(open.Calc(), 0);  // no preset: the airway offers no resistance
}

TEST(CalcResistance, FixedResistanceStillRefreshesLengthAndPresets) {
  Airway fixed(Bit::Rectangular, 5, 4);
  fixed.net.ResType[fixed.i] = kUserGiven;
  fixed.net.Resistance[fixed.i] = 0.75f;
  fixed.net.Length[fixed.i] = 3;
  fixed.net.WallType[fixed.i] = 3;
  EXPECT_EQ(fixed.Calc(), 0.75f);
  EXPECT_EQ(fixed.net.Length[fixed.i], 100);
  EXPECT_EQ(fixed.net.WallFactor[fixed.i], 0.004f);
}

TEST(CalcResistance, ParallelAirwaysAndFixedLength) {
  Airway single(Bit::Rectangular, 5, 4);
  Airway pair(Bit::Rectangular, 5, 4);
  pair.net.ParallelCount[pair.i] = 2;
  EXPECT_EQ(pair.Calc(), static_cast<float>(double{single.Calc()} / 4));

  Airway unset(Bit::Rectangular, 5, 4);
  unset.net.ParallelCount[unset.i] = 0;
  EXPECT_EQ(unset.Calc(), single.Calc());
  EXPECT_EQ(unset.net.ParallelCount[unset.i], 1);

  Airway fixedLength(Bit::Rectangular | Bit::FixedLength, 5, 4);
  fixedLength.net.Length[fixedLength.i] = 250;
  EXPECT_EQ(fixedLength.Calc(), Atkinson(0.012f, 18, 270, 20));
  EXPECT_EQ(fixedLength.net.Length[fixedLength.i], 250);
}

TEST(CalcResistance, LengthIsTheWholePartOfTheSlopeDistance) {
  Airway slope(Bit::Rectangular, 5, 4);
  slope.net.Coord2[slope.i] = {0, 1100, 1000, 570};  // 100 along, 70 down
  const double l = std::sqrt(100.0 * 100 + 70 * 70);
  EXPECT_EQ(slope.Calc(), Atkinson(0.012f, 18, l + 20, 20));
  EXPECT_EQ(slope.net.Length[slope.i], 122);

  Airway zero(Bit::Rectangular, 5, 4);
  zero.net.Coord2[zero.i] = zero.net.Coord1[zero.i];  // only the shock length remains
  EXPECT_EQ(zero.Calc(), Atkinson(0.012f, 18, 20, 20));
}

TEST(FrictionResistance, IgnoresServicesPresetsAndParallelAirways) {
  Airway a(Bit::Rectangular | Bit::Services, 5, 4);
  a.net.ResType[a.i] = 2;
  a.net.ParallelCount[a.i] = 3;
  a.net.Resistance[a.i] = 99;
  const double r = FrictionResistance(a.net, a.defaults, a.i);
  EXPECT_DOUBLE_EQ(r, 0.012f * 18.0 * 120 * 1.2f / (20.0 * 20 * 20 * 1.2));
  EXPECT_EQ(a.net.Resistance[a.i], 99);
  EXPECT_EQ(a.net.Length[a.i], 100);
}

TEST(ShockCalculator, TableTotalAndClickingABox) {
  UnitTable units = BuiltInUnits();
  std::array<ShockRow, kShockLossCount> rows{};
  EXPECT_EQ(ShockTotal(rows, units), 0);
  rows[3] = {true, 3};    // three sharp right bends
  rows[11] = {false, 5};  // a count beside an unchecked box counts nothing
  rows[19] = {true, 1};
  EXPECT_DOUBLE_EQ(ShockTotal(rows, units), 3 * 20 + 20);

  units.UnitSystem = 2;
  EXPECT_DOUBLE_EQ(ShockTotal(rows, units), ToDisplay(units, 20, Unit::Length) * 4);
  EXPECT_EQ(ShockCountAfterClick(true, 0), 1);
  EXPECT_EQ(ShockCountAfterClick(true, 4), 4);
  EXPECT_EQ(ShockCountAfterClick(false, 4), 0);
}

}  // namespace
}  // namespace galeris
