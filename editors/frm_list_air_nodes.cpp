// The node name list.
#include "editors/frm_list_air_nodes.h"

namespace galeris {

FrmListAirNodes::FrmListAirNodes(QWidget* parent)
    : NameListForm("frmListAirNodes", "Node Names", parent) {}

}  // namespace galeris
