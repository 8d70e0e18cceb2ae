/** @file
 * Regions as values, in plain C: the door for every language.
 *
 * A region is a set of polygons with holes on a grid. It is immutable; a handle counts its
 * users. Any rings make one; two are united, intersected, subtracted; any is cut into
 * triangles. C++ programs include zelvan/region.h, a thin header over these functions, where
 * the guarantees stand that hold for both.
 *
 *     double xy[] = {0,0, 10,0, 10,10, 0,10,   3,3, 7,3, 7,7, 3,7};
 *     uint32_t rings[] = {0, 4, 8};            // where each ring starts, and the end
 *     const zelvan_region* frame = NULL;
 *     zelvan_counts n;
 *     uint32_t* triangles;
 *
 *     if (zelvan_region_create(xy, rings, 2, ZELVAN_EVEN_ODD, NULL, &frame, NULL) != ZELVAN_OK)
 *       return 1;
 *     zelvan_region_counts(frame, &n);         // 1 polygon, 2 rings, 8 vertices, 8 triangles
 *     triangles = malloc(3 * n.triangles * sizeof *triangles);
 *     zelvan_region_triangulate(frame, ZELVAN_DELAUNAY, &n, triangles, NULL);
 *     zelvan_region_release(frame);
 *
 * What holds for all functions:
 *  - Coordinates are doubles in the host's units, x and y in turn. Offsets and numbers of
 *    vertices have 32 bits and begin with 0. Ring i of an offsets array owns the points from
 *    offsets[i] to offsets[i + 1] - 1, so the array has an entry more than there are rings.
 *  - NULL is the empty region, as an argument and as a result. A region without polygons has a
 *    handle of its own only where zelvan_region_lost has something to say.
 *  - Coordinates that are zero come out as 0, those that were given as -0.0 included.
 *  - Arrays stay the caller's and are not kept. An array to be filled must have room for what
 *    zelvan_region_counts says; the caller hands these counts in, and other ones are refused.
 *  - A function that fails leaves what it should have filled as it was, but for the arrays of
 *    zelvan_region_triangulate, which may then be filled in part. No exception leaves.
 *  - Threads share nothing but what they are given: any functions may run in any threads at
 *    once, on the same regions, too. A handle that is released in one thread may not be used in
 *    another one that holds no handle of its own. The library keeps some working memory from
 *    one operation to the next, up to 8 MB for each of four threads.
 */
#ifndef ZELVAN_REGION_C_H
#define ZELVAN_REGION_C_H

#include <stdint.h>
#include <zelvan/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/** How a call ended. */
typedef int32_t zelvan_status;

/** The statuses. */
enum {
  ZELVAN_OK = 0,
  ZELVAN_NO_MEMORY = 1,
  ZELVAN_NOT_FINITE = 2, /**< a coordinate is infinite or no number */
  /** A point lies outside the grid; where no grid is given, beyond 2^500 to either side of 0,
   * within which there is a grid for all points. */
  ZELVAN_OUTSIDE_GRID = 3,
  ZELVAN_BAD_GRID = 4, /**< see zelvan_grid */
  /** A null pointer, descending offsets, an unknown rule or operation, or counts that are not
   * the region's. */
  ZELVAN_BAD_ARGUMENT = 5,
  ZELVAN_TOO_LARGE = 6, /**< more than 2^31 - 1 vertices */
  ZELVAN_INTERNAL = 7,  /**< a contradiction inside the library: a defect */
  /** On the coarser grid of an operation, an operand would lose a polygon or a hole, or more
   * than 2^-10 of the area of one. */
  ZELVAN_TOO_COARSE = 8
};

/** What a status means, in English; never NULL, never to be freed. */
ZELVAN_API const char* ZELVAN_CALL zelvan_status_message(zelvan_status status);

/** The rules by which rings bound a region: a point is inside where its winding number, the
 * times that rings run around it counter-clockwise less the times clockwise, is ... */
enum {
  ZELVAN_EVEN_ODD = 0, /**< odd */
  ZELVAN_NON_ZERO = 1, /**< not 0 */
  ZELVAN_POSITIVE = 2, /**< above 0 */
  ZELVAN_NEGATIVE = 3  /**< below 0 */
};

