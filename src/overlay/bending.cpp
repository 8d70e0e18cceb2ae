// The bent edges and the pieces of all (bending.h).
#include "overlay/bending.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace zelvan::overlay {

namespace {

bool IsBefore(const Vertex& a, const Vertex& b) noexcept {
  return a.at < b.at;
}

}  // namespace

void Bending::Split(EdgeSet& edges, const LineFindings& sweep) {
  incidences_ = sweep.Incidences();
  if (edges.edges.size() + incidences_.size() >= kNone) throw std::bad_alloc();
  const auto lines = static_cast<std::uint32_t>(edges.edges.size());
  SortByLine(edges.edges);
  FindBent(sweep, edges.edges);
  FindFates(sweep, lines);
  lastPiece_.resize(lines);
  inner_.resize(incidences_.size());
  for (Vertex& v : inner_) v.edge[0] = kNone;
  ends_.Clear();
  for (std::uint32_t line = 0; line < lines; ++line) {
    if (fates_[line] != Fate::kGone) SplitLine(line, edges);
  }
  MoveVertices(edges);
}

std::size_t Bending::Bytes() const noexcept {
  return BytesOf(firstOfLine_) + BytesOf(byLine_) + BytesOf(fates_) + BytesOf(lastPiece_) +
         BytesOf(inner_) + ends_.Bytes() + BytesOf(added_) + BytesOf(merged_);
}

// By pixel they are in order already, but for falling lines within a column.
void Bending::SortByLine(std::span<const Edge> lines) {
  firstOfLine_.assign(lines.size() + 1, 0);
  for (const Incidence& i : incidences_) ++firstOfLine_[i.line];
  std::uint32_t sum = 0;
  for (std::uint32_t& first : firstOfLine_) first = sum += first;
  byLine_.resize(incidences_.size());
  for (auto k = static_cast<std::uint32_t>(incidences_.size()); k-- > 0;) {
    byLine_[--firstOfLine_[incidences_[k].line]] = k;
  }
  const auto column = [&](std::uint32_t i) { return incidences_[byLine_[i]].pixel.gx; };
  for (std::uint32_t line = 0; line < lines.size(); ++line) {
    if (lines[line].high.gy >= lines[line].low.gy) continue;
    const std::uint32_t last = firstOfLine_[line + 1];
    for (std::uint32_t begin = firstOfLine_[line]; begin < last;) {
      std::uint32_t end = begin + 1;
      while (end < last && column(end) == column(begin)) ++end;
      std::reverse(byLine_.data() + begin, byLine_.data() + end);
      begin = end;
    }
  }
}

// Goes from bent edges to the pixels that they meet, and from these to the edges that meet them
// off their centres.
void Bending::FindBent(const LineFindings& sweep, std::span<const Edge> lines) {
  waiting_.clear();
  isBent_.assign(lines.size(), false);
  isHandled_.assign(incidences_.size(), false);
  for (std::uint32_t line = 0; line < lines.size(); ++line) {
    if (sweep.IsCrossed(line)) Bend(line);
  }
  while (!waiting_.empty()) {
    const std::uint32_t line = waiting_.back();
    waiting_.pop_back();
    BendAllAt(lines[line].low);
    BendAllAt(lines[line].high);
    for (const std::uint32_t i : IncidencesOf(line)) BendAllAt(i);
  }
}

void Bending::Bend(std::uint32_t line) {
  if (isBent_[line]) return;
  isBent_[line] = true;
  waiting_.push_back(line);
}

// A bent edge meets the pixel of an incidence.
void Bending::BendAllAt(std::size_t incidence) {
  const GridPoint pixel = incidences_[incidence].pixel;
  std::size_t i = incidence;
  while (i > 0 && incidences_[i - 1].pixel == pixel) --i;
  if (isHandled_[i]) return;
  isHandled_[i] = true;
  for (; i < incidences_.size() && incidences_[i].pixel == pixel; ++i) {
    if (incidences_[i].isOffCentre) Bend(incidences_[i].line);
  }
}

