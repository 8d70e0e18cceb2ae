// Regions on their own: making one from rings without contact beside std::sort of its vertices,
// and the throughput of two threads on regions of their own. Prints a table.
#include <zelvan/region.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "contours.h"

namespace {

using zelvan::Point;
using zelvan::Region;
using zelvan::Ring;

double MsOf(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

// The least time of several tries.
double BestMs(int tries, const auto& work) {
  double best = MsOf(work);
  for (int i = 1; i < tries; ++i) best = std::min(best, MsOf(work));
  return best;
}

Ring RingOf(const bench::Xyz& xyz) {
  Ring ring;
  for (std::size_t i = 0; i < xyz.size(); i += 3) ring.push_back({xyz[i], xyz[i + 1]});
  return ring;
}

void PrintConstruction(const char* family, const bench::Xyz& contour) {
  constexpr int tries = 15;
  const std::vector<Ring> rings = {RingOf(contour)};
  const Region region(rings);
  const double make = BestMs(tries, [&] { const Region made(rings); });
  const double cut = BestMs(tries, [&] { Triangulate(region, {false}); });
  const double delaunay = BestMs(tries, [&] { Triangulate(region); });
  const double sort = BestMs(tries, [&] {
    Ring points = rings[0];
    std::sort(points.begin(), points.end(),
              [](Point a, Point b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
  });
  std::printf("| %s | %zu | %.1f | %.1f | %.1f | %.1f | %.2f |\n", family, region.VertexCount(),
              make, sort, cut, delaunay, make / (2 * sort + cut));
}

// Unions of two coasts of its own.
void Work(std::uint64_t seed) {
  const Region a({RingOf(bench::Coast(20000, seed))});
  const Region b({RingOf(bench::Moved(bench::Coast(20000, seed + 1), 10, 1000))});
  for (int i = 0; i < 12; ++i) static_cast<void>(Triangulate(a | b));
}

}  // namespace

int main() {
  std::puts(
      "| contour of 10^5 | vertices | region ms | std::sort ms | triangles ms | Delaunay ms "
      "| region / (2 sort + triangles) |\n|---|---:|---:|---:|---:|---:|---:|");
  PrintConstruction("circle", bench::Circle(100000));
  PrintConstruction("star", bench::Star(100000));
  PrintConstruction("comb", bench::Comb(100000));
  PrintConstruction("spiral", bench::Spiral(100000));
  PrintConstruction("coast", bench::Coast(100000));
  const double one = BestMs(5, [] { Work(1); });
  const double two = BestMs(5, [] {
    std::thread other([] { Work(1); });
    Work(1);
    other.join();
  });
  std::printf("\ntwo threads: %.2f times the throughput of one\n", 2 * one / two);
}
