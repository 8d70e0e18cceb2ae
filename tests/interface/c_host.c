/* A host in C99, on the shared library: what the functions on regions give, what they refuse, and
 * that what fails writes nothing. */
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <zelvan/region_c.h>

static int failures = 0;

#define EXPECT(condition) ((condition) ? 0 : (++failures, printf("line %d\n", __LINE__)))

static const double kFrame[] = {0, 0, 10, 0, 10, 10, 0, 10, 3, 3, 7, 3, 7, 7, 3, 7};
static const uint32_t kRings[] = {0, 4, 8};

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

static void RefusesByName(void) {
  const double far[] = {0, 0, 1, 1, 0, INFINITY, 1e300, 0, NAN, 0};
  const zelvan_grid grid = {0, 0, 1}, none = {0.5, 0, 1};
  zelvan_grid common = {0, 0, 3};
  const zelvan_region* region = NULL;
  zelvan_fault fault = {9, 9};
  const uint32_t rings[] = {0, 1, 4}, turned[] = {0, 3, 2}, late[] = {1, 2};
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
  EXPECT(zelvan_region_create(far + 4, kRings, 0, 0, NULL, &region, NULL) == ZELVAN_OK);
  EXPECT(region == NULL);
  EXPECT(zelvan_region_on_grid(NULL, &none, &region) == ZELVAN_BAD_GRID);
  EXPECT(zelvan_region_on_grid(NULL, NULL, &region) == ZELVAN_BAD_ARGUMENT);
  EXPECT(zelvan_grid_common(NULL, 1, &common) == ZELVAN_BAD_ARGUMENT && common.step == 3);
  EXPECT(!zelvan_grid_common(NULL, 0, &common) && common.step == 1 && !zelvan_region_lost(NULL));
  EXPECT(zelvan_region_prepare(NULL) == ZELVAN_OK);
  EXPECT(strstr(zelvan_status_message(ZELVAN_INTERNAL), "contradiction") != NULL);
}

int main(void) {
  const zelvan_region* frame = Make(kFrame, kRings, 2, ZELVAN_EVEN_ODD);
  ReadsAndCuts(frame);
  zelvan_region_release(frame);
  RefusesByName();
  return failures;
}
