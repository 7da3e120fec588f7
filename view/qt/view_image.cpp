// Off-screen rendering of a view through the QPainter canvas.
#include "view/qt/view_image.h"

#include "view/drawing.h"
#include "view/qt/qpainter_canvas.h"

namespace galeris {

QImage RenderViewImage(Workspace& ws, const ViewState& view, QSize size) {
  ViewState copy = view;
  copy.WindowOpen = true;
  copy.Minimised = false;
  copy.PixelWidth = size.width();
  copy.PixelHeight = size.height();
  copy.AspectRatio = static_cast<float>(size.height()) / static_cast<float>(size.width());
  SetScale(copy, copy.ScaleWidth, copy.ScaleWidth * copy.AspectRatio, copy.PanX, copy.PanY);
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  QPainterCanvas canvas(painter, size);
  RedrawNetwork(ws, copy, canvas);
  return image;
}

}  // namespace galeris
