// A view rendered off screen into an image: the picture export, the command line's
// --export-image and the view's reference-image tests share it.
#pragma once

#include <QImage>
#include <QSize>

#include "core/workspace.h"
#include "view/view_state.h"

namespace galeris {

// Draws the network as the view state shows it, at the pixel size given; the view state is
// copied and resized, so the window it came from is left as it was.
QImage RenderViewImage(Workspace& ws, const ViewState& view, QSize size);

}  // namespace galeris
