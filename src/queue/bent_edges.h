// Which edges has an operation bent, and does that leave the region snap-stable?
//
// A region is snap-stable if each of its edges meets the pixel of a vertex only in the
// centre. The next operation then bends none of these edges but near its own operand.
//
// The vertices of an operation were hot pixels to all of its edges. A straight edge passed
// them in their centres, so what an edge that was not bent leaves in the result does too.
// Only pieces of bent edges can meet a pixel beside its centre.
#pragma once

#include <cstdint>
#include <vector>

#include "boolean/labels.h"
#include "polygon/grid_box.h"
#include "polygon/records.h"

namespace zelvan {

class BentEdges {
 public:
  /// Notes the edges of two rings, either of which may be null, before the sweep splits them.
  /// Throws std::bad_alloc.
  void Note(const Area* a, const Area* b);

  /// Finds those of the edges that the sweep has bent. The rings are the same two, labelled.
  /// Throws std::bad_alloc.
  void Find(const Area* a, const Area* b, BoolOp op);

  [[nodiscard]] bool Any() const noexcept { return !edges_.empty(); }

  /// The box of all bent edges, widened by a step.
  [[nodiscard]] const GridBox& Box() const noexcept { return box_; }

  /// Do the pieces of bent edges meet the pixels of a contour's vertices in the centre only?
  /// The work is the product of both numbers: if there are too many pieces, the answer is false.
  [[nodiscard]] bool KeepSnapStable(const Contour* contour) const noexcept;

  /// Do the bent edges, as they were, meet the pixel of any vertex of the contour, other than
  /// at their own ends?
  [[nodiscard]] bool MeetAnyPixel(const Contour* contour) const noexcept;

 private:
  struct Edge {
    GridPoint from;
    GridPoint to;
  };

  void FindInRing(const Area* ring, BoolOp op);
  VertexNode* AddIfBent(VertexNode* from, GridPoint to, BoolOp op);
  template <class Condition>
  [[nodiscard]] bool AnyMeetsPixel(const std::vector<Edge>& edges, const Contour* contour,
                                   Condition condition) const noexcept;

  std::vector<GridPoint> places_;  // of the noted vertices, contour by contour
  std::vector<std::uint32_t> sizes_;
  std::size_t placesRead_ = 0;
  std::size_t sizesRead_ = 0;
  std::vector<Edge> edges_;   // as they were
  std::vector<Edge> pieces_;  // those that the operation takes
  GridBox box_ = kNoBox;
};

}  // namespace zelvan
