// A roof with an opening: its outline in plan is triangulated, and the triangles
// are lifted onto the pitched plane, where they give its true area and its outward
// normal. Polygons and toolkit in one program.
#include <zelvan/toolkit.h>
#include <zelvan/zelvan.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace {

using Contour = std::vector<VECTF>;
using Triangle = std::array<VECTF, 3>;

void Check(bool done, const char* what) {
  if (!done) throw std::runtime_error(what);
}

// VECTF is three doubles, so a contour is the array that the flat interface takes.
bool Give(int(ZELVAN_CALL* function)(int, const double*), const Contour& contour) {
  static_assert(sizeof(VECTF) == 3 * sizeof(double));
  return function(static_cast<int>(3 * contour.size()), &contour.data()->x) != 0;
}

// The triangles of a region with holes, counter-clockwise in plan.
std::vector<Triangle> Triangles(const Contour& outline, const std::vector<Contour>& holes) {
  Check(Give(SetMainContour, outline), "the outline is no polygon");
  for (const Contour& hole : holes) Check(Give(SetHole, hole), "a hole is no polygon");
  Check(Substruct() != 0, "the holes cannot be taken away");
  Check(Triangulate() != 0, "the region cannot be triangulated");

  int vertices = 0;
  int edges = 0;
  int faces = 0;
  Check(GetCounts(&vertices, &edges, &faces) != 0, "there is no mesh");
  Contour points(static_cast<std::size_t>(vertices));
  std::vector<std::array<int, 3>> edge(static_cast<std::size_t>(edges));
  std::vector<std::array<int, 3>> face(static_cast<std::size_t>(faces));
  Check(GetVertices(&points.data()->x) != 0, "the vertices cannot be read");
  Check(GetEdges(edge.data()->data()) != 0, "the edges cannot be read");
  Check(GetFaces(face.data()->data()) != 0, "the triangles cannot be read");

  std::vector<Triangle> triangles;
  for (const auto& f : face) {
    const auto at = [](const auto& list, int i) { return list[static_cast<std::size_t>(i)]; };
    const auto a = at(edge, f[0]);
    const auto b = at(edge, f[1]);
    const VECTF third = at(points, b[0] == a[0] || b[0] == a[1] ? b[1] : b[0]);
    Triangle t{at(points, a[0]), at(points, a[1]), third};
    if (vec::calc_normal(t[0], t[1], t[2]).z < 0) std::swap(t[0], t[1]);
    triangles.push_back(t);
  }
  return triangles;
}

}  // namespace

int main() {
  // An L-shaped plan with a chimney, in metres. The eaves run along x through the
  // origin, from where heights are counted; the roof rises at 35 degrees.
  const Contour outline = {{0, 0, 0}, {12, 0, 0}, {12, 4, 0}, {7, 4, 0}, {7, 6.5, 0}, {0, 6.5, 0}};
  const Contour chimney = {{3, 3, 0}, {4, 3, 0}, {4, 3.8, 0}, {3, 3.8, 0}};
  const double pitch = 35 * std::acos(-1.0) / 180;
  const TFORM intoRoof = TFORM::R(-pitch, 0, 0);  // from the world into the roof's frame

  try {
    double plan = 0;
    double area = 0;
    double top = 0;
    VECTF normal = vec::vZero();
    for (const Triangle& flat : Triangles(outline, {chimney})) {
      plan += vec::calc_normal(flat[0], flat[1], flat[2]).Length() / 2;
      Triangle lifted;
      for (std::size_t i = 0; i < 3; ++i) {
        Check(Point2Plain(intoRoof, TFORM::E(), flat[i], &lifted[i]), "the roof stands upright");
        top = std::fmax(top, lifted[i].z);
      }
      normal = vec::calc_normal(lifted[0], lifted[1], lifted[2]);
      area += normal.Length() / 2;
    }
    normal.Normalize();
    std::printf("plan %.3f m2, roof %.3f m2, ridge at %.3f m, normal (%.4f %.4f %.4f)\n", plan,
                area, top, normal.x, normal.y, normal.z);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
