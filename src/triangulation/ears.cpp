// Ears (ears.h). A vertex is an ear where its corner is convex and its triangle holds no other
// vertex, on its border neither; only vertices that are not convex can lie there. There is one
// as long as there are four vertices (Meisters 1975), also where three of them are on a line: a
// triangulation of all of them has two triangles that meet one other triangle only.
#include "triangulation/ears.h"

#include <bit>

#include "triangulation/sweep_records.h"

namespace VORNEX {

namespace {

class EarCutter {
 public:
  EarCutter(std::span<const GridPoint> ring, std::uint32_t first, std::uint32_t* corners,
            std::uint32_t* twins) noexcept
      : points_(ring.data()),
        left_(static_cast<std::uint32_t>(ring.size())),
        first_(first),
        corners_(corners),
        twins_(twins) {
    for (std::uint32_t v = 0; v < left_; ++v) {
      next_[v] = v + 1 < left_ ? v + 1 : 0;
      prev_[next_[v]] = v;
      side_[v] = kNone;
    }
    for (std::uint32_t v = 0; v < left_; ++v) {
      if (!IsConvex(v)) blocking_ |= Bit(v);
    }
  }

  // Every second vertex is tried, so that no corner gets all triangles.
  [[nodiscard]] bool Run() noexcept {
    std::uint32_t v = 0;
    for (std::uint32_t tried = 0; left_ > 3;) {
      if (IsEar(v)) {
        Cut(v);
        v = next_[v];
        tried = 0;
      } else if (++tried == left_) {
        return false;
      }
      v = next_[v];
    }
    if (!IsConvex(v)) return false;
    const std::uint32_t last[] = {prev_[v], v, next_[v]};
    const std::uint32_t side = 3 * count_;
    for (std::uint32_t k = 0; k < 3; ++k) {
      corners_[side + k] = first_ + last[k];
      Link(side + k, side_[last[k]]);
    }
    return true;
  }

 private:
  static std::uint32_t Bit(std::uint32_t v) noexcept { return std::uint32_t{1} << v; }

  [[nodiscard]] bool IsConvex(std::uint32_t v) const noexcept {
    return zelvan::Cross(points_[prev_[v]], points_[v], points_[next_[v]]) > 0;
  }

  [[nodiscard]] bool IsEar(std::uint32_t v) const noexcept {
    if ((blocking_ & Bit(v)) != 0) return false;
    const GridPoint a = points_[prev_[v]];
    const GridPoint b = points_[v];
    const GridPoint c = points_[next_[v]];
    for (std::uint32_t rest = blocking_ & ~(Bit(prev_[v]) | Bit(next_[v])); rest != 0;
         rest &= rest - 1) {
      const GridPoint p = points_[std::countr_zero(rest)];
      if (zelvan::Cross(a, b, p) >= 0 && zelvan::Cross(b, c, p) >= 0 &&
          zelvan::Cross(c, a, p) >= 0) {
        return false;
      }
    }
    return true;
  }

  void Cut(std::uint32_t v) noexcept {
    const std::uint32_t a = prev_[v];
    const std::uint32_t c = next_[v];
    const std::uint32_t side = 3 * count_++;
    corners_[side] = first_ + a;
    corners_[side + 1] = first_ + v;
    corners_[side + 2] = first_ + c;
    Link(side, side_[a]);
    Link(side + 1, side_[v]);
    side_[a] = side + 2;
    next_[a] = c;
    prev_[c] = a;
    --left_;
    for (const std::uint32_t u : {a, c}) {
      if ((blocking_ & Bit(u)) != 0 && IsConvex(u)) blocking_ &= ~Bit(u);
    }
  }

  void Link(std::uint32_t side, std::uint32_t twin) noexcept {
    if (twins_ == nullptr) return;
    twins_[side] = twin;
    if (twin != kNone) twins_[twin] = side;
  }

  const GridPoint* points_;
  std::uint32_t left_;
  std::uint32_t first_;
  std::uint32_t* corners_;
  std::uint32_t* twins_;
  std::uint32_t count_ = 0;
  std::uint32_t blocking_ = 0;  // a bit a vertex: its corner is not convex
  std::uint32_t prev_[kMostForEars];
  std::uint32_t next_[kMostForEars];
  std::uint32_t side_[kMostForEars];  // across the edge that starts in a vertex
};

}  // namespace

bool CutEars(std::span<const GridPoint> ring, std::uint32_t first, std::uint32_t* corners,
             std::uint32_t* twins) noexcept {
  return EarCutter(ring, first, corners, twins).Run();
}

}  // namespace VORNEX
