// Bridges and ears (ears.h).
#include "triangulation/ears.h"

#include <algorithm>
#include <bit>
#include <span>

#include "triangulation/sweep_records.h"

namespace VORNEX {

namespace {

// An edge that a line along y meets, from its first end to the last, in the order of points.
struct Crossed {
  GridPoint first;
  GridPoint last;
};

// Of two that do not meet but at ends.
bool IsBelow(const Crossed& e, const Crossed& f) noexcept {
  if (e.first == f.first) return zelvan::Cross(f.first, f.last, e.last) < 0;
  return e.first < f.first ? zelvan::Cross(e.first, e.last, f.first) > 0
                           : zelvan::Cross(f.first, f.last, e.first) < 0;
}

// A ring of slots, each of which holds a vertex; those at the ends of bridges stand in several.
class EarCutter {
 public:
  EarCutter(std::uint32_t* corners, std::uint32_t* twins) noexcept
      : corners_(corners), twins_(twins) {}

  void AddOuter(std::span<const GridPoint> ring, std::uint32_t first) noexcept {
    AddRing(ring, first);
  }
  // @return false where nothing before the hole sees it
  [[nodiscard]] bool AddHole(std::span<const GridPoint> ring, std::uint32_t first) noexcept;
  [[nodiscard]] bool Run() noexcept;

 private:
  static std::uint64_t Bit(std::uint32_t slot) noexcept { return std::uint64_t{1} << slot; }

  void AddRing(std::span<const GridPoint> ring, std::uint32_t first) noexcept;
  [[nodiscard]] std::uint32_t AddSlot(std::uint32_t copied) noexcept;
  void Join(std::uint32_t from, std::uint32_t to) noexcept;
  [[nodiscard]] std::uint32_t Seeing(GridPoint p) const noexcept;
  void FindAround(GridPoint p, Crossed& lower, Crossed& upper) const noexcept;
  [[nodiscard]] bool OpensTo(std::uint32_t slot, GridPoint p) const noexcept;

  [[nodiscard]] bool IsConvex(std::uint32_t slot) const noexcept {
    return zelvan::Cross(points_[prev_[slot]], points_[slot], points_[next_[slot]]) > 0;
  }
  [[nodiscard]] bool IsEar(std::uint32_t slot) const noexcept;
  void Cut(std::uint32_t slot) noexcept;
  void LinkEdge(std::uint32_t side, std::uint32_t slot) noexcept;

