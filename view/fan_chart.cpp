// The fan chart on a canvas.
#include "view/fan_chart.h"

#include <algorithm>
#include <string>

namespace galeris {
namespace {

constexpr float kPlot = 1000;
constexpr int kPoints = 10;
constexpr float kTextSize = 8;
constexpr float kPointRadius = 8;
constexpr Colour kWhite = RGBColour(255, 255, 255);
constexpr Colour kBlack = RGBColour(0, 0, 0);
constexpr Colour kBlue = RGBColour(0, 0, 255);
constexpr Colour kRed = RGBColour(255, 0, 0);
constexpr Colour kGreen = RGBColour(0, 128, 0);

struct ScaledPoint {
  double q = 0, ps = 0, pt = 0, eff = 0;
};

bool ValidFan(const Network& net, int fan) {
  return fan >= 1 && fan <= net.FanMax && fan < static_cast<int>(net.CurveQ.size());
}

// Series fans add their pressures, parallel ones their flows.
ScaledPoint PointOf(const Network& net, int fan, int k, int fans, bool series) {
  const double n = std::max(fans, 1);
  ScaledPoint p;
  p.q = net.CurveQ[fan][k] * (series ? 1 : n);
  p.ps = net.CurveP[fan][k][1] * (series ? n : 1);
  p.pt = net.CurveP[fan][k][2] * (series ? n : 1);
  p.eff = net.CurveEff[fan][k];
  return p;
}

void RightAligned(Canvas& canvas, float right, float y, const std::string& text) {
  canvas.Text(right - canvas.TextWidth(text, kTextSize), y, text, kBlack, kTextSize);
}

}  // namespace

FanChartScale FanChartScaleOf(const Network& net, int fan, int fans, bool series) {
  FanChartScale s;
  if (!ValidFan(net, fan)) return s;
  for (int k = 1; k <= kPoints; ++k) {
    const ScaledPoint p = PointOf(net, fan, k, fans, series);
    s.MaxQ = std::max(s.MaxQ, p.q);
    s.MaxP = std::max({s.MaxP, p.ps, p.pt});
  }
  return s;
}

void DrawFanChart(Canvas& canvas, const Network& net, const UnitTable& units, int fan, int fans,
                  bool series, const FanChartDuty* duty) {
  canvas.SetScale(kFanChartLeft, kFanChartTop, kFanChartWidth, kFanChartHeight);
  canvas.Clear(kWhite);
  canvas.Line(0, 0, 0, kPlot, kBlack, 1);
  canvas.Line(0, kPlot, kPlot, kPlot, kBlack, 1);
  const float textHeight = canvas.TextHeight("P", kTextSize);
  canvas.Text(-canvas.TextWidth("P", kTextSize) / 2, -textHeight - 10, "P", kBlack, kTextSize);
  canvas.Text(kPlot + 15, kPlot - textHeight / 2, "Q", kBlack, kTextSize);
  RightAligned(canvas, -10, kPlot + 10, "0,0");

  const FanChartScale scale = FanChartScaleOf(net, fan, fans, series);
  if (scale.MaxQ <= 0 || scale.MaxP <= 0) return;
  RightAligned(canvas, -10, 0, FormatValue(units, scale.MaxP, Unit::Pressure, true));
  RightAligned(canvas, kPlot, kPlot + 10, FormatValue(units, scale.MaxQ, Unit::Quantity, true));

  auto x = [&](double q) { return static_cast<float>(q / scale.MaxQ * kPlot); };
  auto y = [&](double p) { return static_cast<float>(kPlot - p / scale.MaxP * kPlot); };
  auto yEff = [&](double e) { return static_cast<float>(kPlot - e * 10); };

  // A curve whose first and last points agree was never entered; one pressure curve stays.
  const ScaledPoint first = PointOf(net, fan, 1, fans, series);
  const ScaledPoint last = PointOf(net, fan, kPoints, fans, series);
  bool showStatic = first.ps != last.ps;
  bool showTotal = first.pt != last.pt;
  if (!showStatic && !showTotal) showStatic = showTotal = true;
  const bool showEff = first.eff != 0 || last.eff != 0;

  for (int k = 1; k < kPoints; ++k) {
    const ScaledPoint a = PointOf(net, fan, k, fans, series);
    const ScaledPoint b = PointOf(net, fan, k + 1, fans, series);
    if (showStatic) canvas.Line(x(a.q), y(a.ps), x(b.q), y(b.ps), kBlack, 1);
    if (showTotal) canvas.Line(x(a.q), y(a.pt), x(b.q), y(b.pt), kBlue, 1);
    if (showEff) canvas.Line(x(a.q), yEff(a.eff), x(b.q), yEff(b.eff), kGreen, 1);
  }
  for (int k = 1; k <= kPoints; ++k) {
    const ScaledPoint p = PointOf(net, fan, k, fans, series);
    if (showStatic) canvas.Circle(x(p.q), y(p.ps), kPointRadius, kRed);
    if (showTotal) canvas.Circle(x(p.q), y(p.pt), kPointRadius, kRed);
  }
  if (showEff) {
    canvas.Text(kPlot + 15, -textHeight / 2, "100%", kBlack, kTextSize);
    canvas.Text(kPlot + 15, textHeight * 2, "Eff", kBlack, kTextSize);
  }
  if (duty) {
    const float dx = x(duty->Quantity);
    const float dy = y(duty->Pressure);
    const float dt = y(duty->Total);
    canvas.Line(0, dy, dx, dy, kRed, 1);
    canvas.Line(dx, kPlot, dx, dy, kRed, 1);
    canvas.Line(0, dt, dx, dt, kBlue, 1);
    canvas.Line(dx, kPlot, dx, dt, kBlue, 1);
  }
}

FanChartReading FanChartReadout(const FanChartScale& scale, float x, float y) {
  return {x * scale.MaxQ / kPlot, (kPlot - y) * scale.MaxP / kPlot};
}

}  // namespace galeris
