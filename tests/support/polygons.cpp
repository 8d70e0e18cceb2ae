// The tests' polygons (polygons.h).
#include "support/polygons.h"

#include <zelvan/region.h>

#include <algorithm>
#include <cmath>

#include "interface/region.h"
#include "polygon/contour.h"
#include "polygon/tables.h"

namespace zelvan::test {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr std::int32_t kRadius = 400000;

bool Touch(GridPoint a, GridPoint b, GridPoint c, GridPoint d) {
  const auto sign = [](std::int64_t v) { return (v > 0) - (v < 0); };
  const int s = sign(Cross(a, b, c)) * sign(Cross(a, b, d));
  const int t = sign(Cross(c, d, a)) * sign(Cross(c, d, b));
  if (s != 0 || t != 0) return s <= 0 && t <= 0;
  return std::max(std::min(a, b), std::min(c, d)) <= std::min(std::max(a, b), std::max(c, d));
}

// Removes equal neighbours; a ring that collapses becomes a triangle.
Ring Tidy(Ring ring) {
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
  return ring.size() < 3 ? Ring{{0, 0}, {2, 0}, {1, 2}} : ring;
}

Ring Counterclockwise(Ring ring) {
  if (TwiceArea(ring) < 0) std::reverse(ring.begin() + 1, ring.end());
  return ring;
}

GridPoint Polar(GridPoint middle, double radius, double angle) {
  return {middle.gx + static_cast<std::int32_t>(std::lround(radius * std::cos(angle))),
          middle.gy + static_cast<std::int32_t>(std::lround(radius * std::sin(angle)))};
}

Rings Wild(Random& random, std::int32_t size) {
  Rings rings(1 + random.Below(std::size_t{2}));
  for (Ring& ring : rings) {
    for (int n = 3 + random.Below(6); n > 0; --n) ring.push_back(PointIn(random, size));
    ring = Tidy(ring);
  }
  return rings;
}

// Columns of random heights on a random base, or a rectangle.
Rings Rectilinear(Random& random, std::int32_t size) {
  if (random.Below(2) == 0) {
    const auto [x, y] = PointIn(random, size - 1);
    return {Box(x, y, x + 1 + random.Below(size - x), y + 1 + random.Below(size - y))};
  }
  Ring ring{{0, 0}, {size, 0}};
  const std::int32_t column = (size + 39) / 40;
  for (std::int32_t x = size; x > 0; x -= column) {
    const std::int32_t y = 1 + random.Below(size);
    ring.push_back({x, y});
    ring.push_back({std::max(x - column, 0), y});
  }
  return {Tidy(ring)};
}

// Triangles right across, or whose sides all pass through a few pixels near the middle.
Rings Thin(Random& random, std::int32_t size) {
  Rings rings;
  const bool bundled = random.Below(2) == 0;
  const auto near = [&](std::int32_t v) { return std::clamp(v + random.Between(-1, 1), 0, size); };
  for (int n = 1 + random.Below(bundled ? 4 : 2); n > 0; --n) {
    GridPoint a = PointIn(random, size / 2 * 2);
    GridPoint b{size / 2 * 2 - a.gx, size / 2 * 2 - a.gy};
    if (!bundled) a.gx = 0;
    if (!bundled) b = {size, random.Below(size + 1)};
    const std::int32_t x = bundled ? near(b.gx) : random.Below(size + 1);
    rings.push_back(Tidy({a, b, {x, near(bundled ? b.gy : (a.gy + b.gy) / 2)}}));
  }
  return rings;
}

Rings Combs(Random& random, std::int32_t size) {
  Ring ring{{0, 0}, {size, random.Below(2)}};
  const std::int32_t tooth = (size + 39) / 40;
  for (std::int32_t x = size - tooth; x > 0; x -= tooth) {
    const bool up = x / tooth % 2 == 0;
    ring.push_back({x, up ? size - random.Below(3) : 1 + random.Below(2)});
  }
  return Symmetric({Tidy(ring)}, random.Below(8u), size);
}

Rings RotatedSquares(Random& random, std::int32_t size) {
  const std::int32_t u = 1 + random.Below(size / 2);
  const std::int32_t v = random.Below(size - u + 1);
  Ring ring{{v, 0}, {v + u, v}, {u, v + u}, {0, u}};
  for (GridPoint& q : ring) q = {std::clamp(q.gx, 0, size), std::min(q.gy, size)};
  return {Tidy(ring)};
}

Ring Teeth(std::int32_t n, bool cutInto, Random& random) {
  const std::int32_t step = 2 * kRadius / n;
  Ring ring{{-kRadius, -kRadius}, {-kRadius + n * step, -kRadius}};
  for (std::int32_t i = n; i >= 0; --i) {
    const std::int32_t y = (i % 2 == 0) == cutInto ? kRadius : -kRadius / 2;
    ring.push_back({-kRadius + i * step, y - random.Below(kRadius / 4)});
  }
  return Tidy(ring);
}

// A chain, and the same one above it from right to left.
Ring Band(std::int32_t n, Random& random, std::int32_t step, std::int32_t height) {
  Ring lower;
  Ring upper;
  for (std::int32_t i = 0; i < n / 2; ++i) {
    const std::int32_t y = (i % 2 == 0 ? -1 : 1) * height - random.Below(3);
    lower.push_back({i * step, y});
    upper.push_back({i * step, y + 3 + random.Below(3)});
  }
  lower.insert(lower.end(), upper.rbegin(), upper.rend());
  return Tidy(lower);
}

Rings Raster(std::int32_t holes, Random& random) {
  const auto across = static_cast<std::int32_t>(std::ceil(std::sqrt(holes)));
  Rings rings{Box(0, 0, 100 * across, 100 * across)};
  for (std::int32_t k = 0; k < holes; ++k) {
    const std::int32_t x = k % across * 100 + random.Between(5, 40);
    const std::int32_t y = k / across * 100 + random.Between(5, 40);
    const std::int32_t side = random.Between(20, 55);
    Ring hole{{x, y}, {x, y + side}, {x + side, y + side}, {x + side, y}};
    if (random.Below(2) == 0) hole.pop_back();
    rings.push_back(hole);
  }
  return rings;
}

}  // namespace

