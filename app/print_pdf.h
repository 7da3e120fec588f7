// The printed page without a window: `galeris --print-pdf OUT.pdf NETWORK.sim [--view NAME]
// [--paper A4|A3|A2|A1|A0|Letter] [--landscape] [--scale N] [--mono]`.
#pragma once

namespace galeris {

// True when the command line asks for a printed page.
bool IsPrintPdfCommand(int argc, char** argv);
// Prints the page and returns the process's exit code: 0 done, 1 bad arguments (nothing
// written), 2 the network did not load, 3 the page could not be written.
int RunPrintPdf(int argc, char** argv);

}  // namespace galeris
