/// @file
/// Regions as values: any rings, four operations, triangles.
///
///     using namespace zelvan;
///     const Region house({{{0, 0}, {10, 0}, {10, 6}, {5, 9}, {0, 6}}});
///     const Region window({{{3, 2}, {7, 2}, {7, 5}, {3, 5}}});
///     const Region wall = house - window;
///     for (const Polygon& polygon : wall.Polygons()) Draw(polygon.outer, polygon.holes);
///     const Mesh mesh = Triangulate(wall);      // 9 vertices, 9 triangles
///
/// A thin header over the plain C functions of zelvan/region_c.h, which are all that crosses
/// the library's edge: any compiler of C++17 may use it.
///
/// What is guaranteed:
///
///  1. AnyRingsMakeARegion. Rings may run in any direction, cross, touch and repeat themselves
///     and each other, and have spikes or no area. What is finite and on the grid is never
///     refused, and the region is what the fill rule says.
///  2. GridPointsAreExact. A point goes to the nearest one of the grid, at most half a step
///     away along each axis, once, on the way in; one that is on the grid stays and comes
///     out to the bit (-0.0 as 0). A crossing off the grid goes to the nearest point as well:
///     the edges that cross there lead through every vertex and rounded crossing that they pass
///     within half a step, so do edges that pass one of those, and none moves farther (snap
///     rounding). All other edges stay as they are.
///  3. ResultsAreValid. Every region's polygons are valid simple features: rings do not touch
///     themselves, meet others in single points alone, and holes lie inside.
///  4. EqualReadsTheSame. Regions of the same points on the same grid compare equal and read
///     the same, however they were made. A region made again of the rings it reads, by any rule
///     that fits, is that region. The same calls give the same bytes on every machine. Only parts
///     of an overlay (zelvan/overlay.h) read more: points on straight edges, for their neighbours,
///     which count for no comparison and no operation.
///  5. LawsHold. Always: a | b == b | a, and so for & and ^; a union of many does not depend on
///     their order; a | a == a, a - a is empty, and an empty region changes nothing. Where
///     nothing is rounded, the operations are those of sets: a - b == a - (a & b),
///     (a ^ b) == (a - b) | (b - a), (a | b) | c == a | (b | c), and so on. What is rounded are
///     crossings off the grid, and nothing else.
///  6. MeshIsConsistent. A polygon of n vertices and h holes has n + 2h - 2 triangles, two less
///     for each ring that touches others in one place; all run strictly counter-clockwise, their
///     areas sum to the polygon's, and neighbours name each other.
///  7. DelaunayIsUnique. The constrained Delaunay triangulation depends on the region alone.
///  8. ThreadsMayShare. Threads share nothing but what they are given: distinct values, and the
///     same const value, may be used in any threads at once. The library keeps some
///     working memory from one operation to the next, up to 8 MB for each of four threads.
///  9. FailureChangesNothing. What fails throws and leaves every value as it was; memory that
///     runs out is std::bad_alloc; nothing leaks.
///  10. NothingIsLostSilently. An operation that would have to move a region to a coarser grid
///      where it loses a polygon, a hole or 2^-10 of the area of one is refused; OnGrid moves all
///      the same. A region says how many rings are gone below its step (Lost).
///
/// An operation on n vertices whose edges cross in k places takes of the order of (n + k) log n
/// (edges that run on each other are one). Columns of the grid in which a vertex or a crossing
/// comes near another edge take more: one step for each edge that passes a vertex or a crossing
/// within half a step, and (n + k) sqrt n at most to find these edges. A triangulation takes
/// n log n, and one more step for each flip that makes it Delaunay: about n of them,
/// n (n - 1) / 2 at most.
/// Copies of a region share it and cost nothing.
#ifndef ZELVAN_REGION_H
#define ZELVAN_REGION_H

#include <zelvan/fill_rule.h>
#include <zelvan/region_c.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zelvan {

/// A place in the host's units.
struct Point {
  double x = 0.0;  ///< to the right
  double y = 0.0;  ///< up

  /// Are both coordinates equal?
  friend bool operator==(const Point& a, const Point& b) noexcept {
    return a.x == b.x && a.y == b.y;
  }
  /// The opposite.
  friend bool operator!=(const Point& a, const Point& b) noexcept { return !(a == b); }
};

/// A closed line through points; the first one need not be repeated at the end.
using Ring = std::vector<Point>;

/// One connected part of a region: what its outer ring encloses, less the holes.
struct Polygon {
  Ring outer;               ///< counter-clockwise
  std::vector<Ring> holes;  ///< clockwise

