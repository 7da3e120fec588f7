// galeris: the desktop program. The title window takes the command line, the frame loads, and
// the program waits for the user.
#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "app/export_image.h"
#include "app/frm_title.h"
#include "app/main_form.h"
#include "app/print_pdf.h"
#include "app/qt_ui.h"
#include "core/program_paths.h"
#include "core/workspace.h"

namespace {

// "--screenshot FILE" (not shown to users): saves a picture of the screen a few seconds after
// start and ends the program; it is how the program's look is checked without a desktop.
QString TakeScreenshotOption(QStringList& arguments) {
  const int at = arguments.indexOf("--screenshot");
  if (at < 0 || at + 1 >= arguments.size()) return {};
  const QString file = arguments[at + 1];
  arguments.remove(at, 2);
  return file;
}

void SaveScreenshot(galeris::MainForm& form, const QString& file) {
  QScreen* screen = form.screen();
  QPixmap picture = screen ? screen->grabWindow(0) : QPixmap();
  if (picture.isNull() || QGuiApplication::platformName() == "offscreen") picture = form.grab();
  picture.save(file);
}

}  // namespace

int main(int argc, char** argv) {
  // --help and --version answer on the terminal and open no window.
  QStringList commandLine;
  for (int k = 0; k < argc; ++k) commandLine << QString::fromLocal8Bit(argv[k]);
  if (const std::string answer = galeris::CommandLineAnswer(commandLine); !answer.empty()) {
    std::fputs(answer.c_str(), stdout);
    return 0;
  }
  // The image export needs no screen and makes its own application object.
  if (galeris::IsExportImageCommand(argc, argv)) return galeris::RunExportImage(argc, argv);
  if (galeris::IsPrintPdfCommand(argc, argv)) return galeris::RunPrintPdf(argc, argv);

  QApplication app(argc, argv);
  QApplication::setOrganizationName("Galeris");
  QApplication::setApplicationName("Galeris");
  QStringList arguments = QApplication::arguments();
  const QString screenshot = TakeScreenshotOption(arguments);

  galeris::FrmTitle title;
  title.show();
  QApplication::processEvents();
  const std::string commandFile = galeris::CommandFileFrom(arguments);

  galeris::QtUi ui;
  galeris::Workspace ws(ui);
  ws.paths = galeris::FindProgramPaths(QApplication::applicationFilePath().toStdString());
  galeris::MainForm form(ws);
  ui.SetParentWindow(&form);
  ui.SetSimRun(&ws.sim);
  ui.OnCancel([&form] { form.RedrawViews(); });
  if (const QScreen* screen = form.screen()) form.setGeometry(screen->availableGeometry());
  form.showMaximized();
  title.raise();
  QApplication::processEvents();
  // Set before the load, so that a box the load leaves open is in the picture too.
  if (!screenshot.isEmpty()) {
    QTimer::singleShot(4000, &form, [&form, screenshot] {
      SaveScreenshot(form, screenshot);
      std::exit(0);
    });
  }
  form.Load(commandFile);
  title.close();
  return app.exec();
}
