// The help viewer.
#include "app/frm_help.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

// The pages are compiled into the program's library, whose resource table must be pulled in
// by name (outside any namespace).
static void LoadHelpPages() {
  Q_INIT_RESOURCE(help);
}

namespace galeris {

FrmHelp::FrmHelp(QWidget* parent) : QWidget(parent, Qt::Window) {
  LoadHelpPages();
  setObjectName("frmHelp");
  setWindowTitle("Galeris Help");
  auto* layout = new QVBoxLayout(this);
  auto* bar = new QHBoxLayout;
  auto* contents = new QPushButton("Contents", this);
  auto* back = new QPushButton("Back", this);
  auto* forward = new QPushButton("Forward", this);
  bar->addWidget(contents);
  bar->addWidget(back);
  bar->addWidget(forward);
  bar->addStretch();
  layout->addLayout(bar);
  browser_ = new QTextBrowser(this);
  browser_->setObjectName("HelpText");
  browser_->setSearchPaths({":/help"});
  browser_->setOpenExternalLinks(true);
  layout->addWidget(browser_);
  resize(720, 620);
  connect(contents, &QPushButton::clicked, this, [this] { ShowPage("index.html"); });
  connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QPushButton::setEnabled);
  back->setEnabled(false);
  forward->setEnabled(false);
}

void FrmHelp::ShowPage(const QString& page) {
  browser_->setSource(QUrl("qrc:/help/" + page));
  show();
  raise();
  activateWindow();
}

}  // namespace galeris
