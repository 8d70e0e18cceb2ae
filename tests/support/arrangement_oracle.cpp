// The brute-force oracle (arrangement_oracle.h).
#include "support/arrangement_oracle.h"

#include <algorithm>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>
#include <numeric>
#include <utility>

namespace oracle {

namespace {

using Wide = boost::multiprecision::checked_int128_t;

Wide Cross(Point o, Point a, Point b) {
  return Wide(a.x - o.x) * (b.y - o.y) - Wide(a.y - o.y) * (b.x - o.x);
}

int Sign(const Wide& v) {
  return v.sign();
}

// The sign of Cross. Doubles tell it where their error, three roundings, is less than the result.
int Turn(Point o, Point a, Point b) {
  const double left = static_cast<double>(a.x - o.x) * static_cast<double>(b.y - o.y);
  const double right = static_cast<double>(a.y - o.y) * static_cast<double>(b.x - o.x);
  const double error = 0x1p-50 * (std::fabs(left) + std::fabs(right));
  if (std::fabs(left - right) > error) return left > right ? 1 : -1;
  return Sign(Cross(o, a, b));
}

Numbers Sum(Numbers n, const Numbers& m, int sign = 1) {
  for (std::size_t i = 0; i < kMostLayers; ++i) n[i] += sign * m[i];
  return n;
}

struct Line {
  Point a;  // a < b
  Point b;
  Numbers step;                             // from the right to the left
  std::array<unsigned, kMostLayers> count;  // edges of each operand

  void Add(const Line& other, int sign = 1) {
    step = Sum(step, other.step, sign);
    for (std::size_t i = 0; i < kMostLayers; ++i) count[i] += other.count[i];
  }
};

template <class Visit>
void ForEachEdge(const Ring& ring, Visit visit) {
  for (std::size_t i = 0; i < ring.size(); ++i) {
    visit(Point(ring[i]), Point(ring[(i + 1) % ring.size()]));
  }
}

void AddLines(std::vector<Line>& lines, const Rings& rings, std::size_t operand) {
  for (const Ring& ring : rings) {
    ForEachEdge(ring, [&](Point p, Point q) {
      if (p == q) return;
      Line line{std::min(p, q), std::max(p, q), {}, {}};
      line.step[operand] = p < q ? 1 : -1;
      line.count[operand] = 1;
      lines.push_back(line);
    });
  }
}

bool IsOn(Point p, const Line& line) {
  return line.a < p && p < line.b && Turn(line.a, line.b, p) == 0;
}

// Edges that run on each other, cut at each other's ends and summed.
std::vector<Line> CutAtEnds(const std::vector<Line>& lines) {
  std::map<std::pair<Point, Point>, Line> pieces;
  for (const Line& line : lines) {
    std::set<Point> cuts{line.a, line.b};
    for (const Line& other : lines) {
      if (Turn(line.a, line.b, other.a) != 0 || Turn(line.a, line.b, other.b) != 0) continue;
      for (const Point p : {other.a, other.b}) {
        if (IsOn(p, line)) cuts.insert(p);
      }
    }
    for (auto p = cuts.begin(), q = std::next(p); q != cuts.end(); p = q++) {
      pieces.try_emplace({*p, *q}, Line{*p, *q, {}, {}}).first->second.Add(line);
    }
  }
  std::vector<Line> left;
  for (const auto& [ends, piece] : pieces) {
    if (piece.step != Numbers{}) left.push_back(piece);
  }
  return left;
}

bool CrossInside(const Line& s, const Line& t) {
  return Turn(s.a, s.b, t.a) * Turn(s.a, s.b, t.b) < 0 &&
         Turn(t.a, t.b, s.a) * Turn(t.a, t.b, s.b) < 0;
}

struct Crossing {
  Point pixel;
  bool isRounded;
};

// Of lines that cross, to the nearest grid point, halves upward.
Crossing CrossingOf(const Line& s, const Line& t) {
  Wide n = Cross(t.a, t.b, s.a);  // s.a + n / d * (s.b - s.a)
  Wide d = n - Cross(t.a, t.b, s.b);
  if (d < 0) {
    n = -n;
    d = -d;
  }
  bool isRounded = false;
  const auto nearest = [&](std::int64_t from, std::int64_t to) {
    const Wide twice = 2 * n * (to - from) + d;
    const Wide q = twice / (2 * d) - (twice % (2 * d) < 0 ? 1 : 0);
    isRounded = isRounded || n * (to - from) != q * d;
    return from + static_cast<std::int64_t>(q);
  };
  const std::int64_t x = nearest(s.a.x, s.b.x);
  const std::int64_t y = nearest(s.a.y, s.b.y);
  return {{x, y}, isRounded};
}

// Does the line take a height in [y - 1/2, y + 1/2) over [x - 1/2, x + 1/2]?
bool Meets(const Line& s, Point pixel) {
  if (s.b.x < pixel.x || pixel.x < s.a.x) return false;
  const auto [bottom, top] = std::minmax(s.a.y, s.b.y);
  if (pixel.y < bottom || top < pixel.y) return false;
  const std::int64_t dx = s.b.x - s.a.x;
  if (dx == 0) return true;
  // Twice the abscissas of the clipped ends, then 2 dx times the heights above s.a.
  const std::int64_t x0 = std::max(2 * s.a.x, 2 * pixel.x - 1);
  const std::int64_t x1 = std::min(2 * s.b.x, 2 * pixel.x + 1);
  const Wide h0 = Wide(x0 - 2 * s.a.x) * (s.b.y - s.a.y);
  const Wide h1 = Wide(x1 - 2 * s.a.x) * (s.b.y - s.a.y);
  const Wide middle = Wide(2 * dx) * (pixel.y - s.a.y);
  return std::max(h0, h1) >= middle - dx && std::min(h0, h1) < middle + dx;
}

// The lines and the hot pixels that they meet.
class Rounding {
 public:
  Rounding(std::vector<Line> lines, Bends bends)
      : lines_(std::move(lines)), isBent_(lines_.size(), bends == Bends::kAll) {
    FindHotPixels();
    FindMeetings();
    if (bends == Bends::kNeeded) Bend();
  }

