// Crossing analysis: the rings of edge ends at the hot pixels, sorted.
//
// After it a vertex has entries exactly when something else meets it: another
// vertex, or an equal edge. Each such ring runs counter-clockwise from the +x
// direction; of equal edges B's come first. Of the equal edges of one operand
// one stands for all; the others are labelled LABEL_DROPPED. Both ends of a grid edge agree on
// which, because all copies run between the same two pixels and the end that is looked at first
// decides. Dropped entries stay in their rings: the labelling passes through them, the assembly
// passes over them.
#pragma once

#include <vector>

#include "boolean/cross_entry.h"
#include "polygon/records.h"

namespace zelvan {

/// Analyses every pixel that the sweep gave vertices, each once: first those without equal
/// edges, in the order of the sweep, in which their records stand side by side; then, where
/// there are any, the others and the tips of spikes, in the order of the contours. Where a
/// spike's edges end, at its foot, they are equal. Throws std::bad_alloc.
void AnalysePixels(const std::vector<CrossEntry*>& pixels, Area* a, Area* b, EntryPool& entries);

}  // namespace zelvan
