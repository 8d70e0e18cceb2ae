// Uniting and subtracting what QueueContour has queued.
#pragma once

namespace tool {

// Whether the library has them at all.
bool HaveBooleans();

// Each answers whether the library did it.
bool UniteQueued();
bool SubtractQueued();

}  // namespace tool