  Arrangement Run() {
    std::map<std::pair<Point, Point>, Line> edges;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const std::vector<Point> route = Route(i);
      for (std::size_t k = 1; k < route.size(); ++k) {
        // A falling line is routed straight down within a column, from > to.
        const auto [from, to] = std::minmax(route[k - 1], route[k]);
        Line& edge = edges.try_emplace({from, to}, Line{from, to, {}, {}}).first->second;
        edge.Add(lines_[i], route[k - 1] < route[k] ? 1 : -1);
      }
    }
    for (const auto& [ends, edge] : edges) {
      if (*std::max_element(edge.count.begin(), edge.count.end()) > 1) ++result_.cancelled;
      const unsigned copies = std::accumulate(edge.count.begin(), edge.count.end(), 0U);
      result_.edges.push_back({edge.a, edge.b, edge.step, copies, {}, {}});
    }
    result_.bent = static_cast<std::size_t>(std::count(isBent_.begin(), isBent_.end(), true));
    return std::move(result_);
  }

 private:
  void FindHotPixels() {
    std::set<Point> hot;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      hot.insert({lines_[i].a, lines_[i].b});
      for (std::size_t j = 0; j < i; ++j) {
        if (!CrossInside(lines_[i], lines_[j])) continue;
        ++result_.crossings;
        const Crossing crossing = CrossingOf(lines_[i], lines_[j]);
        hot.insert(crossing.pixel);
        if (crossing.isRounded) isBent_[i] = isBent_[j] = true;
      }
    }
    result_.hot.assign(hot.begin(), hot.end());
  }

  void FindMeetings() {
    for (const Point pixel : result_.hot) {
      std::vector<Meeting>& at = meetings_.emplace_back();
      for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (Meets(lines_[i], pixel)) {
          at.push_back({i, Turn(lines_[i].a, lines_[i].b, pixel) == 0});
        }
      }
    }
  }

  // The least set: what must be bent, until nothing more must.
  void Bend() {
    for (bool grew = true; grew;) {
      grew = false;
      for (const std::vector<Meeting>& at : meetings_) {
        const bool meetsBent =
            std::any_of(at.begin(), at.end(), [&](const Meeting& m) { return isBent_[m.line]; });
        for (const Meeting& m : at) {
          if (!meetsBent || m.inCentre || isBent_[m.line]) continue;
          isBent_[m.line] = grew = true;
        }
      }
    }
  }

  [[nodiscard]] std::vector<Point> Route(std::size_t line) const {
    std::vector<Point> route;
    for (std::size_t k = 0; k < meetings_.size(); ++k) {
      for (const Meeting& m : meetings_[k]) {
        if (m.line == line && (m.inCentre || isBent_[line])) route.push_back(result_.hot[k]);
      }
    }
    if (lines_[line].b.y < lines_[line].a.y) {  // falling: within a column from the top down
      std::sort(route.begin(), route.end(),
                [](Point p, Point q) { return p.x != q.x ? p.x < q.x : p.y > q.y; });
    }
    return route;
  }

  struct Meeting {
    std::size_t line;
    bool inCentre;
  };

  std::vector<Line> lines_;
  std::vector<bool> isBent_;
  std::vector<std::vector<Meeting>> meetings_;  // of each hot pixel
  Arrangement result_;
};

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
    if (p.x <= at.x && at.x < q.x && Turn(p, q, at) > 0) numbers = Sum(numbers, e.step, sign);
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
      if (IsOn(h, {std::min(p, q), std::max(p, q), {}, {}})) on.push_back(h);
    }
    std::sort(on.begin(), on.end());
    if (q < p) std::reverse(on.begin(), on.end());
    for (std::size_t i = 1; i < on.size(); ++i) cut.push_back({on[i - 1], on[i]});
  });
  return cut;
}

