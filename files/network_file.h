// The network file (.sim, Master .smm, and the recovery file tempsim.sim): loading, merging
// behind the existing airways, saving, and the one-record reader and writer that the undo
// journal shares.
#pragma once

#include <string>

#include "core/workspace.h"
#include "files/text_format.h"

namespace galeris {

// Reads ws.net.FileName; replaces the network when ws.MergeBase is 1, else merges behind it.
// Returns false when the load was refused or abandoned.
bool LoadNetwork(Workspace& ws);
// Writes ws.net.FileName, or with tempMode 1 the recovery file in the temporary folder.
bool SaveNetwork(Workspace& ws, int tempMode = 0);

// One airway record, 39 fields.
void ReadAirwayRecord(Workspace& ws, const std::string& line, int position, float version);
std::string FormatAirwayRecord(const Network& net, int position);

std::string EscapeNote(const std::string& text);
std::string UnescapeNote(const std::string& text);

}  // namespace galeris
