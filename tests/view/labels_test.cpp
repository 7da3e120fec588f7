// Airway labels: every data type's text, its unit, and the fan and fixing prefixes.
#include "view/labels.h"
#include "tests/view/view_fixture.h"

namespace galeris {
namespace {

class LabelTest : public ::testing::Test, public test::ViewFixture {
 protected:
  LabelTest() {
    i = Add(1, 0, -100, 201, 0, -100);
    net().Quantity[i] = 25;
    net().Resistance[i] = 0.02f;
    net().Dim[i] = {0, 4, 5};  // height 4, width 5
    net().ShockFactor[i] = 12.5f;
    net().WallFactor[i] = 0.012f;
    net().FromNodeP[i] = -100;
    net().ToNodeP[i] = -112.5f;
    net().AirwayNo[i] = 417;
    net().PrimaryLayer[i] = 2;
    net().SecondLayer[i] = 7;
    net().PrimaryLayerName[2] = "Intake";
    net().SecondLayerName[7] = "Stage 2";
  }
  Network& net() { return ws.net; }
  std::string Label(int type, int option = 1) { return AirwayLabel(ws, type, i, option); }
  int i = 0;
};

TEST_F(LabelTest, AirflowGroup) {
  EXPECT_EQ(Label(DataType::Quantity), "25.0");
  EXPECT_EQ(Label(DataType::Velocity), "1.2");  // 25 / (4 x 5) = 1.25, half to even
  net().ParallelCount[i] = 2;
  EXPECT_EQ(Label(DataType::Velocity), "0.6");  // 0.625 rounds half to even
  net().ResType[i] = 3;
  EXPECT_EQ(AirwayLabel(ws, DataType::Velocity, i, 1, {0, true}), "N/A");
}

TEST_F(LabelTest, VelocityUsesTheSectionOfTheShape) {
  net().BranchCode[i] = Bit::Round;
  net().Dim[i] = {0, 0, 2};
  EXPECT_EQ(Label(DataType::Velocity), "8.0");  // 25 / (pi / 4 x 2^2)
  net().BranchCode[i] = Bit::Custom;
  net().Dim[i] = {0, 18, 10};  // perimeter 18, area 10
  EXPECT_EQ(Label(DataType::Velocity), "2.5");
}

TEST_F(LabelTest, PressureGroup) {
  EXPECT_EQ(Label(DataType::TotalLoss), "12.5");  // 0.02 x 25^2
  EXPECT_EQ(Label(DataType::FrictionLoss), "12.5");
  EXPECT_EQ(Label(DataType::RegulatorLoad), "25");  // 20 m2 x 12.5 Pa / 9.81
  net().Pressure[i] = 310;
  net().FanNumber[i] = -1;
  EXPECT_EQ(Label(DataType::Boost), "310.0");
  EXPECT_EQ(Label(DataType::RegulatorLoad), "632");
  EXPECT_EQ(Label(DataType::NodeRelative), "");  // written at the nodes, not here
}

// Fan 4: 10 to 100 m3/s, static pressure 1000 falling by 100 a point, efficiency 45 to 90 %.
class FanLabelTest : public LabelTest {
 protected:
  FanLabelTest() {
    net().FanNumber[i] = 4;
    net().NoOfFans[i] = 1;
    net().FromNodeP[i] = -300;
    net().ToNodeP[i] = 400;
    for (int j = 1; j <= 10; ++j) {
      net().CurveQ[4][j] = 10.0f * j;
      net().CurveP[4][j][1] = 1100.0f - 100.0f * j;
      net().CurveP[4][j][2] = 1150.0f - 100.0f * j;
      net().CurveEff[4][j] = static_cast<std::int16_t>(40 + 5 * j);
    }
  }
};

TEST_F(FanLabelTest, LossTakesTheFanPressureOffItsCurve) {
  struct Case {
    float quantity;
    std::int16_t fans;
    bool series;
    float solverMark;  // what a run leaves in FanSlot: the labels must not read it
    const char* loss;
  } cases[] = {
      {25, 1, false, 850, "150.0"},    // -700 + 850 on the curve
      {5, 1, false, -9999, "300.0"},   // stalled: the curve's first point, 1000
      {200, 1, false, 9999, "-700.0"}, // negated: the fan gives nothing
      {25, 2, true, 1700, "1000.0"},   // two in series double the pressure
      {25, 2, false, 975, "275.0"},    // two in parallel halve the flow each
      {25, 1, false, 0, "150.0"},      // opened, never run
  };
  for (const Case& c : cases) {
    net().Quantity[i] = c.quantity;
    net().NoOfFans[i] = c.fans;
    net().BranchCode[i] = c.series ? Bit::FansInSeries : 0;
    net().FanSlot[i] = c.solverMark;
    EXPECT_EQ(Label(DataType::TotalLoss), c.loss) << c.quantity << " x" << c.fans;
  }
  net().Pressure[i] = 0;
}

TEST_F(FanLabelTest, PowerReadsTheEfficiencyOfOneFanInSeries) {
  net().FanSlot[i] = 1700;
  net().NoOfFans[i] = 2;
  net().BranchCode[i] = Bit::FansInSeries;
  // 25 m3/s x 1700 Pa over 52.5 % at 25 m3/s (not 46.25 % at 12.5)
  EXPECT_EQ(Label(DataType::FrictionPower), "81");
  net().CurveEff[4] = {};
  EXPECT_EQ(Label(DataType::FrictionPower), "53");  // no efficiency curve: the default 80 %
}

TEST_F(FanLabelTest, StalledOrNegatedBoostShowsTheCurveEnd) {
  net().NoOfFans[i] = 2;
  net().CurveQ[4] = {0, 10, 20, 30};
  net().CurveP[4] = {};
  net().CurveP[4][1][1] = 1500;
  net().CurveP[4][3][1] = 400;
  net().Pressure[i] = -9999;
  EXPECT_EQ(Label(DataType::Boost), "Stall @ 3000.0");
  net().Pressure[i] = 9999;
  EXPECT_EQ(Label(DataType::Boost), "Negate @ 800.0");
}

TEST_F(LabelTest, AirwayDataGroup) {
  EXPECT_EQ(Label(DataType::Resistance), "N/A");  // automatic resistance
  net().ResType[i] = 50;
  EXPECT_EQ(Label(DataType::Resistance), "0.02000");
  EXPECT_EQ(Label(DataType::ShockLength), "12.5");
  EXPECT_EQ(Label(DataType::FrictionFactor), "0.01200");
  EXPECT_EQ(Label(DataType::Dimensions), "5.0 x 4.0");
  net().BranchCode[i] = Bit::Round;
  EXPECT_EQ(Label(DataType::Dimensions), "Diam 5.0");
  net().BranchCode[i] = Bit::Custom;
  net().Dim[i] = {0, 18, 20.5f};
  EXPECT_EQ(Label(DataType::Dimensions), "Area 20.5  P 18.0");
  EXPECT_EQ(Label(DataType::AirwayLength), "200");
}

TEST_F(LabelTest, EnergyGroup) {
  EXPECT_EQ(Label(DataType::FrictionPower), "0");  // 0.3125 kW
  net().Resistance[i] = 0.2f;
  EXPECT_EQ(Label(DataType::FrictionPower), "3");    // 3.125 kW
  EXPECT_EQ(Label(DataType::FrictionCost), "2190");  // 3.125 kW x 8760 h x 0.08
  EXPECT_EQ(Label(DataType::FanPower), "0");
  net().FanNumber[i] = -1;
  net().Pressure[i] = 1000;
  EXPECT_EQ(Label(DataType::FanPower), "31");  // 1000 Pa x 25 / 0.8
}

TEST_F(LabelTest, OtherGroupBritishUnitsAndOutsideTheStore) {
  EXPECT_EQ(Label(DataType::AirwayNumber), "417");
  EXPECT_EQ(Label(DataType::LayerNumber), "2,7");
  EXPECT_EQ(Label(DataType::LayerName), "Intake,Stage 2");
  net().Contaminant[i] = 40;
  EXPECT_EQ(Label(DataType::Contaminant), "40");
  net().SmokeData[i][2] = 3;
  EXPECT_EQ(AirwayLabel(ws, DataType::Contaminant, i, 1, {1, false}), "3");
  net().SmokeTime[i] = 7200;
  EXPECT_EQ(Label(DataType::SpreadTime), "02:00:00");
  net().SmokeTime[i] = 86404;  // a day by the spread's own divisor
  EXPECT_EQ(Label(DataType::SpreadTime), "24:00:00");
  net().SmokeTime[i] = 9999999;
  EXPECT_EQ(Label(DataType::SpreadTime), "");  // never reached
  EXPECT_EQ(Label(99), "");
  ws.units.UnitSystem = 2;
  EXPECT_EQ(Label(DataType::Quantity), "53.0");  // 25 x 2.1189
  EXPECT_EQ(Label(DataType::AirwayLength), "656");
  EXPECT_EQ(AirwayLabel(ws, DataType::Quantity, 5, 1), "");
}

TEST_F(LabelTest, PrefixesTellFansAndFixings) {
  net().FanNumber[i] = 4;
  EXPECT_EQ(Label(DataType::Quantity, 0), "Fan4:25.0");
  net().NoOfFans[i] = 2;
  EXPECT_EQ(Label(DataType::Quantity, 0), "2xFan4:25.0");
  EXPECT_EQ(Label(DataType::Quantity, 1), "25.0");
  net().FanNumber[i] = -1;
  EXPECT_EQ(Label(DataType::Quantity, 0), "FixP 25.0");
  net().FanNumber[i] = 0;
  net().BranchCode[i] |= Bit::FixedQuantity;
  net().ParallelCount[i] = 3;
  EXPECT_EQ(Label(DataType::Quantity, 0), "[3] FixQ 25.0");
}

}  // namespace
}  // namespace galeris
