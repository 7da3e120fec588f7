// The printing rules without a printer: the scale rules, the page's place, paper colours, the
// title block, and a page painted on a recording canvas.
#include "view/print_layout.h"

#include <limits>

#include "tests/view/view_fixture.h"

namespace galeris {
namespace {

// Keeps the texts and counts the lines, in world units of 1 per point.
struct RecordingCanvas : Canvas {
  std::vector<std::string> texts;
  std::vector<Colour> colours;
  int lines = 0;
  float left = 0, top = 0, width = 0, height = 0;
  void SetScale(float l, float t, float w, float h) override {
    left = l, top = t, width = w, height = h;
  }
  void Clear(Colour) override {}
  void Line(float, float, float, float, Colour c, int, LineStyle) override {
    ++lines;
    colours.push_back(c);
  }
  void Text(float, float, std::string_view text, Colour c, float) override {
    texts.emplace_back(text);
    colours.push_back(c);
  }
  float TextWidth(std::string_view text, float size) override { return size * text.size(); }
  float TextHeight(std::string_view, float size) override { return size * 1.5f; }
  void Bitmap(int, float, float, float, float) override {}
  void Circle(float, float, float, Colour c) override { colours.push_back(c); }
  void FillRect(float, float, float, float, Colour) override {}
};

struct PrintLayout : test::ViewFixture, ::testing::Test {
  const PrintablePage a4Landscape{277, 190};
};

TEST_F(PrintLayout, ScaleRules) {
  // 1000 x 750 world units: width rules on a wide page, height on a narrow one; the title
  // block's band at the foot is not drawn on.
  EXPECT_EQ(SmallestPrintScale(view, {1100, 1000}), 1000);
  EXPECT_EQ(SmallestPrintScale(view, {1100, 437.5}), 2000);
  EXPECT_EQ(SmallestPrintScale(view, a4Landscape), 5000);  // 750 * 1.1 / (190 - 25) rules
  EXPECT_EQ(SmallestPrintScale(view, {}), 1);
  // A typed scale below the page's smallest returns to it.
  struct Case {
    const char* text;
    std::int32_t scale;
    const char* message;
  } cases[] = {{" 4342 ", 4342, ""},
               {"4341", 4342, kMsgScaleExceedsPaper},
               {"-100", 4342, kMsgScaleNotNumber},
               {"12.5", 4342, kMsgScaleNotNumber}};
  for (const Case& c : cases) {
    const ScaleEntry entry = CheckPrintScale(c.text, 4342);
    EXPECT_EQ(entry.Scale, c.scale) << c.text;
    EXPECT_EQ(entry.Message, c.message) << c.text;
  }
  // Printing twice gives the same scale; a typed one stands, with a word when the page cannot
  // hold the window at it.
  PrintSettings settings;
  EXPECT_EQ(ResolvePrintScale(view, settings, a4Landscape).Scale, 5000);
  EXPECT_EQ(ResolvePrintScale(view, settings, a4Landscape).Scale, 5000);
  settings.PrintScale = 10000;
  settings.PrintScaleSet = true;
  EXPECT_EQ(ResolvePrintScale(view, settings, a4Landscape).Message, "");
  EXPECT_EQ(ResolvePrintScale(view, settings, a4Landscape).Scale, 10000);
  settings.PrintScale = 100;
  const ScaleEntry tooSmall = ResolvePrintScale(view, settings, a4Landscape);
  EXPECT_EQ(tooSmall.Scale, 100);
  EXPECT_EQ(tooSmall.Message, kMsgScaleCutsWindow);
  // The window's centre is at the middle of the page above the title block's 250 units.
  const PageBounds page = PagePlacement(a4Landscape, 10000);
  EXPECT_EQ((std::array{page.Width, page.Height, page.Left, page.Top}),
            (std::array<float, 4>{2770, 1900, -1385, -825}));
}

TEST_F(PrintLayout, PaperColours) {
  EXPECT_EQ(PaperColour(RGBColour(255, 0, 0), false, false), RGBColour(0, 0, 0));
  EXPECT_EQ(PaperColour(kWhite, true, false), RGBColour(0, 0, 0));
  EXPECT_EQ(PaperColour(RGBColour(0, 0, 128), true, false), RGBColour(0, 0, 128));
  const Colour yellow = PaperColour(RGBColour(255, 255, 0), true, false);
  EXPECT_LT(GreenOf(yellow), 255);
  EXPECT_EQ(BlueOf(yellow), 0);
  // Yellow, cyan and green node circles and names come out dark enough to read on white.
  for (Colour light : {RGBColour(255, 255, 0), RGBColour(0, 255, 255), RGBColour(0, 255, 0)}) {
    const Colour c = PaperColour(light, true, false);
    EXPECT_LE(0.299 * RedOf(c) + 0.587 * GreenOf(c) + 0.114 * BlueOf(c), 110.5);
  }
  for (int band = 0; band < 7; ++band)
    EXPECT_EQ(PaperColour(kContaminantColours[band], true, true), kPrintContaminantColours[band]);
}

TEST_F(PrintLayout, ThePageCarriesTheDrawingAndTheTitleBlock) {
  ws.net.RLCount = 2;
  ws.net.RLName[2] = "900 Level";
  view.CurrentLevel = 2;
  view.LevelMode = LevelModeOf::Single;
  view.DisplayBits = Show::AirwayNames;
  const int i = Add(-100, 0, 900, 100, 0, 900);
  ws.net.BranchName[i] = "Main drive";
  ws.net.Quantity[i] = 12;  // a flow read from the file, unchanged since
  ws.net.NetworkSaved = 0xFF;
  ws.net.SmokeData[i][2] = 4;
  Build();
  PrintSettings settings;
  settings.Title = "North mine";
  settings.DataName = "Airflow Quantity";
  for (const auto& [smoke, dataLine] : {std::pair{0, "AirFlow Simulation  Airflow Quantity"},
                                        {2, "Contaminant Source Simulation  Airflow Quantity"}}) {
    view.SmokeState = static_cast<std::int16_t>(smoke);
    RecordingCanvas canvas;
    DrawPrintPage(ws, view, settings, a4Landscape, 5000, canvas);
    EXPECT_FLOAT_EQ(canvas.width, 1385);
    const std::vector<std::string> title = {"GALERIS  North mine", "RL Name 900 Level",
                                            "   Scale 1:5000", dataLine};
    EXPECT_EQ(TitleBlockLines(ws, view, settings, 5000), title);
    for (const std::string& line : title)
      EXPECT_NE(std::find(canvas.texts.begin(), canvas.texts.end(), line), canvas.texts.end());
    EXPECT_NE(std::find(canvas.texts.begin(), canvas.texts.end(), "Main drive"),
              canvas.texts.end());
    const bool legend = std::find(canvas.texts.begin(), canvas.texts.end(), "potential source") !=
                        canvas.texts.end();
    EXPECT_EQ(legend, smoke == 2);
    for (Colour c : canvas.colours) EXPECT_NE(c, kWhite);  // nothing vanishes on the paper
  }
  // A spread legend shows its thresholds; one that is not a number says so.
  view.SmokeState = 1;
  view.LegendValue[2] = std::numeric_limits<float>::quiet_NaN();
  RecordingCanvas canvas;
  DrawPrintPage(ws, view, settings, a4Landscape, 5000, canvas);
  for (const char* value : {"20000.000", "ERROR 4", "0.000"})
    EXPECT_NE(std::find(canvas.texts.begin(), canvas.texts.end(), value), canvas.texts.end())
        << value;
  // Every level drawn names "All"; a network changed since its last run says it is unsolved.
  view.LevelMode = LevelModeOf::All;
  MarkNetworkChanged(ws);
  const std::vector<std::string> title = TitleBlockLines(ws, view, settings, 5000);
  EXPECT_EQ(title[1], "RL Name All");
  EXPECT_EQ(title.back(), kUnsolvedTitleLine);
}

}  // namespace
}  // namespace galeris
