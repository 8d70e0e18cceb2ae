// Rings as edges, and the order of their vertices (edges.h).
#include "overlay/edges.h"

#include <algorithm>
#include <bit>

#include "memory/word_sort.h"

namespace zelvan::overlay {

namespace {

// The bits of both coordinates that differ somewhere, right-aligned: a key without slack.
class PlaceKeys {
 public:
  explicit PlaceKeys(const std::vector<Vertex>& vertices) noexcept : least_(vertices[0].at) {
    for (const Vertex& v : vertices) {
      least_.gx = std::min(least_.gx, v.at.gx);
      least_.gy = std::min(least_.gy, v.at.gy);
    }
    std::uint32_t usedX = 0;
    std::uint32_t usedY = 0;
    for (const Vertex& v : vertices) {
      usedX |= Difference(v.at.gx, least_.gx);
      usedY |= Difference(v.at.gy, least_.gy);
    }
    shiftX_ = usedX != 0 ? std::countr_zero(usedX) : 0;
    shiftY_ = usedY != 0 ? std::countr_zero(usedY) : 0;
    bitsX_ = static_cast<int>(std::bit_width(usedX >> shiftX_));
    bitsY_ = static_cast<int>(std::bit_width(usedY >> shiftY_));
  }

  [[nodiscard]] std::uint64_t X(GridPoint p) const noexcept {
    return Difference(p.gx, least_.gx) >> shiftX_;
  }
  [[nodiscard]] std::uint64_t Y(GridPoint p) const noexcept {
    return Difference(p.gy, least_.gy) >> shiftY_;
  }
  [[nodiscard]] int BitsX() const noexcept { return bitsX_; }
  [[nodiscard]] int BitsY() const noexcept { return bitsY_; }

 private:
  static std::uint32_t Difference(std::int32_t v, std::int32_t least) noexcept {
    return static_cast<std::uint32_t>(v) - static_cast<std::uint32_t>(least);
  }

  GridPoint least_;
  int shiftX_ = 0;
  int shiftY_ = 0;
  int bitsX_ = 0;
  int bitsY_ = 0;
};

// Words of a key above a position. Where x and y do not fit beside the position, the words are
// sorted by x, and runs of one x by y.
void SortByPlace(std::vector<std::uint64_t>& words, std::vector<std::uint64_t>& scratch,
                 const std::vector<Vertex>& vertices, int positionBits) {
  const PlaceKeys keys(vertices);
  const std::uint64_t mask = (std::uint64_t{1} << positionBits) - 1;
  const std::size_t n = vertices.size();
  words.resize(n);
  const bool fits = keys.BitsX() + keys.BitsY() + positionBits <= 64;
  if (fits) {
    for (std::size_t i = 0; i < n; ++i) {
      const GridPoint p = vertices[i].at;
      words[i] = (keys.X(p) << keys.BitsY() | keys.Y(p)) << positionBits | i;
    }
    SortWords(words, scratch, positionBits, keys.BitsX() + keys.BitsY());
    return;
  }
  for (std::size_t i = 0; i < n; ++i) words[i] = keys.X(vertices[i].at) << positionBits | i;
  SortWords(words, scratch, positionBits, keys.BitsX());
  for (std::size_t begin = 0; begin < n;) {
    std::size_t end = begin + 1;
    while (end < n && words[end] >> positionBits == words[begin] >> positionBits) ++end;
    if (end - begin > 1) {
      for (std::size_t i = begin; i < end; ++i) {
        const auto position = static_cast<std::size_t>(words[i] & mask);
        words[i] = keys.Y(vertices[position].at) << positionBits | position;
      }
      std::sort(words.begin() + static_cast<std::ptrdiff_t>(begin),
                words.begin() + static_cast<std::ptrdiff_t>(end));
    }
    begin = end;
  }
}

}  // namespace

void EdgeSet::Reserve(std::size_t points) {
  edges.reserve(points);
  vertices.reserve(points);
}

void EdgeSet::AddRing(std::span<const GridPoint> ring, Windings step) {
  const auto first = static_cast<std::uint32_t>(vertices.size());
  if (ring.empty()) return;
  GridPoint before = ring.back();
  for (const GridPoint p : ring) {
    if (p == before) continue;
    const auto number = static_cast<std::uint32_t>(vertices.size());
    vertices.push_back({p, {before, p}, {number - 1, number}});
    before = p;
  }
  const auto end = static_cast<std::uint32_t>(vertices.size());
  if (end == first) return;
  vertices[first].edge[0] = end - 1;
  GridPoint next = vertices[first].at;
  for (std::uint32_t i = end; i-- > first;) {
    vertices[i].far[1] = next;
    next = vertices[i].at;
  }
  for (std::uint32_t i = first; i < end; ++i) {
    const GridPoint p = vertices[i].at;
    const GridPoint q = vertices[i].far[1];
    edges.push_back(p < q ? Edge{p, q, step} : Edge{q, p, -step});
  }
}

void EdgeSet::SortVertices() {
  if (vertices.size() < 2) return;
  const int positionBits = static_cast<int>(std::bit_width(vertices.size() - 1));
  SortByPlace(words_, scratch_, vertices, positionBits);
  const std::uint64_t mask = (std::uint64_t{1} << positionBits) - 1;
  sorted_.clear();
  sorted_.reserve(vertices.size());
  for (const std::uint64_t word : words_) {
    sorted_.push_back(vertices[static_cast<std::size_t>(word & mask)]);
  }
  vertices.swap(sorted_);
}

}  // namespace zelvan::overlay
