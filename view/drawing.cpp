// Screen drawing: the visible list, the coloured draw list, and the wireframe, grid and symbol
// passes over it. Nothing here allocates per airway: the lists live in the store and the view
// state, sized once.
#include "view/drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/units.h"
#include "view/labels.h"
#include "view/station_box.h"

namespace galeris {
namespace {

// Built-in palette for networks whose colour table is empty: readable on the black window.
constexpr std::array<Colour, 8> kBuiltInPalette = {
    RGBColour(0, 220, 0),      // on the level, horizontal
    RGBColour(80, 160, 255),   // below the level, rising
    RGBColour(255, 90, 90),    // above the level, falling
    RGBColour(110, 110, 110),  // dim text
    RGBColour(255, 255, 0),    // symbols and node text
    RGBColour(255, 255, 255),  // data text
    RGBColour(50, 50, 90),     // grid lines
    RGBColour(160, 160, 200),  // grid text
};

constexpr float kStubTick = 15;
// No character of a label font is narrower than this share of an "F": the width that declutter
// tries before it measures a text.
constexpr float kNarrowestGlyph = 0.2f;  // world units of a vertical shaft's tick in a plan view
constexpr int kMaxGridLines = 400;

bool InsideBand(float z, float bottom, float top) {
  return z >= bottom && z <= top;
}

// An airway belongs to a band when an end lies in it; with Off Level Raises, also when it
// passes through the band or the band lies within it.
bool AirwayInBand(float z1, float z2, float bottom, float top, bool offLevelRaises) {
  if (!offLevelRaises) return InsideBand(z1, bottom, top) || InsideBand(z2, bottom, top);
  const float low = std::min(z1, z2), high = std::max(z1, z2);
  return InsideBand(bottom, low, high) || InsideBand(top, low, high) ||
         (bottom <= low && top >= high) || (bottom >= low && top <= high);
}

bool OutsideFlowLimits(const ViewState& view, float quantity) {
  const float q = std::fabs(quantity);
  return q < view.FlowMinimum || q > view.FlowMaximum;
}

bool InMultipleBands(const Network& net, const ViewState& view, float z1, float z2,
                     bool offLevelRaises) {
  for (std::int16_t level : view.SelectedLevels) {
    if (level < 1 || level > net.RLCount) continue;
    const float bottom = static_cast<float>(net.RLBound[level][2]);
    const float top = static_cast<float>(net.RLBound[level][1]);
    if (AirwayInBand(z1, z2, bottom, top, offLevelRaises)) return true;
  }
  return false;
}

bool PointInView(const Network& net, const ViewState& view, float z) {
  if (view.LevelMode == LevelModeOf::All) return true;
  if (view.LevelMode == LevelModeOf::Multiple) return InMultipleBands(net, view, z, z, false);
  return InsideBand(z, view.LevelBottom, view.LevelTop);
}

void CopyPlanCoordinates(Network& net, ViewState& view) {
  if (view.PlanCopyFresh) return;
  for (int i = 1; i <= net.BranchCount; ++i) {
    net.ViewEnd1[i][0] = static_cast<float>(net.Coord1[i][1]);
    net.ViewEnd1[i][1] = static_cast<float>(net.Coord1[i][2]);
    net.ViewEnd2[i][0] = static_cast<float>(net.Coord2[i][1]);
    net.ViewEnd2[i][1] = static_cast<float>(net.Coord2[i][2]);
  }
  view.PlanCopyFresh = true;
}

bool IsSteep(const Network& net, int i) {
  return std::fabs(static_cast<float>(net.Coord1[i][3] - net.Coord2[i][3])) * 1.5f > net.Length[i];
}

int AirColour(std::int32_t code) {
  if (code & 512) return Palette::Above;
  if (code & 1024) return Palette::Below;
  return Palette::OnLevel;
}

// The contaminant band of an airway during a spread display, 0 for none.
int ContaminantBand(const Network& net, const ViewState& view, int i) {
  const int concentration = net.SmokeData[i][2];
  if (view.SmokeState == 2) return std::clamp(concentration, 0, 7);
  const bool counts =
      (concentration > 0 && std::fabs(view.SmokeLimit) >= net.SmokeTime[i]) || view.SmokeLimit == 0;
  if (!counts) return 0;
  int band = 0;
  for (int k = 5; k >= 0; --k) {
    if (concentration + 1 >= view.LegendValue[k]) band = 6 - k;
  }
  return band;
}

// Sizes of this redraw, in world units.
struct SymbolScale {
  float width = 1;
  float arrow = 1;
  std::array<float, 7> symbol{};
  float text = 1;
};

SymbolScale ScaleSymbols(const ViewState& view) {
  SymbolScale s;
  const float w = static_cast<float>(view.ViewRight - view.ViewLeft);
  s.width = w == 0 ? 1 : w;
  s.arrow = view.SymbolScaled[1] == 1 ? std::sqrt(std::fabs(s.width)) * view.SymbolSize[1] / 20
                                      : (s.width / 200) * view.SymbolSize[1];
  for (int k = 2; k <= 6; ++k) {
    if (view.SymbolScaled[k] == 1) {
      const float divisor = k == 2 ? 2.0f : 5.0f;
      float size = std::pow(std::fabs(100 / s.width), 0.04f) * view.SymbolSize[k] / divisor;
      if (size <= 0 || s.width / size > 500) size = s.width / 500;
      s.symbol[k] = size;
    } else {
      s.symbol[k] = (s.width / 200) * view.SymbolSize[k];
    }
  }
  s.text = view.TextScaled ? std::max(0.2f, std::sqrt(1 / std::fabs(s.width)) * 100 / 8) : 1.0f;
  return s;
}

// Font size in points of a text kind 1..4 (data, airway names, node names, floating text).
float FontSize(const Workspace& ws, const SymbolScale& scale, int kind) {
  return ws.defaults.Fonts[kind].Size * scale.text * 1.5f;
}

// The family and weight of a text kind, as the options set them.
void UseFont(const Workspace& ws, Canvas& canvas, int kind) {
  const LabelFont& font = ws.defaults.Fonts[kind];
  canvas.SetFont(font.Name, font.Bold != 0);
}

void CentredBitmap(Canvas& canvas, int picture, float x, float y, float size) {
  canvas.Bitmap(picture, x - size / 2, y - size / 2, size, size);
}

// Declutter: the screen in cells of about four pixels, each marked once something is drawn
// on it, on four planes: node circles, symbols, texts and arrows. A text may still sit on a
// circle, as a node's name sits on its own node, but never on another text; a fan, door or
// source may sit on a node's circle, since a circle drawn first must not hide what stands in the
// airway, but never on another symbol. With the choice off nothing is ever refused.
class TakenPlaces {
 public:
  static constexpr std::uint8_t kShapes = 1, kTexts = 2, kArrows = 4, kSymbols = 8;

