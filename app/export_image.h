// Pictures of the network without a screen: the File menu's "Export Picture..." and the
// command line `galeris --export-image OUT.png NETWORK.sim [--view NAME] [--size WxH]
// [--data CODE]`.
#pragma once

#include <QSize>
#include <QString>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

// True when the command line asks for an image export.
bool IsExportImageCommand(int argc, char** argv);
// Runs the export and returns the process's exit code: 0 done, 1 bad arguments, 2 the network
// did not load, 3 the picture could not be written.
int RunExportImage(int argc, char** argv);

// Saves the view as a picture file of the given size; the format follows the file's extension.
bool ExportPicture(Workspace& ws, const ViewState& view, const QString& path, QSize size);

}  // namespace galeris