  /// Point by point, from the same first points on.
  friend bool operator==(const Polygon& a, const Polygon& b) noexcept {
    return a.outer == b.outer && a.holes == b.holes;
  }
  /// The opposite.
  friend bool operator!=(const Polygon& a, const Polygon& b) noexcept { return !(a == b); }
};

/// The places from `min` to `max`.
struct Box {
  Point min;  ///< the lower left corner
  Point max;  ///< the upper right one
};

namespace detail {

// A status as the exception that stands for it.
inline void Check(zelvan_status status, const zelvan_fault* fault = nullptr) {
  if (status == ZELVAN_OK) return;
  if (status == ZELVAN_NO_MEMORY) throw std::bad_alloc();
  std::string text = zelvan_status_message(status);
  if (status == ZELVAN_TOO_LARGE) throw std::length_error(text);
  if (status == ZELVAN_INTERNAL) throw std::runtime_error(text);
  if (status == ZELVAN_TOO_COARSE) throw std::domain_error(text);
  if (fault != nullptr && (status == ZELVAN_NOT_FINITE || status == ZELVAN_OUTSIDE_GRID)) {
    text += ": ring " + std::to_string(fault->ring) + ", point " + std::to_string(fault->point);
  }
  throw std::invalid_argument(text);
}

// Rings one behind the other, as the C functions take them.
class FlatRings {
 public:
  explicit FlatRings(const std::vector<Ring>& rings) {
    std::size_t count = 0;
    for (const Ring& ring : rings) count += ring.size();
    if (count > (std::numeric_limits<std::int32_t>::max)()) Check(ZELVAN_TOO_LARGE);
    points_.reserve(count);
    offsets_.reserve(rings.size() + 1);
    offsets_.push_back(0);
    for (const Ring& ring : rings) {
      points_.insert(points_.end(), ring.begin(), ring.end());
      offsets_.push_back(static_cast<std::uint32_t>(points_.size()));
    }
  }

  const double* Coordinates() const noexcept { return points_.empty() ? nullptr : &points_[0].x; }
  const std::uint32_t* Offsets() const noexcept { return offsets_.data(); }
  std::uint32_t Rings() const noexcept { return static_cast<std::uint32_t>(offsets_.size() - 1); }
  std::uint32_t Points() const noexcept { return offsets_.back(); }

 private:
  std::vector<Point> points_;
  std::vector<std::uint32_t> offsets_;
};

static_assert(sizeof(Point) == 2 * sizeof(double), "points are pairs of doubles");

}  // namespace detail

/// The points that regions have their vertices on: 2^ZELVAN_GRID_BITS (2^31) along each axis, one
/// step apart. The step is a power of two and the origin a multiple of it, so each point is a
/// double. For whole numbers take a step of 1 or less, for centimetres scale metres by 100.
class Grid {
 public:
  /// The step 1, and (0, 0) in the middle.
  Grid() noexcept : grid_{} { zelvan_grid_covering(nullptr, 0, &grid_); }

  /// @param origin  the lowest, leftmost point
  /// @param step    from 2^-480 to 2^480; the origin at most 2^52 steps from 0
  /// Throws std::invalid_argument where that is no grid.
  Grid(Point origin, double step) : grid_{origin.x, origin.y, step} {
    detail::Check(zelvan_grid_check(&grid_));
  }

  /// The grid with the least step that holds a box; one of any extent has one.
  /// Throws std::invalid_argument for numbers that are not finite, or beyond 2^500 to either
  /// side of 0.
  static Grid Covering(const Box& box) {
    const double corners[] = {box.min.x, box.min.y, box.max.x, box.max.y};
    Grid grid;
    detail::Check(zelvan_grid_covering(corners, 2, &grid.grid_));
    return grid;
  }
  /// The same for all points of some rings.
  static Grid Covering(const std::vector<Ring>& rings) {
    const detail::FlatRings flat(rings);
    Grid grid;
    detail::Check(zelvan_grid_covering(flat.Coordinates(), flat.Points(), &grid.grid_));
    return grid;
  }

  /// The lowest, leftmost point.
  Point Origin() const noexcept { return {grid_.x, grid_.y}; }
  /// From one point to the next, along each axis.
  double Step() const noexcept { return grid_.step; }
  const zelvan_grid& Data() const noexcept { return grid_; }  ///< as the C functions take it

  /// Have both the same points?
  friend bool operator==(const Grid& a, const Grid& b) noexcept {
    return a.Origin() == b.Origin() && a.Step() == b.Step();
  }
  /// The opposite.
  friend bool operator!=(const Grid& a, const Grid& b) noexcept { return !(a == b); }

 private:
  zelvan_grid grid_;
};