  TakenPlaces(ViewState& view, bool on) : cells_(view.TakenCells), on_(on) {
    if (!on_) return;
    columns_ = std::max(1, (view.PixelWidth + kCellPixels - 1) / kCellPixels);
    rows_ = std::max(1, (view.PixelHeight + kCellPixels - 1) / kCellPixels);
    left_ = view.ScaleLeft;
    top_ = view.ScaleTop;
    cellWidth_ = view.ScaleWidth / static_cast<float>(columns_);
    cellHeight_ = view.ScaleHeight / static_cast<float>(rows_);
    cells_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), 0);
  }

  // True when the point's cell already holds a drawing: whatever covers the point is refused.
  bool Taken(float x, float y, std::uint8_t plane = kTexts) const {
    if (!on_) return false;
    const int c = Column(x), r = Row(y);
    return c >= 0 && c < columns_ && r >= 0 && r < rows_ && (At(c, r) & plane);
  }

  // True when no cell of the rectangle is taken yet; they all are afterwards.
  bool Claim(float left, float top, float width, float height, std::uint8_t plane = kTexts) {
    if (!on_) return true;
    const Span span = SpanOf(left, top, width, height);
    if (!Free(span, plane)) return false;
    for (int r = span.r0; r <= span.r1; ++r)
      for (int c = span.c0; c <= span.c1; ++c) At(c, r) |= plane;
    return true;
  }

  // One line of text with its top-left corner at (left, top), measured only when on. Measuring
  // is the costly part, so a text is first tried at a width no glyph run can be narrower than
  // (`narrowest` a character): if that is already taken, so is the real one.
  bool ClaimText(Canvas& canvas, float left, float top, std::string_view text, float size,
                 float height, float narrowest) {
    if (!on_) return true;
    if (!Free(SpanOf(left, top, narrowest * static_cast<float>(text.size()), height), kTexts))
      return false;
    return Claim(left, top, canvas.TextWidth(text, size), height);
  }

  bool ClaimCentred(float x, float y, float size, std::uint8_t plane = kShapes) {
    return Claim(x - size / 2, y - size / 2, size, size, plane);
  }

  // A block of text lines centred on x, the first line's top at y; tried first as in ClaimText.
  bool ClaimLines(Canvas& canvas, std::string_view text, float x, float y, float size,
                  float lineStep, float narrowest) {
    if (!on_) return true;
    std::size_t longest = 0;
    int lines = 0;
    for (std::string_view rest = text;; ++lines) {
      const std::size_t feed = rest.find('\n');
      longest = std::max(longest, std::min(feed, rest.size()));
      if (feed == std::string_view::npos) break;
      rest.remove_prefix(feed + 1);
    }
    const float height = lineStep * static_cast<float>(lines + 1);
    const float least = narrowest * static_cast<float>(longest);
    if (!Free(SpanOf(x - least / 2, y, least, height), kTexts)) return false;
    float widest = 0;
    for (std::string_view rest = text;;) {
      const std::size_t feed = rest.find('\n');
      widest = std::max(widest, canvas.TextWidth(rest.substr(0, feed), size));
      if (feed == std::string_view::npos) break;
      rest.remove_prefix(feed + 1);
    }
    return Claim(x - widest / 2, y, widest, height);
  }

 private:
  static constexpr int kCellPixels = 4;
  struct Span {
    int c0, c1, r0, r1;
  };

