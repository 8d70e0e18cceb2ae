// A sweep over the open chain of an input contour for any contact of two
// segments (self_crossing.h, step 1).
//
// Points are handled in (x, then y) order. The active segments, those with one
// end handled, stand in a list from bottom to top. As long as no contact has been
// met this order is the true one, only neighbours can meet next, and each new
// pair of neighbours is tested; so the first contact is found before the order
// could go wrong, and the sweep ends there.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "memory/ordered_list.h"
#include "polygon/input_predicates.h"
#include "polygon/key_sort.h"
#include "polygon/nearness.h"
#include "polygon/self_crossing.h"

namespace zelvan {

namespace {

bool Before(const WorldPoint& a, const WorldPoint& b) noexcept {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

// The points in (x, then y) order: by their places on a raster of 2^40 columns, and
// those of one column by comparison. Halves keep the differences finite.
std::vector<std::uint32_t> FromTheLeft(const PointList& list) {
  const auto [lowest, highest] = std::minmax_element(
      list.begin(), list.end(), [](const InputPoint& a, const InputPoint& b) { return a.x < b.x; });
  const double low = lowest->x / 2;
  const double extent = highest->x / 2 - low;
  constexpr double lastColumn = (std::uint64_t{1} << kKeyBits) - 1;
  // In two halves, since 32-bit targets take a number of 64 bits out of a double by way
  // of the x87 unit.
  const auto columnOf = [&](double x) {
    const double column = (x / 2 - low) / extent * lastColumn;
    const auto high = static_cast<std::int32_t>(column * 0x1p-20);
    const auto rest = static_cast<std::int32_t>(column - high * 0x1p20);
    return static_cast<std::uint64_t>(high) << 20 | static_cast<std::uint64_t>(rest);
  };
  KeyOrder order = SortByKey(static_cast<std::uint32_t>(list.size()), [&](std::uint32_t i) {
    return extent > 0.0 ? columnOf(list[i].x) : 0;
  });
  for (const KeyOrder::Run& run : order.equal) {
    const auto column = std::span(order.positions).subspan(run.begin, run.end - run.begin);
    std::sort(column.begin(), column.end(), [&](std::uint32_t i, std::uint32_t j) {
      return Before(Planar(list[i]), Planar(list[j]));
    });
  }
  return std::move(order.positions);
}

class ChainSweep {
 public:
  explicit ChainSweep(const PointList& list)
      : list_(list), order_(FromTheLeft(list)), place_(list.size() - 1, kNone) {}

  ChainContact Run() {
    const std::vector<std::uint32_t>& order = order_;
    for (std::size_t k = 0; k < order.size(); ++k) {
      if (k > 0 && !Before(At(order[k - 1]), At(order[k]))) return ChainContact::kTouch;
      Handle(order[k]);
      if (contact_ != ChainContact::kNone) return contact_;
    }
    return nearness_.has_value() ? ChainContact::kNoneOnGrid : ChainContact::kNone;
  }

  // Looks whether segments come so near that they could touch on the grid, before Run.
  void AskForGrid() {
    constexpr std::size_t kTooMany = std::size_t{1} << 16;  // some of them are close anyway
    if (list_.size() < kTooMany) nearness_.emplace(list_, order_);
    if (nearness_.has_value() && nearness_->AnyClose()) nearness_.reset();
  }

 private:
  // An active segment. Points are copied: a search reads nothing but the list. Where the
  // chain goes on, the segment is exchanged in place; its rank stays the same.
  struct Ends {
    WorldPoint left;
    WorldPoint right;
    std::uint32_t segment;
  };
  using Status = OrderedList<Ends>;
  static constexpr std::uint32_t kNone = Status::kNone;

  [[nodiscard]] WorldPoint At(std::uint32_t i) const { return Planar(list_[i]); }

  [[nodiscard]] Ends EndsOf(std::uint32_t s) const {
    const WorldPoint a = At(s);
    const WorldPoint b = At(s + 1);
    return Before(a, b) ? Ends{a, b, s} : Ends{b, a, s};
  }

  // Positive when p lies above segment s.
  [[nodiscard]] static int SideOf(WorldPoint p, const Ends& s) {
    return SideSign(s.right, s.left, p);
  }

  // Point i is handled: of its one or two segments each starts or ends here.
  void Handle(std::uint32_t i) {
    std::uint32_t starts[2];
    std::uint32_t ends[2];
    int startCount = 0;
    int endCount = 0;
    const auto add = [&](std::uint32_t s, WorldPoint other) {
      if (Before(other, At(i))) {
        ends[endCount++] = s;
      } else {
        starts[startCount++] = s;
      }
    };
    if (i > 0) add(i - 1, At(i - 1));
    if (i + 1 < list_.size()) add(i, At(i + 1));

    if (startCount == 1 && endCount == 1) {
      Exchange(ends[0], starts[0]);
    } else {
      for (int k = 0; k < endCount; ++k) Remove(ends[k]);
      for (int k = 0; k < startCount; ++k) Insert(starts[k]);
    }
    for (int k = 0; k < startCount; ++k) {
      if (contact_ != ChainContact::kNone) return;
      LookNear(i, active_.Before(place_[starts[k]]));
      LookNear(i, active_.After(place_[starts[k]]));
    }
  }

  // The segment at `place` is next to point i.
  void LookNear(std::uint32_t i, std::uint32_t place) {
    if (!nearness_.has_value() || place == kNone) return;
    const std::uint32_t s = active_[place].segment;
    if (s != i && s + 1 != i && nearness_->MayBeNear(s, i)) nearness_.reset();
  }

  void Exchange(std::uint32_t old, std::uint32_t next) {
    const std::uint32_t place = std::exchange(place_[old], kNone);
    place_[next] = place;
    active_[place] = EndsOf(next);
    TestNeighbours(place);
  }

  // Its left end is the point that is handled, so no active segment starts right of it.
  void Insert(std::uint32_t s) {
    const Ends ends = EndsOf(s);
    const Status::Place found = active_.Find(
        [&](const Ends& other) {
          const int side = SideOf(ends.left, other);
          return side != 0 ? side : SideOf(ends.right, other);
        },
        Nearby(s));
    if (found.at != kNone) {
      Meet(active_[found.at].segment, s);
      return;
    }
    place_[s] = active_.Insert(ends, found.before, found.after);
    TestNeighbours(place_[s]);
  }

  // An active segment close by in the chain, to begin the search with.
  [[nodiscard]] std::uint32_t Nearby(std::uint32_t s) const {
    constexpr std::uint32_t reach = 8;
    for (std::uint32_t d = 1; d <= reach; ++d) {
      if (s >= d && place_[s - d] != kNone) return place_[s - d];
      if (s + d < place_.size() && place_[s + d] != kNone) return place_[s + d];
    }
    return kNone;
  }

  void Remove(std::uint32_t s) {
    const std::uint32_t place = std::exchange(place_[s], kNone);
    const std::uint32_t below = active_.Before(place);
    const std::uint32_t above = active_.After(place);
    const std::uint32_t end = Before(At(s), At(s + 1)) ? s + 1 : s;
    LookNear(end, below);
    LookNear(end, above);
    active_.Remove(place);
    if (below != kNone && above != kNone) TestPair(active_[below], active_[above]);
  }

  void TestNeighbours(std::uint32_t place) {
    const std::uint32_t below = active_.Before(place);
    const std::uint32_t above = active_.After(place);
    if (below != kNone) TestPair(active_[below], active_[place]);
    if (above != kNone) TestPair(active_[place], active_[above]);
  }

  void TestPair(const Ends& s, const Ends& t) {
    const std::uint32_t first = std::min(s.segment, t.segment);
    const std::uint32_t second = std::max(s.segment, t.segment);
    if (second == first + 1 ? FoldsBack(first) : HaveCommonPoint(s, t)) Meet(first, second);
  }

  void Meet(std::uint32_t s, std::uint32_t t) {
    const std::uint32_t first = std::min(s, t);
    const std::uint32_t second = std::max(s, t);
    const bool cross = second > first + 1 && SegmentsCross(list_[first], list_[first + 1],
                                                           list_[second], list_[second + 1]);
    if (contact_ != ChainContact::kCrossing) {
      contact_ = cross ? ChainContact::kCrossing : ChainContact::kTouch;
    }
  }

  // Do segments s and s + 1 run back over each other?
  [[nodiscard]] bool FoldsBack(std::uint32_t s) const {
    return SideSign(At(s), At(s + 1), At(s + 2)) == 0 &&
           Before(At(s), At(s + 1)) == Before(At(s + 2), At(s + 1));
  }

  [[nodiscard]] static bool HaveCommonPoint(const Ends& s, const Ends& t) {
    if (s.right.x < t.left.x || t.right.x < s.left.x) return false;
    if (std::max(s.left.y, s.right.y) < std::min(t.left.y, t.right.y)) return false;
    if (std::max(t.left.y, t.right.y) < std::min(s.left.y, s.right.y)) return false;
    if (SideOf(t.left, s) * SideOf(t.right, s) > 0) return false;
    return SideOf(s.left, t) * SideOf(s.right, t) <= 0;
  }

  const PointList& list_;
  std::vector<std::uint32_t> order_;
  std::optional<Nearness> nearness_;  // as long as no two segments have come near each other
  Status active_;
  std::vector<std::uint32_t> place_;  // of each segment in the list while it is active
  ChainContact contact_ = ChainContact::kNone;
};

}  // namespace

ChainContact FindContactBySweep(const PointList& list, bool asksForGrid) {
  if (list.size() < 4) return ChainContact::kNone;
  ChainSweep sweep(list);
  if (asksForGrid) sweep.AskForGrid();
  return sweep.Run();
}

}  // namespace zelvan
