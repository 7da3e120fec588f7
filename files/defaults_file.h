// The defaults list on disk: Defaults.dat in the program folder, and the block that opens
// every network file. Built-in values, the start-up load with its clamps, and saving.
#pragma once

#include <string>

#include "core/workspace.h"
#include "files/text_format.h"

namespace galeris {

// Every built-in preset and value, and the five initial views of the store.
void SetBuiltInDefaults(Workspace& ws);
// The five permanent views " 1. Default View" to " 5. Iso View", mirrored by AxisSignY.
void SetInitialViews(Network& net);
// Built-in values, then Defaults.dat, then the clamps.
void InitDefaults(Workspace& ws);
// Reads Defaults.dat from the program folder; a missing file is no error.
void LoadDefaults(Workspace& ws);
// Writes Defaults.dat and Conversion.dat.
void SaveDefaults(Workspace& ws);

// Line 1 of the block: "3.1<TAB>GALERIS3".
std::string DefaultsHeadLine();
// Lines 2 to 9 of the block (six preset lines, the values line, the end line), CR LF each.
std::string FormatDefaultsBlock(const Workspace& ws);
// Reads lines 2 to 9 from an open file of the given version; false when the lines run out.
// A network file passes the locale of its header, as for its other lines.
bool ReadDefaultsBlock(Workspace& ws, LineReader& in, float version,
                       const SplitLocale& locale = {});

// The presets of network files of version 2.0 and below: ten wall, ten resistance and seven
// shock lines of a name and a value. False when the lines run out or a value is unreadable.
bool ReadLegacyDefaultsA(Workspace& ws, LineReader& in, float version,
                         const SplitLocale& locale = {});
// The defaults of versions above 2.0 up to 2.7: eleven walls, fifty resistances, seven shocks,
// then the settings line in its old order (a zero or empty entry keeps the value in force),
// and one more line after it.
bool ReadLegacyDefaultsB(Workspace& ws, LineReader& in, float version,
                         const SplitLocale& locale = {});

}  // namespace galeris
