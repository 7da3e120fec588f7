// Printing the current view on paper: the paper sizes, the scale rules, where the page lies in
// the window's world, the colours on white paper, the title block and the legend, and the page
// itself painted through the canvas with the passes of the screen drawing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/workspace.h"
#include "view/canvas.h"
#include "view/view_state.h"

namespace galeris {

// The printer choice that writes the page to a PDF file, always offered.
inline constexpr const char* kPdfPrinter = "PDF file";

struct PaperSize {
  const char* Name;
  double WidthMm, HeightMm;  // upright
};
// A4, A3, A2, A1, A0, Letter.
const std::vector<PaperSize>& PaperSizes();
// By name, in any case; null for an unknown one.
const PaperSize* FindPaper(std::string_view name);

// PrinterOrientation: the printer receives it plus 1.
namespace OrientationOf {
inline constexpr std::int16_t Portrait = 0, Landscape = 1;
}

// The choices of the "PRINT NETWORK" form, kept from one print to the next.
struct PrintSettings {
  std::string Title;  // TxtTitle
  std::string Printer = kPdfPrinter;
  std::string OutputFile;  // where a "PDF file" print goes
  std::string Paper = "A4";
  std::int16_t PrinterOrientation = OrientationOf::Landscape;
  bool Colour = true;           // ChkColour; off prints every colour black
  std::int32_t PrintScale = 0;  // the scale number N of 1:N
  bool PrintScaleSet = false;   // the user typed the scale
  int Copies = 1;
  std::string DataName;  // the group and item of the data shown, "Airflow Quantity"
};

// The part of the sheet the printer can mark, in millimetres, orientation applied.
struct PrintablePage {
  double WidthMm = 0, HeightMm = 0;
};

// The band at the foot of the page that the title block takes; the drawing is fitted above it.
inline constexpr double kTitleBandMm = 25;
// The part of the printable page left to the drawing above the title block.
PrintablePage DrawingArea(const PrintablePage& page);

// The smallest scale number for this page: the one at which the window's view (with the tenth
// around it that the screen scale allows) just fits the drawing area, by width or by height.
std::int32_t SmallestPrintScale(const ViewState& view, const PrintablePage& page);

inline constexpr const char* kMsgScaleExceedsPaper = "Scale exceeds paper size !";
inline constexpr const char* kMsgScaleNotNumber = "Print Scale must be a whole number";
inline constexpr const char* kMsgScaleCutsWindow =
    "At the print scale typed the page cannot hold the whole window - the print shows its middle";
inline constexpr const char* kMsgPrintingError = "Error printing network";
inline constexpr const char* kTitlePrintingError = "Printing Error";
inline constexpr const char* kMsgCheckPrinter = "Error while trying to print - Check Printer";

// TxtScale on leaving it: the scale typed, or the smallest with the message that says why.
struct ScaleEntry {
  std::int32_t Scale = 0;
  std::string Message;  // empty when the typed scale stands
};
ScaleEntry CheckPrintScale(std::string_view text, std::int32_t smallest);

// The scale a print uses, and PrintScale set to it: the typed one as typed, else the smallest.
// A typed scale the page cannot hold the window at carries the message that says so.
ScaleEntry ResolvePrintScale(const ViewState& view, PrintSettings& settings,
                             const PrintablePage& page);

// The world rectangle (window coordinates) that the printable page shows at scale 1:scale: the
// window's centre is at the centre of the drawing area, above the title block.
struct PageBounds {
  float Left = 0, Top = 0, Width = 0, Height = 0;
};
PageBounds PagePlacement(const PrintablePage& page, std::int32_t scale);

// The colours on white paper: black for a black and white print; a contaminant display takes
// the print palette of its own; colours too light for paper are darkened.
inline constexpr std::array<Colour, 7> kPrintContaminantColours = {
    RGBColour(128, 128, 128), RGBColour(0, 0, 0),   RGBColour(0, 0, 128),  RGBColour(0, 128, 0),
    RGBColour(128, 0, 128),   RGBColour(128, 0, 0), RGBColour(128, 128, 0)};
Colour PaperColour(Colour colour, bool colourPrint, bool contaminantShown);

// True when the flows in the store are no solution to print as one: the network changed since
// its last run, or it carries no flow outside its fixed quantities.
bool FlowsUnsolved(const Workspace& ws);
inline constexpr const char* kUnsolvedTitleLine =
    "NOT SIMULATED - the flows shown are not a balanced solution";

// The lines of the title block, top to bottom; the level line names "All" when every level is
// drawn, and an unsolved network gets a last line that says so.
std::vector<std::string> TitleBlockLines(const Workspace& ws, const ViewState& view,
                                         const PrintSettings& settings, std::int32_t scale);

// Paints the page on a canvas whose surface is the printable page: the grid, the lines and
// the symbols of the window's view at the print scale, then the legend and the title block.
// The window's own state is left as it was; its draw list must be rebuilt by a redraw.
void DrawPrintPage(Workspace& ws, const ViewState& window, const PrintSettings& settings,
                   const PrintablePage& page, std::int32_t scale, Canvas& canvas);

}  // namespace galeris
