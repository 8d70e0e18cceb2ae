// The countries of the world: united, and taken from their rectangle.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "boolean/shape_boolean.h"
#include "boolean/soundness.h"
#include "polygon/area.h"
#include "polygon/build_shape.h"
#include "polygon/contour.h"
#include "support/geojson_rings.h"
#include "support/mesh_checker.h"
#include "triangulation/triangulate.h"

namespace zelvan {
namespace {

using ShapePtr = std::unique_ptr<Shape>;

ShapePtr ShapeOf(const support::Ring& ring, double scale) {
  std::vector<InputPoint> points;
  for (std::size_t i = 0; i < ring.size(); i += 3) {
    points.push_back({ring[i] * scale, ring[i + 1] * scale, 0.0});
  }
  return BuildShape(points);
}

double AreaOf(const Shape& shape) {
  double steps = 0.0;
  ForEachContour(shape.areas,
                 [&](const Contour* c) { steps += static_cast<double>(TwiceArea(c->head)) / 2; });
  const double step = 1.0 / GRID_MAX;
  return steps * (shape.boxMax.x - shape.boxMin.x) * step * (shape.boxMax.y - shape.boxMin.y) *
         step;
}

double LengthOf(const Shape& shape) {
  double length = 0.0;
  ForEachContour(shape.areas, [&](const Contour* c) {
    ForEachVertex(c, [&](const VertexNode* v) {
      length += std::hypot(
          (v->next->grid.gx - v->grid.gx) * ((shape.boxMax.x - shape.boxMin.x) / GRID_MAX),
          (v->next->grid.gy - v->grid.gy) * ((shape.boxMax.y - shape.boxMin.y) / GRID_MAX));
    });
  });
  return length;
}

TEST(Countries, FillTheirRectangleTogetherWithTheSea) {
  constexpr double kScale = 4096.0;  // degrees to units far above the tolerance
  std::vector<ShapePtr> shapes;
  double sum = 0.0;
  double length = 0.0;
  for (const auto& country : support::ReadCountries(ZELVAN_DATA_DIR "/countries-50m.geojson")) {
    for (const support::RingPolygon& polygon : country.polygons) {
      shapes.push_back(ShapeOf(polygon[0], kScale));
      for (std::size_t h = 1; h < polygon.size(); ++h) {
        Subtract(*shapes.back(), *ShapeOf(polygon[h], kScale));
      }
      sum += AreaOf(*shapes.back());
      length += LengthOf(*shapes.back());
    }
  }
  ASSERT_GT(shapes.size(), 1400u);

  while (shapes.size() > 1) {  // by pairs, so that each vertex is met a few times only
    for (std::size_t i = 0; i + 1 < shapes.size(); i += 2) Unite(*shapes[i], *shapes[i + 1]);
    for (std::size_t i = 1; 2 * i < shapes.size(); ++i) shapes[i] = std::move(shapes[2 * i]);
    shapes.resize((shapes.size() + 1) / 2);
  }
  Shape& land = *shapes[0];
  ASSERT_TRUE(IsSound(land.areas));
  // Each move rounds the boundary by half a step across; there are a dozen of them.
  const double bound = 12 * length * (360 * kScale / GRID_MAX);
  EXPECT_NEAR(AreaOf(land), sum, bound);
  EXPECT_LT(bound, sum / 100);

  const support::Ring rectangle = {-180, -90, 0, 180, -90, 0, 180, 90, 0, -180, 90, 0};
  const ShapePtr whole = ShapeOf(rectangle, kScale);
  const ShapePtr sea = ShapeOf(rectangle, kScale);
  Subtract(*sea, land);
  ASSERT_TRUE(IsSound(sea->areas));
  ASSERT_TRUE(Triangulate(*sea));
  EXPECT_EQ(test::CheckMesh(test::Flatten(*sea)), "");
  ASSERT_TRUE(Triangulate(land));
  EXPECT_EQ(test::CheckMesh(test::Flatten(land)), "");
  EXPECT_NEAR(AreaOf(*sea) + AreaOf(land), AreaOf(*whole), bound);

  Unite(*sea, land);
  EXPECT_NEAR(AreaOf(*sea), AreaOf(*whole), bound);
  EXPECT_EQ(sea->boxMin.x, whole->boxMin.x);
  EXPECT_EQ(sea->boxMax.y, whole->boxMax.y);
  Subtract(*sea, *whole);
  EXPECT_EQ(sea->areas, nullptr);
}

}  // namespace
}  // namespace zelvan
