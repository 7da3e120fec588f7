// File dialogs and their filters.
#include "app/file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

namespace galeris {

QString QtFilter(const std::string& pairs) {
  const QStringList parts = QString::fromStdString(pairs).split('|');
  QStringList filters;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    const QString description = parts[i];
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ');
    if (description.contains("(" + patterns + ")"))
      filters << description;
    else
      filters << description + " (" + patterns + ")";
  }
  return filters.join(";;");
}

QString ChooseFileWithDialog(QWidget* parent, const FileDialogRequest& request) {
  QFileDialog dialog(parent, request.title, request.startFolder, request.filter);
  dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!request.defaultSuffix.isEmpty()) dialog.setDefaultSuffix(request.defaultSuffix);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().front();
}

QString WithDefaultSuffix(const QString& path, const QString& suffix) {
  if (path.isEmpty() || suffix.isEmpty()) return path;
  const QFileInfo info(path);
  if (!info.fileName().isEmpty() && info.suffix().isEmpty() && !path.endsWith('.'))
    return path + "." + suffix;
  return path;
}

bool IsUsableSaveName(const QString& path) {
  const QFileInfo info(path);
  const QString name = info.fileName().trimmed();
  if (name.isEmpty() || name == "." || name == "..") return false;
  for (const QChar c : name)
    if (c < QChar(' ') || QString("<>:\"|?*/\\").contains(c)) return false;
  if (info.isDir()) return false;
  return info.absoluteDir().exists();
}

}  // namespace galeris