/// Where a point lies.
enum class Side { Outside = -1, Boundary = 0, Inside = 1 };

/// Options of Triangulate.
struct MeshOptions {
  /// The constrained Delaunay triangulation: of all ways to cut the region the one without
  /// needless slivers. Else the triangles as a sweep cuts them, in half the time.
  bool delaunay = true;
};

/// The triangles of a region, polygon by polygon.
struct Mesh {
  /// Of the region: polygon by polygon, the outer ring before the holes. Where rings
  /// touch, each wedge between them has one vertex of those in that place.
  std::vector<Point> vertices;
  /// Three vertices each, counter-clockwise.
  std::vector<std::array<std::uint32_t, 3>> triangles;
  /// For each triangle the one across the edge from its first corner to its second, then from
  /// the second to the third, then from there to the first; -1 on a contour.
  std::vector<std::array<std::int32_t, 3>> neighbours;
};

/// An operation on two sets of points: what lies in one or both of them, in both, in the first
/// alone, in one alone.
enum class Operation {
  Unite = ZELVAN_UNITE,
  Intersect = ZELVAN_INTERSECT,
  Subtract = ZELVAN_SUBTRACT,
  Xor = ZELVAN_XOR
};

/// A place of a region, and how far it is from what was asked for.
struct NearestPlace {
  Point place;      ///< no numbers where the distance is infinite
  double distance;  ///< infinite for an empty region, and for a point that is not finite
};

/// The rows of a matrix with the way at their ends: x' = xx x + xy y + x0, y' = yx x + yy y + y0.
struct Transform {
  double xx = 1.0;  ///< of x
  double xy = 0.0;  ///< of y
  double x0 = 0.0;  ///< added
  double yx = 0.0;  ///< of x
  double yy = 1.0;  ///< of y
  double y0 = 0.0;  ///< added
};

/// A set of points bounded by rings: polygons with holes on a grid. A regular value, empty by
/// default; an empty region has no grid of its own. Immutable but for assignment.
class Region {
 public:
  /// The empty region.
  Region() noexcept = default;

  /// The region that rings bound by a fill rule, on the grid that covers them.
  /// Throws std::invalid_argument, naming ring and point, for numbers that are not finite and
  /// points outside the grid; std::length_error beyond 2^31 - 1 points; std::bad_alloc.
  explicit Region(const std::vector<Ring>& rings, FillRule rule = FillRule::EvenOdd)
      : Region(detail::FlatRings(rings), rule, nullptr) {}
  /// The same on a given grid.
  Region(const std::vector<Ring>& rings, FillRule rule, const zelvan::Grid& grid)
      : Region(detail::FlatRings(rings), rule, &grid.Data()) {}

