// The examples of the C++ headers, as they stand there, give what their comments say.
#include <zelvan/overlay.h>
#include <zelvan/region.h>
#include <zelvan/toolkit.h>

#include <cmath>

extern "C" int RegionsInC();
extern "C" int OverlaysInC();
extern "C" int ManyRegionsInC();
extern "C" int FlatInterface();

namespace {

bool RegionsInCpp() {
  int drawn = 0;
  const auto Draw = [&](const zelvan::Ring& outer, const std::vector<zelvan::Ring>& holes) {
    drawn += outer.size() == 5 && holes.size() == 1;
  };
  const zelvan::Region a({{{0, 0}, {1, 0}, {0, 1}}}), b({{{0, 0}, {1e9, 0}, {0, 1e9}}});
  const zelvan::Region parcel({{{0, 0}, {40, 0}, {40, 20}, {0, 20}}}), plate = parcel;
#include "region.h.inc"
  return drawn == 1 && mesh.vertices.size() == 9 && mesh.triangles.size() == 9 && both == b &&
         setback.Area() == 300 && outline.Area() == 40.5 * 20.5;
}

bool Overlays() {
#include "overlay.h.inc"
  return parts.size() == 3 && flooded == 4;
}

bool GraphicsPage() {
#include "GRAPHICS.md.inc"
  return positions.size() == 16 && mesh.triangles.size() == 8 && indices[0] < 8 && hit && miss &&
         tiles.size() == 2 && area == dug.Area() && area < ground.Area();
}

bool CadPage() {
#include "CAD.md.inc"
  return near && lost == 1 && outlines == 1 && drills == 1 && !overlap && touch;
}

bool Toolkit() {
  const double angle = 0.5;
  const VECTF p(1, 2, 3);
  {
#include "transform.h.inc"
    if (vec::dist3(back, p) > 1e-12 || there.z != 3) return false;
  }
#include "vector.h.inc"
  return t == 0.5 && out.x == 5 && out.y == 0 && out.z == 0;
}

}  // namespace

int main() {
  const bool inC = RegionsInC() == 0 && OverlaysInC() == 0 && ManyRegionsInC() == 0;
  const bool pages = GraphicsPage() && CadPage();
  return inC && pages && FlatInterface() == 0 && RegionsInCpp() && Overlays() && Toolkit() ? 0 : 1;
}