/** The operations on two regions. */
enum {
  ZELVAN_UNITE = 0,
  ZELVAN_INTERSECT = 1,
  ZELVAN_SUBTRACT = 2,
  ZELVAN_XOR = 3 /**< what lies in one of the two */
};

/** How an offset goes around a corner. */
enum {
  ZELVAN_JOIN_ROUND = 0, /**< along an arc */
  ZELVAN_JOIN_MITER = 1, /**< to where the edges' copies meet, up to a limit; else as a bevel */
  ZELVAN_JOIN_BEVEL = 2  /**< straight from one edge's copy to the next one's */
};

/** Options of zelvan_region_triangulate and zelvan_rings_triangulate. */
enum {
  ZELVAN_DELAUNAY = 1,  /**< the constrained Delaunay triangulation */
  ZELVAN_NEIGHBOURS = 2 /**< neighbours, too; of zelvan_rings_triangulate alone */
};

/** Options of zelvan_region_nearest. */
enum {
  ZELVAN_BOUNDARY = 1 /**< of the boundary, also for points inside */
};

/** The size of grids. */
enum {
  ZELVAN_GRID_BITS = 31 /**< a grid has 2^31 points along each axis */
};

/** The points that regions have their vertices on: (x + i * step, y + j * step) for i and j
 * from 0 to 2^ZELVAN_GRID_BITS - 1. `step` is a power of two from 2^-480 to 2^480; x and y are
 * multiples of it, at most 2^52 steps from 0. So each point is a double, without rounding. */
typedef struct zelvan_grid {
  double x;    /**< of the lowest, leftmost point */
  double y;    /**< of the same */
  double step; /**< from one point to the next, along each axis */
} zelvan_grid;

/** Sizes of a region. */
typedef struct zelvan_counts {
  uint32_t polygons;  /**< outer rings with what they enclose */
  uint32_t rings;     /**< of all polygons: outer rings and holes */
  uint32_t vertices;  /**< of all rings */
  uint32_t triangles; /**< of zelvan_region_triangulate */
} zelvan_counts;

/** Where a coordinate was refused. */
typedef struct zelvan_fault {
  uint32_t ring;  /**< of those given */
  uint32_t point; /**< of that ring */
} zelvan_fault;

/** A region; handles are pointers to const, for it never changes. */
typedef struct zelvan_region zelvan_region;

/**
 * The grid with the least step that holds some points, its middle near theirs; for a single
 * point with the least step that zelvan_grid allows there.
 *
 * @param xy     the points; a box is given by two of them
 * @param count  their number; for none the grid has the step 1 and (0, 0) in its middle
 * @param grid   receives the grid
 * @return ZELVAN_OK, ZELVAN_NOT_FINITE, ZELVAN_OUTSIDE_GRID, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_grid_covering(const double* xy, uint32_t count,
                                                          zelvan_grid* grid);

/** Whether a grid is one: ZELVAN_OK, ZELVAN_BAD_GRID or ZELVAN_BAD_ARGUMENT (for NULL). */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_grid_check(const zelvan_grid* grid);

