// frmListAirNames: the airway names in use, each once; a click on a name finds its airway on
// the view. FrmListAirNodes does the same for node names.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QListWidget;

namespace galeris {

// The list form both name lists share: List1 and the search text a click leaves.
class NameListForm : public QDialog {
  Q_OBJECT
 public:
  NameListForm(const QString& objectName, const QString& title, QWidget* parent);
  void SetNames(const std::vector<std::string>& names);
  QListWidget& List() const { return *list_; }

 signals:
  // The picked name upper-cased: the search text of the find.
  void NamePicked(const QString& searchText);

 private:
  QListWidget* list_;
};

class FrmListAirNames : public NameListForm {
  Q_OBJECT
 public:
  explicit FrmListAirNames(QWidget* parent = nullptr);
};

}  // namespace galeris
