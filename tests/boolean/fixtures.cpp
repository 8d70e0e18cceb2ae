// Operands for the engine's tests (fixtures.h).
#include "boolean/fixtures.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "polygon/contour.h"

namespace fixtures {

using oracle::Areas;
using oracle::Point;
using oracle::Ring;
using oracle::Rings;

namespace {

zelvan::Contour* ContourOf(const Ring& ring) {
  zelvan::Contour* contour = nullptr;
  for (const Point& p : ring) {
    zelvan::AppendVertex(
        contour, zelvan::GridPoint{static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)});
  }
  if (oracle::TwiceArea(ring) > 0) contour->flags |= zelvan::CONTOUR_CCW;
  return contour;
}

std::int64_t Cross(Point o, Point a, Point b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

int Sign(std::int64_t v) {
  return (v > 0) - (v < 0);
}

bool Touch(Point a, Point b, Point c, Point d) {
  const int s = Sign(Cross(a, b, c)) * Sign(Cross(a, b, d));
  const int t = Sign(Cross(c, d, a)) * Sign(Cross(c, d, b));
  if (s > 0 || t > 0) return false;
  if (s != 0 || t != 0) return true;
  return std::max(std::min(a, b), std::min(c, d)) <= std::min(std::max(a, b), std::max(c, d));
}

Ring Counterclockwise(Ring ring) {
  if (oracle::TwiceArea(ring) < 0) std::reverse(ring.begin() + 1, ring.end());
  return ring;
}

// Removes equal neighbours; a ring that collapses becomes a triangle.
Ring Tidy(Ring ring) {
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
  return ring.size() < 3 ? Ring{{0, 0}, {2, 0}, {1, 2}} : ring;
}

Rings Wild(Random& random, std::int64_t size) {
  Rings rings(static_cast<std::size_t>(1 + random.Below(2)));
  for (Ring& ring : rings) {
    for (std::int64_t n = 3 + random.Below(6); n > 0; --n) ring.push_back(random.PointIn(size));
    ring = Tidy(ring);
  }
  return rings;
}

Rings Simple(Random& random, std::int64_t size) {
  return {SimplePolygon(random, size, 3 + random.Below(9))};
}

Rings Stars(Random& random, std::int64_t size) {
  return {Star(random, size, 4 + random.Below(12))};
}

// Columns of random heights on a random base, or rectangles that may overlap.
Rings Rectilinear(Random& random, std::int64_t size) {
  if (random.Below(2) == 0) {
    const Point p = random.PointIn(size - 1);
    return {Box(p.x, p.y, p.x + 1 + random.Below(size - p.x), p.y + 1 + random.Below(size - p.y))};
  }
  Ring ring{{0, 0}, {size, 0}};
  for (std::int64_t x = size; x > 0; --x) {
    const std::int64_t y = 1 + random.Below(size);
    ring.push_back({x, y});
    ring.push_back({x - 1, y});
  }
  return {Tidy(ring)};
}

Rings Slivers(Random& random, std::int64_t size) {
  Rings rings;
  for (std::int64_t n = 1 + random.Below(2); n > 0; --n) {
    const Point a{0, random.Below(size + 1)};
    const Point b{size, random.Below(size + 1)};
    const Point c{random.Below(size + 1),
                  std::clamp<std::int64_t>((a.y + b.y) / 2 + random.Below(3) - 1, 0, size)};
    rings.push_back(Counterclockwise(Tidy({a, b, c})));
  }
  return rings;
}

// Thin triangles whose sides all pass through a few pixels near the middle.
Rings Bundles(Random& random, std::int64_t size) {
  Rings rings;
  const Point middle{size / 2, size / 2};
  for (std::int64_t n = 2 + random.Below(3); n > 0; --n) {
    const Point a = random.PointIn(size);
    const Point b{2 * middle.x - a.x, 2 * middle.y - a.y};
    const Point c{std::clamp<std::int64_t>(b.x + random.Below(3) - 1, 0, size),
                  std::clamp<std::int64_t>(b.y + random.Below(3) - 1, 0, size)};
    rings.push_back(Tidy({a, b, c}));
  }
  return rings;
}

Rings Combs(Random& random, std::int64_t size) {
  Ring ring{{0, 0}, {size, random.Below(2)}};
  for (std::int64_t x = size - 1; x > 0; --x) {
    ring.push_back({x, x % 2 == 0 ? size - random.Below(3) : 1 + random.Below(2)});
  }
  return Mirrored({Tidy(ring)}, static_cast<unsigned>(random.Below(8)), size);
}

Rings RotatedSquares(Random& random, std::int64_t size) {
  const std::int64_t u = 1 + random.Below(size / 2);
  const std::int64_t v = random.Below(size - u + 1);
  const Point p{v, 0};
  Ring ring{p, {p.x + u, p.y + v}, {p.x + u - v, p.y + v + u}, {p.x - v, p.y + u}};
  for (Point& q : ring) q = {std::clamp<std::int64_t>(q.x, 0, size), std::min(q.y, size)};
  return {Tidy(ring)};
}

}  // namespace

const std::vector<Family> kFamilies = {{"wild", Wild},       {"simple", Simple},
                                       {"stars", Stars},     {"rectilinear", Rectilinear},
                                       {"slivers", Slivers}, {"bundles", Bundles},
                                       {"combs", Combs},     {"rotated squares", RotatedSquares}};

zelvan::OwnedRing RingOf(const Rings& rings) {
  return RingOf(Areas{rings});
}

zelvan::OwnedRing RingOf(const Areas& areas) {
  zelvan::Area* first = nullptr;
  for (const Rings& rings : areas) {
    zelvan::Area* area = zelvan::NewArea();
    zelvan::AppendArea(first, area);
    zelvan::Contour** end = &area->contours;
    for (const Ring& ring : rings) {
      *end = ContourOf(ring);
      end = &(*end)->next;
    }
  }
  return zelvan::OwnedRing(first);
}

Areas AreasOf(const zelvan::Area* ring) {
  Areas areas;
  zelvan::ForEachArea(ring, [&](const zelvan::Area* area) {
    areas.emplace_back();
    for (const zelvan::Contour* c = area->contours; c != nullptr; c = c->next) {
      areas.back().emplace_back();
      zelvan::ForEachVertex(c, [&](const zelvan::VertexNode* v) {
        areas.back().back().push_back({v->grid.gx, v->grid.gy});
      });
    }
  });
  return areas;
}

Rings Flatten(const Areas& areas) {
  Rings rings;
  for (const Rings& area : areas) rings.insert(rings.end(), area.begin(), area.end());
  return rings;
}

Ring Box(std::int64_t x0, std::int64_t y0, std::int64_t x1, std::int64_t y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

Rings Mirrored(Rings rings, unsigned symmetry, std::int64_t size) {
  for (Ring& ring : rings) {
    for (Point& p : ring) {
      if ((symmetry & 1) != 0) p.x = size - p.x;
      if ((symmetry & 2) != 0) p.y = size - p.y;
      if ((symmetry & 4) != 0) std::swap(p.x, p.y);
    }
    const bool turned = symmetry == 1 || symmetry == 2 || symmetry == 4 || symmetry == 7;
    if (turned) std::reverse(ring.begin() + 1, ring.end());
  }
  return rings;
}

std::string Text(const Rings& rings) {
  std::string text;
  for (const Ring& ring : rings) {
    for (const Point& p : ring) {
      text += '(' + std::to_string(p.x) + ',' + std::to_string(p.y) + ')';
    }
    text += "; ";
  }
  return text;
}

Rings Mess(Random& random, std::int64_t size, std::int64_t n, const Rings& other) {
  Rings rings;
  const auto pick = [&](const Rings& from) {
    return from[static_cast<std::size_t>(random.Below(static_cast<std::int64_t>(from.size())))];
  };
  while (static_cast<std::int64_t>(rings.size()) < n) {
    const std::int64_t kind = random.Below(5);
    Ring ring;
    if (kind == 0 && !rings.empty()) {
      ring = pick(rings);
    } else if (kind == 1 && !other.empty()) {
      ring = pick(other);
    } else if (kind == 2) {
      ring = Rectilinear(random, std::min<std::int64_t>(size, 6))[0];
    } else {
      for (std::int64_t k = 3 + random.Below(4); k > 0; --k) ring.push_back(random.PointIn(size));
      ring = Tidy(ring);
    }
    const std::int64_t change = random.Below(6);
    if (change < 2) std::reverse(ring.begin(), ring.end());
    if (change == 2) ring.insert(ring.end(), {ring[0], ring[1], ring[0]});  // a spike
    if (change == 3) ring.insert(ring.end(), ring.begin(), ring.end());     // twice around
    rings.push_back(ring);
  }
  return rings;
}

Ring SimplePolygon(Random& random, std::int64_t size, std::int64_t n) {
  Ring ring;
  while (static_cast<std::int64_t>(ring.size()) < n) ring.push_back(random.PointIn(size));
  std::sort(ring.begin(), ring.end());
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  for (std::size_t i = ring.size(); i > 1; --i) {
    std::swap(ring[i - 1],
              ring[static_cast<std::size_t>(random.Below(static_cast<std::int64_t>(i)))]);
  }
  // Two-opt moves, a bounded number: what is still tangled then stays so.
  for (int round = 0; round < 200; ++round) {
    bool tangled = false;
    const std::size_t k = ring.size();
    for (std::size_t i = 0; i + 2 < k; ++i) {
      for (std::size_t j = i + 2; j < k && !(i == 0 && j + 1 == k); ++j) {
        if (!Touch(ring[i], ring[i + 1], ring[j], ring[(j + 1) % k])) continue;
        std::reverse(ring.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                     ring.begin() + static_cast<std::ptrdiff_t>(j) + 1);
        tangled = true;
      }
    }
    if (!tangled) break;
  }
  return Counterclockwise(Tidy(ring));
}

Ring Star(Random& random, std::int64_t size, std::int64_t n) {
  Ring ring;
  const double middle = static_cast<double>(size) / 2;
  for (std::int64_t i = 0; i < n; ++i) {
    const double angle = 2 * 3.14159265358979 * static_cast<double>(i) / static_cast<double>(n);
    const double radius = middle * static_cast<double>(20 + random.Below(81)) / 100;
    ring.push_back({std::llround(middle + radius * std::cos(angle)),
                    std::llround(middle + radius * std::sin(angle))});
  }
  return Tidy(ring);
}

}  // namespace fixtures
