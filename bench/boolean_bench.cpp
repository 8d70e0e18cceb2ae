// Unions and differences of large and of many contours, on shapes.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

#include "boolean/operand.h"
#include "boolean/shape_boolean.h"
#include "contours.h"
#include "polygon/build_shape.h"

namespace {

using zelvan::Shape;

std::unique_ptr<Shape> ShapeOf(const bench::Xyz& xyz) {
  std::vector<zelvan::InputPoint> points;
  for (std::size_t i = 0; i + 2 < xyz.size(); i += 3) {
    points.push_back({xyz[i], xyz[i + 1], xyz[i + 2]});
  }
  return zelvan::BuildShape(points.size(), points.data());
}

using Operation = void (*)(Shape&, const Shape&);

void Combine(benchmark::State& state, const bench::Xyz& a, const bench::Xyz& b, Operation op) {
  const auto other = ShapeOf(b);
  std::size_t vertices = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto shape = ShapeOf(a);
    state.ResumeTiming();
    op(*shape, *other);
    vertices = shape->vertexTable.size();
    state.PauseTiming();
    shape.reset();
    state.ResumeTiming();
  }
  state.counters["vertices"] = static_cast<double>(vertices);
}

void Stars(benchmark::State& state, Operation op) {
  const bench::Xyz star = bench::Star(static_cast<int>(state.range(0)));
  Combine(state, star, bench::Turned(star, 0.5), op);
}
BENCHMARK_CAPTURE(Stars, unite, zelvan::Unite)
    ->RangeMultiplier(10)
    ->Range(100, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Stars, subtract, zelvan::Subtract)
    ->RangeMultiplier(10)
    ->Range(100, 100000)
    ->Unit(benchmark::kMillisecond);

void Coasts(benchmark::State& state, Operation op) {
  const bench::Xyz coast = bench::Coast(static_cast<int>(state.range(0)));
  Combine(state, coast, bench::Moved(coast, 1e3, 2e3), op);
}
BENCHMARK_CAPTURE(Coasts, unite, zelvan::Unite)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Coasts, subtract, zelvan::Subtract)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);

// k x k holes, one Subtract each.
void Holes(benchmark::State& state) {
  const int k = static_cast<int>(state.range(0));
  for (auto _ : state) {
    const auto shape = ShapeOf(bench::Box(0, 0, 4.0 * k, 4.0 * k));
    for (int i = 0; i < k * k; ++i) {
      const double x = 4.0 * (i % k) + 1;
      const double y = 4.0 * (i / k) + 1;
      zelvan::Subtract(*shape, *ShapeOf(bench::Box(x, y, x + 2, y + 2)));
    }
    state.counters["vertices"] = static_cast<double>(shape->vertexTable.size());
  }
}
BENCHMARK(Holes)->Arg(10)->Arg(30)->Arg(100)->Unit(benchmark::kMillisecond);

// A comb of k bars and one across it: one union, k x k crossings, many holes.
void Bars(benchmark::State& state) {
  const int k = static_cast<int>(state.range(0));
  bench::Xyz comb;
  for (int i = 0; i < k; ++i) {
    for (const auto& [x, y] : {std::pair{0, 2 * k}, {0, 0}, {1, 0}, {1, 2 * k}}) {
      bench::Add(comb, 2.0 * i + x, y);
    }
  }
  bench::Add(comb, 2.0 * k - 1, 2.0 * k + 1);
  bench::Add(comb, 0, 2.0 * k + 1);
  Combine(state, comb, bench::Moved(bench::Turned(comb, 1.5707963267948966), 2.0 * k, 0),
          zelvan::Unite);
}
BENCHMARK(Bars)->Arg(10)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
