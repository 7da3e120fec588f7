// The view's canvas on a QPainter: world units mapped onto the painter's pixels, the label
// fonts by name (a fixed family stands in for one not installed), and the symbol pictures drawn in code once and scaled on demand.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QSize>

#include "view/canvas.h"

namespace galeris {

class QPainterCanvas : public Canvas {
 public:
  QPainterCanvas(QPainter& painter, QSize pixels, const QString& fontFamily = "DejaVu Sans");

  void SetScale(float left, float top, float width, float height) override;
  void Clear(Colour background) override;
  void Line(float x1, float y1, float x2, float y2, Colour colour, int penWidth,
            LineStyle style) override;
  void Text(float x, float y, std::string_view text, Colour colour, float size) override;
  // A family this machine lacks gives way to the canvas's own.
  void SetFont(std::string_view family, bool bold) override;
  float TextWidth(std::string_view text, float size) override;
  float TextHeight(std::string_view text, float size) override;
  void Bitmap(int picture, float left, float top, float width, float height) override;
  void Circle(float x, float y, float radius, Colour colour) override;
  void FillRect(float left, float top, float width, float height, Colour colour) override;

  // Pen widths are screen pixels; a device of finer dots (a printer) widens them by this factor.
  void SetPenScale(float factor) { penScale_ = factor; }
  // A black and white print: the symbol pictures in dark greys.
  void SetMonochrome(bool on) { monochrome_ = on; }

 private:
  QPointF ToPixels(float x, float y) const;
  const QFont& FontOf(float size);
  QFontMetricsF MetricsOf(float size);

  QPainter& painter_;
  QSize pixels_;
  float left_ = 0, top_ = 0, scaleX_ = 1, scaleY_ = 1;
  QFont font_;
  QString ownFamily_;
  QString requestedFamily_;
  float fontSize_ = -1;
  float penScale_ = 1;
  bool monochrome_ = false;
};

QColor ToQColor(Colour colour);

// The symbol picture of that position, drawn anew at the given pixel size (cached by size), in
// its colours or in dark greys.
const QImage& SymbolPicture(int picture, int pixelSize, bool monochrome = false);

}  // namespace galeris
