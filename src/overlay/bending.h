// Snap rounding of those edges alone that need it.
//
// The bent edges B are the least set that holds each edge with a crossing on it that is no grid
// point, and each edge that meets, off its centre, a hot pixel that an edge of B meets. Edges
// of B go through the centres of all hot pixels that they meet; all others are split only where
// they go through a centre exactly.
//
// The pieces meet at ends alone. Of the hot pixels that B meets, an edge e outside B meets none
// off its centre, and those at the ends of e that B meets are among them. So snap rounding of B
// and e on these pixels leaves e straight and B as it is, and its guarantee holds for e and B;
// two edges outside B cross in grid points alone.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "overlay/edges.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

/// Splits edges. Storage is kept from one use to the next.
class Bending {
 public:
  /// Splits the edges of a sweep that found crossings off the grid into pieces, in place.
  /// Throws std::bad_alloc, also for 2^32 pieces.
  void Split(EdgeSet& edges, const LineFindings& sweep);

  [[nodiscard]] std::size_t Bytes() const noexcept;

 private:
  enum class Fate : std::uint8_t {
    kKept,   // one piece, at its vertices
    kSplit,  // several; the first has the number of the edge
    kCut,    // ends before its upper vertex; one piece or several
    kGone    // cancelled, or in a bundle, whose line stands for it
  };

  void SortByLine(std::span<const Edge> lines);
  [[nodiscard]] std::span<const std::uint32_t> IncidencesOf(std::uint32_t line) const noexcept {
    return {byLine_.data() + firstOfLine_[line], byLine_.data() + firstOfLine_[line + 1]};
  }
  void FindBent(const LineFindings& sweep, std::span<const Edge> lines);
  void Bend(std::uint32_t line);
  void BendAllAt(std::size_t incidence);
  void BendAllAt(GridPoint pixel);
  void FindFates(const LineFindings& sweep, std::size_t lines);
  void SplitLine(std::uint32_t line, EdgeSet& edges);
  void AddEnd(GridPoint p, const Edge& piece, std::uint32_t number);
  void MoveVertices(EdgeSet& edges);

  std::span<const Incidence> incidences_;  // by pixel
  std::vector<std::uint32_t> firstOfLine_;
  std::vector<std::uint32_t> byLine_;  // in the order in which each line comes to its pixels
  std::vector<bool> isHandled_;        // of the first incidence of each pixel
  std::vector<bool> isBent_;
  std::vector<std::uint32_t> waiting_;
  std::vector<Fate> fates_;
  std::size_t givenLines_ = 0;
  std::vector<std::uint32_t> lastPiece_;  // of each line that is split
  std::vector<std::uint32_t> route_;      // incidences of one line
  std::vector<Vertex> inner_;             // between two pieces, for each incidence
  EdgeSet ends_;                          // at which no vertex was
  std::vector<Vertex> added_;
  std::vector<Vertex> merged_;
};

}  // namespace zelvan::overlay
