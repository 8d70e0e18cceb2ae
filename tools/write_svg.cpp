// The picture: y upward, every polygon a soft fill with its diagonals as fine
// light lines and its contours darker on top.
//
// Coordinates are whole units of a grid laid over the picture, steps relative
// to the point before, which keeps a map of a hundred thousand edges small. The
// lines are as thin as the edges are short, within limits that still show.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <utility>

#include "output.h"
#include "tones.h"

namespace tool {
namespace {

using zelvan::Box;
using zelvan::Mesh;

constexpr double kPixels = 1600;       // the larger side as shown
constexpr double kUnitsPerPixel = 40;  // the grid of the coordinates
constexpr double kMargin = 16;         // pixels

// Muted tones of one lightness.
constexpr std::array kTones{"#8fb8a8", "#e0b084", "#9db4d3", "#d99a8f", "#b9c48a",
                            "#b8a3cc", "#e3c878", "#86bcc4", "#cf9bb4"};

struct GridPoint {
  std::int64_t x;
  std::int64_t y;
  friend bool operator==(const GridPoint&, const GridPoint&) = default;
};

Box BoxOf(const std::vector<Item>& items) {
  bool first = true;
  Box all{};
  for (const Item& item : items) {
    if (item.region.IsEmpty()) continue;
    const Box box = item.region.Bounds();
    if (std::exchange(first, false)) all = box;
    all.min = {std::min(all.min.x, box.min.x), std::min(all.min.y, box.min.y)};
    all.max = {std::max(all.max.x, box.max.x), std::max(all.max.y, box.max.y)};
  }
  return all;
}

// From world to picture, y turned downward as SVG wants it.
class Frame {
 public:
  explicit Frame(const Box& box) : box_(box) {
    const double extent = std::max(box.max.x - box.min.x, box.max.y - box.min.y);
    per_unit_ = kPixels * kUnitsPerPixel / (extent > 0 ? extent : 1);
  }

  GridPoint At(const Point& p) const {
    const double margin = kMargin * kUnitsPerPixel;
    return {std::llround((p.x - box_.min.x) * per_unit_ + margin),
            std::llround((box_.max.y - p.y) * per_unit_ + margin)};
  }
  GridPoint Size() const {
    const GridPoint corner = At({box_.max.x, box_.min.y});
    const auto margin = static_cast<std::int64_t>(kMargin * kUnitsPerPixel);
    return {corner.x + margin, corner.y + margin};
  }
  double Units(double world) const { return world * per_unit_; }
  double World(double pixels) const { return pixels * kUnitsPerPixel / per_unit_; }

 private:
  Box box_;
  double per_unit_;
};

std::string Escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

// "M10 20l3-4 5 6": steps that round to nothing are left out.
class Path {
 public:
  explicit Path(std::ostream& out) : out_(out) {}

  void MoveTo(const GridPoint& p) {
    out_ << 'M' << p.x << ' ' << p.y;
    at_ = p;
    stepped_ = false;
  }
  void LineTo(const GridPoint& p) {
    if (p == at_) return;
    out_ << (stepped_ ? (p.x < at_.x ? "" : " ") : "l") << p.x - at_.x;
    out_ << (p.y < at_.y ? "" : " ") << p.y - at_.y;
    at_ = p;
    stepped_ = true;
  }
  void Close() { out_ << 'z'; }

 private:
  std::ostream& out_;
  GridPoint at_{0, 0};
  bool stepped_ = false;
};

std::vector<Ring> Contours(const Region& region) {
  std::vector<Ring> contours;
  for (const Polygon& polygon : region.Polygons()) {
    for (Ring& ring : RingsOf(polygon)) contours.push_back(std::move(ring));
  }
  return contours;
}

double LineWidth(const std::vector<Item>& items, const Frame& frame) {
  std::vector<double> lengths;
  for (const Item& item : items) {
    for (const Ring& ring : Contours(item.region)) {
      for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point& next = ring[(i + 1) % ring.size()];
        lengths.push_back(frame.Units(std::hypot(next.x - ring[i].x, next.y - ring[i].y)));
      }
    }
  }
  if (lengths.empty()) return kUnitsPerPixel;
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end());
  return std::clamp(*middle / 6, 0.6 * kUnitsPerPixel, 2.5 * kUnitsPerPixel);
}

