// A canvas that paints into a plain pixel buffer with no toolkit: one-pixel lines by Bresenham,
// text and pictures as filled boxes of their size. The benchmarks measure the drawing passes
// with it, and engine tests read back which pixels were touched.
#pragma once

#include <cstdint>
#include <vector>

#include "view/canvas.h"

namespace galeris {

class RasterCanvas : public Canvas {
 public:
  RasterCanvas(int width, int height);

  void SetScale(float left, float top, float width, float height) override;
  void Clear(Colour background) override;
  void Line(float x1, float y1, float x2, float y2, Colour colour, int penWidth,
            LineStyle style) override;
  void Text(float x, float y, std::string_view text, Colour colour, float size) override;
  float TextWidth(std::string_view text, float size) override;
  float TextHeight(std::string_view text, float size) override;
  void Bitmap(int picture, float left, float top, float width, float height) override;
  void Circle(float x, float y, float radius, Colour colour) override;
  void FillRect(float left, float top, float width, float height, Colour colour) override;

  int Width() const { return width_; }
  int Height() const { return height_; }
  Colour Pixel(int x, int y) const { return pixels_[static_cast<std::size_t>(y) * width_ + x]; }
  // Counts of calls since the last Clear, for tests.
  int Lines() const { return lines_; }
  int Texts() const { return texts_; }
  int Bitmaps() const { return bitmaps_; }

 private:
  int PixelX(float x) const;
  int PixelY(float y) const;
  void Plot(int x, int y, Colour colour);
  void FillPixels(int x1, int y1, int x2, int y2, Colour colour);

  int width_, height_;
  float left_ = 0, top_ = 0, scaleX_ = 1, scaleY_ = 1;
  std::vector<Colour> pixels_;
  int lines_ = 0, texts_ = 0, bitmaps_ = 0;
};

}  // namespace galeris
