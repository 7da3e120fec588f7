// QPainter backend of the view's canvas, and the symbol pictures drawn in code.
#include "view/qt/qpainter_canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QPolygonF>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

namespace galeris {
namespace {

constexpr int kPictureBase = 64;  // pictures are drawn on a 64-unit square, then scaled

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void DrawFan(QPainter& p) {
  p.setPen(QPen(QColor(255, 255, 0), 4));
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(QPointF(32, 32), 28, 28);
  p.setBrush(QColor(255, 255, 0));
  for (int blade = 0; blade < 3; ++blade) {
    p.save();
    p.translate(32, 32);
    p.rotate(blade * 120.0);
    QPainterPath path;
    path.moveTo(0, 0);
    path.cubicTo(6, -8, 14, -20, 4, -24);
    path.cubicTo(-4, -22, -4, -10, 0, 0);
    p.drawPath(path);
    p.restore();
  }
  p.drawEllipse(QPointF(32, 32), 5, 5);
}

void DrawNode(QPainter& p) {
  p.setPen(QPen(QColor(255, 255, 0), 6));
  p.setBrush(QColor(0, 0, 0, 0));
  p.drawEllipse(QPointF(32, 32), 22, 22);
}

void DrawArrowPicture(QPainter& p) {
  p.setPen(QPen(QColor(255, 255, 255), 5));
  p.drawLine(QPointF(8, 32), QPointF(56, 32));
  p.drawLine(QPointF(56, 32), QPointF(38, 16));
  p.drawLine(QPointF(56, 32), QPointF(38, 48));
}

void DrawLinePicture(QPainter& p) {
  p.setPen(QPen(QColor(255, 255, 255), 5));
  p.drawLine(QPointF(8, 32), QPointF(56, 32));
}

void DrawSmoke(QPainter& p) {
  p.setPen(QPen(QColor(90, 90, 90), 2));
  p.setBrush(QColor(190, 190, 190));
  p.drawEllipse(QPointF(22, 38), 14, 12);
  p.drawEllipse(QPointF(42, 38), 14, 12);
  p.drawEllipse(QPointF(32, 26), 15, 13);
}

void DrawHazard(QPainter& p) {
  p.setPen(QPen(QColor(0, 0, 0), 3));
  p.setBrush(QColor(255, 200, 0));
  p.drawPolygon(QPolygonF({QPointF(32, 4), QPointF(60, 58), QPointF(4, 58)}));
  p.setPen(QPen(QColor(0, 0, 0), 6));
  p.drawLine(QPointF(32, 22), QPointF(32, 42));
  p.drawPoint(QPointF(32, 51));
}

void DrawBulkhead(QPainter& p) {
  p.setPen(QPen(QColor(60, 0, 0), 2));
  p.setBrush(QColor(200, 40, 40));
  p.drawRect(QRectF(20, 4, 24, 56));
  p.setPen(QPen(QColor(255, 220, 220), 2));
  for (int y = 14; y < 60; y += 10) p.drawLine(QPointF(20, y), QPointF(44, y));
  p.drawLine(QPointF(32, 4), QPointF(32, 14));
  p.drawLine(QPointF(32, 24), QPointF(32, 34));
  p.drawLine(QPointF(32, 44), QPointF(32, 54));
}

void DrawPin(QPainter& p, QColor head) {
  // The foot stands at nine tenths of the picture's height.
  p.setPen(QPen(QColor(230, 230, 230), 4));
  p.drawLine(QPointF(32, 30), QPointF(32, 57.6));
  p.setPen(QPen(head.darker(160), 2));
  p.setBrush(head);
  p.drawEllipse(QPointF(32, 20), 14, 14);
}

void DrawBoxLetter(QPainter& p, QColor fill, const QString& letter) {
  p.setPen(QPen(QColor(255, 255, 255), 3));
  p.setBrush(fill);
  p.drawRect(QRectF(8, 8, 48, 48));
  QFont font("DejaVu Sans");
  font.setPixelSize(34);
  font.setBold(true);
  p.setFont(font);
  p.drawText(QRectF(8, 8, 48, 48), Qt::AlignCenter, letter);
}

QImage DrawPicture(int picture, int pixelSize) {
  QImage image(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(pixelSize / double(kPictureBase), pixelSize / double(kPictureBase));
  switch (picture) {
    case Picture::Line:
      DrawLinePicture(p);
      break;
    case Picture::Arrow:
      DrawArrowPicture(p);
      break;
    case Picture::Smoke:
      DrawSmoke(p);
      break;
    case Picture::Fan:
      DrawFan(p);
      break;
    case Picture::Node:
      DrawNode(p);
      break;
    case Picture::Hazard:
    case Picture::HazardSymbol:
      DrawHazard(p);
      break;
    case Picture::Bulkhead:
    case Picture::BulkheadSymbol:
      DrawBulkhead(p);
      break;
    case Picture::PinRed:
      DrawPin(p, QColor(230, 30, 30));
      break;
    case Picture::PinBlue:
      DrawPin(p, QColor(40, 90, 240));
      break;
    case Picture::Res:
      DrawBoxLetter(p, QColor(150, 0, 150), "P");
      break;
    case Picture::Fixed:
      DrawBoxLetter(p, QColor(0, 120, 160), "Q");
      break;
    default:
      break;
  }
  return image;
}

// Each pixel's grey at half its lightness, its cover kept: shapes that read on white paper.
QImage DarkGreys(QImage image) {
  image = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int grey = qGray(row[x]) / 2;
      row[x] = qRgba(grey, grey, grey, qAlpha(row[x]));
    }
  }
  return image;
}

}  // namespace

