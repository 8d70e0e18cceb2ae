// Curves within the range of grid points (range.h).
#include "offset/range.h"

#include <algorithm>
#include <cstdint>

#include "offset/side.h"

namespace zelvan::offset {

namespace {

constexpr double kLeast = -0x1p30;
constexpr double kGreatest = 0x1p30 - 1.0;

bool IsWithin(double v) noexcept {
  return v >= kLeast && v <= kGreatest;
}

GridPoint Nearest(WorldPoint p) noexcept {
  return {static_cast<std::int32_t>(std::clamp(p.x, kLeast, kGreatest)),
          static_cast<std::int32_t>(std::clamp(p.y, kLeast, kGreatest))};
}

// Where p to q crosses the four lines of the range, as parts of the way, ascending.
class Passages {
 public:
  Passages(WorldPoint p, WorldPoint q) noexcept {
    for (const double side : {kLeast, kGreatest}) {
      Note(p.x, q.x, side);
      Note(p.y, q.y, side);
    }
  }
  [[nodiscard]] const double* begin() const noexcept { return parts_; }
  [[nodiscard]] const double* end() const noexcept { return parts_ + count_; }

 private:
  void Note(double from, double to, double side) noexcept {
    if ((from < side) == (to < side)) return;
    const double part = (side - from) / (to - from);
    int i = count_++;
    for (; i > 0 && parts_[i - 1] > part; --i) parts_[i] = parts_[i - 1];
    parts_[i] = part;
  }

  double parts_[4] = {};
  int count_ = 0;
};

}  // namespace

void BringIntoRange(std::span<const WorldPoint> curve, std::vector<GridPoint>& ring) {
  ring.clear();
  WorldPoint p = curve.back();
  bool isIn = IsWithin(p.x) && IsWithin(p.y);
  for (const WorldPoint q : curve) {
    const bool wasIn = isIn;
    isIn = IsWithin(q.x) && IsWithin(q.y);
    if (!wasIn || !isIn) {
      for (const double part : Passages(p, q)) {
        ring.push_back(Nearest({Whole(p.x + (q.x - p.x) * part), Whole(p.y + (q.y - p.y) * part)}));
      }
    }
    ring.push_back(Nearest(q));
    p = q;
  }
}

}  // namespace zelvan::offset