using Walk = std::vector<Point>;  // closed, the region to its left

Wide TwiceAreaOf(const Walk& walk) {
  Wide sum = 0;
  for (std::size_t i = 2; i < walk.size(); ++i) sum += Cross(walk[0], walk[i - 1], walk[i]);
  return sum;
}

// Does a walk run around the middle of an edge that it does not have?
bool Encloses(const Walk& walk, Point from, Point to) {
  std::vector<Edge> edges;
  for (std::size_t i = 0; i < walk.size(); ++i) {
    const auto [p, q] = std::minmax(walk[i], walk[(i + 1) % walk.size()]);
    edges.push_back({p, q, {walk[i] == p ? 1 : -1}, 1, {}, {}});
  }
  return Below(std::min(from, to), std::max(from, to), edges)[0] != 0;
}

// Of the edges that leave where the edge from -> at arrives, the first one clockwise from it: the
// wedge of the region between them has no other edge in it.
const DirectedEdge& NextEdge(const Boundary& boundary, const DirectedEdge& arriving) {
  const Point from = arriving.from;
  const Point at = arriving.to;
  const auto angle = [&](Point p) {  // clockwise: less than 180 degrees, just that, more
    return 1 + Turn(at, from, p);
  };
  const DirectedEdge* best = nullptr;
  for (const DirectedEdge& e : boundary) {
    if (e.from != at) continue;
    const bool isFirst = best == nullptr || angle(e.to) < angle(best->to) ||
                         (angle(e.to) == angle(best->to) && Turn(at, e.to, best->to) < 0);
    if (isFirst) best = &e;
  }
  return *best;
}

std::vector<Walk> WalksOf(const Boundary& boundary) {
  std::vector<Walk> walks;
  std::set<DirectedEdge> done;
  for (const DirectedEdge& first : boundary) {
    if (done.contains(first)) continue;
    walks.emplace_back();
    for (DirectedEdge e = first; done.insert(e).second; e = NextEdge(boundary, e)) {
      walks.back().push_back(e.from);
    }
  }
  return walks;
}

// Takes loops between two visits of one place out of a walk, the shortest first.
std::vector<Walk> SimpleRings(Walk walk) {
  std::vector<Walk> rings;
  for (;;) {
    std::map<Point, std::size_t> visits;
    std::size_t begin = 0;
    std::size_t end = walk.size();
    for (std::size_t i = 0; i < walk.size(); ++i) {
      const auto [visit, isFirst] = visits.try_emplace(walk[i], i);
      if (!isFirst && i - visit->second < end - begin) {
        begin = visit->second;
        end = i;
      }
      visit->second = i;
    }
    const auto at = [&](std::size_t i) { return walk.begin() + static_cast<std::ptrdiff_t>(i); };
    rings.emplace_back(at(begin), at(end));
    if (end - begin == walk.size()) return rings;
    walk.erase(at(begin), at(end));
  }
}

// Keeps corners, the points that the polygon has more than once, and those that stay.
Walk Normalised(const Walk& ring, const std::map<Point, int>& visits, const std::set<Point>& stay) {
  Walk kept;
  for (std::size_t i = 0, n = ring.size(); i < n; ++i) {
    const bool isCorner = Turn(ring[(i + n - 1) % n], ring[i], ring[(i + 1) % n]) != 0;
    if (isCorner || visits.at(ring[i]) > 1 || stay.contains(ring[i])) kept.push_back(ring[i]);
  }
  std::rotate(kept.begin(), std::min_element(kept.begin(), kept.end()), kept.end());
  return kept;
}

// A polygon's rings, the outer one first, from its boundary walks.
std::vector<Walk> RingsOf(const std::vector<Walk>& walks, std::map<Point, int>& visits,
                          const std::set<Point>& stay) {
  std::vector<Walk> rings;
  for (const Walk& walk : walks) {
    for (const Point p : walk) ++visits[p];
  }
  for (const Walk& walk : walks) {
    for (const Walk& ring : SimpleRings(walk)) rings.push_back(Normalised(ring, visits, stay));
  }
  std::sort(rings.begin(), rings.end(), [&](const Walk& a, const Walk& b) {
    return std::pair(TwiceAreaOf(a) < 0, Normalised(a, visits, {})) <
           std::pair(TwiceAreaOf(b) < 0, Normalised(b, visits, {}));
  });
  return rings;
}

