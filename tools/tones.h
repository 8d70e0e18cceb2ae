// Tones for a map: polygons that meet look different, polygons of one feature
// alike.
#pragma once

#include <cstddef>
#include <vector>

#include "output.h"

namespace tool {

// For each item a number below `tones`. Features are neighbours when they have
// vertices in one cell of a square grid of this width; each takes the first tone
// from its number on that no earlier neighbour has, or its number where there is
// none.
std::vector<std::size_t> ChooseTones(const std::vector<Item>& items, std::size_t tones,
                                     double cell);

}  // namespace tool
