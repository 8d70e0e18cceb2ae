// The one function that the module has beyond the C headers: from the vertices of a region
// back to the points that it was made of, for earcut.js, whose answer names these.
#include <zelvan/region_c.h>

#include <algorithm>
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
  return static_cast<std::uint64_t>(column) << 32 | static_cast<std::uint64_t>(row);
}

template <typename T>
class Room {
 public:
  explicit Room(std::size_t count) : data_(static_cast<T*>(std::calloc(count + 1, sizeof(T)))) {}
  Room(const Room&) = delete;
  Room& operator=(const Room&) = delete;
  ~Room() { std::free(data_); }

  [[nodiscard]] T* Data() const { return data_; }

 private:
  T* data_;
};

// Places and the first point at each, in a table with open addresses.
class FirstPoints {
 public:
  explicit FirstPoints(std::uint32_t count)
      : bits_(BitsFor(count)), entries_(std::size_t{1} << bits_) {}

  [[nodiscard]] bool HasMemory() const { return entries_.Data() != nullptr; }

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

  static int BitsFor(std::uint32_t count) {
    int bits = 4;
    while ((std::uint64_t{1} << bits) < 2 * std::uint64_t{count}) ++bits;
    return bits;
  }

  // The upper bits of the product tell, for those alone depend on all bits of a place: the lower
  // bits of columns and rows are 0 where the input is whole numbers.
  [[nodiscard]] Entry& At(std::uint64_t place) const {
    Entry* entries = entries_.Data();
    const std::size_t last = (std::size_t{1} << bits_) - 1;
    std::size_t at = static_cast<std::size_t>((place * 0x9E3779B97F4A7C15u) >> (64 - bits_));
    while (entries[at].behind != 0 && entries[at].place != place) at = (at + 1) & last;
    return entries[at];
  }

  int bits_;
  Room<Entry> entries_;
};

// The point nearest to another: points are sorted along the longer side of their box and
// looked at from the other one on, until the distance along that side alone is too far.
class NearestPoints {
 public:
  NearestPoints(const double* points, std::uint32_t count)
      : points_(points), count_(count), order_(count) {}

  [[nodiscard]] bool Sort() {
    if (order_.Data() == nullptr) return false;
    axis_ = Extent(1) > Extent(0) ? 1u : 0u;
    for (std::uint32_t i = 0; i < count_; ++i) order_.Data()[i] = i;
    std::sort(order_.Data(), order_.Data() + count_,
              [this](std::uint32_t a, std::uint32_t b) { return Along(a) < Along(b); });
    return true;
  }

  [[nodiscard]] std::uint32_t Find(const double* point) const {
    const std::uint32_t* const begin = order_.Data();
    const std::uint32_t* const end = begin + count_;
    const std::uint32_t* const middle =
        std::lower_bound(begin, end, point[axis_],
                         [this](std::uint32_t i, double value) { return Along(i) < value; });
    Best best{point, 0, HUGE_VAL};
    for (const auto* at = middle; at != end && Near(*at, best); ++at) Take(*at, best);
    for (const auto* at = middle; at != begin && Near(at[-1], best); --at) Take(at[-1], best);
    return best.number;
  }

 private:
  struct Best {
    const double* point;
    std::uint32_t number;
    double distance;
  };

  [[nodiscard]] double Extent(std::uint32_t axis) const {
    double least = HUGE_VAL;
    double greatest = -HUGE_VAL;
    for (std::uint32_t i = 0; i < count_; ++i) {
      least = std::min(least, points_[2 * i + axis]);
      greatest = std::max(greatest, points_[2 * i + axis]);
    }
    return greatest - least;
  }
  [[nodiscard]] double Along(std::uint32_t i) const { return points_[2 * i + axis_]; }
  [[nodiscard]] bool Near(std::uint32_t i, const Best& best) const {
    return std::fabs(Along(i) - best.point[axis_]) < best.distance;
  }
  void Take(std::uint32_t i, Best& best) const {
    const double distance =
        std::hypot(points_[2 * i] - best.point[0], points_[2 * i + 1] - best.point[1]);
    if (distance < best.distance) best = {best.point, i, distance};
  }

  const double* points_;
  std::uint32_t count_;
  Room<std::uint32_t> order_;
  std::uint32_t axis_ = 0;
};

}  // namespace

/// For each vertex of a region the first of the input's points that went to its place; for a
/// vertex where edges cross -1 - i, of the point i that lies nearest. `crossings` receives
/// the number of these.
extern "C" zelvan_status zelvan_input_vertices(const double* points, std::uint32_t count,
                                               const zelvan_grid* grid, const double* vertices,
                                               std::uint32_t vertexCount, std::int32_t* numbers,
                                               std::uint32_t* crossings) {
  FirstPoints firsts(count);
  if (!firsts.HasMemory()) return ZELVAN_NO_MEMORY;
  for (std::uint32_t i = 0; i < count; ++i) firsts.Add(Place(points + 2 * i, *grid), i);
  *crossings = 0;
  for (std::uint32_t i = 0; i < vertexCount; ++i) {
    numbers[i] = firsts.Find(Place(vertices + 2 * i, *grid));
    if (numbers[i] < 0) ++*crossings;
  }
  if (*crossings == 0) return ZELVAN_OK;
  NearestPoints nearest(points, count);
  if (!nearest.Sort()) return ZELVAN_NO_MEMORY;
  for (std::uint32_t i = 0; i < vertexCount; ++i) {
    if (numbers[i] >= 0) continue;
    numbers[i] = -1 - static_cast<std::int32_t>(nearest.Find(vertices + 2 * i));
  }
  return ZELVAN_OK;
}
