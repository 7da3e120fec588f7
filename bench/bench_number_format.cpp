// The number pictures on the drawing path: every data label of a redraw passes FormatValue,
// so a redraw of a large network formats tens of thousands of numbers.
#include <benchmark/benchmark.h>

#include "core/number_format.h"
#include "core/units.h"

namespace {

// A picture with decimals (argument 0), optional decimals (1) and time (2), each on values
// that change as a drawing's labels do.
void BM_FormatNumber(benchmark::State& state) {
  const struct {
    const char* picture;
    double start, step, factor;
  } kinds[] = {
      {"0.00", 0.123, 1.37, 1}, {"0.0########", 0.0123456, 0, 1.0001}, {"hh:mm:ss", 0, 61, 1}};
  const auto& kind = kinds[state.range(0)];
  double value = kind.start;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatNumber(value, kind.picture));
    value = value * kind.factor + kind.step;
  }
}
BENCHMARK(BM_FormatNumber)->Arg(0)->Arg(1)->Arg(2);

void BM_FormatValueCostWithUnit(benchmark::State& state) {
  const galeris::UnitTable units = galeris::BuiltInUnits();
  double value = 1000;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatValue(units, value, galeris::Unit::Cost, true));
    value += 17;
  }
}
BENCHMARK(BM_FormatValueCostWithUnit);

}  // namespace