  /// Shares the polygons.
  Region(const Region& other) noexcept : handle_(zelvan_region_retain(other.handle_)) {}
  /// Leaves `other` empty.
  Region(Region&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  /// Copies or moves.
  Region& operator=(Region other) noexcept {
    swap(*this, other);
    return *this;
  }
  ~Region() { zelvan_region_release(handle_); }

  /// Exchanges two values.
  friend void swap(Region& a, Region& b) noexcept { std::swap(a.handle_, b.handle_); }
  /// The same polygons on the same grid? Empty regions are all equal.
  friend bool operator==(const Region& a, const Region& b) noexcept {
    return zelvan_region_equal(a.handle_, b.handle_) != 0;
  }
  /// The opposite.
  friend bool operator!=(const Region& a, const Region& b) noexcept { return !(a == b); }

  /// The polygons, in an order that depends on the region alone: each ring begins with its
  /// leftmost (of several, lowest) vertex; holes and polygons are sorted by their rings'
  /// points. Rings have points at corners and where rings of
  /// a polygon touch.
  std::vector<Polygon> Polygons() const {
    const zelvan_counts counts = Counts();
    const std::vector<Point> points = Vertices();
    std::vector<std::uint32_t> rings(std::size_t{counts.rings} + 1);
    std::vector<std::uint32_t> ends(std::size_t{counts.polygons} + 1);
    detail::Check(zelvan_region_read(handle_, &counts, nullptr, rings.data(), ends.data()));
    std::vector<Polygon> polygons(counts.polygons);
    const auto ring = [&](std::uint32_t i) {
      return Ring(&points[rings[i]], &points[0] + rings[i + 1]);
    };
    for (std::uint32_t p = 0; p < counts.polygons; ++p) {
      polygons[p].outer = ring(ends[p]);
      for (std::uint32_t i = ends[p] + 1; i < ends[p + 1]; ++i)
        polygons[p].holes.push_back(ring(i));
    }
    return polygons;
  }

  /// One polygon as a region on the same grid. Throws std::invalid_argument where there are not so
  /// many.
  Region Part(std::size_t polygon) const {
    if (polygon >= PolygonCount()) detail::Check(ZELVAN_BAD_ARGUMENT);
    const zelvan_region* result = nullptr;
    detail::Check(zelvan_region_polygon(handle_, static_cast<std::uint32_t>(polygon), &result));
    return Adopt(result);
  }

  /// Goes through the polygons, each of which is read when it is asked for:
  ///
  ///     for (const Polygon& polygon : region) Draw(polygon);
  ///
  /// Valid as long as the region is.
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;  ///< what it points to is made
    using value_type = Polygon;                         ///< what it goes through
    using difference_type = std::ptrdiff_t;             ///< between two
    using pointer = void;                               ///< there is nothing to point to
    using reference = Polygon;                          ///< a value

    /// Polygon `polygon` of a region.
    Iterator(const Region& region, std::size_t polygon) noexcept
        : region_(&region), polygon_(polygon) {}

    /// The polygon. Throws std::bad_alloc.
    Polygon operator*() const { return std::move(region_->Part(polygon_).Polygons().front()); }
    /// On to the next.
    Iterator& operator++() noexcept {
      ++polygon_;
      return *this;
    }
    /// The same, and where it was.
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++polygon_;
      return before;
    }
    /// Of one region: at the same polygon?
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.polygon_ == b.polygon_;
    }
    /// The opposite.
    friend bool operator!=(const Iterator& a, const Iterator& b) noexcept { return !(a == b); }

   private:
    const Region* region_;
    std::size_t polygon_;
  };

  /// The first polygon.
  Iterator begin() const noexcept { return {*this, 0}; }
  /// Behind the last one.
  Iterator end() const noexcept { return {*this, PolygonCount()}; }

  /// The vertices of all rings, in the same order.
  std::vector<Point> Vertices() const {
    const zelvan_counts counts = Counts();
    std::vector<Point> points(counts.vertices);
    double* const xy = points.empty() ? nullptr : &points[0].x;
    detail::Check(zelvan_region_read(handle_, &counts, xy, nullptr, nullptr));
    return points;
  }

  /// Has it no polygons?
  bool IsEmpty() const noexcept { return PolygonCount() == 0; }
  /// The number of polygons.
  std::size_t PolygonCount() const noexcept { return Counts().polygons; }
  /// The number of holes of all polygons.
  std::size_t HoleCount() const noexcept { return Counts().rings - Counts().polygons; }
  /// The number of vertices of all rings.
  std::size_t VertexCount() const noexcept { return Counts().vertices; }

  /// Exact, but for the one rounding to a double.
  double Area() const noexcept { return zelvan_region_area(handle_); }

  /// The least box that holds the region; of no extent, at (0, 0), for an empty one.
  Box Bounds() const noexcept {
    double box[4] = {};
    zelvan_region_bounds(handle_, box);
    return {{box[0], box[1]}, {box[2], box[3]}};
  }

  /// The length of the boundary, holes included; off by at most 2^-51 of itself.
  double Length() const noexcept { return zelvan_region_length(handle_); }

  /// The centroid, exact but for rounding; (0, 0) for an empty region.
  Point Centroid() const noexcept {
    Point point;
    zelvan_region_centroid(handle_, &point.x);
    return point;
  }

  /// The convex hull, exact, on the same grid. Throws std::bad_alloc.
  Region Hull() const {
    const zelvan_region* result = nullptr;
    detail::Check(zelvan_region_hull(handle_, &result));
    return Adopt(result);
  }

  /// The corners of the box of least area, in any direction, counter-clockwise; no numbers for an
  /// empty region (see zelvan_region_least_box). Throws std::bad_alloc.
  std::array<Point, 4> LeastBox() const {
    std::array<Point, 4> corners;
    detail::Check(zelvan_region_least_box(handle_, &corners[0].x));
    return corners;
  }

  /// The nearest place of the region: inside it the point itself. The choice and the bytes are the
  /// same on every machine (see zelvan_region_nearest, also for errors). Throws std::bad_alloc.
  NearestPlace Nearest(Point point) const { return NearestOf(point, 0); }
  /// The nearest place of the boundary.
  NearestPlace NearestOnBoundary(Point point) const { return NearestOf(point, ZELVAN_BOUNDARY); }

  /// The region moved, turned, scaled, sheared or mirrored. Moved by whole steps it stays as it is,
  /// on its grid if that holds the result, else with the grid moved along. Else its points are
  /// rounded and the region is made again, on its own grid or the one that covers it
  /// (zelvan_region_transform). Throws std::invalid_argument for what is not finite or too far;
  /// std::bad_alloc.
  Region Transformed(const Transform& transform) const { return TransformedOn(transform, nullptr); }
  /// The same on a given grid.
  Region Transformed(const Transform& transform, const zelvan::Grid& grid) const {
    return TransformedOn(transform, &grid.Data());
  }

  /// Where a point lies, decided exactly (see zelvan_region_contains); one that is not finite lies
  /// outside.
  Side Contains(Point point) const noexcept {
    std::int8_t side = -1;
    zelvan_region_contains(handle_, &point.x, 1, &side);
    return static_cast<Side>(side);
  }

  /// The same of many points, in their order. Throws std::bad_alloc; std::length_error beyond
  /// 2^31 - 1 points.
  std::vector<Side> Sides(const std::vector<Point>& points) const {
    if (points.size() > (std::numeric_limits<std::int32_t>::max)()) detail::Check(ZELVAN_TOO_LARGE);
    const auto count = static_cast<std::uint32_t>(points.size());
    std::vector<std::int8_t> sides(count);
    const double* const xy = points.empty() ? nullptr : &points[0].x;
    detail::Check(zelvan_region_contains(handle_, xy, count, sides.data()));
    std::vector<Side> result;
    result.reserve(count);
    for (const std::int8_t side : sides) result.push_back(static_cast<Side>(side));
    return result;
  }

  /// Makes the index that finds where a point lies in O(log n), which else is made after some
  /// dozens of points; copies share it. Throws std::bad_alloc.
  void Prepare() const { detail::Check(zelvan_region_prepare(handle_)); }

  /// The grid of the region; Grid() for an empty one.
  zelvan::Grid Grid() const {
    zelvan_grid grid;
    zelvan_region_grid(handle_, &grid);
    return {{grid.x, grid.y}, grid.step};
  }

  /// The region on a grid that holds it, whatever that costs: points go to the nearest ones of
  /// the grid, and what encloses nothing there is gone. An empty region stays as it is. Throws
  /// std::invalid_argument where the grid does not hold the region; std::bad_alloc.
  Region OnGrid(const zelvan::Grid& grid) const {
    const zelvan_region* result = nullptr;
    detail::Check(zelvan_region_on_grid(handle_, &grid.Data(), &result));
    return Adopt(result);
  }

  /// How many rings are gone below the step: those with an area that enclose nothing on the
  /// grid, among the rings that the region was made of, and its own where OnGrid moved it. The
  /// result of an operation has lost what its operands have, added up.
  std::size_t Lost() const noexcept { return zelvan_region_lost(handle_); }

  /// The handle of the C functions, which stays the region's.
  const zelvan_region* Handle() const noexcept { return handle_; }

  /// Takes over a handle from a C function.
  static Region Adopt(const zelvan_region* handle) noexcept {
    Region region;
    region.handle_ = handle;
    return region;
  }

  /// Its sizes.
  zelvan_counts Counts() const noexcept {
    zelvan_counts counts{};
    zelvan_region_counts(handle_, &counts);
    return counts;
  }

 private:
  Region(const detail::FlatRings& rings, FillRule rule, const zelvan_grid* grid) {
    zelvan_fault fault{};
    detail::Check(zelvan_region_create(rings.Coordinates(), rings.Offsets(), rings.Rings(),
                                       static_cast<std::int32_t>(rule), grid, &handle_, &fault),
                  &fault);
  }

  NearestPlace NearestOf(Point point, std::uint32_t options) const {
    NearestPlace nearest{};
    detail::Check(
        zelvan_region_nearest(handle_, options, &point.x, 1, &nearest.place.x, &nearest.distance));
    return nearest;
  }

  Region TransformedOn(const Transform& t, const zelvan_grid* grid) const {
    const double matrix[] = {t.xx, t.xy, t.x0, t.yx, t.yy, t.y0};
    const zelvan_region* result = nullptr;
    detail::Check(zelvan_region_transform(handle_, matrix, grid, &result));
    return Adopt(result);
  }

  const zelvan_region* handle_ = nullptr;
};

