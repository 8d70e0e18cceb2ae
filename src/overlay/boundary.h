// The boundary of a region, made piece by piece while a sweep goes from place to place.
//
// What holds here:
//  - A piece runs from one place to a later one, with the region on its left: one that runs
//    to the right has the region above it. It knows where it begins and which piece follows.
//  - Around a place the edges that bound the region take turns: every other sector between
//    neighbours belongs to it. The piece that arrives along one side of such a sector is
//    followed by the piece that leaves along the other; so a chain of pieces goes once around
//    one boundary component of one connected part of the region.
//  - Each connected part is a set in a forest of pieces that run to the right (Tarjan 1975).
//    Pieces come into being from left to right, so the first piece of a chain starts at the
//    chain's least place.
#pragma once

#include <cstdint>
#include <new>
#include <span>
#include <vector>

#include "overlay/edges.h"

namespace zelvan::overlay {

inline constexpr std::uint32_t kPieceMask = 0x7FFFFFFF;  // fewer pieces than that

struct Piece {
  GridPoint origin;            ///< where the piece begins
  std::uint32_t next : 31;     ///< the piece that follows
  std::uint32_t mayTouch : 1;  ///< do other pieces of the boundary begin there?
  std::uint32_t parent;        ///< in its set; kNone for a piece that runs to the left
};

class Boundary {
 public:
  void Clear() noexcept { pieces_.clear(); }
  [[nodiscard]] std::size_t Bytes() const noexcept { return BytesOf(pieces_); }
  void Reserve(std::size_t pieces) { pieces_.reserve(pieces); }

  [[nodiscard]] std::vector<Piece>& Pieces() noexcept { return pieces_; }

  /// A new piece; one that runs to the right starts a part of its own. Throws std::bad_alloc, as
  /// GoOn and Connect do.
  [[nodiscard]] std::uint32_t Add(bool runsRight) {
    const std::uint32_t number = NextNumber();
    pieces_.push_back({{}, 0, 0, runsRight ? number : kNone});
    return number;
  }

  /// The boundary turns at p, where it meets nothing else. @return the piece right of p, for
  /// the one left of it
  [[nodiscard]] std::uint32_t GoOn(std::uint32_t piece, GridPoint p) {
    const std::uint32_t number = NextNumber();
    const std::uint32_t parent = pieces_[piece].parent;
    if (parent != kNone) {
      pieces_.push_back({p, 0, 0, parent});
      pieces_[piece].next = number & kPieceMask;
    } else {
      pieces_.push_back({{}, piece & kPieceMask, 0, kNone});
      pieces_[piece].origin = p;
    }
    return number;
  }

  /// Joins the pieces at p, those left of it and those right of it from bottom to top.
  /// @param insideBelow  does the sector right below p belong to the region?
  void Connect(GridPoint p, std::span<const std::uint32_t> left,
               std::span<const std::uint32_t> right, bool insideBelow);

  /// At p, one piece is followed by another, which may touch pieces of the same boundary there.
  void Follow(GridPoint p, std::uint32_t arriving, std::uint32_t leaving, bool mayTouch) noexcept {
    pieces_[leaving].origin = p;
    pieces_[leaving].mayTouch = mayTouch ? 1 : 0;
    pieces_[arriving].next = leaving & kPieceMask;
  }

  /// The part of the region that a piece which runs to the right bounds.
  [[nodiscard]] std::uint32_t Find(std::uint32_t piece) noexcept {
    while (pieces_[piece].parent != piece) {
      piece = pieces_[piece].parent = pieces_[pieces_[piece].parent].parent;
    }
    return piece;
  }

  /// Two pieces that run to the right bound one part.
  void Unite(std::uint32_t a, std::uint32_t b) noexcept {
    a = Find(a);
    b = Find(b);
    if (a < b) {
      pieces_[b].parent = a;
    } else {
      pieces_[a].parent = b;
    }
  }

 private:
  // Throws std::bad_alloc where numbers end.
  [[nodiscard]] std::uint32_t NextNumber() const {
    if (pieces_.size() >= kPieceMask) throw std::bad_alloc();
    return static_cast<std::uint32_t>(pieces_.size());
  }

  std::vector<Piece> pieces_;
  std::vector<std::uint32_t> around_;
};

}  // namespace zelvan::overlay
