// The text exchange file (File, Export Data): a flat tab-joined table of the airways, one line
// of heads and one line per airway, in display units. The import side is in import_file.h.
#pragma once

#include <string>

#include "core/workspace.h"

namespace galeris {

// The heads line, without its line end.
inline constexpr const char* kTextExportHeads =
    "X1\tY1\tZ1\tX2\tY2\tZ2\tQUANTITY\tRESISTANCE\tFAN TYPE\tNO FANS\tBRANCH NAME\tENTRY "
    "NODE\tEXIT NODE\tHEIGHT\tWIDTH/DIAM\tAirway No";

inline constexpr const char* kMsgExportFailed = "Error Export File - Check Name";

// The whole export text: the heads, then positions 1 to BranchCount, each line CR LF.
std::string FormatTextExport(const Workspace& ws);
// Writes it whole (beside the target first); false when it could not be written.
bool ExportText(const Workspace& ws, const std::string& path);

}  // namespace galeris
