/// @file
/// The whole geometry toolkit: vectors, matrices, transforms and queries.
///
/// It stands apart from the polygons of zelvan/zelvan.h. All of it is plain values:
/// it allocates nothing, throws nothing, keeps no state, and may be called from any
/// thread. Link the library: what computes is compiled there, with contraction into
/// fused operations off, so that the host's own compiler settings cannot change a
/// result. (The image of a point is compiled into the host where they could not.)
/// Sines, arctangents and arccosines are the C library's, and may differ between C
/// libraries in the last place; all else is the same bits everywhere.
#ifndef ZELVAN_TOOLKIT_H
#define ZELVAN_TOOLKIT_H

#include <zelvan/matrix.h>
#include <zelvan/query.h>
#include <zelvan/transform.h>
#include <zelvan/vector.h>

#endif
