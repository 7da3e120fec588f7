// Recent files and the last folder in the user's settings.
#include "app/recent_files.h"

#include <QSettings>

#include "files/lifecycle.h"

namespace galeris {

void LoadRecentFiles(Workspace& ws) {
  if (ReadOldRecentList(ws)) return;
  QSettings settings("Galeris", "Galeris");
  settings.beginGroup("Files");
  for (int n = 1; n <= 9; ++n)
    ws.RecentFiles[n] = settings.value(QString("Name%1").arg(n)).toString().toStdString();
  settings.endGroup();
}

void StoreRecentFiles(const std::array<std::string, 10>& recent) {
  QSettings settings("Galeris", "Galeris");
  settings.beginGroup("Files");
  for (int n = 1; n <= 9; ++n)
    settings.setValue(QString("Name%1").arg(n), QString::fromStdString(recent[n]));
  settings.endGroup();
  settings.sync();
}

QString StoredDefaultDir() {
  QSettings settings("Galeris", "Galeris");
  return settings.value("Files/DefaultDir").toString();
}

void StoreDefaultDir(const QString& folder) {
  QSettings settings("Galeris", "Galeris");
  settings.setValue("Files/DefaultDir", folder);
  settings.sync();
}

QString ShortenedPath(const QString& path, int maxLength) {
  if (path.size() <= maxLength) return path;
  QString normal = path;
  normal.replace('\\', '/');
  const QChar separator = path.contains('\\') ? QChar('\\') : QChar('/');
  // The head: "C:/" or "/" plus the first folder.
  int headEnd = normal.indexOf('/', normal.startsWith('/') ? 1 : 0);
  if (headEnd < 0) return path.left(maxLength);
  if (normal.size() > 2 && normal[1] == ':' && headEnd == 2) headEnd = normal.indexOf('/', 3);
  if (headEnd < 0) return path.left(maxLength);
  const QString head = path.left(headEnd + 1);
  // The tail: whole trailing parts while they fit, always at least the file name.
  int tailStart = normal.lastIndexOf('/');
  while (true) {
    const int previous = normal.lastIndexOf('/', tailStart - 1);
    if (previous <= headEnd) break;
    if (head.size() + 2 + (normal.size() - previous) > maxLength) break;
    tailStart = previous;
  }
  if (tailStart <= headEnd) return path;
  return head + ".." + separator + path.mid(tailStart + 1);
}

QString RecentMenuText(int number, const std::string& path) {
  QString shown = ShortenedPath(QString::fromStdString(path));
  shown.replace("&", "&&");
  return QString("&%1 %2").arg(number).arg(shown);
}

}  // namespace galeris
