// The drawing surface the view paints on: a plane in world units (left, top, width, height;
// y grows downwards), lines, text, circles, rectangles and the symbol bitmaps by name. The
// desktop program paints through QPainter; the benchmarks and tests use plain backends.
#pragma once

#include <cstdint>
#include <string_view>

namespace galeris {

// Colour values as the network file stores them: 0x00BBGGRR.
using Colour = std::int32_t;

constexpr Colour RGBColour(int red, int green, int blue) {
  return static_cast<Colour>((blue << 16) | (green << 8) | red);
}
constexpr int RedOf(Colour c) {
  return c & 0xFF;
}
constexpr int GreenOf(Colour c) {
  return (c >> 8) & 0xFF;
}
constexpr int BlueOf(Colour c) {
  return (c >> 16) & 0xFF;
}

enum class LineStyle : std::int16_t { Solid = 0, Dash = 1, Dot = 2 };

// The symbol bitmaps, by their position in the picture list.
namespace Picture {
inline constexpr int Line = 0, Arrow = 1, Smoke = 2, Fan = 3, Node = 4, Hazard = 5, Bulkhead = 6,
                     PinRed = 7, PinBlue = 8, Res = 9, Fixed = 10, BulkheadSymbol = 11,
                     HazardSymbol = 12;
inline constexpr int Count = 13;
}  // namespace Picture

// The resource name of a picture: "Line", "Arrow", "Smoke2", "FanBig", "Node2", ...
std::string_view PictureName(int picture);

class Canvas {
 public:
  virtual ~Canvas() = default;

  // The world rectangle that fills the surface.
  virtual void SetScale(float left, float top, float width, float height) = 0;
  virtual void Clear(Colour background) = 0;
  virtual void Line(float x1, float y1, float x2, float y2, Colour colour, int penWidth,
                    LineStyle style = LineStyle::Solid) = 0;
  // Text with its top-left corner at (x, y); the size is in points.
  virtual void Text(float x, float y, std::string_view text, Colour colour, float size) = 0;
  // The font of the texts that follow, by family name; a surface without fonts ignores it.
  virtual void SetFont(std::string_view /*family*/, bool /*bold*/) {}
  // Extent of a text in world units.
  virtual float TextWidth(std::string_view text, float size) = 0;
  virtual float TextHeight(std::string_view text, float size) = 0;
  // A picture stretched over the world rectangle given.
  virtual void Bitmap(int picture, float left, float top, float width, float height) = 0;
  virtual void Circle(float x, float y, float radius, Colour colour) = 0;
  virtual void FillRect(float left, float top, float width, float height, Colour colour) = 0;
};

}  // namespace galeris
