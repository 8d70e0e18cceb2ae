// An operation on a snap-stable region (bent_edges.h) in which only those contours take part
// that have an edge within a step of the operand's box. All others pass by.
//
// Why that gives the same region.
//
//  - All new vertices lie in the operand's box. So no edge of a contour that passes by is
//    bent, and no vertex of it bends an edge of the operand. An edge of a contour that takes
//    part meets such a vertex in the centre of its pixel at most. That makes a difference
//    only where the edge is bent elsewhere; then the operation is not done in this way.
//  - A contour that passes by has the operand and all that takes part inside, or none of
//    them. If an odd number has, one frame around all stands for them, so every edge gets
//    the label that it gets among all contours.
//  - Each walk keeps to one face of the result, also where it touches another. So what
//    passes by is traced as it is, from its head, and no other walk goes another way.
//  - The assembly delivers contours in the order of those on which their walks start: the
//    region's, area by area, then the operand's. So what a contour becomes stands in its
//    place: outer boundaries where its area stood, holes between the ones next to it.
//  - Each hole goes to the innermost area around it. An area nothing of which takes part
//    keeps its holes and gets none.
//  - A result of these pieces is snap-stable if it keeps the pieces of bent edges off the
//    pixels of all vertices (bent_edges.h).
#pragma once

#include <cstddef>
#include <vector>

#include "boolean/cross_entry.h"
#include "boolean/labels.h"
#include "queue/bent_edges.h"
#include "queue/listed_region.h"

namespace zelvan {

class NearOperation {
 public:
  /// For a snap-stable region that fills its grid. `near` are its contours that come near the
  /// operand, whose box, widened by a step, is `box`. Throws std::bad_alloc.
  NearOperation(ListedRegion& region, std::vector<ContourList::iterator> near, const GridBox& box,
                BoolOp op);

  /// Does all of the operation that can fail, with an operand on the region's grid, which it
  /// takes over. Raises ERR::NOMEM, throws std::bad_alloc.
  /// @return whether the operation can be done in this way, and leaves the region on its grid
  [[nodiscard]] bool Prepare(OwnedRing& operand);

  /// Changes the region, after Prepare.
  void Commit() noexcept;

  /// Is the region snap-stable again?
  [[nodiscard]] bool IsSnapStable() const noexcept { return isSnapStable_; }

 private:
  // A contour that takes part, and what becomes of it.
  struct Part {
    ContourList::iterator listed;
    bool stays = false;
    OwnedContour heir{};  // takes the place of the contour; of those made that run as the contour
                          // does the first
    ContourList made{};   // the others: outer boundaries, then holes
  };
  struct Hole {
    const Contour* contour;
    std::size_t outer = 0;  // number of the outer boundary around it
  };

  [[nodiscard]] bool IsOperandInside() const noexcept;
  [[nodiscard]] bool CopyParts(Area* copies) const;
  void Assemble(const Area* copies);
  [[nodiscard]] bool BendsAlike();
  template <class Visit>
  void ForEachOutcome(Visit visit) const;

  // near_result.cpp
  [[nodiscard]] bool KeepsGrid() const;
  [[nodiscard]] bool IsInPlace() const;
  void ListContours();
  [[nodiscard]] bool PlaceHoles();
  void MakeRoom();
  void ReplacePart(Part& part) noexcept;
  void MoveIn(AreaPlace area, ContourList::iterator place, ContourList& made) noexcept;
  void Distribute() noexcept;
  void UpdateIndex() noexcept;

  ListedRegion& region_;
  SweepRecords records_;
  OwnedRing operand_;
  BoolOp op_;
  GridBox box_;                              // of the operand, widened
  std::vector<ContourList::iterator> near_;  // the contours that take part, in the region's order
  std::vector<Part> parts_;                  // the same
  std::vector<AreaPlace> areas_;             // the areas that take part
  ContourList fromOperand_;                  // what becomes of the operand
  BentEdges bent_;
  bool isSnapStable_ = true;

  bool isInPlace_ = false;
  std::vector<const Contour*> outers_;  // the outer boundaries of these areas, in the new order
  std::vector<Hole> holes_;             // likewise
  AreaList newAreas_;
  std::vector<AreaPlace> homes_;              // of the outer boundaries
  std::vector<ContourList::iterator> added_;  // contours that are new
  ContourList gone_;                          // contours that the region had
};

// Calls visit(contour) for each contour that takes part and stays, and for each that is made.
template <class Visit>
void NearOperation::ForEachOutcome(Visit visit) const {
  for (const Part& part : parts_) {
    if (part.stays) visit(part.listed->contour.get());
    if (part.heir != nullptr) visit(part.heir.get());
    for (const ListedContour& made : part.made) visit(made.contour.get());
  }
  for (const ListedContour& made : fromOperand_) visit(made.contour.get());
}

}  // namespace zelvan
