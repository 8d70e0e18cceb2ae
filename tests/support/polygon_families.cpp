// Generated polygons for tests (polygon_families.h).
#include "support/polygon_families.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "support/region_oracle.h"

namespace zelvan::test {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr std::int32_t kRadius = 400000;

void Append(Ring& ring, GridPoint p) {
  if (ring.empty() || ring.back() != p) ring.push_back(p);
}

GridPoint Polar(double radius, double angle) {
  return {static_cast<std::int32_t>(std::lround(radius * std::cos(angle))),
          static_cast<std::int32_t>(std::lround(radius * std::sin(angle)))};
}

// About 30 degrees, with lengths kept within the grid.
Region AboutThirtyDegrees(Region region) {
  for (Ring& ring : region) {
    for (GridPoint& p : ring) p = {p.gx / 16, p.gy / 16};
  }
  return Turned(region, 7, 4);
}

}  // namespace

std::vector<std::uint32_t> Random::Permutation(std::size_t n) {
  std::vector<std::uint32_t> order(n);
  std::iota(order.begin(), order.end(), 0u);
  for (std::size_t i = n; i > 1; --i) {
    std::swap(order[i - 1], order[static_cast<std::size_t>(Below(static_cast<std::int32_t>(i)))]);
  }
  return order;
}

Ring Convex(std::int32_t n, std::int32_t radius) {
  Ring ring;
  for (std::int32_t i = 0; i < n; ++i) Append(ring, Polar(radius, 2 * kPi * (i + 0.1) / n));
  return ring;
}

Ring Star(std::int32_t n, Random& random) {
  Ring ring;
  for (std::int32_t i = 0; i < n; ++i) {
    Append(ring, Polar(kRadius * (0.2 + 0.8 * random.Unit()), 2 * kPi * i / n));
  }
  return ring;
}

Ring Comb(std::int32_t teeth, bool cutInto, Random& random) {
  const std::int32_t step = 2 * kRadius / (2 * teeth);
  const std::int32_t right = -kRadius + 2 * teeth * step;
  Ring ring{{-kRadius, -kRadius}, {right, -kRadius}};
  for (std::int32_t i = 2 * teeth; i >= 0; --i) {
    const bool high = (i % 2 == 0) == cutInto;
    const std::int32_t y =
        high ? kRadius - random.Below(kRadius / 4) : -kRadius / 2 - random.Below(kRadius / 4);
    Append(ring, {-kRadius + i * step, y});
  }
  return ring;
}

Ring Spiral(std::int32_t n) {
  Ring ring;
  const double turns = std::sqrt(n) / 4 + 1;
  const double width = kRadius / (turns + 2);
  const auto side = [&](std::int32_t i, double offset) {
    const double t = std::sqrt((i + 1.0) / n);
    Append(ring, Polar(width * (turns * t + offset), 2 * kPi * turns * t));
  };
  for (std::int32_t i = 0; i < n; ++i) side(i, 1.0);
  for (std::int32_t i = n - 1; i >= 0; --i) side(i, 0.6);
  return ring;
}

Ring Zigzag(std::int32_t n, Random& random) {
  Ring lower;
  Ring upper;
  for (std::int32_t i = 0; i < n; ++i) {
    const std::int32_t x = -kRadius + i * (2 * kRadius / n);
    const std::int32_t y = (i % 2 == 0 ? -1 : 1) * (kRadius / 2 + random.Below(1000));
    lower.push_back({x, y});
    upper.push_back({x, y + 1 + random.Below(500)});
  }
  lower.insert(lower.end(), upper.rbegin(), upper.rend());
  return lower;
}

Ring Rectilinear(std::int32_t n, Random& random) {
  Ring ring;
  for (std::int32_t i = 0; i <= n; ++i) ring.push_back({10 * i, 0});
  std::int32_t y = 10 * random.Between(1, 5);
  for (std::int32_t i = n; i > 0; --i) {
    Append(ring, {10 * i, y});
    if (random.Below(3) == 0) Append(ring, {10 * i - 5, y});
    Append(ring, {10 * i - 10, y});
    const std::int32_t old = y;
    y = 10 * random.Between(1, 5);
    if (i > 1 && random.Below(3) == 0) Append(ring, {10 * i - 10, (old + y) / 2});
  }
  return ring;
}

Ring FewRows(std::int32_t n, Random& random) {
  Ring ring;
  for (std::int32_t i = 0; i < n; ++i) Append(ring, {i, -random.Below(3)});
  for (std::int32_t i = n - 1; i >= 0; --i) Append(ring, {i, 1 + random.Below(3)});
  return ring;
}

Ring Extremes(std::int32_t n, Random& random) {
  constexpr std::int32_t low = -GRID_OFFSET;
  constexpr std::int32_t high = GRID_MAX - GRID_OFFSET;
  const std::int32_t step = GRID_MAX / (n + 1);
  Ring ring{{low, low}};
  const auto inward = [&] { return random.Below(4) * random.Below(step / 2); };
  for (std::int32_t i = 1; i <= n; ++i) ring.push_back({low + i * step, low + inward()});
  ring.push_back({high, low});
  for (std::int32_t i = 1; i <= n; ++i) ring.push_back({high - inward(), low + i * step});
  ring.push_back({high, high});
  for (std::int32_t i = n; i >= 1; --i) ring.push_back({low + i * step, high - inward()});
  ring.push_back({low, high});
  for (std::int32_t i = n; i >= 1; --i) ring.push_back({low + inward(), low + i * step});
  return ring;
}

