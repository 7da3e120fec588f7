// A number box of the editors: the "." key types the machine's decimal separator, and with
// `digitsOnly` only digits and the separator go in.
#pragma once

#include <QLineEdit>
#include <QString>

namespace galeris {

QLineEdit* NumberBox(QWidget* parent, const QString& objectName, bool digitsOnly = false);

}  // namespace galeris
