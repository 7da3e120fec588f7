// The palette: tool tips, pictures and the one-pressed-button rule.
#include "app/tool_palette.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace galeris {

QString PaletteToolTip(int index) {
  switch (index) {
    case 0:
      return "Zoom / Pan  [F2]";
    case 1:
      return "Fit network to window [Home]";
    case 2:
      return "Copy (right)  Paste (left) Layers";
    case 3:
      return "Find the next fault, fixed quantity or fan";
    case 4:
      return "Draw new airway [F3]";
    case 5:
      return "Redo last change [Tab]";
    case 6:
      return "Move airway end";
    case 7:
      return "Reverse airway direction [F6]";
    case 8:
      return "Delete airway [F4]";
    case 9:
      return "Place / remove fan [F8]";
    case 10:
      return "Place/Remove Text [F7]";
    case 11:
      return "Place / Remove contaminant";
    case 12:
      return "Edit airway [F10]";
    case 13:
      return "Airway information [F9]";
    case 14:
      return "Airflow simulation [F12]";
    case 15:
      return "Insert node along airway";
    case 16:
      return "Follow airway";
    case 17:
      return "Place/remove smoke report - left (smoke) or right (clear)";
    case 18:
      return "Centre Model (left) or Rotate (right)";
    case 19:
      return "Open network file";
    case 20:
      return "Save network file";
    case 21:
      return "Copy (right) or Paste (left) airway attributes";
    case 22:
      return "Print screen";
    case 23:
      return "Undo last change [Backspace]";
    case 24:
      return "2D / 3D view";
    case 25:
      return "Grid on / off";
    case 26:
      return "Display options";
    case 27:
      return "Levels: single level or the last other mode";
    case 28:
      return "Update screen (clear selection)";
    case 29:
      return "Contaminant simulation";
    case 30:
      return "Smoke sourcing from report pins";
    case 31:
      return "Select airway tool (ESC to deselect)";
    default:
      return {};
  }
}

QString PaletteStatusText(int index) {
  return PaletteToolTip(index).left(10).trimmed().toUpper();
}