/**
 * The grid that an operation on some regions takes (see zelvan_region_combine). A host that is
 * told ZELVAN_TOO_COARSE finds the step here; each region that zelvan_region_on_grid moves to
 * this grid takes part as it then is.
 *
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_OUTSIDE_GRID (no grid holds all),
 *         ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_grid_common(const zelvan_region* const* regions,
                                                        uint32_t count, zelvan_grid* grid);

/**
 * The region that rings bound. Rings may run in any direction and cross, touch and repeat
 * themselves and each other; spikes, repeated points and rings without area are ignored. Each
 * point goes to the nearest one of the grid, half a step at most along each axis (up where
 * two are as near); multiples of the step stay as they are. Rings that a region reads make the
 * same region again.
 *
 * @param xy            the points of all rings; a ring need not repeat its first point
 * @param ring_offsets  ring_count + 1 offsets into them, in points
 * @param ring_count    may be 0, the pointers may then be NULL
 * @param rule          a fill rule
 * @param grid          or NULL for that of zelvan_grid_covering
 * @param region        receives a handle
 * @param fault         receives the place of a refused coordinate; may be NULL
 * @return ZELVAN_OK, ZELVAN_NOT_FINITE, ZELVAN_OUTSIDE_GRID, ZELVAN_BAD_GRID,
 *         ZELVAN_BAD_ARGUMENT, ZELVAN_TOO_LARGE, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_create(
    const double* xy, const uint32_t* ring_offsets, uint32_t ring_count, int32_t rule,
    const zelvan_grid* grid, const zelvan_region** region, zelvan_fault* fault);

/**
 * The union of rings, whichever way each runs: all are turned so that their areas are not
 * negative, and the region is where the winding number is not 0. That is meant for rings that
 * do not cross themselves: a ring that does may still run clockwise around a part of what it
 * encloses, and there it cancels another ring. Rings that cross themselves are made regions
 * one by one (zelvan_region_create by ZELVAN_NON_ZERO), and these united (zelvan_region_unite).
 * Arguments as zelvan_region_create. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_unite_rings(
    const double* xy, const uint32_t* ring_offsets, uint32_t ring_count, const zelvan_grid* grid,
    const zelvan_region** region, zelvan_fault* fault);

/**
 * An operation on the regions that two sets of rings bound, in one sweep: the same region as
 * that of zelvan_region_combine on two of zelvan_region_create, but that crossings are rounded
 * once. Arguments as there; without a grid the one that covers all rings is taken. The rings of
 * b are counted on from those of a where a coordinate is refused. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_rings_combine(
    int32_t operation, const double* xy_a, const uint32_t* offsets_a, uint32_t rings_a,
    int32_t rule_a, const double* xy_b, const uint32_t* offsets_b, uint32_t rings_b, int32_t rule_b,
    const zelvan_grid* grid, const zelvan_region** region, zelvan_fault* fault);

/** One more handle for the same region; the same pointer. NULL gives NULL. */
ZELVAN_API const zelvan_region* ZELVAN_CALL zelvan_region_retain(const zelvan_region* region);

/** Gives one handle back; the last one frees the region. NULL is ignored. */
ZELVAN_API void ZELVAN_CALL zelvan_region_release(const zelvan_region* region);

/**
 * Combines two regions. Where they are on one grid, the result is on it. Else both go first
 * to the grid of one of them, if its step is the coarser one and it holds both; if not, to
 * the grid that zelvan_grid_covering gives for both, with the coarser of the two steps at
 * least. The grid of an empty region does not count.
 *
 * What would be lost on the way is not lost silently. The move of a region is refused where a
 * polygon or a hole would enclose nothing any more, where the area of one would change by more
 * than 2^-10 of it, and where there would be fewer polygons or holes, since two have become
 * one. zelvan_region_on_grid moves all the same.
 *
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_OUTSIDE_GRID (no grid holds both),
 *         ZELVAN_TOO_COARSE, ZELVAN_TOO_LARGE, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_combine(int32_t operation,
                                                           const zelvan_region* a,
                                                           const zelvan_region* b,
                                                           const zelvan_region** result);

/** The union of any number of regions, in one go; grids and results as above. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_unite(const zelvan_region* const* regions,
                                                         uint32_t count,
                                                         const zelvan_region** result);

/**
 * A region grown by a distance, or shrunk by one below 0: the complement of the grown
 * complement. A round offset holds the places at most that far from the region.
 *
 * With t the tolerance and s the step of the result's grid, for the round join:
 *  - Every point of the result's boundary is at |distance| from the region's boundary, within
 *    t + s; and each place where that tells on which side it lies, lies there.
 *  - Tolerances below s count as s (below 3 s where the grid is not the region's), those below
 *    |distance| / 2^20 as that, and none takes an arc farther off than |distance| / 8.
 *  - To offset by a distance and then by its opposite, a growing one first, contains the region,
 *    and a greater distance gives what contains the smaller one's, but for twice t + s.
 * Miter and bevel: the union of the region, of the rectangle that each edge sweeps on its outer
 * side, and at each corner that turns outward of what lies before the straight cut or the tip.
 *
 * Why that is right: a place outside whose nearest point of the boundary is q lies on the normal
 * of q's edge, or between those of q's two edges. So what is grown is the union of the region,
 * a rectangle for each edge and a sector for each corner that turns outward. Their common sides
 * cancel, and what is left is one closed curve for each ring, along the edges' copies, around
 * outward corners and through the others. It winds around each place as often as these parts
 * cover it, so its positive winding numbers are their union. Points of the curve are rounded to
 * the grid, both ends of an edge's copy alike and those of an arc in their order, so that no part
 * turns over: 0.71 steps. Crossings are rounded once more: 0.71 steps. What these take beyond one
 * step, chords of arcs have less.
 *
 * The result is on the region's grid if that holds it, else on the one of zelvan_grid_covering for
 * the grown box, with the region's step at least. A distance of less than a step gives the region.
 *
 * @param distance     in the host's units
 * @param join         how a corner is gone around
 * @param miter_limit  for ZELVAN_JOIN_MITER, else ignored: a tip farther from its corner than that
 *                     many distances is cut to a bevel; at least 1, above 2^16 it counts as that
 * @param tolerance    how far arcs may be off, in the host's units; 0 for |distance| / 500
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT (numbers that are not finite included),
 *         ZELVAN_OUTSIDE_GRID (no grid holds the result), ZELVAN_TOO_COARSE (as for
 *         zelvan_region_combine), ZELVAN_TOO_LARGE (the curve has more than 2^31 - 1 points),
 *         ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_offset(const zelvan_region* region,
                                                          double distance, int32_t join,
                                                          double miter_limit, double tolerance,
                                                          const zelvan_region** result);

/**
 * A region on another grid, whatever that costs: points go to the nearest ones of the grid, and
 * what encloses nothing there is gone. A region without polygons stays as it is.
 *
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_BAD_GRID, ZELVAN_OUTSIDE_GRID (the grid does
 *         not hold the region), ZELVAN_TOO_LARGE, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_on_grid(const zelvan_region* region,
                                                           const zelvan_grid* grid,
                                                           const zelvan_region** result);

/** How many rings are gone below the step: those with an area that enclose nothing on the grid,
 * among the rings that the region was made of, and among its own where zelvan_region_on_grid
 * moved it. The result of an operation has lost what its operands have, added up. An area is
 * more than rounding in doubles can make; 0 for NULL, and 2^32 - 1 where there are more. */