  std::uint32_t slots_ = 0;
  std::uint32_t left_ = 0;  // in the ring
  std::uint32_t count_ = 0;
  std::uint64_t blocking_ = 0;  // a bit a slot: its corner is not convex
  bool bridged_ = false;
  std::uint32_t* corners_;
  std::uint32_t* twins_;
  GridPoint points_[kMostForEars];
  std::uint32_t numbers_[kMostForEars];
  std::uint32_t prev_[kMostForEars];
  std::uint32_t next_[kMostForEars];
  // Of the edge that starts in a slot: the side across, if it is known; and of a bridge where the
  // way back starts.
  std::uint32_t across_[kMostForEars];
  std::uint32_t back_[kMostForEars];
};

void EarCutter::AddRing(std::span<const GridPoint> ring, std::uint32_t first) noexcept {
  const std::uint32_t begin = slots_;
  for (const GridPoint p : ring) {
    points_[slots_] = p;
    numbers_[slots_] = first++;
    prev_[slots_] = slots_ - 1;
    next_[slots_] = slots_ + 1;
    across_[slots_] = back_[slots_] = kNone;
    ++slots_;
  }
  Join(slots_ - 1, begin);
}

std::uint32_t EarCutter::AddSlot(std::uint32_t copied) noexcept {
  points_[slots_] = points_[copied];
  numbers_[slots_] = numbers_[copied];
  across_[slots_] = across_[copied];
  back_[slots_] = back_[copied];
  if (back_[copied] != kNone) back_[back_[copied]] = slots_;
  return slots_++;
}

void EarCutter::Join(std::uint32_t from, std::uint32_t to) noexcept {
  next_[from] = to;
  prev_[to] = from;
}

// The copies take over the edges that leave.
bool EarCutter::AddHole(std::span<const GridPoint> ring, std::uint32_t first) noexcept {
  const std::uint32_t seeing = Seeing(ring[0]);
  if (seeing == kNone) return false;
  const std::uint32_t hole = slots_;
  AddRing(ring, first);
  const std::uint32_t after = next_[seeing];
  const std::uint32_t last = prev_[hole];
  const std::uint32_t seeingAgain = AddSlot(seeing);
  const std::uint32_t holeAgain = AddSlot(hole);
  Join(seeingAgain, after);
  Join(last, holeAgain);
  Join(seeing, hole);
  Join(holeAgain, seeingAgain);
  across_[seeing] = across_[holeAgain] = kNone;
  back_[seeing] = holeAgain;
  back_[holeAgain] = seeing;
  bridged_ = true;
  return true;
}

// Just before p, in the order of points, p is between two edges: the last place between these
// before p, an end of them at the least, sees p. Rings that are not joined yet lie behind p.
std::uint32_t EarCutter::Seeing(GridPoint p) const noexcept {
  Crossed lower{p, p};
  Crossed upper{p, p};
  FindAround(p, lower, upper);
  if (lower.first == p || upper.first == p) return kNone;
  GridPoint last = std::max(lower.first, upper.first);
  for (std::uint32_t slot = 0; slot < slots_; ++slot) {
    const GridPoint q = points_[slot];
    if (last < q && q < p && zelvan::Cross(lower.first, lower.last, q) > 0 &&
        zelvan::Cross(upper.first, upper.last, q) < 0) {
      last = q;
    }
  }
  for (std::uint32_t slot = 0; slot < slots_; ++slot) {
    if (points_[slot] == last && OpensTo(slot, p)) return slot;
  }
  return kNone;
}

// The edges right below and above p, of those that start before p and end behind it.
void EarCutter::FindAround(GridPoint p, Crossed& lower, Crossed& upper) const noexcept {
  for (std::uint32_t slot = 0; slot < slots_; ++slot) {
    const GridPoint from = points_[slot];
    const GridPoint to = points_[next_[slot]];
    if ((from < p) == (to < p)) continue;
    const Crossed edge = from < to ? Crossed{from, to} : Crossed{to, from};
    if (zelvan::Cross(edge.first, edge.last, p) > 0) {
      if (lower.first == p || IsBelow(lower, edge)) lower = edge;
    } else {
      if (upper.first == p || IsBelow(edge, upper)) upper = edge;
    }
  }
}

// Does p lie in the direction of the corner?
bool EarCutter::OpensTo(std::uint32_t slot, GridPoint p) const noexcept {
  const bool leftOfNext = zelvan::Cross(points_[slot], points_[next_[slot]], p) > 0;
  const bool leftOfPrev = zelvan::Cross(points_[prev_[slot]], points_[slot], p) > 0;
  return IsConvex(slot) ? leftOfNext && leftOfPrev : leftOfNext || leftOfPrev;
}

// Every second slot is tried, so that no corner gets all triangles.
bool EarCutter::Run() noexcept {
  left_ = slots_;
  std::uint32_t slot = 0;
  do {
    if (!IsConvex(slot)) blocking_ |= Bit(slot);
    slot = next_[slot];
  } while (slot != 0);
  for (std::uint32_t tried = 0; left_ > 3; slot = next_[slot]) {
    if (IsEar(slot)) {
      Cut(slot);
      slot = next_[slot];
      tried = 0;
    } else if (++tried > left_) {
      return false;
    }
  }
  if (!IsConvex(slot)) return false;
  const std::uint32_t last[] = {prev_[slot], slot, next_[slot]};
  for (std::uint32_t k = 0; k < 3; ++k) {
    corners_[3 * count_ + k] = numbers_[last[k]];
    LinkEdge(3 * count_ + k, last[k]);
  }
  return true;
}

bool EarCutter::IsEar(std::uint32_t slot) const noexcept {
  if ((blocking_ & Bit(slot)) != 0) return false;
  const std::uint32_t before = prev_[slot];
  const std::uint32_t after = next_[slot];
  const GridPoint a = points_[before];
  const GridPoint b = points_[slot];
  const GridPoint c = points_[after];
  for (std::uint64_t rest = blocking_ & ~(Bit(before) | Bit(after)); rest != 0; rest &= rest - 1) {
    const GridPoint p = points_[std::countr_zero(rest)];
    if (zelvan::Cross(a, b, p) >= 0 && zelvan::Cross(b, c, p) >= 0 && zelvan::Cross(c, a, p) >= 0 &&
        !(bridged_ && (p == a || p == b || p == c))) {
      return false;
    }
  }
  return true;
}

void EarCutter::Cut(std::uint32_t slot) noexcept {
  const std::uint32_t before = prev_[slot];
  const std::uint32_t after = next_[slot];
  const std::uint32_t side = 3 * count_++;
  corners_[side] = numbers_[before];
  corners_[side + 1] = numbers_[slot];
  corners_[side + 2] = numbers_[after];
  LinkEdge(side, before);
  LinkEdge(side + 1, slot);
  across_[before] = side + 2;
  Join(before, after);
  --left_;
  for (const std::uint32_t end : {before, after}) {
    if ((blocking_ & Bit(end)) != 0 && IsConvex(end)) blocking_ &= ~Bit(end);
  }
}

// A side of a triangle takes the place of the edge that starts in a slot.
void EarCutter::LinkEdge(std::uint32_t side, std::uint32_t slot) noexcept {
  if (twins_ == nullptr) return;
  const std::uint32_t twin = across_[slot];
  twins_[side] = twin;
  if (twin != kNone) {
    twins_[twin] = side;
  } else if (back_[slot] != kNone) {
    across_[back_[slot]] = side;
  }
}

}  // namespace

bool CutEars(const zelvan::FlatRegion& region, std::size_t polygon, std::uint32_t* corners,
             std::uint32_t* twins) noexcept {
  EarCutter cutter(corners, twins);
  const std::uint32_t outer = region.polygonOffsets[polygon];
  const std::uint32_t end = region.polygonOffsets[polygon + 1];
  cutter.AddOuter(region.Ring(outer), region.ringOffsets[outer]);
  for (std::uint32_t i = outer + 1; i < end; ++i) {
    if (!cutter.AddHole(region.Ring(i), region.ringOffsets[i])) return false;
  }
  return cutter.Run();
}

}  // namespace VORNEX
