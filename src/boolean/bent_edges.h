// Which edges has an operation bent, and do the bent ones keep the region settled?
//
// A region is settled when each of its edges meets the pixel of a vertex only in the
// centre: then the next operation bends none of them but near its own operand.
//
// The vertices of an operation were hot pixels to all of its edges. A straight edge passed
// them in their centres, so what an edge that was not bent leaves in the result does too.
// Only pieces of bent edges can meet a pixel beside its centre.
#pragma once

#include <cstdint>
#include <vector>

#include "boolean/grid_box.h"
#include "boolean/labels.h"
#include "polygon/records.h"

namespace zelvan {

struct GridEdge {
  GridPoint from;
  GridPoint to;
};

/// What an operation has bent.
struct BentEdges {
  std::vector<GridEdge> edges;   ///< of the operands, as they were
  std::vector<GridEdge> pieces;  ///< of these edges, those that the operation takes
  GridBox box = kNoBox;          ///< of all, widened by a step
};

/// Do the pieces meet the pixels of the vertices of a contour, or of a ring, in the centre
/// only? The work is their product: of too many pieces the answer is false.
[[nodiscard]] bool KeepSettled(const BentEdges& bent, const Contour* contour) noexcept;
[[nodiscard]] bool KeepSettled(const BentEdges& bent, const Area* ring) noexcept;

/// Do the edges, as they were, meet the pixel of any vertex of the contour, but for those at
/// their own ends?
[[nodiscard]] bool MeetAnyPixel(const BentEdges& bent, const Contour* contour) noexcept;

/// The vertices of an operand's ring before the sweep splits it.
class SourceEdges {
 public:
  /// Throws std::bad_alloc.
  explicit SourceEdges(const Area* ring);

  /// Adds what the sweep has bent of the ring, which must be labelled.
  void AddBent(const Area* ring, BoolOp op, BentEdges& bent) const;

 private:
  std::vector<GridPoint> places_;
  std::vector<std::uint32_t> sizes_;
};

}  // namespace zelvan
