// Network printing: the scale rules, the page's place in the window's world, paper colours,
// the title block and legend, and the page painted through the screen drawing's passes.
#include "view/print_layout.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "view/drawing.h"

namespace galeris {
namespace {

// The screen scale leaves a tenth around the view: the print keeps that rule.
constexpr double kViewMargin = 1.1;
constexpr double kPixelsPerMm = 96 / 25.4;  // the declutter cells keep their screen size
constexpr float kTitleFontSize = 10;
constexpr float kLegendFontSize = 9;

bool SameLetters(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::toupper(static_cast<unsigned char>(x)) ==
                  std::toupper(static_cast<unsigned char>(y));
         });
}

// The canvas of the page: every colour turned into its paper colour on the way through.
class PaperCanvas : public Canvas {
 public:
  PaperCanvas(Canvas& target, bool colourPrint, bool contaminantShown)
      : target_(target), colour_(colourPrint), contaminant_(contaminantShown) {}

  void SetScale(float left, float top, float width, float height) override {
    target_.SetScale(left, top, width, height);
  }
  void Clear(Colour) override {}  // the paper stays white
  void Line(float x1, float y1, float x2, float y2, Colour colour, int penWidth,
            LineStyle style) override {
    target_.Line(x1, y1, x2, y2, Paper(colour), penWidth, style);
  }
  void Text(float x, float y, std::string_view text, Colour colour, float size) override {
    target_.Text(x, y, text, Paper(colour), size);
  }
  float TextWidth(std::string_view text, float size) override {
    return target_.TextWidth(text, size);
  }
  float TextHeight(std::string_view text, float size) override {
    return target_.TextHeight(text, size);
  }
  void Bitmap(int picture, float left, float top, float width, float height) override {
    target_.Bitmap(picture, left, top, width, height);
  }
  void Circle(float x, float y, float radius, Colour colour) override {
    target_.Circle(x, y, radius, Paper(colour));
  }
  // A white fill is the paper itself, under a title block or a legend.
  void FillRect(float left, float top, float width, float height, Colour colour) override {
    target_.FillRect(left, top, width, height, colour == kWhite ? colour : Paper(colour));
  }

 private:
  Colour Paper(Colour colour) const { return PaperColour(colour, colour_, contaminant_); }
  Canvas& target_;
  bool colour_, contaminant_;
};

std::string FixedThree(double value) {
  char text[48];
  std::snprintf(text, sizeof text, "%.3f", value);
  return text;
}

void Frame(Canvas& canvas, float left, float top, float width, float height, Colour colour) {
  canvas.FillRect(left, top, width, height, kWhite);
  canvas.Line(left, top, left + width, top, colour, 1);
  canvas.Line(left + width, top, left + width, top + height, colour, 1);
  canvas.Line(left + width, top + height, left, top + height, colour, 1);
  canvas.Line(left, top + height, left, top, colour, 1);
}

struct LegendRow {
  Colour colour;
  std::string word, value;
};

std::vector<LegendRow> LegendRows(const ViewState& view) {
  std::vector<LegendRow> rows;
  if (view.SmokeState == 2) {
    rows = {{kContaminantColours[0], "unknown", ""},
            {kContaminantColours[7], "fresh", ""},
            {kContaminantColours[5], "potential source", ""},
            {kContaminantColours[4], "smoke", ""}};
  } else if (view.SmokeState == 1) {
    for (int k = 5; k >= 0; --k) {
      const std::string band = std::to_string(6 - k);
      const float value = view.LegendValue[k];
      rows.push_back({kContaminantColours[6 - k], "band " + band,
                      std::isfinite(value) ? FixedThree(value) : "ERROR " + band});
    }
  }
  return rows;
}

