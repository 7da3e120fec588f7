// Mangled files taken through the whole program: thousands of damaged copies of real network
// files are opened, solved, drawn in every saved view, saved and read again. Nothing may crash,
// and a refused network file leaves the open one as it was. (The settings readers alone: their
// own tests and the fuzz replays.)
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "simulate/simulate.h"
#include "tests/support/test_support.h"
#include "view/drawing.h"
#include "view/raster_canvas.h"
#include "view/view_state.h"

namespace galeris {
namespace {

// Values that have broken readers before: empty, signs, the edges of 16 and 32 bits, floats
// beyond a single, words where numbers belong, and a field far longer than any text slot.
const std::vector<std::string> kNastyFields = {
    "",       "-1",         "0",        "32767",    "32768",
    "-32769", "2147483648", "99999999", "1e38",     "-1e39",
    "1e-45",  "nan",        "inf",      "-0",       "x",
    "3.1.4",  "1,5",        "GALERIS3", "\x01\xff", std::string(5000, 'A')};

// Damages a file by one to three of: a field replaced, a line dropped or doubled, a byte
// changed, the file cut short, a long line pushed in.
std::string Mangle(std::string bytes, std::mt19937& rng) {
  const auto pick = [&rng](std::size_t n) {
    return n == 0 ? std::size_t{0} : std::uniform_int_distribution<std::size_t>(0, n - 1)(rng);
  };
  const int steps = 1 + static_cast<int>(pick(3));
  for (int step = 0; step < steps && !bytes.empty(); ++step) {
    const std::size_t at = pick(bytes.size());
    const std::size_t lineStart =
        bytes.rfind('\n', at) == std::string::npos ? 0 : bytes.rfind('\n', at) + 1;
    std::size_t lineEnd = bytes.find('\n', at);
    if (lineEnd == std::string::npos) lineEnd = bytes.size();
    switch (pick(6)) {
      case 0: {  // a field replaced
        std::size_t from = at;
        while (from > lineStart && bytes[from - 1] != '\t' && bytes[from - 1] != ',') --from;
        std::size_t to = at;
        while (to < lineEnd && bytes[to] != '\t' && bytes[to] != ',' && bytes[to] != '\r') ++to;
        bytes.replace(from, to - from, kNastyFields[pick(kNastyFields.size())]);
        break;
      }
      case 1:
        bytes.erase(lineStart, std::min(lineEnd + 1, bytes.size()) - lineStart);
        break;
      case 2:
        bytes.insert(lineStart, bytes.substr(lineStart, lineEnd + 1 - lineStart));
        break;
      case 3:
        bytes[at] = static_cast<char>(pick(256));
        break;
      case 4:
        bytes.resize(at);
        break;
      default:
        bytes.insert(lineStart, std::string(pick(70000), '\t') + "\r\n");
        break;
    }
  }
  return bytes;
}

// Rounds per file: a few dozen in every test run; GALERIS_FUZZ_ROUNDS asks for a deeper search.
// After a crash the last damaged file is still in the test's scratch folder.
int Rounds() {
  const char* asked = std::getenv("GALERIS_FUZZ_ROUNDS");
  return asked != nullptr && std::atoi(asked) > 0 ? std::atoi(asked) : 40;
}

struct Program {
  explicit Program(HeadlessUi::Policy policy) : ui(policy), ws(ui) {
    ws.paths.ProgramFolder = test::SourcePath("data/");
    ws.paths.TempFolder = test::ScratchDir();
    StartUp(ws);
    ws.sim.ShowProgress = 0;
  }
  HeadlessUi ui;
  Workspace ws;
};

// Everything a user may do with a network that opened: solve it, look at it in every view,
// save it and open the saved file. The user gives up when the solver asks to go on.
void UseNetwork(HeadlessUi& ui, Workspace& ws) {
  ui.SetPolicy(HeadlessUi::Policy::AlwaysNo);
  ws.sim.SimMode = kModeSimulate;
  RunSimulation(ws);
  if (ws.net.ViewName[1].empty()) MakePermanentViews(ws.net);
  RasterCanvas canvas(160, 120);
  ViewState view = MakeViewState(ws);
  view.PixelWidth = canvas.Width();
  view.PixelHeight = canvas.Height();
  view.AspectRatio = 0.75f;
  for (int slot = 1; slot < static_cast<int>(ws.net.ViewName.size()); ++slot) {
    if (ws.net.ViewName[slot].empty()) continue;
    LoadViewSlot(ws, view, slot);
    BuildVisibleList(ws, view);
    ProjectNetwork(ws, view);
    FitNetwork(ws, view);
    RedrawNetwork(ws, view, canvas);
  }
  const std::string again = ws.paths.TempFolder + "again.sim";
  test::WriteFile(again, FormatNetworkFile(ws));
  Program reader(HeadlessUi::Policy::AlwaysYes);
  OpenNetwork(reader.ws, again);
}

class MangledNetwork : public ::testing::TestWithParam<const char*> {};

TEST_P(MangledNetwork, OpensSolvesDrawsAndSavesOrIsRefusedWholesale) {
  const std::string original = test::ReadFile(test::SourcePath(GetParam()));
  Program open(HeadlessUi::Policy::AlwaysNo);  // the user's network, which a refusal keeps
  ASSERT_TRUE(OpenNetwork(open.ws, test::SourcePath("examples/example_mine.sim")));
  const std::string kept = FormatNetworkFile(open.ws);
  const std::string path = open.ws.paths.TempFolder + "mangled.sim";
  std::mt19937 rng(20261123);
  for (int round = 0; round < Rounds(); ++round) {
    const std::string bytes = Mangle(original, rng);
    test::WriteFile(path, bytes);
    if (!OpenNetwork(open.ws, path)) {
      ASSERT_EQ(FormatNetworkFile(open.ws), kept) << "round " << round;
    } else {
      ASSERT_TRUE(OpenNetwork(open.ws, test::SourcePath("examples/example_mine.sim")));
    }
    Program yes(HeadlessUi::Policy::AlwaysYes);
    if (OpenNetwork(yes.ws, path)) UseNetwork(yes.ui, yes.ws);
  }
}

INSTANTIATE_TEST_SUITE_P(Files, MangledNetwork,
                         ::testing::Values("examples/example_mine.sim",
                                           "tests/files/fixtures/v24/mine_v24.sim",
                                           "tests/files/fixtures/v20/mine_v20.sim",
                                           "tests/files/fixtures/v10/mine_v10.sim"));

}  // namespace
}  // namespace galeris
