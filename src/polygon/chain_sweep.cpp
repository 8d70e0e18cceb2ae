// A sweep over the open chain of an input contour for any contact of two
// segments (self_crossing.h, step 1).
//
// Points are handled in (x, then y) order. The active segments, those with one
// end handled, stand in a set from bottom to top. As long as no contact has been
// met this order is the true one, only neighbours can meet next, and each new
// pair of neighbours is tested; so the first contact is found before the order
// could go wrong, and the sweep ends there.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <set>
#include <vector>

#include "polygon/input_predicates.h"
#include "polygon/self_crossing.h"

namespace zelvan {

namespace {

bool Before(const InputPoint& a, const InputPoint& b) noexcept {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

class ChainSweep {
 public:
  explicit ChainSweep(const PointList& list)
      : list_(list), active_(Lower{this}), place_(list.size() - 1) {}

  ChainContact Run() {
    std::vector<std::uint32_t> order(list_.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
      return Before(list_[a], list_[b]) || (!Before(list_[b], list_[a]) && a < b);
    });
    for (std::size_t k = 0; k < order.size(); ++k) {
      if (k > 0 && !Before(list_[order[k - 1]], list_[order[k]])) return ChainContact::kTouch;
      Handle(order[k]);
      if (contact_ != ChainContact::kNone) return contact_;
    }
    return ChainContact::kNone;
  }

 private:
  // The segment of an entry is exchanged in place where the chain goes on; the
  // entry's rank stays the same.
  struct Active {
    mutable std::uint32_t segment;
  };
  struct Lower {
    const ChainSweep* sweep;
    bool operator()(const Active& a, const Active& b) const {
      return sweep->IsBelow(a.segment, b.segment);
    }
  };
  using Status = std::set<Active, Lower>;
  using Place = Status::iterator;

  [[nodiscard]] const InputPoint& Left(std::uint32_t s) const {
    return std::min(list_[s], list_[s + 1], Before);
  }
  [[nodiscard]] const InputPoint& Right(std::uint32_t s) const {
    return std::max(list_[s], list_[s + 1], Before);
  }

  // Positive when p lies above segment s.
  [[nodiscard]] int SideOf(const InputPoint& p, std::uint32_t s) const {
    return SideSign(Right(s), Left(s), p);
  }

  // The order of two active segments, decided where the later one starts.
  [[nodiscard]] bool IsBelow(std::uint32_t a, std::uint32_t b) const {
    if (Before(Left(a), Left(b))) {
      const int side = SideOf(Left(b), a);
      return side != 0 ? side > 0 : SideOf(Right(b), a) > 0;
    }
    const int side = SideOf(Left(a), b);
    return side != 0 ? side < 0 : SideOf(Right(a), b) < 0;
  }

  // Point i is handled: of its one or two segments each starts or ends here.
  void Handle(std::uint32_t i) {
    std::uint32_t starts[2];
    std::uint32_t ends[2];
    int startCount = 0;
    int endCount = 0;
    const auto add = [&](std::uint32_t s, const InputPoint& other) {
      if (Before(other, list_[i])) {
        ends[endCount++] = s;
      } else {
        starts[startCount++] = s;
      }
    };
    if (i > 0) add(i - 1, list_[i - 1]);
    if (i + 1 < list_.size()) add(i, list_[i + 1]);

    if (startCount == 1 && endCount == 1) {
      Exchange(ends[0], starts[0]);
      return;
    }
    for (int k = 0; k < endCount; ++k) Remove(ends[k]);
    for (int k = 0; k < startCount; ++k) Insert(starts[k]);
  }

  void Exchange(std::uint32_t old, std::uint32_t next) {
    place_[next] = place_[old];
    place_[next]->segment = next;
    TestNeighbours(place_[next]);
  }

  void Insert(std::uint32_t s) {
    const auto [place, isNew] = active_.insert(Active{s});
    if (!isNew) {
      Meet(place->segment, s);
      return;
    }
    place_[s] = place;
    TestNeighbours(place);
  }

  void Remove(std::uint32_t s) {
    const Place above = active_.erase(place_[s]);
    if (above != active_.begin() && above != active_.end()) {
      TestPair(std::prev(above)->segment, above->segment);
    }
  }

  void TestNeighbours(Place place) {
    if (place != active_.begin()) TestPair(std::prev(place)->segment, place->segment);
    if (std::next(place) != active_.end()) TestPair(place->segment, std::next(place)->segment);
  }

  void TestPair(std::uint32_t s, std::uint32_t t) {
    const std::uint32_t first = std::min(s, t);
    const std::uint32_t second = std::max(s, t);
    if (second == first + 1 ? FoldsBack(first) : HaveCommonPoint(first, second)) {
      Meet(first, second);
    }
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
    return SideSign(list_[s], list_[s + 1], list_[s + 2]) == 0 &&
           Before(list_[s], list_[s + 1]) == Before(list_[s + 2], list_[s + 1]);
  }

  [[nodiscard]] bool HaveCommonPoint(std::uint32_t s, std::uint32_t t) const {
    if (Before(Right(s), Left(t)) || Before(Right(t), Left(s))) return false;
    const int t0 = SideOf(Left(t), s);
    const int t1 = SideOf(Right(t), s);
    if (t0 * t1 > 0) return false;
    return SideOf(Left(s), t) * SideOf(Right(s), t) <= 0;
  }

  const PointList& list_;
  Status active_;
  std::vector<Place> place_;
  ChainContact contact_ = ChainContact::kNone;
};

}  // namespace

ChainContact FindContactBySweep(const PointList& list) {
  if (list.size() < 4) return ChainContact::kNone;
  return ChainSweep(list).Run();
}

}  // namespace zelvan
