/* The examples of the C headers, as they stand there, give what their comments say. */
#include <stdlib.h>
#include <zelvan/region_c.h>
#include <zelvan/zelvan.h>

int RegionsInC(void);
int FlatInterface(void);

int RegionsInC(void) {
#include "region_c.h.inc"
  free(triangles);
  return !(n.polygons == 1 && n.rings == 2 && n.vertices == 8 && n.triangles == 8);
}

static int points, lines, triangles, rings;

static void use(double x, double y) {
  points += x >= 0 && y <= 10;
}
static void line(int a, int b) {
  lines += a < 8 && b < 8 && a != b;
}
static void triangle(int a, int b, int c) {
  triangles += a != b && b != c && c != a;
}
static void ring(const double* xyz, int size) {
  rings += xyz[2] == 0 && size == 4;
}

int FlatInterface(void) {
  int i, e, f;
#include "zelvan.h.inc"
  free(xyz);
  free(edge);
  free(face);
  return !(vertices == 8 && edges == 16 && faces == 8 && points == 8 && lines == 16 &&
           triangles == 8 && rings == 2);
}
