// RegionIndex: a settled region (bent_edges.h) while operations change it: which contours
// come near a box, and where does each stand in the order of all?
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "boolean/edge_index.h"
#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

class RegionIndex {
 public:
  /// Where a contour is linked.
  struct Place {
    Area* area;
    Contour* before;     ///< in the area's list, null for the outer boundary
    std::uint64_t rank;  ///< grows along the list
  };

  /// A contour that has changed its ring for another one, or that is gone.
  struct Change {
    Contour* contour;  ///< null where it is gone
    OwnedContour old;  ///< its ring before, or itself
  };

  /// Indexes a region; `more` is the number of edges to come. Throws std::bad_alloc.
  RegionIndex(OwnedRing& region, std::size_t more);

  /// Does any edge have a point in the closed box?
  [[nodiscard]] bool Meets(const GridBox& box) const noexcept { return edges_.Meets(box); }

  /// The contours that have such an edge, in the region's order.
  [[nodiscard]] std::vector<Contour*> Near(const GridBox& box) const;

  /// The area around a place (EdgeIndex::FaceAt), or null.
  [[nodiscard]] Area* AreaAt(GridPoint p) const;

  [[nodiscard]] const Place& PlaceOf(const Contour* contour) const { return places_.at(contour); }
  [[nodiscard]] Contour* LastOf(const Area* area) const { return areas_.at(area).last; }

  /// Appends a contour that comes near no edge to an area, or to the ring with an area of
  /// its own. Throws std::bad_alloc, raises ERR::NOMEM; the region is then as it was, and
  /// the index of no use, as after a failure of what follows.
  void Append(OwnedContour contour, Area* area);

  // What has changed in the region, in turn.

  void Exchange(const std::vector<Change>& changes);
  void Add(const Contour* contour) { edges_.Add(contour); }
  void Forget(const Area* area) noexcept { areas_.erase(area); }
  /// A contour of an area that is left as it was else is linked behind another one, or is
  /// its outer boundary.
  void LinkedBehind(Contour* before, Contour* contour, Area* area);
  /// The last contour of such an area is known anew.
  void EndsWith(const Area* area, Contour* last) { areas_.at(area).last = last; }
  /// An area's list is new, as may be the area; the areas before it are known.
  void Relinked(Area* area);

 private:
  struct AreaPlace {
    Contour* last;
    std::uint64_t rank;  ///< grows along the ring, 0 where it is not known yet
  };

  void RankArea(const Area* area);
  void RankAreas();
  void RankContours(Area* area);

  OwnedRing& region_;
  EdgeIndex edges_;
  std::unordered_map<const Contour*, Place> places_;
  std::unordered_map<const Area*, AreaPlace> areas_;
};

}  // namespace zelvan