namespace detail {

using Handles = std::vector<const zelvan_region*>;

inline zelvan::Grid CommonGrid(const zelvan_region* const* regions, std::size_t count) {
  if (count > (std::numeric_limits<std::int32_t>::max)()) Check(ZELVAN_TOO_LARGE);
  zelvan_grid grid;
  Check(zelvan_grid_common(regions, static_cast<std::uint32_t>(count), &grid));
  return {{grid.x, grid.y}, grid.step};
}

// The status of an operation, with the steps where one is too coarse.
inline void CheckOperation(zelvan_status status, const zelvan_region* const* regions,
                           std::size_t count) {
  if (status != ZELVAN_TOO_COARSE) return Check(status);
  const double coarse = CommonGrid(regions, count).Step();
  double fine = coarse;
  for (std::size_t i = 0; i < count; ++i) {
    zelvan_counts counts{};
    zelvan_region_counts(regions[i], &counts);
    zelvan_grid grid;
    zelvan_region_grid(regions[i], &grid);
    if (counts.polygons != 0 && grid.step < fine) fine = grid.step;
  }
  char steps[128];
  std::snprintf(steps, sizeof steps, ": its step is %.17g, and the finest of the regions' is %.17g",
                coarse, fine);
  throw std::domain_error(zelvan_status_message(status) + std::string(steps));
}

// On the grid that covers all rings where none is given.
inline Region CombineRings(Operation operation, const FlatRings& a, FillRule ruleA,
                           const FlatRings& b, FillRule ruleB, const zelvan_grid* grid) {
  zelvan_fault fault{};
  const zelvan_region* result = nullptr;
  Check(zelvan_rings_combine(static_cast<std::int32_t>(operation), a.Coordinates(), a.Offsets(),
                             a.Rings(), static_cast<std::int32_t>(ruleA), b.Coordinates(),
                             b.Offsets(), b.Rings(), static_cast<std::int32_t>(ruleB), grid,
                             &result, &fault),
        &fault);
  return Region::Adopt(result);
}

template <class Regions>
Handles HandlesOf(const Regions& regions) {
  Handles handles;
  // NOLINTNEXTLINE(performance-inefficient-vector-operation): a range need not know its size
  for (const Region& region : regions) handles.push_back(region.Handle());
  return handles;
}

template <class Regions>
using IfRegions = std::enable_if_t<
    std::is_convertible_v<decltype(*std::begin(std::declval<const Regions&>())), const Region&>>;

}  // namespace detail

