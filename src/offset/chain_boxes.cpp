// The tree of boxes over a ring (chain_boxes.h).
#include "offset/chain_boxes.h"

#include <algorithm>

namespace zelvan::offset {

namespace {

double Beyond(double v, double low, double high) noexcept {
  return std::max({low - v, v - high, 0.0});
}

}  // namespace

void ChainBoxes::Build(std::span<const GridPoint> ring) {
  ring_ = ring;
  levels_.resize(1);
  levels_[0].clear();
  for (std::size_t first = 0; first < ring.size(); first += kFan) {
    GridBox box{ring[first], ring[first]};
    for (std::size_t i = first + 1; i <= std::min(first + kFan, ring.size()); ++i) {
      GrowBox(box, ring[i < ring.size() ? i : 0]);
    }
    levels_[0].push_back(box);
  }
  while (levels_.back().size() > kFan) {
    const std::vector<GridBox>& below = levels_.back();
    std::vector<GridBox> level;
    for (std::size_t first = 0; first < below.size(); first += kFan) {
      GridBox box = below[first];
      for (std::size_t i = first + 1; i < std::min(first + kFan, below.size()); ++i) {
        GrowBox(box, below[i].min);
        GrowBox(box, below[i].max);
      }
      level.push_back(box);
    }
    levels_.push_back(std::move(level));
  }
}

// Blocks of each level before and after whole blocks of the next one.
bool ChainBoxes::ComesNear(std::size_t first, std::size_t end, WorldPoint place,
                           double radius) const noexcept {
  const Disc disc{place, radius * radius};
  for (std::size_t level = 0; first < end; ++level) {
    const bool isLast = level == levels_.size() || end - first < 2 * kFan;
    for (; first < end && (isLast || first % kFan != 0); ++first) {
      if (BlockComesNear(level, first, disc)) return true;
    }
    for (; first < end && end % kFan != 0; --end) {
      if (BlockComesNear(level, end - 1, disc)) return true;
    }
    first /= kFan;
    end /= kFan;
  }
  return false;
}

bool ChainBoxes::BlockComesNear(std::size_t level, std::size_t block,
                                const Disc& disc) const noexcept {
  if (level == 0) return EdgeComesNear(block, disc);
  const GridBox& box = levels_[level - 1][block];
  const double dx = Beyond(disc.centre.x, box.min.gx, box.max.gx);
  const double dy = Beyond(disc.centre.y, box.min.gy, box.max.gy);
  if (dx * dx + dy * dy >= disc.square) return false;
  const std::size_t end = std::min((block + 1) * kFan, SizeOf(level - 1));
  for (std::size_t i = block * kFan; i < end; ++i) {
    if (BlockComesNear(level - 1, i, disc)) return true;
  }
  return false;
}

bool ChainBoxes::EdgeComesNear(std::size_t edge, const Disc& disc) const noexcept {
  const GridPoint p = ring_[edge];
  const GridPoint q = ring_[edge + 1 < ring_.size() ? edge + 1 : 0];
  const WorldPoint along{static_cast<double>(q.gx) - p.gx, static_cast<double>(q.gy) - p.gy};
  const WorldPoint away{disc.centre.x - p.gx, disc.centre.y - p.gy};
  const double square = along.x * along.x + along.y * along.y;
  const double part = std::clamp((away.x * along.x + away.y * along.y) / square, 0.0, 1.0);
  const double dx = away.x - part * along.x;
  const double dy = away.y - part * along.y;
  return dx * dx + dy * dy < disc.square;
}

}  // namespace zelvan::offset
