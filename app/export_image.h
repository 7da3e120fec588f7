// Pictures of the network without a screen: the File menu's "Export Picture..." and the
// command line `galeris --export-image OUT.png NETWORK.sim [--view NAME] [--size WxH]
// [--data CODE]`.
#pragma once

#include <QGuiApplication>
#include <QSize>
#include <QString>
#include <memory>
#include <string>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

// True when the command line asks for an image export.
bool IsExportImageCommand(int argc, char** argv);
// Runs the export and returns the process's exit code: 0 done, 1 bad arguments, 2 the network
// did not load, 3 the picture could not be written.
int RunExportImage(int argc, char** argv);

// Shared by the exports without a window. A message "galeris: text" on stderr.
void Complain(const std::string& text);

// The application a windowless command needs for its fonts: none when one runs already, else
// one on the off-screen platform unless another is asked for.
std::unique_ptr<QGuiApplication> GuiForFonts(int& argc, char** argv);
// A view by its name as listed, by its name without the " 3. " of the permanent views, or by
// its slot number; 0 when none matches.
int FindViewByName(const Network& net, const std::string& wanted);
// Loads the network into ws (settings from the program folder of `program`) and sets up the
// view for a surface of `size` pixels: the view named, else the file's start-up view, else the
// whole network fitted. 0 when ready; 1 for an unknown view, 2 when the network did not load.
int LoadViewForExport(Workspace& ws, const char* program, const std::string& network,
                      const std::string& viewName, QSize size, ViewState& view);

// Saves the view as a picture file of the given size; the format follows the file's extension.
bool ExportPicture(Workspace& ws, const ViewState& view, const QString& path, QSize size);

}  // namespace galeris