/// The grid that operations on some regions, a range of Region, take (see Unite). Throws
/// std::invalid_argument where no grid holds all; std::bad_alloc.
template <class Regions, class = detail::IfRegions<Regions>>
Grid CommonGrid(const Regions& regions) {
  const detail::Handles handles = detail::HandlesOf(regions);
  return detail::CommonGrid(handles.data(), handles.size());
}

/// The same of two.
inline Grid CommonGrid(const Region& a, const Region& b) {
  const zelvan_region* const both[] = {a.Handle(), b.Handle()};
  return detail::CommonGrid(both, 2);
}

namespace detail {

inline bool Answer(zelvan_status(ZELVAN_CALL* question)(const zelvan_region*, const zelvan_region*,
                                                        std::int32_t*),
                   const Region& a, const Region& b) {
  std::int32_t answer = 0;
  Check(question(a.Handle(), b.Handle(), &answer));
  return answer != 0;
}

}  // namespace detail

/// Have two regions a point in common? Regions have their boundaries, empty ones no point. So in
/// all three questions, which are decided exactly on any two grids, make no region and end as soon
/// as the answer is known. Throw std::bad_alloc; std::domain_error where one step is more than
/// 2^200 times the other.
inline bool Intersects(const Region& a, const Region& b) {
  return detail::Answer(zelvan_region_intersects, a, b);
}
/// Have they points of their boundaries in common, but no inner points?
inline bool Touches(const Region& a, const Region& b) {
  return detail::Answer(zelvan_region_touches, a, b);
}
/// Has the first every point of the second? So it covers an empty one.
inline bool Covers(const Region& a, const Region& b) {
  return detail::Answer(zelvan_region_covers, a, b);
}

/// Two places as near to each other as two regions are, and their distance: infinite where one is
/// empty, and the places are no numbers.
struct RegionDistance {
  double distance;  ///< 0 exactly where the regions have a point in common
  Point first;      ///< of the first region
  Point second;     ///< of the second one
};

/// How far two regions are apart (see zelvan_region_distance, also for errors). Throws as
/// Intersects.
inline RegionDistance Distance(const Region& a, const Region& b) {
  double distance = 0.0;
  double places[4];
  detail::Check(zelvan_region_distance(a.Handle(), b.Handle(), &distance, places));
  return {distance, {places[0], places[1]}, {places[2], places[3]}};
}

