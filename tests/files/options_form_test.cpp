// The Options dialog's fields against the defaults: a round trip through the form and
// Defaults.dat changes nothing, every limit keeps the old value with its message, and the
// mappings with a rule of their own (divisions, efficiency, inversions, presets, auto save).
#include "files/options_form.h"

#include <gtest/gtest.h>

#include "core/headless_ui.h"
#include "core/units.h"
#include "files/defaults_file.h"
#include "tests/files/network_test_support.h"

namespace galeris {
namespace {

struct Options : ::testing::Test, test::FileFixture {
  Options() { ws.units = BuiltInUnits(); }
  // Applies the form with one box typed in.
  OptionsApplied Type(const std::string& control, const std::string& text) {
    OptionsForm form = LoadOptionsForm(ws);
    form.Text[control] = text;
    ui.ClearRecords();
    return ApplyOptionsForm(ws, form);
  }
};

TEST_F(Options, RoundTripThroughTheFormAndTheFileChangesNothing) {
  SaveDefaults(ws);
  const std::string before = test::ReadFile(ws.paths.InProgram("Defaults.dat"));
  ApplyOptionsForm(ws, LoadOptionsForm(ws));
  EXPECT_TRUE(ui.Records().empty()) << ui.MessageTexts().front();
  SaveDefaults(ws);
  EXPECT_EQ(test::ReadFile(ws.paths.InProgram("Defaults.dat")), before);

  // Changed in the form, saved, and loaded into a fresh program: the same form comes back.
  OptionsForm form = LoadOptionsForm(ws);
  form.Text["txtIt"] = "700";
  form.Viewer[3] = false;
  form.ResName[12] = "Regulator";
  form.Fonts[2].Size = 12;
  ApplyOptionsForm(ws, form);
  SaveDefaults(ws);
  test::FileFixture other;
  other.ws.units = ws.units;
  other.ws.paths = ws.paths;
  LoadDefaults(other.ws);
  const OptionsForm back = LoadOptionsForm(other.ws);
  EXPECT_EQ(back.Text, LoadOptionsForm(ws).Text);
  EXPECT_EQ(back.ResName[12], "Regulator");
  EXPECT_EQ(back.Fonts[2].Size, 12);
}

TEST_F(Options, LimitsKeepTheOldValueWithTheirMessage) {
  struct Case {
    const char *control, *typed;
    bool accepted;
    const char* message;
  } cases[] = {
      {"TxtCd", "0", false, "Limits of Allowable Divisions Exceeded"},
      {"TxtTol", "0.2", false, "Limits Exceeded.  Keep values between .25% and 20%"},
      {"TxtPowerZoom", "0", false, "Power Zoom exceeds limits"},
      {"TxtTilt", "45.1", false, "Tilt rotation exceeds limits"},
      {"TxtMj", "4", false, "Limits of Allowable Major Grid Size Exceeded"},
      {"Txtgx", "-1", false, "Limits of Allowable Grid Exceeded"},
      {"txtIt", "5001", false, "Limits of Itterations Exceeded"},
      {"txtMe", "0.00009", false, "Limits of Allowable Errors Exceeded"},
      {"TxtDensity", "2001", false, "Limits of Allowable Density Exceeded"},
      {"TxtAirP", "0", true, "Limits of Allowable Air Pressure Exceeded"},
      {"TxtCost", "0", false, "Limits of Allowable Cost Exceeded"},
      {"TxtEff", "0", false, "Limits of Allowable Efficiency Exceeded"},
      {"TxtFanMax", "10", false, "Limits of Allowable Fan Types Exceeded"},
      {"TxtFanMax", "11", true, "Limits of Allowable Fan Types Exceeded"},
      {"TxtAirRL", "-10000000", false, "Limits of Allowable RL's Exceeded"},
      {"TxtAirRL", "10000000", true, "Limits of Allowable RL's Exceeded"},
      {"txtIt", "12a", false, "Limits of Itterations Exceeded"},
      {"txtHeight", "tall", false, "Drive Height: not a number, the old value stays"},
  };
  for (const Case& c : cases) {
    const std::string old = LoadOptionsForm(ws).Text.at(c.control);
    Type(c.control, c.typed);
    EXPECT_EQ(ui.Said(c.message), !c.accepted) << c.control << " " << c.typed;
    EXPECT_EQ(ui.MessageTexts().size(), c.accepted ? 0u : 1u) << c.control << " " << c.typed;
    const std::string now = LoadOptionsForm(ws).Text.at(c.control);
    if (c.accepted) {
      EXPECT_EQ(std::stod(now), std::stod(c.typed)) << c.control;
    } else {
      EXPECT_EQ(now, old) << c.control << " " << c.typed;
    }
  }
  EXPECT_EQ(ws.net.FanMax, 11);
  EXPECT_EQ(ws.net.FanName.size(), 12u);
}

TEST_F(Options, MappingsWithRulesOfTheirOwn) {
  Type("TxtTol", "0.25");
  EXPECT_EQ(ws.defaults.ProximityDivisions, 400);
  Type("TxtTol", "20");
  EXPECT_EQ(ws.defaults.ProximityDivisions, 5);
  Type("TxtAirRL", "???");
  EXPECT_FLOAT_EQ(ws.defaults.SurfaceRL, 99999);

  OptionsForm form = LoadOptionsForm(ws);
  form.SaveTime = true;
  form.Text["txtsavetime"] = "25";
  form.PropertyInherit = false;
  form.ReverseY = true;
  form.SimSource = 1;
  form.Wall[3] = -0.02f;
  form.ShockName[4] = "UnDeFiNeD";
  const OptionsApplied applied = ApplyOptionsForm(ws, form);
  EXPECT_EQ(ws.defaults.AutoSaveMinutes, 10);
  EXPECT_TRUE(applied.AutosaveChanged);
  EXPECT_TRUE(applied.GridChanged);
  EXPECT_NE(ws.defaults.NoPropertyInherit, 0);
  EXPECT_EQ(ws.net.AxisSignY, -1);
  EXPECT_EQ(ws.defaults.SmokeAddSource, 0);
  EXPECT_FLOAT_EQ(ws.defaults.WallFactorPreset[3], 0.02f);
  EXPECT_EQ(ws.defaults.ShockName[4], "");

  SwitchOptionUnits(ws, form, 2);
  EXPECT_EQ(ws.defaults.UnitSystem, 2);
}

}  // namespace
}  // namespace galeris