// The legend of a contaminant display, in the page's top right corner.
void DrawLegend(const ViewState& view, const PageBounds& page, Canvas& canvas) {
  const std::vector<LegendRow> rows = LegendRows(view);
  if (rows.empty()) return;
  const float step = canvas.TextHeight("F", kLegendFontSize);
  const float swatch = canvas.TextWidth("XXX", kLegendFontSize);
  float words = canvas.TextWidth("XXXXXXX", kLegendFontSize);
  for (const LegendRow& row : rows)
    words = std::max(words, canvas.TextWidth(row.word, kLegendFontSize));
  const bool values = !rows.front().value.empty();
  const float valueColumn = values ? canvas.TextWidth("XXXXXXXX", kLegendFontSize) : 0;
  const float width = swatch + words + valueColumn + 2 * step;
  const float height = step * (static_cast<float>(rows.size()) + 1);
  const float left = page.Left + page.Width - width - step / 2, top = page.Top + step / 2;
  Frame(canvas, left, top, width, height, RGBColour(0, 0, 0));
  float y = top + step / 2;
  for (const LegendRow& row : rows) {
    canvas.FillRect(left + step / 2, y + step * 0.2f, swatch, step * 0.6f, row.colour);
    canvas.Text(left + step + swatch, y, row.word, RGBColour(0, 0, 0), kLegendFontSize);
    if (values)
      canvas.Text(left + step * 1.5f + swatch + words, y, row.value, RGBColour(0, 0, 0),
                  kLegendFontSize);
    y += step;
  }
}

// The title block across the foot of the page, filling the band kept for it.
void DrawTitleBlock(const std::vector<std::string>& lines, const PageBounds& page, float band,
                    Canvas& canvas) {
  const float step = canvas.TextHeight("F", kTitleFontSize);
  const float height = std::max(band, step * (static_cast<float>(lines.size()) + 0.5f));
  const float top = page.Top + page.Height - height;
  Frame(canvas, page.Left, top, page.Width, height, RGBColour(0, 0, 0));
  float y = top + step / 4;
  for (const std::string& line : lines) {
    canvas.Text(page.Left + step / 2, y, line, RGBColour(0, 0, 0), kTitleFontSize);
    y += step;
  }
}

}  // namespace

const std::vector<PaperSize>& PaperSizes() {
  static const std::vector<PaperSize> sizes = {{"A4", 210, 297},  {"A3", 297, 420},
                                               {"A2", 420, 594},  {"A1", 594, 841},
                                               {"A0", 841, 1189}, {"Letter", 215.9, 279.4}};
  return sizes;
}

const PaperSize* FindPaper(std::string_view name) {
  for (const PaperSize& size : PaperSizes())
    if (SameLetters(size.Name, name)) return &size;
  return nullptr;
}

PrintablePage DrawingArea(const PrintablePage& page) {
  return {page.WidthMm, page.HeightMm > 2 * kTitleBandMm ? page.HeightMm - kTitleBandMm
                                                          : page.HeightMm / 2};
}

std::int32_t SmallestPrintScale(const ViewState& view, const PrintablePage& whole) {
  if (whole.WidthMm <= 0 || whole.HeightMm <= 0) return 1;
  const PrintablePage page = DrawingArea(whole);
  const double byWidth = std::fabs(view.ScaleWidth) * kViewMargin / page.WidthMm;
  const double byHeight = std::fabs(view.ScaleHeight) * kViewMargin / page.HeightMm;
  const double scale = std::floor(std::max(byWidth, byHeight) * 1000);
  return static_cast<std::int32_t>(std::clamp(scale, 1.0, 2e9));
}

ScaleEntry CheckPrintScale(std::string_view text, std::int32_t smallest) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  long long value = 0;
  bool digits = !text.empty() && text.size() <= 10;
  for (char c : text) {
    if (!std::isdigit(static_cast<unsigned char>(c))) digits = false;
    if (digits) value = value * 10 + (c - '0');
  }
  if (!digits) return {smallest, kMsgScaleNotNumber};
  if (value < smallest) return {smallest, kMsgScaleExceedsPaper};
  return {static_cast<std::int32_t>(std::min<long long>(value, 2000000000)), ""};
}

ScaleEntry ResolvePrintScale(const ViewState& view, PrintSettings& settings,
                             const PrintablePage& page) {
  const std::int32_t smallest = SmallestPrintScale(view, page);
  if (!settings.PrintScaleSet || settings.PrintScale < 1) settings.PrintScale = smallest;
  if (settings.PrintScale < smallest) return {settings.PrintScale, kMsgScaleCutsWindow};
  return {settings.PrintScale, ""};
}

