// The recent-file list and the last folder, kept in the per-user settings (organization and
// application "Galeris", group "Files"), and the menu texts of the list.
#pragma once

#include <QString>
#include <array>
#include <string>

#include "core/workspace.h"

namespace galeris {

// Galeris.old when present (it is then deleted), otherwise "Name1" to "Name9".
void LoadRecentFiles(Workspace& ws);
// Each of the nine entries under "Name" and its number.
void StoreRecentFiles(const std::array<std::string, 10>& recent);

QString StoredDefaultDir();
void StoreDefaultDir(const QString& folder);

// A long path shortened with ".." in the middle: the drive or first folder, "..", and as
// many trailing folders as fit.
QString ShortenedPath(const QString& path, int maxLength = 40);
// The caption of entry n of the recent menu: its number as the accelerator, the shortened
// path, and every "&" doubled so that it shows as text.
QString RecentMenuText(int number, const std::string& path);

}  // namespace galeris
