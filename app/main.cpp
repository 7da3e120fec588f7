// galeris: the desktop program.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QMainWindow frame;
  frame.setWindowTitle("Galeris");
  frame.resize(1024, 768);
  frame.show();
  return app.exec();
}