void WriteContours(std::ostream& out, const Region& region, const Frame& frame, const char* name) {
  out << "<path class=\"" << name << "\" d=\"";
  Path path(out);
  for (const Ring& ring : Contours(region)) {
    path.MoveTo(frame.At(ring.front()));
    for (std::size_t i = 1; i < ring.size(); ++i) path.LineTo(frame.At(ring[i]));
    path.Close();
  }
  out << "\"/>\n";
}

// Each diagonal once, from the triangle with the lower number.
template <class Visit>
void ForEachDiagonal(const Mesh& mesh, Visit visit) {
  for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
    for (std::size_t k = 0; k < 3; ++k) {
      if (mesh.neighbours[t][k] < static_cast<std::int64_t>(t)) continue;
      visit(mesh.vertices[mesh.triangles[t][k]], mesh.vertices[mesh.triangles[t][(k + 1) % 3]]);
    }
  }
}

// So wide that the diagonals of a polygon cover about a quarter of it, whether
// they are three or thousands; never wider than `most`.
double DiagonalWidth(const Mesh& mesh, const Frame& frame, double most) {
  double length = 0;
  ForEachDiagonal(mesh, [&](const Point& from, const Point& to) {
    length += frame.Units(std::hypot(to.x - from.x, to.y - from.y));
  });
  const double area = frame.Units(frame.Units(TriangleArea(mesh)));
  const double least = std::min(most, 0.1 * kUnitsPerPixel);
  return length > 0 ? std::clamp(area / length / 4, least, most) : most;
}

void WriteDiagonals(std::ostream& out, const Mesh& mesh, const Frame& frame, double most) {
  out << "<path class=\"diagonal\" stroke-width=\"" << std::lround(DiagonalWidth(mesh, frame, most))
      << "\" d=\"";
  Path path(out);
  ForEachDiagonal(mesh, [&](const Point& p, const Point& q) {
    const GridPoint from = frame.At(p);
    const GridPoint to = frame.At(q);
    if (from == to) return;
    path.MoveTo(from);
    path.LineTo(to);
  });
  out << "\"/>\n";
}

void WriteHead(std::ostream& out, const Frame& frame, double line) {
  const GridPoint size = frame.Size();
  out << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")"
      << std::llround(static_cast<double>(size.x) / kUnitsPerPixel) << "\" height=\""
      << std::llround(static_cast<double>(size.y) / kUnitsPerPixel) << "\" viewBox=\"0 0 " << size.x
      << ' ' << size.y << "\">\n<style>\n"
      << "path{fill:none;stroke-linejoin:round;stroke-linecap:round}\n"
      << ".fill{fill-rule:evenodd}\n"
      << ".diagonal{stroke:#fff;stroke-opacity:.8}\n"
      << ".contour{stroke:#3b4a54;stroke-width:" << Shortest(line) << "}\n";
  for (std::size_t i = 0; i < kTones.size(); ++i) {
    out << ".t" << i << " .fill{fill:" << kTones[i] << "}\n";
  }
  out << "</style>\n<rect width=\"100%\" height=\"100%\" fill=\"#f4f1ea\"/>\n";
}

}  // namespace

void WriteSvg(std::ostream& out, const std::vector<Item>& items, Show show) {
  const Frame frame(BoxOf(items));
  const double line = LineWidth(items, frame);
  WriteHead(out, frame, line);
  const std::vector<std::size_t> tones = ChooseTones(items, kTones.size(), frame.World(4));
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Item& item = items[i];
    if (item.region.IsEmpty()) continue;
    out << "<g class=\"t" << tones[i] << "\">";
    if (!item.name.empty()) out << "<title>" << Escaped(item.name) << "</title>";
    out << '\n';
    WriteContours(out, item.region, frame, "fill");
    if (show == Show::kTriangles) WriteDiagonals(out, item.mesh, frame, line / 2);
    WriteContours(out, item.region, frame, "contour");
    out << "</g>\n";
  }
  out << "</svg>\n";
}

}  // namespace tool
