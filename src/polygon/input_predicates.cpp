// The predicates on input contours (input_predicates.h).
#include "polygon/input_predicates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "polygon/error_free.h"

namespace zelvan {

namespace {

// A non-overlapping expansion, smallest component first, that takes the sixteen
// terms of an orientation determinant.
class Expansion {
 public:
  void Add(double term) noexcept {
    for (std::size_t i = 0; i < size_; ++i) {
      const TwoSumResult s = TwoSum(term, terms_[i]);
      terms_[i] = s.error;
      term = s.value;
    }
    terms_[size_++] = term;
  }

  void AddProduct(TwoSumResult a, TwoSumResult b, double sign) noexcept {
    for (const double x : {a.error, a.value}) {
      for (const double y : {b.error, b.value}) {
        const TwoSumResult p = TwoProduct(x, sign * y);
        Add(p.error);
        Add(p.value);
      }
    }
  }

  [[nodiscard]] int Sign() const noexcept {
    for (std::size_t i = size_; i-- > 0;) {
      if (terms_[i] != 0.0) return terms_[i] > 0.0 ? 1 : -1;
    }
    return 0;
  }

 private:
  std::array<double, 16> terms_{};
  std::size_t size_ = 0;
};

int Sign(double v) noexcept {
  return (v > 0.0 ? 1 : 0) - (v < 0.0 ? 1 : 0);
}

// The binary exponent that brings the largest of three magnitudes below 1.
int ScaleOf(double a, double b, double c) noexcept {
  const double largest = std::max({std::fabs(a), std::fabs(b), std::fabs(c)});
  int exponent = 0;
  std::frexp(largest, &exponent);
  return exponent;
}

}  // namespace

bool IsCollinear(const InputPoint& a, const InputPoint& b, const InputPoint& c) noexcept {
  const double cross = (a.x - b.x) * (a.y - c.y) - (a.y - b.y) * (a.x - c.x);
  return -kCollinearTolerance < cross && cross < kCollinearTolerance;
}

// Where the two products differ in sign, or one is zero, that decides: a rounded
// difference has the sign of the true one. Else each axis is scaled by a power of two,
// so that no product over- or underflows.
int detail::ExactSideSign(WorldPoint a, WorldPoint b, WorldPoint c) noexcept {
  const int left = Sign(a.x - b.x) * Sign(c.y - b.y);
  const int right = Sign(a.y - b.y) * Sign(c.x - b.x);
  if (left != right || left == 0) return left > right ? 1 : (left < right ? -1 : 0);
  const int ex = ScaleOf(a.x, b.x, c.x);
  const int ey = ScaleOf(a.y, b.y, c.y);
  const auto difference = [](double u, double v, int exponent) {
    return TwoSum(std::ldexp(u, -exponent), -std::ldexp(v, -exponent));
  };
  Expansion determinant;
  determinant.AddProduct(difference(a.x, b.x, ex), difference(c.y, b.y, ey), 1.0);
  determinant.AddProduct(difference(a.y, b.y, ey), difference(c.x, b.x, ex), -1.0);
  return determinant.Sign();
}

bool SegmentsCross(const InputPoint& p0, const InputPoint& p1, const InputPoint& q0,
                   const InputPoint& q1) noexcept {
  return Side(q1, p0, p1) != Side(q0, p0, p1) && Side(p1, q0, q1) != Side(p0, q0, q1);
}

}  // namespace zelvan
