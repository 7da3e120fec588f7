// The file dialogs of the program: filters written as "Description|pattern|..." pairs turned
// into Qt filters, the request a command makes, and the check of a name to save under.
#pragma once

#include <QString>
#include <functional>
#include <string>

class QWidget;

namespace galeris {

inline constexpr const char* kOpenFilter =
    "Galeris Data (*.sim)|*.sim|Master Files (*.smm)|*.smm|All Files (*.*)|*.*";
inline constexpr const char* kSaveFilter =
    "Data Files (*.sim)|*.sim|Master Files (*.smm)|*.smm|All files (*.*)|*.*";

struct FileDialogRequest {
  bool save = false;
  QString title;
  QString filter;  // Qt form: "Desc (*.x);;Desc (*.y)"
  QString startFolder;
  QString defaultSuffix;  // added to a saved name that has no extension
};

// Returns the chosen path, empty when cancelled. Tests replace the dialog with a script.
using FileChooser = std::function<QString(const FileDialogRequest&)>;

// "Desc|*.x|Desc2|*.y" becomes "Desc (*.x);;Desc2 (*.y)"; a description that already names
// its pattern in brackets is kept as it is.
QString QtFilter(const std::string& pairs);
// The platform's file dialog.
QString ChooseFileWithDialog(QWidget* parent, const FileDialogRequest& request);
// A name to save under adds the default extension when it has none.
QString WithDefaultSuffix(const QString& path, const QString& suffix);
// True when a name can be written: a file name part without the characters a file system
// refuses, in a folder that exists.
bool IsUsableSaveName(const QString& path);

}  // namespace galeris
