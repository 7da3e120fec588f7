// The airway info report: heading and rows by kind of airway, the fan group's stalled and
// off-curve texts, and the barometric base.
#include "simulate/airway_info.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/headless_ui.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

std::string Row(const AirInfoReport& r, const std::string& name) {
  for (const AirInfoRow& row : r.rows)
    if (row.name == name) return row.text;
  return "<none>";
}

TEST(AirwayInfo, RowsByKindOfAirway) {
  struct Case {
    const char* heading;
    std::function<void(Network&)> set;
    const char* row;
    const char* text;
    std::size_t rows;
  };
  const Case cases[] = {
      {"Passive Airway 7", [](Network&) {}, "Node Bar Pres", "101.00 kPa to 102.18 kPa", 13},
      {"Passive Airway 7 x 2", [](Network& n) { n.ParallelCount[1] = 2; }, "Airflow",
       "40.0 m3/s @ 2.5 m/s", 13},
      {"Fixed Quantity Airway 7",
       [](Network& n) { n.BranchCode[1] |= Bit::FixedQuantity, n.Pressure[1] = -400; },
       "Required Res", "0.25000 Ns2/m8", 16},
      {"Fixed Pressure Airway 7", [](Network& n) { n.FanNumber[1] = -1, n.Pressure[1] = 300; },
       "Fix Pressure", "Static 300.0 Pa  Total 300.0 Pa", 15},
      {"Fan Airway 7",
       [](Network& n) { n.FanNumber[1] = 1, n.NoOfFans[1] = 1, n.Pressure[1] = -9999; },
       "Fan Pressures", "Static 1500.0 Pa Stalled +", 16},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.heading);
    HeadlessUi ui;
    Workspace ws(ui);
    ws.net.MaxAirways = 10;
    ClearStore(ws.net);
    ws.units = BuiltInUnits();
    const int i = test::AddAirway(ws.net, 0, 0, 500, 0, 0, 400);
    ws.net.AirwayNo[i] = 7;
    ws.net.Quantity[i] = 40;
    ws.net.FanName[1] = "Axial";
    ws.net.CurveP[1][1][1] = 1500;
    c.set(ws.net);
    const AirInfoReport r = BuildAirInfo(ws, i);
    EXPECT_EQ(r.heading, c.heading);
    EXPECT_EQ(Row(r, c.row), c.text);
    EXPECT_EQ(r.rows.size(), c.rows);
  }
}

}  // namespace
}  // namespace galeris
