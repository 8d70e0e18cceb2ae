/* A host in C99, on the shared library: the calls of the flat interface at their types, and the
 * functions on regions: what they give, what they refuse, and that what fails writes nothing. */
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <zelvan/region_c.h>
#include <zelvan/zelvan.h>

static int failures = 0;

#define EXPECT(condition) ((condition) ? 0 : (++failures, printf("line %d\n", __LINE__)))

static const double kFrame[] = {0, 0, 10, 0, 10, 10, 0, 10, 3, 3, 7, 3, 7, 7, 3, 7};
static const uint32_t kRings[] = {0, 4, 8};

static void CallsTheFlatInterface(void) {
  const double triangle[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
  int(ZELVAN_CALL * input[])(int, const double*) = {SetMainContour, SetHole};
  int(ZELVAN_CALL * plain[])(void) = {Union, Substruct, Triangulate, GetContourCount};
  int(ZELVAN_CALL * numbers[])(int*) = {GetEdges, GetFaces};
  int(ZELVAN_CALL * contour[])(int) = {GetContourIndex, GetContourSize};
  double vertices[9];
  int out[9], n[3], i;
  EXPECT(input[0](9, triangle) && input[1](9, triangle));
  for (i = 0; i < 4; ++i) EXPECT(plain[i]() == 1);
  EXPECT(GetCounts(&n[0], &n[1], &n[2]) && n[0] == 3 && n[1] == 3 && n[2] == 1);
  EXPECT(GetVertices(vertices) && numbers[0](out) && numbers[1](out));
  EXPECT(contour[0](0) == 0 && contour[1](0) == 3);
}

static const zelvan_region* Make(const double* xy, const uint32_t* rings, uint32_t count,
                                 int32_t rule) {
  const zelvan_region* region = NULL;
  EXPECT(zelvan_region_create(xy, rings, count, rule, NULL, &region, NULL) == ZELVAN_OK);
  return region;
}

static void ReadsAndCuts(const zelvan_region* frame) {
  zelvan_counts n, less;
  double xy[16], box[4];
  uint32_t rings[3] = {9, 9, 9}, polygons[2] = {9, 9}, triangles[24];
  int32_t neighbours[24], i;
  zelvan_region_counts(NULL, &n);
  EXPECT(n.polygons == 0 && n.triangles == 0);
  EXPECT(zelvan_region_read(NULL, &n, NULL, rings, polygons) == 0 && !rings[0] && !polygons[0]);
  zelvan_region_counts(frame, &n);
  EXPECT(n.polygons == 1 && n.rings == 2 && n.vertices == 8 && n.triangles == 8);
  EXPECT(zelvan_region_read(frame, &n, NULL, rings, NULL) == ZELVAN_OK);
  EXPECT(zelvan_region_read(frame, &n, xy, NULL, polygons) == ZELVAN_OK);
  EXPECT(memcmp(xy, kFrame, 8 * sizeof *xy) == 0); /* the outer ring as it came */
  EXPECT(rings[1] == 4 && rings[2] == 8 && polygons[0] == 0 && polygons[1] == 2);
  EXPECT(zelvan_region_area(frame) == 84 && zelvan_region_bounds(frame, box) == 1 && box[3] == 10);
  EXPECT(zelvan_region_triangulate(frame, ZELVAN_DELAUNAY, &n, triangles, neighbours) == 0);
  for (i = 0; i < 4; ++i) { /* no room but the right one */
    less = n;
    --*(i == 0 ? &less.polygons : i == 1 ? &less.rings : i == 2 ? &less.vertices : &less.triangles);
    EXPECT(zelvan_region_read(frame, &less, xy, rings, polygons) == ZELVAN_BAD_ARGUMENT);
    EXPECT(zelvan_region_triangulate(frame, 0, &less, triangles, NULL) == ZELVAN_BAD_ARGUMENT);
  }
  EXPECT(zelvan_region_triangulate(frame, 2, &n, triangles, NULL) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_triangulate(frame, 0, &n, NULL, NULL) == ZELVAN_BAD_ARGUMENT);
}

static void KnowsWherePointsLie(void) {
  const double corners[] = {0, 0, 4, 0, 0, 4};
  const double places[] = {1, 1, 2, 2, 3, 3, 1, NAN, INFINITY, 1, 1e-320, 1, -1e-320, 1};
  const int8_t expected[] = {1, 0, -1, -1, -1, 1, -1};
  int8_t sides[7];
  const zelvan_region* triangle = Make(corners, (const uint32_t[]){0, 3}, 1, ZELVAN_POSITIVE);
  EXPECT(zelvan_region_contains(triangle, places, 7, sides) == ZELVAN_OK);
  EXPECT(memcmp(sides, expected, sizeof sides) == 0);
  zelvan_region_release(triangle);
}

static void RefusesByName(void) {
  const double far[] = {0, 0, 1, 1, 0, INFINITY, 1e300, 0, NAN, 0};
  const zelvan_grid grid = {0, 0, 1}, none = {0.5, 0, 1};
  const zelvan_region* region = NULL;
  zelvan_fault fault = {9, 9};
  const uint32_t rings[] = {0, 1, 4}, turned[] = {0, 3, 2}, late[] = {1, 2}, one[] = {0, 1};
  EXPECT(zelvan_region_combine(4, NULL, NULL, &region) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_grid_check(&none) == ZELVAN_BAD_GRID);
  EXPECT(zelvan_region_create(far, rings, 2, 4, &grid, &region, &fault) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_create(far, turned, 2, 0, NULL, &region, &fault) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_create(far, late, 1, 0, NULL, &region, &fault) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_create(NULL, rings, 2, 0, NULL, &region, &fault) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_create(far, rings, 2, 0, &none, &region, &fault) == ZELVAN_BAD_GRID);
  EXPECT(fault.ring == 9 && fault.point == 9);
  EXPECT(zelvan_region_unite_rings(far, rings, 2, &grid, &region, &fault) == ZELVAN_NOT_FINITE);
  EXPECT(fault.ring == 1 && fault.point == 1);
  EXPECT(zelvan_region_create(far + 8, one, 1, 0, &grid, &region, &fault) == ZELVAN_NOT_FINITE);
  EXPECT(zelvan_region_create(far + 4, kRings, 0, 0, NULL, &region, NULL) == ZELVAN_OK);
  EXPECT(zelvan_region_unite_rings(far + 6, one, 1, NULL, &region, &fault) == ZELVAN_OUTSIDE_GRID);
  EXPECT(region == NULL && fault.ring == 0 && fault.point == 0);
  EXPECT(zelvan_region_create(far + 2, rings, 2, 0, NULL, &region, &fault) == ZELVAN_NOT_FINITE);
  EXPECT(fault.ring == 1 && fault.point == 0);
  EXPECT(strstr(zelvan_status_message(ZELVAN_INTERNAL), "contradiction") != NULL);
}

/* Far apart, so that no step keeps both. */
static void LosesNothingSilently(void) {
  const double places[] = {0, 0, 1, 0, 0, 1, 1e9, 1e9, 2e9, 1e9, 1e9, 2e9};
  const uint32_t one[] = {0, 3}, two[] = {0, 3, 6};
  const zelvan_region* pair[2] = {Make(places, one, 1, 0), Make(places + 6, one, 1, 0)};
  const zelvan_region* const both = Make(places, two, 2, 0);
  const zelvan_region* result = both;
  zelvan_grid grid = {0, 0, 3}, far = {1e9, 1e9, 1}, common;
  int i;
  for (i = 0; i < 4; ++i) EXPECT(zelvan_region_combine(i, pair[0], pair[1], &result) == 8);
  EXPECT(zelvan_region_unite(pair, 2, &result) == ZELVAN_TOO_COARSE && result == both);
  EXPECT(zelvan_region_on_grid(both, &grid, &result) == ZELVAN_BAD_GRID);
  EXPECT(zelvan_region_on_grid(both, NULL, &result) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_region_on_grid(pair[0], &far, &result) == ZELVAN_OUTSIDE_GRID && result == both);
  EXPECT(zelvan_grid_common(NULL, 1, &grid) == ZELVAN_BAD_ARGUMENT && grid.step == 3);
  EXPECT(zelvan_grid_common(NULL, 0, &grid) == ZELVAN_OK && grid.step == 1);
  EXPECT(zelvan_grid_common(pair, 2, &common) == ZELVAN_OK);
  zelvan_region_grid(both, &grid);
  EXPECT(memcmp(&grid, &common, sizeof grid) == 0);
  EXPECT(zelvan_region_on_grid(pair[0], &grid, &result) == ZELVAN_OK && result != NULL);
  EXPECT(zelvan_region_lost(result) == 1 && zelvan_region_equal(result, NULL));
  EXPECT(zelvan_region_lost(both) == 1 && !zelvan_region_lost(pair[1]) &&
         !zelvan_region_lost(NULL));
  zelvan_region_release(result);
  zelvan_region_release(both);
  for (i = 0; i < 2; ++i) zelvan_region_release(pair[i]);
}

int main(void) {
  const zelvan_region* frame = Make(kFrame, kRings, 2, ZELVAN_EVEN_ODD);
  CallsTheFlatInterface();
  ReadsAndCuts(frame);
  KnowsWherePointsLie();
  zelvan_region_release(frame);
  RefusesByName();
  LosesNothingSilently();
  return failures;
}
