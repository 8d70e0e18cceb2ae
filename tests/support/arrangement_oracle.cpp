// The brute-force oracle (arrangement_oracle.h).
#include "support/arrangement_oracle.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace oracle {

namespace {

struct Line {
  Point a;  // a < b
  Point b;
  std::size_t operand;
  int step;  // 1 when the ring runs from a to b, else -1
};

std::int64_t Cross(Point o, Point a, Point b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

int Sign(std::int64_t v) {
  return (v > 0) - (v < 0);
}

std::int64_t FloorDiv(std::int64_t n, std::int64_t d) {
  return n / d - ((n % d != 0) && ((n < 0) != (d < 0)) ? 1 : 0);
}

std::int64_t Nearest(std::int64_t n, std::int64_t d) {
  return FloorDiv(2 * n + d, 2 * d);
}

template <class Visit>
void ForEachEdge(const Ring& ring, Visit visit) {
  for (std::size_t i = 0; i < ring.size(); ++i) {
    visit(Point(ring[i]), Point(ring[(i + 1) % ring.size()]));
  }
}

void AddLines(std::vector<Line>& lines, const Rings& rings, std::size_t operand) {
  for (const Ring& ring : rings) {
    ForEachEdge(ring, [&](Point p, Point q) {
      lines.push_back({std::min(p, q), std::max(p, q), operand, p < q ? 1 : -1});
    });
  }
}

std::optional<Point> CrossingPixel(const Line& s, const Line& t) {
  if (Sign(Cross(s.a, s.b, t.a)) * Sign(Cross(s.a, s.b, t.b)) >= 0) return std::nullopt;
  if (Sign(Cross(t.a, t.b, s.a)) * Sign(Cross(t.a, t.b, s.b)) >= 0) return std::nullopt;
  std::int64_t n = Cross(t.a, t.b, s.a);  // s.a + n / (n - m) * (s.b - s.a)
  std::int64_t d = n - Cross(t.a, t.b, s.b);
  if (d < 0) {
    n = -n;
    d = -d;
  }
  return Point{Nearest(s.a.x * d + n * (s.b.x - s.a.x), d),
               Nearest(s.a.y * d + n * (s.b.y - s.a.y), d)};
}

// Does the line take a height in [y - 1/2, y + 1/2) over [x - 1/2, x + 1/2]?
bool Meets(const Line& s, Point pixel) {
  if (s.b.x < pixel.x || pixel.x < s.a.x) return false;
  const std::int64_t dx = s.b.x - s.a.x;
  if (dx == 0) return s.a.y <= pixel.y && pixel.y <= s.b.y;
  // Twice the abscissas of the clipped ends, then 2 dx times twice the heights.
  const std::int64_t x0 = std::max(2 * s.a.x, 2 * pixel.x - 1);
  const std::int64_t x1 = std::min(2 * s.b.x, 2 * pixel.x + 1);
  const auto height = [&](std::int64_t x) {
    return 2 * dx * s.a.y + (x - 2 * s.a.x) * (s.b.y - s.a.y);
  };
  const std::int64_t low = std::min(height(x0), height(x1));
  const std::int64_t high = std::max(height(x0), height(x1));
  return high >= dx * (2 * pixel.y - 1) && low < dx * (2 * pixel.y + 1);
}

std::vector<Point> Route(const Line& s, const std::vector<Point>& hot) {
  std::vector<Point> route;
  for (const Point& p : hot) {
    if (Meets(s, p)) route.push_back(p);
  }
  if (s.b.y < s.a.y) {  // falling: within a column from the top down
    std::sort(route.begin(), route.end(),
              [](Point p, Point q) { return p.x != q.x ? p.x < q.x : p.y > q.y; });
  }
  return route;
}

Numbers Sum(Numbers n, Numbers m, int sign = 1) {
  return {n[0] + sign * m[0], n[1] + sign * m[1]};
}

// The winding numbers just below, or for a vertical edge just left of, the midpoint
// of an edge, by a ray from there to the edges.
Numbers Below(Point from, Point to, const std::vector<Edge>& edges) {
  const Point m{from.x + to.x, from.y + to.y};  // doubled
  const bool vertical = from.x == to.x;
  Numbers numbers{};
  for (const Edge& e : edges) {
    Point p{2 * e.from.x, 2 * e.from.y};
    Point q{2 * e.to.x, 2 * e.to.y};
    if (vertical) {
      std::swap(p.x, p.y);
      std::swap(q.x, q.y);
    }
    const int sign = (p < q) != vertical ? 1 : -1;
    if (q < p) std::swap(p, q);
    const Point at = vertical ? Point{m.y, m.x} : m;
    if (p.x <= at.x && at.x < q.x && Cross(p, q, at) > 0) numbers = Sum(numbers, e.step, sign);
  }
  return numbers;
}

bool Inside(Rule rule, int number) {
  if (rule == Rule::EvenOdd) return number % 2 != 0;
  if (rule == Rule::NonZero) return number != 0;
  return rule == Rule::Positive ? number > 0 : number < 0;
}

bool Combine(Numbers numbers, int op, Rules rules) {
  const bool a = Inside(rules[0], numbers[0]);
  const bool b = Inside(rules[1], numbers[1]);
  const bool results[] = {a || b, a && b, a && !b, a != b};
  return results[op];
}

std::vector<DirectedEdge> CutRing(const Ring& ring, const std::vector<Point>& hot) {
  std::vector<DirectedEdge> cut;
  ForEachEdge(ring, [&](Point p, Point q) {
    std::vector<Point> on{p, q};
    for (const Point& h : hot) {
      const auto [low, high] = std::minmax(p, q);
      if (low < h && h < high && Cross(p, q, h) == 0) on.push_back(h);
    }
    std::sort(on.begin(), on.end());
    if (q < p) std::reverse(on.begin(), on.end());
    for (std::size_t i = 1; i < on.size(); ++i) cut.push_back({on[i - 1], on[i]});
  });
  return cut;
}

}  // namespace

Arrangement Snap(const Rings& a, const Rings& b) {
  std::vector<Line> lines;
  AddLines(lines, a, 0);
  AddLines(lines, b, 1);
  Arrangement result;
  std::set<Point> hot;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    hot.insert({lines[i].a, lines[i].b});
    for (std::size_t j = 0; j < i; ++j) {
      if (const auto pixel = CrossingPixel(lines[i], lines[j])) {
        hot.insert(*pixel);
        ++result.crossings;
      }
    }
  }
  result.hot.assign(hot.begin(), hot.end());