ZELVAN_API uint32_t ZELVAN_CALL zelvan_region_lost(const zelvan_region* region);

/** Whether two regions have the same polygons and the same grid: 1 or 0. Regions without
 * polygons are all equal; points on straight edges do not count. */
ZELVAN_API int32_t ZELVAN_CALL zelvan_region_equal(const zelvan_region* a, const zelvan_region* b);

/** The sizes of a region; none for NULL, as for every region without polygons. */
ZELVAN_API void ZELVAN_CALL zelvan_region_counts(const zelvan_region* region,
                                                 zelvan_counts* counts);

/** The grid of a region; for a region without polygons that of zelvan_grid_covering for no
 * points. */
ZELVAN_API void ZELVAN_CALL zelvan_region_grid(const zelvan_region* region, zelvan_grid* grid);

/** The area of a region, exact but for the one rounding to a double. */
ZELVAN_API double ZELVAN_CALL zelvan_region_area(const zelvan_region* region);

/** The box of a region, as least x, least y, greatest x, greatest y. @return 1, or 0 with
 * nothing written for a region without polygons */
ZELVAN_API int32_t ZELVAN_CALL zelvan_region_bounds(const zelvan_region* region, double* box);

/**
 * Makes the index of a region's edges that zelvan_region_contains uses, if there is none yet, so
 * that even the first points take O(log n). To make it takes O(n log^2 n) steps at worst, to keep
 * it O(n log n) memory at worst, and much less where few edges cross the height of many vertices.
 * All handles of the region share it. Any thread may call this at any time.
 *
 * @return ZELVAN_OK, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_prepare(const zelvan_region* region);

/**
 * Where points lie, decided exactly (what is less than 2^-400 steps from an axis, but not on
 * it, counts as that far).
 *
 * @param xy     points; those that are not finite lie outside
 * @param count  their number
 * @param sides  receives for each 1 inside, 0 on the boundary, -1 outside
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT
 *
 * The first 63 points, fewer than 64 of them at once, each take a look at every ring's box and at
 * the edges of the rings whose boxes they lie in. Then the region makes an index of its edges and
 * keeps it (zelvan_region_prepare): from there on a point takes O(log n). Where there is no memory
 * for the index the answers are the same without it. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_contains(const zelvan_region* region,
                                                            const double* xy, uint32_t count,
                                                            int8_t* sides);

/**
 * Writes the polygons of a region, in an order that depends on the region alone. Each is an
 * outer ring, counter-clockwise, and its holes, clockwise; a ring starts at its leftmost, of
 * several its lowest vertex; holes and polygons are sorted by their rings' points. Rings do
 * not touch themselves and meet others in single points alone: the polygons are valid simple
 * features. A ring has points at its corners, and where rings of its polygon touch; those of a
 * part of an overlay (zelvan/overlay_c.h) also where other parts meet on a straight edge.
 *
 * @param room             the region's counts, for which the arrays have room
 * @param xy               2 * vertices doubles; may be NULL, as the other arrays
 * @param ring_offsets     rings + 1 offsets of vertices
 * @param polygon_offsets  polygons + 1 offsets of rings
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_read(const zelvan_region* region,
                                                        const zelvan_counts* room, double* xy,
                                                        uint32_t* ring_offsets,
                                                        uint32_t* polygon_offsets);

/**
 * Cuts a region into triangles of its own vertices, numbered as zelvan_region_read gives
 * them. A polygon of n vertices with h holes has n + 2h - 2 triangles, two less for each ring
 * that touches others in one place; where rings touch, each wedge between them has one vertex
 * of those in that place. Triangles come polygon by polygon. Which ones they are is free but for
 * ZELVAN_DELAUNAY: the same region gives the same triangles, another version may give others.
 *
 * @param options     0 or ZELVAN_DELAUNAY: of all ways to cut the region the one in which no
 *                    triangle's circle holds a vertex that its inside sees; where four
 *                    vertices or more lie on such a circle, the one is taken that the
 *                    places of the vertices alone decide
 * @param room        the region's counts
 * @param triangles   3 * triangles vertex numbers, counter-clockwise
 * @param neighbours  3 * triangles numbers of triangles, the first across the edge between
 *                    the first two corners and so on around; -1 on a contour. May be NULL.
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT; ZELVAN_NO_MEMORY, with the arrays filled in part */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_triangulate(const zelvan_region* region,
                                                               uint32_t options,
                                                               const zelvan_counts* room,
                                                               uint32_t* triangles,
                                                               int32_t* neighbours);

