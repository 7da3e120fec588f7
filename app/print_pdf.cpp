// The command line's printed page: the network loaded with no window, its view fitted to the
// page, and PrintNetwork on a "PDF file" printer.
#include "app/print_pdf.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "app/data_types.h"
#include "app/export_image.h"
#include "core/headless_ui.h"
#include "editors/print_network.h"
#include "view/print_layout.h"

namespace galeris {
namespace {

constexpr const char* kOption = "--print-pdf";
constexpr double kPixelsPerMm = 96 / 25.4;

struct PrintRequest {
  std::string network, viewName, scaleText;
  PrintSettings settings;
};

std::optional<PrintRequest> ParseRequest(int argc, char** argv) {
  PrintRequest request;
  request.settings.PrinterOrientation = OrientationOf::Portrait;
  int k = 1;
  while (k < argc && std::strcmp(argv[k], kOption) != 0) ++k;
  if (k + 2 >= argc) {
    Complain(
        "usage: galeris --print-pdf OUT.pdf NETWORK.sim [--view NAME] "
        "[--paper A4|A3|A2|A1|A0|Letter] [--landscape] [--scale N] [--mono]");
    return std::nullopt;
  }
  request.settings.OutputFile = argv[k + 1];
  request.network = argv[k + 2];
  for (k += 3; k < argc; ++k) {
    const std::string option = argv[k];
    if (option == "--landscape") {
      request.settings.PrinterOrientation = OrientationOf::Landscape;
      continue;
    }
    if (option == "--mono") {
      request.settings.Colour = false;
      continue;
    }
    if (option != "--view" && option != "--paper" && option != "--scale") {
      Complain("unknown option " + option);
      return std::nullopt;
    }
    if (k + 1 >= argc) {
      Complain("missing value after " + option);
      return std::nullopt;
    }
    const std::string value = argv[++k];
    if (option == "--view") {
      request.viewName = value;
    } else if (option == "--paper") {
      if (!FindPaper(value)) {
        Complain("unknown paper " + value + ": A4, A3, A2, A1, A0 or Letter");
        return std::nullopt;
      }
      request.settings.Paper = FindPaper(value)->Name;
    } else {
      request.scaleText = value;
    }
  }
  return request;
}

std::string DataNameOf(int code) {
  const int group = code / 10, item = code % 10;
  const QStringList items = DataItemNames(group);
  return (DataGroupNames().value(group - 1) + " " + items.value(item - 2)).toStdString();
}

}  // namespace

bool IsPrintPdfCommand(int argc, char** argv) {
  for (int k = 1; k < argc; ++k)
    if (std::strcmp(argv[k], kOption) == 0) return true;
  return false;
}

int RunPrintPdf(int argc, char** argv) {
  std::optional<PrintRequest> request = ParseRequest(argc, argv);
  if (!request) return 1;
  const std::unique_ptr<QGuiApplication> app = GuiForFonts(argc, argv);

  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  ui.OnMessage([](const UiRecord& r) { Complain(r.title + ": " + r.text); });
  Workspace ws(ui);
  PrintSettings& settings = request->settings;
  // The view is fitted to a window of the shape of the page above its title block, so that
  // the mine fills what the page has for it.
  const PrintablePage page = PrintableFor(settings);
  const PrintablePage area = DrawingArea(page);
  const QSize size(std::max(16, static_cast<int>(area.WidthMm * kPixelsPerMm)),
                   std::max(16, static_cast<int>(area.HeightMm * kPixelsPerMm)));
  ViewState view;
  if (const int failed = LoadViewForExport(ws, argc > 0 ? argv[0] : "", request->network,
                                           request->viewName, size, view))
    return failed;
  settings.Title = ws.net.NetworkTitle;
  settings.DataName = DataNameOf(view.DataTypeCode);
  if (!request->scaleText.empty()) {
    const ScaleEntry entry = CheckPrintScale(request->scaleText, SmallestPrintScale(view, page));
    if (!entry.Message.empty()) {
      Complain(entry.Message +
               " (the smallest scale for this page is 1:" + std::to_string(entry.Scale) + ")");
      return 1;
    }
    settings.PrintScale = entry.Scale;
    settings.PrintScaleSet = true;
  }
  return PrintNetwork(ws, view, settings) ? 0 : 3;
}

}  // namespace galeris