Region WithHoles(std::int32_t holes, Random& random) {
  const auto across = static_cast<std::int32_t>(std::ceil(std::sqrt(holes)));
  const std::int32_t size = 100;
  const std::int32_t side = across * size;
  Region region{{{0, 0}, {side, 0}, {side, side}, {0, side}}};
  for (std::int32_t k = 0; k < holes; ++k) {
    const GridPoint corner{k % across * size, k / across * size};
    const auto at = [&](std::int32_t x, std::int32_t y) {
      return GridPoint{corner.gx + x, corner.gy + y};
    };
    const std::int32_t low = random.Between(5, 40);
    const std::int32_t high = random.Between(60, 95);
    if (random.Below(2) == 0) {
      region.push_back({at(low, low), at(low, high), at(high, high), at(high, low)});
    } else {
      region.push_back({at(low, random.Between(5, 40)), at(random.Between(45, 55), high),
                        at(high, random.Between(5, 40))});
    }
  }
  return region;
}

// ceiling  +-----------------+
//          +--. .---. .---+  |
//              v     v    |  |
//          +--------------+  |     the tips are straight above the block's upper side,
//          +-----------------+     on it, or on a vertex of it
Ring Touching(std::int32_t teeth, Random& random) {
  const std::int32_t right = 20 * teeth + 20;
  Ring ring{{0, 0}, {right, 0}, {right, 100}, {0, 100}, {0, 80}};
  Ring side{{0, 20}};  // the block's upper side, from the left
  for (std::int32_t i = 0; i < teeth; ++i) {
    const std::int32_t x = 20 * i + 10;
    const std::int32_t kind = random.Below(4);
    const GridPoint tip{x, kind == 0 ? random.Between(21, 40) : 20};
    if (kind == 2) side.push_back({x - 5, random.Between(5, 19)});
    if (kind == 2) side.push_back(tip);
    if (kind == 2) side.push_back({x + 5, random.Between(5, 19)});
    ring.push_back({x - random.Between(2, 8), 80});
    ring.push_back(tip);
    if (kind == 3) {  // a pocket between two tips on one point
      ring.push_back({x - 1, 60});
      ring.push_back({x + 1, 60});
      ring.push_back(tip);
    }
    ring.push_back({x + random.Between(2, 8), 80});
  }
  ring.push_back({right - 10, 80});
  ring.push_back({right - 10, 20});
  ring.insert(ring.end(), side.rbegin(), side.rend());
  return ring;
}

const std::vector<Family>& Families() {
  static const std::vector<Family> families{
      {"convex", [](Random& r) { return Region{Convex(r.Between(3, 80), kRadius)}; }},
      {"star", [](Random& r) { return Region{Star(r.Between(5, 200), r)}; }},
      {"comb", [](Random& r) { return Region{Comb(r.Between(1, 60), false, r)}; }},
      {"cut comb", [](Random& r) { return Region{Comb(r.Between(1, 60), true, r)}; }},
      {"turned comb",
       [](Random& r) { return AboutThirtyDegrees({Comb(r.Between(1, 60), r.Below(2) == 0, r)}); }},
      {"spiral", [](Random& r) { return Region{Spiral(r.Between(20, 200))}; }},
      {"zigzag", [](Random& r) { return Region{Zigzag(r.Between(2, 100), r)}; }},
      {"rectilinear", [](Random& r) { return Region{Rectilinear(r.Between(1, 40), r)}; }},
      {"turned rectilinear",
       [](Random& r) { return Turned({Rectilinear(r.Between(1, 40), r)}, 7, 4); }},
      {"few rows", [](Random& r) { return Region{FewRows(r.Between(2, 100), r)}; }},
      {"extremes", [](Random& r) { return Region{Extremes(r.Between(0, 30), r)}; }},
      {"holes", [](Random& r) { return WithHoles(r.Between(1, 50), r); }},
      {"turned holes", [](Random& r) { return Turned(WithHoles(r.Between(1, 50), r), 7, 4); }},
      {"touching", [](Random& r) { return Region{Touching(r.Between(1, 12), r)}; }},
      {"turned touching",
       [](Random& r) {
         return Turned({Touching(r.Between(1, 12), r)}, r.Between(-20, 20), r.Between(1, 20));
       }},
  };
  return families;
}

void ForEachSmallRing(std::int32_t side, std::int32_t n, bool touching,
                      const std::function<void(const Ring&)>& visit) {
  Ring ring;
  std::vector<bool> used(static_cast<std::size_t>(side * side));
  const auto extend = [&](const auto& self, std::int32_t lowest) -> void {
    if (static_cast<std::int32_t>(ring.size()) == n) {
      if (TwiceSigned(ring) <= 0) return;
      if (touching ? BoundsAnArea({ring}) : IsSimple({ring})) visit(ring);
      return;
    }
    for (std::int32_t k = lowest; k < side * side; ++k) {
      if (used[static_cast<std::size_t>(k)]) continue;
      used[static_cast<std::size_t>(k)] = true;
      ring.push_back({k % side, k / side});
      self(self, ring.size() == 1 ? k : lowest);
      ring.pop_back();
      used[static_cast<std::size_t>(k)] = false;
    }
  };
  extend(extend, 0);
}

}  // namespace zelvan::test
