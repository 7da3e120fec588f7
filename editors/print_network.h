// PrintNetwork: the current view on a printer of the system, or on a page of a PDF file, at
// the print scale with its title block. The rules of the page are the view's (view/print_layout).
#pragma once

#include <QStringList>

#include "core/workspace.h"
#include "view/print_layout.h"
#include "view/view_state.h"

class QPrinter;

namespace galeris {

// The printers the system offers, then "PDF file".
QStringList PrinterNames();

// Gives the printer the settings' paper, orientation and destination. False for an unknown
// paper or a PDF print without a file name.
bool SetUpPrinter(QPrinter& printer, const PrintSettings& settings);
// The printable part of the printer's page in millimetres.
PrintablePage PrintableOf(const QPrinter& printer);
// The same for the printer, paper and orientation of the settings, without printing; an empty
// page for an unknown paper or printer.
PrintablePage PrintableFor(const PrintSettings& settings);

// Prints one page per copy of the view and returns true; a failure shows its message through
// ws.ui and prints nothing (a PDF file is written whole or not at all). The scale used is left
// in settings.PrintScale. The window's draw list must be rebuilt afterwards by a redraw.
bool PrintNetwork(Workspace& ws, const ViewState& view, PrintSettings& settings);

}  // namespace galeris
