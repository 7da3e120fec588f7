// The settings of the system: preset tables, capacities, simulation limits and display
// settings. Built in, overridden by Defaults.dat, and replaced by the block of a loaded network.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace galeris {

inline constexpr int kPresetSlots = 51;  // presets 0..49, and slot 50 for "user-given"
inline constexpr int kUserGiven = 50;

struct LabelFont {
  std::string Name = "Arial";
  std::int16_t Bold = 0;
  std::int16_t Size = 6;  // half-points
  bool operator==(const LabelFont&) const = default;
};

struct Defaults {
  // Preset tables, slots 0..50.
  std::array<std::string, kPresetSlots> WallName{};
  std::array<float, kPresetSlots> WallFactorPreset{};
  std::array<std::string, kPresetSlots> ResName{};
  std::array<float, kPresetSlots> ResPreset{};
  std::array<std::string, kPresetSlots> ShockName{};
  std::array<float, kPresetSlots> ShockPreset{};

  // The values line, positions 1..90.
  std::int16_t MinNodeSpacing = 5;         // 1
  double GridSpacing = 50;                 // 2
  std::int16_t ProximityDivisions = 25;    // 3
  std::int16_t DefaultWallDrive = 4;       // 4
  float DefaultShock = 2;                  // 5
  float DefaultHeight = 4;                 // 6
  float DefaultWidth = 4;                  // 7
  float DefaultDiameter = 1.8f;            // 8
  std::string SurfaceName = "SURFACE";     // 9
  std::int16_t MaxIter = 50;               // 10
  float MaxError = 0.05f;                  // 11
  std::int32_t RequestedAirways = 30000;   // 12 (MaxAirways as read, clamped 50..30000)
  float PowerCost = 0.08f;                 // 13
  float FanEffDefault = 0.8f;              // 14
  float AirDensity = 1.2f;                 // 15
  std::int32_t ViewZoom = 0;               // 16
  float SpinSpeed = 2;                     // 17
  float TiltSpeed = 2;                     // 18
  std::int16_t FullRotation = 0;           // 19
  std::int16_t ColourScheme = 0;           // 20
  std::int16_t DataDecimals = 0;           // 21
  std::int16_t ViewDetail = 0x1FF;         // 22
  float SurfaceRL = 99999;                 // 23
  std::array<std::int16_t, 5> ExportLayers{};  // 24..28
  std::int16_t DataDisplay = 0;            // 29
  std::int16_t ExportOption = 0;           // 30
  std::int16_t ScreenBuffer = 0;           // 31 (bool)
  std::int16_t ColourMode = 1;             // 32
  std::int16_t NoPropertyInherit = 0;      // 33 (bool)
  std::array<LabelFont, 5> Fonts{};        // 34..45, fonts 1..4
  std::array<std::int16_t, 8> DataRowType{0, 1, 2, 5, 5, 5, 5, 5};  // 46..59, rows 1..7
  std::array<std::int16_t, 8> DataRowSize{0, 1, 1, 1, 1, 1, 1, 1};
  std::array<std::int32_t, 9> ColourTable{};  // 60..67, colours 1..8
  float PowerZoomSpeed = 4;                // 68
  // 69 FanMax lives in the store.
  std::uint8_t PresetOverrides = 0;        // 70
  std::int16_t UnlimitedSpeed = 0;         // 71
  std::int16_t UnitSystem = 1;             // 72
  float ViewDepth = 1500;                  // 73
  std::int16_t LayerInherit = 0;           // 74 (bool)
  float DefaultPerimeter = 20;             // 75
  float DefaultArea = 25;                  // 76
  std::int16_t UseAreaForNew = 0;          // 77
  std::int32_t DefaultCurveFraction = 0;   // 78: written, read into UnusedCurveFraction
  std::int16_t UnusedCurveFraction = 0;
  std::int16_t RemoteEnabled = 0;          // 79
  // 80 NextAirwayNo lives in the store.
  std::int16_t AutoInfo = 0;               // 81 (bool)
  std::int16_t ScrollZoomOff = 0;          // 82
  std::int32_t AutoSaveMinutes = 0;        // 83
  std::int16_t SmokeAddSource = 0;         // 84
  std::int16_t EditNoRightClick = 0;       // 85
  float GridWidth = 500;                   // 86
  float GridCentreX = 1000;                // 87
  float GridCentreY = 1000;                // 88
  float ViewNear = 0;                      // 89
  float ViewFar = 1000;                    // 90

  bool operator==(const Defaults&) const = default;

  // Built-in settings outside the values line.
  double HighResistance = 1000000000;
  float SurfacePressure = 101;
  double ZoomSpeedBase = 8;
  std::int16_t DefaultWallRaise = 2;
};

}  // namespace galeris
