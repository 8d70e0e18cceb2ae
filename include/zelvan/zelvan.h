/** @file
 * Zelvan's flat interface: polygons in, triangles out. Plain C.
 *
 * One process-wide workspace holds a main polygon and a queue of further
 * contours. The host sets the main contour, queues others, unites or subtracts
 * them (that is how holes are made), triangulates, and reads the answer back:
 *
 *     double outer[] = {0,0,0,  10,0,0,  10,10,0,  0,10,0};
 *     double hole[]  = {3,3,0,  7,3,0,  7,7,0,  3,7,0};
 *     int vertices, edges, faces;
 *
 *     SetMainContour(12, outer);
 *     SetHole(12, hole);
 *     Substruct();
 *     Triangulate();
 *     GetCounts(&vertices, &edges, &faces);          // 8, 16, 8
 *
 * What the library guarantees, whatever it is given:
 *
 *  1. NothingEscapes. No function lets an exception out. The operations and
 *     the reads of vertices and mesh answer 1 for success and 0 for failure;
 *     the contour queries answer a number or -1.
 *  2. EveryCallEnds. Work is bounded by the size of the input and the number
 *     of its crossings. Numbers that are not finite, repeated points, spikes,
 *     crossing edges and zero areas are refused or resolved, never fatal.
 *  3. AreaIsExact. Once a contour has been snapped to its grid, everything is
 *     computed in integers: the triangles' areas sum to the region's exactly,
 *     and every triangle runs strictly counter-clockwise.
 *  4. MeshIsConsistent. A region of n vertices, h holes and a areas has
 *     n + 2h - 2a triangles. Each inner edge has two faces, each contour edge
 *     one (a bridge that a contour runs there and back has two); vertices are
 *     shared, no vertex is added.
 *  5. SnapIsBounded. A vertex is read back within half a grid step of where it
 *     was given: half of (extent of the contour's box) / 1048575, per axis.
 *     Each contour united or subtracted moves it by at most one step more, of
 *     the box of both; edges move as far.
 *  6. SameBytes. The same calls give the same bytes on every machine and in
 *     every run. The host's own random generator is never touched.
 *  7. FailureLeavesNothingBehind. A failed call leaks nothing, exhausted memory
 *     included, and the library works afterwards.
 *
 * What it asks of the host: calls from one thread at a time, buffers as large
 * as each function states, and an input pointer that addresses `count` doubles.
 *
 * All numbers are 0-based. Coordinates are doubles in the host's own units; z
 * is read and ignored, and given back as 0.0. Validation uses one tolerance,
 * 1e-5, absolute, in squared input units (see SetMainContour): scale small
 * units up before the call.
 */
#ifndef ZELVAN_ZELVAN_H
#define ZELVAN_ZELVAN_H

#include <zelvan/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Replaces the main polygon and empties the queue of further contours.
 *
 * Points that lie within tolerance on a line with their neighbours are removed:
 * those whose cross product with them is below 1e-5 in squared units. The edge
 * that closes the contour is not tested for crossings.
 *
 * A contour may touch or cover itself, as given or because detail is finer than the grid,
 * which can also make it cross itself. The main polygon is then what the contour, turned
 * counter-clockwise, winds around on the grid once or more (the positive rule): one area or
 * more, which may have holes, or none. What it covers twice is covered. A contour that
 * crosses itself as given, through its closing edge, is kept as it is.
 *
 * A contour gives the same polygon in both directions, where both are accepted: of the
 * edges tested for crossings one that is touched from its right side counts as crossed.
 *
 * @param count  number of doubles; count / 3 points are read, one or two trailing
 *               doubles are ignored
 * @param xyz    count doubles, consecutive (x, y, z) triples in contour order, in
 *               either direction; the last point need not repeat the first. Not
 *               kept.
 * @return 1 when a main polygon now exists; a contour that collapses on its grid
 *         gives one without vertices. 0, and then there is neither a main polygon
 *         nor a queue, when the contour is unusable: fewer than three points left,
 *         two edges cross, zero area, a number that is not finite, a null pointer,
 *         no memory. */
ZELVAN_API int ZELVAN_CALL SetMainContour(int count, const double* xyz);

/**
 * Queues one more contour for Union or Substruct. Arguments as SetMainContour;
 * no main polygon is needed yet.
 *
 * @param count  number of doubles
 * @param xyz    the contour's points
 * @return 1 when queued; 0 when the contour is unusable, then nothing changed */
ZELVAN_API int ZELVAN_CALL SetHole(int count, const double* xyz);

