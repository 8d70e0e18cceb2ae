// From rings to boundary walks: where rings of a polygon touch, each wedge between them has a
// vertex of its own, and a walk goes from one ring on to the next.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

/// Keeps its arrays from one touch to the next.
class WalkJoiner {
 public:
  /// Joins the rings that touch in one place, for all of their vertices there. Throws
  /// std::bad_alloc, nothing changed.
  void JoinAt(std::span<const std::uint32_t> touching, std::span<SweepVertex> vertices);

 private:
  // An edge at the place, as seen from there.
  struct Arm {
    GridPoint direction;
    std::uint32_t vertex;  // the one in the place where it arrives, or the one where it leads
    bool leaves;
  };

  static bool IsBefore(const Arm& a, const Arm& b) noexcept;

  std::vector<Arm> arms_;
};

}  // namespace VORNEX
