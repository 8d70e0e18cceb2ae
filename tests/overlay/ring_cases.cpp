// Random operations on rings (ring_cases.h).
#include "overlay/ring_cases.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvan::test {

namespace {

using Index = std::ptrdiff_t;

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : random_(seed) {
    const int third = random_.Below(3);
    size_ = std::int64_t{1} << random_.Between(third == 0 ? 28 : 2, third == 1 ? 5 : 31);
    steps_ = 1 + random_.Below(6);
    jitter_ = std::max(0, random_.Between(-3, 3));
    mood_ = random_.Below(6);
    isCalm_ = random_.Below(4) == 0;
  }

  RingCase Run() {
    RingCase made;
    made.rules = {FillRule(random_.Below(4)), FillRule(random_.Below(4))};
    const int most = random_.Below(isCalm_ ? 2 : 16) == 0 ? 48 : 4 + random_.Below(18);
    for (int edges = 0; edges < most;) {
      Ring ring = Changed(AnyRing());
      edges += static_cast<int>(ring.size());
      rings_.push_back(ring);
      made.operands[random_.Below(std::size_t{2})].push_back(std::move(ring));
    }
    return made;
  }

 private:
  std::int32_t InRange(std::int64_t v) const {
    return static_cast<std::int32_t>(std::clamp(v, -size_ / 2, size_ / 2 - 1));
  }
  std::int32_t Uniform() { return InRange(random_.Below(size_) - size_ / 2); }
  std::int32_t OnLattice() {
    return InRange(size_ * random_.Below(steps_ + 1) / steps_ - size_ / 2);
  }
  GridPoint Moved(GridPoint p, std::int32_t by) {
    return {InRange(std::int64_t{p.gx} + random_.Between(-by, by)),
            InRange(std::int64_t{p.gy} + random_.Between(-by, by))};
  }
  GridPoint Old() {
    if (points_.empty()) return {Uniform(), Uniform()};
    return random_.Pick(points_);
  }

  // Within half a step of the line from p to q, mostly between them.
  GridPoint Beside(GridPoint p, GridPoint q) {
    const auto at = [](double from, double to, double t) {
      return std::llround(from + t * (to - from));
    };
    const bool isFlat = std::abs(std::int64_t{q.gx} - p.gx) > std::abs(std::int64_t{q.gy} - p.gy);
    const double from = isFlat ? p.gx : p.gy;
    const double to = isFlat ? q.gx : q.gy;
    if (from == to) return p;
    const std::int32_t v = InRange(at(from, to, random_.Between(-0.1, 1.1)));
    const double t = (v - from) / (to - from);
    if (isFlat) return {v, InRange(at(p.gy, q.gy, t))};
    return {InRange(at(p.gx, q.gx, t)), v};
  }

  GridPoint Any() {
    const int kind = isCalm_ ? 3 : random_.Below(2) == 0 ? mood_ : random_.Below(6);
    GridPoint p{Uniform(), Uniform()};
    if (kind == 1) p = Old();
    if (kind == 2 && !rings_.empty()) {
      const Ring& ring = random_.Pick(rings_);
      const std::size_t i = random_.Below(ring.size());
      p = Beside(ring[i], ring[(i + 1) % ring.size()]);
      if (random_.Below(4) == 0) p = Moved(p, 1);
    }
    if (kind == 3) p = Moved({OnLattice(), OnLattice()}, jitter_);
    if (kind == 4) {
      p = Old();
      p = Moved(p, 1 + random_.Below(3));
    }
    std::int32_t& side = random_.Below(2) == 0 ? p.gx : p.gy;
    if (kind == 5) side = InRange(random_.Below(2) * size_ - size_ / 2);
    points_.push_back(p);
    return p;
  }

  // p + k (q - p) / n for k of [-n, 2 n), where that is a grid point.
  GridPoint Along(GridPoint p, GridPoint q, std::int32_t n) {
    const std::int64_t k = random_.Between(-n, 2 * n - 1);
    const std::int64_t dx = (std::int64_t{q.gx} - p.gx) / n;
    const std::int64_t dy = (std::int64_t{q.gy} - p.gy) / n;
    const std::int64_t x = p.gx + k * dx;
    const std::int64_t y = p.gy + k * dy;
    return InRange(x) == x && InRange(y) == y ? GridPoint{InRange(x), InRange(y)} : p;
  }