/// An operation on two regions. The result is on the grid of both; where they
/// differ, both go first to the grid of one of them, if its step is the coarser one and it holds
/// both regions; if not, to the grid that covers both, with the coarser of the two steps at
/// least.
///
/// Throws std::domain_error, naming both steps, where a region would lose a polygon or a hole on
/// that grid, or more than 2^-10 of the area of one, or where two of them would become one. What
/// may be lost is moved first:
///
///     const Grid grid = CommonGrid(a, b);
///     const Region both = a.OnGrid(grid) | b.OnGrid(grid);
///
/// Throws std::invalid_argument where no grid holds both; std::bad_alloc, std::length_error. So
/// for all operations.
inline Region Combine(Operation operation, const Region& a, const Region& b) {
  const zelvan_region* result = nullptr;
  const zelvan_region* const both[] = {a.Handle(), b.Handle()};
  detail::CheckOperation(
      zelvan_region_combine(static_cast<std::int32_t>(operation), both[0], both[1], &result), both,
      2);
  return Region::Adopt(result);
}
/// What lies in one of two regions or in both.
inline Region Unite(const Region& a, const Region& b) {
  return Combine(Operation::Unite, a, b);
}
/// What lies in both regions.
inline Region Intersect(const Region& a, const Region& b) {
  return Combine(Operation::Intersect, a, b);
}
/// What lies in the first region, but not in the second.
inline Region Subtract(const Region& a, const Region& b) {
  return Combine(Operation::Subtract, a, b);
}
/// What lies in one of two regions, but not in both.
inline Region Xor(const Region& a, const Region& b) {
  return Combine(Operation::Xor, a, b);
}

/// Unite.
inline Region operator|(const Region& a, const Region& b) {
  return Unite(a, b);
}
/// Intersect.
inline Region operator&(const Region& a, const Region& b) {
  return Intersect(a, b);
}
/// Subtract.
inline Region operator-(const Region& a, const Region& b) {
  return Subtract(a, b);
}
/// Xor.
inline Region operator^(const Region& a, const Region& b) {
  return Xor(a, b);
}
/// Unites in place.
inline Region& operator|=(Region& a, const Region& b) {
  return a = a | b;
}
/// Intersects in place.
inline Region& operator&=(Region& a, const Region& b) {
  return a = a & b;
}
/// Subtracts in place.
inline Region& operator-=(Region& a, const Region& b) {
  return a = a - b;
}
/// Exclusive or in place.
inline Region& operator^=(Region& a, const Region& b) {
  return a = a ^ b;
}

/// The union of any number of regions, in one sweep: a range of Region, such as a vector.
template <class Regions, class = detail::IfRegions<Regions>>
Region Unite(const Regions& regions) {
  const detail::Handles handles = detail::HandlesOf(regions);
  if (handles.size() > (std::numeric_limits<std::int32_t>::max)()) detail::Check(ZELVAN_TOO_LARGE);
  const zelvan_region* result = nullptr;
  detail::CheckOperation(
      zelvan_region_unite(handles.data(), static_cast<std::uint32_t>(handles.size()), &result),
      handles.data(), handles.size());
  return Region::Adopt(result);
}

namespace detail {

// On the grid that covers the rings where none is given.
inline Region UniteRings(const std::vector<Ring>& rings, const zelvan_grid* grid) {
  const FlatRings flat(rings);
  zelvan_fault fault{};
  const zelvan_region* result = nullptr;
  Check(zelvan_region_unite_rings(flat.Coordinates(), flat.Offsets(), flat.Rings(), grid, &result,
                                  &fault),
        &fault);
  return Region::Adopt(result);
}

}  // namespace detail

/// The union of any number of rings, whichever way each runs, in one sweep: all are turned so
/// that their areas are not negative, and count by the non-zero rule. That is meant for rings
/// that do not cross themselves: one that does may still run clockwise around a part of what it
/// encloses, and cancels another ring there. Rings that cross themselves are united as regions,
/// each by FillRule::NonZero. Grids and failures as for Region.
inline Region Unite(const std::vector<Ring>& rings) {
  return detail::UniteRings(rings, nullptr);
}
/// The same on a given grid.
inline Region Unite(const std::vector<Ring>& rings, const Grid& grid) {
  return detail::UniteRings(rings, &grid.Data());
}

/// An operation on the regions that two sets of rings bound, in one sweep, on the grid that covers
/// all of them: the same region as that of Combine on two regions on this grid wherever no crossing
/// is rounded, else rounded once, not twice.
///
///     const Region dry = Combine(Operation::Subtract, land, FillRule::NonZero, lakes,
///                                FillRule::EvenOdd);
///
/// Failures as for Region; where a point is refused, the rings of b are counted on from those of a.
inline Region Combine(Operation operation, const std::vector<Ring>& a, FillRule ruleA,
                      const std::vector<Ring>& b, FillRule ruleB) {
  return detail::CombineRings(operation, detail::FlatRings(a), ruleA, detail::FlatRings(b), ruleB,
                              nullptr);
}
/// The same on a given grid.
inline Region Combine(Operation operation, const std::vector<Ring>& a, FillRule ruleA,
                      const std::vector<Ring>& b, FillRule ruleB, const Grid& grid) {
  return detail::CombineRings(operation, detail::FlatRings(a), ruleA, detail::FlatRings(b), ruleB,
                              &grid.Data());
}

