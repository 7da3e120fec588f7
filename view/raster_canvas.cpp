// The toolkit-free canvas: world units mapped onto a pixel buffer.
#include "view/raster_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace galeris {
namespace {

constexpr float kPointsToPixels = 96.0f / 72.0f;
constexpr float kGlyphWidthShare = 0.6f;  // average glyph width of a sans face, per pixel size
constexpr Colour kPictureColour = RGBColour(255, 255, 0);

int ClampToInt(float v) {
  return static_cast<int>(std::clamp(v, -1.0e6f, 1.0e6f));
}

}  // namespace

RasterCanvas::RasterCanvas(int width, int height)
    : width_(std::max(1, width)),
      height_(std::max(1, height)),
      pixels_(static_cast<std::size_t>(width_) * height_, 0) {}

void RasterCanvas::SetScale(float left, float top, float width, float height) {
  left_ = left;
  top_ = top;
  scaleX_ = width != 0 ? width_ / width : 1;
  scaleY_ = height != 0 ? height_ / height : 1;
}

int RasterCanvas::PixelX(float x) const {
  return ClampToInt(std::floor((x - left_) * scaleX_));
}
int RasterCanvas::PixelY(float y) const {
  return ClampToInt(std::floor((y - top_) * scaleY_));
}

void RasterCanvas::Plot(int x, int y, Colour colour) {
  if (x >= 0 && y >= 0 && x < width_ && y < height_) {
    pixels_[static_cast<std::size_t>(y) * width_ + x] = colour;
  }
}

void RasterCanvas::FillPixels(int x1, int y1, int x2, int y2, Colour colour) {
  x1 = std::max(x1, 0);
  y1 = std::max(y1, 0);
  x2 = std::min(x2, width_ - 1);
  y2 = std::min(y2, height_ - 1);
  if (x1 > x2 || y1 > y2) return;
  for (int y = y1; y <= y2; ++y) {
    std::fill(pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + x1,
              pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + x2 + 1, colour);
  }
}

void RasterCanvas::Clear(Colour background) {
  std::fill(pixels_.begin(), pixels_.end(), background);
  lines_ = texts_ = bitmaps_ = 0;
}

void RasterCanvas::Line(float x1, float y1, float x2, float y2, Colour colour, int, LineStyle) {
  ++lines_;
  // Clip to the buffer (Liang-Barsky) so that a long line far outside costs nothing.
  double px = (x1 - left_) * scaleX_, py = (y1 - top_) * scaleY_;
  const double qx = (x2 - left_) * scaleX_, qy = (y2 - top_) * scaleY_;
  const double dx = qx - px, dy = qy - py;
  double t0 = 0, t1 = 1;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {px, width_ - 1 - px, py, height_ - 1 - py};
  for (int k = 0; k < 4; ++k) {
    if (p[k] == 0) {
      if (q[k] < 0) return;
      continue;
    }
    const double t = q[k] / p[k];
    if (p[k] < 0) {
      t0 = std::max(t0, t);
    } else {
      t1 = std::min(t1, t);
    }
    if (t0 > t1) return;
  }
  int ax = static_cast<int>(px + t0 * dx), ay = static_cast<int>(py + t0 * dy);
  const int bx = static_cast<int>(px + t1 * dx), by = static_cast<int>(py + t1 * dy);
  const int stepX = std::abs(bx - ax), stepY = -std::abs(by - ay);
  const int sx = ax < bx ? 1 : -1, sy = ay < by ? 1 : -1;
  int error = stepX + stepY;
  while (true) {
    Plot(ax, ay, colour);
    if (ax == bx && ay == by) break;
    const int e2 = 2 * error;
    if (e2 >= stepY) {
      error += stepY;
      ax += sx;
    }
    if (e2 <= stepX) {
      error += stepX;
      ay += sy;
    }
  }
}

float RasterCanvas::TextWidth(std::string_view text, float size) {
  return static_cast<float>(text.size()) * size * kPointsToPixels * kGlyphWidthShare /
         std::fabs(scaleX_);
}

float RasterCanvas::TextHeight(std::string_view, float size) {
  return size * kPointsToPixels * 1.2f / std::fabs(scaleY_);
}

void RasterCanvas::Text(float x, float y, std::string_view text, Colour colour, float size) {
  ++texts_;
  const int x1 = PixelX(x), y1 = PixelY(y);
  const int w = static_cast<int>(text.size() * size * kPointsToPixels * kGlyphWidthShare);
  const int h = static_cast<int>(size * kPointsToPixels);
  // Glyphs cover about a fifth of their box: mark its baseline row.
  FillPixels(x1, y1 + h, x1 + w, y1 + h, colour);
}

void RasterCanvas::Bitmap(int, float left, float top, float width, float height) {
  ++bitmaps_;
  FillPixels(PixelX(left), PixelY(top), PixelX(left + width), PixelY(top + height), kPictureColour);
}

void RasterCanvas::Circle(float x, float y, float radius, Colour colour) {
  const int cx = PixelX(x), cy = PixelY(y);
  const int r = std::max(1, static_cast<int>(std::fabs(radius * scaleX_)));
  for (int k = 0; k < 8 * r; ++k) {
    const double a = k * 3.141592654 / (4 * r);
    Plot(cx + static_cast<int>(r * std::cos(a)), cy + static_cast<int>(r * std::sin(a)), colour);
  }
}

void RasterCanvas::FillRect(float left, float top, float width, float height, Colour colour) {
  FillPixels(PixelX(left), PixelY(top), PixelX(left + width), PixelY(top + height), colour);
}

}  // namespace galeris