  // The ring made smaller, toward one of its points or the middle of two.
  Ring Inner(Ring ring) {
    const GridPoint p = random_.Pick(ring);
    const GridPoint q = random_.Pick(ring);
    const std::int32_t n = 1 + random_.Below(4);
    const auto toward = [n](std::int32_t v, std::int32_t u, std::int32_t w) {
      const std::int64_t middle = (std::int64_t{u} + w) / 2;
      return static_cast<std::int32_t>(middle + (v - middle) * n / (n + 1));
    };
    for (GridPoint& r : ring) r = {toward(r.gx, p.gx, q.gx), toward(r.gy, p.gy, q.gy)};
    return ring;
  }

  Ring AnyRing() {
    const int kind = isCalm_ ? 3 + 3 * random_.Below(2) : random_.Below(11);
    const int n = 3 + random_.Below(5);
    if (kind < 2 && !rings_.empty()) return random_.Pick(rings_);
    if (kind < 4 && !rings_.empty()) return Inner(random_.Pick(rings_));
    const GridPoint p = Any();
    const GridPoint q = Any();
    Ring ring;
    if (kind == 4) {  // to and fro on a line, perhaps with a point beside it
      for (int i = 0; i < n; ++i) ring.push_back(Along(p, q, 1 + random_.Below(4)));
      if (random_.Below(2) == 0) ring.push_back(Any());
    } else if (kind == 5) {  // edges through one point
      for (int i = 0; i < n / 2; ++i) {
        const GridPoint r = Any();
        const std::int64_t x = 2 * std::int64_t{p.gx} - r.gx;
        const std::int64_t y = 2 * std::int64_t{p.gy} - r.gy;
        ring.insert(ring.end(), {r, {InRange(x), InRange(y)}});
      }
    } else if (kind == 6) {
      ring = {p, {q.gx, p.gy}, q, {p.gx, q.gy}};
    } else if (kind == 7) {  // a needle, across the range or not
      const GridPoint left{InRange(-size_), p.gy};
      const GridPoint right{InRange(size_), q.gy};
      const bool across = random_.Below(2) == 0;
      const GridPoint ends[] = {across ? left : p, across ? right : q};
      ring = {ends[0], ends[1],
              Moved(random_.Below(2) == 0 ? ends[0] : Beside(ends[0], ends[1]), 1)};
      if (random_.Below(2) == 0) {
        for (GridPoint& r : ring) r = {r.gy, r.gx};
      }
    } else {
      for (int i = 0; i < n; ++i) ring.push_back(Any());
    }
    return ring;
  }

  Ring Changed(Ring ring) {
    const auto begin = ring.begin();
    std::rotate(begin, begin + random_.Below(static_cast<Index>(ring.size())), ring.end());
    const Ring once = ring;
    const int change = random_.Below(9);
    if (change < 2) std::reverse(ring.begin(), ring.end());
    if (change == 2) ring.insert(ring.end(), {Any(), ring.back()});         // a spike
    if (change == 3) ring.insert(ring.end(), {ring[0], ring[1], ring[0]});  // another one
    if (change == 4) ring.insert(ring.end(), once.begin(), once.end());     // twice around
    if (change == 5) ring[0] = Any();
    if (change == 6) {
      for (GridPoint& p : ring) p = {InRange(std::int64_t{p.gx} + steps_ - 3), p.gy};
    }
    return ring;
  }

  Random random_;
  std::int64_t size_;
  std::int64_t steps_;   // of the lattice
  std::int32_t jitter_;  // around its points
  int mood_;             // the kind of every other point
  bool isCalm_;          // boxes on the lattice, and rings in them
  std::vector<GridPoint> points_;
  Rings rings_;
};

std::string CodeOf(const Rings& rings) {
  std::string text = "{";
  for (const Ring& ring : rings) {
    text += text.size() > 1 ? ", {" : "{";
    for (const GridPoint p : ring) {
      text += text.back() == '{' ? "{" : ", {";
      text += std::to_string(p.gx) + ", " + std::to_string(p.gy) + "}";
    }
    text += "}";
  }
  return text + "}";
}

