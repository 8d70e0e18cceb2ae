// The one function that the module has beyond the C headers: from the vertices of a region
// back to the points that it was made of, for earcut.js, whose answer names these.
#include <zelvan/region_c.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// The number of a column or row of the grid. Each step is exact: the division by a power
// of two, the rest behind the point, and whole numbers below 2^53.
double GridNumber(double coordinate, double origin, double step) {
  const double steps = coordinate / step;
  double whole = std::floor(steps);
  if (steps - whole >= 0.5) whole += 1.0;
  return whole - origin / step;
}

std::uint64_t Place(const double* point, const zelvan_grid& grid) {
  const double column = GridNumber(point[0], grid.x, grid.step);
  const double row = GridNumber(point[1], grid.y, grid.step);
  return static_cast<std::uint64_t>(column) << ZELVAN_GRID_BITS | static_cast<std::uint64_t>(row);
}

// Places and the first point at each, in a table with open addresses.
class FirstPoints {
 public:
  explicit FirstPoints(std::uint32_t count) {
    while (size_ < 2 * std::size_t{count}) size_ *= 2;
    entries_ = static_cast<Entry*>(std::calloc(size_, sizeof(Entry)));
  }
  FirstPoints(const FirstPoints&) = delete;
  FirstPoints& operator=(const FirstPoints&) = delete;
  ~FirstPoints() { std::free(entries_); }

  [[nodiscard]] bool HasMemory() const { return entries_ != nullptr; }

  void Add(std::uint64_t place, std::uint32_t point) {
    Entry& entry = At(place);
    if (entry.behind == 0) entry = {place, point + 1};
  }
  // -1 where no point lies.
  [[nodiscard]] std::int32_t Find(std::uint64_t place) const {
    return static_cast<std::int32_t>(At(place).behind) - 1;
  }

 private:
  struct Entry {
    std::uint64_t place;
    std::uint32_t behind;  // the point's number and 1; 0 where the entry is free
  };

  [[nodiscard]] Entry& At(std::uint64_t place) const {
    std::size_t at = static_cast<std::size_t>((place * 0x9E3779B97F4A7C15u) >> 32) & (size_ - 1);
    while (entries_[at].behind != 0 && entries_[at].place != place) at = (at + 1) & (size_ - 1);
    return entries_[at];
  }

  std::size_t size_ = 16;
  Entry* entries_;
};

}  // namespace

/// For each vertex of a region the first of the input's points that went to its place,
/// -1 for a vertex where edges cross.
extern "C" zelvan_status zelvan_input_vertices(const double* points, std::uint32_t count,
                                               const zelvan_grid* grid, const double* vertices,
                                               std::uint32_t vertexCount, std::int32_t* numbers) {
  FirstPoints firsts(count);
  if (!firsts.HasMemory()) return ZELVAN_NO_MEMORY;
  for (std::uint32_t i = 0; i < count; ++i) firsts.Add(Place(points + 2 * i, *grid), i);
  for (std::uint32_t i = 0; i < vertexCount; ++i) {
    numbers[i] = firsts.Find(Place(vertices + 2 * i, *grid));
  }
  return ZELVAN_OK;
}
