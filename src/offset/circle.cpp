// The table of a circle (circle.h).
#include "offset/circle.h"

namespace zelvan::offset {

namespace {

constexpr double kOctant = 0.41421356237309503;  // the t of 45 degrees

// An angle whose cosine is 1 - z, from below.
double AngleOf(double z) noexcept {
  return std::sqrt(2.0 * z);
}

// |u + v|^2 of unit vectors whose half angle has a given cosine.
double SumOf(double cosine) noexcept {
  return 4.0 * cosine * cosine;
}

Direction OfOctant(double t) noexcept {
  const double square = t * t;
  return {(1.0 - square) / (1.0 + square), 2.0 * t / (1.0 + square)};
}

}  // namespace

Circle::Circle(double radius, double error) : radius_(radius), outer_(radius + error) {
  const double inner = radius - error;
  const double cosineA = inner / radius;
  const double cosineB = inner / outer_;
  const double sines = std::sqrt((1.0 - cosineA * cosineA) * (1.0 - cosineB * cosineB));
  bareSum_ = SumOf(cosineA);
  const double cosineSingle = cosineA * cosineB - sines;
  singleSum_ = cosineSingle > 0.0 ? SumOf(cosineSingle) : 0.0;
  const double span = AngleOf(error / radius) + AngleOf(2.0 * error / outer_);
  perOctant_ = std::ceil(2.0 * kOctant / span);
  const auto count = static_cast<std::size_t>(perOctant_);
  table_.reserve(8 * count);
  for (std::size_t i = 0; i < 8 * count; ++i) table_.push_back(ArmAlong(At(i), outer_));
}

Direction Circle::At(std::size_t position) const noexcept {
  const auto count = static_cast<std::size_t>(perOctant_);
  const std::size_t octant = position / count;
  const std::size_t rest = position % count;
  const bool isMirrored = octant % 2 != 0;
  const std::size_t steps = isMirrored ? count - rest : rest;
  Direction d = OfOctant(kOctant * static_cast<double>(steps) / perOctant_);
  if (isMirrored) d = {d.y, d.x};
  for (std::size_t quadrant = 0; quadrant < octant / 2; ++quadrant) d = {-d.y, d.x};
  return d;
}

double Circle::PositionOf(Direction d) const noexcept {
  double turned = 0.0;
  for (; d.x <= 0.0 || d.y < 0.0; turned += 2.0) d = {d.y, -d.x};
  const double t = d.y <= d.x ? d.y / (1.0 + d.x) : d.x / (1.0 + d.y);
  const double octants = t / kOctant;
  return (turned + (d.y <= d.x ? octants : 2.0 - octants)) * perOctant_;
}

}  // namespace zelvan::offset
