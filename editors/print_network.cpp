// Printing the view through QPrinter: the page set up from the print settings, the canvas over
// the printable area, and a PDF file written beside its final name and renamed when complete.
#include "editors/print_network.h"

#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <cstdio>
#include <exception>

#include "view/qt/qpainter_canvas.h"

namespace galeris {
namespace {

constexpr double kScreenDotsPerInch = 96;

QPageSize PageSizeOf(const PaperSize& paper) {
  const QString name = paper.Name;
  if (name == "A4") return QPageSize(QPageSize::A4);
  if (name == "A3") return QPageSize(QPageSize::A3);
  if (name == "A2") return QPageSize(QPageSize::A2);
  if (name == "A1") return QPageSize(QPageSize::A1);
  if (name == "A0") return QPageSize(QPageSize::A0);
  if (name == "Letter") return QPageSize(QPageSize::Letter);
  return QPageSize(QSizeF(paper.WidthMm, paper.HeightMm), QPageSize::Millimeter, name);
}

bool IsPdf(const PrintSettings& settings) {
  return settings.Printer == kPdfPrinter;
}

// Draws the copies; false when the painter could not start on the printer.
bool PaintCopies(Workspace& ws, const ViewState& view, PrintSettings& settings, QPrinter& printer) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const PrintablePage page = PrintableOf(printer);
  const ScaleEntry chosen = ResolvePrintScale(view, settings, page);
  if (!chosen.Message.empty()) ws.ui.Inform(chosen.Message);
  const std::int32_t scale = chosen.Scale;
  const QRect area = painter.viewport();
  for (int copy = 0; copy < std::max(1, settings.Copies); ++copy) {
    if (copy > 0) printer.newPage();
    QPainterCanvas canvas(painter, area.size());
    canvas.SetPenScale(static_cast<float>(printer.resolution() / kScreenDotsPerInch));
    canvas.SetMonochrome(!settings.Colour);
    DrawPrintPage(ws, view, settings, page, scale, canvas);
  }
  return painter.end();
}

}  // namespace

QStringList PrinterNames() {
  QStringList names = QPrinterInfo::availablePrinterNames();
  names.append(kPdfPrinter);
  return names;
}

bool SetUpPrinter(QPrinter& printer, const PrintSettings& settings) {
  const PaperSize* paper = FindPaper(settings.Paper);
  if (!paper) return false;
  if (IsPdf(settings)) {
    if (settings.OutputFile.empty()) return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(settings.OutputFile) + ".part");
  } else {
    printer.setOutputFormat(QPrinter::NativeFormat);
    printer.setPrinterName(QString::fromStdString(settings.Printer));
  }
  printer.setPageSize(PageSizeOf(*paper));
  printer.setPageOrientation(settings.PrinterOrientation == OrientationOf::Landscape
                                 ? QPageLayout::Landscape
                                 : QPageLayout::Portrait);
  printer.setDocName(QString::fromStdString("GALERIS " + settings.Title));
  return printer.isValid();
}

PrintablePage PrintableOf(const QPrinter& printer) {
  const QRectF rect = printer.pageLayout().paintRect(QPageLayout::Millimeter);
  return {rect.width(), rect.height()};
}

PrintablePage PrintableFor(const PrintSettings& settings) {
  PrintSettings measured = settings;
  if (measured.OutputFile.empty()) measured.OutputFile = "measure.pdf";  // never opened
  QPrinter printer(QPrinter::HighResolution);
  if (!SetUpPrinter(printer, measured)) return {};
  return PrintableOf(printer);
}

bool PrintNetwork(Workspace& ws, const ViewState& view, PrintSettings& settings) {
  QPrinter printer(QPrinter::HighResolution);
  if (!SetUpPrinter(printer, settings)) {
    ws.ui.Inform(kMsgCheckPrinter);
    return false;
  }
  const QString part = printer.outputFileName();
  bool painted = false;
  try {
    painted = PaintCopies(ws, view, settings, printer);
  } catch (const std::exception&) {
    printer.abort();
    if (!part.isEmpty()) QFile::remove(part);
    ws.ui.Inform(kMsgPrintingError, kTitlePrintingError);
    return false;
  }
  if (!painted) {
    if (!part.isEmpty()) QFile::remove(part);
    ws.ui.Inform(kMsgCheckPrinter);
    return false;
  }
  if (part.isEmpty()) return true;
  const QString final = QString::fromStdString(settings.OutputFile);
  // One rename replaces an older file of the name, so there is no moment without either.
  if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(final).constData()) != 0) {
    QFile::remove(part);
    ws.ui.Inform(kMsgCheckPrinter);
    return false;
  }
  return true;
}

}  // namespace galeris