  // The cells of a rectangle, a quarter cell in from each side so that neighbours that only
  // touch both stay, clipped to the screen.
  Span SpanOf(float left, float top, float width, float height) const {
    const float insetX = std::min(std::fabs(width), std::fabs(cellWidth_)) / 4;
    const float insetY = std::min(std::fabs(height), std::fabs(cellHeight_)) / 4;
    Span s{Column(left + insetX), Column(left + width - insetX), Row(top + insetY),
           Row(top + height - insetY)};
    if (s.c0 > s.c1) std::swap(s.c0, s.c1);
    if (s.r0 > s.r1) std::swap(s.r0, s.r1);
    s.c0 = std::max(s.c0, 0), s.c1 = std::min(s.c1, columns_ - 1);
    s.r0 = std::max(s.r0, 0), s.r1 = std::min(s.r1, rows_ - 1);
    return s;
  }

  bool Free(const Span& span, std::uint8_t plane) const {
    for (int r = span.r0; r <= span.r1; ++r)
      for (int c = span.c0; c <= span.c1; ++c)
        if (At(c, r) & plane) return false;
    return true;
  }

  int Column(float x) const { return static_cast<int>(std::floor((x - left_) / cellWidth_)); }
  int Row(float y) const { return static_cast<int>(std::floor((y - top_) / cellHeight_)); }
  std::uint8_t& At(int c, int r) { return cells_[static_cast<std::size_t>(r) * columns_ + c]; }
  std::uint8_t At(int c, int r) const { return cells_[static_cast<std::size_t>(r) * columns_ + c]; }

  std::vector<std::uint8_t>& cells_;
  bool on_;
  int columns_ = 1, rows_ = 1;
  float left_ = 0, top_ = 0, cellWidth_ = 1, cellHeight_ = 1;
};

struct RecordPlace {
  float x1, y1, x2, y2;
  float midX, midY, symX, symY;
  bool end1On, end2On, midOn, symOn;
};

bool StrictlyInside(const ViewState& view, float x, float y) {
  return x > view.ViewLeft && x < view.ViewRight && y > view.ViewTop && y < view.ViewBottom;
}

RecordPlace PlaceRecord(const Network& net, const ViewState& view, const AirwayLineRecord& line,
                        int i) {
  RecordPlace p{};
  p.x1 = line.X1;
  p.y1 = line.Y1;
  p.x2 = line.X2;
  p.y2 = line.Y2;
  p.midX = (p.x1 + p.x2) / 2;
  p.midY = (p.y1 + p.y2) / 2;
  const float along = net.LabelPos[i] + 0.3f;
  p.symX = p.x1 + (p.x2 - p.x1) * along;
  p.symY = p.y1 + (p.y2 - p.y1) * along;
  p.end1On = StrictlyInside(view, p.x1, p.y1);
  p.end2On = StrictlyInside(view, p.x2, p.y2);
  p.midOn = StrictlyInside(view, p.midX, p.midY);
  p.symOn = StrictlyInside(view, p.symX, p.symY);
  return p;
}

void DrawArrow(Canvas& canvas, const RecordPlace& p, float length, Colour colour, int width) {
  const float dx = p.x2 - p.x1, dy = p.y2 - p.y1;
  const float tipX = p.x1 + 0.8f * dx, tipY = p.y1 + 0.8f * dy;
  float a = dx == 0 ? kPi / 2 : std::atan(dy / dx);
  if (dx > 0 || (dx == 0 && dy > 0)) a += kPi;
  canvas.Line(tipX + length * std::cos(a + 0.3f), tipY + length * std::sin(a + 0.3f), tipX, tipY,
              colour, width);
  canvas.Line(tipX, tipY, tipX + length * std::cos(a - 0.3f), tipY + length * std::sin(a - 0.3f),
              colour, width);
}

// True when some other airway end shares this key; the keys are sorted.
bool EndIsJoined(const std::vector<std::int64_t>& keys, std::int64_t key) {
  const auto range = std::equal_range(keys.begin(), keys.end(), key);
  return range.second - range.first > 1;
}

void CollectEndKeys(const Network& net, ViewState& view) {
  std::vector<std::int64_t>& keys = view.NodeKeyScratch;
  keys.clear();
  for (int i = 1; i <= net.BranchCount; ++i) {
    keys.push_back(net.EntryNodeId[i]);
    keys.push_back(net.ExitNodeId[i]);
  }
  std::sort(keys.begin(), keys.end());
}

std::string NodeValueText(const Workspace& ws, int dataType, const Coord3& c, float pressure) {
  const Defaults& d = ws.defaults;
  switch (dataType) {
    case DataType::Coordinates:
      return FormatValue(ws.units, c[1], Unit::Coordinates) + "," +
             FormatValue(ws.units, c[2], Unit::Coordinates) + "," +
             FormatValue(ws.units, c[3], Unit::Coordinates);
    case DataType::NodeRelative:
      return FormatValue(ws.units, pressure, Unit::Pressure);
    case DataType::NodeAbsolute:
      return FormatValue(ws.units, pressure / 1000 + d.SurfacePressure, Unit::BarometricPressure);
    default: {
      const double datum =
          d.SurfaceRL == 99999 && ws.net.BranchCount >= 1 ? ws.net.Coord1[1][3] : d.SurfaceRL;
      const double barometric =
          pressure / 1000 + d.SurfacePressure + (datum - c[3]) * d.AirDensity * 9.81 / 1000;
      return FormatValue(ws.units, barometric, Unit::BarometricPressure);
    }
  }
}

