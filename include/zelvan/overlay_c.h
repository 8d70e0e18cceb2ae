/** @file
 * Layers, in plain C: whose is what. C++ programs include zelvan/overlay.h.
 *
 * An overlay of any number of regions cuts the ground into parts: for each set of regions that
 * covers some ground, the region that just these cover. A check of a coverage, regions that ought
 * to tile, names every overlap, gap and sliver.
 *
 *     double land[] = {0,0, 4,0, 4,4, 0,4};
 *     double flood[] = {2,1, 6,1, 6,3, 2,3};
 *     uint32_t ring[] = {0, 4};
 *     const zelvan_region* layers[2] = {NULL, NULL};
 *     const zelvan_overlay* overlay = NULL;
 *     zelvan_part_counts n = {0, 0};
 *
 *     zelvan_region_create(land, ring, 1, ZELVAN_EVEN_ODD, NULL, &layers[0], NULL);
 *     zelvan_region_create(flood, ring, 1, ZELVAN_EVEN_ODD, NULL, &layers[1], NULL);
 *     if (zelvan_overlay_create(layers, 2, &overlay) == ZELVAN_OK) {
 *       zelvan_overlay_counts(overlay, &n);     // 3 parts, 4 inputs: {0}, {0, 1}, {1}
 *     }
 *     zelvan_overlay_release(overlay);
 *     zelvan_region_release(layers[0]);
 *     zelvan_region_release(layers[1]);
 *
 * What holds for all functions of zelvan/region_c.h holds here, too. Overlays are immutable, and
 * handles count their users. Inputs are numbered as they are given, from 0. All go first to one
 * grid, as for zelvan_region_unite, and crossings off the grid are rounded as there.
 */
#ifndef ZELVAN_OVERLAY_C_H
#define ZELVAN_OVERLAY_C_H

#include <stdint.h>
#include <zelvan/export.h>
#include <zelvan/region_c.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Parts of the ground, each with a region and the numbers of some inputs. */
typedef struct zelvan_overlay zelvan_overlay;

/** Sizes of an overlay. */
typedef struct zelvan_part_counts {
  uint32_t parts;  /**< each has a region */
  uint32_t inputs; /**< numbers of inputs, of all parts */
} zelvan_part_counts;

/** What is wrong with a coverage. */
enum {
  ZELVAN_OVERLAP = 0, /**< a polygon that two inputs or more cover: just these, its owners */
  ZELVAN_GAP = 1,     /**< a polygon that no input covers, and the inputs next to it */
  ZELVAN_SLIVER = 2   /**< a polygon of one input that is too narrow */
};

/**
 * For each set of regions that covers some ground, the region that just these cover. Parts are in
 * the order of their inputs, as sequences of ascending numbers, which depends on the regions alone.
 *
 * Parts fit: what two of them share are edges, end for end. So a part has vertices not only at
 * corners and where its rings touch, but wherever three edges or more of the overlay meet. Such
 * vertices count for no comparison (zelvan_region_equal) and no operation. The areas of parts sum
 * to that of the union.
 *
 * Takes of the order of (n + k) log n for n vertices and k crossings, and what the parts have in
 * vertices and inputs.
 *
 * @param regions  count regions; NULL, as any region without polygons, covers nothing
 * @param overlay  receives a handle
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, ZELVAN_OUTSIDE_GRID, ZELVAN_TOO_COARSE,
 *         ZELVAN_TOO_LARGE, ZELVAN_NO_MEMORY */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_overlay_create(const zelvan_region* const* regions,
                                                           uint32_t count,
                                                           const zelvan_overlay** overlay);

/**
 * What is wrong with regions that ought to tile: an overlay whose parts are the faults, each one
 * polygon: first the overlaps, in the order of their owners, then the gaps, then the slivers, in
 * the order of the inputs; else in that of a region's polygons.
 *
 * The width of a polygon is 2 area / perimeter, holes included: of a long strip its width, of a
 * square half a side, of a disc its radius. A gap is bounded: what is open to the outside is none.
 *
 * @param gap_width     wider gaps are no faults, such as lakes and courtyards; infinity for all
 *                      gaps, 0 for none
 * @param sliver_width  a polygon of an input is a sliver where it is narrower; 0 for none
 * @param faults        receives a handle
 * @return as zelvan_overlay_create; ZELVAN_BAD_ARGUMENT also for a width below 0 or that is no
 *         number */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_coverage_check(const zelvan_region* const* regions,
                                                           uint32_t count, double gap_width,
                                                           double sliver_width,
                                                           const zelvan_overlay** faults);

/** One more handle; the same pointer. NULL gives NULL. */
ZELVAN_API const zelvan_overlay* ZELVAN_CALL zelvan_overlay_retain(const zelvan_overlay* overlay);

/** Gives one handle back; the last one frees the overlay. NULL is ignored. */
ZELVAN_API void ZELVAN_CALL zelvan_overlay_release(const zelvan_overlay* overlay);

/** The sizes of an overlay; none for NULL. */
ZELVAN_API void ZELVAN_CALL zelvan_overlay_counts(const zelvan_overlay* overlay,
                                                  zelvan_part_counts* counts);

/**
 * Writes the inputs of all parts, ascending in each.
 *
 * @param room     the overlay's counts, for which the arrays have room
 * @param offsets  parts + 1 offsets into the inputs; may be NULL, as the other array
 * @param inputs   numbers of inputs
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_overlay_read(const zelvan_overlay* overlay,
                                                         const zelvan_part_counts* room,
                                                         uint32_t* offsets, uint32_t* inputs);

/**
 * The region of a part. It has lost what its inputs have, added up (zelvan_region_lost).
 *
 * @param part    below the number of parts
 * @param region  receives a handle
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_overlay_region(const zelvan_overlay* overlay,
                                                           uint32_t part,
                                                           const zelvan_region** region);

/**
 * Writes what the faults of zelvan_coverage_check are.
 *
 * @param room    the counts, for which the arrays have room
 * @param kinds   one of ZELVAN_OVERLAP, ... a fault; may be NULL, as the other array
 * @param widths  a number a fault
 * @return ZELVAN_OK, ZELVAN_BAD_ARGUMENT, also for what is no check */
ZELVAN_API zelvan_status ZELVAN_CALL zelvan_coverage_read(const zelvan_overlay* faults,
                                                          const zelvan_part_counts* room,
                                                          int32_t* kinds, double* widths);

#ifdef __cplusplus
}
#endif

#endif
