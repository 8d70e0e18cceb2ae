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

bool Before(const WorldPoint& a, const WorldPoint& b) noexcept {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

class ChainSweep {
 public:
  explicit ChainSweep(const PointList& list) : list_(list), place_(list.size() - 1) {}

  ChainContact Run() {
    std::vector<Event> events(list_.size());
    for (std::uint32_t i = 0; i < events.size(); ++i) events[i] = {At(i), i};
    std::sort(events.begin(), events.end(),
              [](const Event& a, const Event& b) { return Before(a.point, b.point); });
    for (std::size_t k = 0; k < events.size(); ++k) {
      if (k > 0 && !Before(events[k - 1].point, events[k].point)) return ChainContact::kTouch;
      Handle(events[k].index);
      if (contact_ != ChainContact::kNone) return contact_;
    }
    return ChainContact::kNone;
  }

 private:
  struct Event {
    WorldPoint point;
    std::uint32_t index;
  };
  // Points are copied into the entries: a search reads nothing but entries.
  struct Ends {
    WorldPoint left;
    WorldPoint right;
    std::uint32_t segment;
  };
  // The segment of an entry is exchanged in place where the chain goes on; the
  // entry's rank stays the same.
  struct Active {
    mutable Ends ends;
  };
  struct Lower {
    bool operator()(const Active& a, const Active& b) const { return IsBelow(a.ends, b.ends); }
  };
  using Status = std::set<Active, Lower>;
  using Place = Status::iterator;

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

  // The order of two active segments, decided where the later one starts.
  [[nodiscard]] static bool IsBelow(const Ends& a, const Ends& b) {
    if (Before(a.left, b.left)) {
      const int side = SideOf(b.left, a);
      return side != 0 ? side > 0 : SideOf(b.right, a) > 0;
    }
    const int side = SideOf(a.left, b);
    return side != 0 ? side < 0 : SideOf(a.right, b) < 0;
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
      return;
    }
    for (int k = 0; k < endCount; ++k) Remove(ends[k]);
    for (int k = 0; k < startCount; ++k) Insert(starts[k]);
  }

  void Exchange(std::uint32_t old, std::uint32_t next) {
    place_[next] = place_[old];
    place_[next]->ends = EndsOf(next);
    TestNeighbours(place_[next]);
  }

  void Insert(std::uint32_t s) {
    const auto [place, isNew] = active_.insert(Active{EndsOf(s)});
    if (!isNew) {
      Meet(place->ends.segment, s);
      return;
    }
    place_[s] = place;
    TestNeighbours(place);
  }

  void Remove(std::uint32_t s) {
    const Place above = active_.erase(place_[s]);
    if (above != active_.begin() && above != active_.end()) {
      TestPair(std::prev(above)->ends, above->ends);
    }
  }

  void TestNeighbours(Place place) {
    if (place != active_.begin()) TestPair(std::prev(place)->ends, place->ends);
    if (std::next(place) != active_.end()) TestPair(place->ends, std::next(place)->ends);
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
    if (Before(s.right, t.left) || Before(t.right, s.left)) return false;
    if (SideOf(t.left, s) * SideOf(t.right, s) > 0) return false;
    return SideOf(s.left, t) * SideOf(s.right, t) <= 0;
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
