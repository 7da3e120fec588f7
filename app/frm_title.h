// frmTitle: the title window shown while the program starts, and the network file named on
// the command line.
#pragma once

#include <QStringList>
#include <QWidget>
#include <string>

namespace galeris {

// The command line after the program name, joined and without surrounding quotes, when it
// names a network file (".SIM" or ".SMM" in any case); otherwise empty.
std::string CommandFileFrom(const QStringList& arguments);

// What "--help" or "--version" anywhere on the command line asks the program to print before
// it ends without opening a window; empty for any other command line.
std::string CommandLineAnswer(const QStringList& arguments);

class FrmTitle : public QWidget {
  Q_OBJECT
 public:
  explicit FrmTitle(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace galeris
