// The sweep under every region: the only place where regions meet the Boolean engine.
#pragma once

#include <zelvan/fill_rule.h>

#include "boolean/boolean.h"
#include "polygon/area_builder.h"
#include "polygon/flat_region.h"

namespace zelvan {

/// One sweep over the rings of two operands, which it uses up. Throws std::bad_alloc,
/// RegionRefusal, and what the engine raises.
class Operation {
 public:
  [[nodiscard]] FlatRegion Run(BoolOp op, FillRules rules);

  /// What the rings of the first operand bound.
  [[nodiscard]] FlatRegion Run(FillRule rule) { return Run(UNION, {rule, rule}); }

 private:
  SweepRecords records_;  // outlive the operands

 public:
  AreaBuilder a;
  AreaBuilder b;
};

}  // namespace zelvan
