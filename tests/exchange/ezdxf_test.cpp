// Drawings of an independent DXF library, Debian's python3-ezdxf: files it writes (R12 and
// R2000, lines, 3-D polylines, light-weight polylines with elevation, bare LF and CR LF) are
// imported, and every export is read back by it, audited and compared. Without the library
// these tests fail: scripts/setup installs it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "exchange/dxf_export.h"
#include "exchange/import_file.h"
#include "tests/exchange/exchange_fixture.h"

namespace galeris {
namespace {

// Runs a script with the system's Python (where Debian puts ezdxf); its output, or a failure.
::testing::AssertionResult RunPython(const std::string& dir, const std::string& script,
                                     std::string& output) {
  test::WriteFile(dir + "script.py", "import ezdxf, sys\nfolder = sys.argv[1]\n" + script);
  const std::string command =
      "/usr/bin/python3 '" + dir + "script.py' '" + dir + "' >'" + dir + "py.out' 2>&1";
  const int status = std::system(command.c_str());
  output = test::ReadFile(dir + "py.out");
  if (status != 0) {
    return ::testing::AssertionFailure() << "python3-ezdxf is needed (scripts/setup installs it):\n"
                                         << output;
  }
  return ::testing::AssertionSuccess();
}

TEST_F(ExchangeFixture, ImportsDrawingsWrittenByEzdxf) {
  std::string output;
  ASSERT_TRUE(RunPython(dir, R"(
for version in ("R12", "R2000"):
    doc = ezdxf.new(version)
    msp = doc.modelspace()
    msp.add_line((1, 2, 3), (4, 5, 6), dxfattribs={"layer": "Drives"})
    msp.add_polyline3d([(10, 10, -5), (20, 10, -5), (20, 20, -6)])
    if version == "R2000":
        msp.add_lwpolyline([(0, 0), (5, 0), (5, 5), (1, 5)], dxfattribs={"elevation": -50})
    doc.saveas(f"{folder}{version}_lf.dxf")
    text = open(f"{folder}{version}_lf.dxf", newline="").read()
    assert "\r" not in text
    open(f"{folder}{version}_crlf.dxf", "w", newline="").write(text.replace("\n", "\r\n"))
)",
                        output));
  for (const char* name : {"R12_lf", "R12_crlf", "R2000_lf", "R2000_crlf"}) {
    const bool r2000 = std::string(name).find("R2000") == 0;
    ASSERT_EQ(ImportFile(ws, dir + name + ".dxf", {}), ImportOutcome::Done) << name;
    const Network& net = ws.net;
    ASSERT_EQ(net.BranchCount, r2000 ? 6 : 3) << name;
    EXPECT_EQ(net.Coord1[1], (Coord3{0, 1, 2, 3})) << name;
    EXPECT_EQ(net.Coord2[1], (Coord3{0, 4, 5, 6})) << name;
    EXPECT_EQ(net.Coord2[3], (Coord3{0, 20, 20, -6})) << name;
    if (r2000) {
      EXPECT_EQ(net.Coord2[6], (Coord3{0, 1, 5, -50})) << name;
    }
  }
}

TEST_F(ExchangeFixture, EveryExportIsReadBackByEzdxfWithTheSameLines) {
  BuildSmallMine(ws);
  ws.net.TextString[1] = "Portal";
  ws.net.TextUsed[1] = -1;
  ws.net.TextCoord[1] = {0, 5, 5, 10};
  ViewState view = MakeViewState(ws);
  DxfExportChoices all{true, true, true, true, true, 1};
  test::WriteFile(dir + "true.dxf", FormatDxf(ws, view, false, all, "01/02/2026 10:00:00"));
  SetThreeDView(ws, view);
  test::WriteFile(dir + "screen.dxf", FormatDxf(ws, view, true, all, "01/02/2026 10:00:00"));
  std::string output;
  ASSERT_TRUE(RunPython(dir, R"(
for name in ("true", "screen"):
    doc = ezdxf.readfile(f"{folder}{name}.dxf")
    audit = doc.audit()
    msp = doc.modelspace()
    print(name, len(audit.errors), len(msp.query("TEXT")), len(msp.query("CIRCLE")))
    for line in msp.query('LINE[layer=="Branch"]'):
        s, e = line.dxf.start, line.dxf.end
        print("%g %g %g %g %g %g " % (s.x, s.y, s.z, e.x, e.y, e.z))
)",
                        output));
  // The true file: no audit errors, floating text, branch names and data (no node names are
  // set), a circle per node, and the airways' own lines.
  std::string expected = "true 0 9 5\n";
  const Network& net = ws.net;
  for (int i = 1; i <= net.BranchCount; ++i) {
    for (const Coord3* end : {&net.Coord1[i], &net.Coord2[i]})
      for (int axis = 1; axis <= 3; ++axis) expected += std::to_string((*end)[axis]) + " ";
    expected += "\n";
  }
  EXPECT_EQ(output.substr(0, expected.size()), expected);
  EXPECT_NE(output.find("screen 0 9 5\n"), std::string::npos) << output;
}

}  // namespace
}  // namespace galeris
