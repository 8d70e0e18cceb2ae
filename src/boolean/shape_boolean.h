// Unite and Subtract: the Boolean engine on whole shapes, each on the grid of its
// own box.
//
// Copies of both are brought to one common grid over their merged box, combined
// there, and the result goes to the grid of its own box. The first shape takes it
// over only when nothing can fail any more: after a failure both shapes are as
// they were. The second shape is never changed.
//
// The result stays on the common grid, with the common box as its own, where its
// own grid cannot hold it: when moving there would let contours cross, edges
// coincide or vertices fall together.
#pragma once

#include <optional>

#include "boolean/labels.h"
#include "polygon/area.h"
#include "polygon/shape.h"
#include "polygon/tables.h"

namespace zelvan {

/// Replaces the shape's region by the union with the other's. The triangulation
/// stays, stale. Raises ERR::FAIL when the merged box has no finite extent,
/// ERR::NOMEM.
void Unite(Shape& shape, const Shape& other);

/// The same for the region of `shape` less that of `other`.
void Subtract(Shape& shape, const Shape& other);

// The steps of one operation, for those that do many.

[[nodiscard]] WorldBox BoxOf(const Shape& shape) noexcept;

/// Is shown the copies of two regions on their common grid.
class CopiesWatcher {
 public:
  virtual void BeforeSweep(const Area* a, const Area* b) = 0;
  /// The copies are split and labelled, and the result is on the same grid.
  virtual void AfterSweep(const Area* a, const Area* b, const Area* result) = 0;

 protected:
  ~CopiesWatcher() = default;
};

/// Combines a ring on the grid of a box, which may be null, with a shape.
/// @param watcher  may be null; is left out if one region is empty, or collapses
/// @return the box of the result's grid, `grid` if the result is null; none if the operation
///         leaves the region as it is. Raises what Unite does, throws std::bad_alloc.
[[nodiscard]] std::optional<WorldBox> CombineRegions(const Area* areas, const WorldBox& grid,
                                                     const Shape& other, BoolOp op,
                                                     OwnedRing& result,
                                                     CopiesWatcher* watcher = nullptr);

/// Exchanges the shape's region for another one, with its tables and its grid's box.
void AdoptRegion(Shape& shape, OwnedRing& ring, ShapeTables tables, const WorldBox& grid) noexcept;

}  // namespace zelvan
