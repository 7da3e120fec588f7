// The help viewer: our own pages, compiled into the program, in a browser window.
#pragma once

#include <QWidget>

class QTextBrowser;

namespace galeris {

class FrmHelp : public QWidget {
  Q_OBJECT
 public:
  explicit FrmHelp(QWidget* parent = nullptr);
  // Opens a page of the help by its file name, e.g. "simulate.html".
  void ShowPage(const QString& page);
  QTextBrowser& Browser() { return *browser_; }

 private:
  QTextBrowser* browser_;
};

}  // namespace galeris
