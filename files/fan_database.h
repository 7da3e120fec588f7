// The fan database: fansdata.dat in the program folder, and the fan list inside every network
// file, which replaces the fan slots on a load and joins them on a merge.
#pragma once

#include <string>

#include "core/workspace.h"
#include "files/network_file.h"

namespace galeris {

inline constexpr const char* kFanDatabaseName = "fansdata.dat";
inline constexpr const char* kFanListEnd = "**End of Fan Database**";

// Reads fansdata.dat; a missing file leaves the slots empty without a message.
void LoadFanDatabase(Workspace& ws);
// Writes fansdata.dat with the serial raised by one; false when it could not be written (the
// old file then stays as it was).
bool SaveFanDatabase(Workspace& ws);

// A slot is in use when the pressures of its first point are not both 0.
bool FanSlotInUse(const Network& net, int slot);
// Empties one slot: name, diameter and every curve point.
void ClearFanSlot(Network& net, int slot);

// The fan list of a network file, head to end line, CR LF each.
std::string FormatNetworkFanList(const Network& net);

// Reads `count` fans of a network file's list. On a load the slots are replaced; on a merge
// (ws.MergeBase above 1) the user chooses between the open database and adding the file's fans
// behind it. totalPressures is the answer to the "Total Pressures" question of older files.
// Returns the offset to add to the merged airways' fan numbers.
int ReadFanList(Workspace& ws, NetworkReader& reader, int count, bool totalPressures);

inline constexpr const char* kMsgFanListTooBig =
    "Fan database default size is smaller than the file size !";
inline constexpr const char* kMsgMergeFans =
    "Do you want the new data to use the original fan database (YES) or add the merged fan "
    "database to the existing fan list (NO)";

}  // namespace galeris
