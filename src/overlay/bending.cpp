// The bent edges and the pieces of all (bending.h).
#include "overlay/bending.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace zelvan::overlay {

namespace {

// Runs of incidences with one line, or one pixel: first[i] to first[i + 1] in the array.
using Runs = std::vector<std::uint32_t>;

// The incidences of each line, in the order in which the line comes to their pixels.
class LinePixels {
 public:
  LinePixels(std::span<const Incidence> incidences, std::span<const Edge> lines)
      : first_(lines.size() + 1) {
    for (const Incidence& i : incidences) ++first_[i.line + 1];
    for (std::size_t k = 1; k < first_.size(); ++k) first_[k] += first_[k - 1];
    sorted_.resize(incidences.size());
    Runs next(first_.begin(), first_.end() - 1);
    for (const Incidence& i : incidences) sorted_[next[i.line]++] = i;
    for (std::uint32_t line = 0; line < lines.size(); ++line) {
      if (first_[line + 1] - first_[line] < 2) continue;
      const bool falls = lines[line].high.gy < lines[line].low.gy;
      std::sort(sorted_.begin() + first_[line], sorted_.begin() + first_[line + 1],
                [falls](const Incidence& a, const Incidence& b) {
                  if (a.pixel.gx != b.pixel.gx || !falls) return a.pixel < b.pixel;
                  return a.pixel.gy > b.pixel.gy;
                });
    }
  }

  [[nodiscard]] std::span<const Incidence> Of(std::uint32_t line) const noexcept {
    return {sorted_.data() + first_[line], sorted_.data() + first_[line + 1]};
  }

 private:
  Runs first_;
  std::vector<Incidence> sorted_;
};

// The least set of bent edges, by going from edges to the pixels that they meet and from these
// to the edges that meet them off their centres.
class BentEdges {
 public:
  BentEdges(std::span<const Incidence> incidences, std::span<const Edge> lines,
            const LinePixels& pixels)
      : lines_(lines), pixels_(pixels), isBent_(lines.size(), false) {
    for (const Incidence& i : incidences) {
      if (i.isOffCentre) offCentre_.push_back(i);
    }
    std::sort(offCentre_.begin(), offCentre_.end(),
              [](const Incidence& a, const Incidence& b) { return a.pixel < b.pixel; });
    isHandled_.resize(offCentre_.size(), false);
  }

  void Add(std::uint32_t line) {
    if (isBent_[line]) return;
    isBent_[line] = true;
    waiting_.push_back(line);
  }

  void Close() {
    while (!waiting_.empty()) {
      const std::uint32_t line = waiting_.back();
      waiting_.pop_back();
      AddAllAt(lines_[line].low);
      AddAllAt(lines_[line].high);
      for (const Incidence& i : pixels_.Of(line)) AddAllAt(i.pixel);
    }
  }

  [[nodiscard]] bool Has(std::uint32_t line) const noexcept { return isBent_[line]; }

 private:
  // An edge of the set meets the pixel of p.
  void AddAllAt(GridPoint p) {
    auto i = std::lower_bound(offCentre_.begin(), offCentre_.end(), p,
                              [](const Incidence& a, GridPoint q) { return a.pixel < q; });
    if (i == offCentre_.end() || i->pixel != p) return;
    const auto first = static_cast<std::size_t>(i - offCentre_.begin());
    if (isHandled_[first]) return;
    isHandled_[first] = true;
    for (; i != offCentre_.end() && i->pixel == p; ++i) Add(i->line);
  }

  std::span<const Edge> lines_;
  const LinePixels& pixels_;
  std::vector<bool> isBent_;
  std::vector<std::uint32_t> waiting_;
  std::vector<Incidence> offCentre_;  // by pixel
  std::vector<bool> isHandled_;       // of the first incidence of each pixel
};

// Splits the lines, and carries the sorted vertices over to the pieces.
class Splitter {
 public:
  Splitter(const EdgeSet& from, const Sweep& sweep, const BentEdges& bent, const LinePixels& pixels)
      : from_(from), sweep_(sweep), bent_(bent), pixels_(pixels) {
    firstPiece_.reserve(from.edges.size() + 1);
    result_.edges.reserve(from.edges.size());
  }

