// The real-time output file: the whole network, one airway a line under a title line of 27
// columns, rewritten at every tick so that an outside program can follow the model.
#pragma once

#include <string>

#include "core/workspace.h"

namespace galeris {

inline constexpr const char* kMsgOutputWrite = "Error writing realtime values";
inline constexpr int kOutputColumns = 27;

// The file name as the dialog applies it: ".txt" is added to a name without a dot.
std::string RealOutFileName(const std::string& typed);
// The whole file: the title line, then airways 1..BranchCount, CR LF each.
std::string FormatRealtimeOutput(const Network& net);
// One tick: writes OutputFile whole (beside it first, then renamed into place). A failure
// says "Error writing realtime values" once, until a write succeeds again; output keeps
// running, so the next tick tries again.
bool WriteRealtimeOutput(Workspace& ws);

}  // namespace galeris