/// How an offset goes around a corner: along an arc; to where the edges' copies meet; straight
/// from one edge's copy to the next one's.
enum class Join { Round = ZELVAN_JOIN_ROUND, Miter = ZELVAN_JOIN_MITER, Bevel = ZELVAN_JOIN_BEVEL };

/// Options of Offset.
struct OffsetOptions {
  Join join = Join::Round;  ///< how corners are gone around
  double miterLimit = 2.0;  ///< a tip farther from its corner, in distances, is cut to a bevel
  double tolerance = 0.0;   ///< how far arcs may be off; 0 for 1/500 of the distance
};

/// A region grown by a distance, or shrunk by one below 0. A round offset has every point of its
/// boundary at that distance from the region's, within the tolerance and one step of its grid;
/// zelvan_region_offset says what that means in full, what the other joins give, and why.
///
///     const Region setback = Offset(parcel, -5.0);
///     const Region outline = Offset(plate, 0.25, {Join::Miter, 4.0});
///
/// Throws std::invalid_argument for numbers that are not finite, a tolerance below 0, a limit
/// below 1, and where no grid holds the result; std::domain_error as operations do;
/// std::bad_alloc, std::length_error.
inline Region Offset(const Region& region, double distance, const OffsetOptions& options = {}) {
  const zelvan_region* result = nullptr;
  detail::Check(zelvan_region_offset(region.Handle(), distance,
                                     static_cast<std::int32_t>(options.join), options.miterLimit,
                                     options.tolerance, &result));
  return Region::Adopt(result);
}

/// Cuts a region into triangles of its own vertices. Throws std::bad_alloc.
inline Mesh Triangulate(const Region& region, const MeshOptions& options = {}) {
  const zelvan_counts counts = region.Counts();
  Mesh mesh;
  mesh.vertices = region.Vertices();
  mesh.triangles.resize(counts.triangles);
  mesh.neighbours.resize(counts.triangles);
  if (counts.triangles == 0) return mesh;
  detail::Check(zelvan_region_triangulate(region.Handle(), options.delaunay ? ZELVAN_DELAUNAY : 0,
                                          &counts, mesh.triangles[0].data(),
                                          mesh.neighbours[0].data()));
  return mesh;
}

namespace detail {

// On the grid that covers the rings where none is given.
inline Mesh TriangulateRings(const std::vector<Ring>& rings, FillRule rule, const zelvan_grid* grid,
                             const MeshOptions& options) {
  const FlatRings flat(rings);
  zelvan_fault fault{};
  const zelvan_mesh* made = nullptr;
  Check(zelvan_rings_triangulate(
            flat.Coordinates(), flat.Offsets(), flat.Rings(), static_cast<std::int32_t>(rule), grid,
            (options.delaunay ? ZELVAN_DELAUNAY : 0) | ZELVAN_NEIGHBOURS, &made, &fault),
        &fault);
  struct Release {
    void operator()(const zelvan_mesh* mesh) const noexcept { zelvan_mesh_release(mesh); }
  };
  const std::unique_ptr<const zelvan_mesh, Release> owner(made);
  Mesh mesh;
  mesh.vertices.resize(made->counts.vertices);
  mesh.triangles.resize(made->counts.triangles);
  mesh.neighbours.resize(made->counts.triangles);
  for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
    mesh.vertices[i] = {made->xy[2 * i], made->xy[2 * i + 1]};
  }
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      mesh.triangles[i][k] = made->triangles[3 * i + k];
      mesh.neighbours[i][k] = made->neighbours[3 * i + k];
    }
  }
  return mesh;
}

}  // namespace detail

/// The triangles of the region that rings bound, in one call: as Triangulate of a Region of the
/// same arguments, failures too.
inline Mesh Triangulate(const std::vector<Ring>& rings, FillRule rule = FillRule::EvenOdd,
                        const MeshOptions& options = {}) {
  return detail::TriangulateRings(rings, rule, nullptr, options);
}
/// The same on a given grid.
inline Mesh Triangulate(const std::vector<Ring>& rings, FillRule rule, const Grid& grid,
                        const MeshOptions& options = {}) {
  return detail::TriangulateRings(rings, rule, &grid.Data(), options);
}

}  // namespace zelvan

#endif