namespace {

// Pictures are drawn on a 24 by 24 grid and scaled.
void DrawArrowHead(QPainter& p, QPointF tip, QPointF from) {
  const QLineF back(tip, from);
  QLineF a = back;
  a.setLength(5);
  a.setAngle(back.angle() + 30);
  QLineF b = back;
  b.setLength(5);
  b.setAngle(back.angle() - 30);
  p.drawLine(a);
  p.drawLine(b);
}

void DrawAirway(QPainter& p) {
  p.drawLine(QPointF(4, 18), QPointF(20, 6));
  p.setBrush(Qt::black);
  p.drawEllipse(QPointF(4, 18), 2, 2);
  p.drawEllipse(QPointF(20, 6), 2, 2);
  p.setBrush(Qt::NoBrush);
}

void DrawMagnifier(QPainter& p) {
  p.drawEllipse(QPointF(10, 10), 6, 6);
  p.setPen(QPen(Qt::black, 3));
  p.drawLine(QPointF(14.5, 14.5), QPointF(21, 21));
}

void DrawCloud(QPainter& p, QColor colour) {
  p.setBrush(colour);
  p.drawEllipse(QPointF(8, 13), 5, 4);
  p.drawEllipse(QPointF(13, 10), 6, 5);
  p.drawEllipse(QPointF(17, 14), 5, 4);
  p.setBrush(Qt::NoBrush);
}

void DrawPin(QPainter& p, QColor colour) {
  p.drawLine(QPointF(12, 12), QPointF(12, 22));
  p.setBrush(colour);
  p.drawEllipse(QPointF(12, 8), 5, 5);
  p.setBrush(Qt::NoBrush);
}

void DrawFan(QPainter& p) {
  p.drawEllipse(QPointF(12, 12), 9, 9);
  p.setBrush(QColor(0, 0, 160));
  for (int k = 0; k < 3; ++k) {
    p.save();
    p.translate(12, 12);
    p.rotate(120 * k);
    p.drawEllipse(QPointF(0, -4.5), 2.5, 4.5);
    p.restore();
  }
  p.setBrush(Qt::NoBrush);
}

void DrawPicture(QPainter& p, int index) {
  const QFont small("Sans", 7, QFont::Bold);
  switch (index) {
    case 0:
      DrawMagnifier(p);
      break;
    case 1:
      p.drawRect(3, 3, 18, 18);
      DrawArrowHead(p, {5, 5}, {11, 11});
      DrawArrowHead(p, {19, 19}, {13, 13});
      p.drawLine(5, 5, 19, 19);
      break;
    case 2:
      for (int k = 0; k < 3; ++k) {
        p.setBrush(QColor(255 - 60 * k, 200, 60 * k));
        p.drawPolygon(QPolygonF(
            {{3, 16.0 - 5 * k}, {12, 12.0 - 5 * k}, {21, 16.0 - 5 * k}, {12, 20.0 - 5 * k}}));
      }
      break;
    case 3:
      DrawMagnifier(p);
      p.setFont(small);
      p.drawText(QRectF(4, 4, 12, 12), Qt::AlignCenter, "?");
      break;
    case 4:
      DrawAirway(p);
      p.drawLine(18, 18, 22, 18);
      p.drawLine(20, 16, 20, 20);
      break;
    case 5:
    case 23: {
      QPainterPath arc;
      arc.moveTo(index == 5 ? 6 : 18, 16);
      arc.cubicTo(index == 5 ? 6 : 18, 6, index == 5 ? 18 : 6, 6, index == 5 ? 18 : 6, 14);
      p.drawPath(arc);
      DrawArrowHead(p, {index == 5 ? 18.0 : 6.0, 15}, {index == 5 ? 18.0 : 6.0, 8});
      break;
    }
    case 6:
      DrawAirway(p);
      p.setPen(QPen(Qt::red, 1.5));
      p.drawLine(QPointF(20, 6), QPointF(20, 20));
      DrawArrowHead(p, {20, 21}, {20, 12});
      break;
    case 7:
      p.drawLine(4, 12, 20, 12);
      DrawArrowHead(p, {4, 12}, {12, 12});
      DrawArrowHead(p, {20, 12}, {12, 12});
      break;
    case 8:
      DrawAirway(p);
      p.setPen(QPen(Qt::red, 2.5));
      p.drawLine(6, 6, 18, 18);
      p.drawLine(18, 6, 6, 18);
      break;
    case 9:
      DrawFan(p);
      break;
    case 10:
      p.setFont(QFont("Serif", 16, QFont::Bold));
      p.drawText(QRectF(0, 0, 24, 24), Qt::AlignCenter, "A");
      break;
    case 11:
      DrawCloud(p, QColor(220, 60, 60));
      break;
    case 12:
      p.setBrush(QColor(250, 210, 60));
      p.drawPolygon(QPolygonF({{4, 20}, {6, 14}, {17, 3}, {21, 7}, {10, 18}}));
      break;
    case 13:
      p.drawEllipse(QPointF(12, 12), 9, 9);
      p.setFont(QFont("Serif", 12, QFont::Bold));
      p.drawText(QRectF(0, 0, 24, 24), Qt::AlignCenter, "i");
      break;
    case 14:
      p.setPen(QPen(QColor(0, 90, 200), 2));
      for (int y : {7, 12, 17}) {
        p.drawLine(3, y, 19, y);
        DrawArrowHead(p, {21, double(y)}, {14, double(y)});
      }
      break;
    case 15:
      DrawAirway(p);
      p.setBrush(Qt::red);
      p.drawEllipse(QPointF(12, 12), 3, 3);
      break;
    case 16:
      p.setPen(QPen(Qt::black, 1.5, Qt::DashLine));
      p.drawPolyline(QPolygonF({{3, 20}, {9, 12}, {15, 16}, {21, 5}}));
      p.setPen(QPen(Qt::black, 1.5));
      DrawArrowHead(p, {21, 5}, {15, 16});
      break;
    case 17:
      DrawPin(p, Qt::red);
      break;
    case 18: {
      QPainterPath arc;
      arc.arcMoveTo(4, 4, 16, 16, 60);
      arc.arcTo(4, 4, 16, 16, 60, 280);
      p.drawPath(arc);
      DrawArrowHead(p, arc.currentPosition(), {20, 8});
      p.drawEllipse(QPointF(12, 12), 1.5, 1.5);
      break;
    }
    case 19:
      p.setBrush(QColor(240, 200, 80));
      p.drawPolygon(QPolygonF({{2, 7}, {9, 7}, {11, 9}, {21, 9}, {21, 20}, {2, 20}}));
      break;
    case 20:
      p.setBrush(QColor(60, 60, 150));
      p.drawRect(3, 3, 18, 18);
      p.setBrush(Qt::white);
      p.drawRect(7, 3, 10, 7);
      p.drawRect(6, 14, 12, 7);
      break;
    case 21:
      p.drawRect(3, 3, 11, 11);
      p.setBrush(QColor(200, 230, 255));
      p.drawRect(10, 10, 11, 11);
      break;
    case 22:
      p.setBrush(Qt::white);
      p.drawRect(7, 3, 10, 7);
      p.setBrush(QColor(180, 180, 180));
      p.drawRect(3, 10, 18, 8);
      p.setBrush(Qt::white);
      p.drawRect(7, 15, 10, 6);
      break;
    case 24:
      p.setFont(small);
      p.drawText(QRectF(0, 0, 24, 24), Qt::AlignCenter, "2D\n3D");
      break;
    case 25:
      for (int k = 6; k <= 18; k += 6) {
        p.drawLine(k, 3, k, 21);
        p.drawLine(3, k, 21, k);
      }
      break;
    case 26:
      p.drawEllipse(QRectF(3, 7, 18, 10));
      p.setBrush(Qt::black);
      p.drawEllipse(QPointF(12, 12), 3, 3);
      break;
    case 27:
      for (int y : {6, 12, 18}) p.drawLine(3, y, 21, y);
      p.setPen(QPen(Qt::red, 2.5));
      p.drawLine(3, 12, 21, 12);
      break;
    case 28: {
      QPainterPath arc;
      arc.arcMoveTo(4, 4, 16, 16, 90);
      arc.arcTo(4, 4, 16, 16, 90, 270);
      p.drawPath(arc);
      DrawArrowHead(p, arc.currentPosition(), {12, 8});
      break;
    }
    case 29:
      DrawCloud(p, QColor(220, 60, 60));
      p.setPen(QPen(Qt::black, 1.5));
      p.drawLine(4, 21, 20, 21);
      DrawArrowHead(p, {21, 21}, {14, 21});
      break;
    case 30:
      DrawPin(p, QColor(40, 90, 220));
      p.setFont(small);
      p.drawText(QRectF(14, 12, 10, 12), Qt::AlignCenter, "?");
      break;
    case 31:
      p.setBrush(Qt::white);
      p.drawPolygon(QPolygonF({{6, 3}, {6, 19}, {10, 15}, {13, 21}, {15, 20}, {12, 14}, {17, 14}}));
      break;
    default:
      break;
  }
}

}  // namespace

