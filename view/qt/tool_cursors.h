// The mouse pointers of the view tools, drawn here on 32 by 32 pictures: black strokes with a
// white edge so that they show on the dark view and on light dialogs alike.
#pragma once

#include <QCursor>
#include <QPixmap>
#include <QPoint>
#include <string>
#include <vector>

namespace galeris {

// The names the tools ask for: ALPHA, CLOUD, COPY, CROSS, DELETE, EDIT, FAN, HAND, INFO,
// INSERT, MAGNIFY, MOVE, PASTE, REVERSE, ROTATE, TAG, TRACE.
std::vector<std::string> ToolCursorNames();

// The picture and the hot spot of a named pointer; a null picture for an unknown name.
QPixmap ToolCursorPicture(const std::string& name);
QPoint ToolCursorHotSpot(const std::string& name);

// The pointer of that name; an empty or unknown name gives the plain cross.
QCursor ToolCursor(const std::string& name);

}  // namespace galeris
