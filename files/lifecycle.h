// The engine side of the program's life: the start-up loads in their one valid order, New,
// Open, Merge, Save, Save As, the recovery file, auto-save and the questions at exit. The
// desktop program adds the file dialogs and refreshes its windows around these.
#pragma once

#include <string>

#include "core/workspace.h"

namespace galeris {

// Units and Conversion.dat, the old recent list, the level names, InitDefaults (Defaults.dat)
// and the fan database, in that order. The level list window, the first view and the undo
// journal's reset follow in the caller, then the command-line file and OfferRecovery.
void StartUp(Workspace& ws);

// True for a command-line file ending ".SIM" or ".SMM" in any case.
bool IsNetworkFileName(const std::string& path);

// Empties levels, undo, layers, views and the store; the title goes.
void ClearNetwork(Workspace& ws);
// New: asks "Current Data will be lost ?" when there is something; false when cancelled.
bool NewNetwork(Workspace& ws);
// What New leaves without asking: no network, no name, the fan database read afresh.
void CloseNetwork(Workspace& ws);
// Before Open or exit: "Network Data is not saved - Save it?" when changed. Returns false on
// Cancel; on Yes saves (a network without a name is left for the caller's Save As: then
// needsSaveAs is set and true is returned).
bool SaveChangesFirst(Workspace& ws, const std::string& question, bool& needsSaveAs);
// Loads a file as the network (Open, the recent list, the command line).
bool OpenNetwork(Workspace& ws, const std::string& path);
// Loads a file behind the existing airways.
bool MergeNetwork(Workspace& ws, const std::string& path);
// Save As: a ".smm" name is a Master file, confirmed first; false when refused or failed.
bool SaveNetworkAs(Workspace& ws, const std::string& path);
// The recovery file left by a crash: asks, and on Yes loads it without a file name.
bool OfferRecovery(Workspace& ws);
// One tick of the Autosave timer; every eleventh tick writes the recovery file.
void AutosaveTick(Workspace& ws, int& ticks);
// Exit: the save questions (network, defaults), then the recovery file is deleted. False
// keeps the program running. needsSaveAs as in SaveChangesFirst.
bool QueryUnload(Workspace& ws, bool& needsSaveAs);
// After a finished exit: store the recent list and delete the recovery file.
void FinishUnload(Workspace& ws);

// Recent files: a name moves to the head (an existing entry is taken out, slot 9 is lost).
void PushRecentFile(Workspace& ws, const std::string& path);
// A name taken out of the list, the later entries moving up; false when it was not there.
bool RemoveRecentFile(Workspace& ws, const std::string& path);
// Galeris.old in the program folder, when present, fills entries 1 to 4 and is deleted.
bool ReadOldRecentList(Workspace& ws);

}  // namespace galeris
