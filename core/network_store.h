// The one in-memory ventilation network: parallel per-airway arrays (position 0 unused, airways
// at 1..BranchCount), the level, view, layer, floating-text and fan tables, and the network's
// scalars. Nodes have no store: two airway ends are one node when their location keys match.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/fixed_text.h"
#include "core/zero_pages.h"

namespace galeris {

class UiPort;
class UndoJournal;
struct Defaults;
struct Workspace;

using Key = std::int64_t;  // location key: fixed point, the value times 10000

inline constexpr Key kKeyScale = 10000;  // four decimals
inline constexpr Key SurfaceKey = 900000000000000 * kKeyScale;  // the one surface node
inline constexpr int kAirwayLoopLimit = 32767;  // airway loops run on 16-bit counters
inline constexpr int kMaxLevels = 250;
inline constexpr int kMaxViews = 110;
inline constexpr int kViewItems = 27;      // the items a view line of the file holds
inline constexpr int kViewSlotItems = 28;  // item 28, the legend's animation time, stays in memory
inline constexpr int kViewCodes = 5;
inline constexpr int kPrimaryLayers = 16;
inline constexpr int kSecondLayers = 48;
inline constexpr int kCurvePoints = 11;  // points 1..10 from the database, 11 made by the solver

// BranchCode bits.
namespace Bit {
inline constexpr std::int32_t Rectangular = 0x1;
inline constexpr std::int32_t Round = 0x2;
inline constexpr std::int32_t FixedQuantity = 0x4;
inline constexpr std::int32_t ContaminantSource = 0x8;
inline constexpr std::int32_t Services = 0x10;
inline constexpr std::int32_t FansInSeries = 0x20;
inline constexpr std::int32_t ErrorMark = 0x40;
inline constexpr std::int32_t FixedLength = 0x80;
inline constexpr std::int32_t InView = 0x100;
inline constexpr std::int32_t Exhaust = 0x200;
inline constexpr std::int32_t Fresh = 0x400;
inline constexpr std::int32_t ShowData = 0x800;
inline constexpr std::int32_t ForceEntrySurface = 0x1000;
inline constexpr std::int32_t ForceExitSurface = 0x2000;
inline constexpr std::int32_t FixedDirection = 0x4000;
inline constexpr std::int32_t Custom = 0x10000;
inline constexpr std::int32_t Selected = 0x20000;
inline constexpr std::int32_t NewAirwayMask = 0x10F13;  // bits a new airway copies from its model
}  // namespace Bit

// Element 0 of these small arrays is unused so that indices read as in the file (1-based).
using Coord3 = std::array<std::int32_t, 4>;     // [1..3] X, Y, Z in whole survey units
using Dim2 = std::array<float, 3>;              // [1] height (or perimeter), [2] width
using ViewPoint = std::array<float, 3>;         // [0..2] view coordinates
using SmokePair = std::array<std::int16_t, 3>;  // [1] report pin, [2] concentration/trace
using LinkRange = std::array<std::array<std::int32_t, 3>, 3>;  // [end 1..2][first, last]

// One airway's display record, rebuilt by every redraw.
struct AirwayLineRecord {
  float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  std::int32_t Colour = 0;
  std::int16_t Style = 0;
  std::int16_t Width = 0;
};

struct Network;
void ResizeStore(Network& net);

struct Network {
  // Capacities (also fields of the defaults block).
  std::int32_t MaxAirways = 30000;
  std::int16_t UndoMax = 30000;
  std::int16_t FanMax = 250;
  std::int16_t MaxTexts = 100;
  std::int16_t BranchCount = 0;
  std::int16_t NodeCount = 0;
  std::int16_t RLCount = 0;

  // Airway record fields, positions 0..MaxAirways.
  ZeroArray<Text40> EntryNodeName, ExitNodeName, BranchName;
  ZeroArray<Key> EntryNodeId, ExitNodeId;
  ZeroArray<Coord3> Coord1, Coord2;
  ZeroArray<Dim2> Dim;
  ZeroArray<std::int32_t> BranchCode;
  ZeroArray<std::int16_t> ResType, ShockType, WallType;
  ZeroArray<float> WallFactor, ShockFactor;
  ZeroArray<Text12> Comment;
  ZeroArray<float> Resistance, Quantity;
  ZeroArray<std::int16_t> FanNumber, NoOfFans;
  ZeroArray<float> Length, Pressure, Contaminant;
  ZeroArray<std::int16_t> PrimaryLayer, SecondLayer;
  ZeroArray<float> FromNodeP, ToNodeP;
  ZeroArray<std::int32_t> UndoNo, AirwayNo;
  ZeroArray<float> LabelPos;
  ZeroArray<std::int16_t> RemoteStation, ParallelCount, CurveFraction;
  ZeroArray<SmokePair> SmokeData;

  // Working fields, not stored in the file.
  ZeroArray<std::int16_t> ExitNodeNo, EntryNodeNo;
  ZeroArray<ViewPoint> ViewEnd1, ViewEnd2;
  ZeroArray<AirwayLineRecord> AirwayLine;
  ZeroArray<float> SmokeTime;
  ZeroArray<float> FanSlot;
  ZeroArray<std::int16_t> SolvedFan;  // FanNumber at the moment of solution
  ZeroArray<std::int16_t> NodeParent, NodeGroup;  // by node number
  ZeroArray<std::int16_t> SmokeQueue;
  ZeroArray<LinkRange> NodeLinkRange;
  ZeroArray<std::int16_t> NodeLinks;   // 4 x MaxAirways
  ZeroArray<std::int16_t> WeightOrder;
  ZeroArray<float> ChordWeight;
  ZeroArray<std::int16_t> MeshMember;  // 20 x MaxAirways
  ZeroArray<std::int32_t> MeshStart;   // MaxAirways / 2
  ZeroArray<std::int16_t> MeshPath;    // MaxAirways / 2
  ZeroArray<std::int32_t> TreeMark;
  ZeroArray<std::int16_t> LoopOrder;