/**
 * Adds every queued contour to the main polygon, oldest first, and empties the
 * queue. The result is on the grid of its own box; contours that touched or
 * overlapped are one, and may have holes. An earlier triangulation stays, stale,
 * until the next Triangulate.
 *
 * @return 1, also when nothing is queued. 0 when contours are queued but there is
 *         no main polygon, or when an operation failed: what was combined before
 *         it stays combined, and the whole queue stays for another try. */
ZELVAN_API int ZELVAN_CALL Union(void);

/**
 * As Union, but takes every queued contour from the main polygon: this is how
 * holes are made. A main polygon of which nothing is left has no vertices.
 *
 * @return as Union */
ZELVAN_API int ZELVAN_CALL Substruct(void);

/**
 * Cuts the main polygon into triangles of its own vertices, to be read with
 * GetCounts, GetEdges and GetFaces.
 *
 * @return 1 on success. 0 when there is no main polygon, when it has no area, or
 *         when it cannot be triangulated (it crosses itself through its closing
 *         edge, for example); an earlier triangulation is then still there. */
ZELVAN_API int ZELVAN_CALL Triangulate(void);

/**
 * Reports the sizes that GetVertices, GetEdges and GetFaces need.
 *
 * @param vertexCount  receives the number of vertices
 * @param edgeCount    receives the number of edges
 * @param faceCount    receives the number of triangles
 * @return 1 when all three were stored. 0 when there is no main polygon (nothing
 *         stored), when it has not been triangulated (the number of vertices alone is
 *         stored), or when a pointer is null (the other numbers are stored). */
ZELVAN_API int ZELVAN_CALL GetCounts(int* vertexCount, int* edgeCount, int* faceCount);

/**
 * Writes the vertices of the main polygon, contour by contour, as (x, y, 0.0).
 *
 *     double* xyz = malloc(3 * vertices * sizeof *xyz);
 *     GetVertices(xyz);
 *     for (i = 0; i < vertices; ++i) use(xyz[3 * i], xyz[3 * i + 1]);
 *
 * @param out  room for 3 * vertexCount doubles
 * @return 1; 0, with nothing written, without a main polygon or with a null pointer */
ZELVAN_API int ZELVAN_CALL GetVertices(double* out);

/**
 * Writes the edges of the triangulation as (vertex, vertex, kind), kind 0 for
 * an edge of a contour and 2 for a diagonal inside.
 *
 *     int* edge = malloc(3 * edges * sizeof *edge);
 *     GetEdges(edge);
 *     for (e = 0; e < edges; ++e) line(edge[3 * e], edge[3 * e + 1]);
 *
 * @param out  room for 3 * edgeCount integers
 * @return 1; 0, with nothing written, without a triangulation or with a null pointer */
ZELVAN_API int ZELVAN_CALL GetEdges(int* out);

/**
 * Writes the triangles, each as three edge numbers in clockwise order.
 *
 *     int* face = malloc(3 * faces * sizeof *face);
 *     GetFaces(face);
 *     for (f = 0; f < faces; ++f) {
 *       const int* a = edge + 3 * face[3 * f];       // first edge, two of the corners
 *       const int* b = edge + 3 * face[3 * f + 1];   // one of its ends is the third
 *       int third = b[0] == a[0] || b[0] == a[1] ? b[1] : b[0];
 *       triangle(a[0], a[1], third);
 *     }
 *
 * @param out  room for 3 * faceCount integers
 * @return 1; 0, with nothing written, without a triangulation or with a null pointer */
ZELVAN_API int ZELVAN_CALL GetFaces(int* out);

/**
 * The number of contours of the main polygon: for each area its outer contour,
 * then its holes.
 *
 * @return the number, 0 without a main polygon */
ZELVAN_API int ZELVAN_CALL GetContourCount(void);

/**
 * The number of the first vertex of a contour. Contour i owns GetContourSize(i)
 * consecutive vertices:
 *
 *     for (i = 0; i < GetContourCount(); ++i)
 *       ring(xyz + 3 * GetContourIndex(i), GetContourSize(i));
 *
 * The vertex is found by its place: where an earlier contour touches this one
 * at its first vertex, the earlier vertex is named. Add up the sizes where
 * that matters.
 *
 * @param contour  0 for the first
 * @return the number, -1 when there is no such contour */
ZELVAN_API int ZELVAN_CALL GetContourIndex(int contour);

/**
 * The number of vertices of a contour.
 *
 * @param contour  0 for the first
 * @return the number, -1 when there is no such contour */
ZELVAN_API int ZELVAN_CALL GetContourSize(int contour);

#ifdef __cplusplus
}
#endif

#endif