const std::vector<Family> kFamilies = {
    {"wild", Wild},
    {"simple",
     [](Random& r, std::int32_t s) { return Rings{SimplePolygon(r, s, 3 + r.Below(9))}; }},
    {"stars", [](Random& r, std::int32_t s) { return Rings{Star(r, s, 4 + r.Below(12))}; }},
    {"rectilinear", Rectilinear},
    {"thin", Thin},
    {"combs", Combs},
    {"rotated squares", RotatedSquares}};

std::vector<Rings> LargePolygons(Random& random, std::int32_t n) {
  Ring star = Star(random, 2 * kRadius, n);
  for (GridPoint& p : star) p = {p.gx - kRadius, p.gy - kRadius};
  return {{Teeth(n, false, random)},     {Teeth(n, true, random)},

          {Band(n, random, 1, kRadius)}, {Band(n, random, 1, 0)},
          Raster(n / 4 + 1, random),     {star}};
}

std::int64_t TwiceArea(const Ring& ring) {
  std::int64_t sum = 0;
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) sum += Cross(ring[0], ring[i], ring[i + 1]);
  return sum;
}

Rings Flatten(const Areas& areas) {
  Rings rings;
  for (const Rings& area : areas) rings.insert(rings.end(), area.begin(), area.end());
  return rings;
}

std::string Text(const Rings& rings) {
  std::string text;
  for (const Ring& ring : rings) {
    for (const auto& [x, y] : ring) {
      text += '(' + std::to_string(x) + ',' + std::to_string(y) + ')';
    }
    text += "; ";
  }
  return text;
}

