// Remotes.dat in the program folder: the station tables and the real-time settings, one line
// per station of 39 tab-joined fields, the settings repeated on every line.
#pragma once

#include <string>

#include "core/workspace.h"

namespace galeris {

inline constexpr const char* kRemotesFileName = "Remotes.dat";
inline constexpr int kRemotesFields = 39;

// The whole file as it is written: 50 lines, CR LF each.
std::string FormatRemotes(const RemoteStations& st);
// One line into station s; the settings of the line stand over those of earlier lines.
void ReadRemotesLine(RemoteStations& st, int station, const std::string& line);
// Reads Remotes.dat from the program folder; a missing file leaves the tables as they are.
void LoadRemotes(Workspace& ws);
// Writes Remotes.dat whole; false when it could not be written.
bool SaveRemotes(const Workspace& ws);

}  // namespace galeris
