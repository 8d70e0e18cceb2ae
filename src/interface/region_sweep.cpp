// The sweep under every region (region_sweep.h).
#include "interface/region_sweep.h"

#include <zelvan/error.h>

#include <limits>

#include "interface/region_refusal.h"

namespace zelvan {

FlatRegion Operation::Run(BoolOp op, FillRules rules) {
  OwnedRing result;
  const ERR::CODE code =
      CombineCopies(a.get(), b.get(), result.first, op, records_, rules, ResultForm::kWalks);
  if (code != ERR::OK) ERR::Raise(code);
  FlatRegion region = FlattenWalks(result.first);
  Require(region.points.size() <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  return region;
}

}  // namespace zelvan