// The walks of each polygon: an outer one, and those that lie directly in it.
std::vector<std::vector<Walk>> PolygonsOf(const Boundary& boundary) {
  std::vector<std::vector<Walk>> polygons;
  std::vector<Walk> walks = WalksOf(boundary);
  std::sort(walks.begin(), walks.end(),
            [](const Walk& a, const Walk& b) { return TwiceAreaOf(a) > TwiceAreaOf(b); });
  for (const Walk& walk : walks) {  // outer ones first, the greatest first
    if (TwiceAreaOf(walk) > 0) {
      polygons.push_back({walk});
      continue;
    }
    const auto around = std::find_if(
        polygons.rbegin(), polygons.rend(),
        [&](const std::vector<Walk>& polygon) { return Encloses(polygon[0], walk[0], walk[1]); });
    around->push_back(walk);
  }
  return polygons;
}

void AppendPolygon(zelvan::FlatRegion& region, const std::vector<Walk>& rings,
                   const std::map<Point, int>& visits) {
  std::set<std::pair<Point, std::uint32_t>> touches;
  for (const Walk& ring : rings) {
    for (const Point p : ring) {
      const auto number = static_cast<std::uint32_t>(region.points.size());
      if (visits.at(p) > 1) touches.insert({p, number});
      region.points.push_back({static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)});
    }
    region.ringOffsets.push_back(static_cast<std::uint32_t>(region.points.size()));
  }
  region.polygonOffsets.push_back(static_cast<std::uint32_t>(region.ringOffsets.size() - 1));
  for (const auto& [place, number] : touches) region.touches.push_back(number);
}

}  // namespace

Arrangement Snap(const Rings& a, const Rings& b, Bends bends) {
  return Snap(std::vector<Rings>{a, b}, bends);
}

Arrangement Snap(const std::vector<Rings>& layers, Bends bends) {
  std::vector<Line> lines;
  for (std::size_t i = 0; i < layers.size(); ++i) AddLines(lines, layers[i], i);
  if (bends == Bends::kNeeded) lines = CutAtEnds(lines);
  Arrangement result = Rounding(std::move(lines), bends).Run();
  for (Edge& e : result.edges) {
    const Numbers below = Below(e.from, e.to, result.edges);
    e.left = e.from.x == e.to.x ? below : Sum(below, e.step);
    e.right = Sum(e.left, e.step, -1);
  }
  return result;
}

bool MeetAtEndsOnly(const Arrangement& arrangement) {
  std::vector<Line> lines;
  for (const Edge& e : arrangement.edges) lines.push_back({e.from, e.to, {}, {}});
  for (const Line& s : lines) {
    for (const Line& t : lines) {
      if (IsOn(t.a, s) || IsOn(t.b, s) || CrossInside(s, t)) return false;
    }
  }
  return true;
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

zelvan::FlatRegion RegionOf(const Boundary& boundary, const std::set<Point>& stay) {
  using Polygon = std::pair<std::vector<Walk>, std::map<Point, int>>;
  std::map<std::vector<Walk>, Polygon> polygons;  // in the order that they have without `stay`
  for (const std::vector<Walk>& walks : PolygonsOf(boundary)) {
    Polygon polygon;
    polygon.first = RingsOf(walks, polygon.second, stay);
    std::map<Point, int> visits;
    std::vector<Walk> key = RingsOf(walks, visits, {});
    polygons.emplace(std::move(key), std::move(polygon));
  }
  zelvan::FlatRegion region;
  for (const auto& [key, polygon] : polygons) AppendPolygon(region, polygon.first, polygon.second);
  return region;
}

Parts PartsOf(const Arrangement& arrangement) {
  std::map<Point, int> degrees;
  std::map<std::vector<std::uint32_t>, Boundary> boundaries;
  const auto layersOf = [](const Numbers& numbers) {
    std::vector<std::uint32_t> layers;
    for (std::uint32_t i = 0; i < kMostLayers; ++i) {
      if (numbers[i] != 0) layers.push_back(i);
    }
    return layers;
  };
  for (const Edge& e : arrangement.edges) {
    if (e.step == Numbers{}) continue;
    ++degrees[e.from];
    ++degrees[e.to];
    boundaries[layersOf(e.left)].push_back({e.from, e.to});
    boundaries[layersOf(e.right)].push_back({e.to, e.from});
  }
  std::set<Point> stay;
  for (const auto& [point, degree] : degrees) {
    if (degree > 2) stay.insert(point);
  }
  boundaries.erase(std::vector<std::uint32_t>{});
  Parts parts;
  for (auto& [layers, boundary] : boundaries) {
    std::sort(boundary.begin(), boundary.end());
    parts.emplace(layers, RegionOf(boundary, stay));
  }
  return parts;
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
