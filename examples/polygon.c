/* A square with a hole, from points to triangles. Every call is checked, as a host
 * should: a 0 says that nothing came of it. */
#include <stdio.h>
#include <stdlib.h>
#include <zelvan/zelvan.h>

struct Mesh {
  int vertices, edges, faces;
  double* xyz;
  int* edge; /* vertex, vertex, kind */
  int* face; /* three edges, clockwise */
};

static void FreeMesh(struct Mesh* mesh) {
  free(mesh->xyz);
  free(mesh->edge);
  free(mesh->face);
}

/* Reads what Triangulate has made; 0 when there is nothing, or no memory. */
static int ReadMesh(struct Mesh* mesh) {
  if (!GetCounts(&mesh->vertices, &mesh->edges, &mesh->faces)) return 0;
  mesh->xyz = malloc(3 * (size_t)mesh->vertices * sizeof *mesh->xyz);
  mesh->edge = malloc(3 * (size_t)mesh->edges * sizeof *mesh->edge);
  mesh->face = malloc(3 * (size_t)mesh->faces * sizeof *mesh->face);
  return mesh->xyz && mesh->edge && mesh->face && GetVertices(mesh->xyz) && GetEdges(mesh->edge) &&
         GetFaces(mesh->face);
}

/* The corners of a triangle, counter-clockwise. Its edges come clockwise: each
 * shares a corner with the next one. */
static void Corners(const struct Mesh* mesh, int face, int corner[3]) {
  int i;
  for (i = 0; i < 3; ++i) {
    const int* a = mesh->edge + 3 * mesh->face[3 * face + i];
    const int* b = mesh->edge + 3 * mesh->face[3 * face + (i + 1) % 3];
    corner[2 - i] = a[0] == b[0] || a[0] == b[1] ? a[0] : a[1];
  }
}

static double Area(const struct Mesh* mesh, const int corner[3]) {
  const double* a = mesh->xyz + 3 * corner[0];
  const double* b = mesh->xyz + 3 * corner[1];
  const double* c = mesh->xyz + 3 * corner[2];
  return ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / 2;
}

static int Fail(const char* what) {
  fprintf(stderr, "%s failed\n", what);
  return EXIT_FAILURE;
}

int main(void) {
  const double outer[] = {0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0};
  const double hole[] = {3, 3, 0, 7, 3, 0, 7, 7, 0, 3, 7, 0};
  struct Mesh mesh = {0, 0, 0, NULL, NULL, NULL};
  double area = 0;
  int i;

  if (!SetMainContour((int)(sizeof outer / sizeof *outer), outer)) return Fail("SetMainContour");
  if (!SetHole((int)(sizeof hole / sizeof *hole), hole)) return Fail("SetHole");
  if (!Substruct()) return Fail("Substruct");
  if (!Triangulate()) return Fail("Triangulate");
  if (!ReadMesh(&mesh)) {
    FreeMesh(&mesh);
    return Fail("reading the mesh");
  }

  for (i = 0; i < GetContourCount(); ++i) {
    printf("contour %d: %d vertices from %d\n", i, GetContourSize(i), GetContourIndex(i));
  }
  for (i = 0; i < mesh.faces; ++i) {
    int corner[3];
    Corners(&mesh, i, corner);
    area += Area(&mesh, corner);
    printf("triangle %d: %d %d %d\n", i, corner[0], corner[1], corner[2]);
  }
  printf("%d vertices, %d edges, %d triangles, area %.3f\n", mesh.vertices, mesh.edges, mesh.faces,
         area);
  FreeMesh(&mesh);
  return EXIT_SUCCESS;
}
