// The fan dialog's load and commit.
#include "editors/logic/fan_edit.h"

#include <algorithm>

#include "editors/logic/airway_edit.h"
#include "core/number_format.h"

namespace galeris {
namespace {

constexpr int kFixedPressureFan = -1;
constexpr int kMaxFansOnAirway = 10;

std::optional<int> Whole(const std::string& text, int most) {
  const std::optional<double> v = ReadNumber(text);
  if (!v) return std::nullopt;
  const long long n = RoundHalfEven(*v);
  if (n < 0 || n > most) return std::nullopt;
  return static_cast<int>(n);
}

}  // namespace

FanEditFields LoadFanEdit(const Workspace& ws, int airway) {
  const Network& net = ws.net;
  FanEditFields f;
  const int fan = net.FanNumber[airway];
  if (fan > 0) {
    f.FanFound = fan <= net.FanMax && !net.FanName[fan].empty();
    f.Fan = f.FanFound ? fan : 0;
  }
  f.Series = net.BranchCode[airway] & Bit::FansInSeries;
  f.FanN = std::to_string(net.NoOfFans[airway]);
  const int fraction =
      fan > 0 ? net.CurveFraction[airway] : static_cast<int>(ws.defaults.DefaultCurveFraction);
  f.CurveType = CurveTypeOf(fraction);
  f.VPart = std::to_string(f.CurveType == 2 ? fraction : CurvePartFor(f.CurveType, 0));
  return f;
}

std::optional<std::string> ValidateFanEdit(const FanEditFields& f) {
  if (!ReadNumber(f.FanN) || !ReadNumber(f.VPart)) return std::string(kMsgDataEntry);
  if (!Whole(f.FanN, kMaxFansOnAirway)) return std::string("Number of fans is out of range");
  if (!Whole(f.VPart, 100)) return std::string("% of useful velocity pressure is out of range");
  return std::nullopt;
}

std::optional<std::string> CommitFanEdit(Workspace& ws, int i, const FanEditFields& f) {
  if (auto error = ValidateFanEdit(f)) return error;
  Network& net = ws.net;
  const int fans = *Whole(f.FanN, kMaxFansOnAirway);
  JournalBefore(ws.journal, i);
  net.CurveFraction[i] = static_cast<std::int16_t>(*Whole(f.VPart, 100));
  if (fans == 0) {
    if (net.FanNumber[i] != kFixedPressureFan) net.FanNumber[i] = 0;
    if (net.FanNumber[i] == 0)
      net.CurveFraction[i] = static_cast<std::int16_t>(ws.defaults.DefaultCurveFraction);
  } else {
    // A fan missing from the database stays on the airway unless another is chosen.
    if (f.FanFound || f.Fan != 0) net.FanNumber[i] = static_cast<std::int16_t>(f.Fan);
    net.BranchCode[i] |= Bit::FixedDirection;
  }
  net.NoOfFans[i] = net.FanNumber[i] < 1 ? 0 : static_cast<std::int16_t>(std::max(fans, 1));
  if (f.Series)
    net.BranchCode[i] |= Bit::FansInSeries;
  else
    net.BranchCode[i] &= ~Bit::FansInSeries;
  JournalAfter(ws.journal, i);
  CloseUndoAction(ws.journal);
  return std::nullopt;
}

}  // namespace galeris