Ring Box(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

Rings Symmetric(Rings rings, unsigned symmetry, std::int32_t size) {
  for (Ring& ring : rings) {
    for (GridPoint& p : ring) {
      if ((symmetry & 1) != 0) p.gx = size - p.gx;
      if ((symmetry & 2) != 0) p.gy = size - p.gy;
      if ((symmetry & 4) != 0) std::swap(p.gx, p.gy);
    }
    const bool turned = symmetry == 1 || symmetry == 2 || symmetry == 4 || symmetry == 7;
    if (turned) std::reverse(ring.begin() + 1, ring.end());
  }
  return rings;
}

OwnedRing RingOf(const Areas& areas) {
  OwnedRing owned;
  for (const Rings& rings : areas) {
    Area* area = NewArea();
    AppendArea(owned.first, area);
    Contour** end = &area->contours;
    for (const Ring& ring : rings) {
      *end = NewContour(ring).release();
      if (TwiceArea(ring) > 0) (*end)->flags |= CONTOUR_CCW;
      end = &(*end)->next;
    }
  }
  return owned;
}

Areas AreasOf(const Area* ring) {
  Areas areas;
  ForEachArea(ring, [&](const Area* area) {
    Rings& rings = areas.emplace_back();
    for (const Contour* c = area->contours; c != nullptr; c = c->next) {
      Ring& points = rings.emplace_back();
      ForEachVertex(c, [&](const VertexNode* v) { points.push_back(v->grid); });
    }
  });
  return areas;
}

std::unique_ptr<Shape> ShapeOf(const Areas& areas) {
  auto shape = std::make_unique<Shape>();
  shape->areas = RingOf(areas).release();
  RebuildTables(*shape);
  return shape;
}

FlatRegion FlatRegionOf(const Rings& rings) {
  std::vector<zelvan::Ring> world;
  for (const Ring& ring : rings) {
    world.emplace_back();
    for (const GridPoint p : ring) {
      world.back().push_back({static_cast<double>(p.gx), static_cast<double>(p.gy)});
    }
  }
  const double low = -GRID_OFFSET;
  const Region region(world, zelvan::FillRule::EvenOdd, zelvan::Grid({low, low}, 1));
  return region.IsEmpty() ? FlatRegion() : region.Handle()->flat;
}

Rings Mess(Random& random, std::int32_t size, std::int32_t n, const Rings& other) {
  Rings rings;
  while (static_cast<std::int32_t>(rings.size()) < n) {
    const int kind = random.Below(5);
    Ring ring = Wild(random, size)[0];
    if (kind == 0 && !rings.empty()) ring = random.Pick(rings);
    if (kind == 1 && !other.empty()) ring = random.Pick(other);
    if (kind == 2) ring = Rectilinear(random, std::min(size, 6))[0];
    const int change = random.Below(6);
    if (change < 2) std::reverse(ring.begin(), ring.end());
    if (change == 2) ring.insert(ring.end(), {ring[0], ring[1]});        // a spike
    if (change == 3) ring.insert(ring.end(), ring.begin(), ring.end());  // twice around
    rings.push_back(ring);
  }
  return rings;
}

Ring SimplePolygon(Random& random, std::int32_t size, std::int32_t n) {
  Ring ring;
  while (static_cast<std::int32_t>(ring.size()) < n) ring.push_back(PointIn(random, size));
  std::sort(ring.begin(), ring.end());
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  random.Shuffle(ring);
  // Two-opt moves, a bounded number: what is still tangled then stays so.
  bool tangled = true;
  for (int round = 0; tangled && round < 200; ++round) {
    tangled = false;
    const std::size_t k = ring.size();
    for (std::size_t i = 0; i + 2 < k; ++i) {
      for (std::size_t j = i + 2; j < k && !(i == 0 && j + 1 == k); ++j) {
        if (!Touch(ring[i], ring[i + 1], ring[j], ring[(j + 1) % k])) continue;
        std::reverse(ring.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                     ring.begin() + static_cast<std::ptrdiff_t>(j) + 1);
        tangled = true;
      }
    }
  }
  return Counterclockwise(Tidy(ring));
}

Ring Star(Random& random, std::int32_t size, std::int32_t n) {
  Ring ring;
  for (std::int32_t i = 0; i < n; ++i) {
    const double radius = size / 2 * (0.2 + 0.8 * random.Unit());
    ring.push_back(Polar({size / 2, size / 2}, radius, 2 * kPi * i / n));
  }
  return Tidy(ring);
}

}  // namespace zelvan::test
