// The tool pointers, drawn in code. Pointers that place something on the network carry a small
// cross at their hot spot in the top-left corner and their picture beside it, so that the
// point picked is always plain to see; the zoom, pan, rotation and cross pointers are centred
// on their hot spot.
#include "view/qt/tool_cursors.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace galeris {
namespace {

constexpr int kSize = 32;
constexpr QPoint kCornerHotSpot(5, 5);

// A picture: the outline to stroke, and the parts to fill solid.
struct Shape {
  QPainterPath stroke;
  QPainterPath fill;
};

void AddLine(QPainterPath& path, QPointF a, QPointF b) {
  path.moveTo(a);
  path.lineTo(b);
}

void AddArrowHead(QPainterPath& path, QPointF tip, QPointF from, double length = 5) {
  const double angle = std::atan2(from.y() - tip.y(), from.x() - tip.x());
  for (double side : {-0.5, 0.5}) {
    const QPointF wing(tip.x() + length * std::cos(angle + side),
                       tip.y() + length * std::sin(angle + side));
    AddLine(path, tip, wing);
  }
}

void AddCornerCross(Shape& shape) {
  const QPointF c = kCornerHotSpot;
  AddLine(shape.stroke, c - QPointF(5, 0), c - QPointF(1, 0));
  AddLine(shape.stroke, c + QPointF(1, 0), c + QPointF(5, 0));
  AddLine(shape.stroke, c - QPointF(0, 5), c - QPointF(0, 1));
  AddLine(shape.stroke, c + QPointF(0, 1), c + QPointF(0, 5));
}

Shape Cross() {
  Shape s;
  AddLine(s.stroke, {2, 15}, {12, 15});
  AddLine(s.stroke, {18, 15}, {28, 15});
  AddLine(s.stroke, {15, 2}, {15, 12});
  AddLine(s.stroke, {15, 18}, {15, 28});
  return s;
}

Shape Magnify() {
  Shape s;
  s.stroke.addEllipse(QPointF(12, 12), 8, 8);
  AddLine(s.stroke, {9, 12}, {15, 12});
  AddLine(s.stroke, {12, 9}, {12, 15});
  QPainterPath handle;
  handle.moveTo(17, 19);
  handle.lineTo(19, 17);
  handle.lineTo(29, 27);
  handle.lineTo(27, 29);
  handle.closeSubpath();
  s.fill = handle;
  return s;
}

Shape Hand() {
  Shape s;
  QPainterPath palm;
  palm.addRoundedRect(QRectF(9, 14, 15, 13), 4, 4);
  s.stroke = palm;
  for (int f = 0; f < 4; ++f) {
    const double x = 10.5 + f * 4;
    const double top = f == 0 || f == 3 ? 8 : 5;
    s.stroke.addRoundedRect(QRectF(x - 1.5, top, 3, 14 - top), 1.5, 1.5);
  }
  AddLine(s.stroke, {9, 20}, {4, 14});  // the thumb
  return s;
}

Shape Rotate() {
  Shape s;
  s.stroke.arcMoveTo(QRectF(5, 5, 22, 22), 30);
  s.stroke.arcTo(QRectF(5, 5, 22, 22), 30, 300);
  const QPointF end = s.stroke.currentPosition();
  AddArrowHead(s.stroke, end, end + QPointF(-4, -4));
  s.fill.addEllipse(QPointF(16, 16), 2, 2);
  return s;
}

Shape Alpha() {
  Shape s;
  AddCornerCross(s);
  s.stroke.moveTo(13, 29);
  s.stroke.lineTo(20, 11);
  s.stroke.lineTo(27, 29);
  AddLine(s.stroke, {15.5, 23}, {24.5, 23});
  return s;
}

Shape Cloud() {
  Shape s;
  AddCornerCross(s);
  QPainterPath cloud;
  cloud.setFillRule(Qt::WindingFill);
  cloud.addEllipse(QPointF(17, 23), 5, 5);
  cloud.addEllipse(QPointF(23, 18), 6, 6);
  cloud.addEllipse(QPointF(27, 24), 4, 4);
  cloud.addRect(QRectF(17, 23, 10, 5));
  s.fill = cloud.simplified();
  return s;
}

Shape Copy() {
  Shape s;
  AddCornerCross(s);
  s.stroke.addRect(QRectF(12, 12, 11, 13));
  s.fill.addRect(QRectF(17, 17, 11, 13));
  return s;
}

Shape Paste() {
  Shape s;
  AddCornerCross(s);
  s.stroke.addRect(QRectF(13, 13, 15, 17));
  s.fill.addRect(QRectF(17, 11, 7, 4));
  AddLine(s.stroke, {16, 20}, {25, 20});
  AddLine(s.stroke, {16, 24}, {25, 24});
  return s;
}

Shape Delete() {
  Shape s;
  AddCornerCross(s);
  QPainterPath bar;
  s.fill.setFillRule(Qt::WindingFill);
  bar.addRect(QRectF(-1.5, -9, 3, 18));
  for (double angle : {45.0, -45.0}) {
    QTransform t;
    t.translate(21, 21);
    t.rotate(angle);
    s.fill.addPath(t.map(bar));
  }
  s.fill = s.fill.simplified();
  return s;
}

Shape Edit() {
  Shape s;
  AddCornerCross(s);
  QPainterPath pencil;
  pencil.moveTo(12, 29);
  pencil.lineTo(13, 24);
  pencil.lineTo(25, 12);
  pencil.lineTo(29, 16);
  pencil.lineTo(17, 28);
  pencil.closeSubpath();
  s.stroke.addPath(pencil);
  AddLine(s.stroke, {22, 15}, {26, 19});
  return s;
}

Shape Fan() {
  Shape s;
  AddCornerCross(s);
  s.stroke.addEllipse(QPointF(21, 21), 9, 9);
  for (int blade = 0; blade < 3; ++blade) {
    QPainterPath b;
    b.moveTo(0, 0);
    b.cubicTo(2, -3, 6, -4, 7, -1);
    b.closeSubpath();
    QTransform t;
    t.translate(21, 21);
    t.rotate(blade * 120);
    s.fill.addPath(t.map(b));
  }
  return s;
}

Shape Info() {
  Shape s;
  AddCornerCross(s);
  s.stroke.addEllipse(QPointF(21, 21), 9, 9);
  s.fill.addEllipse(QPointF(21, 15.5), 1.8, 1.8);
  s.fill.addRect(QRectF(19.5, 19, 3, 8));
  return s;
}

Shape Insert() {
  Shape s;
  AddCornerCross(s);
  AddLine(s.stroke, {11, 29}, {30, 14});
  s.fill.addEllipse(QPointF(20.5, 21.5), 3.5, 3.5);
  AddLine(s.stroke, {25, 26}, {29, 26});
  AddLine(s.stroke, {27, 24}, {27, 28});
  return s;
}

Shape MoveArrows() {
  Shape s;
  AddCornerCross(s);
  const QPointF c(21, 21);
  const QPointF ends[4] = {{21, 11}, {21, 31}, {11, 21}, {31, 21}};
  for (const QPointF& e : ends) {
    AddLine(s.stroke, c, e);
    AddArrowHead(s.stroke, e, c, 4);
  }
  return s;
}

Shape Reverse() {
  Shape s;
  AddCornerCross(s);
  AddLine(s.stroke, {12, 17}, {29, 17});
  AddArrowHead(s.stroke, {29, 17}, {12, 17});
  AddLine(s.stroke, {12, 25}, {29, 25});
  AddArrowHead(s.stroke, {12, 25}, {29, 25});
  return s;
}

Shape Tag() {
  Shape s;
  AddCornerCross(s);
  QPainterPath tag;
  tag.moveTo(12, 12);
  tag.lineTo(21, 12);
  tag.lineTo(30, 21);
  tag.lineTo(21, 30);
  tag.lineTo(12, 21);
  tag.closeSubpath();
  s.stroke.addPath(tag);
  s.fill.addEllipse(QPointF(16.5, 16.5), 1.8, 1.8);
  return s;
}

Shape Trace() {
  Shape s;
  AddCornerCross(s);
  s.stroke.moveTo(11, 29);
  s.stroke.lineTo(17, 20);
  s.stroke.lineTo(23, 25);
  s.stroke.lineTo(30, 13);
  AddArrowHead(s.stroke, {30, 13}, {23, 25});
  for (const QPointF& node : {QPointF(17, 20), QPointF(23, 25)}) s.fill.addEllipse(node, 2, 2);
  return s;
}

struct NamedCursor {
  const char* name;
  Shape (*draw)();
  QPoint hotSpot;
};

constexpr NamedCursor kCursors[] = {
    {"ALPHA", Alpha, kCornerHotSpot},     {"CLOUD", Cloud, kCornerHotSpot},
    {"COPY", Copy, kCornerHotSpot},       {"CROSS", Cross, QPoint(15, 15)},
    {"DELETE", Delete, kCornerHotSpot},   {"EDIT", Edit, kCornerHotSpot},
    {"FAN", Fan, kCornerHotSpot},         {"HAND", Hand, QPoint(16, 18)},
    {"INFO", Info, kCornerHotSpot},       {"INSERT", Insert, kCornerHotSpot},
    {"MAGNIFY", Magnify, QPoint(12, 12)}, {"MOVE", MoveArrows, kCornerHotSpot},
    {"PASTE", Paste, kCornerHotSpot},     {"REVERSE", Reverse, kCornerHotSpot},
    {"ROTATE", Rotate, QPoint(16, 16)},   {"TAG", Tag, kCornerHotSpot},
    {"TRACE", Trace, kCornerHotSpot},
};

const NamedCursor* Find(const std::string& name) {
  for (const NamedCursor& cursor : kCursors) {
    if (name == cursor.name) return &cursor;
  }
  return nullptr;
}

// White edge first, black over it.
void Paint(QPainter& painter, Shape shape) {
  shape.fill.setFillRule(Qt::WindingFill);  // overlapping parts stay solid
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(shape.stroke);
  painter.drawPath(shape.fill);
  painter.setBrush(Qt::black);
  painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(shape.fill);
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(shape.stroke);
}

}  // namespace

std::vector<std::string> ToolCursorNames() {
  std::vector<std::string> names;
  for (const NamedCursor& cursor : kCursors) names.emplace_back(cursor.name);
  return names;
}

QPixmap ToolCursorPicture(const std::string& name) {
  const NamedCursor* cursor = Find(name);
  if (cursor == nullptr) return {};
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  Paint(painter, cursor->draw());
  return picture;
}

QPoint ToolCursorHotSpot(const std::string& name) {
  const NamedCursor* cursor = Find(name);
  return cursor == nullptr ? QPoint(kSize / 2, kSize / 2) : cursor->hotSpot;
}

QCursor ToolCursor(const std::string& name) {
  const QPixmap picture = ToolCursorPicture(name);
  if (picture.isNull()) return QCursor(Qt::CrossCursor);
  const QPoint hot = ToolCursorHotSpot(name);
  return QCursor(picture, hot.x(), hot.y());
}

}  // namespace galeris
