/* The examples of the C headers, as they stand there, give what their comments say. */
#include <stdlib.h>
#include <zelvan/overlay_c.h>
#include <zelvan/region_c.h>
#include <zelvan/regions_c.h>
#include <zelvan/zelvan.h>

int RegionsInC(void) {
#include "region_c.h.inc"
  free(triangles);
  return !(n.polygons == 1 && n.rings == 2 && n.vertices == 8 && n.triangles == 8);
}

int OverlaysInC(void) {
#include "overlay_c.h.inc"
  return !(n.parts == 3 && n.inputs == 4);
}

int ManyRegionsInC(void) {
#include "regions_c.h.inc"
  return !(areas[0] == 16 && areas[1] == 5);
}

/* What the examples hand their results to. */
static int drawn;
#define use(x, y) (drawn += (x) >= 0 && (y) <= 10)
#define line(a, b) (drawn += (a) != (b))
#define triangle(a, b, c) (drawn += (a) != (b) && (b) != (c))
#define ring(xyz, size) (drawn += (xyz)[2] == 0 && (size) == 4)

int FlatInterface(void) {
  int i, e, f;
#include "zelvan.h.inc"
  free(xyz);
  free(edge);
  free(face);
  return !(vertices == 8 && edges == 16 && faces == 8 && drawn == 8 + 16 + 8 + 2);
}
