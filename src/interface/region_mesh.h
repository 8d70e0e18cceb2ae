// The triangles of rings as one value, which owns its arrays.
#pragma once

#include <zelvan/region_c.h>

#include <memory>

#include "interface/region.h"

namespace zelvan {

struct MeshReleaser {
  void operator()(const zelvan_mesh* mesh) const noexcept;
};
using MeshHandle = std::unique_ptr<const zelvan_mesh, MeshReleaser>;

/// The triangles of a region, which may be null. Throws std::bad_alloc, and what the engine raises.
[[nodiscard]] MeshHandle MeshOf(const zelvan_region* region, bool isDelaunay, bool hasNeighbours);

}  // namespace zelvan