/**
 * Whether two regions have a point in common. So in all three questions: regions have their
 * boundaries, a region without polygons has no point, and NULL is one. The answer is exact on any
 * two grids, without a region being made: what lies in the boxes of both is swept, until the
 * answer is known. For n edges in these boxes that takes O(n log n) steps at worst, and a look at
 * each edge of both regions.
 *
 * @param answer  receives 1 or 0
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_TOO_COARSE (one step is more than 2^200 times the
 *         other), ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_intersects(const zelvan_region* a,
                                                              const zelvan_region* b,
                                                              int32_t* answer);

/** Whether two regions have points of their boundaries in common, but no inner points. Arguments
 * and statuses as zelvan_region_intersects. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_touches(const zelvan_region* a,
                                                           const zelvan_region* b, int32_t* answer);

/** Whether a has every point of b; so every region covers one without polygons. Arguments and
 * statuses as zelvan_region_intersects. */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_covers(const zelvan_region* a,
                                                          const zelvan_region* b, int32_t* answer);

/**
 * The distance of two regions, which is 0 exactly where they have a point in common, and places of
 * them that are so far apart. The same on every machine. The distance is off by at most 2^-48 of
 * itself, and places by 2^-48 of the size of both regions, where the regions' box has 2^53 of the
 * finer steps at most along each axis; else by 2^-48 of that box. It is searched in the indexes of
 * zelvan_region_nearest, where the regions share no point.
 *
 * @param distance  receives the distance; infinity where a region has no polygons
 * @param places    receives x and y of a place of a, then of b, no numbers where the distance is
 *                  infinite; may be NULL
 * @return as zelvan_region_intersects */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_distance(const zelvan_region* a,
                                                            const zelvan_region* b,
                                                            double* distance, double* places);