  struct Copies {
    std::array<unsigned, 2> count;
    Numbers step;
  };
  std::map<std::pair<Point, Point>, Copies> edges;
  for (const Line& line : lines) {
    const std::vector<Point> route = Route(line, result.hot);
    for (std::size_t i = 1; i < route.size(); ++i) {
      // A falling line is routed straight down within a column, from > to.
      const bool ahead = route[i - 1] < route[i];
      Copies& copies = edges[std::minmax(route[i - 1], route[i])];
      ++copies.count[line.operand];
      copies.step[line.operand] += ahead ? line.step : -line.step;
    }
  }
  for (const auto& [ends, copies] : edges) {
    const auto [inA, inB] = copies.count;
    if (inA > 1 || inB > 1) ++result.cancelled;
    result.edges.push_back({ends.first, ends.second, copies.step, inA + inB, {}, {}});
  }
  for (Edge& e : result.edges) {
    const Numbers below = Below(e.from, e.to, result.edges);
    e.left = e.from.x == e.to.x ? below : Sum(below, e.step);
    e.right = Sum(e.left, e.step, -1);
  }
  return result;
}

Boundary BoundaryOf(const Arrangement& arrangement, int op, Rules rules) {
  Boundary boundary;
  for (const Edge& e : arrangement.edges) {
    const bool left = Combine(e.left, op, rules);
    if (left == Combine(e.right, op, rules)) continue;
    boundary.push_back(left ? DirectedEdge{e.from, e.to} : DirectedEdge{e.to, e.from});
  }
  std::sort(boundary.begin(), boundary.end());
  return boundary;
}

Boundary Cut(const Areas& areas, const std::vector<Point>& hot) {
  Boundary boundary;
  for (const Rings& rings : areas) {
    for (const Ring& ring : rings) {
      const Boundary cut = CutRing(ring, hot);
      boundary.insert(boundary.end(), cut.begin(), cut.end());
    }
  }
  std::sort(boundary.begin(), boundary.end());
  return boundary;
}

}  // namespace oracle
