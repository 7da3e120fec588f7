// frmTitle: start-up window and command line.
#include "app/frm_title.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "core/program_version.h"
#include "files/lifecycle.h"

namespace galeris {

std::string CommandFileFrom(const QStringList& arguments) {
  QString line = arguments.mid(1).join(' ').trimmed();
  if (line.size() >= 2 && line.startsWith('"') && line.endsWith('"'))
    line = line.mid(1, line.size() - 2);
  // The recent list keeps this name, so a relative one is made whole against the folder the
  // program was started from.
  const std::string path = line.toStdString();
  if (!IsNetworkFileName(path)) return {};
  return QFileInfo(line).isRelative() ? QFileInfo(line).absoluteFilePath().toStdString() : path;
}

std::string CommandLineAnswer(const QStringList& arguments) {
  const QStringList options = arguments.mid(1);
  if (options.contains("--help") || options.contains("-h"))
    return "galeris: the Galeris mine ventilation simulator, desktop program.\n\n"
           "usage: galeris [NETWORK.sim | NETWORK.smm]\n"
           "       galeris --export-image OUT.png NETWORK.sim [--view NAME] [--size WxH] "
           "[--data CODE]\n"
           "       galeris --print-pdf OUT.pdf NETWORK.sim [--view NAME] "
           "[--paper A4|A3|A2|A1|A0|Letter] [--landscape] [--scale N] [--mono]\n\n"
           "options:\n"
           "  --help            this text\n"
           "  --version         the program's version\n\n"
           "The program folder (Defaults.dat, Conversion.dat, fansdata.dat) is GALERIS_HOME "
           "when set, else the folder of this program. galeris-sim runs the simulator without "
           "a window.\n";
  if (options.contains("--version")) return std::string("galeris ") + kProgramVersion + "\n";
  return {};
}

FrmTitle::FrmTitle(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName("frmTitle");
  setWindowTitle("Galeris");
  resize(460, 220);
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    QRect frame = frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    move(frame.topLeft());
  }
}

void FrmTitle::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, height());
  sky.setColorAt(0, QColor(40, 70, 110));
  sky.setColorAt(1, QColor(20, 30, 45));
  p.fillRect(rect(), sky);
  // A shaft and two levels with airflow arrows: the network the program is about.
  p.setPen(QPen(QColor(120, 200, 255), 3));
  p.drawLine(60, 40, 60, 180);
  p.drawLine(60, 110, 200, 110);
  p.drawLine(60, 180, 200, 180);
  p.drawLine(200, 110, 200, 180);
  p.setPen(Qt::white);
  p.setFont(QFont("Sans", 30, QFont::Bold));
  p.drawText(QRect(220, 40, 230, 60), Qt::AlignLeft | Qt::AlignVCenter, "Galeris");
  p.setFont(QFont("Sans", 10));
  p.drawText(QRect(220, 100, 230, 60), Qt::AlignLeft | Qt::TextWordWrap,
             "Mine ventilation network simulator");
  p.drawText(QRect(220, 160, 230, 30), Qt::AlignLeft, "Loading...");
}

}  // namespace galeris
