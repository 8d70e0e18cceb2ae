// Operands for the engine's tests: conversion between rings of points and stored
// areas, and the random families.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "polygon/area.h"
#include "support/arrangement_oracle.h"
#include "support/random.h"

namespace fixtures {

/// All rings as the contours of one area, their orientation flags set.
zelvan::OwnedRing RingOf(const oracle::Rings& rings);
zelvan::OwnedRing RingOf(const oracle::Areas& areas);
oracle::Areas AreasOf(const zelvan::Area* ring);
oracle::Rings Flatten(const oracle::Areas& areas);

/// A square or rectangle, counter-clockwise from its lower left corner.
oracle::Ring Box(std::int64_t x0, std::int64_t y0, std::int64_t x1, std::int64_t y1);

/// One of the eight symmetries of a square of `size` steps; rings that it turns
/// round are reversed, heads kept.
oracle::Rings Mirrored(oracle::Rings rings, unsigned symmetry, std::int64_t size);

/// "(0,1)(2,1)...", one ring after the other.
std::string Text(const oracle::Rings& rings);

/// The tests' random bits, with the draws that the families want.
class Random : public support::Random {
 public:
  using support::Random::Random;

  std::int64_t Below(std::int64_t n) {
    return static_cast<std::int64_t>(Bits() % static_cast<std::uint64_t>(n));
  }
  oracle::Point PointIn(std::int64_t size) {
    const std::int64_t x = Below(size + 1);
    return {x, Below(size + 1)};
  }
};

/// A family makes one operand on a grid of `size` steps.
struct Family {
  const char* name;
  oracle::Rings (*make)(Random& random, std::int64_t size);
};
extern const std::vector<Family> kFamilies;

/// Up to n rings of three and more points that cross, repeat and turn back on
/// themselves and on each other, and on `other`, in any direction.
oracle::Rings Mess(Random& random, std::int64_t size, std::int64_t n, const oracle::Rings& other);

/// A simple polygon of at most n vertices: random points, untangled.
oracle::Ring SimplePolygon(Random& random, std::int64_t size, std::int64_t n);
/// A star around the middle of [0, size]^2 with random radii, simple.
oracle::Ring Star(Random& random, std::int64_t size, std::int64_t n);

}  // namespace fixtures
