// Restriction diagnostics: heavy airways that land in the tree, by mode, and the dialogs of
// the bulkhead and fan commands.
#include "simulate/restrictions.h"

#include <gtest/gtest.h>

#include "tests/simulate/mesh_fixture.h"

namespace galeris {
namespace {

using test::kSurface;
using test::MeshFixture;
using Lines = std::vector<std::string>;

// A loop through the surface, and an airway from it into a closed circuit underground: that
// airway is the only way in, a bridge that must stay in the tree.
struct WithBridge : MeshFixture {
  int bridge = 0;
  explicit WithBridge(std::int16_t mode) {
    ws.sim.SimMode = mode;
    AddSurfaceLoop();                        // 1, 2
    bridge = Add(10, 10, 500, 50, 10, 500);  // 3
    Add(50, 10, 500, 60, 10, 500);           // 4
    Add(60, 10, 500, 50, 10, 500);           // 5
  }
  // Fixes the bridge's flow, and makes it a bulkhead or gives it a fan.
  void FixBridge(std::int16_t resType = 0, std::int16_t fan = 0) {
    net.BranchCode[bridge] |= Bit::FixedQuantity;
    if (resType) net.ResType[bridge] = resType;
    if (fan) net.FanNumber[bridge] = fan;
  }
};

TEST(Restrictions, FixedQuantityInTheTreeStopsEveryRun) {
  for (std::int16_t mode : {0, -1, 1, 2, 3}) {
    WithBridge f(mode);
    f.FixBridge();
    f.Mesh();
    EXPECT_EQ(f.ws.sim.SimStatus, 1) << mode;
    EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow"})) << mode;
    const int at = f.At(3);
    EXPECT_EQ(f.net.Comment[at].Trimmed(), "Bad Fix");
    EXPECT_FALSE(f.net.BranchCode[at] & Bit::ErrorMark);
    EXPECT_TRUE(f.ui.Records().empty());
  }
}

TEST(Restrictions, BulkheadOrFanAloneIsNeverReported) {
  for (std::int16_t mode : {1, 2, 3}) {
    WithBridge f(mode);
    f.net.ResType[f.bridge] = 1;
    f.net.FanNumber[4] = 1;
    f.Mesh();
    EXPECT_EQ(f.ws.sim.SimStatus, 0) << mode;
    EXPECT_TRUE(f.Errors().empty());
    EXPECT_TRUE(f.ui.Records().empty());
  }
}

TEST(Restrictions, FixedBulkheadInTheTreeCautionsTheBulkheadSearch) {
  WithBridge f(1);
  f.FixBridge(1);
  f.Mesh();
  EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow", "3\tBBH not required"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "Bad BBH");
  EXPECT_TRUE(f.net.BranchCode[f.At(3)] & Bit::ErrorMark);
  EXPECT_EQ(f.ui.MessageTexts(),
            Lines{"CAUTION - Bulkheads are present which MAY restrict meshes formation."});
  EXPECT_FALSE(f.ws.sim.RestrictionFound);
  EXPECT_EQ(f.ws.sim.SimStatus, 1);
}

TEST(Restrictions, FixedFanInTheTreeWarnsTheFanSearch) {
  WithBridge f(3);
  f.FixBridge(0, 2);
  f.Mesh();
  EXPECT_EQ(f.Errors(), (Lines{"3\tFIX restricting flow", "3\tFan restricted"}));
  EXPECT_EQ(f.net.Comment[f.At(3)].Trimmed(), "Bad Fan");
  EXPECT_EQ(f.ui.MessageTexts(), Lines{"WARNING - Fans are present which restrict other fans."});
}

TEST(Restrictions, RemovalAskedFirstNoKeepsTheBulkheadsYesClearsThePreset) {
  for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    WithBridge f(2);
    f.FixBridge(1);
    f.ui.QueueAnswer(answer);
    f.Mesh();
    const int at = f.At(3);
    ASSERT_EQ(f.ui.Records().size(), answer == MsgAnswer::Yes ? 2u : 1u);
    EXPECT_EQ(f.ui.Records()[0].text,
              "WARNING - This will remove redundant bulkheads from the network.  Continue ?");
    if (answer == MsgAnswer::No) {
      EXPECT_EQ(f.net.ResType[at], 1);
      EXPECT_EQ(f.net.Comment[at].Trimmed(), "Bad BBH");
      EXPECT_EQ(f.ws.sim.SimStatus, 1);
      continue;
    }
    EXPECT_EQ(f.net.ResType[at], 0);
    EXPECT_LT(f.net.Resistance[at], 1);  // the bulkhead's preset is gone
    EXPECT_EQ(f.ui.Records()[1].text,
              "There were 1 unnecessary bulkheads removed from the network");
  }
}

}  // namespace
}  // namespace galeris