void Bending::BendAllAt(GridPoint pixel) {
  const auto i = std::lower_bound(incidences_.begin(), incidences_.end(), pixel,
                                  [](const Incidence& a, GridPoint q) { return a.pixel < q; });
  if (i == incidences_.end() || i->pixel != pixel) return;
  BendAllAt(static_cast<std::size_t>(i - incidences_.begin()));
}

void Bending::FindFates(const LineFindings& sweep, std::size_t lines) {
  fates_.assign(lines, Fate::kKept);
  for (std::uint32_t i = 0; i < lines; ++i) {
    if (!sweep.WasActive(i)) fates_[i] = Fate::kGone;
  }
  for (const std::uint32_t line : sweep.CutLines()) fates_[line] = Fate::kCut;
  givenLines_ = sweep.GivenLines();
}

// A falling line goes straight down within a column, so a piece can run back.
void Bending::SplitLine(std::uint32_t line, EdgeSet& edges) {
  const Edge e = edges.edges[line];
  route_.clear();
  for (const std::uint32_t i : IncidencesOf(line)) {
    if (isBent_[line] || !incidences_[i].isOffCentre) route_.push_back(i);
  }
  const auto piece = [&e](GridPoint p, GridPoint q) {
    return p < q ? Edge{p, q, e.step} : Edge{q, p, -e.step};
  };
  std::uint32_t last = line;
  GridPoint before = e.low;
  for (std::size_t k = 0; k < route_.size(); ++k) {
    const GridPoint p = incidences_[route_[k]].pixel;
    const GridPoint next = k + 1 < route_.size() ? incidences_[route_[k + 1]].pixel : e.high;
    const auto number = static_cast<std::uint32_t>(edges.edges.size());
    inner_[route_[k]] = {p, {before, next}, {last, number}};
    if (k == 0) edges.edges[line] = piece(e.low, p);
    edges.edges.push_back(piece(p, next));
    before = p;
    last = number;
  }
  lastPiece_[line] = last;
  if (!route_.empty() && fates_[line] == Fate::kKept) fates_[line] = Fate::kSplit;
  const bool isBundle = line >= givenLines_;
  if (isBundle) AddEnd(e.low, edges.edges[line], line);
  if (isBundle || fates_[line] == Fate::kCut) AddEnd(e.high, edges.edges[last], last);
}

void Bending::AddEnd(GridPoint p, const Edge& piece, std::uint32_t number) {
  ends_.vertices.push_back({p, {piece.low == p ? piece.high : piece.low, p}, {number, kNone}});
}

// Names the pieces at the old vertices, without lines that are gone, and adds the new vertices.
void Bending::MoveVertices(EdgeSet& edges) {
  const auto other = [&](std::uint32_t piece, GridPoint p) {
    const Edge& e = edges.edges[piece];
    return e.low == p ? e.high : e.low;
  };
  auto kept = edges.vertices.begin();
  for (Vertex v : edges.vertices) {
    for (int side = 0; side < 2; ++side) {
      std::uint32_t& edge = v.edge[side];
      if (edge == kNone || fates_[edge] == Fate::kKept) continue;
      const bool isLow = v.at < v.far[side];
      if (fates_[edge] == Fate::kGone || (fates_[edge] == Fate::kCut && !isLow)) {
        edge = kNone;
        v.far[side] = v.at;
      } else {
        if (!isLow) edge = lastPiece_[edge];
        v.far[side] = other(edge, v.at);
      }
    }
    if (v.edge[0] != kNone || v.edge[1] != kNone) *kept++ = v;
  }
  edges.vertices.erase(kept, edges.vertices.end());
  const auto unused = [](const Vertex& v) { return v.edge[0] == kNone; };
  inner_.erase(std::remove_if(inner_.begin(), inner_.end(), unused), inner_.end());
  ends_.SortVertices();
  const auto merge = [](const std::vector<Vertex>& a, const std::vector<Vertex>& b,
                        std::vector<Vertex>& out) {
    out.resize(a.size() + b.size());
    std::merge(a.begin(), a.end(), b.begin(), b.end(), out.begin(), IsBefore);
  };
  merge(inner_, ends_.vertices, added_);
  merge(edges.vertices, added_, merged_);
  edges.vertices.swap(merged_);
}

}  // namespace zelvan::overlay
