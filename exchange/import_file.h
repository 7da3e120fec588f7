// The import of airways from a text table or a DXF drawing (File, Import Data): the choices of
// the import dialog, the one routine that runs an import, and the coordinate clamp both
// readers share. The readers fill positions behind the network; the common frame then cleans
// each new airway, renumbers and shifts it, builds the levels and rebuilds the nodes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/workspace.h"

namespace galeris {

// The controls of frmImport, as the import reads them.
struct ImportChoices {
  bool Merge = false;              // ChkMerge: new airways go behind the existing ones
  bool BuildLevels = false;        // ChkRL: one level per distinct exit height, else "Import Level"
  bool RetainDrive = false;        // ChkRDrive: a drive keeps the resistance read from the file
  bool RetainRaise = false;        // ChkRRaise: a raise keeps the resistance read from the file
  bool CommonSize = false;         // ChkSize: raises get the drive size too
  std::array<double, 3> Offset{};  // TxtXOffset, TxtYOffset, TxtZOffset in display units
  std::array<bool, 3> Negate{};    // NegX, NegY, NegZ: applied after the offset
  std::int16_t PrimaryLayer = 1;   // the current default layers
  std::int16_t SecondLayer = 1;
};

enum class ImportOutcome {
  Done,       // the airways are in the store
  Refused,    // nothing was read (missing, empty or unknown file); the network is as it was
  Abandoned,  // the user stopped at an error; the airways read so far stay, cleaned and numbered
};

// The whole import of one file; the name's ending (TXT or DXF in any case) picks the reader.
// The caller refreshes its windows afterwards.
ImportOutcome ImportFile(Workspace& ws, const std::string& path, const ImportChoices& choices);

// The number of a coordinate text; above 9999999 it is cut to its remainder on division by
// 10000000, with a message shown once per run of the program.
double ClampCoordinate(Workspace& ws, std::string_view text);

// True for a name ending "TXT" or "DXF" in any case.
bool IsImportFileName(const std::string& path);

inline constexpr const char* kMsgCoordinateTruncated =
    "Coordinate data exceeds 9999999 - it will be truncated to fit Galeris limits";
inline constexpr const char* kMsgTooManyAirways = "Data exceeds maximum number of nodes!";
inline constexpr const char* kMsgImportError =
    "Error Loading Data - Do you wish to continue loading ?";
inline constexpr const char* kTitleImportError = "Import Error";
inline constexpr const char* kMsgLoadingData = "Loading data .....";
inline constexpr const char* kMsgUnknownImportType =
    "Unknown file type - only TXT and DXF files can be imported";
inline constexpr const char* kMsgImportFileEmpty = "The file is empty - nothing was imported";
inline constexpr const char* kMsgImportNotText =
    "Cannot read file format - the file holds binary data";

}  // namespace galeris