QIcon PaletteIcon(int index, int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(size / 24.0, size / 24.0);
  p.setPen(QPen(Qt::black, 1.5));
  DrawPicture(p, index);
  p.end();
  return QIcon(pixmap);
}

ToolPalette::ToolPalette(QWidget* parent) : QToolBar("Tools", parent) {
  setObjectName("Tools");
  setIconSize(QSize(24, 24));
  setMovable(false);
  // Two columns of sixteen: a single column of 32 buttons does not fit a laptop screen.
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(1, 1, 1, 1);
  grid->setSpacing(1);
  group_ = new QButtonGroup(this);
  group_->setExclusive(true);
  for (int i = 0; i < kPaletteButtons; ++i) {
    auto* button = new QToolButton(panel);
    button->setObjectName(QString("Tools(%1)").arg(i));
    button->setIcon(PaletteIcon(i));
    button->setToolTip(PaletteToolTip(i));
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setIconSize(QSize(24, 24));
    group_->addButton(button, i);
    buttons_[i] = button;
    grid->addWidget(button, i / 2, i % 2);
  }
  addWidget(panel);
  connect(group_, &QButtonGroup::idClicked, this, &ToolPalette::ButtonClicked);
}

void ToolPalette::PressButton(int index) {
  if (index < 0 || index >= kPaletteButtons) return;
  buttons_[index]->setChecked(true);
}

int ToolPalette::PressedButton() const {
  return group_->checkedId();
}

}  // namespace galeris
