// The bent edges and the pieces of all (bending.h).
#include "overlay/bending.h"

#include <algorithm>
#include <cstddef>

namespace zelvan::overlay {

void Bending::Split(EdgeSet& edges, Sweep& sweep) {
  const auto lines = static_cast<std::uint32_t>(edges.edges.size());
  SortByLine(sweep.Incidences(), edges.edges);
  FindBent(sweep, edges.edges);
  fates_.assign(lines, Fate::kKept);
  for (std::uint32_t i = 0; i < lines; ++i) {
    if (!sweep.WasActive(i)) fates_[i] = Fate::kGone;
  }
  for (const std::uint32_t line : sweep.CutLines()) fates_[line] = Fate::kChanged;
  std::fill(fates_.begin() + sweep.GivenLines(), fates_.end(), Fate::kChanged);
  added_.Clear();
  for (std::uint32_t line = 0; line < lines; ++line) {
    if (fates_[line] != Fate::kGone) SplitLine(line, edges);
  }
  DropVertices(edges);
  added_.SortVertices();
  merged_.resize(edges.vertices.size() + added_.vertices.size());
  std::merge(edges.vertices.begin(), edges.vertices.end(), added_.vertices.begin(),
             added_.vertices.end(), merged_.begin(),
             [](const Vertex& a, const Vertex& b) { return a.at < b.at; });
  edges.vertices.swap(merged_);
}

std::size_t Bending::Bytes() const noexcept {
  return BytesOf(firstOfLine_) + BytesOf(byLine_) + BytesOf(offCentre_) + BytesOf(fates_) +
         added_.Bytes() + BytesOf(merged_);
}

void Bending::SortByLine(std::span<const Incidence> incidences, std::span<const Edge> lines) {
  firstOfLine_.assign(lines.size() + 1, 0);
  for (const Incidence& i : incidences) ++firstOfLine_[i.line];
  std::uint32_t sum = 0;
  for (std::uint32_t& first : firstOfLine_) first = sum += first;
  byLine_.resize(incidences.size());
  for (std::size_t k = incidences.size(); k-- > 0;) {
    byLine_[--firstOfLine_[incidences[k].line]] = incidences[k];
  }
  for (std::uint32_t line = 0; line < lines.size(); ++line) {
    if (firstOfLine_[line + 1] - firstOfLine_[line] < 2) continue;
    const bool falls = lines[line].high.gy < lines[line].low.gy;
    std::sort(byLine_.begin() + firstOfLine_[line], byLine_.begin() + firstOfLine_[line + 1],
              [falls](const Incidence& a, const Incidence& b) {
                if (a.pixel.gx != b.pixel.gx || !falls) return a.pixel < b.pixel;
                return a.pixel.gy > b.pixel.gy;
              });
  }
}

// Goes from bent edges to the pixels that they meet, and from these to the edges that meet them
// off their centres.
void Bending::FindBent(const Sweep& sweep, std::span<const Edge> lines) {
  isBent_.assign(lines.size(), false);
  for (const RoundedCrossing& c : sweep.Crossed()) {
    Bend(c.first);
    Bend(c.second);
  }
  offCentre_.clear();
  for (const Incidence& i : byLine_) {
    if (i.isOffCentre) offCentre_.push_back(i);
  }
  std::sort(offCentre_.begin(), offCentre_.end(),
            [](const Incidence& a, const Incidence& b) { return a.pixel < b.pixel; });
  isHandled_.assign(offCentre_.size(), false);
  while (!waiting_.empty()) {
    const std::uint32_t line = waiting_.back();
    waiting_.pop_back();
    BendAllAt(lines[line].low);
    BendAllAt(lines[line].high);
    for (const Incidence& i : PixelsOf(line)) BendAllAt(i.pixel);
  }
}

void Bending::Bend(std::uint32_t line) {
  if (isBent_[line]) return;
  isBent_[line] = true;
  waiting_.push_back(line);
}

// A bent edge meets the pixel.
void Bending::BendAllAt(GridPoint pixel) {
  auto i = std::lower_bound(offCentre_.begin(), offCentre_.end(), pixel,
                            [](const Incidence& a, GridPoint q) { return a.pixel < q; });
  if (i == offCentre_.end() || i->pixel != pixel) return;
  const auto first = static_cast<std::size_t>(i - offCentre_.begin());
  if (isHandled_[first]) return;
  isHandled_[first] = true;
  for (; i != offCentre_.end() && i->pixel == pixel; ++i) Bend(i->line);
}

// A falling line goes straight down within a column, so a piece can run back.
void Bending::SplitLine(std::uint32_t line, EdgeSet& edges) {
  const Edge e = edges.edges[line];
  route_.assign(1, e.low);
  for (const Incidence& i : PixelsOf(line)) {
    const bool isPassed = i.isOffCentre && !isBent_[line];
    if (!isPassed && i.pixel != route_.back()) route_.push_back(i.pixel);
  }
  route_.push_back(e.high);
  if (route_.size() == 2 && fates_[line] == Fate::kKept) return;
  fates_[line] = Fate::kChanged;
  std::uint32_t before = kNone;
  for (std::size_t k = 0; k < route_.size(); ++k) {
    Vertex v{route_[k], {route_[k], route_[k]}, {before, kNone}};
    if (k > 0) v.far[0] = route_[k - 1];
    if (k + 1 < route_.size()) {
      const GridPoint p = route_[k];
      const GridPoint q = v.far[1] = route_[k + 1];
      const Edge piece = p < q ? Edge{p, q, e.step} : Edge{q, p, -e.step};
      v.edge[1] = k == 0 ? line : static_cast<std::uint32_t>(edges.edges.size());
      if (k == 0) {
        edges.edges[line] = piece;
      } else {
        edges.edges.push_back(piece);
      }
    }
    before = v.edge[1];
    added_.vertices.push_back(v);
  }
}

// Takes lines that changed or are gone from their old vertices.
void Bending::DropVertices(EdgeSet& edges) {
  auto kept = edges.vertices.begin();
  for (Vertex v : edges.vertices) {
    for (int side = 0; side < 2; ++side) {
      if (v.edge[side] == kNone || fates_[v.edge[side]] == Fate::kKept) continue;
      v.edge[side] = kNone;
      v.far[side] = v.at;
    }
    if (v.edge[0] != kNone || v.edge[1] != kNone) *kept++ = v;
  }
  edges.vertices.erase(kept, edges.vertices.end());
}

}  // namespace zelvan::overlay