QColor ToQColor(Colour colour) {
  return QColor(RedOf(colour), GreenOf(colour), BlueOf(colour));
}

const QImage& SymbolPicture(int picture, int pixelSize, bool monochrome) {
  static std::map<std::tuple<int, int, bool>, QImage> cache;
  const auto key = std::make_tuple(picture, pixelSize, monochrome);
  auto found = cache.find(key);
  if (found == cache.end()) {
    QImage image = DrawPicture(picture, pixelSize);
    if (monochrome) image = DarkGreys(image);
    found = cache.emplace(key, image).first;
  }
  return found->second;
}

QPainterCanvas::QPainterCanvas(QPainter& painter, QSize pixels, const QString& fontFamily)
    : painter_(painter), pixels_(pixels), font_(fontFamily), ownFamily_(fontFamily) {
  font_.setStyleHint(QFont::SansSerif);
}

void QPainterCanvas::SetFont(std::string_view family, bool bold) {
  if (font_.bold() != bold) font_.setBold(bold);
  // Texts switch between the four label fonts all the time: the look-up runs once per change.
  const QString name = QString::fromUtf8(family.data(), static_cast<qsizetype>(family.size()));
  if (name == requestedFamily_) return;
  requestedFamily_ = name;
  const QString trimmed = name.trimmed();
  font_.setFamily(!trimmed.isEmpty() && QFontDatabase::hasFamily(trimmed) ? trimmed : ownFamily_);
}

void QPainterCanvas::SetScale(float left, float top, float width, float height) {
  left_ = left;
  top_ = top;
  scaleX_ = width != 0 ? pixels_.width() / width : 1;
  scaleY_ = height != 0 ? pixels_.height() / height : 1;
}

QPointF QPainterCanvas::ToPixels(float x, float y) const {
  return QPointF((x - left_) * scaleX_, (y - top_) * scaleY_);
}

const QFont& QPainterCanvas::FontOf(float size) {
  if (size != fontSize_) {
    font_.setPointSizeF(std::max(1.0f, size));
    fontSize_ = size;
  }
  return font_;
}

// Measured as the painter draws on its own device: a printer's dots are not the screen's.
QFontMetricsF QPainterCanvas::MetricsOf(float size) {
  painter_.setFont(FontOf(size));
  return QFontMetricsF(painter_.fontMetrics());
}

void QPainterCanvas::Clear(Colour background) {
  painter_.fillRect(QRect(QPoint(0, 0), pixels_), ToQColor(background));
}

void QPainterCanvas::Line(float x1, float y1, float x2, float y2, Colour colour, int penWidth,
                          LineStyle style) {
  QPen pen(ToQColor(colour), std::max(1, penWidth) * penScale_);
  pen.setCosmetic(true);
  if (style == LineStyle::Dash) pen.setStyle(Qt::DashLine);
  if (style == LineStyle::Dot) pen.setStyle(Qt::DotLine);
  painter_.setPen(pen);
  painter_.drawLine(ToPixels(x1, y1), ToPixels(x2, y2));
}

void QPainterCanvas::Text(float x, float y, std::string_view text, Colour colour, float size) {
  const QFont& font = FontOf(size);
  painter_.setFont(font);
  painter_.setPen(ToQColor(colour));
  const QPointF at = ToPixels(x, y);
  painter_.drawText(QPointF(at.x(), at.y() + MetricsOf(size).ascent()), ToQString(text));
}

float QPainterCanvas::TextWidth(std::string_view text, float size) {
  return static_cast<float>(MetricsOf(size).horizontalAdvance(ToQString(text)) /
                            std::fabs(scaleX_));
}

float QPainterCanvas::TextHeight(std::string_view, float size) {
  return static_cast<float>(MetricsOf(size).height() / std::fabs(scaleY_));
}

void QPainterCanvas::Bitmap(int picture, float left, float top, float width, float height) {
  const QPointF a = ToPixels(left, top);
  const QPointF b = ToPixels(left + width, top + height);
  QRectF target(a, b);
  target = target.normalized();
  const int side =
      std::clamp(static_cast<int>(std::ceil(std::max(target.width(), target.height()))), 2, 256);
  painter_.drawImage(target, SymbolPicture(picture, side, monochrome_));
}

void QPainterCanvas::Circle(float x, float y, float radius, Colour colour) {
  QPen pen(ToQColor(colour), penScale_);
  pen.setCosmetic(true);
  painter_.setPen(pen);
  painter_.setBrush(Qt::NoBrush);
  const float r = std::max(1.0f, std::fabs(radius * scaleX_));
  painter_.drawEllipse(ToPixels(x, y), r, r);
}

void QPainterCanvas::FillRect(float left, float top, float width, float height, Colour colour) {
  painter_.fillRect(QRectF(ToPixels(left, top), ToPixels(left + width, top + height)).normalized(),
                    ToQColor(colour));
}

}  // namespace galeris