// Prints the lines of a text centred on x, the first line's top at y; returns the y below it.
float CentredLines(Canvas& canvas, std::string_view text, float x, float y, float size,
                   float lineStep, Colour colour) {
  while (true) {
    const std::size_t feed = text.find('\n');
    const std::string_view line = text.substr(0, feed);
    if (!line.empty()) canvas.Text(x - canvas.TextWidth(line, size) / 2, y, line, colour, size);
    y += lineStep;
    if (feed == std::string_view::npos) return y;
    text.remove_prefix(feed + 1);
  }
}

int LineCount(std::string_view text) {
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

void DrawFloatingText(Workspace& ws, ViewState& view, Canvas& canvas, const SymbolScale& scale,
                      TakenPlaces& places) {
  const Network& net = ws.net;
  if (!(view.DisplayBits & Show::FloatingText) || ws.defaults.Fonts[4].Size == 0) return;
  const float size = FontSize(ws, scale, 4);
  UseFont(ws, canvas, 4);
  const Colour colour = PaletteColour(ws.defaults, Palette::Symbols);
  const float textLine = view.Declutter ? canvas.TextHeight("F", size) : 0;
  const float narrowest = view.Declutter ? kNarrowestGlyph * canvas.TextWidth("F", size) : 0;
  for (std::int16_t t : view.VisibleTexts) {
    const Coord3& c = net.TextCoord[t];
    float sx = 0, sy = 0;
    ProjectPoint(view, c[1], c[2], c[3], sx, sy);
    const float x = sx * net.AxisSignX, y = sy * net.AxisSignY;
    if (places.Taken(x, y) ||
        !places.ClaimText(canvas, x, y, net.TextString[t], size, textLine, narrowest)) {
      continue;
    }
    canvas.Circle(x, y, scale.width / 1000, colour);
    canvas.Text(x, y, net.TextString[t], colour, size);
  }
}

void DrawGridLabel(Canvas& canvas, float x, float y, const std::string& text, Colour colour) {
  canvas.Text(x, y, text, colour, 10);
}

void DrawEdgeOnScale(Workspace& ws, ViewState& view, Canvas& canvas, double spacing) {
  const Network& net = ws.net;
  const double st = std::sin(view.TiltAngle);
  if (st == 0) return;
  const Colour lineColour = PaletteColour(ws.defaults, Palette::GridLines);
  const Colour textColour = PaletteColour(ws.defaults, Palette::GridText);
  auto heightAt = [&](double y) { return -(y * net.AxisSignY + view.PanY) / st; };
  auto windowY = [&](double z) { return (-st * z - view.PanY) * net.AxisSignY; };
  const double za = heightAt(view.ViewTop), zb = heightAt(view.ViewBottom);
  const double high = std::max(za, zb), low = std::min(za, zb);
  for (double z = std::floor(high / spacing) * spacing; z >= low; z -= spacing) {
    const float y = static_cast<float>(windowY(z));
    canvas.Line(static_cast<float>(view.ViewLeft), y, static_cast<float>(view.ViewRight), y,
                lineColour, 1);
    if (!view.Moving) {
      DrawGridLabel(canvas, static_cast<float>(view.ViewLeft), y,
                    FormatValue(ws.units, z, Unit::Coordinates), textColour);
    }
  }
}

// Lines across one axis of the window at whole multiples of the spacing, labelled along the
// edge only where a label has room.
void DrawGridAxis(Workspace& ws, ViewState& view, Canvas& canvas, double spacing, bool vertical) {
  const Network& net = ws.net;
  const double sign = vertical ? net.AxisSignX : net.AxisSignY;
  const double pan = vertical ? view.PanX : view.PanY;
  const double from = vertical ? view.ViewLeft : view.ViewTop;
  const double to = vertical ? view.ViewRight : view.ViewBottom;
  const Colour lineColour = PaletteColour(ws.defaults, Palette::GridLines);
  const Colour textColour = PaletteColour(ws.defaults, Palette::GridText);
  const double offset = std::floor(pan / spacing) * spacing * sign - sign * pan;
  double first = offset + std::ceil((from - offset) / spacing) * spacing;
  double travelled = 1e30;  // the first line always gets its label
  for (double p = first; p <= to; p += spacing) {
    const float f = static_cast<float>(p);
    if (vertical) {
      canvas.Line(f, static_cast<float>(view.ViewTop), f, static_cast<float>(view.ViewBottom),
                  lineColour, 1);
    } else {
      canvas.Line(static_cast<float>(view.ViewLeft), f, static_cast<float>(view.ViewRight), f,
                  lineColour, 1);
    }
    if (view.Moving) continue;
    const std::string label = FormatValue(ws.units, p * sign + pan, Unit::Coordinates);
    const float labelStep = vertical ? canvas.TextWidth(label, 10) : canvas.TextHeight(label, 10);
    if (travelled >= labelStep * 1.05) {
      if (vertical) {
        DrawGridLabel(canvas, f, static_cast<float>(view.ViewTop), label, textColour);
      } else {
        DrawGridLabel(canvas, static_cast<float>(view.ViewLeft), f, label, textColour);
      }
      travelled = 0;
    }
    travelled += spacing;
  }
}

}  // namespace

