// Printing a dialog as it stands on the screen (the Prnter buttons of the data editors).
#pragma once

class QPrinter;
class QWidget;

namespace galeris {

// Asks for a printer and prints the form, scaled to fit the page.
void PrintForm(QWidget* form);
// The same onto a printer already set up (a PDF file in the tests).
void RenderFormToPrinter(QWidget* form, QPrinter& printer);

}  // namespace galeris
