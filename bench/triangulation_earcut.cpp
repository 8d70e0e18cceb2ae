// Ear cutting as Debian packages it, a module of Python: a script reads the contours from
// a file, measures there, and prints what a child prints here.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "triangulation.h"

namespace {

template <class Value>
void Write(std::ofstream& file, const Value& value) {
  file.write(reinterpret_cast<const char*>(&value), sizeof value);
}

/// The number of polygons; for each its number of contours, their ends as numbers of
/// points, and the points. Integers have 32 bits.
void WriteScene(const std::filesystem::path& path, const bench::Scene& scene) {
  std::ofstream file(path, std::ios::binary);
  Write(file, static_cast<std::uint32_t>(scene.size()));
  for (const bench::Polygon& polygon : scene) {
    Write(file, static_cast<std::uint32_t>(polygon.size()));
    std::uint32_t end = 0;
    for (const bench::Xyz& contour : polygon) {
      Write(file, end += static_cast<std::uint32_t>(contour.size() / 3));
    }
    for (const bench::Xyz& contour : polygon) {
      for (std::size_t i = 0; i < contour.size(); i += 3) {
        Write(file, contour[i]);
        Write(file, contour[i + 1]);
      }
    }
  }
  bench::Require(file.flush().good(), "the contours cannot be written");
}

bench::Outcome MeasureEarcut(const bench::Scene& scene, const bench::Limits& limits) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("contours-" + std::to_string(getpid()) + ".bin");
  WriteScene(path, scene);
  bench::Outcome outcome =
      bench::MeasureProgram({BENCH_PYTHON, BENCH_EARCUT, path.string(), std::to_string(limits.runs),
                             std::to_string(limits.entry)},
                            limits);
  std::filesystem::remove(path);
  return outcome;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunTriangulation(argc, argv, {{"earcut", MeasureEarcut}});
}
