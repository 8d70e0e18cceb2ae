// Random operations on rings, of 2 to 31 bits, for any engine of regions: what the arrangement
// oracle says of its results, and a failing case made small.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <span>
#include <string>

#include "support/arrangement_oracle.h"

#ifndef ZELVAN_TEST_SCALE
#define ZELVAN_TEST_SCALE 100
#endif

namespace zelvan::test {

/// That many cases, or the share that ZELVAN_TEST_SCALE says.
inline std::uint64_t Scaled(std::uint64_t cases) {
  const char* text = std::getenv("ZELVAN_TEST_SCALE");
  const auto scale = text != nullptr ? std::strtoull(text, nullptr, 10) : ZELVAN_TEST_SCALE;
  return cases * scale / 100 + 1;
}

struct RingCase {
  std::array<Rings, 2> operands;
  oracle::Rules rules;
};

/// The region of an operation (0 union, 1 intersection, 2 difference, 3 symmetric difference).
using RegionEngine =
    std::function<FlatRegion(std::span<const Ring> a, FillRule ruleA, std::span<const Ring> b,
                             FillRule ruleB, int operation)>;

/// The same case for a seed on every machine, its coordinates in [-2^(n-1), 2^(n-1)) for some n
/// from 2 to 31. About 20 edges: rings of points anywhere, on lattices, within half a step of
/// edges, to and fro on a line, through one point; boxes, needles, spikes, copies.
[[nodiscard]] RingCase RandomCase(std::uint64_t seed);

/// What is wrong with an engine's results, or nothing: each operation gives the oracle's region,
/// and the region made again of its rings, by any rule that fits, is that region.
[[nodiscard]] std::string WrongIn(const RingCase& rings, const RegionEngine& engine);

/// A case with fewer points and smaller coordinates that still fails.
[[nodiscard]] RingCase Shrunk(RingCase rings, const std::function<bool(const RingCase&)>& fails);

[[nodiscard]] Rings RingsOf(const FlatRegion& region);

/// As C++ code.
[[nodiscard]] std::string Code(const RingCase& rings);

/// WrongIn of the case of a seed; with the case, made small, and the seed where anything is.
[[nodiscard]] std::string WrongInSeed(std::uint64_t seed, const RegionEngine& engine);

}  // namespace zelvan::test
