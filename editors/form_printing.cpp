// Form printing: the widget's own picture, scaled to the printable page.
#include "editors/form_printing.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>
#include <algorithm>

namespace galeris {

void RenderFormToPrinter(QWidget* form, QPrinter& printer) {
  QPainter painter(&printer);
  const QRect page = painter.viewport();
  const double scale = std::min(double(page.width()) / std::max(form->width(), 1),
                                double(page.height()) / std::max(form->height(), 1));
  painter.scale(scale, scale);
  form->render(&painter);
}

void PrintForm(QWidget* form) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, form);
  if (dialog.exec() == QDialog::Accepted) RenderFormToPrinter(form, printer);
}

}  // namespace galeris
