// Image export: loads a network with no window, fits or applies a view and renders it through
// the same drawing passes as the screen.
#include "app/export_image.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QSaveFile>
#include <QSettings>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "core/headless_ui.h"
#include "core/program_paths.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "view/drawing.h"
#include "view/qt/view_image.h"

namespace galeris {
namespace {

constexpr const char* kOption = "--export-image";
constexpr QSize kDefaultSize(1280, 960);

struct ExportRequest {
  std::string output;
  std::string network;
  std::string viewName;
  QSize size = kDefaultSize;
  int dataType = 12;
};

std::optional<QSize> ParseSize(const std::string& text) {
  const std::size_t x = text.find_first_of("xX");
  if (x == std::string::npos) return std::nullopt;
  try {
    const int w = std::stoi(text.substr(0, x));
    const int h = std::stoi(text.substr(x + 1));
    if (w < 16 || h < 16 || w > 16384 || h > 16384) return std::nullopt;
    return QSize(w, h);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::optional<ExportRequest> ParseRequest(int argc, char** argv) {
  ExportRequest request;
  int k = 1;
  while (k < argc && std::strcmp(argv[k], kOption) != 0) ++k;
  if (k + 2 >= argc) {
    Complain(
        "usage: galeris --export-image OUT.png NETWORK.sim [--view NAME] [--size WxH] "
        "[--data CODE]");
    return std::nullopt;
  }
  request.output = argv[k + 1];
  request.network = argv[k + 2];
  for (k += 3; k < argc; k += 2) {
    const std::string option = argv[k];
    if (k + 1 >= argc) {
      Complain("missing value after " + option);
      return std::nullopt;
    }
    const std::string value = argv[k + 1];
    if (option == "--view") {
      request.viewName = value;
    } else if (option == "--size") {
      const std::optional<QSize> size = ParseSize(value);
      if (!size) {
        Complain("the size must read WIDTHxHEIGHT, each 16 to 16384: " + value);
        return std::nullopt;
      }
      request.size = *size;
    } else if (option == "--data") {
      char* end = nullptr;
      const long code = std::strtol(value.c_str(), &end, 10);
      if (*end != '\0' || code < 12 || code > 56) {
        Complain("the data code must be a group times 10 plus an item, 12 to 56: " + value);
        return std::nullopt;
      }
      request.dataType = static_cast<int>(code);
    } else {
      Complain("unknown option " + option);
      return std::nullopt;
    }
  }
  return request;
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

void Complain(const std::string& text) {
  std::fprintf(stderr, "galeris: %s\n", text.c_str());
}

int FindViewByName(const Network& net, const std::string& wanted) {
  const std::string key = Lower(wanted);
  for (int slot = 1; slot <= kLastUserView; ++slot) {
    const std::string name = Lower(net.ViewName[slot]);
    if (name.empty()) continue;
    const std::size_t dot = name.find(". ");
    const std::string bare =
        slot <= kPermanentViews && dot != std::string::npos ? name.substr(dot + 2) : name;
    if (name == key || bare == key || std::to_string(slot) == key) return slot;
  }
  return 0;
}

bool IsExportImageCommand(int argc, char** argv) {
  for (int k = 1; k < argc; ++k) {
    if (std::strcmp(argv[k], kOption) == 0) return true;
  }
  return false;
}

bool ExportPicture(Workspace& ws, const ViewState& view, const QString& path, QSize size) {
  if (size.width() < 1 || size.height() < 1) size = kDefaultSize;
  const QImage image = RenderViewImage(ws, view, size);
  // Through a partial file, so a failed export leaves an older picture of that name whole.
  QSaveFile file(path);
  const QByteArray format = QFileInfo(path).suffix().toLatin1();
  if (file.open(QIODevice::WriteOnly) &&
      image.save(&file, format.isEmpty() ? nullptr : format.constData()) && file.commit())
    return true;
  ws.ui.Inform("Could not write the picture " + path.toStdString());
  return false;
}

int LoadViewForExport(Workspace& ws, const char* program, const std::string& network,
                      const std::string& viewName, QSize size, ViewState& view) {
  ws.paths = FindProgramPaths(program ? program : "");
  StartUp(ws);
  ws.net.FileName = network;
  ws.MergeBase = 1;
  if (!LoadNetwork(ws)) {
    Complain("could not load " + network);
    return 2;
  }
  if (ws.net.ViewName[1].empty()) MakePermanentViews(ws.net);

  view = MakeViewState(ws);
  view.PixelWidth = size.width();
  view.PixelHeight = size.height();
  view.AspectRatio = static_cast<float>(view.PixelHeight) / static_cast<float>(view.PixelWidth);
  // The picture is drawn as the user's windows draw it.
  view.Declutter = QSettings("Galeris", "Galeris").value("View/Declutter", true).toBool();
  BuildVisibleList(ws, view);

  bool fit = true;
  if (!viewName.empty()) {
    const int slot = FindViewByName(ws.net, viewName);
    if (slot == 0) {
      Complain("Error - could not load view: " + viewName);
      return 1;
    }
    LoadViewSlot(ws, view, slot);
    fit = slot <= kPermanentViews || ws.net.ViewValue[slot][5] == 0;
  } else {
    fit = !LoadStartupView(ws, view);
  }
  ProjectNetwork(ws, view);
  if (fit) FitNetwork(ws, view);
  return 0;
}

std::unique_ptr<QGuiApplication> GuiForFonts(int& argc, char** argv) {
  if (QCoreApplication::instance() != nullptr) return nullptr;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(argc, argv);
}

int RunExportImage(int argc, char** argv) {
  const std::optional<ExportRequest> request = ParseRequest(argc, argv);
  if (!request) return 1;

  const std::unique_ptr<QGuiApplication> app = GuiForFonts(argc, argv);

  HeadlessUi ui(HeadlessUi::Policy::AlwaysNo);
  ui.OnMessage([](const UiRecord& r) { Complain(r.title + ": " + r.text); });
  Workspace ws(ui);
  ViewState view;
  if (const int failed = LoadViewForExport(ws, argc > 0 ? argv[0] : "", request->network,
                                           request->viewName, request->size, view))
    return failed;
  view.DataTypeCode = static_cast<std::int16_t>(request->dataType);
  if (!ExportPicture(ws, view, QString::fromStdString(request->output), request->size)) return 3;
  return 0;
}

}  // namespace galeris
