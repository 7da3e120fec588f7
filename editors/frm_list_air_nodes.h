// frmListAirNodes: the node names at both ends of all airways, each once; a click finds an
// airway that meets the node.
#pragma once

#include "editors/frm_list_air_names.h"

namespace galeris {

class FrmListAirNodes : public NameListForm {
  Q_OBJECT
 public:
  explicit FrmListAirNodes(QWidget* parent = nullptr);
};

}  // namespace galeris