Colour PaletteColour(const Defaults& defaults, int position) {
  const bool empty = std::all_of(defaults.ColourTable.begin() + 1, defaults.ColourTable.end(),
                                 [](std::int32_t c) { return c == 0; });
  if (position < 0 || position > 7) return kWhite;
  return empty ? kBuiltInPalette[position] : defaults.ColourTable[position + 1];
}

Colour BackgroundColour(const Defaults& defaults) {
  return defaults.ColourTable[0] != 0 ? defaults.ColourTable[0] : kBackground;
}

void ReadLayerMasks(const Network& net, ViewState& view) {
  view.LayerMask = {};
  for (int n = 1; n <= kPrimaryLayers; ++n) {
    if (net.PrimaryLayerShow[n] != 0) view.LayerMask[1] |= std::int64_t{1} << n;
  }
  for (int n = 1; n <= kSecondLayers; ++n) {
    if (net.SecondLayerShow[n] == 0) continue;
    if (n <= 24) {
      view.LayerMask[2] |= std::int64_t{1} << n;
    } else {
      view.LayerMask[0] |= std::int64_t{1} << (n - 24);
    }
  }
}

void BuildVisibleList(Workspace& ws, ViewState& view) {
  Network& net = ws.net;
  auto& list = net.SmokeQueue;
  view.VisibleCount = 0;
  view.PlanCopyFresh = false;
  if (view.FollowsStoreLayers) ReadLayerMasks(net, view);

  view.VisibleTexts.clear();
  for (int t = 1; t <= net.MaxTexts && t < static_cast<int>(net.TextUsed.size()); ++t) {
    if (net.TextUsed[t] == -1 && PointInView(net, view, static_cast<float>(net.TextCoord[t][3]))) {
      view.VisibleTexts.push_back(static_cast<std::int16_t>(t));
    }
  }

  const bool offLevelRaises = (view.DisplayBits & Show::OffLevelRaises) != 0;
  const int lineOpt = view.DisplayFlags & 3;
  const int count = std::min<int>(net.BranchCount, kAirwayLoopLimit);
  for (int i = 1; i <= count; ++i) {
    if (net.EntryNodeId[i] == 0) continue;
    if (net.SecondLayer[i] == 0) net.SecondLayer[i] = 1;
    if (net.PrimaryLayer[i] == 0) net.PrimaryLayer[i] = 1;
    const int second = std::min<int>(net.SecondLayer[i], kSecondLayers);
    const int primary = std::clamp<int>(net.PrimaryLayer[i], 1, kPrimaryLayers);
    net.BranchCode[i] &= ~Bit::InView;
    const bool secondShown =
        second <= 24 ? (view.LayerMask[2] >> second) & 1 : (view.LayerMask[0] >> (second - 24)) & 1;
    const bool inView = ((view.LayerMask[1] >> primary) & 1) && secondShown;
    if (inView) net.BranchCode[i] |= Bit::InView;
    if (!inView && lineOpt == LineOpt::Invisible) continue;

    const float z1 = static_cast<float>(net.Coord1[i][3]);
    const float z2 = static_cast<float>(net.Coord2[i][3]);
    bool add = true;
    if (view.LevelMode == LevelModeOf::Multiple) {
      add = InMultipleBands(net, view, z1, z2, offLevelRaises);
    } else if (view.LevelMode != LevelModeOf::All) {
      add = AirwayInBand(z1, z2, view.LevelBottom, view.LevelTop, offLevelRaises);
    }
    if (!add) continue;
    if (view.FlowDimMode == 2 && OutsideFlowLimits(view, net.Quantity[i])) continue;
    list[++view.VisibleCount] = static_cast<std::int16_t>(i);
  }
  if (view.VisibleCount + 1 < static_cast<int>(list.size())) list[view.VisibleCount + 1] = 0;
}