  // Levels 0..250: [1] "RL Max", [2] "RL Min". Level 1 is the surface.
  std::vector<std::string> RLName;
  std::vector<std::array<std::int32_t, 3>> RLBound;

  // Saved views 0..110; view 0 is the start-up view.
  std::vector<std::string> ViewName;
  std::vector<std::array<float, kViewSlotItems + 1>> ViewValue;  // items 1..28
  std::vector<std::array<Key, kViewCodes + 1>> ViewCode;     // items 1..5

  // Layers; show is -1 displayed, 0 hidden.
  std::vector<std::string> PrimaryLayerName;  // 1..16
  std::vector<std::int16_t> PrimaryLayerShow;
  // The label rows last made current in Viewing Layers; Hide All keeps those layers shown.
  int PrimaryLayerCurrent = 1, SecondLayerCurrent = 1;
  std::vector<std::string> SecondLayerName;   // 1..48
  std::vector<std::int16_t> SecondLayerShow;

  // Floating text: strings and coordinates 0..MaxTexts, used flags and layers 0..MaxTexts+1.
  std::vector<std::string> TextString;
  std::vector<std::int16_t> TextUsed;
  std::vector<Coord3> TextCoord;
  std::vector<std::int16_t> TextLayer;

  // Fan types 0..FanMax, curve points 0..11, pressures [1] static [2] total.
  std::vector<std::string> FanName;
  std::vector<float> FanDiameter;
  std::vector<std::array<float, kCurvePoints + 1>> CurveQ;
  std::vector<std::array<std::array<float, 3>, kCurvePoints + 1>> CurveP;
  std::vector<std::array<std::int16_t, kCurvePoints + 1>> CurveEff;
  std::vector<std::array<float, kCurvePoints + 1>> SimCurveQ;
  std::vector<std::array<std::array<float, 3>, kCurvePoints + 1>> SimCurveP;
  std::int32_t FanDatabaseSerial = 0;

  // Undo index 0..UndoMax, columns 0..3.
  std::vector<std::array<std::int16_t, 4>> UndoOrder;

  // Scalars of the network.
  std::string FileName;
  std::string NetworkTitle;
  std::string FileNote;
  std::int16_t AxisSignX = 1;
  std::int16_t AxisSignY = 1;
  std::int32_t NextAirwayNo = 0;
  std::uint8_t NetworkSaved = 0xFF;
  std::int16_t NetworkBalanced = 0;  // -1 after a run reached its end, 0 after any change

  // The error list of the last check or run: "AirwayNo<TAB>label" lines.
  std::vector<std::string> Errorlist;

  Network() { ResizeStore(*this); }
};

// Re-dimensions every array to the current capacity variables, keeping contents.
void ResizeStore(Network& net);
// Re-dimensions every array with the same bounds and loses all contents.
void ClearStore(Network& net);

// The location key of a point; 0 for (0, 0, 0), which therefore counts as blank.
Key NodeKey(std::int32_t x, std::int32_t y, std::int32_t z);

// Empties one airway record: blank texts, zero numbers and keys, BranchCode 0.
void BlankAirway(Network& net, int position);
// Removes the records whose BranchCode is 0, keeping the order of the others.
void CompactAirways(Network& net);
// Copies every stored and working field of one airway record to another position.
void CopyAirway(Network& net, int from, int to);
// Exchanges two airway records, every field.
void SwapAirways(Network& net, int a, int b);
// Puts the airways in a new order: position k (1..BranchCount) receives the record that stood
// at order[k]; order[0] is ignored. Every per-airway field moves with its record.
void ReorderAirways(Network& net, const std::vector<int>& order);

// Level 1's "RL Min": an end at or above it is at the surface.
inline std::int32_t SurfaceThreshold(const Network& net) { return net.RLBound[1][2]; }

// Recomputes both location keys of every airway, applies the surface rule and force bits,
// numbers new airways, removes blank records and warns once about airways on the surface.
void RebuildNodes(Network& net, const Defaults& defaults, UiPort& ui);

// True when some AirwayNo repeats.
bool HasDuplicateAirwayNumbers(const Network& net);
// The duplicate-number command: asks to re-number when numbers repeat, else says all are unique.
// A re-numbering is one undoable action and leaves the network unsaved.
void CheckDuplicateAirwayNumbers(Workspace& ws);
// Gives every airway whose number repeats an earlier one a fresh number, journalled.
void RenumberDuplicateAirways(Network& net, UndoJournal* journal);

// Capacity messages.
inline constexpr const char* kMsgAirwaysExceeded =
    "Maximum Number of Airways Exceeded\nIncrease allowable number of branches in Defaults !";
inline constexpr const char* kMsgPasteExceeded =
    "Network size has exceeded maximum airways - increase airways in default settings";
inline constexpr const char* kMsgFileTooBig =
    "File too big for current Galeris Settings - Increase Default Size";

// Adding one airway: false (after the message) when the store is full.
bool RoomForAirway(const Network& net, UiPort& ui);
// Pasting or inserting n airways: false (after the message) when they would not fit.
bool RoomForAirways(const Network& net, int count, UiPort& ui);

}  // namespace galeris
