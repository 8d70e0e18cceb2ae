// An operation on a settled region (bent_edges.h) in which only those contours take part
// that have an edge within a step of the operand's box. All others pass by.
//
// Why that gives the same region.
//
//  - All new vertices lie in the operand's box. So no edge of a contour that passes by is
//    bent, and no vertex of it bends an edge of the operand. An edge of a contour that takes
//    part meets such a vertex in the centre of its pixel at most. That makes a difference
//    only where the edge is bent elsewhere; then the operation is not done in this way.
//  - A contour that passes by has the operand and all that takes part inside, or none of
//    them. Where an odd number has, one frame around all stands for them, so every edge gets
//    the label that it gets among all contours.
//  - Each walk keeps to one face of the result, also where it touches another. So what
//    passes by is traced as it is, from its head, and no other walk goes another way.
//  - The assembly delivers contours in the order of those on which their walks start: the
//    region's, area by area, then the operand's. So what a contour becomes stands in its
//    place: outer boundaries where its area stood, holes between the ones next to it.
//  - Each hole goes to the innermost area around it. An area nothing of which takes part
//    keeps its holes and gets none.
//  - A result of these pieces is settled when it keeps the pieces of bent edges off the
//    pixels of all vertices (bent_edges.h).
#pragma once

#include <cstddef>
#include <vector>

#include "boolean/bent_edges.h"
#include "boolean/cross_entry.h"
#include "boolean/labels.h"
#include "boolean/region_index.h"
#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

/// The box of all outer boundaries of a ring, which must not be null.
[[nodiscard]] GridBox BoxOfRing(const Area* ring) noexcept;

class NearOperation {
 public:
  /// For a settled region that fills its grid; `box` is that of the operand, widened by a
  /// step. Throws std::bad_alloc.
  NearOperation(OwnedRing& region, const GridBox& box, BoolOp op);

  /// The same with an index of the region, which tells those contours without a look at all.
  NearOperation(OwnedRing& region, const RegionIndex& index, const GridBox& box, BoolOp op);

  /// Does any edge of the region meet that box?
  [[nodiscard]] bool AnyEdgeIsNear() const noexcept { return !parts_.empty(); }

  /// All of the operation that can fail, with an operand on the region's grid, which it
  /// takes over. Raises ERR::NOMEM, throws std::bad_alloc.
  /// @return whether it can be done so, and leaves the region on its grid
  [[nodiscard]] bool Prepare(OwnedRing& operand);

  /// Changes the region, after Prepare. What it has no more of lives as long as this.
  void Commit() noexcept;

  /// Is the region settled again?
  [[nodiscard]] bool IsSettled() const noexcept { return isSettled_; }

  /// Has the index follow, after Commit. Throws std::bad_alloc; the index is of no use then.
  void Tell(RegionIndex& index) const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // A contour that takes part, and what has become of it.
  struct Part {
    Area* area;
    Contour* contour;
    Contour* before;  // in the area's list
    bool stays = false;
    std::vector<OwnedContour> made{};  // outer boundaries, then holes
    std::size_t heir = kNone;          // the one of `made` that is put into the contour's record
  };

  // A contour of the result, in its order.
  struct Listed {
    Contour* contour;
    Contour* record;  // into which its ring is put, or null
    Area* place;      // the area in whose place it comes, null for the operand's
    bool isNew;
  };
  struct Outer : Listed {
    Area* area = nullptr;
    Contour* last = nullptr;  // of that area
  };
  struct Hole : Listed {
    std::size_t outer = 0;  // number of its outer boundary
  };
  struct Link {
    Contour* before;
    Contour* contour;
  };

  void LookAround() noexcept;
  static void UseRecord(Listed& one) noexcept {
    if (one.record != nullptr) one.contour = one.record;
  }
  [[nodiscard]] bool CopyParts(Area* copies) const;
  void Assemble(const Area* copies);
  [[nodiscard]] bool BendsAlike();
  void LookAtMade(const Part& part) noexcept;
  void LookAt(const Contour* contour) noexcept;
  [[nodiscard]] bool IsInPlace() const noexcept;
  void ListContours();
  void ListMade(Part& part);
  void List(const Listed& contour);
  [[nodiscard]] bool LeavesTheGrid() const noexcept;
  [[nodiscard]] bool PlaceHoles();
  void MakeRoom();
  void HandOver(Part& part) noexcept;
  void ChangeInPlace() noexcept;
  void LinkAreas() noexcept;
  void LinkHoles() noexcept;

  OwnedRing& region_;
  const RegionIndex* index_ = nullptr;
  SweepRecords records_;
  OwnedRing operand_;
  BoolOp op_;
  GridBox box_;              // of the operand, widened
  std::vector<Part> parts_;  // in the region's order
  Part fromOperand_{};
  BentEdges bent_;
  bool isSettled_ = true;
  std::vector<Area*> areas_;  // those whose boxes the operand's meets
  Contour* last_ = nullptr;   // of the last one of them
  bool isAround_ = false;     // the operand, by contours that do not take part
  bool isInPlace_ = false;
  std::vector<Outer> outers_;
  std::vector<Hole> holes_;
  OwnedRing newAreas_;
  std::vector<RegionIndex::Change> changes_;
  std::vector<Link> links_;           // those that are new in place
  std::vector<const Area*> removed_;  // areas; no more than names
};

}  // namespace zelvan
