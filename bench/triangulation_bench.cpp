// SetMainContour, Triangulate and the read-out through the flat interface, for
// five families of contours at 10^2 to 10^6 vertices; and the peak memory of all
// three together.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <zelvan/zelvan.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <vector>

#include "contours.h"

namespace {

bool counting = false;
std::size_t bytes = 0;
std::size_t peak = 0;

void* CountedAllocation(std::size_t size) {
  void* memory = std::malloc(size);
  if (counting && memory != nullptr) {
    bytes += malloc_usable_size(memory);
    peak = std::max(peak, bytes);
  }
  return memory;
}

void CountedRelease(void* memory) {
  if (counting && memory != nullptr) bytes -= std::min(bytes, malloc_usable_size(memory));
  std::free(memory);
}

}  // namespace

// The library takes its memory from these: they are the program's, and come first.
void* operator new(std::size_t size) {
  if (void* memory = CountedAllocation(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return CountedAllocation(size);
}
void operator delete(void* memory) noexcept {
  CountedRelease(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  CountedRelease(memory);
}

namespace {

using Family = bench::Xyz (*)(int);

void Require(int result) {
  if (result != 1) throw std::runtime_error("the library refused a benchmark contour");
}

void Set(const bench::Xyz& contour) {
  Require(SetMainContour(static_cast<int>(contour.size()), contour.data()));
}

struct Buffers {
  std::vector<double> vertices;
  std::vector<int> edges;
  std::vector<int> faces;
};

void ReadOut(Buffers& buffers) {
  int vertexCount = 0, edgeCount = 0, faceCount = 0;
  Require(GetCounts(&vertexCount, &edgeCount, &faceCount));
  buffers.vertices.resize(3 * static_cast<std::size_t>(vertexCount));
  buffers.edges.resize(3 * static_cast<std::size_t>(edgeCount));
  buffers.faces.resize(3 * static_cast<std::size_t>(faceCount));
  Require(GetVertices(buffers.vertices.data()));
  Require(GetEdges(buffers.edges.data()));
  Require(GetFaces(buffers.faces.data()));
}

void BM_SetMainContour(benchmark::State& state, Family family) {
  const bench::Xyz contour = family(static_cast<int>(state.range(0)));
  for (auto _ : state) Set(contour);
}

void BM_Triangulate(benchmark::State& state, Family family) {
  Set(family(static_cast<int>(state.range(0))));
  for (auto _ : state) Require(Triangulate());
}

void BM_ReadOut(benchmark::State& state, Family family) {
  Set(family(static_cast<int>(state.range(0))));
  Require(Triangulate());
  Buffers buffers;
  for (auto _ : state) ReadOut(buffers);
}

void BM_All(benchmark::State& state, Family family) {
  const bench::Xyz contour = family(static_cast<int>(state.range(0)));
  Buffers buffers;
  for (auto _ : state) {
    Set(contour);
    Require(Triangulate());
    ReadOut(buffers);
  }
  // Once more from an empty workspace, counting.
  SetMainContour(0, nullptr);
  bytes = peak = 0;
  counting = true;
  Set(contour);
  Require(Triangulate());
  ReadOut(buffers);
  counting = false;
  state.counters["bytes/vertex"] = static_cast<double>(peak) / static_cast<double>(state.range(0));
}

void Register(const char* name, void (*function)(benchmark::State&, Family)) {
  const std::pair<const char*, Family> families[] = {{"star", bench::Star},
                                                     {"circle", bench::Circle},
                                                     {"comb", bench::Comb},
                                                     {"spiral", bench::Spiral},
                                                     {"coast", bench::Coast}};
  for (const auto& [familyName, family] : families) {
    benchmark::RegisterBenchmark((std::string(name) + "/" + familyName).c_str(), function, family)
        ->RangeMultiplier(10)
        ->Range(100, 1000000)
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Register("SetMainContour", BM_SetMainContour);
  Register("Triangulate", BM_Triangulate);
  Register("ReadOut", BM_ReadOut);
  Register("All", BM_All);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
