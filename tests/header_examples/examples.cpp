// The examples of the C++ headers, as they stand there, give what their comments say.
#include <zelvan/region.h>
#include <zelvan/toolkit.h>

#include <cmath>
#include <cstdio>

extern "C" int RegionsInC();
extern "C" int FlatInterface();

namespace {

bool RegionsInCpp() {
  int drawn = 0;
  const auto Draw = [&](const zelvan::Ring& outer, const std::vector<zelvan::Ring>& holes) {
    drawn += outer.size() == 5 && holes.size() == 1;
  };
  const zelvan::Region a({{{0, 0}, {1, 0}, {0, 1}}}), b({{{0, 0}, {1e9, 0}, {0, 1e9}}});
#include "region.h.inc"
  return drawn == 1 && mesh.vertices.size() == 9 && mesh.triangles.size() == 9 && both == b;
}

bool Transforms() {
  const double angle = 0.5;
  const VECTF p(1, 2, 3);
#include "transform.h.inc"
  return vec::dist3(back, p) < 1e-12 && there.z == 3;
}

bool Vectors() {
#include "vector.h.inc"
  return t == 0.5 && out.x == 5 && out.y == 0 && out.z == 0;
}

}  // namespace

int main() {
  const bool held[] = {RegionsInC() == 0, FlatInterface() == 0, RegionsInCpp(), Transforms(),
                       Vectors()};
  int wrong = 0;
  for (const bool holds : held) wrong += holds ? 0 : 1;
  std::printf("%d of 5 headers with examples that do not hold\n", wrong);
  return wrong;
}