PageBounds PagePlacement(const PrintablePage& page, std::int32_t scale) {
  PageBounds bounds;
  bounds.Width = static_cast<float>(page.WidthMm * scale / 1000);
  bounds.Height = static_cast<float>(page.HeightMm * scale / 1000);
  bounds.Left = -bounds.Width / 2;
  bounds.Top = -static_cast<float>(DrawingArea(page).HeightMm * scale / 1000) / 2;
  return bounds;
}

Colour PaperColour(Colour colour, bool colourPrint, bool contaminantShown) {
  if (!colourPrint) return RGBColour(0, 0, 0);
  if (contaminantShown) {
    for (std::size_t band = 0; band < kPrintContaminantColours.size(); ++band)
      if (colour == kContaminantColours[band]) return kPrintContaminantColours[band];
    if (colour == kContaminantColours[7]) return kPrintContaminantColours[3];
  }
  if (colour == kWhite) return RGBColour(0, 0, 0);
  const double light = 0.299 * RedOf(colour) + 0.587 * GreenOf(colour) + 0.114 * BlueOf(colour);
  constexpr double kLightest = 110;  // lighter lines and names fade into white paper
  if (light <= kLightest) return colour;
  const double f = kLightest / light;
  return RGBColour(static_cast<int>(RedOf(colour) * f), static_cast<int>(GreenOf(colour) * f),
                   static_cast<int>(BlueOf(colour) * f));
}

bool FlowsUnsolved(const Workspace& ws) {
  const Network& net = ws.net;
  if (net.NetworkBalanced != 0) return false;
  if (net.NetworkSaved == 0) return true;
  for (int i = 1; i <= net.BranchCount; ++i)
    if (net.Quantity[i] != 0 && !(net.BranchCode[i] & Bit::FixedQuantity)) return false;
  return true;
}

std::vector<std::string> TitleBlockLines(const Workspace& ws, const ViewState& view,
                                         const PrintSettings& settings, std::int32_t scale) {
  const Network& net = ws.net;
  std::string level;
  if (view.LevelMode == LevelModeOf::All)
    level = "All";
  else if (view.CurrentLevel >= 1 && view.CurrentLevel <= net.RLCount)
    level = net.RLName[view.CurrentLevel];
  const char* simulation = view.SmokeState == 1   ? "Contaminant Spread Simulation  "
                           : view.SmokeState == 2 ? "Contaminant Source Simulation  "
                                                  : "AirFlow Simulation  ";
  std::vector<std::string> lines = {"GALERIS  " + settings.Title, "RL Name " + level,
                                    "   Scale 1:" + std::to_string(scale),
                                    simulation + settings.DataName};
  if (FlowsUnsolved(ws)) lines.emplace_back(kUnsolvedTitleLine);
  return lines;
}

void DrawPrintPage(Workspace& ws, const ViewState& window, const PrintSettings& settings,
                   const PrintablePage& page, std::int32_t scale, Canvas& canvas) {
  const PageBounds bounds = PagePlacement(page, scale);
  ViewState paper = window;
  paper.WindowOpen = true;
  paper.Minimised = false;
  paper.SingleAirway = 0;
  paper.Moving = false;
  paper.FitRunning = false;
  paper.PixelWidth = std::max(1, static_cast<int>(page.WidthMm * kPixelsPerMm));
  paper.PixelHeight = std::max(1, static_cast<int>(page.HeightMm * kPixelsPerMm));
  paper.AspectRatio = bounds.Height / bounds.Width;
  paper.SmokeLimit = std::fabs(paper.SmokeLimit);
  SetScale(paper, bounds.Width, bounds.Height, window.PanX, window.PanY);

  PaperCanvas ink(canvas, settings.Colour, window.SmokeState != 0);
  ink.SetScale(bounds.Left, bounds.Top, bounds.Width, bounds.Height);
  BuildAirwayLines(ws, paper);
  DrawGrid(ws, paper, ink);
  DrawWireframe(ws, paper, ink);
  DrawSymbols(ws, paper, ink);
  DrawLegend(window, bounds, ink);
  DrawTitleBlock(TitleBlockLines(ws, window, settings, scale), bounds,
                 static_cast<float>(kTitleBandMm * scale / 1000), ink);
}

}  // namespace galeris