/**
 * The nearest places of a region for some points. Inside the region that is the point itself, and
 * the distance is 0, unless ZELVAN_BOUNDARY is asked for. Of equally near edges the first one that
 * zelvan_region_read gives is taken; the same on every machine. Errors are those of
 * zelvan_region_distance, with the point for the other region. The region makes an index of its
 * edges at the first call, in O(n log n) steps, and keeps it: a point takes O(log n) steps where
 * edges are short, and up to n where long ones lie side by side.
 *
 * @param options    0 or ZELVAN_BOUNDARY
 * @param xy         points
 * @param count      their number
 * @param places     receives x and y of each place; may be NULL
 * @param distances  receives the distances; may be NULL
 * Of a region without polygons, and for points that are not finite or more than 2^400 steps from
 * 0, the distance is infinite and the place is no number.
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_nearest(const zelvan_region* region,
                                                           uint32_t options, const double* xy,
                                                           uint32_t count, double* places,
                                                           double* distances);

/** The length of the boundary, holes included; off by at most 2^-51 of itself. */
ZELVAN_API double ZELVAN_CALL zelvan_region_length(const zelvan_region* region);

/** The centroid of a region, as x and y: the sums are exact, the result is rounded to doubles, and
 * off by at most 2^-50 of its larger coordinate and of the region's size. @return 1, or 0 with
 * nothing written for a region without polygons */
ZELVAN_API int32_t ZELVAN_CALL zelvan_region_centroid(const zelvan_region* region, double* xy);

/** The convex hull of a region, exact, on its grid.
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_hull(const zelvan_region* region,
                                                        const zelvan_region** result);

/**
 * The box of least area around a region, in any direction; of equal ones that along the first edge
 * of zelvan_region_hull which has one. Areas are compared as doubles, off by at most 2^-48 of
 * themselves; so are corners, of the region's size.
 *
 * @param corners  receives x and y of four corners, counter-clockwise, no numbers for a region
 *                 without polygons; the first side runs along the edge
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_least_box(const zelvan_region* region,
                                                             double* corners);

/** One polygon of a region, with its holes, as a region on the same grid.
 *
 * @param polygon  its number, in the order of zelvan_region_read
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT (there is none of that number), ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_polygon(const zelvan_region* region,
                                                           uint32_t polygon,
                                                           const zelvan_region** result);

/**
 * A region moved, turned, scaled, sheared or mirrored:
 * x' = m[0] x + m[1] y + m[2], y' = m[3] x + m[4] y + m[5].
 *
 * Where the matrix moves by whole steps alone, nothing is rounded and every polygon stays as it is:
 * on the given grid if that has the same step; without one on the region's own grid if that holds
 * the result, else on that grid moved along. In all other cases the points are computed in doubles
 * in the order as written, go to the nearest ones of the grid, and the region is made again of
 * them: what encloses nothing there is gone, as zelvan_region_lost says. By a matrix without an
 * inverse nothing is left.
 *
 * @param matrix  six numbers
 * @param grid    or NULL for the region's own grid if that holds the result, else for the one that
 *                zelvan_grid_covering gives
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_BAD_GRID, ZELVAN_NOT_FINITE, ZELVAN_OUTSIDE_GRID,
 *         ZELVAN_TOO_LARGE, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_region_transform(const zelvan_region* region,
                                                             const double* matrix,
                                                             const zelvan_grid* grid,
                                                             const zelvan_region** result);

/** Triangles with their vertices, as zelvan_region_read and zelvan_region_triangulate give them,
 * in arrays that the library owns until zelvan_mesh_release. */
typedef struct zelvan_mesh {
  zelvan_counts counts;      /**< of the region */
  const double* xy;          /**< x and y of the vertices */
  const uint32_t* triangles; /**< three vertices each */
  const int32_t* neighbours; /**< three triangles each; NULL without ZELVAN_NEIGHBOURS */
} zelvan_mesh;

/**
 * The triangles of the region that rings bound, in one call. Arguments as zelvan_region_create.
 *
 * @param options  ZELVAN_DELAUNAY and ZELVAN_NEIGHBOURS, joined by |, or 0
 * @param mesh     receives the mesh; its arrays are NULL where there are no triangles
 * @return as zelvan_region_create */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_rings_triangulate(
    const double* xy, const uint32_t* ring_offsets, uint32_t ring_count, int32_t rule,
    const zelvan_grid* grid, uint32_t options, const zelvan_mesh** mesh, zelvan_fault* fault);

/** Gives a mesh back, with its arrays. NULL is ignored. */
ZELVAN_API void ZELVAN_CALL zelvan_mesh_release(const zelvan_mesh* mesh);

#ifdef __cplusplus
}
#endif

#endif