  [[nodiscard]] EdgeSet Run() {
    for (std::uint32_t line = 0; line < from_.edges.size(); ++line) {
      firstPiece_.push_back(static_cast<std::uint32_t>(result_.edges.size()));
      if (sweep_.WasActive(line)) Split(line);
    }
    firstPiece_.push_back(static_cast<std::uint32_t>(result_.edges.size()));
    hasLow_.resize(from_.edges.size(), false);
    hasHigh_.resize(from_.edges.size(), false);
    CarryVertices();
    AddMissingEnds();
    inner_.SortVertices();
    std::vector<Vertex> all(result_.vertices.size() + inner_.vertices.size());
    std::merge(result_.vertices.begin(), result_.vertices.end(), inner_.vertices.begin(),
               inner_.vertices.end(), all.begin(),
               [](const Vertex& a, const Vertex& b) { return a.at < b.at; });
    result_.vertices = std::move(all);
    return std::move(result_);
  }

 private:
  // A falling line goes straight down within a column, so a piece can run back.
  void Split(std::uint32_t line) {
    const Edge& e = from_.edges[line];
    route_.assign(1, e.low);
    for (const Incidence& i : pixels_.Of(line)) {
      const bool isPassed = i.isOffCentre && !bent_.Has(line);
      if (!isPassed && i.pixel != route_.back()) route_.push_back(i.pixel);
    }
    route_.push_back(e.high);
    for (std::size_t k = 1; k < route_.size(); ++k) {
      const auto piece = static_cast<std::uint32_t>(result_.edges.size());
      const GridPoint p = route_[k - 1];
      const GridPoint q = route_[k];
      result_.edges.push_back(p < q ? Edge{p, q, e.step} : Edge{q, p, -e.step});
      if (k + 1 < route_.size())
        inner_.vertices.push_back({q, {p, route_[k + 1]}, {piece, piece + 1}});
    }
  }

  [[nodiscard]] bool HasPieces(std::uint32_t line) const noexcept {
    return line != kNone && firstPiece_[line] != firstPiece_[line + 1];
  }

  // The piece of a line at one of its ends, and where the piece goes.
  void Attach(Vertex& v, int side, std::uint32_t line, bool isLow) {
    const std::uint32_t piece = isLow ? firstPiece_[line] : firstPiece_[line + 1] - 1;
    const Edge& e = result_.edges[piece];
    v.edge[side] = piece;
    v.far[side] = e.low == v.at ? e.high : e.low;
    (isLow ? hasLow_ : hasHigh_)[line] = true;
  }

  // Vertices keep their order; lines that cancelled or ended elsewhere are not at them.
  void CarryVertices() {
    result_.vertices.reserve(from_.vertices.size());
    for (const Vertex& v : from_.vertices) {
      Vertex moved{v.at, {v.at, v.at}, {kNone, kNone}};
      for (int side = 0; side < 2; ++side) {
        const std::uint32_t line = v.edge[side];
        if (!HasPieces(line)) continue;
        const Edge& e = from_.edges[line];
        if (e.low == v.at) Attach(moved, side, line, true);
        if (e.high == v.at) Attach(moved, side, line, false);
      }
      if (moved.edge[0] != kNone || moved.edge[1] != kNone) result_.vertices.push_back(moved);
    }
  }

  // The ends of bundles' lines, and of lines that were cut short.
  void AddMissingEnds() {
    for (std::uint32_t line = 0; line < from_.edges.size(); ++line) {
      if (!HasPieces(line)) continue;
      const Edge& e = from_.edges[line];
      for (const bool isLow : {true, false}) {
        if ((isLow ? hasLow_ : hasHigh_)[line]) continue;
        const GridPoint at = isLow ? e.low : e.high;
        Vertex v{at, {at, at}, {kNone, kNone}};
        Attach(v, 0, line, isLow);
        inner_.vertices.push_back(v);
      }
    }
  }

  const EdgeSet& from_;
  const Sweep& sweep_;
  const BentEdges& bent_;
  const LinePixels& pixels_;
  std::vector<std::uint32_t> firstPiece_;  // of each line
  std::vector<bool> hasLow_;               // stands a vertex at the line's lower end?
  std::vector<bool> hasHigh_;
  std::vector<GridPoint> route_;  // of one line
  EdgeSet inner_;                 // vertices that are not among the old ones
  EdgeSet result_;
};

}  // namespace

EdgeSet SplitEdges(const EdgeSet& edges, Sweep& sweep) {
  // A crossing's own lines meet its pixel, and go through it off its centre.
  const LinePixels pixels(sweep.Incidences(), edges.edges);
  BentEdges bent(sweep.Incidences(), edges.edges, pixels);
  for (const RoundedCrossing& c : sweep.Crossed()) {
    bent.Add(c.first);
    bent.Add(c.second);
  }
  bent.Close();
  return Splitter(edges, sweep, bent, pixels).Run();
}

}  // namespace zelvan::overlay