void BuildAirwayLines(Workspace& ws, ViewState& view) {
  Network& net = ws.net;
  ReadViewBounds(view);
  if (view.PixelWidth > 0) {
    view.AspectRatio = static_cast<float>(view.PixelHeight) / static_cast<float>(view.PixelWidth);
  }
  view.AirwayLineCount = 0;
  if (view.LineAirway.size() < net.AirwayLine.size()) view.LineAirway.resize(net.AirwayLine.size());
  const std::int16_t baseWidth = view.SymbolSize[0] == 0 ? 1 : view.SymbolSize[0];
  if (view.Is3D == 0) CopyPlanCoordinates(net, view);

  const bool planColours = view.Is3D == 0 && view.LevelMode == LevelModeOf::Single;
  const float signX = net.AxisSignX, signY = net.AxisSignY;
  std::array<Colour, 8> palette{};
  for (int k = 0; k < 8; ++k) palette[k] = PaletteColour(ws.defaults, k);
  const int lineOpt = view.DisplayFlags & 3;

  for (int k = 1; k <= view.VisibleCount; ++k) {
    const int i = net.SmokeQueue[k];
    if (i == 0) break;
    float x1 = (net.ViewEnd1[i][0] - view.PanX) * signX;
    float y1 = (net.ViewEnd1[i][1] - view.PanY) * signY;
    float x2 = (net.ViewEnd2[i][0] - view.PanX) * signX;
    float y2 = (net.ViewEnd2[i][1] - view.PanY) * signY;
    const float z1 = static_cast<float>(net.Coord1[i][3]);
    const float z2 = static_cast<float>(net.Coord2[i][3]);
    const bool steep = IsSteep(net, i);

    if (!view.FitRunning) {
      const float mx = (x1 + x2) / 2, my = (y1 + y2) / 2;
      const bool midInside =
          mx > view.ViewLeft && mx < view.ViewRight && my > view.ViewTop && my < view.ViewBottom;
      if (!midInside && ((view.ViewLeft > x1 && view.ViewLeft > x2) ||
                         (view.ViewRight < x1 && view.ViewRight < x2) ||
                         (view.ViewTop > y1 && view.ViewTop > y2) ||
                         (view.ViewBottom < y1 && view.ViewBottom < y2))) {
        continue;
      }
    }

    const std::int32_t code = net.BranchCode[i];
    int colourIndex = Palette::OnLevel;
    if (planColours) {
      const bool stub = x1 == x2 && y1 == y2;
      if (z1 > view.LevelTop) {
        colourIndex = Palette::Above;
        if (stub) x1 += kStubTick, y1 -= kStubTick;
      }
      if (z2 > view.LevelTop) {
        colourIndex = Palette::Above;
        if (stub) x2 += kStubTick, y2 -= kStubTick;
      }
      if (z1 < view.LevelBottom) {
        colourIndex = Palette::Below;
        if (stub) x1 -= kStubTick, y1 -= kStubTick;
      }
      if (z2 < view.LevelBottom) {
        colourIndex = Palette::Below;
        if (stub) x2 -= kStubTick, y2 -= kStubTick;
      }
      if (view.ColourByAir) colourIndex = AirColour(code);
    } else if (view.ColourByAir) {
      colourIndex = AirColour(code);
    } else if (steep) {
      colourIndex = z1 <= z2 ? Palette::Below : Palette::Above;
    }
    Colour colour = palette[colourIndex];

    if (view.SmokeState == 1 || view.SmokeState == 2) {
      colour = kContaminantColours[ContaminantBand(net, view, i)];
    }
    if ((!(code & Bit::InView) && lineOpt == LineOpt::Dim) ||
        (view.FlowDimMode == 1 && OutsideFlowLimits(view, net.Quantity[i]))) {
      colour = kContaminantColours[0];
    }
    if (code & Bit::ErrorMark) colour = kContaminantColours[6];

    AirwayLineRecord& line = net.AirwayLine[view.AirwayLineCount];
    line.X1 = x1;
    line.Y1 = y1;
    line.X2 = x2;
    line.Y2 = y2;
    line.Colour = colour;
    line.Style = static_cast<std::int16_t>(LineStyle::Solid);
    line.Width = baseWidth;
    if (code & Bit::Selected) {
      line.Width = static_cast<std::int16_t>(2 * baseWidth);
      line.Colour = kWhite;
    }
    if (i == ws.HighlightAirway) {  // the airway an open dialog is working on
      line.Width = static_cast<std::int16_t>(3 * baseWidth);
      line.Colour = kHighlightColour;
    }
    view.LineAirway[view.AirwayLineCount] = i;
    ++view.AirwayLineCount;
  }
  view.AirwayLineShown = view.AirwayLineCount >= 1;
}

void DrawWireframe(Workspace& ws, ViewState& view, Canvas& canvas) {
  const auto& lines = ws.net.AirwayLine;
  for (int k = 0; k < view.AirwayLineCount; ++k) {
    const AirwayLineRecord& r = lines[k];
    canvas.Line(r.X1, r.Y1, r.X2, r.Y2, r.Colour, r.Width, static_cast<LineStyle>(r.Style));
  }
}

void DrawGrid(Workspace& ws, ViewState& view, Canvas& canvas) {
  const int kind = ViewKind(view);
  if (!view.GridOn && kind != 2) return;
  ReadViewBounds(view);
  double spacing = ws.defaults.GridSpacing;
  if (!(spacing > 0)) {
    ws.ui.Inform("MAJOR Error Drawing Graphics Grid !");
    return;
  }
  // A far zoom would fill the window with lines: thin them by tens.
  const double extent = std::max(view.ViewRight - view.ViewLeft, view.ViewBottom - view.ViewTop);
  while (extent / spacing > kMaxGridLines) spacing *= 10;
  if (kind == 2) {
    DrawEdgeOnScale(ws, view, canvas, spacing);
    return;
  }
  DrawGridAxis(ws, view, canvas, spacing, true);
  DrawGridAxis(ws, view, canvas, spacing, false);
}

