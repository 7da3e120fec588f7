// The number pictures on the drawing path: every data label of a redraw passes FormatValue,
// so a redraw of a large network formats tens of thousands of numbers.
#include <benchmark/benchmark.h>

#include "core/number_format.h"
#include "core/units.h"

namespace {

void BM_FormatNumberDecimals(benchmark::State& state) {
  double value = 0.123;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatNumber(value, "0.00"));
    value += 1.37;
  }
}
BENCHMARK(BM_FormatNumberDecimals);

void BM_FormatNumberPlain(benchmark::State& state) {
  double value = 0.0123456;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatNumber(value, "0.0########"));
    value *= 1.0001;
  }
}
BENCHMARK(BM_FormatNumberPlain);

void BM_FormatValueCostWithUnit(benchmark::State& state) {
  const galeris::UnitTable units = galeris::BuiltInUnits();
  double value = 1000;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatValue(units, value, galeris::Unit::Cost, true));
    value += 17;
  }
}
BENCHMARK(BM_FormatValueCostWithUnit);

void BM_FormatTime(benchmark::State& state) {
  double seconds = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(galeris::FormatNumber(seconds, "hh:mm:ss"));
    seconds += 61;
  }
}
BENCHMARK(BM_FormatTime);

}  // namespace
