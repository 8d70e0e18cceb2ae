// Uniting and subtracting what QueueContour has queued.
#ifndef ZELVAN_TOOLS_BOOLEANS_H
#define ZELVAN_TOOLS_BOOLEANS_H

namespace tool {

// Whether the library has them at all.
bool HaveBooleans();

// Each answers whether the library did it.
bool UniteQueued();
bool SubtractQueued();

}  // namespace tool

#endif
