/** @file
 * Many regions at once, in plain C: for languages in which a call costs more than a small
 * region. Each function does to arrays of handles what one of zelvan/region_c.h does to a
 * handle; what holds there for all functions holds here.
 *
 *     double xy[] = {0,0, 4,0, 4,4, 0,4,   6,0, 9,0, 9,3,   5,5, 6,5, 6,6};
 *     uint32_t rings[] = {0, 4, 7, 10};        // where each ring starts in points, and the end
 *     uint32_t polygons[] = {0, 1, 2, 3};      // each polygon in rings
 *     uint32_t regions[] = {0, 1, 3};          // each region in polygons
 *     const zelvan_region* made[2];
 *     double areas[2];
 *
 *     if (zelvan_regions_create(xy, rings, polygons, regions, 2, NULL, made, NULL) != ZELVAN_OK)
 *       return 1;
 *     zelvan_regions_measure(made, 2, areas, NULL, NULL);    // 16 and 5
 *     zelvan_regions_release(made, 2);
 *
 * What holds for all functions:
 *  - NULL among the handles is the empty region. All that a function makes is the caller's to
 *    release, one handle for each region.
 *  - `failed` receives the number of the region that a failure is about, where there is one; it
 *    may be NULL. A function that fails has made nothing. */
#ifndef ZELVAN_REGIONS_C_H
#define ZELVAN_REGIONS_C_H

#include <zelvan/region_c.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Makes a region of each of many sets of polygons, all on one grid. The rings of a polygon
 * count by ZELVAN_EVEN_ODD; the polygons of a region are united. The arrays are those of
 * GeoArrow's multipolygons, whose rings repeat their first points.
 *
 * @param xy                the points of all rings; a ring need not repeat its first point
 * @param ring_offsets      where each ring starts in points, and the end
 * @param polygon_offsets   where each polygon starts in rings, and the end
 * @param region_offsets    where each region starts in polygons, and the end
 * @param count             of the regions; for 0 the pointers may be NULL
 * @param grid              or NULL for that of zelvan_grid_covering for all points
 * @param regions           receives `count` handles
 * @return as zelvan_region_create */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_create(
    const double* xy, const uint32_t* ring_offsets, const uint32_t* polygon_offsets,
    const uint32_t* region_offsets, uint32_t count, const zelvan_grid* grid,
    const zelvan_region** regions, uint32_t* failed);

/**
 * The same from well-known binary (Open Geospatial Consortium, 1999; extended, with an SRID
 * and heights, which are passed over, or not). Polygons, multipolygons and collections of them
 * are taken; points and lines bound no region, and are counted.
 *
 * @param bytes     the records, one behind the other
 * @param offsets   where each starts in bytes, and the end; one without bytes is an empty region
 * @param count     of the records; for 0 the pointers may be NULL
 * @param grid      or NULL for that of zelvan_grid_covering for all points
 * @param regions   receives `count` handles
 * @param left_out  receives the number of geometries that bound no region; may be NULL
 * @return as zelvan_region_create; ZELVAN_BAD_ARGUMENT for what is no such record, too */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_from_wkb(
    const uint8_t* bytes, const uint64_t* offsets, uint32_t count, const zelvan_grid* grid,
    const zelvan_region** regions, uint32_t* left_out, uint32_t* failed);

/**
 * Writes each region as well-known binary, in the order of bytes that has the least first: as a
 * polygon where it has one, else as a multipolygon; rings are closed.
 *
 * @param offsets  count + 1 of them: where each record starts in bytes, and the end. Written
 *                 where `bytes` is NULL, else handed in as they were written.
 * @param bytes    room for offsets[count] bytes, or NULL to ask for the offsets
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_to_wkb(const zelvan_region* const* regions,
                                                           uint32_t count, uint64_t* offsets,
                                                           uint8_t* bytes);

/** One more handle for each region. */
ZELVAN_API void ZELVAN_CALL zelvan_regions_retain(const zelvan_region* const* regions,
                                                  uint32_t count);

/** Gives a handle of each region back. */
ZELVAN_API void ZELVAN_CALL zelvan_regions_release(const zelvan_region* const* regions,
                                                   uint32_t count);

/**
 * Combines regions pair by pair, as zelvan_region_combine.
 *
 * @param a_count  of the first operands
 * @param b_count  of the second operands: as many, or one of the counts is 1, and that one region
 *                 is combined with each of the others
 * @param results  receives as many handles as there are pairs
 * @return as zelvan_region_combine */
ZELVAN_API zelvan_status ZELVAN_CALL
zelvan_regions_combine(int32_t operation, const zelvan_region* const* a, uint32_t a_count,
                       const zelvan_region* const* b, uint32_t b_count,
                       const zelvan_region** results, uint32_t* failed);

/**
 * The areas and boxes of regions, and what they lost.
 *
 * @param areas  receives `count` of them; may be NULL
 * @param boxes  receives least x, least y, greatest x, greatest y of each, four NaNs for one
 *               without polygons; may be NULL
 * @param lost   receives `count` numbers, as zelvan_region_lost gives them; may be NULL
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_measure(const zelvan_region* const* regions,
                                                            uint32_t count, double* areas,
                                                            double* boxes, uint32_t* lost);

/**
 * Where a point lies in each region, as zelvan_region_contains.
 *
 * @param xy           the points
 * @param point_count  as many as regions, one for each, or 1 for all
 * @param sides        receives `count` sides
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_contains(const zelvan_region* const* regions,
                                                             uint32_t count, const double* xy,
                                                             uint32_t point_count, int8_t* sides);

/** The sizes of all regions together. @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_TOO_LARGE */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_counts(const zelvan_region* const* regions,
                                                           uint32_t count, zelvan_counts* counts);

/**
 * Writes the polygons of all regions, each as zelvan_region_read does.
 *
 * @param room             the counts of all, for which the arrays have room
 * @param xy               2 * vertices doubles
 * @param ring_offsets     rings + 1 offsets of vertices
 * @param polygon_offsets  polygons + 1 offsets of rings
 * @param region_offsets   count + 1 offsets of polygons
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_TOO_LARGE */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_regions_read(const zelvan_region* const* regions,
                                                         uint32_t count, const zelvan_counts* room,
                                                         double* xy, uint32_t* ring_offsets,
                                                         uint32_t* polygon_offsets,
                                                         uint32_t* region_offsets);

#ifdef __cplusplus
}
#endif

#endif