void DrawSymbols(Workspace& ws, ViewState& view, Canvas& canvas) {
  Network& net = ws.net;
  ReadViewBounds(view);
  const SymbolScale scale = ScaleSymbols(view);
  TakenPlaces places(view, view.Declutter);
  DrawFloatingText(ws, view, canvas, scale, places);

  const float dataSize = FontSize(ws, scale, 1);
  const float nameSize = FontSize(ws, scale, 2);
  const float nodeSize = FontSize(ws, scale, 3);
  UseFont(ws, canvas, 1);
  const float lineStep = canvas.TextHeight("F", dataSize);
  const float dataNarrowest =
      view.Declutter ? kNarrowestGlyph * canvas.TextWidth("F", dataSize) : 0;
  UseFont(ws, canvas, 2);
  const float nameStep = canvas.TextHeight("F", nameSize);
  const float nameNarrowest =
      view.Declutter ? kNarrowestGlyph * canvas.TextWidth("F", nameSize) : 0;
  UseFont(ws, canvas, 3);
  const float nodeColumn = canvas.TextWidth("F", nodeSize);
  const float nodeLine = canvas.TextHeight("F", nodeSize);

  const std::int32_t bits = view.DisplayBits;
  const int dataType = view.DataTypeCode;
  const bool nodeData = IsNodeDataType(dataType) && (bits & Show::DataValues);
  const bool nodeSymbols = (bits & Show::NodeSymbols) != 0;
  if (nodeSymbols || nodeData) CollectEndKeys(net, view);

  const Colour dimColour = kContaminantColours[0];
  const Colour symbolColour = PaletteColour(ws.defaults, Palette::Symbols);
  const Colour dimText = PaletteColour(ws.defaults, Palette::DimText);
  const Colour dataColour = PaletteColour(ws.defaults, Palette::DataText);
  const bool contaminantDisplay = view.SmokeState != 0;
  const bool flowLimitsInUse = view.FlowDimMode != 0;
  const LabelSettings labelSettings{view.SmokeState, (bits & Show::ResistanceSymbols) != 0};
  std::string label;

  for (int k = 0; k < view.AirwayLineCount; ++k) {
    const AirwayLineRecord& line = net.AirwayLine[k];
    const int i = view.LineAirway[k];
    if (view.SingleAirway != 0 && view.SingleAirway != i) continue;
    const RecordPlace p = PlaceRecord(net, view, line, i);
    const std::int32_t code = net.BranchCode[i];
    const bool inView = (code & Bit::InView) != 0;
    const bool steep = IsSteep(net, i) || (code & (Bit::ForceEntrySurface | Bit::ForceExitSurface));
    const int attitude = steep ? 5 : 6;
    const bool dim = line.Colour == dimColour;
    const Colour textColour = contaminantDisplay ? line.Colour : dim ? dimText : symbolColour;

    if ((bits & Show::Arrows) && (inView || (view.DisplayFlags & OffLayer::Arrows)) &&
        (p.x1 != p.x2 || p.y1 != p.y2) &&
        places.Claim(p.x1 + 0.8f * (p.x2 - p.x1) - scale.arrow,
                     p.y1 + 0.8f * (p.y2 - p.y1) - scale.arrow, 2 * scale.arrow, 2 * scale.arrow,
                     TakenPlaces::kArrows)) {
      DrawArrow(canvas, p, scale.arrow, line.Colour, line.Width);
    }

    // A node drawn by a joined airway's entry end is not drawn again at this exit end.
    const bool drawEnd2 = steep || ((nodeSymbols || nodeData) &&
                                    !EndIsJoined(view.NodeKeyScratch, net.ExitNodeId[i]));
    if (nodeSymbols && (inView || (view.DisplayFlags & OffLayer::NodeSymbols))) {
      const float size = scale.symbol[4];
      if (p.end1On && places.ClaimCentred(p.x1, p.y1, size))
        CentredBitmap(canvas, Picture::Node, p.x1, p.y1, size);
      if (p.end2On && drawEnd2 && places.ClaimCentred(p.x2, p.y2, size))
        CentredBitmap(canvas, Picture::Node, p.x2, p.y2, size);
    }

    const bool filterPasses = view.DataFilter == 0 || (view.DataFilter & attitude) != 0;
    const bool limitedOut =
        view.DataFilter == 3 && flowLimitsInUse && OutsideFlowLimits(view, net.Quantity[i]);
    if ((bits & Show::NodeNames) && ws.defaults.Fonts[3].Size != 0 &&
        (inView || (view.DisplayFlags & OffLayer::NodeNames)) && filterPasses && !limitedOut) {
      UseFont(ws, canvas, 3);
      auto nodeName = [&](const Text40& field, float x, float y) {
        if (places.Taken(x, y - nodeLine / 2)) return;
        const std::string name = field.Trimmed();
        const float left = x - nodeColumn / 2, top = y - nodeLine;
        if (places.ClaimText(canvas, left, top, name, nodeSize, nodeLine,
                             kNarrowestGlyph * nodeColumn))
          canvas.Text(left, top, name, textColour, nodeSize);
      };
      if (p.end2On) nodeName(net.ExitNodeName[i], p.x2, p.y2);
      if (steep && p.end1On) nodeName(net.EntryNodeName[i], p.x1, p.y1);
    }

    if (nodeData && scale.text > 0 && (inView || (view.DisplayFlags & OffLayer::Data))) {
      UseFont(ws, canvas, 1);
      auto nodeValue = [&](const Coord3& c, float pressure, float x, float y) {
        if (places.Taken(x, y + lineStep / 2)) return;
        label = NodeValueText(ws, dataType, c, pressure);
        if (places.ClaimText(canvas, x, y, label, dataSize, lineStep, dataNarrowest))
          canvas.Text(x, y, label, dataColour, dataSize);
      };
      if (p.end1On) nodeValue(net.Coord1[i], net.FromNodeP[i], p.x1, p.y1);
      if (p.end2On && drawEnd2) nodeValue(net.Coord2[i], net.ToNodeP[i], p.x2, p.y2);
    }

    if (p.symOn && inView) {
      auto symbol = [&](int picture, float x, float y, float size) {
        if (places.ClaimCentred(x, y, size, TakenPlaces::kSymbols))
          CentredBitmap(canvas, picture, x, y, size);
      };
      if ((bits & Show::FanSymbols) && net.FanNumber[i] != 0) {
        symbol(Picture::Fan, p.symX, p.symY, scale.symbol[3]);
      } else if ((bits & Show::FanSymbols) && (code & Bit::FixedQuantity) && p.midOn) {
        symbol(net.Pressure[i] < 0 ? Picture::Res : Picture::Fixed, p.midX, p.midY,
               scale.symbol[3]);
      }
      if ((bits & Show::ResistanceSymbols) && net.ResType[i] != 0) {
        if (net.ResType[i] == 1) {
          symbol(Picture::BulkheadSymbol, p.symX, p.symY, scale.symbol[6]);
        } else {
          symbol(Picture::HazardSymbol, p.symX, p.symY, scale.symbol[5]);
        }
      }
      if ((code & Bit::ContaminantSource) && (bits & Show::Contaminants)) {
        symbol(Picture::Smoke, p.symX, p.symY, scale.symbol[2]);
      }
      const int pin = net.SmokeData[i][1];
      const float pinSize = scale.symbol[2];
      if (pin != 0 && places.Claim(p.symX - pinSize / 2, p.symY - 0.9f * pinSize, pinSize, pinSize,
                                   TakenPlaces::kSymbols)) {
        canvas.Bitmap(pin == 2 ? Picture::PinBlue : Picture::PinRed, p.symX - pinSize / 2,
                      p.symY - 0.9f * pinSize, pinSize, pinSize);
      }
    }

    // A box whose midpoint lies just off the window still shows its lines that fall inside.
    UseFont(ws, canvas, 2);
    ShowStations(ws, canvas, i, p.midX, p.midY, nameSize, nameStep);

    float textBottom = p.midY;
    if (ws.defaults.Fonts[1].Size != 0 && p.midOn && (bits & Show::DataValues) && !nodeData &&
        (inView || (view.DisplayFlags & OffLayer::Data)) && filterPasses && !limitedOut &&
        !places.Taken(p.midX, p.midY - lineStep / 2)) {
      UseFont(ws, canvas, 1);
      label = AirwayLabel(ws, dataType, i, 0, labelSettings);
      if (code & Bit::ErrorMark) label = net.Comment[i].Trimmed() + "\n" + label;
      const Colour colour = contaminantDisplay && label != "N/A" ? line.Colour : dataColour;
      const int lines = LineCount(label);
      // One line sits above the midpoint; of two, the first above and the second below.
      const float top = p.midY - lineStep * static_cast<float>(lines == 1 ? 1 : lines - 1);
      if (places.ClaimLines(canvas, label, p.midX, top, dataSize, lineStep, dataNarrowest))
        textBottom = CentredLines(canvas, label, p.midX, top, dataSize, lineStep, colour);
    }

    if ((bits & Show::AirwayNames) && ws.defaults.Fonts[2].Size != 0 && p.midOn &&
        (inView || (view.DisplayFlags & OffLayer::AirwayName))) {
      UseFont(ws, canvas, 2);
      const float top = std::max(textBottom, p.midY);
      const std::string name =
          places.Taken(p.midX, top + nameStep / 2) ? std::string() : net.BranchName[i].Trimmed();
      if (!name.empty() &&
          places.ClaimLines(canvas, name, p.midX, top, nameSize, nameStep, nameNarrowest)) {
        CentredLines(canvas, name, p.midX, top, nameSize, nameStep, dim ? dimText : line.Colour);
      }
    }
  }
}

void RedrawNetwork(Workspace& ws, ViewState& view, Canvas& canvas) {
  if (view.Minimised || !view.WindowOpen) return;
  view.SmokeLimit = std::fabs(view.SmokeLimit);
  ws.ui.SetBusy(true);
  BuildAirwayLines(ws, view);
  canvas.SetScale(view.ScaleLeft, view.ScaleTop, view.ScaleWidth, view.ScaleHeight);
  canvas.Clear(BackgroundColour(ws.defaults));
  DrawGrid(ws, view, canvas);
  DrawWireframe(ws, view, canvas);
  DrawSymbols(ws, view, canvas);
  ws.ui.SetBusy(false);
}

void RedrawWireframe(Workspace& ws, ViewState& view, Canvas& canvas) {
  BuildAirwayLines(ws, view);
  canvas.SetScale(view.ScaleLeft, view.ScaleTop, view.ScaleWidth, view.ScaleHeight);
  canvas.Clear(BackgroundColour(ws.defaults));
  if (view.Panning) DrawGrid(ws, view, canvas);  // a pan keeps the grid; a rotation drops it
  DrawWireframe(ws, view, canvas);
}

}  // namespace galeris