// Cases with fewer points or smaller coordinates, those that lose most first.
std::vector<RingCase> SmallerOnes(const RingCase& rings) {
  std::vector<RingCase> smaller;
  const auto forEachPoint = [&](auto change) {  // of copies; one that does not change is left out
    for (std::size_t side = 0; side < 2; ++side) {
      for (std::size_t k = 0; k < rings.operands[side].size(); ++k) {
        for (std::size_t i = 0; i < rings.operands[side][k].size(); ++i) {
          RingCase copy = rings;
          change(copy, copy.operands[side], k, static_cast<Index>(i));
          if (copy.operands != rings.operands) smaller.push_back(std::move(copy));
        }
      }
    }
  };
  forEachPoint([](RingCase&, Rings& all, std::size_t k, Index i) {
    if (i == 0) all.erase(all.begin() + static_cast<Index>(k));
  });
  forEachPoint(
      [](RingCase&, Rings& all, std::size_t k, Index i) { all[k].erase(all[k].begin() + i); });
  forEachPoint([](RingCase& copy, Rings& all, std::size_t k, Index i) {
    const GridPoint to = all[k][static_cast<std::size_t>(i)];
    for (Rings& operand : copy.operands) {
      for (Ring& ring : operand) {
        for (GridPoint& p : ring) p = {p.gx / 2 - to.gx / 2, p.gy / 2 - to.gy / 2};
      }
    }
  });
  for (const auto axis : {&GridPoint::gx, &GridPoint::gy}) {
    for (const std::int32_t part : {1, 2, 16, INT32_MAX}) {  // toward 0
      forEachPoint([&](RingCase&, Rings& all, std::size_t k, Index i) {
        std::int32_t& v = all[k][static_cast<std::size_t>(i)].*axis;
        v -= part < INT32_MAX ? v / part : (v > 0) - (v < 0);
      });
    }
  }
  return smaller;
}

}  // namespace

Rings RingsOf(const FlatRegion& region) {
  Rings rings;
  for (std::size_t i = 0; i < region.Rings(); ++i) {
    rings.emplace_back(region.Ring(i).begin(), region.Ring(i).end());
  }
  return rings;
}

RingCase RandomCase(std::uint64_t seed) {
  return Generator(seed).Run();
}

std::string WrongIn(const RingCase& rings, const RegionEngine& engine) {
  const auto& [a, b] = rings.operands;
  const auto [ruleA, ruleB] = rings.rules;
  const oracle::Arrangement snapped = oracle::Snap(a, b, oracle::Bends::kNeeded);
  if (!oracle::MeetAtEndsOnly(snapped)) return "the oracle's edges cross";
  for (int op = 0; op < 4; ++op) {
    const FlatRegion right = oracle::RegionOf(oracle::BoundaryOf(snapped, op, rings.rules));
    const FlatRegion region = engine(a, ruleA, b, ruleB, op);
    if (region != right) {
      return "operation " + std::to_string(op) + " gives " + CodeOf(RingsOf(region)) + ", not " +
             CodeOf(RingsOf(right));
    }
    const FillRule rule = FillRule(op);  // each fits
    Rings again = RingsOf(region);
    for (Ring& ring : again) {
      if (rule == FillRule::Negative) std::reverse(ring.begin(), ring.end());
    }
    const FlatRegion remade = engine(again, rule, {}, rule, 0);
    if (remade != region)
      return CodeOf(RingsOf(region)) + " made again gives " + CodeOf(RingsOf(remade));
  }
  return "";
}

RingCase Shrunk(RingCase rings, const std::function<bool(const RingCase&)>& fails) {
  for (int round = 0; round < 500; ++round) {
    const std::vector<RingCase> smaller = SmallerOnes(rings);
    const auto found = std::find_if(smaller.begin(), smaller.end(), fails);
    if (found == smaller.end()) break;
    rings = *found;
  }
  return rings;
}

std::string Code(const RingCase& rings) {
  std::string text;
  for (std::size_t i = 0; i < 2; ++i) {
    text += std::string("const Rings ") + "ab"[i] + " = " + CodeOf(rings.operands[i]) +
            ";  // FillRule(" + std::to_string(static_cast<int>(rings.rules[i])) + ")\n";
  }
  return text;
}

std::string WrongInSeed(std::uint64_t seed, const RegionEngine& engine) {
  const RingCase rings = RandomCase(seed);
  if (WrongIn(rings, engine).empty()) return "";
  const RingCase small =
      Shrunk(rings, [&](const RingCase& c) { return !WrongIn(c, engine).empty(); });
  return "seed " + std::to_string(seed) + ":\n" + Code(small) + WrongIn(small, engine);
}

}  // namespace zelvan::test
